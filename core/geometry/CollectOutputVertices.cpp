#include "geometry/CollectOutputVertices.h"

#include "geometry/HashIndex.h"

#include <bit>

namespace tq4x
{
namespace
{

std::uint64_t HashOf(const PolygonCorner& corner)
{
    std::uint64_t hash = 0;
    for (const std::int32_t index : corner.Slots)
        hash = MixHash(hash, std::bit_cast<std::uint32_t>(index));
    return hash;
}

/// Gives corners their vertices, one by one.
class VertexCollector
{
public:
    VertexCollector(const SeparateDataShape& shape, OutputVertices& vertices)
        : m_shape(shape),
          m_vertices(vertices)
    {}

    void Add(std::size_t place)
    {
        const PolygonCorner& corner = m_shape.Corners[place];
        const auto newVertex = static_cast<std::int32_t>(m_vertices.Count());
        const std::int32_t vertex = m_index.FindOrAdd(HashOf(corner), newVertex, [&](std::int32_t number) {
            return FirstCornerOf(number).Slots == corner.Slots;
        });
        if (vertex == newVertex)
            m_vertices.FirstCorners.push_back(place);
        m_vertices.Indices[place] = vertex;
    }

private:
    const PolygonCorner& FirstCornerOf(std::int32_t vertex) const
    {
        return m_shape.Corners[m_vertices.FirstCorners[static_cast<std::size_t>(vertex)]];
    }

    const SeparateDataShape& m_shape;
    OutputVertices& m_vertices;
    HashIndex m_index;
};

} // namespace

OutputVertices CollectOutputVertices(const SeparateDataShape& shape)
{
    OutputVertices vertices;
    vertices.Indices.resize(shape.Corners.size(), 0);
    VertexCollector collector(shape, vertices);
    for (const PrimitiveSet& set : shape.PrimitiveSets) {
        for (const Polygon& primitive : set.Polygons) {
            const auto first = static_cast<std::size_t>(primitive.FirstCorner);
            for (std::size_t i = 0; i < static_cast<std::size_t>(primitive.CornerCount); ++i)
                collector.Add(first + i);
        }
    }
    return vertices;
}

} // namespace tq4x
