#include "export/PlaceDialog.h"

#include <windows.h>

#include <algorithm>
#include <array>

namespace tq4x
{
namespace
{

struct Search
{
    const std::string& PageName;
    HWND Found = nullptr;
};

bool BearsName(HWND window, const std::string& name)
{
    std::array<char, 512> text{};
    GetWindowTextA(window, text.data(), static_cast<int>(text.size()));
    return std::string(text.data()).find(name) != std::string::npos;
}

/// Looks at one window; ends the search when it is the one.
BOOL CALLBACK VisitWindow(HWND window, LPARAM parameter)
{
    auto& search = *reinterpret_cast<Search*>(parameter);
    if (BearsName(window, search.PageName))
        search.Found = window;
    return search.Found == nullptr ? TRUE : FALSE;
}

/// Looks at a window of this process and at all that it holds: the host may show the name in a part of it.
BOOL CALLBACK VisitTopWindow(HWND window, LPARAM parameter)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != GetCurrentProcessId() || IsWindowVisible(window) == 0)
        return TRUE;
    if (VisitWindow(window, parameter) == FALSE)
        return FALSE;
    EnumChildWindows(window, VisitWindow, parameter);
    return reinterpret_cast<Search*>(parameter)->Found == nullptr ? TRUE : FALSE;
}

/// The window of its own that a part of one belongs to.
HWND FrameOf(HWND window)
{
    while ((GetWindowLongA(window, GWL_STYLE) & WS_CHILD) != 0 && GetParent(window) != nullptr)
        window = GetParent(window);
    return window;
}

RECT FreeAreaAround(HWND window)
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoA(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor.rcWork;
}

void MoveInto(HWND window, const RECT& area)
{
    RECT place{};
    if (IsZoomed(window) != 0 || IsIconic(window) != 0 || GetWindowRect(window, &place) == 0)
        return; // the edges of a maximised window are beyond the screen on purpose
    const long width = std::min(place.right - place.left, area.right - area.left);
    const long height = std::min(place.bottom - place.top, area.bottom - area.top);
    const long left = std::clamp(place.left, area.left, area.right - width);
    const long top = std::clamp(place.top, area.top, area.bottom - height);
    MoveWindow(window, left, top, width, height, TRUE);
}

} // namespace

void PlaceDialog(const std::string& pageName)
{
    Search search{pageName};
    EnumWindows(VisitTopWindow, reinterpret_cast<LPARAM>(&search));
    if (search.Found == nullptr)
        return;
    const HWND frame = FrameOf(search.Found);
    MoveInto(frame, FreeAreaAround(frame));
}

} // namespace tq4x
