#pragma once

namespace XSI::MATH
{

/// Nine doubles in rows, for row vectors: v times M. The default is identity.
class CMatrix3
{
public:
    CMatrix3() = default;
    CMatrix3(double m00, double m01, double m02, double m10, double m11, double m12, double m20, double m21,
             double m22);

    double GetValue(int row, int column) const { return m_values[row * 3 + column]; }

    void SetValue(int row, int column, double value) { m_values[row * 3 + column] = value; }

    double operator()(int row, int column) const { return GetValue(row, column); }

    CMatrix3& SetIdentity() { return *this = CMatrix3(); }

    /// The product a times b, and this times other.
    CMatrix3& Mul(const CMatrix3& a, const CMatrix3& b);
    CMatrix3& MulInPlace(const CMatrix3& other);

    CMatrix3& TransposeInPlace();
    double GetDeterminant() const;

    /// False, and no change, if the determinant is 0 or not finite.
    bool InvertInPlace();

    bool EpsilonEquals(const CMatrix3& other, double epsilon) const;

    friend bool operator==(const CMatrix3& a, const CMatrix3& b) { return a.EpsilonEquals(b, 0.0); }

private:
    double m_values[9] = {1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0};
};

} // namespace XSI::MATH
