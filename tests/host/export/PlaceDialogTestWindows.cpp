#include "export/PlaceDialog.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace tq4x
{
namespace
{

/// A window with a part in it that bears a text.
class TestWindow
{
public:
    TestWindow(const char* title, const char* partTitle, const RECT& place)
        : m_window(CreateWindowExA(0, "STATIC", title, WS_OVERLAPPEDWINDOW | WS_VISIBLE, place.left,
                                   place.top, place.right - place.left, place.bottom - place.top, nullptr,
                                   nullptr, nullptr, nullptr))
    {
        EXPECT_NE(m_window, nullptr);
        if (partTitle != nullptr)
            CreateWindowExA(0, "STATIC", partTitle, WS_CHILD | WS_VISIBLE, 0, 0, 10, 10, m_window, nullptr,
                            nullptr, nullptr);
    }

    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    ~TestWindow() { DestroyWindow(m_window); }

    void Show(int state) const { ShowWindow(m_window, state); }

    bool IsMaximised() const { return IsZoomed(m_window) != 0; }

    bool IsMinimised() const { return IsIconic(m_window) != 0; }

    RECT Place() const
    {
        RECT place{};
        GetWindowRect(m_window, &place);
        return place;
    }

private:
    HWND m_window = nullptr;
};

RECT FreeArea()
{
    RECT area{};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
    return area;
}

void ExpectInside(const RECT& place)
{
    const RECT area = FreeArea();
    EXPECT_GE(place.left, area.left);
    EXPECT_GE(place.top, area.top);
    EXPECT_LE(place.right, area.right);
    EXPECT_LE(place.bottom, area.bottom);
}

TEST(PlaceDialog, MovesTheWindowToWhereAllOfItIsSeen)
{
    const RECT area = FreeArea();
    ASSERT_GT(area.right, area.left);
    for (const RECT& place : {RECT{area.right - 50, area.bottom - 50, area.right + 250, area.bottom + 150},
                              RECT{area.left - 100, area.top - 90, area.left + 200, area.top + 110},
                              RECT{area.left + 10, area.top + 10, area.left + 310, area.bottom + 500}}) {
        const TestWindow byTitle("Page_1", nullptr, place);
        const TestWindow byPart("host", "a Page_2 of the host", place);
        PlaceDialog("Page_1");
        PlaceDialog("Page_2");
        ExpectInside(byTitle.Place());
        ExpectInside(byPart.Place());
    }
}

TEST(PlaceDialog, LeavesAWindowThatIsSeenAndOthersAlone)
{
    const RECT area = FreeArea();
    const RECT inside = {area.left + 20, area.top + 30, area.left + 220, area.top + 130};
    const RECT outside = {area.right - 50, area.top, area.right + 150, area.top + 100};
    const TestWindow seen("Page", nullptr, inside);
    const TestWindow other("Other", nullptr, outside);
    PlaceDialog("Page");
    PlaceDialog("Nothing");
    EXPECT_EQ(seen.Place().left, inside.left);
    EXPECT_EQ(seen.Place().bottom, inside.bottom);
    EXPECT_EQ(other.Place().right, outside.right);
}

TEST(PlaceDialog, LeavesMaximisedAndMinimisedWindowsAlone)
{
    const RECT area = FreeArea();
    const RECT usual = {area.left + 20, area.top + 30, area.left + 220, area.top + 130};
    for (const int state : {SW_MAXIMIZE, SW_MINIMIZE}) {
        const TestWindow window("Page", nullptr, usual);
        window.Show(state);
        ASSERT_TRUE(window.IsMaximised() || window.IsMinimised());
        const RECT before = window.Place();
        PlaceDialog("Page");
        const RECT after = window.Place();
        EXPECT_TRUE(EqualRect(&before, &after)) << after.left << " " << after.top << " " << after.right;
        window.Show(SW_RESTORE);
        EXPECT_EQ(window.Place().left, usual.left);
        EXPECT_EQ(window.Place().bottom, usual.bottom);
    }
}

} // namespace
} // namespace tq4x
