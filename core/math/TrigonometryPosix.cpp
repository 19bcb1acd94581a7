#include "math/Trigonometry.h"

#include <cmath>

namespace tq4x
{

double Sine(double radians)
{
    return std::sin(radians);
}

double Cosine(double radians)
{
    return std::cos(radians);
}

} // namespace tq4x
