// What all pages that mark objects have in common, on those that search by boxes.

#include "support/PageDriver.h"

#include <gmock/gmock.h>

namespace tq4x::test
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class AttributePages : public PluginTest
{
protected:
    /// An object with a billboard of this kind.
    SceneNode Billboard(std::string_view name, int kind, const XSI::CRef& parent = {})
    {
        const SceneNode node = Scene.Null(name, parent);
        Define(node, "BillboardProp").PutParameterValue(L"TQ4X_ForPennonBillboardType", kind);
        return node;
    }

    static XSI::CustomProperty Define(const XSI::CRef& owner, std::string_view type)
    {
        return XSI::Host::AddDefinedProperty(owner, WholeName(type), WholeName(type));
    }
};

TEST_F(AttributePages, OpenOnTheSelectedObjectsAndGiveThemTheProperty)
{
    const SceneNode body = Scene.Null("body");
    const SceneNode head = Billboard("head", 3, body);
    Scene.Select({head, body});
    PageDriver page("OnTQ4XSetBillboardDialog");
    EXPECT_THAT(page.Owners(), ElementsAre("head", "body"));
    EXPECT_EQ(page.Text("BillboardSelectList"), "head\rbody\r");
    EXPECT_TRUE(HasProperty(body, "BillboardProp"));
    EXPECT_EQ(page.Number("BillboardType"), 3) << "an object keeps the values that it had";
    EXPECT_FALSE(HasProperty(Scene.Root(), "BillboardProp"));
}

TEST_F(AttributePages, AValueReachesAllOpenedObjects)
{
    const SceneNode body = Scene.Null("body");
    const SceneNode head = Scene.Null("head");
    Scene.Select({body, head});
    PageDriver("OnTQ4XSetNoCompDialog").Set("NoCompressNode", 1);
    EXPECT_EQ(static_cast<LONG>(ValueOf(body, "NoCompProp", "NoCompressNode")), 1);
    EXPECT_EQ(static_cast<LONG>(ValueOf(head, "NoCompProp", "NoCompressNode")), 1);
}

TEST_F(AttributePages, OpenOnTheRootsOwnPropertyWithNothingSelected)
{
    PageDriver page("OnTQ4XSetBillboardDialog");
    EXPECT_THAT(page.Owners(), ElementsAre("Scene_Root"));
    EXPECT_EQ(page.Text("BillboardSelectList"), "None");
    PageDriver again("OnTQ4XSetBillboardDialog");
    EXPECT_EQ(Scene.Root().GetProperties().GetCount(), 1) << "kept for the next time";
}

TEST_F(AttributePages, PassOverWhatCantBeMarked)
{
    const SceneMaterial red = Scene.Material("red");
    const SceneNode body = Scene.Null("body");
    Scene.Select({red, body});
    EXPECT_THAT(PageDriver("OnTQ4XSetBillboardDialog").Owners(), ElementsAre("body"));
    Scene.Select({red});
    PageDriver page("OnTQ4XSetBillboardDialog");
    EXPECT_THAT(page.Owners(), ElementsAre("Scene_Root"));
    EXPECT_EQ(page.Text("BillboardSelectList"), "None");
}

TEST_F(AttributePages, ListObjectsOfModelsWithTheirWholeName)
{
    const SceneNode hero = Scene.Model("hero");
    const SceneNode arm = Scene.Null("arm", hero);
    Scene.Select({arm});
    EXPECT_EQ(PageDriver("OnTQ4XSetBillboardDialog").Text("BillboardSelectList"), "hero.arm\r");
}

TEST_F(AttributePages, AskForARedrawAfterEachEvent)
{
    PageDriver page("OnTQ4XSetBillboardDialog");
    EXPECT_EQ(page.Refreshes(), 1);
    page.Set("BillboardType", 2);
    EXPECT_EQ(page.Refreshes(), 2);
    page.Set("SearchBillboardWorld", true);
    EXPECT_EQ(page.Refreshes(), 3);
}

