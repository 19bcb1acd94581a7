#include "pipeline/Platform.h"

#include "core/pipeline/WrittenText.h"
#include "support/Golden.h"
#include "support/MessageRecorder.h"
#include "support/PlatformGuard.h"
#include "support/TemporaryFolder.h"
#include "support/Variables.h"

#include <fstream>

namespace tq4x
{
namespace
{

namespace fs = std::filesystem;
using test::NamesIn;
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
    EXPECT_THAT(platform.TimeText({2013, 4, 9, 8, 7, 6}),
                testing::HasSubstr("8:07:06")); // the system's format
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

TEST(Platform, ACopyOfAReadOnlyFileCanBeReplacedAgain)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "a") << "text";
    fs::permissions(folder / "a", fs::perms::owner_read);
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(SystemPlatform().CopyOver((folder / "a").string(), (folder / "b").string())) << i;
    EXPECT_EQ(test::ReadWholeFile(folder / "b"), "text");
    EXPECT_NE(fs::status(folder / "b").permissions() & fs::perms::owner_write, fs::perms::none);
    EXPECT_THAT(NamesIn(folder.Path()), ElementsAre("a", "b"));
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

} // namespace
} // namespace tq4x
