#include "RunRoundTrip.h"
#include "gltf/OpenScene.h"
#include "scene/Session.h"
#include "support/ExportRun.h"
#include "support/ToolInstallation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace tq4x::test
{
namespace
{

namespace fs = std::filesystem;

const fs::path Samples = fs::path(TQ4X_SAMPLES) / "gltf";
const fs::path Examples = TQ4X_EXAMPLES;

/// A mesh of more vertices than the files' indices of two bytes can number.
constexpr const char* TooLarge = "ToyCar.gltf";

/// Smaller tolerances than the defaults, so that a reduction that goes wrong shows.
RoundTripSettings FineSettings()
{
    RoundTripSettings settings;
    settings.ToleranceTranslate = 0.001f;
    settings.ToleranceRotate = 0.01f;
    settings.ToleranceScale = 0.001f;
    settings.ToleranceTexTranslate = 0.001f;
    settings.ToleranceTexRotate = 0.01f;
    settings.ToleranceTexScale = 0.001f;
    return settings;
}

void OpenAndCompare(const fs::path& scene, const RoundTripSettings& settings, const std::string& name)
{
    XSI::Host::Session::Current().Reset();
    ExportRun::EnsurePlugin();
    gltf::SceneOptions options;
    options.FitTextures = true;
    const gltf::OpenedScene opened = gltf::OpenScene(scene, options);
    ASSERT_EQ(opened.Error, "") << scene;
    const ToolInstallation tool;
    RunRoundTrip(name, settings);
}

std::vector<fs::path> ScenesBelow(const fs::path& folder)
{
    std::vector<fs::path> scenes;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.path().extension() == ".glb" || entry.path().extension() == ".gltf")
            scenes.push_back(entry.path());
    std::ranges::sort(scenes);
    return scenes;
}

/// Without textures: SampleTextures compares their pixels.
TEST(SampleRoundTrip, FilesHoldTheScenes)
{
    if (!fs::exists(Samples))
        GTEST_SKIP() << "NOT RUN: the sample scenes are absent; they are looked for in " << Samples;
    RoundTripSettings settings = FineSettings();
    settings.WritesTextures = false;
    for (const fs::path& scene : ScenesBelow(Samples))
        if (scene.filename() != TooLarge)
            OpenAndCompare(scene, settings, scene.filename().string());
}

TEST(SampleRoundTrip, FilesHoldTheExamples)
{
    RoundTripSettings coarse;
    coarse.QuantizePos = coarse.QuantizeNrm = coarse.QuantizeTex = "Short";
    coarse.IsRigidSkinning = true;
    coarse.BindsByName = true;
    coarse.Magnify = 2.5f;
    const std::vector<fs::path> scenes = ScenesBelow(Examples);
    ASSERT_FALSE(scenes.empty());
    for (const fs::path& scene : scenes) {
        OpenAndCompare(scene, FineSettings(), scene.filename().string());
        OpenAndCompare(scene, coarse, scene.filename().string() + " in shorts");
    }
}

} // namespace
} // namespace tq4x::test
