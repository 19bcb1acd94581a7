#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/wait.h>

#include "MarkedScene.h"
#include "cli/ExportRequest.h"
#include "support/Variables.h"

namespace tq4x::cli::test
{
namespace
{

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

class BatchCommandTest : public MarkedSceneTest
{
protected:
    BatchCommandTest()
    {
        std::filesystem::create_directory(Folder / "in");
        unsetenv("TQ4X_PLUGIN");
    }

    /// Runs the program as a process of its own.
    Outcome Program(const std::string& words, const std::string& before = "") const
    {
        const std::string command = before + "'" + TQ4X_PROGRAM + "' " + words + " >'" + Path("stdout") +
                                    "' 2>'" + Path("stderr") + "'";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Read("stdout"), Read("stderr")};
    }

    Outcome Batch(const std::string& more = "") const
    {
        return Program("batch '" + Path("in") + "' '" + Path("out") + "' " + more);
    }
};

TEST_F(BatchCommandTest, ExportsEverySceneOfTheFolder)
{
    WriteScene("in/b.gltf");
    WriteScene("in/a.scn");
    Write("in/notes.txt", "no scene");
    std::filesystem::create_directory(Folder / "in/c.gltf");
    const Outcome outcome = Batch("-j 2");
    EXPECT_EQ(outcome.Code, Done) << outcome.Err;
    EXPECT_EQ(outcome.Out, "a.scn   done, 1 file\nb.gltf  done, 1 file\n2 scenes, 0 failed\n");
    EXPECT_TRUE(std::filesystem::exists(Folder / "out/a.qmdl"));
    EXPECT_TRUE(std::filesystem::exists(Folder / "out/b.qmdl"));
}

TEST_F(BatchCommandTest, GoesOnAfterAFailure)
{
    WriteScene("in/a.gltf");
    Write("in/b.gltf", "{ broken");
    WriteScene("in/c.gltf");
    const Outcome outcome = Batch("-j 1 --report '" + Path("report.json") + "'");
    EXPECT_EQ(outcome.Code, BatchFailed);
    EXPECT_EQ(outcome.Out, "a.gltf  done, 1 file\nb.gltf  failed (exit code 3), 1 error\n"
                           "c.gltf  done, 1 file\n3 scenes, 1 failed\n");
    EXPECT_THAT(outcome.Err, HasSubstr("b.gltf"));
    const std::string report = Read("report.json");
    EXPECT_THAT(report, HasSubstr("\"exitCode\": 3"));
    EXPECT_THAT(report, HasSubstr("\"result\": \"failed\""));
    EXPECT_THAT(report, HasSubstr("a.qmdl"));
}

TEST_F(BatchCommandTest, ExportsSamplesWithABrokenFileAmongThem)
{
    const std::filesystem::path samples = std::filesystem::path(TQ4X_SAMPLES) / "gltf";
    if (!std::filesystem::exists(samples)) {
        GTEST_SKIP() << "NOT RUN: the sample scenes are absent; they are looked for in " << samples;
    }
    for (const char* file : {"Fox/Fox.glb", "InterpolationTest/InterpolationTest.glb",
                             "VertexColorTest/VertexColorTest.glb", "CesiumMan/CesiumMan.glb"}) {
        std::filesystem::copy(samples / file, Folder / "in");
    }
    Write("in/Duck.gltf", "{ broken");
    const Outcome outcome = Batch("-j 2 --fit-textures --set OutputQskla:true");
    EXPECT_EQ(outcome.Code, BatchFailed);
    EXPECT_EQ(outcome.Out, "CesiumMan.glb          done, 2 files\n"
                           "Duck.gltf              failed (exit code 3), 1 error\n"
                           "Fox.glb                done, 2 files\n"
                           "InterpolationTest.glb  done, 2 files\n"
                           "VertexColorTest.glb    done, 2 files\n"
                           "5 scenes, 1 failed\n");
    EXPECT_TRUE(std::filesystem::exists(Folder / "out/Fox.qskla"));
}

TEST_F(BatchCommandTest, ASceneThatVanishesFailsAlone)
{
    for (const char* name : {"in/a.gltf", "in/b.gltf", "in/c.gltf"}) {
        WriteScene(name);
    }
    InstallStarter("rm -f '" + Path("in/b.gltf") + "'"); // while the first scene is exported
    const Outcome outcome = Batch("-j 1");
    EXPECT_EQ(outcome.Code, BatchFailed);
    EXPECT_EQ(outcome.Out, "a.gltf  done, 1 file\nb.gltf  failed (exit code 3), 1 error\n"
                           "c.gltf  done, 1 file\n3 scenes, 1 failed\n");
    EXPECT_THAT(outcome.Err, HasSubstr("b.gltf does not exist."));
}

TEST_F(BatchCommandTest, StopsAtAnErrorIfWanted)
{
    Write("in/a.gltf", "{ broken");
    WriteScene("in/b.gltf");
    const Outcome outcome = Batch("-j1 --stop-on-error");
    EXPECT_EQ(outcome.Code, BatchFailed);
    EXPECT_EQ(outcome.Out,
              "a.gltf  failed (exit code 3), 1 error\nb.gltf  not started\n2 scenes, 1 failed\n");
    EXPECT_FALSE(std::filesystem::exists(Folder / "out/b.qmdl"));
}

TEST_F(BatchCommandTest, HandsOptionsOnToEachExport)
{
    WriteScene("in/a.gltf");
    EXPECT_EQ(Batch("--set OutputQskla:true --author ann").Code, Done);
    EXPECT_TRUE(std::filesystem::exists(Folder / "out/a.qskla"));
    EXPECT_THAT(Read("out/a.qmdl"), HasSubstr("ann"));
    const Outcome again = Batch();
    EXPECT_EQ(again.Code, BatchFailed) << "nobody can be asked whether to overwrite";
    EXPECT_THAT(again.Err, HasSubstr("--overwrite"));
    EXPECT_EQ(Batch("--overwrite").Code, Done);
}

TEST_F(BatchCommandTest, HandsOnEveryOptionThatIsNotAboutOneScene)
{
    const std::string help = HelpOf(BatchCommand);
    for (const OptionSpec& option : ExportOptionSpecs()) {
        const bool isOfOneScene = option.Name == "--output" || option.Name == "--name" ||
                                  option.Name == "--preview" || option.Name == "--depfile";
        const std::string line = "  " + std::string(option.Name);
        EXPECT_EQ(help.find(line) != std::string::npos ||
                      help.find(", " + line.substr(2)) != std::string::npos,
                  !isOfOneScene)
            << option.Name;
    }
}

TEST_F(BatchCommandTest, OptionsReachEachExport)
{
    Write("in/a.gltf", R"({"asset":{"version":"2.0"},"scenes":[{"nodes":[0,1]}],"nodes":[{"name":"one"},)"
                       R"({"name":"two"}],"animations":[)"
                       R"({"name":"walk","samplers":[{"input":0,"output":1}],)"
                       R"("channels":[{"sampler":0,"target":{"node":0,"path":"translation"}}]},)"
                       R"({"name":"long","samplers":[{"input":2,"output":1}],)"
                       R"("channels":[{"sampler":0,"target":{"node":0,"path":"translation"}}]}],)"
                       R"("accessors":[{"bufferView":0,"componentType":5126,"count":2,"type":"SCALAR",)"
                       R"("min":[0],"max":[1]},)"
                       R"({"bufferView":1,"componentType":5126,"count":2,"type":"VEC3"},)"
                       R"({"bufferView":2,"componentType":5126,"count":2,"type":"SCALAR",)"
                       R"("min":[0],"max":[2]}],"bufferViews":[{"buffer":0,"byteLength":8},)"
                       R"({"buffer":0,"byteOffset":8,"byteLength":24},)"
                       R"({"buffer":0,"byteOffset":32,"byteLength":8}],"buffers":[{"byteLength":40,)"
                       R"("uri":"data:application/octet-stream;base64,)"
                       R"(AAAAAAAAgD8AAAAAAAAAAAAAAAAAAIA/AACAPwAAgD8AAAAAAAAAQA=="}]})");
    Write("set.q3es", "# TQ4X_ForPennonExport settings\nOutputQtex=\"false\"\nOutputQskla=\"true\"\n"
                      "OptimizePrimitive=\"false\"\nMagnify=\"2\"\n");

    const struct
    {
        const char* Options;
        const char* File;
        const char* Text;
    } rows[] = {
        {"--set OutputQskla:true --fps 10", "a.qskla", "EndFrame=\"10\""},
        {"--set OutputQskla:true --frames 3-7", "a.qskla", "StartFrame=\"2\" EndFrame=\"6\""},
        {"--set OutputQskla:true --clip long", "a.qskla", "EndFrame=\"60\""},
        {"--select two", "a.qmdl", "RootBoneName=\"two\""},
        {"-s set.q3es", "a.qskla", "Magnify=\"2\""},
        {"--author ann", "a.qmdl", "Author=\"ann\""},
    };

    for (const auto& row : rows) {
        std::filesystem::remove_all(Folder / "out");
        const std::string here = "cd '" + Folder.Path().string() + "' && ";
        const Outcome plain = Program("batch in plain --overwrite --set OutputQskla:true", here);
        EXPECT_EQ(plain.Code, Done) << plain.Err;
        EXPECT_THAT(Read(std::string("plain/") + row.File), Not(HasSubstr(row.Text))) << row.Options;
        const Outcome outcome = Program(std::string("batch in out ") + row.Options, here);
        EXPECT_EQ(outcome.Code, Done) << row.Options << "\n" << outcome.Err;
        EXPECT_THAT(Read(std::string("out/") + row.File), HasSubstr(row.Text)) << row.Options;
    }
}

