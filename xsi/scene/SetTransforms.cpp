#include "scene/SetTransforms.h"

#include <xsi_math.h>

#include "scene/NodeRecords.h"
#include "scene/Session.h"

namespace XSI::Host
{

namespace
{

using MATH::CTransformation;
using MATH::CVector3;

CVector3 Evaluate(const std::array<Curve, 3>& curves, const CVector3& still, double frame)
{
    CVector3 values = still;
    for (int i = 0; i < 3; ++i) {
        const Curve& curve = curves[static_cast<std::size_t>(i)];
        values[i] = curve.Keys.empty() ? still[i] : curve.Evaluate(frame);
    }
    return values;
}

} // namespace

CTransformation MakeTransform(const CVector3& translation, const MATH::CQuaternion& rotation,
                              const CVector3& scaling)
{
    CTransformation transform;
    transform.SetScaling(scaling);
    transform.SetRotationFromQuaternion(rotation);
    transform.SetTranslation(translation);
    return transform;
}

void SetLocalTransform(const CRef& object, const CTransformation& transform)
{
    if (auto* node = Objects().Find<NodeObject>(object)) {
        node->Local = transform;
        node->LocalSource = nullptr;
        Objects().TouchTransforms();
    }
}

void SetLocalTransformSource(const CRef& object, std::function<CTransformation(double)> evaluate)
{
    if (auto* node = Objects().Find<NodeObject>(object)) {
        node->LocalSource = std::move(evaluate);
        Objects().TouchTransforms();
    }
}

void SetLocalTransformCurves(const CRef& object, const TransformCurves& curves)
{
    const CTransformation still = X3DObject(object).GetKinematics().GetLocal().GetTransform();
    const CVector3 stillDegrees = still.GetRotationXYZAngles().ScaleInPlace(MATH::RadiansToDegrees(1.0));
    SetLocalTransformSource(object, [=](double frame) {
        CVector3 angles = Evaluate(curves.Rotation, stillDegrees, frame);
        CTransformation transform;
        transform.SetScaling(Evaluate(curves.Scaling, still.GetScaling(), frame));
        transform.SetRotationFromXYZAngles(angles.ScaleInPlace(MATH::DegreesToRadians(1.0)));
        transform.SetTranslation(Evaluate(curves.Translation, still.GetTranslation(), frame));
        return transform;
    });
}

void SetStaticTransform(const CRef& object, const CTransformation& transform)
{
    if (auto* node = Objects().Find<NodeObject>(object)) {
        node->StaticState = transform;
    }
}

} // namespace XSI::Host
