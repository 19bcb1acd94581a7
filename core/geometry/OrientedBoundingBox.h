#pragma once

#include "math/Vector.h"

#include <array>
#include <span>

namespace tq4x
{

/// A box around a shape's positions, turned so that its axes follow the spread of the positions. In the
/// unmagnified units of the pool, in memory as in the file.
struct OrientedBoundingBox
{
    Vector3 CenterPosition;
    std::array<float, 9> OrientationMatrix{1, 0, 0, 0, 1, 0, 0, 0, 1}; ///< three rows, each one axis
    Vector3 Size;                                                      ///< full extent along each axis

    bool operator==(const OrientedBoundingBox&) const = default;
};

/// Principal component box: the axes are the eigenvectors of the positions' covariance, the widest spread
/// first, all in single precision and in list order. Spreads that tie keep the order x, y, z. Covariances
/// below 1e-6 count as none, so tiny shapes get a box along x, y, z; so do positions that are not numbers.
/// No positions give the initial box. Values within 1e-6 of zero become zero.
void ComputeOrientedBoundingBox(OrientedBoundingBox& box, std::span<const Vector3> positions);

} // namespace tq4x
