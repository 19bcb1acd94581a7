#include "PrintValues.h"

#include "support/SceneBuilder.h"

#include "scene/PropertyPage.h"

namespace tq4x::test
{
namespace
{

using namespace XSI;
using testing::ElementsAre;
using testing::IsEmpty;

class CommandTest : public testing::Test
{
protected:
    CStatus Run(const wchar_t* command, const std::vector<CValue>& given = {})
    {
        CValueArray arguments;
        for (const CValue& argument : given) {
            arguments.Add(argument);
        }
        return Application().ExecuteCommand(command, arguments, m_result);
    }

    std::vector<std::string> Selected() const { return Names(Application().GetSelection().GetArray()); }

    SceneBuilder m_scene;
    CValue m_result;
};

TEST_F(CommandTest, Preferences)
{
    const CValue name = L"preferences.Interaction.autoinspect";
    EXPECT_TRUE(Run(L"GetValue", {name}).Succeeded());
    EXPECT_EQ(m_result, CValue(1));
    EXPECT_TRUE(Run(L"SetValue", {name, 0}).Succeeded());
    EXPECT_TRUE(Run(L"GetValue", {name}).Succeeded());
    EXPECT_EQ(m_result, CValue(0));
    EXPECT_EQ(Run(L"GetValue", {L"preferences.Nothing"}), CStatus::InvalidArgument);
    EXPECT_TRUE(m_result.IsEmpty());
}

TEST_F(CommandTest, ParametersByNameAndByReference)
{
    const SceneNode node = m_scene.Null("node").Set("Value", 1).Marked("Prop", {{"Inner", L"a"}});
    EXPECT_TRUE(Run(L"SetValue", {L"node.Value", 7}).Succeeded());
    EXPECT_TRUE(Run(L"GetValue", {L"node.Value"}).Succeeded());
    EXPECT_EQ(m_result, CValue(7));
    EXPECT_TRUE(Run(L"SetValue", {node.Object().GetParameter(L"Value").GetRef(), 8}).Succeeded());
    EXPECT_EQ(node.Object().GetParameterValue(L"Value"), CValue(8));
    EXPECT_TRUE(Run(L"GetValue", {L"node.Prop.Inner"}).Succeeded());
    EXPECT_EQ(m_result, CValue(L"a"));

    EXPECT_EQ(Run(L"SetValue", {L"node.Value", L"many"}), CStatus::Fail);
    EXPECT_EQ(Run(L"SetValue", {L"node.Other", 1}), CStatus::InvalidArgument);
    EXPECT_EQ(Run(L"GetValue", {L"node"}), CStatus::InvalidArgument);
    EXPECT_EQ(Run(L"GetValue"), CStatus::InvalidArgument);
    EXPECT_EQ(Run(L"SetValue"), CStatus::InvalidArgument);
}

TEST_F(CommandTest, DeleteObj)
{
    const SceneNode parent = m_scene.Null("parent");
    const CRef child = m_scene.Null("child", parent);
    const SceneNode marked = m_scene.Null("marked").Marked("Prop_1", {{"a", 1}});
    EXPECT_TRUE(Run(L"DeleteObj", {L"marked.Prop_1"}).Succeeded());
    EXPECT_EQ(marked.Object().GetProperties().GetCount(), 0);
    EXPECT_TRUE(Run(L"DeleteObj", {CRef(parent)}).Succeeded());
    EXPECT_FALSE(child.IsValid());
    EXPECT_EQ(Run(L"DeleteObj", {CRef(parent)}), CStatus::InvalidArgument);
    EXPECT_EQ(Run(L"DeleteObj", {L"marked,nothing"}), CStatus::InvalidArgument);
    EXPECT_FALSE(CRef(marked).IsValid()) << "what is found is deleted";
    EXPECT_EQ(Run(L"DeleteObj", {L"Scene_Root"}), CStatus::AccessDenied);
    EXPECT_EQ(Run(L"DeleteObj", {CRef(Application())}), CStatus::AccessDenied);
    EXPECT_TRUE(m_scene.Root().IsValid());
    EXPECT_TRUE(Application().IsValid());
}

TEST_F(CommandTest, SelectObj)
{
    const CRef a = m_scene.Null("a");
    const CRef b = m_scene.Null("b");
    m_scene.Null("c,d");
    const CRef material = m_scene.Material("m");
    EXPECT_TRUE(Run(L"SelectObj", {L"b,a,b", L"", true}).Succeeded());
    EXPECT_THAT(Selected(), ElementsAre("b", "a"));
    EXPECT_TRUE(Run(L"SelectObj", {a}).Succeeded());
    EXPECT_THAT(Selected(), ElementsAre("a")) << "the selection is replaced";
    EXPECT_TRUE(Run(L"SelectObj", {CRefArray(std::vector<CRef>{a, b})}).Succeeded());
    EXPECT_THAT(Selected(), ElementsAre("a", "b"));
    EXPECT_TRUE(Run(L"SelectObj", {material.GetAsText()}).Succeeded());
    EXPECT_THAT(Selected(), ElementsAre("m"));
    EXPECT_TRUE(Run(L"SelectObj", {L"c,d"}).Succeeded());
    EXPECT_THAT(Selected(), ElementsAre("c,d")) << "the whole text is a name";
    EXPECT_EQ(Run(L"SelectObj", {L"b,nothing"}), CStatus::InvalidArgument);
    EXPECT_THAT(Selected(), ElementsAre("b"));
    EXPECT_EQ(Run(L"SelectObj", {L""}), CStatus::InvalidArgument);
    EXPECT_EQ(Run(L"SelectObj", {7}), CStatus::InvalidArgument);
    EXPECT_THAT(Selected(), IsEmpty());
}

TEST_F(CommandTest, ANameThatSeveralObjectsBearSelectsAllOfThem)
{
    m_scene.Null("same");
    m_scene.Null("same");
    EXPECT_TRUE(Run(L"SelectObj", {L"same"}).Succeeded());
    EXPECT_THAT(Selected(), ElementsAre("same", "same"));
}

TEST_F(CommandTest, DeselectAllAndFrameSelection)
{
    m_scene.Select({m_scene.Null("a")});
    EXPECT_TRUE(Run(L"FrameSelection").Succeeded());
    EXPECT_THAT(Selected(), ElementsAre("a"));
    EXPECT_TRUE(Run(L"DeselectAll").Succeeded());
    EXPECT_THAT(Selected(), IsEmpty());
    EXPECT_EQ(m_scene.Host().CommandCalls[0].Name, "FrameSelection");
}

TEST_F(CommandTest, OpenView)
{
    EXPECT_TRUE(Run(L"OpenView", {L"Script Editor"}).Succeeded());
    EXPECT_THAT(m_scene.Host().OpenedViews, ElementsAre("Script Editor"));
}

TEST_F(CommandTest, OpenScene)
{
    EXPECT_EQ(Run(L"OpenScene", {L"a.scn", 0, 0}), CStatus::Fail);
    EXPECT_EQ(m_scene.Host().LogEntries.back().Text, "There is nothing that opens scenes.");
    m_scene.Host().Fill.OpenScene = [&](const std::string& path) -> CStatus {
        m_scene.Host().NewScene("opened", path);
        return path == "a.scn" ? CStatus::OK : CStatus::Abort;
    };
    EXPECT_TRUE(Run(L"OpenScene", {L"a.scn", 0, 0}).Succeeded());
    EXPECT_EQ(Application().GetActiveProject().GetActiveScene().GetName(), L"opened");
    EXPECT_EQ(Run(L"OpenScene", {L"b.scn", 0, 0}), CStatus::Abort);
}

TEST_F(CommandTest, InspectObjWithoutAnyProperty)
{
    EXPECT_TRUE(Run(L"InspectObj", {CRef(m_scene.Null("a"))}).Succeeded());
    EXPECT_EQ(Run(L"InspectObj", {L"nothing"}), CStatus::InvalidArgument);
    EXPECT_THAT(m_scene.Host().Pages, IsEmpty());
}

TEST_F(CommandTest, Selection)
{
    const CRef a = m_scene.Null("a");
    const CRef b = m_scene.Null("b");
    XSI::Selection selection = Application().GetSelection();
    EXPECT_TRUE(selection.Add(b).Succeeded());
    EXPECT_TRUE(selection.Add(a).Succeeded());
    EXPECT_TRUE(selection.Add(b).Succeeded());
    EXPECT_EQ(selection.Add(CRef()), CStatus::Fail);
    EXPECT_EQ(selection.GetCount(), 2);
    EXPECT_EQ(selection.GetItem(0), b);
    EXPECT_EQ(selection[1], a);
    EXPECT_FALSE(selection[2].IsValid());
    EXPECT_FALSE(selection[-1].IsValid());
    EXPECT_EQ(Text(selection.GetAsText()), "b,a");
    EXPECT_TRUE(selection.Remove(b).Succeeded());
    EXPECT_EQ(selection.Remove(b), CStatus::Fail);
    EXPECT_TRUE(selection.SetAsText(L"b").Succeeded());
    EXPECT_THAT(Selected(), ElementsAre("b"));
    Host::Objects().Delete(b.GetObjectID());
    EXPECT_EQ(selection.GetCount(), 0);
}

} // namespace
} // namespace tq4x::test
