#include "support/PageDriver.h"

#include "scene/CreateGeometry.h"
#include "scene/UserData.h"

#include <gmock/gmock.h>

namespace tq4x::test
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* List = "UserDataParamList";
constexpr const char* Add = "UserDataButtonAdd";
constexpr const char* Edit = "UserDataButtonEdit";
constexpr const char* Delete = "UserDataButtonDelete";
constexpr const char* MoveUp = "UserDataButtonMoveUp";
constexpr const char* MoveDown = "UserDataButtonMoveDown";

constexpr int String = 0;
constexpr int Integer = 1;
constexpr int Float = 2;

class UserDataPage : public PluginTest
{
protected:
    UserDataPage() { Scene.Select({Body}); }

    /// What the author enters into the next dialog for an item.
    void Enter(const std::string& name, int type, const std::string& value)
    {
        Scene.Host().Fill.PageOpened = [=](XSI::Host::PropertyPage& page) {
            if (page.GetType() != "TQ4X_ForPennonUserDataItemProp")
                return;
            PageDriver(page)
                .Set("UserDataItemName", XSI::Host::FromUtf8(name))
                .Set("UserDataItemType", type)
                .Set("UserDataItemValue", XSI::Host::FromUtf8(value));
        };
    }

    /// The page with three items.
    PageDriver ThreeItems()
    {
        PageDriver page("OnTQ4XSetUserDataDialog");
        Enter("a", Integer, "1\n2");
        page.Press(Add).Set(List, 1);
        Enter("b", String, "text");
        page.Press(Add).Set(List, 2);
        Enter("c", Float, "0.5");
        page.Press(Add);
        return page;
    }

    static std::vector<UserDataEntry> Stored(const XSI::CRef& owner)
    {
        const auto text = [&](const char* list) {
            return Utf8(ValueOf(owner, "UserDataProp", list).GetAsText());
        };
        return ParseUserDataProperty(text("UserDataParamNameList"), text("UserDataParamTypeList"),
                                     text("UserDataParamValueList"));
    }

    std::vector<std::string> StoredNames() const
    {
        std::vector<std::string> names;
        for (const UserDataEntry& entry : Stored(Body))
            names.push_back(entry.Name);
        return names;
    }

    SceneNode Body = Scene.Null("body");
};

const std::vector<std::string> ThreeRows = {
    "a               (Integer)[    2] 1\r\n2",
    "b               (String) [    4] text",
    "c               (Float)  [    1] 0.5",
    "------",
};

TEST_F(UserDataPage, AddsItemsBeforeTheChosenRow)
{
    PageDriver page("OnTQ4XSetUserDataDialog");
    EXPECT_EQ(page.Text("UserDataSelectList"), "body\r");
    EXPECT_THAT(page.Rows(List), ElementsAre("------"));
    Enter("b", String, "text");
    page.Press(Add);
    Enter("a", Integer, "1\n2");
    page.Press(Add); // row 0 is still chosen
    EXPECT_THAT(StoredNames(), ElementsAre("a", "b"));
    Enter("c", Float, "0.5");
    page.Set(List, 2).Press(Add); // the end of the list
    EXPECT_EQ(page.Rows(List), ThreeRows);
    EXPECT_THAT(Messages(), IsEmpty());
    EXPECT_FALSE(HasProperty(Scene.Root(), "UserDataItemProp")) << "the dialog leaves nothing";
    EXPECT_EQ(page.Refreshes(), 5);
}

