#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/wait.h>

#include "MarkedScene.h"

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
    Outcome Program(const std::string& words) const
    {
        const std::string command = std::string("'") + TQ4X_PROGRAM + "' " + words + " >'" + Path("stdout") +
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

TEST_F(BatchCommandTest, ExportsDontTouchTheUsersOwnFiles)
{
    WriteScene("in/a.gltf");
    EXPECT_EQ(Batch().Code, Done);
    EXPECT_FALSE(std::filesystem::exists(Folder / "data")) << "the settings of the user's last export";
}

TEST_F(BatchCommandTest, KeepsTheInstallationOfTheTool)
{
    std::filesystem::create_directories(Folder / "root/tools/BrellStudioStarter");
    Write("root/tools/BrellStudioStarter/BrellStudioStarter.exe", "#!/bin/sh\nexit 0\n");
    std::filesystem::permissions(Folder / "root/tools/BrellStudioStarter/BrellStudioStarter.exe",
                                 std::filesystem::perms::owner_all);
    setenv("TQ4X_FORPENNON_ROOT", Path("root").c_str(), 1);
    WriteScene("in/a.gltf");
    const Outcome outcome = Batch();
    unsetenv("TQ4X_FORPENNON_ROOT");
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
