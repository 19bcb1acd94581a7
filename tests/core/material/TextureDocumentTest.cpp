#include "material/TextureImage.h"
#include "material/TextureSet.h"
#include "pipeline/TextHelpers.h"
#include "pipeline/XmlWriter.h"
#include "support/Golden.h"
#include "support/MessageRecorder.h"
#include "support/PlatformGuard.h"
#include "support/TextureDecoder.h"
#include "support/TexturePixels.h"
#include "support/TgaBuilder.h"
#include "support/WrittenFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

namespace tq4x
{
namespace
{

using test::Bytes;
using test::MessageRecorder;
using test::WrittenFolder;
using testing::ElementsAre;
using testing::IsEmpty;

void WriteBytes(const std::filesystem::path& path, const Bytes& bytes)
{
    std::ofstream stream(path, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

FrameRecord FixedRecord()
{
    return {"ann", "2013-04-09T08:07:06", "scene.scn", "TQ4X_ForPennonExport for Softimage 2013", "0.5.3"};
}

std::set<std::string> FilesIn(const WrittenFolder& folder)
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
        if (entry.is_regular_file())
            names.insert(entry.path().filename().string());
    return names;
}

/// A grey ramp to the right and down, other values for each face of a cube.
TextureImage Ramp(int width, int height)
{
    return test::RawImage(width, height,
                          test::MakePixels(width, height,
                                           [](int x, int y) {
                                               return static_cast<std::uint32_t>(4 * x + y) * 0x01010100u +
                                                      0xFF;
                                           }),
                          false);
}

TEST(TextureDocument, WritesAPlainTexture)
{
    const WrittenFolder folder;
    TextureImage image = test::RawImage(
        8, 8,
        test::MakePixels(
            8, 8, [](int x, int y) { return static_cast<std::uint32_t>((x << 29) + (y << 21) + 0x4FFF); }),
        false);
    image.Path = "C:\\scenes\\wood bark.png";
    image.MipmapSize = 2;
    TextureSet set;
    set.MetaData = FixedRecord();
    EXPECT_EQ(set.Add(image.Path, false, &image), "wood_bark");
    EXPECT_TRUE(set.WriteFiles(folder.Path().string()));
    test::ExpectGolden(test::ReadWholeFile(folder / "wood_bark.qtex"), "core/material/plain.qtex");
}

TEST(TextureDocument, WritesACube)
{
    const WrittenFolder folder;
    TextureImage image = Ramp(32, 24);
    image.Path = "sky.tga";
    TextureSet set;
    set.MetaData = FixedRecord();
    EXPECT_EQ(set.Add("sky.tga", false, &image), "sky");
    EXPECT_TRUE(set.WriteFiles(folder.Path().string()));
    test::ExpectGolden(test::ReadWholeFile(folder / "sky.qtex"), "core/material/cube.qtex");
}

/// The texts that stand alone on the lines of level 6.
std::vector<std::string> Base64Lines(const std::string& document)
{
    std::vector<std::string> lines;
    std::istringstream stream(document);
    for (std::string line; std::getline(stream, line);)
        if (line.starts_with("\t\t\t\t\t\t") && line.find('<') == std::string::npos)
            lines.push_back(line.substr(6));
    return lines;
}

Bytes DecodeBase64(const std::string& text)
{
    const std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    Bytes bytes;
    unsigned bits = 0;
    int count = 0;
    for (const char c : text.substr(0, text.find('='))) {
        bits = (bits << 6 | static_cast<unsigned>(alphabet.find(c))) & 0xFFFF;
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes.push_back(static_cast<std::uint8_t>(bits >> count));
        }
    }
    return bytes;
}

std::string TextOf(const TextureImage& image)
{
    XmlWriter stream;
    EXPECT_EQ(image.WriteXml(stream, 3).Message, "");
    return stream.Text();
}

TEST(TextureDocument, HoldsTheDataOfAllFacesAndLevels)
{
    std::mt19937 random(31);
    for (const auto& [width, height, usage] :
         {std::tuple{64, 48, TextureUsage::Color}, {128, 64, TextureUsage::NormalMap}}) {
        TextureImage image = test::RawImage(width, height, test::RandomPixels(width, height, random), true);
        image.MipmapSize = 4;
        ASSERT_EQ(image.Convert(usage, true).Message, "");
        const std::vector<std::string> lines = Base64Lines(TextOf(image));
        EXPECT_EQ(lines.size(), image.IsCube ? 24u : 4u);
        Bytes data;
        for (const std::string& line : lines)
            test::Append(data, DecodeBase64(line));
        EXPECT_EQ(data, image.TextureData);
    }
}

TEST(TextureDocument, HoldsOneImageOf128Bytes)
{
    TextureImage image = test::PlainImage(8, 8, 0x102030FF);
    ASSERT_EQ(image.Convert(TextureUsage::Color, true).Message, "");
    const std::vector<std::string> lines = Base64Lines(TextOf(image));
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].size(), 172u);
    EXPECT_EQ(DecodeBase64(lines[0]).size(), 128u);
}

