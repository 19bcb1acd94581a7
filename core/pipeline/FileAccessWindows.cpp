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

namespace tq4x
{
namespace
{

/// Longer paths are taken by the system only in a form of their own. A folder must leave room for the
/// shortest kind of file names.
constexpr std::size_t LongestPlainPath = MAX_PATH - 13;

/// The form that has no limit: absolute, with backslashes, without "." and "..", behind a prefix.
std::wstring UnlimitedForm(const std::wstring& path)
{
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
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
    return wide.size() > LongestPlainPath ? UnlimitedForm(wide) : wide;
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
