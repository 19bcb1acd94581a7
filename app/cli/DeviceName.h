#pragma once

#include <string_view>

namespace tq4x::cli
{

/// Whether Windows takes a file's name for a device, whatever its extension: "con", "AUX.v2", "com1", "nul ".
/// The exporter's files are made for it, so that such names are refused on all systems.
[[nodiscard]] bool IsDeviceName(std::string_view name);

} // namespace tq4x::cli
