#pragma once

#include "geometry/Mesh.h"
#include "math/Matrix44.h"

#include <span>
#include <vector>

namespace tq4x
{

/// Moves the values of the shape's own pool: positions as points, normals and tangents by the upper 3x3. They
/// are not normalised again. The mesh's template stays as it is.
void TransformShape(SeparateDataShape& shape, const Matrix44& matrix);

/// The same for several shapes. Values that the shapes share are moved once and stay shared.
void TransformShapes(std::span<SeparateDataShape* const> shapes, const Matrix44& matrix);

/// Moves each value that a corner refers to by the matrix of the corner's bone, at most once: a value that
/// corners of several bones use goes with the first of them. A corner's bone is the first of its influences
/// with a percentage above 0; corners without one stay, and so do those of a bone without a matrix.
/// `matrices` is indexed by `BoneIndex`. Needs a weight table.
void TransformRigid(SeparateDataShape& shape, std::span<const Matrix44> matrices);

} // namespace tq4x
