#include "scene/NodeTree.h"

#include "scene/Bone.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace tq4x
{
namespace
{

std::int64_t SlotOf(const Bone& bone, std::int32_t frameIndex)
{
    return std::int64_t{frameIndex} - bone.SamplesFirstFrame;
}

/// The children that go out, in the order of the output.
std::vector<Bone*> SortedChildren(const Bone& bone)
{
    std::vector<Bone*> children;
    for (Bone* child = bone.FirstChild.get(); child != nullptr; child = child->NextSibling.get())
        if (child->IsOutput)
            children.push_back(child);
    // The chain is in reverse order of insertion; equal names shall keep the order of insertion.
    std::ranges::reverse(children);
    std::ranges::stable_sort(children, {}, &Bone::Name);
    return children;
}

} // namespace

Bone& AddChild(std::unique_ptr<Bone> child, Bone& parent)
{
    child->Parent = &parent;
    child->NextSibling = std::move(parent.FirstChild);
    parent.FirstChild = std::move(child);
    return *parent.FirstChild;
}

void SetMesh(Bone& bone, Mesh* mesh)
{
    bone.Mesh = mesh;
}

void SetSample(Bone& bone, std::int32_t frameIndex, const Matrix44& matrix)
{
    if (bone.TransformSamples.empty())
        bone.SamplesFirstFrame = frameIndex;
    const std::int64_t slot = SlotOf(bone, frameIndex);
    if (slot < 0)
        return;
    const std::size_t index = static_cast<std::size_t>(slot);
    if (index >= bone.TransformSamples.size())
        bone.TransformSamples.resize(index + 1);
    bone.TransformSamples[index] = matrix;
}

Matrix44 GetSample(const Bone& bone, std::int32_t frameIndex)
{
    if (bone.TransformSamples.empty())
        return {};
    const std::int64_t last = std::ssize(bone.TransformSamples) - 1;
    const std::int64_t slot = std::clamp<std::int64_t>(SlotOf(bone, frameIndex), 0, last);
    return bone.TransformSamples[static_cast<std::size_t>(slot)];
}

void AppendVisibility(Bone& bone, float value)
{
    bone.VisibilityCurve.Samples.push_back(value);
}

void CollectBones(Bone& root, std::vector<Bone*>& list)
{
    std::vector<Bone*> pending{&root};
    while (!pending.empty()) {
        Bone* const bone = pending.back();
        pending.pop_back();
        bone->BoneIndex = static_cast<std::int32_t>(list.size());
        list.push_back(bone);
        const std::vector<Bone*> children = SortedChildren(*bone);
        pending.insert(pending.end(), children.rbegin(), children.rend());
    }
}

} // namespace tq4x
