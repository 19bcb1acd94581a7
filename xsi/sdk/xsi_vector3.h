#pragma once

namespace XSI::MATH
{

class CMatrix3;
class CMatrix4;

/// Three doubles. As a row vector it is multiplied with a matrix from the left: v times M.
class CVector3
{
public:
    CVector3() = default;

    CVector3(double x, double y, double z) : m_values{x, y, z} {}

    double GetX() const { return m_values[0]; }

    double GetY() const { return m_values[1]; }

    double GetZ() const { return m_values[2]; }

    double operator[](int index) const { return m_values[index]; }

    double& operator[](int index) { return m_values[index]; }

    void PutX(double x) { m_values[0] = x; }

    void PutY(double y) { m_values[1] = y; }

    void PutZ(double z) { m_values[2] = z; }

    CVector3& Set(double x, double y, double z) { return *this = CVector3(x, y, z); }

    double Dot(const CVector3& other) const;
    double GetLength() const;

    double GetLengthSquared() const { return Dot(*this); }

    CVector3& Add(const CVector3& a, const CVector3& b);
    CVector3& Sub(const CVector3& a, const CVector3& b);
    CVector3& Cross(const CVector3& a, const CVector3& b);
    CVector3& Scale(double factor, const CVector3& a);

    CVector3& AddInPlace(const CVector3& other);
    CVector3& SubInPlace(const CVector3& other);
    CVector3& ScaleInPlace(double factor);

    /// False, and no change, for a vector of length 0 or one that is not finite.
    bool NormalizeInPlace();

    /// The row vector times the matrix; with a CMatrix4 as a point (w = 1).
    CVector3& MulByMatrix3InPlace(const CMatrix3& matrix);
    CVector3& MulByMatrix4InPlace(const CMatrix4& matrix);

    bool EpsilonEquals(const CVector3& other, double epsilon) const;

    friend bool operator==(const CVector3& a, const CVector3& b)
    {
        return a[0] == b[0] && a[1] == b[1] && a[2] == b[2];
    }

private:
    double m_values[3] = {0.0, 0.0, 0.0};
};

} // namespace XSI::MATH
