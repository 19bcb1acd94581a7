#pragma once

#include "math/Vector.h"

#include <array>
#include <cstddef>

namespace tq4x
{

/// Sixteen floats, row-major, for row vectors (point times matrix): row 3 holds the translation, and the
/// product of a followed by b is a times b.
struct Matrix44
{
    std::array<float, 16> M{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

    float& operator()(std::size_t row, std::size_t column) { return M[row * 4 + column]; }

    float operator()(std::size_t row, std::size_t column) const { return M[row * 4 + column]; }

    bool operator==(const Matrix44&) const = default;
};

/// What a matrix of this system is made of. `Rotate` holds X, Y, Z Euler angles in degrees, applied X first,
/// then Y, then Z.
struct TransformParts
{
    Vector3 Scale{1.0f, 1.0f, 1.0f};
    Vector3 Rotate;
    Vector3 Translate;
};

/// a followed by b, in single precision, the four products of an element summed in ascending order.
Matrix44 Multiply(const Matrix44& a, const Matrix44& b);

/// Builds scale, then rotation, then translation. Sines and cosines are taken in double precision and
/// narrowed; the products are single precision.
Matrix44 ComposeMatrix(const TransformParts& parts);

/// Takes a matrix apart. Every mirror lands on the Z scale. A row whose scale is within 1e-6 of zero stays
/// undivided, and the angles are read from it as it stands. With Y at +-90 degrees Z is 0 and X carries the
/// rest. Angles come in degrees.
TransformParts DecomposeMatrix(const Matrix44& matrix);

/// General inverse by cofactors, computed in double precision and narrowed once. A determinant that is 0 or
/// not finite gives the identity.
Matrix44 InvertMatrix(const Matrix44& matrix);

/// The point (w = 1) times the matrix; the fourth component is dropped.
Vector3 TransformPoint(const Vector3& point, const Matrix44& matrix);

/// The direction times the upper 3x3, without renormalisation.
Vector3 TransformDirection(const Vector3& direction, const Matrix44& matrix);

} // namespace tq4x
