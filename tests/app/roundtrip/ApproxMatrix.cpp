#include "ApproxMatrix.h"

#include <algorithm>

namespace tq4x::test
{
namespace
{

using Index = std::size_t;

Approx Dot(const ApproxVector& a, const ApproxVector& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

ApproxVector Cross(const ApproxVector& a, const ApproxVector& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

ApproxVector Divided(const ApproxVector& row, const Approx& divisor)
{
    return {row[0] / divisor, row[1] / divisor, row[2] / divisor};
}

/// A matrix whose rows have length 1, and their lengths.
struct Normalised
{
    ApproxVector Scale;
    ApproxMatrix Rows;
};

Normalised Normalise(const ApproxMatrix& matrix)
{
    Normalised result;
    for (Index row = 0; row < 3; ++row)
        result.Scale[row] = Sqrt(Dot(matrix[row], matrix[row]));
    if (Dot(matrix[2], Cross(matrix[0], matrix[1])).Value < 0.0)
        result.Scale[2] = -result.Scale[2];
    for (Index row = 0; row < 3; ++row)
        result.Rows[row] = Divided(matrix[row], result.Scale[row]);
    return result;
}

/// The cosine of the turn about Y, by which a pole is known: the X axis points along Z, and turns about X and
/// Z are the same. It is found from the sine, which tells little close to a pole.
Approx PoleCosine(const ApproxMatrix& m)
{
    return Sqrt(Approx{1, 0} - m[0][2] * m[0][2]);
}

ApproxVector UsualAngles(const ApproxMatrix& m)
{
    return {Atan2(m[1][2], m[2][2]), Atan2(-m[0][2], PoleCosine(m)), Atan2(m[0][1], m[0][0])};
}

ApproxVector PoleAngles(const ApproxMatrix& m)
{
    const double y = m[0][2].Value < 0.0 ? std::numbers::pi / 2 : -std::numbers::pi / 2;
    return {Atan2(-m[2][1], m[1][1]), Narrowed(y), {}};
}

constexpr double PoleLimit = 1e-5;

/// A matrix that is one or the other, most likely the first.
ApproxMatrix Either(const ApproxMatrix& a, const ApproxMatrix& b)
{
    ApproxMatrix both = a;
    for (Index row = 0; row < 4; ++row)
        for (Index column = 0; column < 3; ++column)
            both[row][column].Error = std::max(
                a[row][column].Error, Distance(a[row][column], b[row][column]) + b[row][column].Error);
    return both;
}

ApproxMatrix TurnedBy(const ApproxVector& angles)
{
    return Compose({.Scale = ApproxTransform{}.Scale, .Rotate = angles, .Translate = {}});
}

/// A matrix taken apart; its rotation is that of its angles.
struct Parts
{
    ApproxVector Scale;
    ApproxMatrix Rotation;
};

Parts TakeApart(const ApproxMatrix& matrix)
{
    const Normalised normalised = Normalise(matrix);
    const Approx cosine = PoleCosine(normalised.Rows);
    const ApproxMatrix pole = TurnedBy(PoleAngles(normalised.Rows));
    const ApproxMatrix usual = TurnedBy(UsualAngles(normalised.Rows));
    const bool isPole = cosine.Value < PoleLimit;
    const bool isSure = std::abs(cosine.Value - PoleLimit) > cosine.Error;
    const ApproxMatrix& likely = isPole ? pole : usual;
    return {normalised.Scale, isSure ? likely : Either(likely, isPole ? usual : pole)};
}

ApproxMatrix PutTogether(const ApproxVector& scale, const ApproxMatrix& rotation, const ApproxVector& place)
{
    ApproxMatrix matrix;
    for (Index row = 0; row < 3; ++row)
        for (Index column = 0; column < 3; ++column)
            matrix[row][column] = rotation[row][column] * scale[row];
    matrix[3] = place;
    return matrix;
}

} // namespace

ApproxMatrix NarrowedMatrix(const XSI::MATH::CMatrix4& matrix)
{
    ApproxMatrix narrowed;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 3; ++column)
            narrowed[static_cast<Index>(row)][static_cast<Index>(column)] =
                Narrowed(matrix.GetValue(row, column));
    return narrowed;
}

ApproxMatrix Multiply(const ApproxMatrix& a, const ApproxMatrix& b)
{
    ApproxMatrix product;
    for (Index row = 0; row < 3; ++row)
        product[row] = TransformDirection(a[row], b);
    product[3] = TransformPoint(a[3], b);
    return product;
}

ApproxMatrix Invert(const ApproxMatrix& matrix)
{
    const ApproxVector columns[3] = {Cross(matrix[1], matrix[2]), Cross(matrix[2], matrix[0]),
                                     Cross(matrix[0], matrix[1])};
    const Approx determinant = Dot(matrix[0], columns[0]);
    ApproxMatrix inverse;
    for (Index row = 0; row < 3; ++row)
        for (Index column = 0; column < 3; ++column)
            inverse[row][column] = columns[column][row] / determinant;
    const ApproxVector moved = TransformDirection(matrix[3], inverse);
    inverse[3] = {-moved[0], -moved[1], -moved[2]};
    return inverse;
}

ApproxVector TransformPoint(const ApproxVector& point, const ApproxMatrix& matrix)
{
    ApproxVector moved = TransformDirection(point, matrix);
    for (Index column = 0; column < 3; ++column)
        moved[column] = moved[column] + matrix[3][column];
    return moved;
}

ApproxVector TransformDirection(const ApproxVector& direction, const ApproxMatrix& matrix)
{
    ApproxVector turned;
    for (Index column = 0; column < 3; ++column)
        turned[column] = direction[0] * matrix[0][column] + direction[1] * matrix[1][column] +
                         direction[2] * matrix[2][column];
    return turned;
}

ApproxMatrix Compose(const ApproxTransform& transform)
{
    const Approx sx = Sin(transform.Rotate[0]), cx = Cos(transform.Rotate[0]);
    const Approx sy = Sin(transform.Rotate[1]), cy = Cos(transform.Rotate[1]);
    const Approx sz = Sin(transform.Rotate[2]), cz = Cos(transform.Rotate[2]);
    ApproxMatrix matrix;
    matrix[0] = {cy * cz, cy * sz, -sy};
    matrix[1] = {sy * sx * cz - cx * sz, sy * sx * sz + cz * cx, cy * sx};
    matrix[2] = {cx * sy * cz + sz * sx, cx * sy * sz - cz * sx, cy * cx};
    for (Index row = 0; row < 3; ++row)
        for (Approx& element : matrix[row])
            element = element * transform.Scale[row];
    matrix[3] = transform.Translate;
    return matrix;
}

ApproxMatrix Recompose(const ApproxMatrix& matrix)
{
    const Parts parts = TakeApart(matrix);
    return PutTogether(parts.Scale, parts.Rotation, matrix[3]);
}

ApproxMatrix WithErrorsOf(const ApproxMatrix& values, const ApproxMatrix& errors)
{
    ApproxMatrix result = values;
    for (Index row = 0; row < 4; ++row)
        for (Index column = 0; column < 3; ++column)
            result[row][column].Error += errors[row][column].Error;
    return result;
}

ApproxMatrix ToWorld(const ApproxMatrix& local, const ApproxMatrix& parent, bool isHierarchical)
{
    if (!isHierarchical)
        return Multiply(local, parent);
    const Parts inner = TakeApart(local);
    const Parts outer = TakeApart(parent);
    ApproxVector scale;
    for (Index axis = 0; axis < 3; ++axis)
        scale[axis] = inner.Scale[axis] * outer.Scale[axis];
    const ApproxMatrix rotation = Multiply(inner.Rotation, outer.Rotation);
    return PutTogether(scale, TakeApart(rotation).Rotation, TransformPoint(local[3], parent));
}

ApproxMatrix ToLocal(const ApproxMatrix& world, const ApproxMatrix& parent, bool isHierarchical)
{
    const ApproxMatrix inverse = Invert(parent);
    if (!isHierarchical)
        return Multiply(world, inverse);
    const Parts inner = TakeApart(world);
    const Parts outer = TakeApart(parent);
    ApproxVector scale;
    for (Index axis = 0; axis < 3; ++axis)
        scale[axis] = inner.Scale[axis] / outer.Scale[axis];
    const ApproxMatrix rotation = Multiply(inner.Rotation, Invert(outer.Rotation));
    return PutTogether(scale, TakeApart(rotation).Rotation, TransformPoint(world[3], inverse));
}

ApproxTransform PrintedTransform(const reader::Transform& transform)
{
    ApproxTransform printed;
    for (Index axis = 0; axis < 3; ++axis) {
        printed.Scale[axis] = Printed(transform.Scale[axis]);
        printed.Rotate[axis] = Printed(transform.Rotate[axis]);
        printed.Translate[axis] = Printed(transform.Translate[axis]);
    }
    return printed;
}

} // namespace tq4x::test
