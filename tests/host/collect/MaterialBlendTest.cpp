#include "support/MaterialRun.h"

namespace tq4x::test
{
namespace
{

using testing::IsEmpty;

constexpr const char* AttributePage = "TQ4X_ForPennonMaterialAttrProp";

/// How a shader is made translucent or not.
struct BlendRow
{
    const char* Name;
    double Red; ///< of the transparency, at the start
    bool IsConnected;
    bool IsMoving; ///< to half transparent in the middle of the range
    BlendPreset Preset;
};

constexpr BlendRow Rows[] = {
    {"opaque", 0.0, false, false, BlendPreset::Opaque},
    {"barely", 0.0002, false, false, BlendPreset::Translucent},
    {"not enough", 0.00005, false, false, BlendPreset::Opaque},
    {"half", 0.5, false, false, BlendPreset::Translucent},
    {"connected", 0.0, true, false, BlendPreset::Translucent},
    {"moving", 0.0, false, true, BlendPreset::Translucent},
};

TEST(MaterialBlend, TranslucencyIsFoundByTransparency)
{
    for (const char* shader : {"constant", "lambert", "phong", "blinn", "ward"})
        for (const BlendRow& row : Rows) {
            SceneBuilder scene;
            SceneMaterial material = scene.Material("m", shader).Color("transparency", row.Red, 0, 0);
            if (row.IsMoving)
                material.Animate("transparency", "red", {{0, 0}, {1, 0.5}, {2, 0}});
            if (row.IsConnected)
                material.Image("transparency", "a.png", "Set");
            MaterialRun run(0, 2);
            EXPECT_TRUE(run.Convert({material}));
            EXPECT_EQ(run.Of(material).BlendPreset, row.Preset) << shader << " " << row.Name;
            const bool isTranslucent = row.Preset == BlendPreset::Translucent;
            EXPECT_EQ(run.Of(material).BlendOperation.Mode,
                      isTranslucent ? BlendMode::Blend : BlendMode::NotUsed)
                << shader << " " << row.Name;
        }
}

TEST(MaterialBlend, ThePageHasTheLastWord)
{
    for (const BlendRow& row : Rows)
        for (const LONG preset : {0, 1, 3, 6}) {
            SceneBuilder scene;
            SceneMaterial material = scene.Material("m", "phong")
                                         .Color("transparency", row.Red, 0, 0)
                                         .Marked(AttributePage, {{"TQ4X_ForPennonMatAttrBlendMode", preset}});
            if (row.IsConnected)
                material.Image("transparency", "a.png", "Set");
            MaterialRun run(0, 2);
            EXPECT_TRUE(run.Convert({material}));
            EXPECT_EQ(static_cast<LONG>(run.Of(material).BlendPreset), preset) << row.Name;
        }
}

TEST(MaterialBlend, HalfTransparentPhongIsTranslucent)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "phong").Color("transparency", 0.5, 0.5, 0.5);
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_EQ(run.Of(material).Diffuse.A, 0.5f);
    EXPECT_EQ(run.Of(material).TranslucencyKind, TranslucencyKind::Translucent);
    EXPECT_FALSE(run.Of(material).DepthOperation.IsMaskEnabled);
}

TEST(MaterialBlend, AlphaOfAPicturePlaysNoPart)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert");
    const XSI::Texture texture = material.MakeTexture("a.png", "Set");
    XSI::Host::SetPixels(texture.GetImageClip(), MakePicture(8, 8, 4, 1, 0));
    material.Connect("diffuse", texture);
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_EQ(run.Of(material).BlendPreset, BlendPreset::Opaque);
}

TEST(MaterialBlend, AConnectedColourKeepsTheSamplesOfTransparencyOut)
{
    // A connected colour of a constant shader samples nothing, so that only the first frame counts.
    const struct
    {
        const char* Shader;
        const char* Port;
        tq4x::BlendPreset Preset;
    } rows[] = {
        {"constant", "color", BlendPreset::Opaque},
        {"lambert", "diffuse", BlendPreset::Translucent},
    };

    for (const auto& row : rows) {
        SceneBuilder scene;
        SceneMaterial material = scene.Material("m", row.Shader)
                                     .Image(row.Port, "a.png", "Set")
                                     .Animate("transparency", "red", {{0, 0}, {1, 1}});
        MaterialRun run(0, 1);
        EXPECT_TRUE(run.Convert({material}));
        EXPECT_EQ(run.Of(material).BlendPreset, row.Preset) << row.Shader;
    }
}

constexpr float Clear = 0.25f; // alpha of one corner

std::vector<float> ColorsOfASquare(float alpha)
{
    std::vector<float> colors(16, 1.0f);
    colors[7] = alpha;
    return colors;
}

TEST(MaterialBlend, VertexColoursMakeTranslucent)
{
    const struct
    {
        const char* Name;
        std::vector<const char*> Properties; ///< of each mesh; nullptr: a mesh without colours
        float Alpha;                         ///< as it is written
        LONG Preset;                         ///< of the page
        bool IsTranslucent;
        bool HasVertexColor;
    } rows[] = {
        {"clear", {"Colors"}, Clear, -1, true, true},
        {"full", {"Colors"}, 1.0f, -1, false, true},
        {"full enough", {"Colors"}, 0.99995f, -1, false, true},
        {"clear, but the page says opaque", {"Colors"}, Clear, 0, false, true},
        {"three components", {"Colors_rgb"}, Clear, -1, false, true},
        {"one of two meshes without colours", {"Colors", nullptr}, Clear, -1, false, false},
        {"two meshes", {"Colors_rgb", "Colors"}, Clear, -1, true, true},
        {"no colours", {nullptr}, Clear, -1, false, false},
    };

    for (const auto& row : rows) {
        SceneBuilder scene;
        SceneMaterial material = scene.Material("m", "lambert")
                                     .Marked(AttributePage, {{"TQ4X_ForPennonMatAttrBlendMode", row.Preset}});
        std::vector<XSI::CRef> meshes;
        for (const char* colors : row.Properties) {
            SceneMesh mesh = scene.Mesh("mesh" + std::to_string(meshes.size())).Square(material);
            if (colors != nullptr)
                mesh.Colors(colors, ColorsOfASquare(row.Alpha));
            meshes.push_back(mesh);
        }
        MaterialRun run;
        run.Options.SoftimageInvertVertexColorAlpha = false;
        EXPECT_TRUE(run.Convert(meshes)) << row.Name;
        EXPECT_EQ(run.Of(material).BlendPreset,
                  row.IsTranslucent ? BlendPreset::Translucent : BlendPreset::Opaque)
            << row.Name;
        const CombineMode mode = run.Of(material).FragmentShader.TextureCombiners.at(0).CombineRgb;
        EXPECT_EQ(mode == CombineMode::Modulate, row.HasVertexColor) << row.Name;
        EXPECT_THAT(run.Messages(), IsEmpty()) << row.Name;
    }
}

TEST(MaterialBlend, VertexAlphaCountsAsItIsWritten)
{
    for (const bool isInverted : {false, true}) {
        SceneBuilder scene;
        SceneMaterial material = scene.Material("m", "lambert");
        SceneMesh mesh = scene.Mesh("mesh").Square(material).Colors("Colors", std::vector<float>(16, 0.0f));
        MaterialRun run;
        run.Options.SoftimageInvertVertexColorAlpha = isInverted;
        EXPECT_TRUE(run.Convert({mesh}));
        EXPECT_EQ(run.Of(material).BlendPreset, isInverted ? BlendPreset::Opaque : BlendPreset::Translucent);
    }
}

} // namespace
} // namespace tq4x::test
