#include "scene/PrepareForWriting.h"

#include "geometry/BuildMeshEntries.h"
#include "geometry/FinalizeMesh.h"
#include "geometry/MarkNeededBones.h"
#include "geometry/PrepareSkin.h"
#include "scene/AnimationFlags.h"
#include "scene/NodeMatrices.h"
#include "scene/NodeTree.h"
#include "scene/SkeletalModelWriter.h"

#include <algorithm>
#include <cstddef>

namespace tq4x
{
namespace
{

constexpr std::int32_t NoGroup = -1;
constexpr std::int32_t LastGroup = 255;

void CopyVisibility(const Bone& bone)
{
    if (bone.Mesh == nullptr)
        return;
    for (auto& [material, shape] : bone.Mesh->Shapes)
        shape->IsVisible = bone.IsVisible;
}

/// A node without a group of its own hands over its parent's. The group is not written back to the node, so
/// it reaches one level down and no further.
void CopyCombineGroup(const Bone& bone)
{
    if (bone.Mesh == nullptr)
        return;
    const bool takesParents = bone.CombineGroup < 0 && bone.Parent != nullptr;
    const std::int32_t group = takesParents ? bone.Parent->CombineGroup : bone.CombineGroup;
    bone.Mesh->CombineGroup = std::clamp(group, NoGroup, LastGroup);
}

void UpdateAllAnimationFlags(const std::vector<Bone*>& bones, const ChannelSettings& settings)
{
    const std::vector<Matrix44> bindLocals = ComputeBindLocalMatrices(bones);
    for (std::size_t i = 0; i < bones.size(); ++i)
        UpdateAnimationFlags(*bones[i], bindLocals[i], settings.Tolerances, settings.FrameSteps);
}

/// All meshes are finished even if one fails.
bool FinalizeMeshes(const std::vector<MeshEntry>& entries)
{
    bool isFinished = true;
    for (const MeshEntry& entry : entries)
        isFinished = FinalizeMesh(*entry.Mesh) && isFinished;
    return isFinished;
}

} // namespace

bool PrepareForWriting(SkeletalModelWriter& content, Bone* root, const PrepareSettings& settings)
{
    if (root == nullptr)
        return true;
    content.Bones.clear();
    CollectBones(*root, content.Bones);
    // Before the skins: a mesh that goes over to another node takes these two along.
    for (const Bone* bone : content.Bones)
        CopyVisibility(*bone);
    for (const Bone* bone : content.Bones)
        CopyCombineGroup(*bone);
    PrepareSkins(content.Bones,
                 settings.IsRigidSkinning ? AdjustSkinning::RigidSkinning : AdjustSkinning::None);
    UpdateAllAnimationFlags(content.Bones, settings.Channels);
    BuildMeshEntries(content);
    for (const MeshEntry& entry : content.MeshEntries)
        MarkNeededBones(*entry.Mesh, *entry.Bone);
    return FinalizeMeshes(content.MeshEntries);
}

} // namespace tq4x