TEST_F(BatchCommandTest, RefusesBadOptionsOnce)
{
    WriteScene("in/a.gltf");

    const struct
    {
        const char* Options;
        int Code;
        const char* Text;
    } rows[] = {
        {"--fps 0", WrongUsage, "error: The frame rate must be a number above 0, not \"0\".\n"},
        {"--frames some", WrongUsage,
         "error: The frames must be all, playback or FIRST-LAST, not \"some\".\n"},
        {"--set Magnifi:1", WrongUsage, "Magnify"},
        {"-s none.q3es", BadInput, "none.q3es"},
    };

    for (const auto& row : rows) {
        const Outcome outcome = Batch(row.Options);
        EXPECT_EQ(outcome.Code, row.Code) << row.Options;
        EXPECT_EQ(outcome.Out, "") << row.Options;
        EXPECT_THAT(outcome.Err, HasSubstr(row.Text)) << row.Options;
    }
}

TEST_F(BatchCommandTest, VerbosityIsThatOfTheExports)
{
    WriteScene("in/a.gltf");
    Write("in/b.gltf", "{ broken");
    const std::string tiny = std::string("--plugin '") + TQ4X_TINY_PLUGIN + "' --overwrite ";
    const Outcome normal = Batch(tiny);
    EXPECT_THAT(normal.Out, HasSubstr("2 scenes, 1 failed"));
    EXPECT_THAT(normal.Err, Not(HasSubstr("note:")));
    const Outcome chatty = Batch(tiny + "-v");
    EXPECT_THAT(chatty.Err, HasSubstr("note: a.gltf: Some information.\n"));
    const Outcome quiet = Batch(tiny + "-q");
    EXPECT_EQ(quiet.Code, BatchFailed);
    EXPECT_EQ(quiet.Out, "");
    EXPECT_THAT(quiet.Err, testing::StartsWith("error: b.gltf: "));
}

