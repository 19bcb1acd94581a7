#include "math/Matrix44.h"

#include "math/Scalar.h"
#include "math/Trigonometry.h"

#include <cmath>

namespace tq4x
{
namespace
{

struct SineCosine
{
    float Sine;
    float Cosine;
};

SineCosine SineCosineOf(float degrees)
{
    const double radians = static_cast<double>(degrees) * RadiansPerDegree;
    return {static_cast<float>(Sine(radians)), static_cast<float>(Cosine(radians))};
}

void SetRow(Matrix44& matrix, std::size_t row, float factor, float x, float y, float z)
{
    matrix(row, 0) = factor * x;
    matrix(row, 1) = factor * y;
    matrix(row, 2) = factor * z;
}

float RowLength(const Matrix44& matrix, std::size_t row)
{
    const float x = matrix(row, 0);
    const float y = matrix(row, 1);
    const float z = matrix(row, 2);
    return std::sqrt(y * y + x * x + z * z); // y first: the files bind the rounding of this sum
}

void DivideRow(Matrix44& matrix, std::size_t row, float scale)
{
    if (IsNegligible(scale))
        return;
    const float inverse = 1.0f / scale;
    for (std::size_t column = 0; column < 3; ++column)
        matrix(row, column) *= inverse;
}

/// Row 2 dotted with the cross product of rows 0 and 1: negative for a mirror.
float TripleProduct(const Matrix44& m)
{
    const float crossX = m(0, 1) * m(1, 2) - m(0, 2) * m(1, 1);
    const float crossY = m(0, 2) * m(1, 0) - m(0, 0) * m(1, 2);
    const float crossZ = m(0, 0) * m(1, 1) - m(0, 1) * m(1, 0);
    return m(2, 0) * crossX + m(2, 1) * crossY + m(2, 2) * crossZ;
}

float AngleOf(float sine, float cosine)
{
    const double radians = std::atan2(static_cast<double>(sine), static_cast<double>(cosine));
    return static_cast<float>(radians) * DegreesPerRadianSingle;
}

/// Euler angles in degrees of a matrix whose rows are normalised.
Vector3 EulerAngles(const Matrix44& m)
{
    constexpr float gimbalLimit = 1e-5f;
    constexpr float quarterTurn = 1.57079632679489661923f;
    const float sineY = -m(0, 2);
    const float radicand = 1.0f - sineY * sineY;
    const float cosineY = std::sqrt(radicand > 0.0f ? radicand : 0.0f);
    if (cosineY < gimbalLimit) {
        const float y = (sineY > 0.0f ? quarterTurn : -quarterTurn) * DegreesPerRadianSingle;
        return {AngleOf(-m(2, 1), m(1, 1)), y, 0.0f};
    }
    return {AngleOf(m(1, 2), m(2, 2)), AngleOf(sineY, cosineY), AngleOf(m(0, 1), m(0, 0))};
}

double Minor(const Matrix44& m, std::size_t row, std::size_t column)
{
    std::array<std::size_t, 3> r{};
    std::array<std::size_t, 3> c{};
    for (std::size_t i = 0, nextRow = 0, nextColumn = 0; i < 4; ++i) {
        if (i != row)
            r[nextRow++] = i;
        if (i != column)
            c[nextColumn++] = i;
    }
    const auto at = [&](std::size_t i, std::size_t j) { return static_cast<double>(m(r[i], c[j])); };
    return at(0, 0) * (at(1, 1) * at(2, 2) - at(1, 2) * at(2, 1)) -
           at(0, 1) * (at(1, 0) * at(2, 2) - at(1, 2) * at(2, 0)) +
           at(0, 2) * (at(1, 0) * at(2, 1) - at(1, 1) * at(2, 0));
}

} // namespace

Matrix44 Multiply(const Matrix44& a, const Matrix44& b)
{
    Matrix44 product;
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            product(row, column) = a(row, 0) * b(0, column) + a(row, 1) * b(1, column) +
                                   a(row, 2) * b(2, column) + a(row, 3) * b(3, column);
    return product;
}

Matrix44 ComposeMatrix(const TransformParts& parts)
{
    const auto [sx, cx] = SineCosineOf(parts.Rotate.X);
    const auto [sy, cy] = SineCosineOf(parts.Rotate.Y);
    const auto [sz, cz] = SineCosineOf(parts.Rotate.Z);
    Matrix44 matrix;
    SetRow(matrix, 0, parts.Scale.X, cy * cz, cy * sz, -sy);
    SetRow(matrix, 1, parts.Scale.Y, sy * sx * cz - cx * sz, sy * sx * sz + cz * cx, cy * sx);
    SetRow(matrix, 2, parts.Scale.Z, cx * sy * cz + sz * sx, cx * sy * sz - cz * sx, cy * cx);
    SetRow(matrix, 3, 1.0f, parts.Translate.X, parts.Translate.Y, parts.Translate.Z);
    return matrix;
}

TransformParts DecomposeMatrix(const Matrix44& matrix)
{
    Matrix44 rows = matrix;
    TransformParts parts;
    parts.Scale.X = RowLength(rows, 0);
    DivideRow(rows, 0, parts.Scale.X);
    parts.Scale.Y = RowLength(rows, 1);
    DivideRow(rows, 1, parts.Scale.Y);
    parts.Scale.Z = RowLength(rows, 2);
    if (TripleProduct(rows) < 0.0f)
        parts.Scale.Z = -parts.Scale.Z; // and the division by it turns row 2 round
    DivideRow(rows, 2, parts.Scale.Z);
    parts.Rotate = EulerAngles(rows);
    parts.Translate = {matrix(3, 0), matrix(3, 1), matrix(3, 2)};
    return parts;
}

Matrix44 InvertMatrix(const Matrix44& matrix)
{
    std::array<double, 16> adjugate{};
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column) {
            const double sign = (row + column) % 2 == 0 ? 1.0 : -1.0;
            adjugate[column * 4 + row] = sign * Minor(matrix, row, column);
        }
    double determinant = 0.0;
    for (std::size_t column = 0; column < 4; ++column)
        determinant += static_cast<double>(matrix(0, column)) * adjugate[column * 4];
    if (determinant == 0.0 || !std::isfinite(determinant))
        return {};
    Matrix44 inverse;
    for (std::size_t i = 0; i < 16; ++i)
        inverse.M[i] = static_cast<float>(adjugate[i] / determinant);
    return inverse;
}

Vector3 TransformPoint(const Vector3& p, const Matrix44& m)
{
    return {p.X * m(0, 0) + p.Y * m(1, 0) + p.Z * m(2, 0) + m(3, 0),
            p.X * m(0, 1) + p.Y * m(1, 1) + p.Z * m(2, 1) + m(3, 1),
            p.X * m(0, 2) + p.Y * m(1, 2) + p.Z * m(2, 2) + m(3, 2)};
}

Vector3 TransformDirection(const Vector3& d, const Matrix44& m)
{
    return {d.X * m(0, 0) + d.Y * m(1, 0) + d.Z * m(2, 0), d.X * m(0, 1) + d.Y * m(1, 1) + d.Z * m(2, 1),
            d.X * m(0, 2) + d.Y * m(1, 2) + d.Z * m(2, 2)};
}

} // namespace tq4x
