#include "support/MaterialRun.h"
#include "support/TemporaryFolder.h"
#include "support/TgaBuilder.h"

#include <cstring>
#include <fstream>

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

/// A picture whose values tell their place: rows from the bottom, channel values 16 * y + x, alpha as told.
std::shared_ptr<XSI::ImageData> MakeCounted(LONG width, LONG height, LONG channelSize, int alpha)
{
    std::shared_ptr<XSI::ImageData> picture = MakePicture(width, height, 4, channelSize, 0);
    for (LONG y = 0; y < height; ++y)
        for (LONG x = 0; x < width; ++x)
            for (LONG channel = 0; channel < 4; ++channel) {
                const int high = channel == 3 ? alpha : static_cast<int>(16 * y + x) % 256;
                const auto at = static_cast<std::size_t>((y * width + x) * 4 + channel);
                if (channelSize == 1) {
                    picture->Pixels[at] = static_cast<std::byte>(high);
                } else {
                    const auto word = static_cast<std::uint16_t>(high * 256 + 0x7f);
                    std::memcpy(picture->Pixels.data() + at * 2, &word, 2);
                }
            }
    return picture;
}

/// A material with one texture of a file and a picture, collected.
class PictureRun
{
public:
    PictureRun(const std::string& file, std::shared_ptr<const XSI::ImageData> picture,
               bool writesTextures = true)
        : m_material(m_scene.Material("m", "lambert").Image("diffuse", file, "Set"))
    {
        const XSI::Texture texture(m_material.Shader().GetParameter(L"diffuse").GetSource());
        XSI::Host::SetPixelSource(texture.GetImageClip(), [this, kept = std::move(picture)](double) {
            ++Calls;
            return kept;
        });
        m_run.Options.OutputQtex = writesTextures;
        EXPECT_TRUE(m_run.Convert({m_material}));
    }

    ExportTexture& Texture() { return *m_run.Collector(m_material).Stages.at(0).Frames.at(0.0f); }

    static const std::vector<std::string>& Messages() { return MaterialRun::Messages(); }

    bool IsReported(const std::string& path) const
    {
        return m_run.Context->Content.Materials.Textures.ReportedPaths.contains(path);
    }

    std::vector<std::string> Names() const { return m_run.TextureNames(); }

    int Calls = 0; ///< how often the host was asked for pixels

private:
    SceneBuilder m_scene;
    SceneMaterial m_material;
    MaterialRun m_run;
};

TEST(TexturePixels, RowsAreTurnedOver)
{
    for (const LONG size : {1, 2}) {
        PictureRun run("a.png", MakeCounted(16, 8, size, 255));
        const TextureImage& image = run.Texture().Image;
        EXPECT_EQ(image.Path, "a.png");
        EXPECT_EQ(image.FileWidth, 16);
        EXPECT_EQ(image.FileHeight, 8);
        ASSERT_EQ(image.Pixels.size(), 16u * 8 * 4);
        for (std::size_t y = 0; y < 8; ++y)
            for (std::size_t x = 0; x < 16; ++x)
                for (std::size_t channel = 0; channel < 3; ++channel)
                    EXPECT_EQ(image.Pixels[(y * 16 + x) * 4 + channel], 16 * (7 - y) + x) << size;
        EXPECT_THAT(run.Messages(), IsEmpty());
        EXPECT_EQ(run.Texture().ImageForModel(), &image);
        EXPECT_EQ(run.Calls, 1);
    }
}

TEST(TexturePixels, AlphaIsKnownByAnyPixelThatIsNotFull)
{
    for (const int alpha : {255, 254, 0}) {
        PictureRun run("a.png", MakeCounted(8, 8, 1, alpha));
        EXPECT_EQ(run.Texture().Image.HasAlpha, alpha != 255) << alpha;
        EXPECT_EQ(run.Texture().Image.Pixels[3], alpha) << alpha;
    }
    std::shared_ptr<XSI::ImageData> one = MakePicture(8, 8);
    one->Pixels[4 * 63 + 3] = std::byte{128};
    EXPECT_TRUE(PictureRun("a.png", one).Texture().Image.HasAlpha);
}

// Sixteen bits lose their low byte, but alpha is tested with it.
TEST(TexturePixels, SixteenBitsKeepTheHighByte)
{
    std::shared_ptr<XSI::ImageData> full = MakePicture(8, 8, 4, 2, 255);
    EXPECT_FALSE(PictureRun("a.png", full).Texture().Image.HasAlpha);

    std::shared_ptr<XSI::ImageData> nearly = MakePicture(8, 8, 4, 2, 255);
    const std::uint16_t alpha = 0xfffe;
    std::memcpy(nearly->Pixels.data() + 6, &alpha, 2);
    PictureRun run("a.png", nearly);
    EXPECT_TRUE(run.Texture().Image.HasAlpha);
    EXPECT_EQ(run.Texture().Image.Pixels[3 + 7 * 8 * 4], 255);
}

