#include <xsi_matrix4.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace XSI::MATH
{

CMatrix4::CMatrix4(double m00, double m01, double m02, double m03, double m10, double m11, double m12,
                   double m13, double m20, double m21, double m22, double m23, double m30, double m31,
                   double m32, double m33)
    : m_values{m00, m01, m02, m03, m10, m11, m12, m13, m20, m21, m22, m23, m30, m31, m32, m33}
{}

void CMatrix4::Get(double values[16]) const
{
    std::copy(m_values, m_values + 16, values);
}

void CMatrix4::Set(const double values[16])
{
    std::copy(values, values + 16, m_values);
}

CMatrix4& CMatrix4::Mul(const CMatrix4& a, const CMatrix4& b)
{
    CMatrix4 product;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            product.SetValue(row, column,
                             a(row, 0) * b(0, column) + a(row, 1) * b(1, column) + a(row, 2) * b(2, column) +
                                 a(row, 3) * b(3, column));
        }
    }
    return *this = product;
}

CMatrix4& CMatrix4::MulInPlace(const CMatrix4& other)
{
    return Mul(*this, other);
}

CMatrix4& CMatrix4::TransposeInPlace()
{
    for (int row = 0; row < 4; ++row) {
        for (int column = row + 1; column < 4; ++column) {
            std::swap(m_values[row * 4 + column], m_values[column * 4 + row]);
        }
    }
    return *this;
}

bool CMatrix4::InvertInPlace()
{
    // Products of pairs of the upper and the lower two rows (Laplace expansion by 2 x 2 minors).
    const double* m = m_values;
    const double s0 = m[0] * m[5] - m[4] * m[1];
    const double s1 = m[0] * m[6] - m[4] * m[2];
    const double s2 = m[0] * m[7] - m[4] * m[3];
    const double s3 = m[1] * m[6] - m[5] * m[2];
    const double s4 = m[1] * m[7] - m[5] * m[3];
    const double s5 = m[2] * m[7] - m[6] * m[3];
    const double c5 = m[10] * m[15] - m[14] * m[11];
    const double c4 = m[9] * m[15] - m[13] * m[11];
    const double c3 = m[9] * m[14] - m[13] * m[10];
    const double c2 = m[8] * m[15] - m[12] * m[11];
    const double c1 = m[8] * m[14] - m[12] * m[10];
    const double c0 = m[8] * m[13] - m[12] * m[9];
    const double determinant = s0 * c5 - s1 * c4 + s2 * c3 + s3 * c2 - s4 * c1 + s5 * c0;
    if (determinant == 0.0 || !std::isfinite(determinant)) {
        return false;
    }
    const double d = 1.0 / determinant;
    *this = CMatrix4((m[5] * c5 - m[6] * c4 + m[7] * c3) * d, (-m[1] * c5 + m[2] * c4 - m[3] * c3) * d,
                     (m[13] * s5 - m[14] * s4 + m[15] * s3) * d, (-m[9] * s5 + m[10] * s4 - m[11] * s3) * d,
                     (-m[4] * c5 + m[6] * c2 - m[7] * c1) * d, (m[0] * c5 - m[2] * c2 + m[3] * c1) * d,
                     (-m[12] * s5 + m[14] * s2 - m[15] * s1) * d, (m[8] * s5 - m[10] * s2 + m[11] * s1) * d,
                     (m[4] * c4 - m[5] * c2 + m[7] * c0) * d, (-m[0] * c4 + m[1] * c2 - m[3] * c0) * d,
                     (m[12] * s4 - m[13] * s2 + m[15] * s0) * d, (-m[8] * s4 + m[9] * s2 - m[11] * s0) * d,
                     (-m[4] * c3 + m[5] * c1 - m[6] * c0) * d, (m[0] * c3 - m[1] * c1 + m[2] * c0) * d,
                     (-m[12] * s3 + m[13] * s1 - m[14] * s0) * d, (m[8] * s3 - m[9] * s1 + m[10] * s0) * d);
    return true;
}

bool CMatrix4::EpsilonEquals(const CMatrix4& other, double epsilon) const
{
    for (int i = 0; i < 16; ++i) {
        if (!(std::abs(m_values[i] - other.m_values[i]) <= epsilon)) {
            return false;
        }
    }
    return true;
}

} // namespace XSI::MATH
