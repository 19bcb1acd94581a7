#include "support/MaterialRun.h"

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

/// A mix node of a material that shows images on the first ports; empty names leave a port free.
XSI::Shader MakeMix(SceneMaterial& material, const char* progId, const char* name,
                    const std::vector<std::string>& files)
{
    const XSI::Shader mix = XSI::Host::CreateShader(material, progId, name);
    for (std::size_t i = 0; i < files.size(); ++i) {
        const std::string port = i == 0 ? "base_color" : "color" + std::to_string(i);
        if (!files[i].empty())
            XSI::Host::ConnectShader(mix.GetParameter(port.c_str()), material.MakeTexture(files[i], "Set"));
    }
    return mix;
}

constexpr const char* TwoMix = "Softimage.sib_color_2mix.1.0";
constexpr const char* EightMix = "Softimage.sib_color_8mix.1.0";
constexpr const char* VertexColor = "Softimage.sib_vertex_color_alpha.1.0";

// Which sources count on which port: an image as a stage, a mix by its image, vertex colours by turning the
// colour white (or the alpha to 1) without a stage.
TEST(MaterialStages, PortsTakeTheirSources)
{
    const struct
    {
        const char* Shader;
        const char* Port;
        bool TakesMix;
    } rows[] = {
        {"constant", "color", true},        {"lambert", "diffuse", true},
        {"lambert", "ambient", true},       {"phong", "specular", true},
        {"ward", "glossy", true},           {"lambert", "transparency", true},
        {"constant", "transparency", true}, {"phong", "incandescence", false},
    };

    for (const auto& row : rows) {
        SceneBuilder scene;
        SceneMaterial image = scene.Material("image", row.Shader).Image(row.Port, "a.png", "Set");
        SceneMaterial two = scene.Material("two", row.Shader);
        two.Connect(row.Port, MakeMix(two, TwoMix, "mix", {"b.png"}));
        SceneMaterial eight = scene.Material("eight", row.Shader);
        eight.Connect(row.Port, MakeMix(eight, EightMix, "mix", {"c.png"}));
        SceneMaterial vertex = scene.Material("vertex", row.Shader);
        vertex.Connect(row.Port, XSI::Host::CreateShader(vertex, VertexColor, "colors"));
        SceneMaterial other = scene.Material("other", row.Shader);
        other.Connect(row.Port, XSI::Host::CreateShader(other, "Somebody.noise.1.0", "noise"));
        MaterialRun run;
        EXPECT_TRUE(run.Convert({image, two, eight, vertex, other}));
        const std::size_t count = row.TakesMix ? 1 : 0;
        EXPECT_EQ(run.Collector(image).Stages.size(), count) << row.Port;
        EXPECT_EQ(run.Collector(two).Stages.size(), count) << row.Port;
        EXPECT_EQ(run.Collector(eight).Stages.size(), count) << row.Port;
        EXPECT_EQ(run.Collector(two).HasMixColor, row.TakesMix) << row.Port;
        EXPECT_THAT(run.Collector(vertex).Stages, IsEmpty()) << row.Port;
        EXPECT_THAT(run.Collector(other).Stages, IsEmpty()) << row.Port;
        EXPECT_THAT(run.Messages(), IsEmpty()) << row.Port;
    }
}

TEST(MaterialStages, VertexColoursCountAsConnectedOnThreePortsAlone)
{
    SceneBuilder scene;
    SceneMaterial color = scene.Material("color", "constant");
    color.Connect("color", XSI::Host::CreateShader(color, VertexColor, "colors"));
    SceneMaterial diffuse = scene.Material("diffuse", "lambert");
    diffuse.Connect("diffuse", XSI::Host::CreateShader(diffuse, VertexColor, "colors"));
    SceneMaterial alpha = scene.Material("alpha", "lambert").Color("transparency", 0.5, 0, 0);
    alpha.Connect("transparency", XSI::Host::CreateShader(alpha, VertexColor, "colors"));
    SceneMaterial specular = scene.Material("specular", "phong").Color("specular", 0.5, 0.5, 0.5, 0.5);
    specular.Connect("specular", XSI::Host::CreateShader(specular, VertexColor, "colors"));
    MaterialRun run;
    EXPECT_TRUE(run.Convert({color, diffuse, alpha, specular}));
    EXPECT_EQ(run.Of(color).Diffuse.R, 1.0f);
    EXPECT_EQ(run.Of(diffuse).Diffuse.R, 1.0f);
    EXPECT_EQ(run.Of(alpha).Diffuse.A, 1.0f);
    EXPECT_EQ(run.Of(alpha).BlendPreset, BlendPreset::Translucent);
    EXPECT_EQ(run.Of(specular).Specular0.R, 0.5f);
}

