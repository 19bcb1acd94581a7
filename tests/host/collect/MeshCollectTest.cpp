#include "collect/ExportMaterial.h"
#include "collect/OpenGeometry.h"
#include "geometry/CheckMesh.h"
#include "support/CollectRun.h"

#include <limits>

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;

constexpr float Infinite = std::numeric_limits<float>::infinity();

/// The same values for each node of a square.
std::vector<float> ForEachNode(const std::vector<float>& values, int nodes = 4)
{
    std::vector<float> list;
    for (int i = 0; i < nodes; ++i)
        list.insert(list.end(), values.begin(), values.end());
    return list;
}

std::vector<float> SomeUvs()
{
    return {0.0f, 0.0f, 1.0f, 0.0f, 1.0f, 1.0f, 0.0f, 1.0f};
}

/// A square named "plate" with a material "red", and what became of it.
struct Plate
{
    SceneBuilder Scene;
    SceneMaterial Red = Scene.Material("red");
    SceneMesh Object = Scene.Mesh("plate").Square(Red);

    const XSI::CRef& Ref() const { return Object; }

    /// What is said, for a mesh that is given up; the node stays and the export goes on.
    std::vector<std::string> GiveUp(const std::vector<std::string>& options = {})
    {
        CollectRun run(options);
        EXPECT_TRUE(run.Succeeded());
        EXPECT_EQ(run.MeshOf(Ref()), nullptr);
        EXPECT_TRUE(run.BoneOf(Ref()).HasSkinningMatrix);
        EXPECT_THAT(run.Context.Content.Model.Meshes, IsEmpty());
        EXPECT_NE(run.Context.Content.Materials.MaterialAt(0), nullptr) << "its materials are written";
        EXPECT_THAT(FindMaterial(run.Context, Red)->Meshes, IsEmpty()) << "but it is no user of them";
        return run.Messages();
    }

    /// What is said, for a mesh that is collected.
    std::vector<std::string> Collect()
    {
        CollectRun run;
        EXPECT_NE(run.MeshOf(Ref()), nullptr);
        return run.Messages();
    }
};

TEST(MeshCollector, FillsPoolsAndTriangles)
{
    Plate plate;
    plate.Object.SplitNodes();
    plate.Object.Geometry().Positions[0] = 1e-7; // positions are not snapped
    CollectRun run;
    EXPECT_THAT(run.Messages(), IsEmpty());
    const Mesh* mesh = run.MeshOf(plate.Object);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->NodeName, "plate");
    EXPECT_EQ(mesh->BoneCapacity, 20u);
    EXPECT_EQ(mesh->SkinWeights, nullptr);
    EXPECT_THAT(mesh->AttributeFlags, ElementsAre(true, true, false, false, false, false, false, false, false,
                                                  false, false, false));
    ASSERT_THAT(mesh->Shapes, SizeIs(1));
    const SeparateDataShape& shape = *mesh->Shapes.begin()->second;
    EXPECT_THAT(shape.Pool[VertexSlot::Position].Read<Vector3>(),
                ElementsAre(Vector3{1e-7f, -1, 0}, Vector3{1, -1, 0}, Vector3{1, 1, 0}, Vector3{-1, 1, 0}));
    EXPECT_THAT(shape.Pool[VertexSlot::Normal].Read<Vector3>(), SizeIs(6));
    EXPECT_EQ(shape.Pool[VertexSlot::Position].Dimension, 3);
    EXPECT_EQ(shape.Pool[VertexSlot::Normal].Dimension, 3);
    EXPECT_EQ(shape.Pool[VertexSlot::BoneIndex].QuantizedMode, QuantizedMode::Ubyte);
    EXPECT_EQ(shape.Pool[VertexSlot::BoneWeight].Dimension, 4);
    std::vector<std::int32_t> positions;
    std::vector<std::int32_t> normals;
    for (const PolygonCorner& corner : shape.Corners) {
        positions.push_back(corner[VertexSlot::Position]);
        normals.push_back(corner[VertexSlot::Normal]);
        EXPECT_EQ(corner[VertexSlot::Tangent], -1);
        EXPECT_EQ(corner[VertexSlot::Color], -1);
        EXPECT_EQ(corner.VertexIndex, -1) << "an unskinned mesh needs no vertex numbers";
    }
    EXPECT_THAT(positions, ElementsAre(0, 1, 2, 0, 2, 3));
    EXPECT_THAT(normals, ElementsAre(0, 1, 2, 3, 4, 5));
    EXPECT_THAT(CheckMesh(*mesh, ShapeStage::Filled), IsEmpty());
}

