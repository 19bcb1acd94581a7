#include "PrintValues.h"

#include "support/SceneBuilder.h"

#include "scene/KnownShaders.h"

namespace tq4x::test
{
namespace
{

using namespace XSI;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Material, LibrariesInOrder)
{
    SceneBuilder scene;
    const MaterialLibrary second = Host::CreateMaterialLibrary("Second");
    scene.Material("b");
    const Material inSecond = Host::CreateMaterial("c", second);
    scene.Material("a");
    const CRefArray libraries = Application().GetActiveProject().GetActiveScene().GetMaterialLibraries();
    EXPECT_THAT(Names(libraries), ElementsAre("DefaultLib", "Second"));
    EXPECT_THAT(Names(MaterialLibrary(libraries[0]).GetItems()), ElementsAre("b", "a"));
    EXPECT_THAT(Names(second.GetItems()), ElementsAre("c"));
    EXPECT_EQ(inSecond.GetLibrary(), second);
    EXPECT_EQ(Text(inSecond.GetFullName()), "Second.c");

    Host::Objects().Delete(libraries[0].GetObjectID());
    Host::Objects().Delete(second.GetObjectID());
    EXPECT_FALSE(inSecond.IsValid());
    EXPECT_EQ(scene.Material("d").Object().GetLibrary().GetName(), L"DefaultLib")
        << "made anew when it is missing";
}

TEST(Material, UsersOnceEachWithoutTheDeletedOnes)
{
    SceneBuilder scene;
    const SceneMaterial red = scene.Material("red");
    const SceneNode a = scene.Null("a");
    const SceneNode b = scene.Null("b");
    for (const CRef& user : {CRef(b), CRef(a), CRef(b)}) {
        Host::SetMaterial(user, red.Object());
    }
    EXPECT_THAT(Names(red.Object().GetUsedBy()), ElementsAre("b", "a"));
    EXPECT_EQ(a.Object().GetMaterial(), red.Object());
    Host::Objects().Delete(CRef(b).GetObjectID());
    EXPECT_THAT(Names(red.Object().GetUsedBy()), ElementsAre("a"));
    Host::Objects().Delete(CRef(red).GetObjectID());
    EXPECT_FALSE(a.Object().GetMaterial().IsValid());
}

TEST(Material, SurfaceShaderAndItsPorts)
{
    SceneBuilder scene;
    const SceneMaterial material =
        scene.Material("m", "ward").Color("glossy", 0.1, 0.2, 0.3, 0.4).Set("inc_inten", 2.0);
    const Parameter surface = material.Object().GetParameter(L"surface");
    const Shader shader = surface.GetSource();
    EXPECT_EQ(shader, material.Shader());
    EXPECT_EQ(shader.GetProgID(), L"Softimage.material-ward.1.0");
    EXPECT_EQ(shader.GetParent(), material.Object());
    EXPECT_EQ(shader.GetParameter(L"glossy").GetParameter(L"alpha").GetValue(), CValue(0.4));
    EXPECT_EQ(shader.GetParameterValue(L"inc_inten"), CValue(2.0));
    EXPECT_TRUE(shader.GetParameter(L"glossy").IsA(siShaderParameterID));
    EXPECT_FALSE(shader.IsA(siTextureID));
    EXPECT_FALSE(Texture(shader).IsValid());
    EXPECT_FALSE(material.Object().GetParameter(L"normal").GetSource().IsValid());
}

TEST(Material, KnownShadersHaveThePortsThatTheirKindNeeds)
{
    const struct
    {
        const char* ProgId;
        std::vector<const wchar_t*> Ports;
    } cases[] = {
        {"constant",
         {L"color", L"transparency", L"refract_inuse", L"usealphatrans", L"inverttrans", L"incandescence"}},
        {"lambert",
         {L"diffuse", L"diffuse_inuse", L"ambient", L"transparency", L"incand_inuse", L"inc_inten"}},
        {"phong", {L"diffuse", L"ambient", L"specular", L"specular_inuse", L"shiny", L"transparency"}},
        {"blinn", {L"diffuse", L"ambient", L"specular", L"specular_inuse", L"transparency"}},
        {"ward", {L"diffuse", L"ambient", L"glossy", L"specular_inuse", L"transparency"}},
        {"Softimage.sib_color_2mix.1.0", {L"base_color", L"color1", L"mixersize"}},
        {"Softimage.sib_color_8mix.1.0", {L"base_color", L"color1", L"color7", L"mixersize"}},
        {"Softimage.unheard-of.1.0", {L"out"}},
    };

    for (const auto& test : cases) {
        SceneBuilder scene;
        const SceneMaterial material = scene.Material("m", test.ProgId);
        for (const wchar_t* port : test.Ports) {
            EXPECT_TRUE(material.Shader().GetParameter(port).IsValid())
                << test.ProgId << CString(port).GetAsciiString();
        }
    }
    EXPECT_EQ(Host::FindKnownShader("Softimage.unheard-of.1.0"), nullptr);
    SceneBuilder scene;
    EXPECT_FALSE(scene.Material("m", "blinn").Shader().GetParameter(L"shiny").IsValid());
    EXPECT_FALSE(Host::CreateShader(CRef(), "Softimage.material-phong.1.0", "s").IsValid());
}

TEST(Material, ImagesLayersAndNormalMaps)
{
    SceneBuilder scene;
    const SceneMaterial material = scene.Material("m")
                                       .Image("diffuse", "a.png", "uv")
                                       .Layer("b.png", "uv")
                                       .Layer("c.png", "uv2")
                                       .NormalMap("n.tga", "uv");
    const Texture texture = material.Shader().GetParameter(L"diffuse").GetSource();
    ASSERT_TRUE(texture.IsValid());
    EXPECT_EQ(texture.GetName(), L"a.png");
    EXPECT_EQ(texture.GetProgID(), L"Softimage.txt2d-image-explicit.1.0");
    EXPECT_EQ(texture.GetParameterValue(L"tspace_id"), CValue(L"uv"));
    EXPECT_EQ(texture.GetImageClip().GetFileName(), L"a.png");

    const CRefArray layers = material.Shader().GetTextureLayers();
    EXPECT_THAT(Names(layers), ElementsAre("b.png", "c.png"));
    const Texture second = TextureLayer(layers[1]).GetParameter(L"color").GetSource();
    EXPECT_EQ(second.GetParameterValue(L"tspace_id"), CValue(L"uv2"));

    const Shader bump = material.Object().GetParameter(L"normal").GetSource();
    const Shader map = bump.GetParameter(L"Map").GetSource();
    EXPECT_EQ(Texture(map.GetParameter(L"NormalMap").GetSource()).GetImageClip().GetFileName(), L"n.tga");
    EXPECT_FALSE(Host::AddTextureLayer(Shader(), "x", CRef()).IsValid());

    Host::Objects().Delete(CRef(material).GetObjectID());
    EXPECT_FALSE(texture.IsValid() || bump.IsValid() || map.IsValid() || layers[0].IsValid());
}

TEST(Material, AnimatedPorts)
{
    SceneBuilder scene;
    const SceneMaterial material = scene.Material("m")
                                       .Animate("diffuse", "red", {{0, 0}, {10, 1}})
                                       .Animate("shiny", {{0, 10}, {10, 20}});
    const Shader shader = material.Shader();
    EXPECT_TRUE(shader.GetParameter(L"diffuse").IsAnimated());
    EXPECT_EQ(static_cast<double>(shader.GetParameter(L"diffuse").GetParameter(L"red").GetValue(5.0)), 0.5);
    EXPECT_EQ(static_cast<double>(shader.GetParameterValue(L"shiny", 5.0)), 15.0);
    EXPECT_FALSE(shader.GetParameter(L"specular").IsAnimated());
}

TEST(ImageClip, StillImage)
{
    SceneBuilder scene;
    const ImageClip2 clip = Host::CreateImageClip("clip", "folder/a.png");
    EXPECT_EQ(clip.GetName(), L"clip");
    EXPECT_EQ(clip.GetFileName(), L"folder/a.png");
    EXPECT_EQ(clip.GetParameterValue(L"SourceFileName"), CValue(L"folder/a.png"));
    EXPECT_EQ(clip.GetTimeControl().GetClipIn(), 0.0);
    EXPECT_EQ(clip.GetTimeControl().GetClipOut(), 0.0);
    EXPECT_FALSE(clip.GetImage().IsValid());

    auto pixels = MakePicture(2, 3, 3, 2, 7);
    pixels->Pixels[0] = std::byte{9};
    Host::SetPixels(clip, pixels);
    const Image image = clip.GetImage();
    EXPECT_EQ(image.GetResX(), 2);
    EXPECT_EQ(image.GetResY(), 3);
    EXPECT_EQ(image.GetNumChannels(), 3);
    EXPECT_EQ(image.GetChannelSize(), 2);
    EXPECT_EQ(static_cast<const unsigned char*>(image.GetPixelArray())[0], 9);
    Host::Objects().Delete(clip.GetObjectID());
    EXPECT_EQ(image.GetResX(), 2) << "the handle keeps the pixels";
}

TEST(ImageClip, Sequence)
{
    SceneBuilder scene;
    const ImageClip2 clip = Host::CreateImageClip("clip", "a1.tga");
    Host::SetSequence(clip, "a[1..3].tga", 1, 3, 5, 0.5);
    EXPECT_EQ(clip.GetParameterValue(L"SourceFileName"), CValue(L"a[1..3].tga"));
    EXPECT_EQ(clip.GetFileName(), L"a1.tga");
    const TimeControl time = clip.GetTimeControl();
    EXPECT_EQ(time.GetClipIn(), 1.0);
    EXPECT_EQ(time.GetClipOut(), 3.0);
    EXPECT_EQ(time.GetStartOffset(), 5.0);
    EXPECT_EQ(time.GetScale(), 0.5);

    std::vector<double> asked;
    Host::SetPixelSource(clip, [&](double frame) {
        asked.push_back(frame);
        return MakePicture(static_cast<LONG>(frame), 8);
    });
    scene.Host().CurrentFrame = 16.0;
    EXPECT_EQ(clip.GetImage(4.0).GetResX(), 4);
    EXPECT_EQ(clip.GetImage().GetResX(), 16);
    EXPECT_THAT(asked, ElementsAre(4.0, 16.0));
    Host::SetSequence(ImageClip2(), "x", 0, 0);
    Host::SetPixels(ImageClip2(), nullptr);
}

} // namespace
} // namespace tq4x::test
