#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "MarkedScene.h"
#include "pipeline/SettingsFile.h"

namespace tq4x::cli::test
{
namespace
{

using testing::HasSubstr;
using testing::Not;

using SettingsCommandTest = ProgramTest;
using DialogCommandTest = MarkedSceneTest;

/// The line of a setting, its blanks made one.
std::string LineOf(const std::string& out, const std::string& key)
{
    std::istringstream lines(out);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(key + "=")) {
            const std::size_t gap = line.find("  ");
            return line.substr(0, gap) + " " + line.substr(line.find_last_of(' ') + 1);
        }
    }
    return {};
}

TEST_F(SettingsCommandTest, TellsTheDefaults)
{
    const Outcome outcome = RunInside({"settings"});
    EXPECT_EQ(outcome.Code, Done) << outcome.Err;
    EXPECT_EQ(LineOf(outcome.Out, "OutputQmdl"), "OutputQmdl=\"true\" default");
    EXPECT_EQ(LineOf(outcome.Out, "ComressNode"), "ComressNode=\"None\" default");
    EXPECT_EQ(LineOf(outcome.Out, "EndFrame"), "EndFrame=\"9999\" default");
    EXPECT_EQ(std::ranges::count(outcome.Out, '\n'), 44) << "all that the file keeps";
    EXPECT_THAT(outcome.Out, Not(HasSubstr("AlwaysOverwrite")));
}

TEST_F(SettingsCommandTest, TellsWhereEachValueComesFrom)
{
    ExportOptions options;
    options.CompressNode = 3;
    options.Magnify = 2.5f;
    options.OutputFileName = "hero";
    Write("some.q3es", SettingsText(options));
    const Outcome outcome =
        RunInside({"settings", Path("some.q3es"), "--set", "mgf:0.5", "--set", "OutputQskla:true"});
    EXPECT_EQ(outcome.Code, Done) << outcome.Err;
    EXPECT_EQ(LineOf(outcome.Out, "ComressNode"), "ComressNode=\"UniteCompressible\" file");
    EXPECT_EQ(LineOf(outcome.Out, "OutputFileName"), "OutputFileName=\"hero\" file");
    EXPECT_EQ(LineOf(outcome.Out, "Magnify"), "Magnify=\"0.500000\" flag");
    EXPECT_EQ(LineOf(outcome.Out, "OutputQskla"), "OutputQskla=\"true\" flag");
    Write("short.q3es", "# TQ4X_ForPennonExport settings\nLoopAnim=\"false\"\n");
    const Outcome partial = RunInside({"settings", Path("short.q3es")});
    EXPECT_EQ(LineOf(partial.Out, "LoopAnim"), "LoopAnim=\"false\" file");
    EXPECT_EQ(LineOf(partial.Out, "Magnify"), "Magnify=\"1.000000\" default");
}

TEST_F(SettingsCommandTest, WhatTheFileSaysInVainIsNotFromIt)
{
    Write("old.q3es", "# TQ4X_ForPennonExport settings\nGeneratorVersion=\"0.5.0\"\n"
                      "ConvertToModel=\"true\"\nComressNode=\"unite\"\nComressNode=\"Cull\"\n"
                      "QuantizePos=\"Float\"\nMagnify=\"a=b\"\nStartFrame=\"x\"\n");
    const Outcome outcome = RunInside({"settings", Path("old.q3es")});
    EXPECT_EQ(LineOf(outcome.Out, "ConvertToModel"), "ConvertToModel=\"false\" default") << "too old";
    EXPECT_EQ(LineOf(outcome.Out, "ComressNode"), "ComressNode=\"None\" default") << "the first line counts";
    EXPECT_EQ(LineOf(outcome.Out, "QuantizePos"), "QuantizePos=\"Float\" file");
    EXPECT_EQ(LineOf(outcome.Out, "Magnify"), "Magnify=\"1.000000\" default");
    EXPECT_EQ(LineOf(outcome.Out, "StartFrame"), "StartFrame=\"0\" file") << "no number counts as 0";
}

TEST_F(SettingsCommandTest, WritesAFileThatReadsBackEqual)
{
    EXPECT_EQ(RunInside({"settings", "--set", "ComressNode:4", "--write", Path("new.q3es")}).Code, Done);
    ExportOptions options;
    EXPECT_TRUE(ReadSettingsText(Read("new.q3es"), options));
    ExportOptions expected;
    expected.CompressNode = 4;
    EXPECT_EQ(options, expected);
}

