#include "geometry/SymmetricEigen.h"

#include "math/Scalar.h"

#include <cmath>
#include <cstddef>

namespace tq4x
{
namespace
{

constexpr int MaxSweeps = 50;
/// Sweeps that leave elements below the threshold for later.
constexpr int ThresholdSweeps = 3;
/// First sweep that clears elements which no longer matter instead of rotating them.
constexpr int FirstClearingSweep = 4;

/// True if adding `term` changes `value` by less than the snapping limit.
bool IsLostIn(float value, float term)
{
    return IsNegligible((value + term) - value);
}

/// State of the iteration. Only the upper triangle of `Elements` is kept up to date.
struct Jacobi
{
    std::array<std::array<float, 3>, 3> Elements{};
    std::array<std::array<float, 3>, 3> Vectors{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}; ///< columns
    std::array<float, 3> Diagonal{};
    std::array<float, 3> SweepStart{};  ///< diagonal before the sweep
    std::array<float, 3> Corrections{}; ///< what the sweep changed, summed apart so that rounding stays small

    explicit Jacobi(const SymmetricMatrix3& matrix) : Diagonal(matrix.Diagonal), SweepStart(matrix.Diagonal)
    {
        Elements[0][1] = matrix.UpperOffDiagonal[0];
        Elements[0][2] = matrix.UpperOffDiagonal[1];
        Elements[1][2] = matrix.UpperOffDiagonal[2];
    }

    float OffDiagonalSum() const
    {
        return std::fabs(Elements[0][1]) + std::fabs(Elements[0][2]) + std::fabs(Elements[1][2]);
    }

    void Sweep(int sweep, float threshold);
    void Rotate(std::size_t p, std::size_t q);
    void FinishSweep();
};

/// Tangent of the rotation angle that takes `element` away; `h` is the difference of its diagonal elements.
/// A small element over equal diagonals divides by zero: the numbers turn into none, and the decomposition
/// fails.
float RotationTangent(float element, float h)
{
    if (IsLostIn(std::fabs(h), 100.0f * std::fabs(element)))
        return element / h;
    const float theta = h / (2.0f * element);
    const float t = 1.0f / (std::fabs(theta) + std::sqrt(theta * theta + 1.0f));
    return theta < 0.0f ? -t : t;
}

void RotatePair(float& first, float& second, float sine, float tau)
{
    const float g = first;
    const float h = second;
    first = g - sine * (h + g * tau);
    second = h + sine * (g - h * tau);
}

void Jacobi::Rotate(std::size_t p, std::size_t q)
{
    float& element = Elements[p][q];
    const float t = RotationTangent(element, Diagonal[q] - Diagonal[p]);
    const float cosine = 1.0f / std::sqrt(1.0f + t * t);
    const float sine = t * cosine;
    const float tau = sine / (1.0f + cosine);
    const float correction = t * element;
    Corrections[p] -= correction;
    Corrections[q] += correction;
    Diagonal[p] -= correction;
    Diagonal[q] += correction;
    element = 0.0f;
    for (std::size_t j = 0; j < p; ++j)
        RotatePair(Elements[j][p], Elements[j][q], sine, tau);
    for (std::size_t j = p + 1; j < q; ++j)
        RotatePair(Elements[p][j], Elements[j][q], sine, tau);
    for (std::size_t j = q + 1; j < 3; ++j)
        RotatePair(Elements[p][j], Elements[q][j], sine, tau);
    for (std::array<float, 3>& row : Vectors)
        RotatePair(row[p], row[q], sine, tau);
}

void Jacobi::Sweep(int sweep, float threshold)
{
    for (std::size_t p = 0; p < 2; ++p) {
        for (std::size_t q = p + 1; q < 3; ++q) {
            const float magnitude = std::fabs(Elements[p][q]);
            const float g = 100.0f * magnitude;
            if (sweep >= FirstClearingSweep && IsLostIn(Diagonal[p], g) && IsLostIn(Diagonal[q], g))
                Elements[p][q] = 0.0f;
            else if (magnitude > threshold)
                Rotate(p, q);
        }
    }
}

void Jacobi::FinishSweep()
{
    for (std::size_t i = 0; i < 3; ++i) {
        SweepStart[i] += Corrections[i];
        Diagonal[i] = SweepStart[i];
        Corrections[i] = 0.0f;
    }
}

EigenSystem3 TakeResult(const Jacobi& jacobi)
{
    EigenSystem3 result;
    result.Values = jacobi.Diagonal;
    for (std::size_t k = 0; k < 3; ++k)
        for (std::size_t i = 0; i < 3; ++i)
            result.Vectors[k][i] = jacobi.Vectors[i][k];
    return result;
}

} // namespace

std::optional<EigenSystem3> ComputeEigenSystem(const SymmetricMatrix3& matrix)
{
    Jacobi jacobi(matrix);
    for (int sweep = 0; sweep < MaxSweeps; ++sweep) {
        const float sum = jacobi.OffDiagonalSum();
        if (IsNegligible(sum))
            return TakeResult(jacobi);
        jacobi.Sweep(sweep, sweep < ThresholdSweeps ? 0.2f * sum / 9.0f : 0.0f);
        jacobi.FinishSweep();
    }
    return std::nullopt;
}

} // namespace tq4x
