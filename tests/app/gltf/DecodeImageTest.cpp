#include <gtest/gtest.h>

#include <random>

#include "GltfFile.h"
#include "gltf/DecodeImage.h"
#include "support/PngBuilder.h"

namespace tq4x::gltf::test
{
namespace
{

using tq4x::test::EncodePng;
using tq4x::test::PngColor;
using tq4x::test::PngOptions;

TEST(DecodePngTest, ReadsEveryColourTypeAndDepth)
{
    const struct
    {
        const char* Name;
        PngOptions Options;
        Bytes Rows; // 2 x 1 pixels
        std::uint32_t ChannelSize;
        Bytes Expected;
    } cases[] = {
        {"rgba 8", {PngColor::RgbAlpha, 8}, {1, 2, 3, 4, 5, 6, 7, 8}, 1, {1, 2, 3, 4, 5, 6, 7, 8}},
        {"rgb 8", {PngColor::Rgb, 8}, {1, 2, 3, 5, 6, 7}, 1, {1, 2, 3, 255, 5, 6, 7, 255}},
        {"rgb 8 with a transparent colour",
         {PngColor::Rgb, 8, false, true},
         {7, 7, 7, 5, 6, 7},
         1,
         {7, 7, 7, 0, 5, 6, 7, 255}},
        {"grey 8", {PngColor::Gray, 8}, {9, 200}, 1, {9, 9, 9, 255, 200, 200, 200, 255}},
        {"grey 8 with a transparent level",
         {PngColor::Gray, 8, false, true},
         {7, 8},
         1,
         {7, 7, 7, 0, 8, 8, 8, 255}},
        {"grey and alpha", {PngColor::GrayAlpha, 8}, {9, 1, 8, 2}, 1, {9, 9, 9, 1, 8, 8, 8, 2}},
        {"grey 1", {PngColor::Gray, 1}, {0x40}, 1, {0, 0, 0, 255, 255, 255, 255, 255}},
        {"grey 2", {PngColor::Gray, 2}, {0x60}, 1, {85, 85, 85, 255, 170, 170, 170, 255}},
        {"grey 4", {PngColor::Gray, 4}, {0x1f}, 1, {17, 17, 17, 255, 255, 255, 255, 255}},
        {"palette 8", {PngColor::Palette, 8}, {1, 2}, 1, {10, 20, 30, 255, 20, 40, 60, 255}},
        {"palette 1", {PngColor::Palette, 1}, {0x40}, 1, {0, 0, 0, 255, 10, 20, 30, 255}},
        {"palette with a transparent entry",
         {PngColor::Palette, 4, false, true},
         {0x03},
         1,
         {0, 0, 0, 0, 30, 60, 90, 255}},
        {"rgb 16",
         {PngColor::Rgb, 16},
         {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12},
         2,
         {2, 1, 4, 3, 6, 5, 255, 255, 8, 7, 10, 9, 12, 11, 255, 255}},
        {"grey and alpha 16",
         {PngColor::GrayAlpha, 16},
         {1, 2, 3, 4, 5, 6, 7, 8},
         2,
         {2, 1, 2, 1, 2, 1, 4, 3, 6, 5, 6, 5, 6, 5, 8, 7}},
    };

    for (const auto& entry : cases) {
        const DecodedImage image = DecodeImage(EncodePng(2, 1, entry.Rows, entry.Options));
        EXPECT_EQ(image.Error, "") << entry.Name;
        EXPECT_EQ(image.Content.Width, 2u) << entry.Name;
        EXPECT_EQ(image.Content.Height, 1u) << entry.Name;
        EXPECT_EQ(image.Content.ChannelSize, entry.ChannelSize) << entry.Name;
        EXPECT_EQ(image.Content.Pixels, entry.Expected) << entry.Name;
    }
}

Bytes RandomBytes(std::size_t count, unsigned seed)
{
    std::mt19937 random(seed);
    Bytes bytes(count);
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(random());
    }
    return bytes;
}

TEST(DecodePngTest, InterlacedPicturesAreTheSame)
{
    for (unsigned seed = 1; seed < 12; ++seed) {
        const Bytes rows = RandomBytes(seed * 2 * seed * 4, seed);
        const Bytes plain = EncodePng(seed, 2 * seed, rows, {});
        const Bytes interlaced = EncodePng(seed, 2 * seed, rows, {PngColor::RgbAlpha, 8, true});
        EXPECT_EQ(DecodeImage(plain).Content.Pixels, rows) << seed;
        EXPECT_EQ(DecodeImage(interlaced).Content, DecodeImage(plain).Content) << seed;
    }
}

TEST(DecodePngTest, EveryTruncationIsRefused)
{
    const Bytes whole = EncodePng(9, 7, RandomBytes(9 * 7 * 4, 5), {});
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        const DecodedImage image = DecodeImage(part);
        EXPECT_EQ(image.Error, length < 8 ? "The picture is neither PNG nor JPEG."
                                          : "The PNG file is damaged: unexpected end of file.")
            << length;
        EXPECT_TRUE(image.Content.Pixels.empty());
    }
}

// A header of 33 bytes that promises 65,535 rows of 65,535 pixels.
TEST(DecodePngTest, HugeSizesAreRefusedBeforeAnyMemoryIsTaken)
{
    Bytes file = EncodePng(1, 1, {1, 2, 3, 4}, {});
    const auto setNumber = [&file](std::size_t at, std::uint32_t value) {
        for (std::size_t i = 0; i < 4; ++i) {
            file[at + i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
        }
    };
    const auto fixChecksum = [&] {
        std::uint32_t crc = ~0u;
        for (std::size_t i = 12; i < 29; ++i) {
            crc ^= file[i];
            for (int bit = 0; bit < 8; ++bit) {
                crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xedb88320u : 0u);
            }
        }
        setNumber(29, ~crc);
    };
    setNumber(16, 30000);
    setNumber(20, 20000);
    fixChecksum();
    EXPECT_EQ(DecodeImage(file).Error, "The picture's size of 30000 x 20000 is out of range.");
    setNumber(16, 65535);
    fixChecksum();
    EXPECT_EQ(DecodeImage(file).Error, "The picture's size of 65535 x 20000 is out of range.");
}

TEST(DecodePngTest, DamagedDataIsRefused)
{
    Bytes file = EncodePng(9, 7, RandomBytes(9 * 7 * 4, 5), {});
    file[60] = static_cast<std::uint8_t>(file[60] ^ 0xff);
    EXPECT_EQ(DecodeImage(file).Error.substr(0, 24), "The PNG file is damaged:");
}

TEST(DecodeImageTest, OtherFilesAreNamedAsSuch)
{
    for (const Bytes& file : {Bytes{}, ToBytes("GIF89a"), ToBytes("RIFFxxxxWEBP"), Bytes{0xff, 0xd8}}) {
        EXPECT_EQ(DecodeImage(file).Error, "The picture is neither PNG nor JPEG.");
    }
}

TEST(DecodeImageTest, SizesWithinTheLimitsPass)
{
    EXPECT_EQ(CheckPictureSize(1, 1), "");
    EXPECT_EQ(CheckPictureSize(8192, 8192), "");
    EXPECT_EQ(CheckPictureSize(32768, 2048), "");
    EXPECT_EQ(CheckPictureSize(8192, 8193), "The picture's size of 8192 x 8193 is out of range.");
    EXPECT_EQ(CheckPictureSize(32769, 1), "The picture's size of 32769 x 1 is out of range.");
    EXPECT_EQ(CheckPictureSize(0, 1), "The picture's size of 0 x 1 is out of range.");
}

} // namespace
} // namespace tq4x::gltf::test