TEST_F(UserDataPage, StoresTheThreeListsThatTheExporterReads)
{
    ThreeItems();
    EXPECT_EQ(Utf8(ValueOf(Body, "UserDataProp", "UserDataParamNameList").GetAsText()), "a\r\nb\r\nc");
    EXPECT_EQ(Utf8(ValueOf(Body, "UserDataProp", "UserDataParamTypeList").GetAsText()),
              "Integer\r\nString\r\nFloat");
    EXPECT_EQ(Utf8(ValueOf(Body, "UserDataProp", "UserDataParamValueList").GetAsText()),
              "1\r2\r\ntext\r\n0.5");
    EXPECT_THAT(Stored(Body), ElementsAre(UserDataEntry{"a", UserDataKind::Integer, "1\r\n2"},
                                          UserDataEntry{"b", UserDataKind::String, "text"},
                                          UserDataEntry{"c", UserDataKind::Float, "0.5"}));
}

TEST_F(UserDataPage, ShowsWhatAnObjectHasAlready)
{
    ThreeItems();
    const PageDriver again("OnTQ4XSetUserDataDialog");
    EXPECT_EQ(again.Rows(List), ThreeRows);
}

TEST_F(UserDataPage, EditsTheChosenItem)
{
    PageDriver page = ThreeItems();
    Scene.Host().Fill.PageOpened = [](XSI::Host::PropertyPage& opened) {
        PageDriver item(opened);
        EXPECT_EQ(item.Text("UserDataItemName"), "a");
        EXPECT_EQ(item.Number("UserDataItemType"), Integer);
        EXPECT_EQ(item.Text("UserDataItemValue"), "1\r\n2");
        item.Set("UserDataItemValue", "3");
    };
    page.Set(List, 0).Press(Edit);
    EXPECT_EQ(Stored(Body)[0], (UserDataEntry{"a", UserDataKind::Integer, "3"}))
        << "its own name is not in the way";
    Enter("b", Integer, "3");
    page.Press(Edit);
    EXPECT_THAT(Messages(), ElementsAre("E Name is already used."));
    EXPECT_THAT(StoredNames(), ElementsAre("a", "b", "c"));
}

TEST_F(UserDataPage, DeletesTheChosenItem)
{
    PageDriver page = ThreeItems();
    page.Set(List, 1).Press(Delete);
    EXPECT_THAT(StoredNames(), ElementsAre("a", "c"));
    EXPECT_EQ(page.Number(List), 1);
    page.Press(Delete).Press(Delete); // the second one meets the end of the list
    EXPECT_THAT(StoredNames(), ElementsAre("a"));
    page.Set(List, 0).Press(Delete);
    EXPECT_THAT(page.Rows(List), ElementsAre("------"));
    EXPECT_THAT(StoredNames(), IsEmpty());
}

TEST_F(UserDataPage, MovesTheChosenItemAndTheChoiceWithIt)
{
    PageDriver page = ThreeItems();
    page.Set(List, 0).Press(MoveDown);
    EXPECT_THAT(StoredNames(), ElementsAre("b", "a", "c"));
    EXPECT_EQ(page.Number(List), 1);
    page.Press(MoveDown).Press(MoveDown); // the last item stays before the end
    EXPECT_THAT(StoredNames(), ElementsAre("b", "c", "a"));
    EXPECT_EQ(page.Number(List), 2);
    page.Press(MoveUp).Press(MoveUp).Press(MoveUp);
    EXPECT_THAT(StoredNames(), ElementsAre("a", "b", "c"));
    EXPECT_EQ(page.Number(List), 0);
}

TEST_F(UserDataPage, TheEndOfTheListIsNoItem)
{
    PageDriver page = ThreeItems();
    page.Set(List, 3).Press(MoveUp).Press(MoveDown).Press(Delete);
    const int opened = Calls("InspectObj");
    page.Press(Edit);
    EXPECT_EQ(Calls("InspectObj"), opened);
    EXPECT_EQ(page.Rows(List), ThreeRows);
    EXPECT_EQ(page.Number(List), 3);
}

