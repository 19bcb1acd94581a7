#include "export/ExportDialog.h"
#include "export/ExportParameters.h"
#include "pipeline/Preferences.h"
#include "pipeline/SettingsFile.h"
#include "support/Golden.h"
#include "support/PagePrinter.h"
#include "support/PlatformGuard.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <fstream>

namespace tq4x::test
{
namespace
{

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* Type = "TQ4X_ForPennonExportProp";

class ExportDialog : public PluginTest
{
protected:
    ExportDialog()
    {
        m_platform.SetEnvironment({{"TQ4X_FORPENNON_ROOT", m_folder.Path().string()}});
        m_platform.FixUserAndTime();
        std::filesystem::create_directories(m_folder / "tools" / "BrellStudioStarter");
        std::ofstream(m_folder / "tools" / "BrellStudioStarter" / "BrellStudioStarter.exe") << "starter";
        CurrentPreferences() = {};
    }

    ~ExportDialog() override { CurrentPreferences() = {}; }

    std::filesystem::path IniFolder() const { return m_folder / "tools" / "DccPlugin" / "softimage" / "ini"; }

    /// Puts options where the last export would have left them.
    void KeepLastExport(const ExportOptions& options)
    {
        std::filesystem::create_directories(IniFolder());
        std::ofstream(IniFolder() / "last_export_options_for_pennon.q3es", std::ios::binary)
            << SettingsText(options);
    }

    /// The user's answer to the next file windows; the scripts that opened them are kept.
    void ChooseFile(const std::string& path)
    {
        Scene.Host().Fill.RunScript = [this, path](const XSI::Host::ScriptCall& call, XSI::CValue& result) {
            Scripts.push_back(call);
            result = XSI::CValue(path.c_str());
            return XSI::CStatus(XSI::CStatus::OK);
        };
    }

    static XSI::CustomProperty Kept(const char* name = Type)
    {
        return SceneBuilder::Root().GetProperties().Find(name);
    }

    /// The arguments of the last call of the export command.
    static XSI::CValueArray ExportArguments()
    {
        XSI::CValueArray arguments;
        for (const XSI::Host::CommandCall& call : SceneBuilder::Host().CommandCalls)
            if (call.Name == "TQ4X_ForPennonExport")
                arguments = call.Arguments;
        return arguments;
    }

    static std::vector<std::string> ExportTexts()
    {
        std::vector<std::string> texts;
        const XSI::CValueArray values = ExportArguments()[2];
        for (LONG i = 0; i < values.GetCount(); ++i)
            texts.push_back(Utf8(values[i].GetAsText()));
        return texts;
    }

    static std::string BodyOf(const std::string& settings)
    {
        return settings.substr(settings.find("# Output Options"));
    }

