#pragma once

#include "Approx.h"
#include "ReadValues.h"

#include <xsi_matrix4.h>

#include <array>
#include <cstddef>

namespace tq4x::test
{

using ApproxVector = std::array<Approx, 3>;

/// Scale, then turns about X, Y, Z (radians), then translation.
struct ApproxTransform
{
    ApproxVector Scale = {Approx{1, 0}, Approx{1, 0}, Approx{1, 0}};
    ApproxVector Rotate = {};
    ApproxVector Translate = {};
};

/// Rows of a matrix for row vectors; the fourth is the translation and the last column is 0, 0, 0, 1.
struct ApproxMatrix
{
    std::array<ApproxVector, 4> Rows = {
        {{Approx{1, 0}, {}, {}}, {Approx{}, {1, 0}, {}}, {Approx{}, {}, {1, 0}}, {}}};

    const ApproxVector& operator[](std::size_t row) const { return Rows[row]; }

    ApproxVector& operator[](std::size_t row) { return Rows[row]; }
};

/// A matrix of the host in single precision.
ApproxMatrix NarrowedMatrix(const XSI::MATH::CMatrix4& matrix);

ApproxMatrix Multiply(const ApproxMatrix& a, const ApproxMatrix& b);
ApproxMatrix Invert(const ApproxMatrix& matrix);
ApproxVector TransformPoint(const ApproxVector& point, const ApproxMatrix& matrix);
ApproxVector TransformDirection(const ApproxVector& direction, const ApproxMatrix& matrix);

ApproxMatrix Compose(const ApproxTransform& transform);

/// What is left of a matrix that was taken apart and put together again: a shear is lost, and close to a
/// right angle about Y the angles are known badly.
ApproxMatrix Recompose(const ApproxMatrix& matrix);

/// The elements of one matrix with the errors of another.
ApproxMatrix WithErrorsOf(const ApproxMatrix& values, const ApproxMatrix& errors);

/// The local matrix seen from the world and back. With hierarchical scaling scales multiply along the axes of
/// each node and never shear.
ApproxMatrix ToWorld(const ApproxMatrix& local, const ApproxMatrix& parent, bool isHierarchical);
ApproxMatrix ToLocal(const ApproxMatrix& world, const ApproxMatrix& parent, bool isHierarchical);

/// A transform of a file, as it is printed.
ApproxTransform PrintedTransform(const reader::Transform& transform);

} // namespace tq4x::test
