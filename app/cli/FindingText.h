#pragma once

#include <string>

#include "Finding.h"
#include "gltf/JsonValue.h"

namespace tq4x::cli
{

/// "house.qmdl:12", or the file alone.
[[nodiscard]] std::string FindingPlace(const reader::Finding& finding);

/// "house.qmdl:12: error TQ-COUNT: ...". Control characters are taken out.
[[nodiscard]] std::string FindingText(const reader::Finding& finding);

[[nodiscard]] gltf::JsonValue FindingAsJson(const reader::Finding& finding);

} // namespace tq4x::cli
