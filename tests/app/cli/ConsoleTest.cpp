#include <gtest/gtest.h>

#include <sstream>

#include "cli/Console.h"

namespace tq4x::cli
{
namespace
{

struct Ends
{
    bool IsTerminal = false;
    bool HasColor = false;
};

class ConsoleTest : public testing::Test
{
protected:
    Console Make(Ends ends = {})
    {
        return Console({m_in, m_out, m_err, ends.IsTerminal, ends.IsTerminal, ends.HasColor});
    }

    std::istringstream m_in;
    std::ostringstream m_out;
    std::ostringstream m_err;
};

TEST_F(ConsoleTest, TellsSeverityObjectAndText)
{
    Console console = Make();
    console.Tell(Severity::Warning, "Body", "It is odd.");
    console.Tell(Severity::Error, "", "It is wrong.");
    console.Tell(Severity::Information, "", "It is so.");
    console.Result("result");
    EXPECT_EQ(m_err.str(), "warning: Body: It is odd.\nerror: It is wrong.\n");
    EXPECT_EQ(m_out.str(), "result\n");
}

TEST_F(ConsoleTest, CountsAndRepeatsAtTheEnd)
{
    Console console = Make();
    console.Tell(Severity::Warning, "Body", "It is odd.");
    console.Tell(Severity::Warning, "Head", "It is odd.");
    console.Tell(Severity::Warning, "Body", "It is odd.");
    console.Tell(Severity::Error, "", "It is wrong.");
    EXPECT_EQ(console.CountOf(Severity::Warning), 3u);
    EXPECT_EQ(console.Messages().size(), 3u);
    m_err.str("");
    console.Summarize();
    EXPECT_EQ(m_err.str(), "1 error, 3 warnings:\n"
                           "  error: It is wrong.\n"
                           "  warning: Body: It is odd. (2 times)\n"
                           "  warning: Head: It is odd.\n");
}

TEST_F(ConsoleTest, SummarizesOneKindByItself)
{
    Console console = Make();
    console.Summarize();
    EXPECT_EQ(m_err.str(), "");
    console.Tell(Severity::Warning, "", "Odd.");
    m_err.str("");
    console.Summarize();
    EXPECT_EQ(m_err.str(), "1 warning:\n  warning: Odd.\n");
}

TEST_F(ConsoleTest, VerbosityChoosesWhatIsShown)
{
    const struct
    {
        Verbosity Level;
        const char* Err;
        const char* Out;
    } cases[] = {
        {Verbosity::Quiet, "error: e\n", ""},
        {Verbosity::Normal, "error: e\nwarning: w\n1 error, 1 warning:\n  error: e\n  warning: w\n", "r\n"},
        {Verbosity::Chatty, "error: e\nwarning: w\nnote: n\n1 error, 1 warning:\n  error: e\n  warning: w\n",
         "r\n"},
    };

    for (const auto& entry : cases) {
        m_out.str("");
        m_err.str("");
        Console console = Make();
        console.SetVerbosity(entry.Level);
        console.Error("e");
        console.Tell(Severity::Warning, "", "w");
        console.Tell(Severity::Information, "", "n");
        console.Result("r");
        console.Summarize();
        EXPECT_EQ(m_err.str(), entry.Err);
        EXPECT_EQ(m_out.str(), entry.Out);
    }
}

TEST_F(ConsoleTest, ControlCharactersNeverReachATerminal)
{
    Console console = Make();
    console.Tell(Severity::Error, "a\033[31mb", "line\nnext\r\n\ttab\x7f");
    EXPECT_EQ(m_err.str(), "error: a?[31mb: line next   tab?\n");
    EXPECT_EQ(MakePrintable("\xc3\xa4\n\n"), "\xc3\xa4");
}

TEST_F(ConsoleTest, ColoursTheSeverityOnly)
{
    Console console = Make({true, true});
    console.Tell(Severity::Warning, "o", "t");
    EXPECT_EQ(m_err.str(), "\033[33mwarning:\033[0m o: t\n");
}

TEST_F(ConsoleTest, ProgressIsForTerminals)
{
    Console plain = Make();
    plain.Progress(0.5, "x");
    EXPECT_EQ(m_err.str(), "");
    Console console = Make({true, false});
    console.Progress(0.5, "half");
    console.Progress(0.5, "half");
    EXPECT_EQ(m_err.str(), "[###############               ] 50% half");
    m_err.str("");
    console.Error("e");
    EXPECT_EQ(m_err.str(), "\r\033[Kerror: e\n");
    m_err.str("");
    console.Progress(7.0, "more than all");
    EXPECT_EQ(m_err.str(), "[##############################] 100% more than all");
}

TEST_F(ConsoleTest, AsksPeopleOnly)
{
    m_in.str("y\nno\n");
    Console plain = Make();
    EXPECT_FALSE(plain.Ask("Overwrite?"));
    EXPECT_FALSE(plain.CanAsk());
    Console console = Make({true, false});
    EXPECT_TRUE(console.CanAsk());
    EXPECT_TRUE(console.Ask("Overwrite?"));
    EXPECT_FALSE(console.Ask("Overwrite?"));
    EXPECT_FALSE(console.Ask("Overwrite?")) << "at the end of the input";
    EXPECT_EQ(m_err.str(), "Overwrite? [y/N] Overwrite? [y/N] Overwrite? [y/N] ");
}

TEST_F(ConsoleTest, AsksForTexts)
{
    m_in.str("some file\n\n");
    Console plain = Make();
    EXPECT_EQ(plain.AskFor("File:"), "");
    EXPECT_EQ(m_err.str(), "");
    Console console = Make({true, false});
    EXPECT_EQ(console.AskFor("File\x1b:"), "some file");
    EXPECT_EQ(console.AskFor("File:"), "");
    EXPECT_EQ(console.AskFor("File:"), "") << "at the end of the input";
    EXPECT_EQ(m_err.str(), "File?: File: File: ");
}

TEST_F(ConsoleTest, LostResultsAreNoticed)
{
    Console console = Make();
    console.Result("a");
    EXPECT_FALSE(console.HasLostResults());
    m_out.setstate(std::ios::badbit);
    EXPECT_TRUE(console.HasLostResults());
}

TEST_F(ConsoleTest, ManyDifferentMessagesAreNoBurden)
{
    Console console = Make();
    console.SetVerbosity(Verbosity::Quiet);
    for (int i = 0; i < 200'000; ++i) {
        console.Tell(Severity::Warning, std::to_string(i), "w");
    }
    EXPECT_EQ(console.CountOf(Severity::Warning), 200'000u);
}

} // namespace
} // namespace tq4x::cli
