// The walk over the scene and the check of the links between what it met.

#include "support/CollectRun.h"

#include <gmock/gmock.h>

#include <set>

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

const VertexWeights AllOfSquare = {{0, 100}, {1, 100}, {2, 100}, {3, 100}};

TEST(SceneWalk, OnlyTheFirstOfSiblingsInsideAnInstanceIsToldSo)
{
    SceneBuilder scene;
    const SceneNode master = scene.Model("master");
    const SceneNode first = scene.Null("first", master);
    const SceneNode below = scene.Null("below", first);
    const SceneNode second = scene.Null("second", master);
    const SceneNode copy = scene.Instance("copy", master);
    const SceneNode last = scene.Null("last");
    const CollectRun run({}, CollectRun::Until::Walk);
    EXPECT_TRUE(run.Collector(first, copy)->InsideInstance);
    EXPECT_TRUE(run.Collector(below, copy)->InsideInstance);
    EXPECT_FALSE(run.Collector(second, copy)->InsideInstance) << "the end of the first one clears the flag";
    EXPECT_EQ(run.Collector(second, copy)->Instances.size(), 1u);
    EXPECT_FALSE(run.Collector(last)->InsideInstance);
}

TEST(SceneWalk, ARefusedObjectClearsTheFlagToo)
{
    SceneBuilder scene;
    const SceneNode master = scene.Model("master");
    const SceneNode surface(XSI::Host::CreateNurbsSurface(master, "surface"));
    const SceneNode below = scene.Null("below", surface);
    const SceneNode second = scene.Null("second", master);
    const SceneNode copy = scene.Instance("copy", master);
    const CollectRun run({}, CollectRun::Until::Walk);
    EXPECT_EQ(run.Collector(below, copy), nullptr) << "the branch is cut";
    ASSERT_NE(run.Collector(second, copy), nullptr) << "the walk goes on";
    EXPECT_FALSE(run.Collector(second, copy)->InsideInstance);
}

TEST(SceneWalk, InstancesInsideInstancesShowTheirContentEachTime)
{
    SceneBuilder scene;
    const SceneNode wheel = scene.Model("wheel");
    const SceneNode tyre = scene.Null("tyre", wheel);
    const SceneNode car = scene.Model("car");
    const SceneNode left = scene.Instance("left", wheel, car);
    const SceneNode right = scene.Instance("right", wheel, car);
    const SceneNode taxi = scene.Instance("taxi", car);
    const CollectRun run;
    EXPECT_TRUE(run.Succeeded());
    const std::set<const Bone*> tyres = {
        &run.BoneOf(tyre),
        &run.BoneOf(tyre, left),
        &run.BoneOf(tyre, right),
        &run.Context.FindX3DObject(tyre, {taxi, left})->TargetBone(),
        &run.Context.FindX3DObject(tyre, {taxi, right})->TargetBone(),
    };
    EXPECT_EQ(tyres.size(), 5u);
    const Bone& shown = run.Context.FindX3DObject(tyre, {taxi, right})->TargetBone();
    EXPECT_EQ(shown.Parent, &run.BoneOf(right, taxi));
    EXPECT_EQ(shown.Parent->Parent, &run.BoneOf(taxi));
    EXPECT_EQ(CountNodes(taxi), 5u);
}

TEST(SceneWalk, BindPosesGoThroughAllInstances)
{
    SceneBuilder scene;
    const SceneNode wheel = scene.Model("wheel").At(100, 0, 0);
    const SceneNode hub = scene.Bone("hub", wheel).At(1, 0, 0);
    const SceneNode car = scene.Model("car").At(0, 0, 50);
    const SceneNode left = scene.Instance("left", wheel, car).At(0, 3, 0);
    const SceneNode taxi = scene.Instance("taxi", car).At(7, 0, 0).Turned(0, 0, 90);
    const CollectRun run;
    const auto place = [](const Bone& bone) {
        return Vector3{bone.BindMatrix(3, 0), bone.BindMatrix(3, 1), bone.BindMatrix(3, 2)};
    };
    EXPECT_EQ(place(run.BoneOf(hub)), (Vector3{101, 0, 0}));
    EXPECT_EQ(place(run.BoneOf(hub, left)), (Vector3{1, 3, 50}));
    const Vector3 shown = place(run.Context.FindX3DObject(hub, {taxi, left})->TargetBone());
    EXPECT_NEAR(shown.X, 4.0f, 1e-5f);
    EXPECT_NEAR(shown.Y, 1.0f, 1e-5f);
    EXPECT_NEAR(shown.Z, 0.0f, 1e-5f);
}

TEST(SceneWalk, InfluencesInsideInstancesAreThoseOfTheNearest)
{
    SceneBuilder scene;
    const SceneNode wheel = scene.Model("wheel");
    const SceneNode hub = scene.Null("hub", wheel);
    const SceneNode car = scene.Model("car");
    const SceneNode axle = scene.Null("axle", car);
    const SceneNode world = scene.Null("world");
    const SceneNode tyre = scene.Mesh("tyre", wheel)
                               .Square(scene.Material("red"))
                               .Skin({{hub, {{0, 100}}}, {axle, {{1, 100}}}, {world, {{2, 100}, {3, 100}}}});
    const SceneNode left = scene.Instance("left", wheel, car);
    const SceneNode taxi = scene.Instance("taxi", car);
    const CollectRun run;
    EXPECT_TRUE(run.Succeeded());
    const InstancePath path = {taxi, left};
    auto* mesh = static_cast<ExportMesh*>(run.Context.FindX3DObject(tyre, path));
    EXPECT_THAT(mesh->Influences, ElementsAre(run.Context.FindX3DObject(hub, path), run.Collector(axle, taxi),
                                              run.Collector(world)));
}

