#pragma once

#include <string>
#include <vector>

#include "glb/ExportedFiles.h"

namespace tq4x::reader
{

struct GlbOptions
{
    double FramesPerSecond = 30; ///< the files count frames; above 0
};

struct GlbResult
{
    std::string Glb;                   ///< the bytes of a binary glTF 2.0 file; empty: `Error` says why
    std::vector<std::string> Warnings; ///< what has no place in glTF, with the names of the objects
    std::string Error;                 ///< a sentence
};

/// Makes one glTF scene of the files of an export. Equal input gives equal bytes; nothing is written to disk.
/// Files with errors (`ExportedFiles::HasErrors`) are refused. docs/to-gltf.md tells what becomes of what.
[[nodiscard]] GlbResult ConvertToGlb(const ExportedFiles& files, const GlbOptions& options = {});

} // namespace tq4x::reader
