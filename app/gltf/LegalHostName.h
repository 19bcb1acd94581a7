#pragma once

#include <string>
#include <string_view>

namespace tq4x::gltf
{

/// A name as the host's objects may bear it. The exporter writes names as they stand, so markup (& < >),
/// quotes and control characters must not get so far: each becomes "_". All else stays, letters of any script
/// too.
[[nodiscard]] std::string LegalHostName(std::string_view name);

} // namespace tq4x::gltf
