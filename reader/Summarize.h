#pragma once

#include <string>
#include <variant>
#include <vector>

#include "ReadDocument.h"

namespace tq4x::reader
{

/// One thing to know about a file.
struct SummaryRow
{
    std::string Name; ///< "triangles"; unique in its summary
    std::variant<long, double, std::string> Value;
};

/// Counts, sizes, formats and clips of a file, in the order in which people want to read them.
[[nodiscard]] std::vector<SummaryRow> Summarize(const Document& document);

/// A row's value as text: numbers in their shortest form.
[[nodiscard]] std::string ValueText(const SummaryRow& row);

} // namespace tq4x::reader
