#include "pipeline/DialogOptions.h"
#include "pipeline/OptionProblems.h"
#include "pipeline/OptionText.h"

#include <algorithm>
#include <map>

namespace tq4x
{
namespace
{

/// Sets a field to a value that is neither its default nor a value that rounding would change.
struct OtherValue
{
    ExportOptions& Options;
    const OptionRow& Row;

    void operator()(std::string ExportOptions::*field) const { Options.*field = "C:\\a b\\c.qmdl"; }

    void operator()(bool ExportOptions::*field) const { Options.*field = !(Options.*field); }

    void operator()(std::uint32_t ExportOptions::*field) const { Options.*field = Row.Words[1].Value; }

    void operator()(std::int32_t ExportOptions::*field) const { Options.*field = 5; }

    void operator()(float ExportOptions::*field) const { Options.*field = 0.375f; }
};

ExportOptions WithOtherValue(const OptionRow& row)
{
    ExportOptions options;
    std::visit(OtherValue{options, row}, row.Field);
    return options;
}

ExportOptions WithAllOtherValues()
{
    ExportOptions options;
    for (const OptionRow& row : OptionTable())
        std::visit(OtherValue{options, row}, row.Field);
    return options;
}

TEST(OptionTable, HasARowForEachField)
{
    EXPECT_EQ(OptionTable().size(), 45u);
    for (const OptionRow& a : OptionTable())
        EXPECT_EQ(
            std::ranges::count_if(OptionTable(), [&](const OptionRow& b) { return a.Field == b.Field; }), 1)
            << a.SettingsKey;
}

TEST(OptionTable, NamesAreUniqueInEachVocabulary)
{
    std::map<std::string_view, int> settings, command, parameters;
    for (const OptionRow& row : OptionTable()) {
        ++settings[row.SettingsKey];
        ++parameters[row.Parameter];
        for (const std::string_view key : {row.CommandKey, row.SecondKey, row.Alias})
            ++command[key];
    }
    settings.erase("");
    command.erase("");
    parameters.erase("");
    EXPECT_EQ(settings.size(), 44u);
    EXPECT_EQ(parameters.size(), 44u);
    EXPECT_EQ(command.at("mae"), 2);
    EXPECT_EQ(FindCommandRow("mae")->SettingsKey, "OutputQmata");
    command.erase("mae");
    for (const auto& vocabulary : {settings, command, parameters})
        for (const auto& [name, count] : vocabulary)
            EXPECT_EQ(count, 1) << name;
}

TEST(OptionTable, EveryRowHasItsHelp)
{
    for (const OptionRow& row : OptionTable())
        EXPECT_TRUE(row.Help.size() > 10 && row.Help.ends_with(".")) << row.SettingsKey;
}

TEST(OptionTable, UnknownNamesHaveNoRow)
{
    for (const char* name : {"", "x", "magnify"}) {
        EXPECT_EQ(FindCommandRow(name), nullptr);
        EXPECT_EQ(FindSettingsRow(name), nullptr);
        EXPECT_EQ(FindParameterRow(name), nullptr);
    }
}

TEST(OptionTable, EachOptionSurvivesTheSettingsVocabulary)
{
    for (const OptionRow& row : OptionTable()) {
        if (row.SettingsKey.empty())
            continue;
        const ExportOptions options = WithOtherValue(row);
        ASSERT_NE(options, ExportOptions{}) << row.SettingsKey;
        ExportOptions read;
        ReadSettingsValue(row, SettingsValue(row, options).value(), read);
        EXPECT_EQ(read, options) << row.SettingsKey;
    }
}

TEST(OptionTable, EachOptionSurvivesTheCommandVocabularyUnderEachOfItsKeys)
{
    for (const OptionRow& row : OptionTable()) {
        for (const std::string_view key : {row.CommandKey, row.SecondKey, row.Alias}) {
            if (key.empty() || FindCommandRow(key) != &row)
                continue;
            const ExportOptions options = WithOtherValue(row);
            ExportOptions read;
            read.LoadFromArguments({"", "", {std::string(key) + ":" + CommandValue(row, options)}});
            EXPECT_EQ(read, options) << key;
        }
    }
}

TEST(OptionTable, EachOptionSurvivesTheDialog)
{
    ExportOptions options = WithAllOtherValues();
    options.AlwaysOverwrite = false; // the dialog does not hold it
    ExportOptions read;
    read.LoadFromArguments(
        {options.OutputFileName, options.OutputFolder,
         BuildDialogArguments([&](std::string_view name) { return DialogValueOf(options, name); })});
    EXPECT_EQ(read, options);
}

TEST(OptionTable, EachWordIsReadInEachVocabulary)
{
    for (const OptionRow& row : OptionTable()) {
        for (const OptionWord& word : row.Words) {
            ExportOptions options;
            ReadSettingsValue(row, word.Word, options);
            const std::optional<std::string_view> written = WordOfValue(row.Words, word.Value);
            EXPECT_EQ(SettingsValue(row, options), written) << row.SettingsKey << " " << word.Word;
        }
    }
}

TEST(OptionText, SettingsWords)
{
    const struct
    {
        const char* Key;
        std::vector<std::string> Words; // by value, empty: no line is written
    } cases[] = {
        {"ExportTarget", {"All", "Selection", ""}},
        {"FrameRange", {"All", "Playback", "Range", ""}},
        {"ComressNode", {"None", "Cull", "CullUninfluential", "UniteCompressible", "UniteAll", ""}},
        {"QuantizePos", {"Float", "Short", "", "Byte", ""}},
        {"QuantizeNrm", {"Float", "Short", "", "Byte", ""}},
        {"QuantizeTex", {"Float", "Short", "", "Byte", ""}},
        {"AdjustSkinning", {"None", "RigidSkinning", ""}},
        {"MeshVisibilityMode", {"BindByIndex", "BindByName", ""}},
    };

    for (const auto& row : cases) {
        const OptionRow& option = *FindSettingsRow(row.Key);
        for (std::uint32_t value = 0; value < row.Words.size(); ++value) {
            ExportOptions options;
            options.*std::get<std::uint32_t ExportOptions::*>(option.Field) = value;
            EXPECT_EQ(SettingsValue(option, options).value_or(""), row.Words[value]) << row.Key << value;
        }
    }
}

TEST(OptionText, UnknownWordsInSettingsLeaveTheField)
{
    for (const OptionRow& row : OptionTable()) {
        if (row.Words.empty())
            continue;
        const ExportOptions options = WithOtherValue(row);
        ExportOptions read = options;
        ReadSettingsValue(row, "nonsense", read);
        EXPECT_EQ(read, options) << row.SettingsKey;
    }
}

TEST(OptionText, Problems)
{
    const struct
    {
        const char* Text;
        const char* Problem; // empty: none
    } cases[] = {
        {"Magnify:2.5", ""},
        {"mgf:1e3", ""},
        {"AlwaysOverwrite", ""},
        {"AlwaysOverwrite:", ""},
        {"AlwaysOverwrite:true", ""},
        {"BakeAllAnim:false", ""},
        {"MergeQmdlPath:C:\\x", ""},
        {"MergeQmdlPath:", ""},
        {"ExportTarget:Selection", ""},
        {"ComressNode:4", ""},
        {"ComressMaterial:1", ""},
        {"StartFrame:-3", ""},
        {"LoopAnim:false", ""},
        {"QuantizePos:Byte", ""},
        {"AlwaysOverwrite:false",
         "option \"AlwaysOverwrite\" is \"false\", but must be true: every value switches it on"},
        {"Magnify:", "option \"Magnify\" is \"\", but must be a number"},
        {"Magnify:2x", "option \"Magnify\" is \"2x\", but must be a number"},
        {"Magnify:nan", "option \"Magnify\" is \"nan\", but must be a number"},
        {"Magnify", "option \"Magnify\" has no value"},
        {"LoopAnim:yes", "option \"LoopAnim\" is \"yes\", but must be true or false"},
        {"Magnify:100", ""},
        {"Magnify:-0", ""},
        {"Magnify:100.1", ""}, // ranges of the dialog bind the dialog alone
        {"Magnify:1e99", "option \"Magnify\" is \"1e99\", but must be a number"},
        {"Magnify:-1", ""},
        {"BakePrecision:0.1", ""},
        {"pb:0.09", ""}, // the export clamps it and says so
        {"RotateQuantizeQuality:+9", ""},
        {"RotateQuantizeQuality:10", ""},
        {"MaxReservedUniformRegisters:-1", ""}, // the export refuses it in its own words
        {"StartFrame:-2147483648", ""},
        {"EndFrame:2147483647", ""},
        {"EndFrame:2147483648", "option \"EndFrame\" is \"2147483648\", but must be an integer from "
                                "-2147483648 to 2147483647"},
        {"EndFrame:99999999999999999999", "option \"EndFrame\" is \"99999999999999999999\", but must be an "
                                          "integer from -2147483648 to 2147483647"},
        {"StartFrame:1.5", "option \"StartFrame\" is \"1.5\", but must be an integer from -2147483648 to "
                           "2147483647"},
        {"ExportTarget:all", "option \"ExportTarget\" is \"all\", but must be one of All, Selection"},
        {"OutputMode:true", "option \"OutputMode\" is \"true\", but must be one of File, BrellStudio"},
        {"QuantizePos:3", "option \"QuantizePos\" is \"3\", but must be one of Float, Short, Byte"},
        {"ncmp:5", "option \"ncmp\" is \"5\", but must be an integer from 0 to 4"},
        {"ComressNode:UniteAll",
         "option \"ComressNode\" is \"UniteAll\", but must be an integer from 0 to 4"},
        {"MaterialCompression:true",
         "option \"MaterialCompression\" is \"true\", but must be an integer from 0 to 1"},
        {"Magnfy:2", "unknown option \"Magnfy\"; the nearest is \"Magnify\""},
        {"magnify:2", "unknown option \"magnify\"; the nearest is \"Magnify\""},
        {"CompressNode:2", "unknown option \"CompressNode\"; the nearest is \"ComressNode\""},
        {"OutputQmld:true", "unknown option \"OutputQmld\"; the nearest is \"OutputQmdl\""},
    };

    for (const auto& row : cases)
        EXPECT_EQ(FindArgumentProblem(row.Text).value_or(""), row.Problem) << row.Text;
}

TEST(OptionText, NearestKeyOfAnythingIsAKey)
{
    for (const std::string& text : {std::string(), std::string("\0\xFF", 2), std::string(1000000, 'x')})
        EXPECT_NE(FindCommandRow(FindNearestKey(text)), nullptr);
}

std::string Show(const DialogValue& value)
{
    if (const auto* flag = std::get_if<bool>(&value))
        return *flag ? "bool true" : "bool false";
    if (const auto* number = std::get_if<std::int32_t>(&value))
        return "int " + std::to_string(*number);
    if (const auto* number = std::get_if<float>(&value))
        return "float " + std::to_string(*number);
    return "text " + std::get<std::string>(value);
}

TEST(DialogOptions, ParametersInOrderWithTypesDefaultsAndRanges)
{
    constexpr double low = -2147483648.0, high = 2147483647.0;

    const struct
    {
        const char* Name;
        const char* Default;
        double Low, High, SliderLow, SliderHigh;
    } expected[] = {
        {"ExportTarget", "int 0", 0, 1, 0, 1},
        {"OutputFileName", "text ", 0, 0, 0, 0},
        {"OutputModeFile", "bool true", 0, 0, 0, 0},
        {"OutputFolder", "text ", 0, 0, 0, 0},
        {"OutputModeBS", "bool false", 0, 0, 0, 0},
        {"MergeQmdl", "bool false", 0, 0, 0, 0},
        {"MergeQmdlPath", "text ", 0, 0, 0, 0},
        {"Magnify", "float 1.000000", 0, 100, 0, 100},
        {"SelectAnimationFrame", "text All", 0, 0, 0, 0},
        {"AnimationStartFrame", "int 1", low, high, 1, 9999},
        {"AnimationEndFrame", "int 100", low, high, 1, 9999},
        {"OutputModel", "bool true", 0, 0, 0, 0},
        {"OutputTexture", "bool true", 0, 0, 0, 0},
        {"OutputAnimation", "bool false", 0, 0, 0, 0},
        {"OutputMaterialAnimation", "bool false", 0, 0, 0, 0},
        {"OutputLight", "bool false", 0, 0, 0, 0},
        {"OutputCamera", "bool false", 0, 0, 0, 0},
        {"OutputModelAnimation", "bool false", 0, 0, 0, 0},
        {"OutputQenv", "bool false", 0, 0, 0, 0},
        {"NodeCompressMode", "int 0", 0, 4, 0, 4},
        {"MaterialCompressMode", "int 0", 0, 1, 0, 1},
        {"OptimizePrimitive", "bool true", 0, 0, 0, 0},
        {"ConvertToModel", "bool false", 0, 0, 0, 0},
        {"PositionQzType", "text Float", 0, 0, 0, 0},
        {"NormalQzType", "text Float", 0, 0, 0, 0},
        {"TexCoordQzType", "text Float", 0, 0, 0, 0},
        {"AdjustSkinning", "int 0", 0, 1, 0, 1},
        {"MeshVisibilityMode", "int 0", 0, 1, 0, 1},
        {"NonUniformScale", "bool false", 0, 0, 0, 0},
        {"MaxReservedUniformRegisters", "int 0", 0, 57, 0, 57},
        {"BakeAllAnimation", "bool true", 0, 0, 0, 0},
        {"BakePrecision", "float 1.000000", 0.1, 1, 0.1, 1},
        {"LoopAnimation", "bool true", 0, 0, 0, 0},
        {"FrameFormat", "bool false", 0, 0, 0, 0},
        {"TranslateQuantizeQuality", "int 9", 0, 9, 0, 9},
        {"RotateQuantizeQuality", "int 9", 0, 9, 0, 9},
        {"ScaleQuantizeQuality", "int 9", 0, 9, 0, 9},
        {"NodeTransTolerance", "float 0.010000", 0, 10, 0, 10},
        {"NodeRotTolerance", "float 0.100000", 0, 10, 0, 10},
        {"NodeSclTolerance", "float 0.100000", 0, 10, 0, 10},
        {"TexTransTolerance", "float 0.010000", 0, 10, 0, 10},
        {"TexRotTolerance", "float 0.100000", 0, 10, 0, 10},
        {"TexSclTolerance", "float 0.100000", 0, 10, 0, 10},
        {"ColorTolerance", "float 0.001000", 0, 10, 0, 10},
        {"InvertVertexColorAlpha", "bool true", 0, 0, 0, 0},
        {"IgnoreAmbientTexture", "bool false", 0, 0, 0, 0},
    };

    const std::vector<DialogParameter> parameters = DialogParameters();
    ASSERT_EQ(parameters.size(), std::size(expected));
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        EXPECT_EQ(parameters[i].Name, expected[i].Name);
        EXPECT_EQ(Show(parameters[i].Default), expected[i].Default) << expected[i].Name;
        EXPECT_EQ(parameters[i].Limits.Low, expected[i].Low) << expected[i].Name;
        EXPECT_EQ(parameters[i].Limits.High, expected[i].High) << expected[i].Name;
        EXPECT_EQ(parameters[i].Limits.SliderLow, expected[i].SliderLow) << expected[i].Name;
        EXPECT_EQ(parameters[i].Limits.SliderHigh, expected[i].SliderHigh) << expected[i].Name;
    }
}

TEST(DialogOptions, EveryOptionOfTheDialogHasItsParameter)
{
    std::vector<std::string_view> names;
    for (const DialogParameter& parameter : DialogParameters())
        names.push_back(parameter.Name);
    for (const OptionRow& row : OptionTable())
        EXPECT_TRUE(row.Parameter.empty() || std::ranges::count(names, row.Parameter) == 1) << row.Parameter;
}

TEST(DialogOptions, LoadingShowsTheScaleToleranceForAllTextures)
{
    ExportOptions options;
    options.ToleranceTexScale = 0.5f;
    for (const char* name : {"TexTransTolerance", "TexRotTolerance", "TexSclTolerance"})
        EXPECT_EQ(Show(DialogValueOf(options, name)), "float 0.500000") << name;
}

TEST(DialogOptions, OutputModesAreOpposites)
{
    ExportOptions options;
    options.UseBrellStudio = true;
    EXPECT_EQ(Show(DialogValueOf(options, "OutputModeFile")), "bool false");
    EXPECT_EQ(Show(DialogValueOf(options, "OutputModeBS")), "bool true");
    EXPECT_EQ(Show(DialogValueOf(options, "NoSuchParameter")), "bool false");
}

TEST(DialogOptions, Arguments)
{
    ExportOptions options;
    options.CompressNode = 3;
    options.CompressMaterial = true;
    options.QuantizeNrm = 3;
    const std::vector<std::string> arguments =
        BuildDialogArguments([&](std::string_view name) { return DialogValueOf(options, name); });
    EXPECT_THAT(arguments,
                testing::ElementsAre(
                    "ExportTarget:All", "MergeQmdl:false", "MergeQmdlPath:", "OutputMode:File", "Magnify:1",
                    "FrameRange:All", "StartFrame:1", "EndFrame:9999", "OutputQmdl:true", "OutputQtex:true",
                    "OutputQskla:false", "OutputQmata:false", "OutputQlgt:false", "OutputQcam:false",
                    "OutputQmdla:false", "OutputQenv:false", "ComressNode:3", "ComressMaterial:1",
                    "OptimizePrimitive:true", "ConvertToModel:false", "QuantizePos:Float", "QuantizeNrm:Byte",
                    "QuantizeTex:Float", "AdjustSkinning:0", "MeshVisibilityMode:0", "NonUniformScale:false",
                    "MaxReservedUniformRegisters:0", "FramePrecision:1", "LoopAnim:true", "FrameFormat:false",
                    "TranslateQuantizeQuality:9", "RotateQuantizeQuality:9", "ScaleQuantizeQuality:9",
                    "ToleranceTranslate:0.01", "ToleranceRotate:0.1", "ToleranceScale:0.1",
                    "ToleranceTexTranslate:0.1", "ToleranceTexRotate:0.1", "ToleranceTexScale:0.1",
                    "ToleranceColor:0.001", "InvertVertexColorAlpha:true", "IgnoreAmbientTexture:false",
                    "BakeAllAnim:true"));
}

TEST(DialogOptions, ValuesOfAnotherTypeCountAsTheDefault)
{
    const std::vector<std::string> arguments =
        BuildDialogArguments([](std::string_view) { return DialogValue(std::string("x")); });
    ExportOptions read;
    read.LoadFromArguments({"", "", arguments});
    ExportOptions expected;
    expected.MergeQmdlPath = "x";
    EXPECT_EQ(read, expected);
}

} // namespace
} // namespace tq4x
