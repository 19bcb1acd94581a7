#include "geometry/CollectOutputVertices.h"
#include "geometry/Mesh.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>

namespace
{

using namespace tq4x;

/// A finished shape: triangles over a square grid, each inner vertex shared by six of them.
SeparateDataShape MakeGrid(std::int64_t triangleCount)
{
    const auto side = static_cast<std::int32_t>(std::sqrt(static_cast<double>(triangleCount) / 2.0));
    SeparateDataShape shape;
    const auto addCorner = [&](std::int32_t vertex) {
        PolygonCorner corner;
        for (const VertexSlot slot :
             {VertexSlot::Position, VertexSlot::Normal, VertexSlot::TextureCoordinate0})
            corner[slot] = vertex;
        corner.VertexIndex = vertex;
        shape.Corners.push_back(corner);
    };
    for (std::int32_t row = 0; row < side; ++row) {
        for (std::int32_t column = 0; column < side; ++column) {
            const std::int32_t a = row * (side + 1) + column;
            const std::int32_t c = a + side + 1;
            for (const std::int32_t vertex : {a, a + 1, c + 1, a, c + 1, c})
                addCorner(vertex);
        }
    }
    const auto count = static_cast<std::int32_t>(shape.Corners.size());
    shape.PrimitiveSets.resize(1);
    shape.PrimitiveSets[0].Polygons = {{PrimitiveMode::Triangles, count, 0, BoneListSet::None}};
    return shape;
}

/// Time per triangle must stay level from 100,000 to 1,000,000 triangles.
void CornerSearch(benchmark::State& state)
{
    const SeparateDataShape shape = MakeGrid(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(CollectOutputVertices(shape));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(CornerSearch)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

} // namespace
