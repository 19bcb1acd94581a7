#include <objbase.h>
#include <wincodec.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <optional>

#include "gltf/DecodeImage.h"
#include "gltf/PngHeader.h"

// Pictures are decoded by the system's imaging component, which hands out the pixels in the form that suits
// the file best. They are brought to four channels here and not by the component's own converters: these
// would apply colour profiles, and round.

namespace tq4x::gltf
{
namespace
{

/// The first failing step of decoding.
struct Refusal
{
    HRESULT Code;
};

void Demand(HRESULT code)
{
    if (FAILED(code)) {
        throw Refusal{code};
    }
}

/// Owns a reference to an object of the component.
template<class T>
class Owned
{
public:
    Owned() = default;
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;

    ~Owned()
    {
        if (m_object != nullptr) {
            m_object->Release();
        }
    }

    T** Place() { return &m_object; }

    T* operator->() const { return m_object; }

    T* Get() const { return m_object; }

private:
    T* m_object = nullptr;
};

/// The component needs the thread to have said that it uses such objects. Where it already did so in another
/// way, that way is good too.
class ThreadEntry
{
public:
    ThreadEntry() : m_result(CoInitializeEx(nullptr, COINIT_MULTITHREADED)) {}

    ThreadEntry(const ThreadEntry&) = delete;
    ThreadEntry& operator=(const ThreadEntry&) = delete;

