#include "PrintValues.h"
#include "SamplePlugin.h"

#include "support/SceneBuilder.h"

#include "scene/PropertyPage.h"

namespace tq4x::test
{
namespace
{

using namespace XSI;
using Host::PropertyPage;
using testing::ElementsAre;
using testing::IsEmpty;

class PropertyPageTest : public testing::Test
{
protected:
    PropertyPageTest()
    {
        Host::LoadPlugin(SamplePlugin::Callbacks());
        SamplePlugin::Calls().clear();
    }

    CustomProperty AddSample(const char* name) { return AddTo(m_scene.Null(name), L"SampleProp"); }

    static CustomProperty AddTo(const SceneNode& node, const CString& type)
    {
        return CustomProperty(X3DObject(node).AddProperty(type));
    }

    static CRefArray ListOf(const std::vector<CRef>& refs) { return CRefArray(refs); }

    SceneBuilder m_scene;
};

TEST_F(PropertyPageTest, OpeningBuildsTheLayoutAndTellsThePlugin)
{
    CustomProperty property = AddSample("node");
    PropertyPage page(ListOf({property}));
    EXPECT_FALSE(page.IsOpen());
    EXPECT_TRUE(page.Open().Succeeded());
    EXPECT_TRUE(page.IsOpen());
    EXPECT_EQ(page.GetType(), "SampleProp");
    EXPECT_THAT(SamplePlugin::Calls(), ElementsAre("SampleProp_PPGEvent 1 SampleProp of 1"));
    EXPECT_EQ(page.GetRefreshCount(), 1);
    EXPECT_EQ(page.GetLayout().GetItem(L"Value").GetType(), L"radio");
    EXPECT_EQ(page.GetLayout().GetItem(L"Up").GetLabel(), L"Move Up");

    const LONG count = page.GetLayout().GetCount();
    page.Open();
    EXPECT_EQ(page.GetLayout().GetCount(), count) << "opening again builds it anew";
}

TEST_F(PropertyPageTest, ChangesReachThePropertyAndThePlugin)
{
    CustomProperty property = AddSample("node");
    PropertyPage page(ListOf({property}));
    page.Open();
    EXPECT_TRUE(page.Set("Value", 5).Succeeded());
    EXPECT_EQ(page.Get("Value"), CValue(5));
    EXPECT_EQ(property.GetParameterValue(L"Value"), CValue(5));
    EXPECT_TRUE(page.Set("Value", 99).Succeeded());
    EXPECT_EQ(page.Get("Value"), CValue(6)) << "held within the limits";
    EXPECT_EQ(SamplePlugin::Calls().back(), "SampleProp_PPGEvent 3 Value of 1");
    EXPECT_EQ(page.GetRefreshCount(), 3);
}

TEST_F(PropertyPageTest, ValuesGoToAllPropertiesOfThePage)
{
    CustomProperty a = AddSample("a");
    CustomProperty b = AddSample("b");
    PropertyPage page(ListOf({a, b}));
    page.Open();
    page.Set("Value", 3);
    EXPECT_EQ(a.GetParameterValue(L"Value"), CValue(3));
    EXPECT_EQ(b.GetParameterValue(L"Value"), CValue(3));
    EXPECT_THAT(SamplePlugin::Calls(),
                ElementsAre("SampleProp_PPGEvent 1 SampleProp of 2", "SampleProp_PPGEvent 3 Value of 2"));
}

TEST_F(PropertyPageTest, WhatTheUserCantDoIsRefused)
{
    PropertyPage page(ListOf({AddSample("node")}));
    EXPECT_EQ(page.Set("Value", 1), CStatus::Fail) << "not open yet";
    EXPECT_EQ(page.Press("Up"), CStatus::Fail);
    page.Open();
    SamplePlugin::Calls().clear();
    EXPECT_FALSE(page.IsEnabled("List"));
    EXPECT_FALSE(page.IsEnabled("Missing"));
    EXPECT_TRUE(page.IsEnabled("Value"));
    EXPECT_EQ(page.Set("List", L"text"), CStatus::AccessDenied);
    EXPECT_EQ(page.Set("Missing", 1), CStatus::MemberNotFound);
    EXPECT_EQ(page.Set("Value", L"many"), CStatus::InvalidArgument);
    EXPECT_EQ(page.Press("Missing"), CStatus::MemberNotFound);
    EXPECT_EQ(page.Press("Down"), CStatus::AccessDenied) << "disabled in the layout";
    EXPECT_THAT(SamplePlugin::Calls(), IsEmpty());
}

TEST_F(PropertyPageTest, Buttons)
{
    CustomProperty property = AddSample("node");
    PropertyPage page(ListOf({property}));
    page.Open();
    SamplePlugin::Calls().clear();
    EXPECT_TRUE(page.Press("Up").Succeeded());
    EXPECT_TRUE(page.Press("Search").Succeeded()) << "a flag that is shown as a button";
    EXPECT_EQ(property.GetParameterValue(L"Search"), CValue(true));
    EXPECT_THAT(SamplePlugin::Calls(),
                ElementsAre("SampleProp_PPGEvent 4 SampleProp Up of 1", "SampleProp_PPGEvent 3 Search of 1"));
}

TEST_F(PropertyPageTest, ThePluginMayCloseThePage)
{
    PropertyPage page(ListOf({AddSample("node")}));
    page.Open();
    SamplePlugin::Calls().clear();
    page.Press("Done");
    EXPECT_FALSE(page.IsOpen());
    EXPECT_TRUE(page.Close().Succeeded()) << "nothing, the second time";
    EXPECT_THAT(SamplePlugin::Calls(), ElementsAre("SampleProp_PPGEvent 4 SampleProp Done of 1",
                                                   "SampleProp_PPGEvent 2 SampleProp of 1"));
}

TEST_F(PropertyPageTest, WithoutCallbacksEachParameterGetsAnItem)
{
    const SceneNode node = m_scene.Null("node").Marked("Plain", {{"a", 1}, {"b", L"x"}});
    PropertyPage page(node.Object().GetProperties());
    EXPECT_TRUE(page.Open().Succeeded());
    EXPECT_EQ(page.GetLayout().GetCount(), 2);
    EXPECT_TRUE(page.Set("a", 2).Succeeded());
    EXPECT_EQ(page.Get("a"), CValue(2));
    EXPECT_EQ(page.GetRefreshCount(), 0);
}

TEST_F(PropertyPageTest, APageWhosePropertyIsGone)
{
    CustomProperty property = AddSample("node");
    PropertyPage page(ListOf({property}));
    page.Open();
    Host::Objects().Delete(property.GetObjectID());
    EXPECT_EQ(page.Set("Value", 1), CStatus::MemberNotFound);
    EXPECT_EQ(page.Press("Up"), CStatus::MemberNotFound);
    EXPECT_TRUE(page.Get("Value").IsEmpty());
    page.Close();
    EXPECT_FALSE(page.IsOpen());
    PropertyPage none{CRefArray()};
    EXPECT_EQ(none.Open(), CStatus::Fail);
}

TEST_F(PropertyPageTest, InspectingOpensAPageForEachType)
{
    const SceneNode a = m_scene.Null("a");
    const SceneNode b = m_scene.Null("b");
    CValueArray objects;
    objects.Add(AddTo(a, L"SampleProp").GetRef());
    objects.Add(AddTo(a, L"OtherProp").GetFullName());
    objects.Add(AddTo(b, L"SampleProp").GetFullName());
    CValueArray arguments;
    arguments.Add(objects);
    arguments.Add(L"");
    arguments.Add(L"A title");
    CValue result;
    EXPECT_TRUE(Application().ExecuteCommand(L"InspectObj", arguments, result).Succeeded());
    EXPECT_EQ(result, CValue(false));

    const auto& pages = m_scene.Host().Pages;
    ASSERT_EQ(pages.size(), 2u);
    EXPECT_EQ(Text(pages[0]->GetProperties().GetAsText()), "a.SampleProp,b.SampleProp");
    EXPECT_EQ(Text(pages[1]->GetProperties().GetAsText()), "a.OtherProp");
    EXPECT_TRUE(pages[0]->IsOpen());
    EXPECT_EQ(m_scene.Host().CommandCalls.back().Arguments[2], CValue(L"A title"));
}

TEST_F(PropertyPageTest, TheProgramMayActWhileThePageIsOpen)
{
    CustomProperty property = AddSample("node");
    m_scene.Host().Fill.PageOpened = [](PropertyPage& page) {
        page.Set("Value", 4);
        page.Press("Done");
    };
    CValueArray arguments;
    arguments.Add(property.GetRef());
    CValue result;
    Application().ExecuteCommand(L"InspectObj", arguments, result);
    EXPECT_EQ(property.GetParameterValue(L"Value"), CValue(4));
    EXPECT_FALSE(m_scene.Host().Pages.back()->IsOpen());
}

} // namespace
} // namespace tq4x::test
