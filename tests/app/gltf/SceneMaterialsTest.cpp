#include <cmath>

#include <xsi_clusterproperty.h>
#include <xsi_image.h>
#include <xsi_imageclip2.h>
#include <xsi_shader.h>
#include <xsi_texture.h>

#include "FakePages.h"
#include "SceneFile.h"
#include "scene/CreateGeometry.h"
#include "support/PngBuilder.h"

namespace tq4x::gltf::test
{
namespace
{

using tq4x::test::EncodePng;

class SceneMaterialsTest : public SceneFile
{
protected:
    /// Opens a scene with one material; texture 0 is a.png, texture 1 b.tga, texture 2 has no picture.
    void OpenMaterial(const std::string& material, const std::string& more = "")
    {
        MustOpen(
            WithAsset(R"("images":[{"uri":"a.png","name":"wood"},{"uri":"b.tga"}],"samplers":[{"wrapS":33071,
            "wrapT":33648}],"textures":[{"source":0},{"source":1,"sampler":0},{}],"materials":[)" +
                      material + "]" + more));
    }

    static XSI::Shader Surface(const std::string& name)
    {
        return FindMaterial(name).GetParameter("surface").GetSource();
    }

    static std::string ProgId(const XSI::Shader& shader) { return XSI::Host::ToUtf8(shader.GetProgID()); }

    static std::string FileNameOf(const XSI::Texture& texture)
    {
        return XSI::Host::ToUtf8(XSI::ImageClip2(texture.GetImageClip()).GetFileName());
    }
};

TEST_F(SceneMaterialsTest, BecomePhongShaders)
{
    OpenMaterial(R"({"name":"m","pbrMetallicRoughness":{"baseColorFactor":[0.5,0.25,1,0.5],"metallicFactor":0,
        "roughnessFactor":0.5},"emissiveFactor":[0.1,0.2,0.3],
        "extensions":{"KHR_materials_emissive_strength":{"emissiveStrength":3}}})");
    const XSI::Shader shader = Surface("m");
    EXPECT_EQ(ProgId(shader), "Softimage.material-phong.1.0");
    EXPECT_EQ(Color(shader, "diffuse"), (std::array{0.5, 0.25, 1.0}));
    EXPECT_EQ(Color(shader, "specular"), (std::array{0.04, 0.04, 0.04}));
    EXPECT_NEAR(Number(shader, "shiny"), 30.0, 1e-9);
    EXPECT_EQ(Color(shader, "incandescence"), (std::array{0.1, 0.2, 0.3}));
    EXPECT_EQ(Number(shader, "inc_inten"), 3.0);
    EXPECT_EQ(Number(shader, "refract_inuse"), 0.0);
    EXPECT_FALSE(shader.GetParameter("diffuse").GetSource().IsValid());
    EXPECT_TRUE(Remarks().empty());
}

TEST_F(SceneMaterialsTest, UnlitOnesBecomeConstantShaders)
{
    OpenMaterial(R"({"pbrMetallicRoughness":{"baseColorFactor":[0.5,0.25,1,1],"baseColorTexture":{"index":0}},
        "extensions":{"KHR_materials_unlit":{}}})");
    const XSI::Shader shader = Surface("material0");
    EXPECT_EQ(ProgId(shader), "Softimage.material-constant.1.0");
    EXPECT_EQ(Color(shader, "color"), (std::array{0.5, 0.25, 1.0}));
    EXPECT_TRUE(XSI::Texture(shader.GetParameter("color").GetSource()).IsValid());
}

TEST_F(SceneMaterialsTest, AlphaBecomesTransparencyAsItsModeSays)
{
    const struct
    {
        const char* Mode;
        double Alpha;
        bool HasTexture;
        bool IsInUse;
        double Transparency;
        bool IsConnected;
    } cases[] = {
        {"OPAQUE", 0.25, true, false, 0.0, false}, {"MASK", 0.25, false, true, 0.75, false},
        {"MASK", 1.0, true, true, 0.0, false},     {"BLEND", 0.25, true, true, 0.75, false},
        {"BLEND", 1.0, true, true, 0.0, true},     {"BLEND", 1.0, false, true, 0.0, false},
    };

    for (const auto& entry : cases) {
        OpenMaterial(R"({"name":"m","alphaMode":")" + std::string(entry.Mode) +
                     R"(","pbrMetallicRoughness":{"baseColorFactor":[1,1,1,)" + std::to_string(entry.Alpha) +
                     "]" + (entry.HasTexture ? R"(,"baseColorTexture":{"index":0})" : "") + "}}");
        const XSI::Shader shader = Surface("m");
        EXPECT_EQ(Number(shader, "refract_inuse") != 0.0, entry.IsInUse) << entry.Mode << entry.Alpha;
        EXPECT_NEAR(Component(shader, "transparency", "red"), entry.Transparency, 1e-6)
            << entry.Mode << entry.Alpha;
        EXPECT_EQ(shader.GetParameter("transparency").GetSource().IsValid(), entry.IsConnected)
            << entry.Mode << entry.Alpha;
    }
}