TEST(TexturePixels, WhatIsNotTakenIsTold)
{
    const struct
    {
        const char* Name;
        std::shared_ptr<const XSI::ImageData> Picture;
        const char* Message; ///< nullptr: none
        bool IsAlwaysTold;   ///< also if no textures are written
    } rows[] = {
        {"three channels", MakePicture(8, 8, 3), "E Only 4 channels per image supported (a.png).", false},
        {"one channel", MakePicture(8, 8, 1), "E Only 4 channels per image supported (a.png).", false},
        {"no picture", nullptr, "E Only 4 channels per image supported (a.png).", false},
        {"channels before size", MakePicture(7, 7, 3), "E Only 4 channels per image supported (a.png).",
         false},
        {"no power of two", MakePicture(8, 24), "E Texture size is wrong: a.png (8 x 24)", true},
        {"too small", MakePicture(4, 8), "E Texture size is wrong: a.png (4 x 8)", true},
        {"too large", MakePicture(2048, 8), "E Texture size is wrong: a.png (2048 x 8)", true},
        {"a cross", MakePicture(64, 48), "E Texture size is wrong: a.png (64 x 48)", true},
        {"nothing", MakePicture(0, 0), "E Texture size is wrong: a.png (0 x 0)", true},
        {"size before depth", MakePicture(12, 12, 4, 4), "E Texture size is wrong: a.png (12 x 12)", true},
        {"floats", MakePicture(8, 8, 4, 4), "E Floating point image is not supported. (a.png).", false},
        {"eight bytes", MakePicture(8, 8, 4, 8), nullptr, false},
    };

    for (const auto& row : rows)
        for (const bool writesTextures : {true, false}) {
            PictureRun run("a.png", row.Picture, writesTextures);
            const bool isTold = row.Message != nullptr && (writesTextures || row.IsAlwaysTold);
            const std::vector<std::string> expected =
                isTold ? std::vector<std::string>{row.Message} : std::vector<std::string>{};
            EXPECT_EQ(run.Messages(), expected) << row.Name << writesTextures;
            EXPECT_EQ(run.IsReported("a.png"), isTold) << row.Name << writesTextures;
            EXPECT_THAT(run.Texture().Image.Pixels, IsEmpty()) << row.Name;
            EXPECT_THAT(run.Names(), ElementsAre("a")) << row.Name; // the mapper refers to it all the same
        }
}

TEST(TexturePixels, TheLargestAndTheSmallestSizesAreTaken)
{
    for (const auto& [width, height] : {std::pair<LONG, LONG>{8, 8}, {1024, 8}, {8, 1024}, {1024, 1024}}) {
        PictureRun run("a.png", MakePicture(width, height));
        EXPECT_EQ(run.Texture().Image.FileWidth, width);
        EXPECT_EQ(run.Texture().Image.Pixels.size(), static_cast<std::size_t>(width * height * 4));
        EXPECT_THAT(run.Messages(), IsEmpty());
    }
}

TEST(TexturePixels, APictureWithoutPixelsIsNone)
{
    auto picture = MakePicture(8, 8);
    picture->Pixels.clear();
    PictureRun run("a.png", picture);
    EXPECT_THAT(run.Texture().Image.Pixels, IsEmpty());
    EXPECT_THAT(run.Messages(), IsEmpty());
}

TEST(TexturePixels, TgaFilesAreTestedWithoutTheHost)
{
    TgaFile file;
    file.Data = Bytes(8 * 8 * 3, 77);
    TgaFile odd = file;
    odd.Width = 12;
    odd.Data = Bytes(12 * 8 * 3, 77);
    TgaFile cut = file;
    cut.Data.resize(5);

    const struct
    {
        const char* Name;
        const Bytes Content;     ///< empty: there is no file
        const char* Status;      ///< nullptr: sound
        const char* Behind = ""; ///< follows the path
    } rows[] = {
        {"sound.tga", file.Build(), nullptr},
        {"SOUND.TGA", file.Build(), nullptr},
        {"absent.tga", {}, "Can't open file: "},
        {"cut.tga", cut.Build(), "TGA file is wrong: (unexpected end of file): "},
        {"odd.tga", odd.Build(), "Texture size is wrong: ", " (12 x 8)"},
    };

    for (const auto& row : rows)
        for (const bool writesTextures : {true, false}) {
            TemporaryFolder folder;
            const std::string path = (folder / row.Name).string();
            if (!row.Content.empty())
                std::ofstream(path, std::ios::binary)
                    .write(reinterpret_cast<const char*>(row.Content.data()),
                           static_cast<std::streamsize>(row.Content.size()));
            PictureRun run(path, MakePicture(8, 8), writesTextures);
            EXPECT_EQ(run.Calls, 0) << row.Name;
            EXPECT_EQ(run.Texture().ImageForModel(), nullptr) << row.Name;
            EXPECT_THAT(run.Texture().Image.Pixels, IsEmpty()) << row.Name;
            const bool isTold = row.Status != nullptr && writesTextures;
            EXPECT_EQ(run.IsReported(path), isTold) << row.Name;
            ASSERT_EQ(run.Messages().size(), isTold ? 1u : 0u) << row.Name;
            if (isTold) {
                EXPECT_EQ(run.Messages()[0],
                          "E " + std::string(row.Status) + path + row.Behind + " (" + path + ").");
            }
        }
}

} // namespace
} // namespace tq4x::test