TEST(MeshCollector, TrianglesGoUnderTheirMaterialsCreationNumber)
{
    SceneBuilder scene;
    const SceneMaterial red = scene.Material("red");
    const SceneMaterial blue = scene.Material("blue");
    const SceneMesh first = scene.Mesh("first").Square(blue);
    const SceneMesh second = scene.Mesh("second").Square(red).Square(blue);
    CollectRun run;
    EXPECT_THAT(run.MeshOf(first)->Shapes, ElementsAre(testing::Key(0u)));
    EXPECT_THAT(run.MeshOf(second)->Shapes, ElementsAre(testing::Key(0u), testing::Key(1u)));
    EXPECT_EQ(run.Context.Content.Materials.MaterialAt(0)->Name, "blue");
    EXPECT_THAT(FindMaterial(run.Context, blue)->Meshes, SizeIs(2));
    EXPECT_THAT(FindMaterial(run.Context, red)->Meshes, SizeIs(1));
}

TEST(MeshCollector, PolygonsOfSeveralTrianglesShareTheirMaterial)
{
    Plate plate;
    const SceneMaterial blue = plate.Scene.Material("blue");
    XSI::Host::MeshGeometry& geometry = plate.Object.Geometry();
    geometry.TrianglePolygons = {1, 1};
    geometry.PolygonMaterials = {0, 1};
    geometry.Materials = {plate.Red, blue};
    CollectRun run;
    ASSERT_NE(run.MeshOf(plate.Object), nullptr);
    ASSERT_THAT(run.MeshOf(plate.Object)->Shapes, SizeIs(1));
    EXPECT_EQ(run.MeshOf(plate.Object)->Shapes.begin()->first, 1u);
}

TEST(MeshCollector, UnreadableListsGiveTheMeshUp)
{
    {
        Plate plate;
        plate.Object.Geometry().ArePositionsReadable = false;
        EXPECT_THAT(plate.GiveUp(), ElementsAre("E Can't get vertex position(plate)."));
    }
    {
        Plate plate;
        plate.Object.Geometry().AreNormalsReadable = false;
        EXPECT_THAT(plate.GiveUp(), ElementsAre("E Can't get vertex color(plate)."));
    }

    const struct
    {
        XSI::Host::ClusterPropertyKind Kind;
        const char* Name;
        LONG Width;
        const char* Message;
    } rows[] = {
        {XSI::Host::ClusterPropertyKind::Color, "Colors", 4, "E Can't get vertex color(plate)."},
        {XSI::Host::ClusterPropertyKind::Color, "tq4xUser1", 4, "E Can't get vertex user data(plate)."},
        {XSI::Host::ClusterPropertyKind::Uv, "uv", 2, "E Can't get vertex UV(plate)."},
    };

    for (const auto& row : rows) {
        Plate plate;
        const std::vector<float> values(static_cast<std::size_t>(4 * row.Width), 0.5f);
        const XSI::ClusterProperty property =
            XSI::Host::AddClusterProperty(plate.Object, row.Kind, row.Name, row.Width, values);
        XSI::Host::SetReadable(property, false);
        EXPECT_THAT(plate.GiveUp(), ElementsAre(row.Message)) << row.Name;
    }
}

