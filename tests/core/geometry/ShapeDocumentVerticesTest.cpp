#include "core/geometry/ShapeDocumentShapes.h"
#include "geometry/CollectOutputVertices.h"

#include <random>

namespace tq4x
{
namespace
{

using namespace test;

/// The search through all vertices that the hash must agree with.
OutputVertices CollectByScanning(const SeparateDataShape& shape)
{
    OutputVertices vertices;
    vertices.Indices.resize(shape.Corners.size(), 0);
    for (const PrimitiveSet& set : shape.PrimitiveSets) {
        for (const Polygon& primitive : set.Polygons) {
            for (std::int64_t i = 0; i < primitive.CornerCount; ++i) {
                const auto place = static_cast<std::size_t>(primitive.FirstCorner + i);
                std::size_t vertex = 0;
                while (vertex < vertices.Count() &&
                       shape.Corners[vertices.FirstCorners[vertex]].Slots != shape.Corners[place].Slots)
                    ++vertex;
                if (vertex == vertices.Count())
                    vertices.FirstCorners.push_back(place);
                vertices.Indices[place] = static_cast<std::int32_t>(vertex);
            }
        }
    }
    return vertices;
}

TEST(CollectOutputVertices, EachSlotMakesAVertexAndTheVertexNumberDoesNot)
{
    for (std::size_t slot = 0; slot < VertexSlotCount; ++slot) {
        SeparateDataShape shape = MakeEmptyShape();
        PolygonCorner other = MakeCorner(0);
        other.Slots[slot] += 2;
        PolygonCorner sameVertex = MakeCorner(0);
        sameVertex.VertexIndex = 5;
        AddPrimitive(shape, PrimitiveMode::Triangles, {MakeCorner(0), other, sameVertex});
        const OutputVertices vertices = CollectOutputVertices(shape);
        EXPECT_EQ(vertices.Indices, (std::vector<std::int32_t>{0, 1, 0})) << "slot " << slot;
        EXPECT_EQ(vertices.FirstCorners, (std::vector<std::size_t>{0, 1})) << "slot " << slot;
    }
}

TEST(CollectOutputVertices, WalksSetsNotTheListOfCorners)
{
    SeparateDataShape shape = MakeEmptyShape();
    AddPrimitive(shape, PrimitiveMode::Lines, {MakeCorner(4), MakeCorner(5)});
    shape.PrimitiveSets.emplace_back();
    AddPrimitive(shape, PrimitiveMode::Lines, {MakeCorner(6), MakeCorner(4)});
    std::swap(shape.PrimitiveSets[0], shape.PrimitiveSets[1]);
    const OutputVertices vertices = CollectOutputVertices(shape);
    EXPECT_EQ(vertices.FirstCorners, (std::vector<std::size_t>{2, 3, 1}));
    EXPECT_EQ(vertices.Indices, (std::vector<std::int32_t>{1, 2, 0, 1}));
    const std::span<const std::int32_t> indices = IndicesOf(vertices, shape.PrimitiveSets[0].Polygons[0]);
    EXPECT_EQ(std::vector<std::int32_t>(indices.begin(), indices.end()), (std::vector<std::int32_t>{0, 1}));
}

TEST(CollectOutputVertices, CornersOfNoPrimitiveAreNoVertices)
{
    SeparateDataShape shape = MakeEmptyShape();
    EXPECT_EQ(CollectOutputVertices(shape).Count(), 0u);
    shape.Corners = {MakeCorner(0), MakeCorner(1)};
    const OutputVertices vertices = CollectOutputVertices(shape);
    EXPECT_EQ(vertices.Count(), 0u);
    EXPECT_EQ(vertices.Indices, (std::vector<std::int32_t>{0, 0}));
}

TEST(CollectOutputVertices, AgreesWithTheSearchThroughAllVertices)
{
    constexpr unsigned seed = 331;
    std::mt19937 random(seed);
    const auto below = [&](int end) { return std::uniform_int_distribution(0, end - 1)(random); };
    for (int test = 0; test < 100; ++test) {
        SeparateDataShape shape = MakeEmptyShape();
        const int range = 1 + below(6);
        const int usedSlots = 1 + below(12);
        for (int set = 0; set < 3; ++set) {
            shape.PrimitiveSets.emplace_back();
            for (int primitive = 0; primitive < 3; ++primitive) {
                std::vector<PolygonCorner> corners(static_cast<std::size_t>(below(60)));
                for (PolygonCorner& corner : corners) {
                    for (int slot = 0; slot < usedSlots; ++slot)
                        corner.Slots[static_cast<std::size_t>(slot)] = below(range) - (below(9) == 0);
                    corner.VertexIndex = below(1000);
                }
                AddPrimitive(shape, PrimitiveMode::Triangles, corners);
            }
        }
        const OutputVertices fast = CollectOutputVertices(shape);
        const OutputVertices literal = CollectByScanning(shape);
        ASSERT_EQ(fast.Indices, literal.Indices) << "seed " << seed << ", case " << test;
        ASSERT_EQ(fast.FirstCorners, literal.FirstCorners) << "seed " << seed << ", case " << test;
        for (std::size_t place = 0; place < shape.Corners.size(); ++place) {
            const auto vertex = static_cast<std::size_t>(fast.Indices[place]);
            ASSERT_EQ(shape.Corners[fast.FirstCorners[vertex]].Slots, shape.Corners[place].Slots)
                << "seed " << seed << ", case " << test << ", corner " << place;
        }
    }
}

} // namespace
} // namespace tq4x