    TemporaryFolder m_folder;
    std::vector<XSI::Host::ScriptCall> Scripts;

private:
    PlatformGuard m_platform;
};

/// A record in which no field has its default.
ExportOptions UnusualOptions()
{
    ExportOptions options;
    for (const OptionRow& row : OptionTable())
        if (!row.Parameter.empty())
            std::visit(
                [&](auto field) {
                    using Field = std::remove_reference_t<decltype(options.*field)>;
                    if constexpr (std::is_same_v<Field, std::string>)
                        options.*field = "some:text=" + std::string(row.Parameter);
                    else if constexpr (std::is_same_v<Field, bool>)
                        options.*field = !(options.*field);
                    else if constexpr (std::is_same_v<Field, float>)
                        options.*field = 0.375f;
                    else
                        options.*field = row.Words.empty() ? 7 : static_cast<Field>(row.Words[1].Value);
                },
                row.Field);
    options.ToleranceTexTranslate = options.ToleranceTexScale;
    options.ToleranceTexRotate = options.ToleranceTexScale;
    return options;
}

TEST_F(ExportDialog, HasAllParametersInOrder)
{
    PageDriver page("OnTQ4XExportWithSetting");
    ExpectGolden(PrintParameters(page.Property()), "host/export/dialog-parameters.txt");
}

TEST_F(ExportDialog, HasAllControlsInOrder)
{
    PageDriver page("OnTQ4XExportWithSetting");
    ExpectGolden(PrintLayout(page.Page().GetLayout()), "host/export/dialog-layout.txt");
}

TEST_F(ExportDialog, BeginsWithTheSettingsOfTheLastExport)
{
    const ExportOptions last = UnusualOptions();
    ExportOptions stored = last;
    stored.OutputFileName = "some:text"; // a "=" does not survive the file
    stored.OutputFolder = "/some/folder";
    stored.MergeQmdlPath = "c:\\some.qmdl";
    KeepLastExport(stored);
    PageDriver page("OnTQ4XExportWithSetting");
    EXPECT_EQ(page.Text("OutputFileName"), "some:text");
    EXPECT_EQ(page.Number("NodeCompressMode"), 1);
    EXPECT_EQ(page.Number("AnimationEndFrame"), 7);
    EXPECT_TRUE(page.Flag("OutputModeBS"));
    EXPECT_FALSE(page.Flag("OutputModeFile"));
    EXPECT_EQ(page.Text("SelectAnimationFrame"), "Playback");
    EXPECT_EQ(page.Text("PositionQzType"), "Short");
    EXPECT_EQ(LiveOptions(), nullptr) << "the record was for filling the page alone";
}

TEST_F(ExportDialog, ShowsOneToleranceForAllThreeOfTextures)
{
    ExportOptions last;
    last.ToleranceTexTranslate = 1.0f;
    last.ToleranceTexRotate = 2.0f;
    last.ToleranceTexScale = 3.0f;
    KeepLastExport(last);
    PageDriver page("OnTQ4XExportWithSetting");
    for (const char* parameter : {"TexTransTolerance", "TexRotTolerance", "TexSclTolerance"})
        EXPECT_EQ(page.Number(parameter), 3) << parameter;
}

TEST_F(ExportDialog, KeepsItsOwnValuesWithoutALastExport)
{
    std::filesystem::create_directories(IniFolder());
    PageDriver page("OnTQ4XExportWithSetting");
    EXPECT_EQ(page.Number("AnimationEndFrame"), 100);
    EXPECT_THAT(Messages(), ElementsAre("W Export Preference File is not found.\n",
                                        "W Last export option file is not found.\n"));
}

TEST_F(ExportDialog, TellsThatTheRootIsNotKnown)
{
    PlatformGuard guard;
    guard.SetEnvironment({});
    PageDriver page("OnTQ4XExportWithSetting");
    EXPECT_EQ(page.Number("AnimationEndFrame"), 100);
    EXPECT_THAT(Messages(),
                Contains("W Environment variable TQ4X_FORPENNON_ROOT was not found\nLatest export option "
                         "have not been saved\n"));
}

TEST_F(ExportDialog, OpensThePropertyThatTheSceneKeeps)
{
    PageDriver("OnTQ4XExportWithSetting").Set("OutputFileName", "kept");
    ExportOptions last;
    last.OutputFileName = "last";
    KeepLastExport(last);
    PageDriver again("OnTQ4XExportWithSetting");
    EXPECT_EQ(again.Text("OutputFileName"), "kept");
    EXPECT_EQ(Scene.Root().GetProperties().GetCount(), 1);
}

TEST_F(ExportDialog, MakesAPropertyForOneExportWhileNothingIsKept)
{
    PageDriver("OnTQ4XExportWithSetting").Set("OutputFileName", "kept");
    CurrentPreferences().AutoSaveExportOptions = false;
    PageDriver page("OnTQ4XExportWithSetting");
    EXPECT_EQ(Utf8(page.Property().GetName()), "TQ4X_ForPennonExportProp_1");
    EXPECT_EQ(Utf8(page.Property().GetType()), Type);
    EXPECT_EQ(page.Text("OutputFileName"), "");
    PageDriver again("OnTQ4XExportWithSetting");
    EXPECT_EQ(Scene.Root().GetProperties().GetCount(), 2) << "that of a closed dialog is replaced";
    EXPECT_TRUE(Kept().IsValid());
}

TEST_F(ExportDialog, TurnsAllFieldsIntoArgumentsAndBack)
{
    const ExportOptions options = UnusualOptions();
    XSI::CustomProperty property = GetExportProperty();
    PutExportOptions(property, options);
    EXPECT_FALSE(static_cast<bool>(property.GetParameterValue("OutputModeFile")));
    ExportOptions back;
    back.LoadFromArguments({Utf8(property.GetParameterValue("OutputFileName").GetAsText()),
                            Utf8(property.GetParameterValue("OutputFolder").GetAsText()),
                            BuildExportArguments(property)});
    EXPECT_EQ(BodyOf(SettingsText(back)), BodyOf(SettingsText(options)));
    EXPECT_EQ(back, options);
}

TEST_F(ExportDialog, TheDefaultsOfDialogAndRecordDifferInOneField)
{
    ExportOptions expected;
    expected.EndFrame = 100;
    ExportOptions back;
    back.LoadFromArguments({"", "", BuildExportArguments(GetExportProperty())});
    EXPECT_EQ(back, expected);
}

TEST_F(ExportDialog, SendsTheWordsOfTheSettingsFileAsKeys)
{
    const std::vector<std::string> texts = BuildExportArguments(GetExportProperty());
    EXPECT_EQ(texts.size(), 43u);
    for (const char* text :
         {"ExportTarget:All", "OutputMode:File", "ComressNode:0", "ComressMaterial:0", "FrameRange:All",
          "StartFrame:1", "EndFrame:100", "LoopAnim:true", "FramePrecision:1", "AdjustSkinning:0",
          "MeshVisibilityMode:0", "QuantizePos:Float", "OutputQmdl:true", "BakeAllAnim:true"})
        EXPECT_THAT(texts, Contains(text));
    EXPECT_THAT(texts, Not(Contains(HasSubstr("OutputFileName"))));
    EXPECT_THAT(texts, Not(Contains(HasSubstr("OutputFolder"))));
    EXPECT_THAT(texts, Not(Contains(HasSubstr("AlwaysOverwrite"))));
}

TEST_F(ExportDialog, TheButtonsTakeNamesFromTheScene)
{
    Scene.Named("_level", "");
    PageDriver page("OnTQ4XExportWithSetting");
    page.Press("SelectSceneButton");
    EXPECT_EQ(page.Text("OutputFileName"), "level");
    Scene.Named("__level", "");
    page.Press("SelectSceneButton");
    EXPECT_EQ(page.Text("OutputFileName"), "_level") << "one only";
    page.Press("SelectNodeButton");
    EXPECT_EQ(page.Text("OutputFileName"), "_level") << "nothing is selected";
    const SceneNode arm = Scene.Null("arm", Scene.Model("hero"));
    Scene.Select({arm, Scene.Null("leg")});
    page.Press("SelectNodeButton");
    EXPECT_EQ(page.Text("OutputFileName"), "arm") << "the first one, without its model";
    Scene.Named("", "");
    page.Press("SelectSceneButton");
    EXPECT_EQ(page.Text("OutputFileName"), "");
}

TEST_F(ExportDialog, LoadsASettingsFile)
{
    ExportOptions options;
    options.OutputFileName = "loaded";
    options.OutputQmdl = false;
    options.FrameRange = 2;
    const std::string path = (m_folder / "some.q3es").string();
    std::ofstream(path, std::ios::binary) << SettingsText(options);
    CurrentPreferences().OptionDefaultLoadDir = "c:\\my \"settings\"";
    PageDriver page("OnTQ4XExportWithSetting");
    ChooseFile(path);
    const int refreshes = page.Refreshes();
    page.Press("LoadOptions");
    EXPECT_EQ(page.Text("OutputFileName"), "loaded");
    EXPECT_FALSE(page.IsEnabled("PositionQzType")) << "the rules follow the new values";
    EXPECT_TRUE(page.IsEnabled("AnimationStartFrame"));
    EXPECT_EQ(page.Refreshes(), refreshes + 1);
    ASSERT_EQ(Scripts.size(), 1u);
    EXPECT_EQ(Scripts[0].Language, "VBScript");
    EXPECT_EQ(Scripts[0].Procedure, "ShowFileBrowser");
    ExpectGolden(Scripts[0].Code, "host/export/load-script.txt");
}

TEST_F(ExportDialog, AFileThatCantBeLoadedLeavesTheValues)
{
    PageDriver page("OnTQ4XExportWithSetting");
    page.Set("OutputFileName", "mine");
    ChooseFile((m_folder / "missing.q3es").string());
    Scene.Host().LogEntries.clear();
    page.Press("LoadOptions");
    EXPECT_EQ(page.Text("OutputFileName"), "mine");
    EXPECT_THAT(Messages(), ElementsAre(HasSubstr((m_folder / "missing.q3es").string())));
    EXPECT_EQ(LiveOptions(), nullptr);
}

TEST_F(ExportDialog, NoChosenFileChangesNothing)
{
    PageDriver page("OnTQ4XExportWithSetting");
    page.Set("OutputFileName", "mine");
    Scene.Host().LogEntries.clear();
    ChooseFile("");
    page.Press("LoadOptions").Press("SaveOptions");
    EXPECT_EQ(page.Text("OutputFileName"), "mine");
    EXPECT_THAT(Messages(), IsEmpty());
    EXPECT_EQ(Scripts.size(), 2u);
}

TEST_F(ExportDialog, SavesASettingsFile)
{
    PageDriver page("OnTQ4XExportWithSetting");
    page.Set("OutputFileName", "saved").Set("OutputFolder", "/some/folder").Set("OutputAnimation", true);
    CurrentPreferences().OptionDefaultSaveDir = "/my/folder";
    const std::string path = (m_folder / "new.q3es").string();
    ChooseFile(path);
    page.Press("SaveOptions");
    ExportOptions expected;
    expected.OutputFileName = "saved";
    expected.OutputFolder = "/some/folder";
    expected.OutputQskla = true;
    expected.EndFrame = 100;
    EXPECT_EQ(ReadWholeFile(path), SettingsText(expected));
    EXPECT_THAT(Scripts[0].Code, HasSubstr("browser.DialogTitle = \"Save q3es file\"\n"));
    EXPECT_THAT(Scripts[0].Code, HasSubstr("browser.InitialDirectory = \"/my/folder\"\n"));
    EXPECT_EQ(LiveOptions(), nullptr);
}

TEST_F(ExportDialog, ApplyRunsTheCommandAndExportClosesToo)
{
    Scene.Null("body");
    PageDriver page("OnTQ4XExportWithSetting");
    page.Set("OutputFileName", "body").Set("OutputFolder", m_folder.Path().string().c_str());
    page.Set("OptimizePrimitive", false).Press("ApplyButton");
    EXPECT_TRUE(page.IsOpen());
    EXPECT_TRUE(std::filesystem::exists(m_folder / "body.qmdl"));
    EXPECT_TRUE(Kept().IsValid());
    Scene.Host().MessageBoxAnswers = {XSI::siMsgYes}; // to overwriting
    page.Press("ExportButton");
    EXPECT_FALSE(page.IsOpen());
    EXPECT_EQ(Utf8(ExportArguments()[0].GetAsText()), "body");
    EXPECT_EQ(Utf8(ExportArguments()[1].GetAsText()), m_folder.Path().string());
    EXPECT_EQ(ExportTexts(), BuildExportArguments(Kept()));
}

TEST_F(ExportDialog, APageWhosePropertyWasDeletedDoesNothingMore)
{
    CurrentPreferences().AutoSaveExportOptions = false;
    Scene.Null("body");
    PageDriver page("OnTQ4XExportWithSetting");
    page.Set("OutputFileName", "body").Set("OutputFolder", m_folder.Path().string().c_str());
    page.Set("OptimizePrimitive", false).Page().Press("ApplyButton");
    EXPECT_TRUE(page.IsOpen()) << "applying does not close";
    EXPECT_FALSE(Kept("TQ4X_ForPennonExportProp_1").IsValid());
    EXPECT_TRUE(page.Page().Press("ApplyButton") == XSI::CStatus::MemberNotFound);
    EXPECT_TRUE(page.Page().Set("OutputModel", false) == XSI::CStatus::MemberNotFound);
    EXPECT_EQ(Calls("TQ4X_ForPennonExport"), 1);
}

TEST_F(ExportDialog, AFailedExportShowsTheLogAndStaysOpen)
{
    PageDriver page("OnTQ4XExportWithSetting");
    page.Set("OutputFileName", "").Press("ExportButton");
    EXPECT_TRUE(page.IsOpen());
    EXPECT_THAT(Scene.Host().OpenedViews, Contains("Script Editor"));
    EXPECT_EQ(Calls("TQ4X_ForPennonExport"), 1);
}

TEST_F(ExportDialog, CloseCloses)
{
    PageDriver page("OnTQ4XExportWithSetting");
    page.Press("CloseButton");
    EXPECT_FALSE(page.IsOpen());
    EXPECT_EQ(Calls("TQ4X_ForPennonExport"), 0);
}

TEST_F(ExportDialog, FilesAndViewerExcludeEachOther)
{
    PageDriver page("OnTQ4XExportWithSetting");
    EXPECT_TRUE(page.Flag("OutputModeFile"));
    page.Set("OutputModeBS", true);
    EXPECT_FALSE(page.Flag("OutputModeFile"));
    EXPECT_FALSE(page.IsEnabled("OutputFolder"));
    page.Set("OutputModeFile", true);
    EXPECT_FALSE(page.Flag("OutputModeBS"));
    EXPECT_TRUE(page.IsEnabled("OutputFolder"));
}

const std::vector<const char*> ModelParameters = {
    "MergeQmdl",      "NodeCompressMode",   "MaterialCompressMode", "OptimizePrimitive",
    "ConvertToModel", "PositionQzType",     "NormalQzType",         "TexCoordQzType",
    "AdjustSkinning", "MeshVisibilityMode", "NonUniformScale",      "MaxReservedUniformRegisters"};
const std::vector<const char*> SkeletalParameters = {
    "FrameFormat",        "TranslateQuantizeQuality", "RotateQuantizeQuality", "ScaleQuantizeQuality",
    "NodeTransTolerance", "NodeRotTolerance",         "NodeSclTolerance",      "BakePrecision",
    "LoopAnimation"};
const std::vector<const char*> MaterialParameters = {"TexTransTolerance", "TexRotTolerance",
                                                     "TexSclTolerance",   "ColorTolerance",
                                                     "BakePrecision",     "LoopAnimation"};

TEST_F(ExportDialog, OneSwitchEnablesWhatBelongsToIt)
{
    const struct
    {
        const char* Switch;
        std::vector<const char*> Enabled;
    } Cases[] = {
        {"OutputModel", ModelParameters},
        {"OutputTexture", {}},
        {"OutputAnimation", SkeletalParameters},
        {"OutputMaterialAnimation", MaterialParameters},
        {"OutputLight", {"BakePrecision", "LoopAnimation", "ColorTolerance"}},
        {"OutputCamera", {"BakePrecision", "LoopAnimation"}},
        {"OutputModelAnimation", {"BakePrecision", "LoopAnimation"}},
        {"OutputQenv", {}},
        {"OutputModeFile", {"OutputFolder"}},
    };

    std::vector<const char*> all = {"MergeQmdlPath", "OutputFolder", "AnimationStartFrame",
                                    "AnimationEndFrame"};
    for (const auto& parameters : {ModelParameters, SkeletalParameters, MaterialParameters})
        all.insert(all.end(), parameters.begin(), parameters.end());
    PageDriver page("OnTQ4XExportWithSetting");
    for (const auto& row : Cases) {
        for (const auto& other : Cases)
            page.Set(other.Switch, false);
        page.Set(row.Switch, true);
        for (const char* parameter : all) {
            const bool isExpected =
                std::ranges::find(row.Enabled, std::string_view(parameter)) != row.Enabled.end();
            EXPECT_EQ(page.IsEnabled(parameter), isExpected) << row.Switch << ": " << parameter;
        }
    }
}

TEST_F(ExportDialog, TheMergedFileNeedsBothSwitches)
{
    PageDriver page("OnTQ4XExportWithSetting");
    EXPECT_FALSE(page.IsEnabled("MergeQmdlPath"));
    page.Set("MergeQmdl", true);
    EXPECT_TRUE(page.IsEnabled("MergeQmdlPath"));
    page.Set("OutputModel", false);
    EXPECT_FALSE(page.IsEnabled("MergeQmdlPath"));
    EXPECT_FALSE(page.IsEnabled("MergeQmdl"));
}

TEST_F(ExportDialog, FramesAreForARangeAlone)
{
    PageDriver page("OnTQ4XExportWithSetting");
    for (const char* word : {"All", "Playback", "Range", "All"}) {
        page.Set("SelectAnimationFrame", word);
        EXPECT_EQ(page.IsEnabled("AnimationStartFrame"), std::string_view(word) == "Range") << word;
        EXPECT_EQ(page.IsEnabled("AnimationEndFrame"), std::string_view(word) == "Range") << word;
    }
}

/// A parameter as older versions defined it.
XSI::Host::ParameterDefinition Former(XSI::CValue::DataType type, LONG low, LONG high)
{
    XSI::Host::ParameterDefinition definition;
    definition.Type = type;
    definition.Default = XSI::CValue(low).ConvertTo(type);
    if (type != XSI::CValue::siBool) {
        definition.Min = low;
        definition.Max = high;
    }
    return definition;
}

TEST_F(ExportDialog, ReplacesParametersOfOlderScenes)
{
    using namespace XSI::Host;

    const struct
    {
        const char* Name;
        ParameterDefinition Mode;
        XSI::CValue Value;
        LONG Expected;
    } Cases[] = {
        {"a flag", Former(XSI::CValue::siBool, 0, 1), true, 0},
        {"six modes, the fifth", Former(XSI::CValue::siInt4, 0, 5), 4, 4},
        {"six modes, the sixth", Former(XSI::CValue::siInt4, 0, 5), 5, 0},
        {"the present form", Former(XSI::CValue::siInt4, 0, 4), 3, 3},
    };

    for (const auto& row : Cases) {
        SCOPED_TRACE(row.Name);
        const XSI::CustomProperty property = AddPlainProperty(Scene.Root(), Type, Type);
        AddParameter(property, "NodeCompressMode", row.Mode).PutValue(row.Value);
        AddParameter(property, "PosQzPrecision", XSI::CValue(1.0));
        AddParameter(property, "RotQzPrecision", XSI::CValue(1.0));
        AddParameter(property, "SclQzPrecision", XSI::CValue(1.0));
        PageDriver page("OnTQ4XExportWithSetting");
        EXPECT_TRUE(page.Property() == property);
        const XSI::Parameter mode = property.GetParameter("NodeCompressMode");
        EXPECT_EQ(mode.GetValueType(), XSI::CValue::siInt4);
        EXPECT_EQ(static_cast<LONG>(mode.GetMax()), 4);
        EXPECT_EQ(static_cast<LONG>(mode.GetValue()), row.Expected);
        EXPECT_FALSE(property.GetParameter("PosQzPrecision").IsValid());
        EXPECT_FALSE(property.GetParameter("RotQzPrecision").IsValid());
        EXPECT_FALSE(property.GetParameter("SclQzPrecision").IsValid());
        EXPECT_EQ(property.GetParameters().GetCount(), 46);
        XSI::Host::Objects().Delete(property.GetObjectID());
    }
}

TEST_F(ExportDialog, WidensTheFrameRangeOfOlderScenes)
{
    using namespace XSI::Host;
    constexpr LONG Least = -2147483647 - 1;
    for (const char* const name : {"AnimationStartFrame", "AnimationEndFrame"}) {
        for (const LONG formerLeast : {1, 0}) { // only the former least frame 1 is replaced
            const XSI::CustomProperty property = AddPlainProperty(Scene.Root(), Type, Type);
            AddParameter(property, name, Former(XSI::CValue::siInt4, formerLeast, 9999)).PutValue(12);
            PageDriver page("OnTQ4XExportWithSetting");
            EXPECT_EQ(page.Number(name), 12) << name;
            const XSI::Parameter frame = property.GetParameter(name);
            EXPECT_EQ(static_cast<LONG>(frame.GetMin()), formerLeast == 1 ? Least : 0) << name;
            EXPECT_EQ(static_cast<LONG>(frame.GetMax()), formerLeast == 1 ? 2147483647 : 9999) << name;
            Objects().Delete(property.GetObjectID());
        }
    }
}

TEST_F(ExportDialog, AWholeExportDeletesThePropertyOfOneExport)
{
    CurrentPreferences().AutoSaveExportOptions = false;
    Scene.Null("body");
    PageDriver page("OnTQ4XExportWithSetting");
    page.Set("OutputFileName", "body").Set("OutputFolder", m_folder.Path().string().c_str());
    page.Set("OptimizePrimitive", false);
    EXPECT_TRUE(page.Page().Press("ExportButton") == XSI::CStatus::OK);
    EXPECT_FALSE(page.IsOpen());
    EXPECT_TRUE(std::filesystem::exists(m_folder / "body.qmdl"));
    EXPECT_FALSE(Kept("TQ4X_ForPennonExportProp_1").IsValid());
    PageDriver next("OnTQ4XExportWithSetting");
    EXPECT_EQ(next.Text("OutputFileName"), "body") << "the export left its settings";
}

} // namespace
} // namespace tq4x::test
