#include "pipeline/Platform.h"

#include "pipeline/FileAccess.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <array>
#include <cstdio>
#include <system_error>
#include <vector>

namespace tq4x
{
namespace
{

namespace fs = std::filesystem;

std::string Narrow(const wchar_t* text)
{
    const int length = WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_ACP, 0, text, -1, narrow.data(), length, nullptr, nullptr);
    narrow.pop_back(); // the terminating zero
    return narrow;
}

std::string ReadUserName()
{
    std::array<char, 257> name{}; // the longest user name and its zero
    DWORD size = static_cast<DWORD>(name.size());
    return GetUserNameA(name.data(), &size) != 0 ? std::string(name.data()) : std::string();
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
    return text.data();
}

std::optional<std::string> ReadEnvironment(const std::string& name)
{
    const std::wstring wideName = fs::path(name).wstring();
    const DWORD size = GetEnvironmentVariableW(wideName.c_str(), nullptr, 0);
    if (size <= 1)
        return std::nullopt;
    std::vector<wchar_t> value(size);
    GetEnvironmentVariableW(wideName.c_str(), value.data(), size);
    return Narrow(value.data());
}

bool CopyRegularFile(const std::string& from, const std::string& to)
{
    return CopyFileA(from.c_str(), to.c_str(), FALSE) != 0;
}

bool MakeFolders(const std::string& path)
{
    std::error_code error;
    const fs::path folder = FilePath(path);
    fs::create_directories(folder, error);
    return fs::is_directory(folder, error);
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
    std::string line = "cmd.exe /c \"" + command + "\"";
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
