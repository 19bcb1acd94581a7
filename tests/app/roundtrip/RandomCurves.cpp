#include "RandomCurves.h"

#include "scene/CreateParameters.h"

namespace tq4x::test
{

XSI::Host::Curve DrawCurve(RandomDraw& draw, const TimeLine& time, double low, double high)
{
    using Shape = XSI::Host::Curve::Shape;
    XSI::Host::Curve curve;
    curve.Interpolation =
        draw.Of<Shape>({Shape::Step, Shape::Linear, Shape::Linear, Shape::Smooth, Shape::Smooth});
    const int count = draw.Int(1, 5);
    double frame = time.First - draw.Int(0, 3);
    for (int i = 0; i < count; ++i) {
        curve.Keys.push_back({frame, draw.Real(low, high)});
        frame += draw.Chance(70) ? draw.Int(1, 6) : draw.Real(0.3, 6.0);
    }
    return curve;
}

XSI::Host::Curve DrawRestingCurve(RandomDraw& draw, const TimeLine& time, double low, double high)
{
    return draw.Chance(40) ? DrawCurve(draw, time, low, high) : XSI::Host::Curve();
}

void MayMove(RandomDraw& draw, const XSI::Parameter& parameter, int percent, const TimeLine& time, double low,
             double high)
{
    if (draw.Chance(percent))
        XSI::Host::SetCurve(parameter, DrawCurve(draw, time, low, high));
}

} // namespace tq4x::test
