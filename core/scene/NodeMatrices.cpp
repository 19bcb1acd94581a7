#include "scene/NodeMatrices.h"

#include "scene/Bone.h"
#include "scene/NodeTree.h"

#include <algorithm>
#include <cstddef>

namespace tq4x
{
namespace
{

/// The rotation of a decomposed matrix alone.
Matrix44 RotationOf(const TransformParts& parts)
{
    return ComposeMatrix({{1.0f, 1.0f, 1.0f}, parts.Rotate, {}});
}

Vector3 TranslationOf(const Matrix44& matrix)
{
    return {matrix(3, 0), matrix(3, 1), matrix(3, 2)};
}

Vector3 Product(const Vector3& a, const Vector3& b)
{
    return {a.X * b.X, a.Y * b.Y, a.Z * b.Z};
}

float QuotientOrZero(float a, float b)
{
    return b == 0.0f ? 0.0f : a / b;
}

Vector3 Quotient(const Vector3& a, const Vector3& b)
{
    return {QuotientOrZero(a.X, b.X), QuotientOrZero(a.Y, b.Y), QuotientOrZero(a.Z, b.Z)};
}

/// The local matrix seen from the world. Hierarchical scaling multiplies scales along the axes of each node,
/// so that a parent's scale never shears through the rotation.
Matrix44 ToWorld(const Matrix44& local, const Matrix44& parent, ScalingRule rule)
{
    if (rule != ScalingRule::Softimage)
        return Multiply(local, parent);
    const TransformParts parentParts = DecomposeMatrix(parent);
    const TransformParts localParts = DecomposeMatrix(local);
    const Matrix44 rotation = Multiply(RotationOf(localParts), RotationOf(parentParts));
    return ComposeMatrix({.Scale = Product(parentParts.Scale, localParts.Scale),
                          .Rotate = DecomposeMatrix(rotation).Rotate,
                          .Translate = TransformPoint(TranslationOf(local), parent)});
}

/// The inverse of `ToWorld`.
Matrix44 ToLocal(const Matrix44& world, const Matrix44& parent, ScalingRule rule)
{
    const Matrix44 inverse = InvertMatrix(parent);
    if (rule != ScalingRule::Softimage)
        return Multiply(world, inverse);
    const TransformParts parentParts = DecomposeMatrix(parent);
    const TransformParts worldParts = DecomposeMatrix(world);
    const Matrix44 rotation = Multiply(RotationOf(worldParts), InvertMatrix(RotationOf(parentParts)));
    return ComposeMatrix({.Scale = Quotient(worldParts.Scale, parentParts.Scale),
                          .Rotate = DecomposeMatrix(rotation).Rotate,
                          .Translate = TransformPoint(TranslationOf(world), inverse)});
}

/// True if the parent stands in the list at its own index, so that a table by index knows it.
bool IsListed(const Bone& bone, std::span<Bone* const> bones)
{
    const std::int32_t index = bone.BoneIndex;
    return index >= 0 && static_cast<std::size_t>(index) < bones.size() &&
           bones[static_cast<std::size_t>(index)] == &bone;
}

/// `GetBindLocalMatrix` with the parent's world matrix from a function, which is asked only where it counts.
template<typename ParentWorld>
Matrix44 BindLocalMatrix(const Bone& bone, ParentWorld parentWorld)
{
    if (!bone.HasSkinningMatrix)
        return {};
    if (bone.Parent == nullptr)
        return ToLocal(bone.BindMatrix, {}, bone.ScalingRule);
    const Matrix44 parent =
        bone.Parent->HasSkinningMatrix ? bone.Parent->BindMatrix : parentWorld(*bone.Parent);
    return ToLocal(bone.BindMatrix, parent, bone.ScalingRule);
}

bool NeedsParentWorld(const Bone* bone)
{
    return bone->HasSkinningMatrix && bone->Parent != nullptr && !bone->Parent->HasSkinningMatrix;
}

} // namespace

Matrix44 GetWorldMatrix(const Bone& bone, std::int32_t frameIndex)
{
    std::vector<const Bone*> path;
    for (const Bone* node = &bone; node != nullptr; node = node->Parent)
        path.push_back(node);
    Matrix44 world = GetSample(*path.back(), frameIndex);
    path.pop_back();
    for (; !path.empty(); path.pop_back())
        world = ToWorld(GetSample(*path.back(), frameIndex), world, path.back()->ScalingRule);
    return world;
}

Matrix44 GetBindGlobalMatrix(const Bone& bone)
{
    return bone.HasSkinningMatrix ? bone.BindMatrix : Matrix44{};
}

Matrix44 GetBindLocalMatrix(const Bone& bone)
{
    return BindLocalMatrix(bone, [](const Bone& parent) { return GetWorldMatrix(parent, 0); });
}

std::vector<Matrix44> ComputeWorldMatrices(std::span<Bone* const> bones, std::int32_t frameIndex)
{
    std::vector<Matrix44> worlds(bones.size());
    for (std::size_t i = 0; i < bones.size(); ++i) {
        const Bone& bone = *bones[i];
        if (bone.Parent == nullptr || !IsListed(*bone.Parent, bones))
            worlds[i] = GetWorldMatrix(bone, frameIndex);
        else
            worlds[i] = ToWorld(GetSample(bone, frameIndex),
                                worlds[static_cast<std::size_t>(bone.Parent->BoneIndex)], bone.ScalingRule);
    }
    return worlds;
}

std::vector<Matrix44> ComputeBindLocalMatrices(std::span<Bone* const> bones)
{
    const bool needsWorlds = std::ranges::any_of(bones, NeedsParentWorld);
    const std::vector<Matrix44> worlds =
        needsWorlds ? ComputeWorldMatrices(bones, 0) : std::vector<Matrix44>();
    std::vector<Matrix44> locals;
    locals.reserve(bones.size());
    for (const Bone* bone : bones)
        locals.push_back(BindLocalMatrix(*bone, [&](const Bone& parent) {
            return IsListed(parent, bones) ? worlds[static_cast<std::size_t>(parent.BoneIndex)]
                                           : GetWorldMatrix(parent, 0);
        }));
    return locals;
}

} // namespace tq4x
