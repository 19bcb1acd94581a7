#pragma once

#include <string_view>

#include <xsi_value.h>

namespace tq4x::gltf
{

/// The value that a text stands for in a parameter of a type; empty if it is none. Flags are "true", "false",
/// "1" or "0" in any case of letters, a number must be the whole text and finite, texts are taken as they
/// are.
[[nodiscard]] XSI::CValue ReadPageValue(std::string_view text, XSI::CValue::DataType type);

/// What the values of a type are, for messages: "a whole number".
[[nodiscard]] std::string_view PageValueKind(XSI::CValue::DataType type);

} // namespace tq4x::gltf