TEST_F(SceneMaterialsTest, TexturesBecomeImageShaders)
{
    OpenMaterial(R"({"name":"m","pbrMetallicRoughness":{"baseColorTexture":{"index":0}},
        "normalTexture":{"index":1,"texCoord":1}})");
    const XSI::Shader shader = Surface("m");
    const XSI::Texture base = shader.GetParameter("diffuse").GetSource();
    ASSERT_TRUE(base.IsValid());
    EXPECT_EQ(ProgId(base), "Softimage.txt2d-image-explicit.1.0");
    EXPECT_EQ(XSI::Host::ToUtf8(base.GetParameterValue("tspace_id").GetAsText()), "TEXCOORD_0");
    const auto folder = std::filesystem::canonical(Folder.Path());
    EXPECT_EQ(FileNameOf(base), (folder / "a.png").string());
    const XSI::Shader normal = FindMaterial("m").GetParameter("normal").GetSource();
    const XSI::Shader map = normal.GetParameter("Map").GetSource();
    const XSI::Texture texture = map.GetParameter("NormalMap").GetSource();
    ASSERT_TRUE(texture.IsValid());
    EXPECT_EQ(FileNameOf(texture), (folder / "b.tga").string());
    EXPECT_EQ(XSI::Host::ToUtf8(texture.GetParameterValue("tspace_id").GetAsText()), "TEXCOORD_1");
    EXPECT_EQ(Remarks(),
              (std::vector<std::string>{"m: A texture that repeats mirrored will repeat plainly."}));
    EXPECT_EQ(Opened.Files, (std::vector<std::filesystem::path>{Folder / "scene.gltf", folder / "a.png",
                                                                folder / "b.tga"}));
}

TEST_F(SceneMaterialsTest, WhatIsNotExportedIsTold)
{
    OpenMaterial(R"({"name":"m","alphaMode":"MASK","alphaCutoff":0.25,"emissiveTexture":{"index":0},
        "emissiveFactor":[1,1,1],"occlusionTexture":{"index":0},"normalTexture":{"index":2},
        "pbrMetallicRoughness":{"baseColorFactor":[1,0.5,1,1],"baseColorTexture":{"index":0,"extensions":
        {"KHR_texture_transform":{"rotation":0.5,"scale":[1,2]}}}}})");
    EXPECT_EQ(Remarks(),
              (std::vector<std::string>{
                  "m: The transform of a texture both turns it and scales its sides differently; it is only "
                  "approximated.",
                  "m: The colour that multiplies the base texture is not exported.",
                  "m: The emissive texture is not exported.",
                  "m: A texture has its picture in a form that is not read; it is left out.",
                  "m: The occlusion texture is not exported.",
                  "m: The alpha cutoff is not exported; pixels above one half are shown.",
              }));
    EXPECT_TRUE(Surface("m").GetParameter("incandescence").GetSource().IsValid());
    EXPECT_FALSE(FindMaterial("m").GetParameter("normal").GetSource().IsValid());
}

