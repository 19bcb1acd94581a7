#include "geometry/GenerateTangents.h"

#include "geometry/SmoothTangents.h"

#include <algorithm>
#include <utility>

namespace tq4x
{
namespace
{

/// The lists that tangents come from.
struct TangentSource
{
    VertexSlot CoordinateSlot = VertexSlot::TextureCoordinate0;
    const std::vector<Vector3>& Positions;
    const std::vector<Vector3>& Normals;
    const std::vector<Vector2>& Coordinates;
};

bool IsCoordinateSlot(VertexSlot slot)
{
    return slot >= VertexSlot::TextureCoordinate0 && slot <= VertexSlot::TextureCoordinate2;
}

bool IsIndexInto(std::int32_t index, std::size_t size)
{
    return index >= 0 && static_cast<std::size_t>(index) < size;
}

GeometryResult CheckShape(const SeparateDataShape& shape, VertexSlot uvSlot)
{
    const VertexAttributePool& pool = shape.Pool;
    if (pool[VertexSlot::Tangent].Size() > 0)
        return {1, "The shape has tangents already."};
    if (!IsCoordinateSlot(uvSlot))
        return {1, "Tangents need a texture coordinate slot."};
    for (const VertexSlot slot : {VertexSlot::Position, VertexSlot::Normal, uvSlot}) {
        const std::size_t size = pool[slot].Size();
        const auto isGood = [&](const PolygonCorner& corner) { return IsIndexInto(corner[slot], size); };
        if (size == 0 || !std::all_of(shape.Corners.begin(), shape.Corners.end(), isGood))
            return {1, "Tangents need a position, a normal and a texture coordinate at each corner."};
    }
    return {};
}

TangentCorner TangentCornerOf(const TangentSource& source, const PolygonCorner& corner)
{
    return {source.Positions[static_cast<std::size_t>(corner[VertexSlot::Position])],
            source.Coordinates[static_cast<std::size_t>(corner[source.CoordinateSlot])]};
}

/// The tangents of a polygon's corners, put in the places of their normals.
void ComputeTangents(std::vector<TangentEntry>& entries, const TangentSource& source,
                     std::span<PolygonCorner> corners)
{
    const std::size_t count = corners.size();
    for (std::size_t i = 0; i < count; ++i) {
        const TangentCorner here = TangentCornerOf(source, corners[i]);
        const TangentCorner previous = TangentCornerOf(source, corners[(i + count - 1) % count]);
        const TangentCorner next = TangentCornerOf(source, corners[(i + 1) % count]);
        const std::int32_t number = corners[i][VertexSlot::Normal];
        const auto place = static_cast<std::size_t>(number);
        corners[i][VertexSlot::Tangent] = number;
        entries[place] = {here, ComputeTangent(here, previous, next, source.Normals[place]), true};
    }
}

} // namespace

GeometryResult GenerateTangents(SeparateDataShape& shape, VertexSlot uvSlot)
{
    if (const GeometryResult result = CheckShape(shape, uvSlot); result.Status != 0)
        return result;
    const VertexAttributePool& pool = shape.Pool;
    const TangentSource source{uvSlot, pool[VertexSlot::Position].Read<Vector3>(),
                               pool[VertexSlot::Normal].Read<Vector3>(), pool[uvSlot].Read<Vector2>()};
    std::vector<TangentEntry> entries(source.Normals.size());
    ForEachPolygon(
        shape, [&](const Polygon& polygon) { ComputeTangents(entries, source, CornersOf(shape, polygon)); });
    SmoothTangents(entries);
    std::vector<Vector3> tangents;
    tangents.reserve(entries.size());
    for (const TangentEntry& entry : entries)
        tangents.push_back(entry.Tangent);
    shape.Pool[VertexSlot::Tangent] = {3, QuantizedMode::Float, SharedList<Vector3>(std::move(tangents))};
    shape.AttributeFlags[IndexOf(VertexSlot::Tangent)] = true;
    return {};
}

GeometryResult GenerateTangents(Mesh& mesh, VertexSlot uvSlot)
{
    GeometryResult result;
    for (const auto& [materialIndex, shape] : mesh.Shapes) {
        const GeometryResult shapeResult = GenerateTangents(*shape, uvSlot);
        if (result.Status == 0)
            result = shapeResult;
    }
    return result;
}

} // namespace tq4x