TEST_F(SettingsCommandTest, ValuesThatAFileLosesAreShownAndTold)
{
    const Outcome shown = RunInside({"settings", "--set", "MergeQmdlPath:/a=b.qmdl"});
    EXPECT_EQ(LineOf(shown.Out, "MergeQmdlPath"), "MergeQmdlPath=\"/a=b.qmdl\" flag");
    EXPECT_EQ(shown.Err, "");
    const Outcome written =
        RunInside({"settings", "--set", "MergeQmdlPath:/a=b.qmdl", "--write", Path("new.q3es")});
    EXPECT_EQ(written.Code, Done);
    EXPECT_EQ(written.Err,
              "warning: MergeQmdlPath: The value holds a \"=\"; its line is passed over when the "
              "file is read.\n");
    ExportOptions options;
    EXPECT_TRUE(ReadSettingsText(Read("new.q3es"), options));
    EXPECT_EQ(options.MergeQmdlPath, "");
}

TEST_F(SettingsCommandTest, RefusesWhatMakesNoSense)
{
    const Outcome unknown = RunInside({"settings", "--set", "Magnifi:2", "--write", Path("new.q3es")});
    EXPECT_EQ(unknown.Code, WrongUsage);
    EXPECT_THAT(unknown.Err, HasSubstr("\"Magnify\""));
    EXPECT_FALSE(std::filesystem::exists(Folder / "new.q3es"));
    EXPECT_EQ(RunInside({"settings", "--set", "Magnify:much"}).Code, WrongUsage);
    EXPECT_EQ(RunInside({"settings", Path("missing.q3es")}).Code, BadInput);
    Write("wrong.q3es", "settings\n");
    const Outcome wrong = RunInside({"settings", Path("wrong.q3es")});
    EXPECT_EQ(wrong.Code, BadInput);
    EXPECT_EQ(wrong.Err, "error: The file " + Path("wrong.q3es") + " is no settings file.\n");
    const Outcome unwritable = RunInside({"settings", "--write", Path("no/new.q3es")});
    EXPECT_EQ(unwritable.Code, BadOutput);
    EXPECT_EQ(unwritable.Err, "error: The file " + Path("no/new.q3es") + " can't be written.\n");
}

TEST_F(DialogCommandTest, ShowsTheDialogAsItOpens)
{
    const Outcome outcome = Run({"dialog", Path("marked.gltf")});
    EXPECT_EQ(outcome.Code, Done) << outcome.Err;
    EXPECT_THAT(outcome.Out, HasSubstr("Save/Load Export Settings\n  [Load]\n  [Save]\n"));
    EXPECT_THAT(outcome.Out, HasSubstr("\n  ExportTarget: All\n"));
    EXPECT_THAT(outcome.Out, HasSubstr("\n  Compress Node: None\n"));
    EXPECT_THAT(outcome.Out, HasSubstr("\n  End: 100  (disabled)\n"));
    EXPECT_THAT(outcome.Out, HasSubstr("\n[Export]\n[Apply]\n[Close]\n"));
}

TEST_F(DialogCommandTest, BeginsWithTheSettingsOfTheLastExport)
{
    EXPECT_EQ(Run({"export", Path("marked.gltf"), "-o", Path("out"), "-n", "hero", "--set",
                   "OutputQskla:true", "--set", "ComressNode:0"})
                  .Code,
              Done);
    const Outcome outcome = Run({"dialog", Path("marked.gltf")});
    EXPECT_THAT(outcome.Out, HasSubstr("\n  Output File Name: hero\n"));
    EXPECT_THAT(outcome.Out, HasSubstr("\n  Character Animation Data(.qskla): true\n"));
    EXPECT_THAT(outcome.Out, HasSubstr("\n  Frame Format: false\n"));
    EXPECT_EQ(Run({"dialog", Path("missing.gltf")}).Code, BadInput);
    EXPECT_EQ(RunInside({"dialog", Path("marked.gltf"), "--plugin", TQ4X_TINY_PLUGIN}).Err,
              "error: The plug-in has no export dialog.\n");
}

