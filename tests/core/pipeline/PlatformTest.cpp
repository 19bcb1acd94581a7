#include "pipeline/Platform.h"

#include "support/Golden.h"
#include "support/MessageRecorder.h"
#include "support/PlatformGuard.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tq4x
{
namespace
{

namespace fs = std::filesystem;
using test::TemporaryFolder;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Platform, DateText)
{
    EXPECT_EQ(DateText({2013, 4, 9, 8, 7, 6}), "2013-04-09T08:07:06");
    EXPECT_EQ(DateText({987, 12, 31, 23, 59, 60}), "987-12-31T23:59:60");
}

TEST(Platform, SystemAnswersWithinItsRanges)
{
    const Platform platform = SystemPlatform();
    const LocalTime now = platform.Now();
    EXPECT_GT(now.Year, 2000);
    EXPECT_TRUE(now.Month >= 1 && now.Month <= 12 && now.Day >= 1 && now.Day <= 31);
    EXPECT_EQ(platform.TimeText({2013, 4, 9, 8, 7, 6}), "08:07:06");
    EXPECT_THAT(platform.UserName(), testing::Not(IsEmpty()));
}

TEST(Platform, EmptyVariablesCountAsNotSet)
{
    ASSERT_EQ(setenv("TQ4X_TEST_VARIABLE", "value", 1), 0);
    EXPECT_EQ(SystemPlatform().Environment("TQ4X_TEST_VARIABLE"), "value");
    ASSERT_EQ(setenv("TQ4X_TEST_VARIABLE", "", 1), 0);
    EXPECT_EQ(SystemPlatform().Environment("TQ4X_TEST_VARIABLE"), std::nullopt);
    ASSERT_EQ(unsetenv("TQ4X_TEST_VARIABLE"), 0);
    EXPECT_EQ(SystemPlatform().Environment("TQ4X_TEST_VARIABLE"), std::nullopt);
}

TEST(Platform, ToolRootComesFromTheEnvironment)
{
    test::PlatformGuard guard;
    guard.SetEnvironment({});
    EXPECT_EQ(ToolRoot(), std::nullopt);
    guard.SetEnvironment({{"TQ4X_FORPENNON_ROOT", "/tools"}});
    EXPECT_EQ(ToolRoot(), "/tools");
}

TEST(Platform, CopyOverReplacesTheTarget)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "a") << "new";
    std::ofstream(folder / "b") << "old and longer";
    EXPECT_TRUE(SystemPlatform().CopyOver((folder / "a").string(), folder.Path().string() + "\\b"));
    EXPECT_EQ(test::ReadWholeFile(folder / "b"), "new");
    EXPECT_FALSE(SystemPlatform().CopyOver((folder / "missing").string(), (folder / "b").string()));
    EXPECT_FALSE(SystemPlatform().CopyOver(folder.Path().string(), (folder / "c").string()));
    EXPECT_FALSE(SystemPlatform().CopyOver((folder / "a").string(), (folder / "missing/b").string()));
    EXPECT_EQ(test::ReadWholeFile(folder / "b"), "new");
}

/// Names of all that is in a folder, in order.
std::vector<std::string> NamesIn(const fs::path& folder)
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
}

TEST(Platform, ACopyOfAReadOnlyFileCanBeReplacedAgain)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "a") << "text";
    fs::permissions(folder / "a", fs::perms::owner_read);
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(SystemPlatform().CopyOver((folder / "a").string(), (folder / "b").string())) << i;
    EXPECT_EQ(test::ReadWholeFile(folder / "b"), "text");
    EXPECT_EQ(fs::status(folder / "b").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_THAT(NamesIn(folder.Path()), ElementsAre("a", "b"));
}

TEST(Platform, ACopyReplacesALinkAndLeavesWhatItLeadsTo)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "a") << "new";
    std::ofstream(folder / "other") << "other";
    fs::create_symlink("other", folder / "b");
    EXPECT_TRUE(SystemPlatform().CopyOver((folder / "a").string(), (folder / "b").string()));
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(folder / "b")));
    EXPECT_EQ(test::ReadWholeFile(folder / "b"), "new");
    EXPECT_EQ(test::ReadWholeFile(folder / "other"), "other");
}