TEST(MeshCollector, ListsThatDoNotFitGiveTheMeshUp)
{
    using Change = void (*)(SceneMesh&);

    const struct
    {
        const char* Name;
        Change Spoil;
    } rows[] = {
        {"positions that are no triples", [](SceneMesh& mesh) { mesh.Geometry().Positions.push_back(1.0); }},
        {"normals that are no triples", [](SceneMesh& mesh) { mesh.Geometry().NodeNormals.push_back(1.0f); }},
        {"too few colours",
         [](SceneMesh& mesh) {
             mesh.Colors("c", {1, 1, 1, 1});
         }},
        {"too many colours",
         [](SceneMesh& mesh) {
             mesh.Colors("c", ForEachNode({1, 1, 1, 1}, 5));
         }},
        {"no colours", [](SceneMesh& mesh) { mesh.Colors("c", {}); }},
        {"too few user values",
         [](SceneMesh& mesh) {
             mesh.Colors("tq4xUser0", {1, 1, 1, 1});
         }},
        {"too few coordinates",
         [](SceneMesh& mesh) {
             mesh.Uvs("uv", {1, 1});
         }},
        {"coordinates of one component",
         [](SceneMesh& mesh) {
             XSI::Host::AddClusterProperty(mesh, XSI::Host::ClusterPropertyKind::Uv, "uv", 1, {0, 0, 0, 0});
         }},
        {"a vertex past the end", [](SceneMesh& mesh) { mesh.Geometry().TriangleVertices[4] = 4; }},
        {"a vertex below 0", [](SceneMesh& mesh) { mesh.Geometry().TriangleVertices[0] = -1; }},
        {"a node past the end", [](SceneMesh& mesh) { mesh.Geometry().TriangleNodes = {0, 1, 2, 0, 2, 4}; }},
        {"too few nodes",
         [](SceneMesh& mesh) {
             mesh.Geometry().TriangleNodes = {0, 1, 2};
         }},
        {"a triangle of two corners", [](SceneMesh& mesh) { mesh.Geometry().TriangleVertices.pop_back(); }},
        {"a polygon past the end",
         [](SceneMesh& mesh) {
             mesh.Geometry().TrianglePolygons = {0, 7};
         }},
        {"a material past the end",
         [](SceneMesh& mesh) {
             mesh.Geometry().PolygonMaterials = {0, 1};
         }},
        {"a material below 0",
         [](SceneMesh& mesh) {
             mesh.Geometry().PolygonMaterials = {0, -1};
         }},
        {"a material that is none",
         [](SceneMesh& mesh) {
             mesh.Geometry().Materials.push_back({});
             mesh.Geometry().PolygonMaterials = {0, 1};
         }},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        Plate plate;
        row.Spoil(plate.Object);
        EXPECT_THAT(plate.GiveUp(), ElementsAre("E Internal Error(plate)"));
    }
}

TEST(MeshCollector, AMeshWithoutMaterialIsGivenUp)
{
    SceneBuilder scene;
    const SceneMesh bare = scene.Mesh("bare").Square();
    CollectRun run;
    EXPECT_TRUE(run.Succeeded());
    EXPECT_EQ(run.MeshOf(bare), nullptr);
    EXPECT_THAT(run.Messages(), ElementsAre("E Internal Error(bare)"));
}

TEST(MeshCollector, AMeshWithoutTrianglesHasNoShapes)
{
    SceneBuilder scene;
    const SceneMesh empty = scene.Mesh("empty");
    CollectRun run;
    EXPECT_THAT(run.Messages(), IsEmpty());
    ASSERT_NE(run.MeshOf(empty), nullptr);
    EXPECT_THAT(run.MeshOf(empty)->Shapes, IsEmpty());
}

TEST(MeshNormals, OfTheUserReplaceTheBaseWhereTheyAreSet)
{
    Plate plate;
    plate.Object.UserNormals({1, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, -1});
    plate.Object.UserNormals(ForEachNode({9, 9, 9})); // the first property alone counts
    CollectRun run;
    EXPECT_THAT(run.MeshOf(plate.Object)->Pool[VertexSlot::Normal].Read<Vector3>(),
                ElementsAre(Vector3{1, 0, 0}, Vector3{0, 0, 1}, Vector3{0, 1, 0}, Vector3{0, 0, -1}));
    EXPECT_THAT(run.Messages(), IsEmpty());
}

TEST(MeshNormals, OfTheUserInAnotherNumberAreIgnored)
{
    Plate plate;
    plate.Object.Normals({0, 0, 0, 0, 0, 1, 0, 0, 1, 0, 0, 1}).UserNormals({1, 0, 0});
    CollectRun run;
    EXPECT_EQ(run.MeshOf(plate.Object)->Pool[VertexSlot::Normal].Read<Vector3>()[1], (Vector3{0, 0, 1}));
    EXPECT_THAT(run.Messages(), ElementsAre("W Zero normal exist(plate)"))
        << "the base is tested all the same";
}

TEST(MeshNormals, ThatAreZeroAreToldOnceForAMesh)
{
    {
        Plate plate;
        plate.Object.Normals(ForEachNode({0, 0, 0}));
        EXPECT_THAT(plate.Collect(), ElementsAre("W Zero normal exist(plate)"));
    }
    {
        Plate plate; // exactly zero only
        plate.Object.Normals(ForEachNode({0, 0, 1e-30f}));
        EXPECT_THAT(plate.Collect(), IsEmpty());
    }
    {
        Plate plate; // the user mended them
        plate.Object.Normals(ForEachNode({0, 0, 0})).UserNormals(ForEachNode({0, 1, 0}));
        EXPECT_THAT(plate.Collect(), IsEmpty());
    }
}

