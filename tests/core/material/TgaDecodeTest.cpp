#include "material/DecodeTga.h"
#include "support/TgaBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace tq4x
{
namespace
{

using test::Bytes;
using test::TgaFile;

struct Decoded
{
    LogResult Result;
    Bytes Pixels;
};

Decoded Decode(const Bytes& file)
{
    TgaHeader header;
    Decoded decoded;
    decoded.Result = ReadTgaHeader(header, file, "t.tga");
    if (decoded.Result.Status == 0)
        decoded.Result = DecodeTga(decoded.Pixels, header, file, "t.tga");
    return decoded;
}

/// A picture of one row.
TgaFile Row(std::uint8_t imageType, std::uint8_t bits, std::uint16_t width, Bytes data)
{
    TgaFile file;
    file.ImageType = imageType;
    file.PixelBits = bits;
    file.Width = width;
    file.Height = 1;
    file.Data = std::move(data);
    return file;
}

TgaFile MappedRow(std::uint8_t entryBits, std::uint16_t first, std::uint16_t length, const Bytes& map,
                  const Bytes& data)
{
    TgaFile file = Row(1, 8, static_cast<std::uint16_t>(data.size()), data);
    file.MapType = 1;
    file.MapFirst = first;
    file.MapLength = length;
    file.MapEntryBits = entryBits;
    file.Map = map;
    return file;
}

struct DecodeCase
{
    const char* Name;
    TgaFile File;
    Bytes Pixels;
};

const DecodeCase DecodeCases[] = {
    {"grey", Row(3, 8, 2, {0, 200}), {0, 0, 0, 255, 200, 200, 200, 255}},
    {"grey of 16 bits is read as five bits each", Row(3, 16, 1, {0x1F, 0x7C}), {255, 0, 255, 255}},
    {"16 bits",
     Row(2, 16, 3, {0x00, 0x7C, 0xE0, 0x03, 0x1F, 0x00}),
     {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255}},
    {"five bits widen by their own high bits", Row(2, 16, 1, {0x81, 0x40}), {132, 33, 8, 255}},
    {"bit 15 of 16 bits means nothing", Row(2, 16, 2, {0, 0x80, 0, 0}), {0, 0, 0, 255, 0, 0, 0, 255}},
    {"bit 15 of 15 bits means nothing", Row(2, 15, 1, {0xFF, 0xFF}), {255, 255, 255, 255}},
    {"24 bits", Row(2, 24, 1, {1, 2, 3}), {3, 2, 1, 255}},
    {"32 bits", Row(2, 32, 1, {1, 2, 3, 4}), {3, 2, 1, 4}},
    {"colour of 8 bits is grey", Row(2, 8, 1, {9}), {9, 9, 9, 255}},
    {"grey of 24 bits is colour", Row(3, 24, 1, {1, 2, 3}), {3, 2, 1, 255}},
    {"mapped type without a map is grey", Row(1, 8, 1, {7}), {7, 7, 7, 255}},
    {"map of 8 bits gives alpha too", MappedRow(8, 0, 2, {10, 20}, {1, 0}), {20, 20, 20, 20, 10, 10, 10, 10}},
    {"map of 15 bits", MappedRow(15, 0, 1, {0xFF, 0xFF}, {0}), {255, 255, 255, 255}},
    {"map of 16 bits", MappedRow(16, 0, 2, {0, 0, 0x00, 0x7C}, {1}), {255, 0, 0, 255}},
    {"map of 24 bits", MappedRow(24, 0, 1, {1, 2, 3}, {0}), {3, 2, 1, 255}},
    {"map of 32 bits", MappedRow(32, 0, 1, {1, 2, 3, 4}, {0}), {3, 2, 1, 4}},
    {"entries before the first are black",
     MappedRow(24, 2, 1, {1, 2, 3}, {0, 1, 2}),
     {0, 0, 0, 255, 0, 0, 0, 255, 3, 2, 1, 255}},
    {"indices behind the map are black",
     MappedRow(24, 0, 1, {1, 2, 3}, {1, 255}),
     {0, 0, 0, 255, 0, 0, 0, 255}},
    {"a map that ends at the largest index", MappedRow(8, 65535, 1, {9}, {255}), {0, 0, 0, 255}},
    {"a map without entries asks for no bits", MappedRow(0, 0, 0, {}, {0}), {0, 0, 0, 255}},
};

TEST(TgaDecode, ReadsEveryKindOfPixel)
{
    for (const DecodeCase& row : DecodeCases) {
        SCOPED_TRACE(row.Name);
        const Decoded decoded = Decode(row.File.Build());
        EXPECT_EQ(decoded.Result.Message, "");
        EXPECT_EQ(decoded.Pixels, row.Pixels);
    }
}

TEST(TgaDecode, ReadsIndicesOfTwoBytesUnlessPixelsHaveEightBits)
{
    for (const std::uint8_t bits : Bytes{15, 16, 24, 32}) {
        SCOPED_TRACE(static_cast<int>(bits));
        TgaFile file = MappedRow(24, 300, 1, {1, 2, 3}, {0x2C, 0x01, 0x2D, 0x01});
        file.PixelBits = bits;
        file.Width = 2;
        EXPECT_EQ(Decode(file.Build()).Pixels, (Bytes{3, 2, 1, 255, 0, 0, 0, 255}));
    }
}

TEST(TgaDecode, PassesOverAMapThatNobodyUses)
{
    for (const auto& [entryBits, mapSize] : {std::pair{24, 6}, {15, 4}, {12, 4}, {0, 0}, {255, 64}}) {
        SCOPED_TRACE(entryBits);
        TgaFile file = Row(2, 24, 1, {1, 2, 3});
        file.MapType = 1;
        file.MapLength = 2;
        file.MapEntryBits = static_cast<std::uint8_t>(entryBits);
        file.Map = Bytes(static_cast<std::size_t>(mapSize), 0xEE);
        const Decoded decoded = Decode(file.Build());
        EXPECT_EQ(decoded.Result.Message, "");
        EXPECT_EQ(decoded.Pixels, (Bytes{3, 2, 1, 255}));
    }
}

TEST(TgaDecode, PassesOverTheIdField)
{
    TgaFile file = Row(2, 24, 1, {1, 2, 3});
    file.Id = Bytes(255, 0x11);
    EXPECT_EQ(Decode(file.Build()).Pixels, (Bytes{3, 2, 1, 255}));
}

TEST(TgaDecode, RefusesMapEntriesOfOtherSizes)
{
    for (const int bits : {0, 1, 12, 48, 255}) {
        SCOPED_TRACE(bits);
        const TgaFile file = MappedRow(static_cast<std::uint8_t>(bits), 0, 1, Bytes(32), {0});
        EXPECT_EQ(Decode(file.Build()).Result.Message, "TGA file is wrong: (invalid bit per pixel): t.tga");
    }
}

/// 3 x 5 grey pixels whose value is ten times the row from the top plus the column from the left.
Bytes DecodeGrid(std::uint8_t descriptor)
{
    TgaFile file;
    file.ImageType = 3;
    file.PixelBits = 8;
    file.Width = 3;
    file.Height = 5;
    file.Descriptor = descriptor;
    for (std::uint8_t i = 0; i < 15; ++i)
        file.Data.push_back(i);
    const Bytes pixels = Decode(file.Build()).Pixels;
    Bytes greys;
    for (std::size_t i = 0; i < pixels.size(); i += 4)
        greys.push_back(pixels[i]);
    return greys;
}

TEST(TgaDecode, PlacesRowsAsTheDescriptorSays)
{
    struct Row
    {
        const char* Name;
        std::uint8_t Descriptor;
        Bytes Greys;
    };

    const Row rows[] = {
        {"from the top", 0x20, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}},
        {"from the bottom", 0x00, {12, 13, 14, 9, 10, 11, 6, 7, 8, 3, 4, 5, 0, 1, 2}},
        {"from the right", 0x30, {2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12}},
        {"from the bottom right", 0x10, {14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0}},
        {"two ways", 0x60, {0, 1, 2, 9, 10, 11, 3, 4, 5, 12, 13, 14, 6, 7, 8}},
        {"four ways", 0xA0, {0, 1, 2, 6, 7, 8, 9, 10, 11, 12, 13, 14, 3, 4, 5}},
        {"two ways, then flipped", 0x40, {6, 7, 8, 12, 13, 14, 3, 4, 5, 9, 10, 11, 0, 1, 2}},
        {"the fourth interleave is none", 0xE0, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(DecodeGrid(row.Descriptor), row.Greys) << row.Name;
}

struct RunCase
{
    const char* Name;
    std::uint16_t Width;
    std::uint16_t Height;
    Bytes Data;
    Bytes Greys;
};

const RunCase RunCases[] = {
    {"a run", 3, 1, {0x82, 7}, {7, 7, 7}},
    {"pixels as they are", 3, 1, {0x02, 1, 2, 3}, {1, 2, 3}},
    {"both", 4, 1, {0x80, 9, 0x00, 1, 0x81, 5}, {9, 1, 5, 5}},
    {"a run over rows", 2, 3, {0x84, 7, 0x00, 1}, {7, 7, 7, 7, 7, 1}},
    {"plain pixels over rows", 2, 2, {0x03, 1, 2, 3, 4}, {1, 2, 3, 4}},
    {"a run that is too long", 2, 1, {0xFF, 7}, {7, 7}},
    {"plain pixels that are too many", 2, 1, {0x7F, 1, 2}, {1, 2}},
    {"bytes behind the last pixel", 1, 1, {0x80, 7, 0xFF, 0xFF}, {7}},
};

TEST(TgaDecode, UnpacksRuns)
{
    for (const RunCase& row : RunCases) {
        SCOPED_TRACE(row.Name);
        TgaFile file = Row(11, 8, row.Width, row.Data);
        file.Height = row.Height;
        file.Descriptor = 0x20;
        const Decoded decoded = Decode(file.Build());
        EXPECT_EQ(decoded.Result.Message, "");
        Bytes greys;
        for (std::size_t i = 0; i < decoded.Pixels.size(); i += 4)
            greys.push_back(decoded.Pixels[i]);
        EXPECT_EQ(greys, row.Greys);
    }
}

TEST(TgaDecode, TellsWhereAFileEndsEarly)
{
    std::mt19937 random(5);
    const Bytes mapped = MappedRow(24, 0, 2, {1, 2, 3, 4, 5, 6}, {0, 1, 0}).Build();
    const Bytes plain = Row(2, 32, 3, Bytes(12, 4)).Build();
    const Bytes runs = Row(10, 24, 4, {0x81, 1, 2, 3, 0x01, 1, 2, 3, 4, 5, 6}).Build();
    for (const Bytes& whole : {mapped, plain, runs}) {
        EXPECT_EQ(Decode(whole).Result.Message, "");
        for (std::size_t size = 0; size < whole.size(); ++size) {
            SCOPED_TRACE(size);
            const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            const Decoded decoded = Decode(cut);
            EXPECT_EQ(decoded.Result.Message, "TGA file is wrong: (unexpected end of file): t.tga");
            EXPECT_TRUE(decoded.Pixels.empty());
        }
    }
}

TEST(TgaDecode, AllocatesNothingForAHeaderThatLies)
{
    for (const std::uint8_t type : Bytes{1, 2, 3, 9, 10, 11}) {
        TgaFile file = Row(type, 32, 4096, Bytes(64));
        file.Height = 3072;
        const Decoded decoded = Decode(file.Build());
        EXPECT_EQ(decoded.Result.Message, "TGA file is wrong: (unexpected end of file): t.tga");
        EXPECT_EQ(decoded.Pixels.capacity(), 0u);
    }
}

/// What the kinds of pixels store, and what they are read as: the table of the format written once more.
struct Kind
{
    const char* Name;
    std::uint8_t ImageType;
    std::uint8_t PixelBits;
    std::size_t Size;
};

constexpr Kind Kinds[] = {
    {"grey", 3, 8, 1},     {"15 bits", 2, 15, 2},    {"16 bits", 2, 16, 2},    {"24 bits", 2, 24, 3},
    {"32 bits", 2, 32, 4}, {"short index", 1, 8, 1}, {"long index", 1, 16, 2},
};

constexpr std::size_t MapSize = 40;

Bytes ExpectedPixel(const Kind& kind, const std::uint8_t* stored, const Bytes& map)
{
    const auto widen = [](int bits) { return static_cast<std::uint8_t>((bits & 31) * 33 / 4); };
    if (kind.ImageType == 1) {
        const std::size_t index = kind.Size == 1 ? stored[0] : stored[0] + 256u * stored[1];
        if (index >= MapSize)
            return {0, 0, 0, 255};
        return {map[index * 4 + 2], map[index * 4 + 1], map[index * 4], map[index * 4 + 3]};
    }
    const int word = kind.Size == 2 ? stored[0] + 256 * stored[1] : 0;
    switch (kind.PixelBits) {
    case 8:
        return {stored[0], stored[0], stored[0], 255};
    case 24:
        return {stored[2], stored[1], stored[0], 255};
    case 32:
        return {stored[2], stored[1], stored[0], stored[3]};
    default:
        return {widen(word / 1024), widen(word / 32), widen(word), 255};
    }
}

/// Few different values, so that runs come about.
Bytes RandomPixels(const Kind& kind, std::size_t count, std::mt19937& random)
{
    Bytes stored;
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0 && random() % 3 != 0) {
            test::Append(stored, Bytes(stored.end() - static_cast<std::ptrdiff_t>(kind.Size), stored.end()));
            continue;
        }
        for (std::size_t k = 0; k < kind.Size; ++k)
            stored.push_back(
                static_cast<std::uint8_t>(kind.ImageType == 1 ? (k == 0 ? random() % 48 : 0) : random()));
    }
    return stored;
}

TEST(TgaDecode, GivesBackEveryPictureWhateverItsOrderAndCoding)
{
    constexpr unsigned seed = 20130409;
    std::mt19937 random(seed);
    for (int round = 0; round < 400; ++round) {
        const Kind& kind = Kinds[random() % std::size(Kinds)];
        TgaFile file;
        file.Width = static_cast<std::uint16_t>(1 + random() % 40);
        file.Height = static_cast<std::uint16_t>(1 + random() % 20);
        file.PixelBits = kind.PixelBits;
        file.Descriptor = static_cast<std::uint8_t>(random() % 16 * 16);
        const bool isCoded = random() % 2 == 0;
        file.ImageType = static_cast<std::uint8_t>(kind.ImageType + (isCoded ? 8 : 0));
        if (kind.ImageType == 1) {
            file.MapType = 1;
            file.MapLength = MapSize;
            file.MapEntryBits = 32;
            for (std::size_t i = 0; i < MapSize * 4; ++i)
                file.Map.push_back(static_cast<std::uint8_t>(random()));
        }
        const std::size_t count = std::size_t{file.Width} * file.Height;
        const Bytes stored = RandomPixels(kind, count, random);
        const auto ordered = test::TgaPixelOrder(stored, file.Width, file.Height, kind.Size, file.Descriptor);
        file.Data = isCoded ? test::TgaRunLengthData(ordered, random) : test::TgaPlainData(ordered);

        Bytes expected;
        for (std::size_t i = 0; i < count; ++i)
            test::Append(expected, ExpectedPixel(kind, &stored[i * kind.Size], file.Map));
        const Decoded decoded = Decode(file.Build());
        ASSERT_EQ(decoded.Result.Message, "") << "seed " << seed << " round " << round << " " << kind.Name;
        ASSERT_EQ(decoded.Pixels, expected) << "seed " << seed << " round " << round << " " << kind.Name;
    }
}

} // namespace
} // namespace tq4x
