#include "pipeline/ExportOptions.h"
#include "pipeline/Platform.h"
#include "support/ExportRun.h"
#include "support/Golden.h"
#include "support/ToolInstallation.h"

namespace tq4x::test
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(ExportDriver, WritesAModelOfOneMesh)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    SceneMaterial red = scene.Material("red");
    scene.Mesh("plate").Square(red);
    const ExportRun run;
    EXPECT_TRUE(run.Succeeded());
    EXPECT_THAT(run.Messages(), IsEmpty());
    EXPECT_TRUE(run.FileHolds("out.qmdl", "<Bone Name=\"plate\" ParentBoneName=\"\""));
    EXPECT_TRUE(run.FileHolds("out.qmdl", "<MaterialQtr Name=\"red\""));
}

constexpr const char* AutoInspect = "preferences.Interaction.autoinspect";

std::vector<std::string> CommandNames()
{
    std::vector<std::string> names;
    for (const XSI::Host::CommandCall& call : SceneBuilder::Host().CommandCalls)
        names.push_back(call.Name);
    return names;
}

TEST(ExportDriver, RestoresTheHostAndSavesTheOptionsAtTheEnd)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Host().Preferences[AutoInspect] = 1;
    scene.Null("body");
    const ExportRun run({"Magnify:2"});
    EXPECT_TRUE(run.Succeeded());
    EXPECT_EQ(static_cast<LONG>(scene.Host().Preferences[AutoInspect]), 1);
    EXPECT_EQ(LiveOptions(), nullptr);
    const auto saved = tool.Root() / "tools/DccPlugin/softimage/ini/last_export_options_for_pennon.q3es";
    EXPECT_THAT(ReadWholeFile(saved), HasSubstr("Magnify=\"2.000000\""));
}

TEST(ExportDriver, AnEarlyEndRestoresNothing)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Host().Preferences[AutoInspect] = 1;
    scene.Null("body");
    const ExportRun run({"MaxReservedUniformRegisters:58"});
    EXPECT_FALSE(run.Succeeded());
    EXPECT_EQ(static_cast<LONG>(scene.Host().Preferences[AutoInspect]), 0);
    EXPECT_NE(LiveOptions(), nullptr);
    EXPECT_FALSE(std::filesystem::exists(tool.Root() / "tools/DccPlugin"));
    EXPECT_THAT(scene.Host().OpenedViews, ElementsAre("Script Editor"));
}

TEST(ExportDriver, AllFailingTestsTellTheirMessageAtOnce)
{
    SceneBuilder scene;
    scene.Null("body");
    ExportRun run(
        {"OutputQmdl:false", "OutputQtex:false", "MergeQmdl:true", "MaxReservedUniformRegisters:-1"}, "a?b");
    EXPECT_FALSE(run.Succeeded());
    EXPECT_THAT(run.Messages(), ElementsAre("E No output file", "E Output File Name is wrong",
                                            "E Path of qmdl file to merge is wrong",
                                            "E Max Reserved Uniform Registers is wrong"));
}

TEST(ExportDriver, ReservedRegistersHaveTwoLimits)
{
    const struct
    {
        const char* Registers;
        const char* NonUniform;
        bool IsAllowed;
    } rows[] = {
        {"MaxReservedUniformRegisters:55", "NonUniformScale:false", true},
        {"MaxReservedUniformRegisters:55", "NonUniformScale:true", false},
        {"MaxReservedUniformRegisters:57", "NonUniformScale:false", true},
        {"MaxReservedUniformRegisters:58", "NonUniformScale:false", false},
        {"MaxReservedUniformRegisters:54", "NonUniformScale:true", true},
    };

    for (const auto& row : rows) {
        const ToolInstallation tool;
        SceneBuilder scene;
        scene.Null("body");
        const ExportRun run({row.Registers, row.NonUniform});
        EXPECT_EQ(run.Succeeded(), row.IsAllowed) << row.Registers << " " << row.NonUniform;
    }
}

