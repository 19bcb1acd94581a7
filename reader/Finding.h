#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tq4x::reader
{

enum class Severity
{
    Error,   ///< the file is not what a console library can use
    Warning, ///< legal, but most likely not meant
};

/// One thing that is wrong with a file. docs/check.md explains every code.
struct Finding
{
    std::string Code; ///< "TQ-REF-MATERIAL"
    Severity Level = Severity::Error;
    std::string File;
    long Line = 0; ///< from 1; 0: the file as a whole
    std::string Text;
};

/// Collects what is found in one file. A damaged stream could give a finding for each of its numbers, so a
/// code is told `MostPerCode` times at most and then counted.
class FindingList
{
public:
    static constexpr int MostPerCode = 20;

    explicit FindingList(std::string file) : m_file(std::move(file)) {}

    void Error(std::string_view code, long line, std::string text);
    void Warning(std::string_view code, long line, std::string text);

    [[nodiscard]] const std::string& File() const { return m_file; }

    [[nodiscard]] bool HasErrors() const;

    /// Whether a finding is kept for a line.
    [[nodiscard]] bool HasAt(long line) const;

    /// Everything in the order of finding; behind it, for each code that was cut, how many more there were.
    [[nodiscard]] std::vector<Finding> Take();

private:
    struct CodeCount
    {
        std::string Code;
        Severity Level = Severity::Error;
        long Count = 0;
    };

    void Add(std::string_view code, Severity level, long line, std::string text);

    std::string m_file;
    std::vector<Finding> m_findings;
    std::vector<CodeCount> m_counts;
};

} // namespace tq4x::reader
