#include <gtest/gtest.h>

#include "cli/Arguments.h"

namespace tq4x::cli
{
namespace
{

constexpr OptionSpec Options[] = {
    {"--output", 'o', "DIR", ""},
    {"--set", 0, "KEY:VALUE", "", true},
    {"--quiet", 'q', "", ""},
    {"--verbose", 'v', "", ""},
};

/// "positionals | name=values ..." or the error.
std::string Parse(const std::vector<std::string>& words)
{
    const ParsedArguments parsed = ParseArguments(words, Options);
    if (!parsed.Error.empty()) {
        return parsed.Error;
    }
    std::string text;
    for (const std::string& word : parsed.Content.Positionals) {
        text += word + " ";
    }
    text += "|";
    for (const auto& [name, values] : parsed.Content.Options) {
        for (const std::string& value : values) {
            text += " " + name + "=" + value;
        }
    }
    return text;
}

TEST(ArgumentsTest, SortsWords)
{
    const struct
    {
        const char* Name;
        std::vector<std::string> Words;
        const char* Expected;
    } cases[] = {
        {"nothing", {}, "|"},
        {"positionals", {"a", "b"}, "a b |"},
        {"long with a blank", {"--output", "x", "a"}, "a | --output=x"},
        {"long with a sign", {"a", "--output=x=y"}, "a | --output=x=y"},
        {"empty value", {"--output="}, "| --output="},
        {"letter with a blank", {"-o", "x"}, "| --output=x"},
        {"letter with its value", {"-ox"}, "| --output=x"},
        {"joined switches", {"-qv"}, "| --quiet= --verbose="},
        {"joined switches and a value", {"-qo", "x"}, "| --output=x --quiet="},
        {"repeated", {"--set", "a:1", "--set=b:2"}, "| --set=a:1 --set=b:2"},
        {"switch twice", {"-q", "-q"}, "| --quiet= --quiet="},
        {"value with a dash", {"-o", "-5"}, "| --output=-5"},
        {"value with two dashes", {"--output=--x"}, "| --output=--x"},
        {"single dash", {"-"}, "- |"},
        {"end of options", {"--", "--output", "-q"}, "--output -q |"},
    };

    for (const auto& entry : cases) {
        EXPECT_EQ(Parse(entry.Words), entry.Expected) << entry.Name;
    }
}

TEST(ArgumentsTest, RefusesWhatMakesNoSense)
{
    const struct
    {
        std::vector<std::string> Words;
        const char* Error;
    } cases[] = {
        {{"--outptu", "x"}, "The option --outptu is unknown; did you mean --output?"},
        {{"--zzzzzzzzzz"}, "The option --zzzzzzzzzz is unknown."},
        {{"-x"}, "The option -x is unknown."},
        {{"-qx"}, "The option -x is unknown."},
        {{"--output"}, "The option --output needs a value: DIR."},
        {{"--output", "--quiet"}, "The option --output needs a value: DIR."},
        {{"-o"}, "The option --output needs a value: DIR."},
        {{"--quiet=1"}, "The option --quiet takes no value."},
        {{"-o", "x", "--output=y"}, "The option --output stands twice."},
    };

    for (const auto& entry : cases) {
        EXPECT_EQ(Parse(entry.Words), entry.Error) << entry.Words[0];
    }
}

TEST(ArgumentsTest, AnswersByName)
{
    const std::vector<std::string> words = {"-o", "x", "--set=a", "--set=b"};
    const Arguments arguments = ParseArguments(words, Options).Content;
    EXPECT_EQ(arguments.Value("--output"), "x");
    EXPECT_EQ(arguments.Value("--quiet"), std::nullopt);
    EXPECT_EQ(arguments.Values("--set"), (std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(arguments.Values("--quiet").empty());
    EXPECT_TRUE(arguments.Has("--output"));
    EXPECT_FALSE(arguments.Has("--quiet"));
}

} // namespace
} // namespace tq4x::cli