TEST_F(AttributePages, AClickedButtonAndOpeningAskForARedrawToo)
{
    const XSI::CustomProperty property = Define(Scene.Root(), "BillboardProp");
    for (const LONG event : {1, 3, 4}) {
        XSI::Host::CallbackCall call;
        call.Source = property;
        call.Event = event;
        call.Inspected.Add(property);
        XSI::Host::RunCallback("TQ4X_ForPennonBillboardProp_PPGEvent", call);
        EXPECT_TRUE(static_cast<bool>(call.Values["Refresh"])) << "event " << event;
    }
}

TEST_F(AttributePages, HoldValuesWithinTheirRange)
{
    PageDriver page("OnTQ4XSetBillboardDialog");
    page.Set("BillboardType", 7);
    EXPECT_EQ(page.Number("BillboardType"), 6);
    page.Set("BillboardType", -1);
    EXPECT_EQ(page.Number("BillboardType"), 0);
    EXPECT_TRUE(page.TrySet("BillboardSelectList", "body") == XSI::CStatus::AccessDenied);
    EXPECT_TRUE(page.TrySet("BillboardTyp", 1) == XSI::CStatus::MemberNotFound);
}

TEST_F(AttributePages, TheSearchButtonWorksWhileABoxIsOn)
{
    PageDriver page("OnTQ4XSetBillboardDialog");
    EXPECT_FALSE(page.IsEnabled("BillboardSearchButton"));
    EXPECT_TRUE(page.TryPress("BillboardSearchButton") == XSI::CStatus::AccessDenied);
    page.Set("SearchBillboardWorld", true).Set("SearchYBillboard", true).Set("SearchBillboardWorld", false);
    EXPECT_TRUE(page.IsEnabled("BillboardSearchButton"));
    page.Set("SearchYBillboard", false);
    EXPECT_FALSE(page.IsEnabled("BillboardSearchButton"));
}

TEST_F(AttributePages, ASearchSelectsWhatItFindsAndListsIt)
{
    const SceneNode body = Billboard("body", 1);
    Billboard("head", 2, body);
    Billboard("hat", 1, body);
    Scene.Null("stick");
    Scene.Select({body});
    PageDriver page("OnTQ4XSetBillboardDialog");
    page.Set("SearchBillboardWorld", true).Press("BillboardSearchButton");
    EXPECT_THAT(SelectedNames(), ElementsAre("body", "hat"));
    EXPECT_EQ(page.Text("BillboardSelectList"), "body\rhat\r");
    EXPECT_FALSE(page.Flag("BillboardSearchButton")) << "the button is put back";
    EXPECT_TRUE(page.IsEnabled("BillboardType"));
    const XSI::CValueArray& arguments = Scene.Host().CommandCalls.back().Arguments;
    EXPECT_EQ(Scene.Host().CommandCalls.back().Name, "SelectObj");
    EXPECT_EQ(Utf8(arguments[0].GetAsText()), "body,hat");
    EXPECT_TRUE(static_cast<bool>(arguments[2]));
}

TEST_F(AttributePages, ASearchSelectsObjectsOfModelsByTheirFullNames)
{
    Billboard("arm", 1, Scene.Model("hero"));
    Billboard("arm", 1, Scene.Model("foe"));
    PageDriver page("OnTQ4XSetBillboardDialog");
    page.Set("SearchBillboardWorld", true).Press("BillboardSearchButton");
    EXPECT_EQ(Utf8(Scene.Host().CommandCalls.back().Arguments[0].GetAsText()), "hero.arm,foe.arm");
    EXPECT_THAT(SelectedNames(), ElementsAre("arm", "arm"));
    EXPECT_EQ(page.Text("BillboardSelectList"), "hero.arm\rfoe.arm\r");
}

TEST_F(AttributePages, EachBoxFindsItsOwnKindOfBillboard)
{
    constexpr struct
    {
        const char* Box;
        const char* Found;
    } Cases[] = {
        {"SearchBillboardWorld", "kind1"},  {"SearchBillboardWorldViewpoint", "kind2"},
        {"SearchBillboardScreen", "kind3"}, {"SearchBillboardScreenViewpoint", "kind4"},
        {"SearchYBillboard", "kind5"},      {"SearchYBillboardViewpoint", "kind6"},
    };

    for (int kind = 0; kind <= 6; ++kind)
        Billboard("kind" + std::to_string(kind), kind);
    PageDriver page("OnTQ4XSetBillboardDialog");
    for (const auto& row : Cases) {
        page.Set(row.Box, true).Press("BillboardSearchButton").Set(row.Box, false);
        EXPECT_THAT(SelectedNames(), ElementsAre(row.Found)) << row.Box;
    }
}