TEST(TextureDocument, StandsAtTheLevelThatIsAskedFor)
{
    TextureImage image = test::PlainImage(8, 8, 0x102030FF);
    ASSERT_EQ(image.Convert(TextureUsage::Color, true).Message, "");
    XmlWriter stream;
    EXPECT_EQ(image.WriteXml(stream, 1).Status, 0);
    EXPECT_TRUE(stream.Text().starts_with("\t<ImageTextureQtr Name=\"\" Width=\"8\""));
    EXPECT_EQ(stream.Level(), 0);
}

TEST(TextureDocument, WritesNothingWithoutData)
{
    TextureImage image = test::PlainImage(8, 8, 0x102030FF);
    image.Path = "p.png";
    const auto expectRefusal = [&](const char* name) {
        XmlWriter stream;
        const LogResult result = image.WriteXml(stream, 3);
        EXPECT_EQ(result.Status, 1) << name;
        EXPECT_EQ(result.Message, "No texture data: p.png") << name;
        EXPECT_EQ(stream.Text(), "") << name;
    };
    expectRefusal("not converted");
    ASSERT_EQ(image.Convert(TextureUsage::Color, true).Message, "");
    image.MipmapSize = 2;
    expectRefusal("more levels than there is data for");
}

TEST(TextureDocument, TurnsThePathIntoUtf8)
{
    const test::PlatformGuard guard;
    SetSystemCodePage(CodePageShiftJis);
    TextureImage image = test::PlainImage(8, 8, 0x102030FF);
    ASSERT_EQ(image.Convert(TextureUsage::Color, true).Message, "");
    image.Path = "d\\\x83\x5C.tga";
    EXPECT_THAT(TextOf(image), testing::HasSubstr("Path=\"d\\\xE3\x82\xBD.tga\""));
}

TEST(TextureDocument, LeavesThePathAsItStands)
{
    TextureImage image = test::PlainImage(8, 8, 0x102030FF);
    ASSERT_EQ(image.Convert(TextureUsage::Color, true).Message, "");
    image.Path = "a & b/<c>.tga";
    EXPECT_THAT(TextOf(image), testing::HasSubstr("Path=\"a & b/<c>.tga\""));
}

TEST(TextureFiles, StandInTheFolderWhateverEndsItsName)
{
    for (const char* end : {"", "/", "\\"}) {
        const WrittenFolder folder;
        TextureImage image = test::PlainImage(8, 8, 0x102030FF);
        TextureSet set;
        set.MetaData = FixedRecord();
        set.Add("d/a.png", false, &image);
        EXPECT_TRUE(set.WriteFiles(folder.Path().string() + end));
        EXPECT_THAT(FilesIn(folder), ElementsAre("a.qtex")) << end;
    }
}

TEST(TextureFiles, KeepTheDataOfATool)
{
    const WrittenFolder folder;
    Bytes data;
    for (int i = 0; i < 6 * 64; ++i)
        data.push_back(static_cast<std::uint8_t>(i * 5));
    const std::string path = (folder / "made.tga").string();
    WriteBytes(path,
               test::TgaWithBlocks(32, 24,
                                   {test::TgaBlock("tq4x_tfm", "Etc1_a4"), test::TgaBlock("tq4x_cub", ""),
                                    test::TgaBlock("tq4x_txd", data), test::TgaBlock("tq4x_end", "")})
                   .Build());
    const MessageRecorder recorder;
    TextureSet set;
    set.MetaData = FixedRecord();
    set.Add(path, true, nullptr);
    EXPECT_TRUE(set.WriteFiles(folder.Path().string()));
    EXPECT_THAT(recorder.Messages(), IsEmpty());
    const std::string document = test::ReadWholeFile(folder / "made.qtex");
    EXPECT_THAT(document,
                testing::HasSubstr("<CubeTextureQtr Name=\"\" Width=\"8\" Height=\"8\" MipmapSize=\"1\""));
    EXPECT_THAT(document, testing::HasSubstr("Format=\"Etc1_a4\""));
    Bytes written;
    for (const std::string& line : Base64Lines(document))
        test::Append(written, DecodeBase64(line));
    EXPECT_EQ(written, data);
}

