#pragma once

#include "material/PixelView.h"
#include "material/TextureImage.h"

#include <span>

namespace tq4x
{

/// True if red, green and blue are equal in every pixel.
bool IsGrey(std::span<const PixelView> faces);

/// The format for pixels of the host or of a plain TGA file. `alphaKind` counts for colour alone.
TextureFormat ChooseFormat(TextureUsage usage, AlphaKind alphaKind, std::span<const PixelView> faces);

} // namespace tq4x
