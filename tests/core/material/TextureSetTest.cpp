#include "material/TextureSet.h"

#include "material/TextureImage.h"
#include "pipeline/TextHelpers.h"
#include "support/MessageRecorder.h"

#include <gtest/gtest.h>

#include <random>

namespace tq4x
{
namespace
{

using test::MessageRecorder;
using Texts = std::vector<std::string>;

constexpr const char* Clash = "W There are multiple texture files with the same name";
constexpr const char* Changed = "W Texture name is changed";

/// The code page of a test, put back at its end.
class CodePageScope
{
public:
    explicit CodePageScope(unsigned codePage) { SetSystemCodePage(codePage); }

    ~CodePageScope() { SetSystemCodePage(m_former); }

private:
    unsigned m_former = SystemCodePage();
};

TEST(TextureSet, AddTakesTheLegalBaseName)
{
    const struct
    {
        const char* Name;
        unsigned CodePage;
        const char* Path;
        const char* Expected;
        Texts Messages;
    } cases[] = {
        {"plain", CodePageUtf8, "/art/Wall.tga", "Wall", {}},
        {"other separator", CodePageUtf8, "C:\\art\\Wall.tga", "Wall", {}},
        {"no folder, no extension", CodePageUtf8, "Wall", "Wall", {}},
        {"last dot ends the name", CodePageUtf8, "/a.b/Wall.low.tga", "Wall.low", {}},
        {"all legal marks", CodePageUtf8, "/art/a-B_9.0.png", "a-B_9.0", {}},
        {"blank",
         CodePageUtf8,
         "/art/My wall.tga",
         "My_wall",
         {std::string(Changed) + "(My wall -> My_wall)"}},
        {"one mark for each character",
         CodePageUtf8,
         "/art/\xE5\xA3\x81"
         "1.tga",
         "_1",
         {std::string(Changed) + "(\xE5\xA3\x81"
                                 "1 -> _1)"}},
        {"double bytes, trail byte like a separator",
         CodePageShiftJis,
         "/art/\x95\x5C"
         "A.tga",
         "_A",
         {std::string(Changed) + "(\x95\x5C"
                                 "A -> _A)"}},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        const CodePageScope codePage(c.CodePage);
        MessageRecorder recorder;
        TextureSet set;
        EXPECT_EQ(set.Add(c.Path, false, nullptr), c.Expected);
        EXPECT_EQ(MessageRecorder::Messages(), c.Messages);
        ASSERT_EQ(set.Entries.size(), 1u);
        EXPECT_EQ(set.Entries.begin()->first, c.Path);
        EXPECT_EQ(set.Entries.begin()->second.Name, c.Expected);
    }
}

TEST(TextureSet, FirstUseOfAPathDecides)
{
    MessageRecorder recorder;
    TextureImage first, second;
    TextureSet set;
    EXPECT_EQ(set.Add("a/Bark.png", false, &first), "Bark");
    EXPECT_EQ(set.Add("a/Bark.png", true, &second), "Bark");
    ASSERT_EQ(set.Entries.size(), 1u);
    EXPECT_FALSE(set.Entries.at("a/Bark.png").IsNormalMap);
    EXPECT_EQ(set.Entries.at("a/Bark.png").Image, &first);
    EXPECT_EQ(MessageRecorder::Messages(), Texts{});
}

TEST(TextureSet, NormalMapAndMissingImageAreKept)
{
    TextureSet set;
    set.Add("a/Bark_n.tga", true, nullptr);
    EXPECT_TRUE(set.Entries.at("a/Bark_n.tga").IsNormalMap);
    EXPECT_EQ(set.Entries.at("a/Bark_n.tga").Image, nullptr);
}

TEST(TextureSet, SecondPathOfANameIsRefusedAtEachUse)
{
    MessageRecorder recorder;
    TextureSet set;
    set.Add("a/Bark.png", false, nullptr);
    EXPECT_EQ(set.Add("b/Bark.tga", true, nullptr), "Bark");
    EXPECT_EQ(set.Add("b/Bark.tga", true, nullptr), "Bark");
    EXPECT_EQ(set.Entries.size(), 1u);
    EXPECT_TRUE(set.Entries.contains("a/Bark.png"));
    EXPECT_EQ(MessageRecorder::Messages(),
              (Texts{std::string(Clash) + "(Bark)", std::string(Clash) + "(Bark)"}));
}

TEST(TextureSet, ChangedNameIsToldBeforeTheClash)
{
    MessageRecorder recorder;
    TextureSet set;
    set.Add("a/Old_bark.png", false, nullptr);
    EXPECT_EQ(set.Add("a/Old bark.png", false, nullptr), "Old_bark");
    EXPECT_EQ(MessageRecorder::Messages(),
              (Texts{std::string(Changed) + "(Old bark -> Old_bark)", std::string(Clash) + "(Old bark)"}));
}

TEST(TextureSet, ChangedNameOfAKnownPathIsToldOnce)
{
    MessageRecorder recorder;
    TextureSet set;
    set.Add("a/Old bark.png", false, nullptr);
    set.Add("a/Old bark.png", false, nullptr);
    EXPECT_EQ(MessageRecorder::Messages(), (Texts{std::string(Changed) + "(Old bark -> Old_bark)"}));
}

TEST(TextureSet, CaseMakesNamesAndPathsDiffer)
{
    MessageRecorder recorder;
    TextureSet set;
    set.Add("a/bark.png", false, nullptr);
    set.Add("a/Bark.png", false, nullptr);
    EXPECT_EQ(set.Entries.size(), 2u);
    EXPECT_EQ(MessageRecorder::Messages(), Texts{});
}

TEST(TextureSet, DoubleByteNamesOfOneLengthClash)
{
    const CodePageScope codePage(CodePageShiftJis);
    MessageRecorder recorder;
    TextureSet set;
    EXPECT_EQ(set.Add("\x95\xC7\x8E\x86.tga", false, nullptr), "__");
    EXPECT_EQ(set.Add("\x90\xCE\x96\xD8.tga", false, nullptr), "__");
    EXPECT_EQ(set.Entries.size(), 1u);
    ASSERT_EQ(MessageRecorder::Messages().size(), 3u);
    EXPECT_EQ(MessageRecorder::Messages()[2], std::string(Clash) + "(\x90\xCE\x96\xD8)");
}

TEST(TextureSet, EntriesStandInOrderOfTheBytesOfTheirPaths)
{
    TextureSet set;
    for (const char* path : {"b/One.tga", "\xC3\xA4/Two.tga", "B/Three.tga", "a/Four.tga"})
        set.Add(path, false, nullptr);
    Texts names;
    for (const auto& [path, entry] : set.Entries)
        names.push_back(entry.Name);
    EXPECT_EQ(names, (Texts{"Three", "Four", "One", "Two"}));
}

/// The set as a walk over all entries gives it.
struct WalkedSet
{
    std::map<std::string, std::string> Entries;
    Texts Messages;

