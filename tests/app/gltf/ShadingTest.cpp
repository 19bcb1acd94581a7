#include <gtest/gtest.h>

#include "gltf/FitPicture.h"
#include "gltf/LegalHostName.h"
#include "gltf/PictureSource.h"
#include "gltf/Shading.h"

namespace tq4x::gltf
{
namespace
{

Picture Plain(std::uint32_t width, std::uint32_t height, std::array<std::uint8_t, 4> color)
{
    Picture picture{width, height, 1, {}};
    for (std::uint32_t i = 0; i < width * height; ++i) {
        picture.Pixels.insert(picture.Pixels.end(), color.begin(), color.end());
    }
    return picture;
}

TEST(ShadingTest, HighlightFollowsMetalnessAndRoughness)
{
    const struct
    {
        const char* Name;
        double Metallic;
        double Roughness;
        double Specular; // of the green channel
        double Shininess;
    } cases[] = {
        {"matt plastic", 0.0, 1.0, 0.04, 1.0}, {"half rough plastic", 0.0, 0.5, 0.04, 30.0},
        {"rough metal", 1.0, 0.5, 0.5, 30.0},  {"half metal", 0.5, 0.5, 0.27, 30.0},
        {"mirror", 1.0, 0.0, 0.5, 300.0},      {"nearly a mirror", 0.0, 0.1, 0.04, 300.0},
    };

    Material material;
    material.BaseColor = {1.0, 0.5, 0.0, 1.0};
    for (const auto& entry : cases) {
        const Shading shading = ComputeShading(material, {entry.Metallic, entry.Roughness});
        EXPECT_NEAR(shading.Specular[1], entry.Specular, 1e-12) << entry.Name;
        EXPECT_NEAR(shading.Shininess, entry.Shininess, 1e-9) << entry.Name;
        EXPECT_EQ(shading.Diffuse, (std::array{1.0, 0.5, 0.0})) << entry.Name;
    }
}

TEST(ShadingTest, TransparencyCountsOnlyWhereTheMaterialSaysSo)
{
    Material material;
    material.BaseColor[3] = 0.25;
    EXPECT_EQ(ComputeShading(material, {}).Transparency, 0.0);
    material.Alpha = AlphaMode::Blend;
    EXPECT_EQ(ComputeShading(material, {}).Transparency, 0.75);
    material.Alpha = AlphaMode::Mask;
    EXPECT_EQ(ComputeShading(material, {}).Transparency, 0.75);
}

TEST(ShadingTest, FinishTakesTheMeansOfThePicture)
{
    Material material;
    material.Metallic = 0.5;
    material.Roughness = 0.8;
    const SurfaceFinish plain = ComputeFinish(material, nullptr);
    EXPECT_EQ(plain.Metallic, 0.5);
    EXPECT_EQ(plain.Roughness, 0.8);
    const Picture picture = Plain(2, 2, {255, 51, 102, 0});
    const SurfaceFinish textured = ComputeFinish(material, &picture);
    EXPECT_NEAR(textured.Metallic, 0.2, 1e-12);
    EXPECT_NEAR(textured.Roughness, 0.16, 1e-12);
}

TEST(ShadingTest, GlossyMaterialsBringTheirHighlight)
{
    Material material;
    material.Gloss = SpecularGlossiness{{0.5, 0.25, 0.125}, 0.5};
    const SurfaceFinish finish = ComputeFinish(material, nullptr);
    EXPECT_EQ(finish.Roughness, 0.5);
    const Shading shading = ComputeShading(material, finish);
    EXPECT_EQ(shading.Specular, (std::array{0.5, 0.25, 0.125}));
    EXPECT_NEAR(shading.Shininess, 30.0, 1e-9);
}

TEST(ShadingTest, FinishStaysInRange)
{
    Material material;
    material.Metallic = 7.0;
    material.Roughness = -1.0;
    EXPECT_EQ(ComputeFinish(material, nullptr).Metallic, 1.0);
    EXPECT_EQ(ComputeFinish(material, nullptr).Roughness, 0.0);
}

TEST(FitPictureTest, NearestSidesByRatio)
{
    const struct
    {
        std::uint32_t Length;
        std::uint32_t Side;
    } cases[] = {{1, 8},     {8, 8},     {11, 8},    {12, 16},     {100, 128},   {90, 64},     {91, 128},
                 {128, 128}, {181, 128}, {182, 256}, {1000, 1024}, {1024, 1024}, {2048, 1024}, {32768, 1024}};

    for (const auto& entry : cases) {
        EXPECT_EQ(NearestTextureSide(entry.Length), entry.Side) << entry.Length;
    }
}

TEST(FitPictureTest, LegalPicturesStay)
{
    const Picture picture = Plain(16, 8, {1, 2, 3, 4});
    EXPECT_EQ(FitPicture(picture), picture);
}

TEST(FitPictureTest, PlainPicturesStayPlain)
{
    for (const std::uint32_t width : {1u, 7u, 20u, 100u}) {
        const Picture fitted = FitPicture(Plain(width, 33, {10, 20, 30, 200}));
        EXPECT_EQ(fitted, Plain(NearestTextureSide(width), 32, {10, 20, 30, 200})) << width;
    }
}

TEST(FitPictureTest, PixelsAreMeansOfWhatTheyCover)
{
    Picture picture = Plain(2048, 8, {0, 0, 0, 255});
    for (std::size_t i = 0; i < picture.Pixels.size(); i += 8) {
        picture.Pixels[i] = 200; // every other pixel
    }
    const Picture fitted = FitPicture(picture);
    ASSERT_EQ(fitted.Width, 1024u);
    for (std::size_t i = 0; i < fitted.Pixels.size(); i += 4) {
        ASSERT_EQ(fitted.Pixels[i], 100);
    }
}

TEST(FitPictureTest, WhatIsTransparentDoesNotBleed)
{
    Picture picture = Plain(2048, 8, {255, 255, 255, 0});
    for (std::size_t i = 0; i < picture.Pixels.size(); i += 8) {
        picture.Pixels[i] = 10;
        picture.Pixels[i + 3] = 255;
    }
    const Picture fitted = FitPicture(picture);
    EXPECT_EQ(fitted.Pixels[0], 10);
    EXPECT_EQ(fitted.Pixels[3], 128);
}

TEST(FitPictureTest, WideChannelsKeepTheirDepth)
{
    Picture picture{12, 8, 2, {}};
    const std::uint16_t pixel[4] = {1000, 2000, 3000, 65535};
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(pixel);
    for (int i = 0; i < 12 * 8; ++i) {
        picture.Pixels.insert(picture.Pixels.end(), bytes, bytes + 8);
    }
    const Picture fitted = FitPicture(picture);
    ASSERT_EQ(fitted.Width, 16u);
    ASSERT_EQ(fitted.Pixels.size(), 16u * 8u * 8u);
    EXPECT_EQ(std::vector<std::uint8_t>(fitted.Pixels.begin(), fitted.Pixels.begin() + 8),
              std::vector<std::uint8_t>(bytes, bytes + 8));
}

TEST(LegalHostNameTest, ReplacesWhatFilesCantHold)
{
    const struct
    {
        std::string Name;
        const char* Legal;
    } cases[] = {
        {"plain name-1.2", "plain name-1.2"},
        {"", ""},
        {"a&b<c>d\"e'f`g", "a_b_c_d_e_f_g"},
        {std::string("a\0b\x01"
                     "c\x7f"
                     "d\n",
                     8),
         "a_b_c_d_"},
        {"K\xc3\xb6rper", "K\xc3\xb6rper"},
    };

    for (const auto& entry : cases) {
        EXPECT_EQ(LegalHostName(entry.Name), entry.Legal);
    }
}

TEST(NamePicturesTest, EmbeddedPicturesGetNamesOfTheirOwn)
{
    Document document;
    document.Images.resize(7);
    document.Images[0].Name = "Skin";
    document.Images[1].Name = "Skin";
    document.Images[1].MimeType = "image/jpeg";
    document.Images[3].Name = "C:\\work\\wood.PNG";
    document.Images[4].Name = "a/b&c.jpg";
    document.Images[5].File = "/scenes/t.tga";
    document.Images[6].Name = "Skin_1";
    EXPECT_EQ(NamePictures(document),
              (std::vector<std::string>{"Skin.png", "Skin_1.jpg", "image2.png", "wood.png", "b_c.png",
                                        "/scenes/t.tga", "Skin_1_1.png"}));
    EXPECT_TRUE(IsTgaFile(document.Images[5]));
    EXPECT_FALSE(IsTgaFile(document.Images[0]));
}

} // namespace
} // namespace tq4x::gltf