TEST(ExportDriver, RootsOtherThanOneGetASyntheticRoot)
{
    const ToolInstallation tool;
    {
        SceneBuilder scene;
        scene.Null("one");
        EXPECT_TRUE(ExportRun().FileHolds("out.qmdl", "RootBoneName=\"one\""));
    }
    {
        SceneBuilder scene;
        scene.Null("one");
        scene.Null("two");
        const ExportRun run;
        EXPECT_TRUE(run.FileHolds("out.qmdl", "RootBoneName=\"Tq4xRoot\""));
        EXPECT_TRUE(run.FileHolds("out.qmdl", "Name=\"two\" ParentBoneName=\"Tq4xRoot\""));
    }
}

TEST(ExportDriver, SelectionDecidesTheRoots)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    const SceneNode one = scene.Null("one");
    const SceneNode two = scene.Null("two", one);
    const SceneNode three = scene.Null("three");
    scene.Select({two});
    ExportRun run({"ExportTarget:Selection"});
    EXPECT_TRUE(run.FileHolds("out.qmdl", "RootBoneName=\"two\""));
    scene.Select({three, two});
    run.Run({"ExportTarget:Selection", "AlwaysOverwrite"});
    EXPECT_TRUE(run.FileHolds("out.qmdl", "RootBoneName=\"Tq4xRoot\""));
    EXPECT_FALSE(run.FileHolds("out.qmdl", "Name=\"one\""));
}

TEST(ExportDriver, SelectedThingsThatAreNoObjectsArePassedOver)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    const SceneNode one = scene.Null("one");
    const SceneMaterial red = scene.Material("red");
    scene.Select({red, one});
    const ExportRun run({"ExportTarget:Selection"});
    EXPECT_TRUE(run.Succeeded());
    EXPECT_TRUE(run.FileHolds("out.qmdl", "RootBoneName=\"one\""));
}

TEST(ExportDriver, MoreObjectsThanStepsLeaveTheBarWhereItIs)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Frames(0, 0);
    for (int i = 0; i < 4001; ++i)
        scene.Null("n" + std::to_string(i));
    LONG highest = 0;
    scene.Host().Fill.Progress = [&](const XSI::Host::ProgressState& state) {
        if (state.StatusText == "Collecting Data from XSI..." &&
            state.Value < 4000) // where converting begins
            highest = std::max(highest, state.Value);
        return false;
    };
    const ExportRun run;
    EXPECT_TRUE(run.Succeeded());
    EXPECT_EQ(highest, 0);
}

TEST(ExportDriver, ASceneWithoutNodesHasNoModel)
{
    const ToolInstallation tool;
    for (const char* target : {"ExportTarget:All", "ExportTarget:Selection"}) {
        SceneBuilder scene;
        const ExportRun run({target});
        EXPECT_FALSE(run.Succeeded());
        EXPECT_THAT(run.Messages(), ElementsAre("E No effective node"));
    }
}

TEST(ExportDriver, CamerasAndLightsAloneAreNoModel)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Camera("view");
    scene.Light("sun", XSI::Host::LightType::Infinite);
    ExportRun run;
    EXPECT_FALSE(run.Succeeded());
    EXPECT_THAT(run.Messages(), Contains("E No effective node"));
    run.Run({"OutputQmdl:false", "OutputQcam:true"});
    EXPECT_TRUE(run.Succeeded());
    EXPECT_TRUE(run.HasFile("out.qcam"));
}

