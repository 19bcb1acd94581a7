#include "geometry/AddPolygon.h"

#include "geometry/EditMesh.h"
#include "geometry/UpdatePolygonBones.h"

namespace tq4x
{
namespace
{

/// Appends a copy; false if it has more bones than the shape's palettes can hold.
bool AppendPolygon(SeparateDataShape& shape, const PolygonView& view)
{
    Polygon polygon{view.Mode, static_cast<std::int32_t>(view.Corners.size()),
                    static_cast<std::int64_t>(shape.Corners.size())};
    shape.Corners.insert(shape.Corners.end(), view.Corners.begin(), view.Corners.end());
    UpdatePolygonBones(shape, polygon);
    shape.Polygons.push_back(polygon);
    return shape.BoneLists[polygon.Bones].size() <= shape.BoneCapacity;
}

bool AppendTriangles(SeparateDataShape& shape, std::span<const PolygonCorner> corners)
{
    const auto count = static_cast<std::int32_t>(corners.size());
    for (std::int32_t i = 0; i < count - 2; ++i) {
        std::array<PolygonCorner, 3> triangle;
        for (std::size_t j = 0; const std::int32_t number : ZigZagTriangle(i, count))
            triangle[j++] = corners[static_cast<std::size_t>(number)];
        if (!AppendPolygon(shape, PolygonOf(triangle)))
            return false;
    }
    return true;
}

bool NeedsCutting(const SeparateDataShape& shape, const PolygonView& polygon)
{
    return polygon.Corners.size() >= 4 && shape.SkinWeights &&
           CollectCornerBones(polygon.Corners, *shape.SkinWeights).size() > shape.BoneCapacity;
}

} // namespace

PolygonView PolygonOf(std::span<const PolygonCorner> corners)
{
    switch (corners.size()) {
    case 1:
        return {PrimitiveMode::Points, corners};
    case 2:
        return {PrimitiveMode::Lines, corners};
    case 3:
        return {PrimitiveMode::Triangles, corners};
    default:
        return {PrimitiveMode::TriangleFan, corners};
    }
}

std::array<std::int32_t, 3> ZigZagTriangle(std::int32_t triangle, std::int32_t cornerCount)
{
    std::array<std::int32_t, 3> numbers{};
    for (std::int32_t position = 0; position < 3; ++position) {
        const std::int32_t counter = triangle + position;
        const bool isOdd = counter % 2 != 0;
        const bool isSwapped = triangle % 2 != 0 && position != 0; // keeps the winding of odd triangles
        std::int32_t& number = numbers[static_cast<std::size_t>(position)];
        if (counter < 2)
            number = counter;
        else if (isOdd == isSwapped)
            number = cornerCount - counter / 2;
        else
            number = counter / 2 + 1;
    }
    return numbers;
}

GeometryResult AddPolygonToShape(SeparateDataShape& shape, const PolygonView& polygon)
{
    const bool isFitting = NeedsCutting(shape, polygon) ? AppendTriangles(shape, polygon.Corners)
                                                        : AppendPolygon(shape, polygon);
    return isFitting ? GeometryResult{} : GeometryResult{1, "Polygon bone size is over"};
}

GeometryResult AddPolygon(Mesh& mesh, std::uint32_t materialIndex, const PolygonView& polygon)
{
    return AddPolygonToShape(GetOrCreateShape(mesh, materialIndex), polygon);
}

} // namespace tq4x
