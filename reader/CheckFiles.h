#pragma once

#include <filesystem>
#include <span>
#include <vector>

#include "Finding.h"
#include "ReadDocument.h"

namespace tq4x::reader
{

struct CheckResult
{
    std::vector<Finding> Findings;   ///< file by file
    std::size_t FileCount = 0;       ///< files that were looked at
    std::size_t UnreadableCount = 0; ///< of these, files that could not be read at all
};

/// Checks files: against the grammar of their kind, for what belongs together inside them, and against the
/// files beside them that they refer to (textures of a model; the model, found by its base name, of an
/// animation). A folder stands for all files of the eight kinds below it, in order of their paths.
[[nodiscard]] CheckResult CheckFiles(std::span<const std::filesystem::path> paths);

/// Checks what belongs together inside one document, without the files beside it. The document must follow
/// the grammar of its kind.
void CheckDocument(const Document& document, FindingList& findings);

} // namespace tq4x::reader