TEST_F(SceneMaterialsTest, PixelsComeWhenTheyAreAskedFor)
{
    const Bytes pixels = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    const std::string uri = "data:image/png;base64," + EncodeBase64(EncodePng(2, 2, pixels));
    MustOpen(WithAsset(R"("images":[{"uri":")" + uri + R"(","name":"two"}],"textures":[{"source":0}],
        "materials":[{"name":"m","pbrMetallicRoughness":{"baseColorTexture":{"index":0}}}])"));
    const XSI::Texture texture = Surface("m").GetParameter("diffuse").GetSource();
    EXPECT_EQ(FileNameOf(texture), "two.png");
    const XSI::Image image = XSI::ImageClip2(texture.GetImageClip()).GetImage();
    ASSERT_TRUE(image.IsValid());
    EXPECT_EQ(image.GetResX(), 2u);
    EXPECT_EQ(image.GetNumChannels(), 4);
    EXPECT_EQ(image.GetChannelSize(), 1);
    const auto* const bytes = static_cast<const std::uint8_t*>(image.GetPixelArray());
    EXPECT_EQ(Bytes(bytes, bytes + 16), (Bytes{9, 10, 11, 12, 13, 14, 15, 16, 1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST_F(SceneMaterialsTest, PicturesAreFittedOnRequest)
{
    const std::string uri = "data:image/png;base64," + EncodeBase64(EncodePng(20, 10, Bytes(800, 77)));
    SceneOptions options;
    options.FitTextures = true;
    MustOpen(WithAsset(R"("images":[{"uri":")" + uri + R"("}],"textures":[{"source":0}],
        "materials":[{"name":"m","pbrMetallicRoughness":{"baseColorTexture":{"index":0}}}])"),
             options);
    const XSI::Texture texture = Surface("m").GetParameter("diffuse").GetSource();
    const XSI::Image image = XSI::ImageClip2(texture.GetImageClip()).GetImage();
    EXPECT_EQ(image.GetResX(), 16u);
    EXPECT_EQ(image.GetResY(), 8u);
}

TEST_F(SceneMaterialsTest, PicturesThatCantBeReadAreToldOnce)
{
    OpenMaterial(R"({"name":"m","pbrMetallicRoughness":{"baseColorTexture":{"index":0}}})");
    const XSI::Texture texture = Surface("m").GetParameter("diffuse").GetSource();
    const XSI::ImageClip2 clip = texture.GetImageClip();
    EXPECT_EQ(clip.GetImage().GetNumChannels(), 0);
    EXPECT_EQ(clip.GetImage().GetNumChannels(), 0);
    const auto& entries = XSI::Host::Session::Current().LogEntries;
    const std::string file = (std::filesystem::canonical(Folder.Path()) / "a.png").string();
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].Severity, XSI::siErrorMsg);
    EXPECT_EQ(entries[0].Text,
              "The picture " + file + " can't be used. The file " + file + " does not exist.");
}

TEST_F(SceneMaterialsTest, HighlightsTakeTheMeansOfTheirPicture)
{
    const std::string uri = "data:image/png;base64," + EncodeBase64(EncodePng(1, 1, {0, 0x80, 255, 255}));
    MustOpen(
        WithAsset(R"("images":[{"uri":")" + uri + R"("}],"textures":[{"source":0}],"materials":[{"name":"m",
        "pbrMetallicRoughness":{"baseColorFactor":[0.5,0.5,0.5,1],"metallicRoughnessTexture":{"index":0}}}])"));
    EXPECT_NEAR(Color(Surface("m"), "specular")[0], 0.5, 1e-12);
    const double roughness = 128.0 / 255.0;
    EXPECT_NEAR(Number(Surface("m"), "shiny"), 2.0 / std::pow(roughness, 4.0) - 2.0, 1e-9);
}

/// A file whose texture transform or colour moves from the first value to the second in one second.
std::string Moving(const std::string& pointer, const char* shape, const std::vector<float>& values)
{
    Bytes data = Pack(0.0f, 1.0f);
    for (const float value : values) {
        data = Join({data, Pack(value)});
    }
    data = Join({data, Bytes(60, 0)});
    return WithData(data, R"("accessors":[{"bufferView":0,"componentType":5126,"count":2,"type":"SCALAR"},
        {"bufferView":0,"byteOffset":8,"componentType":5126,"count":2,"type":")" +
                              std::string(shape) + R"("},{"componentType":5126,"count":3,"type":"VEC3"},
        {"componentType":5126,"count":3,"type":"VEC2"}],"images":[{"uri":"a.png"}],"textures":[{"source":0}],
        "materials":[{"name":"m","alphaMode":"BLEND","pbrMetallicRoughness":{"baseColorTexture":{"index":0}}},
        {"name":"plain","alphaMode":"BLEND"}],"meshes":[{"primitives":[{"attributes":{"POSITION":2,"NORMAL":2,
        "TEXCOORD_0":3},"material":0}]}],"nodes":[{"name":"n","mesh":0}],"animations":[{"samplers":[{"input":0,
        "output":1}],"channels":[{"sampler":0,"target":{"path":"pointer","extensions":{"KHR_animation_pointer":
        {"pointer":")" + pointer +
                              R"("}}}}]}])");
}

XSI::Primitive ProjectionOf(const XSI::X3DObject& object)
{
    XSI::CRef found;
    XSI::Host::Objects().ForEach([&](const XSI::Host::Object& candidate) {
        if (XSI::Host::RefOf(candidate).IsA(XSI::siPrimitiveID) &&
            XSI::ProjectItem(XSI::Host::RefOf(candidate)).GetParameter("projsclu").IsValid()) {
            found = XSI::Host::RefOf(candidate);
        }
    });
    EXPECT_TRUE(object.IsValid() && found.IsValid());
    return found;
}

TEST_F(SceneMaterialsTest, TransformsBecomeProjections)
{
    const std::string base =
        "/materials/0/pbrMetallicRoughness/baseColorTexture/extensions/KHR_texture_transform/";
    MustOpen(Moving(base + "offset", "VEC2", {0, 0, 1, 0.5f}));
    const XSI::Primitive projection = ProjectionOf(Find("n"));
    EXPECT_EQ(Number(projection, "projtrsu", 0.0), 0.0);
    EXPECT_NEAR(Number(projection, "projtrsu", 15.0), -0.5, 1e-12);
    EXPECT_NEAR(Number(projection, "projtrsv", 30.0), 0.5, 1e-12);
    MustOpen(Moving(base + "scale", "VEC2", {1, 1, 2, 4}));
    EXPECT_NEAR(Number(ProjectionOf(Find("n")), "projsclu", 30.0), 0.5, 1e-12);
    EXPECT_NEAR(Number(ProjectionOf(Find("n")), "projsclv", 30.0), 0.25, 1e-12);
    MustOpen(Moving(base + "rotation", "SCALAR", {0, 1}));
    EXPECT_NEAR(Number(ProjectionOf(Find("n")), "projrotw", 30.0), -57.29577951308232, 1e-9);
}

TEST_F(SceneMaterialsTest, ColoursMove)
{
    MustOpen(
        Moving("/materials/1/pbrMetallicRoughness/baseColorFactor", "VEC4", {0, 0, 0, 1, 1, 0.5f, 0, 0}));
    const XSI::Shader shader = Surface("plain");
    EXPECT_NEAR(Color(shader, "diffuse", 15.0)[0], 0.5, 1e-12);
    EXPECT_NEAR(Color(shader, "diffuse", 30.0)[1], 0.5, 1e-12);
    EXPECT_NEAR(Component(shader, "transparency", "red", 15.0), 0.5, 1e-12);
    MustOpen(Moving("/materials/0/emissiveFactor", "VEC3", {0, 0, 0, 1, 0.5f, 0}));
    EXPECT_NEAR(Color(Surface("m"), "incandescence", 30.0)[1], 0.5, 1e-12);
    MustOpen(
        Moving("/materials/0/extensions/KHR_materials_emissive_strength/emissiveStrength", "SCALAR", {0, 8}));
    EXPECT_NEAR(Number(Surface("m"), "inc_inten", 15.0), 4.0, 1e-12);
}

TEST_F(SceneMaterialsTest, PagesTakeCullingAndAlphaTest)
{
    FakePages::Load();
    OpenMaterial(R"({"name":"plain"},{"name":"both","doubleSided":true,"alphaMode":"MASK"})");
    EXPECT_FALSE(XSI::Host::FindProperty(FindMaterial("plain"), "TQ4X_ForPennonMaterialAttrProp").IsValid());
    const XSI::Property page =
        XSI::Host::FindProperty(FindMaterial("both"), "TQ4X_ForPennonMaterialAttrProp");
    EXPECT_EQ(Number(page, "TQ4X_ForPennonMatAttrCullFace"), 3.0);
    EXPECT_EQ(Number(page, "TQ4X_ForPennonMatAttrBlendMode"), 1.0);
}

TEST_F(SceneMaterialsTest, CustomPropertiesReachThePages)
{
    FakePages::Load();
    MustOpen(WithAsset(R"("materials":[{"name":"m","doubleSided":true,
        "extras":{"TQ4X_ForPennonMatAttrCullFace":2,"TQ4X_ForPennonUserDataParamNameList":"a\r\nb"}}],
        "meshes":[{"primitives":[{"attributes":{},"material":0}],"extras":{"TQ4X_ForPennonSomeFlag":1}}],
        "nodes":[{"name":"n","mesh":0,"extras":{"TQ4X_ForPennonBillboardType":3,"mine":[1],
        "TQ4X_ForPennonMatAttrBlendMode":2}}])"));
    EXPECT_EQ(Number(XSI::Host::FindProperty(Find("n"), "TQ4X_ForPennonBillboardProp"),
                     "TQ4X_ForPennonBillboardType"),
              3.0);
    EXPECT_EQ(
        Number(XSI::Host::FindProperty(Find("n"), "TQ4X_ForPennonBillboardProp"), "TQ4X_ForPennonSomeFlag"),
        1.0);
    const XSI::Property page = XSI::Host::FindProperty(FindMaterial("m"), "TQ4X_ForPennonMaterialAttrProp");
    EXPECT_EQ(Number(page, "TQ4X_ForPennonMatAttrCullFace"), 2.0);
    EXPECT_EQ(Number(page, "TQ4X_ForPennonMatAttrBlendMode"), 2.0);
    EXPECT_EQ(XSI::Host::ToUtf8(XSI::Host::FindProperty(FindMaterial("m"), "TQ4X_ForPennonUserDataProp")
                                    .GetParameterValue("TQ4X_ForPennonUserDataParamNameList")
                                    .GetAsText()),
              "a\r\nb");
    EXPECT_EQ(Remarks(),
              (std::vector<std::string>{"/meshes/0: A primitive without positions is left out.",
                                        "n: The mesh has no triangles; the node becomes a null."}));
}

