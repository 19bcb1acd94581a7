#include "scene/Curve.h"

#include <algorithm>
#include <cstddef>

namespace XSI::Host
{

namespace
{

using Keys = std::vector<Curve::Key>;

double SlopeAt(const Keys& keys, std::size_t index)
{
    if (index == 0 || index + 1 == keys.size()) {
        return 0.0;
    }
    const Curve::Key& before = keys[index - 1];
    const Curve::Key& after = keys[index + 1];
    return (after.Value - before.Value) / (after.Frame - before.Frame);
}

double EvaluateCubic(const Keys& keys, std::size_t left, double frame)
{
    const Curve::Key& a = keys[left];
    const Curve::Key& b = keys[left + 1];
    const double length = b.Frame - a.Frame;
    const double t = (frame - a.Frame) / length;
    const double outSlope = SlopeAt(keys, left) * length;
    const double inSlope = SlopeAt(keys, left + 1) * length;
    const double d = b.Value - a.Value;
    return a.Value +
           t * (outSlope + t * (3.0 * d - 2.0 * outSlope - inSlope + t * (outSlope + inSlope - 2.0 * d)));
}

} // namespace

double Curve::Evaluate(double frame) const
{
    if (Keys.empty()) {
        return 0.0;
    }
    const auto after = std::upper_bound(Keys.begin(), Keys.end(), frame,
                                        [](double f, const Key& key) { return f < key.Frame; });
    if (after == Keys.begin()) {
        return Keys.front().Value;
    }
    const Key& a = *(after - 1);
    if (after == Keys.end() || Interpolation == Shape::Step) {
        return a.Value;
    }
    if (Interpolation == Shape::Smooth) {
        return EvaluateCubic(Keys, static_cast<std::size_t>(after - Keys.begin()) - 1, frame);
    }
    return a.Value + (after->Value - a.Value) * ((frame - a.Frame) / (after->Frame - a.Frame));
}

} // namespace XSI::Host
