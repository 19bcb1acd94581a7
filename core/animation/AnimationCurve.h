#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tq4x
{

/// How the segment that begins at a key runs on to the next.
enum class KeyKind : std::int32_t
{
    Hermite = 0,
    Linear = 1,
    Step = 2,
};

/// One key of a curve.
struct CurveKey
{
    float Frame = 0.0f; ///< frames, counted from the start of the export range
    float Value = 0.0f; ///< angles in degrees until they are written
    KeyKind Kind = KeyKind::Hermite;
    float InSlope = 0.0f;  ///< units per frame
    float OutSlope = 0.0f; ///< units per frame

    bool operator==(const CurveKey&) const = default;
};

/// What a curve does before its first and behind its last key.
enum class RepeatMethod : std::int32_t
{
    None = 0,
    Repeat = 1,
    RelativeRepeat = 2,
    Mirror = 3,
};

/// One sampled float channel and the keys made of it.
struct AnimationCurve
{
    bool NeedsOutput = false; ///< the channel differs from its default and is to be written
    bool IsConstant = true;   ///< all samples lie within `Tolerance` of the first; true without samples
    bool IsLoop = false;      ///< copy of the animation's loop option
    bool IsAngle = false;     ///< samples are degrees; written in radians
    float Tolerance = 0.0f;   ///< error limit, in the channel's own unit
    RepeatMethod PreRepeatMethod = RepeatMethod::None;
    RepeatMethod PostRepeatMethod = RepeatMethod::None;
    std::vector<float> Samples; ///< one value per sample step, in frame order; empty: nothing was sampled
    std::vector<float> SavedSamples; ///< angle samples before the Euler filter of a rotation triple
    std::vector<CurveKey> Keys;      ///< empty until built
    std::string Name;                ///< owner's name, ".", channel name; for messages
};

} // namespace tq4x
