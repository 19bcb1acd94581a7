#pragma once

#include <xsi_siobject.h>

namespace XSI
{

/// The selected objects, in the order of their selection.
class Selection : public SIObject
{
public:
    Selection() = default;

    Selection(const CRef& ref) : SIObject(ref.As(siSelectionID)) {}

    LONG GetCount() const;

    /// Invalid outside the list.
    CRef GetItem(LONG index) const;

    CRef operator[](LONG index) const { return GetItem(index); }

    CRefArray GetArray() const;

    /// The full names, joined by ",".
    CString GetAsText() const;

    /// An object that is selected already stays where it is.
    CStatus Add(const CRef& object);
    CStatus Remove(const CRef& object);
    CStatus Clear();

    /// Selects the objects named in a list joined by ",".
    CStatus SetAsText(const CString& names);
};

} // namespace XSI