TEST_F(AttributePages, BoxesOfOnePageAreAlternatives)
{
    for (int kind = 0; kind <= 6; ++kind)
        Billboard("kind" + std::to_string(kind), kind);
    PageDriver("OnTQ4XSetBillboardDialog")
        .Set("SearchBillboardScreen", true)
        .Set("SearchYBillboardViewpoint", true)
        .Press("BillboardSearchButton");
    EXPECT_THAT(SelectedNames(), ElementsAre("kind3", "kind6"));
}

TEST_F(AttributePages, ASearchWithoutAMatchEndsOnTheRootWithTheValueFixed)
{
    const SceneNode body = Billboard("body", 2);
    Scene.Select({body});
    PageDriver page("OnTQ4XSetBillboardDialog");
    page.Set("SearchYBillboard", true).Press("BillboardSearchButton");
    EXPECT_THAT(SelectedNames(), IsEmpty());
    EXPECT_EQ(Calls("DeselectAll"), 1);
    EXPECT_THAT(page.Owners(), ElementsAre("Scene_Root"));
    EXPECT_EQ(page.Number("BillboardType"), 2) << "the values go with the page";
    EXPECT_FALSE(page.IsEnabled("BillboardType"));
    EXPECT_FALSE(page.IsEnabled("BillboardSearchButton"));
    EXPECT_EQ(page.Text("BillboardSelectList"), "None");
    EXPECT_FALSE(static_cast<bool>(ValueOf(body, "BillboardProp", "BillboardSearchButton")));
    EXPECT_EQ(static_cast<LONG>(Scene.Host().CommandCalls.back().Arguments[3]), 2) << "in the same window";
}

TEST_F(AttributePages, ASearchLooksAtTheRootToo)
{
    Define(Scene.Root(), "BillboardProp").PutParameterValue(L"TQ4X_ForPennonBillboardType", 4);
    PageDriver("OnTQ4XSetBillboardDialog")
        .Set("SearchBillboardScreenViewpoint", true)
        .Press("BillboardSearchButton");
    EXPECT_THAT(SelectedNames(), ElementsAre("Scene_Root"));
}

TEST_F(AttributePages, CompressionBoxesFindTheValuesThatTheyName)
{
    const SceneNode plain = Scene.Null("plain");
    const SceneNode fixed = Scene.Null("fixed");
    Scene.Null("unmarked");
    Define(plain, "NoCompProp");
    Define(fixed, "NoCompProp").PutParameterValue(L"TQ4X_ForPennonNoCompressNode", 1);
    PageDriver page("OnTQ4XSetNoCompDialog");
    page.Set("SearchNoCompNode", true).Press("NoCompSearchButton");
    EXPECT_THAT(SelectedNames(), ElementsAre("fixed"));
    page.Set("SearchNoCompNode", false).Set("SearchCompNode", true).Press("NoCompSearchButton");
    EXPECT_THAT(SelectedNames(), ElementsAre("Scene_Root", "plain"))
        << "objects without the property are never found";
}

TEST_F(AttributePages, BoxesLeftOnInAStoredSceneLetTheButtonWork)
{
    const SceneNode body = Scene.Null("body");
    Define(body, "BillboardProp").PutParameterValue(L"TQ4X_ForPennonSearchYBillboard", true);
    Define(Scene.Root(), "BillboardProp").PutParameterValue(L"TQ4X_ForPennonBillboardSearchButton", true);
    Scene.Select({body});
    EXPECT_TRUE(PageDriver("OnTQ4XSetBillboardDialog").IsEnabled("BillboardSearchButton"));
    Scene.Select({});
    EXPECT_FALSE(PageDriver("OnTQ4XSetBillboardDialog").Flag("BillboardSearchButton"));
}

