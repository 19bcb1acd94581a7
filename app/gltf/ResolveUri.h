#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tq4x::gltf
{

/// Where the files of a scene may lie.
struct AssetFolders
{
    std::filesystem::path Base; ///< folder of the scene: relative addresses start here
    std::filesystem::path Root; ///< files outside are refused; empty: `Base`
};

/// Turns "%20" and the like into bytes, once. A "%" without two hexadecimal digits stays.
[[nodiscard]] std::string DecodePercent(std::string_view text);

/// The file that a relative address stands for. Throws `SceneError` for addresses with a scheme, absolute
/// ones, and those that lead out of the folders, by ".." or by a symbolic link; the text names --asset-root.
/// A file that does not exist is no error here. `place` is the JSON pointer of the address.
[[nodiscard]] std::filesystem::path ResolveUri(const std::string& uri, const AssetFolders& folders,
                                               const std::string& place);

/// Whether the address is a data: URI, which holds its bytes itself.
[[nodiscard]] bool IsDataUri(std::string_view uri);

/// The bytes of a data: URI, in base64 or percent-encoded. Throws `SceneError` for damaged ones.
[[nodiscard]] std::vector<std::uint8_t> DecodeDataUri(std::string_view uri, const std::string& place);

} // namespace tq4x::gltf