TEST(MaterialStages, NormalMapsTakeImagesAlone)
{
    SceneBuilder scene;
    SceneMaterial image = scene.Material("image").NormalMap("bumps.tga", "Set");
    SceneMaterial mix = scene.Material("mix");
    const XSI::Shader bump = XSI::Host::CreateShader(mix, "Softimage.normal.1.0", "normal");
    const XSI::Shader map = XSI::Host::CreateShader(mix, "Softimage.normalmap.1.0", "map");
    XSI::Host::ConnectShader(mix.Object().GetParameter(L"normal"), bump);
    XSI::Host::ConnectShader(bump.GetParameter(L"Map"), map);
    XSI::Host::ConnectShader(map.GetParameter(L"NormalMap"), MakeMix(mix, TwoMix, "mix", {"a.png"}));
    SceneMaterial unmapped = scene.Material("unmapped");
    XSI::Host::ConnectShader(unmapped.Object().GetParameter(L"normal"),
                             XSI::Host::CreateShader(unmapped, "Softimage.normal.1.0", "normal"));
    MaterialRun run;
    run.Options.OutputQtex = false;
    EXPECT_TRUE(run.Convert({image, mix, unmapped}));
    ASSERT_EQ(run.Collector(image).Stages.size(), 1u);
    EXPECT_TRUE(run.Collector(image).Stages[0].IsNormalMap);
    EXPECT_THAT(run.Collector(mix).Stages, IsEmpty());
    EXPECT_THAT(run.Collector(unmapped).Stages, IsEmpty());
    EXPECT_THAT(run.Messages(), IsEmpty());
}

TEST(MaterialStages, ANormalMapAloneIsNoTextureOfTheLighting)
{
    SceneBuilder scene;
    const XSI::Material material = XSI::Host::CreateMaterial("m"); // no surface shader: the normal is read
    const XSI::Shader bump = XSI::Host::CreateShader(material, "Softimage.normal.1.0", "normal");
    const XSI::Shader map = XSI::Host::CreateShader(material, "Softimage.normalmap.1.0", "map");
    const XSI::ImageClip2 clip = XSI::Host::CreateImageClip("bumps", "bumps.png");
    XSI::Host::SetPixels(clip, MakePicture(8, 8));
    XSI::Host::ConnectShader(material.GetParameter(L"normal"), bump);
    XSI::Host::ConnectShader(bump.GetParameter(L"Map"), map);
    XSI::Host::ConnectShader(map.GetParameter(L"NormalMap"),
                             XSI::Host::CreateTexture(material, "bumps", clip, "Set"));
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    const Material& record = run.Of(material);
    EXPECT_EQ(record.TextureMappers.size(), 1u);
    EXPECT_EQ(record.FragmentShader.FragmentBump.BumpTextureIndex, 0);
    EXPECT_EQ(record.FragmentShader.FragmentBump.BumpMode, BumpMode::AsBump);
    EXPECT_TRUE(record.FragmentShader.FragmentBump.IsBumpRenormalize);
    ASSERT_EQ(record.FragmentShader.TextureCombiners.size(), 1u);
    EXPECT_EQ(record.FragmentShader.TextureCombiners[0].CombineRgb, CombineMode::Replace);
    const auto& entries = run.Context->Content.Materials.Textures.Entries;
    ASSERT_TRUE(entries.contains("bumps.png"));
    EXPECT_TRUE(entries.at("bumps.png").IsNormalMap);
}

