#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "gltf/CoordinateSets.h"
#include "gltf/GltfDocument.h"

namespace tq4x::gltf
{

/// Values of one name, some for each vertex.
struct VertexValues
{
    std::string Name;
    std::size_t ValueSize = 4;
    std::vector<float> Values;
};

/// The vertices that a joint moves, with percentages. Vertices that it does not move are left out.
struct JointWeights
{
    std::size_t Joint = 0; ///< place in the skin's list
    std::vector<std::pair<std::int32_t, double>> Weights;
};

/// A mesh as the host wants it: all triangles of its primitives together. A vertex of the file is a vertex
/// and a polygon node of the host; of those that no triangle uses nothing is kept. Where normals are absent
/// every corner has a vertex of its own, since flat faces share none.
struct MeshContent
{
    std::vector<double> Positions;
    std::vector<float> Normals;
    std::vector<std::int32_t> Triangles;         ///< three vertices each
    std::vector<std::int32_t> TriangleMaterials; ///< one each, a place in `Materials`
    std::vector<Index> Materials;                ///< of the document, none for the default; first use first
    std::vector<VertexValues> Colors;            ///< alpha turned round; "COLOR_0", "COLOR_1_rgb"
    std::vector<VertexValues> Coordinates; ///< v turned round; named by `CoordinateSets` or by attribute
    std::vector<VertexValues> UserValues;  ///< "tq4xUser0_3f"
    std::vector<JointWeights> Weights;     ///< of a mesh with JOINTS_n and WEIGHTS_n, joints with weights
    bool IsSkinned = false;                ///< it has these attributes
};

/// Most corners of triangles in all meshes of a scene together.
inline constexpr std::uint64_t MaxCorners = 300'000'000;

/// Builds a mesh. `jointCount` is the number of joints of the skin that it is used with, 0 for none: then
/// weights are not read. Adds what was changed or left out to `notes`. Throws `SceneError` for indices out of
/// range and for positions that are not finite. `corners` counts towards `MaxCorners`.
[[nodiscard]] MeshContent BuildMeshContent(const Document& document, std::size_t mesh, std::size_t jointCount,
                                           const CoordinateSets& sets, std::uint64_t& corners, Notes& notes);

} // namespace tq4x::gltf
