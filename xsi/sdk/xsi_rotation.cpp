#include <xsi_rotation.h>

#include <cmath>

#include <xsi_math.h>

namespace XSI::MATH
{

namespace
{

/// Below this cosine of the middle angle the first and the last axis are taken as one.
constexpr double SmallestCosine = 1e-10;

/// The axes in the order of the turns.
struct AxisOrder
{
    int Axes[3];
};

AxisOrder AxesOf(CRotation::RotationOrder order)
{
    switch (order) {
    case CRotation::siXYZ:
        return {{0, 1, 2}};
    case CRotation::siXZY:
        return {{0, 2, 1}};
    case CRotation::siYXZ:
        return {{1, 0, 2}};
    case CRotation::siYZX:
        return {{1, 2, 0}};
    case CRotation::siZXY:
        return {{2, 0, 1}};
    case CRotation::siZYX:
        return {{2, 1, 0}};
    }
    return {{0, 1, 2}};
}

CQuaternion TurnAbout(int axis, double angle)
{
    CVector3 direction;
    direction[axis] = 1.0;
    return CQuaternion().SetFromAxisAngle(direction, angle);
}

} // namespace

CRotation::CRotation(double x, double y, double z, RotationOrder order) : m_order(order)
{
    const double angles[3] = {x, y, z};
    for (const int axis : AxesOf(order).Axes) {
        m_quaternion.Mul(TurnAbout(axis, angles[axis]), CQuaternion(m_quaternion));
    }
}

CRotation::CRotation(const CVector3& axis, double angle)
{
    m_quaternion.SetFromAxisAngle(axis, angle);
}

CMatrix3 CRotation::GetMatrix() const
{
    return m_quaternion.GetMatrix();
}

CRotation& CRotation::SetFromMatrix(const CMatrix3& matrix)
{
    m_quaternion.SetFromMatrix(matrix);
    return *this;
}

CVector3 CRotation::GetXYZAngles() const
{
    const CMatrix3 m = GetMatrix();
    const double cosine = std::hypot(m(0, 0), m(0, 1));
    const double y = std::atan2(-m(0, 2), cosine);
    if (cosine < SmallestCosine) {
        return CVector3(std::atan2(-m(2, 1), m(1, 1)), y, 0.0);
    }
    return CVector3(std::atan2(m(1, 2), m(2, 2)), y, std::atan2(m(0, 1), m(0, 0)));
}

void CRotation::GetXYZAngles(double& x, double& y, double& z) const
{
    const CVector3 angles = GetXYZAngles();
    x = angles[0];
    y = angles[1];
    z = angles[2];
}

CRotation& CRotation::SetFromXYZAngles(double x, double y, double z)
{
    return *this = CRotation(x, y, z);
}

CRotation& CRotation::SetFromXYZAngles(const CVector3& angles)
{
    return SetFromXYZAngles(angles[0], angles[1], angles[2]);
}

CRotation& CRotation::SetFromQuaternion(const CQuaternion& quaternion)
{
    m_quaternion = quaternion;
    return *this;
}

CRotation& CRotation::SetFromAxisAngle(const CVector3& axis, double angle)
{
    m_quaternion.SetFromAxisAngle(axis, angle);
    return *this;
}

double CRotation::GetAxisAngle(CVector3& axis) const
{
    CQuaternion unit = m_quaternion;
    unit.NormalizeInPlace();
    const double side = unit.GetW() < 0.0 ? -1.0 : 1.0;
    axis.Set(unit.GetX() * side, unit.GetY() * side, unit.GetZ() * side);
    const double sine = axis.GetLength();
    if (!axis.NormalizeInPlace()) {
        axis.Set(1.0, 0.0, 0.0);
    }
    return 2.0 * std::atan2(sine, unit.GetW() * side);
}

CRotation& CRotation::Mul(const CRotation& a, const CRotation& b)
{
    m_quaternion.Mul(CQuaternion(b.m_quaternion), CQuaternion(a.m_quaternion));
    return *this;
}

CRotation& CRotation::MulInPlace(const CRotation& other)
{
    return Mul(*this, other);
}

CRotation& CRotation::InvertInPlace()
{
    m_quaternion =
        CQuaternion(m_quaternion.GetW(), -m_quaternion.GetX(), -m_quaternion.GetY(), -m_quaternion.GetZ());
    return *this;
}

} // namespace XSI::MATH
