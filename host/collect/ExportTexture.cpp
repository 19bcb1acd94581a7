#include "collect/ExportTexture.h"

#include "collect/ShaderPorts.h"
#include "export/ExportContext.h"
#include "pipeline/ExportOptions.h"
#include "pipeline/MessageLog.h"

#include <xsi_imageclip2.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <vector>

namespace tq4x
{
namespace
{

constexpr LONG LeastSide = 8;
constexpr LONG LargestSide = 1024;

bool IsLegalSide(LONG side)
{
    return side >= LeastSide && side <= LargestSide && std::has_single_bit(static_cast<ULONG>(side));
}

bool IsTga(const XSI::CString& fileName)
{
    return EndsWithNoCase(fileName, ".tga");
}

/// Pixels of eight bits a channel, top row first.
struct Pixels
{
    std::vector<std::uint8_t> Bytes;
    bool HasAlpha = false;
};

/// Copies the rows upside down, since the host's first row is the bottom; 16-bit channels keep their high
/// byte.
template<typename Channel>
Pixels CopyPixels(const XSI::Image& picture)
{
    constexpr Channel opaque = static_cast<Channel>(~Channel{0});
    constexpr int shift = (static_cast<int>(sizeof(Channel)) - 1) * 8;
    const auto rowLength = static_cast<std::size_t>(picture.GetResX()) * 4;
    const auto rows = static_cast<std::size_t>(picture.GetResY());
    std::vector<Channel> row(rowLength);
    Pixels pixels;
    pixels.Bytes.reserve(rowLength * rows);
    const auto* bytes = static_cast<const std::uint8_t*>(picture.GetPixelArray());
    for (std::size_t y = rows; y-- > 0;) {
        std::memcpy(row.data(), bytes + y * rowLength * sizeof(Channel), rowLength * sizeof(Channel));
        for (std::size_t i = 0; i < rowLength; ++i) {
            pixels.HasAlpha |= i % 4 == 3 && row[i] != opaque;
            pixels.Bytes.push_back(static_cast<std::uint8_t>(row[i] >> shift));
        }
    }
    return pixels;
}

} // namespace

ExportTexture::ExportTexture(ExportContext& context, const XSI::CRef& clip, double time,
                             const XSI::CString& fileName)
    : ExportBase(context, clip),
      FileName(fileName),
      m_time(time)
{}

bool ExportTexture::Export()
{
    Collect();
    return true;
}

TextureImage* ExportTexture::ImageForModel()
{
    return IsTga(FileName) ? nullptr : &Image;
}

void ExportTexture::Collect()
{
    if (FileName.IsEmpty())
        return;
    Image.Clear();
    if (IsTga(FileName))
        TestTga();
    else
        TakePixels();
}

/// Loads the file for its messages alone. It is loaded again when it is written, so nothing is encoded or
/// kept.
void ExportTexture::TestTga()
{
    const std::string path = FileName.GetAsciiString();
    const LogResult result = TextureImage().Load(path, TextureUsage::Color, false);
    if (result.Status != 0)
        PrintIfWritten(result.Message + " (" + path + ").");
}

void ExportTexture::TakePixels()
{
    const std::string path = FileName.GetAsciiString();
    const XSI::Image picture = XSI::ImageClip2(Object).GetImage(m_time);
    if (picture.GetNumChannels() != 4)
        return PrintIfWritten("Only 4 channels per image supported (" + path + ").");
    const LONG width = picture.GetResX();
    const LONG height = picture.GetResY();
    if (!IsLegalSide(width) || !IsLegalSide(height))
        return PrintError("Texture size is wrong: " + path + " (" + std::to_string(width) + " x " +
                          std::to_string(height) + ")");
    Image.Path = path;
    CopyChannels(picture);
}

void ExportTexture::CopyChannels(const XSI::Image& picture)
{
    if (picture.GetPixelArray() == nullptr)
        return;
    Pixels pixels;
    switch (picture.GetChannelSize()) {
    case 1:
        pixels = CopyPixels<std::uint8_t>(picture);
        break;
    case 2:
        pixels = CopyPixels<std::uint16_t>(picture);
        break;
    case 4:
        return PrintIfWritten("Floating point image is not supported. (" + Image.Path + ").");
    default:
        return;
    }
    Image.SetPixels(pixels.Bytes, picture.GetResX(), picture.GetResY(), pixels.HasAlpha);
}

/// Tells why the texture won't be written, so that nobody has to tell it again when textures are written.
void ExportTexture::PrintError(const std::string& text)
{
    PrintMessage(text, Severity::Error);
    Context.Content.Materials.Textures.ReportedPaths.insert(FileName.GetAsciiString());
}

/// An error that matters only if textures are to be written.
void ExportTexture::PrintIfWritten(const std::string& text)
{
    if (CurrentOptions().OutputQtex)
        PrintError(text);
}

ExportTexture& FindOrCreateTexture(ExportContext& context, const XSI::CRef& clip, double time,
                                   const XSI::CString& fileName)
{
    const CollectorKey key{.ObjectID = clip.GetObjectID(), .FileName = fileName.GetAsciiString()};
    ExportBase* existing = context.Find(key);
    if (existing == nullptr)
        existing = &context.Add(key, std::make_unique<ExportTexture>(context, clip, time, fileName));
    return static_cast<ExportTexture&>(*existing);
}

} // namespace tq4x
