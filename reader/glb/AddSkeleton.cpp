#include "glb/AddSkeleton.h"

#include <algorithm>
#include <cmath>

namespace tq4x::reader
{
namespace
{

bool IsIdentity(const Transform& transform)
{
    const Transform identity;
    return transform.Scale == identity.Scale && transform.Rotate == identity.Rotate &&
           transform.Translate == identity.Translate;
}

bool HasParent(const Skeleton& skeleton, std::size_t bone)
{
    const int parent = skeleton.Bones[bone].Parent;
    return parent >= 0 && static_cast<std::size_t>(parent) < bone;
}

bool IsUniform(const Vector3& scale)
{
    constexpr float Tolerance = 1e-5F; // what printing leaves of equal scales
    const auto [smallest, largest] = std::ranges::minmax(scale);
    return largest - smallest <= Tolerance * std::max(std::abs(largest), std::abs(smallest));
}

/// Rules under which a parent's scale reaches its children in another way than in glTF.
void WarnOfScaling(const Skeleton& skeleton, GlbScene& scene)
{
    const bool isAlongAxes = skeleton.ScalingRule == "Softimage";
    for (std::size_t i = 0; i < skeleton.Bones.size(); ++i) {
        if (!HasParent(skeleton, i)) {
            continue;
        }
        const Vector3& scale = skeleton.Bones[static_cast<std::size_t>(skeleton.Bones[i].Parent)].Local.Scale;
        const bool isCompensated = skeleton.Bones[i].IsSegmentScaleCompensate && scale != Vector3{1, 1, 1};
        if (isCompensated || (isAlongAxes && !IsUniform(scale))) {
            scene.Warnings.push_back("\"" + skeleton.Bones[i].Name +
                                     "\": the scale of its parent reaches it as in glTF, not by the scaling "
                                     "rule of the model.");
        }
    }
}

} // namespace

SkeletonNodes AddSkeleton(const Skeleton& skeleton, const Transform& root, GlbScene& scene)
{
    SkeletonNodes nodes;
    std::vector<int> roots;
    for (std::size_t i = 0; i < skeleton.Bones.size(); ++i) {
        const Bone& bone = skeleton.Bones[i];
        Json node = {{"name", bone.Name}};
        SetTransform(node, bone.Local);
        nodes.Bones.push_back(scene.Writer.Add("nodes", std::move(node)));
        if (HasParent(skeleton, i)) {
            const int parent = nodes.Bones[static_cast<std::size_t>(bone.Parent)];
            scene.Writer.At("nodes", parent)["children"].push_back(nodes.Bones.back());
        } else {
            roots.push_back(nodes.Bones.back());
        }
    }
    if (roots.size() > 1 || (roots.size() == 1 && !IsIdentity(root))) {
        Json node = {{"name", "model"}};
        SetTransform(node, root);
        node["children"] = roots;
        nodes.RootNode = scene.Writer.Add("nodes", std::move(node));
        roots = {nodes.RootNode};
    }
    scene.Roots.insert(scene.Roots.end(), roots.begin(), roots.end());
    WarnOfScaling(skeleton, scene);
    return nodes;
}

std::vector<Matrix> PoseOf(const Skeleton& skeleton)
{
    std::vector<Matrix> pose;
    pose.reserve(skeleton.Bones.size());
    for (std::size_t i = 0; i < skeleton.Bones.size(); ++i) {
        const Matrix local = MatrixOf(skeleton.Bones[i].Local);
        pose.push_back(HasParent(skeleton, i)
                           ? Multiply(pose[static_cast<std::size_t>(skeleton.Bones[i].Parent)], local)
                           : local);
    }
    return pose;
}

} // namespace tq4x::reader
