#include "cli/DescribeWritten.h"

#include <algorithm>

#include "cli/WrittenInfo.h"

namespace tq4x::cli
{

bool IsWrittenKind(const std::string& file)
{
    return reader::KindOf(file).has_value();
}

FileInfo DescribeWrittenFile(const std::string& file)
{
    reader::FindingList findings(file);
    const std::optional<reader::Document> document = reader::ReadDocument(file, findings);
    const std::vector<reader::Finding> all = findings.Take();
    const auto error = std::ranges::find(all, reader::Severity::Error, &reader::Finding::Level);
    if (error != all.end()) {
        const std::string line = error->Line > 0 ? "line " + std::to_string(error->Line) + ": " : "";
        return {"", {}, line + error->Text};
    }
    return {FormatWrittenInfo(*document), WrittenInfoAsJson(*document), ""};
}

} // namespace tq4x::cli
