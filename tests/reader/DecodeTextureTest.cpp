#include <gmock/gmock.h>

#include "Base64Text.h"
#include "ReadTexture.h"
#include "reader/ReaderDocuments.h"

namespace tq4x::reader
{
namespace
{

using testing::ElementsAre;
using Bytes = std::vector<std::uint8_t>;

TEST(Base64Text, DecodesTailsOfAllLengths)
{
    EXPECT_EQ(DecodeBase64(""), Bytes());
    EXPECT_EQ(DecodeBase64("AA=="), Bytes{0});
    EXPECT_EQ(DecodeBase64("/w8="), (Bytes{0xFF, 0x0F}));
    EXPECT_EQ(DecodeBase64("\n\t\t+/+A\r\n"), (Bytes{0xFB, 0xFF, 0x80}));
    EXPECT_EQ(DecodeBase64("TWFueSBoYW5kcw=="), Bytes({'M', 'a', 'n', 'y', ' ', 'h', 'a', 'n', 'd', 's'}));
}

TEST(Base64Text, RefusesOtherTexts)
{
    for (const char* const text :
         {"A", "AA", "AAA", "A===", "AA=A", "====", "AA A", "AAAA\nAAAA", "AA-_", "AAA\xC3"}) {
        EXPECT_FALSE(DecodeBase64(text)) << text;
    }
}

/// The first pixel of an 8 x 8 level whose first bytes are given and whose rest is 0.
std::vector<int> FirstPixel(const std::string& format, const Bytes& first, std::size_t pixel = 0)
{
    TextureLevel level;
    level.Width = 8;
    level.Height = 8;
    level.Data = first;
    level.Data.resize(64 * static_cast<std::size_t>(BitsPerPixel(format)) / 8);
    const Bytes pixels = DecodeLevel(format, level);
    EXPECT_EQ(pixels.size(), 256U) << format;
    return {pixels.at(4 * pixel), pixels.at(4 * pixel + 1), pixels.at(4 * pixel + 2),
            pixels.at(4 * pixel + 3)};
}

TEST(DecodeTexture, EveryFormat)
{
    EXPECT_THAT(FirstPixel("L4", {0x2F}), ElementsAre(255, 255, 255, 255));
    EXPECT_THAT(FirstPixel("L4", {0x2F}, 1), ElementsAre(34, 34, 34, 255));
    EXPECT_THAT(FirstPixel("L8", {77}), ElementsAre(77, 77, 77, 255));
    EXPECT_THAT(FirstPixel("A4", {0x2F}), ElementsAre(0, 0, 0, 255));
    EXPECT_THAT(FirstPixel("A4", {0x2F}, 1), ElementsAre(0, 0, 0, 34));
    EXPECT_THAT(FirstPixel("A8", {77}), ElementsAre(0, 0, 0, 77));
    EXPECT_THAT(FirstPixel("La4", {0xF3}), ElementsAre(255, 255, 255, 51));
    EXPECT_THAT(FirstPixel("La8", {9, 77}), ElementsAre(77, 77, 77, 9));
    EXPECT_THAT(FirstPixel("Hilo8", {9, 77}), ElementsAre(77, 9, 0, 255));
    EXPECT_THAT(FirstPixel("Rgb565", {0xE0, 0x07}), ElementsAre(0, 255, 0, 255));
    EXPECT_THAT(FirstPixel("Rgb565", {0x1F, 0xF8}), ElementsAre(255, 0, 255, 255));
    EXPECT_THAT(FirstPixel("Rgb8", {1, 2, 3}), ElementsAre(3, 2, 1, 255));
    EXPECT_THAT(FirstPixel("Rgb5_a1", {0x3F, 0x00}), ElementsAre(0, 0, 255, 255));
    EXPECT_THAT(FirstPixel("Rgb5_a1", {0xC0, 0xFF}), ElementsAre(255, 255, 0, 0));
    EXPECT_THAT(FirstPixel("Rgba4", {0x4F, 0x12}), ElementsAre(17, 34, 68, 255));
    EXPECT_THAT(FirstPixel("Rgba8", {4, 3, 2, 1}), ElementsAre(1, 2, 3, 4));
}

TEST(DecodeTexture, BlockFormatsAndUnknownWordsHaveNoPixels)
{
    TextureLevel level{8, 8, Bytes(4096), 0};
    for (const char* const format : {"Etc1", "Etc1_a4", "err", ""}) {
        EXPECT_FALSE(CanDecode(format)) << format;
        EXPECT_TRUE(DecodeLevel(format, level).empty()) << format;
    }
    EXPECT_EQ(BitsPerPixel("Etc1"), 4);
    EXPECT_EQ(BitsPerPixel("Etc1_a4"), 8);
    EXPECT_EQ(BitsPerPixel("err"), 0);
    EXPECT_TRUE(DecodeLevel("L8", {8, 8, Bytes(63), 0}).empty());
}

/// Places in a tile, by hand: the number stored at each pixel of the 8 x 8 block.
constexpr int ZOrder[8][8] = {
    {0, 1, 4, 5, 16, 17, 20, 21},     {2, 3, 6, 7, 18, 19, 22, 23},     {8, 9, 12, 13, 24, 25, 28, 29},
    {10, 11, 14, 15, 26, 27, 30, 31}, {32, 33, 36, 37, 48, 49, 52, 53}, {34, 35, 38, 39, 50, 51, 54, 55},
    {40, 41, 44, 45, 56, 57, 60, 61}, {42, 43, 46, 47, 58, 59, 62, 63},
};

TEST(DecodeTexture, TilesStandInRowsAndPixelsInZOrder)
{
    TextureLevel level{16, 16, {}, 0};
    for (int i = 0; i < 256; ++i) {
        level.Data.push_back(static_cast<std::uint8_t>(i));
    }
    const Bytes pixels = DecodeLevel("L8", level);
    ASSERT_EQ(pixels.size(), 1024U);
    for (std::size_t y = 0; y < 16; ++y) {
        for (std::size_t x = 0; x < 16; ++x) {
            const std::size_t tile = y / 8 * 2 + x / 8;
            const int expected = static_cast<int>(tile) * 64 + ZOrder[y % 8][x % 8];
            EXPECT_EQ(pixels[4 * (16 * y + x)], expected) << x << ", " << y;
        }
    }
}

TEST(DecodeTexture, SmallLevelsHoldThePixelsInside)
{
    const Bytes pixels = DecodeLevel("L8", {2, 4, {0, 1, 2, 3, 4, 5, 6, 7}, 0});
    ASSERT_EQ(pixels.size(), 32U);
    for (std::size_t i = 0; i < 8; ++i) {
        EXPECT_EQ(pixels[4 * i], i);
    }
}

TEST(DecodeTexture, FilesHoldFacesAndLevels)
{
    const Texture plain = *test::ReadGood("Textures/Tiles.qtex").Texture;
    EXPECT_FALSE(plain.IsCube);
    EXPECT_EQ(plain.Format, "L8");
    EXPECT_EQ(plain.Path, "pictures/Tiles.tga");
    ASSERT_EQ(plain.Faces.size(), 1U);
    ASSERT_EQ(plain.Faces[0].Levels.size(), 2U);
    EXPECT_EQ(plain.Faces[0].Levels[1].Width, 4U);
    const Bytes pixels = DecodeLevel(plain.Format, plain.Faces[0].Levels[0]);
    EXPECT_EQ(pixels.at(4 * 63), 63 * 4);
    const Texture cube = *test::ReadGood("Textures/Sky.qtex").Texture;
    EXPECT_TRUE(cube.IsCube);
    ASSERT_EQ(cube.Faces.size(), 6U);
    EXPECT_EQ(DecodeLevel(cube.Format, cube.Faces[5].Levels.at(0)).size(), 256U);
}

} // namespace
} // namespace tq4x::reader
