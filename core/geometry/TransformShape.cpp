#include "geometry/TransformShape.h"

#include "scene/Bone.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace tq4x
{
namespace
{

using Transform = Vector3 (*)(const Vector3& value, const Matrix44& matrix);

struct MovingSlot
{
    VertexSlot Slot;
    Transform Move;
};

constexpr std::array<MovingSlot, 3> MovingSlots{{{VertexSlot::Position, TransformPoint},
                                                 {VertexSlot::Normal, TransformDirection},
                                                 {VertexSlot::Tangent, TransformDirection}}};

struct MovedList
{
    SharedList<Vector3> Before;
    SharedList<Vector3> After;
};

SharedList<Vector3> MoveList(const SharedList<Vector3>& list, const Matrix44& matrix, Transform move)
{
    std::vector<Vector3> moved;
    moved.reserve(list.Size());
    for (const Vector3& value : list.Read())
        moved.push_back(move(value, matrix));
    return SharedList(std::move(moved));
}

void MoveSlot(std::span<SeparateDataShape* const> shapes, const MovingSlot& slot, const Matrix44& matrix)
{
    std::vector<MovedList> moved;
    for (SeparateDataShape* shape : shapes) {
        auto& list = std::get<SharedList<Vector3>>(shape->Pool[slot.Slot].Data);
        const auto known = std::find_if(moved.begin(), moved.end(), [&](const MovedList& candidate) {
            return candidate.Before.IsSharedWith(list);
        });
        if (known != moved.end()) {
            list = known->After;
        } else if (!list.IsEmpty()) {
            moved.push_back({list, MoveList(list, matrix, slot.Move)});
            list = moved.back().After;
        }
    }
}

/// The bone that moves a vertex as a whole: the first that has a share in it.
const Bone* FirstBone(std::span<const SkinInfluence> influences)
{
    for (const SkinInfluence& influence : influences)
        if (influence.Percentage > 0 && influence.Bone)
            return influence.Bone;
    return nullptr;
}

const Matrix44* MatrixOf(const Bone* bone, std::span<const Matrix44> matrices)
{
    if (!bone || bone->BoneIndex < 0 || static_cast<std::size_t>(bone->BoneIndex) >= matrices.size())
        return nullptr;
    return &matrices[static_cast<std::size_t>(bone->BoneIndex)];
}

} // namespace

void TransformShape(SeparateDataShape& shape, const Matrix44& matrix)
{
    SeparateDataShape* const shapes[] = {&shape};
    TransformShapes(shapes, matrix);
}

void TransformShapes(std::span<SeparateDataShape* const> shapes, const Matrix44& matrix)
{
    for (const MovingSlot& slot : MovingSlots)
        MoveSlot(shapes, slot, matrix);
}

void TransformRigid(SeparateDataShape& shape, std::span<const Matrix44> matrices)
{
    for (const auto& [slot, move] : MovingSlots) {
        if (shape.Pool[slot].Size() == 0)
            continue;
        std::vector<Vector3>& values = shape.Pool[slot].Edit<Vector3>();
        std::vector<bool> isMoved(values.size());
        for (const PolygonCorner& corner : shape.Corners) {
            const auto index = static_cast<std::size_t>(corner[slot]);
            if (corner[slot] < 0 || index >= values.size() || isMoved[index])
                continue;
            const Matrix44* matrix = MatrixOf(FirstBone(InfluencesOf(*shape.SkinWeights, corner)), matrices);
            if (!matrix)
                continue;
            values[index] = move(values[index], *matrix);
            isMoved[index] = true;
        }
    }
}

} // namespace tq4x
