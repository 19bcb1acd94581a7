#pragma once

#include <array>
#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

#include <xsi_math.h>
#include <xsi_x3dobject.h>

#include "scene/CreateObjects.h"
#include "scene/CreateParameters.h"
#include "scene/CustomProperties.h"
#include "scene/SetTransforms.h"
#include "scene/Text.h"

namespace tq4x::test
{

using Keys = std::vector<XSI::Host::Curve::Key>;

/// Names and values of parameters.
using Values = std::initializer_list<std::pair<std::string_view, XSI::CValue>>;

/// Adds a custom property named after its type, with parameters of these names and values. No plug-in is
/// called.
inline XSI::CustomProperty AddMarks(const XSI::CRef& owner, std::string_view type, Values values)
{
    const XSI::CustomProperty property = XSI::Host::AddPlainProperty(owner, type, type);
    for (const auto& [name, value] : values) {
        XSI::Host::AddParameter(property, name, value);
    }
    return property;
}

/// A 3D object in the making. Every call changes the object at once and answers the object itself, so that
/// calls can be chained.
class SceneNode
{
public:
    SceneNode(const XSI::CRef& object) : m_object(object) {}

    operator const XSI::CRef&() const { return m_object.GetRef(); }

    const XSI::X3DObject& Object() const { return m_object; }

    /// Translation, rotation (degrees about X, then Y, then Z) and scaling relative to the parent.
    SceneNode& At(double x, double y, double z)
    {
        return ChangeTransform([=](auto& transform) { transform.SetTranslationFromValues(x, y, z); });
    }

    SceneNode& Turned(double x, double y, double z)
    {
        using XSI::MATH::DegreesToRadians;
        return ChangeTransform([=](auto& transform) {
            transform.SetRotationFromXYZAnglesValues(DegreesToRadians(x), DegreesToRadians(y),
                                                     DegreesToRadians(z));
        });
    }

    SceneNode& Scaled(double x, double y, double z)
    {
        return ChangeTransform([=](auto& transform) { transform.SetScalingFromValues(x, y, z); });
    }

    SceneNode& Placed(const XSI::MATH::CTransformation& transform)
    {
        XSI::Host::SetLocalTransform(m_object, transform);
        return *this;
    }

    /// Straight lines between keys on translation, rotation (degrees) and scaling; a channel without keys
    /// rests where it is.
    SceneNode& Moving(const Keys& x, const Keys& y = {}, const Keys& z = {})
    {
        m_curves.Translation = CurvesOf(x, y, z);
        return ApplyCurves();
    }

    SceneNode& Turning(const Keys& x, const Keys& y = {}, const Keys& z = {})
    {
        m_curves.Rotation = CurvesOf(x, y, z);
        return ApplyCurves();
    }

    SceneNode& Growing(const Keys& x, const Keys& y = {}, const Keys& z = {})
    {
        m_curves.Scaling = CurvesOf(x, y, z);
        return ApplyCurves();
    }

    /// The stored bind pose, relative to the scene.
    SceneNode& Bound(const XSI::MATH::CTransformation& pose = {})
    {
        XSI::Host::SetStaticTransform(m_object, pose);
        return *this;
    }

    SceneNode& ScalesHierarchically(bool on = true)
    {
        XSI::Host::SetScalingRule(m_object, on);
        return *this;
    }

    /// Sets `viewvis`, and lets it change in steps by keys of 0 and 1.
    SceneNode& Visible(bool isVisible)
    {
        XSI::Host::SetVisibility(m_object, isVisible);
        return *this;
    }

    SceneNode& Blinking(const Keys& keys)
    {
        const XSI::Parameter visibility = XSI::Host::SetVisibility(m_object, true);
        XSI::Host::SetCurve(visibility, {keys, XSI::Host::Curve::Shape::Step});
        return *this;
    }

    /// Sets or adds a parameter of the object, and animates one.
    SceneNode& Set(std::string_view parameter, const XSI::CValue& value)
    {
        XSI::Host::AddParameter(m_object, parameter, value);
        return *this;
    }

    SceneNode& Animate(std::string_view parameter, const Keys& keys)
    {
        XSI::Host::SetCurve(m_object.GetParameter(XSI::Host::FromUtf8(parameter)), {keys});
        return *this;
    }

    /// Adds a custom property with its values, as a page of the plug-in would.
    SceneNode& Marked(std::string_view propertyType, Values values)
    {
        AddMarks(m_object, propertyType, values);
        return *this;
    }

    /// Aims the object at a target by a direction constraint.
    SceneNode& AimedAt(const XSI::CRef& target, const XSI::CRef& up = {}, double roll = 0.0)
    {
        XSI::Host::AddConstraint(m_object, {target}, up, roll);
        return *this;
    }

private:
    template<class Change>
    SceneNode& ChangeTransform(const Change& change)
    {
        XSI::MATH::CTransformation transform = m_object.GetKinematics().GetLocal().GetTransform();
        change(transform);
        return Placed(transform);
    }

    static std::array<XSI::Host::Curve, 3> CurvesOf(const Keys& x, const Keys& y, const Keys& z)
    {
        return {XSI::Host::Curve{x}, XSI::Host::Curve{y}, XSI::Host::Curve{z}};
    }

    SceneNode& ApplyCurves()
    {
        XSI::Host::SetLocalTransformCurves(m_object, m_curves);
        return *this;
    }

    XSI::X3DObject m_object;
    XSI::Host::TransformCurves m_curves;
};

} // namespace tq4x::test
