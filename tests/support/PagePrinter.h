#pragma once

#include "support/PageDriver.h"

#include <string>

namespace tq4x::test
{

/// The parameters of a property, one a line: type, name, default, limits, and whether the user may change it.
inline std::string PrintParameters(const XSI::CustomProperty& property)
{
    std::string text;
    const XSI::CRefArray parameters = property.GetParameters();
    for (LONG i = 0; i < parameters.GetCount(); ++i) {
        const XSI::Parameter parameter(parameters[i]);
        const XSI::CValue::DataType type = parameter.GetValueType();
        const char* word = type == XSI::CValue::siBool     ? "bool "
                           : type == XSI::CValue::siInt4   ? "int "
                           : type == XSI::CValue::siFloat  ? "float "
                           : type == XSI::CValue::siString ? "string "
                                                           : "other ";
        text += word + Utf8(parameter.GetName());
        text += type == XSI::CValue::siString ? " = \"" + Utf8(parameter.GetDefault().GetAsText()) + "\""
                                              : " = " + Utf8(parameter.GetDefault().GetAsText());
        if (!parameter.GetMin().IsEmpty())
            text += " [" + Utf8(parameter.GetMin().GetAsText()) + ", " +
                    Utf8(parameter.GetMax().GetAsText()) + "]";
        const bool isSlider =
            parameter.GetSuggestedMin().IsEmpty() || (parameter.GetSuggestedMin() == parameter.GetMin() &&
                                                      parameter.GetSuggestedMax() == parameter.GetMax());
        if (!isSlider)
            text += " slider [" + Utf8(parameter.GetSuggestedMin().GetAsText()) + ", " +
                    Utf8(parameter.GetSuggestedMax().GetAsText()) + "]";
        text += (parameter.GetCapabilities() & XSI::siPersistable) != 0 ? "" : " not stored";
        text += parameter.GetCapabilityFlag(XSI::siReadOnly) ? " read-only\n" : "\n";
    }
    return text;
}

inline std::string PrintItem(const XSI::PPGItem& item)
{
    const std::string control = Utf8(item.GetType());
    std::string text = control.empty() ? "item" : control;
    if (!item.GetName().IsEmpty())
        text += " " + Utf8(item.GetName());
    std::string label = Utf8(item.GetLabel());
    for (std::size_t at = label.find('\n'); at != std::string::npos; at = label.find('\n'))
        label.replace(at, 1, "\\n");
    if (!label.empty())
        text += " \"" + label + "\"";
    const XSI::CValueArray choices = item.GetUIItems();
    for (LONG i = 0; i < choices.GetCount(); i += 2)
        text +=
            (i == 0 ? ": " : ", ") + Utf8(choices[i].GetAsText()) + "=" + Utf8(choices[i + 1].GetAsText());
    for (const wchar_t* const name : {XSI::siUIClass, XSI::siUICaption, XSI::siUIStyle, XSI::siUIFont,
                                      XSI::siUIFileFilter, XSI::siUIOpenFile, XSI::siUINoLabel})
        if (const XSI::CValue value = item.GetAttribute(name); !value.IsEmpty())
            text += " " + Utf8(name) + "=" + Utf8(value.GetAsText());
    return text;
}

/// A layout, one item a line, what stands in groups and rows indented.
inline std::string PrintLayout(const XSI::PPGLayout& layout)
{
    std::string text;
    std::size_t depth = 0;
    for (LONG i = 0; i < layout.GetCount(); ++i) {
        const XSI::PPGItem item = layout.GetItem(i);
        const std::string control = Utf8(item.GetType());
        if (control == "endgroup" || control == "endrow") {
            --depth;
            continue;
        }
        text += std::string(4 * depth, ' ') + PrintItem(item) + "\n";
        depth += control == "group" || control == "row" ? 1 : 0;
    }
    return text;
}

} // namespace tq4x::test
