#include "support/PageDriver.h"

#include "scene/CreateGeometry.h"

#include <gmock/gmock.h>

namespace tq4x::test
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* Select = "RenderPriorityListSelect";

class RenderPriorityList : public PluginTest
{
protected:
    /// A material with a render priority; 0 for one that uses none.
    SceneMaterial Prioritized(std::string_view name, int priority)
    {
        const SceneMaterial material = Scene.Material(name);
        XSI::CustomProperty property = XSI::Host::AddDefinedProperty(
            material, "TQ4X_ForPennonRenderPriorityProp", "TQ4X_ForPennonRenderPriorityProp");
        property.PutParameterValue(L"TQ4X_ForPennonRenderPrioUsePriority", priority != 0);
        property.PutParameterValue(L"TQ4X_ForPennonRenderPrioPriority", priority);
        return material;
    }
};

TEST_F(RenderPriorityList, ShowsAllMaterialsWithAlignedPriorities)
{
    Prioritized("a", 7);
    Prioritized("b", 42);
    Prioritized("c", 100);
    Prioritized("d", 255);
    Prioritized("e", 9);
    Prioritized("f", 10);
    Prioritized("g", 99);
    const SceneMaterial plain = Scene.Material("plain");
    XSI::Host::CreateMaterial("other", XSI::Host::CreateMaterialLibrary("OtherLib"));
    PageDriver page("OnTQ4XRenderPriorityListDialog");
    EXPECT_THAT(page.Rows(Select),
                ElementsAre("[__7]     a", "[_42]     b", "[100]     c", "[255]     d", "[__9]     e",
                            "[_10]     f", "[_99]     g", "[__0]     plain", "[__0]     other"));
    EXPECT_TRUE(HasProperty(plain, "RenderPriorityProp")) << "a row finds or makes the property";
    EXPECT_EQ(page.Refreshes(), 1);
}

TEST_F(RenderPriorityList, AnEmptyListShowsOneRow)
{
    PageDriver page("OnTQ4XRenderPriorityListDialog");
    EXPECT_THAT(page.Rows(Select), ElementsAre("None"));
    EXPECT_FALSE(page.IsEnabled("PriorityMoveUpButton"));
    EXPECT_FALSE(page.IsEnabled("PriorityMoveDownButton"));
    page.Set(Select, 0).Press("EditPriorityButton").Press("PrioritySortButton").Press("PriorityUpdateButton");
    EXPECT_THAT(page.Rows(Select), ElementsAre("None"));
    EXPECT_EQ(Calls("SelectObj"), 0);
}

TEST_F(RenderPriorityList, MoveButtonsEndAtTheEnds)
{
    Prioritized("a", 1);
    PageDriver single("OnTQ4XRenderPriorityListDialog");
    EXPECT_FALSE(single.IsEnabled("PriorityMoveUpButton"));
    EXPECT_FALSE(single.IsEnabled("PriorityMoveDownButton"));
    Prioritized("b", 2);
    Prioritized("c", 3);
    single.Page().Close();
    PageDriver page("OnTQ4XRenderPriorityListDialog");
    EXPECT_FALSE(page.IsEnabled("PriorityMoveUpButton"));
    EXPECT_TRUE(page.IsEnabled("PriorityMoveDownButton"));
    page.Set(Select, 1);
    EXPECT_TRUE(page.IsEnabled("PriorityMoveUpButton"));
    EXPECT_TRUE(page.IsEnabled("PriorityMoveDownButton"));
    page.Set(Select, 2);
    EXPECT_TRUE(page.IsEnabled("PriorityMoveUpButton"));
    EXPECT_FALSE(page.IsEnabled("PriorityMoveDownButton"));
    page.Set(Select, -1);
    EXPECT_FALSE(page.IsEnabled("PriorityMoveUpButton")) << "none chosen";
    EXPECT_FALSE(page.IsEnabled("PriorityMoveDownButton"));
}

TEST_F(RenderPriorityList, MovingARowKeepsItChosenAndChangesNoPriority)
{
    const SceneMaterial a = Prioritized("a", 1);
    const SceneMaterial b = Prioritized("b", 2);
    PageDriver page("OnTQ4XRenderPriorityListDialog");
    page.Press("PriorityMoveDownButton");
    EXPECT_THAT(page.Rows(Select), ElementsAre("[__2]     b", "[__1]     a"));
    EXPECT_EQ(page.Number(Select), 1);
    EXPECT_FALSE(page.IsEnabled("PriorityMoveDownButton"));
    EXPECT_TRUE(page.TryPress("PriorityMoveDownButton") == XSI::CStatus::AccessDenied);
    page.Press("PriorityMoveUpButton");
    EXPECT_THAT(page.Rows(Select), ElementsAre("[__1]     a", "[__2]     b"));
    EXPECT_EQ(page.Number(Select), 0);
    EXPECT_EQ(static_cast<LONG>(ValueOf(a, "RenderPriorityProp", "RenderPrioPriority")), 1);
    EXPECT_EQ(static_cast<LONG>(ValueOf(b, "RenderPriorityProp", "RenderPrioPriority")), 2);
    EXPECT_EQ(page.Refreshes(), 3);
}