TEST(MaterialStages, BumpsNameTheMapperOfTheNormalMap)
{
    SceneBuilder scene;
    SceneMaterial plain = scene.Material("plain", "lambert").Image("diffuse", "a.png", "Set");
    SceneMaterial bumpy = scene.Material("bumpy", "lambert")
                              .Image("diffuse", "b.png", "Set")
                              .Image("ambient", "", "Set") // without frames: no mapper comes of it
                              .NormalMap("c.png", "Set");
    MaterialRun run;
    EXPECT_TRUE(run.Convert({plain, bumpy}));
    EXPECT_EQ(run.Of(plain).FragmentShader.FragmentBump.BumpMode, BumpMode::NotUsed);
    EXPECT_FALSE(run.Of(plain).FragmentShader.FragmentBump.IsBumpRenormalize);
    EXPECT_EQ(run.Collector(bumpy).Stages.size(), 3u);
    EXPECT_EQ(run.Of(bumpy).TextureMappers.size(), 2u);
    EXPECT_EQ(run.Of(bumpy).TextureCoordinators.size(), 2u);
    EXPECT_EQ(run.Of(bumpy).FragmentShader.FragmentBump.BumpTextureIndex, 1);
    EXPECT_EQ(run.Of(bumpy).FragmentShader.TextureCombiners[0].CombineRgb, CombineMode::Modulate);
    EXPECT_THAT(run.Messages(), ElementsAre("E Texture image name is wrong"));
}

TEST(MaterialStages, MixesTakeImagesByTheirSizeUpToThree)
{
    const struct
    {
        const char* ProgId;
        LONG Size;
        std::vector<std::string> Files;
        std::vector<std::string> Stages;
    } rows[] = {
        {TwoMix, 2, {"a.png", "b.png"}, {"a.png", "b.png"}},
        {EightMix, 8, {"a.png", "b.png", "c.png"}, {"a.png", "b.png", "c.png"}},
        {EightMix, 8, {"a.png", "b.png", "c.png", "d.png", "e.png"}, {"a.png", "b.png", "c.png"}},
        {EightMix, 8, {"", "b.png", ""}, {"b.png"}},
        {EightMix, 2, {"a.png", "b.png", "c.png"}, {"a.png", "b.png"}},
        {EightMix, 1, {"a.png", "b.png"}, {"a.png"}},
        {EightMix, 0, {"a.png"}, {}},
        {EightMix, -5, {"a.png"}, {}},
    };

    for (const auto& row : rows) {
        SceneBuilder scene;
        SceneMaterial material = scene.Material("m", "lambert");
        XSI::Shader mix = MakeMix(material, row.ProgId, "mix", row.Files);
        mix.PutParameterValue(L"mixersize", row.Size);
        material.Connect("diffuse", mix);
        MaterialRun run;
        EXPECT_TRUE(run.Convert({material}));
        EXPECT_EQ(run.StageNames(material), row.Stages) << row.ProgId << " " << row.Size;
        EXPECT_TRUE(run.Collector(material).HasMixColor);
        EXPECT_EQ(run.Collector(material).MixColorShader, mix);
    }
}

TEST(MaterialStages, MixesPassOverWhatIsNoImage)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert");
    const XSI::Shader mix = MakeMix(material, TwoMix, "mix", {"", "b.png"});
    XSI::Host::ConnectShader(mix.GetParameter(L"base_color"),
                             XSI::Host::CreateShader(material, VertexColor, "colors"));
    material.Connect("diffuse", mix);
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_THAT(run.StageNames(material), ElementsAre("b.png"));
}

TEST(MaterialStages, OneMixNodePerMaterial)
{
    SceneBuilder scene;
    SceneMaterial shared = scene.Material("shared", "phong");
    const XSI::Shader mix = MakeMix(shared, TwoMix, "mix", {"a.png"});
    shared.Connect("diffuse", mix)
        .Connect("ambient", mix)
        .Connect("specular", mix)
        .Connect("transparency", mix);
    SceneMaterial two = scene.Material("two", "phong");
    two.Connect("diffuse", MakeMix(two, TwoMix, "first", {"b.png"}))
        .Connect("specular", MakeMix(two, EightMix, "second", {"c.png"}));
    MaterialRun run;
    EXPECT_TRUE(run.Convert({shared, two}));
    EXPECT_THAT(run.StageNames(shared), ElementsAre("a.png"));
    EXPECT_THAT(run.StageNames(two), ElementsAre("b.png"));
    EXPECT_THAT(run.Messages(), ElementsAre("W MixColor is able to connect only one per material.(two)."));
}