/// The colour that a mesh takes of these properties, all of them with their place in red.
struct TakenColor
{
    std::int32_t Number = -1;
    std::int32_t Dimension = 0;

    bool operator==(const TakenColor&) const = default;
};

TakenColor TakeColor(const std::vector<const char*>& names)
{
    Plate plate;
    float number = 0.0f;
    for (const char* name : names)
        plate.Object.Colors(name, ForEachNode({number++, 0, 0, 1}));
    CollectRun run;
    const Mesh* mesh = run.MeshOf(plate.Object);
    if (mesh == nullptr)
        return {};
    const VertexAttributeSlot& slot = mesh->Pool[VertexSlot::Color];
    EXPECT_EQ(mesh->AttributeFlags[IndexOf(VertexSlot::Color)], slot.Size() > 0);
    EXPECT_EQ(static_cast<ExportMesh*>(run.Collector(plate.Object))->HasVertexColors(), slot.Size() > 0);
    const std::int32_t taken =
        slot.Size() > 0 ? static_cast<std::int32_t>(slot.Read<Vector4>().front().X) : -1;
    return {taken, slot.Dimension};
}

TEST(MeshColors, AreTheFirstByName)
{
    const struct
    {
        std::vector<const char*> Names;
        TakenColor Taken;
    } rows[] = {
        {{}, {-1, 4}},
        {{"Colors"}, {0, 4}},
        {{"b", "a", "c"}, {1, 4}},
        {{"a", "B"}, {1, 4}}, // by bytes: capitals first
        {{"Colors_rgb"}, {0, 3}},
        {{"Colors_1_rgb"}, {0, 3}},
        {{"rgb"}, {0, 4}}, // one piece only
        {{"Colors_RGB"}, {0, 4}},
        {{"Colors_rgba"}, {0, 4}},
        {{"Colors_rgb_x"}, {0, 4}},
        {{"Tangents"}, {-1, 4}},
        {{"Tangents_rgb"}, {-1, 4}},
        {{"tangents"}, {0, 4}},
        {{"Tangent"}, {0, 4}},
        {{"XSI_UserNormals"}, {-1, 4}},
        {{"XSI_UserNormals1", "z"}, {1, 4}},
        {{"tq4xUser0", "tq4xUser1_3f", "tq4xUser2_rgb"}, {-1, 4}},
        {{"tq4xUser3"}, {0, 4}},
        {{"tq4xUser"}, {0, 4}},
        {{"TQ4XUser0"}, {0, 4}},
        {{"tq4xUser0", "Tangents", "Colors_rgb"}, {2, 3}},
    };

    for (const auto& row : rows)
        EXPECT_EQ(TakeColor(row.Names), row.Taken) << (row.Names.empty() ? "none" : row.Names.front());
}

/// The alpha that reaches the pool, and whether the mesh counts as translucent.
std::pair<float, bool> AlphaOf(const char* name, float alpha, const char* option)
{
    Plate plate;
    plate.Object.Colors(name, ForEachNode({1, 0.5f, 0.25f, alpha}));
    CollectRun run({option});
    const Vector4& color = run.MeshOf(plate.Object)->Pool[VertexSlot::Color].Read<Vector4>().front();
    EXPECT_EQ(color.Y, 0.5f);
    return {color.W, static_cast<ExportMesh*>(run.Collector(plate.Object))->HasTranslucentVertexColors()};
}

TEST(MeshColors, AlphaIsInvertedUnlessTheOptionIsOff)
{
    EXPECT_EQ(AlphaOf("Colors", 0.25f, "InvertVertexColorAlpha:true"), std::pair(0.75f, true));
    EXPECT_EQ(AlphaOf("Colors", 0.25f, "InvertVertexColorAlpha:false"), std::pair(0.25f, true));
    EXPECT_EQ(AlphaOf("Colors", 0.0f, "InvertVertexColorAlpha:true"), std::pair(1.0f, false));
    EXPECT_EQ(AlphaOf("Colors", 0.0f, "Unknown:1"), std::pair(1.0f, false)) << "on without being asked";
    EXPECT_EQ(AlphaOf("Colors", 0.99995f, "InvertVertexColorAlpha:false"), std::pair(0.99995f, false));
    EXPECT_EQ(AlphaOf("Colors_rgb", 0.25f, "InvertVertexColorAlpha:true"), std::pair(0.75f, false));
}

