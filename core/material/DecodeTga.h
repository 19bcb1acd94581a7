#pragma once

#include "material/TgaHeader.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tq4x
{

/// Decodes the picture of a TGA file into R, G, B, A bytes, top row first, whatever the order in the file.
///
/// The caller bounds the size of the picture. Nothing is allocated for a file that is too short for it even
/// in the densest coding. A failure leaves no pixels. Indices outside the colour map are opaque black; runs
/// may cross rows, and what goes beyond the last pixel is cut off.
LogResult DecodeTga(std::vector<std::uint8_t>& pixels, const TgaHeader& header,
                    std::span<const std::uint8_t> file, const std::string& path);

} // namespace tq4x
