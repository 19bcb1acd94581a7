#include "collect/CollectorFactory.h"
#include "support/CollectRun.h"

#include <gmock/gmock.h>

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

TEST(CollectorFactory, MakesTheCollectorOfTheHostClass)
{
    SceneBuilder scene;
    const SceneMaterial red = scene.Material("red");

    const struct
    {
        SceneNode Object;
        CollectorKind Kind;
        std::int32_t Number;
    } rows[] = {
        {scene.Null("null"), CollectorKind::Node, 4},
        {scene.Model("model"), CollectorKind::Node, 4},
        {scene.Bone("bone"), CollectorKind::Node, 4},
        {scene.Effector("effector"), CollectorKind::Node, 4},
        {scene.Mesh("mesh").Square(red), CollectorKind::Mesh, 3},
        {scene.Light("light", XSI::Host::LightType::Point), CollectorKind::Light, 6},
        {scene.Camera("camera"), CollectorKind::Camera, 7},
    };

    const CollectRun run({}, CollectRun::Until::Walk);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Object.Object().GetName().GetAsciiString());
        const ExportX3DObject* collector = run.Collector(row.Object);
        ASSERT_NE(collector, nullptr);
        EXPECT_EQ(collector->GetKind(), row.Kind);
        EXPECT_EQ(static_cast<std::int32_t>(collector->GetKind()), row.Number);
        EXPECT_TRUE(collector->IsKindOf(row.Kind));
        EXPECT_TRUE(collector->IsKindOf(CollectorKind::Node));
        EXPECT_TRUE(collector->IsKindOf(CollectorKind::X3DObject));
        EXPECT_FALSE(collector->IsKindOf(CollectorKind::Material));
        EXPECT_EQ(collector->IsKindOf(CollectorKind::Mesh), row.Kind == CollectorKind::Mesh);
        EXPECT_FALSE(collector->ConvertToModel);
    }
}

TEST(CollectorFactory, TheAmbientLightIsNoNode)
{
    SceneBuilder scene;
    const CollectRun run({}, CollectRun::Until::Walk);
    const ExportBase* ambient = run.Context.Find({.IsAmbientLight = true});
    ASSERT_NE(ambient, nullptr);
    EXPECT_EQ(static_cast<std::int32_t>(ambient->GetKind()), 5);
    EXPECT_TRUE(ambient->IsKindOf(CollectorKind::AmbientLight));
    EXPECT_FALSE(ambient->IsKindOf(CollectorKind::X3DObject));
}

TEST(CollectorFactory, RefusedObjectsAreToldAndLeftOutWithWhatHangsOnThem)
{
    SceneBuilder scene;
    const SceneMaterial red = scene.Material("red");
    const SceneNode surface(XSI::Host::CreateNurbsSurface({}, "surface"));
    const SceneNode below = scene.Null("below", surface);
    const SceneNode curve(XSI::Host::CreateNurbsCurve({}, "curve"));
    const SceneNode smooth = scene.Mesh("smooth").Square(red);
    XSI::Host::AddParameter(XSI::Host::AddProperty(smooth, "geomapprox"), "gapproxmosl", 2);
    const SceneNode plain = scene.Mesh("plain").Square(red);
    XSI::Host::AddProperty(plain, "geomapprox");
    const SceneNode last = scene.Null("last");

    const CollectRun run;
    EXPECT_TRUE(run.Succeeded());
    EXPECT_THAT(run.Messages(),
                ElementsAre("W Can't export NURBS surface(surface)", "W Can't export NURBS curve(curve).",
                            "W Can't export Subdivision surface(smooth)"));
    EXPECT_EQ(run.Collector(surface), nullptr);
    EXPECT_EQ(run.Collector(below), nullptr);
    EXPECT_EQ(run.Collector(curve), nullptr);
    EXPECT_EQ(run.Collector(smooth), nullptr);
    EXPECT_NE(run.Collector(plain), nullptr);
    EXPECT_NE(run.Collector(last), nullptr);
}

TEST(CollectorFactory, AnObjectIsVisitedOnce)
{
    SceneBuilder scene;
    const SceneNode body = scene.Null("body");
    CollectRun run({}, CollectRun::Until::Walk);
    ExportBase* first = run.Collector(body);
    const std::size_t count = run.Context.InOrderOfCreation.size();
    EXPECT_TRUE(VisitObject(run.Context, body, false, {}));
    EXPECT_EQ(run.Collector(body), first);
    EXPECT_EQ(run.Context.InOrderOfCreation.size(), count);
    EXPECT_THAT(run.Messages(), IsEmpty());
}

TEST(CollectorFactory, MaterialsInUseGetTheirNumbersInTheOrderOfTheList)
{
    SceneBuilder scene;
    const SceneMaterial red = scene.Material("red");
    const SceneMaterial unused = scene.Material("unused");
    const SceneMaterial blue = scene.Material("blue");
    SceneMesh mesh = scene.Mesh("mesh");
    mesh.Square(blue).Square(red);
    mesh.Geometry().Materials = {red, unused, blue};
    mesh.Geometry().PolygonMaterials = {2, 2, 0, 0};
    CollectRun run;
    MaterialSet& materials = run.Context.Content.Materials;
    ASSERT_EQ(materials.MaterialAt(2), nullptr);
    EXPECT_EQ(materials.MaterialAt(0)->Name, "red");
    EXPECT_EQ(materials.MaterialAt(1)->Name, "blue");
}

TEST(CollectorFactory, TellsCollectorsThatTheyAreInsideAnInstance)
{
    SceneBuilder scene;
    const SceneNode master = scene.Model("master");
    const SceneNode part = scene.Null("part", master);
    const SceneNode copy = scene.Instance("copy", master);
    const CollectRun run({}, CollectRun::Until::Walk);
    EXPECT_FALSE(run.Collector(part)->InsideInstance);
    EXPECT_FALSE(run.Collector(copy)->InsideInstance);
    const ExportX3DObject* shown = run.Collector(part, copy);
    ASSERT_NE(shown, run.Collector(part));
    EXPECT_TRUE(shown->InsideInstance);
    ASSERT_EQ(shown->Instances.size(), 1u);
    EXPECT_TRUE(shown->Instances[0] == static_cast<const XSI::CRef&>(copy));
    EXPECT_EQ(shown->Parent, run.Collector(copy));
}

} // namespace
} // namespace tq4x::test
