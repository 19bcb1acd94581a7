#include <random>

#include "Base64Text.h"
#include "ReadTexture.h"
#include "material/Base64.h"
#include "material/EncodeTexture.h"
#include "material/TextureImage.h"

#include <gtest/gtest.h>

namespace tq4x
{
namespace
{

/// How far each channel may be off: what its bits leave. -1: the channel is not kept.
struct FormatCase
{
    TextureFormat Format;
    const char* Word;
    int Red;
    int Green;
    int Blue;
    int Alpha;
};

constexpr FormatCase Cases[] = {
    {TextureFormat::L4, "L4", 15, -1, -1, -1},       {TextureFormat::L8, "L8", 0, -1, -1, -1},
    {TextureFormat::A4, "A4", -1, -1, -1, 15},       {TextureFormat::A8, "A8", -1, -1, -1, 0},
    {TextureFormat::La4, "La4", 15, -1, -1, 15},     {TextureFormat::La8, "La8", 0, -1, -1, 0},
    {TextureFormat::Hilo8, "Hilo8", 0, 0, -1, -1},   {TextureFormat::Rgb565, "Rgb565", 7, 3, 7, -1},
    {TextureFormat::Rgb8, "Rgb8", 0, 0, 0, -1},      {TextureFormat::Rgb5_a1, "Rgb5_a1", 7, 7, 7, 127},
    {TextureFormat::Rgba4, "Rgba4", 15, 15, 15, 15}, {TextureFormat::Rgba8, "Rgba8", 0, 0, 0, 0},
};

TEST(RoundTripTexture, PixelsOfEveryFormatAreWithinTheirBits)
{
    std::mt19937 random(7);
    for (const FormatCase& test : Cases) {
        constexpr std::size_t Width = 32;
        constexpr std::size_t Height = 16;
        std::vector<std::uint8_t> pixels(Width * Height * 4);
        for (std::uint8_t& byte : pixels)
            byte = static_cast<std::uint8_t>(random());
        TextureImage image;
        image.SetPixels(pixels, Width, Height, true);
        image.Width = Width;
        image.Height = Height;
        image.Format = test.Format;
        image.MipmapSize = 1;
        EncodeTexture(image);
        const reader::TextureLevel level = {Width, Height, image.TextureData, 0};
        const std::vector<std::uint8_t> read = reader::DecodeLevel(test.Word, level);
        ASSERT_EQ(read.size(), pixels.size()) << test.Word;
        const int precision[] = {test.Red, test.Green, test.Blue, test.Alpha};
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            if (precision[i % 4] >= 0) {
                EXPECT_LE(std::abs(int{read[i]} - int{pixels[i]}), precision[i % 4])
                    << test.Word << " pixel " << i / 4 << " channel " << i % 4;
            }
        }
    }
}

TEST(RoundTripTexture, Base64OfEveryLength)
{
    std::mt19937 random(7);
    for (std::size_t size = 0; size < 200; ++size) {
        std::vector<std::uint8_t> bytes(size);
        for (std::uint8_t& byte : bytes)
            byte = static_cast<std::uint8_t>(random());
        EXPECT_EQ(reader::DecodeBase64(EncodeBase64(bytes.data(), size)), bytes) << size;
    }
}

} // namespace
} // namespace tq4x
