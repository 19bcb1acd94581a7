#pragma once

#include <xsi_property.h>
#include <xsi_value.h>

namespace XSI
{

class Parameter;
class PPGLayout;

/// A property whose parameters a plug-in or the user defines. Its type word is the type name under which it
/// was made.
class CustomProperty : public Property
{
public:
    CustomProperty() = default;

    CustomProperty(const CRef& ref) : Property(ref.As(siCustomPropertyID)) {}

    /// Adds a parameter. Fail if one of this name exists; `added` is then the existing one. The minimum and
    /// maximum bind every value, the suggested ones the control alone; empty values set no limit.
    CStatus AddParameter(const CString& name, CValue::DataType type, LONG capabilities, const CString& label,
                         const CString& description, const CValue& initial, Parameter& added);
    CStatus AddParameter(const CString& name, CValue::DataType type, LONG capabilities, const CString& label,
                         const CString& description, const CValue& initial, const CValue& minimum,
                         const CValue& maximum, const CValue& suggestedMinimum,
                         const CValue& suggestedMaximum, Parameter& added);

    /// Removes one of this property's parameters; the handle is invalid afterwards.
    CStatus RemoveParameter(Parameter& parameter);

    /// The layout of this property's page.
    PPGLayout GetPPGLayout() const;
};

} // namespace XSI
