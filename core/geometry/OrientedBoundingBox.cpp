#include "geometry/OrientedBoundingBox.h"

#include "geometry/SymmetricEigen.h"
#include "math/Scalar.h"

#include <algorithm>
#include <cstddef>

namespace tq4x
{
namespace
{

using Axes = std::array<std::array<float, 3>, 3>;

Vector3 MeanOf(std::span<const Vector3> positions)
{
    Vector3 sum;
    for (const Vector3& position : positions) {
        sum.X += position.X;
        sum.Y += position.Y;
        sum.Z += position.Z;
    }
    const float count = static_cast<float>(positions.size());
    return {sum.X / count, sum.Y / count, sum.Z / count};
}

SymmetricMatrix3 CovarianceOf(std::span<const Vector3> positions)
{
    const Vector3 mean = MeanOf(positions);
    SymmetricMatrix3 covariance;
    for (const Vector3& position : positions) {
        const float x = position.X - mean.X;
        const float y = position.Y - mean.Y;
        const float z = position.Z - mean.Z;
        covariance.Diagonal[0] += x * x;
        covariance.Diagonal[1] += y * y;
        covariance.Diagonal[2] += z * z;
        covariance.UpperOffDiagonal[0] += x * y;
        covariance.UpperOffDiagonal[1] += x * z;
        covariance.UpperOffDiagonal[2] += y * z;
    }
    const float count = static_cast<float>(positions.size());
    for (float& element : covariance.Diagonal)
        element /= count;
    for (float& element : covariance.UpperOffDiagonal)
        element /= count;
    return covariance;
}

Axes AxesOf(std::span<const Vector3> positions)
{
    const std::optional<EigenSystem3> eigen = ComputeEigenSystem(CovarianceOf(positions));
    if (!eigen)
        return {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    std::array<std::size_t, 3> order{0, 1, 2};
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return eigen->Values[a] > eigen->Values[b]; });
    return {eigen->Vectors[order[0]], eigen->Vectors[order[1]], eigen->Vectors[order[2]]};
}

struct Range
{
    float Minimum = 0.0f;
    float Maximum = 0.0f;
};

float Project(const Vector3& position, const std::array<float, 3>& axis)
{
    return position.X * axis[0] + position.Y * axis[1] + position.Z * axis[2];
}

Range RangeAlong(std::span<const Vector3> positions, const std::array<float, 3>& axis)
{
    const float first = Project(positions.front(), axis);
    Range range{first, first};
    for (const Vector3& position : positions) {
        const float value = Project(position, axis);
        range.Minimum = std::min(range.Minimum, value);
        range.Maximum = std::max(range.Maximum, value);
    }
    return range;
}

Vector3 Snap(const Vector3& vector)
{
    return {SnapToZero(vector.X), SnapToZero(vector.Y), SnapToZero(vector.Z)};
}

} // namespace

void ComputeOrientedBoundingBox(OrientedBoundingBox& box, std::span<const Vector3> positions)
{
    box = {};
    if (positions.empty())
        return;
    const Axes axes = AxesOf(positions);
    std::array<float, 3> center{};
    std::array<float, 3> size{};
    for (std::size_t k = 0; k < 3; ++k) {
        const Range range = RangeAlong(positions, axes[k]);
        size[k] = range.Maximum - range.Minimum;
        center[k] = (range.Minimum + range.Maximum) * 0.5f;
        for (std::size_t i = 0; i < 3; ++i)
            box.OrientationMatrix[k * 3 + i] = SnapToZero(axes[k][i]);
    }
    const auto along = [&](std::size_t i) {
        return center[0] * axes[0][i] + center[1] * axes[1][i] + center[2] * axes[2][i];
    };
    box.CenterPosition = Snap({along(0), along(1), along(2)});
    box.Size = Snap({size[0], size[1], size[2]});
}

} // namespace tq4x
