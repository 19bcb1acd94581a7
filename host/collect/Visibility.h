#pragma once

#include <xsi_parameter.h>

#include <vector>

namespace tq4x
{

/// The `viewvis` parameter of an object's visibility property; an invalid reference if it has none.
XSI::CRef FindViewVisibility(const XSI::CRef& object);

/// True for an object whose `viewvis` is constant and off: a camera or light that is hidden for good.
bool IsHiddenForGood(const XSI::CRef& object);

/// The `viewvis` parameters of the object and of everything above it.
std::vector<XSI::Parameter> FindVisibilityChain(const XSI::CRef& object);

/// True if all of them are on at a frame.
bool IsVisibleAt(const std::vector<XSI::Parameter>& chain, double frame);

/// True if the object and everything above it is visible at a frame.
bool IsVisibleAt(const XSI::CRef& object, double frame);

} // namespace tq4x
