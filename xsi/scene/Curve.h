#pragma once

#include <vector>

namespace XSI::Host
{

/// A value over time by keys, for tests and tools that set animation by hand.
struct Curve
{
    enum class Shape
    {
        Step,   ///< The value of the key at or before the frame.
        Linear, ///< A straight line from key to key.
        Smooth, ///< A cubic through the keys with the slopes of their neighbours, level at both ends.
    };

    struct Key
    {
        double Frame = 0.0;
        double Value = 0.0;
    };

    std::vector<Key> Keys; ///< In ascending order of frames; empty: the value is 0.
    Shape Interpolation = Shape::Linear;

    /// The value at a frame; before the first key and behind the last one it is theirs.
    double Evaluate(double frame) const;
};

} // namespace XSI::Host
