#include "glb/AddSkeletalClip.h"

#include <algorithm>
#include <unordered_map>

#include "glb/MemberValues.h"

namespace tq4x::reader
{
namespace
{

using Places = std::unordered_map<std::string, std::size_t>;

Places PlacesOf(const Skeleton& skeleton)
{
    Places places;
    for (std::size_t i = 0; i < skeleton.Bones.size(); ++i) {
        places.emplace(skeleton.Bones[i].Name, i);
    }
    return places;
}

/// Scale or translation.
void MoveVector(const CurveTriple& curves, std::string_view path, const Vector3& start, const Vector3& atRest,
                int node, int frameSize, ClipBuilder& clip)
{
    const auto evaluate = [&](float frame, std::span<float> values) {
        std::ranges::copy(start, values.begin());
        EvaluateCurves(curves, frame, values);
    };
    clip.MoveNode(node, path, clip.Sample(CurvesOf(curves), frameSize, 3, TrackForm::Linear, evaluate),
                  atRest);
}

void MoveRotation(const CurveTriple& curves, const Vector3& start, const Vector3& atRest, int node,
                  int frameSize, ClipBuilder& clip)
{
    const auto evaluate = [&](float frame, std::span<float> values) {
        Vector3 angles = start;
        EvaluateCurves(curves, frame, angles);
        std::ranges::copy(ToFloats(QuaternionOf(angles)), values.begin());
    };
    clip.MoveNode(node, "rotation", clip.Sample(CurvesOf(curves), frameSize, 4, TrackForm::Curved, evaluate),
                  ToFloats(QuaternionOf(atRest)));
}

} // namespace

void AddSkeletalClip(const SkeletalAnimation& animation, const Skeleton& model, const SkeletonNodes& nodes,
                     ClipBuilder& clip, GlbScene& scene)
{
    const Places inModel = PlacesOf(model);
    const Places inAnimation = PlacesOf(animation.Bones);
    const int frameSize = animation.Head.FrameSize;
    for (const MemberAnimation& member : animation.Members) {
        const std::optional<MemberPath> path = ParseMemberPath(member.Path, "Skeleton.Bones");
        const std::string name = path ? path->Owner : member.Path;
        const auto place = inModel.find(name);
        const auto own = inAnimation.find(name);
        if (place == inModel.end() || own == inAnimation.end()) {
            scene.Warnings.push_back("\"" + name + "\": the model has no bone of this name to be moved.");
            continue;
        }
        const Transform& start = animation.Bones.Bones[own->second].Local;
        const Transform& atRest = model.Bones[place->second].Local;
        const int node = nodes.Bones[place->second];
        MoveVector(member.Translate, "translation", start.Translate, atRest.Translate, node, frameSize, clip);
        MoveRotation(member.Rotate, start.Rotate, atRest.Rotate, node, frameSize, clip);
        MoveVector(member.Scale, "scale", start.Scale, atRest.Scale, node, frameSize, clip);
    }
}

} // namespace tq4x::reader
