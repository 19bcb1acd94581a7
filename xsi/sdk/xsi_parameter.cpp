#include <xsi_parameter.h>

#include "scene/ParameterValues.h"
#include "scene/Session.h"

namespace XSI
{

namespace
{

const Host::ParameterObject* RecordOf(const CRef& ref)
{
    return Host::Objects().Find<Host::ParameterObject>(ref);
}

bool IsDrivenBy(const Host::ParameterObject& parameter, siSourceType type)
{
    if (parameter.Driver == nullptr) {
        return false;
    }
    const siSourceType kind = parameter.Driver->Kind;
    return type == siAnySource ? kind != siShaderSource : kind == type;
}

} // namespace

CValue Parameter::GetValue(double time) const
{
    const Host::ParameterObject* parameter = RecordOf(GetRef());
    if (parameter != nullptr && !parameter->Components.empty() && parameter->Driver == nullptr) {
        parameter = Host::Objects().Find<Host::ParameterObject>(parameter->Components.front());
    }
    return parameter != nullptr ? Host::ValueAt(*parameter, Host::FrameOf(time)) : CValue();
}

CStatus Parameter::PutValue(const CValue& value, double)
{
    auto* parameter = Host::Objects().Find<Host::ParameterObject>(GetRef());
    if (parameter == nullptr) {
        return CStatus::Fail;
    }
    const CValue fitting = Host::FitValue(*parameter->Definition, value);
    if (fitting.IsEmpty()) {
        return CStatus::Fail;
    }
    parameter->Value = fitting;
    Host::Objects().TouchTransforms();
    return CStatus::OK;
}

CValue::DataType Parameter::GetValueType() const
{
    const Host::ParameterObject* parameter = RecordOf(GetRef());
    return parameter != nullptr ? parameter->Definition->Type : CValue::siEmpty;
}

CValue Parameter::GetDefault() const
{
    const Host::ParameterObject* parameter = RecordOf(GetRef());
    return parameter != nullptr ? parameter->Definition->Default : CValue();
}

CValue Parameter::GetMin() const
{
    const Host::ParameterObject* parameter = RecordOf(GetRef());
    return parameter != nullptr ? parameter->Definition->Min : CValue();
}

CValue Parameter::GetMax() const
{
    const Host::ParameterObject* parameter = RecordOf(GetRef());
    return parameter != nullptr ? parameter->Definition->Max : CValue();
}

CValue Parameter::GetSuggestedMin() const
{
    const Host::ParameterObject* parameter = RecordOf(GetRef());
    return parameter != nullptr ? parameter->Definition->SuggestedMin : CValue();
}

CValue Parameter::GetSuggestedMax() const
{
    const Host::ParameterObject* parameter = RecordOf(GetRef());
    return parameter != nullptr ? parameter->Definition->SuggestedMax : CValue();
}

bool Parameter::GetCapabilityFlag(siCapabilities flag) const
{
    return (GetCapabilities() & flag) != 0;
}

CStatus Parameter::PutCapabilityFlag(siCapabilities flag, bool on)
{
    auto* parameter = Host::Objects().Find<Host::ParameterObject>(GetRef());
    if (parameter == nullptr) {
        return CStatus::Fail;
    }
    parameter->Capabilities = on ? parameter->Capabilities | flag : parameter->Capabilities & ~flag;
    return CStatus::OK;
}

LONG Parameter::GetCapabilities() const
{
    const Host::ParameterObject* parameter = RecordOf(GetRef());
    return parameter != nullptr ? parameter->Capabilities : 0;
}

CRef Parameter::GetSource() const
{
    const Host::ParameterObject* parameter = RecordOf(GetRef());
    const bool isDriven = parameter != nullptr && parameter->Driver != nullptr;
    return isDriven ? CRef::FromObjectID(parameter->Driver->Source.GetObjectID()) : CRef();
}

bool Parameter::IsAnimated(siSourceType type) const
{
    const Host::ParameterObject* parameter = RecordOf(GetRef());
    if (parameter == nullptr) {
        return false;
    }
    if (IsDrivenBy(*parameter, type)) {
        return true;
    }
    for (const Host::ObjectId id : parameter->Components) {
        const auto* component = Host::Objects().Find<Host::ParameterObject>(id);
        if (component != nullptr && IsDrivenBy(*component, type)) {
            return true;
        }
    }
    return false;
}

} // namespace XSI
