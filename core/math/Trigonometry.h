#pragma once

namespace tq4x
{

/// Sine and cosine of an angle in radians, right to the last bit or the one before it at every angle: the
/// files bind what becomes of them in single precision. Not every system's own are, near quarter turns above
/// all.
double Sine(double radians);
double Cosine(double radians);

} // namespace tq4x
