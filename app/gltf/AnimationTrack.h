#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "gltf/GltfDocument.h"

namespace tq4x::gltf
{

/// One animated value over time, ready to be evaluated at any frame.
struct AnimationTrack
{
    Interpolation Shape = Interpolation::Linear;
    std::size_t Components = 1;
    bool IsRotation = false;    ///< unit quaternions: turned along the shorter arc
    std::vector<double> Frames; ///< rising strictly; frame 0 is the time 0
    std::vector<double> Values; ///< `Components` for each key; for splines: in-tangent, value, out-tangent,
                                /// tangents per frame
};

/// A time in seconds as a frame. Times are stored in single precision, so that frame 3 at 30 frames a second
/// comes as 3.0000003 and would be missed by a sample at frame 3: what lies as near as that rounding, and not
/// less than a thousandth of a frame, is moved onto the whole frame.
[[nodiscard]] double FrameOfTime(double seconds, double framesPerSecond);

/// Reads the keys of a channel. Throws `SceneError` at `place` for times or values that are not finite and
/// for times that fall. Where several keys share a time the last one counts, and `repeated` is raised by
/// their number. The number of keys may be 0.
[[nodiscard]] AnimationTrack ReadTrack(const Document& document, const AnimationSampler& sampler,
                                       AnimatedProperty property, double framesPerSecond,
                                       const std::string& place, std::size_t& repeated);

/// The value at a frame, into `Components` numbers. Before the first and behind the last key it is theirs.
/// Needs at least one key.
void EvaluateTrack(const AnimationTrack& track, double frame, std::span<double> into);

} // namespace tq4x::gltf