TEST(TextureFiles, LoadTgaFilesAsTheirEntrySays)
{
    const WrittenFolder folder;
    test::TgaFile file;
    file.Data = Bytes(192, 77);
    for (const char* name : {"color.tga", "normal.tga"})
        WriteBytes(folder / name, file.Build());
    TextureSet set;
    set.MetaData = FixedRecord();
    set.Add((folder / "color.tga").string(), false, nullptr);
    set.Add((folder / "normal.tga").string(), true, nullptr);
    EXPECT_TRUE(set.WriteFiles(folder.Path().string()));
    EXPECT_THAT(test::ReadWholeFile(folder / "color.qtex"), testing::HasSubstr("Format=\"L8\""));
    EXPECT_THAT(test::ReadWholeFile(folder / "normal.qtex"), testing::HasSubstr("Format=\"Hilo8\""));
}

TEST(TextureFiles, ConvertImagesAsTheirEntrySays)
{
    const WrittenFolder folder;
    TextureImage image = test::PlainImage(8, 8, 0x777777FF);
    TextureSet set;
    set.MetaData = FixedRecord();
    set.Add("n.png", true, &image);
    EXPECT_TRUE(set.WriteFiles(folder.Path().string()));
    EXPECT_EQ(image.FormatName(), "Hilo8");
    EXPECT_EQ(image.Usage, TextureUsage::NormalMap);
    EXPECT_THAT(test::ReadWholeFile(folder / "n.qtex"), testing::HasSubstr("Format=\"Hilo8\""));
}

TEST(TextureFiles, EndAtTheFirstThatCannotBeOpened)
{
    const WrittenFolder folder;
    std::filesystem::create_directory(folder / "b.qtex");
    TextureImage image = test::PlainImage(8, 8, 0x777777FF);
    TextureSet set;
    set.MetaData = FixedRecord();
    for (const char* path : {"3/a.png", "1/c.png", "2/b.png"})
        set.Add(path, false, &image);
    const MessageRecorder recorder;
    EXPECT_FALSE(set.WriteFiles(folder.Path().string()));
    EXPECT_THAT(FilesIn(folder), ElementsAre("c.qtex")) << "the order is that of the source paths";
    EXPECT_THAT(recorder.Messages(), ElementsAre("E Can't open file(" + (folder / "b.qtex").string() + ")"));
}

TEST(TextureFiles, PassOverWhatCannotBeMade)
{
    const WrittenFolder folder;
    const std::string cut = (folder / "cut.tga").string();
    const std::string empty = (folder / "empty.tga").string();
    WriteBytes(cut, test::TgaFile().Build());
    WriteBytes(empty, test::TgaWithBlocks(8, 8, {test::TgaBlock("tq4x_end", "")}).Build());
    TextureImage good = test::PlainImage(8, 8, 0x777777FF);
    TextureImage odd = test::PlainImage(12, 8, 0x777777FF);
    TextureImage none;
    TextureSet set;
    set.MetaData = FixedRecord();
    set.Add("a.png", false, &none);
    set.Add("b.png", false, &odd);
    set.Add("z.png", false, &good);
    set.Add("c.bmp", false, nullptr);
    set.Add("missing.tga", false, nullptr);
    set.Add(cut, false, nullptr);
    set.Add(empty, false, nullptr);
    const MessageRecorder recorder;
    EXPECT_TRUE(set.WriteFiles(folder.Path().string()));
    EXPECT_THAT(FilesIn(folder), ElementsAre("cut.tga", "empty.tga", "z.qtex"));
    EXPECT_THAT(recorder.Messages(),
                ElementsAre("E TGA file is wrong: (unexpected end of file): " + cut + " (" + cut + ").",
                            "E Additional information is wrong: " + empty + " (" + empty + ").",
                            "E No texture data:  (a.png).",
                            "E Texture size is wrong: raw.png (12 x 8) (b.png).",
                            "E Image type is not supported: c.bmp (c.bmp).",
                            "E Can't open file: missing.tga (missing.tga)."));
}

TEST(TextureFiles, SayNothingTwice)
{
    const WrittenFolder folder;
    TextureSet set;
    set.MetaData = FixedRecord();
    set.Add("missing.tga", false, nullptr);
    set.Add("other.tga", false, nullptr);
    set.ReportedPaths.insert("missing.tga");
    const MessageRecorder recorder;
    EXPECT_TRUE(set.WriteFiles(folder.Path().string()));
    EXPECT_THAT(recorder.Messages(), ElementsAre("E Can't open file: other.tga (other.tga)."));
}

TEST(TextureFiles, WriteNothingForNoEntry)
{
    const WrittenFolder folder;
    EXPECT_TRUE(TextureSet().WriteFiles((folder / "absent").string()));
    EXPECT_THAT(FilesIn(folder), IsEmpty());
}

} // namespace
} // namespace tq4x
