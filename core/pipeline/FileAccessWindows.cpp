#include "pipeline/FileAccess.h"

#include "pipeline/TextHelpers.h"
#include "pipeline/WideText.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <shlwapi.h>
#include <sys/stat.h>

#include <algorithm>

namespace tq4x
{
namespace
{

/// Longer paths are taken by the system only in a form of their own. A folder must leave room for the
/// shortest kind of file names.
constexpr std::size_t LongestPlainPath = MAX_PATH - 13;

/// Absolute, with backslashes, without "." and "..".
std::wstring FullPath(const std::wstring& path)
{
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

/// The form of a full path that has no limit.
std::wstring UnlimitedForm(const std::wstring& full)
{
    if (full.starts_with(L"\\\\"))
        return full.starts_with(L"\\\\?\\") ? full : L"\\\\?\\UNC" + full.substr(1);
    return L"\\\\?\\" + full;
}

std::FILE* OpenStream(const std::filesystem::path& path, int flags, const char* mode)
{
    int handle = -1;
    if (_wsopen_s(&handle, path.c_str(), flags | _O_NOINHERIT, _SH_DENYNO, _S_IREAD | _S_IWRITE) != 0)
        return nullptr;
    std::FILE* stream = _fdopen(handle, mode);
    if (stream == nullptr)
        _close(handle);
    return stream;
}

} // namespace

std::filesystem::path FilePath(std::string_view path)
{
    if (path.find('\0') != std::string_view::npos)
        return {};
    const std::wstring wide = WidenText(SystemCodePage(), path);
    const std::wstring full = FullPath(wide); // a short path may stand for a long one in a deep folder
    return std::max(wide.size(), full.size()) > LongestPlainPath ? UnlimitedForm(full) : wide;
}

std::string PathOfFile(const std::filesystem::path& file)
{
    return NarrowText(SystemCodePage(), file.native());
}

bool PathExists(std::string_view path)
{
    return PathFileExistsW(FilePath(path).c_str()) != 0;
}

std::FILE* OpenForUpdate(const std::filesystem::path& path)
{
    return OpenStream(path, _O_RDWR | _O_BINARY, "r+b");
}

std::FILE* CreateNewFile(const std::filesystem::path& path, LineEnds lineEnds)
{
    const bool isText = lineEnds == LineEnds::Native;
    return OpenStream(path, _O_CREAT | _O_EXCL | _O_WRONLY | (isText ? _O_TEXT : _O_BINARY),
                      isText ? "w" : "wb");
}

} // namespace tq4x
