#include "PrintValues.h"

#include "support/SceneBuilder.h"

#include <xsi_materiallibrary.h>

namespace tq4x::test
{
namespace
{

using namespace XSI;
using testing::ElementsAre;

TEST(Scene, ANewOne)
{
    SceneBuilder scene;
    const Project project = Application().GetActiveProject();
    const Scene active = project.GetActiveScene();
    EXPECT_EQ(Application().GetActiveSceneRoot(), active.GetRoot());
    EXPECT_EQ(active.GetRoot().GetName(), L"Scene_Root");
    EXPECT_EQ(active.GetRoot().GetRef().GetClassID(), siModelID);
    EXPECT_EQ(active.GetRoot().GetChildren().GetCount(), 0);
    EXPECT_FALSE(X3DObject(active.GetRoot().GetParent()).IsValid()) << "nothing in space is above the root";
    EXPECT_EQ(active.GetParameterValue(L"FileName"), CValue(L""));
    EXPECT_EQ(Application().GetSelection().GetCount(), 0);

    const Property playControl = project.GetProperties().Find(L"Play Control");
    EXPECT_EQ(playControl.GetParameterValue(L"GlobalIn"), CValue(0.0));
    EXPECT_EQ(playControl.GetParameterValue(L"GlobalOut"), CValue(100.0));
    EXPECT_EQ(playControl.GetParameterValue(L"In"), CValue(0.0));
    EXPECT_EQ(playControl.GetParameterValue(L"Out"), CValue(100.0));
    EXPECT_THAT(Names(active.GetMaterialLibraries()), ElementsAre("DefaultLib"));
}

TEST(Scene, NameFileAndFrames)
{
    SceneBuilder scene;
    scene.Named("_Garden", "/scenes/garden.scn").Frames(1, 50).Playback(10, 20);
    const Scene active = Application().GetActiveProject().GetActiveScene();
    EXPECT_EQ(active.GetName(), L"_Garden");
    EXPECT_EQ(active.GetParameterValue(L"FileName"), CValue(L"/scenes/garden.scn"));
    const Property playControl = Application().GetActiveProject().GetProperties().Find(L"Play Control");
    EXPECT_EQ(playControl.GetParameterValue(L"GlobalOut"), CValue(50.0));
    EXPECT_EQ(playControl.GetParameterValue(L"In"), CValue(10.0));
}

TEST(Scene, ANewSceneEndsTheOldOne)
{
    SceneBuilder scene;
    const SceneNode node = scene.Null("node");
    const CRef material = scene.Material("m");
    const CRef clip = Host::CreateImageClip("c", "c.tga");
    const CRef root = scene.Root();
    scene.Select({node});
    scene.Host().CurrentFrame = 5.0;
    scene.Host().Preferences["preferences.a"] = 3;
    scene.Host().NewScene("second", "second.scn");
    for (const CRef& gone : {CRef(node), material, clip, root}) {
        EXPECT_FALSE(gone.IsValid());
    }
    EXPECT_EQ(Application().GetSelection().GetCount(), 0);
    EXPECT_EQ(scene.Host().CurrentFrame, 0.0);
    EXPECT_EQ(scene.Host().Preferences["preferences.a"], CValue(3));
    EXPECT_EQ(Application().GetActiveProject().GetActiveScene().GetName(), L"second");
    EXPECT_TRUE(Application().IsValid());
}

TEST(Scene, PlacesInTheTree)
{
    SceneBuilder scene;
    const SceneNode a = scene.Null("a");
    const SceneNode b = scene.Null("b");
    const SceneNode inside = scene.Null("inside", a);
    EXPECT_THAT(Names(scene.Root().GetChildren()), ElementsAre("a", "b"));
    EXPECT_EQ(X3DObject(inside).GetParent(), CRef(a));
    EXPECT_TRUE(Host::MoveBelow(a, b));
    EXPECT_THAT(Names(scene.Root().GetChildren()), ElementsAre("b"));
    EXPECT_FALSE(Host::MoveBelow(b, inside)) << "that would be a circle";
    EXPECT_FALSE(Host::MoveBelow(b, b));
    EXPECT_FALSE(Host::MoveBelow(scene.Root(), b));
    EXPECT_FALSE(Host::MoveBelow(b, CRef()));
    EXPECT_THAT(Names(scene.Root().FindChildren(L"", L"", CStringArray())), ElementsAre("b", "a", "inside"));
    EXPECT_THAT(Names(scene.Root().FindChildren(L"inside", L"null", CStringArray())), ElementsAre("inside"));
    EXPECT_THAT(Names(scene.Root().FindChildren(L"", L"camera", CStringArray())), testing::IsEmpty());
    EXPECT_THAT(Names(scene.Root().FindChildren(L"", L"", CStringArray(), false)), ElementsAre("b"));
}

TEST(Scene, TypeWords)
{
    SceneBuilder scene;
    EXPECT_EQ(scene.Null("o").Object().GetType(), L"null");
    EXPECT_EQ(scene.Model("o").Object().GetType(), L"#model");
    EXPECT_EQ(scene.Bone("o").Object().GetType(), L"bone");
    EXPECT_EQ(scene.Effector("o").Object().GetType(), L"eff");
    EXPECT_EQ(scene.Camera("o").Object().GetType(), L"camera");
    EXPECT_EQ(scene.Light("o", Host::LightType::Point).Object().GetType(), L"light");
    EXPECT_EQ(scene.Mesh("o").Object().GetType(), L"polymsh");
    EXPECT_EQ(Host::CreateNurbsSurface({}, "o").GetType(), L"surfmsh");
    EXPECT_EQ(Host::CreateNurbsCurve({}, "o").GetType(), L"crvlist");
}

TEST(Scene, InstancesShowTheirMaster)
{
    SceneBuilder scene;
    const SceneNode master = scene.Model("master");
    scene.Null("child", master);
    const SceneNode instance = scene.Instance("instance", master);
    const Model model(instance.Object());
    EXPECT_EQ(model.GetModelKind(), siModelKind_Instance);
    EXPECT_EQ(static_cast<int>(model.GetModelKind()), 2);
    EXPECT_EQ(model.GetInstanceMaster(), CRef(master));
    EXPECT_EQ(model.GetChildren().GetCount(), 0);
    EXPECT_EQ(Model(master.Object()).GetModelKind(), siModelKind_Regular);
    EXPECT_FALSE(Model(master.Object()).GetInstanceMaster().IsValid());
    Host::Objects().Delete(CRef(master).GetObjectID());
    EXPECT_FALSE(model.GetInstanceMaster().IsValid());
}

TEST(Scene, CamerasAndLights)
{
    SceneBuilder scene;
    const SceneNode camera = scene.Camera("camera").Set("fov", 60.0).Animate("near", {{0, 1}, {10, 2}});
    EXPECT_EQ(camera.Object().GetParameterValue(L"fov"), CValue(60.0));
    EXPECT_EQ(camera.Object().GetParameterValue(L"proj"), CValue(1));
    EXPECT_EQ(static_cast<double>(camera.Object().GetParameterValue(L"near", 5.0)), 1.5);
    for (const wchar_t* name :
         {L"fovtype", L"aspect", L"far", L"orthoheight", L"projplanewidth", L"projplaneheight"}) {
        EXPECT_TRUE(camera.Object().GetParameter(name).IsValid());
    }

    const SceneNode lamp = scene.Light("lamp", Host::LightType::Spot);
    EXPECT_EQ(lamp.Object().GetParameterValue(L"Type"), CValue(2));
    EXPECT_EQ(lamp.Object().GetParameterValue(L"LightArea"), CValue(false));
    EXPECT_EQ(lamp.Object().GetParameterValue(L"DiffuseContribution"), CValue(true));
    const Shader shader = Host::LightShaderOf(lamp);
    EXPECT_EQ(Light(lamp).GetShaders().GetItem(0), CRef(shader));
    EXPECT_EQ(shader.GetParameterValue(L"spread"), CValue(5.0));
    EXPECT_TRUE(shader.GetParameter(L"color").GetParameter(L"green").IsValid());
    Host::RemoveLightShaders(lamp);
    EXPECT_EQ(Light(lamp).GetShaders().GetCount(), 0);
    EXPECT_FALSE(Host::LightShaderOf(lamp).IsValid());
}

TEST(Scene, Ambience)
{
    SceneBuilder scene;
    Host::SetAmbience(1, 1, 1);
    const Parameter ambience = Host::SetAmbience(0.25, 0.5, 0.75);
    EXPECT_THAT(Names(scene.Root().GetProperties()), ElementsAre("AmbientLighting"));
    EXPECT_EQ(scene.Root().GetProperties()[0], ambience.GetParent());
    EXPECT_EQ(ambience.GetParameter(L"green").GetValue(), CValue(0.5));
}

TEST(Scene, Visibility)
{
    SceneBuilder scene;
    const SceneNode node = scene.Null("node");
    EXPECT_FALSE(Host::FindProperty(node, "visibility").IsValid()) << "no property unless one is asked for";
    const Parameter visible = Host::SetVisibility(node, false);
    EXPECT_EQ(visible, Host::SetVisibility(node, false));
    EXPECT_EQ(visible.GetValue(), CValue(false));
    EXPECT_EQ(node.Object().GetProperties().GetCount(), 1);
    SceneNode(node).Blinking({{0, 1}, {5, 0}});
    EXPECT_EQ(visible.GetValue(4.0), CValue(true));
    EXPECT_EQ(visible.GetValue(5.0), CValue(false));
}

TEST(Log, GoesToTheProgramAndIsKept)
{
    SceneBuilder scene;
    std::vector<std::string> heard;
    scene.Host().Fill.Log = [&](const Host::LogEntry& entry) { heard.push_back(entry.Text); };
    Application().LogMessage(L"one");
    Application().LogMessage(L"two", siWarningMsg);
    EXPECT_THAT(heard, ElementsAre("one", "two"));
    ASSERT_EQ(scene.Host().LogEntries.size(), 2u);
    EXPECT_EQ(scene.Host().LogEntries[0].Severity, 8);
    EXPECT_EQ(scene.Host().LogEntries[1].Severity, 4);
}

LONG Ask(LONG buttons)
{
    LONG answer = 0;
    EXPECT_TRUE(Application().GetUIToolkit().MsgBox(L"Text", buttons, L"Title", answer).Succeeded());
    return answer;
}

TEST(MessageBox, AnswersComeFromTheQueueThenFromTheSlotThenCarefully)
{
    SceneBuilder scene;
    EXPECT_EQ(Ask(siMsgYesNo), siMsgNo);
    EXPECT_EQ(Ask(siMsgOkOnly), siMsgOk);
    EXPECT_EQ(Ask(siMsgOkCancel), siMsgCancel);
    EXPECT_EQ(Ask(siMsgYesNoCancel), siMsgCancel);
    scene.Host().Fill.AnswerMessageBox = [](const Host::MessageBox& box) -> LONG {
        return box.Title == "Title" && box.Buttons == siMsgYesNo ? siMsgYes : siMsgOk;
    };
    scene.Host().MessageBoxAnswers = {siMsgNo};
    EXPECT_EQ(Ask(siMsgYesNo), siMsgNo);
    EXPECT_EQ(Ask(siMsgYesNo), siMsgYes);
    ASSERT_EQ(scene.Host().MessageBoxes.size(), 6u);
    EXPECT_EQ(scene.Host().MessageBoxes[0].Text, "Text");
    EXPECT_EQ(scene.Host().MessageBoxes[5].Answer, siMsgYes);
}

TEST(Progress, StateAndLimits)
{
    SceneBuilder scene;
    ProgressBar bar = Application().GetUIToolkit().GetProgressBar();
    EXPECT_TRUE(bar.PutCancelEnabled(false).Succeeded());
    EXPECT_TRUE(bar.PutMaximum(10000).Succeeded());
    EXPECT_TRUE(bar.PutStep(4000).Succeeded());
    EXPECT_TRUE(bar.PutVisible(true).Succeeded());
    EXPECT_TRUE(bar.PutCaption(L"Processing...").Succeeded());
    EXPECT_TRUE(bar.PutStatusText(L"Converting Data").Succeeded());
    EXPECT_EQ(bar.Increment(), 4000);
    EXPECT_EQ(bar.Increment(), 8000);
    EXPECT_EQ(bar.Increment(), 10000) << "not past the maximum";
    bar.PutValue(-5);
    EXPECT_EQ(bar.GetValue(), 0);
    bar.PutMinimum(10);
    EXPECT_EQ(bar.GetValue(), 10);
    bar.PutStep(2147483647);
    EXPECT_EQ(bar.Increment(), 10000);
    EXPECT_EQ(bar.GetMinimum(), 10);
    EXPECT_EQ(bar.GetMaximum(), 10000);
    EXPECT_EQ(bar.GetStep(), 2147483647);
    EXPECT_TRUE(bar.GetVisible());
    EXPECT_FALSE(bar.IsCancelEnabled());
    EXPECT_FALSE(bar.IsCancelPressed());
    EXPECT_EQ(bar.GetCaption(), L"Processing...");
    EXPECT_EQ(bar.GetStatusText(), L"Converting Data");

    const ProgressBar again = Application().GetUIToolkit().GetProgressBar();
    EXPECT_EQ(again.GetValue(), 0) << "each export starts with a fresh one";
    EXPECT_FALSE(again.GetVisible());
}

TEST(Progress, TheProgramSeesEachChangeAndMayCancel)
{
    SceneBuilder scene;
    std::vector<LONG> values;
    scene.Host().Fill.Progress = [&](const Host::ProgressState& state) {
        values.push_back(state.Value);
        return state.Value == 2;
    };
    ProgressBar bar = Application().GetUIToolkit().GetProgressBar();
    bar.Increment();
    EXPECT_FALSE(bar.IsCancelPressed());
    bar.Increment();
    EXPECT_TRUE(bar.IsCancelPressed());
    EXPECT_THAT(values, ElementsAre(1, 2));

    ProgressBar locked = Application().GetUIToolkit().GetProgressBar();
    locked.PutCancelEnabled(false);
    locked.PutValue(2);
    EXPECT_FALSE(locked.IsCancelPressed()) << "there is no button to press";
}

TEST(Script, RunsByTheProgramsSlot)
{
    SceneBuilder scene;
    CValueArray arguments;
    arguments.Add(L"x");
    CValue result;
    Application application;
    EXPECT_EQ(application.ExecuteScriptCode(L"code", L"VBScript", L"Browse", arguments, result),
              CStatus::Fail);
    EXPECT_EQ(scene.Host().LogEntries.back().Text, "There is nothing that runs scripts.");
    scene.Host().Fill.RunScript = [](const Host::ScriptCall& call, CValue& answer) -> CStatus {
        answer = Host::FromUtf8(call.Language + ":" + call.Procedure + ":" + call.Code);
        return call.Arguments.GetCount() == 1 ? CStatus::OK : CStatus::Fail;
    };
    EXPECT_TRUE(
        application.ExecuteScriptCode(L"code", L"VBScript", L"Browse", arguments, result).Succeeded());
    EXPECT_EQ(result, CValue(L"VBScript:Browse:code"));
}

TEST(Application, IsThereWithoutAskingForIt)
{
    SceneBuilder scene;
    const Application application;
    EXPECT_TRUE(application.IsValid());
    EXPECT_EQ(application.GetName(), L"Application");
    EXPECT_FALSE(application.GetVersion().IsEmpty());
    EXPECT_EQ(application.GetObjectFromID(CRef(application).GetObjectID()), CRef(application));
    EXPECT_FALSE(application.GetObjectFromID(0).IsValid());
}

} // namespace
} // namespace tq4x::test
