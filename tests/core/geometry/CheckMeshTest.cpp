#include "geometry/CheckMesh.h"
#include "geometry/FinalizeMesh.h"
#include "support/GeometryScene.h"

#include <functional>

namespace tq4x
{
namespace
{

using namespace test;
using S = VertexSlot;

/// A sound skinned shape of two triangles over two bones, finished or not.
struct SoundShape
{
    explicit SoundShape(bool isFinal)
    {
        Object =
            MakeSkinnedMesh({{{&Bones[0], 100}}, {{&Bones[1], 60}, {&Bones[0], 40}}, {{&Bones[1], 100}}}, 2);
        Object.Pool[S::Position].Edit<Vector3>() = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
        AddVertices(Object, 0, {0, 1, 2});
        AddVertices(Object, 0, {2, 1, 0});
        if (isFinal)
            FinalizeMesh(Object);
    }

    SeparateDataShape& Shape() { return *Object.Shapes[0]; }

    Skeleton Bones{"a", "b", "c"};
    Mesh Object;
};

TEST(CheckShape, ASoundShapeHasNoProblems)
{
    EXPECT_THAT(CheckMesh(SoundShape(false).Object, ShapeStage::Compacted), testing::IsEmpty());
    EXPECT_THAT(CheckMesh(SoundShape(true).Object, ShapeStage::Finalized), testing::IsEmpty());
}

TEST(CheckShape, Problems)
{
    using Break = std::function<void(SoundShape&)>;

    const struct
    {
        const char* Problem;
        bool IsFinal;
        ShapeStage Stage;
        Break Spoil;
    } cases[] = {
        {"a polygon has corners that the shape lacks", false, ShapeStage::Filled,
         [](SoundShape& s) { s.Shape().Corners.pop_back(); }},
        {"a polygon names a bone list that the shape lacks", false, ShapeStage::Filled,
         [](SoundShape& s) { s.Shape().Polygons[0].Bones = 99; }},
        {"a corner is not in exactly one polygon", false, ShapeStage::Filled,
         [](SoundShape& s) { s.Shape().Polygons[1].FirstCorner = 2; }},
        {"polygons are in sets and outside", true, ShapeStage::Filled,
         [](SoundShape& s) { s.Shape().Polygons.push_back({}); }},
        {"a corner is out of range in slot 0", false, ShapeStage::Filled,
         [](SoundShape& s) { s.Shape().Corners[0][S::Position] = 3; }},
        {"a corner is out of range in slot 5", false, ShapeStage::Filled,
         [](SoundShape& s) { s.Shape().Corners[0][S::TextureCoordinate1] = -2; }},
        {"a corner is out of range in slot 7", true, ShapeStage::Filled,
         [](SoundShape& s) { s.Shape().Corners[0][S::BoneIndex] = 50; }},
        {"a corner names a vertex that the weight table lacks", false, ShapeStage::Filled,
         [](SoundShape& s) { s.Shape().Corners[0].VertexIndex = 3; }},
        {"the bones of a polygon are not sorted or not distinct", false, ShapeStage::Filled,
         [](SoundShape& s) {
             s.Shape().BoneLists.FindOrAdd({&s.Bones[1], &s.Bones[0]});
         }},
        {"the bones of a polygon are out of date", false, ShapeStage::Filled,
         [](SoundShape& s) { s.Shape().Polygons[0].Bones = BoneListSet::None; }},
        {"the percentages of a vertex do not sum to 100", false, ShapeStage::Filled,
         [](SoundShape& s) { (*s.Object.SkinWeights)[0][0].Percentage = 99; }},
        {"a vertex has more than four influences", false, ShapeStage::Filled,
         [](SoundShape& s) {
             (*s.Object.SkinWeights)[0].resize(5, {&s.Bones[0], 0});
         }},
        {"a vertex of a rigid shape has several influences", false, ShapeStage::Filled,
         [](SoundShape& s) { s.Shape().IsRigidSkinning = true; }},
        {"slot 0 has equal values", false, ShapeStage::Welded,
         [](SoundShape& s) {
             s.Shape().Pool[S::Position].Edit<Vector3>()[1] = {0, -0.0f, 0};
         }},
        {"slot 3 has unused values", false, ShapeStage::Compacted,
         [](SoundShape& s) { s.Shape().Pool[S::Color].Edit<Vector4>().resize(1); }},
        {"polygons are outside the sets", false, ShapeStage::Finalized, [](SoundShape&) {}},
        {"a palette is not sorted or not distinct", true, ShapeStage::Filled,
         [](SoundShape& s) { s.Shape().PrimitiveSets[0].Palette[1] = &s.Bones[0]; }},
        {"a palette exceeds the capacity", true, ShapeStage::Filled,
         [](SoundShape& s) { s.Shape().BoneCapacity = 1; }},
        {"a palette lacks a bone of its polygons", true, ShapeStage::Filled,
         [](SoundShape& s) { s.Shape().PrimitiveSets[0].Palette.pop_back(); }},
        {"a bone index table does not hold its palette", true, ShapeStage::Finalized,
         [](SoundShape& s) { s.Shape().PrimitiveSets[0].BoneIndexTable[0] = 2; }},
        {"a corner lacks its bone tuples", true, ShapeStage::Finalized,
         [](SoundShape& s) { s.Shape().Corners[0][S::BoneWeight] = -1; }},
        {"a tuple names a place past its table", true, ShapeStage::Finalized,
         [](SoundShape& s) { s.Shape().BoneIndexTuples[0][3] = 2; }},
        {"the weights of a vertex do not sum to 1", true, ShapeStage::Finalized,
         [](SoundShape& s) { s.Shape().BoneWeightTuples[0].X = 0.5f; }},
    };

    for (const auto& test : cases) {
        SoundShape scene(test.IsFinal);
        test.Spoil(scene);
        EXPECT_THAT(CheckShape(scene.Shape(), test.Stage), testing::Contains(test.Problem)) << test.Problem;
    }
}

TEST(CheckMesh, NamesTheShape)
{
    SoundShape scene(false);
    scene.Object.Shapes[7] = nullptr;
    scene.Shape().SkinWeights = nullptr;
    scene.Shape().Polygons[0].Bones = BoneListSet::None;
    EXPECT_THAT(CheckMesh(scene.Object, ShapeStage::Filled),
                testing::ElementsAre("shape of material 0: refers to a weight table of another mesh",
                                     "shape of material 0: the bones of a polygon are out of date",
                                     "shape of material 7: missing"));
}

} // namespace
} // namespace tq4x
