#include "pipeline/FileAccess.h"

#include "pipeline/TextHelpers.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>

namespace tq4x
{

std::filesystem::path FilePath(std::string_view path)
{
    if (path.find('\0') != std::string_view::npos)
        return {};
    const int size = static_cast<int>(path.size());
    const int length = MultiByteToWideChar(SystemCodePage(), 0, path.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(SystemCodePage(), 0, path.data(), size, wide.data(), length);
    return wide;
}

std::FILE* OpenForUpdate(const std::filesystem::path& path)
{
    return _wfopen(path.c_str(), L"r+N");
}

std::FILE* CreateNewFile(const std::filesystem::path& path, LineEnds lineEnds)
{
    int handle = -1;
    const bool isText = lineEnds == LineEnds::Native;
    const int flags = _O_CREAT | _O_EXCL | _O_WRONLY | (isText ? _O_TEXT : _O_BINARY) | _O_NOINHERIT;
    if (_wsopen_s(&handle, path.c_str(), flags, _SH_DENYNO, _S_IREAD | _S_IWRITE) != 0)
        return nullptr;
    std::FILE* stream = _fdopen(handle, isText ? "w" : "wb");
    if (stream == nullptr)
        _close(handle);
    return stream;
}

} // namespace tq4x
