#include <gtest/gtest.h>

#include "gltf/JsonValue.h"
#include "gltf/SceneError.h"

namespace tq4x::gltf
{
namespace
{

std::string ErrorOf(const std::string& text)
{
    try {
        (void)ParseJson(text);
    } catch (const SceneError& error) {
        return error.Place + error.Text;
    }
    return "no error";
}

std::string Nested(std::size_t depth)
{
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST(JsonValueTest, KeepsKindsAndOrder)
{
    const JsonValue value = ParseJson(R"({"b":[1,-2,2.5,true,null,"x"],"a":{},"c":18446744073709551615})");
    ASSERT_NE(value.Object(), nullptr);
    ASSERT_EQ(value.Object()->size(), 3u);
    EXPECT_EQ(value.Object()->at(0).Key, "b");
    EXPECT_EQ(value.Object()->at(1).Key, "a");
    const JsonArray& items = *value.Find("b")->Array();
    ASSERT_EQ(items.size(), 6u);
    EXPECT_EQ(std::get<std::int64_t>(items[0].Content), 1);
    EXPECT_EQ(std::get<std::int64_t>(items[1].Content), -2);
    EXPECT_EQ(std::get<double>(items[2].Content), 2.5);
    EXPECT_TRUE(std::get<bool>(items[3].Content));
    EXPECT_TRUE(items[4].IsNull());
    EXPECT_EQ(*items[5].String(), "x");
    EXPECT_EQ(std::get<double>(value.Find("c")->Content), 18446744073709551615.0);
    EXPECT_EQ(value.Find("d"), nullptr);
    EXPECT_EQ(items[0].Find("b"), nullptr);
}

TEST(JsonValueTest, ReadsEveryEscapeAndAByteOrderMark)
{
    EXPECT_EQ(*ParseJson("\xef\xbb\xbf\"\\u00e9\\n\\\"\\u0000\"").String(), std::string("\xc3\xa9\n\"\0", 5));
}

struct MalformedCase
{
    const char* Name;
    std::string Text;
    const char* Error;
};

TEST(JsonValueTest, RefusesMalformedText)
{
    const MalformedCase cases[] = {
        {"empty", "", "The JSON is malformed at line 1, column 1."},
        {"open object", "{", "The JSON is malformed at line 1, column 2."},
        {"missing value", "{\n  \"a\": }", "The JSON is malformed at line 2, column 8."},
        {"two values", "1 2", "The JSON is malformed at line 1, column 3."},
        {"comment", "// x\n1", "The JSON is malformed at line 1, column 1."},
        {"number beyond doubles", "[1e999]", "The JSON is malformed at line 1, column 6."},
        {"bad UTF-8", "\"\xff\"", "The JSON is malformed at line 1, column 2."},
        {"control character", "\"\x01\"", "The JSON is malformed at line 1, column 2."},
        {"key twice", R"({"a":{"b":1,"c":2,"b":3}})", "The JSON holds the key \"b\" twice in one object."},
        {"too deep", Nested(MaxJsonDepth + 1), "The JSON is nested deeper than 200 levels."},
        {"endless", std::string(1'000'000, '['), "The JSON is nested deeper than 200 levels."},
    };
    for (const MalformedCase& entry : cases) {
        EXPECT_EQ(ErrorOf(entry.Text), entry.Error) << entry.Name;
    }
    EXPECT_EQ(ErrorOf(Nested(MaxJsonDepth)), "no error");
}

TEST(JsonValueTest, SameKeyInDifferentObjectsIsFine)
{
    EXPECT_EQ(ErrorOf(R"({"a":{"a":1},"b":{"a":2}})"), "no error");
}

TEST(JsonValueTest, FormatsWithIndents)
{
    const std::string text =
        "{\n  \"a\": [\n    1,\n    2.5,\n    \"x\\\"\\u0001\"\n  ],\n  \"b\": {},\n  \"c\": [],\n"
        "  \"d\": null,\n  \"e\": true\n}";
    EXPECT_EQ(FormatJson(ParseJson(text)), text);
}

TEST(JsonValueTest, FormattedTextReadsBackEqual)
{
    const char* const texts[] = {"null",
                                 "0.1",
                                 "-1e-300",
                                 "123456789012345678",
                                 "[[]]",
                                 R"({"\u0007":1})",
                                 R"(["\"\\\n\r\t\u0008"])",
                                 "1e22",
                                 R"(["ä/\\"])"};
    for (const char* const text : texts) {
        const JsonValue value = ParseJson(text);
        EXPECT_EQ(ParseJson(FormatJson(value)), value) << text;
    }
}

TEST(JsonValueTest, NumbersThatJsonCantHoldBecomeNull)
{
    EXPECT_EQ(FormatJson({std::numeric_limits<double>::infinity()}), "null");
}

} // namespace
} // namespace tq4x::gltf
