#include "Finding.h"

#include <algorithm>
#include <utility>

namespace tq4x::reader
{

void FindingList::Error(std::string_view code, long line, std::string text)
{
    Add(code, Severity::Error, line, std::move(text));
}

void FindingList::Warning(std::string_view code, long line, std::string text)
{
    Add(code, Severity::Warning, line, std::move(text));
}

void FindingList::Add(std::string_view code, Severity level, long line, std::string text)
{
    const auto isSame = [code](const CodeCount& known) { return known.Code == code; };
    auto count = std::ranges::find_if(m_counts, isSame);
    if (count == m_counts.end()) {
        count = m_counts.insert(m_counts.end(), {std::string(code), level, 0});
    }
    ++count->Count;
    if (count->Count <= MostPerCode) {
        m_findings.push_back({std::string(code), level, m_file, line, std::move(text)});
    }
}

bool FindingList::HasErrors() const
{
    return std::ranges::any_of(m_counts,
                               [](const CodeCount& count) { return count.Level == Severity::Error; });
}

bool FindingList::HasAt(long line) const
{
    return std::ranges::any_of(m_findings, [line](const Finding& finding) { return finding.Line == line; });
}

std::vector<Finding> FindingList::Take()
{
    for (const CodeCount& count : m_counts) {
        if (count.Count > MostPerCode) {
            const std::string more = std::to_string(count.Count - MostPerCode);
            m_findings.push_back({count.Code, count.Level, m_file, 0, more + " more of this kind."});
        }
    }
    m_counts.clear();
    return std::exchange(m_findings, {});
}

} // namespace tq4x::reader
