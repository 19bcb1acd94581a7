#include "animation/VisibilityAnimation.h"

#include "scene/SkeletalModelWriter.h"

#include <string>

namespace tq4x
{
namespace
{

/// Calls `visit(path, curve)` for each member: one for each shape of a mesh whose visibility changes or,
/// bound by name, one for its node.
template<typename Visit>
void ForEachMember(const SkeletalModelWriter& content, Visit visit)
{
    for (const MeshEntry& entry : content.MeshEntries) {
        const AnimationCurve& curve = entry.Bone->VisibilityCurve;
        if (curve.IsConstant)
            continue;
        if (content.MeshVisibilityMode == MeshVisibilityMode::BindByName) {
            visit("MeshNodeVisibilities[\"" + entry.Bone->Name + "\"].IsVisible", curve);
            continue;
        }
        for (std::size_t shape = 0; shape < entry.Mesh->Shapes.size(); ++shape) {
            const std::size_t index = static_cast<std::size_t>(entry.FirstShapeIndex) + shape;
            visit("Meshes[" + std::to_string(index) + "].IsVisible", curve);
        }
    }
}

bool HasMembers(const SkeletalModelWriter& content)
{
    bool found = false;
    ForEachMember(content, [&](const std::string&, const AnimationCurve&) { found = true; });
    return found;
}

void WriteMembers(const SkeletalModelWriter& content, XmlWriter& stream)
{
    ForEachMember(content, [&](const std::string& path, const AnimationCurve& curve) {
        WriteMember(stream, path, [&] { WriteBoolAnimation(stream, curve, false); });
    });
}

} // namespace

void WriteVisibilityAnimation(const SkeletalModelWriter& content, XmlWriter& stream,
                              const AnimationRange& range)
{
    if (!HasMembers(content))
        return;
    // The members stand one level deeper in their set than in the other kinds of animation.
    const auto writeSet = [&] {
        stream.Element("MemberAnimationDataSet",
                       [&] { stream.AtLevel(stream.Level() + 1, [&] { WriteMembers(content, stream); }); });
    };
    stream.Element("Animations", [&] {
        stream.Element("AnimationData",
                       {{"Name", ""},
                        {"FrameSize", FrameSizeOf(range)},
                        {"LoopMode", LoopModeWord(range.IsLoop)},
                        {"IsAdditiveAnimation", false},
                        {"TargetAnimationGroupName", "VisibilityAnimation"}},
                       writeSet);
    });
}

} // namespace tq4x