TEST(ExportDriver, AsksOnceForTheFirstFileThatExists)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Null("body");
    ExportRun run;
    ASSERT_TRUE(run.Succeeded());
    const std::string former = run.File("out.qmdl");
    scene.Null("second");

    scene.Host().MessageBoxAnswers = {XSI::siMsgNo};
    run.Run({});
    EXPECT_TRUE(run.Succeeded()) << "a no is no failure";
    EXPECT_THAT(scene.Host().OpenedViews, IsEmpty());
    EXPECT_EQ(run.File("out.qmdl"), former);
    ASSERT_EQ(scene.Host().MessageBoxes.size(), 1u);
    EXPECT_EQ(scene.Host().MessageBoxes[0].Text,
              "\"" + (run.Folder() / "out").string() + ".*\" already exists.\nOverwrite?");
    EXPECT_EQ(scene.Host().MessageBoxes[0].Title, "TQ4X_ForPennonExport");
    EXPECT_EQ(scene.Host().MessageBoxes[0].Buttons, 4);

    scene.Host().MessageBoxAnswers = {XSI::siMsgYes};
    run.Run({});
    EXPECT_TRUE(run.FileHolds("out.qmdl", "second"));
}

TEST(ExportDriver, ANoRestoresNothing)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Null("body");
    ExportRun run;
    ASSERT_TRUE(run.Succeeded());
    scene.Host().Preferences[AutoInspect] = 1;
    scene.Host().MessageBoxAnswers = {XSI::siMsgNo};
    run.Run({});
    EXPECT_TRUE(run.Succeeded());
    EXPECT_EQ(static_cast<LONG>(scene.Host().Preferences[AutoInspect]), 0);
    EXPECT_NE(LiveOptions(), nullptr);
}

TEST(ExportDriver, AViewerThatFailsChangesNothingElse)
{
    ToolInstallation tool;
    SceneBuilder scene;
    scene.Null("body");
    CurrentPlatform().RunCommand = [&](const std::string& command) {
        tool.Commands.push_back(command);
        return 1;
    };
    const ExportRun run({"OutputMode:BrellStudio"});
    EXPECT_TRUE(run.Succeeded());
    EXPECT_EQ(tool.Commands.size(), 1u);
    EXPECT_THAT(run.Messages(), ElementsAre("E Failed to start BrellStudio"));
    EXPECT_TRUE(std::filesystem::exists(tool.Root() /
                                        "tools/DccPlugin/softimage/ini/last_export_options_for_pennon.q3es"));
    EXPECT_EQ(LiveOptions(), nullptr);
}

TEST(ExportDriver, TexturesAloneAreNeverAskedFor)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Null("body");
    ExportRun run;
    ASSERT_TRUE(run.Succeeded());
    run.Run({"OutputQmdl:false"});
    EXPECT_TRUE(run.Succeeded());
    EXPECT_THAT(scene.Host().MessageBoxes, IsEmpty());
}

TEST(ExportDriver, OverwriteTestCrossesLightsAndCameras)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Null("body");
    ExportRun run({"OutputQmdl:false", "OutputQcam:true"});
    ASSERT_TRUE(run.HasFile("out.qcam"));
    run.Run({"OutputQmdl:false", "OutputQcam:true"});
    EXPECT_THAT(scene.Host().MessageBoxes, IsEmpty())
        << "the camera file is looked for under the light's flag";
    run.Run({"OutputQmdl:false", "OutputQlgt:true"});
    EXPECT_EQ(scene.Host().MessageBoxes.size(), 1u);
}

TEST(ExportDriver, UserRangeLosesOneAndIsRepaired)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Frames(0, 100).Null("body").Moving({{0, 0}, {100, 100}});
    const ExportRun run({"FrameRange:Range", "StartFrame:10", "EndFrame:5", "OutputQskla:true"});
    EXPECT_THAT(run.Messages(), ElementsAre("W Start frame is bigger than End frame"));
    EXPECT_TRUE(run.FileHolds("out.qskla", "FrameSize=\"5\""));
    EXPECT_TRUE(run.FileHolds("out.qskla", "StartFrame=\"4\" EndFrame=\"9\""));
}

