#include <xsi_transformation.h>

#include <algorithm>
#include <cmath>

namespace XSI::MATH
{

namespace
{

/// Rows of a matrix whose directions are off a right angle by less than this cosine count as rectangular.
/// Matrices that were stored in single precision stay below it.
constexpr double LargestSkew = 1e-5;

/// A row shorter than this times the longest one is rounding error: it has no direction.
constexpr double NoLength = 1e-14;

constexpr int MostSweeps = 64;

CVector3 RowOf(const CMatrix4& matrix, int row)
{
    return CVector3(matrix(row, 0), matrix(row, 1), matrix(row, 2));
}

CMatrix3 FromRows(const CVector3 rows[3])
{
    return CMatrix3(rows[0][0], rows[0][1], rows[0][2], rows[1][0], rows[1][1], rows[1][2], rows[2][0],
                    rows[2][1], rows[2][2]);
}

CMatrix3 Transposed(CMatrix3 matrix)
{
    return matrix.TransposeInPlace();
}

CMatrix3 Diagonal(const CVector3& values)
{
    return CMatrix3(values[0], 0.0, 0.0, 0.0, values[1], 0.0, 0.0, 0.0, values[2]);
}

bool IsRectangular(const CVector3 rows[3])
{
    for (int i = 0; i < 3; ++i) {
        const CVector3& a = rows[i];
        const CVector3& b = rows[(i + 1) % 3];
        if (!(std::abs(a.Dot(b)) <= LargestSkew * a.GetLength() * b.GetLength())) {
            return false;
        }
    }
    return true;
}

/// A unit vector across another one.
CVector3 AcrossTo(const CVector3& vector)
{
    const int axis = std::abs(vector[0]) < 0.9 ? 0 : 1;
    CVector3 helper;
    helper[axis] = 1.0;
    CVector3 across;
    across.Cross(vector, helper);
    across.NormalizeInPlace();
    return across;
}

/// Makes the rows unit vectors and answers their lengths. Rows without length take the directions that are
/// left.
CVector3 NormalizeRows(CVector3 rows[3])
{
    const CVector3 lengths(rows[0].GetLength(), rows[1].GetLength(), rows[2].GetLength());
    const double longest = std::max({lengths[0], lengths[1], lengths[2]});
    bool hasLength[3];
    for (int i = 0; i < 3; ++i) {
        hasLength[i] = lengths[i] > NoLength * longest && rows[i].NormalizeInPlace();
    }
    const int known = static_cast<int>(std::count(hasLength, hasLength + 3, true));
    if (known == 0) {
        rows[0].Set(1.0, 0.0, 0.0);
        rows[1].Set(0.0, 1.0, 0.0);
        rows[2].Set(0.0, 0.0, 1.0);
    } else if (known == 1) {
        const int i = hasLength[0] ? 0 : hasLength[1] ? 1 : 2;
        rows[(i + 1) % 3] = AcrossTo(rows[i]);
        rows[(i + 2) % 3].Cross(rows[i], rows[(i + 1) % 3]);
    } else if (known == 2) {
        const int i = !hasLength[0] ? 0 : !hasLength[1] ? 1 : 2;
        rows[i].Cross(rows[(i + 1) % 3], rows[(i + 2) % 3]);
    }
    return lengths;
}

/// Turns the plane of two axes so that their mixed element vanishes (one step of Jacobi's method).
void RotatePlane(CMatrix3& symmetric, CMatrix3& axes, int p, int q)
{
    const double mixed = symmetric(p, q);
    if (mixed == 0.0) {
        return;
    }
    const double theta = (symmetric(q, q) - symmetric(p, p)) / (2.0 * mixed);
    const double t = (theta < 0.0 ? -1.0 : 1.0) / (std::abs(theta) + std::sqrt(theta * theta + 1.0));
    const double c = 1.0 / std::sqrt(t * t + 1.0);
    CMatrix3 turn;
    turn.SetValue(p, p, c);
    turn.SetValue(q, q, c);
    turn.SetValue(p, q, -t * c);
    turn.SetValue(q, p, t * c);
    symmetric = CMatrix3().Mul(CMatrix3().Mul(turn, symmetric), Transposed(turn));
    symmetric.SetValue(p, q, 0.0);
    symmetric.SetValue(q, p, 0.0);
    axes.Mul(turn, CMatrix3(axes));
}

/// The directions (rows) along which a symmetric matrix only scales.
CMatrix3 MainAxes(CMatrix3 symmetric)
{
    CMatrix3 axes;
    for (int sweep = 0; sweep < MostSweeps; ++sweep) {
        const double mixed =
            std::abs(symmetric(0, 1)) + std::abs(symmetric(0, 2)) + std::abs(symmetric(1, 2));
        const double whole =
            std::abs(symmetric(0, 0)) + std::abs(symmetric(1, 1)) + std::abs(symmetric(2, 2));
        if (!(mixed > 1e-17 * whole)) {
            break;
        }
        RotatePlane(symmetric, axes, 0, 1);
        RotatePlane(symmetric, axes, 0, 2);
        RotatePlane(symmetric, axes, 1, 2);
    }
    return axes;
}

} // namespace

CTransformation& CTransformation::SetMatrix4(const CMatrix4& matrix)
{
    m_matrix = matrix;
    m_hasComponents = false;
    return *this;
}

CVector3 CTransformation::GetTranslation() const
{
    return RowOf(m_matrix, 3);
}

void CTransformation::GetTranslationValues(double& x, double& y, double& z) const
{
    x = m_matrix(3, 0);
    y = m_matrix(3, 1);
    z = m_matrix(3, 2);
}

CTransformation& CTransformation::SetTranslation(const CVector3& translation)
{
    return SetTranslationFromValues(translation[0], translation[1], translation[2]);
}

CTransformation& CTransformation::SetTranslationFromValues(double x, double y, double z)
{
    m_matrix.SetValue(3, 0, x);
    m_matrix.SetValue(3, 1, y);
    m_matrix.SetValue(3, 2, z);
    return *this;
}

CRotation CTransformation::GetRotation() const
{
    return GetComponents().Rotation;
}

CTransformation& CTransformation::SetRotation(const CRotation& rotation)
{
    return ChangeComponents([&](Components& parts) { parts.Rotation = rotation; });
}

CQuaternion CTransformation::GetRotationQuaternion() const
{
    return GetComponents().Rotation.GetQuaternion();
}

CTransformation& CTransformation::SetRotationFromQuaternion(const CQuaternion& quaternion)
{
    return SetRotation(CRotation(quaternion));
}

CVector3 CTransformation::GetRotationXYZAngles() const
{
    return GetComponents().Rotation.GetXYZAngles();
}

CTransformation& CTransformation::SetRotationFromXYZAngles(const CVector3& angles)
{
    return SetRotation(CRotation(angles[0], angles[1], angles[2]));
}

CTransformation& CTransformation::SetRotationFromXYZAnglesValues(double x, double y, double z)
{
    return SetRotation(CRotation(x, y, z));
}

CVector3 CTransformation::GetScaling() const
{
    return GetComponents().Scaling;
}

void CTransformation::GetScalingValues(double& x, double& y, double& z) const
{
    const CVector3& scaling = GetComponents().Scaling;
    x = scaling[0];
    y = scaling[1];
    z = scaling[2];
}

CTransformation& CTransformation::SetScaling(const CVector3& scaling)
{
    return ChangeComponents([&](Components& parts) { parts.Scaling = scaling; });
}

CTransformation& CTransformation::SetScalingFromValues(double x, double y, double z)
{
    return SetScaling(CVector3(x, y, z));
}

CRotation CTransformation::GetScalingOrientation() const
{
    return CRotation(GetComponents().Orientation);
}

CTransformation& CTransformation::SetScalingOrientation(const CRotation& orientation)
{
    return ChangeComponents([&](Components& parts) {
        parts.Orientation = orientation.GetQuaternion();
        parts.IsOriented = true;
    });
}

bool CTransformation::HasScalingOrientation() const
{
    const CVector3 rows[3] = {RowOf(m_matrix, 0), RowOf(m_matrix, 1), RowOf(m_matrix, 2)};
    return !IsRectangular(rows);
}

CTransformation& CTransformation::Mul(const CTransformation& a, const CTransformation& b)
{
    return SetMatrix4(CMatrix4().Mul(a.m_matrix, b.m_matrix));
}

CTransformation& CTransformation::MulInPlace(const CTransformation& other)
{
    return Mul(*this, other);
}

bool CTransformation::InvertInPlace()
{
    CMatrix4 inverse = m_matrix;
    if (!inverse.InvertInPlace()) {
        return false;
    }
    SetMatrix4(inverse);
    return true;
}

CTransformation::Components CTransformation::Decompose(const CMatrix4& matrix)
{
    Components parts;
    CVector3 rows[3] = {RowOf(matrix, 0), RowOf(matrix, 1), RowOf(matrix, 2)};
    CMatrix3 orientation;
    if (!IsRectangular(rows)) {
        // The linear part L is a stretch times a rotation. The stretch times its transpose is L times its
        // own, and along its main axes L has rectangular rows.
        const CMatrix3 linear = FromRows(rows);
        orientation = MainAxes(CMatrix3().Mul(linear, Transposed(linear)));
        const CMatrix3 along = CMatrix3().Mul(orientation, linear);
        for (int i = 0; i < 3; ++i) {
            rows[i].Set(along(i, 0), along(i, 1), along(i, 2));
        }
        parts.IsOriented = true;
        parts.Orientation.SetFromMatrix(orientation);
    }
    parts.Scaling = NormalizeRows(rows);
    if (FromRows(rows).GetDeterminant() < 0.0) {
        rows[2].ScaleInPlace(-1.0);
        parts.Scaling[2] = -parts.Scaling[2];
    }
    parts.Rotation.SetFromMatrix(CMatrix3().Mul(Transposed(orientation), FromRows(rows)));
    return parts;
}

const CTransformation::Components& CTransformation::GetComponents() const
{
    if (!m_hasComponents) {
        m_components = Decompose(m_matrix);
        m_hasComponents = true;
    }
    return m_components;
}

template<class Change>
CTransformation& CTransformation::ChangeComponents(const Change& change)
{
    GetComponents();
    change(m_components);
    CMatrix3 linear = CMatrix3().Mul(Diagonal(m_components.Scaling), CMatrix3());
    if (m_components.IsOriented) {
        const CMatrix3 orientation = m_components.Orientation.GetMatrix();
        linear = CMatrix3().Mul(CMatrix3().Mul(Transposed(orientation), linear), orientation);
    }
    linear.MulInPlace(m_components.Rotation.GetMatrix());
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            m_matrix.SetValue(row, column, linear(row, column));
        }
    }
    return *this;
}

} // namespace XSI::MATH
