#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>

#include "Program.h"
#include "cli/ReplaceFile.h"

namespace tq4x::cli::test
{
namespace
{

namespace fs = std::filesystem;

using ReplaceFileTest = ProgramTest;

TEST_F(ReplaceFileTest, WritesNewFilesAndReplacesOldOnes)
{
    EXPECT_TRUE(ReplaceFile(Folder / "a\\b", "one\r\n"));
    EXPECT_EQ(Read("a\\b"), "one\r\n") << "the name is taken as it is";
    EXPECT_TRUE(ReplaceFile(Folder / "a\\b", ""));
    EXPECT_EQ(Read("a\\b"), "");
    EXPECT_FALSE(ReplaceFile(Folder / "missing/file", "one"));
}

TEST_F(ReplaceFileTest, KeepsLinksAndPermissions)
{
    fs::create_directory(Folder / "deep");
    Write("deep/file", "old");
    fs::permissions(Folder / "deep/file", fs::perms(0640));
    fs::create_symlink("deep/file", Folder / "link");
    EXPECT_TRUE(ReplaceFile(Folder / "link", "new"));
    EXPECT_TRUE(fs::is_symlink(Folder / "link"));
    EXPECT_EQ(Read("deep/file"), "new");
    EXPECT_EQ(fs::status(Folder / "deep/file").permissions(), fs::perms(0640));
}

TEST_F(ReplaceFileTest, LeavesFoldersAndProtectedFilesAlone)
{
    fs::create_directory(Folder / "folder");
    EXPECT_FALSE(ReplaceFile(Folder / "folder", "new"));
    EXPECT_TRUE(fs::is_directory(Folder / "folder"));
    Write("file", "old");
    fs::permissions(Folder / "file", fs::perms(0444));
    EXPECT_FALSE(ReplaceFile(Folder / "file", "new"));
    EXPECT_EQ(Read("file"), "old");
    fs::create_symlink("loop", Folder / "loop");
    EXPECT_FALSE(ReplaceFile(Folder / "loop", "new"));
}

TEST_F(ReplaceFileTest, WritesToPipesAndDevices)
{
    ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
    const int pipe = open(Path("pipe").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(pipe, 0);
    EXPECT_TRUE(ReplaceFile(Folder / "pipe", "text"));
    std::array<char, 8> buffer{};
    EXPECT_EQ(read(pipe, buffer.data(), buffer.size()), 4);
    EXPECT_STREQ(buffer.data(), "text");
    close(pipe);
    EXPECT_TRUE(fs::is_fifo(Folder / "pipe"));

    EXPECT_TRUE(ReplaceFile("/dev/null", "text"));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_FALSE(ReplaceFile("/dev/full", "text"));
}

TEST_F(ReplaceFileTest, WritesToTheStreamsOfTheProcess)
{
    testing::internal::CaptureStdout();
    const bool isOutWritten = ReplaceFile("/dev/stdout", "out");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "out");
    EXPECT_TRUE(isOutWritten);
    testing::internal::CaptureStderr();
    const bool isErrWritten = ReplaceFile("/dev/stderr", "err");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "err");
    EXPECT_TRUE(isErrWritten);
}

TEST_F(ReplaceFileTest, SideFilesOfAnExportGoThroughLinks)
{
    Write("report.json", "old");
    fs::create_symlink("report.json", Folder / "link.json");
    EXPECT_EQ(Export({"--report", Path("link.json"), "--depfile", "/dev/null"}).Code, Done);
    EXPECT_TRUE(fs::is_symlink(Folder / "link.json"));
    EXPECT_TRUE(Read("report.json").starts_with("{"));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    fs::permissions(Folder / "report.json", fs::perms(0444));
    const Outcome refused = Export({"--report", Path("report.json")});
    EXPECT_EQ(refused.Code, BadOutput);
    EXPECT_NE(refused.Err.find("error: The file " + Path("report.json") + " can't be written.\n"),
              std::string::npos);
}

} // namespace
} // namespace tq4x::cli::test
