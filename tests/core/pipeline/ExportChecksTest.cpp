#include "pipeline/ExportChecks.h"

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
using test::TemporaryFolder;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(ExportChecks, LegalTexts)
{
    const struct
    {
        std::string Text;
        bool IsName;
        bool IsFolder;
    } cases[] = {
        {"house", true, true},
        {"", true, true},
        {"a b.c-d_e(1)'&;$%", true, true},
        {"\x7F\x80\xFF\xC3\xA4", true, true},
        {"a:b", false, true},
        {"a/b", false, true},
        {"a\\b", false, true},
        {"a*b", false, false},
        {"a?b", false, false},
        {"a<b", false, false},
        {"a>b", false, false},
        {"a|b", false, false},
        {"a\"b", false, false},
        {"a\tb", false, false},
        {"a\x1F", false, false},
        {std::string("a\0b", 3), false, false},
        {"a ", true, true},
    };

    for (const auto& row : cases) {
        EXPECT_EQ(IsFileNameLegal(row.Text), row.IsName) << row.Text;
        EXPECT_EQ(IsFolderLegal(row.Text), row.IsFolder) << row.Text;
    }
}

TEST(ExportChecks, TrailBytesAreNotForbidden)
{
    const test::PlatformGuard guard;
    SetSystemCodePage(CodePageShiftJis);
    EXPECT_TRUE(IsFileNameLegal("\x95\x5C\x83\x7C")); // look like a backslash and a bar
    EXPECT_FALSE(IsFileNameLegal("\x95\x5C|"));
}

TEST(ExportChecks, LeadBytesHideNothingThatIsNoTrailByte)
{
    const test::PlatformGuard guard;
    SetSystemCodePage(CodePageShiftJis);
    for (const char* text : {"\x95/", "\x95:", "\x95*", "\x95?", "\x95<", "\x95>", "\x95\"", "\x95\n"})
        EXPECT_FALSE(IsFileNameLegal(text)) << text;
    for (const char* text : {"\x95*", "\x95?", "\x95<", "\x95>", "\x95\"", "\x95\n"})
        EXPECT_FALSE(IsFolderLegal(text)) << text;
    EXPECT_TRUE(IsFolderLegal("\x95/"));
    EXPECT_TRUE(IsFileNameLegal("\x95"));
}

/// A folder for the output, one for temporary files, and options that pass all tests.
class CheckedExport : public testing::Test
{
protected:
    CheckedExport()
    {
        m_guard.SetEnvironment({{"TEMP", m_folder.Path().string() + "/temporary"}});
        fs::create_directory(m_folder / "temporary");
        Options.OutputFileName = "house";
        Options.OutputFolder = m_folder.Path().string() + "/out/models";
    }

    bool Check()
    {
        MessageRecorder::Messages().clear();
        return CheckOptions(Options);
    }

    const fs::path& Root() const { return m_folder.Path(); }

    test::PlatformGuard& Guard() { return m_guard; }

    ExportOptions Options;

private:
    TemporaryFolder m_folder;
    test::PlatformGuard m_guard;
    MessageRecorder m_recorder;
};

TEST_F(CheckedExport, MakesTheFolder)
{
    EXPECT_TRUE(Check());
    EXPECT_TRUE(fs::is_directory(Root() / "out/models"));
    EXPECT_TRUE(Check());
    EXPECT_THAT(MessageRecorder::Messages(), IsEmpty());
}

TEST_F(CheckedExport, EachOutputKindIsEnough)
{
    for (bool ExportOptions::*kind :
         {&ExportOptions::OutputQmdl, &ExportOptions::OutputQtex, &ExportOptions::OutputQskla,
          &ExportOptions::OutputQmata, &ExportOptions::OutputQlgt, &ExportOptions::OutputQcam,
          &ExportOptions::OutputQmdla, &ExportOptions::OutputQenv}) {
        Options.OutputQmdl = Options.OutputQtex = false;
        Options.*kind = true;
        EXPECT_TRUE(Check());
        Options.*kind = false;
    }
    EXPECT_FALSE(Check());
    EXPECT_THAT(MessageRecorder::Messages(), ElementsAre("E No output file"));
}

TEST_F(CheckedExport, Names)
{
    for (const char* name : {"", "a/b", "a\\b", "a:b", "a\"b", "a\nb"}) {
        Options.OutputFileName = name;
        EXPECT_FALSE(Check()) << name;
        EXPECT_THAT(MessageRecorder::Messages(), ElementsAre("E Output File Name is wrong")) << name;
    }
}

TEST_F(CheckedExport, BadFoldersAreNotMade)
{
    for (const std::string& folder : {std::string(), (Root() / "a*b").string(), (Root() / "a\nb").string()}) {
        Options.OutputFolder = folder;
        EXPECT_FALSE(Check()) << folder;
        EXPECT_THAT(MessageRecorder::Messages(), ElementsAre("E Output Folder is wrong")) << folder;
        EXPECT_FALSE(!folder.empty() && fs::exists(folder)) << folder;
    }
}

TEST_F(CheckedExport, AFolderThatCannotBeMade)
{
    std::ofstream(Root() / "file") << "";
    Options.OutputFolder = (Root() / "file/x").string();
    EXPECT_FALSE(Check());
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre("E Can't create folder(" + Options.OutputFolder + ")."));
}

