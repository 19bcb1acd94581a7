#include "gltf/AnimationTrack.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "gltf/AccessorReader.h"
#include "gltf/SceneError.h"

namespace tq4x::gltf
{
namespace
{

constexpr double SnapDistance = 1e-3;      // frames
constexpr double SinglePrecision = 2.4e-7; // relative rounding of a stored time, with some room

struct SamplerData
{
    std::vector<float> Times;
    std::vector<float> Values;
};

void CheckTimes(const std::vector<float>& times, const std::string& place)
{
    for (std::size_t i = 0; i < times.size(); ++i) {
        if (!std::isfinite(times[i])) {
            throw SceneError(place, "Key time " + std::to_string(i) + " is not a finite number.");
        }
        if (i > 0 && times[i] < times[i - 1]) {
            throw SceneError(place, "The key times fall at key " + std::to_string(i) + ".");
        }
    }
}

void CheckValues(const std::vector<float>& values, std::size_t perKey, const std::string& place)
{
    const auto bad = std::ranges::find_if_not(values, [](float value) { return std::isfinite(value); });
    if (bad != values.end()) {
        throw SceneError(place, "A value of key " +
                                    std::to_string(static_cast<std::size_t>(bad - values.begin()) / perKey) +
                                    " is not a finite number.");
    }
}

void Normalize(std::span<double> quaternion)
{
    const double length =
        std::hypot(std::hypot(quaternion[0], quaternion[1]), std::hypot(quaternion[2], quaternion[3]));
    if (!(length > 0.0)) {
        std::ranges::copy(std::array{0.0, 0.0, 0.0, 1.0}, quaternion.begin());
        return;
    }
    for (double& component : quaternion) {
        component /= length;
    }
}

double Dot(std::span<const double> a, std::span<const double> b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3];
}

// Spherical interpolation along the shorter arc; nearly equal quaternions are mixed straight, where the sine
// of their angle would divide by next to nothing.
void MixRotations(std::span<const double> from, std::span<const double> to, double t, std::span<double> into)
{
    constexpr double NearlyEqual = 0.9999999;
    const double dot = Dot(from, to);
    const double sign = dot < 0.0 ? -1.0 : 1.0;
    double fromWeight = 1.0 - t;
    double toWeight = t;
    if (std::abs(dot) < NearlyEqual) {
        const double angle = std::acos(std::abs(dot));
        fromWeight = std::sin((1.0 - t) * angle) / std::sin(angle);
        toWeight = std::sin(t * angle) / std::sin(angle);
    }
    for (std::size_t i = 0; i < 4; ++i) {
        into[i] = fromWeight * from[i] + sign * toWeight * to[i];
    }
    Normalize(into);
}

std::span<const double> KeyValue(const AnimationTrack& track, std::size_t key)
{
    const std::size_t n = track.Components;
    const bool isSpline = track.Shape == Interpolation::CubicSpline;
    return std::span(track.Values).subspan(isSpline ? (3 * key + 1) * n : key * n, n);
}

void MixSpline(const AnimationTrack& track, std::size_t key, double t, std::span<double> into)
{
    const std::size_t n = track.Components;
    const double length = track.Frames[key + 1] - track.Frames[key];
    const double* const start = track.Values.data() + (3 * key + 1) * n;
    const double* const outTangent = start + n;
    const double* const inTangent = outTangent + n;
    const double* const end = inTangent + n;
    const double t2 = t * t;
    const double t3 = t2 * t;
    for (std::size_t i = 0; i < n; ++i) {
        into[i] = (2.0 * t3 - 3.0 * t2 + 1.0) * start[i] + length * (t3 - 2.0 * t2 + t) * outTangent[i] +
                  (3.0 * t2 - 2.0 * t3) * end[i] + length * (t3 - t2) * inTangent[i];
    }
}

// Appends the values of one key, tangents turned from seconds to frames.
void AppendKey(AnimationTrack& track, std::span<const float> values, double framesPerSecond)
{
    const std::size_t n = track.Components;
    const bool isSpline = track.Shape == Interpolation::CubicSpline;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const bool isTangent = isSpline && i / n != 1;
        track.Values.push_back(isTangent ? values[i] / framesPerSecond : values[i]);
    }
    if (track.IsRotation && !isSpline) {
        Normalize(std::span(track.Values).last(n));
    }
}

} // namespace

double FrameOfTime(double seconds, double framesPerSecond)
{
    const double frame = seconds * framesPerSecond;
    const double whole = std::round(frame);
    const double distance = std::max(SnapDistance, std::abs(frame) * SinglePrecision);
    return std::abs(frame - whole) <= distance ? whole : frame;
}

AnimationTrack ReadTrack(const Document& document, const AnimationSampler& sampler, AnimatedProperty property,
                         double framesPerSecond, const std::string& place, std::size_t& repeated)
{
    AnimationTrack track;
    track.Shape = sampler.Shape;
    track.Components = ComponentCount(document.Accessors[sampler.Output].Shape);
    track.IsRotation = property == AnimatedProperty::Rotation;
    const std::size_t perKey = track.Components * (track.Shape == Interpolation::CubicSpline ? 3 : 1);
    const SamplerData data{ReadFloats(document, sampler.Input), ReadFloats(document, sampler.Output)};
    CheckTimes(data.Times, place);
    CheckValues(data.Values, perKey, place);
    for (std::size_t i = 0; i < data.Times.size(); ++i) {
        const double frame = FrameOfTime(data.Times[i], framesPerSecond);
        if (!track.Frames.empty() && frame <= track.Frames.back()) {
            track.Frames.pop_back();
            track.Values.resize(track.Values.size() - perKey);
            ++repeated;
        }
        track.Frames.push_back(frame);
        AppendKey(track, std::span(data.Values).subspan(i * perKey, perKey), framesPerSecond);
    }
    return track;
}

void EvaluateTrack(const AnimationTrack& track, double frame, std::span<double> into)
{
    const auto after = std::ranges::upper_bound(track.Frames, frame);
    const std::size_t next = static_cast<std::size_t>(after - track.Frames.begin());
    const std::size_t key = next == 0 ? 0 : next - 1;
    const bool isOutside = next == 0 || next == track.Frames.size();
    const double t = isOutside ? 0.0 : (frame - track.Frames[key]) / (track.Frames[next] - track.Frames[key]);
    if (isOutside || track.Shape == Interpolation::Step) {
        std::ranges::copy(KeyValue(track, key), into.begin());
    } else if (track.Shape == Interpolation::CubicSpline) {
        MixSpline(track, key, t, into);
    } else if (track.IsRotation) {
        MixRotations(KeyValue(track, key), KeyValue(track, next), t, into);
        return;
    } else {
        const auto from = KeyValue(track, key);
        const auto to = KeyValue(track, next);
        for (std::size_t i = 0; i < track.Components; ++i) {
            into[i] = from[i] + t * (to[i] - from[i]);
        }
    }
    if (track.IsRotation) {
        Normalize(into.first(track.Components));
    }
}

} // namespace tq4x::gltf
