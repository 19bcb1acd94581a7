#pragma once

#include <xsi_siobject.h>
#include <xsi_value.h>

namespace XSI
{

/// One argument of a command.
class Argument : public SIObject
{
public:
    Argument() = default;

    Argument(const CRef& ref) : SIObject(ref.As(siArgumentID)) {}

    CValue GetDefault() const;
    /// What the command was last called with.
    CValue GetValue() const;
};

/// The arguments of a command, in order.
class ArgumentArray
{
public:
    ArgumentArray() = default;

    explicit ArgumentArray(const CRef& command) : m_command(command) {}

    /// Adds an argument and answers its index, -1 for an invalid command.
    LONG Add(const CString& name, const CValue& defaultValue = CValue());

    LONG GetCount() const;
    Argument GetItem(LONG index) const;

private:
    CRef m_command;
};

} // namespace XSI
