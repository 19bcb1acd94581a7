#include "NumberForm.h"
#include "ReadAnimation.h"

namespace tq4x::reader
{
namespace
{

/// Takes the bracket at the front of a text off it: `["name"]` or `[3]`. False if there is none. Names are
/// not escaped, so a name may hold a quote or a bracket: the last closing bracket ends it.
bool TakeOwner(std::string_view& rest, MemberPath& path)
{
    if (rest.starts_with("[\"")) {
        const std::size_t end = rest.rfind("\"].");
        if (end == std::string_view::npos || end < 2) {
            return false;
        }
        path.Owner = rest.substr(2, end - 2);
        rest.remove_prefix(end + 2);
        return true;
    }
    const std::size_t end = rest.find(']');
    if (!rest.starts_with('[') || end == std::string_view::npos) {
        return false;
    }
    path.OwnerIndex = ParseInteger(rest.substr(1, end - 1)).value_or(-1);
    rest.remove_prefix(end + 1);
    return path.OwnerIndex >= 0;
}

} // namespace

std::optional<MemberPath> ParseMemberPath(const std::string& text, const std::string& collection)
{
    MemberPath path;
    std::string_view rest = text;
    if (!rest.starts_with(collection)) {
        return std::nullopt;
    }
    rest.remove_prefix(collection.size());
    if (!TakeOwner(rest, path) || !rest.starts_with('.')) {
        return std::nullopt;
    }
    rest.remove_prefix(1);
    const std::size_t bracket = rest.find('[');
    path.Member = rest.substr(0, bracket);
    if (bracket == std::string_view::npos) {
        return path.Member.empty() ? std::nullopt : std::optional(path);
    }
    const std::size_t end = rest.find("].", bracket);
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    path.MemberIndex = ParseInteger(rest.substr(bracket + 1, end - bracket - 1)).value_or(-1);
    path.Last = rest.substr(end + 2);
    return path.MemberIndex < 0 ? std::nullopt : std::optional(path);
}

const MemberAnimation* FindBoneMember(const SkeletalAnimation& animation, const std::string& bone)
{
    const std::string path = "Skeleton.Bones[\"" + bone + "\"].AnimatedTransform";
    for (const MemberAnimation& member : animation.Members) {
        if (member.Path == path) {
            return &member;
        }
    }
    return nullptr;
}

namespace
{

void EvaluateTriple(const CurveTriple& curves, float frame, Vector3& values)
{
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (curves[axis]) {
            values[axis] = EvaluateCurve(*curves[axis], frame).value_or(values[axis]);
        }
    }
}

} // namespace

Transform EvaluateBone(const SkeletalAnimation& animation, std::size_t bone, float frame)
{
    Transform local = animation.Bones.Bones.at(bone).Local;
    if (const MemberAnimation* const member = FindBoneMember(animation, animation.Bones.Bones[bone].Name)) {
        EvaluateTriple(member->Scale, frame, local.Scale);
        EvaluateTriple(member->Rotate, frame, local.Rotate);
        EvaluateTriple(member->Translate, frame, local.Translate);
    }
    return local;
}

} // namespace tq4x::reader
