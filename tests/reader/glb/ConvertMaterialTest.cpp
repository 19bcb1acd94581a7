#include <gmock/gmock.h>
#include <png.h>

#include <cmath>

#include "glb/AddMaterials.h"
#include "reader/glb/ReadGlb.h"

namespace tq4x::reader::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

/// The triangle with a lit material, "paint", that tests change.
ExportedFiles PaintedFiles()
{
    ExportedFiles files = TriangleFiles();
    Material material;
    material.Name = "paint";
    material.Diffuse = {1, 1, 1, 1};
    material.Ambient = {1, 1, 1, 0};
    material.CullingMode = "BackFace";
    ModelOf(files).Materials = {material};
    ModelOf(files).Meshes[0].MaterialName = "paint";
    return files;
}

Material& PaintOf(ExportedFiles& files)
{
    return ModelOf(files).Materials.at(0);
}

/// Gives the material a texture "name", shown by its combiner, of two by one pixels of a format.
void AddTexture(ExportedFiles& files, const std::string& name, const std::string& format,
                std::vector<std::uint8_t> data)
{
    Material& paint = PaintOf(files);
    TextureCombiner combiner;
    combiner.SourceRgb = {"FragmentPrimaryColor", "Texture" + std::to_string(paint.Mappers.size()),
                          "Constant"};
    paint.Shader.Combiners = {combiner};
    TextureMapper mapper;
    mapper.Texture.Name = name;
    mapper.MinFilter = "LinearMipmapLinear";
    mapper.MagFilter = "Linear";
    mapper.WrapS = mapper.WrapT = "Repeat";
    paint.Mappers.push_back(mapper);
    paint.Coordinators.push_back({0, "UvCoordinateMap", 0, "DccSoftimage", 1, 1, 0, 0, 0});
    Texture texture;
    texture.Format = format;
    texture.Width = texture.Height = 8;
    texture.Faces = {{{{8, 8, std::move(data), 0}}}};
    files.Textures[name] = texture;
}

std::vector<std::uint8_t> Pixels(std::initializer_list<int> pixel)
{
    std::vector<std::uint8_t> data;
    for (int i = 0; i < 64; ++i) {
        data.insert(data.end(), pixel.begin(), pixel.end());
    }
    return data;
}

/// The first pixel of an embedded picture; three numbers where it has no alpha.
std::vector<int> FirstPixel(const Glb& glb, std::size_t index)
{
    const Json& view =
        glb.Root.at("bufferViews").at(glb.Root.at("images").at(index).at("bufferView").get<std::size_t>());
    const std::string file = glb.Buffer.substr(view.at("byteOffset"), view.at("byteLength"));
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    EXPECT_NE(png_image_begin_read_from_memory(&image, file.data(), file.size()), 0);
    const bool hasAlpha = (image.format & PNG_FORMAT_FLAG_ALPHA) != 0;
    image.format = hasAlpha ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
    std::vector<std::uint8_t> pixels(PNG_IMAGE_SIZE(image));
    EXPECT_NE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr), 0);
    EXPECT_EQ(image.width * image.height, 64U);
    return {pixels.begin(), pixels.begin() + (hasAlpha ? 4 : 3)};
}

TEST(ConvertMaterial, PlainMaterial)
{
    const Converted converted = Convert(PaintedFiles());
    EXPECT_EQ(converted.File.Root.at("materials").dump(),
              R"([{"name":"paint","pbrMetallicRoughness":{"metallicFactor":0.0,"roughnessFactor":1.0}}])");
    EXPECT_EQ(converted.File.Root.at("meshes").at(0).at("primitives").at(0).at("material"), 0);
    EXPECT_THAT(converted.Warnings, IsEmpty());
}

