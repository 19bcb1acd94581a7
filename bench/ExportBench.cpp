#include "support/ExportRun.h"
#include "support/ToolInstallation.h"

#include <benchmark/benchmark.h>

#include <cmath>

// Whole exports: from the host's scene to the written files.

namespace
{

using namespace tq4x::test;

/// A wavy sheet of one material, with normals and coordinates per vertex.
void MakeSheet(const XSI::CRef& material, std::int64_t triangleCount)
{
    const auto side = static_cast<LONG>(std::sqrt(static_cast<double>(triangleCount) / 2.0));
    SceneMesh sheet = SceneBuilder::Mesh("sheet");
    XSI::Host::MeshGeometry& geometry = sheet.Geometry();
    std::vector<float> coordinates;
    for (LONG i = 0; i < (side + 1) * (side + 1); ++i) {
        const auto x = static_cast<double>(i % (side + 1));
        const auto y = static_cast<double>(i / (side + 1));
        const double height = std::sin(x * 0.1) * std::cos(y * 0.07);
        geometry.Positions.insert(geometry.Positions.end(), {x, y, height});
        geometry.NodeNormals.insert(geometry.NodeNormals.end(),
                                    {static_cast<float>(height), 0.0f, static_cast<float>(1.0 - height)});
        coordinates.push_back(static_cast<float>(x / static_cast<double>(side)));
        coordinates.push_back(static_cast<float>(y / static_cast<double>(side)));
    }
    std::vector<Corners> triangles;
    for (LONG row = 0; row < side; ++row)
        for (LONG column = 0; column < side; ++column) {
            const LONG a = row * (side + 1) + column;
            const LONG c = a + side + 1;
            triangles.push_back({a, a + 1, c + 1});
            triangles.push_back({a, c + 1, c});
        }
    sheet.Triangles(triangles, material);
    sheet.Uvs("uv", std::move(coordinates));
}

void RunOrSkip(benchmark::State& state)
{
    const ExportRun run;
    if (run.Succeeded())
        return;
    const std::vector<std::string> messages = run.Messages();
    state.SkipWithError(messages.empty() ? "the export failed" : messages.back().c_str());
}

void ExportTriangles(benchmark::State& state)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Frames(0.0, 0.0);
    MakeSheet(scene.Material("cloth").Image("diffuse", "cloth.tga", "uv"), state.range(0));
    for (auto _ : state)
        RunOrSkip(state);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(ExportTriangles)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// Samples of a chain in which each node hangs on the one before and every tenth moves, with a light at its
/// end.
void ExportChain(benchmark::State& state)
{
    constexpr double lastFrame = 99.0;
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Frames(0.0, lastFrame);
    XSI::CRef parent;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        SceneNode node = scene.Bone("n" + std::to_string(i), parent).At(0.1, 0.0, 0.0).Visible(true);
        if (i % 10 == 0)
            node.Turning({{0.0, 0.0}, {lastFrame, 5.0}});
        parent = node;
    }
    scene.Light("lamp", XSI::Host::LightType::Spot, parent);
    for (auto _ : state)
        RunOrSkip(state);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(ExportChain)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);

} // namespace
