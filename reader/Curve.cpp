#include "ReadCurve.h"

#include <algorithm>
#include <iterator>

namespace tq4x::reader
{
namespace
{

/// The cubic through two keys with their slopes.
double EvaluateCubic(const Key& from, const Key& to, double frame)
{
    const double length = static_cast<double>(to.Frame) - static_cast<double>(from.Frame);
    const double t = (frame - static_cast<double>(from.Frame)) / length;
    const double rest = 1 - t;
    return rest * rest * (1 + 2 * t) * static_cast<double>(from.Value) +
           t * t * (3 - 2 * t) * static_cast<double>(to.Value) +
           length * (t * rest * rest * static_cast<double>(from.OutSlope) -
                     t * t * rest * static_cast<double>(to.InSlope));
}

double EvaluateLine(const Key& from, const Key& to, double frame)
{
    const double length = static_cast<double>(to.Frame) - static_cast<double>(from.Frame);
    const double t = (frame - static_cast<double>(from.Frame)) / length;
    return static_cast<double>(from.Value) * (1 - t) + static_cast<double>(to.Value) * t;
}

/// The last key at or before a frame, the first one if all are behind it.
template<class KeyType>
typename std::vector<KeyType>::const_iterator KeyAt(const std::vector<KeyType>& keys, float frame)
{
    const auto next = std::ranges::upper_bound(keys, frame, {}, &KeyType::Frame);
    return next == keys.begin() ? next : std::prev(next);
}

} // namespace

std::optional<float> EvaluateCurve(const Curve& curve, float frame)
{
    if (curve.Keys.empty()) {
        return std::nullopt;
    }
    const auto from = KeyAt(curve.Keys, frame);
    const auto to = std::next(from);
    const bool isLast =
        to == curve.Keys.end() || to->Frame <= from->Frame; // frames of a damaged file may fall
    if (frame <= from->Frame || isLast || from->Kind == KeyKind::Step) {
        return from->Value;
    }
    const double at = static_cast<double>(frame);
    return static_cast<float>(from->Kind == KeyKind::Hermite ? EvaluateCubic(*from, *to, at)
                                                             : EvaluateLine(*from, *to, at));
}

bool EvaluateBoolCurve(const BoolCurve& curve, float frame)
{
    return curve.Keys.empty() ? curve.DefaultValue : KeyAt(curve.Keys, frame)->Value;
}

} // namespace tq4x::reader