TEST(MeshUserAttributes, TakeTheirFormFromTheName)
{
    const struct
    {
        const char* Name;
        VertexSlot Slot;
        std::int32_t Dimension;
        QuantizedMode Mode;
    } rows[] = {
        {"tq4xUser0", VertexSlot::UserAttribute0, 4, QuantizedMode::Byte},
        {"tq4xUser1_3f", VertexSlot::UserAttribute1, 3, QuantizedMode::Float},
        {"tq4xUser0_b", VertexSlot::UserAttribute0, 4, QuantizedMode::Byte},
        {"tq4xUser2_s", VertexSlot::UserAttribute2, 4, QuantizedMode::Short},
        {"tq4xUser2_f", VertexSlot::UserAttribute2, 4, QuantizedMode::Float},
        {"tq4xUser2_1s", VertexSlot::UserAttribute2, 1, QuantizedMode::Short},
        {"tq4xUser2_2b", VertexSlot::UserAttribute2, 2, QuantizedMode::Byte},
        {"tq4xUser2_4", VertexSlot::UserAttribute2, 4, QuantizedMode::Byte},
        {"tq4xUser2_3", VertexSlot::UserAttribute2, 3, QuantizedMode::Byte},
        {"tq4xUser2_3x", VertexSlot::UserAttribute2, 3, QuantizedMode::Byte},
        {"tq4xUser2_5f", VertexSlot::UserAttribute2, 4, QuantizedMode::Byte}, // 5 is read as the letter
        {"tq4xUser2_0f", VertexSlot::UserAttribute2, 4, QuantizedMode::Byte},
        {"tq4xUser2_F", VertexSlot::UserAttribute2, 4, QuantizedMode::Byte},
        {"tq4xUser2_wind_2f", VertexSlot::UserAttribute2, 2, QuantizedMode::Float}, // the last piece
        {"tq4xUser2wind_2f", VertexSlot::UserAttribute2, 2, QuantizedMode::Float},
        {"tq4xUser2_", VertexSlot::UserAttribute2, 4, QuantizedMode::Byte},
        {"tq4xUser2_33f", VertexSlot::UserAttribute2, 3, QuantizedMode::Byte},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        Plate plate;
        plate.Object.Colors(row.Name, ForEachNode({1, 2, 3, 4}));
        CollectRun run({"QuantizePos:Short"});
        const Mesh* mesh = run.MeshOf(plate.Object);
        ASSERT_NE(mesh, nullptr);
        const VertexAttributeSlot& slot = mesh->Pool[row.Slot];
        EXPECT_EQ(slot.Dimension, row.Dimension);
        EXPECT_EQ(slot.QuantizedMode, row.Mode);
        EXPECT_THAT(slot.Read<Vector4>(), SizeIs(4));
        EXPECT_EQ(slot.Read<Vector4>().front(), (Vector4{1, 2, 3, 4})) << "no alpha is inverted";
        EXPECT_TRUE(mesh->AttributeFlags[IndexOf(row.Slot)]);
        EXPECT_EQ(mesh->Shapes.begin()->second->Corners.front()[row.Slot], 0);
    }
}

TEST(MeshUserAttributes, OfOneSlotTwiceGiveTheMeshUp)
{
    Plate plate;
    plate.Object.Colors("tq4xUser0", ForEachNode({1, 1, 1, 1}));
    plate.Object.Colors("tq4xUser1", ForEachNode({1, 1, 1, 1}));
    plate.Object.Colors("tq4xUser0_3f", ForEachNode({1, 1, 1, 1}));
    EXPECT_THAT(plate.GiveUp(), ElementsAre("E Same user attribute exists(tq4xUser0: tq4xUser0_3f)"));
}

