#include "GltfExport.h"
#include "app/gltf/GltfFile.h"

#include <cmath>
#include <numbers>
#include <random>

namespace tq4x::test
{
namespace
{

using gltf::Bytes;
using gltf::test::Join;
using gltf::test::Pack;
using gltf::test::WithData;

using Point = std::array<double, 2>;

/// A scene of one square with one material; its texture coordinates are (x / 2, y / 4) of its positions,
/// v downwards as glTF has it. `more` are further members of the file's root.
std::string SquareScene(const std::string& material, const std::string& more = "")
{
    const Bytes data = Join({Pack(0.0f, 0.0f, 0.0f, 2.0f, 0.0f, 0.0f, 2.0f, 4.0f, 0.0f, 0.0f, 4.0f, 0.0f),
                             Pack(0.0f, 0.0f, 1.0f, 0.0f, 1.0f, 1.0f, 0.0f, 1.0f),
                             Pack(std::uint16_t{0}, std::uint16_t{1}, std::uint16_t{2}, std::uint16_t{0},
                                  std::uint16_t{2}, std::uint16_t{3})});
    return WithData(data, R"("accessors":[{"bufferView":0,"componentType":5126,"count":4,"type":"VEC3"},
        {"bufferView":0,"byteOffset":48,"componentType":5126,"count":4,"type":"VEC2"},
        {"bufferView":0,"byteOffset":80,"componentType":5123,"count":6,"type":"SCALAR"}],
        "images":[{"uri":"wood.png"}],"textures":[{"source":0}],
        "meshes":[{"primitives":[{"attributes":{"POSITION":0,"TEXCOORD_0":1},"indices":2,"material":0}]}],
        "nodes":[{"name":"plate","mesh":0}],"materials":[)" +
                              material + "]" + more);
}

/// Exports a text as a scene, without its textures.
class SquareExport
{
public:
    explicit SquareExport(const std::string& material, const std::string& more = "")
    {
        std::ofstream(m_folder / "scene.gltf") << SquareScene(material, more);
        m_export.emplace(m_folder / "scene.gltf", gltf::SceneOptions{},
                         std::vector<std::string>{"OutputQtex:false"});
    }

    reader::Model Model() const { return m_export->Model(); }

