#include <io.h>
#include <windows.h>

#include <shellapi.h>

#include <atomic>
#include <cstdlib>

#include "cli/ExitCode.h"
#include "cli/Terminal.h"
#include "scene/NarrowText.h"

namespace tq4x::cli
{
namespace
{

std::atomic<bool> isInterrupted = false;

/// Called by the system in a thread of its own.
BOOL WINAPI NoteEvent(DWORD event)
{
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
        return FALSE;
    }
    if (isInterrupted.exchange(true)) {
        _exit(Interrupted);
    }
    return TRUE;
}

/// Whether a standard stream goes to a console. Other devices, such as NUL, are none.
bool IsConsole(DWORD stream)
{
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(stream), &mode) != 0;
}

/// The console belongs to whoever started us, so its way to read bytes as text is put back.
UINT inputCodePage = 0;
UINT outputCodePage = 0;

void RestoreConsole()
{
    SetConsoleCP(inputCodePage);
    SetConsoleOutputCP(outputCodePage);
}

void AllowColors(DWORD stream)
{
    const HANDLE handle = GetStdHandle(stream);
    DWORD mode = 0;
    if (GetConsoleMode(handle, &mode) != 0) {
        SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
}

} // namespace

bool IsInputTerminal()
{
    return IsConsole(STD_INPUT_HANDLE);
}

bool IsErrorTerminal()
{
    return IsConsole(STD_ERROR_HANDLE);
}

void PrepareConsole()
{
    inputCodePage = GetConsoleCP();
    outputCodePage = GetConsoleOutputCP();
    if (inputCodePage != 0 && outputCodePage != 0) {
        SetConsoleCP(CP_UTF8);
        SetConsoleOutputCP(CP_UTF8);
        std::atexit(RestoreConsole);
    }
    AllowColors(STD_OUTPUT_HANDLE);
    AllowColors(STD_ERROR_HANDLE);
}

// What `main` is given is in the system's code page, which can't hold every path.
std::vector<std::string> CommandWords(int, char**)
{
    int count = 0;
    wchar_t** const texts = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> words;
    for (int i = 1; texts != nullptr && i < count; ++i) {
        words.push_back(XSI::Utf8FromWide(texts[i]));
    }
    LocalFree(texts);
    return words;
}

void CatchSignals()
{
    SetConsoleCtrlHandler(NoteEvent, TRUE);
}

void CheckInterrupt()
{
    if (isInterrupted) {
        throw InterruptedByUser();
    }
}

} // namespace tq4x::cli