TEST(MaterialStages, TheSameImageOnDiffuseAndTransparencyIsOneStage)
{
    SceneBuilder scene;
    SceneMaterial twoClips = scene.Material("clips", "lambert")
                                 .Image("diffuse", "a.png", "Set")
                                 .Image("transparency", "a.png", "Set");
    SceneMaterial different = scene.Material("different", "lambert")
                                  .Image("diffuse", "b.png", "Set")
                                  .Image("transparency", "B.png", "Set");
    SceneMaterial off =
        scene.Material("off", "lambert").Set("refract_inuse", false).Image("transparency", "c.png", "Set");
    MaterialRun run;
    EXPECT_TRUE(run.Convert({twoClips, different, off}));
    EXPECT_THAT(run.StageNames(twoClips), ElementsAre("a.png"));
    EXPECT_THAT(run.StageNames(different), ElementsAre("b.png", "B.png"));
    EXPECT_THAT(run.StageNames(off), IsEmpty());
}

TEST(MaterialStages, TheSameSequenceOnDiffuseAndTransparencyIsOneStage)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert");
    const XSI::Texture texture = material.MakeTexture("a[1..4].png", "Set");
    XSI::Host::SetSequence(texture.GetImageClip(), "a[1..4].png", 1, 4);
    material.Connect("diffuse", texture).Connect("transparency", texture);
    MaterialRun run(0, 3);
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_THAT(run.StageNames(material), ElementsAre("a[1..4].png"));
}

TEST(MaterialStages, TransparencyPassesOverStagesWithoutFrames)
{
    SceneBuilder scene;
    SceneMaterial material =
        scene.Material("m", "lambert").Image("diffuse", "", "Set").Image("transparency", "a.png", "Set");
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_THAT(run.StageNames(material), ElementsAre("", "a.png"));
    EXPECT_EQ(run.Of(material).TextureMappers.size(), 1u);
    EXPECT_THAT(run.Messages(), ElementsAre("E Texture image name is wrong"));
}

TEST(MaterialStages, TheSameImageOnDiffuseAndAmbientIsTwoStagesOfOneFile)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert");
    const XSI::Texture texture = material.MakeTexture("a.png", "Set");
    material.Connect("diffuse", texture).Connect("ambient", texture);
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_THAT(run.StageNames(material), ElementsAre("a.png", "a.png"));
    EXPECT_EQ(run.Of(material).TextureMappers.size(), 2u);
    EXPECT_THAT(run.TextureNames(), ElementsAre("a"));
    EXPECT_THAT(run.Messages(), IsEmpty());
}

TEST(MaterialStages, AmbientTexturesCanBeLeftOut)
{
    const struct
    {
        bool IsIgnored;
        bool IsDiffuseInUse;
        std::size_t Stages;
    } rows[] = {{false, true, 1}, {true, true, 0}, {false, false, 0}, {true, false, 0}};

    for (const auto& row : rows) {
        SceneBuilder scene;
        SceneMaterial material = scene.Material("m", "lambert")
                                     .Set("diffuse_inuse", row.IsDiffuseInUse)
                                     .Image("ambient", "a.png", "Set");
        MaterialRun run;
        run.Options.SoftimageIgnoreAmbientTexture = row.IsIgnored;
        EXPECT_TRUE(run.Convert({material}));
        EXPECT_EQ(run.Collector(material).Stages.size(), row.Stages) << row.IsIgnored << row.IsDiffuseInUse;
        EXPECT_EQ(run.Of(material).Ambient.R, 1.0f);
        EXPECT_EQ(run.Of(material).Ambient.A, 0.0f);
    }
}

TEST(MaterialStages, PortsThatAreOffTakeNoTexture)
{
    const struct
    {
        const char* Shader;
        const char* Port;
        const char* Switch;
    } rows[] = {
        {"lambert", "diffuse", "diffuse_inuse"},
        {"phong", "specular", "specular_inuse"},
        {"ward", "glossy", "specular_inuse"},
    };

    for (const auto& row : rows) {
        SceneBuilder scene;
        SceneMaterial material =
            scene.Material("m", row.Shader).Set(row.Switch, false).Image(row.Port, "a.png", "Set");
        MaterialRun run;
        EXPECT_TRUE(run.Convert({material}));
        EXPECT_THAT(run.StageNames(material), IsEmpty()) << row.Port;
        EXPECT_EQ(run.Of(material).Specular0.R, 0.0f) << row.Port;
    }
}