TEST(MeshQuantization, IsTheUsersUnlessTheToolFollows)
{
    const struct
    {
        std::vector<std::string> Options;
        QuantizedMode Position, Normal, Coordinate;
    } rows[] = {
        {{}, QuantizedMode::Float, QuantizedMode::Float, QuantizedMode::Float},
        {{"QuantizePos:Short", "QuantizeNrm:Byte"},
         QuantizedMode::Short,
         QuantizedMode::Byte,
         QuantizedMode::Float},
        {{"QuantizeTex:Short"}, QuantizedMode::Float, QuantizedMode::Float, QuantizedMode::Short},
        {{"QuantizePos:Short", "QuantizeNrm:Byte", "NodeCompression:1"},
         QuantizedMode::Float,
         QuantizedMode::Float,
         QuantizedMode::Float},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.Options));
        Plate plate;
        plate.Object.Colors("tq4xUser0_s", ForEachNode({1, 1, 1, 1}));
        plate.Object.Uvs("uv", SomeUvs());
        CollectRun run(row.Options);
        const VertexAttributePool& pool = run.MeshOf(plate.Object)->Pool;
        EXPECT_EQ(pool[VertexSlot::Position].QuantizedMode, row.Position);
        EXPECT_EQ(pool[VertexSlot::Normal].QuantizedMode, row.Normal);
        EXPECT_EQ(pool[VertexSlot::TextureCoordinate0].QuantizedMode, row.Coordinate);
        EXPECT_EQ(pool[VertexSlot::UserAttribute0].QuantizedMode, QuantizedMode::Short) << "the name's";
        EXPECT_EQ(pool[VertexSlot::BoneWeight].QuantizedMode, QuantizedMode::Ubyte);
    }
}

TEST(MeshCoordinates, AreTakenForTexturesAloneAndSnapped)
{
    SceneBuilder scene;
    const SceneMaterial cloth = scene.Material("cloth").Image("diffuse", "a.tga", "uv");
    SceneMesh mesh = scene.Mesh("plate").Square(cloth);
    mesh.Uvs("unused", SomeUvs());
    mesh.Uvs("uv", {9.9e-7f, -9.9e-7f, 1e-6f, -1e-6f, 0.5f, 2.0f, -3.0f, 0.0f});
    CollectRun run;
    const VertexAttributePool& pool = run.MeshOf(mesh)->Pool;
    EXPECT_THAT(pool[VertexSlot::TextureCoordinate0].Read<Vector2>(),
                ElementsAre(Vector2{0, 0}, Vector2{1e-6f, -1e-6f}, Vector2{0.5f, 2.0f}, Vector2{-3.0f, 0}));
    EXPECT_EQ(pool[VertexSlot::TextureCoordinate0].Dimension, 2);
    EXPECT_EQ(pool[VertexSlot::TextureCoordinate1].Size(), 0u);
    const auto& collector = static_cast<ExportMesh&>(*run.Collector(mesh));
    EXPECT_EQ(collector.FindCoordinateSetNumber("uv"), 0);
    EXPECT_EQ(collector.FindCoordinateSetNumber("unused"), -1);
    EXPECT_NE(collector.FindUvRecord("unused"), nullptr);
    EXPECT_EQ(collector.FindUvRecord("other"), nullptr);
}

TEST(MeshCoordinates, AreNumberedByFirstUseOverTheMaterialsInOrder)
{
    SceneBuilder scene;
    const SceneMaterial first =
        scene.Material("first").Image("diffuse", "a.tga", "c").NormalMap("n.tga", "a");
    const SceneMaterial second =
        scene.Material("second").Image("diffuse", "b.tga", "b").NormalMap("m.tga", "c");
    SceneMesh mesh = scene.Mesh("plate").Square(first).Square(second);
    for (const char* name : {"a", "b", "c"})
        mesh.Uvs(name, std::vector<float>(16, 0.5f));
    CollectRun run;
    const auto& collector = static_cast<ExportMesh&>(*run.Collector(mesh));
    EXPECT_EQ(collector.FindCoordinateSetNumber("c"), 0);
    EXPECT_EQ(collector.FindCoordinateSetNumber("a"), 1);
    EXPECT_EQ(collector.FindCoordinateSetNumber("b"), 2);
    const PolygonCorner& corner = run.MeshOf(mesh)->Shapes.begin()->second->Corners[1];
    EXPECT_EQ(corner[VertexSlot::TextureCoordinate0], 1);
    EXPECT_EQ(corner[VertexSlot::TextureCoordinate2], 1);
}

TEST(MeshCoordinates, OfAMaterialThatNoTriangleHasDoNotCount)
{
    SceneBuilder scene;
    const SceneMaterial plain = scene.Material("plain");
    const SceneMaterial cloth = scene.Material("cloth").Image("diffuse", "a.tga", "missing");
    SceneMesh mesh = scene.Mesh("plate").Square(plain);
    mesh.Geometry().Materials.push_back(cloth);
    CollectRun run;
    EXPECT_NE(run.MeshOf(mesh), nullptr);
    EXPECT_THAT(run.Messages(), IsEmpty());
}