TEST(ExportDriver, WindowsWithoutEndAreRefusedBeforeSampling)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Frames(0, 4e9).Null("body");
    const ExportRun run;
    EXPECT_FALSE(run.Succeeded());
    ASSERT_EQ(run.Messages().size(), 1u);
    EXPECT_THAT(run.Messages()[0], HasSubstr("4e+09"));
}

TEST(ExportDriver, OddPrecisionsAreClampedWithAWarning)
{
    const ToolInstallation tool;
    for (const char* precision :
         {"FramePrecision:0", "FramePrecision:0.05", "FramePrecision:2", "FramePrecision:nan"}) {
        SceneBuilder scene;
        scene.Frames(0, 3).Null("body");
        const ExportRun run({precision});
        EXPECT_TRUE(run.Succeeded()) << precision;
        EXPECT_EQ(run.Messages().size(), 1u) << precision;
        EXPECT_EQ(run.Messages()[0][0], 'W') << precision;
    }
}

TEST(ExportDriver, MissingToolEndsTheExportBehindTheFiles)
{
    SceneBuilder scene;
    scene.Null("body");
    const Platform former = CurrentPlatform();
    CurrentPlatform().Environment = [](const std::string&) { return std::nullopt; };
    const ExportRun run;
    CurrentPlatform() = former;
    EXPECT_FALSE(run.Succeeded());
    EXPECT_THAT(run.Messages(), ElementsAre("E BrellStudio cannot be found"));
    EXPECT_TRUE(run.HasFile("out.qmdl"));
}

TEST(ExportDriver, OptimisationStartsTheToolAndItsFailureIsAWarning)
{
    ToolInstallation tool;
    SceneBuilder scene;
    scene.Null("body");
    CurrentPlatform().RunCommand = [&](const std::string& command) {
        tool.Commands.push_back(command);
        return 3;
    };
    const ExportRun run({"ComressNode:4"});
    EXPECT_TRUE(run.Succeeded());
    EXPECT_EQ(tool.Commands.size(), 1u);
    EXPECT_THAT(run.Messages(), ElementsAre("W Optimization failed"));
}

TEST(ExportDriver, DeletesOnlyTheDialogPropertyOfOneExport)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Null("body");
    XSI::Host::AddPlainProperty(scene.Root(), "TQ4X_ForPennonExportProp", "TQ4X_ForPennonExportProp");
    XSI::Host::AddPlainProperty(scene.Root(), "TQ4X_ForPennonExportProp", "TQ4X_ForPennonExportProp_1");
    const ExportRun run;
    EXPECT_TRUE(run.Succeeded());
    const XSI::CRefArray properties = scene.Root().GetProperties();
    EXPECT_TRUE(properties.Find("TQ4X_ForPennonExportProp").IsValid());
    EXPECT_FALSE(properties.Find("TQ4X_ForPennonExportProp_1").IsValid());
    EXPECT_THAT(CommandNames(), Contains("DeleteObj"));
}

TEST(ExportDriver, DrivesTheProgressBar)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Null("one");
    scene.Null("two");
    std::vector<std::string> texts;
    scene.Host().Fill.Progress = [&](const XSI::Host::ProgressState& state) {
        const std::string text = state.StatusText;
        if (!text.empty() && (texts.empty() || texts.back() != text))
            texts.push_back(text);
        return false;
    };
    const ExportRun run;
    EXPECT_THAT(texts,
                ElementsAre("Collecting Data from XSI...", "Converting Data", "Generate qmdl file..."));
    const XSI::ProgressBar bar(XSI::CRef::FromObjectID(scene.Host().ProgressBar));
    EXPECT_EQ(bar.GetMaximum(), 10000);
    EXPECT_EQ(bar.GetValue(), 10000);
    EXPECT_EQ(bar.GetCaption(), "Processing...");
    EXPECT_FALSE(bar.IsCancelEnabled());
}