TEST(ConvertMaterial, OnePropertyEach)
{
    const struct
    {
        const char* Name;
        void (*Change)(Material& material);
        const char* Pointer;
        const char* Json;
        const char* Warning;
    } cases[] = {
        {"colour and alpha",
         [](Material& m) {
             m.Diffuse = {0.8F, 0.5F, 2, 0.25F};
         },
         "/pbrMetallicRoughness/baseColorFactor", "[0.8,0.5,1.0,0.25]", ""},
        {"emission",
         [](Material& m) {
             m.Emission = {0.5F, 0.25F, 0, 1};
         },
         "/emissiveFactor", "[0.5,0.25,0.0]", ""},
        {"bright emission",
         [](Material& m) {
             m.Emission = {4, 2, 0, 1};
         },
         "/emissiveFactor", "[1.0,0.5,0.0]", ""},
        {"its strength",
         [](Material& m) {
             m.Emission = {4, 2, 0, 1};
         },
         "/extensions/KHR_materials_emissive_strength/emissiveStrength", "4.0", ""},
        {"both sides", [](Material& m) { m.CullingMode = "Never"; }, "/doubleSided", "true", ""},
        {"front faces left out", [](Material& m) { m.CullingMode = "FrontFace"; }, "/doubleSided", "true",
         "\"paint\": glTF can't leave out front faces; both sides are shown."},
        {"unlit", [](Material& m) { m.IsFragmentLightEnabled = false; }, "/extensions/KHR_materials_unlit",
         "{}", ""},
        {"constant shader", [](Material& m) { m.Ambient = {}; }, "/extensions/KHR_materials_unlit", "{}", ""},
        {"translucent",
         [](Material& m) {
             m.Operation.BlendMode = "Blend";
             m.Operation.Rgb = {"SourceAlpha", "OneMinusSourceAlpha", "FuncAdd"};
         },
         "/alphaMode", R"("BLEND")", ""},
        {"additive",
         [](Material& m) {
             m.Operation.BlendMode = "Blend";
             m.Operation.Rgb = {"SourceAlpha", "One", "FuncAdd"};
         },
         "/alphaMode", R"("BLEND")",
         "\"paint\": its way of blending has no place in glTF; it is plainly translucent there."},
        {"logic", [](Material& m) { m.Operation.BlendMode = "Logic"; }, "/alphaMode", "null",
         "\"paint\": logic operations have no place in glTF."},
        {"alpha test",
         [](Material& m) {
             m.Shader.IsAlphaTestEnabled = true;
             m.Shader.AlphaTestFunction = "Greater";
             m.Shader.AlphaTestReference = 0.5F;
         },
         "/alphaMode", R"("MASK")", ""},
        {"cutoff",
         [](Material& m) {
             m.Shader.IsAlphaTestEnabled = true;
             m.Shader.AlphaTestFunction = "Gequal";
             m.Shader.AlphaTestReference = 0.25F;
         },
         "/alphaCutoff", "0.25", ""},
        {"test that always passes",
         [](Material& m) {
             m.Shader.IsAlphaTestEnabled = true;
             m.Shader.AlphaTestFunction = "Always";
         },
         "/alphaMode", "null", ""},
        {"other test",
         [](Material& m) {
             m.Shader.IsAlphaTestEnabled = true;
             m.Shader.AlphaTestFunction = "Less";
         },
         "/alphaMode", "null", "\"paint\": its alpha test has no place in glTF."},
        {"map of tangents", [](Material& m) { m.Shader.BumpMode = "AsTangent"; }, "/normalTexture", "null",
         "\"paint\": a map of tangents has no place in glTF."},
    };

    for (const auto& entry : cases) {
        ExportedFiles files = PaintedFiles();
        entry.Change(PaintOf(files));
        const Converted converted = Convert(files);
        const Json& material = converted.File.Root.at("materials").at(0);
        const Json::json_pointer pointer(entry.Pointer);
        EXPECT_EQ((material.contains(pointer) ? material.at(pointer) : Json()).dump(), entry.Json)
            << entry.Name;
        const std::vector<std::string> warnings(*entry.Warning == 0 ? 0 : 1, entry.Warning);
        EXPECT_EQ(converted.Warnings, warnings) << entry.Name;
    }
}

TEST(ConvertMaterial, HighlightsGiveMetalAndRoughness)
{
    const struct
    {
        double Metallic;
        double Roughness;
    } cases[] = {{0, 0.9}, {0, 0.5}, {1, 0.4}, {0.5, 0.6}, {0.25, 0.3}, {1, 0.2855}};

    for (const auto& entry : cases) {
        Material material;
        material.Diffuse = {0.8F, 0.5F, 0.2F, 1};
        for (std::size_t i = 0; i < 3; ++i) {
            material.Specular0[i] = static_cast<float>(0.04 * (1 - entry.Metallic)) +
                                    material.Diffuse[i] * static_cast<float>(entry.Metallic);
        }
        const double power = 2 / std::pow(entry.Roughness, 4) - 2;
        LookupTable table;
        table.Name = "Specular";
        for (int i = 0; i < 256; ++i) {
            Key key;
            key.Frame = static_cast<float>(i);
            key.Value = static_cast<float>(std::pow(i / 256.0, power));
            table.Values.Keys.push_back(key);
        }
        material.Shader.IsDistribution0Enabled = true;
        material.Shader.Distribution0.HasTable = true;
        material.Shader.Distribution0.TableName = "Specular";
        const SurfaceFinish finish = ComputeFinish(material, {"", {table}, 0});
        EXPECT_NEAR(finish.Metallic, entry.Metallic, 1e-5) << entry.Roughness;
        EXPECT_NEAR(finish.Roughness, entry.Roughness, 1e-3) << entry.Roughness;
        material.Shader.IsDistribution0Enabled = false;
        EXPECT_EQ(ComputeFinish(material, {"", {table}, 0}).Roughness, 1);
    }
}

