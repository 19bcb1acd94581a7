#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>
#undef ReplaceFile // a macro for a call of the system

#include <array>
#include <fstream>

#include "MarkedScene.h"
#include "cli/ChildProcess.h"
#include "cli/OutputFolder.h"
#include "cli/PluginFile.h"
#include "cli/ReplaceFile.h"
#include "cli/SetVariable.h"
#include "cli/TemporaryFolder.h"
#include "cli/ToolFolder.h"
#include "scene/NarrowText.h"

namespace tq4x::cli::test
{
namespace
{

namespace fs = std::filesystem;

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

/// Runs programs as processes of their own.
class ProcessTest : public MarkedSceneTest
{
protected:
    Outcome Process(std::vector<std::string> words) const
    {
        ChildCommand command;
        words.insert(words.begin(), fs::absolute(TQ4X_PROGRAM).string());
        command.Words = std::move(words);
        command.OutputFile = Folder / "said";
        ChildProcesses children;
        if (children.Start(command) == 0) {
            return {-1, "", ""};
        }
        return {children.Wait().Code, Read("said"), ""};
    }
};

TEST_F(ProcessTest, AnswersTheSameCodes)
{
    EXPECT_EQ(Process({"--version"}).Code, Done);
    EXPECT_EQ(Process({}).Code, WrongUsage);
    EXPECT_EQ(Process({"info", Path("none.glb")}).Code, BadInput);
    EXPECT_EQ(Process({"export", Path("scene.gltf"), "--plugin", TQ4X_TINY_PLUGIN, "-n", "throws"}).Code,
              Failed);
    EXPECT_EQ(Process({"export", Path("scene.gltf"), "--plugin", Path("no.dll")}).Code, NoPlugin);
}

TEST_F(ProcessTest, ExportsWithThePluginBesideTheProgram)
{
    const Outcome outcome = Process({"export", Path("marked.gltf"), "-o", Path("out")});
    EXPECT_EQ(outcome.Code, Done) << outcome.Out;
    EXPECT_TRUE(fs::exists(Folder / "out/marked.qmdl"));
}

TEST_F(ProcessTest, WordsAreHandedOnAsTheyAre)
{
    for (const std::string word : {"a b", "a\"b", "a\\", "a b\\\\", "\\\"x", "", "\xc3\xa4", "\xe7\x81\xaf",
                                   "\xf0\x9f\x97\xbc", "(1) & %PATH% ^ |"}) {
        EXPECT_EQ(Process({word}).Out,
                  "error: There is no command \"" + word + "\". \"tq4x help\" tells what there is.\n");
    }
}

TEST_F(ProcessTest, BatchExportsEveryScene)
{
    fs::create_directory(Folder / "in (1)");
    WriteScene("in (1)/b.gltf");
    WriteScene("in (1)/a.scn");
    Write("in (1)/c.gltf", "{ broken");
    const Outcome outcome = Process({"batch", Path("in (1)"), Path("out"), "-j", "2"});
    EXPECT_EQ(outcome.Code, BatchFailed);
    EXPECT_THAT(outcome.Out,
                HasSubstr("a.scn   done, 1 file\nb.gltf  done, 1 file\nc.gltf  failed (exit code 3), "
                          "1 error\n3 scenes, 1 failed\n"));
    EXPECT_TRUE(fs::exists(Folder / "out/a.qmdl"));
    EXPECT_TRUE(fs::exists(Folder / "out/b.qmdl"));
}

TEST_F(ProcessTest, NamesOfManyKinds)
{
    const struct
    {
        const char* Name;
        const char* Text;
        bool IsInEveryCodePage;
    } rows[] = {
        {"blanks and brackets", "a house (1) [x] & co", true},
        {"German",
         "Stra\xc3\x9f"
         "e",
         false},
        {"Japanese", "\xe7\x81\xaf\xe5\x8f\xb0", false},
        {"a picture sign", "\xf0\x9f\x97\xbc", false},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        const fs::path folder = Folder / row.Text;
        fs::create_directory(folder);
        fs::copy_file(Folder / "marked.gltf", folder / (std::string(row.Text) + ".gltf"));
        const Outcome outcome = Process({"export", (folder / (std::string(row.Text) + ".gltf")).string(),
                                         "-o", (folder / "out").string(), "-n", row.Text});
        // The plug-in works in the system's code page: what that does not have, it can't name.
        const std::string known = XSI::NarrowFromWide(XSI::WideFromUtf8(row.Text));
        if (known.find('?') == std::string::npos) {
            EXPECT_EQ(outcome.Code, Done) << outcome.Out;
            EXPECT_TRUE(fs::exists(folder / "out" / (std::string(row.Text) + ".qmdl")));
        } else {
            EXPECT_EQ(outcome.Code, Failed) << outcome.Out;
            EXPECT_FALSE(row.IsInEveryCodePage);
            EXPECT_THAT(outcome.Out, HasSubstr("error: Output File Name is wrong\n"));
        }
    }
}

TEST_F(ProcessTest, DrivesAndBothSeparators)
{
    std::string forward = Path("out/deep");
    std::ranges::replace(forward, '\\', '/');
    EXPECT_EQ(Process({"export", Path("marked.gltf"), "-o", forward}).Code, Done);
    EXPECT_TRUE(fs::exists(Folder / "out/deep/marked.qmdl"));
    EXPECT_EQ(Process({"export", Path("marked.gltf"), "-o", "Q:\\none"}).Code, BadOutput);
}

TEST_F(ProcessTest, LongPaths)
{
    fs::path deep = Folder / std::string(100, 'n') / std::string(100, 'n') / std::string(100, 'n');
    const Outcome outcome = Process({"export", Path("marked.gltf"), "-o", deep.string()});
    EXPECT_EQ(outcome.Code, Done) << outcome.Out;
    EXPECT_TRUE(fs::exists(deep / "marked.qmdl"));
}

TEST_F(ProgramTest, OwnToolFolderHoldsAStarterThatFails)
{
    {
        const ToolFolder tool;
        EXPECT_FALSE(tool.IsInstallation());
        EXPECT_EQ(tool.Path(), Folder / "data/tq4x");
        EXPECT_EQ(ReadVariable("TQ4X_FORPENNON_ROOT"), (Folder / "data/tq4x").make_preferred().string());
    }
    EXPECT_EQ(ReadVariable("TQ4X_FORPENNON_ROOT"), "");
    ChildCommand command;
    command.Words = {(Folder / "data/tq4x/tools/BrellStudioStarter/BrellStudioStarter.exe").string(),
                     "-daemon"};
    command.OutputFile = Folder / "said";
    ChildProcesses children;
    ASSERT_NE(children.Start(command), 0);
    EXPECT_EQ(children.Wait().Code, 1);
    EXPECT_EQ(Read("said"), "tq4x: the optimising tool is not installed\n");
}

TEST_F(ProgramTest, ChildrenThatAreLeftAreEnded)
{
    ChildCommand command;
    command.Words = {fs::absolute(TQ4X_PROGRAM).string(),
                     "export",
                     Path("scene.gltf"),
                     "--plugin",
                     TQ4X_TINY_PLUGIN,
                     "-o",
                     Path("out"),
                     "-n",
                     "works"};
    command.OutputFile = Folder / "said";
    {
        ChildProcesses children;
        ASSERT_NE(children.Start(command), 0);
        EXPECT_EQ(children.Count(), 1u);
    }
    EXPECT_FALSE(fs::exists(Folder / "out/works.qmdl"));
}

TEST_F(ProgramTest, WhatCannotBeStarted)
{
    ChildCommand command;
    command.Words = {Path("missing.exe")};
    command.OutputFile = Folder / "said";
    ChildProcesses children;
    EXPECT_EQ(children.Start(command), 0);
    command.OutputFile = Folder / "missing/said";
    EXPECT_EQ(children.Start(command), 0);
}

TEST_F(ProgramTest, FoldersThatCanBeMadeAreFine)
{
    EXPECT_EQ(FindFolderProblem(Folder / "a/b/c"), "");
    EXPECT_EQ(FindFolderProblem("relative/folder"), "");
    EXPECT_EQ(FindFolderProblem("."), "");
    Write("file", "");
    EXPECT_EQ(FindFolderProblem(Folder / "file"), Path("file") + " is not a folder.");
}

TEST_F(ProgramTest, ThePluginIsFoundBesideTheProgram)
{
    SetVariable("TQ4X_PLUGIN", "");
    EXPECT_EQ(FindPluginFile("x.dll"), "x.dll");
    EXPECT_EQ(FindPluginFile(std::nullopt),
              ProgramFolder().parent_path() / "lib/tq4x/TQ4X_ForPennonExport.dll");
    SetVariable("TQ4X_PLUGIN", "C:\\y.dll");
    EXPECT_EQ(FindPluginFile(std::nullopt), "C:\\y.dll");
    SetVariable("TQ4X_PLUGIN", "");
}

TEST_F(ProgramTest, LibrariesThatAreNoPluginsAreRefused)
{
    Write("text.dll", "no library");
    EXPECT_THAT(LoadPluginFile(Folder / "text.dll"),
                StartsWith("The plug-in can't be loaded: " + Path("text.dll")));
    XSI::Host::Session::Current().Reset();
    EXPECT_THAT(
        LoadPluginFile("missing.dll"),
        StartsWith("The plug-in can't be loaded: " + (fs::current_path() / "missing.dll").string() + ": "));
}

TEST_F(ProgramTest, FilesAreReplacedWhole)
{
    EXPECT_TRUE(ReplaceFile(Folder / "a", "one\r\ntwo\n"));
    EXPECT_TRUE(ReplaceFile(Folder / "a", "two\n"));
    std::ifstream stream(Folder / "a", std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "two\n") << "line ends are as given";
    EXPECT_FALSE(ReplaceFile(Folder / "missing/file", "one"));
    fs::create_directory(Folder / "folder");
    EXPECT_FALSE(ReplaceFile(Folder / "folder", "new"));
    Write("protected", "old");
    SetFileAttributesW((Folder / "protected").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(ReplaceFile(Folder / "protected", "new"));
    EXPECT_EQ(Read("protected"), "old");
    SetFileAttributesW((Folder / "protected").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST(TemporaryFolderWindows, GoesWithAllThatItHolds)
{
    fs::path path;
    {
        const TemporaryFolder folder;
        const TemporaryFolder other;
        path = folder.Path();
        EXPECT_TRUE(path.is_absolute());
        EXPECT_NE(path, other.Path());
        std::ofstream(path / "file") << "text";
    }
    EXPECT_FALSE(fs::exists(path));
}

TEST(VariablesWindows, HoldEveryText)
{
    SetVariable("TQ4X_TEST", "\xe7\x81\xaf \xf0\x9f\x97\xbc");
    EXPECT_EQ(ReadVariable("TQ4X_TEST"), "\xe7\x81\xaf \xf0\x9f\x97\xbc");
    SetVariable("TQ4X_TEST", "");
    EXPECT_EQ(ReadVariable("TQ4X_TEST"), "");
    EXPECT_EQ(ReadVariable("TQ4X_NEVER_SET"), "");
}

} // namespace
} // namespace tq4x::cli::test