TEST_F(DialogCommandTest, LoadsAndSavesByTheFilesOfItsOptions)
{
    ExportOptions options;
    options.OutputFileName = "loaded";
    options.OutputQmdl = false;
    Write("some.q3es", SettingsText(options));
    const Outcome outcome =
        Run({"dialog", Path("marked.gltf"), "--load", Path("some.q3es"), "--save", Path("saved.q3es")});
    EXPECT_EQ(outcome.Code, Done) << outcome.Err;
    EXPECT_THAT(outcome.Out, HasSubstr("\n  Output File Name: loaded\n"));
    EXPECT_THAT(outcome.Out, HasSubstr("\n  Position: Float  (disabled)\n"));
    ExportOptions saved;
    EXPECT_TRUE(ReadSettingsText(Read("saved.q3es"), saved));
    options.ToleranceTexTranslate = options.ToleranceTexScale; // the dialog shows one for all three
    EXPECT_EQ(saved, options);
    const Outcome missing = Run({"dialog", Path("marked.gltf"), "--load", Path("missing.q3es")});
    EXPECT_EQ(missing.Code, BadInput);
    EXPECT_THAT(missing.Err, HasSubstr("error: Internal Error(" + Path("missing.q3es") +
                                       ")\nerror: The file " + Path("missing.q3es") + " does not exist.\n"));
    EXPECT_EQ(missing.Out, "");
    const Outcome wrong = Run({"dialog", Path("marked.gltf"), "--load", Path("marked.gltf")});
    EXPECT_EQ(wrong.Code, BadInput);
    EXPECT_THAT(wrong.Err, HasSubstr("error: The file " + Path("marked.gltf") + " is no settings file.\n"));
}

TEST_F(DialogCommandTest, TellsASettingsFileThatCantBeWritten)
{
    for (const std::string& target : {Path("no/new.q3es"), Path("."), Path("marked.gltf/new.q3es")}) {
        const Outcome outcome = Run({"dialog", Path("marked.gltf"), "--save", target});
        EXPECT_EQ(outcome.Code, BadOutput) << target;
        EXPECT_THAT(outcome.Err, HasSubstr("error: The file " + target + " can't be written.\n"));
        EXPECT_EQ(outcome.Out, "");
    }
}

TEST_F(DialogCommandTest, AsksForFilesOnATerminal)
{
    ExportOptions options;
    options.OutputFileName = "loaded";
    Write("some.q3es", SettingsText(options));
    const std::vector<std::string> words = {"dialog", Path("marked.gltf"), "--load",         "-", "--save",
                                            "-",      "--plugin",          TQ4X_WHOLE_PLUGIN};
    const Outcome outcome = RunInside(words, Path("some.q3es") + "\n" + Path("saved.q3es") + "\n", true);
    EXPECT_EQ(outcome.Code, Done) << outcome.Err;
    EXPECT_THAT(outcome.Err, HasSubstr("Load q3es file: Save q3es file: "));
    EXPECT_THAT(outcome.Out, HasSubstr("\n  Output File Name: loaded\n"));
    EXPECT_THAT(Read("saved.q3es"), HasSubstr("OutputFileName=\"loaded\""));

    const Outcome missing = RunInside(words, Path("missing.q3es") + "\n", true);
    EXPECT_EQ(missing.Code, BadInput);
    EXPECT_THAT(missing.Err, HasSubstr("Internal Error(" + Path("missing.q3es") + ")"));
}

TEST_F(DialogCommandTest, ChoosingNoFileChangesNothing)
{
    const std::string shown = Run({"dialog", Path("marked.gltf")}).Out;
    const Outcome outcome = RunInside(
        {"dialog", Path("marked.gltf"), "--load", "-", "--save", "-", "--plugin", TQ4X_WHOLE_PLUGIN}, "\n",
        true);
    EXPECT_EQ(outcome.Code, Done) << outcome.Err;
    EXPECT_EQ(outcome.Out, shown);
}

TEST_F(DialogCommandTest, WithoutATerminalFilesMustBeNamed)
{
    for (const char* option : {"--load", "--save"}) {
        const Outcome outcome = Run({"dialog", Path("marked.gltf"), option, "-"});
        EXPECT_EQ(outcome.Code, WrongUsage);
        EXPECT_EQ(outcome.Out, "");
        EXPECT_EQ(outcome.Err, "error: Nobody can be asked for a file; --load FILE.q3es and --save "
                               "FILE.q3es name one.\n");
    }
}

} // namespace
} // namespace tq4x::cli::test
