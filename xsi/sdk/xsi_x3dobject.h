#pragma once

#include <xsi_kinematics.h>
#include <xsi_sceneitem.h>
#include <xsi_statickinematicstate.h>

namespace XSI
{

class Material;
class Primitive;

/// An object in space.
class X3DObject : public SceneItem
{
public:
    X3DObject() = default;

    X3DObject(const CRef& ref) : SceneItem(ref.As(siX3DObjectID)) {}

    /// The direct children, in order.
    CRefArray GetChildren() const;

    /// The objects below this one that fit, in order, parents before children. Empty texts fit everything;
    /// families are not told apart.
    CRefArray FindChildren(const CString& name, const CString& type, const CStringArray& families,
                           bool recursive = true) const;

    Kinematics GetKinematics() const;

    bool HasStaticKinematicState() const;
    /// Invalid if there is none.
    StaticKinematicState GetStaticKinematicState() const;

    Primitive GetActivePrimitive(double time = CurrentTime) const;

    /// The material of the object, or the one of the nearest parent that has one.
    Material GetMaterial() const;
    /// The materials of the object and of its clusters.
    CRefArray GetMaterials() const;

    /// The envelopes of the active primitive.
    CRefArray GetEnvelopes() const;
};

} // namespace XSI
