#include "core/pipeline/WrittenText.h"
#include "pipeline/FileAccess.h"
#include "support/Golden.h"
#include "support/MessageRecorder.h"
#include "support/TemporaryFolder.h"

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

TEST(OutputFile, NewAndExistingTargets)
{
    const TemporaryFolder folder;
    EXPECT_TRUE(WriteAll(folder / "a", "one\n"));
    EXPECT_EQ(ReadWholeFile(folder / "a"), "one\n");
    EXPECT_TRUE(WriteAll(folder / "a", "two\n"));
    EXPECT_EQ(ReadWholeFile(folder / "a"), "two\n");
    EXPECT_THAT(NamesIn(folder.Path()), ElementsAre("a"));
}

TEST(OutputFile, TargetStaysUntilCommit)
{
    const TemporaryFolder folder;
    Fill(folder / "a", "old");
    {
        OutputFile file;
        ASSERT_TRUE(file.Open((folder / "a").string()));
        file.Write("new");
        EXPECT_EQ(ReadWholeFile(folder / "a"), "old");
    }
    EXPECT_EQ(ReadWholeFile(folder / "a"), "old");
    EXPECT_THAT(NamesIn(folder.Path()), ElementsAre("a"));
}

TEST(OutputFile, OpeningAgainDropsWhatWasNotCommitted)
{
    const TemporaryFolder folder;
    OutputFile file;
    ASSERT_TRUE(file.Open((folder / "a").string()));
    ASSERT_TRUE(file.Open((folder / "b").string()));
    file.Write("text");
    ASSERT_TRUE(file.Commit());
    EXPECT_FALSE(file.Commit());
    EXPECT_THAT(NamesIn(folder.Path()), ElementsAre("b"));
}

TEST(OutputFile, BackslashesInThePathAreSeparators)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "b");
    EXPECT_TRUE(WriteAll(folder.Path().string() + "\\b\\a", "text"));
    EXPECT_EQ(ReadWholeFile(folder / "b/a"), "text");
}

TEST(OutputFile, TwoFilesAtOnce)
{
    const TemporaryFolder folder;
    OutputFile first, second;
    ASSERT_TRUE(first.Open((folder / "a").string()));
    ASSERT_TRUE(second.Open((folder / "a").string()));
    first.Write("first");
    second.Write("second");
    EXPECT_TRUE(first.Commit());
    EXPECT_EQ(ReadWholeFile(folder / "a"), "first");
    EXPECT_TRUE(second.Commit());
    EXPECT_EQ(ReadWholeFile(folder / "a"), "second");
}

TEST(OutputFile, TheLongestNameIsFine)
{
    const TemporaryFolder folder;
    EXPECT_TRUE(WriteAll(folder / std::string(255, 'n'), "text"));
}

TEST(OutputFile, ATargetThatTurnsIntoAFolderIsAnError)
{
    const TemporaryFolder folder;
    const test::MessageRecorder recorder;
    OutputFile file;
    ASSERT_TRUE(file.Open((folder / "a").string()));
    fs::create_directory(folder / "a");
    EXPECT_FALSE(file.Commit());
    EXPECT_THAT(NamesIn(folder.Path()), ElementsAre("a"));
}

TEST(FileAccess, ReadsRegularFilesUpToALimit)
{
    const TemporaryFolder folder;
    Fill(folder / "a", "four");
    fs::create_directory(folder / "folder");
    EXPECT_EQ(ReadFileText((folder / "a").string(), 4), "four");
    EXPECT_EQ(ReadFileText((folder / "a").string(), 3), std::nullopt);
    EXPECT_EQ(ReadFileText((folder / "missing").string(), 4), std::nullopt);
    EXPECT_EQ(ReadFileText((folder / "folder").string(), 4), std::nullopt);
    EXPECT_EQ(ReadFileText("/dev/zero", 4), std::nullopt);
    EXPECT_TRUE(PathExists((folder / "folder").string()));
    EXPECT_FALSE(PathExists((folder / "missing").string()));
    EXPECT_FALSE(PathExists(""));
}

} // namespace
} // namespace tq4x
