#include "material/EncodeTexture.h"
#include "material/ReduceMipmap.h"
#include "material/TextureSize.h"
#include "support/TextureDecoder.h"
#include "support/TexturePixels.h"

#include <gtest/gtest.h>

#include <string>

namespace tq4x
{
namespace
{

using Bytes = std::vector<std::uint8_t>;

constexpr TextureFormat EncodedFormats[] = {
    TextureFormat::L4,   TextureFormat::L8,      TextureFormat::A4,    TextureFormat::A8,
    TextureFormat::La4,  TextureFormat::La8,     TextureFormat::Hilo8, TextureFormat::Rgb565,
    TextureFormat::Rgb8, TextureFormat::Rgb5_a1, TextureFormat::Rgba4, TextureFormat::Rgba8,
};

PixelView ViewOf(const Bytes& pixels, std::size_t width, std::size_t height)
{
    return {pixels.data(), width, height, width * BytesPerPixel};
}

Bytes Encode(const Bytes& pixels, std::size_t width, std::size_t height, TextureFormat format,
             bool hasAlpha = true)
{
    Bytes data(width * height * BitsPerPixel(format) / 8);
    const std::uint8_t* end = EncodeLevel(data.data(), ViewOf(pixels, width, height), format, hasAlpha);
    EXPECT_EQ(end, data.data() + data.size());
    return data;
}

TEST(EncodeTexture, KeepsPixelsOfATileInHalvesOfHalves)
{
    const Bytes pixels =
        test::MakePixels(8, 8, [](int x, int y) { return static_cast<std::uint32_t>(16 * y + x) << 24; });
    const Bytes expected = {
        0x00, 0x01, 0x10, 0x11, 0x02, 0x03, 0x12, 0x13, 0x20, 0x21, 0x30, 0x31, 0x22, 0x23, 0x32, 0x33,
        0x04, 0x05, 0x14, 0x15, 0x06, 0x07, 0x16, 0x17, 0x24, 0x25, 0x34, 0x35, 0x26, 0x27, 0x36, 0x37,
        0x40, 0x41, 0x50, 0x51, 0x42, 0x43, 0x52, 0x53, 0x60, 0x61, 0x70, 0x71, 0x62, 0x63, 0x72, 0x73,
        0x44, 0x45, 0x54, 0x55, 0x46, 0x47, 0x56, 0x57, 0x64, 0x65, 0x74, 0x75, 0x66, 0x67, 0x76, 0x77,
    };
    EXPECT_EQ(Encode(pixels, 8, 8, TextureFormat::L8), expected);
}

TEST(EncodeTexture, KeepsTilesInRowsFromTheTopLeft)
{
    const Bytes pixels = test::MakePixels(
        24, 16, [](int x, int y) { return static_cast<std::uint32_t>(y / 8 * 16 + x / 8) << 24; });
    const Bytes data = Encode(pixels, 24, 16, TextureFormat::L8);
    for (std::size_t i = 0; i < data.size(); ++i)
        EXPECT_EQ(data[i], (Bytes{0x00, 0x01, 0x02, 0x10, 0x11, 0x12})[i / 64]) << i;
}

struct PixelCase
{
    TextureFormat Format;
    bool HasAlpha;
    Bytes Data; ///< of two pixels, 0xB4D2E187 and 0x5A69780F, the least that all formats can hold
};

const PixelCase PixelCases[] = {
    {TextureFormat::L4, true, {0x5B}},
    {TextureFormat::L8, true, {0xB4, 0x5A}},
    {TextureFormat::A4, true, {0x08}},
    {TextureFormat::A4, false, {0x5B}},
    {TextureFormat::A8, true, {0x87, 0x0F}},
    {TextureFormat::A8, false, {0xB4, 0x5A}},
    {TextureFormat::La4, true, {0xB8, 0x50}},
    {TextureFormat::La8, true, {0x87, 0xB4, 0x0F, 0x5A}},
    {TextureFormat::Hilo8, true, {0xD2, 0xB4, 0x69, 0x5A}},
    {TextureFormat::Rgb565, true, {0x9C, 0xB6, 0x4F, 0x5B}}, // 10110 110100 11100, 01011 011010 01111
    {TextureFormat::Rgb8, true, {0xE1, 0xD2, 0xB4, 0x78, 0x69, 0x5A}},
    {TextureFormat::Rgb5_a1, true, {0xB9, 0xB6, 0x5E, 0x5B}}, // 10110 11010 11100 1, 01011 01101 01111 0
    {TextureFormat::Rgba4, true, {0xE8, 0xBD, 0x70, 0x56}},
    {TextureFormat::Rgba8, true, {0x87, 0xE1, 0xD2, 0xB4, 0x0F, 0x78, 0x69, 0x5A}},
    {TextureFormat::Etc1, true, {}},
    {TextureFormat::Etc1_a4, true, {}},
};

TEST(EncodeTexture, WritesPixelsAsTheFormatSays)
{
    const Bytes pixels = {0xB4, 0xD2, 0xE1, 0x87, 0x5A, 0x69, 0x78, 0x0F};
    for (const PixelCase& row : PixelCases) {
        Bytes data(16, 0xCC);
        std::uint8_t* const end = EncodeLevel(data.data(), ViewOf(pixels, 2, 1), row.Format, row.HasAlpha);
        Bytes expected = row.Data;
        EXPECT_EQ(end - data.data(), static_cast<std::ptrdiff_t>(expected.size())) << FormatWord(row.Format);
        expected.resize(16, 0xCC);
        EXPECT_EQ(data, expected) << FormatWord(row.Format);
    }
}

TEST(EncodeTexture, SetsTheOneAlphaBitFromTheMiddleOn)
{
    const Bytes pixels = {0, 0, 0, 127, 0, 0, 0, 128};
    EXPECT_EQ(Encode(pixels, 2, 1, TextureFormat::Rgb5_a1), (Bytes{0, 0, 1, 0}));
}

TEST(EncodeTexture, DecodesToTheSourceInEveryFormat)
{
    constexpr unsigned seed = 4;
    std::mt19937 random(seed);
    const std::pair<int, int> sizes[] = {{8, 8}, {16, 8}, {8, 32}, {64, 64}, {128, 16},
                                         {4, 4}, {2, 8},  {16, 4}, {1, 2},   {2, 1}};
    for (const auto& [width, height] : sizes) {
        const Bytes pixels = test::RandomPixels(width, height, random);
        for (const TextureFormat format : EncodedFormats) {
            for (const bool hasAlpha : {true, false}) {
                const Bytes data = Encode(pixels, width, height, format, hasAlpha);
                EXPECT_EQ(test::DecodeLevel(data.data(), format, width, height),
                          test::KeptPixels(pixels, format, hasAlpha))
                    << FormatWord(format) << " " << width << " x " << height << " seed " << seed;
            }
        }
    }
}

TEST(EncodeTexture, LeavesOutHalfAByte)
{
    const Bytes pixel = {0x12, 0x34, 0x56, 0x78};
    EXPECT_EQ(Encode(pixel, 1, 1, TextureFormat::L4), Bytes());
    EXPECT_EQ(Encode(pixel, 1, 1, TextureFormat::A4), Bytes());
}

TEST(ReduceMipmap, SumsFourAndDropsTwoBits)
{
    const Bytes pixels = {0, 1, 255, 254, 0, 1, 255, 255, 1, 1, 255, 255, 2, 0, 255, 255};
    Bytes target(4);
    const PixelView reduced = ReduceMipmap(ViewOf(pixels, 2, 2), target.data());
    EXPECT_EQ(target, (Bytes{0, 0, 255, 254}));
    EXPECT_EQ(reduced.Width, 1u);
    EXPECT_EQ(reduced.Height, 1u);
    EXPECT_EQ(reduced.Pitch, 4u);
}

Bytes ReduceLiterally(const Bytes& pixels, std::size_t width, std::size_t height)
{
    Bytes reduced;
    for (std::size_t y = 0; y + 1 < height; y += 2) {
        for (std::size_t x = 0; x + 1 < width; x += 2) {
            for (std::size_t channel = 0; channel < 4; ++channel) {
                const std::size_t first = (y * width + x) * 4 + channel;
                const int sum = pixels[first] + pixels[first + 4] + pixels[first + width * 4] +
                                pixels[first + width * 4 + 4];
                reduced.push_back(static_cast<std::uint8_t>(sum / 4));
            }
        }
    }
    return reduced;
}

TEST(ReduceMipmap, EqualsTheSlowMethodAlsoInPlace)
{
    constexpr unsigned seed = 9;
    std::mt19937 random(seed);
    for (const auto& [width, height] :
         {std::pair{2, 2}, {4, 2}, {8, 16}, {64, 4}, {1, 8}, {8, 1}, {1, 1}, {128, 128}}) {
        Bytes pixels = test::RandomPixels(width, height, random);
        const Bytes expected = ReduceLiterally(pixels, width, height);
        Bytes apart(expected.size());
        EXPECT_EQ(ReduceMipmap(ViewOf(pixels, width, height), apart.data()).Height, height / 2u);
        EXPECT_EQ(apart, expected) << width << " x " << height << " seed " << seed;
        ReduceMipmap(ViewOf(pixels, width, height), pixels.data());
        pixels.resize(expected.size());
        EXPECT_EQ(pixels, expected) << width << " x " << height << " in place, seed " << seed;
    }
}

TEST(EncodeTexture, FillsAllLevelsLargestFirst)
{
    std::mt19937 random(21);
    for (const TextureFormat format : EncodedFormats) {
        Bytes pixels = test::RandomPixels(64, 32, random);
        TextureImage image = test::RawImage(64, 32, pixels, true);
        ASSERT_EQ(image.Convert(TextureUsage::Color, false).Message, "");
        image.Format = format;
        image.MipmapSize = 7; // 64 x 32 to 1 x 0
        EncodeTexture(image);
        EXPECT_EQ(image.TextureDataSize, static_cast<std::int32_t>(image.TextureData.size()));
        const std::uint8_t* data = image.TextureData.data();
        for (std::size_t width = 64, height = 32; height > 0; width /= 2, height /= 2) {
            if (width * height * BitsPerPixel(format) >= 8) {
                EXPECT_EQ(test::DecodeLevel(data, format, width, height),
                          test::KeptPixels(pixels, format, true))
                    << FormatWord(format) << " " << width;
            }
            data += width * height * BitsPerPixel(format) / 8;
            pixels = ReduceLiterally(pixels, width, height);
        }
        EXPECT_EQ(data, image.TextureData.data() + image.TextureData.size());
    }
}

TEST(EncodeTexture, FillsTheFacesOfACubeInOrder)
{
    const std::pair<int, int> places[] = {{2, 1}, {0, 1}, {1, 0}, {1, 2}, {1, 1}, {3, 1}};
    std::mt19937 random(22);
    const Bytes cross = test::RandomPixels(64, 48, random);
    TextureImage image = test::RawImage(64, 48, cross, false);
    image.MipmapSize = 2;
    ASSERT_EQ(image.Convert(TextureUsage::Color, true).Message, "");
    ASSERT_TRUE(image.IsCube);
    EXPECT_TRUE(image.HasMipmap);
    EXPECT_EQ(image.TextureDataSize, 6 * (16 * 16 + 8 * 8) * 2);
    const std::uint8_t* data = image.TextureData.data();
    for (const auto& [column, row] : places) {
        Bytes face;
        for (int y = 0; y < 16; ++y) {
            const auto first = cross.begin() + ((row * 16 + y) * 64 + column * 16) * 4;
            face.insert(face.end(), first, first + 64);
        }
        const auto format = TextureFormat::Rgb565;
        EXPECT_EQ(test::DecodeLevel(data, format, 16, 16), test::KeptPixels(face, format, false))
            << column << " " << row;
        data += 512;
        EXPECT_EQ(test::DecodeLevel(data, format, 8, 8),
                  test::KeptPixels(ReduceLiterally(face, 16, 16), format, false));
        data += 128;
    }
}

TEST(EncodeTexture, LeavesThePixelsAsTheyAre)
{
    std::mt19937 random(23);
    const Bytes pixels = test::RandomPixels(32, 24, random);
    TextureImage image = test::RawImage(32, 24, pixels, true);
    image.MipmapSize = 3;
    ASSERT_EQ(image.Convert(TextureUsage::Color, true).Message, "");
    EXPECT_EQ(image.Pixels, pixels);
    const Bytes data = image.TextureData;
    ASSERT_EQ(image.Convert(TextureUsage::Color, true).Message, "");
    EXPECT_EQ(image.TextureData, data) << "a second conversion gives the same";
}

TEST(EncodeTexture, LeavesNothingForFormatsWithoutEncoder)
{
    TextureImage image = test::PlainImage(8, 8, 0xFFFFFFFF);
    ASSERT_EQ(image.Convert(TextureUsage::Color, false).Message, "");
    image.Format = TextureFormat::Etc1;
    EncodeTexture(image);
    EXPECT_EQ(image.TextureData, Bytes(32));
}

struct CountCase
{
    const char* Name;
    TextureFormat Format;
    int Width;
    int Height;
    bool IsCube;
    int MipmapSize;
    std::size_t Count;
};

constexpr CountCase CountCases[] = {
    {"one level", TextureFormat::Rgb565, 8, 8, false, 1, 128},
    {"half bytes", TextureFormat::L4, 8, 8, false, 1, 32},
    {"three bytes", TextureFormat::Rgb8, 16, 8, false, 1, 384},
    {"all levels of 1024", TextureFormat::Rgba8, 1024, 1024, false, 8, 5592320},
    {"a cube", TextureFormat::Rgb565, 8, 8, true, 1, 768},
    {"a cube with levels", TextureFormat::L8, 16, 16, true, 2, 1920},
    {"each level is rounded down", TextureFormat::L4, 8, 8, false, 8, 32 + 8 + 2},
    {"a side that is used up", TextureFormat::L8, 16, 8, false, 8, 128 + 32 + 8 + 2},
    {"the largest cube of a header that lies", TextureFormat::Rgba8, 65535, 65535, true, 1,
     std::size_t{65535} * 65535 * 24},
};

TEST(TextureSize, CountsBytesOfAllFacesAndLevels)
{
    for (const CountCase& row : CountCases) {
        TextureImage image;
        image.Format = row.Format;
        image.Width = row.Width;
        image.Height = row.Height;
        image.IsCube = row.IsCube;
        image.MipmapSize = row.MipmapSize;
        EXPECT_EQ(TextureByteCount(image), row.Count) << row.Name;
    }
}

} // namespace
} // namespace tq4x
