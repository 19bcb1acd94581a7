#pragma once

#include <string>

#include "ReadDocument.h"
#include "gltf/JsonValue.h"

namespace tq4x::cli
{

/// What is in a written file, one line for each thing to know.
[[nodiscard]] std::string FormatWrittenInfo(const reader::Document& document);

[[nodiscard]] gltf::JsonValue WrittenInfoAsJson(const reader::Document& document);

} // namespace tq4x::cli
