#pragma once

#include "geometry/Mesh.h"
#include "scene/Bone.h"

namespace tq4x::test
{

/// A corner whose entries for positions, normals and the first coordinates are given; the rest are absent.
inline PolygonCorner MakeCorner(std::int32_t position, std::int32_t normal = -1, std::int32_t coordinate = -1)
{
    PolygonCorner corner;
    corner[VertexSlot::Position] = position;
    corner[VertexSlot::Normal] = normal;
    corner[VertexSlot::TextureCoordinate0] = coordinate;
    return corner;
}

/// Appends a primitive to the last set of a shape, which is made if there is none.
inline void AddPrimitive(SeparateDataShape& shape, PrimitiveMode mode,
                         const std::vector<PolygonCorner>& corners)
{
    if (shape.PrimitiveSets.empty())
        shape.PrimitiveSets.emplace_back();
    shape.PrimitiveSets.back().Polygons.push_back({mode, static_cast<std::int32_t>(corners.size()),
                                                   static_cast<std::int64_t>(shape.Corners.size()),
                                                   BoneListSet::None});
    shape.Corners.insert(shape.Corners.end(), corners.begin(), corners.end());
}

/// An empty shape with the lists of its pool and the flags that every shape has.
inline SeparateDataShape MakeEmptyShape(const StreamQuantization& quantization = {})
{
    SeparateDataShape shape;
    shape.Name = "Body";
    shape.Pool = MakeVertexAttributePool(quantization);
    shape.AttributeFlags[IndexOf(VertexSlot::Position)] = true;
    return shape;
}

/// One triangle with positions alone.
inline SeparateDataShape MakeTriangle(const std::vector<Vector3>& positions = {
                                          {0, 0, 0}, {2, 0, 0}, {0, 4, 0}})
{
    SeparateDataShape shape = MakeEmptyShape();
    shape.Pool[VertexSlot::Position].Edit<Vector3>() = positions;
    AddPrimitive(shape, PrimitiveMode::Triangles, {MakeCorner(0), MakeCorner(1), MakeCorner(2)});
    return shape;
}

/// Two triangles over the square from (1, 2, 3) to (3, 6, 3), with one normal and four coordinates.
inline SeparateDataShape MakeQuad(const StreamQuantization& quantization = {})
{
    SeparateDataShape shape = MakeEmptyShape(quantization);
    shape.AttributeFlags[IndexOf(VertexSlot::Normal)] = true;
    shape.AttributeFlags[IndexOf(VertexSlot::TextureCoordinate0)] = true;
    shape.Pool[VertexSlot::Position].Edit<Vector3>() = {{1, 2, 3}, {3, 2, 3}, {3, 6, 3}, {1, 6, 3}};
    shape.Pool[VertexSlot::Normal].Edit<Vector3>() = {{0, 0, 1}};
    shape.Pool[VertexSlot::TextureCoordinate0].Edit<Vector2>() = {{0, 0}, {1, 0}, {1, 0.5f}, {0, 0.5f}};
    AddPrimitive(shape, PrimitiveMode::Triangles,
                 {MakeCorner(0, 0, 0), MakeCorner(1, 0, 1), MakeCorner(2, 0, 2), MakeCorner(0, 0, 0),
                  MakeCorner(2, 0, 2), MakeCorner(3, 0, 3)});
    return shape;
}

/// The bone tuples of one corner of a skinned shape: entries of the shape's lists.
inline PolygonCorner MakeSkinnedCorner(std::int32_t position, std::int32_t indexTuple,
                                       std::int32_t weightTuple)
{
    PolygonCorner corner = MakeCorner(position);
    corner[VertexSlot::BoneIndex] = indexTuple;
    corner[VertexSlot::BoneWeight] = weightTuple;
    return corner;
}

} // namespace tq4x::test