TEST(SceneWalk, AModelBelowItselfEnds)
{
    SceneBuilder scene;
    const SceneNode master = scene.Model("master");
    const SceneNode part = scene.Null("part", master);
    std::vector<SceneNode> copies;
    for (int i = 0; i < 20; ++i)
        copies.push_back(scene.Instance("copy" + std::to_string(i), master, master));
    EXPECT_EQ(CountNodes(master), 1u + 1 + 20 + 20 * 21);
    const CollectRun run;
    EXPECT_TRUE(run.Succeeded());
    EXPECT_NE(run.Collector(part, copies[3]), run.Collector(part));

    const SceneNode one = scene.Model("one");
    const SceneNode two = scene.Model("two");
    scene.Instance("two inside one", two, one);
    scene.Instance("one inside two", one, two);
    EXPECT_EQ(CountNodes(one), 4u);
}

TEST(SceneWalk, CountsWhatItWalks)
{
    SceneBuilder scene;
    const SceneNode master = scene.Model("master");
    const SceneNode part = scene.Null("part", master);
    scene.Null("below", part);
    const SceneNode copy = scene.Instance("copy", master);
    scene.Null("hidden behind the master", copy);
    EXPECT_EQ(CountNodes(part), 2u);
    EXPECT_EQ(CountNodes(master), 3u);
    EXPECT_EQ(CountNodes(copy), 3u);
}

TEST(LinkCheck, TiesMeshesAndInfluencesInBothDirections)
{
    SceneBuilder scene;
    const SceneNode null = scene.Null("null");
    const SceneNode camera = scene.Camera("camera");
    const SceneNode plate = scene.Mesh("plate")
                                .Square(scene.Material("red"))
                                .Skin({{null, {{0, 100}, {1, 100}}}, {camera, {{2, 100}, {3, 100}}}});
    CollectRun run({}, CollectRun::Until::Walk);
    EXPECT_TRUE(CheckLinks(run.Context, CurrentOptions()));
    auto* mesh = static_cast<ExportMesh*>(run.Collector(plate));
    EXPECT_THAT(mesh->Influences, ElementsAre(run.Collector(null), run.Collector(camera)));
    EXPECT_THAT(run.Collector(null)->InfluencedMeshes, ElementsAre(mesh));
    EXPECT_THAT(run.Collector(camera)->InfluencedMeshes, ElementsAre(mesh));
}

TEST(LinkCheck, AnInfluenceWhoseCollectorIsOfAnotherKindIsPassedOver)
{
    SceneBuilder scene;
    const SceneMaterial red = scene.Material("red");
    const SceneNode plate = scene.Mesh("plate").Square(red).Skin({{red, AllOfSquare}});
    CollectRun run({}, CollectRun::Until::Walk);
    EXPECT_TRUE(CheckLinks(run.Context, CurrentOptions()));
    EXPECT_THAT(run.Messages(), IsEmpty());
    EXPECT_THAT(static_cast<ExportMesh*>(run.Collector(plate))->Influences, IsEmpty());
}

TEST(LinkCheck, EveryMissingInfluenceIsTold)
{
    SceneBuilder scene;
    const SceneMaterial red = scene.Material("red");
    const SceneNode surface(XSI::Host::CreateNurbsSurface({}, "surface"));
    const SceneNode one = scene.Null("one", surface);
    const SceneNode two = scene.Null("two", surface);
    const SceneNode there = scene.Null("there");
    const SceneNode plate =
        scene.Mesh("plate").Square(red).Skin({{one, AllOfSquare}, {there, {}}, {two, {}}});
    scene.Mesh("other").Square(red).Skin({{one, AllOfSquare}});
    CollectRun run({}, CollectRun::Until::Walk);
    MessageRecorder::Messages().clear();
    EXPECT_FALSE(CheckLinks(run.Context, CurrentOptions()));
    EXPECT_THAT(run.Messages(), ElementsAre("E Influence object is not outputted(one)",
                                            "E Influence object is not outputted(two)",
                                            "E Influence object is not outputted(one)"));
    EXPECT_THAT(static_cast<ExportMesh*>(run.Collector(plate))->Influences, ElementsAre(run.Collector(there)))
        << "the loop goes on behind a missing one";
}

TEST(LinkCheck, OnlyModelsNeedNodes)
{
    SceneBuilder scene;
    const SceneNode camera = scene.Camera("camera");

    const struct
    {
        const char* Option;
        bool IsGood;
    } rows[] = {{"OutputQcam:true", true}, {"OutputQmdl:true", false}, {"OutputQmdla:true", false}};

    for (const auto& row : rows) {
        CollectRun run({row.Option}, CollectRun::Until::Walk);
        EXPECT_EQ(CheckLinks(run.Context, CurrentOptions()), row.IsGood) << row.Option;
        const std::vector<std::string> none;
        EXPECT_EQ(run.Messages(), row.IsGood ? none : std::vector<std::string>{"E No effective node"});
    }
}

} // namespace
} // namespace tq4x::test
