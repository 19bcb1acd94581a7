#include <windows.h>

#include "cli/ChildProcess.h"
#include "cli/ExitCode.h"
#include "cli/Terminal.h"
#include "scene/NarrowText.h"

// A process is known by its handle, which keeps its exit code until it is waited for. Handles have 32 bits in
// 64-bit programs too.

namespace tq4x::cli
{
namespace
{

constexpr DWORD PollMilliseconds = 50; // how long Ctrl-C may stay unnoticed while children run

/// A word as the receiving program's run-time takes it apart again: in quotes, with quotes escaped, and the
/// backslashes before a quote doubled.
std::wstring QuoteWord(const std::wstring& word)
{
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : word) {
        if (c == L'"') {
            quoted.append(backslashes + 1, L'\\');
        }
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    return quoted.append(backslashes, L'\\') + L'"';
}

std::wstring CommandLineOf(const std::vector<std::string>& words)
{
    std::wstring line;
    for (const std::string& word : words) {
        line += (line.empty() ? L"" : L" ") + QuoteWord(XSI::WideFromUtf8(word));
    }
    return line;
}

/// "NAME=value" texts with a zero behind each and one more at the end. Names of some begin with "=".
std::wstring EnvironmentWith(const std::map<std::string, std::string>& variables)
{
    std::wstring environment;
    wchar_t* const own = GetEnvironmentStringsW();
    for (const wchar_t* entry = own; *entry != L'\0'; entry += wcslen(entry) + 1) {
        const std::string text = XSI::Utf8FromWide(entry);
        if (!variables.contains(text.substr(0, text.find('=', 1)))) {
            environment += entry;
            environment += L'\0';
        }
    }
    FreeEnvironmentStringsW(own);
    for (const auto& [name, value] : variables) {
        environment += XSI::WideFromUtf8(name + "=" + value);
        environment += L'\0';
    }
    return environment + L'\0';
}

/// A file that a child may inherit, closed here at the end of the scope.
class InheritedFile
{
public:
    InheritedFile(const wchar_t* path, DWORD access, DWORD creation)
    {
        SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
        m_handle = CreateFileW(path, access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable, creation,
                               FILE_ATTRIBUTE_NORMAL, nullptr);
    }

    InheritedFile(const InheritedFile&) = delete;
    InheritedFile& operator=(const InheritedFile&) = delete;

    ~InheritedFile()
    {
        if (IsOpen()) {
            CloseHandle(m_handle);
        }
    }

    bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE; }

    HANDLE Handle() const { return m_handle; }

private:
    HANDLE m_handle = INVALID_HANDLE_VALUE;
};

bool HasEnded(HANDLE process, DWORD milliseconds)
{
    return WaitForSingleObject(process, milliseconds) == WAIT_OBJECT_0;
}

} // namespace

ChildProcesses::~ChildProcesses()
{
    for (const long id : m_running) {
        TerminateProcess(LongToHandle(id), Interrupted);
    }
    for (const long id : m_running) {
        HasEnded(LongToHandle(id), INFINITE);
        CloseHandle(LongToHandle(id));
    }
}

long ChildProcesses::Start(const ChildCommand& command)
{
    const InheritedFile input(L"NUL", GENERIC_READ, OPEN_EXISTING);
    const InheritedFile output(command.OutputFile.c_str(), GENERIC_WRITE, CREATE_ALWAYS);
    if (!input.IsOpen() || !output.IsOpen()) {
        return 0;
    }
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input.Handle();
    startup.hStdOutput = output.Handle();
    startup.hStdError = output.Handle();
    PROCESS_INFORMATION process{};
    std::wstring line = CommandLineOf(command.Words); // the call may change its text
    std::wstring environment = EnvironmentWith(command.Variables);
    // Without a name of its own for the program the system takes the first word, and knows that ".exe" may be
    // missing.
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_UNICODE_ENVIRONMENT,
                       environment.data(), nullptr, &startup, &process) == 0) {
        return 0;
    }
    CloseHandle(process.hThread);
    const long id = HandleToLong(process.hProcess);
    m_running.insert(id);
    return id;
}

EndedChild ChildProcesses::Wait()
{
    for (;;) {
        for (const long id : m_running) {
            CheckInterrupt();
            const HANDLE process = LongToHandle(id);
            if (!HasEnded(process, PollMilliseconds / static_cast<DWORD>(m_running.size() + 1) + 1)) {
                continue;
            }
            DWORD code = Failed;
            GetExitCodeProcess(process, &code);
            CloseHandle(process);
            m_running.erase(id);
            return {id, static_cast<int>(code)};
        }
    }
}

} // namespace tq4x::cli
