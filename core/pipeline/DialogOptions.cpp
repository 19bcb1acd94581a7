#include "pipeline/DialogOptions.h"

#include "pipeline/OptionText.h"

#include <optional>

namespace tq4x
{
namespace
{

constexpr std::string_view FileModeParameter = "OutputModeFile";
constexpr std::string_view BakeAllParameter = "BakeAllAnimation";
constexpr std::string_view BakeAllKey = "BakeAllAnim";
constexpr std::int32_t DefaultEndFrame = 100; // the record's own default is 9999

constexpr std::string_view ParameterOrder[] = {
    "ExportTarget",
    "OutputFileName",
    FileModeParameter,
    "OutputFolder",
    "OutputModeBS",
    "MergeQmdl",
    "MergeQmdlPath",
    "Magnify",
    "SelectAnimationFrame",
    "AnimationStartFrame",
    "AnimationEndFrame",
    "OutputModel",
    "OutputTexture",
    "OutputAnimation",
    "OutputMaterialAnimation",
    "OutputLight",
    "OutputCamera",
    "OutputModelAnimation",
    "OutputQenv",
    "NodeCompressMode",
    "MaterialCompressMode",
    "OptimizePrimitive",
    "ConvertToModel",
    "PositionQzType",
    "NormalQzType",
    "TexCoordQzType",
    "AdjustSkinning",
    "MeshVisibilityMode",
    "NonUniformScale",
    "MaxReservedUniformRegisters",
    BakeAllParameter,
    "BakePrecision",
    "LoopAnimation",
    "FrameFormat",
    "TranslateQuantizeQuality",
    "RotateQuantizeQuality",
    "ScaleQuantizeQuality",
    "NodeTransTolerance",
    "NodeRotTolerance",
    "NodeSclTolerance",
    "TexTransTolerance",
    "TexRotTolerance",
    "TexSclTolerance",
    "ColorTolerance",
    "InvertVertexColorAlpha",
    "IgnoreAmbientTexture",
};

/// The value of a field by its own type.
struct ValueReader
{
    const ExportOptions& Options;

    DialogValue operator()(std::string ExportOptions::*field) const { return Options.*field; }

    DialogValue operator()(bool ExportOptions::*field) const { return Options.*field; }

    DialogValue operator()(std::uint32_t ExportOptions::*field) const
    {
        return static_cast<std::int32_t>(Options.*field);
    }

    DialogValue operator()(std::int32_t ExportOptions::*field) const { return Options.*field; }

    DialogValue operator()(float ExportOptions::*field) const { return Options.*field; }
};

/// Sets a field from a parameter's value; a value of another type leaves it as it is.
struct ValueWriter
{
    ExportOptions& Options;
    const DialogValue& Value;

    template<typename Field>
    void operator()(Field ExportOptions::*field) const
    {
        if constexpr (std::is_same_v<Field, std::uint32_t>) {
            if (const auto* number = std::get_if<std::int32_t>(&Value))
                Options.*field = static_cast<std::uint32_t>(*number);
        } else if (const auto* value = std::get_if<Field>(&Value)) {
            Options.*field = *value;
        }
    }
};

DialogValue ValueOf(const OptionRow& row, const ExportOptions& options)
{
    const DialogValue value = std::visit(ValueReader{options}, row.Field);
    if (row.Dialog == ParameterForm::Words)
        return CommandValue(row, options);
    if (row.Dialog == ParameterForm::Integer && std::holds_alternative<bool>(value))
        return std::int32_t{std::get<bool>(value)};
    return value;
}

void SetValue(const OptionRow& row, const DialogValue& value, ExportOptions& options)
{
    const auto* word = std::get_if<std::string>(&value);
    const auto* number = std::get_if<std::int32_t>(&value);
    if (row.Dialog == ParameterForm::Words && word != nullptr)
        ReadCommandValue(row, *word, options);
    else if (row.Dialog == ParameterForm::Integer && number != nullptr)
        std::visit(ValueWriter{options, std::holds_alternative<bool ExportOptions::*>(row.Field)
                                            ? DialogValue(*number != 0)
                                            : value},
                   row.Field);
    else
        std::visit(ValueWriter{options, value}, row.Field);
}

DialogValue DefaultOf(std::string_view parameter)
{
    if (parameter == "AnimationEndFrame")
        return DefaultEndFrame;
    const OptionRow* row = FindParameterRow(parameter);
    return row == nullptr ? DialogValueOf(ExportOptions{}, parameter) : ValueOf(*row, ExportOptions{});
}

/// The word of the settings file where the command knows it as a key, else the command's own.
std::string_view SentKey(const OptionRow& row)
{
    return FindCommandRow(row.SettingsKey) == &row ? row.SettingsKey : row.CommandKey;
}

} // namespace

std::vector<DialogParameter> DialogParameters()
{
    std::vector<DialogParameter> parameters;
    for (const std::string_view name : ParameterOrder) {
        const OptionRow* row = FindParameterRow(name);
        parameters.push_back({name, DefaultOf(name), row == nullptr ? OptionLimits{} : row->Limits});
    }
    return parameters;
}

DialogValue DialogValueOf(const ExportOptions& options, std::string_view parameter)
{
    if (parameter == FileModeParameter)
        return !options.UseBrellStudio;
    if (parameter == BakeAllParameter)
        return true;
    if (parameter == "TexTransTolerance" || parameter == "TexRotTolerance")
        return options.ToleranceTexScale;
    const OptionRow* row = FindParameterRow(parameter);
    return row == nullptr ? DialogValue(false) : ValueOf(*row, options);
}

std::vector<std::string> BuildDialogArguments(const std::function<DialogValue(std::string_view)>& valueOf)
{
    std::vector<std::string> arguments;
    for (const OptionRow& row : OptionTable()) {
        if (row.Parameter.empty() || row.CommandKey.empty())
            continue;
        ExportOptions options;
        SetValue(row, valueOf(row.Parameter), options);
        arguments.push_back(std::string(SentKey(row)) + ":" + CommandValue(row, options));
    }
    const DialogValue bakeAll = valueOf(BakeAllParameter);
    const bool* flag = std::get_if<bool>(&bakeAll);
    arguments.push_back(std::string(BakeAllKey) + ":" + (flag != nullptr && *flag ? "true" : "false"));
    return arguments;
}

} // namespace tq4x