TEST_F(BatchCommandTest, WithoutATemporaryFolderNothingIsTouched)
{
    WriteScene("in/a.gltf");
    const std::filesystem::path here = Folder / "here";
    std::filesystem::create_directory(here);
    const Outcome outcome = Program("batch ../in ../out", "cd '" + here.string() + "' && TMPDIR=/dev/null ");
    EXPECT_EQ(outcome.Code, BadOutput);
    EXPECT_EQ(outcome.Err, "error: There is no folder for temporary files.\n");
    EXPECT_TRUE(std::filesystem::is_empty(here));
    EXPECT_FALSE(std::filesystem::exists(Folder / "out"));
}

TEST_F(BatchCommandTest, ARelativeTemporaryFolderServesToo)
{
    WriteScene("in/a.gltf");
    std::filesystem::create_directory(Folder / "tmp");
    const Outcome outcome = Program("batch in out", "cd '" + Folder.Path().string() + "' && TMPDIR=tmp ");
    EXPECT_EQ(outcome.Code, Done) << outcome.Err;
    EXPECT_TRUE(std::filesystem::exists(Folder / "out/a.qmdl"));
    EXPECT_TRUE(std::filesystem::is_empty(Folder / "tmp")) << "all goes with the batch";
    EXPECT_FALSE(std::filesystem::exists(Folder / "data")) << "the settings of the user's last export";
}

TEST_F(BatchCommandTest, ExportsDontTouchTheUsersOwnFiles)
{
    WriteScene("in/a.gltf");
    EXPECT_EQ(Batch().Code, Done);
    EXPECT_FALSE(std::filesystem::exists(Folder / "data")) << "the settings of the user's last export";
}

TEST_F(BatchCommandTest, KeepsTheInstallationOfTheTool)
{
    InstallStarter("exit 0");
    WriteScene("in/a.gltf");
    const Outcome outcome = Batch();
    EXPECT_EQ(outcome.Code, Done) << outcome.Err;
    EXPECT_FALSE(std::filesystem::exists(Folder / "root/tools/DccPlugin"));
}

TEST_F(BatchCommandTest, TwoScenesOfOneNameCantBothBeExported)
{
    WriteScene("in/a.gltf");
    WriteScene("in/a.scn");
    const Outcome outcome = Batch();
    EXPECT_EQ(outcome.Code, BatchFailed);
    EXPECT_EQ(outcome.Out, "a.gltf  done, 1 file\na.scn   failed\n2 scenes, 1 failed\n");
    EXPECT_THAT(outcome.Err, HasSubstr("Another scene of the folder is exported as \"a\" already."));
}

TEST_F(BatchCommandTest, AnEmptyFolderIsDone)
{
    const Outcome outcome = Batch();
    EXPECT_EQ(outcome.Code, Done);
    EXPECT_EQ(outcome.Out, "0 scenes, 0 failed\n");
}

TEST_F(BatchCommandTest, RefusesWhatMakesNoSense)
{
    EXPECT_EQ(Program("batch '" + Path("none") + "' '" + Path("out") + "'").Code, BadInput);
    EXPECT_EQ(Batch("-j 0").Code, WrongUsage);
    EXPECT_EQ(Batch("-j x").Code, WrongUsage);
    EXPECT_EQ(Program("batch '" + Path("in") + "'").Code, WrongUsage);
    Write("out", "a file");
    EXPECT_EQ(Batch().Code, BadOutput);
    EXPECT_EQ(Program("batch '" + Path("in") + "' '" + Path("out") + "\\below'").Code, BadOutput);
}

} // namespace
} // namespace tq4x::cli::test
