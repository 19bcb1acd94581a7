#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "MarkedScene.h"
#include "cli/FindAuthor.h"
#include "cli/PluginFile.h"
#include "cli/SetVariable.h"
#include "cli/ToolFolder.h"
#include "gltf/JsonValue.h"
#include "gltf/NearestWord.h"
#include "pipeline/Platform.h"
#include "support/Variables.h"

namespace tq4x::cli::test
{
namespace
{

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

const char* const SeeHelp = " \"tq4x help\" tells what there is.\n";

TEST(NearestWordTest, FindsTheNearestWithinReason)
{
    constexpr std::string_view words[] = {"export", "info", "commands"};

    const struct
    {
        std::string Text;
        std::string_view Nearest;
    } cases[] = {{"exprot", "export"},           {"EXPORT", "export"}, {"inf", "info"},
                 {"comand", "commands"},         {"zzz", ""},          {"", ""},
                 {std::string(100'000, 'e'), ""}};

    for (const auto& entry : cases) {
        EXPECT_EQ(FindNearestWord(entry.Text, words), entry.Nearest) << entry.Text.substr(0, 10);
    }
}

TEST(ProgramUsageTest, HelpAndVersion)
{
    EXPECT_EQ(RunInside({"--version"}).Out, "tq4x 0.5.3\n");
    const Outcome help = RunInside({"help"});
    EXPECT_EQ(help.Code, Done);
    for (const Command* const command : CommandTable()) {
        EXPECT_THAT(help.Out, HasSubstr("\n  " + std::string(command->Name)));
        const Outcome one = RunInside({"help", std::string(command->Name)});
        EXPECT_EQ(one.Code, Done);
        EXPECT_THAT(one.Out, StartsWith("usage: tq4x " + std::string(command->Name)));
        for (const OptionSpec& option : command->Options) {
            EXPECT_THAT(one.Out, HasSubstr(std::string(option.Name)));
        }
        EXPECT_EQ(RunInside({std::string(command->Name), "--help"}).Out, one.Out);
    }
    EXPECT_EQ(RunInside({"--help"}).Out, help.Out);
    EXPECT_EQ(RunInside({"-h"}).Out, help.Out);
}

TEST(ProgramUsageTest, WrongUsageIsToldWithWhatIsNear)
{
    const struct
    {
        std::vector<std::string> Words;
        std::string Error;
    } cases[] = {
        {{}, "error: A command is missing."},
        {{"exprot"}, "error: There is no command \"exprot\"; did you mean \"export\"?"},
        {{"xyzzyxyzzy"}, "error: There is no command \"xyzzyxyzzy\"."},
        {{"export"}, "error: The command \"export\" needs SCENE."},
        {{"export", "a", "b"}, "error: The command \"export\" does not take \"b\"."},
        {{"export", "a", "--nmae", "x"}, "error: The option --nmae is unknown; did you mean --name?"},
        {{"info"}, "error: The command \"info\" needs FILE...."},
    };

    for (const auto& entry : cases) {
        const Outcome outcome = RunInside(entry.Words);
        EXPECT_EQ(outcome.Code, WrongUsage) << entry.Error;
        EXPECT_EQ(outcome.Err, entry.Error + SeeHelp);
        EXPECT_EQ(outcome.Out, "");
    }
    EXPECT_EQ(RunInside({"help", "nothing"}).Code, WrongUsage);
}

TEST_F(ProgramTest, ExportsThroughThePlugin)
{
    const Outcome outcome = Export({"--set", "Magnify:2", "--set", "OutputQskla:true"});
    EXPECT_EQ(outcome.Code, Done);
    EXPECT_EQ(outcome.Out,
              Path("out/scene.qmdl") + "  51 bytes\n" + Path("out/Textures/a.qtex") + "  7 bytes\n");
    EXPECT_EQ(outcome.Err,
              "warning: The first warning.\n2 warnings:\n  warning: The first warning. (2 times)\n");
    EXPECT_EQ(Read("out/scene.qmdl"), "OptimizePrimitive:false\nMagnify:2\nOutputQskla:true\n");
}

TEST_F(ProgramTest, QuietAndVerbose)
{
    const Outcome quiet = Export({"-q"});
    EXPECT_EQ(quiet.Out, "");
    EXPECT_EQ(quiet.Err, "");
    EXPECT_THAT(Export({"-v"}).Err, HasSubstr("note: Some information.\n"));
}

TEST_F(ProgramTest, WithAToolInstallationNothingIsSwitchedOff)
{
    setenv("TQ4X_FORPENNON_ROOT", Folder.Path().string().c_str(), 1);
    EXPECT_EQ(Export({}).Code, Done);
    EXPECT_EQ(Read("out/scene.qmdl"), "");
    EXPECT_FALSE(std::filesystem::exists(Folder / "data"));
    unsetenv("TQ4X_FORPENNON_ROOT");
}

TEST_F(ProgramTest, FilesInAFolderWithForeignSeparatorsAreFound)
{
    const Outcome outcome =
        RunInside({"export", Path("scene.gltf"), "--plugin", TQ4X_TINY_PLUGIN, "-o", Path("deep") + "\\er"});
    EXPECT_EQ(outcome.Code, Done);
    EXPECT_THAT(outcome.Out, StartsWith(Path("deep/er/scene.qmdl") + "  "));
    EXPECT_FALSE(std::filesystem::exists(Folder / "deep\\er"));
}

TEST_F(ProgramTest, SettingsFilesGoToTheirOwnCommand)
{
    Write("a.q3es", "# TQ4X_ForPennonExport settings\nOptimizePrimitive=\"true\"\n");
    EXPECT_EQ(Export({"-s", Path("a.q3es")}).Code, Done);
    EXPECT_EQ(Read("out/scene.qmdl"), "settings " + Path("a.q3es") + "\n");
    const Outcome missing = Export({"-s", Path("b.q3es")});
    EXPECT_EQ(missing.Code, BadInput);
    EXPECT_EQ(missing.Err, "error: The file " + Path("b.q3es") + " does not exist.\n");
}

TEST_F(ProgramTest, SelectsObjects)
{
    EXPECT_EQ(Export({"--select", "left", "--select", "right/hand"}).Code, Done);
    EXPECT_EQ(Read("out/scene.qmdl"),
              "OptimizePrimitive:false\nExportTarget:Selection\nselected left\nselected hand\n");

    const struct
    {
        const char* Name;
        const char* Error;
    } cases[] = {
        {"lefft", "error: The scene has no object \"lefft\"; did you mean \"left\"?\n"},
        {"Scene_Root", "error: The scene has no object \"Scene_Root\".\n"},
        {"hand", "error: The scene has 2 objects \"hand\"; name one by its path, like \"body/left/hand\".\n"},
        {"arm/hand", "error: The scene has no object \"arm/hand\".\n"},
    };

    for (const auto& entry : cases) {
        const Outcome outcome = Export({"--select", entry.Name});
        EXPECT_EQ(outcome.Code, WrongUsage);
        EXPECT_THAT(outcome.Err, StartsWith(entry.Error));
    }
}

TEST_F(ProgramTest, ExitCodesTellWhatFailed)
{
    Write("broken.gltf", "{");
    Write("file", "");
    const std::string plugin = TQ4X_TINY_PLUGIN;

    const struct
    {
        const char* Name;
        Outcome Result;
        int Code;
        std::string Error;
    } cases[] = {
        {"failing export", Export({"-n", "fails"}), Failed, "error: It failed.\n"},
        {"error message of a success", Export({"-n", "errs"}), Failed,
         "error: An error that stops nothing.\n"},
        {"exception", Export({"-n", "throws"}), Failed,
         "error: Something unexpected failed: a plug-in's own exception\n"},
        {"file that can't be opened", Export({"-n", "unwritable"}), BadOutput,
         "error: Can't open file(" + Path("out") + ")\n"},
        {"missing scene", RunInside({"export", Path("none.glb"), "--plugin", plugin}), BadInput,
         "error: " + Path("none.glb") + ": The file " + Path("none.glb") + " does not exist.\n"},
        {"broken scene", RunInside({"export", Path("broken.gltf"), "--plugin", plugin}), BadInput,
         "error: " + Path("broken.gltf") + ": The JSON is malformed at line 1, column 2.\n"},
        {"missing clip", Export({"--clip", "x"}), WrongUsage,
         "error: " + Path("scene.gltf") + ": The scene has no animation \"x\"; it has none.\n"},
        {"folder below a file",
         RunInside({"export", Path("scene.gltf"), "--plugin", plugin, "-o", Path("file/x")}), BadOutput,
         "error: " + Path("file") + " is not a folder.\n"},
        {"missing plug-in", RunInside({"export", Path("scene.gltf"), "--plugin", Path("no.so")}), NoPlugin,
         "error: The plug-in can't be loaded: " + Path("no.so") + ": "},
        {"bad value", Export({"--set", "Magnify:x"}), WrongUsage, "error: "},
        {"report that can't be written", Export({"--report", Path("none/r.json")}), BadOutput,
         "error: The file " + Path("none/r.json") + " can't be written.\n"},
        {"dependency file that can't be written", Export({"--depfile", Path("none/d")}), BadOutput,
         "error: The file " + Path("none/d") + " can't be written.\n"},
    };

    for (const auto& entry : cases) {
        EXPECT_EQ(entry.Result.Code, entry.Code) << entry.Name;
        EXPECT_THAT(entry.Result.Err, HasSubstr(entry.Error)) << entry.Name;
    }
}

TEST_F(ProgramTest, QuestionsWithoutATerminalAreAnsweredNo)
{
    const Outcome outcome = Export({"-n", "asks"});
    EXPECT_EQ(outcome.Code, Failed);
    EXPECT_THAT(outcome.Err,
                StartsWith("error: It exists. Overwrite? Nobody can be asked, so the answer is no; "
                           "--overwrite answers yes.\n"));
}

TEST_F(ProgramTest, QuestionsOnATerminalAreAsked)
{
    const Outcome no = Export({"-n", "asks"}, "n\n", true);
    EXPECT_EQ(no.Code, Done);
    EXPECT_THAT(no.Err, HasSubstr("It exists. Overwrite? [y/N] "));
    EXPECT_EQ(Export({"-n", "asks"}, "y\n", true).Code, Failed) << "the plug-in of this test fails on yes";
}

TEST_F(ProgramTest, PicturesOfWrongSizesCallForFitting)
{
    const std::string hint = "note: --fit-textures brings pictures to a size that textures can have.\n";
    EXPECT_THAT(Export({"-n", "size"}).Err, HasSubstr(hint));
    EXPECT_THAT(Export({"-n", "size", "--fit-textures"}).Err, testing::Not(HasSubstr(hint)));
    EXPECT_THAT(Export({"-n", "size", "-q"}).Err, testing::Not(HasSubstr(hint)));
}

TEST_F(ProgramTest, ProgressIsShownOnATerminal)
{
    EXPECT_THAT(Export({}, "", true).Err, HasSubstr("[###############               ] 50% Working"));
    EXPECT_THAT(Export({}).Err, testing::Not(HasSubstr("Working")));
}

TEST_F(ProgramTest, WarnsAboutMarkupInNames)
{
    std::filesystem::copy_file(Folder / "scene.gltf", Folder / "a&b.gltf");
    const Outcome outcome = RunInside({"export", Path("a&b.gltf"), "--plugin", TQ4X_TINY_PLUGIN, "-o",
                                       Path("out"), "-n", "plain", "--author", "x\"y"});
    EXPECT_EQ(outcome.Code, Done);
    EXPECT_THAT(outcome.Err,
                StartsWith("warning: a&b.gltf: The name holds &, which the exported files take as it "
                           "stands; readers will refuse them.\n"
                           "warning: x\"y: The name holds \", which the exported files take as it "
                           "stands; readers will refuse them.\n"));
    EXPECT_EQ(ReadVariable("TQ4X_AUTHOR"), "x\"y");
    unsetenv("TQ4X_AUTHOR");
}

TEST_F(ProgramTest, WarnsAboutMarkupInTheAuthorThatIsUsed)
{
    const std::string warning = "The name holds <, which the exported files take as it stands; readers will "
                                "refuse them.\n";
    setenv("TQ4X_AUTHOR", "a<b", 1);
    EXPECT_THAT(Export({}).Err, StartsWith("warning: a<b: " + warning));
    EXPECT_THAT(Export({"--author", "c<d"}).Err, StartsWith("warning: c<d: " + warning));
    unsetenv("TQ4X_AUTHOR");

    const Platform platform = SystemPlatform();
    EXPECT_EQ(Export({}).Err.find("The name holds"), std::string::npos) << platform.UserName();
    const auto name = [](const char* wanted) {
        setenv("TQ4X_AUTHOR", wanted, 1);
        const std::string author = FindAuthor();
        unsetenv("TQ4X_AUTHOR");
        return author;
    };
    EXPECT_EQ(name("somebody"), "somebody");
    EXPECT_EQ(name(""), platform.UserName());
}

TEST_F(ProgramTest, WritesReportAndDependencies)
{
    EXPECT_EQ(Export({"--report", Path("r.json"), "--depfile", Path("d")}).Code, Done);
    EXPECT_THAT(Read("r.json"), HasSubstr("\"count\": 2"));
    const std::string folder = Folder.Path().generic_string();
    EXPECT_EQ(Read("d"), folder + "/out/scene.qmdl " + folder + "/out/Textures/a.qtex: \\\n  " + folder +
                             "/scene.gltf\n");
    EXPECT_EQ(Export({"-n", "fails", "--report", Path("f.json")}).Code, Failed);
    EXPECT_THAT(Read("f.json"), HasSubstr("\"exitCode\": 1"));
}

TEST_F(ProgramTest, ListsWhatThePluginRegistered)
{
    const Outcome outcome = RunInside({"commands", "--plugin", TQ4X_TINY_PLUGIN});
    EXPECT_EQ(outcome.Code, Done);
    EXPECT_EQ(outcome.Out, "commands\n"
                           "  TQ4X_ForPennonExport sceneName outputFolder arguments\n"
                           "  TQ4X_ForPennonExportSettingFile q3esFileName sceneName outputFolder\n"
                           "  TinyOpen file\n"
                           "  TinyVersion\n"
                           "properties\n"
                           "  TinyProp\n"
                           "menu TinyMenu\n");
    EXPECT_EQ(RunInside({"commands", "--plugin", Path("no.so")}).Code, NoPlugin);
}

TEST_F(ProgramTest, RunsAnyCommand)
{
    const auto run = [](std::vector<std::string> words) {
        words.insert(words.begin(), {"run", "--plugin", TQ4X_TINY_PLUGIN});
        return RunInside(words);
    };
    EXPECT_EQ(run({"TinyVersion"}).Out, "Version: Tiny 1.0\n");
    EXPECT_EQ(run({"TQ4X_ForPennonExport", "name", Path("out"), "Magnify:1", "Other:2"}).Code, Done);
    EXPECT_EQ(Read("out/name.qmdl"), "Magnify:1\nOther:2\n");
    EXPECT_EQ(run({"--scene", Path("scene.gltf"), "TinyOpen", Path("scene.gltf")}).Code, Done);
    const Outcome missing = run({"TinyOpen", Path("none.gltf")});
    EXPECT_EQ(missing.Code, Failed);
    EXPECT_THAT(missing.Err, StartsWith("error: " + Path("none.gltf") + ": The file "));
    const Outcome unknown = run({"TinyVersoin"});
    EXPECT_EQ(unknown.Code, WrongUsage);
    EXPECT_EQ(
        unknown.Err,
        "error: The plug-in has no command \"TinyVersoin\"; did you mean \"TinyVersion\"?\n"
        "1 error:\n  error: The plug-in has no command \"TinyVersoin\"; did you mean \"TinyVersion\"?\n");
    EXPECT_EQ(run({"--scene", Path("none.gltf"), "TinyVersion"}).Code, BadInput);
    EXPECT_EQ(run({"SelectObj"}).Code, WrongUsage) << "a command of the host is none of the plug-in";
}

TEST_F(ProgramTest, InfoTellsWhatIsInAScene)
{
    const Outcome outcome = RunInside({"info", Path("scene.gltf")});
    EXPECT_EQ(outcome.Code, Done);
    EXPECT_EQ(outcome.Out, Path("scene.gltf") + "\n"
                                                "  nodes       5, 3 levels\n"
                                                "  meshes      0, 0 triangles, 0 vertices\n"
                                                "  skins       0\n"
                                                "  materials   0\n"
                                                "  pictures    0\n"
                                                "  cameras     0\n"
                                                "  lights      0\n"
                                                "  clips       0\n");
    Write("broken.gltf", "{");
    const Outcome broken = RunInside({"info", Path("broken.gltf"), Path("scene.gltf")});
    EXPECT_EQ(broken.Code, BadInput);
    EXPECT_EQ(broken.Out, outcome.Out);
    EXPECT_EQ(broken.Err, "error: " + Path("broken.gltf") + ": The JSON is malformed at line 1, column 2.\n");
}

TEST_F(ProgramTest, InfoListsClipsAndWhatIsLeftOut)
{
    Write("clip.gltf", R"({"asset":{"version":"2.0","generator":"me"},"extensionsUsed":["X_y"],"nodes":[{}],
        "buffers":[{"byteLength":8,"uri":"data:;base64,AAAAAAAAwD8="}],"bufferViews":[{"buffer":0,"byteLength":8}],
        "accessors":[{"bufferView":0,"componentType":5126,"count":2,"type":"SCALAR"},
        {"componentType":5126,"count":2,"type":"VEC3"}],"animations":[{"name":"walk","samplers":[
        {"input":0,"output":1}],"channels":[{"sampler":0,"target":{"node":0,"path":"scale"}}]}]})");
    const Outcome outcome = RunInside({"info", Path("clip.gltf")});
    EXPECT_THAT(outcome.Out, HasSubstr("  made by     me\n"));
    EXPECT_THAT(outcome.Out,
                EndsWith("  clips       1\n"
                         "    walk  1.5 s, 1 channels\n"
                         "  extension   X_y\n"
                         "  left out    X_y: The extension X_y is not read; what it describes is left "
                         "out.\n"));
    const Outcome json = RunInside({"info", "--json", Path("clip.gltf")});
    EXPECT_THAT(json.Out, HasSubstr("\"seconds\": 1.5"));
    EXPECT_THAT(json.Out, StartsWith("{\n  " + gltf::FormatJson({Path("clip.gltf")}) +
                                     ": {\n    \"generator\": \"me\","));
}

TEST_F(ProgramTest, WithoutADataFolderATemporaryOneServes)
{
    Write("file", "");
    setenv("XDG_DATA_HOME", Path("file").c_str(), 1);
    std::filesystem::path path;
    {
        const ToolFolder tool;
        path = tool.Path();
        EXPECT_TRUE(std::filesystem::exists(path / "tools/BrellStudioStarter/BrellStudioStarter.exe"));
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(MarkedSceneTest, SettingsThatCannotBeKept)
{
    const struct
    {
        const char* Name;
        const char* File; ///< stands in the way
        const char* Folder;
        ExitCode Code;
        const char* Error;
    } rows[] = {
        {"no folder", "root/tools/DccPlugin", nullptr, BadOutput, "Can't create folder("},
        {"no file", nullptr, "root/tools/DccPlugin/softimage/ini/last_export_options_for_pennon.q3es", Done,
         ""},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        std::filesystem::remove_all(Folder / "root");
        InstallStarter("exit 0");
        if (row.File != nullptr) {
            Write(row.File, "");
        } else {
            std::filesystem::create_directories(Folder / row.Folder);
        }
        const Outcome outcome = Run({"export", Path("marked.gltf"), "-o", Path("out"), "--overwrite", "-v",
                                     "--set", "OptimizePrimitive:false"});
        EXPECT_EQ(outcome.Code, row.Code);
        EXPECT_THAT(outcome.Err, HasSubstr(row.Error));
        EXPECT_EQ(outcome.Err.empty(), row.Code == Done) << outcome.Err;
        EXPECT_TRUE(std::filesystem::exists(Folder / "out/marked.qmdl"));
    }
}

TEST_F(MarkedSceneTest, NamesWithSeparatorsAreRefused)
{
    for (const char* name : {"a\\b", "a/b", "..\\b", "c:b"}) {
        const Outcome outcome = Run({"export", Path("marked.gltf"), "-o", Path("out"), "-n", name});
        EXPECT_EQ(outcome.Code, Failed) << name;
        EXPECT_EQ(outcome.Out, "") << name;
        EXPECT_THAT(outcome.Err, StartsWith("error: Output File Name is wrong\n")) << name;
        EXPECT_TRUE(!std::filesystem::exists(Folder / "out") || std::filesystem::is_empty(Folder / "out"));
        EXPECT_FALSE(std::filesystem::exists(Folder / "b.qmdl")) << name;
    }
}

} // namespace
} // namespace tq4x::cli::test
