#include "glb/NodeMath.h"

#include <cmath>
#include <cstddef>

namespace tq4x::reader
{
namespace
{

using Axis = std::array<double, 3>;

Quaternion Normalized(Quaternion rotation)
{
    const double length = std::sqrt(rotation[0] * rotation[0] + rotation[1] * rotation[1] +
                                    rotation[2] * rotation[2] + rotation[3] * rotation[3]);
    for (double& part : rotation) {
        part /= length;
    }
    return rotation;
}

Axis Column(const Matrix& matrix, std::size_t column)
{
    return {matrix[4 * column], matrix[4 * column + 1], matrix[4 * column + 2]};
}

Axis Cross(const Axis& a, const Axis& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double Dot(const Axis& a, const Axis& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

} // namespace

Quaternion QuaternionOf(const Vector3& rotate)
{
    std::array<double, 3> sine{};
    std::array<double, 3> cosine{};
    for (std::size_t i = 0; i < 3; ++i) {
        sine[i] = std::sin(0.5 * static_cast<double>(rotate[i]));
        cosine[i] = std::cos(0.5 * static_cast<double>(rotate[i]));
    }
    const auto [sx, sy, sz] = sine;
    const auto [cx, cy, cz] = cosine;
    return Normalized({sx * cy * cz - cx * sy * sz, cx * sy * cz + sx * cy * sz, cx * cy * sz - sx * sy * cz,
                       cx * cy * cz + sx * sy * sz});
}

Quaternion QuaternionOfAxes(const std::array<Axis, 3>& axes)
{
    const auto& [x, y, z] = axes;
    // The largest of the four parts is found first, so that nothing is divided by little.
    const std::array<double, 4> squares = {1 + x[0] - y[1] - z[2], 1 - x[0] + y[1] - z[2],
                                           1 - x[0] - y[1] + z[2], 1 + x[0] + y[1] + z[2]};
    std::size_t largest = 0;
    for (std::size_t i = 1; i < 4; ++i) {
        largest = squares[i] > squares[largest] ? i : largest;
    }
    switch (largest) {
    case 0:
        return Normalized({squares[0], x[1] + y[0], x[2] + z[0], y[2] - z[1]});
    case 1:
        return Normalized({x[1] + y[0], squares[1], y[2] + z[1], z[0] - x[2]});
    case 2:
        return Normalized({x[2] + z[0], y[2] + z[1], squares[2], x[1] - y[0]});
    default:
        return Normalized({y[2] - z[1], z[0] - x[2], x[1] - y[0], squares[3]});
    }
}

Quaternion QuaternionTowards(const Vector3& direction)
{
    const Axis to = {direction[0], direction[1], direction[2]};
    const double length = std::sqrt(Dot(to, to));
    if (!(length > 0)) {
        return {0, 0, 0, 1};
    }
    const double cosine = -to[2] / length;
    constexpr double NearlyOpposite = 1e-12;
    if (1 + cosine < NearlyOpposite) {
        return {0, 1, 0, 0};
    }
    const Axis axis = Cross({0, 0, -1}, {to[0] / length, to[1] / length, to[2] / length});
    return Normalized({axis[0], axis[1], axis[2], 1 + cosine});
}

std::array<float, 4> ToFloats(const Quaternion& rotation)
{
    return {static_cast<float>(rotation[0]), static_cast<float>(rotation[1]), static_cast<float>(rotation[2]),
            static_cast<float>(rotation[3])};
}

Matrix MatrixOf(const Transform& transform)
{
    const auto [x, y, z, w] = QuaternionOf(transform.Rotate);
    const auto& [a, b, c] = transform.Scale;
    const auto& [tx, ty, tz] = transform.Translate;
    return {a * (1 - 2 * (y * y + z * z)),
            a * 2 * (x * y + z * w),
            a * 2 * (x * z - y * w),
            0,
            b * 2 * (x * y - z * w),
            b * (1 - 2 * (x * x + z * z)),
            b * 2 * (y * z + x * w),
            0,
            c * 2 * (x * z + y * w),
            c * 2 * (y * z - x * w),
            c * (1 - 2 * (x * x + y * y)),
            0,
            tx,
            ty,
            tz,
            1};
}

Matrix Multiply(const Matrix& second, const Matrix& first)
{
    Matrix product{};
    for (std::size_t column = 0; column < 4; ++column) {
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t k = 0; k < 4; ++k) {
                product[4 * column + row] += second[4 * k + row] * first[4 * column + k];
            }
        }
    }
    return product;
}

std::optional<Matrix> Invert(const Matrix& matrix)
{
    const Axis x = Column(matrix, 0);
    const Axis y = Column(matrix, 1);
    const Axis z = Column(matrix, 2);
    const Axis translate = Column(matrix, 3);
    const double volume = Dot(x, Cross(y, z));
    if (!std::isnormal(volume)) {
        return std::nullopt;
    }
    const std::array<Axis, 3> rows = {Cross(y, z), Cross(z, x), Cross(x, y)};
    Matrix inverse = IdentityMatrix;
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            inverse[4 * column + row] = rows[row][column] / volume;
        }
        inverse[12 + row] = -Dot(rows[row], translate) / volume;
    }
    return inverse;
}

} // namespace tq4x::reader