TEST(ConvertTexture, PixelsBecomePng)
{
    const struct
    {
        const char* Format;
        std::vector<std::uint8_t> Data;
        std::vector<int> Pixel;
    } cases[] = {
        {"Rgba8", Pixels({40, 30, 20, 10}), {10, 20, 30, 40}},
        {"Rgba8", Pixels({255, 30, 20, 10}), {10, 20, 30}}, // opaque: no alpha
        {"Rgb8", Pixels({30, 20, 10}), {10, 20, 30}},
        {"L8", Pixels({77}), {77, 77, 77}},
        {"A8", Pixels({9}), {0, 0, 0, 9}},
    };

    for (const auto& entry : cases) {
        ExportedFiles files = PaintedFiles();
        AddTexture(files, "picture", entry.Format, entry.Data);
        const Converted converted = Convert(files);
        EXPECT_EQ(FirstPixel(converted.File, 0), entry.Pixel) << entry.Format;
        EXPECT_EQ(converted.File.Root.at("images").at(0).at("mimeType"), "image/png");
        EXPECT_EQ(converted.File.Root.at("materials")
                      .at(0)
                      .at("pbrMetallicRoughness")
                      .at("baseColorTexture")
                      .dump(),
                  R"({"index":0})");
        EXPECT_TRUE(converted.File.Root.at("meshes")
                        .at(0)
                        .at("primitives")
                        .at(0)
                        .at("attributes")
                        .contains("TEXCOORD_0")); // which the texture needs
    }
}

TEST(ConvertTexture, BlockCompressedPicturesGetAPattern)
{
    ExportedFiles files = PaintedFiles();
    AddTexture(files, "picture", "Etc1", std::vector<std::uint8_t>(32));
    const Converted converted = Convert(files);
    EXPECT_EQ(FirstPixel(converted.File, 0), (std::vector{96, 96, 96}));
    EXPECT_THAT(
        converted.Warnings,
        ElementsAre("\"picture\": pictures of the format Etc1 can't be shown; a pattern stands in its "
                    "place."));
}

TEST(ConvertTexture, CubesAreLeftOut)
{
    ExportedFiles files = PaintedFiles();
    AddTexture(files, "picture", "L8", Pixels({1}));
    files.Textures["picture"].IsCube = true;
    const Converted converted = Convert(files);
    EXPECT_FALSE(converted.File.Root.contains("textures"));
    EXPECT_THAT(converted.Warnings, ElementsAre("\"picture\": cube textures have no place in glTF."));
}

TEST(ConvertTexture, EndlessPicturesAreLeftOut)
{
    ExportedFiles files = PaintedFiles();
    AddTexture(files, "picture", "L4", {});
    TextureLevel& level = files.Textures["picture"].Faces[0].Levels[0];
    level.Width = level.Height = 8200;
    const Converted converted = Convert(files);
    EXPECT_FALSE(converted.File.Root.contains("textures"));
    EXPECT_THAT(converted.Warnings, ElementsAre("\"picture\": the picture is too large."));
}

TEST(ConvertTexture, WhatIsNotThereIsNotShown)
{
    ExportedFiles files = PaintedFiles();
    AddTexture(files, "picture", "L8", Pixels({1}));
    files.Textures.clear(); // told when the files were read
    const Converted converted = Convert(files);
    EXPECT_FALSE(converted.File.Root.contains("textures"));
    EXPECT_THAT(converted.Warnings, IsEmpty());
}

TEST(ConvertTexture, OnlyWhatACombinerTakesIsShown)
{
    ExportedFiles files = PaintedFiles();
    AddTexture(files, "first", "L8", Pixels({1}));
    AddTexture(files, "second", "L8", Pixels({2}));
    EXPECT_EQ(Convert(files).File.Root.at("images").dump(),
              R"([{"name":"second","mimeType":"image/png","bufferView":0}])");
    PaintOf(files).Shader.Combiners.clear();
    EXPECT_FALSE(Convert(files).File.Root.contains("images"));
}

