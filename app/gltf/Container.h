#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "gltf/Note.h"

namespace tq4x::gltf
{

/// The two parts of a glTF file, as views into its bytes.
struct Container
{
    std::string_view Json;
    std::optional<std::span<const std::uint8_t>> Binary; ///< the binary chunk of a .glb
};

/// Takes a file apart: a .glb by its header, anything else as JSON text. Throws `SceneError` for a header
/// that does not hold together. Bytes behind the end that the header names are noted.
[[nodiscard]] Container SplitContainer(std::span<const std::uint8_t> file, Notes& notes);

} // namespace tq4x::gltf
