#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "ReadAnimation.h"

namespace tq4x::reader
{

/// The member of a path, nullptr if there is none.
[[nodiscard]] const MemberAnimation* FindMember(const std::vector<MemberAnimation>& members,
                                                std::string_view path);

/// All curves of the members that there are.
[[nodiscard]] std::vector<const Curve*> CurvesOf(std::initializer_list<const MemberAnimation*> members);

/// The curves of three channels that there are.
[[nodiscard]] std::vector<const Curve*> CurvesOf(const CurveTriple& curves);

/// What curves give at a frame; a channel without a curve keeps what stands in `values`.
void EvaluateCurves(std::span<const std::optional<Curve>> curves, float frame, std::span<float> values);

/// The same for the channels of a member, which may be missing.
void EvaluateMember(const MemberAnimation* member, float frame, std::span<float> values);

} // namespace tq4x::reader
