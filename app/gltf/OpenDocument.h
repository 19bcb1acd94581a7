#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>

#include "gltf/GltfDocument.h"
#include "gltf/ResolveUri.h"

namespace tq4x::gltf
{

/// A document, or why there is none: one sentence with the place it is about,
/// "/meshes/3/primitives/0 (Body): There is no accessor 9; the file has 4.".
struct OpenedDocument
{
    std::optional<Document> Content;
    std::string Error; ///< set exactly where there is no content
};

struct OpenOptions
{
    std::filesystem::path AssetRoot; ///< empty: the folder of the scene
};

/// Opens a .glb or .gltf file with its buffers. Pictures stay in their files, see `Image::File`.
[[nodiscard]] OpenedDocument OpenDocument(const std::filesystem::path& file, const OpenOptions& options);

/// The same from memory; `folders` is where the files that it names are looked for.
[[nodiscard]] OpenedDocument OpenDocument(Bytes file, const AssetFolders& folders);

} // namespace tq4x::gltf
