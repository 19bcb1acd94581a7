#include "geometry/AddPolygon.h"
#include "geometry/EditMesh.h"
#include "geometry/FinalizeMesh.h"
#include "geometry/GenerateTangents.h"
#include "geometry/ShapeDocument.h"
#include "pipeline/XmlWriter.h"
#include "scene/SkeletalModelWriter.h"
#include "support/Golden.h"

namespace tq4x
{
namespace
{

using testing::HasSubstr;
using testing::Not;

/// A mesh over a grid of cells in the plane of x and y, two triangles a cell, every vertex with a normal and
/// a coordinate of its own.
class GridMesh
{
public:
    tq4x::Mesh Mesh;

    GridMesh(std::int32_t columns, std::int32_t rows) : m_columns(columns), m_rows(rows)
    {
        Mesh.NodeName = "grid";
        Mesh.BoneCapacity = 20;
        Mesh.Pool = MakeVertexAttributePool({});
        for (const VertexSlot slot :
             {VertexSlot::Position, VertexSlot::Normal, VertexSlot::TextureCoordinate0})
            SetAttributeFlag(Mesh, slot, true);
        for (std::int32_t row = 0; row <= rows; ++row)
            for (std::int32_t column = 0; column <= columns; ++column)
                AddVertex(static_cast<float>(column), static_cast<float>(row));
    }

    /// Adds the two triangles of each cell, of the material that the column picks.
    void AddTriangles(std::uint32_t materialCount)
    {
        for (std::int32_t row = 0; row < m_rows; ++row) {
            for (std::int32_t column = 0; column < m_columns; ++column) {
                const std::int32_t a = row * (m_columns + 1) + column;
                const std::int32_t c = a + m_columns + 1;
                const auto material = static_cast<std::uint32_t>(column) % materialCount;
                AddTriangle(material, {a, a + 1, c + 1});
                AddTriangle(material, {a, c + 1, c});
            }
        }
    }

    std::string FinishAndWrite(Bone& bone)
    {
        EXPECT_TRUE(FinalizeMesh(Mesh));
        SkeletalModelWriter content;
        content.MeshEntries = {{&bone, &Mesh, 0}};
        XmlWriter stream;
        WriteShapes(content, stream, 4);
        return stream.Text();
    }

private:
    void AddVertex(float x, float y)
    {
        Mesh.Pool[VertexSlot::Position].Edit<Vector3>().push_back({x, y, 0});
        Mesh.Pool[VertexSlot::Normal].Edit<Vector3>().push_back({0, 0, 1});
        Mesh.Pool[VertexSlot::TextureCoordinate0].Edit<Vector2>().push_back(
            {x / static_cast<float>(m_columns), y / static_cast<float>(m_rows)});
    }

    void AddTriangle(std::uint32_t material, const std::array<std::int32_t, 3>& vertices)
    {
        std::array<PolygonCorner, 3> corners;
        for (std::size_t i = 0; i < 3; ++i) {
            for (const VertexSlot slot :
                 {VertexSlot::Position, VertexSlot::Normal, VertexSlot::TextureCoordinate0})
                corners[i][slot] = vertices[i];
            corners[i].VertexIndex = vertices[i];
        }
        EXPECT_EQ(AddPolygon(Mesh, material, PolygonOf(corners)).Status, 0);
    }

    std::int32_t m_columns;
    std::int32_t m_rows;
};

TEST(WriteShapes, FlatPlaneOfTwoMaterials)
{
    // The normals weld to one and make a constant; one size of each box is zero; both shapes number their
    // vertices from 0.
    GridMesh grid(2, 1);
    grid.AddTriangles(2);
    Bone bone;
    bone.BoneIndex = 3;
    test::ExpectGolden(grid.FinishAndWrite(bone), "core/geometry/shapes-flat-plane.xml");
}

TEST(WriteShapes, StripOnTwoBones)
{
    Bone lower;
    lower.Name = "lower";
    lower.BoneIndex = 1;
    Bone upper;
    upper.Name = "upper";
    upper.BoneIndex = 2;
    GridMesh grid(1, 2);
    auto table = std::make_unique<SkinWeightTable>();
    for (const std::int32_t percentage : {100, 100, 50, 50, 0, 0})
        table->push_back({{&lower, percentage}, {&upper, 100 - percentage}});
    SetSkinWeights(grid.Mesh, std::move(table));
    grid.AddTriangles(1);
    test::ExpectGolden(grid.FinishAndWrite(lower), "core/geometry/shapes-two-bone-strip.xml");
}

TEST(WriteShapes, GeneratedTangentsStandBehindTheCoordinates)
{
    GridMesh grid(1, 1);
    grid.AddTriangles(1);
    ASSERT_EQ(GenerateTangents(grid.Mesh, VertexSlot::TextureCoordinate0).Status, 0);
    Bone bone;
    const std::string text = grid.FinishAndWrite(bone);
    const std::size_t coordinates = text.find("Usage=\"TextureCoordinate0\"");
    const std::size_t tangents =
        text.find("<Vector3VertexAttributeQtr Usage=\"Tangent\" Scale=\"1\">1 0 0</");
    ASSERT_NE(tangents, std::string::npos) << text;
    EXPECT_LT(coordinates, tangents);
}

} // namespace
} // namespace tq4x
