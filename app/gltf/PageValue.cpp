#include "gltf/PageValue.h"

#include <charconv>
#include <cmath>
#include <optional>

#include "scene/Text.h"

namespace tq4x::gltf
{
namespace
{

namespace Host = XSI::Host;

template<class Number>
std::optional<Number> ReadWhole(std::string_view text)
{
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

XSI::CValue ReadFlag(const XSI::CString& text)
{
    if (text.IsEqualNoCase(L"true") || text == L"1") {
        return true;
    }
    return text.IsEqualNoCase(L"false") || text == L"0" ? XSI::CValue(false) : XSI::CValue();
}

} // namespace

XSI::CValue ReadPageValue(std::string_view text, XSI::CValue::DataType type)
{
    switch (type) {
    case XSI::CValue::siBool:
        return ReadFlag(Host::FromUtf8(text));
    case XSI::CValue::siInt4: {
        const auto number = ReadWhole<LONG>(text);
        return number ? XSI::CValue(*number) : XSI::CValue();
    }
    case XSI::CValue::siString:
        return Host::FromUtf8(text);
    default: {
        const auto number = ReadWhole<double>(text);
        return number && std::isfinite(*number) ? XSI::CValue(*number) : XSI::CValue();
    }
    }
}

std::string_view PageValueKind(XSI::CValue::DataType type)
{
    switch (type) {
    case XSI::CValue::siBool:
        return "true or false";
    case XSI::CValue::siInt4:
        return "a whole number";
    case XSI::CValue::siString:
        return "a text";
    default:
        return "a number";
    }
}

} // namespace tq4x::gltf