TEST_F(RenderPriorityList, SortsByPriorityWithoutChangingTheOrderOfEquals)
{
    Prioritized("z", 5);
    Prioritized("y", 200);
    Prioritized("x", 5);
    Prioritized("w", 0);
    PageDriver page("OnTQ4XRenderPriorityListDialog");
    page.Press("PrioritySortButton");
    EXPECT_THAT(page.Rows(Select), ElementsAre("[__0]     w", "[__5]     z", "[__5]     x", "[200]     y"));
}

TEST_F(RenderPriorityList, SortsByNameWithoutRegardToCase)
{
    for (const char* name : {"beta", "Alpha", "alpha", "Zeta", "_low", "Äpfel"})
        Prioritized(name, 0);
    PageDriver page("OnTQ4XRenderPriorityListDialog");
    page.Press("MaterialSortButton");
    EXPECT_THAT(page.Rows(Select), ElementsAre("[__0]     _low", "[__0]     Alpha", "[__0]     alpha",
                                               "[__0]     beta", "[__0]     Zeta", "[__0]     Äpfel"));
}

TEST_F(RenderPriorityList, ChoosingARowSelectsTheObjectsThatUseTheMaterial)
{
    const SceneMaterial red = Prioritized("red", 1);
    const SceneMaterial blue = Prioritized("blue", 2);
    SceneMesh plate = Scene.Mesh("plate");
    plate.Square(red);
    SceneMesh box = Scene.Mesh("box");
    box.Square(blue);
    XSI::Host::SetMaterial(XSI::Host::CreateCluster(box, "faces"), red);
    XSI::Host::SetMaterial(XSI::Host::CreateCluster(box, "more"), red);
    PageDriver page("OnTQ4XRenderPriorityListDialog");
    page.Set(Select, 0);
    EXPECT_THAT(SelectedNames(), ElementsAre("plate", "box")) << "users of a part count once";
    EXPECT_EQ(Calls("FrameSelection"), 0);
    page.Set("RenderPriorityListFrameObjects", true);
    EXPECT_EQ(Calls("FrameSelection"), 0);
    page.Set(Select, 1);
    EXPECT_THAT(SelectedNames(), ElementsAre("box"));
    EXPECT_EQ(Calls("FrameSelection"), 1);
}

TEST_F(RenderPriorityList, EditOpensTheChosenMaterialsProperty)
{
    Prioritized("red", 1);
    const SceneMaterial blue = Prioritized("blue", 2);
    PageDriver page("OnTQ4XRenderPriorityListDialog");
    Scene.Host().Fill.PageOpened = [](XSI::Host::PropertyPage& opened) {
        PageDriver(opened).Set("RenderPrioPriority", 77);
    };
    page.Set(Select, 1).Press("EditPriorityButton");
    EXPECT_EQ(static_cast<LONG>(ValueOf(blue, "RenderPriorityProp", "RenderPrioPriority")), 77);
    EXPECT_THAT(page.Rows(Select), ElementsAre("[__1]     red", "[_77]     blue"));
}

TEST_F(RenderPriorityList, UpdateCollectsAnewAndChoosesTheFirstRow)
{
    Prioritized("b", 1);
    Prioritized("a", 2);
    PageDriver page("OnTQ4XRenderPriorityListDialog");
    page.Press("MaterialSortButton").Set(Select, 1);
    Prioritized("late", 3);
    EXPECT_EQ(page.Rows(Select).size(), 2u);
    page.Press("PriorityUpdateButton");
    EXPECT_THAT(page.Rows(Select), ElementsAre("[__1]     b", "[__2]     a", "[__3]     late"));
    EXPECT_EQ(page.Number(Select), 0);
}

TEST_F(RenderPriorityList, DeletedMaterialsLeaveTheList)
{
    const SceneMaterial a = Prioritized("a", 1);
    Prioritized("b", 2);
    PageDriver page("OnTQ4XRenderPriorityListDialog");
    XSI::Host::Objects().Delete(a.Object().GetObjectID());
    page.Press("PrioritySortButton");
    EXPECT_THAT(page.Rows(Select), ElementsAre("[__2]     b"));
}

} // namespace
} // namespace tq4x::test
