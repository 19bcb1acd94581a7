#include "geometry/AddPolygon.h"
#include "geometry/CloneMesh.h"
#include "geometry/DropUnusedValues.h"
#include "geometry/FinalizeMesh.h"
#include "geometry/WeldPools.h"

#include <benchmark/benchmark.h>

#include <cmath>

namespace
{

using namespace tq4x;

/// Triangles over a square grid as a collector hands them over: a position per vertex, a normal and a
/// coordinate per corner, so that welding finds five of six. Materials alternate in stripes.
Mesh MakeGrid(std::int64_t triangleCount, std::int32_t materialCount)
{
    const auto side = static_cast<std::int32_t>(std::sqrt(static_cast<double>(triangleCount) / 2.0));
    Mesh mesh;
    mesh.NodeName = "grid";
    mesh.Pool = MakeVertexAttributePool({});
    std::vector<Vector3>& positions = mesh.Pool[VertexSlot::Position].Edit<Vector3>();
    for (std::int32_t i = 0; i < (side + 1) * (side + 1); ++i) {
        const auto x = static_cast<float>(i % (side + 1));
        const auto y = static_cast<float>(i / (side + 1));
        positions.push_back({x, y, std::sin(x * 0.1f) * std::cos(y * 0.07f)});
    }
    std::vector<Vector3>& normals = mesh.Pool[VertexSlot::Normal].Edit<Vector3>();
    std::vector<Vector2>& coordinates = mesh.Pool[VertexSlot::TextureCoordinate0].Edit<Vector2>();
    std::vector<PolygonCorner> corners;
    for (std::int32_t row = 0; row < side; ++row)
        for (std::int32_t column = 0; column < side; ++column) {
            const std::int32_t a = row * (side + 1) + column;
            const std::int32_t c = a + side + 1;
            for (const std::int32_t vertex : {a, a + 1, c + 1, a, c + 1, c}) {
                const Vector3& position = positions[static_cast<std::size_t>(vertex)];
                PolygonCorner& corner = corners.emplace_back();
                corner[VertexSlot::Position] = corner.VertexIndex = vertex;
                corner[VertexSlot::Normal] = corner[VertexSlot::TextureCoordinate0] =
                    static_cast<std::int32_t>(normals.size());
                normals.push_back({position.Z, 1.0f - position.Z, position.X});
                coordinates.push_back({position.X, position.Y});
            }
        }
    for (std::size_t i = 0; i < corners.size(); i += 3) {
        const auto material =
            static_cast<std::uint32_t>(i * static_cast<std::size_t>(materialCount) / corners.size());
        static_cast<void>(AddPolygon(mesh, material, PolygonOf(std::span(corners).subspan(i, 3))));
    }
    return mesh;
}

void Finish(benchmark::State& state)
{
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void Weld(benchmark::State& state)
{
    const Mesh mesh = MakeGrid(state.range(0), 1);
    for (auto _ : state) {
        state.PauseTiming();
        const auto clone = CloneMesh(mesh);
        state.ResumeTiming();
        WeldPools(*clone->Shapes.at(0));
    }
    Finish(state);
}

void DropUnused(benchmark::State& state)
{
    const Mesh mesh = MakeGrid(state.range(0), 2); // half of the pool is the other material's
    for (auto _ : state) {
        state.PauseTiming();
        const auto clone = CloneMesh(mesh);
        state.ResumeTiming();
        DropUnusedValues(*clone->Shapes.at(0));
    }
    Finish(state);
}

/// From the collected polygons to the final form, many materials sharing one pool.
void FinalizeMaterials(benchmark::State& state)
{
    const Mesh mesh = MakeGrid(state.range(0), static_cast<std::int32_t>(state.range(1)));
    for (auto _ : state) {
        state.PauseTiming();
        const auto clone = CloneMesh(mesh);
        state.ResumeTiming();
        benchmark::DoNotOptimize(FinalizeMesh(*clone));
    }
    Finish(state);
}

BENCHMARK(Weld)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(DropUnused)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(FinalizeMaterials)
    ->ArgsProduct({{100'000, 1'000'000}, {1, 30, 1000}})
    ->ArgNames({"triangles", "materials"})
    ->Unit(benchmark::kMillisecond);

} // namespace
