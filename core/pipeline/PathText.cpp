#include "pipeline/PathText.h"

#include "pipeline/TextHelpers.h"

#include <algorithm>

namespace tq4x
{
namespace
{

#ifdef _WIN32
constexpr bool IsWindows = true;
#else
constexpr bool IsWindows = false;
#endif

constexpr std::string_view Separators = "/\\";
constexpr std::string_view FolderEnds = IsWindows ? "/\\:" : "/\\";
constexpr char Separator = IsWindows ? '\\' : '/';

/// Position behind the last character that is one of `wanted`, 0 if there is none. Goes by characters: the
/// second byte of a double-byte character may look like a backslash.
std::size_t EndOfLast(std::string_view text, std::string_view wanted)
{
    std::size_t end = 0;
    for (std::size_t i = 0, length = 0; i < text.size(); i += length) {
        length = CharacterLength(text, i);
        if (length == 1 && wanted.find(text[i]) != std::string_view::npos)
            end = i + 1;
    }
    return end;
}

std::size_t StartOfExtension(std::string_view filePart)
{
    const std::size_t end = EndOfLast(filePart, ".");
    return end == 0 ? filePart.size() : end - 1;
}

} // namespace

std::string AppendPath(std::string_view folder, std::string_view name)
{
    std::string path(folder);
    if (!folder.empty() && !EndsWithSeparator(folder))
        path += Separator;
    return path.append(name);
}

bool EndsWithSeparator(std::string_view path)
{
    return !path.empty() && EndOfLast(path, Separators) == path.size();
}

std::string FilePart(std::string_view path)
{
    return std::string(path.substr(EndOfLast(path, FolderEnds)));
}

std::string FileStem(std::string_view path)
{
    std::string name = FilePart(path);
    name.resize(StartOfExtension(name));
    return name;
}

std::string FileExtension(std::string_view path)
{
    const std::string name = FilePart(path);
    return name.substr(StartOfExtension(name));
}

std::string NativePath(std::string_view path)
{
    return IsWindows ? std::string(path) : ForwardSlashes(path);
}

std::string ForwardSlashes(std::string_view path)
{
    std::string native(path);
    for (std::size_t i = 0, length = 0; i < native.size(); i += length) {
        length = CharacterLength(native, i);
        if (native[i] == '\\')
            native[i] = '/';
    }
    return native;
}

bool IsLeftByShell(std::string_view path)
{
    return !IsWindows || std::ranges::count(path, '%') < 2;
}

} // namespace tq4x
