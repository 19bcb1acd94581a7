#include "pipeline/PathText.h"

#include "support/PlatformGuard.h"

namespace tq4x
{
namespace
{

#ifdef _WIN32
constexpr char Separator = '\\';
#else
constexpr char Separator = '/';
#endif

TEST(PathText, AppendAddsTheSeparatorOnlyIfMissing)
{
    EXPECT_EQ(AppendPath("a", "b"), std::string("a") + Separator + "b");
    EXPECT_EQ(AppendPath("a/", "b"), "a/b");
    EXPECT_EQ(AppendPath("a\\", "b"), "a\\b");
    EXPECT_EQ(AppendPath("", "b"), "b");
    EXPECT_EQ(AppendPath("/", "b"), "/b");
    EXPECT_EQ(AppendPath("a", ""), std::string("a") + Separator);
}

TEST(PathText, FileParts)
{
    const struct
    {
        const char* Path;
        const char* Part;
        const char* Stem;
        const char* Extension;
    } cases[] = {
        {"a/b\\c.tga", "c.tga", "c", ".tga"},
        {"c", "c", "c", ""},
        {"c.d.e", "c.d.e", "c.d", ".e"},
        {"a.b/c", "c", "c", ""},
        {".x", ".x", "", ".x"},
        {"c.", "c.", "c", "."},
        {"a/", "", "", ""},
        {"", "", "", ""},
    };

    for (const auto& row : cases) {
        EXPECT_EQ(FilePart(row.Path), row.Part) << row.Path;
        EXPECT_EQ(FileStem(row.Path), row.Stem) << row.Path;
        EXPECT_EQ(FileExtension(row.Path), row.Extension) << row.Path;
    }
}

TEST(PathText, BackslashesTurnIntoSlashes)
{
    EXPECT_EQ(ForwardSlashes("a\\b/c\\"), "a/b/c/");
#ifdef _WIN32
    EXPECT_EQ(NativePath("a\\b/c"), "a\\b/c");
#else
    EXPECT_EQ(NativePath("a\\b/c"), "a/b/c");
#endif
}

TEST(PathText, TrailBytesAreNoSeparators)
{
    const test::PlatformGuard guard;
    SetSystemCodePage(CodePageShiftJis);
    const std::string character = "\x95\x5C"; // its second byte is that of a backslash
    EXPECT_EQ(FilePart("a\\" + character + "b"), character + "b");
    EXPECT_EQ(ForwardSlashes(character + "\\" + character), character + "/" + character);
    EXPECT_FALSE(EndsWithSeparator("a" + character));
    EXPECT_EQ(AppendPath(character, "b"), character + Separator + "b");
    EXPECT_EQ(FilePart("a\x95/b"), "b") << "a slash is never a second byte";
    EXPECT_TRUE(EndsWithSeparator("a\x95/"));
}

TEST(PathText, PercentSignsInTheShell)
{
#ifdef _WIN32
    constexpr bool enclosesVariables = true;
#else
    constexpr bool enclosesVariables = false;
#endif
    for (const char* path : {"", "C:/a b", "100% sure", "%"})
        EXPECT_TRUE(IsLeftByShell(path)) << path;
    for (const char* path : {"%TEMP%", "a%TEMP:~0,3%b", "100%%"})
        EXPECT_EQ(IsLeftByShell(path), !enclosesVariables) << path;
}

} // namespace
} // namespace tq4x
