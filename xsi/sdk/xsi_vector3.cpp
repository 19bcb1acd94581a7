#include <xsi_vector3.h>

#include <cmath>

#include <xsi_matrix3.h>
#include <xsi_matrix4.h>

namespace XSI::MATH
{

double CVector3::Dot(const CVector3& other) const
{
    return m_values[0] * other[0] + m_values[1] * other[1] + m_values[2] * other[2];
}

double CVector3::GetLength() const
{
    return std::hypot(m_values[0], m_values[1], m_values[2]);
}

CVector3& CVector3::Add(const CVector3& a, const CVector3& b)
{
    return *this = CVector3(a[0] + b[0], a[1] + b[1], a[2] + b[2]);
}

CVector3& CVector3::Sub(const CVector3& a, const CVector3& b)
{
    return *this = CVector3(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

CVector3& CVector3::Cross(const CVector3& a, const CVector3& b)
{
    return *this = CVector3(a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]);
}

CVector3& CVector3::Scale(double factor, const CVector3& a)
{
    return *this = CVector3(factor * a[0], factor * a[1], factor * a[2]);
}

CVector3& CVector3::AddInPlace(const CVector3& other)
{
    return Add(*this, other);
}

CVector3& CVector3::SubInPlace(const CVector3& other)
{
    return Sub(*this, other);
}

CVector3& CVector3::ScaleInPlace(double factor)
{
    return Scale(factor, *this);
}

bool CVector3::NormalizeInPlace()
{
    const double length = GetLength();
    if (!(length > 0.0) || !std::isfinite(length)) {
        return false;
    }
    *this = CVector3(m_values[0] / length, m_values[1] / length, m_values[2] / length);
    return true;
}

CVector3& CVector3::MulByMatrix3InPlace(const CMatrix3& matrix)
{
    CVector3 product;
    for (int column = 0; column < 3; ++column) {
        product[column] = m_values[0] * matrix(0, column) + m_values[1] * matrix(1, column) +
                          m_values[2] * matrix(2, column);
    }
    return *this = product;
}

CVector3& CVector3::MulByMatrix4InPlace(const CMatrix4& matrix)
{
    CVector3 product;
    for (int column = 0; column < 3; ++column) {
        product[column] = m_values[0] * matrix(0, column) + m_values[1] * matrix(1, column) +
                          m_values[2] * matrix(2, column) + matrix(3, column);
    }
    return *this = product;
}

bool CVector3::EpsilonEquals(const CVector3& other, double epsilon) const
{
    for (int i = 0; i < 3; ++i) {
        if (!(std::abs(m_values[i] - other[i]) <= epsilon)) {
            return false;
        }
    }
    return true;
}

} // namespace XSI::MATH
