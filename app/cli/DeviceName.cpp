#include "cli/DeviceName.h"

#include <algorithm>
#include <array>
#include <string>

namespace tq4x::cli
{
namespace
{

constexpr std::array<std::string_view, 6> Devices = {"con", "prn", "aux", "nul", "conin$", "conout$"};
constexpr std::array<std::string_view, 2> NumberedDevices = {"com", "lpt"};

/// A digit other than 0, or one of the three superscript digits that count as such.
bool IsPortNumber(std::string_view text)
{
    return (text.size() == 1 && text[0] >= '1' && text[0] <= '9') || text == "\xc2\xb9" ||
           text == "\xc2\xb2" || text == "\xc2\xb3";
}

} // namespace

bool IsDeviceName(std::string_view name)
{
    std::string base(name.substr(0, name.find('.')));
    base.erase(base.find_last_not_of(' ') + 1);
    std::ranges::transform(base, base.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    const auto isPort = [&](std::string_view device) {
        return base.starts_with(device) && IsPortNumber(std::string_view(base).substr(device.size()));
    };
    return std::ranges::find(Devices, base) != Devices.end() || std::ranges::any_of(NumberedDevices, isPort);
}

} // namespace tq4x::cli
