#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "Program.h"
#include "pipeline/ExportOptions.h"
#include "pipeline/SettingsFile.h"
#include "support/Variables.h"
#include "support/WrittenFiles.h"

// Exports through the plug-in itself.
namespace tq4x::cli::test
{
namespace
{

namespace fs = std::filesystem;

const fs::path Samples = fs::path(TQ4X_SAMPLES) / "gltf";

/// Bytes of all files below a folder, by path.
std::map<std::string, std::string> ReadFolder(const fs::path& folder)
{
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            files[fs::relative(entry.path(), folder).string()] = tq4x::test::ReadWholeFile(entry.path());
        }
    }
    return files;
}

class SampleExportTest : public ProgramTest
{
protected:
    SampleExportTest() { setenv("SOURCE_DATE_EPOCH", "0", 1); }

    ~SampleExportTest() override { unsetenv("SOURCE_DATE_EPOCH"); }

    void SetUp() override
    {
        if (!fs::exists(Samples)) {
            GTEST_SKIP() << "NOT RUN: the sample scenes are absent; they are looked for in " << Samples;
        }
    }

    /// Pictures of other sizes are not written, and are told.
    void TearDown() override { tq4x::test::ExpectWellWritten(Folder.Path(), {"TQ-REF-TEXTURE"}); }

    Outcome ExportSample(const std::string& file, const std::string& folder,
                         std::vector<std::string> more = {}) const
    {
        std::vector<std::string> words = {"export",   (Samples / file).string(), "-o",       Path(folder),
                                          "--plugin", TQ4X_WHOLE_PLUGIN,         "--author", "tester"};
        words.insert(words.end(), more.begin(), more.end());
        return RunInside(words);
    }

    static std::vector<std::string> AllKinds()
    {
        return {"--set", "OutputQskla:true", "--set", "OutputQmata:true", "--set", "OutputQmdla:true",
                "--set", "OutputQcam:true",  "--set", "OutputQlgt:true",  "--set", "OutputQenv:true"};
    }
};

TEST_F(SampleExportTest, EveryKindOfFileIsWritten)
{
    const char* const scenes[] = {
        "VertexColorTest/VertexColorTest.glb",
        "TextureTransformTest/TextureTransformTest.gltf",
        "Fox/Fox.glb",
        "Cameras/Cameras.gltf",
        "BlenderExtras/gltf_extras.glb",
        "GeometryCameraLight/geometry-camera-light.glb",
        "OrientationTest/OrientationTest.glb",
    };
    for (const char* const scene : scenes) {
        const std::string name = fs::path(scene).stem().string();
        const Outcome outcome = ExportSample(scene, name, AllKinds());
        EXPECT_EQ(outcome.Code, Done) << scene << "\n" << outcome.Err;
        for (const char* const extension :
             {".qmdl", ".qskla", ".qmata", ".qmdla", ".qcam", ".qlgt", ".qenv"}) {
            EXPECT_TRUE(fs::exists(Folder / (name + "/" + name + extension))) << scene << extension;
        }
    }
}

TEST_F(SampleExportTest, PicturesOfOtherSizesNeedFitting)
{
    const Outcome refused = ExportSample("InterpolationTest/InterpolationTest.glb", "a");
    EXPECT_EQ(refused.Code, Failed);
    EXPECT_THAT(refused.Err, testing::HasSubstr("Texture size is wrong: l.jpg (1000 x 100)"));
    EXPECT_EQ(ExportSample("InterpolationTest/InterpolationTest.glb", "b", {"--fit-textures"}).Code, Done);
    EXPECT_TRUE(fs::exists(Folder / "b/Textures/l.qtex"));
}

TEST_F(SampleExportTest, EqualExportsHaveEqualBytes)
{
    ASSERT_EQ(ExportSample("Fox/Fox.glb", "a", AllKinds()).Code, Done);
    ASSERT_EQ(ExportSample("Fox/Fox.glb", "b", AllKinds()).Code, Done);
    EXPECT_EQ(ReadFolder(Folder / "a"), ReadFolder(Folder / "b"));
    EXPECT_EQ(ReadFolder(Folder / "a").size(), 8u);
}

