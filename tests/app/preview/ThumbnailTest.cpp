#include "preview/Thumbnail.h"

#include <gtest/gtest.h>

#include <numeric>

#include "gltf/DecodeImage.h"

namespace tq4x::preview
{
namespace
{

using Bytes = std::vector<std::uint8_t>;

TEST(ShrinkPixels, TakesMeans)
{
    const struct
    {
        const char* Name;
        Pixels From;
        std::size_t Most;
        Pixels To;
    } cases[] = {
        {"small enough", {2, 1, {1, 2, 3, 4, 5, 6, 7, 8}}, 2, {2, 1, {1, 2, 3, 4, 5, 6, 7, 8}}},
        {"a pair", {2, 1, {0, 10, 20, 255, 100, 20, 20, 255}}, 1, {1, 1, {50, 15, 20, 255}}},
        {"what is transparent has no colour",
         {2, 1, {200, 100, 50, 255, 0, 0, 0, 0}},
         1,
         {1, 1, {200, 100, 50, 128}}},
        {"nothing but transparent", {2, 1, {9, 9, 9, 0, 7, 7, 7, 0}}, 1, {1, 1, {0, 0, 0, 0}}},
        {"a rest at the edge",
         {3, 1, {0, 0, 0, 255, 4, 4, 4, 255, 8, 8, 8, 255}},
         2,
         {2, 1, {2, 2, 2, 255, 8, 8, 8, 255}}},
        {"high and narrow", {1, 4, Bytes(16, 6)}, 2, {1, 2, Bytes(8, 6)}},
        {"none", {0, 0, {}}, 4, {0, 0, {}}},
    };

    for (const auto& row : cases) {
        const Pixels small = ShrinkPixels(row.From, row.Most);
        EXPECT_EQ(small.Width, row.To.Width) << row.Name;
        EXPECT_EQ(small.Height, row.To.Height) << row.Name;
        EXPECT_EQ(small.Data, row.To.Data) << row.Name;
    }
}

TEST(ShrinkPixels, KeepsEverySizeWithinTheBound)
{
    for (const std::size_t width : {1, 7, 8, 9, 64, 129, 1024}) {
        for (const std::size_t height : {1, 8, 100, 256}) {
            const Pixels small = ShrinkPixels({width, height, Bytes(width * height * 4, 77)}, 8);
            EXPECT_LE(std::max(small.Width, small.Height), 8U) << width << " x " << height;
            EXPECT_EQ(small.Data, Bytes(small.Width * small.Height * 4, 77)) << width << " x " << height;
        }
    }
}

reader::Texture OneLevel(const std::string& format, std::size_t width, std::size_t height, Bytes data)
{
    reader::Texture texture;
    texture.Format = format;
    texture.Width = static_cast<int>(width);
    texture.Height = static_cast<int>(height);
    texture.Faces = {{{{width, height, std::move(data), 1}}}};
    return texture;
}

TEST(MakeThumbnail, ShowsTheLargestLevelOfTheFirstFace)
{
    reader::Texture texture = OneLevel("L8", 256, 8, Bytes(256 * 8, 200));
    texture.Faces[0].Levels.push_back({128, 4, Bytes(128 * 4, 10), 1});
    texture.Faces.push_back(OneLevel("L8", 256, 8, Bytes(256 * 8, 20)).Faces[0]);
    const std::string png = MakeThumbnail(texture);
    const gltf::Picture picture = gltf::DecodeImage(Bytes(png.begin(), png.end())).Content;
    ASSERT_EQ(picture.Width, 128U);
    ASSERT_EQ(picture.Height, 4U);
    EXPECT_EQ(picture.Pixels[0], 200);
    EXPECT_EQ(picture.Pixels[3], 255);
}

TEST(MakeThumbnail, GivesNothingForWhatCantBeShown)
{
    reader::Texture withoutLevels;
    withoutLevels.Faces.emplace_back();

    const struct
    {
        const char* Name;
        reader::Texture Texture;
    } cases[] = {
        {"block-compressed", OneLevel("Etc1", 8, 8, Bytes(32))},
        {"unknown format", OneLevel("Rgb1", 8, 8, Bytes(512))},
        {"too short", OneLevel("L8", 8, 8, Bytes(63))},
        {"no faces", {}},
        {"no levels", withoutLevels},
        {"no pixels", OneLevel("L8", 0, 0, {})},
    };

    for (const auto& row : cases) {
        EXPECT_EQ(MakeThumbnail(row.Texture), "") << row.Name;
    }
}

} // namespace
} // namespace tq4x::preview