    ~ThreadEntry()
    {
        if (SUCCEEDED(m_result)) {
            CoUninitialize();
        }
    }

private:
    HRESULT m_result;
};

/// What the bits of a pixel mean.
enum class PixelKind
{
    Indexed,
    Gray,
    Bgr,
    Bgra,
    Rgb,
    Rgba,
    Inks, ///< cyan, magenta, yellow, black; the greater, the darker
};

struct PixelLayout
{
    const GUID* Format;
    PixelKind Kind;
    unsigned ChannelBits;
    unsigned ChannelCount;
};

const PixelLayout Layouts[] = {
    {&GUID_WICPixelFormat1bppIndexed, PixelKind::Indexed, 1, 1},
    {&GUID_WICPixelFormat2bppIndexed, PixelKind::Indexed, 2, 1},
    {&GUID_WICPixelFormat4bppIndexed, PixelKind::Indexed, 4, 1},
    {&GUID_WICPixelFormat8bppIndexed, PixelKind::Indexed, 8, 1},
    {&GUID_WICPixelFormatBlackWhite, PixelKind::Gray, 1, 1},
    {&GUID_WICPixelFormat2bppGray, PixelKind::Gray, 2, 1},
    {&GUID_WICPixelFormat4bppGray, PixelKind::Gray, 4, 1},
    {&GUID_WICPixelFormat8bppGray, PixelKind::Gray, 8, 1},
    {&GUID_WICPixelFormat16bppGray, PixelKind::Gray, 16, 1},
    {&GUID_WICPixelFormat24bppBGR, PixelKind::Bgr, 8, 3},
    {&GUID_WICPixelFormat24bppRGB, PixelKind::Rgb, 8, 3},
    {&GUID_WICPixelFormat32bppBGR, PixelKind::Bgr, 8, 4},
    {&GUID_WICPixelFormat32bppBGRA, PixelKind::Bgra, 8, 4},
    {&GUID_WICPixelFormat32bppRGBA, PixelKind::Rgba, 8, 4},
    {&GUID_WICPixelFormat48bppRGB, PixelKind::Rgb, 16, 3},
    {&GUID_WICPixelFormat64bppRGBA, PixelKind::Rgba, 16, 4},
    {&GUID_WICPixelFormat32bppCMYK, PixelKind::Inks, 8, 4},
};

PixelLayout FindLayout(const GUID& format)
{
    for (const PixelLayout& layout : Layouts) {
        if (IsEqualGUID(*layout.Format, format)) {
            return layout;
        }
    }
    throw Refusal{WINCODEC_ERR_UNSUPPORTEDPIXELFORMAT};
}

/// The pixels as the component hands them out; rows begin at whole bytes.
struct RawPicture
{
    std::uint32_t Width = 0;
    std::uint32_t Height = 0;
    std::size_t RowSize = 0;
    PixelLayout Layout{};
    std::vector<std::uint8_t> Rows;
    std::vector<WICColor> Palette; ///< alpha, red, green, blue from the highest byte on
};

/// Value of a channel of a row, small ones from the highest bit of each byte on, 16-bit ones in the machine's
/// order.
unsigned ReadChannel(const std::uint8_t* row, std::size_t index, unsigned bits)
{
    if (bits == 16) {
        std::uint16_t value = 0;
        std::memcpy(&value, row + index * 2, 2);
        return value;
    }
    const std::size_t bit = index * bits;
    return (row[bit / 8] >> (8 - bits - bit % 8)) & ((1u << bits) - 1u);
}

using Channels = std::array<unsigned, 4>;

Channels ReadIndexed(const RawPicture& raw, unsigned index)
{
    if (index >= raw.Palette.size()) {
        throw Refusal{WINCODEC_ERR_BADIMAGE};
    }
    const WICColor color = raw.Palette[index];
    return {(color >> 16) & 255u, (color >> 8) & 255u, color & 255u, color >> 24};
}

/// One pixel of a row as red, green, blue, alpha. `key` is the colour that the file calls transparent.
Channels ReadPixel(const RawPicture& raw, const std::uint8_t* row, std::size_t x,
                   const std::optional<std::array<unsigned, 3>>& key)
{
    const PixelLayout& layout = raw.Layout;
    const std::size_t first = x * layout.ChannelCount;
    const auto channel = [&](std::size_t i) { return ReadChannel(row, first + i, layout.ChannelBits); };
    const unsigned full = (1u << layout.ChannelBits) - 1u;
    const auto alphaOf = [&](unsigned red, unsigned green, unsigned blue) {
        return key && *key == std::array{red, green, blue} ? 0u : full;
    };
    switch (layout.Kind) {
    case PixelKind::Indexed:
        return ReadIndexed(raw, channel(0));
    case PixelKind::Gray: {
        const unsigned scale = layout.ChannelBits < 8 ? 255u / full : 1u;
        const unsigned gray = channel(0);
        const unsigned alpha = alphaOf(gray, gray, gray);
        return {gray * scale, gray * scale, gray * scale, alpha * scale};
    }
    case PixelKind::Bgr:
        return {channel(2), channel(1), channel(0), alphaOf(channel(2), channel(1), channel(0))};
    case PixelKind::Bgra:
        return {channel(2), channel(1), channel(0), channel(3)};
    case PixelKind::Rgb:
        return {channel(0), channel(1), channel(2), alphaOf(channel(0), channel(1), channel(2))};
    case PixelKind::Rgba:
        return {channel(0), channel(1), channel(2), channel(3)};
    case PixelKind::Inks: {
        const unsigned light = 255u - channel(3);
        return {(255u - channel(0)) * light / 255u, (255u - channel(1)) * light / 255u,
                (255u - channel(2)) * light / 255u, 255u};
    }
    }
    return {};
}

Picture ExpandPicture(const RawPicture& raw, const std::optional<std::array<unsigned, 3>>& key)
{
    Picture picture;
    picture.Width = raw.Width;
    picture.Height = raw.Height;
    picture.ChannelSize = raw.Layout.ChannelBits == 16 ? 2 : 1;
    picture.Pixels.resize(std::size_t{raw.Width} * raw.Height * 4 * picture.ChannelSize);
    std::uint8_t* into = picture.Pixels.data();
    for (std::size_t y = 0; y < raw.Height; ++y) {
        const std::uint8_t* const row = raw.Rows.data() + y * raw.RowSize;
        for (std::size_t x = 0; x < raw.Width; ++x) {
            for (const unsigned value : ReadPixel(raw, row, x, key)) {
                const auto wide = static_cast<std::uint16_t>(value);
                const auto narrow = static_cast<std::uint8_t>(value);
                std::memcpy(into, picture.ChannelSize == 2 ? static_cast<const void*>(&wide) : &narrow,
                            picture.ChannelSize);
                into += picture.ChannelSize;
            }
        }
    }
    return picture;
}

void ReadPalette(IWICImagingFactory& factory, IWICBitmapFrameDecode& frame, RawPicture& raw)
{
    Owned<IWICPalette> palette;
    Demand(factory.CreatePalette(palette.Place()));
    Demand(frame.CopyPalette(palette.Get()));
    UINT count = 0;
    Demand(palette->GetColorCount(&count));
    raw.Palette.resize(count);
    Demand(palette->GetColors(count, raw.Palette.data(), &count));
}

/// The first picture of a file. A size out of range leaves the rows empty: nothing of that size is allocated.
RawPicture ReadRaw(IWICImagingFactory& factory, std::span<const std::uint8_t> file, const GUID& container)
{
    Owned<IWICStream> stream;
    Demand(factory.CreateStream(stream.Place()));
    Demand(stream->InitializeFromMemory(const_cast<BYTE*>(file.data()), static_cast<DWORD>(file.size())));
    Owned<IWICBitmapDecoder> decoder;
    Demand(factory.CreateDecoder(container, nullptr, decoder.Place()));
    Demand(decoder->Initialize(stream.Get(), WICDecodeMetadataCacheOnDemand));
    Owned<IWICBitmapFrameDecode> frame;
    Demand(decoder->GetFrame(0, frame.Place()));
    RawPicture raw;
    Demand(frame->GetSize(&raw.Width, &raw.Height));
    if (!CheckPictureSize(raw.Width, raw.Height).empty()) {
        return raw;
    }
    GUID format{};
    Demand(frame->GetPixelFormat(&format));
    raw.Layout = FindLayout(format);
    const std::size_t rowBits = std::size_t{raw.Width} * raw.Layout.ChannelBits * raw.Layout.ChannelCount;
    raw.RowSize = (rowBits + 7) / 8;
    raw.Rows.resize(raw.RowSize * raw.Height);
    Demand(frame->CopyPixels(nullptr, static_cast<UINT>(raw.RowSize), static_cast<UINT>(raw.Rows.size()),
                             raw.Rows.data()));
    if (raw.Layout.Kind == PixelKind::Indexed) {
        ReadPalette(factory, *frame.Get(), raw);
    }
    return raw;
}

std::string DamageText(const char* format, HRESULT code)
{
    std::array<char, 16> number;
    std::snprintf(number.data(), number.size(), "0x%08lx", static_cast<unsigned long>(code));
    return std::string("The ") + format + " file is damaged: the system's decoder answers " + number.data() +
           ".";
}

DecodedImage Decode(std::span<const std::uint8_t> file, const GUID& container, const char* format,
                    const std::optional<std::array<unsigned, 3>>& key)
{
    try {
        const ThreadEntry thread;
        Owned<IWICImagingFactory> factory;
        Demand(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                IID_IWICImagingFactory, reinterpret_cast<void**>(factory.Place())));
        const RawPicture raw = ReadRaw(*factory.Get(), file, container);
        const std::string problem = CheckPictureSize(raw.Width, raw.Height);
        return problem.empty() ? DecodedImage{ExpandPicture(raw, key), {}} : DecodedImage{{}, problem};
    } catch (const Refusal& refusal) {
        return {{}, DamageText(format, refusal.Code)};
    }
}

} // namespace

DecodedImage DecodePng(std::span<const std::uint8_t> file)
{
    const PngHeader header = ReadPngHeader(file);
    if (!header.Error.empty()) {
        return {{}, header.Error};
    }
    return Decode(file, GUID_ContainerFormatPng, "PNG", header.TransparentColor);
}

DecodedImage DecodeJpeg(std::span<const std::uint8_t> file)
{
    return Decode(file, GUID_ContainerFormatJpeg, "JPEG", std::nullopt);
}

} // namespace tq4x::gltf
