#include <xsi_array.h>
#include <xsi_ref.h>
#include <xsi_value.h>

#include "PrintValues.h"

namespace tq4x::test
{
namespace
{

TEST(Array, EveryIndexIsSafe)
{
    XSI::CLongArray numbers(2);
    numbers[1] = 5;
    numbers[2] = 7;
    numbers[-1] = 7;
    const XSI::CLongArray& same = numbers;
    EXPECT_EQ(same[0], 0);
    EXPECT_EQ(same[1], 5);
    EXPECT_EQ(same[2], 0);
    EXPECT_EQ(same[-1], 0);
    EXPECT_EQ(numbers[2], 0);
    EXPECT_EQ(numbers.GetCount(), 2);
}

TEST(Array, GrowsAndShrinks)
{
    XSI::CDoubleArray numbers;
    EXPECT_EQ(numbers.GetArray(), nullptr);
    EXPECT_EQ(numbers.Add(1.5), 0);
    EXPECT_EQ(numbers.Add(2.5), 1);
    EXPECT_EQ(numbers.GetArray()[1], 2.5);
    numbers.Resize(-1);
    EXPECT_EQ(numbers.GetCount(), 0);
    numbers.Resize(3);
    EXPECT_EQ(numbers[2], 0.0);
    numbers.Clear();
    EXPECT_EQ(numbers.GetCount(), 0);
}

TEST(Array, ValuesToo)
{
    XSI::CValueArray values(1);
    EXPECT_TRUE(values[0].IsEmpty());
    values[0] = 3;
    values[1] = 4;
    const XSI::CValueArray& same = values;
    EXPECT_TRUE(same[1].IsEmpty());
    EXPECT_TRUE(values[1].IsEmpty());
    EXPECT_EQ(values.Add(L"x"), 1);
    XSI::CValueArray copy = values;
    values.Clear();
    EXPECT_EQ(copy.GetCount(), 2);
    values = std::move(copy);
    EXPECT_EQ(values[1], XSI::CValue(L"x"));
    values.Resize(-5);
    EXPECT_EQ(values.GetCount(), 0);
}

} // namespace
} // namespace tq4x::test
