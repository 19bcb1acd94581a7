#pragma once

#include <span>

namespace tq4x
{

/// Removes jumps between the many Euler forms of one orientation (rotation about X, then Y, then Z, in
/// degrees): each sample takes the form that lies nearest to the sample before it. All three lists have the
/// length of `x`. True if a sample changed.
bool FilterEulerTriple(std::span<float> x, std::span<float> y, std::span<float> z);

} // namespace tq4x