TEST_F(SampleExportTest, ClipsDiffer)
{
    const std::vector<std::string> animation = {"--set", "OutputQmdl:false", "--set", "OutputQtex:false",
                                                "--set", "OutputQskla:true", "--clip"};
    const auto exportClip = [&](const std::string& clip) {
        std::vector<std::string> more = animation;
        more.push_back(clip);
        EXPECT_EQ(ExportSample("Fox/Fox.glb", clip, more).Code, Done);
        return ReadFolder(Folder / clip)["Fox.qskla"];
    };
    const std::string walk = exportClip("Walk");
    const std::string run = exportClip("Run");
    EXPECT_THAT(walk, testing::HasSubstr("FrameSize=\"22\"")); // 0.7083 s, rounded up from 21.25 frames
    EXPECT_THAT(run, testing::HasSubstr("FrameSize=\"35\""));  // 1.1583 s
}

TEST_F(SampleExportTest, SettingsFilesGiveTheSameBytesBothWays)
{
    ExportOptions options;
    options.OutputQskla = true;
    options.OptimizePrimitive = false;
    options.Magnify = 0.5f;
    options.QuantizeNrm = 3;
    options.FrameRange = 2;
    options.StartFrame = 3;
    options.EndFrame = 9;
    Write("a.q3es", SettingsText(options));
    ASSERT_EQ(ExportSample("Fox/Fox.glb", "file", {"-s", Path("a.q3es")}).Code, Done);
    ASSERT_EQ(ExportSample("Fox/Fox.glb", "merged", {"-s", Path("a.q3es"), "--set", "Magnify:0.5"}).Code,
              Done);
    EXPECT_EQ(ReadFolder(Folder / "file"), ReadFolder(Folder / "merged"));
}

TEST_F(SampleExportTest, OverwritingIsAskedFor)
{
    ASSERT_EQ(ExportSample("Cameras/Cameras.gltf", "a").Code, Done);
    const auto before = ReadFolder(Folder / "a");
    const Outcome refused = ExportSample("Cameras/Cameras.gltf", "a", {"--set", "Magnify:2"});
    EXPECT_EQ(refused.Code, Failed);
    EXPECT_THAT(refused.Err, testing::HasSubstr("already exists. Overwrite? Nobody can be asked"));
    EXPECT_EQ(ReadFolder(Folder / "a"), before);
    EXPECT_EQ(ExportSample("Cameras/Cameras.gltf", "a", {"--set", "Magnify:2", "--overwrite"}).Code, Done);
    EXPECT_NE(ReadFolder(Folder / "a"), before);
}

TEST_F(SampleExportTest, OptimisingWithoutTheToolIsAWarning)
{
    const Outcome outcome = ExportSample("Cameras/Cameras.gltf", "a", {"--set", "OptimizePrimitive:true"});
    EXPECT_EQ(outcome.Code, Done);
    EXPECT_THAT(outcome.Err, testing::HasSubstr("warning: Optimization failed\n"));
    EXPECT_TRUE(fs::exists(Folder / "a/Cameras.qmdl"));
}

TEST_F(SampleExportTest, TheLastSettingsAreKept)
{
    ASSERT_EQ(ExportSample("Cameras/Cameras.gltf", "a", {"--set", "Magnify:3"}).Code, Done);
    const std::string kept =
        Read("data/tq4x/tools/DccPlugin/softimage/ini/last_export_options_for_pennon.q3es");
    EXPECT_THAT(kept, testing::HasSubstr("Magnify=\"3.000000\""));
}

TEST_F(SampleExportTest, VersionIsToldByItsCommand)
{
    const Outcome outcome = RunInside({"run", "TQ4X_ForPennonVersionInfo", "--plugin", TQ4X_WHOLE_PLUGIN});
    EXPECT_EQ(outcome.Code, Done);
    EXPECT_EQ(outcome.Out, "TQ4X XSI Plugin Version: TQ4X_ForPennon Softimage 2013 Plugin 0.5.3\n");
}

} // namespace
} // namespace tq4x::cli::test
