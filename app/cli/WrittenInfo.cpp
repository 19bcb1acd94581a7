#include "cli/WrittenInfo.h"

#include <algorithm>

#include "Summarize.h"
#include "cli/Console.h"

namespace tq4x::cli
{

std::string FormatWrittenInfo(const reader::Document& document)
{
    constexpr std::size_t Column = 16;
    std::string text;
    for (const reader::SummaryRow& row : reader::Summarize(document)) {
        std::string name = row.Name;
        name.resize(std::max(name.size(), Column), ' ');
        text += (text.empty() ? "  " : "\n  ") + name + " " + MakePrintable(reader::ValueText(row));
    }
    return text;
}

gltf::JsonValue WrittenInfoAsJson(const reader::Document& document)
{
    gltf::JsonObject rows;
    for (const reader::SummaryRow& row : reader::Summarize(document)) {
        gltf::JsonValue value;
        if (const long* const count = std::get_if<long>(&row.Value)) {
            value = {static_cast<std::int64_t>(*count)};
        } else if (const double* const number = std::get_if<double>(&row.Value)) {
            value = {*number};
        } else {
            value = {std::get<std::string>(row.Value)};
        }
        rows.push_back({row.Name, std::move(value)});
    }
    return {std::move(rows)};
}

} // namespace tq4x::cli