TEST_F(SceneMaterialsTest, CustomPropertiesThatDoNotFitAreTold)
{
    FakePages::Load();
    MustOpen(WithAsset(R"("materials":[{"name":"m","extras":{"TQ4X_ForPennonBillboardType":1}}],
        "nodes":[{"name":"n","extras":{"TQ4X_ForPennonBillboardTipe":3,"TQ4X_ForPennonBillboardType":9,
        "TQ4X_ForPennonSomeFlag":[1],"TQ4X_ForPennonMatAttrCullFace":1}},
        {"name":"o","extras":{"TQ4X_ForPennonBillboardType":"x"}},{"name":"p","extras":7}])"));
    EXPECT_EQ(Remarks(),
              (std::vector<std::string>{
                  "m: The parameter TQ4X_ForPennonBillboardType has no place here; it is passed over.",
                  "n: No page has the parameter TQ4X_ForPennonBillboardTipe; did you mean "
                  "TQ4X_ForPennonBillboardType?",
                  "n: The value of TQ4X_ForPennonBillboardType is out of range; 6 is used.",
                  "n: The value of TQ4X_ForPennonSomeFlag must be true or false.",
                  "n: The parameter TQ4X_ForPennonMatAttrCullFace has no place here; it is passed over.",
                  "o: The value of TQ4X_ForPennonBillboardType must be a whole number, not \"x\".",
              }));
}

TEST_F(SceneMaterialsTest, CustomPropertiesOfAnotherTypeAreTakenWhereTheyCanBe)
{
    const struct
    {
        const char* Member; ///< without the prefix of its name
        double Billboard;
        double Flag;
        const char* Remark;
    } cases[] = {
        {R"(BillboardType":"4")", 4, 0, ""},
        {R"(BillboardType":true)", 1, 0, ""},
        {R"(BillboardType":4.0)", 4, 0, ""},
        {R"(SomeFlag":1)", 0, 1, ""},
        {R"(SomeFlag":"True")", 0, 1, ""},
        {R"(SomeFlag":"false")", 0, 0, ""},
        {R"(BillboardType":3.7)", 3, 0, "BillboardType must be a whole number; 3 is used."},
        {R"(BillboardType":-1)", 0, 0, "BillboardType is out of range; 0 is used."},
        {R"(BillboardType":1e300)", 6, 0, "BillboardType is out of range; 6 is used."},
        {R"(BillboardType":4294967299)", 6, 0, "BillboardType is out of range; 6 is used."},
        {R"(BillboardType":"9")", 6, 0, "BillboardType is out of range; 6 is used."},
        {R"(BillboardType":"4th")", 0, 0, "BillboardType must be a whole number, not \"4th\"."},
        {R"(BillboardType":"")", 0, 0, "BillboardType must be a whole number, not \"\"."},
        {R"(BillboardType":null)", 0, 0, "BillboardType must be a whole number."},
        {R"(BillboardType":{"a":1})", 0, 0, "BillboardType must be a whole number."},
        {R"(SomeFlag":2)", 0, 1, "SomeFlag must be true or false; true is used."},
        {R"(SomeFlag":"maybe")", 0, 0, "SomeFlag must be true or false, not \"maybe\"."},
    };

    for (const auto& row : cases) {
        XSI::Host::Session::Current().Reset();
        FakePages::Load();
        MustOpen(
            WithAsset(R"("nodes":[{"name":"n","extras":{"TQ4X_ForPennon)" + std::string(row.Member) + "}}]"));
        const XSI::Property page = XSI::Host::FindProperty(Find("n"), "TQ4X_ForPennonBillboardProp");
        EXPECT_EQ(Number(page, "TQ4X_ForPennonBillboardType"), row.Billboard) << row.Member;
        EXPECT_EQ(Number(page, "TQ4X_ForPennonSomeFlag"), row.Flag) << row.Member;
        const std::string remark = row.Remark;
        EXPECT_EQ(Remarks(), remark.empty()
                                 ? std::vector<std::string>()
                                 : std::vector<std::string>{"n: The value of TQ4X_ForPennon" + remark})
            << row.Member;
    }
}

