#include <xsi_matrix3.h>

#include <cmath>
#include <utility>

namespace XSI::MATH
{

CMatrix3::CMatrix3(double m00, double m01, double m02, double m10, double m11, double m12, double m20,
                   double m21, double m22)
    : m_values{m00, m01, m02, m10, m11, m12, m20, m21, m22}
{}

CMatrix3& CMatrix3::Mul(const CMatrix3& a, const CMatrix3& b)
{
    CMatrix3 product;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            product.SetValue(row, column,
                             a(row, 0) * b(0, column) + a(row, 1) * b(1, column) + a(row, 2) * b(2, column));
        }
    }
    return *this = product;
}

CMatrix3& CMatrix3::MulInPlace(const CMatrix3& other)
{
    return Mul(*this, other);
}

CMatrix3& CMatrix3::TransposeInPlace()
{
    std::swap(m_values[1], m_values[3]);
    std::swap(m_values[2], m_values[6]);
    std::swap(m_values[5], m_values[7]);
    return *this;
}

double CMatrix3::GetDeterminant() const
{
    const double* m = m_values;
    return m[0] * (m[4] * m[8] - m[5] * m[7]) - m[1] * (m[3] * m[8] - m[5] * m[6]) +
           m[2] * (m[3] * m[7] - m[4] * m[6]);
}

bool CMatrix3::InvertInPlace()
{
    const double determinant = GetDeterminant();
    if (determinant == 0.0 || !std::isfinite(determinant)) {
        return false;
    }
    CMatrix3 inverse;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            // Cyclic neighbours carry the cofactor's sign.
            const int r1 = (column + 1) % 3;
            const int r2 = (column + 2) % 3;
            const int c1 = (row + 1) % 3;
            const int c2 = (row + 2) % 3;
            const double cofactor = GetValue(r1, c1) * GetValue(r2, c2) - GetValue(r1, c2) * GetValue(r2, c1);
            inverse.SetValue(row, column, cofactor / determinant);
        }
    }
    *this = inverse;
    return true;
}

bool CMatrix3::EpsilonEquals(const CMatrix3& other, double epsilon) const
{
    for (int i = 0; i < 9; ++i) {
        if (!(std::abs(m_values[i] - other.m_values[i]) <= epsilon)) {
            return false;
        }
    }
    return true;
}

} // namespace XSI::MATH
