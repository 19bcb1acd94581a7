#pragma once

#include "material/PixelView.h"

#include <cstdint>

namespace tq4x
{

/// Makes the next smaller level: each channel is the sum of four neighbours, shifted right by 2. `target`
/// takes the rows without gaps; it may be the source's own memory. A side of one pixel leaves none.
PixelView ReduceMipmap(const PixelView& source, std::uint8_t* target);

} // namespace tq4x