    std::string Add(const std::string& path)
    {
        const std::string base = path.substr(path.rfind('/') + 1);
        const std::string name = LegalName(base);
        if (Entries.contains(path))
            return name;
        if (name != base)
            Messages.push_back(std::string(Changed) + "(" + base + " -> " + name + ")");
        for (const auto& entry : Entries) {
            if (entry.second == name) {
                Messages.push_back(std::string(Clash) + "(" + base + ")");
                return name;
            }
        }
        Entries.emplace(path, name);
        return name;
    }
};

TEST(TextureSet, AnswersAreThoseOfTheWalk)
{
    const std::string folders[] = {"a/", "b/", "c/"};
    const std::string names[] = {"x", "y", "x y", "x_y", "z+", "z_", "Z_"};
    for (unsigned seed = 0; seed < 100; ++seed) {
        MessageRecorder recorder;
        std::mt19937 random(seed);
        TextureSet set;
        WalkedSet walked;
        for (int i = 0; i < 60; ++i) {
            const std::string path = folders[random() % 3] + names[random() % 7];
            ASSERT_EQ(set.Add(path, false, nullptr), walked.Add(path)) << "seed " << seed << " " << path;
        }
        ASSERT_EQ(MessageRecorder::Messages(), walked.Messages) << "seed " << seed;
        ASSERT_EQ(set.Entries.size(), walked.Entries.size()) << "seed " << seed;
        for (const auto& [path, name] : walked.Entries)
            ASSERT_EQ(set.Entries.at(path).Name, name) << "seed " << seed;
    }
}

} // namespace
} // namespace tq4x
