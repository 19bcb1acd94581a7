#pragma once

#include <xsi_matrix3.h>
#include <xsi_quaternion.h>
#include <xsi_vector3.h>

namespace XSI::MATH
{

/// A rotation. Angles are radians.
class CRotation
{
public:
    /// The order in which turns about the axes follow each other: siXYZ turns about X first.
    enum RotationOrder
    {
        siXYZ = 0,
        siXZY = 1,
        siYXZ = 2,
        siYZX = 3,
        siZXY = 4,
        siZYX = 5,
    };

    CRotation() = default;

    /// Turns about the three axes in the given order.
    CRotation(double x, double y, double z, RotationOrder order = siXYZ);

    /// A turn about an axis, which needs not be of unit length. Without length: no turn.
    CRotation(const CVector3& axis, double angle);

    explicit CRotation(const CQuaternion& quaternion) : m_quaternion(quaternion) {}

    CRotation& SetIdentity() { return *this = CRotation(); }

    RotationOrder GetRotationOrder() const { return m_order; }

    void PutRotationOrder(RotationOrder order) { m_order = order; }

    /// The matrix for row vectors.
    CMatrix3 GetMatrix() const;

    void GetMatrix(CMatrix3& matrix) const { matrix = GetMatrix(); }

    /// From a rotation matrix; the order stays as it is.
    CRotation& SetFromMatrix(const CMatrix3& matrix);

    /// The angles that give this rotation by turns about X, then Y, then Z, whatever the order is: X and Z
    /// from -pi to pi, Y from -pi/2 to pi/2; Z is 0 where Y is a right angle.
    CVector3 GetXYZAngles() const;
    void GetXYZAngles(double& x, double& y, double& z) const;

    /// Turns about X, then Y, then Z; the order becomes siXYZ.
    CRotation& SetFromXYZAngles(double x, double y, double z);
    CRotation& SetFromXYZAngles(const CVector3& angles);

    CQuaternion GetQuaternion() const { return m_quaternion; }

    CRotation& SetFromQuaternion(const CQuaternion& quaternion);

    CRotation& SetFromAxisAngle(const CVector3& axis, double angle);

    /// The angle from 0 to pi, and its axis of unit length (the X axis for no turn).
    double GetAxisAngle(CVector3& axis) const;

    /// As matrices for row vectors: a times b turns by a first.
    CRotation& Mul(const CRotation& a, const CRotation& b);
    CRotation& MulInPlace(const CRotation& other);
    CRotation& InvertInPlace();

private:
    CQuaternion m_quaternion;
    RotationOrder m_order = siXYZ;
};

} // namespace XSI::MATH
