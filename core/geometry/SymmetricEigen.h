#pragma once

#include <array>
#include <optional>

namespace tq4x
{

/// Upper triangle of a symmetric 3x3 matrix.
struct SymmetricMatrix3
{
    std::array<float, 3> Diagonal{};         ///< 00, 11, 22
    std::array<float, 3> UpperOffDiagonal{}; ///< 01, 02, 12
};

/// Eigenvalues in the order of the matrix's columns, not sorted; `Vectors[k]` is the unit vector of
/// `Values[k]`.
struct EigenSystem3
{
    std::array<float, 3> Values{};
    std::array<std::array<float, 3>, 3> Vectors{};
};

/// Cyclic Jacobi rotations in single precision, with the sweep thresholds of the classic method
/// (Rutishauser): the first three sweeps pass over small elements, later ones rotate everything. A matrix
/// whose off-diagonal elements sum up to less than 1e-6 counts as diagonal, however small its diagonal is.
///
/// Nothing if 50 sweeps did not suffice. That is also the answer for elements that are not numbers, and where
/// an element below 1e-8 is left over between two large diagonal elements that are equal to the last bit: all
/// directions between the two are as good there.
std::optional<EigenSystem3> ComputeEigenSystem(const SymmetricMatrix3& matrix);

} // namespace tq4x