TEST(MeshCoordinates, ThatAreMissingGiveTheMeshUp)
{
    SceneBuilder scene;
    const SceneMaterial cloth = scene.Material("cloth").Image("diffuse", "a.tga", "uv");
    SceneMesh mesh = scene.Mesh("plate").Square(cloth);
    mesh.Uvs("UV", SomeUvs());
    CollectRun run;
    EXPECT_TRUE(run.Succeeded());
    EXPECT_EQ(run.MeshOf(mesh), nullptr);
    EXPECT_EQ(run.Messages().back(), "E Can't get UV data of Texture(a.tga) at Material(cloth).");
}

TEST(MeshCoordinates, OfMoreThanThreeSetsGiveTheMeshUp)
{
    SceneBuilder scene;
    const SceneMaterial first =
        scene.Material("first").Image("diffuse", "a.tga", "a").NormalMap("n.tga", "b");
    const SceneMaterial second =
        scene.Material("second").Image("diffuse", "b.tga", "c").NormalMap("m.tga", "d");
    SceneMesh mesh = scene.Mesh("plate").Square(first).Square(second);
    for (const char* name : {"a", "b", "c", "d"})
        mesh.Uvs(name, std::vector<float>(16, 0.5f));
    CollectRun run;
    EXPECT_TRUE(run.Succeeded());
    EXPECT_EQ(run.MeshOf(mesh), nullptr);
    EXPECT_EQ(run.Messages().back(), "W The number of composite texture is over 3(plate)");
}

