#include "collect/ReadEnvelope.h"
#include "geometry/CheckMesh.h"
#include "support/CollectRun.h"

#include <limits>

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinite = std::numeric_limits<double>::infinity();

/// A triangle whose first vertex has the given weights of the bones "a", "b", ...; the others hang on "a".
struct SkinnedTriangle
{
    explicit SkinnedTriangle(const std::vector<double>& weights)
    {
        Object.Vertices({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}).Triangles({{0, 1, 2}}, Scene.Material("red"));
        std::vector<std::pair<XSI::CRef, VertexWeights>> skin;
        for (std::size_t i = 0; i < weights.size(); ++i) {
            Bones.push_back(Scene.Bone(std::string(1, static_cast<char>('a' + i))));
            VertexWeights vertices{{0, weights[i]}};
            if (i == 0)
                vertices.insert(vertices.end(), {{1, 100.0}, {2, 100.0}});
            skin.emplace_back(Bones.back(), vertices);
        }
        Object.Skin(skin);
    }

    SceneBuilder Scene;
    SceneMesh Object = Scene.Mesh("skin");
    std::vector<SceneNode> Bones;
};

/// "a60 b40": the influences of the first vertex; or the message of a mesh that is given up.
std::string CollectFirstVertex(const std::vector<double>& weights)
{
    SkinnedTriangle triangle(weights);
    CollectRun run;
    EXPECT_TRUE(run.Succeeded());
    const Mesh* mesh = run.MeshOf(triangle.Object);
    if (mesh == nullptr)
        return run.Messages().empty() ? "silently given up" : run.Messages().front();
    EXPECT_THAT(run.Messages(), IsEmpty());
    std::string text;
    for (const SkinInfluence& influence : mesh->SkinWeights->front())
        text += (text.empty() ? "" : " ") + influence.Bone->Name + std::to_string(influence.Percentage);
    return text;
}

TEST(Envelope, PercentagesAreCutAndMadeWhole)
{
    const std::string wrong = "E Wrong weighted vertices exist(skin)";

    const struct
    {
        std::vector<double> Weights;
        std::string Influences;
    } rows[] = {
        {{100}, "a100"},
        {{60, 40}, "a60 b40"},
        {{99.95}, "a100"}, // enough, and made whole
        {{99.9}, "a100"},  // just enough
        {{99.8}, wrong},
        {{0}, wrong},
        {{60.9, 39.1}, "a61 b39"}, // 60 and 39, the largest takes the rest
        {{0, 100}, "b100"},        // a weight of 0 is no influence
        {{99.5, 0.5}, "a100 b0"},  // less than a percent is one, of nothing
        {{150, -50}, "a150 b-50"},
        {{50, -50}, wrong},
        {{Nan}, wrong},
        {{100, Nan}, wrong},
        {{Infinite}, wrong},
        {{100, Infinite}, wrong},
        {{100, -Infinite}, wrong},
    };

    for (const auto& row : rows) {
        EXPECT_EQ(CollectFirstVertex(row.Weights), row.Influences) << testing::PrintToString(row.Weights);
    }
}

TEST(Envelope, CornersKnowTheirVertexAndPolygonsTheirBones)
{
    SkinnedTriangle triangle({60, 40});
    CollectRun run;
    const Mesh* mesh = run.MeshOf(triangle.Object);
    ASSERT_NE(mesh, nullptr);
    const SeparateDataShape& shape = *mesh->Shapes.begin()->second;
    EXPECT_EQ(shape.Corners[2].VertexIndex, 2);
    EXPECT_EQ(shape.SkinWeights, mesh->SkinWeights.get());
    EXPECT_THAT(shape.BoneLists[shape.Polygons.front().Bones],
                ElementsAre(&run.BoneOf(triangle.Bones[0]), &run.BoneOf(triangle.Bones[1])));
    EXPECT_FALSE(mesh->AttributeFlags[IndexOf(VertexSlot::BoneIndex)]);
    EXPECT_THAT(CheckMesh(*mesh, ShapeStage::Filled), IsEmpty());
}

TEST(Envelope, BonesMayStandBehindTheirMeshInTheScene)
{
    SceneBuilder scene;
    SceneMesh mesh = scene.Mesh("skin");
    const SceneNode bone = scene.Bone("bone", mesh);
    mesh.Vertices({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}).Triangles({{0, 1, 2}}, scene.Material("red"));
    mesh.Skin({{bone, {{0, 100}, {1, 100}, {2, 100}}}});
    CollectRun run;
    ASSERT_NE(run.MeshOf(mesh), nullptr);
    EXPECT_EQ(run.MeshOf(mesh)->SkinWeights->front().front().Bone, &run.BoneOf(bone));
    EXPECT_THAT(run.Collector(bone)->InfluencedMeshes, ElementsAre(run.Collector(mesh)));
    EXPECT_THAT(static_cast<ExportMesh*>(run.Collector(mesh))->Influences, ElementsAre(run.Collector(bone)));
}

TEST(Envelope, InsideAnInstanceTheInstancesBonesMove)
{
    SceneBuilder scene;
    const SceneNode master = scene.Model("master");
    const SceneNode bone = scene.Bone("bone", master);
    SceneMesh mesh = scene.Mesh("skin", master);
    mesh.Vertices({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}).Triangles({{0, 1, 2}}, scene.Material("red"));
    mesh.Skin({{bone, {{0, 100}, {1, 100}, {2, 100}}}});
    const SceneNode copy = scene.Instance("copy", master);
    CollectRun run;
    const Mesh* shown = run.BoneOf(mesh, copy).Mesh;
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->SkinWeights->front().front().Bone, &run.BoneOf(bone, copy));
    EXPECT_EQ(run.MeshOf(mesh)->SkinWeights->front().front().Bone, &run.BoneOf(bone));
}

