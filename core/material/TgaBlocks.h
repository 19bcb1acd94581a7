#pragma once

#include "material/TgaHeader.h"
#include "pipeline/MessageLog.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tq4x
{

struct TextureImage;

/// Where a texture tool put its blocks into a TGA file; nothing if the ID field does not bear the tool's
/// marker, or names a place inside the header or behind the end of the file.
std::optional<std::uint32_t> FindTgaBlocks(const TgaHeader& header, std::span<const std::uint8_t> file);

/// Reads the blocks of a texture tool: format, cube flag, number of levels and encoded data. Sets the size of
/// a face and the alpha kind.
///
/// Needs `Path`, `FileWidth`, `FileHeight` and an `AdditionalInfoOffset` inside the file. A wrong format or
/// number of levels ends the walk at once. Data that is absent, cut off by the end of the file, or too short
/// for all faces and levels gives "Additional information is wrong: " and the path.
LogResult ReadTgaBlocks(TextureImage& image, std::span<const std::uint8_t> file);

} // namespace tq4x
