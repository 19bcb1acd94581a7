#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "gltf/MeshContent.h"

// Steps of `BuildMeshContent`, one primitive or one attribute each.
namespace tq4x::gltf
{

/// The part of a mesh that comes from one primitive.
struct MeshPart
{
    const Primitive* Source = nullptr;
    std::string Place;                   ///< "/meshes/0/primitives/1"
    std::vector<std::uint32_t> Vertices; ///< for each vertex of the part the one of the file
    std::vector<std::int32_t> Triangles; ///< vertices of the part
    std::size_t FirstVertex = 0;         ///< place of the part's first vertex in the mesh
};

/// The triangles of a primitive on the vertices that they use; every corner has its own one if normals are
/// absent.
[[nodiscard]] MeshPart BuildPart(const Document& document, const Primitive& primitive,
                                 const std::string& place, std::uint64_t& corners, Notes& notes,
                                 const std::string& meshName);

/// The values of an accessor for the vertices of a part, `Components` each.
struct PartValues
{
    std::size_t Components = 0;
    std::vector<float> Values;
};

[[nodiscard]] PartValues ReadPartValues(const Document& document, const MeshPart& part, std::size_t accessor);

/// Appends positions and normals of a part to the mesh.
void AppendPositions(const Document& document, const MeshPart& part, MeshContent& content);
void AppendNormals(const Document& document, const MeshPart& part, const std::string& meshName,
                   MeshContent& content, Notes& notes);

/// Fills the lists of values per vertex from all parts. A part without an attribute that another part has
/// gets white, or zeros.
void FillColors(const Document& document, const std::vector<MeshPart>& parts, MeshContent& content);
void FillCoordinates(const Document& document, const std::vector<MeshPart>& parts, const CoordinateSets& sets,
                     MeshContent& content);
void FillUserValues(const Document& document, const std::vector<MeshPart>& parts, MeshContent& content);
void FillWeights(const Document& document, const std::vector<MeshPart>& parts, std::size_t jointCount,
                 const std::string& meshName, MeshContent& content, Notes& notes);

} // namespace tq4x::gltf
