#include "animation/EvaluateHermite.h"

namespace tq4x
{

float EvaluateHermite(const CurveKey& a, const CurveKey& b, float frame)
{
    if (a.Frame == b.Frame)
        return b.Value;
    const float d = frame - a.Frame;
    const float r = 1.0f / (b.Frame - a.Frame);
    const float q = d * d * r;
    const float h2 = q * r * 3.0f;
    const float c = q * r * d;
    const float h3 = c * r * 2.0f;
    return ((h3 - h2) + 1.0f) * a.Value + (h2 - h3) * b.Value + ((c - q * 2.0f) + d) * a.OutSlope +
           (c - q) * b.InSlope;
}

} // namespace tq4x
