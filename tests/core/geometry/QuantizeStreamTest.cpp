#include "geometry/QuantizeStream.h"

#include <cmath>
#include <limits>
#include <random>

namespace tq4x
{
namespace
{

using Mode = QuantizedMode;
using Slot = VertexSlot;

constexpr float Nan = std::numeric_limits<float>::quiet_NaN();
constexpr float Infinity = std::numeric_limits<float>::infinity();

TEST(LimitsOf, Modes)
{
    const struct
    {
        Mode Value;
        float High;
        float Low;
    } cases[] = {
        {Mode::Float, 1, 0},     {Mode::Short, 32767, -32767}, {Mode::Ushort, 65535, 0},
        {Mode::Byte, 127, -127}, {Mode::Ubyte, 255, 0},        {Mode::Auto, 1, 0},
    };

    for (const auto& test : cases) {
        EXPECT_EQ(LimitsOf(test.Value).High, test.High) << static_cast<int>(test.Value);
        EXPECT_EQ(LimitsOf(test.Value).Low, test.Low) << static_cast<int>(test.Value);
    }
    EXPECT_TRUE(KeepsValues(Mode::Float) && KeepsValues(Mode::Auto));
    EXPECT_FALSE(KeepsValues(Mode::Short) || KeepsValues(Mode::Ushort));
    EXPECT_FALSE(KeepsValues(Mode::Byte) || KeepsValues(Mode::Ubyte));
}

TEST(FitModeToSign, Cases)
{
    const struct
    {
        const char* Name;
        Mode Wanted;
        Slot Attribute;
        std::size_t Dimension;
        std::vector<float> Values;
        Mode Expected;
    } cases[] = {
        {"bytes, all positive", Mode::Byte, Slot::TextureCoordinate0, 2, {0, 0.5f, 1, 2}, Mode::Ubyte},
        {"bytes, at the limit", Mode::Byte, Slot::TextureCoordinate1, 2, {-1e-6f, 1}, Mode::Ubyte},
        {"bytes, below the limit", Mode::Byte, Slot::TextureCoordinate2, 2, {-1.1e-6f, 1}, Mode::Byte},
        {"unsigned bytes, all positive", Mode::Ubyte, Slot::Color, 4, {0, 0, 0, 1}, Mode::Ubyte},
        {"unsigned bytes, at the limit", Mode::Ubyte, Slot::Color, 4, {-1e-6f, 0, 0, 1}, Mode::Ubyte},
        {"unsigned bytes, below the limit", Mode::Ubyte, Slot::Color, 4, {-1.1e-6f, 0, 0, 1}, Mode::Byte},
        {"colour of three components", Mode::Byte, Slot::Color, 3, {1, 1, 1}, Mode::Ubyte},
        {"user attribute of three components", Mode::Byte, Slot::UserAttribute0, 3, {1, 1, 1}, Mode::Ubyte},
        {"user attribute of one component", Mode::Byte, Slot::UserAttribute1, 1, {1}, Mode::Ubyte},
        {"user attribute, unsigned and negative",
         Mode::Ubyte,
         Slot::UserAttribute2,
         3,
         {-1, 1, 1},
         Mode::Byte},
        {"position", Mode::Byte, Slot::Position, 3, {1, 1, 1}, Mode::Byte},
        {"normal", Mode::Byte, Slot::Normal, 3, {1, 1, 1}, Mode::Byte},
        {"tangent", Mode::Ubyte, Slot::Tangent, 3, {-1, 1, 1}, Mode::Ubyte},
        {"position of another dimension", Mode::Byte, Slot::Position, 2, {1, 1}, Mode::Byte},
        {"coordinate of three components", Mode::Byte, Slot::TextureCoordinate0, 3, {1, 1, 1}, Mode::Byte},
        {"shorts never change", Mode::Short, Slot::TextureCoordinate0, 2, {1, 1}, Mode::Short},
        {"unsigned shorts never change", Mode::Ushort, Slot::Color, 4, {-1, 1, 1, 1}, Mode::Ushort},
        {"floats never change", Mode::Float, Slot::Color, 4, {1, 1, 1, 1}, Mode::Float},
        {"automatic never changes", Mode::Auto, Slot::Color, 4, {-1, 1, 1, 1}, Mode::Auto},
        {"bytes with a number that is none", Mode::Byte, Slot::Color, 4, {1, Nan, 1, 1}, Mode::Byte},
        {"unsigned with a number that is none", Mode::Ubyte, Slot::Color, 4, {1, Nan, 1, 1}, Mode::Ubyte},
    };

    for (const auto& test : cases)
        EXPECT_EQ(FitModeToSign(test.Wanted, test.Attribute, test.Dimension, test.Values), test.Expected)
            << test.Name;
}

TEST(QuantizeInPlace, Cases)
{
    const struct
    {
        const char* Name;
        Mode Storage;
        std::vector<float> Values;
        std::vector<float> Expected;
        float Scale;
    } cases[] = {
        {"floats stay", Mode::Float, {-3, 0.25f}, {-3, 0.25f}, 1},
        {"automatic stays", Mode::Auto, {-3, 0.25f}, {-3, 0.25f}, 1},
        {"shorts", Mode::Short, {-2, 0, 1, 2}, {-32767, 0, 16384, 32767}, 2.0f / 32767.0f},
        {"unsigned shorts", Mode::Ushort, {0, 1, 2}, {0, 32768, 65535}, 2.0f / 65535.0f},
        {"bytes", Mode::Byte, {-1, 0.5f, 2}, {-64, 32, 127}, 2.0f / 127.0f},
        {"bytes, the negative one is the largest", Mode::Byte, {-2, 0.5f, 1}, {-127, 32, 64}, 2.0f / 127.0f},
        {"unsigned bytes", Mode::Ubyte, {0, 0.2f, 1}, {0, 51, 255}, 1.0f / 255.0f},
        {"halves go away from zero", Mode::Byte, {127, 0.5f, -0.5f, 1.5f, -1.5f}, {127, 1, -1, 2, -2}, 1},
        {"just below a half", Mode::Byte, {127, 0.49f, -0.49f}, {127, 0, 0}, 1},
        {"below the low limit", Mode::Ubyte, {255, -3}, {255, 0}, 1},
        {"low limit of unsigned shorts", Mode::Ushort, {65535, -65535}, {65535, 0}, 1},
        {"all zero", Mode::Short, {0, -0.0f, 0}, {0, 0, 0}, 1},
        {"nothing", Mode::Byte, {}, {}, 1},
        {"infinite magnitude", Mode::Byte, {Infinity, 1, -1}, {Infinity, 1, -1}, 1},
        {"inverse beyond single precision", Mode::Short, {1e-38f, 1e-39f}, {1e-38f, 1e-39f}, 1},
    };

    for (const auto& test : cases) {
        std::vector<float> values = test.Values;
        EXPECT_EQ(QuantizeInPlace(values, test.Storage), test.Scale) << test.Name;
        EXPECT_EQ(values, test.Expected) << test.Name;
    }
}

TEST(QuantizeInPlace, NumbersThatAreNoneStayAndDoNotCount)
{
    std::vector<float> values{Nan, 2, -1};
    EXPECT_EQ(QuantizeInPlace(values, Mode::Byte), 2.0f / 127.0f);
    EXPECT_TRUE(std::isnan(values[0]));
    EXPECT_EQ(values[1], 127.0f);
    EXPECT_EQ(values[2], -64.0f);
}

TEST(QuantizeInPlace, ScaleTakesTheIntegersBackWithinHalfAStep)
{
    constexpr unsigned seed = 33;
    std::mt19937 random(seed);
    for (int test = 0; test < 400; ++test) {
        const auto mode = static_cast<Mode>(1 + test % 4);
        const bool isSigned = mode == Mode::Short || mode == Mode::Byte;
        const float size = std::pow(10.0f, static_cast<float>(test % 11 - 5));
        std::uniform_real_distribution<float> component(isSigned ? -size : 0.0f, size);
        std::vector<float> values(30);
        for (float& value : values)
            value = component(random);
        std::vector<float> integers = values;
        const float scale = QuantizeInPlace(integers, mode);
        for (std::size_t i = 0; i < values.size(); ++i) {
            EXPECT_EQ(integers[i], std::trunc(integers[i])) << "seed " << seed << ", case " << test;
            EXPECT_LE(integers[i], LimitsOf(mode).High) << "seed " << seed << ", case " << test;
            EXPECT_GE(integers[i], LimitsOf(mode).Low) << "seed " << seed << ", case " << test;
            EXPECT_NEAR(integers[i] * scale, values[i], 0.51f * scale)
                << "seed " << seed << ", case " << test;
        }
    }
}

} // namespace
} // namespace tq4x
