#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tq4x::reader
{

enum class KeyKind
{
    Hermite,
    Linear,
    Step,
};

struct Key
{
    KeyKind Kind = KeyKind::Linear;
    float Frame = 0;
    float Value = 0;    ///< radians for angles
    float InSlope = 0;  ///< Hermite only: units per frame
    float OutSlope = 0; ///< Hermite only
    long Line = 0;
};

/// One channel over time.
struct Curve
{
    std::string PreRepeatMethod = "None"; ///< "None", "Repeat", "RelativeRepeat", "Mirror"
    std::string PostRepeatMethod = "None";
    float StartFrame = 0;
    float EndFrame = 0;
    std::vector<Key> Keys; ///< by frame
    long Line = 0;
};

/// A channel that is true or false: the value of a key holds from its frame to the next key.
struct BoolKey
{
    float Frame = 0;
    bool Value = false;
    long Line = 0;
};

struct BoolCurve
{
    float StartFrame = 0;
    float EndFrame = 0;
    bool DefaultValue = false;
    std::vector<BoolKey> Keys;
    long Line = 0;
};

/// The value at a frame. Before the first and behind the last key their values hold (the repeat methods are
/// not applied); between two keys the kind of the earlier one decides: cubic with the slopes, straight, or
/// holding. Nothing for a curve without keys.
[[nodiscard]] std::optional<float> EvaluateCurve(const Curve& curve, float frame);

/// The same for a two-state channel; a curve without keys gives its default.
[[nodiscard]] bool EvaluateBoolCurve(const BoolCurve& curve, float frame);

} // namespace tq4x::reader
