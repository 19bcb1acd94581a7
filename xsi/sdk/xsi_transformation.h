#pragma once

#include <xsi_matrix4.h>
#include <xsi_rotation.h>
#include <xsi_vector3.h>

namespace XSI::MATH
{

/// A transformation by scaling, then rotation, then translation. Scaling happens along the axes of the
/// scaling orientation, which is what makes a sheared matrix expressible. Products are kept as matrices in
/// double precision and taken apart only when a component is asked for; a mirrored matrix gives a negative Z
/// scaling.
class CTransformation
{
public:
    CTransformation() = default;

    /// From a matrix whose last column is 0, 0, 0, 1.
    explicit CTransformation(const CMatrix4& matrix) { SetMatrix4(matrix); }

    CTransformation& SetIdentity() { return *this = CTransformation(); }

    CMatrix4 GetMatrix4() const { return m_matrix; }

    void GetMatrix4(CMatrix4& matrix) const { matrix = m_matrix; }

    CTransformation& SetMatrix4(const CMatrix4& matrix);

    CVector3 GetTranslation() const;

    void GetTranslation(CVector3& translation) const { translation = GetTranslation(); }

    void GetTranslationValues(double& x, double& y, double& z) const;
    CTransformation& SetTranslation(const CVector3& translation);
    CTransformation& SetTranslationFromValues(double x, double y, double z);

    CRotation GetRotation() const;

    void GetRotation(CRotation& rotation) const { rotation = GetRotation(); }

    CTransformation& SetRotation(const CRotation& rotation);
    CQuaternion GetRotationQuaternion() const;
    CTransformation& SetRotationFromQuaternion(const CQuaternion& quaternion);
    /// Radians.
    CVector3 GetRotationXYZAngles() const;
    CTransformation& SetRotationFromXYZAngles(const CVector3& angles);
    CTransformation& SetRotationFromXYZAnglesValues(double x, double y, double z);

    CVector3 GetScaling() const;

    void GetScaling(CVector3& scaling) const { scaling = GetScaling(); }

    void GetScalingValues(double& x, double& y, double& z) const;
    CTransformation& SetScaling(const CVector3& scaling);
    CTransformation& SetScalingFromValues(double x, double y, double z);

    CRotation GetScalingOrientation() const;
    CTransformation& SetScalingOrientation(const CRotation& orientation);

    /// True if the scaling is not along the object's own axes: the matrix is sheared.
    bool HasScalingOrientation() const;

    /// The product of the matrices, a times b and this times other: first a, then b.
    CTransformation& Mul(const CTransformation& a, const CTransformation& b);
    CTransformation& MulInPlace(const CTransformation& other);

    /// False, and no change, if there is no inverse.
    bool InvertInPlace();

private:
    struct Components
    {
        CVector3 Scaling{1.0, 1.0, 1.0};
        CQuaternion Orientation;
        CRotation Rotation;
        bool IsOriented = false;
    };

    static Components Decompose(const CMatrix4& matrix);
    const Components& GetComponents() const;
    /// Changes the components by a function and builds the matrix from them.
    template<class Change>
    CTransformation& ChangeComponents(const Change& change);

    CMatrix4 m_matrix;
    mutable Components m_components;
    mutable bool m_hasComponents = true; ///< False after a matrix was set, until a component is asked for.
};

} // namespace XSI::MATH
