#include "RandomPictures.h"

#include "ReadTexture.h"
#include "scene/CreateMaterials.h"
#include "scene/ImageData.h"
#include "support/TgaBuilder.h"

#include <fstream>

namespace tq4x::test
{
namespace
{

/// Pixels from the top; alpha runs from full to anything.
SourcePicture DrawPixels(RandomDraw& draw, bool isCross)
{
    SourcePicture picture;
    picture.Width = isCross ? 32 : draw.Of<int>({8, 16, 32});
    picture.Height = isCross ? 24 : draw.Of<int>({8, 16, 64});
    const bool isGrey = draw.Chance(30);
    const int alpha = draw.Int(0, 2); // full, full or nothing, anything
    for (int i = 0; i < picture.Width * picture.Height; ++i) {
        const std::uint8_t red = draw.Byte();
        const std::uint8_t green = isGrey ? red : draw.Byte();
        const std::uint8_t blue = isGrey ? red : draw.Byte();
        const int opacity = alpha == 0 ? 255 : alpha == 1 ? 255 * draw.Int(0, 1) : draw.Byte();
        picture.Pixels.insert(picture.Pixels.end(), {red, green, blue, static_cast<std::uint8_t>(opacity)});
        picture.HasAlpha |= opacity != 255;
    }
    return picture;
}

/// The host's rows run from the bottom. Of two bytes the low one is lost on the way.
std::shared_ptr<XSI::ImageData> ImageOf(const SourcePicture& picture, RandomDraw& draw)
{
    auto image = std::make_shared<XSI::ImageData>();
    image->Width = picture.Width;
    image->Height = picture.Height;
    image->ChannelSize = draw.Chance(25) ? 2 : 1;
    const auto row = static_cast<std::size_t>(picture.Width) * 4;
    for (auto y = static_cast<std::size_t>(picture.Height); y-- > 0;)
        for (std::size_t i = 0; i < row; ++i) {
            const std::uint8_t byte = picture.Pixels[y * row + i];
            if (image->ChannelSize == 2)
                image->Pixels.push_back(static_cast<std::byte>(i % 4 == 3 ? byte : draw.Byte()));
            image->Pixels.push_back(static_cast<std::byte>(byte));
        }
    return image;
}

void WriteFile(const std::filesystem::path& path, const Bytes& bytes)
{
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

/// A file of 8, 24 or 32 bits a pixel, its rows and columns either way round.
void WriteTga(const std::filesystem::path& path, SourcePicture& picture, RandomDraw& draw)
{
    const int channels = draw.Of<int>({1, 3, 4});
    Bytes stored;
    for (std::size_t i = 0; i < picture.Pixels.size(); i += 4) {
        std::uint8_t* pixel = &picture.Pixels[i];
        if (channels < 4)
            pixel[3] = 255;
        if (channels == 1)
            pixel[1] = pixel[2] = pixel[0];
        const Bytes bytes = {pixel[2], pixel[1], pixel[0], pixel[3]};
        stored.insert(stored.end(), bytes.begin(), bytes.begin() + channels);
    }
    TgaFile file;
    file.ImageType = channels == 1 ? 3 : 2;
    file.Width = static_cast<std::uint16_t>(picture.Width);
    file.Height = static_cast<std::uint16_t>(picture.Height);
    file.PixelBits = static_cast<std::uint8_t>(channels * 8);
    file.Descriptor = static_cast<std::uint8_t>((channels == 4 ? 8 : 0) | draw.Int(0, 3) << 4);
    file.Data = TgaPlainData(TgaPixelOrder(stored, static_cast<std::size_t>(picture.Width),
                                           static_cast<std::size_t>(picture.Height),
                                           static_cast<std::size_t>(channels), file.Descriptor));
    picture.HasAlpha = channels == 4;
    WriteFile(path, file.Build());
}

/// A file whose texture is ready, with its levels.
void WriteEncoded(const std::filesystem::path& path, SourcePicture& picture, RandomDraw& draw)
{
    picture = {};
    picture.Width = picture.Height = 32;
    picture.Format = draw.Of<std::string>({"L4", "L8", "A4", "A8", "La4", "La8", "Hilo8", "Rgb565", "Rgb8",
                                           "Rgb5_a1", "Rgba4", "Rgba8", "Etc1", "Etc1_a4"});
    picture.LevelCount = draw.Int(1, 3);
    int pixels = 0;
    for (int level = 0; level < picture.LevelCount; ++level)
        pixels += (picture.Width >> level) * (picture.Height >> level);
    for (int i = 0; i < pixels * reader::BitsPerPixel(picture.Format) / 8; ++i)
        picture.Encoded.push_back(draw.Byte());
    WriteFile(path, TgaWithBlocks(32, 32,
                                  {TgaBlock("tq4x_tfm", picture.Format),
                                   TgaBlock("tq4x_mps", std::to_string(picture.LevelCount)),
                                   TgaBlock("tq4x_txd", picture.Encoded), TgaBlock("tq4x_end", "")})
                        .Build());
}

} // namespace

std::vector<XSI::ImageClip2> DrawPictures(RandomDraw& draw, const std::filesystem::path& folder,
                                          SourcePictures& pictures)
{
    std::vector<XSI::ImageClip2> clips;
    const int count = draw.Int(1, 4);
    for (int i = 0; i < count; ++i) {
        const bool isFile = draw.Chance(30);
        const std::string name = "picture" + std::to_string(i) + (isFile ? ".tga" : ".png");
        const std::string path = isFile ? (folder / name).string() : name;
        const XSI::ImageClip2 clip = XSI::Host::CreateImageClip(name, path);
        SourcePicture picture = DrawPixels(draw, isFile && draw.Chance(25)); // crosses come in files only
        if (!isFile) {
            XSI::Host::SetPixels(clip, ImageOf(picture, draw));
        } else {
            if (draw.Chance(40))
                WriteEncoded(path, picture, draw);
            else
                WriteTga(path, picture, draw);
            pictures[path] = picture;
        }
        clips.push_back(clip);
    }
    return clips;
}

void MakeSequences(RandomDraw& draw, const std::vector<XSI::ImageClip2>& clips,
                   const std::filesystem::path& folder, int first, int last, SourcePictures& pictures)
{
    for (std::size_t i = 0; i < clips.size(); ++i) {
        if (first >= last || !draw.Chance(20)) // a window of one frame shows none
            continue;
        const std::string name = (folder / ("reel" + std::to_string(i) + "_")).string();
        const int low = draw.Int(1, 3);
        const int count = draw.Int(1, 4);
        for (int number = low; number < low + count; ++number) {
            const std::string path = name + "0" + std::to_string(number) + ".tga";
            SourcePicture picture = DrawPixels(draw, false);
            WriteTga(path, picture, draw);
            pictures[path] = picture;
        }
        const std::string range =
            "[" + std::to_string(low) + ".." + std::to_string(low + count - 1) + ";2].tga";
        XSI::Host::SetSequence(clips[i], name + range, draw.Int(1, 2), low + count,
                               draw.Int(first, first + 2), draw.Of<double>({0.5, 1.0, 1.0, 2.0}));
    }
}

} // namespace tq4x::test