TEST(Envelope, WithoutDeformersWeighsNothing)
{
    SceneBuilder scene;
    const SceneMesh mesh = scene.Mesh("skin").Square(scene.Material("red")).Skin({});
    CollectRun run;
    EXPECT_EQ(run.MeshOf(mesh), nullptr);
    EXPECT_THAT(run.Messages(), ElementsAre("E Wrong weighted vertices exist(skin)"));
}

TEST(Envelope, WeightsOfAnotherNumberGiveTheMeshUp)
{
    SkinnedTriangle triangle({100});
    CollectRun run({}, CollectRun::Until::Walk);
    const XSI::Envelope envelope = FindEnvelope(triangle.Object.Object());
    std::unique_ptr<SkinWeightTable> table;
    EXPECT_EQ(ReadEnvelope(run.Context, envelope, {}, 4, "skin", table), ReadResult::GivenUp);
    EXPECT_EQ(ReadEnvelope(run.Context, envelope, {}, 3, "skin", table), ReadResult::Done);
    EXPECT_THAT(run.Messages(), ElementsAre("E Internal Error(skin)"));
}

TEST(Envelope, ADeformerThatIsNotExportedFailsTheExport)
{
    SceneBuilder scene;
    const SceneNode surface(XSI::Host::CreateNurbsSurface({}, "surface"));
    SceneMesh mesh = scene.Mesh("skin").Square(scene.Material("red"));
    mesh.Skin({{surface, {{0, 100}, {1, 100}, {2, 100}, {3, 100}}}});
    CollectRun run;
    EXPECT_FALSE(run.Succeeded());
    EXPECT_THAT(run.Messages(), ElementsAre("W Can't export NURBS surface(surface)",
                                            "E Influence object is not outputted(surface)"));
    std::unique_ptr<SkinWeightTable> table;
    EXPECT_EQ(ReadEnvelope(run.Context, FindEnvelope(mesh.Object()), {}, 4, "skin", table),
              ReadResult::GivenUp);
    EXPECT_EQ(run.Messages().back(), "E Internal Error(skin)");
}

/// The order of collecting must not show: bones that come behind their mesh have their names when its
/// polygons sort them.
TEST(Envelope, BonesOfAPolygonAreSortedByNameWhereverTheyStand)
{
    for (const bool isMeshFirst : {true, false}) {
        SceneBuilder scene;
        const SceneNode root = scene.Null("root");
        SceneMesh mesh = scene.Mesh("skin", isMeshFirst ? XSI::CRef(root) : XSI::CRef());
        const SceneNode later = scene.Bone("b", root);
        const SceneNode sooner = scene.Bone("a", root);
        if (!isMeshFirst)
            XSI::Host::MoveBelow(mesh, sooner);
        mesh.Vertices({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}).Triangles({{0, 1, 2}}, scene.Material("red"));
        mesh.Skin({{later, {{0, 50}, {1, 100}, {2, 100}}}, {sooner, {{0, 50}}}});
        CollectRun run;
        ASSERT_NE(run.MeshOf(mesh), nullptr);
        const SeparateDataShape& shape = *run.MeshOf(mesh)->Shapes.begin()->second;
        EXPECT_THAT(shape.BoneLists[shape.Polygons.front().Bones],
                    ElementsAre(&run.BoneOf(sooner), &run.BoneOf(later)));
    }
}

TEST(Envelope, PolygonsOfTooManyBonesGiveTheMeshUp)
{
    const struct
    {
        const char* Registers;
        const char* NonUniformScale;
        std::uint32_t Capacity;
        bool IsTwoBonesTooMany;
    } rows[] = {
        {"MaxReservedUniformRegisters:0", "NonUniformScale:false", 20, false},
        {"MaxReservedUniformRegisters:0", "NonUniformScale:true", 10, false},
        {"MaxReservedUniformRegisters:54", "NonUniformScale:false", 2, false},
        {"MaxReservedUniformRegisters:57", "NonUniformScale:false", 1, true},
        {"MaxReservedUniformRegisters:54", "NonUniformScale:true", 1, true},
        {"MaxReservedUniformRegisters:60", "NonUniformScale:false", 0, true},
        {"MaxReservedUniformRegisters:61", "NonUniformScale:false", 0, true},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Registers);
        SkinnedTriangle triangle({60, 40});
        const SceneMesh plain = triangle.Scene.Mesh("plain").Square(triangle.Scene.Material("blue"));
        CollectRun run({row.Registers, row.NonUniformScale});
        EXPECT_TRUE(run.Succeeded());
        ASSERT_NE(run.MeshOf(plain), nullptr) << "an unskinned mesh needs no room";
        EXPECT_EQ(run.MeshOf(plain)->BoneCapacity, row.Capacity);
        EXPECT_EQ(run.MeshOf(triangle.Object) == nullptr, row.IsTwoBonesTooMany);
        if (row.IsTwoBonesTooMany)
            EXPECT_THAT(run.Messages(), ElementsAre("E Polygon bone size is over(skin)"));
        else
            EXPECT_THAT(run.Messages(), IsEmpty());
    }
}

} // namespace
} // namespace tq4x::test