TEST_F(AttributePages, ASearchManagesChainsDeeperThanTheStack)
{
    SceneNode node = Scene.Null("n");
    for (int depth = 1; depth < 100000; ++depth)
        node = Scene.Null("n", node);
    const SceneNode last = Billboard("last", 1, node);
    PageDriver("OnTQ4XSetBillboardDialog").Set("SearchBillboardWorld", true).Press("BillboardSearchButton");
    EXPECT_THAT(SelectedNames(), ElementsAre("last"));
}

/// The objects carry each combination of the three flags: "trs" has all, "---" none.
class ForceExportKeySearch : public AttributePages
{
protected:
    ForceExportKeySearch()
    {
        for (int bits = 0; bits < 8; ++bits) {
            const bool flags[] = {(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0};
            const std::string name =
                std::string(flags[0] ? "t" : "-") + (flags[1] ? "r" : "-") + (flags[2] ? "s" : "-");
            XSI::CustomProperty property = Define(Scene.Null(name), "ForceExportKeyProp");
            property.PutParameterValue(L"TQ4X_ForPennonForceExportKeyTrans", flags[0]);
            property.PutParameterValue(L"TQ4X_ForPennonForceExportKeyRotate", flags[1]);
            property.PutParameterValue(L"TQ4X_ForPennonForceExportKeyScale", flags[2]);
        }
        Scene.Null("unmarked");
    }

    static std::vector<std::string> Search(const std::vector<const char*>& boxes, int andOr)
    {
        PageDriver page("OnTQ4XSetForceExportKeyDialog");
        for (const char* box : boxes)
            page.Set(std::string("SearchForceExportKey") + box, true);
        page.Set("ForceExportKeySearchAndOr", andOr).Press("ForceExportKeySearchButton");
        std::vector<std::string> names = SelectedNames();
        std::erase(names, "Scene_Root"); // carries the page itself
        return names;
    }
};

TEST_F(ForceExportKeySearch, CombinesTheBoxesByTheWord)
{
    const struct
    {
        const char* Name;
        std::vector<const char*> Boxes;
        int AndOr;
        std::vector<std::string> Found;
    } Cases[] = {
        {"one box", {"TransOn"}, 0, {"t--", "tr-", "t-s", "trs"}},
        {"two groups, and", {"TransOn", "RotateOff"}, 0, {"t--", "t-s"}},
        {"two groups, or", {"TransOn", "RotateOn"}, 1, {"t--", "-r-", "tr-", "t-s", "-rs", "trs"}},
        {"three groups, and", {"TransOn", "RotateOn", "ScaleOn"}, 0, {"trs"}},
        {"both boxes of a group match any value",
         {"TransOn", "TransOff", "ScaleOn"},
         0,
         {"--s", "t-s", "-rs", "trs"}},
        {"a group without a box takes no part, or", {"ScaleOff"}, 1, {"---", "t--", "-r-", "tr-"}},
        {"both boxes, or",
         {"TransOn", "TransOff"},
         1,
         {"---", "t--", "-r-", "tr-", "--s", "t-s", "-rs", "trs"}},
    };

    for (const auto& row : Cases) {
        XSI::Host::Objects().Delete(
            Scene.Root().GetProperties().Find(L"TQ4X_ForPennonForceExportKeyProp").GetObjectID());
        Scene.Select({});
        EXPECT_EQ(Search(row.Boxes, row.AndOr), row.Found) << row.Name;
    }
}

TEST_F(ForceExportKeySearch, NothingFoundFixesAllValues)
{
    for (LONG i = 0; i < Scene.Root().GetChildren().GetCount(); ++i)
        XSI::CustomProperty(XSI::X3DObject(Scene.Root().GetChildren()[i]).GetProperties()[0])
            .PutParameterValue(L"TQ4X_ForPennonForceExportKeyTrans", false);
    PageDriver page("OnTQ4XSetForceExportKeyDialog");
    page.Set("SearchForceExportKeyTransOn", true).Press("ForceExportKeySearchButton");
    EXPECT_THAT(SelectedNames(), IsEmpty());
    for (const char* value : {"ForceExportKeyTrans", "ForceExportKeyRotate", "ForceExportKeyScale"})
        EXPECT_FALSE(page.IsEnabled(value)) << value;
}

} // namespace
} // namespace tq4x::test
