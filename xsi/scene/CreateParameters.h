#pragma once

#include <functional>
#include <string_view>

#include <xsi_parameter.h>
#include <xsi_projectitem.h>
#include <xsi_property.h>

#include "scene/Curve.h"
#include "scene/Records.h"

// Parameters and properties on the objects of the scene, and what drives them.

namespace XSI::Host
{

/// Adds a parameter to an object, with the type and the default of its value and no limits. One of this name
/// that exists already takes the value instead.
Parameter AddParameter(const CRef& owner, std::string_view name, const CValue& value);

/// The same with limits and texts. Invalid for an owner that has no parameters, and if the name is taken.
Parameter AddParameter(const CRef& owner, std::string_view name, const ParameterDefinition& definition,
                       LONG capabilities = siAnimatable | siPersistable);

/// Adds a colour: a parameter with the components `red`, `green`, `blue`, `alpha`.
Parameter AddColorParameter(const CRef& owner, std::string_view name, double red, double green, double blue,
                            double alpha = 1.0);

/// Sets the constants of a colour's components.
void SetColor(const Parameter& color, double red, double green, double blue, double alpha = 1.0);

/// Lets a curve drive a parameter.
void SetCurve(const Parameter& parameter, Curve curve);

/// Lets a function of the frame drive a parameter: as a curve, or as an expression. It must depend on nothing
/// but the frame; if it depends on more, call Objects().TouchTransforms() after a change.
void SetCurveFunction(const Parameter& parameter, std::function<double(double frame)> evaluate);
void SetExpression(const Parameter& parameter, std::function<double(double frame)> evaluate);

/// Connects a shader, or one of a shader's output parameters, to a port. The port's constant stays its value.
void ConnectShader(const Parameter& port, const CRef& shader);

/// Makes the value constant again.
void RemoveSource(const Parameter& parameter);

/// Adds a property without calling any plug-in. An empty name stands for the type. The types `visibility`
/// (`viewvis`, `rendvis` true) and `geomapprox` (`gapproxmoad` true, `gapproxmoan` 60, `gapproxmosl` 0) come
/// with their parameters.
Property AddProperty(const CRef& owner, std::string_view type, std::string_view name = {});

/// The first property of this type; invalid if there is none.
Property FindProperty(const CRef& owner, std::string_view type);

} // namespace XSI::Host
