#pragma once

#include "material/TextureFormat.h"
#include "pipeline/MessageLog.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tq4x
{

class XmlWriter;

/// What a texture is read as. Any other value means the fixed format `Rgb565`.
enum class TextureUsage : std::int32_t
{
    Color = 0,
    NormalMap = 1,
};

/// What the alpha values of a texture are.
enum class AlphaKind : std::int32_t
{
    None = 0,     ///< no alpha, or full everywhere
    Extremes = 1, ///< only 0 and full
    Gradual = 2,  ///< anything else
};

/// Most mipmap levels that a texture may have.
inline constexpr std::int32_t MaximumMipmapSize = 8;

/// One texture: where it comes from, its pixels, and the encoded data of all faces and levels.
///
/// Operations that can fail answer in text and log nothing. After a failure the record keeps what it had so
/// far, but never pixels or data that the source did not hold.
struct TextureImage
{
    std::string Name;     ///< legal in references and file names
    std::string BaseName; ///< file name without folder and extension
    TextureFormat Format = TextureFormat::Rgb565;
    std::int32_t FileWidth = 0; ///< of the image in the file, or of the pixels handed in
    std::int32_t FileHeight = 0;
    std::int32_t Width = 0; ///< of one face
    std::int32_t Height = 0;
    bool IsCube = false;
    bool HasMipmap = false;      ///< more than one level
    std::int32_t MipmapSize = 1; ///< number of levels, 1 to 8
    std::string Path;            ///< of the source, as it was told
    bool HasAlpha = false;       ///< the source has an alpha channel
    tq4x::AlphaKind AlphaKind = tq4x::AlphaKind::None;
    TextureUsage Usage = TextureUsage::Color;
    bool IsRawImage = true;                ///< pixels come from the host and not from a TGA file
    bool HasAdditionalInfo = false;        ///< the TGA file holds blocks of a texture tool
    std::int32_t AdditionalInfoOffset = 0; ///< of the first block in the file
    std::vector<std::uint8_t> Pixels;      ///< R, G, B, A of `FileWidth` x `FileHeight` pixels, top row first
    std::vector<std::uint8_t> TextureData; ///< encoded: face after face, each with all its levels
    std::int32_t TextureDataSize = 0;      ///< bytes of `TextureData`

    /// Frees the buffers and sets every field as in a new record.
    void Clear();

    /// Reads a TGA file. A file with the blocks of a texture tool gives `TextureData` and no pixels; any
    /// other is decoded into `Pixels` and goes through `Convert`.
    LogResult Load(const std::string& path, TextureUsage usage, bool generate);

    /// Copies pixels of the host; rows from the top. Bytes that are not `width` x `height` x 4 leave no
    /// pixels.
    void SetPixels(std::span<const std::uint8_t> rgba, std::int32_t width, std::int32_t height,
                   bool hasAlpha);

    /// Tells cubes from plain images, tests the size, chooses the format, and if `generate` is set encodes
    /// `Pixels` into `TextureData`. `MipmapSize` is taken as it is.
    LogResult Convert(TextureUsage usage, bool generate);

    /// The word of `Format`.
    std::string_view FormatName() const;

    /// Writes the texture element with its Base64 text at the given level.
    LogResult WriteXml(XmlWriter& stream, int level) const;
};

} // namespace tq4x
