#pragma once

#include "material/PixelView.h"
#include "material/TextureImage.h"

#include <cstdint>
#include <span>

namespace tq4x
{

/// The alpha kind of pixels: `None` if every alpha is 255.
AlphaKind AlphaKindOfPixels(std::span<const PixelView> faces);

/// The alpha kind of encoded data: `None` for formats without alpha. An incomplete pixel at the end of the
/// data takes no part.
AlphaKind AlphaKindOfData(TextureFormat format, std::span<const std::uint8_t> data);

} // namespace tq4x