    reader::Material Material() const
    {
        const reader::Model model = Model();
        EXPECT_EQ(model.Materials.size(), 1u);
        return model.Materials.empty() ? reader::Material() : model.Materials[0];
    }

private:
    TemporaryFolder m_folder;
    std::optional<GltfExport> m_export;
};

TEST(GltfMaterial, AlphaModesBecomeBlending)
{
    const struct
    {
        const char* Name;
        const char* Material;
        const char* TranslucencyKind;
        bool IsAlphaTested;
        const char* BlendMode;
        bool WritesDepth;
        float Alpha;
    } rows[] = {
        {"opaque", R"({"pbrMetallicRoughness":{"baseColorFactor":[1,1,1,0.5]}})", "Opaque", false, "NotUsed",
         true, 1.0f},
        {"opaque with a texture", R"({"pbrMetallicRoughness":{"baseColorTexture":{"index":0}}})", "Opaque",
         false, "NotUsed", true, 1.0f},
        {"mask", R"({"alphaMode":"MASK","pbrMetallicRoughness":{"baseColorTexture":{"index":0}}})", "Opaque",
         true, "NotUsed", true, 1.0f},
        {"mask and alpha", R"({"alphaMode":"MASK","pbrMetallicRoughness":{"baseColorFactor":[1,1,1,0.5]}})",
         "Opaque", true, "NotUsed", true, 0.5f},
        {"blend by colour",
         R"({"alphaMode":"BLEND","pbrMetallicRoughness":{"baseColorFactor":[1,1,1,0.25]}})", "Translucent",
         false, "Blend", false, 0.25f},
        {"blend by texture",
         R"({"alphaMode":"BLEND","pbrMetallicRoughness":{"baseColorTexture":{"index":0}}})", "Translucent",
         false, "Blend", false, 1.0f},
        {"blend with nothing to see through", R"({"alphaMode":"BLEND"})", "Opaque", false, "NotUsed", true,
         1.0f},
    };

    for (const auto& row : rows) {
        const reader::Material material = SquareExport(row.Material).Material();
        EXPECT_EQ(material.TranslucencyKind, row.TranslucencyKind) << row.Name;
        EXPECT_EQ(material.Shader.IsAlphaTestEnabled, row.IsAlphaTested) << row.Name;
        EXPECT_EQ(material.Shader.AlphaTestReference, row.IsAlphaTested ? 0.5f : 0.0f) << row.Name;
        EXPECT_EQ(material.Operation.BlendMode, row.BlendMode) << row.Name;
        EXPECT_EQ(material.Operation.IsDepthMaskEnabled, row.WritesDepth) << row.Name;
        EXPECT_EQ(material.Diffuse.back(), row.Alpha) << row.Name;
        EXPECT_LE(material.Mappers.size(), 1u) << row.Name;
    }
}

TEST(GltfMaterial, UnlitOnesHaveNoHighlight)
{
    const std::string unlit = R"({"pbrMetallicRoughness":{"baseColorFactor":[1,0.5,0.25,1]},
        "emissiveFactor":[0.5,0.25,1],"extensions":{"KHR_materials_unlit":{}}})";
    const std::string lit =
        R"({"pbrMetallicRoughness":{"baseColorFactor":[1,0.5,0.25,1]},"emissiveFactor":[0.5,0.25,1]})";
    const reader::Material plain = SquareExport(unlit).Material();
    EXPECT_FALSE(plain.Shader.IsDistribution0Enabled);
    EXPECT_EQ(plain.Diffuse, (reader::Color{1.0f, 0.5f, 0.25f, 1.0f}));
    EXPECT_EQ(plain.Ambient, (reader::Color{}));
    EXPECT_EQ(plain.Specular0, (reader::Color{}));
    const reader::Material shaded = SquareExport(lit).Material();
    EXPECT_TRUE(shaded.Shader.IsDistribution0Enabled);
    EXPECT_EQ(shaded.Ambient, (reader::Color{1.0f, 1.0f, 1.0f, 0.0f}));
    EXPECT_EQ(shaded.Emission, (reader::Color{0.5f, 0.25f, 1.0f, 0.0f}));
    EXPECT_EQ(shaded.Specular0[0], 1.0f); // a metal: the base colour itself
}

// The middle of a table stands for the cosine 1/2: its value is that to the power of the exponent.
TEST(GltfMaterial, HighlightsFollowRoughness)
{
    const reader::Model model =
        SquareExport(R"({"pbrMetallicRoughness":{"metallicFactor":0,"roughnessFactor":0.7598356856515925}})")
            .Model(); // r^4 = 1/3, so that the exponent is 4
    ASSERT_EQ(model.Materials.size(), 1u);
    EXPECT_EQ(model.Materials[0].Specular0, (reader::Color{0.04f, 0.04f, 0.04f, 1.0f}));
    ASSERT_EQ(model.LookupTables.Tables.size(), 1u);
    const std::optional<float> middle = reader::EvaluateCurve(model.LookupTables.Tables[0].Values, 128.0f);
    ASSERT_TRUE(middle.has_value());
    EXPECT_NEAR(*middle, std::pow(0.5, 4.0), 0.002);
}

TEST(GltfMaterial, BothSidesAndExtrasReachTheFile)
{
    const reader::Material both = SquareExport(R"({"doubleSided":true})").Material();
    EXPECT_EQ(both.CullingMode, "Never");
    EXPECT_TRUE(both.IsCompressible);
    const reader::Material marked = SquareExport(R"({"doubleSided":true,"extras":{
        "TQ4X_ForPennonMatAttrCullFace":0,
        "TQ4X_ForPennonMatAttrFragmentLighting":false,
        "TQ4X_ForPennonMatAttrVertexLighting":true,
        "TQ4X_ForPennonMatAttrBlendMode":3,
        "TQ4X_ForPennonMatAttrNoCompress":true,
        "TQ4X_ForPennonUserDataParamNameList":"sound",
        "TQ4X_ForPennonUserDataParamTypeList":"String",
        "TQ4X_ForPennonUserDataParamValueList":"wood",
        "somebody":"else"}})")
                                        .Material();
    EXPECT_EQ(marked.CullingMode, "FrontFace");
    EXPECT_FALSE(marked.IsFragmentLightEnabled);
    EXPECT_TRUE(marked.IsVertexLightEnabled);
    EXPECT_EQ(marked.TranslucencyKind, "Additive");
    EXPECT_FALSE(marked.IsCompressible);
    ASSERT_EQ(marked.UserData.size(), 1u);
    EXPECT_EQ(marked.UserData[0].Key, "sound");
}

