#include <xsi_quaternion.h>

#include <algorithm>
#include <cmath>

namespace XSI::MATH
{

double CQuaternion::GetLength() const
{
    return std::sqrt(m_w * m_w + m_x * m_x + m_y * m_y + m_z * m_z);
}

CQuaternion& CQuaternion::NormalizeInPlace()
{
    const double length = GetLength();
    if (!(length > 0.0) || !std::isfinite(length)) {
        return *this = CQuaternion();
    }
    return *this = CQuaternion(m_w / length, m_x / length, m_y / length, m_z / length);
}

CMatrix3 CQuaternion::GetMatrix() const
{
    CQuaternion unit = *this;
    unit.NormalizeInPlace();
    const double w = unit.m_w;
    const double x = unit.m_x;
    const double y = unit.m_y;
    const double z = unit.m_z;
    return CMatrix3(1.0 - 2.0 * (y * y + z * z), 2.0 * (x * y + w * z), 2.0 * (x * z - w * y),
                    2.0 * (x * y - w * z), 1.0 - 2.0 * (x * x + z * z), 2.0 * (y * z + w * x),
                    2.0 * (x * z + w * y), 2.0 * (y * z - w * x), 1.0 - 2.0 * (x * x + y * y));
}

CQuaternion& CQuaternion::SetFromMatrix(const CMatrix3& matrix)
{
    // The largest of the four components is taken from the diagonal, the others relative to it (Shepperd's
    // method), so that no division is by a small number.
    const double xx = matrix(0, 0);
    const double yy = matrix(1, 1);
    const double zz = matrix(2, 2);
    const double trace = xx + yy + zz;
    const double yz = matrix(1, 2) - matrix(2, 1);
    const double zx = matrix(2, 0) - matrix(0, 2);
    const double xy = matrix(0, 1) - matrix(1, 0);
    if (trace >= xx && trace >= yy && trace >= zz) {
        *this = CQuaternion(1.0 + trace, yz, zx, xy);
    } else if (xx >= yy && xx >= zz) {
        *this = CQuaternion(yz, 1.0 + xx - yy - zz, matrix(0, 1) + matrix(1, 0), matrix(0, 2) + matrix(2, 0));
    } else if (yy >= zz) {
        *this = CQuaternion(zx, matrix(0, 1) + matrix(1, 0), 1.0 + yy - xx - zz, matrix(1, 2) + matrix(2, 1));
    } else {
        *this = CQuaternion(xy, matrix(0, 2) + matrix(2, 0), matrix(1, 2) + matrix(2, 1), 1.0 + zz - xx - yy);
    }
    return NormalizeInPlace();
}

CQuaternion& CQuaternion::SetFromAxisAngle(const CVector3& axis, double angle)
{
    CVector3 unit = axis;
    if (!unit.NormalizeInPlace()) {
        return *this = CQuaternion();
    }
    const double sine = std::sin(angle * 0.5);
    return *this = CQuaternion(std::cos(angle * 0.5), unit[0] * sine, unit[1] * sine, unit[2] * sine);
}

CQuaternion& CQuaternion::Mul(const CQuaternion& a, const CQuaternion& b)
{
    return *this = CQuaternion(a.m_w * b.m_w - a.m_x * b.m_x - a.m_y * b.m_y - a.m_z * b.m_z,
                               a.m_w * b.m_x + a.m_x * b.m_w + a.m_y * b.m_z - a.m_z * b.m_y,
                               a.m_w * b.m_y - a.m_x * b.m_z + a.m_y * b.m_w + a.m_z * b.m_x,
                               a.m_w * b.m_z + a.m_x * b.m_y - a.m_y * b.m_x + a.m_z * b.m_w);
}

CQuaternion& CQuaternion::Slerp(const CQuaternion& a, const CQuaternion& b, double t)
{
    const double dot = a.m_w * b.m_w + a.m_x * b.m_x + a.m_y * b.m_y + a.m_z * b.m_z;
    const double side = dot < 0.0 ? -1.0 : 1.0;
    const double cosine = std::min(1.0, dot * side);
    double wa = 1.0 - t;
    double wb = t;
    if (cosine < 0.9999999) { // closer together the straight line is the more exact one
        const double angle = std::acos(cosine);
        wa = std::sin(wa * angle) / std::sin(angle);
        wb = std::sin(wb * angle) / std::sin(angle);
    }
    wb *= side;
    *this = CQuaternion(wa * a.m_w + wb * b.m_w, wa * a.m_x + wb * b.m_x, wa * a.m_y + wb * b.m_y,
                        wa * a.m_z + wb * b.m_z);
    return NormalizeInPlace();
}

} // namespace XSI::MATH