TEST_F(UserDataPage, RefusesItemsAndShowsTheLog)
{
    const struct
    {
        const char* Name;
        int Type;
        const char* Value;
        const char* Message;
        bool OpensLog;
    } Cases[] = {
        {"a", Integer, "x", "E Name is already used.", false},
        {"", Integer, "1", "E Name is empty.", true},
        {"a b", Integer, "1", "E Name is wrong (please use only [alphabetic/numeric character] [-] [_] [.])",
         true},
        {"n", Integer, "\n\n", "E Number is empty.", true},
        {"n", Integer, "007", "E Please input integer number.", true},
        {"n", Float, "", "E Number is empty.", true},
        {"n", Float, "1,5", "E Please input float number.", true},
        {"n", String, "\r\n", "E String is empty.", true},
        {"n", String, "a<b", "E String is wrong (please don't use [<] [>] [&] ['] [double quote])", true},
    };

    PageDriver page = ThreeItems();
    for (const auto& row : Cases) {
        Scene.Host().LogEntries.clear();
        Scene.Host().OpenedViews.clear();
        Enter(row.Name, row.Type, row.Value);
        page.Press(Add);
        EXPECT_THAT(Messages(), ElementsAre(row.Message));
        EXPECT_EQ(Scene.Host().OpenedViews.size(), row.OpensLog ? 1u : 0u) << row.Message;
        EXPECT_EQ(page.Rows(List), ThreeRows) << row.Message;
    }
    EXPECT_THAT(Scene.Host().OpenedViews, ElementsAre("Script Editor"));
}

TEST_F(UserDataPage, DropsEmptyLinesAtTheEndOfAValue)
{
    PageDriver page("OnTQ4XSetUserDataDialog");
    Enter("n", Integer, "1\r2\n\n");
    page.Press(Add);
    EXPECT_THAT(Stored(Body), ElementsAre(UserDataEntry{"n", UserDataKind::Integer, "1\r\n2"}));
}

TEST_F(UserDataPage, EditsOneObjectOnly)
{
    const SceneNode head = Scene.Null("head");
    Scene.Select({Body, head});
    PageDriver page("OnTQ4XSetUserDataDialog");
    EXPECT_EQ(page.Text("UserDataSelectList"), "Multiple Node Selected");
    for (const char* button : {Add, Edit, Delete, MoveUp, MoveDown})
        EXPECT_FALSE(page.IsEnabled(button)) << button;
    EXPECT_FALSE(HasProperty(Body, "UserDataProp"));
    Scene.Select({});
    PageDriver none("OnTQ4XSetUserDataDialog");
    EXPECT_EQ(none.Text("UserDataSelectList"), "None");
    for (const char* button : {Add, Edit, Delete, MoveUp, MoveDown})
        EXPECT_FALSE(none.IsEnabled(button)) << button;
    EXPECT_TRUE(none.TryPress(Add) == XSI::CStatus::AccessDenied);
}

TEST_F(UserDataPage, OpensOnMaterialsAndClusters)
{
    const SceneMaterial red = Scene.Material("red");
    SceneMesh plate = Scene.Mesh("plate");
    plate.Square(red);
    const XSI::Cluster faces = XSI::Host::CreateCluster(plate, "faces");
    for (const XSI::CRef& owner : {XSI::CRef(red), XSI::CRef(faces.GetRef())}) {
        Scene.Select({owner});
        PageDriver page("OnTQ4XSetUserDataDialog");
        Enter("n", Integer, "1");
        page.Press(Add);
        EXPECT_EQ(Stored(owner).size(), 1u);
        EXPECT_EQ(page.Text("UserDataSelectList"), Utf8(owner.GetAsText()) + "\r");
    }
    EXPECT_FALSE(HasProperty(plate, "UserDataProp"));
}

TEST_F(UserDataPage, OtherKindsOfObjectsCantBeEdited)
{
    Scene.Select({Scene.Root().GetParameters().GetItem(0)});
    PageDriver page("OnTQ4XSetUserDataDialog");
    EXPECT_EQ(page.Text("UserDataSelectList"), "None");
    EXPECT_FALSE(page.IsEnabled(Add));
}

} // namespace
} // namespace tq4x::test
