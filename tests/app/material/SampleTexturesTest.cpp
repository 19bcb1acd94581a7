#include "GltfExport.h"

#include "gltf/FitPicture.h"
#include "gltf/OpenDocument.h"
#include "gltf/PictureSource.h"

#include <map>

namespace tq4x::test
{
namespace
{

namespace fs = std::filesystem;

const fs::path Samples = fs::path(TQ4X_SAMPLES) / "gltf";

/// Scenes with pictures, and how many textures their export writes: those of base colours and normals,
/// counted by other means from the JSON of the files.
struct Sample
{
    const char* File;
    std::size_t Textures;
};

constexpr Sample Table[] = {
    {"AlphaBlendModeTest/AlphaBlendModeTest.glb", 3},
    {"CesiumMan/CesiumMan.glb", 1},
    {"CesiumMilkTruck/CesiumMilkTruck.glb", 1},
    {"Fox/Fox.glb", 1},
    {"InterpolationTest/InterpolationTest.glb", 1},
    {"MultiUVTest/MultiUVTest.glb", 1},
    {"NegativeScaleTest/NegativeScaleTest.glb", 2},
    {"PlasticChair/plastic_monobloc_chair_01_1k.gltf", 2},
    {"TextureTransformTest/TextureTransformTest.gltf", 5},
    {"VertexColorTest/VertexColorTest.glb", 2},
};

/// Bits that a format keeps of R, G, B and A. Grey stands in all three colours.
std::array<int, 4> BitsOf(const std::string& format)
{
    const std::map<std::string, std::array<int, 4>> table = {
        {"Rgb565", {5, 6, 5, 0}}, {"Rgba4", {4, 4, 4, 4}}, {"L8", {8, 8, 8, 0}},
        {"La8", {8, 8, 8, 8}},    {"Hilo8", {8, 8, 0, 0}},
    };
    const auto found = table.find(format);
    EXPECT_NE(found, table.end()) << format;
    return found != table.end() ? found->second : std::array<int, 4>{};
}

/// The high bytes of a picture's channels: R, G, B, A.
std::vector<std::uint8_t> HighBytes(const gltf::Picture& picture)
{
    std::vector<std::uint8_t> bytes;
    for (std::size_t i = picture.ChannelSize - 1; i < picture.Pixels.size(); i += picture.ChannelSize)
        bytes.push_back(picture.Pixels[i]);
    return bytes;
}

/// What the export had to write, by the path that the texture's file names: pictures in a legal size.
std::map<std::string, gltf::Picture> SourcePictures(const fs::path& scene)
{
    const gltf::OpenedDocument opened = gltf::OpenDocument(scene, {});
    std::map<std::string, gltf::Picture> pictures;
    if (!opened.Content)
        return pictures;
    const std::vector<std::string> names = gltf::NamePictures(*opened.Content);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const gltf::DecodedImage decoded = gltf::ReadPicture(*opened.Content, i);
        EXPECT_EQ(decoded.Error, "") << names[i];
        pictures[names[i]] = gltf::FitPicture(decoded.Content);
    }
    return pictures;
}

/// Channels that differ in the bits that the format keeps.
std::size_t CountDifferences(const std::vector<std::uint8_t>& written,
                             const std::vector<std::uint8_t>& source, const std::array<int, 4>& bits)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < source.size(); ++i) {
        const int lost = 8 - bits[i % 4];
        count += lost < 8 && written[i] >> lost != source[i] >> lost ? 1 : 0;
    }
    return count;
}

class SampleTextures : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!fs::exists(Samples))
            GTEST_SKIP() << "NOT RUN: the sample scenes are absent; they are looked for in " << Samples;
    }

    static void ExpectSource(const reader::Texture& texture, const gltf::Picture& picture,
                             const std::string& name)
    {
        ASSERT_EQ(texture.Faces.size(), 1u) << name;
        ASSERT_EQ(texture.Faces[0].Levels.size(), 1u) << name;
        EXPECT_EQ(static_cast<std::uint32_t>(texture.Width), picture.Width) << name;
        EXPECT_EQ(static_cast<std::uint32_t>(texture.Height), picture.Height) << name;
        const std::vector<std::uint8_t> source = HighBytes(picture);
        const std::vector<std::uint8_t> written =
            reader::DecodeLevel(texture.Format, texture.Faces[0].Levels[0]);
        ASSERT_EQ(written.size(), source.size()) << name;
        EXPECT_EQ(CountDifferences(written, source, BitsOf(texture.Format)), 0u) << name;
    }
};

TEST_F(SampleTextures, DecodeToTheirSources)
{
    for (const Sample& sample : Table) {
        gltf::SceneOptions options;
        options.FitTextures = true;
        const GltfExport run(Samples / sample.File, options, {"OutputQmdl:false"});
        const std::map<std::string, gltf::Picture> pictures = SourcePictures(Samples / sample.File);
        const std::vector<std::string> files = run.TextureFiles();
        EXPECT_EQ(files.size(), sample.Textures) << sample.File;
        for (const std::string& file : files) {
            const reader::Document document = run.Read(file);
            ASSERT_TRUE(document.Texture.has_value()) << sample.File << " " << file;
            const auto source = pictures.find(document.Texture->Path);
            ASSERT_NE(source, pictures.end()) << sample.File << " " << file;
            ExpectSource(*document.Texture, source->second, sample.File + (" " + file));
        }
    }
}

} // namespace
} // namespace tq4x::test
