// What the sample pictures hold is read by a library that there is for this system alone.

#include "material/DecodeTga.h"
#include "material/TextureImage.h"
#include "support/Golden.h"
#include "support/TgaBuilder.h"

#include <gtest/gtest.h>
#include <png.h>

#include <filesystem>

namespace tq4x
{
namespace
{

using test::Bytes;

const std::filesystem::path Samples = std::filesystem::path(TQ4X_SAMPLES) / "tga";

struct Picture
{
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    Bytes Pixels;
};

Picture ReadPng(const std::filesystem::path& path)
{
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    EXPECT_NE(png_image_begin_read_from_file(&png, path.string().c_str()), 0) << path;
    png.format = PNG_FORMAT_RGBA;
    Picture picture{static_cast<std::int32_t>(png.width), static_cast<std::int32_t>(png.height), {}};
    picture.Pixels.resize(PNG_IMAGE_SIZE(png));
    EXPECT_NE(png_image_finish_read(&png, nullptr, picture.Pixels.data(), 0, nullptr), 0) << path;
    return picture;
}

Picture ReadTgaPicture(const std::string& name)
{
    const std::string text = test::ReadWholeFile(Samples / name);
    const Bytes file(text.begin(), text.end());
    TgaHeader header;
    Picture picture;
    EXPECT_EQ(ReadTgaHeader(header, file, name).Message, "");
    EXPECT_EQ(DecodeTga(picture.Pixels, header, file, name).Message, "");
    picture.Width = header.Width;
    picture.Height = header.Height;
    return picture;
}

class TgaSamples : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!std::filesystem::exists(Samples))
            GTEST_SKIP() << "the sample pictures are not here: " << Samples;
    }
};

TEST_F(TgaSamples, DecodeAsTheirExpectedPictures)
{
    for (const std::string name : {"bottom_right", "cbw8", "ctc24", "rgb24_top_left_colormap", "sample",
                                   "top_left", "ubw8", "utc24", "utc32"}) {
        SCOPED_TRACE(name);
        const Picture expected = ReadPng(Samples / "expected" / (name + ".png"));
        const Picture actual = ReadTgaPicture(name + ".tga");
        EXPECT_EQ(actual.Width, expected.Width);
        EXPECT_EQ(actual.Height, expected.Height);
        EXPECT_EQ(actual.Pixels, expected.Pixels);
    }
}

/// The picture is grey with an alpha byte, and other readers show it so. Here 16 bits are five bits a channel
/// whatever the image type says, so the two bytes of the expected grey and alpha are read as one word.
TEST_F(TgaSamples, ReadGreyOfSixteenBitsAsFiveBitsEach)
{
    const Picture expected = ReadPng(Samples / "expected" / "monochrome16_top_left.png");
    const Picture actual = ReadTgaPicture("monochrome16_top_left.tga");
    ASSERT_EQ(actual.Pixels.size(), expected.Pixels.size());
    const auto widen = [](int bits) {
        return static_cast<std::uint8_t>((bits % 32 << 3) | (bits % 32 >> 2));
    };
    for (std::size_t i = 0; i < expected.Pixels.size(); i += 4) {
        const int word = expected.Pixels[i] + 256 * expected.Pixels[i + 3];
        const Bytes pixel(&actual.Pixels[i], &actual.Pixels[i] + 4);
        ASSERT_EQ(pixel, (Bytes{widen(word / 1024), widen(word / 32), widen(word), 255})) << "byte " << i;
    }
}

/// These have no expected picture of their own, but hold one that another sample holds too.
TEST_F(TgaSamples, DecodeAlikeWhateverTheirCoding)
{
    const char* const pairs[][2] = {{"ctc16.tga", "utc16.tga"},
                                    {"ccm8.tga", "ucm8.tga"},
                                    {"ctc32.tga", "utc32.tga"},
                                    {"ucm8.tga", "utc16.tga"}};
    for (const auto& [first, second] : pairs)
        EXPECT_EQ(ReadTgaPicture(first).Pixels, ReadTgaPicture(second).Pixels) << first << " " << second;
}

TEST_F(TgaSamples, LoseThreeBitsOfAChannelInSixteenBits)
{
    const Picture fine = ReadTgaPicture("utc24.tga");
    const Picture coarse = ReadTgaPicture("utc16.tga");
    ASSERT_EQ(coarse.Pixels.size(), fine.Pixels.size());
    for (std::size_t i = 0; i < fine.Pixels.size(); ++i)
        ASSERT_NEAR(coarse.Pixels[i], fine.Pixels[i], 8) << "byte " << i;
}

struct LoadCase
{
    const char* Name;
    const char* Format;
    const char* Message; ///< up to the path
};

constexpr LoadCase LoadCases[] = {
    {"ubw8.tga", "L8", ""},
    {"cbw8.tga", "L8", ""},
    {"utc24.tga", "Rgb565", ""},
    {"ctc16.tga", "Rgb565", ""},
    {"ucm8.tga", "Rgb565", ""},
    {"monochrome16_top_left.tga", "Rgb565", ""},
    {"rgb24_top_left_colormap.tga", "Rgb565", ""},
    {"sample.tga", "Rgb565", "Texture size is wrong: "},
    {"top_left.tga", "Rgb565", "Texture size is wrong: "},
    {"bottom_right.tga", "Rgb565", "Texture size is wrong: "},
};

TEST_F(TgaSamples, LoadAsTextures)
{
    for (const LoadCase& row : LoadCases) {
        SCOPED_TRACE(row.Name);
        TextureImage image;
        const LogResult result = image.Load((Samples / row.Name).string(), TextureUsage::Color, true);
        EXPECT_EQ(result.Message.substr(0, std::string_view(row.Message).size()), row.Message);
        EXPECT_EQ(result.Status == 0, *row.Message == '\0');
        EXPECT_EQ(image.TextureData.empty(), result.Status != 0);
        EXPECT_EQ(image.FormatName(), row.Format);
    }
}

} // namespace
} // namespace tq4x
