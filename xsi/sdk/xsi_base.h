#pragma once

#include <xsi_ref.h>
#include <xsi_string.h>
#include <xsi_value.h>

namespace XSI
{

/// Base of the handles. A handle is a reference with the operations of one class. It is cheap to copy,
/// invalid by default and when made from a reference to an object of another class; every call on an invalid
/// handle is safe and gives an empty or failing answer. Handles compare by creation order, as references do.
class CBase
{
public:
    CBase() = default;

    CBase(const CRef& ref) : m_ref(ref) {}

    bool IsValid() const { return m_ref.IsValid(); }

    bool IsA(siClassID classId) const { return m_ref.IsA(classId); }

    const CRef& GetRef() const { return m_ref; }

    operator const CRef&() const { return m_ref; }

    void ResetObject() { m_ref.Reset(); }

private:
    CRef m_ref;
};

} // namespace XSI
