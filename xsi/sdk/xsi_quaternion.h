#pragma once

#include <xsi_matrix3.h>
#include <xsi_vector3.h>

namespace XSI::MATH
{

/// A quaternion w + xi + yj + zk. The default is identity. As rotations the product a times b turns by b
/// first; a row vector times the matrices of both has them the other way round.
class CQuaternion
{
public:
    CQuaternion() = default;

    CQuaternion(double w, double x, double y, double z) : m_w(w), m_x(x), m_y(y), m_z(z) {}

    double GetW() const { return m_w; }

    double GetX() const { return m_x; }

    double GetY() const { return m_y; }

    double GetZ() const { return m_z; }

    void PutW(double w) { m_w = w; }

    void PutX(double x) { m_x = x; }

    void PutY(double y) { m_y = y; }

    void PutZ(double z) { m_z = z; }

    double GetLength() const;

    /// A quaternion of length 0, or one that is not finite, becomes identity.
    CQuaternion& NormalizeInPlace();

    /// The rotation as a matrix for row vectors. The quaternion needs not be of unit length.
    CMatrix3 GetMatrix() const;

    /// From a rotation matrix for row vectors: orthonormal, determinant 1.
    CQuaternion& SetFromMatrix(const CMatrix3& matrix);

    /// The angle in radians, right-handed. An axis without length gives identity.
    CQuaternion& SetFromAxisAngle(const CVector3& axis, double angle);

    CQuaternion& Mul(const CQuaternion& a, const CQuaternion& b);

    /// The shortest way from a to b, at t from 0 to 1.
    CQuaternion& Slerp(const CQuaternion& a, const CQuaternion& b, double t);

private:
    double m_w = 1.0;
    double m_x = 0.0;
    double m_y = 0.0;
    double m_z = 0.0;
};

} // namespace XSI::MATH