TEST_F(SceneMaterialsTest, ListsOfUserDataMayHaveLineFeedsAlone)
{
    const auto listOf = [&](const std::string& value) {
        XSI::Host::Session::Current().Reset();
        FakePages::Load();
        MustOpen(WithAsset(R"("nodes":[{"name":"n","extras":{"TQ4X_ForPennonUserDataParamNameList":)" +
                           value + "}}]"));
        return XSI::Host::ToUtf8(XSI::Host::FindProperty(Find("n"), "TQ4X_ForPennonUserDataProp")
                                     .GetParameterValue("TQ4X_ForPennonUserDataParamNameList")
                                     .GetAsText());
    };
    EXPECT_EQ(listOf(R"("a\nb")"), "a\r\nb");
    EXPECT_EQ(listOf(R"("\na\n\nb\n")"), "\r\na\r\n\r\nb\r\n");
    EXPECT_EQ(listOf(R"("a\rb\r\nc")"), "a\rb\r\nc") << "lines of one item stay";
    EXPECT_EQ(listOf("5"), "5");
}

TEST_F(SceneMaterialsTest, WithoutAPluginMarksAreTold)
{
    MustOpen(WithAsset(R"("nodes":[{"name":"n","extras":{"TQ4X_ForPennonBillboardType":1}}])"));
    EXPECT_EQ(Remarks(),
              (std::vector<std::string>{"n: No page has the parameter TQ4X_ForPennonBillboardType."}));
}