TEST(ExportDriver, TheBarAdvancesByWhatEachPhaseHasToDo)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Null("one");
    scene.Null("two");
    std::vector<std::string> states;
    scene.Host().Fill.Progress = [&](const XSI::Host::ProgressState& state) {
        const std::string line = state.StatusText.substr(0, state.StatusText.find(' ')) + " " +
                                 std::to_string(state.Value) + " by " + std::to_string(state.Step);
        if (state.IsVisible && state.Maximum == 10000 && (states.empty() || states.back() != line))
            states.push_back(line);
        return false;
    };
    const ExportRun run;
    // Two objects are collected, these and the ambient light converted, one file is written.
    EXPECT_THAT(states,
                ElementsAre(" 0 by 1", " 0 by 100", " 0 by 2000", "Collecting 0 by 2000",
                            "Collecting 2000 by 2000", "Collecting 4000 by 2000", "Collecting 4000 by 1333",
                            "Converting 4000 by 1333", "Converting 5333 by 1333", "Converting 6666 by 1333",
                            "Converting 7999 by 1333", "Converting 7999 by 2000", "Generate 7999 by 2000",
                            "Generate 9999 by 2000", "Generate 10000 by 2000"));
}

TEST(ExportDriver, MixedScalingRulesAreToldOnce)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    const SceneNode one = scene.Null("one").ScalesHierarchically(true);
    scene.Null("two", one).ScalesHierarchically(false);
    scene.Null("three", one).ScalesHierarchically(false);
    const ExportRun run;
    EXPECT_TRUE(run.Succeeded());
    EXPECT_THAT(run.Messages(), ElementsAre("W Hierarchical Scaling settings are not identical"));
}

TEST(ExportDriver, AnInstanceShowsItsMaster)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    const SceneNode master = scene.Model("master");
    scene.Null("part", master);
    scene.Instance("copy1", master);
    scene.Instance("copy2", master);
    const ExportRun run;
    EXPECT_TRUE(run.FileHolds("out.qmdl", "Name=\"part\" ParentBoneName=\"master\""));
    EXPECT_TRUE(run.FileHolds("out.qmdl", "Name=\"part_1\" ParentBoneName=\"copy1\""));
    EXPECT_TRUE(run.FileHolds("out.qmdl", "Name=\"part_2\" ParentBoneName=\"copy2\""));
}

TEST(ExportDriver, InfluencesThatAreNotExportedEndTheExport)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    SceneMaterial red = scene.Material("red");
    const SceneNode outside = scene.Null("outside");
    const SceneNode inside = scene.Null("inside");
    SceneMesh plate = scene.Mesh("plate", inside);
    plate.Square(red).Skin({{outside, {{0, 100}, {1, 100}, {2, 100}, {3, 100}}}});
    scene.Select({inside});
    const ExportRun run({"ExportTarget:Selection"});
    EXPECT_FALSE(run.Succeeded());
    EXPECT_THAT(run.Messages(), ElementsAre("E Influence object is not outputted(outside)"));
}

TEST(ExportDriver, UnwritableFoldersAreToldAndFail)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Null("body");
    ExportRun run({"OutputQmdl:true"}, "out");
    const auto blocked = run.Folder() / "blocked.qmdl";
    std::filesystem::create_directory(blocked);
    run.Run({"AlwaysOverwrite"}, "blocked");
    EXPECT_FALSE(run.Succeeded());
    EXPECT_THAT(run.Messages(), Contains("E Can't open file(" + blocked.string() + ")"));
}

TEST(ExportDriver, DeepChainsDoNotOverflow)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Frames(0, 0);
    XSI::CRef parent;
    for (int i = 0; i < 20000; ++i)
        parent = scene.Null("n" + std::to_string(i), parent);
    const ExportRun run;
    EXPECT_TRUE(run.Succeeded());
    EXPECT_TRUE(run.FileHolds("out.qmdl", "Name=\"n19999\" ParentBoneName=\"n19998\""));
}

} // namespace
} // namespace tq4x::test
