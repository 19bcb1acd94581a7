#pragma once

#include <filesystem>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "ReadDocument.h"

namespace tq4x::reader
{

/// A file of an export, as it was read.
struct ExportedFile
{
    std::filesystem::path Path; ///< clips are named by its base name
    Document Content;
};

/// Files that belong together: at most one model, and what moves it, stands around it or covers it.
struct ExportedFiles
{
    std::vector<ExportedFile> Files; ///< in the order in which they were given, without the textures
    std::map<std::string, Texture, std::less<>> Textures; ///< by name
    std::vector<Finding> Findings; ///< what is wrong with the files, those of the found textures too
    bool HasErrors = false;        ///< some finding is an error: the files are not fit to be converted
};

/// Reads files of any of the eight kinds, at most one of them a model. Textures that they refer to and that
/// are not among the given files are read from where the reference says, relative to the referring file.
/// Every file is checked against its grammar and for what belongs together inside it. A texture that does not
/// exist is a warning.
[[nodiscard]] ExportedFiles ReadExport(std::span<const std::filesystem::path> files);

} // namespace tq4x::reader
