#include "cli/Console.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>

#include "cli/Terminal.h"

namespace tq4x::cli
{
namespace
{

constexpr std::string_view PlainColor = "\033[0m";

std::string_view ColorOf(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return "\033[31m";
    case Severity::Warning:
        return "\033[33m";
    case Severity::Information:
        return "\033[36m";
    }
    return PlainColor;
}

std::string CountText(std::size_t count, std::string_view word)
{
    return std::to_string(count) + " " + std::string(word) + (count == 1 ? "" : "s");
}

} // namespace

std::string_view WordOf(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return "error";
    case Severity::Warning:
        return "warning";
    case Severity::Information:
        return "note";
    }
    return "note";
}

Streams ProcessStreams()
{
    const char* const noColor = std::getenv("NO_COLOR");
    const bool wantsColor = noColor == nullptr || *noColor == '\0';
    const bool isTerminal = IsErrorTerminal();
    return {std::cin, std::cout, std::cerr, IsInputTerminal(), isTerminal, isTerminal && wantsColor};
}

std::string MakePrintable(std::string_view text)
{
    std::string printable;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\n' || c == '\r' || c == '\t') {
            printable += ' ';
        } else {
            printable += byte < 0x20 || byte == 0x7f ? '?' : c;
        }
    }
    while (!printable.empty() && printable.back() == ' ') {
        printable.pop_back();
    }
    return printable;
}

void Console::Result(std::string_view line)
{
    if (m_verbosity != Verbosity::Quiet) {
        EraseProgress();
        m_streams.Out << line << '\n' << std::flush;
    }
}

void Console::Tell(Severity severity, std::string_view object, std::string_view text)
{
    Message message{severity, MakePrintable(object), MakePrintable(text)};
    const std::string key = std::to_string(static_cast<int>(severity)) + message.Object + '\n' + message.Text;
    const auto [known, isNew] = m_known.try_emplace(key, m_messages.size());
    if (!isNew) {
        ++m_messages[known->second].Count;
        return;
    }
    m_messages.push_back(std::move(message));
    if (IsShown(severity)) {
        EraseProgress();
        Write(m_messages.back(), "");
    }
}

void Console::Hint(std::string_view text)
{
    if (m_verbosity != Verbosity::Quiet) {
        EraseProgress();
        Write({Severity::Information, "", std::string(text)}, "");
    }
}

void Console::Progress(double fraction, std::string_view caption)
{
    if (!m_streams.IsErrTerminal || m_verbosity == Verbosity::Quiet) {
        return;
    }
    constexpr int Width = 30;
    const double part = std::clamp(fraction, 0.0, 1.0);
    const int filled = static_cast<int>(part * Width);
    std::string line = "[" + std::string(static_cast<std::size_t>(filled), '#') +
                       std::string(static_cast<std::size_t>(Width - filled), ' ') + "] " +
                       std::to_string(static_cast<int>(part * 100.0)) + "% " + MakePrintable(caption);
    if (line != m_shownProgress) {
        EraseProgress();
        m_streams.Err << line << std::flush;
        m_shownProgress = std::move(line);
    }
}

bool Console::Ask(std::string_view question)
{
    const std::string answer = AskFor(std::string(question) + " [y/N]");
    return answer == "y" || answer == "Y" || answer == "yes";
}

std::string Console::AskFor(std::string_view what)
{
    if (!CanAsk()) {
        return {};
    }
    EraseProgress();
    m_streams.Err << MakePrintable(what) << ' ' << std::flush;
    std::string answer;
    std::getline(m_streams.In, answer);
    return answer;
}

void Console::Summarize()
{
    const std::size_t errors = CountOf(Severity::Error);
    const std::size_t warnings = CountOf(Severity::Warning);
    EraseProgress();
    if (m_verbosity == Verbosity::Quiet || errors + warnings == 0) {
        return;
    }
    m_streams.Err << (errors == 0     ? CountText(warnings, "warning")
                      : warnings == 0 ? CountText(errors, "error")
                                      : CountText(errors, "error") + ", " + CountText(warnings, "warning"))
                  << ":\n";
    for (const Severity severity : {Severity::Error, Severity::Warning}) {
        for (const Message& message : m_messages) {
            if (message.Kind == severity) {
                Write(message, "  ");
            }
        }
    }
}

std::size_t Console::CountOf(Severity severity) const
{
    std::size_t count = 0;
    for (const Message& message : m_messages) {
        count += message.Kind == severity ? message.Count : 0;
    }
    return count;
}

bool Console::IsShown(Severity severity) const
{
    switch (m_verbosity) {
    case Verbosity::Quiet:
        return severity == Severity::Error;
    case Verbosity::Normal:
        return severity != Severity::Information;
    case Verbosity::Chatty:
        return true;
    }
    return true;
}

void Console::Write(const Message& message, std::string_view indent)
{
    const bool hasColor = m_streams.HasColor;
    m_streams.Err << indent << (hasColor ? ColorOf(message.Kind) : "") << WordOf(message.Kind) << ':'
                  << (hasColor ? PlainColor : "") << ' ';
    if (!message.Object.empty()) {
        m_streams.Err << message.Object << ": ";
    }
    m_streams.Err << message.Text;
    if (message.Count > 1) {
        m_streams.Err << " (" << message.Count << " times)";
    }
    m_streams.Err << '\n' << std::flush;
}

void Console::EraseProgress()
{
    if (!m_shownProgress.empty()) {
        m_streams.Err << '\r' << "\033[K";
        m_shownProgress.clear();
    }
}

} // namespace tq4x::cli
