#include "pipeline/OptionText.h"

#include "pipeline/NumberText.h"
#include "pipeline/TextHelpers.h"

namespace tq4x
{
namespace
{

/// Sets a field from text by its type alone.
struct TypedReader
{
    ExportOptions& Options;
    std::string_view Value;

    void operator()(std::string ExportOptions::*field) const { Options.*field = Value; }

    void operator()(bool ExportOptions::*field) const { Options.*field = Value == "true"; }

    void operator()(std::uint32_t ExportOptions::*field) const
    {
        Options.*field = static_cast<std::uint32_t>(ParseInteger(Value));
    }

    void operator()(std::int32_t ExportOptions::*field) const { Options.*field = ParseInteger(Value); }

    void operator()(float ExportOptions::*field) const { Options.*field = ParseDecimal(Value); }
};

/// The text of a field by its type alone; decimals as the vocabulary wants them.
struct TypedWriter
{
    const ExportOptions& Options;
    std::string (*Decimal)(float);

    std::string operator()(std::string ExportOptions::*field) const { return Options.*field; }

    std::string operator()(bool ExportOptions::*field) const { return std::string(BoolText(Options.*field)); }

    std::string operator()(std::uint32_t ExportOptions::*field) const
    {
        return std::to_string(static_cast<std::int32_t>(Options.*field));
    }

    std::string operator()(std::int32_t ExportOptions::*field) const
    {
        return std::to_string(Options.*field);
    }

    std::string operator()(float ExportOptions::*field) const { return Decimal(Options.*field); }
};

/// Sets a boolean or an enumeration from a number; rows of other types have no words and no integer form.
void SetNumber(const OptionRow& row, std::uint32_t value, ExportOptions& options)
{
    if (const auto* flag = std::get_if<bool ExportOptions::*>(&row.Field))
        options.*(*flag) = value != 0;
    else if (const auto* number = std::get_if<std::uint32_t ExportOptions::*>(&row.Field))
        options.*(*number) = value;
}

std::uint32_t NumberOf(const OptionRow& row, const ExportOptions& options)
{
    if (const auto* flag = std::get_if<bool ExportOptions::*>(&row.Field))
        return options.*(*flag) ? 1 : 0;
    if (const auto* number = std::get_if<std::uint32_t ExportOptions::*>(&row.Field))
        return options.*(*number);
    return 0;
}

} // namespace

void ReadCommandValue(const OptionRow& row, std::string_view value, ExportOptions& options)
{
    switch (row.Command) {
    case CommandForm::Typed:
        std::visit(TypedReader{options, value}, row.Field);
        break;
    case CommandForm::Words:
        SetNumber(row, FindOptionWord(row.Words, value).value_or(row.OtherWord), options);
        break;
    case CommandForm::Integer:
        SetNumber(row, static_cast<std::uint32_t>(ParseInteger(value)), options);
        break;
    case CommandForm::Switch:
        SetNumber(row, 1, options);
        break;
    }
}

std::string CommandValue(const OptionRow& row, const ExportOptions& options)
{
    switch (row.Command) {
    case CommandForm::Typed:
        return std::visit(TypedWriter{options, ShortestText}, row.Field);
    case CommandForm::Words:
        return std::string(WordOfValue(row.Words, NumberOf(row, options)).value_or(""));
    case CommandForm::Integer:
        return std::to_string(static_cast<std::int32_t>(NumberOf(row, options)));
    case CommandForm::Switch:
        break;
    }
    return {};
}

void ReadSettingsValue(const OptionRow& row, std::string_view value, ExportOptions& options)
{
    if (row.Words.empty())
        std::visit(TypedReader{options, value}, row.Field);
    else if (const std::optional<std::uint32_t> number = FindOptionWord(row.Words, value))
        SetNumber(row, *number, options);
}

std::optional<std::string> SettingsValue(const OptionRow& row, const ExportOptions& options)
{
    if (row.Words.empty())
        return std::visit(TypedWriter{options, FixedText}, row.Field);
    const std::optional<std::string_view> word = WordOfValue(row.Words, NumberOf(row, options));
    return word ? std::optional<std::string>(*word) : std::nullopt;
}

} // namespace tq4x