TEST(Platform, AFailedCopyLeavesNothingBehind)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "a") << "new";
    fs::create_directory(folder / "b");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    const auto copy = [&](const char* from, const char* to) {
        return SystemPlatform().CopyOver((folder / from).string(), (folder / to).string());
    };
    EXPECT_FALSE(copy("a", "b")) << "a folder";
    EXPECT_FALSE(copy("a", "pipe")) << "no regular file";
    EXPECT_FALSE(copy("pipe", "c")) << "from a pipe";
    EXPECT_FALSE(copy("missing", "c"));
    EXPECT_THAT(NamesIn(folder.Path()), ElementsAre("a", "b", "pipe"));
    EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
}

TEST(Platform, EnsureFolderMakesParentsAndTellsWhatItCannotMake)
{
    const TemporaryFolder folder;
    const test::MessageRecorder recorder;
    const std::string root = folder.Path().string();
    EXPECT_TRUE(EnsureFolder(root + "/a\\b/c"));
    EXPECT_TRUE(EnsureFolder(root + "/a/b/c/"));
    EXPECT_TRUE(fs::is_directory(folder / "a/b/c"));
    EXPECT_THAT(test::MessageRecorder::Messages(), IsEmpty());
    std::ofstream(folder / "file") << "";
    EXPECT_FALSE(EnsureFolder(root + "/file"));
    EXPECT_FALSE(EnsureFolder(root + "/file/x"));
    EXPECT_FALSE(EnsureFolder(""));
    EXPECT_THAT(test::MessageRecorder::Messages(),
                ElementsAre("E Can't create folder(" + root + "/file).",
                            "E Can't create folder(" + root + "/file/x).", "E Can't create folder()."));
}

TEST(Platform, CommandsRunInTheShell)
{
    const TemporaryFolder folder;
    const std::string path = (folder / "said").string();
    EXPECT_EQ(SystemPlatform().RunCommand("echo \"a  b\" > \"" + path + "\""), 0);
    EXPECT_EQ(test::ReadWholeFile(path), "a  b\n");
    EXPECT_EQ(SystemPlatform().RunCommand("exit 7"), 7);
    EXPECT_EQ(SystemPlatform().RunCommand("kill -9 $$"), 128 + 9);
    EXPECT_NE(SystemPlatform().RunCommand("\"" + (folder / "missing").string() + "\" 2>/dev/null"), 0);
}

TEST(Platform, FilesOfThisProcessAreNotInherited)
{
    const TemporaryFolder folder;
    const std::string path = (folder / "file").string();
    const int file = open(path.c_str(), O_CREAT | O_WRONLY, 0600);
    ASSERT_GE(file, 3);
    const std::string test = "test ! -e /proc/self/fd/" + std::to_string(file);
    EXPECT_EQ(SystemPlatform().RunCommand(test), 0);
    close(file);
}

TEST(Platform, SignalsThatThisProcessIgnoresAreNotIgnoredByCommands)
{
    const struct
    {
        int Signal;
        const char* Command;
    } rows[] = {{SIGPIPE, "kill -PIPE $$"}, {SIGXFSZ, "kill -XFSZ $$"}};

    for (const auto& row : rows) {
        void (*const former)(int) = std::signal(row.Signal, SIG_IGN);
        EXPECT_EQ(SystemPlatform().RunCommand(row.Command), 128 + row.Signal) << row.Command;
        std::signal(row.Signal, former);
    }
}

TEST(Platform, ACommandThatCannotBeStartedIsToldOnStandardError)
{
    const std::string command(std::size_t{8} << 20, 'x'); // longer than a process may be told
    testing::internal::CaptureStderr();
    const int exitCode = SystemPlatform().RunCommand(command);
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(exitCode, 1);
    EXPECT_THAT(said, testing::StartsWith("Error: My exec process create: /bin/sh -c \"xxx"));
}

TEST(Platform, AnUnreadableExitCodeIsToldOnStandardError)
{
    // With the signal ignored the system forgets its children when they end.
    void (*const former)(int) = std::signal(SIGCHLD, SIG_IGN);
    testing::internal::CaptureStderr();
    const int exitCode = SystemPlatform().RunCommand("exit 0");
    const std::string said = testing::internal::GetCapturedStderr();
    std::signal(SIGCHLD, former);
    EXPECT_EQ(exitCode, 1);
    EXPECT_EQ(said, "Error: My exec process get exit code: /bin/sh -c \"exit 0\"\n");
}

} // namespace
} // namespace tq4x
