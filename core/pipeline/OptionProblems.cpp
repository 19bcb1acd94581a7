#include "pipeline/OptionProblems.h"

#include "pipeline/NumberText.h"
#include "pipeline/OptionTable.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>
#include <vector>

namespace tq4x
{
namespace
{

constexpr std::size_t LongestKey = 48; // longer texts are compared by their head only

std::string Quoted(std::string_view text)
{
    return "\"" + std::string(text) + "\"";
}

char Lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Number of single-character edits between two texts; upper and lower case count as equal.
std::size_t EditDistance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (Lower(a[i]) == Lower(b[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

std::string JoinWords(OptionWords words)
{
    std::string joined;
    for (const OptionWord& word : words)
        joined += (joined.empty() ? "" : ", ") + std::string(word.Word);
    return joined;
}

/// The integer of a text that is one; nothing beyond 64 bits.
std::optional<std::int64_t> FindWideInteger(std::string_view text)
{
    text.remove_prefix(text.starts_with('+') ? 1 : 0);
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() ? std::optional(value) : std::nullopt;
}

std::optional<std::string> FindIntegerProblem(std::string_view value, std::int64_t low, std::int64_t high)
{
    const std::optional<std::int64_t> number = IsIntegerText(value) ? FindWideInteger(value) : std::nullopt;
    if (number && *number >= low && *number <= high)
        return std::nullopt;
    return "an integer from " + std::to_string(low) + " to " + std::to_string(high);
}

/// An integer that the field can hold: ranges of the dialog are told by the export itself, each in its own
/// words.
std::optional<std::string> FindFieldProblem(std::string_view value)
{
    using Field = std::numeric_limits<std::int32_t>;
    return FindIntegerProblem(value, Field::min(), Field::max());
}

/// A choice that stands for one of the row's words.
std::optional<std::string> FindChoiceProblem(const OptionRow& row, std::string_view value)
{
    return FindIntegerProblem(value, static_cast<std::int64_t>(row.Limits.Low),
                              static_cast<std::int64_t>(row.Limits.High));
}

/// A number that the field can hold without being cut to its largest.
std::optional<std::string> FindDecimalProblem(std::string_view value)
{
    if (IsDecimalText(value) && std::abs(ParseDecimal(value)) < std::numeric_limits<float>::max())
        return std::nullopt;
    return "a number";
}

/// What a value must be, as the end of a sentence, if it is not that.
std::optional<std::string> FindTypedProblem(const OptionRow& row, std::string_view value)
{
    if (std::holds_alternative<float ExportOptions::*>(row.Field))
        return FindDecimalProblem(value);
    if (std::holds_alternative<std::int32_t ExportOptions::*>(row.Field))
        return FindFieldProblem(value);
    if (std::holds_alternative<bool ExportOptions::*>(row.Field) && value != "true" && value != "false")
        return "true or false";
    return std::nullopt;
}

std::optional<std::string> FindValueProblem(const OptionRow& row, std::string_view value)
{
    switch (row.Command) {
    case CommandForm::Typed:
        return FindTypedProblem(row, value);
    case CommandForm::Words:
        if (!FindOptionWord(row.Words, value))
            return "one of " + JoinWords(row.Words);
        break;
    case CommandForm::Integer:
        return FindChoiceProblem(row, value);
    case CommandForm::Switch:
        if (!value.empty() && value != "true")
            return "true: every value switches it on";
        break;
    }
    return std::nullopt;
}

} // namespace

std::string_view FindNearestKey(std::string_view key)
{
    const std::string_view head = key.substr(0, LongestKey);
    std::string_view nearest;
    std::size_t smallest = std::string_view::npos;
    for (const OptionRow& row : OptionTable()) {
        for (const std::string_view known : {row.CommandKey, row.SecondKey}) {
            const std::size_t lengthDifference =
                std::max(head.size(), known.size()) - std::min(head.size(), known.size());
            if (known.empty() || lengthDifference >= smallest)
                continue;
            const std::size_t distance = EditDistance(head, known);
            if (distance < smallest) {
                smallest = distance;
                nearest = known;
            }
        }
    }
    return nearest;
}

std::optional<std::string> FindArgumentProblem(std::string_view text)
{
    const std::size_t colon = text.find(':');
    const std::string_view key = text.substr(0, colon);
    const OptionRow* row = FindCommandRow(key);
    if (row == nullptr && key != "BakeAllAnim")
        return "unknown option " + Quoted(key) + "; the nearest is " + Quoted(FindNearestKey(key));
    if (row == nullptr)
        return std::nullopt;
    if (colon == std::string_view::npos && row->Command != CommandForm::Switch)
        return "option " + Quoted(key) + " has no value";
    const std::string_view value = colon == std::string_view::npos ? "" : text.substr(colon + 1);
    const std::optional<std::string> wanted = FindValueProblem(*row, value);
    if (!wanted)
        return std::nullopt;
    return "option " + Quoted(key) + " is " + Quoted(value) + ", but must be " + *wanted;
}

} // namespace tq4x
