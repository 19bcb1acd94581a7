#pragma once

#include <string>
#include <string_view>

namespace tq4x
{

// Paths are texts of the system's code page that may hold both separators. They stay as they were told until
// the border to the file system (FileAccess.h), which makes them the system's own.

/// Joins a folder and a name with the system's separator ("\" on Windows, "/" elsewhere), which is added only
/// if the folder does not end in "/" or "\". An empty folder gives the name alone.
/// Windows' own call for this, PathAppendW, would refuse long paths and rewrite ".." in what messages show.
std::string AppendPath(std::string_view folder, std::string_view name);

/// True if the last character is "/" or "\".
bool EndsWithSeparator(std::string_view path);

/// What stands behind the last "/" or "\" (on Windows also behind the drive's ":").
std::string FilePart(std::string_view path);

/// The file part without its extension, which begins at the last ".": "a/b.c.tga" gives "b.c", "b" gives "b".
std::string FileStem(std::string_view path);

/// The extension of the file part with its ".", or nothing.
std::string FileExtension(std::string_view path);

/// Every "\" becomes "/" except on Windows.
std::string NativePath(std::string_view path);

/// Every "\" becomes "/" on all systems: paths inside scripts and references.
std::string ForwardSlashes(std::string_view path);

/// True if the system's shell takes the path between double quotes as it stands, as far as percent signs go:
/// on Windows it may put a variable in the place of what two of them enclose.
bool IsLeftByShell(std::string_view path);

} // namespace tq4x
