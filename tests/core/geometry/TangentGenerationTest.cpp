#include "geometry/GenerateTangents.h"

#include <cmath>

namespace tq4x
{
namespace
{

using S = VertexSlot;

PolygonCorner Corner(std::int32_t position, std::int32_t normal, std::int32_t coordinate)
{
    PolygonCorner corner;
    corner[S::Position] = position;
    corner[S::Normal] = normal;
    corner[S::TextureCoordinate0] = coordinate;
    return corner;
}

void AddPolygon(SeparateDataShape& shape, const std::vector<PolygonCorner>& corners)
{
    shape.Polygons.push_back({PrimitiveMode::Triangles, static_cast<std::int32_t>(corners.size()),
                              static_cast<std::int64_t>(shape.Corners.size()), BoneListSet::None});
    shape.Corners.insert(shape.Corners.end(), corners.begin(), corners.end());
}

/// One triangle in the plane of x and y, with u along x, and a pool of more normals than it uses.
SeparateDataShape MakeShape()
{
    SeparateDataShape shape;
    shape.Pool = MakeVertexAttributePool({});
    shape.Pool[S::Position].Edit<Vector3>() = {{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {2, 2, 0}};
    shape.Pool[S::Normal].Edit<Vector3>() = {{0, 0, 1}, {0, 0, 1}, {0, 0, 1}, {0, 0, 1}, {0, 0, 1}};
    shape.Pool[S::TextureCoordinate0].Edit<Vector2>() = {{0, 0}, {1, 0}, {0, 1}, {1, 1}};
    AddPolygon(shape, {Corner(0, 1, 0), Corner(1, 2, 1), Corner(2, 3, 2)});
    return shape;
}

const std::vector<Vector3>& TangentsOf(const SeparateDataShape& shape)
{
    return shape.Pool[S::Tangent].Read<Vector3>();
}

TEST(GenerateTangents, StoresOneTangentPerNormal)
{
    SeparateDataShape shape = MakeShape();
    ASSERT_EQ(GenerateTangents(shape, S::TextureCoordinate0).Status, 0);
    const Vector3 x{1, 0, 0};
    EXPECT_EQ(TangentsOf(shape), (std::vector<Vector3>{{}, x, x, x, {}}));
    EXPECT_EQ(shape.Corners[0][S::Tangent], 1);
    EXPECT_EQ(shape.Corners[1][S::Tangent], 2);
    EXPECT_EQ(shape.Corners[2][S::Tangent], 3);
    EXPECT_TRUE(shape.AttributeFlags[IndexOf(S::Tangent)]);
    EXPECT_EQ(shape.Pool[S::Tangent].Dimension, 3);
    EXPECT_EQ(shape.Pool[S::Tangent].QuantizedMode, QuantizedMode::Float);
}

TEST(GenerateTangents, TakesTheCoordinatesOfTheAskedSlot)
{
    SeparateDataShape shape = MakeShape();
    shape.Pool[S::TextureCoordinate2].Edit<Vector2>() = {{0, 0}, {0, 1}, {1, 0}};
    for (PolygonCorner& corner : shape.Corners)
        corner[S::TextureCoordinate2] = corner[S::TextureCoordinate0];
    ASSERT_EQ(GenerateTangents(shape, S::TextureCoordinate2).Status, 0);
    EXPECT_EQ(TangentsOf(shape)[1], (Vector3{0, 1, 0}));
}

TEST(GenerateTangents, WrapsRoundAtTheFirstAndLastCorner)
{
    // A quad: at each corner u rises along x, from the corner's own neighbours.
    SeparateDataShape shape = MakeShape();
    shape.Polygons.clear();
    shape.Corners.clear();
    shape.Pool[S::Position].Edit<Vector3>() = {{0, 0, 0}, {2, 0, 0}, {4, 2, 0}, {0, 2, 0}};
    shape.Pool[S::TextureCoordinate0].Edit<Vector2>() = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    AddPolygon(shape, {Corner(0, 0, 0), Corner(1, 1, 1), Corner(2, 2, 2), Corner(3, 3, 3)});
    ASSERT_EQ(GenerateTangents(shape, S::TextureCoordinate0).Status, 0);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(TangentsOf(shape)[i], (Vector3{1, 0, 0})) << i;
}

TEST(GenerateTangents, LastCornerWithANormalNumberDecides)
{
    SeparateDataShape shape = MakeShape();
    // The second triangle runs u along y and shares normal 1.
    shape.Pool[S::TextureCoordinate0].Edit<Vector2>() = {{0, 0}, {1, 0}, {0, 1}, {0, 9}, {9, 0}};
    AddPolygon(shape, {Corner(0, 1, 0), Corner(1, 0, 3), Corner(2, 4, 4)});
    ASSERT_EQ(GenerateTangents(shape, S::TextureCoordinate0).Status, 0);
    EXPECT_EQ(TangentsOf(shape)[1], (Vector3{0, 1, 0}));
    EXPECT_EQ(TangentsOf(shape)[2], (Vector3{1, 0, 0}));
}

TEST(GenerateTangents, SmoothsCornersThatAgreeInPositionAndCoordinate)
{
    // Two triangles meet at position 0 with the same coordinate and different normals; the second one's
    // edge leans back.
    SeparateDataShape shape = MakeShape();
    shape.Pool[S::Position].Edit<Vector3>() = {{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {0, 0, 2}};
    shape.Pool[S::Normal].Edit<Vector3>() = {{0, 0, 1},  {0, 0, 1},  {0, 0, 1},
                                             {-1, 0, 0}, {-1, 0, 0}, {-1, 0, 0}};
    shape.Polygons.clear();
    shape.Corners.clear();
    AddPolygon(shape, {Corner(0, 0, 0), Corner(1, 1, 1), Corner(2, 2, 2)});
    AddPolygon(shape, {Corner(0, 3, 0), Corner(3, 4, 1), Corner(2, 5, 2)});
    ASSERT_EQ(GenerateTangents(shape, S::TextureCoordinate0).Status, 0);
    const float half = 1.0f / std::sqrt(2.0f);
    EXPECT_EQ(TangentsOf(shape)[0], (Vector3{half, 0, half}));
    EXPECT_EQ(TangentsOf(shape)[3], (Vector3{half, 0, half}));
    EXPECT_EQ(TangentsOf(shape)[1], (Vector3{1, 0, 0})) << "another position";
    EXPECT_EQ(TangentsOf(shape)[4], (Vector3{0, 0, 1})) << "another position";
}

TEST(GenerateTangents, OppositeTangentsAtOnePlaceStayApart)
{
    SeparateDataShape shape = MakeShape();
    shape.Pool[S::Position].Edit<Vector3>() = {{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {-2, 0, 0}};
    AddPolygon(shape, {Corner(0, 0, 0), Corner(2, 4, 2), Corner(3, 4, 1)});
    ASSERT_EQ(GenerateTangents(shape, S::TextureCoordinate0).Status, 0);
    EXPECT_EQ(TangentsOf(shape)[1], (Vector3{1, 0, 0}));
    EXPECT_EQ(TangentsOf(shape)[0], (Vector3{-1, 0, 0}));
}

TEST(GenerateTangents, NormalsOfOtherMaterialsTakeNoPart)
{
    // Normal 0 belongs to no corner of this shape. Its zero tangent at position and coordinate 0 would
    // otherwise pull the two opposite tangents there together.
    SeparateDataShape shape = MakeShape();
    shape.Pool[S::Position].Edit<Vector3>() = {{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {-2, 0, 0}};
    shape.Pool[S::Normal].Edit<Vector3>().resize(7, {0, 0, 1});
    AddPolygon(shape, {Corner(0, 4, 0), Corner(2, 5, 2), Corner(3, 6, 1)});
    ASSERT_EQ(GenerateTangents(shape, S::TextureCoordinate0).Status, 0);
    EXPECT_EQ(TangentsOf(shape)[0], Vector3{});
    EXPECT_EQ(TangentsOf(shape)[1], (Vector3{1, 0, 0}));
    EXPECT_EQ(TangentsOf(shape)[4], (Vector3{-1, 0, 0}));
}

TEST(GenerateTangents, EqualCoordinatesYieldUnitVectors)
{
    SeparateDataShape shape = MakeShape();
    shape.Pool[S::TextureCoordinate0].Edit<Vector2>() = {{0.5f, 0.5f}, {0.5f, 0.5f}, {0.5f, 0.5f}};
    ASSERT_EQ(GenerateTangents(shape, S::TextureCoordinate0).Status, 0);
    EXPECT_EQ(TangentsOf(shape)[1], (Vector3{1, 0, 0}));
}

TEST(GenerateTangents, SetsOfAFinishedShapeAreWalkedToo)
{
    SeparateDataShape shape = MakeShape();
    PrimitiveSet set;
    set.Polygons.swap(shape.Polygons);
    shape.PrimitiveSets.push_back(set);
    ASSERT_EQ(GenerateTangents(shape, S::TextureCoordinate0).Status, 0);
    EXPECT_EQ(TangentsOf(shape)[1], (Vector3{1, 0, 0}));
}

TEST(GenerateTangents, PolygonsOfOneOrNoCorner)
{
    SeparateDataShape shape = MakeShape();
    AddPolygon(shape, {});
    AddPolygon(shape, {Corner(3, 4, 3)});
    ASSERT_EQ(GenerateTangents(shape, S::TextureCoordinate0).Status, 0);
    EXPECT_EQ(TangentsOf(shape)[4], (Vector3{1, 0, 0}))
        << "a corner without neighbours takes the helper axis";
}

TEST(GenerateTangents, RefusedShapesStayUntouched)
{
    constexpr std::string_view exist = "The shape has tangents already.";
    constexpr std::string_view slot = "Tangents need a texture coordinate slot.";
    constexpr std::string_view missing =
        "Tangents need a position, a normal and a texture coordinate at each corner.";

    const struct
    {
        const char* Name;
        S UvSlot;
        void (*Break)(SeparateDataShape&);
        std::string_view Message;
    } cases[] = {
        {"a pool without lists", S::TextureCoordinate0, [](SeparateDataShape& s) { s.Pool = {}; }, missing},
        {"tangents exist", S::TextureCoordinate0,
         [](SeparateDataShape& s) {
             s.Pool[S::Tangent].Edit<Vector3>() = {{0, 1, 0}};
         },
         exist},
        {"slot 3", S::Color, [](SeparateDataShape&) {}, slot},
        {"slot 7", S::BoneIndex, [](SeparateDataShape&) {}, slot},
        {"no positions", S::TextureCoordinate0,
         [](SeparateDataShape& s) { s.Pool[S::Position].Edit<Vector3>().clear(); }, missing},
        {"no normals", S::TextureCoordinate0,
         [](SeparateDataShape& s) { s.Pool[S::Normal].Edit<Vector3>().clear(); }, missing},
        {"no coordinates in the slot", S::TextureCoordinate1, [](SeparateDataShape&) {}, missing},
        {"no coordinates and no corners", S::TextureCoordinate1,
         [](SeparateDataShape& s) { s.Corners.clear(), s.Polygons.clear(); }, missing},
        {"a corner without a position", S::TextureCoordinate0,
         [](SeparateDataShape& s) { s.Corners[2][S::Position] = -1; }, missing},
        {"a normal past the list", S::TextureCoordinate0,
         [](SeparateDataShape& s) { s.Corners[2][S::Normal] = 5; }, missing},
        {"a coordinate past the list", S::TextureCoordinate0,
         [](SeparateDataShape& s) { s.Corners[0][S::TextureCoordinate0] = 4; }, missing},
    };

    for (const auto& test : cases) {
        SeparateDataShape shape = MakeShape();
        test.Break(shape);
        const SeparateDataShape before = shape;
        EXPECT_EQ(GenerateTangents(shape, test.UvSlot), (GeometryResult{1, test.Message})) << test.Name;
        EXPECT_EQ(shape.Corners, before.Corners) << test.Name;
        EXPECT_EQ(shape.AttributeFlags, before.AttributeFlags) << test.Name;
        EXPECT_EQ(shape.Pool[S::Tangent].Size(), before.Pool[S::Tangent].Size()) << test.Name;
    }
}

TEST(GenerateTangents, OtherShapesOfTheMeshAreDoneAfterAFailingOne)
{
    Mesh mesh;
    mesh.Shapes[3] = std::make_unique<SeparateDataShape>(MakeShape());
    mesh.Shapes[5] = std::make_unique<SeparateDataShape>(MakeShape());
    mesh.Shapes[4] = std::make_unique<SeparateDataShape>(MakeShape());
    mesh.Shapes[4]->Pool[S::Normal].Edit<Vector3>().clear();
    EXPECT_EQ(GenerateTangents(mesh, S::TextureCoordinate0).Status, 1);
    EXPECT_EQ(TangentsOf(*mesh.Shapes[3]).size(), 5u);
    EXPECT_EQ(TangentsOf(*mesh.Shapes[4]).size(), 0u);
    EXPECT_EQ(TangentsOf(*mesh.Shapes[5]).size(), 5u);
    EXPECT_FALSE(mesh.AttributeFlags[IndexOf(S::Tangent)]) << "the flag is the shape's alone";
    mesh.Shapes.erase(4);
    EXPECT_EQ(GenerateTangents(mesh, S::TextureCoordinate0).Status, 1) << "the tangents exist now";
    EXPECT_EQ(GenerateTangents(*std::make_unique<Mesh>(), S::TextureCoordinate0).Status, 0) << "no shapes";
}

} // namespace
} // namespace tq4x
