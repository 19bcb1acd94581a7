#pragma once

#include <string>

#include "gltf/JsonValue.h"

namespace tq4x::cli
{

/// What is in one file, or why that can't be told.
struct FileInfo
{
    std::string Text;
    gltf::JsonValue Json;
    std::string Error; ///< a sentence; empty: the others hold what there is
};

/// Whether the extension is one of those that the exporter writes.
[[nodiscard]] bool IsWrittenKind(const std::string& file);

/// Of a file that the exporter wrote.
[[nodiscard]] FileInfo DescribeWrittenFile(const std::string& file);

} // namespace tq4x::cli
