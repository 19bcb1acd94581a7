#include "pages/PageParameters.h"

#include <xsi_parameter.h>

namespace tq4x
{
namespace
{

constexpr LONG SelectedListHeight = 80;       // pixels
constexpr LONG PushButtonStyle = 0x0001'0000; // a plain button that the tabulator key reaches

XSI::CValue InitialValue(const PageParameter& parameter)
{
    if (parameter.Type == XSI::CValue::siString)
        return XSI::CString();
    return XSI::CValue(parameter.Default).ConvertTo(parameter.Type);
}

void AddParameter(XSI::CustomProperty& property, const PageParameter& parameter)
{
    const bool isLimited = parameter.Min != parameter.Max;
    const XSI::CValue low = isLimited ? XSI::CValue(parameter.Min) : XSI::CValue();
    const XSI::CValue high = isLimited ? XSI::CValue(parameter.Max) : XSI::CValue();
    const XSI::CString noText;
    XSI::Parameter added;
    property.AddParameter(parameter.Name, parameter.Type, XSI::siPersistable, noText, noText,
                          InitialValue(parameter), low, high, low, high, added);
    added.PutCapabilityFlag(XSI::siReadOnly, parameter.IsReadOnly);
}

} // namespace

void AddMissingParameters(XSI::CustomProperty& property, std::span<const PageParameter> parameters)
{
    for (const PageParameter& parameter : parameters)
        if (!property.GetParameter(parameter.Name).IsValid())
            AddParameter(property, parameter);
}

std::string ReadText(const XSI::CustomProperty& property, const char* parameter)
{
    const XSI::CString text = property.GetParameterValue(parameter);
    return text.GetAsciiString();
}

void SetEnabled(const XSI::CustomProperty& property, const char* parameter, bool isEnabled)
{
    property.GetParameter(parameter).PutCapabilityFlag(XSI::siReadOnly, !isEnabled);
}

XSI::CValueArray Choices(std::span<const char* const> texts, int first)
{
    XSI::CValueArray choices;
    for (const char* const text : texts) {
        choices.Add(text);
        choices.Add(first++);
    }
    return choices;
}

void AddPushButton(XSI::PPGLayout& layout, const char* parameter, const char* caption)
{
    XSI::PPGItem item = layout.AddItem(parameter, caption, XSI::siControlDSControl);
    item.PutAttribute(XSI::siUIClass, "Button");
    item.PutAttribute(XSI::siUICaption, caption);
    item.PutAttribute(XSI::siUIStyle, PushButtonStyle);
    item.PutAttribute(XSI::siUINoLabel, true);
}

void AddSelectedBlock(XSI::PPGLayout& layout, const char* list)
{
    layout.AddGroup("Selected");
    XSI::PPGItem item = layout.AddString(list, XSI::CString(), true, SelectedListHeight);
    item.PutAttribute(XSI::siUINoLabel, true);
    layout.EndGroup();
}

} // namespace tq4x
