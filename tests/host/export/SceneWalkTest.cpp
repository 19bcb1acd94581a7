// The walk over the scene and the check of the links between what it met.

#include "support/CollectRun.h"

#include <gmock/gmock.h>

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
    EXPECT_TRUE(run.Collector(second, copy)->OwningInstance == static_cast<const XSI::CRef&>(copy));
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