TEST(GltfMaterial, PriorityByExtrasReachesTheMesh)
{
    const reader::Model model = SquareExport(R"({"extras":{"TQ4X_ForPennonRenderPrioUsePriority":true,
        "TQ4X_ForPennonRenderPrioPriority":5}})")
                                    .Model();
    ASSERT_EQ(model.Meshes.size(), 1u);
    EXPECT_EQ(model.Meshes[0].RenderPriority, 5);
}

/// What the file says: T + R * S * p, v downwards.
Point Transform(const gltf::TextureTransform& t, const Point& p)
{
    const double c = std::cos(t.Rotation);
    const double s = std::sin(t.Rotation);
    return {t.Offset[0] + c * t.Scale[0] * p[0] + s * t.Scale[1] * p[1],
            t.Offset[1] - s * t.Scale[0] * p[0] + c * t.Scale[1] * p[1]};
}

/// What the written coordinator does: S * R(-Rotate) * (p - T), v upwards; and back again.
Point Apply(const reader::TextureCoordinator& t, const Point& p)
{
    const double c = std::cos(t.Rotate);
    const double s = std::sin(t.Rotate);
    const double x = p[0] - t.TranslateS;
    const double y = p[1] - t.TranslateT;
    return {t.ScaleS * (c * x + s * y), t.ScaleT * (c * y - s * x)};
}

Point Undo(const reader::TextureCoordinator& t, const Point& p)
{
    const double c = std::cos(t.Rotate);
    const double s = std::sin(t.Rotate);
    const double x = p[0] / t.ScaleS;
    const double y = p[1] / t.ScaleT;
    return {c * x - s * y + t.TranslateS, s * x + c * y + t.TranslateT};
}

Point Flip(const Point& p)
{
    return {p[0], 1.0 - p[1]};
}

void ExpectNear(const Point& actual, const Point& expected, const std::string& name)
{
    EXPECT_NEAR(actual[0], expected[0], 2e-4) << name;
    EXPECT_NEAR(actual[1], expected[1], 2e-4) << name;
}

