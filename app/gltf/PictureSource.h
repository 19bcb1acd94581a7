#pragma once

#include <string>
#include <vector>

#include "gltf/DecodeImage.h"
#include "gltf/GltfDocument.h"

namespace tq4x::gltf
{

/// Reads and decodes a picture of a document, from its file or from where it is embedded.
[[nodiscard]] DecodedImage ReadPicture(const Document& document, std::size_t image);

/// Whether the picture is a .tga file, which the exporter reads itself.
[[nodiscard]] bool IsTgaFile(const Image& image);

/// A file name for each picture as the host knows it: the path of a file; for an embedded picture its name,
/// or "image3", with an extension, no two alike.
[[nodiscard]] std::vector<std::string> NamePictures(const Document& document);

} // namespace tq4x::gltf
