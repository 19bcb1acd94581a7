#pragma once

#include <xsi_ref.h>

namespace tq4x
{

/// The `viewvis` parameter of an object's visibility property; an invalid reference if it has none.
XSI::CRef FindViewVisibility(const XSI::CRef& object);

/// True for an object whose `viewvis` is constant and off: a camera or light that is hidden for good.
bool IsHiddenForGood(const XSI::CRef& object);

/// True if the object and everything above it is visible at a frame.
bool IsVisibleAt(const XSI::CRef& object, double frame);

} // namespace tq4x
