#pragma once

#include <xsi_argument.h>
#include <xsi_siobject.h>
#include <xsi_value.h>

namespace XSI
{

/// A command: one that a plug-in registered.
class Command : public SIObject
{
public:
    Command() = default;

    Command(const CRef& ref) : SIObject(ref.As(siCommandID)) {}

    ArgumentArray GetArguments() const;

    CStatus PutDescription(const CString& text);
    CString GetDescription() const;
    CStatus EnableReturnValue(bool on);

    CStatus Execute(const CValueArray& arguments, CValue& result);
};

} // namespace XSI
