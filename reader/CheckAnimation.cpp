#include <cmath>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "CheckSections.h"

namespace tq4x::reader
{
namespace
{

/// Frames of keys must rise, and the curve's bounds must be those of its keys.
template<class CurveType>
void CheckFrames(const CurveType& curve, std::string_view place, FindingList& findings)
{
    for (std::size_t i = 1; i < curve.Keys.size(); ++i) {
        if (curve.Keys[i].Frame <= curve.Keys[i - 1].Frame) {
            findings.Error("TQ-KEY-ORDER", curve.Keys[i].Line,
                           std::string(place) +
                               ": the frame of a key is not behind that of the key before it.");
        }
    }
    const float first = curve.Keys.empty() ? 0.0F : curve.Keys.front().Frame;
    const float last = curve.Keys.empty() ? 0.0F : curve.Keys.back().Frame;
    if (curve.StartFrame != first || curve.EndFrame != last) {
        findings.Error("TQ-CURVE-BOUNDS", curve.Line,
                       std::string(place) +
                           ": StartFrame and EndFrame must be the frames of the first and the last "
                           "key.");
    }
}

/// Frames count from the start of the animation, which is `FrameSize` long.
template<class CurveType>
void CheckRange(const AnimationHead& head, const CurveType& curve, std::string_view place,
                FindingList& findings)
{
    constexpr float Slack = 1.0F; // the last sample may stand a part of a frame behind the end
    if (curve.Keys.empty()) {
        return;
    }
    if (curve.Keys.front().Frame < 0 ||
        curve.Keys.back().Frame >= static_cast<float>(head.FrameSize) + Slack) {
        findings.Error("TQ-KEY-RANGE", curve.Line,
                       std::string(place) + ": keys stand outside the frames 0 to " +
                           std::to_string(head.FrameSize) + ".");
    }
}

std::vector<const Curve*> CurvesOf(const MemberAnimation& member)
{
    std::vector<const Curve*> curves;
    const auto add = [&](const auto& list) {
        for (const std::optional<Curve>& curve : list) {
            if (curve) {
                curves.push_back(&*curve);
            }
        }
    };
    add(member.Scale);
    add(member.Rotate);
    add(member.Translate);
    add(member.Channels);
    return curves;
}

/// Texture patterns keep the frames of the scene, and these may lie before the animation's start.
bool HasSceneFrames(const MemberAnimation& member)
{
    return member.Kind == "IntAnimation";
}

void TellBadPath(const MemberAnimation& member, std::string_view reason, FindingList& findings)
{
    findings.Error("TQ-REF-PATH", member.PathLine,
                   "The path " + member.Path + " " + std::string(reason) + ".");
}

void CheckPatternKeys(const MemberAnimation& member, std::size_t patternCount, FindingList& findings)
{
    if (!member.Channels[0]) {
        return;
    }
    for (const Key& key : member.Channels[0]->Keys) {
        const bool isIndex = key.Value >= 0 && key.Value < static_cast<float>(patternCount) &&
                             key.Value == static_cast<float>(static_cast<int>(key.Value));
        if (!isIndex) {
            findings.Error("TQ-REF-PATTERN", key.Line,
                           "A key of " + member.Path + " is no index into the " +
                               std::to_string(patternCount) + " texture patterns.");
        }
    }
}

void CheckMaterialPath(const MemberAnimation& member, const std::optional<MemberPath>& path,
                       const std::unordered_map<std::string_view, const Material*>& materials,
                       FindingList& findings)
{
    const auto material = path ? materials.find(path->Owner) : materials.end();
    if (material == materials.end()) {
        TellBadPath(member, "names no material of the model", findings);
        return;
    }
    const std::size_t count = path->Member == "TextureMappers"        ? material->second->Mappers.size()
                              : path->Member == "TextureCoordinators" ? material->second->Coordinators.size()
                                                                      : 0;
    if (path->MemberIndex >= 0 && static_cast<std::size_t>(path->MemberIndex) >= count) {
        TellBadPath(member, "goes past the textures of its material", findings);
    }
}

/// `FrameSize` is the length of the window in whole frames.
void CheckWindow(const SkeletalAnimation& animation, FindingList& findings)
{
    const double length = animation.EndFrame - animation.StartFrame;
    // Six digits are printed of each end.
    const double printing = 5e-6 * (std::abs(animation.StartFrame) + std::abs(animation.EndFrame));
    if (length < 0) {
        findings.Error("TQ-FRAME-SIZE", animation.Head.Line, "EndFrame lies before StartFrame.");
    } else if (animation.Head.FrameSize >= 0 &&
               std::abs(animation.Head.FrameSize - std::trunc(length)) > 1 + printing) {
        findings.Error("TQ-FRAME-SIZE", animation.Head.Line,
                       "FrameSize says " + std::to_string(animation.Head.FrameSize) +
                           ", StartFrame and EndFrame are " + std::to_string(std::lround(length)) +
                           " frames apart.");
    }
}

/// Whether two bones may be the same one in a model and in its animation.
bool IsSameBone(const Bone& first, const Bone& second)
{
    return first.Name == second.Name && first.ParentName == second.ParentName;
}

} // namespace

void CheckCurve(const Curve& curve, std::string_view place, FindingList& findings)
{
    CheckFrames(curve, place, findings);
}

void CheckMembers(const AnimationHead& head, const std::vector<MemberAnimation>& members,
                  FindingList& findings)
{
    if (head.FrameSize < 0) {
        findings.Error("TQ-FRAME-SIZE", head.Line, "FrameSize is negative.");
    }
    std::unordered_set<std::string_view> paths;
    for (const MemberAnimation& member : members) {
        if (!paths.insert(member.Path).second) {
            findings.Error("TQ-PATH-REPEAT", member.PathLine, "The path " + member.Path + " stands twice.");
        }
        for (const Curve* const curve : CurvesOf(member)) {
            CheckFrames(*curve, member.Path, findings);
            if (!HasSceneFrames(member)) {
                CheckRange(head, *curve, member.Path, findings);
            }
        }
        if (member.Bool) {
            CheckFrames(*member.Bool, member.Path, findings);
            CheckRange(head, *member.Bool, member.Path, findings);
        }
    }
}

void CheckSkeletalAnimation(const SkeletalAnimation& animation, FindingList& findings)
{
    CheckMembers(animation.Head, animation.Members, findings);
    CheckSkeleton(animation.Bones, findings);
    std::unordered_set<std::string_view> bones;
    for (const Bone& bone : animation.Bones.Bones) {
        bones.insert(bone.Name);
    }
    for (const MemberAnimation& member : animation.Members) {
        const std::optional<MemberPath> path = ParseMemberPath(member.Path, "Skeleton.Bones");
        if (!path || !bones.contains(path->Owner)) {
            TellBadPath(member, "names no bone of the skeleton", findings);
        }
    }
    CheckWindow(animation, findings);
}

void CheckMaterialAnimation(const MaterialAnimation& animation, FindingList& findings)
{
    CheckMembers(animation.Head, animation.Members, findings);
    for (const MemberAnimation& member : animation.Members) {
        if (!ParseMemberPath(member.Path, "Materials")) {
            TellBadPath(member, "names no member of a material", findings);
        }
        if (member.Kind == "IntAnimation") {
            CheckPatternKeys(member, animation.Patterns.size(), findings);
        }
    }
}

void CheckVisibilityAnimation(const VisibilityAnimation& animation, FindingList& findings)
{
    CheckMembers(animation.Head, animation.Members, findings);
}

void CheckAgainstModel(const SkeletalAnimation& animation, const Model& model, FindingList& findings)
{
    const std::vector<Bone>& own = animation.Bones.Bones;
    const std::vector<Bone>& others = model.Bones.Bones;
    bool isSame = own.size() == others.size();
    for (std::size_t i = 0; isSame && i < own.size(); ++i) {
        isSame = IsSameBone(own[i], others[i]);
    }
    if (!isSame) {
        findings.Error("TQ-SKELETON", animation.Bones.Line,
                       "The skeleton is not that of the model beside this file.");
    }
}

void CheckAgainstModel(const MaterialAnimation& animation, const Model& model, FindingList& findings)
{
    std::unordered_map<std::string_view, const Material*> materials;
    for (const Material& material : model.Materials) {
        materials.emplace(material.Name, &material);
    }
    for (const MemberAnimation& member : animation.Members) {
        CheckMaterialPath(member, ParseMemberPath(member.Path, "Materials"), materials, findings);
    }
}

void CheckAgainstModel(const VisibilityAnimation& animation, const Model& model, FindingList& findings)
{
    std::unordered_set<std::string_view> nodes;
    for (const MeshNodeVisibility& node : model.NodeVisibilities) {
        nodes.insert(node.Name);
    }
    for (const MemberAnimation& member : animation.Members) {
        const std::optional<MemberPath> mesh = ParseMemberPath(member.Path, "Meshes");
        const std::optional<MemberPath> node = ParseMemberPath(member.Path, "MeshNodeVisibilities");
        if (mesh && static_cast<std::size_t>(mesh->OwnerIndex) >= model.Meshes.size()) {
            TellBadPath(member, "goes past the meshes of the model", findings);
        }
        if (node && !nodes.contains(node->Owner)) {
            TellBadPath(member, "names no node of the model's MeshNodeVisibilities", findings);
        }
    }
}

} // namespace tq4x::reader
