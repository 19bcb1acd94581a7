#include "glb/MemberValues.h"

#include <algorithm>

namespace tq4x::reader
{
namespace
{

void Collect(std::span<const std::optional<Curve>> from, std::vector<const Curve*>& curves)
{
    for (const std::optional<Curve>& curve : from) {
        if (curve) {
            curves.push_back(&*curve);
        }
    }
}

} // namespace

const MemberAnimation* FindMember(const std::vector<MemberAnimation>& members, std::string_view path)
{
    const auto found = std::ranges::find(members, path, &MemberAnimation::Path);
    return found == members.end() ? nullptr : &*found;
}

std::vector<const Curve*> CurvesOf(std::initializer_list<const MemberAnimation*> members)
{
    std::vector<const Curve*> curves;
    for (const MemberAnimation* const member : members) {
        if (member != nullptr) {
            Collect(member->Scale, curves);
            Collect(member->Rotate, curves);
            Collect(member->Translate, curves);
            Collect(member->Channels, curves);
        }
    }
    return curves;
}

std::vector<const Curve*> CurvesOf(const CurveTriple& curves)
{
    std::vector<const Curve*> present;
    Collect(curves, present);
    return present;
}

void EvaluateCurves(std::span<const std::optional<Curve>> curves, float frame, std::span<float> values)
{
    for (std::size_t i = 0; i < std::min(curves.size(), values.size()); ++i) {
        if (curves[i]) {
            values[i] = EvaluateCurve(*curves[i], frame).value_or(values[i]);
        }
    }
}

void EvaluateMember(const MemberAnimation* member, float frame, std::span<float> values)
{
    if (member != nullptr) {
        EvaluateCurves(member->Channels, frame, values);
    }
}

} // namespace tq4x::reader
