#pragma once

#include <cstddef>
#include <istream>
#include <ostream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tq4x::cli
{

enum class Severity
{
    Error,
    Warning,
    Information,
};

/// "error", "warning", "note"
std::string_view WordOf(Severity severity);

/// One message, and how often it came.
struct Message
{
    Severity Kind = Severity::Information;
    std::string Object; ///< name of what it is about; empty: nothing in particular, or named in the text
    std::string Text;
    std::size_t Count = 1;
};

enum class Verbosity
{
    Quiet,  ///< errors only
    Normal, ///< errors, warnings and results
    Chatty, ///< information too
};

/// The streams that a command talks through, and whether people sit at their ends.
struct Streams
{
    std::istream& In;
    std::ostream& Out;
    std::ostream& Err;
    bool IsInTerminal = false;
    bool IsErrTerminal = false;
    bool HasColor = false; ///< of messages
};

/// The streams of the process. Colours only on a terminal, and not where NO_COLOR is set.
[[nodiscard]] Streams ProcessStreams();

/// Where commands say what they have to say: results to standard output, all else to standard error. Control
/// characters of names and texts never reach a terminal.
class Console
{
public:
    explicit Console(Streams streams) : m_streams(streams) {}

    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    void SetVerbosity(Verbosity verbosity) { m_verbosity = verbosity; }

    [[nodiscard]] Verbosity GetVerbosity() const { return m_verbosity; }

    /// A line of the command's result.
    void Result(std::string_view line);

    /// Tells a message at once and keeps it. Equal ones are told once and counted.
    void Tell(Severity severity, std::string_view object, std::string_view text);

    /// A line for people at the very end, which is no message about the work.
    void Hint(std::string_view text);

    void Error(std::string_view text) { Tell(Severity::Error, {}, text); }

    /// How far the work has come, 0 to 1. Shown on a terminal only, and taken away before other lines.
    void Progress(double fraction, std::string_view caption);

    /// Asks a question that is answered by yes or no. False without asking where nobody can answer.
    [[nodiscard]] bool Ask(std::string_view question);

    /// Asks for a line of text, with `what` before it. Empty where nobody can answer or nothing is answered.
    [[nodiscard]] std::string AskFor(std::string_view what);

    /// Whether questions reach somebody.
    [[nodiscard]] bool CanAsk() const { return m_streams.IsInTerminal && m_streams.IsErrTerminal; }

    /// Says how many errors and warnings there were and repeats them, each once with its count.
    void Summarize();

    /// Messages so far, in order of their first coming.
    [[nodiscard]] const std::vector<Message>& Messages() const { return m_messages; }

    /// How many came of a severity, repeated ones counted.
    [[nodiscard]] std::size_t CountOf(Severity severity) const;

    /// Whether a line of the result could not be written.
    [[nodiscard]] bool HasLostResults() const { return !m_streams.Out.good(); }

private:
    [[nodiscard]] bool IsShown(Severity severity) const;
    void Write(const Message& message, std::string_view indent);
    void EraseProgress();

    Streams m_streams;
    Verbosity m_verbosity = Verbosity::Normal;
    std::vector<Message> m_messages;
    std::unordered_map<std::string, std::size_t> m_known; ///< place of each message by all that it says
    std::string m_shownProgress;
};

/// Text without control characters: each becomes "?", line ends become blanks.
[[nodiscard]] std::string MakePrintable(std::string_view text);

} // namespace tq4x::cli
