#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "GltfFile.h"
#include "gltf/AnimationTrack.h"
#include "gltf/SceneError.h"

namespace tq4x::gltf::test
{
namespace
{

constexpr double Rate = 30.0;

Bytes PackAll(const std::vector<float>& numbers)
{
    Bytes bytes;
    for (const float number : numbers) {
        bytes = Join({bytes, Pack(number)});
    }
    return bytes;
}

struct Read
{
    AnimationTrack Track;
    std::size_t Repeated = 0;
    std::string Error;
};

// Values follow the times in one buffer.
Read ReadKeys(const std::vector<float>& times, const std::vector<float>& values, const char* shape,
              Interpolation interpolation, AnimatedProperty property, double rate = Rate)
{
    const std::size_t perValue = std::string(shape) == "SCALAR" ? 1 : std::string(shape) == "VEC3" ? 3 : 4;
    const Document document = MustOpen(WithData(
        Join({PackAll(times), PackAll(values)}),
        R"("accessors":[{"bufferView":0,"componentType":5126,"type":"SCALAR","count":)" +
            std::to_string(times.size()) + R"(},{"bufferView":0,"componentType":5126,"byteOffset":)" +
            std::to_string(times.size() * 4) + R"(,"type":")" + shape + R"(","count":)" +
            std::to_string(values.size() / perValue) + "}]"));
    Read read;
    try {
        read.Track = ReadTrack(document, {0, 1, interpolation}, property, rate, "/animations/0/samplers/0",
                               read.Repeated);
    } catch (const SceneError& error) {
        read.Error = error.Place + ": " + error.Text;
    }
    return read;
}

double At(const AnimationTrack& track, double frame)
{
    double value = -1.0;
    EvaluateTrack(track, frame, {&value, 1});
    return value;
}

TEST(AnimationTrackTest, FramesSnapToWholeOnes)
{
    EXPECT_EQ(FrameOfTime(0.1f, 30.0), 3.0);
    EXPECT_EQ(FrameOfTime(1.0f / 30.0f, 30.0), 1.0);
    EXPECT_EQ(FrameOfTime(100.0f / 3.0f, 30.0), 1000.0);
    EXPECT_EQ(FrameOfTime(0.5, 30.0), 15.0);
    EXPECT_EQ(FrameOfTime(0.05, 30.0), 1.5);
    EXPECT_EQ(FrameOfTime(0.1005, 30.0), 3.015);
    EXPECT_EQ(FrameOfTime(0.0, 30.0), 0.0);
    for (int frame = 0; frame < 200'000; frame += 37) {
        const float seconds = static_cast<float>(frame) / 24.0f;
        ASSERT_EQ(FrameOfTime(seconds, 24.0), frame) << frame;
    }
}

TEST(AnimationTrackTest, StepHoldsUntilTheNextKey)
{
    const AnimationTrack track =
        ReadKeys({0.1f, 0.2f}, {5.0f, 7.0f}, "SCALAR", Interpolation::Step, AnimatedProperty::Visible).Track;
    EXPECT_EQ(At(track, 0.0), 5.0);
    EXPECT_EQ(At(track, 3.0), 5.0);
    EXPECT_EQ(At(track, 5.999), 5.0);
    EXPECT_EQ(At(track, 6.0), 7.0);
    EXPECT_EQ(At(track, 1e300), 7.0);
}

TEST(AnimationTrackTest, LinearRunsStraightAndStopsOutside)
{
    const AnimationTrack track =
        ReadKeys({1.0f, 2.0f}, {4.0f, 8.0f}, "SCALAR", Interpolation::Linear, AnimatedProperty::Near).Track;
    EXPECT_EQ(At(track, 0.0), 4.0);
    EXPECT_EQ(At(track, 30.0), 4.0);
    EXPECT_EQ(At(track, 45.0), 6.0);
    EXPECT_EQ(At(track, 60.0), 8.0);
    EXPECT_EQ(At(track, 61.0), 8.0);
}

TEST(AnimationTrackTest, SplineUsesTangentsPerSecond)
{
    // In-tangent, value, out-tangent of two keys that lie two seconds apart.
    const AnimationTrack track = ReadKeys({0.0f, 2.0f}, {9.0f, 1.0f, 3.0f, -2.0f, 5.0f, 9.0f}, "SCALAR",
                                          Interpolation::CubicSpline, AnimatedProperty::Near)
                                     .Track;
    EXPECT_EQ(At(track, 0.0), 1.0);
    EXPECT_EQ(At(track, 60.0), 5.0);
    EXPECT_EQ(At(track, -1.0), 1.0);
    const auto expected = [](double t) {
        return (2 * t * t * t - 3 * t * t + 1) * 1.0 + 2.0 * (t * t * t - 2 * t * t + t) * 3.0 +
               (-2 * t * t * t + 3 * t * t) * 5.0 + 2.0 * (t * t * t - t * t) * -2.0;
    };
    for (const double t : {0.1, 0.25, 0.5, 0.9}) {
        EXPECT_NEAR(At(track, 60.0 * t), expected(t), 1e-12) << t;
    }
}

TEST(AnimationTrackTest, RotationsTakeTheShorterArcAtConstantSpeed)
{
    // From no turn to a turn of 90 degrees about z, the latter with its sign turned round.
    const float half = std::sqrt(0.5f);
    const AnimationTrack track = ReadKeys({0.0f, 1.0f}, {0, 0, 0, 1, 0, 0, -half, -half}, "VEC4",
                                          Interpolation::Linear, AnimatedProperty::Rotation)
                                     .Track;
    for (int frame = 0; frame <= 30; ++frame) {
        double q[4];
        EvaluateTrack(track, frame, q);
        const double angle = frame / 30.0 * std::acos(-1.0) / 4.0;
        const double sign = frame == 30 ? -1.0 : 1.0; // the key itself is given as it is
        EXPECT_NEAR(q[2], sign * std::sin(angle), 1e-7) << frame;
        EXPECT_NEAR(q[3], sign * std::cos(angle), 1e-7) << frame;
        EXPECT_NEAR(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3], 1.0, 1e-12);
    }
}

TEST(AnimationTrackTest, RotationsAreUnitQuaternionsWhateverTheKeys)
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<float> range(-2.0f, 2.0f);
        std::vector<float> values;
        for (int i = 0; i < 24; ++i) {
            values.push_back(range(random));
        }
        const auto shape = seed % 2 == 0 ? Interpolation::Linear : Interpolation::CubicSpline;
        const std::vector<float> times = shape == Interpolation::Linear
                                             ? std::vector<float>{0.0f, 0.1f, 0.5f, 0.6f, 2.0f, 3.0f}
                                             : std::vector<float>{0.0f, 3.0f};
        const AnimationTrack track = ReadKeys(times, values, "VEC4", shape, AnimatedProperty::Rotation).Track;
        for (double frame = 0.0; frame <= 90.0; frame += 0.7) {
            double q[4];
            EvaluateTrack(track, frame, q);
            ASSERT_NEAR(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3], 1.0, 1e-12) << seed;
        }
    }
}

