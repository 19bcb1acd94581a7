#pragma once

#include <string>
#include <vector>

#include "gltf/GltfDocument.h"
#include "gltf/JsonValue.h"

namespace tq4x::cli
{

/// What is in a glTF scene, in numbers. Triangles and vertices count once for each mesh, not for each use.
struct SceneInfo
{
    std::string Generator;
    std::size_t Nodes = 0;
    std::size_t Levels = 0; ///< of the deepest node
    std::size_t Meshes = 0;
    std::size_t Triangles = 0;
    std::size_t Vertices = 0;
    std::size_t Skins = 0;
    std::size_t Materials = 0;
    std::size_t Images = 0;
    std::size_t Cameras = 0;
    std::size_t Lights = 0;

    struct Clip
    {
        std::string Name;
        double Seconds = 0.0; ///< time of the last key
        std::size_t Channels = 0;
    };

    std::vector<Clip> Clips;
    std::vector<std::string> Extensions;
    gltf::Notes Unread;
};

/// Counts; throws `gltf::SceneError` for indices and key times that make no sense.
[[nodiscard]] SceneInfo DescribeScene(const gltf::Document& document);

[[nodiscard]] std::string FormatInfo(const SceneInfo& info);
[[nodiscard]] gltf::JsonValue InfoAsJson(const SceneInfo& info);

} // namespace tq4x::cli
