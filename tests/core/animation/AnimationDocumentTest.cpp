#include "animation/AnimationDocument.h"
#include "support/Golden.h"

#include <array>
#include <functional>
#include <limits>

namespace tq4x
{
namespace
{

std::string Written(const std::function<void(XmlWriter&)>& write)
{
    XmlWriter stream;
    write(stream);
    return stream.Text();
}

AnimationCurve CurveOf(std::vector<float> samples, std::vector<CurveKey> keys = {})
{
    AnimationCurve curve;
    curve.Samples = std::move(samples);
    curve.Keys = std::move(keys);
    curve.NeedsOutput = true;
    return curve;
}

constexpr CurveKey HermiteKey{.Frame = 90, .Value = 180, .InSlope = 90, .OutSlope = -45};
constexpr CurveKey LinearKey{.Frame = 2, .Value = 0.5f, .Kind = KeyKind::Linear, .InSlope = 7, .OutSlope = 7};
constexpr CurveKey StepKey{.Frame = 3, .Value = 4, .Kind = KeyKind::Step, .InSlope = 7, .OutSlope = 7};

TEST(WriteKey, WritesTheElementOfItsKind)
{
    const struct
    {
        const char* Name;
        CurveKey Key;
        bool IsAngle;
        std::string Text;
    } cases[] = {
        {"Hermite", HermiteKey, false,
         "<HermiteFloatKey Frame=\"90\" Value=\"180\" InSlope=\"90\" OutSlope=\"-45\"/>\n"},
        {"Hermite angle: the frame stays", HermiteKey, true,
         "<HermiteFloatKey Frame=\"90\" Value=\"3.14159\" InSlope=\"1.5708\" OutSlope=\"-0.785398\"/>\n"},
        {"linear", LinearKey, false, "<LinearFloatKey Frame=\"2\" Value=\"0.5\"/>\n"},
        {"linear angle", LinearKey, true, "<LinearFloatKey Frame=\"2\" Value=\"0.00872665\"/>\n"},
        {"step", StepKey, false, "<StepFloatKey Frame=\"3\" Value=\"4\"/>\n"},
        {"small numbers",
         {.Frame = 1e-7f, .Value = -1e-7f},
         false,
         "<HermiteFloatKey Frame=\"0\" Value=\"0\" InSlope=\"0\" OutSlope=\"0\"/>\n"},
        {"largest slope",
         {.OutSlope = 32767},
         false,
         "<HermiteFloatKey Frame=\"0\" Value=\"0\" InSlope=\"0\" OutSlope=\"32767\"/>\n"},
    };

    for (const auto& c : cases)
        EXPECT_EQ(Written([&](XmlWriter& stream) { WriteKey(c.Key, stream, c.IsAngle); }), c.Text) << c.Name;
}

TEST(WriteSegmentsCurve, SplitsTheKeysIntoRunsOfOneKind)
{
    const std::vector<CurveKey> keys{{.Frame = 0}, {.Frame = 1}, LinearKey, StepKey, HermiteKey};
    const std::string text = Written([&](XmlWriter& stream) {
        WriteSegmentsCurve(stream, "SegmentsFloatCurve", keys, RepeatMethod::Repeat,
                           RepeatMethod::RelativeRepeat, false);
        WriteSegmentsCurve(stream, "NoKeys", {}, RepeatMethod::Mirror, RepeatMethod::None, true);
        WriteSegmentsCurve(stream, "OneKey", std::span(&HermiteKey, 1), RepeatMethod::None,
                           RepeatMethod::None, false);
    });
    test::ExpectGolden(text, "core/animation/curve-runs.xml");
}

TEST(WriteCurveElement, AFirstSampleStandsInForMissingKeys)
{
    const struct
    {
        const char* Name;
        float Sample;
        bool IsAngle;
        std::string Value;
    } cases[] = {
        {"plain", 725, false, "725"},
        {"angle", 90, true, "1.5708"},
        {"angle above a turn: 5 degrees", 725, true, "0.0872665"},
        {"angle below a turn: -5 degrees", -725, true, "-0.0872665"},
        {"exactly a turn", 360, true, "6.28319"},
        {"exactly a turn down", -360, true, "-6.28319"},
    };

    for (const auto& c : cases) {
        AnimationCurve curve = CurveOf({c.Sample, 1});
        curve.IsAngle = c.IsAngle;
        EXPECT_EQ(Written([&](XmlWriter& stream) { WriteCurveElement(curve, stream, "C"); }),
                  "<C PreRepeatMethod=\"None\" PostRepeatMethod=\"None\" StartFrame=\"0\" EndFrame=\"0\">\n"
                  "\t<Segments>\n"
                  "\t\t<LinearFloatSegment>\n"
                  "\t\t\t<Keys>\n"
                  "\t\t\t\t<LinearFloatKey Frame=\"0\" Value=\"" +
                      c.Value +
                      "\"/>\n"
                      "\t\t\t</Keys>\n"
                      "\t\t</LinearFloatSegment>\n"
                      "\t</Segments>\n"
                      "</C>\n")
            << c.Name;
        EXPECT_TRUE(curve.Keys.empty()) << "the key is for the file alone";
    }
}

TEST(WriteCurveElement, KeysAreNotBroughtInsideATurn)
{
    AnimationCurve curve = CurveOf({725}, {{.Frame = 0, .Value = 725}});
    curve.IsAngle = true;
    curve.PreRepeatMethod = RepeatMethod::Mirror;
    const std::string text = Written([&](XmlWriter& stream) { WriteCurveElement(curve, stream, "C"); });
    EXPECT_NE(text.find("Value=\"12.6536\""), std::string::npos) << text;
    EXPECT_NE(text.find("PreRepeatMethod=\"Mirror\" PostRepeatMethod=\"None\""), std::string::npos) << text;
}

TEST(WriteCurveElement, NothingSampledIsZero)
{
    const std::string text = Written([](XmlWriter& stream) { WriteCurveElement(CurveOf({}), stream, "C"); });
    EXPECT_NE(text.find("<LinearFloatKey Frame=\"0\" Value=\"0\"/>"), std::string::npos) << text;
}

TEST(WriteBoolAnimation, StandsAtItsOwnLevel)
{
    const AnimationCurve moving =
        CurveOf({1, 0}, {{.Frame = 0, .Value = 1}, {.Frame = 1, .Value = 0}, {.Frame = 2, .Value = -3}});
    AnimationCurve quiet = moving;
    quiet.NeedsOutput = false;
    for (const int level : {5, 6}) {
        const std::string text = Written([&](XmlWriter& stream) {
            stream.AtLevel(level, [&] {
                WriteMember(stream, "A", [&] { WriteBoolAnimation(stream, moving, true); });
                WriteMember(stream, "B", [&] { WriteBoolAnimation(stream, CurveOf({0}), false); });
                WriteMember(stream, "C", [&] { WriteBoolAnimation(stream, quiet, false); });
            });
        });
        test::ExpectGolden(text, level == 5 ? "core/animation/bool-members-at-5.xml"
                                            : "core/animation/bool-members-at-6.xml");
    }
}

TEST(WriteBoolCurve, WithoutKeysHasNoRange)
{
    const std::string text = Written([](XmlWriter& stream) {
        WriteBoolCurve(stream, {}, RepeatMethod::Repeat, RepeatMethod::None, false);
    });
    EXPECT_EQ(text, "<BoolCurve PreRepeatMethod=\"Repeat\" PostRepeatMethod=\"None\" StartFrame=\"0\" "
                    "EndFrame=\"0\" DefaultValue=\"false\">\n\t<Keys>\n\t</Keys>\n</BoolCurve>\n");
}

TEST(AnimationElements, HoldTheCurvesThatNeedOutput)
{
    std::array<AnimationCurve, 4> curves{CurveOf({1}), CurveOf({2}), CurveOf({3}), CurveOf({4})};
    curves[1].NeedsOutput = false;
    const std::span<const AnimationCurve> all(curves);
    const std::string text = Written([&](XmlWriter& stream) {
        WriteFloatAnimation(stream, curves[0]);
        WriteFloatAnimation(stream, curves[1]);
        WriteVectorAnimation(stream, all.first(2), "Vector2Animation");
        WriteVectorAnimation(stream, all.first(3), "Vector3Animation");
        WriteVectorAnimation(stream, all.subspan(1, 1), "RotateVector3Animation");
        WriteRgbaColorAnimation(stream, curves);
    });
    test::ExpectGolden(text, "core/animation/animation-elements.xml");
}

TEST(FrameSizeOf, CountsWholeFrames)
{
    const struct
    {
        const char* Name;
        double Start;
        double End;
        std::int32_t Size;
    } cases[] = {
        {"ten frames", 1, 10, 9},         {"one frame", 5, 5, 0},
        {"parts are cut off", 0, 9.9, 9}, {"backwards", 10, 1, -9},
        {"too large", 0, 4e9, 0},         {"not a number", std::numeric_limits<double>::quiet_NaN(), 1, 0},
    };

    for (const auto& c : cases)
        EXPECT_EQ(FrameSizeOf({c.Start, c.End, false}), c.Size) << c.Name;
}

TEST(LoopModeWord, HasTwoWords)
{
    EXPECT_EQ(LoopModeWord(true), "Loop");
    EXPECT_EQ(LoopModeWord(false), "OneTime");
}

} // namespace
} // namespace tq4x
