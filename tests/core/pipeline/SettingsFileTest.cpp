#include "pipeline/SettingsFile.h"

#include "pipeline/IniFolder.h"
#include "pipeline/OptionTable.h"
#include "pipeline/Preferences.h"
#include "support/Golden.h"
#include "support/MessageRecorder.h"
#include "support/PlatformGuard.h"
#include "support/TemporaryFolder.h"

#include <fstream>

namespace tq4x
{
namespace
{

namespace fs = std::filesystem;
using test::MessageRecorder;
using test::ReadWholeFile;
using test::TemporaryFolder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const char* Header = "# TQ4X_ForPennonExport settings\n";
constexpr const char* RootMissing = "W Environment variable TQ4X_FORPENNON_ROOT is not found.\n"
                                    "Latest export option have not been saved.\n";

void Fill(const fs::path& path, const std::string& text)
{
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

/// Every test begins with no kept version and no live record, with a fixed moment and a tool root of its own.
class SettingsFile : public testing::Test
{
protected:
    SettingsFile()
    {
        KeptGeneratorVersion().clear();
        DestroyOptions();
        m_guard.FixUserAndTime();
        m_guard.SetEnvironment({{"TQ4X_FORPENNON_ROOT", Path("root")}});
    }

    ~SettingsFile() override { DestroyOptions(); }

    std::string Path(const std::string& name) const { return (m_folder / name).string(); }

    std::string IniPath(const std::string& name) const
    {
        return Path("root/tools/DccPlugin/softimage/ini/" + name);
    }

    test::PlatformGuard& Guard() { return m_guard; }

private:
    TemporaryFolder m_folder;
    test::PlatformGuard m_guard;
    MessageRecorder m_recorder;
};

ExportOptions Read(const std::string& lines, ExportOptions options = {})
{
    EXPECT_TRUE(ReadSettingsText(Header + lines, options)) << lines;
    return options;
}

TEST_F(SettingsFile, TextOfTheDefaults)
{
    test::ExpectGolden(SettingsText({}), "core/pipeline/defaults.q3es");
}

TEST_F(SettingsFile, TextOfOtherValues)
{
    ExportOptions options;
    options.OutputFileName = "house";
    options.OutputFolder = "C:\\out \"x\"";
    options.ExportTarget = 1;
    options.UseBrellStudio = true;
    options.AlwaysOverwrite = true;
    options.Magnify = 3.4028235e38f;
    options.FrameRange = 2;
    options.StartFrame = -5;
    options.CompressNode = 3;
    options.CompressMaterial = true;
    options.QuantizePos = 3;
    options.QuantizeNrm = 2;
    options.AdjustSkinning = 1;
    options.MeshVisibilityMode = 7;
    options.FramePrecision = 0.05f;
    options.ToleranceScale = 1.0f / 3.0f;
    const std::string text = SettingsText(options);
    for (const char* line :
         {"\nExportTarget=\"Selection\"\n", "\nOutputFileName=\"house\"\n", "\nOutputMode=\"BrellStudio\"\n",
          "\nOutputFolder=\"C:\\out \"x\"\"\n",
          "\nMagnify=\"340282346638528859811704183484516925440.000000\"\n", "\nFrameRange=\"Range\"\n",
          "\nStartFrame=\"-5\"\n", "\nComressNode=\"UniteCompressible\"\n", "\nComressMaterial=\"true\"\n",
          "\nQuantizePos=\"Byte\"\n", "\nAdjustSkinning=\"RigidSkinning\"\n",
          "\nFramePrecision=\"0.050000\"\n", "\nToleranceScale=\"0.333333\"\n"})
        EXPECT_THAT(text, HasSubstr(line));
    for (const char* absent : {"QuantizeNrm", "MeshVisibilityMode", "AlwaysOverwrite", "BakeAll"})
        EXPECT_THAT(text, Not(HasSubstr(absent)));
}

TEST_F(SettingsFile, HoldsEveryKeyOnce)
{
    const std::string text = SettingsText({});
    for (const OptionRow& row : OptionTable()) {
        const std::string line = "\n" + std::string(row.SettingsKey) + "=\"";
        if (!row.SettingsKey.empty()) {
            EXPECT_NE(text.find(line), std::string::npos) << row.SettingsKey;
            EXPECT_EQ(text.find(line), text.rfind(line)) << row.SettingsKey;
        }
    }
}

TEST_F(SettingsFile, WhatIsWrittenIsReadBack)
{
    ExportOptions* options = CreateOptions();
    options->OutputFileName = "house";
    options->OutputFolder = "/out/a b";
    options->Magnify = 0.375f;
    options->ConvertToModel = true;
    options->OutputQcam = true;
    options->QuantizeTex = 3;
    options->ToleranceColor = 0.5f;
    EXPECT_TRUE(WriteSettingsFile(Path("a.q3es")));
    ExportOptions read;
    EXPECT_TRUE(ReadSettingsFile(Path("a.q3es"), read));
    EXPECT_EQ(read, *options);
    EXPECT_TRUE(ReadSettingsFile(Path("a.q3es"), read));
    EXPECT_EQ(read, *options);
    EXPECT_EQ(SettingsText(read), ReadWholeFile(Path("a.q3es")));
    EXPECT_THAT(MessageRecorder::Messages(), IsEmpty());
}

TEST_F(SettingsFile, Lines)
{
    const struct
    {
        const char* Name;
        std::string Lines;
        float Magnify;
    } cases[] = {
        {"quoted", "Magnify=\"2\"\n", 2.0f},
        {"no line end", "Magnify=\"2\"", 2.0f},
        {"no quotes", "Magnify=2\n", 2.0f},
        {"one quote", "Magnify=\"2\n", 2.0f},
        {"two quotes at an end", "Magnify=\"2\"\"\n", 2.0f},
        {"CR LF", "Magnify=\"2\"\r\nStartFrame=\"5\"\r\n", 2.0f},
        {"first value wins", "Magnify=\"2\"\nMagnify=\"3\"\n", 2.0f},
        {"second equals sign drops the line", "Magnify=\"2=3\"\nMagnify=\"4\"\n", 4.0f},
        {"equals sign at the end drops the line", "Magnify=2=\n", 1.0f},
        {"empty value", "Magnify=\n", 0.0f},
        {"empty quotes", "Magnify=\"\"\n", 0.0f},
        {"no equals sign", "Magnify\n", 1.0f},
        {"comment", "#Magnify=\"2\"\n", 1.0f},
        {"blank before the comment sign", " #\nMagnify=\"2\"\n", 2.0f},
        {"blank before the key", " Magnify=\"2\"\n", 1.0f},
        {"blank behind the key", "Magnify =\"2\"\n", 1.0f},
        {"other case", "magnify=\"2\"\n", 1.0f},
        {"no key", "=\"2\"\n", 1.0f},
        {"malformed number", "Magnify=\"big\"\n", 0.0f},
        {"decimal comma", "Magnify=\"2,5\"\n", 2.0f},
        {"unknown keys and empty lines", "\n\nUnknown=\"1\"\nMagnify=\"2\"\n\n", 2.0f},
        {"command keys are not known here", "mgf=\"2\"\n", 1.0f},
    };

    for (const auto& row : cases)
        EXPECT_EQ(Read(row.Lines).Magnify, row.Magnify) << row.Name;
}

TEST_F(SettingsFile, WordsAndBooleans)
{
    ExportOptions options;
    options.CompressNode = 4;
    EXPECT_EQ(Read("ComressNode=\"UniteBelow\"\n", options).CompressNode, 0u);
    EXPECT_EQ(Read("ComressNode=\"uniteall\"\n", options).CompressNode, 4u);
    EXPECT_EQ(Read("ComressNode=\"2\"\n", options).CompressNode, 4u);
    EXPECT_EQ(Read("CompressNode=\"None\"\n", options).CompressNode, 4u);
    EXPECT_TRUE(Read("ComressMaterial=\"true\"\n").CompressMaterial);
    EXPECT_FALSE(Read("ComressMaterial=\"1\"\n").CompressMaterial);
    EXPECT_FALSE(Read("LoopAnim=\"True\"\n").LoopAnim);
    EXPECT_TRUE(Read("OutputMode=\"BrellStudio\"\n").UseBrellStudio);
    EXPECT_FALSE(Read("AlwaysOverwrite=\"true\"\n").AlwaysOverwrite);
    EXPECT_EQ(Read("OutputFolder=\"a=b\"\n").OutputFolder, "");
    EXPECT_EQ(Read("OutputFolder=\"C:\\a \"b\"\"\n").OutputFolder, "C:\\a \"b\"");
}

TEST_F(SettingsFile, WrongHeaders)
{
    for (const std::string text :
         {"", "\n", "Magnify=\"2\"\n", "# TQ4X_ForPennonExport settings \n",
          "\xEF\xBB\xBF# TQ4X_ForPennonExport settings\n", "\n# TQ4X_ForPennonExport settings\n",
          "# tq4x_forpennonexport settings\n"}) {
        ExportOptions options;
        EXPECT_FALSE(ReadSettingsText(text + "\nMagnify=\"2\"\n", options)) << text;
        EXPECT_EQ(options, ExportOptions{}) << text;
    }
    ExportOptions options;
    EXPECT_TRUE(ReadSettingsText("# TQ4X_ForPennonExport settings\r\n", options));
    EXPECT_TRUE(ReadSettingsText("# TQ4X_ForPennonExport settings", options));
}

TEST_F(SettingsFile, FilesThatCannotBeReadAreReportedWithTheirPath)
{
    Fill(Path("header.q3es"), "x\nMagnify=\"2\"\n");
    Fill(Path("empty.q3es"), "");
    fs::create_directory(Path("folder.q3es"));
    Fill(Path("huge.q3es"), Header);
    fs::resize_file(Path("huge.q3es"), std::uintmax_t{1} << 30);
    for (const char* name : {"header.q3es", "empty.q3es", "folder.q3es", "huge.q3es", "missing.q3es"}) {
        MessageRecorder::Messages().clear();
        ExportOptions options;
        EXPECT_FALSE(ReadSettingsFile(Path(name), options)) << name;
        EXPECT_EQ(options, ExportOptions{}) << name;
        EXPECT_THAT(MessageRecorder::Messages(), ElementsAre("E Internal Error(" + Path(name) + ")"));
    }
}

TEST_F(SettingsFile, LongFilesAreReadInLinearTime)
{
    std::string text = std::string(15u << 20, 'x') + "\n";
    for (int i = 0; i < 50000; ++i)
        text += "Magnify=\"2\"\nk" + std::to_string(i) + "=1\n";
    EXPECT_EQ(Read(text).Magnify, 2.0f);
}

TEST_F(SettingsFile, ConvertToModelNeedsANewEnoughVersion)
{
    const struct
    {
        const char* Version;
        bool IsApplied;
    } cases[] = {
        {"0.5.3", true}, {"0.6.0", true},      {"0.5.0.2", true},   {"1", true}, {"0.5.1", true},
        {"0.6", true},   {"0.5.0", false},     {"0.5", false},      {"", false}, {"0.5.0.1", false},
        {"x.y", false},  {"0.0.0.0.9", false}, {"-1.-1.-1", false},
    };

    for (const auto& row : cases) {
        const std::string version = "GeneratorVersion=\"" + std::string(row.Version) + "\"\n";
        EXPECT_EQ(Read(version + "ConvertToModel=\"true\"\n").ConvertToModel, row.IsApplied) << row.Version;
        EXPECT_EQ(KeptGeneratorVersion(), row.Version);
    }
}

TEST_F(SettingsFile, AFileWithoutVersionIsJudgedByTheFormerFile)
{
    const std::string line = "ConvertToModel=\"true\"\n";
    EXPECT_FALSE(Read(line).ConvertToModel);
    Read("GeneratorVersion=\"0.5.3\"\n");
    EXPECT_TRUE(Read(line).ConvertToModel);
    Read("GeneratorVersion=\"0.5.0\"\n");
    EXPECT_FALSE(Read(line).ConvertToModel);
}

TEST_F(SettingsFile, ValuesAreAppliedBehindEachLine)
{
    const std::string line = "ConvertToModel=\"true\"\n";
    KeptGeneratorVersion() = "0.5.3";
    EXPECT_TRUE(
        Read(line + "GeneratorVersion=\"0.5.0\"\n").ConvertToModel); // taken over before the version stood
    EXPECT_FALSE(Read("GeneratorVersion=\"0.5.0\"\n" + line).ConvertToModel);
    EXPECT_TRUE(Read(line + "GeneratorVersion=\"0.5.3\"\n").ConvertToModel);
}

TEST_F(SettingsFile, EachOptionSurvivesTheFile)
{
    ExportOptions options;
    options.OutputFileName = "n";
    options.ExportTarget = options.FrameRange = options.AdjustSkinning = options.MeshVisibilityMode = 1;
    options.CompressNode = options.QuantizePos = options.QuantizeNrm = options.QuantizeTex = 3;
    for (const OptionRow& row : OptionTable()) {
        if (const auto* flag = std::get_if<bool ExportOptions::*>(&row.Field);
            flag && !row.SettingsKey.empty())
            options.*(*flag) = !(options.*(*flag));
        if (const auto* number = std::get_if<float ExportOptions::*>(&row.Field))
            options.*(*number) = 0.625f;
        if (const auto* number = std::get_if<std::int32_t ExportOptions::*>(&row.Field))
            options.*(*number) = -3;
    }
    ExportOptions read;
    EXPECT_TRUE(ReadSettingsText(SettingsText(options), read));
    EXPECT_EQ(read, options);
}

TEST_F(SettingsFile, KeysThatATextGives)
{
    const std::string text =
        std::string(Header) + "GeneratorVersion=\"0.5.3\"\nMagnify=\"2\"\nMagnify=\"3\"\nx=\"1\"\n";
    EXPECT_THAT(ReadSettingsKeys(text),
                ElementsAre(testing::Pair("GeneratorVersion", "0.5.3"), testing::Pair("Magnify", "2")));
    EXPECT_THAT(ReadSettingsKeys("Magnify=\"2\"\n"), IsEmpty());
    EXPECT_EQ(KeptGeneratorVersion(), "");
}

TEST_F(SettingsFile, WritingNeedsALiveRecord)
{
    EXPECT_FALSE(WriteSettingsFile(Path("a.q3es")));
    EXPECT_FALSE(fs::exists(Path("a.q3es")));
    EXPECT_THAT(MessageRecorder::Messages(), ElementsAre("E Internal Error(" + Path("a.q3es") + ")"));
}

TEST_F(SettingsFile, AFileThatCannotBeOpenedCountsAsWritten)
{
    ASSERT_NE(CreateOptions(), nullptr);
    EXPECT_TRUE(WriteSettingsFile(Path("missing/a.q3es")));
    Fill(Path("readOnly.q3es"), "old");
    fs::permissions(Path("readOnly.q3es"), fs::perms::owner_read);
    EXPECT_TRUE(WriteSettingsFile(Path("readOnly.q3es")));
    EXPECT_EQ(ReadWholeFile(Path("readOnly.q3es")), "old");
    EXPECT_THAT(MessageRecorder::Messages(), IsEmpty());
}

TEST_F(SettingsFile, DateFollowsTheSystemsTimeFormat)
{
    CurrentPlatform().TimeText = [](const LocalTime&) { return std::string("8:07 AM"); };
    CurrentPlatform().Now = [] { return LocalTime{987, 4, 9, 8, 7, 6}; };
    EXPECT_THAT(SettingsText({}), HasSubstr("\nDate=\"0987-04-09T8:07 AM\"\n"));
}

TEST_F(SettingsFile, LastExport)
{
    CreateOptions()->Magnify = 2.0f;
    EXPECT_TRUE(SaveLastExport());
    ExportOptions read;
    EXPECT_TRUE(LoadLastExport(read));
    EXPECT_EQ(read.Magnify, 2.0f);
    EXPECT_TRUE(fs::exists(IniPath("last_export_options_for_pennon.q3es")));
    EXPECT_THAT(MessageRecorder::Messages(), IsEmpty());
}

TEST_F(SettingsFile, LastExportWithoutRoot)
{
    ASSERT_NE(CreateOptions(), nullptr);
    Guard().SetEnvironment({});
    ExportOptions read;
    EXPECT_TRUE(SaveLastExport());
    EXPECT_FALSE(LoadLastExport(read));
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre(RootMissing, "W Environment variable TQ4X_FORPENNON_ROOT was not found\n"
                                         "Latest export option have not been saved\n"));
}

TEST_F(SettingsFile, LastExportThatIsMissingOrDamaged)
{
    ExportOptions read;
    EXPECT_FALSE(LoadLastExport(read));
    EXPECT_THAT(MessageRecorder::Messages(), ElementsAre("W Last export option file is not found.\n"));
    Fill(IniPath("last_export_options_for_pennon.q3es"), "damaged");
    MessageRecorder::Messages().clear();
    EXPECT_FALSE(LoadLastExport(read));
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre(testing::AllOf(testing::StartsWith("E Internal Error("),
                                           testing::EndsWith("ini\\last_export_options_for_pennon.q3es)"))));
}

TEST_F(SettingsFile, LastExportThatCannotBeWrittenIsSilent)
{
    ASSERT_NE(CreateOptions(), nullptr);
    fs::create_directories(IniPath("last_export_options_for_pennon.q3es"));
    EXPECT_TRUE(SaveLastExport());
    EXPECT_THAT(MessageRecorder::Messages(), IsEmpty());
}

TEST_F(SettingsFile, LastExportWhereTheFolderCannotBeMade)
{
    ASSERT_NE(CreateOptions(), nullptr);
    Fill(Path("root"), "a file where the root should be");
    EXPECT_TRUE(SaveLastExport());
    EXPECT_THAT(MessageRecorder::Messages(), ElementsAre("E Can't create folder(" + Path("root") +
                                                         "\\tools\\DccPlugin\\softimage\\ini\\)."));
}

TEST(IniFolder, PiecesAreJoinedWithOneSeparator)
{
    const struct
    {
        std::string Root;
        std::string Folder;
    } cases[] = {
        {"C:\\tools root", "C:\\tools root\\tools\\DccPlugin\\softimage\\ini\\"},
        {"C:\\a\\", "C:\\a\\tools\\DccPlugin\\softimage\\ini\\"},
        {"C:\\a\\\\b\\\\", "C:\\a\\b\\tools\\DccPlugin\\softimage\\ini\\"},
        {"\\\\server\\a", "\\\\server\\a\\tools\\DccPlugin\\softimage\\ini\\"},
        {"/a/", "/a/\\tools\\DccPlugin\\softimage\\ini\\"},
        {"relative", "relative\\tools\\DccPlugin\\softimage\\ini\\"},
    };

    test::PlatformGuard guard;
    for (const auto& row : cases) {
        guard.SetEnvironment({{"TQ4X_FORPENNON_ROOT", row.Root}});
        EXPECT_EQ(IniFolder(), row.Folder);
    }
    guard.SetEnvironment({});
    EXPECT_EQ(IniFolder(), std::nullopt);
    SetSystemCodePage(CodePageShiftJis);
    guard.SetEnvironment({{"TQ4X_FORPENNON_ROOT", "C:\\\x95\x5C"}});
    EXPECT_EQ(IniFolder(), "C:\\\x95\x5C\\tools\\DccPlugin\\softimage\\ini\\");
}

TEST_F(SettingsFile, Preferences)
{
    EXPECT_EQ(CurrentPreferences(), (PluginPreferences{true, "", ""}));
    WritePreferences({false, "C:\\load", "/save/a b"});
    test::ExpectGolden(ReadWholeFile(IniPath("plugin_preference_for_pennon.txt")),
                       "core/pipeline/plugin_preference_for_pennon.txt");
    PluginPreferences read;
    ReadPreferences(read);
    EXPECT_EQ(read, (PluginPreferences{true, "C:\\load", "/save/a b"})); // the first line is never read
    EXPECT_THAT(MessageRecorder::Messages(), IsEmpty());
}

TEST_F(SettingsFile, PreferenceLines)
{
    Fill(IniPath("plugin_preference_for_pennon.txt"),
         "OptionDefaultLoadDir=\"first\"\r\n#OptionDefaultLoadDir=\"comment\"\r\nOptionDefaultLoadDir=\"a="
         "b\"\r\n"
         "OptionDefaultLoadDir=\"second\"\r\nOptionDefaultLoadDir=\"third\"\r\nAutoSaveExportOptions="
         "\"false\"\r\n"
         "Unknown=\"x\"\r\n");
    PluginPreferences read = {true, "", "kept"};
    ReadPreferences(read);
    EXPECT_EQ(read, (PluginPreferences{false, "second", "kept"}));
}

TEST_F(SettingsFile, MissingPreferences)
{
    PluginPreferences read = {false, "a", "b"};
    ReadPreferences(read);
    Guard().SetEnvironment({});
    ReadPreferences(read);
    WritePreferences(read);
    EXPECT_EQ(read, (PluginPreferences{false, "a", "b"}));
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre("W Export Preference File is not found.\n",
                            "W Export Preference File is not found.\n", RootMissing));
}

TEST_F(SettingsFile, PreferencesThatCannotBeWritten)
{
    fs::create_directories(IniPath("plugin_preference_for_pennon.txt"));
    WritePreferences({});
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre("E Can't open file(" + Path("root") +
                            "\\tools\\DccPlugin\\softimage\\ini\\plugin_preference_for_pennon.txt)"));
}

TEST_F(SettingsFile, PreferencesWhoseFolderCannotBeMade)
{
    Fill(Path("root"), "a file where the root should be");
    WritePreferences({});
    const std::string folder = Path("root") + "\\tools\\DccPlugin\\softimage\\ini\\";
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre("E Can't create folder(" + folder + ").",
                            "E Can't open file(" + folder + "plugin_preference_for_pennon.txt)"));
}

} // namespace
} // namespace tq4x
