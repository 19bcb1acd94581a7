#include "pipeline/Platform.h"

#include "pipeline/FileAccess.h"
#include "pipeline/TextHelpers.h"
#include "pipeline/WideText.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <shlwapi.h>

#include <array>
#include <cstdio>

namespace tq4x
{
namespace
{

namespace fs = std::filesystem;

constexpr int MaxTemporaryFiles = 10000; // left by killed processes in one folder

/// Text that the system gave in its own code page, in ours.
std::string FromSystem(const std::string& text)
{
    return SystemCodePage() == GetACP() ? text : NarrowText(SystemCodePage(), WidenText(CP_ACP, text));
}

std::string ReadUserName()
{
    std::array<char, 257> name{}; // the longest user name and its zero
    DWORD size = static_cast<DWORD>(name.size());
    return GetUserNameA(name.data(), &size) != 0 ? FromSystem(name.data()) : std::string();
}

LocalTime ReadLocalTime()
{
    SYSTEMTIME now;
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

std::string FormatTime(const LocalTime& time)
{
    SYSTEMTIME moment{};
    moment.wHour = static_cast<WORD>(time.Hour);
    moment.wMinute = static_cast<WORD>(time.Minute);
    moment.wSecond = static_cast<WORD>(time.Second);
    std::array<char, 128> text{};
    GetTimeFormatA(LOCALE_SYSTEM_DEFAULT, 0, &moment, nullptr, text.data(), static_cast<int>(text.size()));
    return FromSystem(text.data());
}

std::optional<std::string> ReadEnvironment(const std::string& name)
{
    const std::wstring wideName = WidenText(SystemCodePage(), name);
    std::wstring value(GetEnvironmentVariableW(wideName.c_str(), nullptr, 0), L'\0');
    const DWORD length =
        GetEnvironmentVariableW(wideName.c_str(), value.data(), static_cast<DWORD>(value.size()));
    if (length == 0 || length >= value.size()) // not set, empty, or changed meanwhile
        return std::nullopt;
    value.resize(length);
    return NarrowText(SystemCodePage(), value);
}

/// True where nothing stands, or a file, which a copy may take the place of.
bool IsReplaceable(const fs::path& target)
{
    const DWORD attributes = GetFileAttributesW(target.c_str());
    return attributes == INVALID_FILE_ATTRIBUTES ||
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0;
}

/// The narrow call takes texts of the system's code page that are not longer than it has always taken them.
bool CopyNewFile(const std::string& from, const std::string& to)
{
    const std::wstring source = FilePath(from).wstring();
    const std::wstring target = FilePath(to).wstring();
    const bool isPlain = SystemCodePage() == GetACP() && source.size() < MAX_PATH && target.size() < MAX_PATH;
    return isPlain ? CopyFileA(from.c_str(), to.c_str(), TRUE) != 0
                   : CopyFileW(source.c_str(), target.c_str(), TRUE) != 0;
}

/// Copies beside the target and renames the copy over it. A source that may not be written hands that on to
/// its copy, which would stand in the way of the next one: that is taken from both.
bool CopyRegularFile(const std::string& from, const std::string& to)
{
    const fs::path target = FilePath(to);
    if (!IsReplaceable(target))
        return false;
    for (int i = 0; i < MaxTemporaryFiles; ++i) {
        const std::string temporaryText = to + ".tq4x_" + std::to_string(i) + ".part";
        const fs::path temporary = FilePath(temporaryText);
        if (!CopyNewFile(from, temporaryText)) {
            if (GetLastError() == ERROR_FILE_EXISTS)
                continue;
            return false;
        }
        SetFileAttributesW(temporary.c_str(), FILE_ATTRIBUTE_NORMAL);
        if (PathExists(to))
            SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_NORMAL);
        if (MoveFileExW(temporary.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING) != 0)
            return true;
        DeleteFileW(temporary.c_str());
        return false;
    }
    return false;
}

bool IsFolder(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// Position behind the drive or the share that a path starts with, which can't be made.
std::size_t EndOfRoot(const std::wstring& path)
{
    const std::wstring prefix = L"\\\\?\\";
    const std::size_t start = path.starts_with(prefix) ? prefix.size() : 0;
    const wchar_t* const behind = PathSkipRootW(path.c_str() + start);
    return behind == nullptr ? start : static_cast<std::size_t>(behind - path.c_str());
}

/// Makes each missing folder of the path in turn; whether that was possible shows in the end.
bool MakeFolders(const std::string& path)
{
    const std::wstring folder = FilePath(path).wstring();
    for (std::size_t end = folder.find_first_of(L"\\/", EndOfRoot(folder)); end != std::wstring::npos;
         end = folder.find_first_of(L"\\/", end + 1))
        CreateDirectoryW(folder.substr(0, end).c_str(), nullptr);
    CreateDirectoryW(folder.c_str(), nullptr);
    return IsFolder(folder);
}

/// Waits for a started process and closes its handles; its exit code, or nothing if the system does not tell
/// it.
std::optional<int> WaitForExit(const PROCESS_INFORMATION& process)
{
    WaitForInputIdle(process.hProcess, INFINITE);
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD exitCode = 0;
    const bool known = GetExitCodeProcess(process.hProcess, &exitCode) != 0;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    if (!known)
        return std::nullopt;
    return static_cast<int>(exitCode);
}

int RunInShell(const std::string& command)
{
    const std::string line = "cmd.exe /c \"" + command + "\"";
    std::string writable = line; // the call may change its text
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (CreateProcessA(nullptr, writable.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                       &process) == 0) {
        std::fprintf(stderr, "Error: My exec process create: %s\n", line.c_str());
        return 1;
    }
    const std::optional<int> exitCode = WaitForExit(process);
    if (!exitCode)
        std::fprintf(stderr, "Error: My exec process get exit code: %s\n", line.c_str());
    return exitCode.value_or(1);
}

} // namespace

Platform SystemPlatform()
{
    return {ReadUserName,    ReadLocalTime, FormatTime, ReadEnvironment,
            CopyRegularFile, MakeFolders,   RunInShell};
}

} // namespace tq4x
