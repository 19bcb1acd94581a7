#include "PrintValues.h"

#include "support/SceneBuilder.h"

#include <numeric>

#include <xsi_polygonmesh.h>

namespace tq4x::test
{
namespace
{

using namespace XSI;
using testing::ElementsAre;
using testing::IsEmpty;

CGeometryAccessor AccessorOf(const SceneNode& node)
{
    const PolygonMesh mesh(node.Object().GetActivePrimitive().GetGeometry());
    return mesh.GetGeometryAccessor(siConstructionModeModeling, siCatmullClark, 0, true, 60.0);
}

TEST(Geometry, ASquare)
{
    SceneBuilder scene;
    const SceneMaterial red = scene.Material("red");
    SceneMesh mesh = scene.Mesh("mesh");
    mesh.Square(red);
    const CGeometryAccessor accessor = AccessorOf(mesh);
    ASSERT_TRUE(accessor.IsValid());
    EXPECT_EQ(accessor.GetVertexCount(), 4);
    EXPECT_EQ(accessor.GetNodeCount(), 4);
    EXPECT_EQ(accessor.GetTriangleCount(), 2);
    EXPECT_EQ(accessor.GetPolygonCount(), 2);

    CDoubleArray positions;
    CFloatArray normals;
    CLongArray vertices;
    CLongArray nodes;
    CLongArray polygons;
    CLongArray materials;
    EXPECT_TRUE(accessor.GetVertexPositions(positions).Succeeded());
    EXPECT_TRUE(accessor.GetNodeNormals(normals).Succeeded());
    EXPECT_TRUE(accessor.GetTriangleVertexIndices(vertices).Succeeded());
    EXPECT_TRUE(accessor.GetTriangleNodeIndices(nodes).Succeeded());
    EXPECT_TRUE(accessor.GetPolygonTriangleIndices(polygons).Succeeded());
    EXPECT_TRUE(accessor.GetPolygonMaterialIndices(materials).Succeeded());
    EXPECT_THAT(List<double>(positions), ElementsAre(-1, -1, 0, 1, -1, 0, 1, 1, 0, -1, 1, 0));
    EXPECT_THAT(List<float>(normals), ElementsAre(0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1));
    EXPECT_THAT(List<LONG>(vertices), ElementsAre(0, 1, 2, 0, 2, 3));
    EXPECT_THAT(List<LONG>(nodes), ElementsAre(0, 1, 2, 0, 2, 3));
    EXPECT_THAT(List<LONG>(polygons), ElementsAre(0, 1));
    EXPECT_THAT(List<LONG>(materials), ElementsAre(0, 0));
    EXPECT_THAT(Names(accessor.GetMaterials()), ElementsAre("red"));
}

TEST(Geometry, TheAccessorKeepsHowItWasAskedFor)
{
    SceneBuilder scene;
    const SceneMesh mesh = scene.Mesh("mesh");
    const PolygonMesh geometry(mesh.Object().GetActivePrimitive().GetGeometry());
    const CGeometryAccessor accessor =
        geometry.GetGeometryAccessor(siConstructionModeAnimation, siDooSabin, 2, true, 45.0);
    EXPECT_EQ(accessor.GetSettings().Mode, siConstructionModeAnimation);
    EXPECT_EQ(accessor.GetSettings().SubdivisionRule, siDooSabin);
    EXPECT_EQ(accessor.GetSettings().SubdivisionLevel, 2);
    EXPECT_TRUE(accessor.GetSettings().UseDiscontinuity);
    EXPECT_EQ(accessor.GetSettings().DiscontinuityAngle, 45.0);
}

TEST(Geometry, NodesAndPolygonsOfTheirOwn)
{
    SceneBuilder scene;
    SceneMesh mesh = scene.Mesh("mesh");
    mesh.Square().SplitNodes();
    mesh.Geometry().TrianglePolygons = {0, 0};
    mesh.Geometry().PolygonMaterials = {3};
    const CGeometryAccessor accessor = AccessorOf(mesh);
    EXPECT_EQ(accessor.GetNodeCount(), 6);
    EXPECT_EQ(accessor.GetPolygonCount(), 1);
    CLongArray list;
    accessor.GetTriangleNodeIndices(list);
    EXPECT_THAT(List<LONG>(list), ElementsAre(0, 1, 2, 3, 4, 5));
    accessor.GetPolygonTriangleIndices(list);
    EXPECT_THAT(List<LONG>(list), ElementsAre(0, 0));
    accessor.GetPolygonMaterialIndices(list);
    EXPECT_THAT(List<LONG>(list), ElementsAre(3)) << "indices are taken as they are";
    mesh.Geometry().PolygonMaterials.clear();
    accessor.GetPolygonMaterialIndices(list);
    EXPECT_THAT(List<LONG>(list), ElementsAre(0));
    mesh.Geometry().NodeNormals.clear();
    EXPECT_EQ(accessor.GetNodeCount(), 6) << "without normals the indices tell";
    mesh.Geometry().TriangleNodes.clear();
    EXPECT_EQ(accessor.GetNodeCount(), 4);
}

TEST(Geometry, SeveralMaterials)
{
    SceneBuilder scene;
    const SceneMaterial red = scene.Material("red");
    const SceneMaterial blue = scene.Material("blue");
    SceneMesh mesh = scene.Mesh("mesh");
    mesh.Square(blue).Square(red).Square(blue);
    const CGeometryAccessor accessor = AccessorOf(mesh);
    CLongArray list;
    accessor.GetPolygonMaterialIndices(list);
    EXPECT_THAT(List<LONG>(list), ElementsAre(0, 0, 1, 1, 0, 0));
    EXPECT_THAT(Names(accessor.GetMaterials()), ElementsAre("blue", "red"));
    EXPECT_THAT(Names(mesh.Object().GetMaterials()), ElementsAre("blue", "red"));
    EXPECT_EQ(mesh.Object().GetMaterial(), blue.Object());
    EXPECT_THAT(Names(red.Object().GetUsedBy()), ElementsAre("mesh"));
}

TEST(Geometry, PropertiesByTheirUse)
{
    SceneBuilder scene;
    SceneMesh mesh = scene.Mesh("mesh");
    mesh.Square()
        .Colors("Colors_rgb", {1, 0, 0, 1, 0, 1, 0, 1, 0, 0, 1, 1, 1, 1, 1, 0.5f})
        .Uvs("Texture_Projection", {0, 0, 1, 0, 1, 1, 0, 1}, {{"projsclu", 2.0}, {"wrap_v", false}})
        .Colors("tq4xUser0_2f", std::vector<float>(16, 0.5f))
        .UserNormals(std::vector<float>(12, 0.0f));
    const CGeometryAccessor accessor = AccessorOf(mesh);
    EXPECT_THAT(Names(accessor.GetVertexColors()), ElementsAre("Colors_rgb", "tq4xUser0_2f"));
    EXPECT_THAT(Names(accessor.GetUVs()), ElementsAre("Texture_Projection"));
    EXPECT_THAT(Names(accessor.GetUserNormals()), ElementsAre("XSI_UserNormals"));

    const ClusterProperty colors = accessor.GetVertexColors()[0];
    CFloatArray values;
    EXPECT_EQ(colors.GetValueSize(), 4);
    EXPECT_TRUE(colors.GetValues(values).Succeeded());
    EXPECT_EQ(values.GetCount(), 16);
    EXPECT_EQ(values[15], 0.5f);
    EXPECT_EQ(ClusterProperty(accessor.GetUVs()[0]).GetValueSize(), 2);
    EXPECT_EQ(ClusterProperty(accessor.GetUserNormals()[0]).GetValueSize(), 3);
}

TEST(Geometry, TheProjectionOfACoordinateSet)
{
    SceneBuilder scene;
    SceneMesh mesh = scene.Mesh("mesh");
    mesh.Square().Uvs("uv", {}, {{"projsclu", 2.0}, {"wrap_v", false}});
    const ClusterProperty set = AccessorOf(mesh).GetUVs()[0];
    const CRefArray nested = set.GetNestedObjects();
    ASSERT_EQ(nested.GetCount(), 1);
    ASSERT_TRUE(nested[0].IsA(siPrimitiveID));
    const Primitive projection = nested[0];
    EXPECT_EQ(projection.GetParameterValue(L"projsclu", 3.0), CValue(2.0));
    EXPECT_EQ(projection.GetParameterValue(L"projsclv"), CValue(1.0));
    EXPECT_EQ(projection.GetParameterValue(L"wrap_u"), CValue(true));
    EXPECT_EQ(projection.GetParameterValue(L"wrap_v"), CValue(false));
    EXPECT_THAT(Names(projection.GetParameters()),
                ElementsAre("projsclu", "projsclv", "projsclw", "projrotu", "projrotv", "projrotw",
                            "projtrsu", "projtrsv", "projtrsw", "wrap_u", "wrap_v"));
    EXPECT_FALSE(projection.GetGeometry().IsValid());
    EXPECT_FALSE(Host::AddProjection(ClusterProperty()).IsValid());
}

TEST(Geometry, WhatCantBeReadFails)
{
    SceneBuilder scene;
    SceneMesh mesh = scene.Mesh("mesh");
    mesh.Square().Colors("c", {1, 2, 3, 4});
    const CGeometryAccessor accessor = AccessorOf(mesh);
    CDoubleArray positions(3);
    CFloatArray floats(3);
    mesh.Geometry().ArePositionsReadable = false;
    mesh.Geometry().AreNormalsReadable = false;
    EXPECT_EQ(accessor.GetVertexPositions(positions), CStatus::Fail);
    EXPECT_EQ(positions.GetCount(), 0);
    EXPECT_EQ(accessor.GetNodeNormals(floats), CStatus::Fail);
    EXPECT_EQ(floats.GetCount(), 0);
    const ClusterProperty colors = accessor.GetVertexColors()[0];
    Host::SetReadable(colors, false);
    EXPECT_EQ(colors.GetValues(floats), CStatus::Fail);
    Host::SetReadable(colors, true);
    EXPECT_TRUE(colors.GetValues(floats).Succeeded());
}

TEST(Geometry, ClustersWithMaterials)
{
    SceneBuilder scene;
    const SceneMaterial red = scene.Material("red");
    SceneMesh mesh = scene.Mesh("mesh");
    mesh.Square().Colors("c", {});
    const Cluster cluster = Host::CreateCluster(mesh, "part");
    EXPECT_FALSE(cluster.GetMaterial().IsValid());
    Host::SetMaterial(cluster, red.Object());
    EXPECT_EQ(cluster.GetMaterial(), red.Object());
    EXPECT_THAT(Names(red.Object().GetUsedBy()), ElementsAre("part"));
    EXPECT_EQ(mesh.Object().GetMaterial(), red.Object());
    const Geometry geometry = mesh.Object().GetActivePrimitive().GetGeometry();
    EXPECT_THAT(Names(geometry.GetClusters()), ElementsAre("Texture_Coordinates_AUTO", "part"));
    EXPECT_FALSE(Host::CreateCluster(scene.Null("null"), "part").IsValid());
    Host::SetMaterial(geometry, red.Object());
    EXPECT_EQ(red.Object().GetUsedBy().GetCount(), 1) << "a geometry itself has no material";
}

TEST(Geometry, ObjectsWithoutAPolygonMesh)
{
    SceneBuilder scene;
    for (const X3DObject& object :
         {X3DObject(scene.Null("null").Object()), Host::CreateNurbsSurface({}, "surface"),
          Host::CreateNurbsCurve({}, "curve")}) {
        EXPECT_FALSE(AccessorOf(object.GetRef()).IsValid()) << object.GetName().GetAsciiString();
        EXPECT_EQ(Host::FindMesh(object), nullptr);
        EXPECT_FALSE(
            Host::AddClusterProperty(object, Host::ClusterPropertyKind::Color, "c", 4, {}).IsValid());
        EXPECT_FALSE(Host::AddEnvelope(object, {}).IsValid());
    }
    const X3DObject surface = Host::CreateNurbsSurface({}, "surface");
    EXPECT_TRUE(surface.GetActivePrimitive().GetGeometry().IsA(siNurbsSurfaceMeshID));
    EXPECT_TRUE(Host::CreateNurbsCurve({}, "c").GetActivePrimitive().GetGeometry().IsA(siNurbsCurveListID));
}

TEST(Geometry, AMillionTriangles)
{
    SceneBuilder scene;
    Host::MeshGeometry geometry;
    constexpr LONG vertexCount = 500000;
    constexpr LONG triangleCount = 1000000;
    geometry.Positions.assign(3 * vertexCount, 0.5);
    geometry.NodeNormals.assign(3 * vertexCount, 1.0f);
    geometry.TriangleVertices.resize(3 * triangleCount);
    std::iota(geometry.TriangleVertices.begin(), geometry.TriangleVertices.end(), 0);
    const X3DObject mesh = Host::CreateMesh({}, "mesh", std::move(geometry));
    const CGeometryAccessor accessor = AccessorOf(mesh.GetRef());
    CLongArray nodes;
    CLongArray polygons;
    accessor.GetTriangleNodeIndices(nodes);
    accessor.GetPolygonTriangleIndices(polygons);
    EXPECT_EQ(nodes.GetCount(), 3 * triangleCount);
    EXPECT_EQ(nodes.GetArray()[2999999], 2999999);
    EXPECT_EQ(polygons[999999], 999999);
    EXPECT_EQ(accessor.GetNodeCount(), vertexCount);
}

TEST(Envelope, WeightsByDeformerAndByVertex)
{
    SceneBuilder scene;
    const SceneNode a = scene.Bone("a");
    const SceneNode b = scene.Bone("b");
    SceneMesh mesh = scene.Mesh("mesh");
    mesh.Square().Skin({{b, {{0, 100}, {1, 25.5}}}, {a, {{1, 74.5}, {2, 100}, {3, 100}}}});

    const CRefArray nested = mesh.Object().GetActivePrimitive().GetNestedObjects();
    ASSERT_EQ(nested.GetCount(), 1);
    const Envelope envelope = nested[0];
    ASSERT_TRUE(envelope.IsValid());
    EXPECT_EQ(mesh.Object().GetEnvelopes()[0], CRef(envelope));
    EXPECT_EQ(AccessorOf(mesh).GetEnvelopeWeights()[0], CRef(envelope));
    EXPECT_THAT(Names(mesh.Object().GetNestedObjects()), ElementsAre("polymsh", "Envelope"));

    EXPECT_THAT(Names(envelope.GetDeformers()), ElementsAre("b", "a"));
    EXPECT_THAT(List<double>(envelope.GetDeformerWeights(a)), ElementsAre(0, 74.5, 100, 100));
    EXPECT_THAT(List<double>(envelope.GetDeformerWeights(b, 3.0)), ElementsAre(100, 25.5, 0, 0));
    EXPECT_THAT(List<double>(envelope.GetWeights()), ElementsAre(100, 0, 25.5, 74.5, 0, 100, 0, 100));
    EXPECT_THAT(List<double>(envelope.GetDeformerWeights(mesh)), IsEmpty());
}

TEST(Envelope, StrayVerticesAndDeletedDeformers)
{
    SceneBuilder scene;
    const SceneNode bone = scene.Bone("bone");
    SceneMesh mesh = scene.Mesh("mesh");
    mesh.Square().Skin({{bone, {{-1, 100}, {4, 100}, {2, 50}}}, {CRef(), {{0, 50}}}});
    const Envelope envelope = mesh.Object().GetEnvelopes()[0];
    EXPECT_THAT(List<double>(envelope.GetDeformerWeights(bone)), ElementsAre(0, 0, 50, 0));
    EXPECT_FALSE(envelope.GetDeformers()[1].IsValid());
    Host::Objects().Delete(CRef(bone).GetObjectID());
    EXPECT_EQ(envelope.GetDeformers().GetCount(), 2);
    EXPECT_FALSE(envelope.GetDeformers()[0].IsValid());
}

TEST(Envelope, NoneOnAnUnskinnedMesh)
{
    SceneBuilder scene;
    const SceneMesh mesh = scene.Mesh("mesh");
    EXPECT_EQ(mesh.Object().GetEnvelopes().GetCount(), 0);
    EXPECT_EQ(mesh.Object().GetActivePrimitive().GetNestedObjects().GetCount(), 0);
    EXPECT_EQ(AccessorOf(mesh).GetEnvelopeWeights().GetCount(), 0);
}

} // namespace
} // namespace tq4x::test
