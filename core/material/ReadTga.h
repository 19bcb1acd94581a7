#pragma once

#include "material/TextureImage.h"

#include <cstdint>
#include <span>

namespace tq4x
{

/// Fills a cleared image, whose `Path` is set, from the bytes of a TGA file: the data of a texture tool if
/// the file holds its blocks, else the decoded picture, converted. A picture that is too large for any
/// texture is not decoded.
LogResult ReadTga(TextureImage& image, std::span<const std::uint8_t> file, TextureUsage usage, bool generate);

} // namespace tq4x
