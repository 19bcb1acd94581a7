#include "support/PageDriver.h"

#include <gmock/gmock.h>

namespace tq4x::test
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CombineGroup : public PluginTest
{
protected:
    SceneNode Grouped(std::string_view name, int group, bool isUsed = true)
    {
        const SceneNode node = Scene.Null(name);
        XSI::CustomProperty property = XSI::Host::AddDefinedProperty(node, "TQ4X_ForPennonCombineGroupProp",
                                                                     "TQ4X_ForPennonCombineGroupProp");
        property.PutParameterValue(L"TQ4X_ForPennonCombineGroupUse", isUsed);
        property.PutParameterValue(L"TQ4X_ForPennonCombineGroupValue", group);
        return node;
    }

    static LONG GroupOf(const XSI::CRef& object)
    {
        return ValueOf(object, "CombineGroupProp", "CombineGroupValue");
    }

    static bool IsUsed(const XSI::CRef& object)
    {
        return ValueOf(object, "CombineGroupProp", "CombineGroupUse");
    }

    std::vector<XSI::CRef> Nulls(int count)
    {
        std::vector<XSI::CRef> nodes;
        for (int i = 0; i < count; ++i)
            nodes.push_back(Scene.Null("n" + std::to_string(i)));
        return nodes;
    }
};

TEST_F(CombineGroup, NumbersTheSelectedObjectsShallowerFirst)
{
    const SceneNode body = Scene.Null("body");
    const SceneNode arm = Scene.Null("arm", body);
    const SceneNode hand = Scene.Null("hand", arm);
    const SceneNode leg = Scene.Null("leg", body);
    Scene.Select({hand, leg, arm, body});
    PageDriver page("OnTQ4XSetCombineGroupDialog");
    page.Set("CombineGroupValue", 10).Press("CombineGroupSetSequentialButton");
    EXPECT_EQ(GroupOf(body), 10);
    EXPECT_EQ(GroupOf(leg), 11) << "at one depth in the order of their selection";
    EXPECT_EQ(GroupOf(arm), 12);
    EXPECT_EQ(GroupOf(hand), 13);
    EXPECT_TRUE(IsUsed(hand));
    EXPECT_FALSE(page.Flag("CombineGroupSetSequentialButton"));
    EXPECT_FALSE(static_cast<bool>(ValueOf(body, "CombineGroupProp", "CombineGroupSetSequentialButton")));
}

TEST_F(CombineGroup, RefusesNumbersBeyondTheRange)
{
    const std::vector<XSI::CRef> nodes = Nulls(7);
    Scene.Select(nodes);
    PageDriver("OnTQ4XSetCombineGroupDialog")
        .Set("CombineGroupValue", 250)
        .Press("CombineGroupSetSequentialButton");
    EXPECT_THAT(Messages(), ElementsAre("W Combine Group will be greater than 255"));
    for (const XSI::CRef& node : nodes) {
        EXPECT_EQ(GroupOf(node), 250) << "the value of the page";
        EXPECT_FALSE(IsUsed(node));
    }
}

TEST_F(CombineGroup, GivesTheLastNumberOfTheRange)
{
    const std::vector<XSI::CRef> nodes = Nulls(6);
    Scene.Select(nodes);
    PageDriver("OnTQ4XSetCombineGroupDialog")
        .Set("CombineGroupValue", 250)
        .Press("CombineGroupSetSequentialButton");
    EXPECT_THAT(Messages(), IsEmpty());
    EXPECT_EQ(GroupOf(nodes.front()), 250);
    EXPECT_EQ(GroupOf(nodes.back()), 255);
}

TEST_F(CombineGroup, MarksObjectsThatWereSelectedAfterThePageOpened)
{
    const std::vector<XSI::CRef> nodes = Nulls(2);
    PageDriver page("OnTQ4XSetCombineGroupDialog");
    Scene.Select({nodes[1], Scene.Material("red"), nodes[0]});
    page.Set("CombineGroupValue", 3).Press("CombineGroupSetSequentialButton");
    EXPECT_EQ(GroupOf(nodes[1]), 3);
    EXPECT_EQ(GroupOf(nodes[0]), 4) << "materials take no number";
    EXPECT_TRUE(IsUsed(nodes[0]));
}

TEST_F(CombineGroup, NothingSelectedIsNothingToNumber)
{
    PageDriver("OnTQ4XSetCombineGroupDialog")
        .Set("CombineGroupValue", 255)
        .Press("CombineGroupSetSequentialButton");
    EXPECT_THAT(Messages(), IsEmpty());
    EXPECT_FALSE(IsUsed(Scene.Root()));
}

TEST_F(CombineGroup, SearchesByNumber)
{
    for (const int group : {1, 2, 3})
        Grouped("g" + std::to_string(group), group);
    Grouped("unused", 2, false);
    Scene.Null("unmarked");

    const struct
    {
        int Relation;
        std::vector<std::string> Found;
    } Cases[] = {
        {0, {"g1"}}, {1, {"g1", "g2"}}, {2, {"g2"}}, {3, {"g2", "g3"}}, {4, {"g3"}},
    };

    PageDriver page("OnTQ4XSetCombineGroupDialog");
    page.Set("CombineGroupSearchUsePrecondition", true).Set("CombineGroupSearchPreconditionValue", 2);
    for (const auto& row : Cases) {
        page.Set("CombineGroupSearchPrecondition", row.Relation).Press("CombineGroupSearchButton");
        EXPECT_EQ(SelectedNames(), row.Found) << "relation " << row.Relation;
        EXPECT_FALSE(page.Flag("CombineGroupSearchButton"));
    }
}

TEST_F(CombineGroup, WithoutComparisonFindsAllThatUseAGroup)
{
    Grouped("g1", 1);
    Grouped("unused", 1, false);
    Grouped("g200", 200);
    PageDriver page("OnTQ4XSetCombineGroupDialog");
    EXPECT_TRUE(page.IsEnabled("CombineGroupSearchButton")) << "there are no boxes to wait for";
    page.Press("CombineGroupSearchButton");
    EXPECT_THAT(SelectedNames(), ElementsAre("g1", "g200"));
    EXPECT_EQ(page.Text("CombineGroupSelectList"), "g1\rg200\r");
}

TEST_F(CombineGroup, NothingFoundFixesTheValues)
{
    PageDriver page("OnTQ4XSetCombineGroupDialog");
    page.Set("CombineGroupValue", 9).Press("CombineGroupSearchButton");
    EXPECT_THAT(page.Owners(), ElementsAre("Scene_Root"));
    EXPECT_EQ(page.Number("CombineGroupValue"), 9);
    EXPECT_FALSE(page.IsEnabled("CombineGroupValue"));
    EXPECT_FALSE(page.IsEnabled("CombineGroupUse"));
    EXPECT_TRUE(page.IsEnabled("CombineGroupSearchButton"));
}

} // namespace
} // namespace tq4x::test
