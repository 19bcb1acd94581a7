#include "material/TgaBlocks.h"
#include "material/ReadTga.h"
#include "support/TgaBuilder.h"

#include <gtest/gtest.h>

#include <optional>

namespace tq4x
{
namespace
{

using test::Bytes;
using test::TgaBlock;
using test::TgaFile;

struct Read
{
    LogResult Result;
    TextureImage Image;
};

Read ReadFileBytes(const Bytes& file)
{
    Read read;
    read.Image.Path = "d/t.tga";
    read.Result = ReadTga(read.Image, file, TextureUsage::Color, true);
    return read;
}

Read ReadBlocks(const std::vector<Bytes>& blocks)
{
    return ReadFileBytes(test::TgaWithBlocks(8, 8, blocks).Build());
}

/// Data of 8 x 8 pixels of one byte.
Bytes Data(std::size_t size = 64)
{
    Bytes data;
    for (std::size_t i = 0; i < size; ++i)
        data.push_back(static_cast<std::uint8_t>(i * 7 + 1));
    return data;
}

TEST(TgaBlocks, TakesFormatAndDataAsTheyAre)
{
    const Read read =
        ReadBlocks({TgaBlock("tq4x_tfm", "L8"), TgaBlock("tq4x_txd", Data()), TgaBlock("tq4x_end", "")});
    EXPECT_EQ(read.Result.Message, "");
    EXPECT_EQ(read.Image.Format, TextureFormat::L8);
    EXPECT_EQ(read.Image.TextureData, Data());
    EXPECT_EQ(read.Image.TextureDataSize, 64);
    EXPECT_TRUE(read.Image.HasAdditionalInfo);
    EXPECT_EQ(read.Image.AdditionalInfoOffset, 38);
    EXPECT_FALSE(read.Image.IsRawImage);
    EXPECT_FALSE(read.Image.IsCube);
    EXPECT_TRUE(read.Image.Pixels.empty());
    EXPECT_EQ(read.Image.Width, 8);
    EXPECT_EQ(read.Image.Height, 8);
    EXPECT_EQ(read.Image.MipmapSize, 1);
    EXPECT_FALSE(read.Image.HasMipmap);
}

TEST(TgaBlocks, StoresTheUsage)
{
    TextureImage image;
    const Bytes file = test::TgaWithBlocks(8, 8, {TgaBlock("tq4x_txd", Data(128))}).Build();
    EXPECT_EQ(ReadTga(image, file, TextureUsage::NormalMap, true).Message, "");
    EXPECT_EQ(image.Usage, TextureUsage::NormalMap);
    EXPECT_EQ(image.Format, TextureFormat::Rgb565) << "the format of a new record stays";
}

TEST(TgaBlocks, CutsTheFacesOfACube)
{
    const Bytes file = test::TgaWithBlocks(32, 24,
                                           {TgaBlock("tq4x_cub", "anything"), TgaBlock("tq4x_tfm", "A4"),
                                            TgaBlock("tq4x_txd", Data(192))})
                           .Build();
    const Read read = ReadFileBytes(file);
    EXPECT_EQ(read.Result.Message, "");
    EXPECT_TRUE(read.Image.IsCube);
    EXPECT_EQ(read.Image.Width, 8);
    EXPECT_EQ(read.Image.Height, 8);
    EXPECT_EQ(read.Image.FileWidth, 32);
}

struct MipmapCase
{
    const char* Payload;
    std::int32_t Size; ///< 0: refused
};

constexpr MipmapCase MipmapCases[] = {
    {"1", 1},  {"8", 8},  {"08", 8}, {"01", 1}, {"123", 1}, {"3xyz", 3}, {"9", 0},
    {"0", 0},  {"00", 0}, {"09", 0}, {"10", 0}, {"99", 0},  {"", 0},     {"x", 0},
    {"1x", 0}, {"x1", 0}, {" 1", 0}, {"-1", 0}, {"012", 0}, {"\xFF", 0},
};

TEST(TgaBlocks, ReadsTheNumberOfLevels)
{
    for (const MipmapCase& row : MipmapCases) {
        SCOPED_TRACE(row.Payload);
        const Read read = ReadBlocks({TgaBlock("tq4x_mps", row.Payload), TgaBlock("tq4x_txd", Data(512))});
        if (row.Size == 0) {
            EXPECT_EQ(read.Result.Status, 1);
            EXPECT_EQ(read.Result.Message, std::string("Mipmap size is wrong: ") + row.Payload);
            continue;
        }
        EXPECT_EQ(read.Result.Message, "");
        EXPECT_EQ(read.Image.MipmapSize, row.Size);
        EXPECT_EQ(read.Image.HasMipmap, row.Size > 1);
    }
}

TEST(TgaBlocks, ReadsFormatWordsExactly)
{
    for (int value = 0; value <= 13; ++value) {
        const auto format = static_cast<TextureFormat>(value);
        const Read read =
            ReadBlocks({TgaBlock("tq4x_tfm", FormatWord(format)), TgaBlock("tq4x_txd", Data(256))});
        EXPECT_EQ(read.Result.Message, "") << value;
        EXPECT_EQ(read.Image.Format, format);
    }
    for (const std::string word : {"", "l8", "L", "L88", "L8 ", "Rgb5a1", "err", "\xE3\x81"}) {
        const Read read = ReadBlocks({TgaBlock("tq4x_tfm", word), TgaBlock("tq4x_txd", Data(256))});
        EXPECT_EQ(read.Result.Status, 1);
        EXPECT_EQ(read.Result.Message, "Texture format is wrong: " + word);
    }
    const std::string terminated("L8\0", 3);
    EXPECT_EQ(ReadBlocks({TgaBlock("tq4x_tfm", terminated)}).Result.Message,
              "Texture format is wrong: " + terminated);
}

constexpr const char* Wrong = "Additional information is wrong: d/t.tga";

/// A block whose size is told otherwise than it is.
Bytes BlockOfSize(std::string_view tag, std::uint32_t size, const Bytes& payload = {})
{
    Bytes block;
    test::Append(block, tag);
    test::AppendLittle(block, size, 4);
    test::Append(block, payload);
    return block;
}

struct WalkCase
{
    const char* Name;
    std::vector<Bytes> Blocks;
    const char* Message;
};

const Bytes Format = TgaBlock("tq4x_tfm", "L8");
const Bytes Texture = TgaBlock("tq4x_txd", Data());

const WalkCase WalkCases[] = {
    {"no end tag", {Format, Texture}, ""},
    {"unknown tags are passed over",
     {TgaBlock("tq4x_abc", "12345"), TgaBlock("TQ4X_TXD", "x"), Format, Texture},
     ""},
    {"nothing counts behind the end",
     {Format, Texture, TgaBlock("tq4x_end", ""), TgaBlock("tq4x_mps", "9")},
     ""},
    {"nothing counts behind a size of 0",
     {Format, Texture, BlockOfSize("tq4x_mps", 0), TgaBlock("tq4x_mps", "9")},
     ""},
    {"the last data counts", {Format, TgaBlock("tq4x_txd", "short"), Texture}, ""},
    {"data longer than the need", {Format, TgaBlock("tq4x_txd", Data(100))}, ""},
    {"a last block of a head alone", {Format, Texture, BlockOfSize("tq4x_cub", 11)}, ""},
    {"no data", {Format, TgaBlock("tq4x_end", "")}, Wrong},
    {"no blocks but a few bytes", {Bytes(5)}, Wrong},
    {"data behind the end", {Format, TgaBlock("tq4x_end", ""), Texture}, Wrong},
    {"empty data", {Format, TgaBlock("tq4x_txd", "")}, Wrong},
    {"empty data replaces data", {Format, Texture, TgaBlock("tq4x_txd", "")}, Wrong},
    {"one byte too few", {Format, TgaBlock("tq4x_txd", Data(63))}, Wrong},
    {"too few for the levels", {Format, TgaBlock("tq4x_mps", "2"), TgaBlock("tq4x_txd", Data(79))}, Wrong},
    {"just enough for the levels", {Format, TgaBlock("tq4x_mps", "2"), TgaBlock("tq4x_txd", Data(80))}, ""},
    {"a size below the head's has no payload", {Format, BlockOfSize("tq4x_txd", 1)}, Wrong},
    {"cut data that would be enough", {Format, BlockOfSize("tq4x_txd", 12 + 65, Data(64))}, Wrong},
    {"larger than all that is there", {Format, Texture, BlockOfSize("tq4x_mps", 0xFFFFFFFF)}, ""},
    {"larger than what is left, but not than the whole: a payload cut by the end",
     {Format, Texture, BlockOfSize("tq4x_mps", 14, Bytes{'4'})},
     Wrong},
    {"an error ends the walk",
     {TgaBlock("tq4x_mps", "9"), TgaBlock("tq4x_tfm", "no"), Texture},
     "Mipmap size is wrong: 9"},
    {"an error behind the data",
     {Format, Texture, TgaBlock("tq4x_tfm", "no")},
     "Texture format is wrong: no"},
};

TEST(TgaBlocks, WalksUntilAnEnd)
{
    for (const WalkCase& row : WalkCases) {
        SCOPED_TRACE(row.Name);
        const Read read = ReadBlocks(row.Blocks);
        EXPECT_EQ(read.Result.Message, row.Message);
        EXPECT_EQ(read.Result.Status, *row.Message == '\0' ? 0 : 1);
        if (read.Result.Status == 0) {
            EXPECT_GE(read.Image.TextureData.size(), 64u);
            EXPECT_EQ(read.Image.TextureDataSize, static_cast<std::int32_t>(read.Image.TextureData.size()));
        }
    }
}

TEST(TgaBlocks, RefusesAPictureWithoutArea)
{
    for (const auto& [width, height] : {std::pair{0, 8}, {8, 0}, {0, 0}}) {
        const Bytes file = test::TgaWithBlocks(static_cast<std::uint16_t>(width),
                                               static_cast<std::uint16_t>(height), {Format, Texture})
                               .Build();
        EXPECT_EQ(ReadFileBytes(file).Result.Message, Wrong);
    }
    const Bytes cross = test::TgaWithBlocks(3, 24, {TgaBlock("tq4x_cub", ""), Format, Texture}).Build();
    EXPECT_EQ(ReadFileBytes(cross).Result.Message, Wrong) << "faces of no width";
}

TEST(TgaBlocks, NeedsMoreThanAnyFileHoldsForAHugePicture)
{
    const Bytes file = test::TgaWithBlocks(65535, 65535,
                                           {TgaBlock("tq4x_cub", ""), TgaBlock("tq4x_tfm", "Rgba8"),
                                            TgaBlock("tq4x_mps", "8"), Texture})
                           .Build();
    EXPECT_EQ(ReadFileBytes(file).Result.Message, Wrong);
}

/// 8 x 8 grey pixels of 24 bits, with blocks behind them and an ID field that may lead there.
TgaFile PictureWithBlocks(const Bytes& id)
{
    TgaFile file;
    file.Id = id;
    file.Data = Bytes(192, 77);
    test::Append(file.Tail, Format);
    test::Append(file.Tail, TgaBlock("tq4x_txd", Data()));
    return file;
}

std::uint32_t TailOf(const TgaFile& file)
{
    return static_cast<std::uint32_t>(file.Build().size() - file.Tail.size());
}

TEST(TgaBlocks, CountsAnOffsetBehindTheMarkerAndInsideTheFile)
{
    const TgaFile marked = PictureWithBlocks(test::TgaMarker(0));
    const auto size = static_cast<std::uint32_t>(marked.Build().size());
    const std::pair<std::uint32_t, bool> rows[] = {
        {0, false},       {37, false},   {38, true},         {TailOf(marked), true},
        {size - 1, true}, {size, false}, {0xFFFFFFFF, false}};
    for (const auto& [offset, counts] : rows) {
        SCOPED_TRACE(offset);
        const Read read = ReadFileBytes(PictureWithBlocks(test::TgaMarker(offset)).Build());
        EXPECT_EQ(read.Image.HasAdditionalInfo, counts);
        EXPECT_EQ(read.Image.Pixels.empty(), counts);
        if (!counts) {
            EXPECT_EQ(read.Result.Message, "");
            EXPECT_EQ(read.Image.FormatName(), "L8") << "the pixels are grey";
            EXPECT_EQ(read.Image.AdditionalInfoOffset, 0);
        }
    }
    EXPECT_EQ(ReadFileBytes(PictureWithBlocks(test::TgaMarker(TailOf(marked))).Build()).Image.TextureData,
              Data());
}

TEST(TgaBlocks, NeedsTheWholeMarker)
{
    const std::uint32_t offset = TailOf(PictureWithBlocks(test::TgaMarker(0)));
    const Bytes good = test::TgaMarker(offset);
    Bytes longer = good;
    longer.push_back('x');
    const Bytes moved = test::TgaMarker(offset + 1);
    Bytes withMore = moved;
    withMore.push_back('x');
    EXPECT_TRUE(ReadFileBytes(PictureWithBlocks(withMore).Build()).Image.HasAdditionalInfo);
    const Bytes shorter(good.begin(), good.end() - 1);
    EXPECT_FALSE(ReadFileBytes(PictureWithBlocks(shorter).Build()).Image.HasAdditionalInfo);
    for (std::size_t i = 0; i < 16; ++i) {
        Bytes changed = good;
        changed[i] ^= 1;
        EXPECT_FALSE(ReadFileBytes(PictureWithBlocks(changed).Build()).Image.HasAdditionalInfo) << i;
    }
}

TEST(TgaBlocks, SurvivesEveryTruncation)
{
    const Bytes whole =
        test::TgaWithBlocks(8, 8, {Format, TgaBlock("tq4x_mps", "1"), TgaBlock("tq4x_cub", ""), Texture})
            .Build();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        const Read read = ReadFileBytes(cut);
        EXPECT_EQ(read.Result.Status, 1) << size;
    }
}

TEST(TgaBlocks, SurvivesEveryChangedByte)
{
    const Bytes whole = test::TgaWithBlocks(8, 8, {Format, TgaBlock("tq4x_mps", "1"), Texture}).Build();
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (const int change : {0x01, 0x80, 0xFF}) {
            Bytes changed = whole;
            changed[i] = static_cast<std::uint8_t>(changed[i] ^ change);
            const Read read = ReadFileBytes(changed);
            if (read.Result.Status == 0) {
                EXPECT_FALSE(read.Image.TextureData.empty()) << i;
            }
        }
    }
}

TEST(TgaBlocks, SetsTheAlphaKindFromTheData)
{
    const std::pair<std::uint8_t, AlphaKind> rows[] = {
        {255, AlphaKind::None}, {0, AlphaKind::Extremes}, {128, AlphaKind::Gradual}};
    for (const auto& [alpha, kind] : rows) {
        const Read read = ReadBlocks({TgaBlock("tq4x_tfm", "A8"), TgaBlock("tq4x_txd", Bytes(64, alpha))});
        EXPECT_EQ(read.Image.AlphaKind, kind) << static_cast<int>(alpha);
    }
}

} // namespace
} // namespace tq4x
