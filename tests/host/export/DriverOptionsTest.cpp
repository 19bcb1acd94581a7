// What single options make the driver do.

#include "pipeline/Platform.h"
#include "support/ExportRun.h"
#include "support/Golden.h"
#include "support/ToolInstallation.h"

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class DriverOptions : public testing::Test
{
protected:
    /// The texts that the progress bar shows one after the other.
    std::vector<std::string>& WatchProgress()
    {
        Scene.Host().Fill.Progress = [this](const XSI::Host::ProgressState& state) {
            const std::string text = state.StatusText;
            if (!text.empty() && (m_texts.empty() || m_texts.back() != text))
                m_texts.push_back(text);
            return false;
        };
        return m_texts;
    }

    std::string OptimizeScript() const
    {
        return ReadWholeFile(Tool.Root() / "tools/BrellStudio/DccTemporaryDaemon/Startup.py");
    }

    ToolInstallation Tool;
    SceneBuilder Scene;

private:
    std::vector<std::string> m_texts;
};

TEST_F(DriverOptions, FramesOfTheExport)
{
    const struct
    {
        const char* Name;
        std::vector<std::string> Options;
        const char* Size;
        const char* Window;
    } rows[] = {
        {"all is the default", {}, "FrameSize=\"100\"", "StartFrame=\"0\" EndFrame=\"100\""},
        {"playback", {"FrameRange:Playback"}, "FrameSize=\"15\"", "StartFrame=\"10\" EndFrame=\"25\""},
        {"playback ignores the range",
         {"FrameRange:Playback", "StartFrame:40", "EndFrame:30"},
         "FrameSize=\"15\"",
         "StartFrame=\"10\" EndFrame=\"25\""},
        {"range",
         {"FrameRange:Range", "StartFrame:5", "EndFrame:9"},
         "FrameSize=\"4\"",
         "StartFrame=\"4\" EndFrame=\"8\""},
    };

    Scene.Frames(0, 100).Playback(10, 25);
    Scene.Null("body").Moving({{0, 0}, {100, 100}});
    for (const auto& row : rows) {
        std::vector<std::string> options = row.Options;
        options.push_back("OutputQskla:true");
        const ExportRun run(options);
        EXPECT_TRUE(run.Succeeded()) << row.Name;
        EXPECT_THAT(run.Messages(), IsEmpty()) << row.Name;
        EXPECT_TRUE(run.FileHolds("out.qskla", row.Size)) << row.Name;
        EXPECT_TRUE(run.FileHolds("out.qskla", row.Window)) << row.Name;
    }
}

TEST_F(DriverOptions, AWindowThatEndsBeforeItStartsTakesNoSamples)
{
    // Only a range is repaired. The others come from the scene as they are.
    Scene.Frames(30, 20);
    Scene.Null("body").At(1, 2, 3).Moving({{0, 0}, {100, 100}});
    for (const char* range : {"FrameRange:All", "FrameRange:Playback"}) {
        const ExportRun run({range, "OutputQskla:true"});
        EXPECT_TRUE(run.Succeeded()) << range;
        EXPECT_THAT(run.Messages(), IsEmpty()) << range;
        EXPECT_TRUE(run.FileHolds("out.qmdl", "Name=\"body\"")) << range;
        EXPECT_TRUE(run.HasFile("out.qskla")) << range;
        EXPECT_FALSE(run.FileHolds("out.qskla", "<SkeletalAnimation")) << range << ": nothing moves";
    }
}

TEST_F(DriverOptions, WithoutNodesNothingIsCollected)
{
    const std::vector<std::string>& texts = WatchProgress();
    const ExportRun run;
    EXPECT_FALSE(run.Succeeded());
    EXPECT_THAT(texts, ElementsAre("Converting Data"));
    EXPECT_THAT(run.Messages(), ElementsAre("E No effective node")) << "the phase itself says nothing";
}

TEST_F(DriverOptions, TheAmbientLightIsInEveryExport)
{
    const std::vector<std::string> lightsOnly = {"OutputQmdl:false", "OutputQtex:false", "OutputQlgt:true"};
    {
        const ExportRun run(lightsOnly);
        EXPECT_TRUE(run.Succeeded()) << "no node is no failure where no model is wanted";
        EXPECT_THAT(run.Messages(), IsEmpty());
        EXPECT_TRUE(run.FileHolds("out.qlgt", "Name=\"AmbientLight\""));
    }
    XSI::Host::CreateNurbsSurface({}, "surface");
    const ExportRun run(lightsOnly);
    EXPECT_TRUE(run.Succeeded());
    EXPECT_THAT(run.Messages(), ElementsAre("W Can't export NURBS surface(surface)"));
    EXPECT_TRUE(run.FileHolds("out.qlgt", "Name=\"AmbientLight\""));
    EXPECT_THAT(Scene.Host().OpenedViews, IsEmpty()) << "a refused object is no failure";
}

