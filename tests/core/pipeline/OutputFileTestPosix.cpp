#include "core/pipeline/WrittenText.h"
#include "support/Golden.h"
#include "support/MessageRecorder.h"
#include "support/TemporaryFolder.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <fstream>

namespace tq4x
{
namespace
{

namespace fs = std::filesystem;
using test::Fill;
using test::NamesIn;
using test::ReadWholeFile;
using test::TemporaryFolder;
using test::WriteAll;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

TEST(OutputFile, WhatCannotBeOpened)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "folder");
    Fill(folder / "file", "");
    Fill(folder / "readOnly", "old");
    fs::permissions(folder / "readOnly", fs::perms::owner_read | fs::perms::group_read);
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    fs::create_symlink("loop", folder / "loop");
    fs::create_symlink("readOnly", folder / "linkToReadOnly");
    const std::string root = folder.Path().string();
    for (const std::string& path :
         {root + "/folder", root + "/missing/a", root + "/file/a", root + "/readOnly", root + "/pipe",
          root + "/loop", root + "/linkToReadOnly", std::string("/dev/null"), std::string(),
          root + std::string("/a\0b", 4), root + "/" + std::string(300, 'x') + "/a"})
        EXPECT_FALSE(WriteAll(path, "text")) << path;
    EXPECT_EQ(ReadWholeFile(folder / "readOnly"), "old");
    EXPECT_THAT(NamesIn(folder.Path()),
                UnorderedElementsAre("folder", "file", "readOnly", "pipe", "loop", "linkToReadOnly"));
}

TEST(OutputFile, UnwritableFolder)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "closed");
    fs::permissions(folder / "closed", fs::perms::owner_read | fs::perms::owner_exec);
    // Nothing but the kernel's own folders refuses the superuser.
    const fs::path closed = geteuid() == 0 ? fs::path("/proc") : folder / "closed";
    EXPECT_FALSE(WriteAll(closed / "a", "text"));
    fs::permissions(folder / "closed", fs::perms::owner_all);
    EXPECT_THAT(NamesIn(folder / "closed"), ElementsAre());
}

TEST(OutputFile, LinksStayLinks)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "real");
    Fill(folder / "real/a", "old");
    fs::create_symlink("real/a", folder / "first");
    fs::create_symlink((folder / "first").string(), folder / "second");
    EXPECT_TRUE(WriteAll(folder / "second", "new"));
    EXPECT_TRUE(fs::is_symlink(folder / "first"));
    EXPECT_TRUE(fs::is_symlink(folder / "second"));
    EXPECT_EQ(ReadWholeFile(folder / "real/a"), "new");
    EXPECT_THAT(NamesIn(folder / "real"), ElementsAre("a"));
}

TEST(OutputFile, LinkThatLeadsNowhereMakesItsTarget)
{
    const TemporaryFolder folder;
    fs::create_symlink("target", folder / "link");
    EXPECT_TRUE(WriteAll(folder / "link", "new"));
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(ReadWholeFile(folder / "target"), "new");
}

TEST(OutputFile, PermissionsOfTheTargetAreKept)
{
    const TemporaryFolder folder;
    Fill(folder / "a", "old");
    const fs::perms wanted = fs::perms::owner_read | fs::perms::owner_write;
    fs::permissions(folder / "a", wanted);
    EXPECT_TRUE(WriteAll(folder / "a", "new"));
    EXPECT_EQ(fs::status(folder / "a").permissions(), wanted);
}

TEST(OutputFile, LeftTemporaryFilesAreNeitherUsedNorTouched)
{
    const TemporaryFolder folder;
    Fill(folder / ".tq4x_0.part", "left behind");
    Fill(folder / "precious", "precious");
    fs::create_symlink("precious", folder / ".tq4x_1.part");
    fs::create_symlink("nowhere", folder / ".tq4x_2.part");
    EXPECT_TRUE(WriteAll(folder / "a", "new"));
    EXPECT_EQ(ReadWholeFile(folder / "a"), "new");
    EXPECT_EQ(ReadWholeFile(folder / ".tq4x_0.part"), "left behind");
    EXPECT_EQ(ReadWholeFile(folder / "precious"), "precious");
    EXPECT_FALSE(fs::exists(folder / "nowhere"));
}

/// Limits the size of files that this process may write, for the time of a test.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_former);
        const rlimit limit = {bytes, m_former.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_former{};
    void (*m_handler)(int) = nullptr;
};

TEST(OutputFile, ADiskThatIsFullLeavesTheOldFile)
{
    const TemporaryFolder folder;
    const test::MessageRecorder recorder;
    const std::string path = (folder / "a").string();
    Fill(path, "old");
    for (const std::size_t size :
         {std::size_t{100}, std::size_t{1} << 20}) { // fails when flushing, and before
        const FileSizeLimit limit(10);
        OutputFile file;
        ASSERT_TRUE(OpenOutput(file, path));
        file.Write(std::string(size, 'x'));
        CommitOutput(file);
    }
    EXPECT_EQ(ReadWholeFile(path), "old");
    EXPECT_THAT(NamesIn(folder.Path()), ElementsAre("a"));
    const std::string message = "E Can't write file(" + path + ").";
    EXPECT_THAT(test::MessageRecorder::Messages(), ElementsAre(message, message));
}

} // namespace
} // namespace tq4x
