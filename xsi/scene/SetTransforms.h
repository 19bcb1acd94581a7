#pragma once

#include <array>
#include <functional>

#include <xsi_transformation.h>
#include <xsi_x3dobject.h>

#include "scene/Curve.h"

namespace XSI::Host
{

/// A transformation by its parts.
MATH::CTransformation MakeTransform(const MATH::CVector3& translation,
                                    const MATH::CQuaternion& rotation = MATH::CQuaternion(),
                                    const MATH::CVector3& scaling = MATH::CVector3(1.0, 1.0, 1.0));

/// Places an object relative to its parent, at every frame.
void SetLocalTransform(const CRef& object, const MATH::CTransformation& transform);

/// Lets a function of the frame place it. The function must depend on nothing but the frame; if it depends on
/// more, call Objects().TouchTransforms() after a change.
void SetLocalTransformSource(const CRef& object, std::function<MATH::CTransformation(double frame)> evaluate);

/// The same by curves of the components; rotations are degrees about X, then Y, then Z. A curve without keys
/// leaves its component at the place that the object has now.
struct TransformCurves
{
    std::array<Curve, 3> Translation;
    std::array<Curve, 3> Rotation;
    std::array<Curve, 3> Scaling;
};

void SetLocalTransformCurves(const CRef& object, const TransformCurves& curves);

/// Stores the pose, relative to the scene, that the object had when a skin was bound to it.
void SetStaticTransform(const CRef& object, const MATH::CTransformation& transform);

} // namespace XSI::Host
