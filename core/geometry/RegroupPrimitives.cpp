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

/// Brings the corners of the shape into the order of the primitives. As long as they stand in it already,
/// which is the rule for a shape of one set, none is moved.
class CornerMover
{
public:
    explicit CornerMover(SeparateDataShape& shape) : m_shape(shape) {}

    Polygon MakePrimitive(const PolygonGroup& group)
    {
        Polygon primitive{group.Mode, 0, m_count};
        for (const Polygon& polygon : group.Members)
            AppendCorners(primitive, polygon);
        return primitive;
    }

    void Finish()
    {
        if (m_isMoving)
            m_shape.Corners = std::move(m_corners);
    }

private:
    void AppendCorners(Polygon& primitive, const Polygon& polygon)
    {
        if (!m_isMoving && polygon.FirstCorner != m_count)
            StartMoving();
        if (m_isMoving) {
            const std::span<const PolygonCorner> corners = CornersOf(std::as_const(m_shape), polygon);
            m_corners.insert(m_corners.end(), corners.begin(), corners.end());
        }
        primitive.CornerCount += polygon.CornerCount;
        m_count += polygon.CornerCount;
    }

    void StartMoving()
    {
        m_isMoving = true;
        m_corners.reserve(m_shape.Corners.size());
        m_corners.assign(m_shape.Corners.begin(), m_shape.Corners.begin() + m_count);
    }

    SeparateDataShape& m_shape;
    std::vector<PolygonCorner> m_corners; ///< empty while nothing moves
    std::int64_t m_count = 0;             ///< corners that stand in their final place
    bool m_isMoving = false;
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
