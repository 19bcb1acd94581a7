#include "animation/AnimationDocument.h"

#include "animation/Angles.h"
#include "math/Scalar.h"
#include "pipeline/WordTable.h"

#include <array>
#include <cassert>
#include <cmath>
#include <limits>

namespace tq4x
{
namespace
{

constexpr auto RepeatMethodWords = WordTable<RepeatMethod::Mirror>({
    {RepeatMethod::None, "None"},
    {RepeatMethod::Repeat, "Repeat"},
    {RepeatMethod::RelativeRepeat, "RelativeRepeat"},
    {RepeatMethod::Mirror, "Mirror"},
});

constexpr auto SegmentWords = WordTable<KeyKind::Step>({
    {KeyKind::Hermite, "HermiteFloatSegment"},
    {KeyKind::Linear, "LinearFloatSegment"},
    {KeyKind::Step, "StepFloatSegment"},
});

constexpr std::string_view SingleCurve = "SegmentsFloatCurve";
constexpr std::array<std::string_view, 3> VectorCurves{"XSegmentsFloatCurve", "YSegmentsFloatCurve",
                                                       "ZSegmentsFloatCurve"};
constexpr std::array<std::string_view, 4> ColorCurves{"RSegmentsFloatCurve", "GSegmentsFloatCurve",
                                                      "BSegmentsFloatCurve", "ASegmentsFloatCurve"};

/// Level of `BoolAnimation`, at whatever level its member stands.
constexpr int BoolAnimationLevel = 7;

/// `StartFrame` and `EndFrame` of a curve.
struct FrameSpan
{
    float Start = 0.0f;
    float End = 0.0f;
};

FrameSpan FrameSpanOf(std::span<const CurveKey> keys)
{
    return keys.empty() ? FrameSpan{} : FrameSpan{keys.front().Frame, keys.back().Frame};
}

/// The key that stands in for a curve that has none.
CurveKey RestingKey(const AnimationCurve& curve)
{
    const float value = curve.Samples.empty() ? 0.0f : curve.Samples.front();
    return {.Value = curve.IsAngle ? DropWholeTurns(value) : value, .Kind = KeyKind::Linear};
}

/// Calls `write` with the keys of a curve, or with the one that stands in for them.
template<typename Write>
void WithKeys(const AnimationCurve& curve, Write write)
{
    if (!curve.Keys.empty()) {
        write(std::span<const CurveKey>(curve.Keys));
        return;
    }
    const CurveKey resting = RestingKey(curve);
    write(std::span<const CurveKey>(&resting, 1));
}

/// Number of keys from the front that have the kind of the first.
std::size_t RunLength(std::span<const CurveKey> keys)
{
    std::size_t count = 0;
    while (count < keys.size() && keys[count].Kind == keys.front().Kind)
        ++count;
    return count;
}

void WriteSegment(XmlWriter& stream, std::span<const CurveKey> keys, bool isAngle)
{
    stream.Element(WordOf(SegmentWords, keys.front().Kind), [&] {
        stream.Element("Keys", [&] {
            for (const CurveKey& key : keys)
                WriteKey(key, stream, isAngle);
        });
    });
}

/// The curves that need output, named by their place.
void WriteNamedCurves(XmlWriter& stream, std::span<const AnimationCurve> curves,
                      std::span<const std::string_view> names)
{
    assert(curves.size() <= names.size());
    for (std::size_t i = 0; i < curves.size(); ++i)
        if (curves[i].NeedsOutput)
            WriteCurveElement(curves[i], stream, names[i]);
}

} // namespace

void WriteKey(const CurveKey& key, XmlWriter& stream, bool isAngle)
{
    const float unit = isAngle ? RadiansPerDegreeSingle : 1.0f;
    switch (key.Kind) {
    case KeyKind::Hermite:
        stream.Empty("HermiteFloatKey", {{"Frame", key.Frame},
                                         {"Value", key.Value * unit},
                                         {"InSlope", key.InSlope * unit},
                                         {"OutSlope", key.OutSlope * unit}});
        break;
    case KeyKind::Linear:
        stream.Empty("LinearFloatKey", {{"Frame", key.Frame}, {"Value", key.Value * unit}});
        break;
    case KeyKind::Step:
        stream.Empty("StepFloatKey", {{"Frame", key.Frame}, {"Value", key.Value * unit}});
        break;
    }
}

void WriteSegmentsCurve(XmlWriter& stream, std::string_view curveName, std::span<const CurveKey> keys,
                        RepeatMethod preRepeat, RepeatMethod postRepeat, bool isAngle)
{
    const FrameSpan span = FrameSpanOf(keys);
    const auto writeSegments = [&] {
        for (std::span<const CurveKey> rest = keys; !rest.empty(); rest = rest.subspan(RunLength(rest)))
            WriteSegment(stream, rest.first(RunLength(rest)), isAngle);
    };
    stream.Element(curveName,
                   {{"PreRepeatMethod", WordOf(RepeatMethodWords, preRepeat)},
                    {"PostRepeatMethod", WordOf(RepeatMethodWords, postRepeat)},
                    {"StartFrame", span.Start},
                    {"EndFrame", span.End}},
                   [&] { stream.Element("Segments", writeSegments); });
}

void WriteBoolCurve(XmlWriter& stream, std::span<const CurveKey> keys, RepeatMethod preRepeat,
                    RepeatMethod postRepeat, bool defaultValue)
{
    const FrameSpan span = FrameSpanOf(keys);
    const auto writeKeys = [&] {
        for (const CurveKey& key : keys)
            stream.Empty("BoolKey", {{"Frame", key.Frame}, {"Value", key.Value != 0.0f}});
    };
    stream.Element("BoolCurve",
                   {{"PreRepeatMethod", WordOf(RepeatMethodWords, preRepeat)},
                    {"PostRepeatMethod", WordOf(RepeatMethodWords, postRepeat)},
                    {"StartFrame", span.Start},
                    {"EndFrame", span.End},
                    {"DefaultValue", defaultValue}},
                   [&] { stream.Element("Keys", writeKeys); });
}

void WriteCurveElement(const AnimationCurve& curve, XmlWriter& stream, std::string_view curveName)
{
    WithKeys(curve, [&](std::span<const CurveKey> keys) {
        WriteSegmentsCurve(stream, curveName, keys, curve.PreRepeatMethod, curve.PostRepeatMethod,
                           curve.IsAngle);
    });
}

void WriteBoolAnimation(XmlWriter& stream, const AnimationCurve& curve, bool defaultValue)
{
    const auto writeCurve = [&](std::span<const CurveKey> keys) {
        WriteBoolCurve(stream, keys, curve.PreRepeatMethod, curve.PostRepeatMethod, defaultValue);
    };
    stream.AtLevel(BoolAnimationLevel, [&] {
        stream.Element("BoolAnimation", [&] {
            if (curve.NeedsOutput)
                WithKeys(curve, writeCurve);
        });
    });
}

void WriteFloatAnimation(XmlWriter& stream, const AnimationCurve& curve)
{
    stream.Element("FloatAnimation", [&] {
        if (curve.NeedsOutput)
            WriteCurveElement(curve, stream, SingleCurve);
    });
}

void WriteVectorAnimation(XmlWriter& stream, std::span<const AnimationCurve> curves,
                          std::string_view elementName)
{
    stream.Element(elementName, [&] { WriteNamedCurves(stream, curves, VectorCurves); });
}

std::string_view VectorCurveName(std::size_t axis)
{
    return VectorCurves[axis];
}

void WriteRgbaColorAnimation(XmlWriter& stream, std::span<const AnimationCurve, 4> curves)
{
    stream.Element("RgbaColorAnimation", [&] { WriteNamedCurves(stream, curves, ColorCurves); });
}

std::int32_t FrameSizeOf(const AnimationRange& range)
{
    const double frames = range.EndFrame - range.StartFrame;
    constexpr double limit = std::numeric_limits<std::int32_t>::max();
    return std::abs(frames) <= limit ? static_cast<std::int32_t>(frames) : 0;
}

std::string_view LoopModeWord(bool isLoop)
{
    return isLoop ? "Loop" : "OneTime";
}

} // namespace tq4x
