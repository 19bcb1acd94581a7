#pragma once

#include <cstddef>
#include <vector>

#include <xsi_decl.h>

namespace XSI
{

/// A picture in memory: rows from the bottom to the top, channels side by side in the order R, G, B, A.
struct ImageData
{
    LONG Width = 0;
    LONG Height = 0;
    LONG Channels = 4;
    LONG ChannelSize = 1; ///< Bytes per channel: 1 and 2 unsigned integers in machine order, 4 floats.
    std::vector<std::byte> Pixels; ///< Width x Height x Channels x ChannelSize bytes.
};

} // namespace XSI