TEST(AnimationTrackTest, ZeroQuaternionsCountAsNoTurn)
{
    const AnimationTrack track =
        ReadKeys({0.0f}, {0, 0, 0, 0}, "VEC4", Interpolation::Linear, AnimatedProperty::Rotation).Track;
    double q[4];
    EvaluateTrack(track, 0.0, q);
    EXPECT_EQ(q[3], 1.0);
}

TEST(AnimationTrackTest, OfRepeatedTimesTheLastCounts)
{
    const Read read = ReadKeys({0.0f, 1.0f, 1.0f, 1.0f, 2.0f}, {1, 2, 3, 4, 5}, "SCALAR",
                               Interpolation::Linear, AnimatedProperty::Near);
    EXPECT_EQ(read.Error, "");
    EXPECT_EQ(read.Repeated, 2u);
    EXPECT_EQ(read.Track.Frames, (std::vector<double>{0, 30, 60}));
    EXPECT_EQ(read.Track.Values, (std::vector<double>{1, 4, 5}));
}

TEST(AnimationTrackTest, RefusesTimesAndValuesThatMakeNoSense)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();

    const struct
    {
        std::vector<float> Times;
        std::vector<float> Values;
        const char* Error;
    } cases[] = {
        {{0, 2, 1}, {1, 2, 3}, "/animations/0/samplers/0: The key times fall at key 2."},
        {{0, nan, 1}, {1, 2, 3}, "/animations/0/samplers/0: Key time 1 is not a finite number."},
        {{0, 1, inf}, {1, 2, 3}, "/animations/0/samplers/0: Key time 2 is not a finite number."},
        {{0, 1, 2}, {1, nan, 3}, "/animations/0/samplers/0: A value of key 1 is not a finite number."},
        {{0, 1, 2}, {-inf, 1, 3}, "/animations/0/samplers/0: A value of key 0 is not a finite number."},
    };

    for (const auto& entry : cases) {
        EXPECT_EQ(ReadKeys(entry.Times, entry.Values, "SCALAR", Interpolation::Linear, AnimatedProperty::Near)
                      .Error,
                  entry.Error);
    }
}

TEST(AnimationTrackTest, NoKeysGiveAnEmptyTrack)
{
    EXPECT_TRUE(
        ReadKeys({}, {}, "VEC3", Interpolation::Linear, AnimatedProperty::Scale).Track.Frames.empty());
}

} // namespace
} // namespace tq4x::gltf::test
