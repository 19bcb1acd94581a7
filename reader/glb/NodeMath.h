#pragma once

#include <array>
#include <optional>

#include "ReadValues.h"

namespace tq4x::reader
{

using Quaternion = std::array<double, 4>; ///< X, Y, Z, W
using Matrix = std::array<double, 16>;    ///< column by column; points are columns, as in glTF

inline constexpr Matrix IdentityMatrix = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// The rotation about X, then Y, then Z by angles in radians, of length 1.
[[nodiscard]] Quaternion QuaternionOf(const Vector3& rotate);

/// The rotation whose matrix has these columns, which must be perpendicular, of length 1 and right-handed.
[[nodiscard]] Quaternion QuaternionOfAxes(const std::array<std::array<double, 3>, 3>& axes);

/// The turn that leads from the direction -Z, where glTF's cameras look and lights shine, to another one. Of
/// all turns the shortest; about Y where it is half a turn. The identity for a direction of no length.
[[nodiscard]] Quaternion QuaternionTowards(const Vector3& direction);

/// In single precision, as files hold it.
[[nodiscard]] std::array<float, 4> ToFloats(const Quaternion& rotation);

[[nodiscard]] Matrix MatrixOf(const Transform& transform);

/// What `second` does to the result of `first`.
[[nodiscard]] Matrix Multiply(const Matrix& second, const Matrix& first);

/// The inverse of an affine matrix. Nothing if it has none.
[[nodiscard]] std::optional<Matrix> Invert(const Matrix& matrix);

} // namespace tq4x::reader