void ExpectSamePlaces(const gltf::TextureTransform& transform, const std::string& name)
{
    const auto number = [](double value) { return std::to_string(value); };
    const reader::Model model =
        SquareExport(R"({"pbrMetallicRoughness":{"baseColorTexture":{"index":0,"extensions":{
        "KHR_texture_transform":{"offset":[)" +
                     number(transform.Offset[0]) + "," + number(transform.Offset[1]) + R"(],"rotation":)" +
                     number(transform.Rotation) + R"(,"scale":[)" + number(transform.Scale[0]) + "," +
                     number(transform.Scale[1]) + "]}}}}}")
            .Model();
    ASSERT_EQ(model.Materials.size(), 1u) << name;
    ASSERT_EQ(model.Materials[0].Coordinators.size(), 1u) << name;
    ASSERT_EQ(model.Shapes.size(), 1u) << name;
    const reader::TextureCoordinator& coordinator = model.Materials[0].Coordinators[0];
    const reader::VertexStream* positions = reader::FindStream(model.Shapes[0], "Position");
    const reader::VertexStream* uvs = reader::FindStream(model.Shapes[0], "TextureCoordinate0");
    ASSERT_TRUE(positions != nullptr && uvs != nullptr) << name;
    for (std::size_t i = 0; i < model.Shapes[0].VertexCount; ++i) {
        const Point source = {positions->Values[i * 3] / 2.0, positions->Values[i * 3 + 1] / 4.0};
        const Point written = {uvs->Values[i * 2], uvs->Values[i * 2 + 1]};
        ExpectNear(written, Flip(source), name + ", as it lies");
        ExpectNear(Flip(Apply(coordinator, written)), Transform(transform, source), name + ", forth");
        ExpectNear(Undo(coordinator, Flip(Transform(transform, source))), Flip(source), name + ", back");
    }
}

TEST(GltfMaterial, TextureTransformsReachTheFile)
{
    const struct
    {
        const char* Name;
        gltf::TextureTransform Transform;
    } rows[] = {
        {"nothing", {}},
        {"offset", {{0.25, -0.5}, 0.0, {1, 1}}},
        {"scale", {{0, 0}, 0.0, {2, 0.5}}},
        {"turn", {{0, 0}, 0.5, {1, 1}}},
        {"mirrored", {{1, 0}, 0.0, {-1, 1}}},
        {"a quarter with uneven scale", {{0.1, 0.2}, std::numbers::pi / 2, {2, 0.5}}},
        {"all", {{0.3, -0.7}, -1.1, {1.5, 1.5}}},
    };

    for (const auto& row : rows)
        ExpectSamePlaces(row.Transform, row.Name);
}

TEST(GltfMaterial, RandomTextureTransformsReachTheFile)
{
    for (unsigned seed = 1; seed <= 12; ++seed) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> range(-2.0, 2.0);
        const double scale = 0.5 + std::abs(range(random));
        const double sign = seed % 2 == 0 ? 1.0 : -1.0;
        ExpectSamePlaces({{range(random), range(random)}, range(random), {scale, sign * scale}},
                         "seed " + std::to_string(seed));
    }
}

TEST(GltfMaterial, SamplersBecomeWraps)
{
    const struct
    {
        const char* Sampler;
        const char* S;
        const char* T;
    } rows[] = {
        {"{}", "Repeat", "Repeat"},
        {R"({"wrapS":33071,"wrapT":33071})", "ClampToEdge", "ClampToEdge"},
        {R"({"wrapS":10497,"wrapT":33071})", "Repeat", "ClampToEdge"},
        {R"({"wrapS":33648})", "Repeat", "Repeat"}, // told when it is opened
    };

    for (const auto& row : rows) {
        std::string scene = SquareScene(R"({"pbrMetallicRoughness":{"baseColorTexture":{"index":0}}})",
                                        R"(,"samplers":[)" + std::string(row.Sampler) + "]");
        const std::string plain = R"("textures":[{"source":0}])";
        scene.replace(scene.find(plain), plain.size(), R"("textures":[{"source":0,"sampler":0}])");
        TemporaryFolder folder;
        std::ofstream(folder / "scene.gltf") << scene;
        const GltfExport run(folder / "scene.gltf", {}, {"OutputQtex:false"});
        const reader::Model model = run.Model();
        ASSERT_EQ(model.Materials.size(), 1u);
        ASSERT_EQ(model.Materials[0].Mappers.size(), 1u);
        EXPECT_EQ(model.Materials[0].Mappers[0].WrapS, row.S) << row.Sampler;
        EXPECT_EQ(model.Materials[0].Mappers[0].WrapT, row.T) << row.Sampler;
    }
}

TEST(GltfMaterial, AMissingPictureIsToldAndTheRestIsExported)
{
    TemporaryFolder folder;
    std::ofstream(folder / "scene.gltf")
        << SquareScene(R"({"name":"m","pbrMetallicRoughness":{"baseColorTexture":{"index":0}}})");
    const GltfExport run(folder / "scene.gltf");
    const std::string file = (std::filesystem::canonical(folder.Path()) / "wood.png").string();
    EXPECT_THAT(run.Run().Messages(),
                testing::ElementsAre("E The picture " + file + " can't be used. The file " + file +
                                         " does not exist.",
                                     "E Only 4 channels per image supported (" + file + ")."));
    EXPECT_THAT(run.TextureFiles(), testing::IsEmpty());
    EXPECT_EQ(run.Model().Materials[0].Mappers[0].Texture.Name, "wood");
}

} // namespace
} // namespace tq4x::test
