#include <algorithm>
#include <cmath>
#include <limits>

#include "gltf/AccessorReader.h"
#include "gltf/MeshParts.h"
#include "gltf/ReadTriangles.h"
#include "gltf/SceneError.h"

namespace tq4x::gltf
{
namespace
{

constexpr std::uint32_t Unused = std::numeric_limits<std::uint32_t>::max();

void CountCorners(std::size_t added, const std::string& place, std::uint64_t& corners)
{
    corners += added;
    if (corners > MaxCorners) {
        throw SceneError(place, "The meshes of the scene have more than " + std::to_string(MaxCorners / 3) +
                                    " triangles.");
    }
}

void NoteTriangles(const Triangles& triangles, const std::string& meshName, Notes& notes)
{
    if (triangles.LooseCount > 0) {
        notes.push_back(
            {NoteSeverity::Warning, meshName, "The last triangle of a list is incomplete and left out."});
    }
    if (triangles.DroppedCount > 0) {
        notes.push_back({NoteSeverity::Information, meshName,
                         std::to_string(triangles.DroppedCount) +
                             " triangles of a strip or fan use a vertex twice and are left out."});
    }
}

/// Corners refer to the vertices that are used, in the order of the file. Only the range that the primitive
/// uses is looked at: many primitives may share one long list of vertices.
void ShareVertices(const std::vector<std::uint32_t>& corners, MeshPart& part)
{
    if (corners.empty()) {
        return;
    }
    const auto [lowest, highest] = std::ranges::minmax(corners);
    std::vector<std::uint32_t> places(std::size_t{highest} - lowest + 1, Unused);
    for (const std::uint32_t corner : corners) {
        places[corner - lowest] = 0;
    }
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (places[i] != Unused) {
            places[i] = static_cast<std::uint32_t>(part.Vertices.size());
            part.Vertices.push_back(lowest + static_cast<std::uint32_t>(i));
        }
    }
    for (const std::uint32_t corner : corners) {
        part.Triangles.push_back(static_cast<std::int32_t>(places[corner - lowest]));
    }
}

void SplitVertices(std::vector<std::uint32_t> corners, MeshPart& part)
{
    part.Vertices = std::move(corners);
    for (std::size_t i = 0; i < part.Vertices.size(); ++i) {
        part.Triangles.push_back(static_cast<std::int32_t>(i));
    }
}

std::int32_t FindOrAddMaterial(const Index& material, std::vector<Index>& materials)
{
    const auto found = std::ranges::find(materials, material);
    if (found != materials.end()) {
        return static_cast<std::int32_t>(found - materials.begin());
    }
    materials.push_back(material);
    return static_cast<std::int32_t>(materials.size() - 1);
}

bool IsTriangles(const Primitive& primitive)
{
    return primitive.Mode >= PrimitiveMode::Triangles;
}

std::string NameOf(const Document& document, std::size_t mesh)
{
    const std::string& name = document.Meshes[mesh].Name;
    return name.empty() ? "/meshes/" + std::to_string(mesh) : name;
}

std::vector<MeshPart> BuildParts(const Document& document, std::size_t mesh, std::uint64_t& corners,
                                 Notes& notes)
{
    std::vector<MeshPart> parts;
    std::size_t vertexCount = 0;
    const auto& primitives = document.Meshes[mesh].Primitives;
    for (std::size_t i = 0; i < primitives.size(); ++i) {
        const std::string place = "/meshes/" + std::to_string(mesh) + "/primitives/" + std::to_string(i);
        if (!IsTriangles(primitives[i])) {
            continue; // noted when the file was read
        }
        if (!primitives[i].Find("POSITION")) {
            notes.push_back({NoteSeverity::Warning, NameOf(document, mesh),
                             "A primitive without positions is left out."});
            continue;
        }
        MeshPart part = BuildPart(document, primitives[i], place, corners, notes, NameOf(document, mesh));
        if (part.Triangles.empty()) {
            continue;
        }
        part.FirstVertex = vertexCount;
        vertexCount += part.Vertices.size();
        parts.push_back(std::move(part));
    }
    return parts;
}

void AppendTriangles(const MeshPart& part, MeshContent& content)
{
    const std::int32_t material = FindOrAddMaterial(part.Source->Material, content.Materials);
    for (const std::int32_t vertex : part.Triangles) {
        content.Triangles.push_back(vertex + static_cast<std::int32_t>(part.FirstVertex));
    }
    content.TriangleMaterials.insert(content.TriangleMaterials.end(), part.Triangles.size() / 3, material);
}

} // namespace

MeshPart BuildPart(const Document& document, const Primitive& primitive, const std::string& place,
                   std::uint64_t& corners, Notes& notes, const std::string& meshName)
{
    Triangles triangles = ReadTriangles(document, primitive, place);
    CountCorners(triangles.Corners.size(), place, corners);
    NoteTriangles(triangles, meshName, notes);
    MeshPart part;
    part.Source = &primitive;
    part.Place = place;
    if (primitive.Find("NORMAL")) {
        ShareVertices(triangles.Corners, part);
    } else {
        SplitVertices(std::move(triangles.Corners), part);
    }
    return part;
}

MeshContent BuildMeshContent(const Document& document, std::size_t mesh, std::size_t jointCount,
                             const CoordinateSets& sets, std::uint64_t& corners, Notes& notes)
{
    MeshContent content;
    const std::string name = NameOf(document, mesh);
    const std::vector<MeshPart> parts = BuildParts(document, mesh, corners, notes);
    for (const MeshPart& part : parts) {
        AppendPositions(document, part, content);
        AppendNormals(document, part, name, content, notes);
        AppendTriangles(part, content);
    }
    FillColors(document, parts, content);
    FillCoordinates(document, parts, sets, content);
    FillUserValues(document, parts, content);
    if (jointCount > 0) {
        FillWeights(document, parts, jointCount, name, content, notes);
    }
    return content;
}

} // namespace tq4x::gltf
