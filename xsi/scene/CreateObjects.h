#pragma once

#include <string_view>
#include <vector>

#include <xsi_camera.h>
#include <xsi_chainelement.h>
#include <xsi_constraint.h>
#include <xsi_light.h>
#include <xsi_model.h>
#include <xsi_null.h>
#include <xsi_shader.h>
#include <xsi_x3dobject.h>

// 3D objects. Each takes its place behind the children that its parent has; without a valid parent it hangs
// on the scene root. Names are taken as they are: nothing here makes them unique.

namespace XSI::Host
{

Null CreateNull(const CRef& parent, std::string_view name);
Model CreateModel(const CRef& parent, std::string_view name);
Model CreateInstance(const CRef& parent, std::string_view name, const CRef& master);
ChainRoot CreateChainRoot(const CRef& parent, std::string_view name);
ChainBone CreateChainBone(const CRef& parent, std::string_view name);
ChainEffector CreateChainEffector(const CRef& parent, std::string_view name);

/// A perspective camera with a vertical field of view of 53.13 degrees, an aspect ratio of 4 : 3 and planes
/// at 0.1 and 32768.
Camera CreateCamera(const CRef& parent, std::string_view name);

enum class LightType
{
    Point = 0,
    Infinite = 1,
    Spot = 2,
};

/// A white light of intensity 0.75 with its shader "soft_light": `color`, `intensity`, `spread` 5. The cone
/// of a spot light is 40 degrees.
Light CreateLight(const CRef& parent, std::string_view name, LightType type);

/// The light's shader, and the way to take it away.
Shader LightShaderOf(const CRef& light);
void RemoveLightShaders(const CRef& light);

/// A NURBS surface or curve: an object with a geometry of that class and no points.
X3DObject CreateNurbsSurface(const CRef& parent, std::string_view name);
X3DObject CreateNurbsCurve(const CRef& parent, std::string_view name);

/// Adds the parameter `siscaling`, which every 3D object has: true for hierarchical scaling.
void AddScalingRule(const CRef& object, bool isHierarchical);
void SetScalingRule(const CRef& object, bool isHierarchical);

/// Adds or sets the property `visibility` and answers its parameter `viewvis`.
Parameter SetVisibility(const CRef& object, bool isVisible);

/// Ties an object to others, for example a camera to its target. The parameter `roll` is in degrees.
Constraint AddConstraint(const CRef& constrained, const std::vector<CRef>& constraining,
                         const CRef& upVector = CRef(), double roll = 0.0);

/// Moves an object behind the children of another parent. False, and no change, for the scene root and for a
/// parent that lies below the object.
bool MoveBelow(const CRef& object, const CRef& parent);

/// Sets the colour of the scene's ambient light: the property `AmbientLighting` of the scene root with the
/// colour `ambience`, which is answered.
Parameter SetAmbience(double red, double green, double blue);

} // namespace XSI::Host
