#include "material/TgaHeader.h"
#include "support/TgaBuilder.h"

#include <gtest/gtest.h>

namespace tq4x
{
namespace
{

struct HeaderCase
{
    const char* Name;
    std::uint8_t ImageType;
    std::uint8_t PixelBits;
    const char* Message;
};

constexpr HeaderCase HeaderCases[] = {
    {"mapped", 1, 8, ""},
    {"colour", 2, 24, ""},
    {"grey", 3, 8, ""},
    {"mapped runs", 9, 16, ""},
    {"colour runs", 10, 32, ""},
    {"grey runs", 11, 15, ""},
    {"no picture", 0, 24, "TGA file is wrong: (invalid image type): a/b.tga"},
    {"type 4", 4, 24, "TGA file is wrong: (invalid image type): a/b.tga"},
    {"type 8", 8, 24, "TGA file is wrong: (invalid image type): a/b.tga"},
    {"type 12", 12, 24, "TGA file is wrong: (invalid image type): a/b.tga"},
    {"type 32, compressed otherwise", 32, 24, "TGA file is wrong: (invalid image type): a/b.tga"},
    {"type 255", 255, 24, "TGA file is wrong: (invalid image type): a/b.tga"},
    {"no bits", 2, 0, "TGA file is wrong: (invalid bit per pixel): a/b.tga"},
    {"one bit", 2, 1, "TGA file is wrong: (invalid bit per pixel): a/b.tga"},
    {"17 bits", 2, 17, "TGA file is wrong: (invalid bit per pixel): a/b.tga"},
    {"64 bits", 2, 64, "TGA file is wrong: (invalid bit per pixel): a/b.tga"},
    {"the type is told before the bits", 0, 0, "TGA file is wrong: (invalid image type): a/b.tga"},
};

TEST(TgaHeader, TestsTypeAndBits)
{
    for (const HeaderCase& row : HeaderCases) {
        SCOPED_TRACE(row.Name);
        test::TgaFile file;
        file.ImageType = row.ImageType;
        file.PixelBits = row.PixelBits;
        TgaHeader header;
        const LogResult result = ReadTgaHeader(header, file.Build(), "a/b.tga");
        EXPECT_EQ(result.Message, row.Message);
        EXPECT_EQ(result.Status, *row.Message == '\0' ? 0 : 1);
    }
}

TEST(TgaHeader, ReadsItsFieldsLittleEndian)
{
    test::TgaFile file;
    file.MapType = 1;
    file.ImageType = 9;
    file.MapFirst = 0x0102;
    file.MapLength = 0x0304;
    file.MapEntryBits = 15;
    file.Width = 0x0506;
    file.Height = 0xFFFE;
    file.PixelBits = 16;
    file.Descriptor = 0x35;
    file.Id = test::Bytes(7);
    TgaHeader header;
    ASSERT_EQ(ReadTgaHeader(header, file.Build(), "").Status, 0);
    EXPECT_EQ(header.IdLength, 7);
    EXPECT_EQ(header.MapFirst, 0x0102u);
    EXPECT_EQ(header.MapLength, 0x0304u);
    EXPECT_EQ(header.MapEntryBits, 15);
    EXPECT_EQ(header.Width, 0x0506);
    EXPECT_EQ(header.Height, 0xFFFE);
    EXPECT_EQ(header.Descriptor, 0x35);
    EXPECT_TRUE(header.IsColorMapped());
    EXPECT_TRUE(header.IsRunLengthCoded());
    EXPECT_TRUE(header.IsTopToBottom());
    EXPECT_TRUE(header.IsRightToLeft());
}

TEST(TgaHeader, NeedsEighteenBytes)
{
    const test::Bytes whole = test::TgaFile().Build();
    for (std::size_t size = 0; size < 18; ++size) {
        SCOPED_TRACE(size);
        TgaHeader header;
        const test::Bytes file(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(ReadTgaHeader(header, file, "x.tga").Message,
                  "TGA file is wrong: (unexpected end of file): x.tga");
    }
}

struct AlphaCase
{
    const char* Name;
    std::uint8_t MapType;
    std::uint8_t ImageType;
    std::uint8_t MapEntryBits;
    std::uint8_t PixelBits;
    std::uint8_t Descriptor;
    bool HasAlpha;
};

constexpr AlphaCase AlphaCases[] = {
    {"colour with alpha bits", 0, 2, 0, 32, 8, true},
    {"colour of 32 bits without alpha bits", 0, 2, 0, 32, 0, false},
    {"any of the low four bits", 0, 10, 0, 16, 1, true},
    {"directions are not alpha", 0, 2, 0, 32, 0xF0, false},
    {"grey of 8 bits never", 0, 3, 0, 8, 8, false},
    {"grey runs of 8 bits never", 0, 11, 0, 8, 15, false},
    {"grey of 16 bits", 0, 3, 0, 16, 8, true},
    {"map of 32 bits", 1, 1, 32, 8, 0, true},
    {"map of 24 bits, whatever the descriptor says", 1, 9, 24, 8, 8, false},
    {"colour with a map asks the descriptor", 1, 2, 32, 24, 0, false},
    {"mapped type without a map asks the descriptor", 0, 1, 32, 8, 8, true},
};

TEST(TgaHeader, TellsWhetherThereIsAlpha)
{
    for (const AlphaCase& row : AlphaCases) {
        TgaHeader header;
        header.MapType = row.MapType;
        header.ImageType = row.ImageType;
        header.MapEntryBits = row.MapEntryBits;
        header.PixelBits = row.PixelBits;
        header.Descriptor = row.Descriptor;
        EXPECT_EQ(header.HasAlpha(), row.HasAlpha) << row.Name;
    }
}

TEST(TgaHeader, KnowsTheInterleaves)
{
    const std::pair<std::uint8_t, TgaInterleave> rows[] = {
        {0x00, TgaInterleave::None},    {0x3F, TgaInterleave::None}, {0x40, TgaInterleave::TwoWay},
        {0x80, TgaInterleave::FourWay}, {0xC0, TgaInterleave::None},
    };
    for (const auto& [descriptor, interleave] : rows) {
        TgaHeader header;
        header.Descriptor = descriptor;
        EXPECT_EQ(header.Interleave(), interleave) << static_cast<int>(descriptor);
    }
}

} // namespace
} // namespace tq4x
