#pragma once

#include "RandomDraw.h"
#include "RandomMaterials.h"
#include "scene/Curve.h"

#include <initializer_list>
#include <xsi_parameter.h>

namespace tq4x::test
{

/// A curve of one to five keys of any shape, from a bit before the time line to a bit behind it.
XSI::Host::Curve DrawCurve(RandomDraw& draw, const TimeLine& time, double low, double high);

/// The same, without keys in most cases: the channel rests.
XSI::Host::Curve DrawRestingCurve(RandomDraw& draw, const TimeLine& time, double low, double high);

/// Lets a parameter move, in so many of a hundred cases.
void MayMove(RandomDraw& draw, const XSI::Parameter& parameter, int percent, const TimeLine& time, double low,
             double high);

} // namespace tq4x::test
