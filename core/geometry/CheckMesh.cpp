#include "geometry/CheckMesh.h"

#include "geometry/UpdatePolygonBones.h"
#include "scene/Bone.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <type_traits>
#include <utility>

namespace tq4x
{
namespace
{

bool IsNumberBelow(std::int32_t number, std::size_t limit)
{
    return number >= 0 && static_cast<std::size_t>(number) < limit;
}

/// Comparable components of a value; NaN excluded by the caller.
std::vector<float> ComponentsOf(const Vector2& v)
{
    return {v.X, v.Y};
}

std::vector<float> ComponentsOf(const Vector3& v)
{
    return {v.X, v.Y, v.Z};
}

std::vector<float> ComponentsOf(const Vector4& v)
{
    return {v.X, v.Y, v.Z, v.W};
}

template<typename T>
bool HasEqualValues(const std::vector<T>& values)
{
    std::vector<std::vector<float>> numbers;
    for (const T& value : values)
        if (value == value) // a NaN equals nothing
            numbers.push_back(ComponentsOf(value));
    std::sort(numbers.begin(), numbers.end());
    return std::adjacent_find(numbers.begin(), numbers.end()) != numbers.end();
}

bool IsSortedOnce(const BoneList& bones)
{
    for (std::size_t i = 1; i < bones.size(); ++i)
        if (bones[i]->Name < bones[i - 1]->Name)
            return false;
    BoneList sorted = bones;
    std::sort(sorted.begin(), sorted.end());
    return std::adjacent_find(sorted.begin(), sorted.end()) == sorted.end();
}

std::vector<std::int32_t> SortedBoneIndices(const BoneList& palette)
{
    std::vector<std::int32_t> indices;
    for (const Bone* bone : palette)
        indices.push_back(bone->BoneIndex);
    std::sort(indices.begin(), indices.end());
    return indices;
}

/// Looks at one shape and keeps what it finds.
class ShapeCheck
{
public:
    ShapeCheck(const SeparateDataShape& shape, ShapeStage stage) : m_shape(shape), m_stage(stage) {}

    std::vector<std::string> Run()
    {
        CheckPolygons();
        if (!m_problems.empty())
            return std::move(m_problems);
        CheckCorners();
        CheckBones();
        CheckWeights();
        CheckPool();
        CheckSets();
        return std::move(m_problems);
    }

private:
    void Require(bool condition, const std::string& problem)
    {
        if (!condition && std::find(m_problems.begin(), m_problems.end(), problem) == m_problems.end())
            m_problems.push_back(problem);
    }

    void CheckPolygons()
    {
        std::vector<std::int32_t> owners(m_shape.Corners.size());
        ForEachPolygon(m_shape, [&](const Polygon& polygon) {
            const std::int64_t end = polygon.FirstCorner + polygon.CornerCount;
            if (polygon.FirstCorner < 0 || polygon.CornerCount < 0 || end > std::ssize(owners)) {
                m_problems.push_back("a polygon has corners that the shape lacks");
                return;
            }
            Require(IsNumberBelow(polygon.Bones, static_cast<std::size_t>(m_shape.BoneLists.Count())),
                    "a polygon names a bone list that the shape lacks");
            for (std::int64_t i = polygon.FirstCorner; i < end; ++i)
                ++owners[static_cast<std::size_t>(i)];
        });
        Require(std::all_of(owners.begin(), owners.end(), [](std::int32_t count) { return count == 1; }),
                "a corner is not in exactly one polygon");
        Require(m_shape.Polygons.empty() || m_shape.PrimitiveSets.empty(),
                "polygons are in sets and outside");
    }

    std::size_t SizeOfSlot(std::size_t slot) const
    {
        if (slot == IndexOf(VertexSlot::BoneIndex))
            return m_shape.BoneIndexTuples.size();
        if (slot == IndexOf(VertexSlot::BoneWeight))
            return m_shape.BoneWeightTuples.size();
        return m_shape.Pool.Slots[slot].Size();
    }

    void CheckCorners()
    {
        const std::size_t vertexCount = m_shape.SkinWeights ? m_shape.SkinWeights->size() : 0;
        for (const PolygonCorner& corner : m_shape.Corners) {
            for (std::size_t slot = 0; slot < VertexSlotCount; ++slot)
                Require(corner.Slots[slot] == -1 || IsNumberBelow(corner.Slots[slot], SizeOfSlot(slot)),
                        "a corner is out of range in slot " + std::to_string(slot));
            Require(!m_shape.SkinWeights || corner.VertexIndex == -1 ||
                        IsNumberBelow(corner.VertexIndex, vertexCount),
                    "a corner names a vertex that the weight table lacks");
        }
    }

    void CheckBones()
    {
        for (std::int32_t i = 0; i < m_shape.BoneLists.Count(); ++i)
            Require(IsSortedOnce(m_shape.BoneLists[i]),
                    "the bones of a polygon are not sorted or not distinct");
        for (const Polygon& polygon : m_shape.Polygons) {
            const BoneList bones = m_shape.SkinWeights
                                       ? CollectCornerBones(CornersOf(m_shape, polygon), *m_shape.SkinWeights)
                                       : BoneList{};
            Require(m_shape.BoneLists[polygon.Bones] == bones, "the bones of a polygon are out of date");
        }
    }