TEST_F(CheckedExport, Registers)
{
    const struct
    {
        std::int32_t Reserved;
        bool NonUniformScale;
        bool IsGood;
    } cases[] = {
        {0, false, true},          {57, false, true}, {58, false, false},
        {55, false, true},         {55, true, false}, {54, true, true},
        {-1, false, false},        {-1, true, false}, {-2147483647 - 1, false, false},
        {2147483647, true, false},
    };

    for (const auto& row : cases) {
        Options.MaxReservedUniformRegisters = row.Reserved;
        Options.NonUniformScale = row.NonUniformScale;
        EXPECT_EQ(Check(), row.IsGood) << row.Reserved;
        EXPECT_EQ(MessageRecorder::Messages().size(), row.IsGood ? 0u : 1u);
        if (!row.IsGood) {
            EXPECT_EQ(MessageRecorder::Messages()[0], "E Max Reserved Uniform Registers is wrong");
        }
    }
}

TEST_F(CheckedExport, TheFileToMergeWithIsCopied)
{
    std::ofstream(Root() / "old.qmdl") << "model";
    std::ofstream(Root() / "temporary/TQ4X_Softimage_Optimize_old.qmdl") << "of an earlier export, longer";
    Options.MergeQmdl = true;
    Options.MergeQmdlPath = Root().string() + "\\old.qmdl";
    EXPECT_TRUE(Check());
    EXPECT_EQ(test::ReadWholeFile(Root() / "temporary/TQ4X_Softimage_Optimize_old.qmdl"), "model");
    EXPECT_EQ(MergeTemporaryPath(Options.MergeQmdlPath, MergeCopyPrefix),
              Root().string() + "/temporary\\TQ4X_Softimage_Optimize_old.qmdl");
}

TEST_F(CheckedExport, WrongPathsToMergeWith)
{
    const std::string missing = (Root() / "missing.qmdl").string();

    const struct
    {
        std::string Path;
        std::string Message;
    } cases[] = {
        {"", "E Path of qmdl file to merge is wrong"},
        {"a*b.qmdl", "E Path of qmdl file to merge is wrong"},
        {"a\nb.qmdl", "E Path of qmdl file to merge is wrong"},
        {missing, "E Path of qmdl file to merge is wrong(" + missing + ")"},
        {Root().string(), "E Path of qmdl file to merge is wrong(" + Root().string() + ")"},
    };

    for (const auto& row : cases) {
        Options.MergeQmdlPath = row.Path;
        Options.MergeQmdl = true;
        EXPECT_FALSE(Check()) << row.Path;
        EXPECT_THAT(MessageRecorder::Messages(), ElementsAre(row.Message));
        Options.MergeQmdl = false;
        EXPECT_TRUE(Check()) << row.Path;
    }
}

TEST_F(CheckedExport, NoFolderForTemporaryFiles)
{
    std::ofstream(Root() / "old.qmdl") << "model";
    Options.MergeQmdl = true;
    Options.MergeQmdlPath = (Root() / "old.qmdl").string();
    Guard().SetEnvironment({});
    EXPECT_FALSE(Check());
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre("E Path of qmdl file to merge is wrong(" + Options.MergeQmdlPath + ")"));
}

TEST_F(CheckedExport, AllFaultsAreToldAtOnce)
{
    Options = {};
    Options.OutputQmdl = Options.OutputQtex = false;
    Options.MergeQmdl = true;
    Options.MaxReservedUniformRegisters = 60;
    EXPECT_FALSE(Check());
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre("E No output file", "E Output File Name is wrong", "E Output Folder is wrong",
                            "E Path of qmdl file to merge is wrong",
                            "E Max Reserved Uniform Registers is wrong"));
}

TEST(ExportChecks, OverwriteCandidatesInTheirOrderWithLightsAndCamerasCrossed)
{
    ExportOptions options;
    options.OutputFileName = "a.b";
    options.OutputFolder = "f/";
    EXPECT_THAT(OverwriteCandidates(options), ElementsAre("f/a.b.qmdl"));
    options.OutputQcam = true;
    EXPECT_THAT(OverwriteCandidates(options), ElementsAre("f/a.b.qmdl", "f/a.b.qlgt"));
    options.OutputQcam = false;
    options.OutputQlgt = true;
    EXPECT_THAT(OverwriteCandidates(options), ElementsAre("f/a.b.qmdl", "f/a.b.qcam"));
    options.OutputQcam = options.OutputQskla = options.OutputQmata = options.OutputQmdla =
        options.OutputQenv = true;
    EXPECT_THAT(OverwriteCandidates(options),
                ElementsAre("f/a.b.qmdl", "f/a.b.qskla", "f/a.b.qmata", "f/a.b.qcam", "f/a.b.qlgt",
                            "f/a.b.qmdla", "f/a.b.qenv"));
}

TEST(ExportChecks, AsksOnlyForExistingFilesOfChosenKinds)
{
    const TemporaryFolder folder;
    ExportOptions options;
    options.OutputFileName = "a";
    options.OutputFolder = folder.Path().string();
    EXPECT_FALSE(MustAskToOverwrite(options));
    fs::create_directory(folder / "Textures");
    for (const char* other : {"a.qskla", "a.qtex", "b.qmdl", "a", "Textures/a.qtex"})
        std::ofstream(folder / other) << "";
    EXPECT_FALSE(MustAskToOverwrite(options));
    std::ofstream(folder / "a.qmdl") << "";
    EXPECT_TRUE(MustAskToOverwrite(options));
    options.AlwaysOverwrite = true;
    EXPECT_FALSE(MustAskToOverwrite(options));
}

TEST(ExportChecks, OverwriteQuestion)
{
    ExportOptions options;
    options.OutputFileName = "house";
    options.OutputFolder = "C:\\out\\";
    EXPECT_EQ(OverwriteQuestion(options), "\"C:\\out\\house.*\" already exists.\nOverwrite?");
    EXPECT_EQ(OverwriteTitle, "TQ4X_ForPennonExport");
}

} // namespace
} // namespace tq4x
