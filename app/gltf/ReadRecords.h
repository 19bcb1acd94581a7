#pragma once

#include <functional>
#include <string_view>

#include "gltf/GltfDocument.h"
#include "gltf/JsonPlace.h"

/// The parts of reading a document's JSON, in the order in which they run; each fills its lists and checks
/// every index against the lists of the file. All throw `SceneError`.
namespace tq4x::gltf
{

/// The length of a top-level list, 0 where it is absent.
[[nodiscard]] std::size_t ListSize(const JsonPlace& root, std::string_view list);

/// Calls `read` for each object of a top-level list.
void ForEachItem(const JsonPlace& root, std::string_view list,
                 const std::function<void(const JsonPlace&)>& read);

/// `asset`, `extensionsUsed` and `extensionsRequired`: refuses other versions and required extensions that
/// are not read, notes used ones.
void ReadAsset(const JsonPlace& root, Document& document);
void ReadBuffers(const JsonPlace& root, Document& document); ///< and buffer views
void ReadAccessors(const JsonPlace& root, Document& document);
void ReadTextures(const JsonPlace& root, Document& document); ///< images, samplers, textures
void ReadMaterials(const JsonPlace& root, Document& document);
void ReadMeshes(const JsonPlace& root, Document& document);
void ReadCameras(const JsonPlace& root, Document& document);
void ReadLights(const JsonPlace& root, Document& document);
void ReadNodes(const JsonPlace& root, Document& document); ///< with parents; refuses all but forests
void ReadSkins(const JsonPlace& root, Document& document);
void ReadAnimations(const JsonPlace& root, Document& document);
void ReadScenes(const JsonPlace& root, Document& document);

/// All of them.
[[nodiscard]] Document ReadRecords(const JsonValue& root);

} // namespace tq4x::gltf
