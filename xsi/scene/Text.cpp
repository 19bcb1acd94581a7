#include "scene/Text.h"

#include <charconv>
#include <limits>

#include "scene/NarrowText.h"

namespace XSI::Host
{

CString FromUtf8(std::string_view text)
{
    return CString(WideFromUtf8(text).c_str());
}

std::string ToUtf8(const CString& text)
{
    return Utf8FromWide(text.GetWideString());
}

std::optional<double> NumberAtStart(const CString& text)
{
    const std::string narrow = ToUtf8(text);
    std::size_t start = narrow.find_first_not_of(" \t\r\n");
    if (start == std::string::npos) {
        return std::nullopt;
    }
    if (narrow[start] == '+' && start + 1 < narrow.size() && narrow[start + 1] != '-') {
        ++start;
    }
    double number = 0.0;
    const auto result = std::from_chars(narrow.data() + start, narrow.data() + narrow.size(), number);
    if (result.ec == std::errc::result_out_of_range) {
        // The routine leaves the number alone; only its sign and the kind of overflow are to be told.
        const double largest = std::numeric_limits<double>::max();
        const bool isTiny = narrow.find("e-", start) != std::string::npos;
        return isTiny ? 0.0 : narrow[start] == '-' ? -largest : largest;
    }
    return result.ec == std::errc() ? std::optional(number) : std::nullopt;
}

} // namespace XSI::Host
