#pragma once

#include "scene/Database.h"

namespace XSI::Host
{

/// The value of a parameter at a frame (not "the current time"): its source's, converted to the parameter's
/// type, or its constant. Limits do not bind sources.
CValue ValueAt(const ParameterObject& parameter, double frame);

/// The value as a parameter of this definition takes it: converted, and held within the limits. Empty if it
/// is no value for it: a number that is none, or a text that doesn't start with a number where one is wanted.
CValue FitValue(const ParameterDefinition& definition, const CValue& value);

} // namespace XSI::Host