TEST(ConvertTexture, NormalMaps)
{
    ExportedFiles files = PaintedFiles();
    AddTexture(files, "bumps", "Hilo8", Pixels({64, 192})); // low byte second channel
    Material& paint = PaintOf(files);
    paint.Shader.Combiners.clear();
    paint.Shader.BumpMode = "AsBump";
    const Glb glb = Convert(files).File;
    EXPECT_EQ(glb.Root.at("materials").at(0).at("normalTexture").dump(), R"({"index":0})");
    const std::vector<int> pixel = FirstPixel(glb, 0);
    ASSERT_EQ(pixel.size(), 3U);
    double square = 0;
    for (const int channel : pixel) {
        square += std::pow(channel / 127.5 - 1, 2);
    }
    EXPECT_EQ(pixel[0], 192);
    EXPECT_EQ(pixel[1], 64);
    EXPECT_GT(pixel[2], 128);
    EXPECT_NEAR(square, 1, 0.01);
}

TEST(ConvertTexture, SamplersAndTexturesAreShared)
{
    ExportedFiles files = PaintedFiles();
    AddTexture(files, "picture", "L8", Pixels({1}));
    Model& model = ModelOf(files);
    model.Materials.push_back(model.Materials[0]);
    model.Materials.push_back(model.Materials[0]);
    model.Materials[1].Name = "same";
    model.Materials[2].Name = "other";
    TextureMapper& mapper = model.Materials[2].Mappers[0];
    mapper.WrapS = "MirroredRepeat";
    mapper.WrapT = "ClampToEdge";
    mapper.MinFilter = "NearestMipmapNearest";
    mapper.MagFilter = "Nearest";
    const Glb glb = Convert(files).File;
    EXPECT_EQ(glb.Root.at("images").size(), 1U);
    EXPECT_EQ(glb.Root.at("textures").dump(), R"([{"sampler":0,"source":0},{"sampler":1,"source":0}])");
    EXPECT_EQ(glb.Root.at("samplers").dump(),
              R"([{"magFilter":9729,"minFilter":9987,"wrapS":10497,"wrapT":10497},)"
              R"({"magFilter":9728,"minFilter":9984,"wrapS":33648,"wrapT":33071}])");
}

TEST(ConvertTexture, CoordinatorsChooseAndMoveCoordinates)
{
    ExportedFiles files = PaintedFiles();
    AddTexture(files, "picture", "L8", Pixels({1}));
    TextureCoordinator& coordinator = PaintOf(files).Coordinators[0];
    coordinator.SourceCoordinate = 1;
    coordinator.ScaleS = 2;
    coordinator.TranslateS = 0.25F;
    const Glb glb = Convert(files).File;
    EXPECT_EQ(glb.Root.at("materials").at(0).at("pbrMetallicRoughness").at("baseColorTexture").dump(),
              R"({"index":0,"texCoord":1,"extensions":{"KHR_texture_transform":{"offset":[-0.5,0.0],)"
              R"("scale":[2.0,1.0]}}})");
    EXPECT_EQ(glb.Root.at("extensionsUsed").dump(), R"(["KHR_texture_transform"])");
    const Json& attributes = glb.Root.at("meshes").at(0).at("primitives").at(0).at("attributes");
    EXPECT_TRUE(attributes.contains("TEXCOORD_0") && attributes.contains("TEXCOORD_1"));
}

TEST(ConvertTexture, WhatGltfCanNotSayIsTold)
{
    const struct
    {
        void (*Change)(Material& material);
        const char* Warning;
    } cases[] = {
        {[](Material& m) { m.Coordinators[0].MappingMethod = "CameraSphereEnvMap"; },
         "\"paint\": texture 0 is mapped in a way that has no place in glTF."},
        {[](Material& m) {
             m.Coordinators[0].ScaleS = 2;
             m.Coordinators[0].Rotate = 0.5F;
         },
         "\"paint\": a turn together with different scales of a texture comes near only."},
        {[](Material& m) { m.Mappers[0].WrapT = "ClampToBorder"; },
         "\"picture\": a border colour has no place in glTF."},
    };

    for (const auto& entry : cases) {
        ExportedFiles files = PaintedFiles();
        AddTexture(files, "picture", "L8", Pixels({1}));
        entry.Change(PaintOf(files));
        EXPECT_THAT(Convert(files).Warnings, ElementsAre(entry.Warning));
    }
}

} // namespace
} // namespace tq4x::reader::test
