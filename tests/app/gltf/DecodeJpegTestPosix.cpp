// These tests write their pictures by a library that there is for this system alone.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

#include <jpeglib.h>

#include "GltfFile.h"
#include "gltf/DecodeImage.h"

namespace tq4x::gltf::test
{
namespace
{

Bytes EncodeJpeg(std::uint32_t width, std::uint32_t height, int components, J_COLOR_SPACE space,
                 const Bytes& pixels, bool isProgressive = false)
{
    jpeg_compress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    unsigned char* buffer = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&jpeg, &buffer, &size);
    jpeg.image_width = width;
    jpeg.image_height = height;
    jpeg.input_components = components;
    jpeg.in_color_space = space;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, 100, TRUE);
    if (isProgressive) {
        jpeg_simple_progression(&jpeg);
    }
    jpeg_start_compress(&jpeg, TRUE);
    Bytes copy = pixels;
    while (jpeg.next_scanline < height) {
        JSAMPROW row =
            copy.data() + std::size_t{jpeg.next_scanline} * width * static_cast<std::size_t>(components);
        jpeg_write_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_compress(&jpeg);
    const Bytes file(buffer, buffer + size);
    jpeg_destroy_compress(&jpeg);
    std::free(buffer);
    return file;
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

TEST(DecodeJpegTest, ReadsColourGreyAndInks)
{
    const auto fill = [](const Bytes& pixel) {
        Bytes pixels;
        for (int i = 0; i < 16 * 16; ++i) {
            pixels.insert(pixels.end(), pixel.begin(), pixel.end());
        }
        return pixels;
    };

    const struct
    {
        const char* Name;
        Bytes File;
        int Red, Green, Blue;
    } cases[] = {
        {"colour", EncodeJpeg(16, 16, 3, JCS_RGB, fill({200, 100, 50})), 200, 100, 50},
        {"progressive", EncodeJpeg(16, 16, 3, JCS_RGB, fill({200, 100, 50}), true), 200, 100, 50},
        {"grey", EncodeJpeg(16, 16, 1, JCS_GRAYSCALE, fill({77})), 77, 77, 77},
        {"inverted inks", EncodeJpeg(16, 16, 4, JCS_CMYK, fill({255, 128, 0, 128})), 128, 64, 0},
    };

    for (const auto& entry : cases) {
        const DecodedImage image = DecodeImage(entry.File);
        ASSERT_EQ(image.Error, "") << entry.Name;
        EXPECT_EQ(image.Content.Width, 16u);
        EXPECT_EQ(image.Content.Height, 16u);
        EXPECT_EQ(image.Content.ChannelSize, 1u);
        ASSERT_EQ(image.Content.Pixels.size(), 16u * 16u * 4u);
        for (std::size_t i = 0; i < image.Content.Pixels.size(); i += 4) {
            ASSERT_NEAR(image.Content.Pixels[i], entry.Red, 2) << entry.Name;
            ASSERT_NEAR(image.Content.Pixels[i + 1], entry.Green, 2) << entry.Name;
            ASSERT_NEAR(image.Content.Pixels[i + 2], entry.Blue, 2) << entry.Name;
            ASSERT_EQ(image.Content.Pixels[i + 3], 255) << entry.Name;
        }
    }
}

TEST(DecodeJpegTest, RowsKeepTheirPlace)
{
    Bytes pixels;
    for (int y = 0; y < 32; ++y) {
        pixels.insert(pixels.end(), 8, y < 16 ? 250 : 10);
    }
    const Picture picture = DecodeImage(EncodeJpeg(8, 32, 1, JCS_GRAYSCALE, pixels)).Content;
    ASSERT_EQ(picture.Height, 32u);
    EXPECT_NEAR(picture.Pixels[0], 250, 2);
    EXPECT_NEAR(picture.Pixels[picture.Pixels.size() - 4], 10, 2);
}

// The two bytes at the end are the end mark; without them the picture is whole but the file is cut.
TEST(DecodeJpegTest, EveryTruncationIsRefused)
{
    for (const bool isProgressive : {false, true}) {
        const Bytes whole = EncodeJpeg(24, 24, 3, JCS_RGB, RandomBytes(24 * 24 * 3, 3), isProgressive);
        for (std::size_t length = 0; length + 2 < whole.size(); ++length) {
            const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            EXPECT_NE(DecodeImage(part).Error, "") << length;
        }
    }
}

TEST(DecodeJpegTest, HugeSizesAreRefusedBeforeAnyMemoryIsTaken)
{
    Bytes file = EncodeJpeg(16, 16, 1, JCS_GRAYSCALE, Bytes(256, 9));
    const Bytes frame = {0xff, 0xc0, 0x00, 0x0b, 0x08};
    const auto at = std::search(file.begin(), file.end(), frame.begin(), frame.end()) - file.begin();
    std::memset(&file[static_cast<std::size_t>(at) + 5], 0xfe, 4);
    EXPECT_EQ(DecodeImage(file).Error, "The picture's size of 65278 x 65278 is out of range.");
}

} // namespace
} // namespace tq4x::gltf::test