XSI::Property ExportSettings()
{
    return XSI::Host::FindProperty(XSI::CRef::FromObjectID(XSI::Host::Session::Current().Root),
                                   "TQ4X_ForPennonExportProp");
}

TEST_F(SceneMaterialsTest, TheSettingsOfTheExportBelongToTheScene)
{
    FakePages::Load();
    MustOpen(WithAsset(R"("scenes":[{},{"extras":{"Magnify":9,"TQ4X_ForPennonExportProp":
        {"OutputFileName":"hero","Magnify":0.1}}}],"scene":1)"));
    EXPECT_FLOAT_EQ(static_cast<float>(Number(ExportSettings(), "Magnify")), 0.1f);
    EXPECT_EQ(XSI::Host::ToUtf8(ExportSettings().GetParameterValue("OutputFileName").GetAsText()), "hero");
    EXPECT_EQ(Remarks(), std::vector<std::string>());
    MustOpen(WithAsset(R"("scenes":[{"extras":{"Magnify":9}}])"));
    EXPECT_FALSE(ExportSettings().IsValid()) << "the names alone are anybody's";
}

TEST_F(SceneMaterialsTest, SettingsOfTheExportThatDoNotFitAreTold)
{
    const auto open = [&](const std::string& settings) {
        MustOpen(
            WithAsset(R"("scenes":[{"name":"s","extras":{"TQ4X_ForPennonExportProp":)" + settings + "}}]"));
        return Remarks();
    };
    const std::vector<std::string> withoutPlugin = {
        "s: No plug-in has the settings TQ4X_ForPennonExportProp."};
    EXPECT_EQ(open("{}"), withoutPlugin);
    FakePages::Load();
    const std::vector<std::string> noObject = {"s: The value of TQ4X_ForPennonExportProp must be an object."};
    EXPECT_EQ(open("7"), noObject);
    const std::vector<std::string> wrong = {"s: There is no parameter Magnifi; did you mean Magnify?",
                                            "s: There is no parameter zzzzz.",
                                            "s: The value of Magnify is out of range; 100 is used.",
                                            "s: The value of OutputFileName must be a text."};
    EXPECT_EQ(open(R"({"Magnifi":1,"zzzzz":1,"Magnify":500,"OutputFileName":[]})"), wrong);
}

} // namespace
} // namespace tq4x::gltf::test
