#pragma once

#include <xsi_array.h>
#include <xsi_decl.h>
#include <xsi_status.h>
#include <xsi_string.h>

namespace XSI
{

/// Reference to a host object: a number, cheap to copy, invalid by default, and invalid again once the object
/// is deleted. Numbers are given in order of creation and never twice in one process, so the order of
/// references is the order in which the objects were created.
class CRef
{
public:
    CRef() = default;

    /// The reference of a number; invalid if no object bears it.
    static CRef FromObjectID(ULONG id);

    /// The object's number, 0 for an empty reference. Unlike IsValid it does not look the object up.
    ULONG GetObjectID() const { return m_id; }

    bool IsValid() const;

    void Reset() { m_id = 0; }

    /// siUnknownClassID for an invalid reference.
    siClassID GetClassID() const;

    /// True if the object is of this class or of one derived from it.
    bool IsA(siClassID classId) const;

    /// The reference itself if the object is of this class, else an empty one.
    CRef As(siClassID classId) const { return IsA(classId) ? *this : CRef(); }

    /// The object's full name, empty for an invalid reference.
    CString GetAsText() const;

    /// Takes the first object of this full name. Fail, and an empty reference, if there is none.
    CStatus Set(const CString& fullName);

private:
    ULONG m_id = 0;
};

inline bool operator==(const CRef& a, const CRef& b)
{
    return a.GetObjectID() == b.GetObjectID();
}

inline bool operator!=(const CRef& a, const CRef& b)
{
    return !(a == b);
}

inline bool operator<(const CRef& a, const CRef& b)
{
    return a.GetObjectID() < b.GetObjectID();
}

/// List of references.
class CRefArray : public CBaseArray<CRef>
{
public:
    using CBaseArray::CBaseArray;

    /// Invalid outside the list.
    CRef GetItem(LONG index) const { return (*this)[index]; }

    /// The first object of this name (not the full name); invalid if there is none.
    CRef GetItem(const CString& name) const { return Find(name); }

    CRef Find(const CString& name) const;

    /// The full names, joined by ",".
    CString GetAsText() const;

    CRefArray& operator+=(const CRefArray& other);
};

} // namespace XSI
