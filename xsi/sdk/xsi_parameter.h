#pragma once

#include <xsi_projectitem.h>
#include <xsi_value.h>

namespace XSI
{

/// A named value of an object: a constant, or driven by a source. A colour is a parameter whose components
/// `red`, `green`, `blue`, `alpha` are parameters of their own, found by GetParameter.
class Parameter : public ProjectItem
{
public:
    Parameter() = default;

    Parameter(const CRef& ref) : ProjectItem(ref.As(siParameterID)) {}

    CString GetScriptName() const { return GetName(); }

    /// The value at a frame. A colour answers the value of its first component.
    CValue GetValue(double time = CurrentTime) const;

    /// Sets the constant, converted to the parameter's type and held within its hard limits. Read-only
    /// parameters take it too: that flag binds the user, not the code. Fail for an invalid parameter, for a
    /// number that is none, and for a text where a number is wanted.
    CStatus PutValue(const CValue& value, double time = CurrentTime);

    CValue::DataType GetValueType() const;
    CValue GetDefault() const;

    /// The limits; empty where there are none.
    CValue GetMin() const;
    CValue GetMax() const;
    CValue GetSuggestedMin() const;
    CValue GetSuggestedMax() const;

    bool GetCapabilityFlag(siCapabilities flag) const;
    CStatus PutCapabilityFlag(siCapabilities flag, bool on);
    LONG GetCapabilities() const;

    /// What drives the parameter: a shader or a shader's output, a curve, an expression; invalid if the value
    /// is constant.
    CRef GetSource() const;

    /// True if the parameter or one of its components is driven by this kind of source.
    bool IsAnimated(siSourceType type = siAnySource) const;
};

} // namespace XSI
