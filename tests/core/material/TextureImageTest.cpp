#include "material/TextureImage.h"
#include "material/ReadTga.h"
#include "pipeline/TextHelpers.h"
#include "support/PlatformGuard.h"
#include "support/TemporaryFolder.h"
#include "support/TexturePixels.h"
#include "support/TgaBuilder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace tq4x
{
namespace
{

using test::Bytes;
using test::TgaFile;

void ExpectCleared(const TextureImage& image)
{
    EXPECT_EQ(image.Name, "");
    EXPECT_EQ(image.BaseName, "");
    EXPECT_EQ(image.Format, TextureFormat::Rgb565);
    EXPECT_EQ(image.FileWidth, 0);
    EXPECT_EQ(image.FileHeight, 0);
    EXPECT_EQ(image.Width, 0);
    EXPECT_EQ(image.Height, 0);
    EXPECT_FALSE(image.IsCube);
    EXPECT_FALSE(image.HasMipmap);
    EXPECT_EQ(image.MipmapSize, 1);
    EXPECT_EQ(image.Path, "");
    EXPECT_FALSE(image.HasAlpha);
    EXPECT_EQ(image.AlphaKind, AlphaKind::None);
    EXPECT_EQ(image.Usage, TextureUsage::Color);
    EXPECT_TRUE(image.IsRawImage);
    EXPECT_FALSE(image.HasAdditionalInfo);
    EXPECT_EQ(image.AdditionalInfoOffset, 0);
    EXPECT_EQ(image.Pixels.capacity(), 0u);
    EXPECT_EQ(image.TextureData.capacity(), 0u);
    EXPECT_EQ(image.TextureDataSize, 0);
}

TEST(TextureImage, BeginsAndClearsEmpty)
{
    ExpectCleared(TextureImage());
    TextureImage image = test::PlainImage(32, 24, 0x10203040, true);
    image.Name = image.BaseName = "n";
    image.MipmapSize = 2;
    image.IsRawImage = false;
    image.HasAdditionalInfo = true;
    image.AdditionalInfoOffset = 40;
    ASSERT_EQ(image.Convert(TextureUsage::Color, true).Message, "");
    ASSERT_NE(image.TextureDataSize, 0);
    image.Clear();
    ExpectCleared(image);
}

struct FormatCase
{
    int Value;
    const char* Word;
    int Bits;
};

constexpr FormatCase FormatCases[] = {
    {0, "L4", 4},      {1, "L8", 8},      {2, "A4", 4},      {3, "A8", 8},       {4, "La4", 8},
    {5, "La8", 16},    {6, "Hilo8", 16},  {7, "Rgb565", 16}, {8, "Rgb8", 24},    {9, "Rgb5_a1", 16},
    {10, "Rgba4", 16}, {11, "Rgba8", 32}, {12, "Etc1", 4},   {13, "Etc1_a4", 8}, {14, "err", 0},
    {-1, "err", 0},    {1000, "err", 0},
};

TEST(TextureFormat, HasWordsAndBits)
{
    for (const FormatCase& row : FormatCases) {
        TextureImage image;
        image.Format = static_cast<TextureFormat>(row.Value);
        EXPECT_EQ(image.FormatName(), row.Word) << row.Value;
        EXPECT_EQ(BitsPerPixel(image.Format), row.Bits) << row.Value;
        EXPECT_EQ(FindFormat(row.Word), row.Bits > 0 ? std::optional(image.Format) : std::nullopt)
            << row.Value;
    }
}

TEST(TextureImage, TakesPixelsOfTheHost)
{
    TextureImage image;
    const Bytes pixels =
        test::MakePixels(2, 3, [](int x, int y) { return static_cast<std::uint32_t>(x + 10 * y); });
    image.SetPixels(pixels, 2, 3, true);
    EXPECT_EQ(image.FileWidth, 2);
    EXPECT_EQ(image.FileHeight, 3);
    EXPECT_TRUE(image.HasAlpha);
    EXPECT_TRUE(image.IsRawImage);
    EXPECT_EQ(image.Pixels, pixels);
}

TEST(TextureImage, KeepsNoPixelsThatAreNotAPicture)
{
    const std::pair<int, int> sizes[] = {{2, 2}, {0, 6}, {-2, -3}, {-1, -6}, {65536, 65536}, {3, 3}};
    for (const auto& [width, height] : sizes) {
        TextureImage image = test::PlainImage(8, 8, 0);
        image.SetPixels(Bytes(24), width, height, false);
        EXPECT_TRUE(image.Pixels.empty()) << width << " x " << height;
        EXPECT_EQ(image.Convert(TextureUsage::Color, true).Message, "No texture data: raw.png");
    }
}

TEST(TextureImage, ConvertsNothingWithoutPixels)
{
    TextureImage image;
    image.Path = "a.tga";
    image.FileWidth = 9; // the absence of pixels is told before the size
    const LogResult result = image.Convert(TextureUsage::Color, true);
    EXPECT_EQ(result.Status, 1);
    EXPECT_EQ(result.Message, "No texture data: a.tga");
    image.Pixels = Bytes(64);
    image.FileWidth = image.FileHeight = 8;
    EXPECT_EQ(image.Convert(TextureUsage::Color, true).Message, "No texture data: a.tga") << "too few pixels";
}

struct SizeCase
{
    int FileWidth;
    int FileHeight;
    int Width;
    int Height;
    bool IsCube;
    bool IsLegal;
};

constexpr SizeCase SizeCases[] = {
    {8, 8, 8, 8, false, true},        {1024, 8, 1024, 8, false, true},
    {16, 512, 16, 512, false, true},  {1024, 1024, 1024, 1024, false, true},
    {32, 24, 8, 8, true, true},       {64, 48, 16, 16, true, true},
    {128, 96, 32, 32, true, true},    {4, 3, 4, 3, false, false},
    {16, 12, 16, 12, false, false}, // faces of 4
    {48, 36, 48, 36, false, false}, // faces of 12
    {32, 48, 32, 48, false, false},   {64, 24, 64, 24, false, false},
    {33, 24, 33, 24, false, false},   {4, 8, 4, 8, false, false},
    {8, 4, 8, 4, false, false},       {8, 12, 8, 12, false, false},
    {100, 64, 100, 64, false, false}, {2048, 8, 2048, 8, false, false},
    {8, 2048, 8, 2048, false, false}, {1, 1, 1, 1, false, false},
};

TEST(TextureImage, TestsSizes)
{
    for (const SizeCase& row : SizeCases) {
        TextureImage image = test::PlainImage(row.FileWidth, row.FileHeight, 0x102030FF);
        const LogResult result = image.Convert(TextureUsage::Color, false);
        const std::string size = std::to_string(row.Width) + " x " + std::to_string(row.Height);
        EXPECT_EQ(result.Message, row.IsLegal ? "" : "Texture size is wrong: raw.png (" + size + ")");
        EXPECT_EQ(result.Status, row.IsLegal ? 0 : 1);
        EXPECT_EQ(image.IsCube, row.IsCube) << size;
        EXPECT_EQ(image.Width, row.Width);
        EXPECT_EQ(image.Height, row.Height);
        EXPECT_TRUE(image.TextureData.empty());
    }
}

TEST(TextureImage, NamesTheFaceOfACubeThatIsTooLarge)
{
    TgaFile file;
    file.Width = 8192;
    file.Height = 6144;
    TextureImage image;
    image.Path = "big.tga";
    EXPECT_EQ(ReadTga(image, file.Build(), TextureUsage::Color, true).Message,
              "Texture size is wrong: big.tga (2048 x 2048)");
    EXPECT_TRUE(image.IsCube);
}

TEST(TextureImage, DecodesNoPictureThatIsTooLargeOrEmpty)
{
    const std::pair<int, int> sizes[] = {{4097, 8}, {8, 3073}, {65535, 65535}, {0, 8}, {8, 0}, {0, 0}};
    for (const auto& [width, height] : sizes) {
        TgaFile file;
        file.Width = static_cast<std::uint16_t>(width);
        file.Height = static_cast<std::uint16_t>(height);
        file.Data = Bytes(200000);
        TextureImage image;
        image.Path = "a.tga";
        EXPECT_EQ(ReadTga(image, file.Build(), TextureUsage::Color, true).Message,
                  "Texture size is wrong: a.tga (" + std::to_string(width) + " x " + std::to_string(height) +
                      ")");
        EXPECT_EQ(image.Pixels.capacity(), 0u);
    }
}

TEST(TextureImage, RefusesNumbersOfLevels)
{
    for (const int levels : {-1, 0, 9, 1 << 30}) {
        TextureImage image = test::PlainImage(8, 8, 0);
        image.MipmapSize = levels;
        EXPECT_EQ(image.Convert(TextureUsage::Color, true).Message,
                  "Mipmap size is wrong: " + std::to_string(levels));
        EXPECT_TRUE(image.TextureData.empty());
    }
}

struct ChoiceCase
{
    const char* Name;
    TextureUsage Usage;
    bool HasAlpha;
    std::uint32_t First;  ///< the pixel at 0, 0
    std::uint32_t Second; ///< all others
    AlphaKind Kind;
    const char* Format;
};

constexpr auto OtherUsage = static_cast<TextureUsage>(2);

constexpr ChoiceCase ChoiceCases[] = {
    {"grey", TextureUsage::Color, false, 0x000000FF, 0x777777FF, AlphaKind::None, "L8"},
    {"colour", TextureUsage::Color, false, 0x000000FF, 0x777776FF, AlphaKind::None, "Rgb565"},
    {"green tells", TextureUsage::Color, false, 0x000100FF, 0x777777FF, AlphaKind::None, "Rgb565"},
    {"red tells", TextureUsage::Color, false, 0x010000FF, 0x777777FF, AlphaKind::None, "Rgb565"},
    {"grey, full alpha", TextureUsage::Color, true, 0x000000FF, 0x777777FF, AlphaKind::None, "L8"},
    {"grey, alpha of extremes", TextureUsage::Color, true, 0x00000000, 0x777777FF, AlphaKind::Extremes,
     "La8"},
    {"grey, gradual alpha", TextureUsage::Color, true, 0x00000001, 0x777777FF, AlphaKind::Gradual, "La8"},
    {"colour, full alpha", TextureUsage::Color, true, 0x000000FF, 0x007777FF, AlphaKind::None, "Rgb565"},
    {"colour, alpha of extremes", TextureUsage::Color, true, 0x00000000, 0x007777FF, AlphaKind::Extremes,
     "Rgba4"},
    {"colour, gradual alpha", TextureUsage::Color, true, 0x00000000, 0x007777FE, AlphaKind::Gradual, "Rgba4"},
    {"alpha that is not told", TextureUsage::Color, false, 0x00000000, 0x00777780, AlphaKind::None, "Rgb565"},
    {"no alpha anywhere", TextureUsage::Color, true, 0x11223300, 0x11223300, AlphaKind::Extremes, "Rgba4"},
    {"normal map", TextureUsage::NormalMap, false, 0x8080FFFF, 0x7F80FFFF, AlphaKind::None, "Hilo8"},
    {"grey normal map with alpha", TextureUsage::NormalMap, true, 0, 0x77777780, AlphaKind::None, "Hilo8"},
    {"other usage", OtherUsage, true, 0, 0x77777780, AlphaKind::None, "Rgb565"},
};

TEST(TextureImage, ChoosesTheFormat)
{
    for (const ChoiceCase& row : ChoiceCases) {
        const Bytes pixels =
            test::MakePixels(8, 8, [&](int x, int y) { return x + y == 0 ? row.First : row.Second; });
        TextureImage image = test::RawImage(8, 8, pixels, row.HasAlpha);
        image.AlphaKind = AlphaKind::Gradual; // of a former conversion
        EXPECT_EQ(image.Convert(row.Usage, false).Message, "") << row.Name;
        EXPECT_EQ(image.AlphaKind, row.Kind) << row.Name;
        EXPECT_EQ(image.FormatName(), row.Format) << row.Name;
        EXPECT_EQ(image.Usage, row.Usage) << row.Name;
    }
}

TEST(TextureImage, JudgesTheFacesOfACubeAlone)
{
    const auto isInCross = [](int x, int y) { return y / 8 == 1 || x / 8 == 1; };
    const Bytes pixels =
        test::MakePixels(32, 24, [&](int x, int y) { return isInCross(x, y) ? 0x556655FFu : 0x0000FF80u; });
    TextureImage image = test::RawImage(32, 24, pixels, true);
    EXPECT_EQ(image.Convert(TextureUsage::Color, false).Message, "");
    EXPECT_EQ(image.AlphaKind, AlphaKind::None);
    EXPECT_EQ(image.FormatName(), "Rgb565");

    TextureImage grey = test::RawImage(
        32, 24,
        test::MakePixels(32, 24, [&](int x, int y) { return isInCross(x, y) ? 0x555555FFu : 0x0000FF80u; }),
        true);
    EXPECT_EQ(grey.Convert(TextureUsage::Color, false).Message, "");
    EXPECT_EQ(grey.FormatName(), "L8");
}

TEST(TextureImage, JudgesEveryFaceOfACube)
{
    for (const auto& [column, row] : {std::pair{2, 1}, {0, 1}, {1, 0}, {1, 2}, {1, 1}, {3, 1}}) {
        const auto isMarked = [&](int x, int y) { return x == column * 8 + 7 && y == row * 8 + 7; };
        TextureImage image = test::RawImage(
            32, 24,
            test::MakePixels(32, 24,
                             [&](int x, int y) { return isMarked(x, y) ? 0x01020380u : 0x555555FFu; }),
            true);
        EXPECT_EQ(image.Convert(TextureUsage::Color, false).Message, "");
        EXPECT_EQ(image.FormatName(), "Rgba4") << column << " " << row;
        EXPECT_EQ(image.AlphaKind, AlphaKind::Gradual);
    }
}

void WriteBytes(const std::filesystem::path& path, const Bytes& bytes)
{
    std::ofstream stream(path, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

TgaFile GreyFile()
{
    TgaFile file;
    file.ImageType = 3;
    file.PixelBits = 8;
    file.Descriptor = 8;
    file.Data = Bytes(64, 100);
    return file;
}

TEST(TextureImage, LoadsATgaFile)
{
    const test::TemporaryFolder folder;
    const std::string path = (folder / "my grey.v2.TgA").string();
    WriteBytes(path, GreyFile().Build());
    TextureImage image = test::PlainImage(32, 24, 0, true);
    image.MipmapSize = 4;
    EXPECT_EQ(image.Load(path, TextureUsage::Color, true).Message, "");
    EXPECT_EQ(image.Path, path);
    EXPECT_EQ(image.BaseName, "my grey.v2");
    EXPECT_EQ(image.Name, "my_grey.v2");
    EXPECT_FALSE(image.IsRawImage);
    EXPECT_FALSE(image.HasAlpha) << "grey of one byte has none, whatever the descriptor says";
    EXPECT_FALSE(image.HasAdditionalInfo);
    EXPECT_EQ(image.MipmapSize, 1);
    EXPECT_EQ(image.FormatName(), "L8");
    EXPECT_EQ(image.TextureData, Bytes(64, 100));

    EXPECT_EQ(image.Load(image.Path, TextureUsage::NormalMap, false).Message, "");
    EXPECT_EQ(image.FormatName(), "Hilo8");
    EXPECT_TRUE(image.TextureData.empty());
    EXPECT_FALSE(image.Pixels.empty());
}

TEST(TextureImage, LoadsColourWithAlphaOfExtremes)
{
    const test::TemporaryFolder folder;
    const std::string path = (folder / "a.tga").string();
    TgaFile file;
    file.PixelBits = 32;
    file.Descriptor = 8;
    for (int i = 0; i < 64; ++i)
        test::Append(file.Data, Bytes{1, 2, 3, static_cast<std::uint8_t>(i % 2 * 255)});
    WriteBytes(path, file.Build());
    TextureImage image;
    EXPECT_EQ(image.Load(path, TextureUsage::Color, true).Message, "");
    EXPECT_EQ(image.AlphaKind, AlphaKind::Extremes);
    EXPECT_EQ(image.FormatName(), "Rgba4");
}

TEST(TextureImage, RefusesOtherExtensions)
{
    for (const std::string path :
         {"a.png", "a", "a.tga.png", "a.tgaa", "a.tg", "tga", "a.tga/b", "a. tga", "a.tga "}) {
        TextureImage image = test::PlainImage(8, 8, 0);
        const LogResult result = image.Load(path, TextureUsage::Color, true);
        EXPECT_EQ(result.Status, 1);
        EXPECT_EQ(result.Message, "Image type is not supported: " + path);
        EXPECT_EQ(image.Path, path);
        EXPECT_TRUE(image.Pixels.empty());
        EXPECT_TRUE(image.IsRawImage);
    }
}

TEST(TextureImage, TellsFilesThatCannotBeOpened)
{
    const test::TemporaryFolder folder;
    std::filesystem::create_directory(folder / "folder.tga");
    for (const char* name : {"missing.tga", "folder.tga"}) {
        const std::string path = (folder / name).string();
        TextureImage image;
        const LogResult result = image.Load(path, TextureUsage::Color, true);
        EXPECT_EQ(result.Status, 1);
        EXPECT_EQ(result.Message, "Can't open file: " + path);
    }
}

TEST(TextureImage, ReadsNoFileOfAnySize)
{
    const test::TemporaryFolder folder;
    const std::string path = (folder / "large.tga").string();
    WriteBytes(path, GreyFile().Build());
    std::filesystem::resize_file(path, (std::uintmax_t{256} << 20) + 1); // without blocks on the disk
    TextureImage image;
    EXPECT_EQ(image.Load(path, TextureUsage::Color, true).Message, "Can't open file: " + path);
}

TEST(TextureImage, NamesThePathInWhatIsWrongWithAFile)
{
    const test::TemporaryFolder folder;
    const std::string path = (folder / "bad.tga").string();
    const auto loaded = [&](const TgaFile& file) {
        WriteBytes(path, file.Build());
        TextureImage image;
        LogResult result = image.Load(path, TextureUsage::Color, true);
        EXPECT_EQ(result.Status, 1);
        return result.Message;
    };
    TgaFile type = GreyFile();
    type.ImageType = 5;
    EXPECT_EQ(loaded(type), "TGA file is wrong: (invalid image type): " + path);
    TgaFile bits = GreyFile();
    bits.PixelBits = 4;
    EXPECT_EQ(loaded(bits), "TGA file is wrong: (invalid bit per pixel): " + path);
    TgaFile cut = GreyFile();
    cut.Data.pop_back();
    EXPECT_EQ(loaded(cut), "TGA file is wrong: (unexpected end of file): " + path);
    TgaFile size = GreyFile();
    size.Width = 4;
    EXPECT_EQ(loaded(size), "Texture size is wrong: " + path + " (4 x 8)");
}

TEST(TextureImage, TakesBaseNameAndNameByCharacters)
{
    const test::PlatformGuard guard;
    SetSystemCodePage(CodePageShiftJis);
    TextureImage image;
    // The second byte of the middle character looks like a backslash.
    EXPECT_EQ(image.Load("d\\\x83\x5C x.png", TextureUsage::Color, true).Status, 1);
    EXPECT_EQ(image.BaseName, "\x83\x5C x");
    EXPECT_EQ(image.Name, "__x");
}

} // namespace
} // namespace tq4x
