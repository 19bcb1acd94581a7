#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>

#include "Program.h"
#include "cli/OutputFolder.h"
#include "cli/PluginFile.h"
#include "cli/SetVariable.h"
#include "cli/ToolFolder.h"
#include "support/Variables.h"

namespace tq4x::cli::test
{
namespace
{

using testing::StartsWith;

TEST_F(ProgramTest, OwnToolFolderHoldsAStarterThatFails)
{
    {
        const ToolFolder tool;
        EXPECT_FALSE(tool.IsInstallation());
        EXPECT_EQ(tool.Path(), Folder / "data/tq4x");
        EXPECT_STREQ(getenv("TQ4X_FORPENNON_ROOT"), (Folder / "data/tq4x").c_str());
    }
    EXPECT_STREQ(getenv("TQ4X_FORPENNON_ROOT"), "");
    const std::string starter = Path("data/tq4x/tools/BrellStudioStarter/BrellStudioStarter.exe");
    const int status = std::system(("\"" + starter + "\" -daemon 2>\"" + Path("said") + "\"").c_str());
    EXPECT_EQ(WEXITSTATUS(status), 1);
    EXPECT_EQ(Read("said"), "tq4x: the optimising tool is not installed\n");
}

TEST_F(ProgramTest, WithoutAnyPlaceThereIsNoToolFolder)
{
    Write("file", "");
    setenv("XDG_DATA_HOME", Path("file").c_str(), 1);
    std::filesystem::create_directory(Folder / "cwd");
    const std::filesystem::path former = std::filesystem::current_path();
    std::filesystem::current_path(Folder / "cwd");
    for (const char* const place : {"missing", "file"}) {
        setenv("TMPDIR", Path(place).c_str(), 1);
        const ToolFolder tool;
        EXPECT_EQ(tool.Path(), "");
        EXPECT_FALSE(tool.IsInstallation());
        EXPECT_EQ(ReadVariable("TQ4X_FORPENNON_ROOT"), "");
        EXPECT_EQ(Export({}).Code, Done);
    }
    unsetenv("TMPDIR");
    std::filesystem::current_path(former);
    EXPECT_TRUE(std::filesystem::is_empty(Folder / "cwd")) << "nothing is made where the program runs";
}

TEST_F(ProgramTest, FoldersThatCanBeMadeAreFine)
{
    EXPECT_EQ(FindFolderProblem(Folder / "a/b/c"), "");
    EXPECT_EQ(FindFolderProblem("relative/folder"), "");
    EXPECT_EQ(FindFolderProblem("."), "");
    Write("file", "");
    EXPECT_EQ(FindFolderProblem(Folder / "file"), Path("file") + " is not a folder.");
    std::filesystem::create_symlink("nowhere", Folder / "link");
    EXPECT_EQ(FindFolderProblem(Folder / "link"), Path("link") + " is not a folder.");
}

TEST_F(ProgramTest, ThePluginIsFoundBesideTheProgram)
{
    unsetenv("TQ4X_PLUGIN");
    EXPECT_EQ(FindPluginFile("x.so"), "x.so");
    EXPECT_EQ(FindPluginFile(std::nullopt),
              ProgramFolder().parent_path() / "lib/tq4x/TQ4X_ForPennonExport.so");
    setenv("TQ4X_PLUGIN", "/y.so", 1);
    EXPECT_EQ(FindPluginFile(std::nullopt), "/y.so");
    EXPECT_EQ(FindPluginFile("x.so"), "x.so");
    unsetenv("TQ4X_PLUGIN");
}

TEST_F(ProgramTest, LibrariesThatAreNoPluginsAreRefused)
{
    Write("text.so", "no library");
    EXPECT_THAT(LoadPluginFile(Folder / "text.so"), StartsWith("The plug-in can't be loaded: "));
    XSI::Host::Session::Current().Reset();
    EXPECT_EQ(LoadPluginFile("libm.so.6"),
              "The plug-in can't be loaded: " + (std::filesystem::current_path() / "libm.so.6").string() +
                  ": cannot open shared object file: No such file or directory.");
}

/// Runs the real program as a process and answers its exit code; a death by signal is a negative number.
int RunProcess(std::vector<std::string> words, int signalAfterStart = 0)
{
    words.insert(words.begin(), TQ4X_PROGRAM);
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    std::fflush(nullptr); // or the child would flush it again
    const pid_t process = fork();
    if (process == 0) {
        if (std::freopen("/dev/null", "w", stdout) != nullptr &&
            std::freopen("/dev/null", "w", stderr) != nullptr) {
            execv(arguments[0], arguments.data());
        }
        _exit(127);
    }
    if (signalAfterStart != 0) {
        usleep(500'000);
        kill(process, signalAfterStart);
    }
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

TEST_F(ProgramTest, ProcessesAnswerTheSameCodes)
{
    EXPECT_EQ(RunProcess({"--version"}), Done);
    EXPECT_EQ(RunProcess({}), WrongUsage);
    EXPECT_EQ(RunProcess({"info", Path("none.glb")}), BadInput);
    EXPECT_EQ(RunProcess({"export", Path("scene.gltf"), "--plugin", TQ4X_TINY_PLUGIN, "-n", "throws"}),
              Failed);
    EXPECT_EQ(RunProcess({"export", Path("scene.gltf"), "--plugin", Path("no.so")}), NoPlugin);
}

TEST_F(ProgramTest, CtrlCEndsTheProgramInOrder)
{
    const std::vector<std::string> words = {"export", Path("scene.gltf"), "--plugin", TQ4X_TINY_PLUGIN,
                                            "-o",     Path("out"),        "-n",       "works"};
    for (const int signal : {SIGINT, SIGTERM}) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(RunProcess(words, signal), Interrupted);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(9));
    }
    EXPECT_FALSE(std::filesystem::exists(Folder / "out/works.qmdl"));
}

} // namespace
} // namespace tq4x::cli::test
