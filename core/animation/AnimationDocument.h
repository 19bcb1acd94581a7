#pragma once

#include "animation/AnimationCurve.h"
#include "pipeline/XmlWriter.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tq4x
{

// Elements stand at the writer's level unless a function says otherwise. Angles and their slopes become
// radians here.

/// Writes the key element of the key's kind.
void WriteKey(const CurveKey& key, XmlWriter& stream, bool isAngle);

/// Writes a curve element: its range and one segment for each run of keys of one kind. No keys: the range 0
/// to 0 and no segment.
void WriteSegmentsCurve(XmlWriter& stream, std::string_view curveName, std::span<const CurveKey> keys,
                        RepeatMethod preRepeat, RepeatMethod postRepeat, bool isAngle);

/// Writes `BoolCurve` and its keys; a key is "true" where its value is not 0.
void WriteBoolCurve(XmlWriter& stream, std::span<const CurveKey> keys, RepeatMethod preRepeat,
                    RepeatMethod postRepeat, bool defaultValue);

/// Writes a curve with its own keys; without keys one linear key of the first sample stands in, at frame 0,
/// angles brought inside one turn.
void WriteCurveElement(const AnimationCurve& curve, XmlWriter& stream, std::string_view curveName);

/// Writes `BoolAnimation` at level 7, wherever the member stands, with its `BoolCurve` if the curve needs
/// output. The stand-in key applies as above.
void WriteBoolAnimation(XmlWriter& stream, const AnimationCurve& curve, bool defaultValue);

/// Writes `FloatAnimation` with its `SegmentsFloatCurve` if the curve needs output.
void WriteFloatAnimation(XmlWriter& stream, const AnimationCurve& curve);

/// Writes `elementName` (such as `Vector3Animation`, or `ScaleVector3Animation` inside a transform) with the
/// X, Y, Z curves that need output. Up to three curves.
void WriteVectorAnimation(XmlWriter& stream, std::span<const AnimationCurve> curves,
                          std::string_view elementName);

/// Name of the X, Y or Z curve, for axes 0 to 2.
std::string_view VectorCurveName(std::size_t axis);

/// Writes `RgbaColorAnimation` with the R, G, B, A curves that need output.
void WriteRgbaColorAnimation(XmlWriter& stream, std::span<const AnimationCurve, 4> curves);

/// Writes a `MemberAnimationData`: its path, then what `body` writes.
template<std::invocable Body>
void WriteMember(XmlWriter& stream, std::string_view path, Body&& body)
{
    stream.Element("MemberAnimationData", [&] {
        stream.Leaf("Path", path);
        std::forward<Body>(body)();
    });
}

/// The frames that an animation file covers.
struct AnimationRange
{
    double StartFrame = 0.0; ///< host frames
    double EndFrame = 0.0;   ///< host frames
    bool IsLoop = false;
};

/// `FrameSize` of an animation: the whole frames from start to end.
std::int32_t FrameSizeOf(const AnimationRange& range);

/// "Loop" or "OneTime".
std::string_view LoopModeWord(bool isLoop);

} // namespace tq4x
