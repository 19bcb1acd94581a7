#include "support/MaterialRun.h"

#include "collect/ExportMesh.h"

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<float> SquareUvs = {0, 0, 1, 0, 1, 1, 0, 1};

const TextureCoordinator& Coordinator(MaterialRun& run, const XSI::CRef& material, std::size_t index = 0)
{
    return run.Of(material).TextureCoordinators.at(index);
}

const TextureMapper& Mapper(MaterialRun& run, const XSI::CRef& material, std::size_t index = 0)
{
    return run.Of(material).TextureMappers.at(index);
}

TEST(MaterialCoordinates, WithoutMeshesTheDefaultsStand)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert").Image("diffuse", "a.png", "Set");
    MaterialRun run(0, 2);
    EXPECT_TRUE(run.Convert({material}));
    const TextureCoordinator& coordinator = Coordinator(run, material);
    EXPECT_EQ(coordinator.SourceCoordinate, 0);
    EXPECT_EQ(coordinator.MappingMethod, MappingMethod::UvCoordinateMap);
    EXPECT_EQ(coordinator.ReferenceCamera, 0);
    EXPECT_EQ(coordinator.MatrixMode, MatrixMode::DccSoftimage);
    EXPECT_EQ(coordinator.ScaleS, 1.0f);
    EXPECT_EQ(coordinator.ScaleT, 1.0f);
    EXPECT_EQ(coordinator.Rotate, 0.0f);
    EXPECT_EQ(coordinator.TranslateS, 0.0f);
    EXPECT_EQ(coordinator.TranslateT, 0.0f);
    EXPECT_THAT(coordinator.Curves[0].Samples, ElementsAre(1.0f, 1.0f, 1.0f));
    EXPECT_THAT(coordinator.Curves[1].Samples, ElementsAre(1.0f, 1.0f, 1.0f));
    for (std::size_t curve = 2; curve < 5; ++curve)
        EXPECT_THAT(coordinator.Curves[curve].Samples, ElementsAre(0.0f, 0.0f, 0.0f)) << curve;
    EXPECT_EQ(Mapper(run, material).WrapS, TextureWrap::ClampToEdge);
    EXPECT_EQ(Mapper(run, material).WrapT, TextureWrap::ClampToEdge);
    EXPECT_EQ(Mapper(run, material).Patterns, (std::map<std::int32_t, std::string>{{0, "a"}}));
}

TEST(MaterialCoordinates, ProjectionsAreReadFromTheFirstMesh)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert").Image("diffuse", "a.png", "Set");
    SceneMesh first = scene.Mesh("first").Square(material).Uvs("Set", SquareUvs,
                                                               {{"projsclu", 2.0},
                                                                {"projsclv", 0.25},
                                                                {"projrotw", 30.0},
                                                                {"projtrsu", 0.5},
                                                                {"projtrsv", -0.5},
                                                                {"wrap_u", true},
                                                                {"wrap_v", false}});
    SceneMesh second =
        scene.Mesh("second").Square(material).Uvs("Set", SquareUvs, {{"projsclu", 8.0}, {"wrap_v", true}});
    MaterialRun run;
    EXPECT_TRUE(run.Convert({first, second}));
    const TextureCoordinator& coordinator = Coordinator(run, material);
    EXPECT_EQ(coordinator.ScaleS, 0.5f);
    EXPECT_EQ(coordinator.ScaleT, 4.0f);
    EXPECT_EQ(coordinator.Rotate, 30.0f);
    EXPECT_EQ(coordinator.TranslateS, 0.5f);
    EXPECT_EQ(coordinator.TranslateT, -0.5f);
    EXPECT_EQ(Mapper(run, material).WrapS, TextureWrap::Repeat);
    EXPECT_EQ(Mapper(run, material).WrapT, TextureWrap::ClampToEdge);
}

TEST(MaterialCoordinates, WrapsByDirection)
{
    for (const bool wrapU : {false, true})
        for (const bool wrapV : {false, true}) {
            SceneBuilder scene;
            SceneMaterial material = scene.Material("m", "lambert").Image("diffuse", "a.png", "Set");
            SceneMesh mesh = scene.Mesh("mesh").Square(material).Uvs("Set", SquareUvs,
                                                                     {{"wrap_u", wrapU}, {"wrap_v", wrapV}});
            MaterialRun run;
            EXPECT_TRUE(run.Convert({mesh}));
            EXPECT_EQ(Mapper(run, material).WrapS, wrapU ? TextureWrap::Repeat : TextureWrap::ClampToEdge);
            EXPECT_EQ(Mapper(run, material).WrapT, wrapV ? TextureWrap::Repeat : TextureWrap::ClampToEdge);
        }
}

