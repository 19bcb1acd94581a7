#pragma once

#include <xsi_customproperty.h>
#include <xsi_ppglayout.h>
#include <xsi_value.h>

#include <span>
#include <string>

namespace tq4x
{

/// A parameter of a page as it is first added. Texts begin empty.
struct PageParameter
{
    const char* Name;
    XSI::CValue::DataType Type = XSI::CValue::siBool;
    int Default = 0; ///< 0 and 1 for a flag
    int Min = 0;     ///< of integers; equal limits: none
    int Max = 0;
    bool IsReadOnly = false; ///< for the user; code may still write it
};

/// Adds the parameters that the property does not have yet. Limits are hard and those of the control alike.
void AddMissingParameters(XSI::CustomProperty& property, std::span<const PageParameter> parameters);

/// A parameter's value as a text of the core.
std::string ReadText(const XSI::CustomProperty& property, const char* parameter);

/// Lets the user change a parameter, or no longer.
void SetEnabled(const XSI::CustomProperty& property, const char* parameter, bool isEnabled);

/// The texts of a list of choices with their values, which count up from `first`.
XSI::CValueArray Choices(std::span<const char* const> texts, int first = 0);

/// A flag that the page shows as a button: pressing it sets the flag.
void AddPushButton(XSI::PPGLayout& layout, const char* parameter, const char* caption);

/// A group that holds nothing but the list of what the page edits.
void AddSelectedBlock(XSI::PPGLayout& layout, const char* list);

} // namespace tq4x