TEST_F(DriverOptions, AskingForCrossedFilesWritesTheRightOnes)
{
    const struct
    {
        const char* Former;
        const char* AskedFor;
        const char* Option;
        const char* Written;
    } rows[] = {
        {"OutputQcam:true", "out.qcam", "OutputQlgt:true", "out.qlgt"},
        {"OutputQlgt:true", "out.qlgt", "OutputQcam:true", "out.qcam"},
    };

    Scene.Null("body");
    for (const auto& row : rows) {
        ExportRun run({"OutputQmdl:false", "OutputQtex:false", row.Former});
        ASSERT_TRUE(run.HasFile(row.AskedFor)) << row.Former;
        const std::string former = run.File(row.AskedFor);
        Scene.Host().MessageBoxes.clear();
        for (const LONG answer : {XSI::siMsgNo, XSI::siMsgYes}) {
            Scene.Host().MessageBoxAnswers = {answer};
            run.Run({"OutputQmdl:false", "OutputQtex:false", row.Option, "Magnify:2"});
            EXPECT_TRUE(run.Succeeded()) << row.Option;
            EXPECT_EQ(run.HasFile(row.Written), answer == XSI::siMsgYes) << row.Option;
        }
        EXPECT_EQ(Scene.Host().MessageBoxes.size(), 2u) << row.Option;
        EXPECT_EQ(run.File(row.AskedFor), former)
            << "the file that was asked for isn't the one that is written";
    }
}

TEST_F(DriverOptions, AlwaysOverwriteAsksNothing)
{
    Scene.Null("body");
    for (const char* text : {"AlwaysOverwrite", "AlwaysOverwrite:", "AlwaysOverwrite:false", "ao"}) {
        ExportRun run(ExportRun::NotYet{});
        std::ofstream(run.Folder() / "out.qmdl") << "former";
        run.Run({text});
        EXPECT_TRUE(run.Succeeded()) << text;
        EXPECT_TRUE(run.FileHolds("out.qmdl", "body")) << text;
    }
    EXPECT_THAT(Scene.Host().MessageBoxes, IsEmpty());
}

TEST_F(DriverOptions, OptimisingWithoutAModelStartsTheToolAndLoadsNothing)
{
    Scene.Camera("view");
    const ExportRun run(
        {"OptimizePrimitive:true", "OutputQmdl:false", "OutputQtex:false", "OutputQcam:true"});
    EXPECT_TRUE(run.Succeeded());
    EXPECT_EQ(Tool.Commands.size(), 1u);
    EXPECT_THAT(OptimizeScript(), HasSubstr("\"OptimizeSelectedModel\", \"-opp\""));
    EXPECT_THAT(OptimizeScript(), Not(HasSubstr("FileLoad")));
    EXPECT_THAT(OptimizeScript(), Not(HasSubstr("Selection\"")));
}

TEST_F(DriverOptions, AReadOnlyFileIsMergedWithAgainAndAgain)
{
    const TemporaryFolder temporary;
    const auto root = CurrentPlatform().Environment;
    CurrentPlatform().Environment = [&](const std::string& name) {
        return name == "TEMP" ? std::optional(temporary.Path().string()) : root(name);
    };
    const auto old = temporary / "old.qmdl";
    std::ofstream(old) << "old model";
    std::filesystem::permissions(old, std::filesystem::perms::owner_read);
    Scene.Null("body");
    ExportRun run(ExportRun::NotYet{});
    for (int round = 1; round <= 2; ++round) {
        run.Run({"AlwaysOverwrite", "MergeQmdl:true", "MergeQmdlPath:" + old.string()});
        EXPECT_TRUE(run.Succeeded()) << round;
        EXPECT_THAT(run.Messages(), IsEmpty()) << round;
        EXPECT_EQ(Tool.Commands.size(), static_cast<std::size_t>(round));
    }
    const auto copy = temporary / "TQ4X_Softimage_Optimize_old.qmdl";
    EXPECT_EQ(ReadWholeFile(copy), "old model");
    EXPECT_NE(std::filesystem::status(copy).permissions() & std::filesystem::perms::owner_write,
              std::filesystem::perms::none)
        << "or the next export of a user without special rights could not replace it";
    EXPECT_THAT(OptimizeScript(), HasSubstr("TQ4X_Softimage_Optimize_old.qmdl\", \"-opz=MergeContentQtr\")"));
}

} // namespace
} // namespace tq4x::test
