#pragma once

#include "Approx.h"
#include "ReadAnimation.h"

#include <optional>
#include <string>
#include <vector>

namespace tq4x::test
{

/// The value of a written curve at a frame with what printing and the exporter's own evaluation leave open.
Approx CurveValue(const reader::Curve& curve, float frame);

/// The value of a channel: of its curve or, where it has none, what stands still in the file. `tolerance` is
/// what the reduction of keys may take away; a channel without a curve may differ from what stands still by
/// as much, and by what counts as no difference at all.
Approx ChannelValue(const std::optional<reader::Curve>& curve, const Approx& still, float frame,
                    double tolerance);

/// The member of a path, nullptr if nothing moves there.
const reader::MemberAnimation* FindMember(const std::vector<reader::MemberAnimation>& members,
                                          const std::string& path);

/// The curve of a member's channel; nothing without a member.
std::optional<reader::Curve> ChannelOf(const reader::MemberAnimation* member, std::size_t channel);

} // namespace tq4x::test
