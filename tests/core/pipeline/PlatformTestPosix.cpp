#include "pipeline/Platform.h"

#include "core/pipeline/WrittenText.h"
#include "support/Golden.h"
#include "support/TemporaryFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <fstream>

namespace tq4x
{
namespace
{

namespace fs = std::filesystem;
using test::NamesIn;
using test::TemporaryFolder;
using testing::ElementsAre;

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
