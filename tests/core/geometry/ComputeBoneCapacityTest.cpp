#include "geometry/ComputeBoneCapacity.h"

#include <limits>

namespace tq4x
{
namespace
{

TEST(ComputeBoneCapacity, Cases)
{
    const struct
    {
        bool IsNonUniformScale;
        std::int32_t Reserved;
        std::int32_t Expected;
    } cases[] = {
        {false, 0, 20},
        {true, 0, 10},
        {false, 1, 19},
        {true, 1, 9},
        {false, 30, 10},
        {true, 30, 5},
        {false, 57, 1},
        {false, 58, 0},
        {true, 54, 1},
        {true, 55, 0},
        {false, 60, 0},
        {true, 60, 0},
        {false, 61, 0},
        {true, 61, 0},
        {false, 1000, 0},
        {false, -3, 21},
        {true, -6, 11},
        {false, std::numeric_limits<std::int32_t>::max(), 0},
        {false, std::numeric_limits<std::int32_t>::min(), 715827902},
    };

    for (const auto& test : cases)
        EXPECT_EQ(ComputeBoneCapacity(test.IsNonUniformScale, test.Reserved), test.Expected)
            << test.IsNonUniformScale << " " << test.Reserved;
}

} // namespace
} // namespace tq4x
