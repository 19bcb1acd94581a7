// Every system must answer alike; the expected values were computed apart, to forty digits.

#include "math/Trigonometry.h"

#include <cmath>
#include <limits>

namespace tq4x
{
namespace
{

TEST(Trigonometry, IsRightAtEveryAngle)
{
    const struct
    {
        double Angle, Sine, Cosine;
    } cases[] = {
        {0.5, 0.479425538604203, 0.8775825618903728},
        {1.0, 0.8414709848078965, 0.5403023058681398},
        {0.5235987755982988, 0.49999999999999994, 0.8660254037844387},
        {0.7853981633974483, 0.7071067811865475, 0.7071067811865476},
        {1.5707963267948966, 1.0, 6.123233995736766e-17},
        {3.141592653589793, 1.2246467991473532e-16, -1.0},
        {4.71238898038469, -1.0, -1.8369701987210297e-16},
        {6.283185307179586, -2.4492935982947064e-16, 1.0},
        {1.5707963285402258, 1.0, -1.7453291532541063e-09},
        {12.566370614359172, -4.898587196589413e-16, 1.0},
        {1e-08, 1e-08, 1.0},
        {12345.678, -0.7040813137533816, 0.7101193587160628},
        {17453.292519943294, -0.9848077530125356, 0.17364817766507232},
        {22.0, -0.008851309290403876, -0.9999608263946371},
        {355.0, -3.014435335948845e-05, -0.999999999545659},
        {1000000000.0, 0.5458434494486996, 0.8378871813639024},
    };

    for (const auto& row : cases) {
        EXPECT_DOUBLE_EQ(Sine(row.Angle), row.Sine) << row.Angle;
        EXPECT_DOUBLE_EQ(Cosine(row.Angle), row.Cosine) << row.Angle;
        EXPECT_FLOAT_EQ(static_cast<float>(Sine(-row.Angle)), static_cast<float>(-row.Sine)) << row.Angle;
        EXPECT_EQ(static_cast<float>(Cosine(-row.Angle)), static_cast<float>(row.Cosine)) << row.Angle;
    }
}

TEST(Trigonometry, KeepsTheSignOfZeroAndWhatIsNoNumber)
{
    EXPECT_TRUE(std::signbit(Sine(-0.0)));
    EXPECT_EQ(Cosine(-0.0), 1.0);
    EXPECT_TRUE(std::isnan(Sine(std::numeric_limits<double>::infinity())));
    EXPECT_TRUE(std::isnan(Cosine(std::numeric_limits<double>::quiet_NaN())));
}

} // namespace
} // namespace tq4x
