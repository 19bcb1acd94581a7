#include "CurveValues.h"

#include <algorithm>
#include <iterator>

namespace tq4x::test
{
namespace
{

/// The cubic is a mean of the values, by weights that sum to 1, and adds the slopes, each by at most 4/27 of
/// the length. Its terms come from some twenty rounded operations.
double CubicError(const reader::Key& from, const reader::Key& to)
{
    constexpr double slopeShare = 4.0 / 27.0;
    constexpr double operations = 20.0;
    const double length = static_cast<double>(to.Frame) - static_cast<double>(from.Frame);
    const double terms =
        std::abs(from.Value) + std::abs(to.Value) + length * (std::abs(from.OutSlope) + std::abs(to.InSlope));
    return std::max(PrintedError(from.Value), PrintedError(to.Value)) +
           slopeShare * length * (PrintedError(from.OutSlope) + PrintedError(to.InSlope)) +
           operations * SingleRounding * terms;
}

/// A key may stand beside its frame by half a printed digit: the curve moves by its slope times this.
double FrameError(const reader::Key& from, const reader::Key& to)
{
    const double steepest =
        1.5 * std::abs(to.Value - from.Value) /
            std::max(static_cast<double>(to.Frame) - static_cast<double>(from.Frame), 1e-6) +
        std::abs(from.OutSlope) + std::abs(to.InSlope);
    const auto isWhole = [](float frame) { return frame == std::floor(frame) && frame < 1e6F; };
    const double shift = (isWhole(from.Frame) ? 0.0 : PrintedError(from.Frame)) +
                         (isWhole(to.Frame) ? 0.0 : PrintedError(to.Frame));
    return steepest * shift;
}

} // namespace

Approx CurveValue(const reader::Curve& curve, float frame)
{
    const double value = reader::EvaluateCurve(curve, frame).value_or(0.0F);
    // A key beside its frame by its last digit must not fall behind the frame.
    const double reach = frame + PrintedError(frame) * (frame == std::floor(frame) ? 0.0 : 1.0);
    const auto to =
        std::ranges::find_if(curve.Keys, [&](const reader::Key& key) { return key.Frame > reach; });
    if (to == curve.Keys.begin() || to == curve.Keys.end()) {
        const float held = to == curve.Keys.begin() ? curve.Keys.front().Value : curve.Keys.back().Value;
        return Rounded(value, PrintedError(held) + std::abs(value - static_cast<double>(held)));
    }
    const reader::Key& from = *std::prev(to);
    return Rounded(value, CubicError(from, *to) + FrameError(from, *to));
}

Approx ChannelValue(const std::optional<reader::Curve>& curve, const Approx& still, float frame,
                    double tolerance)
{
    constexpr double noDifference = 1e-6;
    Approx value = curve ? CurveValue(*curve, frame) : still;
    value.Error += tolerance + (curve ? 0.0 : noDifference);
    return value;
}

const reader::MemberAnimation* FindMember(const std::vector<reader::MemberAnimation>& members,
                                          const std::string& path)
{
    const auto found = std::ranges::find(members, path, &reader::MemberAnimation::Path);
    return found == members.end() ? nullptr : &*found;
}

std::optional<reader::Curve> ChannelOf(const reader::MemberAnimation* member, std::size_t channel)
{
    return member == nullptr ? std::nullopt : member->Channels[channel];
}

} // namespace tq4x::test