TEST(MaterialStages, ReadersFindTheirStagesInOrder)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "phong")
                                 .NormalMap("normal.png", "Set")
                                 .Layer("layer.png", "Set")
                                 .Image("transparency", "transparency.png", "Set")
                                 .Image("specular", "specular.png", "Set")
                                 .Image("ambient", "ambient.png", "Set")
                                 .Image("diffuse", "diffuse.png", "Set");
    MaterialRun run;
    EXPECT_FALSE(run.Convert({material}));
    EXPECT_THAT(run.StageNames(material),
                ElementsAre("diffuse.png", "ambient.png", "specular.png", "transparency.png", "normal.png"));
}

TEST(MaterialStages, LayersStopAtTheFourthStageAndItFailsTheExport)
{
    SceneBuilder scene;
    SceneMaterial three = scene.Material("three", "lambert");
    SceneMaterial five = scene.Material("five", "lambert");
    for (const char* file : {"a.png", "b.png", "c.png"})
        three.Layer(file, "Set");
    for (const char* file : {"a.png", "b.png", "c.png", "d.png", "e.png"})
        five.Layer(file, "Set");
    MaterialRun run;
    EXPECT_FALSE(run.Convert({three, five}));
    EXPECT_THAT(run.StageNames(three), ElementsAre("a.png", "b.png", "c.png"));
    EXPECT_EQ(run.Of(three).TextureMappers.size(), 3u);
    EXPECT_THAT(run.StageNames(five), ElementsAre("a.png", "b.png", "c.png", "d.png"));
    EXPECT_THAT(run.Of(five).TextureMappers, IsEmpty());
    EXPECT_THAT(run.Messages(), ElementsAre("E The number of composite texture is over 3(five)"));
}

TEST(MaterialStages, ThreeInAllTheNormalMapIncluded)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert")
                                 .Layer("a.png", "Set")
                                 .Layer("b.png", "Set")
                                 .Layer("c.png", "Set")
                                 .NormalMap("d.png", "Set");
    MaterialRun run;
    EXPECT_FALSE(run.Convert({material}));
    EXPECT_THAT(run.Messages(), ElementsAre("E The number of composite texture is over 3(m)"));
}

TEST(MaterialStages, StagesWithoutFramesCountToo)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert");
    for (int i = 0; i < 4; ++i)
        material.Layer("", "Set");
    MaterialRun run;
    EXPECT_FALSE(run.Convert({material}));
    EXPECT_THAT(run.Messages(), ElementsAre("E Texture image name is wrong", "E Texture image name is wrong",
                                            "E Texture image name is wrong", "E Texture image name is wrong",
                                            "E The number of composite texture is over 3(m)"));
}

TEST(MaterialStages, LayersTakeImagesAlone)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert");
    XSI::Host::AddTextureLayer(material.Shader(), "mixed", MakeMix(material, TwoMix, "mix", {"a.png"}));
    XSI::Host::AddTextureLayer(material.Shader(), "empty", {});
    material.Layer("b.png", "Set");
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_THAT(run.StageNames(material), ElementsAre("b.png"));
}

TEST(MaterialStages, OnlyTheFirstTextureIsCombined)
{
    SceneBuilder scene;
    SceneMaterial one = scene.Material("one", "phong").Layer("a.png", "Set");
    SceneMaterial three =
        scene.Material("three", "phong").Layer("a.png", "Set").Layer("b.png", "Set").Layer("c.png", "Set");
    MaterialRun run;
    EXPECT_TRUE(run.Convert({one, three}));
    EXPECT_EQ(run.Of(one).FragmentShader.TextureCombiners, run.Of(three).FragmentShader.TextureCombiners);
    EXPECT_EQ(run.Of(three).FragmentShader.TextureCombiners.size(), 2u);
}

} // namespace
} // namespace tq4x::test
