#include "scene/PropertyPage.h"

#include <utility>

#include <xsi_parameter.h>
#include <xsi_ppgeventcontext.h>

#include "scene/ParameterValues.h"
#include "scene/PluginLoader.h"
#include "scene/Session.h"

namespace XSI::Host
{

namespace
{

/// True if an attribute that a callback left is there and set.
bool IsSet(const Attributes& values, const char* name)
{
    const auto found = values.find(name);
    return found != values.end() && static_cast<bool>(found->second);
}

bool Fits(const Parameter& parameter, const CValue& value)
{
    const auto* object = Objects().Find<ParameterObject>(parameter);
    return object != nullptr && !FitValue(*object->Definition, value).IsEmpty();
}

} // namespace

PropertyPage::PropertyPage(CRefArray properties) : m_properties(std::move(properties)) {}

CStatus PropertyPage::Open()
{
    CustomProperty property = m_properties.GetItem(0);
    if (!property.IsValid()) {
        return CStatus::Fail;
    }
    m_isOpen = true;
    m_refreshCount = 0;
    PPGLayout layout = property.GetPPGLayout();
    layout.Clear();
    CallbackCall call;
    call.Source = layout;
    if (!RunCallback(GetType() + "_DefineLayout", call)) {
        FillDefaultLayout();
    }
    return SendEvent(PPGEventContext::siOnInit, property);
}

CStatus PropertyPage::Close()
{
    if (!std::exchange(m_isOpen, false)) {
        return CStatus::OK;
    }
    return SendEvent(PPGEventContext::siOnClosed, m_properties.GetItem(0));
}

std::string PropertyPage::GetType() const
{
    return ToUtf8(CustomProperty(m_properties.GetItem(0)).GetType());
}

PPGLayout PropertyPage::GetLayout() const
{
    return CustomProperty(m_properties.GetItem(0)).GetPPGLayout();
}

CValue PropertyPage::Get(std::string_view parameter) const
{
    return CustomProperty(m_properties.GetItem(0)).GetParameterValue(FromUtf8(parameter));
}

bool PropertyPage::IsEnabled(std::string_view parameter) const
{
    const Parameter found = CustomProperty(m_properties.GetItem(0)).GetParameter(FromUtf8(parameter));
    return found.IsValid() && !found.GetCapabilityFlag(siReadOnly);
}

CStatus PropertyPage::Set(std::string_view parameter, const CValue& value)
{
    const CString name = FromUtf8(parameter);
    const Parameter first = CustomProperty(m_properties.GetItem(0)).GetParameter(name);
    if (!m_isOpen) {
        return CStatus::Fail;
    }
    if (!first.IsValid()) {
        return CStatus::MemberNotFound;
    }
    if (!IsEnabled(parameter)) {
        return CStatus::AccessDenied;
    }
    if (!Fits(first, value)) {
        return CStatus::InvalidArgument;
    }
    for (LONG i = 0; i < m_properties.GetCount(); ++i) {
        CustomProperty(m_properties[i]).PutParameterValue(name, value);
    }
    return SendEvent(PPGEventContext::siParameterChange, first);
}

CStatus PropertyPage::Press(std::string_view button)
{
    const CString name = FromUtf8(button);
    const CustomProperty property = m_properties.GetItem(0);
    const PPGItem item = GetLayout().GetItem(name);
    if (!m_isOpen) {
        return CStatus::Fail;
    }
    if (!item.IsValid()) {
        return CStatus::MemberNotFound;
    }
    if (static_cast<bool>(item.GetAttribute(siUIButtonDisable))) {
        return CStatus::AccessDenied;
    }
    if (property.GetParameter(name).IsValid()) {
        return Set(button, true);
    }
    if (item.GetType() != siControlButton) {
        return CStatus::MemberNotFound;
    }
    return SendEvent(PPGEventContext::siButtonClicked, property, button);
}

CStatus PropertyPage::SendEvent(LONG event, const CRef& source, std::string_view button)
{
    CallbackCall call;
    call.Source = source;
    call.Event = event;
    call.Inspected = m_properties;
    if (event == PPGEventContext::siButtonClicked) {
        call.Values["Button"] = FromUtf8(button);
    }
    const std::optional<CStatus> status = RunCallback(GetType() + "_PPGEvent", call);
    m_refreshCount += IsSet(call.Values, "Refresh") ? 1 : 0;
    if (IsSet(call.Values, "Close")) {
        Close();
    }
    return status.value_or(CStatus::OK);
}

void PropertyPage::FillDefaultLayout() const
{
    PPGLayout layout = GetLayout();
    const CRefArray parameters = CustomProperty(m_properties.GetItem(0)).GetParameters();
    for (LONG i = 0; i < parameters.GetCount(); ++i) {
        layout.AddItem(Parameter(parameters[i]).GetName());
    }
}

} // namespace XSI::Host
