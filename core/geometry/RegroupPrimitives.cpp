#include "geometry/RegroupPrimitives.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace tq4x
{
namespace
{

/// A primitive to come.
struct PolygonGroup
{
    PrimitiveMode Mode = PrimitiveMode::Other;
    std::int32_t CornerCount = 0;
    std::vector<Polygon> Members;
};

void AddMember(PolygonGroup& group, const Polygon& polygon)
{
    group.CornerCount += polygon.CornerCount;
    group.Members.push_back(polygon);
}

bool StandsBefore(const PolygonGroup& left, const PolygonGroup& right)
{
    return left.Mode != right.Mode ? left.Mode > right.Mode : left.CornerCount > right.CornerCount;
}

std::vector<PolygonGroup> GroupPolygons(const std::vector<Polygon>& polygons)
{
    std::array<PolygonGroup, 3> collectors{
        {{PrimitiveMode::Triangles, 0, {}}, {PrimitiveMode::Lines, 0, {}}, {PrimitiveMode::Points, 0, {}}}};
    std::vector<PolygonGroup> groups;
    for (const Polygon& polygon : polygons) {
        const auto collector =
            std::find_if(collectors.begin(), collectors.end(),
                         [&](const PolygonGroup& candidate) { return candidate.Mode == polygon.Mode; });
        if (collector != collectors.end())
            AddMember(*collector, polygon);
        else
            groups.push_back({polygon.Mode, polygon.CornerCount, {polygon}});
    }
    for (PolygonGroup& collector : collectors)
        if (collector.CornerCount > 0)
            groups.push_back(std::move(collector));
    std::stable_sort(groups.begin(), groups.end(), StandsBefore);
    return groups;
}

/// Moves the corners of the shape into a new list, primitive by primitive.
class CornerMover
{
public:
    explicit CornerMover(SeparateDataShape& shape) : m_shape(shape)
    {
        m_corners.reserve(shape.Corners.size());
    }

    Polygon MakePrimitive(const PolygonGroup& group)
    {
        Polygon primitive{group.Mode, 0, static_cast<std::int64_t>(m_corners.size())};
        for (const Polygon& polygon : group.Members)
            AppendCorners(primitive, CornersOf(std::as_const(m_shape), polygon));
        return primitive;
    }

    void Finish() { m_shape.Corners = std::move(m_corners); }

private:
    void AppendCorners(Polygon& primitive, std::span<const PolygonCorner> corners)
    {
        m_corners.insert(m_corners.end(), corners.begin(), corners.end());
        primitive.CornerCount += static_cast<std::int32_t>(corners.size());
    }

    SeparateDataShape& m_shape;
    std::vector<PolygonCorner> m_corners;
};

} // namespace

void RegroupPrimitives(SeparateDataShape& shape)
{
    CornerMover mover(shape);
    for (PrimitiveSet& set : shape.PrimitiveSets) {
        std::vector<Polygon> primitives;
        for (const PolygonGroup& group : GroupPolygons(set.Polygons))
            primitives.push_back(mover.MakePrimitive(group));
        set.Polygons = std::move(primitives);
    }
    mover.Finish();
}

} // namespace tq4x
