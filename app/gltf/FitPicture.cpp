#include "gltf/FitPicture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace tq4x::gltf
{
namespace
{

constexpr std::uint32_t SmallestSide = 8;
constexpr std::uint32_t LargestSide = 1024;

/// Four channels as numbers; colours are multiplied by the alpha while they are mixed.
using Pixel = std::array<double, 4>;

class PixelAccess
{
public:
    explicit PixelAccess(std::uint32_t channelSize) : m_channelSize(channelSize) {}

    [[nodiscard]] Pixel Load(const std::uint8_t* from) const
    {
        Pixel pixel;
        for (std::size_t i = 0; i < 4; ++i) {
            std::uint16_t wide = from[i];
            if (m_channelSize == 2) {
                std::memcpy(&wide, from + 2 * i, 2);
            }
            pixel[i] = wide;
        }
        for (std::size_t i = 0; i < 3; ++i) {
            pixel[i] *= pixel[3] / Limit();
        }
        return pixel;
    }

    void Store(Pixel pixel, std::uint8_t* into) const
    {
        for (std::size_t i = 0; i < 3 && pixel[3] > 0.0; ++i) {
            pixel[i] *= Limit() / pixel[3];
        }
        for (std::size_t i = 0; i < 4; ++i) {
            const auto value = static_cast<std::uint16_t>(std::clamp(std::round(pixel[i]), 0.0, Limit()));
            if (m_channelSize == 2) {
                std::memcpy(into + 2 * i, &value, 2);
            } else {
                into[i] = static_cast<std::uint8_t>(value);
            }
        }
    }

private:
    [[nodiscard]] double Limit() const { return m_channelSize == 2 ? 65535.0 : 255.0; }

    std::uint32_t m_channelSize;
};

/// Old places that a new one covers, along one axis.
struct Cover
{
    std::uint32_t First = 0;
    std::vector<double> Shares; ///< of the new place; they sum to 1
};

std::vector<Cover> CoverAxis(std::uint32_t from, std::uint32_t to)
{
    std::vector<Cover> covers(to);
    const double length = static_cast<double>(from) / to;
    for (std::uint32_t i = 0; i < to; ++i) {
        const double start = i * length;
        const double end = std::min<double>(start + length, from);
        covers[i].First = std::min(static_cast<std::uint32_t>(start), from - 1);
        for (std::uint32_t k = covers[i].First; k < from && k < end; ++k) {
            covers[i].Shares.push_back((std::min(end, k + 1.0) - std::max<double>(start, k)) / length);
        }
    }
    return covers;
}

Pixel MixArea(const Picture& picture, const PixelAccess& access, const Cover& columns, const Cover& rows)
{
    const std::size_t pixelSize = 4 * std::size_t{picture.ChannelSize};
    Pixel mean{};
    for (std::size_t y = 0; y < rows.Shares.size(); ++y) {
        for (std::size_t x = 0; x < columns.Shares.size(); ++x) {
            const std::size_t place = (rows.First + y) * picture.Width + columns.First + x;
            const Pixel pixel = access.Load(&picture.Pixels[place * pixelSize]);
            for (std::size_t i = 0; i < 4; ++i) {
                mean[i] += pixel[i] * rows.Shares[y] * columns.Shares[x];
            }
        }
    }
    return mean;
}

} // namespace

std::uint32_t NearestTextureSide(std::uint32_t length)
{
    std::uint32_t side = SmallestSide;
    // 2 * side is nearer by ratio as soon as length / side reaches the square root of two.
    while (side < LargestSide && std::uint64_t{length} * length >= 2 * std::uint64_t{side} * side) {
        side *= 2;
    }
    return side;
}

Picture FitPicture(const Picture& picture)
{
    Picture fitted;
    fitted.Width = NearestTextureSide(picture.Width);
    fitted.Height = NearestTextureSide(picture.Height);
    fitted.ChannelSize = picture.ChannelSize;
    if (fitted.Width == picture.Width && fitted.Height == picture.Height) {
        return picture;
    }
    const std::size_t pixelSize = 4 * std::size_t{picture.ChannelSize};
    fitted.Pixels.resize(std::size_t{fitted.Width} * fitted.Height * pixelSize);
    const PixelAccess access(picture.ChannelSize);
    const std::vector<Cover> columns = CoverAxis(picture.Width, fitted.Width);
    const std::vector<Cover> rows = CoverAxis(picture.Height, fitted.Height);
    std::uint8_t* into = fitted.Pixels.data();
    for (const Cover& row : rows) {
        for (const Cover& column : columns) {
            access.Store(MixArea(picture, access, column, row), into);
            into += pixelSize;
        }
    }
    return fitted;
}

} // namespace tq4x::gltf