TEST(MaterialCoordinates, ScalesNearNothingAreLeftAsTheyAre)
{
    const struct
    {
        double Scale;
        float Written;
    } rows[] = {{0.0, 0.0f},          {0.0000005, 0.0000005f}, {-0.0000005, -0.0000005f},
                {0.000002, 500000.f}, {-4.0, -0.25f},          {1000.0, 0.001f}};

    for (const auto& row : rows) {
        SceneBuilder scene;
        SceneMaterial material = scene.Material("m", "lambert").Image("diffuse", "a.png", "Set");
        SceneMesh mesh = scene.Mesh("mesh").Square(material).Uvs(
            "Set", SquareUvs, {{"projsclu", row.Scale}, {"projsclv", row.Scale}});
        MaterialRun run;
        EXPECT_TRUE(run.Convert({mesh}));
        EXPECT_FLOAT_EQ(Coordinator(run, material).ScaleS, row.Written) << row.Scale;
        EXPECT_FLOAT_EQ(Coordinator(run, material).ScaleT, row.Written) << row.Scale;
    }
}

TEST(MaterialCoordinates, MovingProjectionsAreSampled)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert").Image("diffuse", "a.png", "Set");
    SceneMesh mesh = scene.Mesh("mesh").Square(material);
    const XSI::ClusterProperty set =
        XSI::Host::AddClusterProperty(mesh.Object(), XSI::Host::ClusterPropertyKind::Uv, "Set", 2, SquareUvs);
    const XSI::Primitive projection = XSI::Host::AddProjection(set);
    XSI::Host::SetCurve(projection.GetParameter(L"projsclu"), {{{1, 1}, {3, 4}}});
    XSI::Host::SetCurve(projection.GetParameter(L"projsclv"), {{{1, 0}, {3, 2}}});
    XSI::Host::SetCurve(projection.GetParameter(L"projrotw"), {{{1, 0}, {3, 90}}});
    XSI::Host::SetCurve(projection.GetParameter(L"projtrsu"), {{{1, 1}, {3, 0}}});
    XSI::Host::SetCurve(projection.GetParameter(L"projtrsv"), {{{1, -1}, {3, 0}}});
    MaterialRun run(1, 3);
    EXPECT_TRUE(run.Convert({mesh}));
    const TextureCoordinator& coordinator = Coordinator(run, material);
    EXPECT_EQ(coordinator.ScaleS, 1.0f);
    EXPECT_EQ(coordinator.TranslateS, 1.0f);
    EXPECT_THAT(coordinator.Curves[0].Samples, ElementsAre(1.0f, 0.4f, 0.25f));
    EXPECT_THAT(coordinator.Curves[1].Samples, ElementsAre(0.0f, 1.0f, 0.5f));
    EXPECT_THAT(coordinator.Curves[2].Samples, ElementsAre(0.0f, 45.0f, 90.0f));
    EXPECT_THAT(coordinator.Curves[3].Samples, ElementsAre(1.0f, 0.5f, 0.0f));
    EXPECT_THAT(coordinator.Curves[4].Samples, ElementsAre(-1.0f, -0.5f, 0.0f));
}

TEST(MaterialCoordinates, SetsWithoutAProjectionTakeTheDefaults)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert").Image("diffuse", "a.png", "Set");
    SceneMesh mesh = scene.Mesh("mesh").Square(material);
    XSI::Host::AddClusterProperty(mesh.Object(), XSI::Host::ClusterPropertyKind::Uv, "Set", 2, SquareUvs);
    MaterialRun run(0, 1);
    EXPECT_TRUE(run.Convert({mesh}));
    EXPECT_EQ(Coordinator(run, material).ScaleS, 1.0f);
    EXPECT_EQ(Coordinator(run, material).Rotate, 0.0f);
    EXPECT_THAT(Coordinator(run, material).Curves[1].Samples, ElementsAre(1.0f, 1.0f));
    EXPECT_EQ(Mapper(run, material).WrapS, TextureWrap::ClampToEdge);
    EXPECT_EQ(Mapper(run, material).WrapT, TextureWrap::ClampToEdge);
}

TEST(MaterialCoordinates, TheFirstProjectionOfASetCounts)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert").Image("diffuse", "a.png", "Set");
    SceneMesh mesh = scene.Mesh("mesh").Square(material);
    const XSI::ClusterProperty set =
        XSI::Host::AddClusterProperty(mesh.Object(), XSI::Host::ClusterPropertyKind::Uv, "Set", 2, SquareUvs);
    for (const double scale : {2.0, 4.0})
        XSI::Host::AddParameter(XSI::Host::AddProjection(set), "projsclu", scale);
    MaterialRun run;
    EXPECT_TRUE(run.Convert({mesh}));
    EXPECT_EQ(Coordinator(run, material).ScaleS, 0.5f);
}

TEST(MaterialCoordinates, StagesTakeTheirSetsByName)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert")
                                 .Image("diffuse", "a.png", "Second")
                                 .Image("ambient", "b.png", "First")
                                 .Layer("c.png", "Second");
    SceneMesh mesh = scene.Mesh("mesh")
                         .Square(material)
                         .Uvs("First", SquareUvs, {{"projtrsu", 1.0}, {"wrap_u", true}})
                         .Uvs("Second", SquareUvs, {{"projtrsu", 2.0}, {"wrap_u", false}});
    MaterialRun run;
    EXPECT_TRUE(run.Convert({mesh}));
    // Numbers go by first use, and one set has one number.
    EXPECT_EQ(Coordinator(run, material, 0).SourceCoordinate, 0);
    EXPECT_EQ(Coordinator(run, material, 1).SourceCoordinate, 1);
    EXPECT_EQ(Coordinator(run, material, 2).SourceCoordinate, 0);
    EXPECT_EQ(Coordinator(run, material, 0).TranslateS, 2.0f);
    EXPECT_EQ(Coordinator(run, material, 1).TranslateS, 1.0f);
    EXPECT_EQ(Mapper(run, material, 0).WrapS, TextureWrap::ClampToEdge);
    EXPECT_EQ(Mapper(run, material, 0).WrapT, TextureWrap::Repeat);
    EXPECT_EQ(Mapper(run, material, 1).WrapS, TextureWrap::Repeat);
}

