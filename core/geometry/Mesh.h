#pragma once

#include "geometry/BoneListSet.h"
#include "geometry/SkinWeightTable.h"
#include "geometry/VertexAttributePool.h"

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace tq4x
{

/// What the corners of a polygon form.
enum class PrimitiveMode : std::int32_t
{
    Points = 0,
    Lines = 1,
    LineStrip = 2,
    Triangles = 3,
    TriangleStrip = 4,
    TriangleFan = 5,
    Other = 6,
};

/// One corner of a polygon: an index for each slot, -1 meaning absent. Two corners are the same vertex of the
/// output when their twelve slots agree; the host's vertex number takes no part.
struct PolygonCorner
{
    std::array<std::int32_t, VertexSlotCount> Slots{-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1};
    std::int32_t VertexIndex = -1; ///< index into the weight table, the host's vertex number

    std::int32_t& operator[](VertexSlot slot) { return Slots[IndexOf(slot)]; }

    std::int32_t operator[](VertexSlot slot) const { return Slots[IndexOf(slot)]; }

    bool operator==(const PolygonCorner&) const = default;
};

/// A polygon or, after regrouping, a primitive. Its corners stand one behind the other, in winding order, in
/// the `Corners` of its shape.
struct Polygon
{
    PrimitiveMode Mode = PrimitiveMode::Other;
    std::int32_t CornerCount = 0;
    std::int64_t FirstCorner = 0;           ///< place in the shape's `Corners`
    std::int32_t Bones = BoneListSet::None; ///< number in the shape's `BoneLists`: its distinct influences

    bool operator==(const Polygon&) const = default;
};

/// Polygons that are drawn with one palette of bones.
struct PrimitiveSet
{
    BoneList Palette;
    std::vector<Polygon> Polygons;
    std::vector<std::int32_t> BoneIndexTable; ///< `BoneIndex` values in palette slot order
};

/// Indices of bones per vertex, as positions in the set's `BoneIndexTable`.
using BoneIndexTuple = std::array<std::int32_t, 4>;

/// One mesh's part under one material.
struct SeparateDataShape
{
    std::uint32_t BoneCapacity = 0;                     ///< largest palette
    std::string Name;                                   ///< the mesh's name
    std::array<bool, VertexSlotCount> AttributeFlags{}; ///< the mesh's when the shape was made
    bool IsVisible = true;                              ///< copied from the bone before finalizing
    std::vector<BoneIndexTuple> BoneIndexTuples;        ///< distinct, in order of first appearance
    std::vector<Vector4> BoneWeightTuples;              ///< distinct, in order of first appearance
    std::vector<PolygonCorner> Corners; ///< of all polygons, each corner owned by exactly one; after
                                        ///< regrouping in the order of sets and primitives
    BoneListSet BoneLists;              ///< what `Polygon::Bones` refers to
    std::vector<Polygon> Polygons;      ///< as they were added; moved into the sets when those are built
    std::vector<PrimitiveSet> PrimitiveSets;
    VertexAttributePool Pool;                     ///< the mesh's when the shape was made
    const SkinWeightTable* SkinWeights = nullptr; ///< the mesh's; none for an unskinned mesh
    bool IsRigidSkinning = false;                 ///< every vertex has one bone
    std::function<void()> ProgressCallback;       ///< optional; called once before sets are merged
};

/// The geometry of one scene object. Lengths in host units.
struct Mesh
{
    std::uint32_t BoneCapacity = 0; ///< handed to the shapes
    std::array<bool, VertexSlotCount> AttributeFlags{};
    std::string NodeName; ///< of the bone that carries it
    std::function<void()> ProgressCallback;
    std::map<std::uint32_t, std::unique_ptr<SeparateDataShape>> Shapes; ///< by material index
    VertexAttributePool Pool; ///< template of the shapes' pools; filled before the first polygon comes
    std::unique_ptr<SkinWeightTable> SkinWeights; ///< none for an unskinned mesh
    std::int32_t CombineGroup = -1;
};

/// The corners of a polygon of this shape, in winding order.
inline std::span<const PolygonCorner> CornersOf(const SeparateDataShape& shape, const Polygon& polygon)
{
    return std::span(shape.Corners)
        .subspan(static_cast<std::size_t>(polygon.FirstCorner),
                 static_cast<std::size_t>(polygon.CornerCount));
}

/// The same to change.
inline std::span<PolygonCorner> CornersOf(SeparateDataShape& shape, const Polygon& polygon)
{
    return std::span(shape.Corners)
        .subspan(static_cast<std::size_t>(polygon.FirstCorner),
                 static_cast<std::size_t>(polygon.CornerCount));
}

/// The influences of a corner: those of its vertex, none for a corner that has no vertex of the table.
inline std::span<const SkinInfluence> InfluencesOf(const SkinWeightTable& table, const PolygonCorner& corner)
{
    if (corner.VertexIndex < 0 || static_cast<std::size_t>(corner.VertexIndex) >= table.size())
        return {};
    return table[static_cast<std::size_t>(corner.VertexIndex)];
}

/// Calls `visit(polygon)` for the polygons of a shape: those not yet in sets, as they were added, then those
/// of the sets, in the order of the sets. A shape has the ones before its sets are built and the others
/// after.
template<typename Shape, typename Visit>
void ForEachPolygon(Shape& shape, Visit visit)
{
    for (auto& polygon : shape.Polygons)
        visit(polygon);
    for (auto& set : shape.PrimitiveSets)
        for (auto& polygon : set.Polygons)
            visit(polygon);
}

} // namespace tq4x
