#include "geometry/RegroupPrimitives.h"
#include "support/GeometryScene.h"

#include <algorithm>
#include <sstream>

namespace tq4x
{
namespace
{

using namespace test;

/// A shape of sets of polygons, given as modes and numbers of corners; corners are numbered through.
SeparateDataShape MakeShape(const std::vector<std::vector<std::pair<PrimitiveMode, std::int32_t>>>& sets)
{
    SeparateDataShape shape;
    for (const auto& polygons : sets) {
        PrimitiveSet& set = shape.PrimitiveSets.emplace_back();
        for (const auto& [mode, count] : polygons) {
            set.Polygons.push_back({mode, count, static_cast<std::int64_t>(shape.Corners.size())});
            for (std::int32_t i = 0; i < count; ++i)
                shape.Corners.push_back(Corner(static_cast<std::int32_t>(shape.Corners.size()), 7));
        }
    }
    return shape;
}

/// "3:0,1,2" for each primitive: its mode and its corners; sets are parted by "/".
std::string Describe(const SeparateDataShape& shape)
{
    std::ostringstream text;
    for (const PrimitiveSet& set : shape.PrimitiveSets) {
        for (const Polygon& primitive : set.Polygons) {
            text << static_cast<int>(primitive.Mode) << ":";
            for (const PolygonCorner& corner : CornersOf(shape, primitive))
                text << corner[VertexSlot::Position] << ",";
            text << " ";
        }
        text << "/";
    }
    return text.str();
}

TEST(RegroupPrimitives, Cases)
{
    constexpr auto points = PrimitiveMode::Points;
    constexpr auto lines = PrimitiveMode::Lines;
    constexpr auto strip = PrimitiveMode::LineStrip;
    constexpr auto triangles = PrimitiveMode::Triangles;
    constexpr auto fan = PrimitiveMode::TriangleFan;
    constexpr auto other = PrimitiveMode::Other;

    const struct
    {
        const char* Name;
        std::vector<std::vector<std::pair<PrimitiveMode, std::int32_t>>> Sets;
        const char* Expected;
    } cases[] = {
        {"no sets", {}, ""},
        {"triangles become one primitive", {{{triangles, 3}, {triangles, 3}}}, "3:0,1,2,3,4,5, /"},
        {"triangles before lines before points",
         {{{points, 1}, {lines, 2}, {triangles, 3}, {points, 1}, {lines, 2}}},
         "3:3,4,5, 1:1,2,7,8, 0:0,6, /"},
        {"a fan stays on its own, before them",
         {{{triangles, 3}, {fan, 4}, {fan, 5}}},
         "5:7,8,9,10,11, 5:3,4,5,6, 3:0,1,2, /"},
        {"equal fans keep their order", {{{fan, 4}, {fan, 4}}}, "5:0,1,2,3, 5:4,5,6,7, /"},
        {"others first, line strips between triangles and lines",
         {{{lines, 2}, {strip, 3}, {other, 1}, {triangles, 3}}},
         "6:5, 3:6,7,8, 2:2,3,4, 1:0,1, /"},
        {"sets one by one",
         {{{triangles, 3}, {points, 1}}, {{points, 1}, {triangles, 3}}},
         "3:0,1,2, 0:3, /3:5,6,7, 0:4, /"},
        {"an empty polygon of another mode stays, empty collectors don't",
         {{{other, 0}, {triangles, 0}}},
         "6: /"},
        {"an empty set", {{}}, "/"},
    };

    for (const auto& test : cases) {
        SeparateDataShape shape = MakeShape(test.Sets);
        RegroupPrimitives(shape);
        EXPECT_EQ(Describe(shape), test.Expected) << test.Name;
        std::int64_t next = 0;
        ForEachPolygon(shape, [&](const Polygon& primitive) {
            EXPECT_EQ(primitive.FirstCorner, next) << test.Name; // in the order of the sets
            next += primitive.CornerCount;
        });
        EXPECT_EQ(next, std::ssize(shape.Corners)) << test.Name;
    }
}

TEST(RegroupPrimitives, CornersKeepTheirTuples)
{
    SeparateDataShape shape = MakeShape({{{PrimitiveMode::Points, 1}, {PrimitiveMode::Triangles, 3}}});
    const std::vector<PolygonCorner> before = shape.Corners;
    RegroupPrimitives(shape);
    EXPECT_EQ(shape.Corners, (std::vector{before[1], before[2], before[3], before[0]}));
}

} // namespace
} // namespace tq4x
