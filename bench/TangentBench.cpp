#include "geometry/GenerateTangents.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <vector>

namespace
{

using namespace tq4x;

/// A wavy sheet of triangles in which every corner has a normal of its own, so that all corners of a vertex
/// have to find each other.
SeparateDataShape MakeSheet(std::int64_t cornerCount)
{
    const auto side = static_cast<std::int32_t>(std::sqrt(static_cast<double>(cornerCount) / 6.0));
    SeparateDataShape shape;
    shape.Pool = MakeVertexAttributePool({});
    std::vector<Vector3>& positions = shape.Pool[VertexSlot::Position].Edit<Vector3>();
    std::vector<Vector3>& normals = shape.Pool[VertexSlot::Normal].Edit<Vector3>();
    std::vector<Vector2>& coordinates = shape.Pool[VertexSlot::TextureCoordinate0].Edit<Vector2>();
    for (std::int32_t row = 0; row <= side; ++row) {
        for (std::int32_t column = 0; column <= side; ++column) {
            const float x = static_cast<float>(column);
            const float y = static_cast<float>(row);
            positions.push_back({x, y, std::sin(x * 0.1f) * std::cos(y * 0.1f)});
            coordinates.push_back({x / static_cast<float>(side), y / static_cast<float>(side)});
        }
    }
    const auto addTriangle = [&](const std::array<std::int32_t, 3>& vertices) {
        const auto first = static_cast<std::int64_t>(shape.Corners.size());
        shape.Polygons.push_back({PrimitiveMode::Triangles, 3, first, BoneListSet::None});
        for (const std::int32_t vertex : vertices) {
            PolygonCorner corner;
            corner[VertexSlot::Position] = vertex;
            corner[VertexSlot::TextureCoordinate0] = vertex;
            corner[VertexSlot::Normal] = static_cast<std::int32_t>(normals.size());
            normals.push_back({0, 0, 1});
            shape.Corners.push_back(corner);
        }
    };
    for (std::int32_t row = 0; row < side; ++row) {
        for (std::int32_t column = 0; column < side; ++column) {
            const std::int32_t a = row * (side + 1) + column;
            const std::int32_t c = a + side + 1;
            addTriangle({a, a + 1, c + 1});
            addTriangle({a, c + 1, c});
        }
    }
    return shape;
}

/// Ten times the corners take about ten times as long; thirteen times is the limit.
void Tangents(benchmark::State& state)
{
    const SeparateDataShape sheet = MakeSheet(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        SeparateDataShape shape = sheet;
        state.ResumeTiming();
        const GeometryResult result = GenerateTangents(shape, VertexSlot::TextureCoordinate0);
        if (result.Status != 0)
            state.SkipWithError("the sheet was refused");
        benchmark::DoNotOptimize(shape.Pool[VertexSlot::Tangent].Read<Vector3>().data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(Tangents)->Arg(5'000)->Arg(50'000)->Arg(500'000)->Unit(benchmark::kMillisecond);

} // namespace