    void CheckWeights()
    {
        if (!m_shape.SkinWeights)
            return;
        for (const PolygonCorner& corner : m_shape.Corners) {
            const std::span<const SkinInfluence> influences = InfluencesOf(*m_shape.SkinWeights, corner);
            const std::int64_t sum = std::accumulate(influences.begin(), influences.end(), std::int64_t{0},
                                                     [](std::int64_t part, const SkinInfluence& influence) {
                                                         return part + influence.Percentage;
                                                     });
            Require(influences.empty() || sum == 100, "the percentages of a vertex do not sum to 100");
            Require(influences.size() <= 4, "a vertex has more than four influences");
            Require(!m_shape.IsRigidSkinning || influences.size() <= 1,
                    "a vertex of a rigid shape has several influences");
        }
    }

    void CheckPool()
    {
        for (std::size_t slot = 0; slot < VertexSlotCount; ++slot) {
            const std::string name = "slot " + std::to_string(slot);
            std::visit(
                [&](const auto& list) {
                    if constexpr (!std::is_same_v<decltype(list), const std::monostate&>)
                        Require(m_stage < ShapeStage::Welded || !HasEqualValues(list.Read()),
                                name + " has equal values");
                },
                m_shape.Pool.Slots[slot].Data);
            Require(m_stage < ShapeStage::Compacted || IsUsedWholly(slot), name + " has unused values");
        }
    }

    bool IsUsedWholly(std::size_t slot) const
    {
        std::vector<bool> isUsed(SizeOfSlot(slot));
        for (const PolygonCorner& corner : m_shape.Corners)
            if (IsNumberBelow(corner.Slots[slot], isUsed.size()))
                isUsed[static_cast<std::size_t>(corner.Slots[slot])] = true;
        return std::find(isUsed.begin(), isUsed.end(), false) == isUsed.end();
    }

    void CheckSets()
    {
        Require(m_stage < ShapeStage::Finalized || m_shape.Polygons.empty(), "polygons are outside the sets");
        for (const PrimitiveSet& set : m_shape.PrimitiveSets) {
            Require(IsSortedOnce(set.Palette), "a palette is not sorted or not distinct");
            Require(set.Palette.size() <= m_shape.BoneCapacity, "a palette exceeds the capacity");
            Require(IsCovered(set), "a palette lacks a bone of its polygons");
            if (m_stage >= ShapeStage::Finalized && m_shape.SkinWeights)
                CheckTable(set);
        }
    }

    bool IsCovered(const PrimitiveSet& set) const
    {
        return !m_shape.SkinWeights ||
               std::all_of(set.Polygons.begin(), set.Polygons.end(), [&](const Polygon& polygon) {
                   return ContainsAll(set.Palette,
                                      CollectCornerBones(CornersOf(m_shape, polygon), *m_shape.SkinWeights));
               });
    }

    void CheckTable(const PrimitiveSet& set)
    {
        std::vector<std::int32_t> table = set.BoneIndexTable;
        std::sort(table.begin(), table.end());
        Require(table == SortedBoneIndices(set.Palette), "a bone index table does not hold its palette");
        for (const Polygon& polygon : set.Polygons)
            for (const PolygonCorner& corner : CornersOf(m_shape, polygon))
                CheckTuples(corner, set.BoneIndexTable.size());
    }

    void CheckTuples(const PolygonCorner& corner, std::size_t tableSize)
    {
        if (corner[VertexSlot::BoneIndex] < 0 || corner[VertexSlot::BoneWeight] < 0) {
            m_problems.push_back("a corner lacks its bone tuples");
            return;
        }
        for (const std::int32_t place :
             m_shape.BoneIndexTuples[static_cast<std::size_t>(corner[VertexSlot::BoneIndex])])
            Require(place == 0 || IsNumberBelow(place, tableSize), "a tuple names a place past its table");
        const Vector4& weights =
            m_shape.BoneWeightTuples[static_cast<std::size_t>(corner[VertexSlot::BoneWeight])];
        const float sum = weights.X + weights.Y + weights.Z + weights.W;
        Require(InfluencesOf(*m_shape.SkinWeights, corner).empty() || std::abs(sum - 1.0f) < 1e-5f,
                "the weights of a vertex do not sum to 1");
    }

    const SeparateDataShape& m_shape;
    ShapeStage m_stage;
    std::vector<std::string> m_problems;
};

} // namespace

std::vector<std::string> CheckShape(const SeparateDataShape& shape, ShapeStage stage)
{
    return ShapeCheck(shape, stage).Run();
}

std::vector<std::string> CheckMesh(const Mesh& mesh, ShapeStage stage)
{
    std::vector<std::string> problems;
    for (const auto& [material, shape] : mesh.Shapes) {
        const std::string name = "shape of material " + std::to_string(material) + ": ";
        if (!shape) {
            problems.push_back(name + "missing");
            continue;
        }
        if (shape->SkinWeights != mesh.SkinWeights.get())
            problems.push_back(name + "refers to a weight table of another mesh");
        for (const std::string& problem : CheckShape(*shape, stage))
            problems.push_back(name + problem);
    }
    return problems;
}

} // namespace tq4x