TEST(MeshCoordinates, OfThreeComponentsLendTheirFirstTwo)
{
    SceneBuilder scene;
    const SceneMaterial cloth = scene.Material("cloth").Image("diffuse", "a.tga", "uvw");
    const SceneMesh mesh = scene.Mesh("plate").Square(cloth);
    XSI::Host::AddClusterProperty(mesh, XSI::Host::ClusterPropertyKind::Uv, "uvw", 3,
                                  {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    CollectRun run;
    EXPECT_THAT(run.MeshOf(mesh)->Pool[VertexSlot::TextureCoordinate0].Read<Vector2>(),
                ElementsAre(Vector2{1, 2}, Vector2{4, 5}, Vector2{7, 8}, Vector2{10, 11}));
}

TEST(MeshTangents, ComeWithAWardMaterialThatHasATexture)
{
    const struct
    {
        const char* Shader;
        bool HasTexture;
        bool HasTangents;
    } rows[] = {
        {"ward", true, true},
        {"ward", false, false},
        {"phong", true, false},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Shader);
        SceneBuilder scene;
        SceneMaterial cloth = scene.Material("cloth", row.Shader);
        if (row.HasTexture)
            cloth.NormalMap("n.tga", "uv");
        const SceneMaterial plain = scene.Material("plain");
        SceneMesh mesh = scene.Mesh("plate").Square(cloth).Square(plain);
        std::vector<float> uvs = SomeUvs();
        const std::vector<float> again = SomeUvs();
        uvs.insert(uvs.end(), again.begin(), again.end());
        mesh.Uvs("uv", uvs);
        CollectRun run;
        ASSERT_NE(run.MeshOf(mesh), nullptr);
        EXPECT_FALSE(run.MeshOf(mesh)->AttributeFlags[IndexOf(VertexSlot::Tangent)]) << "a shape's matter";
        for (const auto& [material, shape] : run.MeshOf(mesh)->Shapes) {
            EXPECT_EQ(shape->AttributeFlags[IndexOf(VertexSlot::Tangent)], row.HasTangents)
                << "the whole mesh gets tangents, or none of it";
            const std::vector<Vector3>& tangents = shape->Pool[VertexSlot::Tangent].Read<Vector3>();
            EXPECT_THAT(tangents, SizeIs(row.HasTangents ? 8 : 0));
            if (row.HasTangents) {
                const std::int32_t entry = shape->Corners.front()[VertexSlot::Tangent];
                EXPECT_EQ(tangents.at(static_cast<std::size_t>(entry)), (Vector3{1, 0, 0}));
            }
        }
    }
}

TEST(MeshTangents, FollowTheFirstSetOfAWardMaterial)
{
    SceneBuilder scene;
    const SceneMaterial plain = scene.Material("plain").Image("diffuse", "a.tga", "other");
    const SceneMaterial cloth =
        scene.Material("cloth", "ward").Image("diffuse", "b.tga", "turned").NormalMap("n.tga", "other");
    SceneMesh mesh = scene.Mesh("plate").Triangles({}, plain).Square(plain).Square(cloth);
    const std::vector<float> straight = {0, 0, 1, 0, 1, 1, 0, 1, 0, 0, 1, 0, 1, 1, 0, 1};
    const std::vector<float> turned = {0, 0, 0, 1, 1, 1, 1, 0, 0, 0, 0, 1, 1, 1, 1, 0};
    mesh.Uvs("other", straight).Uvs("turned", turned);
    CollectRun run;
    ASSERT_NE(run.MeshOf(mesh), nullptr);
    EXPECT_EQ(static_cast<ExportMesh&>(*run.Collector(mesh)).FindCoordinateSetNumber("turned"), 1);
    const SeparateDataShape& shape = *run.MeshOf(mesh)->Shapes.begin()->second;
    const auto entry = static_cast<std::size_t>(shape.Corners.front()[VertexSlot::Tangent]);
    EXPECT_EQ(shape.Pool[VertexSlot::Tangent].Read<Vector3>().at(entry), (Vector3{0, 1, 0}))
        << "u runs along Y in the set that was chosen";
}

TEST(MeshCollector, NumbersThatAreNotFiniteAreTold)
{
    const std::string told = "W Values that are not finite exist(plate).";
    {
        Plate plate;
        plate.Object.Geometry().Positions[4] = std::numeric_limits<double>::quiet_NaN();
        EXPECT_THAT(plate.Collect(), ElementsAre(told));
    }
    {
        Plate plate; // too large for single precision
        plate.Object.Geometry().Positions[4] = 1e200;
        EXPECT_THAT(plate.Collect(), ElementsAre(told));
    }
    {
        Plate plate;
        plate.Object.Normals(ForEachNode({Infinite, 0, 0}));
        EXPECT_THAT(plate.Collect(), ElementsAre(told));
    }
    {
        Plate plate;
        plate.Object.Colors("c", ForEachNode({0, 0, 0, Infinite}));
        EXPECT_THAT(plate.Collect(), ElementsAre(told));
    }
    {
        Plate plate;
        plate.Object.Colors("tq4xUser0", ForEachNode({0, 0, Infinite, 0}));
        EXPECT_THAT(plate.Collect(), ElementsAre(told));
    }
    {
        Plate plate;
        plate.Object.Uvs("uv", ForEachNode({0, Infinite}));
        EXPECT_THAT(plate.Collect(), ElementsAre(told));
    }
}

TEST(MeshDiscontinuity, ComesFromTheApproximationOfTheObject)
{
    const Plate plate;
    const XSI::CGeometryAccessor::Settings usual = OpenGeometry(plate.Object.Object()).GetSettings();
    EXPECT_TRUE(usual.UseDiscontinuity);
    EXPECT_EQ(usual.DiscontinuityAngle, 60.0);
    EXPECT_EQ(usual.SubdivisionLevel, 0);
    EXPECT_EQ(usual.Mode, XSI::siConstructionModeModeling);

    XSI::Host::AddPlainProperty(plate.Object, "other", "other");
    const XSI::Property approximation = XSI::Host::AddProperty(plate.Object, "geomapprox");
    XSI::Host::AddParameter(approximation, "gapproxmoad", false);
    XSI::Host::AddParameter(approximation, "gapproxmoan", 12.5);
    const XSI::CGeometryAccessor::Settings own = OpenGeometry(plate.Object.Object()).GetSettings();
    EXPECT_FALSE(own.UseDiscontinuity);
    EXPECT_EQ(own.DiscontinuityAngle, 12.5);
}

TEST(MeshDiscontinuity, KeepsItsDefaultsWithoutParameters)
{
    const Plate plate;
    XSI::Host::AddPlainProperty(plate.Object, "geomapprox", "bare");
    const XSI::CGeometryAccessor::Settings settings = OpenGeometry(plate.Object.Object()).GetSettings();
    EXPECT_TRUE(settings.UseDiscontinuity);
    EXPECT_EQ(settings.DiscontinuityAngle, 60.0);
}

} // namespace
} // namespace tq4x::test
