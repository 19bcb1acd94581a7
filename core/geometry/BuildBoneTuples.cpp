#include "geometry/BuildBoneTuples.h"

#include "geometry/HashIndex.h"
#include "scene/Bone.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <optional>
#include <span>

namespace tq4x
{
namespace
{

constexpr std::size_t TupleSize = 4;

using WeightTuple = std::array<float, TupleSize>;

struct VertexTuples
{
    BoneIndexTuple Indices{};
    WeightTuple Weights{};
};

std::optional<std::size_t> FindPlace(const std::vector<std::int32_t>& table, const Bone* bone)
{
    if (!bone)
        return std::nullopt;
    const auto place = std::find(table.begin(), table.end(), bone->BoneIndex);
    return place == table.end() ? std::nullopt
                                : std::optional(static_cast<std::size_t>(place - table.begin()));
}

float WeightOf(const SkinInfluence& influence)
{
    return static_cast<float>(influence.Percentage / 100.0);
}

/// All vertices have the whole table; the weights stand at the places of their bones.
VertexTuples MakeCommonTuples(std::span<const SkinInfluence> influences,
                              const std::vector<std::int32_t>& table)
{
    VertexTuples tuples;
    for (std::size_t i = 0; i < table.size(); ++i)
        tuples.Indices[i] = static_cast<std::int32_t>(i);
    for (const SkinInfluence& influence : influences)
        if (const std::optional<std::size_t> place = FindPlace(table, influence.Bone))
            tuples.Weights[*place] = WeightOf(influence);
    return tuples;
}

VertexTuples MakeOwnTuples(std::span<const SkinInfluence> influences, const std::vector<std::int32_t>& table)
{
    VertexTuples tuples;
    for (std::size_t i = 0; i < influences.size(); ++i)
        if (const std::optional<std::size_t> place = FindPlace(table, influences[i].Bone)) {
            tuples.Indices[i] = static_cast<std::int32_t>(*place);
            tuples.Weights[i] = WeightOf(influences[i]);
        }
    return tuples;
}

/// Finds or adds tuples of one of the shape's lists.
template<typename Tuple>
class TupleList
{
public:
    explicit TupleList(std::vector<Tuple>& tuples) : m_tuples(tuples) {}

    std::int32_t FindOrAdd(const Tuple& tuple, std::uint64_t hash)
    {
        const auto next = static_cast<std::int32_t>(m_tuples.size());
        const std::int32_t number = m_index.FindOrAdd(hash, next, [&](std::int32_t candidate) {
            return m_tuples[static_cast<std::size_t>(candidate)] == tuple;
        });
        if (number == next)
            m_tuples.push_back(tuple);
        return number;
    }

private:
    std::vector<Tuple>& m_tuples;
    HashIndex m_index;
};

/// By bits: weights come from whole percentages, so equal ones have equal bits.
template<typename Component>
std::uint64_t HashOf(const std::array<Component, TupleSize>& components)
{
    std::uint64_t hash = 0;
    for (const Component component : components)
        hash = MixHash(hash, std::bit_cast<std::uint32_t>(component));
    return hash;
}

} // namespace

void BuildBoneTuples(SeparateDataShape& shape)
{
    shape.BoneIndexTuples.clear();
    shape.BoneWeightTuples.clear();
    TupleList<BoneIndexTuple> indices(shape.BoneIndexTuples);
    TupleList<Vector4> weights(shape.BoneWeightTuples);
    for (const PrimitiveSet& set : shape.PrimitiveSets) {
        const bool isCommon = !shape.IsRigidSkinning && set.BoneIndexTable.size() <= TupleSize;
        const auto makeTuples = isCommon ? MakeCommonTuples : MakeOwnTuples;
        for (const Polygon& polygon : set.Polygons)
            for (PolygonCorner& corner : CornersOf(shape, polygon)) {
                const std::span<const SkinInfluence> influences = InfluencesOf(*shape.SkinWeights, corner);
                const VertexTuples tuples =
                    makeTuples(influences.first(std::min(influences.size(), TupleSize)), set.BoneIndexTable);
                const auto& [x, y, z, w] = tuples.Weights;
                corner[VertexSlot::BoneIndex] = indices.FindOrAdd(tuples.Indices, HashOf(tuples.Indices));
                corner[VertexSlot::BoneWeight] = weights.FindOrAdd({x, y, z, w}, HashOf(tuples.Weights));
            }
    }
}

} // namespace tq4x