TEST(MaterialCoordinates, MeshesThatDisagreeGiveTheDefaultsSilently)
{
    SceneBuilder scene;
    SceneMaterial before = scene.Material("before", "lambert").Image("diffuse", "a.png", "Other");
    SceneMaterial material = scene.Material("m", "lambert").Image("diffuse", "b.png", "Set");
    SceneMesh alone =
        scene.Mesh("alone").Square(material).Uvs("Set", SquareUvs, {{"projtrsu", 0.5}, {"wrap_u", true}});
    SceneMesh both = scene.Mesh("both")
                         .Square(before)
                         .Square(material)
                         .Uvs("Other", {0, 0, 1, 0, 1, 1, 0, 1, 0, 0, 1, 0, 1, 1, 0, 1})
                         .Uvs("Set", {0, 0, 1, 0, 1, 1, 0, 1, 0, 0, 1, 0, 1, 1, 0, 1});
    MaterialRun run(0, 1);
    // Materials are numbered by creation, so that "before" comes first on the mesh that has both.
    EXPECT_TRUE(run.Convert({before, alone, both}));
    EXPECT_EQ(run.Collector(material).Meshes.size(), 2u);
    const TextureCoordinator& coordinator = Coordinator(run, material);
    EXPECT_EQ(coordinator.SourceCoordinate, 0);
    EXPECT_EQ(coordinator.TranslateS, 0.0f);
    EXPECT_THAT(coordinator.Curves[3].Samples, ElementsAre(0.0f, 0.0f));
    EXPECT_EQ(Mapper(run, material).WrapS, TextureWrap::Repeat); // of the first mesh all the same
    EXPECT_THAT(run.Messages(), IsEmpty());
}

TEST(MaterialCoordinates, MeshesThatAgreeShareTheirNumber)
{
    const std::vector<float> twice = {0, 0, 1, 0, 1, 1, 0, 1, 0, 0, 1, 0, 1, 1, 0, 1};
    SceneBuilder scene;
    SceneMaterial before = scene.Material("before", "lambert").Image("diffuse", "a.png", "Other");
    SceneMaterial material = scene.Material("m", "lambert").Image("diffuse", "b.png", "Set");
    std::vector<XSI::CRef> objects = {before};
    for (const char* name : {"one", "two"})
        objects.push_back(scene.Mesh(name)
                              .Square(before)
                              .Square(material)
                              .Uvs("Set", twice, {{"projtrsu", 0.5}})
                              .Uvs("Other", twice));
    MaterialRun run;
    EXPECT_TRUE(run.Convert(objects));
    EXPECT_EQ(Coordinator(run, material).SourceCoordinate, 1);
    EXPECT_EQ(Coordinator(run, material).TranslateS, 0.5f);
}

TEST(MaterialCoordinates, MeshesThatWereGivenUpDoNotCount)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert").Image("diffuse", "a.png", "Set");
    SceneMesh lacking = scene.Mesh("lacking").Square(material);
    MaterialRun run(0, 1);
    EXPECT_TRUE(run.Convert({lacking}));
    EXPECT_THAT(run.Collector(material).Meshes, IsEmpty());
    EXPECT_EQ(Coordinator(run, material).SourceCoordinate, 0);
    EXPECT_EQ(Coordinator(run, material).Curves[0].Samples.size(), 2u);
    EXPECT_EQ(Mapper(run, material).WrapS, TextureWrap::ClampToEdge);
    EXPECT_THAT(run.Messages(), ElementsAre("E Can't get UV data of Texture(a.png) at Material(m)."));
}

TEST(MaterialCoordinates, StagesWithoutFramesNeedNoSet)
{
    SceneBuilder scene;
    SceneMaterial material =
        scene.Material("m", "lambert").Image("diffuse", "", "Absent").Image("ambient", "a.png", "Set");
    SceneMesh mesh = scene.Mesh("mesh").Square(material).Uvs("Set", SquareUvs, {{"projtrsu", 0.5}});
    MaterialRun run;
    EXPECT_TRUE(run.Convert({mesh}));
    ASSERT_EQ(run.Of(material).TextureCoordinators.size(), 1u);
    ASSERT_EQ(run.Of(material).TextureMappers.size(), 1u);
    EXPECT_EQ(Coordinator(run, material).TranslateS, 0.5f);
    EXPECT_THAT(run.Messages(), ElementsAre("E Texture image name is wrong"));
}

} // namespace
} // namespace tq4x::test
