#pragma once

namespace XSI::MATH
{

/// Sixteen doubles in rows, for row vectors; the translation is the last row. The default is identity.
class CMatrix4
{
public:
    CMatrix4() = default;
    CMatrix4(double m00, double m01, double m02, double m03, double m10, double m11, double m12, double m13,
             double m20, double m21, double m22, double m23, double m30, double m31, double m32, double m33);

    double GetValue(int row, int column) const { return m_values[row * 4 + column]; }

    void SetValue(int row, int column, double value) { m_values[row * 4 + column] = value; }

    double operator()(int row, int column) const { return GetValue(row, column); }

    /// All sixteen, row by row.
    void Get(double values[16]) const;
    void Set(const double values[16]);

    CMatrix4& SetIdentity() { return *this = CMatrix4(); }

    /// The product a times b, and this times other.
    CMatrix4& Mul(const CMatrix4& a, const CMatrix4& b);
    CMatrix4& MulInPlace(const CMatrix4& other);

    CMatrix4& TransposeInPlace();

    /// General inverse. False, and no change, if the determinant is 0 or not finite.
    bool InvertInPlace();

    bool EpsilonEquals(const CMatrix4& other, double epsilon) const;

    friend bool operator==(const CMatrix4& a, const CMatrix4& b) { return a.EpsilonEquals(b, 0.0); }

private:
    double m_values[16] = {1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0};
};

} // namespace XSI::MATH
