#include "scene/UserData.h"
#include "pipeline/XmlWriter.h"
#include "support/Golden.h"

#include <limits>
#include <random>

namespace tq4x
{
namespace
{

using Kind = UserDataKind;

TEST(ParseUserDataProperty, TakesTheThreeListsApart)
{
    const struct
    {
        const char* Name;
        UserDataTexts Texts;
        std::vector<UserDataEntry> Entries;
    } cases[] = {
        {"empty", {}, {}},
        {"one of each kind",
         {"a\r\nb\r\nc", "String\r\nInteger\r\nFloat", "x\r\n1\r\n2.5"},
         {{"a", Kind::String, "x"}, {"b", Kind::Integer, "1"}, {"c", Kind::Float, "2.5"}}},
        {"a lone carriage return is a line end inside an item",
         {"a\r\nb", "Integer\r\nString", "1\r2\r\nx"},
         {{"a", Kind::Integer, "1\r\n2"}, {"b", Kind::String, "x"}}},
        {"empty lines inside an item", {"a", "String", "\r\rx\r"}, {{"a", Kind::String, "\r\n\r\nx\r\n"}}},
        {"empty values",
         {"a\r\nb", "String\r\nString", "\r\n"},
         {{"a", Kind::String, ""}, {"b", Kind::String, ""}}},
        {"a lone line feed parts nothing", {"a", "String", "x\ny"}, {{"a", Kind::String, "x\ny"}}},
        {"a line feed at the head stays", {"a", "String", "\nx"}, {{"a", Kind::String, "\nx"}}},
        {"nothing is trimmed", {" a ", "String", " x "}, {{" a ", Kind::String, " x "}}},
        {"the case of a kind counts",
         {"a\r\nb", "integer\r\nFLOAT", "1\r\n2"},
         {{"a", Kind::String, "1"}, {"b", Kind::String, "2"}}},
        {"an unknown kind is a string", {"a", "Integer ", "1"}, {{"a", Kind::String, "1"}}},
        {"missing kinds and values",
         {"a\r\nb", "Integer", "1"},
         {{"a", Kind::Integer, "1"}, {"b", Kind::String, ""}}},
        {"no kinds and values at all", {"a", "", ""}, {{"a", Kind::String, ""}}},
        {"the number of names decides", {"a", "Integer\r\nFloat", "1\r\n2"}, {{"a", Kind::Integer, "1"}}},
        {"a last, empty name is none", {"a\r\n", "Integer\r\n", "1\r\n"}, {{"a", Kind::Integer, "1"}}},
        {"an empty name before another is one",
         {"\r\na", "Float\r\nInteger", "1\r\n2"},
         {{"", Kind::Float, "1"}, {"a", Kind::Integer, "2"}}},
    };

    for (const auto& c : cases)
        EXPECT_EQ(ParseUserDataProperty(c.Texts.Names, c.Texts.Types, c.Texts.Values), c.Entries) << c.Name;
}

TEST(BuildUserDataProperty, StoresLinesAsLoneCarriageReturns)
{
    const UserDataTexts texts = BuildUserDataProperty(
        {{"a", Kind::Integer, "1\r\n2"}, {"b", Kind::String, "x"}, {"c", Kind::Float, ""}});
    EXPECT_EQ(texts.Names, "a\r\nb\r\nc");
    EXPECT_EQ(texts.Types, "Integer\r\nString\r\nFloat");
    EXPECT_EQ(texts.Values, "1\r2\r\nx\r\n");
    const UserDataTexts none = BuildUserDataProperty({});
    EXPECT_EQ(none.Names + none.Types + none.Values, "");
}

TEST(BuildUserDataProperty, ReadsBackAsItWas)
{
    std::mt19937 random(83);
    const auto upTo = [&](int last) { return std::uniform_int_distribution<int>(0, last)(random); };
    const auto text = [&](int lines) {
        std::string made;
        for (int line = 0; line <= lines; ++line) {
            made += line == 0 ? "" : "\r\n";
            for (int i = upTo(3); i > 0; --i)
                made += "ab 1.-\xC3"[upTo(6)];
        }
        return made;
    };
    for (int list = 0; list < 500; ++list) {
        std::vector<UserDataEntry> entries;
        for (int i = upTo(4); i > 0; --i)
            entries.push_back({"n" + text(0), static_cast<Kind>(upTo(2)), text(upTo(3))});
        const UserDataTexts texts = BuildUserDataProperty(entries);
        ASSERT_EQ(ParseUserDataProperty(texts.Names, texts.Types, texts.Values), entries)
            << "seed 83, list " << list << ": " << testing::PrintToString(texts.Values);
    }
}

TEST(BuildUserDataProperty, OneItemWithAnEmptyNameIsTheExceptionOfTheWayBack)
{
    const UserDataTexts texts = BuildUserDataProperty({{"", Kind::String, ""}});
    EXPECT_EQ(texts.Names, "");
    EXPECT_TRUE(ParseUserDataProperty(texts.Names, texts.Types, texts.Values).empty());
}

TEST(BuildUserDataItem, ConvertsEachLine)
{
    const std::vector<std::string> noStrings;

    const struct
    {
        const char* Name;
        Kind Type;
        std::string Value;
        std::vector<std::string> Strings;
        std::vector<std::int32_t> Integers;
        std::vector<float> Floats;
    } cases[] = {
        {"strings", Kind::String, "x\r\n y \r\n\r\nz", {"x", " y ", "", "z"}, {}, {}},
        {"an empty string is one", Kind::String, "", {""}, {}, {}},
        {"integers", Kind::Integer, "1\r\n-2\r\n+3", {}, {1, -2, 3}, {}},
        {"the leading part of a number", Kind::Integer, "12abc\r\n 7\r\n3.9", {}, {12, 7, 3}, {}},
        {"no digits are 0", Kind::Integer, "abc\r\n\r\n-", {}, {0, 0, 0}, {}},
        {"an empty text is one 0", Kind::Integer, "", {}, {0}, {}},
        {"integers out of range",
         Kind::Integer,
         "99999999999\r\n-99999999999",
         {},
         {2147483647, -2147483647 - 1},
         {}},
        {"floats", Kind::Float, "1.5\r\n-2e3\r\n.25", {}, {}, {1.5f, -2000, 0.25f}},
        {"floats without digits", Kind::Float, "abc\r\n", {}, {}, {0, 0}},
        {"floats out of range", Kind::Float, "1e99", {}, {}, {std::numeric_limits<float>::max()}},
    };

    for (const auto& c : cases) {
        const UserDataItem item = BuildUserDataItem({"key", c.Type, c.Value});
        EXPECT_EQ(item.Key, "key") << c.Name;
        EXPECT_EQ(item.Kind, c.Type) << c.Name;
        EXPECT_EQ(item.Strings, c.Strings) << c.Name;
        EXPECT_EQ(item.Integers, c.Integers) << c.Name;
        EXPECT_EQ(item.Floats, c.Floats) << c.Name;
    }
}

std::string Written(const std::vector<UserDataItem>& items, int level)
{
    XmlWriter stream;
    WriteUserData(stream, level, items);
    return stream.Text();
}

TEST(WriteUserData, WritesOneElementForEachValue)
{
    const std::vector<UserDataItem> items{
        BuildUserDataItem({"words <&>", Kind::String, "a<b>&c\r\n\"quoted\""}),
        BuildUserDataItem({"numbers", Kind::Integer, "1\r\n-2\r\n3"}),
        BuildUserDataItem({"lengths", Kind::Float, "0.5\r\n1e-7\r\n1234567"}),
        BuildUserDataItem({"empty", Kind::String, ""}),
    };
    test::ExpectGolden(Written(items, 7), "core/scene/user-data.xml");
}

TEST(WriteUserData, AnEmptyListWritesNothing)
{
    EXPECT_EQ(Written({}, 7), "");
}

TEST(WriteUserData, AnItemWithoutValuesKeepsItsElement)
{
    UserDataItem item;
    item.Key = "k";
    item.Kind = Kind::Integer;
    EXPECT_EQ(Written({item}, 0), "<UserData>\n"
                                  "\t<IntegerArrayMetaDataXml DataKind=\"IntSet\">\n"
                                  "\t\t<Key>k</Key>\n"
                                  "\t\t<Values>\n"
                                  "\t\t</Values>\n"
                                  "\t</IntegerArrayMetaDataXml>\n"
                                  "</UserData>\n");
}

} // namespace
} // namespace tq4x
