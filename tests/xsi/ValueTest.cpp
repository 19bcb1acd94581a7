#include <xsi_value.h>

#include <limits>

#include "PrintValues.h"

#include "support/SceneBuilder.h"

namespace tq4x::test
{
namespace
{

using XSI::CRef;
using XSI::CRefArray;
using XSI::CString;
using XSI::CValue;
using XSI::CValueArray;

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

TEST(Value, TypesOfWhatItIsMadeFrom)
{
    enum Plain
    {
        Four = 4
    };

    EXPECT_EQ(CValue().GetType(), CValue::siEmpty);
    EXPECT_EQ(CValue(true).GetType(), CValue::siBool);
    EXPECT_EQ(CValue(1).GetType(), CValue::siInt4);
    EXPECT_EQ(CValue(Four).GetType(), CValue::siInt4);
    EXPECT_EQ(CValue(std::int64_t{1}).GetType(), CValue::siInt4);
    EXPECT_EQ(CValue(1u).GetType(), CValue::siUInt4);
    EXPECT_EQ(CValue(std::size_t{1}).GetType(), CValue::siUInt4);
    EXPECT_EQ(CValue(1.0f).GetType(), CValue::siFloat);
    EXPECT_EQ(CValue(1.0).GetType(), CValue::siDouble);
    EXPECT_EQ(CValue("no").GetType(), CValue::siString);
    EXPECT_EQ(CValue(L"no").GetType(), CValue::siString);
    EXPECT_EQ(CValue(CRef()).GetType(), CValue::siRef);
    EXPECT_EQ(CValue(CRefArray()).GetType(), CValue::siRefArray);
    EXPECT_EQ(CValue(CValueArray()).GetType(), CValue::siArray);
}

TEST(Value, ConversionsToFlagsNumbersAndText)
{
    const struct
    {
        CValue Value;
        bool Flag;
        LONG Number;
        double Real;
        const char* Text;
    } cases[] = {
        {CValue(), false, 0, 0.0, ""},
        {true, true, 1, 1.0, "true"},
        {false, false, 0, 0.0, "false"},
        {-7, true, -7, -7.0, "-7"},
        {4294967295u, true, 2147483647, 4294967295.0, "4294967295"},
        {2.75, true, 2, 2.75, "2.75"},
        {-2.75f, true, -2, -2.75, "-2.75"},
        {1e20, true, 2147483647, 1e20, "1e+20"},
        {-Infinity, true, -2147483647 - 1, -Infinity, "-inf"},
        {"12.5x", true, 12, 12.5, "12.5x"},
        {"true", true, 1, 1.0, "true"},
        {"False", false, 0, 0.0, "False"},
        {"0", false, 0, 0.0, "0"},
        {"word", false, 0, 0.0, "word"},
        {CRef(), false, 0, 0.0, ""},
        {CRefArray(), false, 0, 0.0, ""},
    };

    for (const auto& test : cases) {
        SCOPED_TRACE(testing::PrintToString(test.Value));
        EXPECT_EQ(static_cast<bool>(test.Value), test.Flag);
        EXPECT_EQ(static_cast<LONG>(test.Value), test.Number);
        EXPECT_EQ(static_cast<double>(test.Value), test.Real);
        EXPECT_EQ(Text(test.Value.GetAsText()), test.Text);
        const CString copied = test.Value;
        EXPECT_EQ(Text(copied), test.Text);
    }
}

TEST(Value, WhatIsNoNumberIsZeroAsAnInteger)
{
    EXPECT_EQ(static_cast<LONG>(CValue(NotANumber)), 0);
    EXPECT_TRUE(std::isnan(static_cast<float>(CValue(NotANumber))));
    EXPECT_EQ(static_cast<ULONG>(CValue(-3)), 0u);
}

TEST(Value, DoublesAreHeldWithinSinglePrecision)
{
    EXPECT_EQ(static_cast<float>(CValue(1e300)), std::numeric_limits<float>::max());
    EXPECT_EQ(static_cast<float>(CValue(-1e300)), -std::numeric_limits<float>::max());
    EXPECT_EQ(static_cast<float>(CValue(Infinity)), std::numeric_limits<float>::infinity());
    EXPECT_EQ(static_cast<float>(CValue(0.1f)), 0.1f);
}

TEST(Value, IntegersAreHeldWithin32Bits)
{
    EXPECT_EQ(CValue(std::int64_t{1} << 40), CValue(2147483647));
    EXPECT_EQ(CValue(-(std::int64_t{1} << 40)), CValue(-2147483647 - 1));
    EXPECT_EQ(CValue(std::uint64_t{1} << 40), CValue(4294967295u));
}

TEST(Value, ListsOfReferencesAndValues)
{
    SceneBuilder scene;
    const SceneNode a = scene.Null("a");
    const SceneNode b = scene.Null("b");
    CRefArray refs;
    refs.Add(a);
    refs.Add(b);
    const CValue list = refs;
    const CRef first = list;
    EXPECT_EQ(first, CRef(a));
    EXPECT_EQ(Text(list.GetAsText()), "a,b");

    const CValueArray values = list;
    EXPECT_EQ(values.GetCount(), 2);
    const CRefArray back = CValue(values);
    EXPECT_THAT(Names(back), testing::ElementsAre("a", "b"));

    const CValue single = CRef(b);
    const CRefArray listOfOne = single;
    EXPECT_THAT(Names(listOfOne), testing::ElementsAre("b"));
    const CValueArray valuesOfOne = CValue(L"text");
    EXPECT_EQ(valuesOfOne.GetCount(), 1);
    const CValueArray none = CValue();
    EXPECT_EQ(none.GetCount(), 0);
}

TEST(Value, ConvertToEachType)
{
    using enum CValue::DataType;
    const CValue text = L"3.5";
    for (const CValue::DataType type :
         {siEmpty, siInt4, siFloat, siDouble, siString, siRef, siBool, siUInt4, siArray, siRefArray}) {
        EXPECT_EQ(text.ConvertTo(type).GetType(), type);
    }
    EXPECT_EQ(text.ConvertTo(siInt4), CValue(3));
    EXPECT_EQ(text.ConvertTo(siDouble), CValue(3.5));
    EXPECT_EQ(CValue(3).ConvertTo(siString), CValue(L"3"));
}

TEST(Value, EqualityNeedsTheSameType)
{
    CValueArray a;
    a.Add(1);
    a.Add(L"x");
    CValueArray b = a;
    EXPECT_EQ(CValue(a), CValue(b));
    b[1] = L"y";
    EXPECT_FALSE(CValue(a) == CValue(b));
    b.Resize(1);
    EXPECT_FALSE(CValue(a) == CValue(b));
    EXPECT_FALSE(CValue(1) == CValue(1.0));
    EXPECT_EQ(CValue(), CValue());
    EXPECT_EQ(CValue(1u), CValue(1u));
    EXPECT_EQ(CValue(1.5f), CValue(1.5f));
    EXPECT_EQ(CValue(CRef()), CValue(CRef()));
    EXPECT_EQ(CValue(false), CValue(false));
}

} // namespace
} // namespace tq4x::test
