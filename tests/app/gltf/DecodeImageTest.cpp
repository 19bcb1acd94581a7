#include <gtest/gtest.h>

#include <png.h>

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

void AppendBytes(png_structp png, png_bytep from, png_size_t size)
{
    auto& file = *static_cast<Bytes*>(png_get_io_ptr(png));
    file.insert(file.end(), from, from + size);
}

struct PngOptions
{
    int ColorType = PNG_COLOR_TYPE_RGB_ALPHA;
    int Depth = 8;
    int Interlace = PNG_INTERLACE_NONE;
    bool HasTransparentColor = false; // the colour 7, or 7 7 7; of palettes the first entry
};

// Rows as the format stores them; the palette, if any, holds (10 i, 20 i, 30 i).
Bytes EncodePng(std::uint32_t width, std::uint32_t height, const Bytes& rows, const PngOptions& options)
{
    Bytes file;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &file, AppendBytes, nullptr);
    png_set_IHDR(png, info, width, height, options.Depth, options.ColorType, options.Interlace,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (options.ColorType == PNG_COLOR_TYPE_PALETTE) {
        png_color palette[4];
        for (int i = 0; i < 4; ++i) {
            palette[i] = {static_cast<png_byte>(10 * i), static_cast<png_byte>(20 * i),
                          static_cast<png_byte>(30 * i)};
        }
        png_set_PLTE(png, info, palette, options.Depth == 1 ? 2 : 4);
    }
    png_byte firstAlpha = 0;
    png_color_16 clear{};
    clear.red = clear.green = clear.blue = clear.gray = 7;
    if (options.HasTransparentColor) {
        png_set_tRNS(png, info, &firstAlpha, 1, &clear);
    }
    png_write_info(png, info);
    const std::size_t rowSize = png_get_rowbytes(png, info);
    std::vector<png_bytep> starts;
    Bytes copy = rows;
    EXPECT_EQ(copy.size(), rowSize * height);
    for (std::uint32_t y = 0; y < height; ++y) {
        starts.push_back(copy.data() + y * rowSize);
    }
    png_write_image(png, starts.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return file;
}

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
        {"rgba 8", {PNG_COLOR_TYPE_RGB_ALPHA, 8}, {1, 2, 3, 4, 5, 6, 7, 8}, 1, {1, 2, 3, 4, 5, 6, 7, 8}},
        {"rgb 8", {PNG_COLOR_TYPE_RGB, 8}, {1, 2, 3, 5, 6, 7}, 1, {1, 2, 3, 255, 5, 6, 7, 255}},
        {"rgb 8 with a transparent colour",
         {PNG_COLOR_TYPE_RGB, 8, PNG_INTERLACE_NONE, true},
         {7, 7, 7, 5, 6, 7},
         1,
         {7, 7, 7, 0, 5, 6, 7, 255}},
        {"grey 8", {PNG_COLOR_TYPE_GRAY, 8}, {9, 200}, 1, {9, 9, 9, 255, 200, 200, 200, 255}},
        {"grey 8 with a transparent level",
         {PNG_COLOR_TYPE_GRAY, 8, PNG_INTERLACE_NONE, true},
         {7, 8},
         1,
         {7, 7, 7, 0, 8, 8, 8, 255}},
        {"grey and alpha", {PNG_COLOR_TYPE_GRAY_ALPHA, 8}, {9, 1, 8, 2}, 1, {9, 9, 9, 1, 8, 8, 8, 2}},
        {"grey 1", {PNG_COLOR_TYPE_GRAY, 1}, {0x40}, 1, {0, 0, 0, 255, 255, 255, 255, 255}},
        {"grey 2", {PNG_COLOR_TYPE_GRAY, 2}, {0x60}, 1, {85, 85, 85, 255, 170, 170, 170, 255}},
        {"grey 4", {PNG_COLOR_TYPE_GRAY, 4}, {0x1f}, 1, {17, 17, 17, 255, 255, 255, 255, 255}},
        {"palette 8", {PNG_COLOR_TYPE_PALETTE, 8}, {1, 2}, 1, {10, 20, 30, 255, 20, 40, 60, 255}},
        {"palette 1", {PNG_COLOR_TYPE_PALETTE, 1}, {0x40}, 1, {0, 0, 0, 255, 10, 20, 30, 255}},
        {"palette with a transparent entry",
         {PNG_COLOR_TYPE_PALETTE, 4, PNG_INTERLACE_NONE, true},
         {0x03},
         1,
         {0, 0, 0, 0, 30, 60, 90, 255}},
        {"rgb 16",
         {PNG_COLOR_TYPE_RGB, 16},
         {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12},
         2,
         {2, 1, 4, 3, 6, 5, 255, 255, 8, 7, 10, 9, 12, 11, 255, 255}},
        {"grey and alpha 16",
         {PNG_COLOR_TYPE_GRAY_ALPHA, 16},
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
        const Bytes interlaced =
            EncodePng(seed, 2 * seed, rows, {PNG_COLOR_TYPE_RGB_ALPHA, 8, PNG_INTERLACE_ADAM7});
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
