#include <xsi_customproperty.h>

#include <xsi_parameter.h>
#include <xsi_ppglayout.h>

#include "scene/CreateParameters.h"
#include "scene/Session.h"
#include "scene/Text.h"

namespace XSI
{

CStatus CustomProperty::AddParameter(const CString& name, CValue::DataType type, LONG capabilities,
                                     const CString& label, const CString& description, const CValue& initial,
                                     Parameter& added)
{
    return AddParameter(name, type, capabilities, label, description, initial, CValue(), CValue(), CValue(),
                        CValue(), added);
}

CStatus CustomProperty::AddParameter(const CString& name, CValue::DataType type, LONG capabilities,
                                     const CString& label, const CString& description, const CValue& initial,
                                     const CValue& minimum, const CValue& maximum,
                                     const CValue& suggestedMinimum, const CValue& suggestedMaximum,
                                     Parameter& added)
{
    added = GetParameter(name);
    if (added.IsValid() || !IsValid()) {
        return CStatus::Fail;
    }
    Host::ParameterDefinition definition;
    definition.Type = type;
    definition.Default = initial.ConvertTo(type);
    definition.Min = minimum;
    definition.Max = maximum;
    definition.SuggestedMin = suggestedMinimum;
    definition.SuggestedMax = suggestedMaximum;
    definition.Label = Host::ToUtf8(label);
    definition.Description = Host::ToUtf8(description);
    added = Host::AddParameter(GetRef(), Host::ToUtf8(name), definition, capabilities);
    return CStatus::OK;
}

CStatus CustomProperty::RemoveParameter(Parameter& parameter)
{
    if (!parameter.IsValid() || parameter.GetParent() != GetRef()) {
        return CStatus::Fail;
    }
    Host::Objects().Delete(parameter.GetObjectID());
    parameter.ResetObject();
    return CStatus::OK;
}

PPGLayout CustomProperty::GetPPGLayout() const
{
    auto* property = Host::Objects().Find<Host::ItemObject>(GetRef());
    if (property == nullptr) {
        return PPGLayout();
    }
    if (Host::Objects().Find(property->Layout) == nullptr) {
        property->Layout =
            Host::Objects().Create<Host::LayoutObject>(siPPGLayoutID, property->Name, {}, property->Id).Id;
    }
    return CRef::FromObjectID(property->Layout);
}

} // namespace XSI
