#include "animation/SkeletalAnimation.h"

#include "math/Scalar.h"
#include "scene/AnimationFlags.h"
#include "scene/NodeMatrices.h"
#include "scene/SkeletalModelWriter.h"
#include "scene/SkeletonDocument.h"

#include <algorithm>
#include <array>
#include <string>

namespace tq4x
{
namespace
{

/// One of the three groups of a bone's channels.
struct BoneGroup
{
    std::string_view ElementName;
    std::array<bool, 3> IsNeeded{};
    std::array<AnimationCurve, 3>& Curves;
    std::array<float, 3> BaseValues{}; ///< in the unit of the file, for axes without keys
    bool IsAngle = false;
};

std::array<float, 3> ScaledValues(const Vector3& vector, float factor)
{
    return {vector.X * factor, vector.Y * factor, vector.Z * factor};
}

bool IsAnyNeeded(const std::array<bool, 3>& axes)
{
    return axes[0] || axes[1] || axes[2];
}

bool IsAnyNeeded(const AnimatedAxes& axes)
{
    return IsAnyNeeded(axes.Scale) || IsAnyNeeded(axes.Rotate) || IsAnyNeeded(axes.Translate);
}

/// A channel that rests away from the bind pose, or that the user forced: its base value as the one key.
void WriteRestingCurve(XmlWriter& stream, std::string_view curveName, float value)
{
    const CurveKey key{.Value = value, .Kind = KeyKind::Linear};
    WriteSegmentsCurve(stream, curveName, {&key, 1}, RepeatMethod::None, RepeatMethod::None, false);
}

void WriteBoneGroup(XmlWriter& stream, const BoneGroup& group)
{
    if (!IsAnyNeeded(group.IsNeeded))
        return;
    stream.Element(group.ElementName, [&] {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const std::vector<CurveKey>& keys = group.Curves[axis].Keys;
            if (group.IsNeeded[axis] && keys.empty())
                WriteRestingCurve(stream, VectorCurveName(axis), group.BaseValues[axis]);
            else if (group.IsNeeded[axis])
                WriteSegmentsCurve(stream, VectorCurveName(axis), keys, RepeatMethod::None,
                                   RepeatMethod::None, group.IsAngle);
        }
    });
}

void MagnifyKeys(AnimationCurve& curve, float magnify)
{
    for (CurveKey& key : curve.Keys) {
        key.Value *= magnify;
        key.InSlope *= magnify;
        key.OutSlope *= magnify;
    }
}

void WriteBoneMember(XmlWriter& stream, Bone& bone, const AnimatedAxes& axes, float magnify)
{
    for (std::size_t axis = 0; axis < 3; ++axis)
        if (axes.Translate[axis])
            MagnifyKeys(bone.TranslateCurves[axis], magnify);
    const BoneGroup groups[] = {
        {"ScaleVector3Animation", axes.Scale, bone.ScaleCurves, ScaledValues(bone.Scale, 1.0f)},
        {"RotateVector3Animation", axes.Rotate, bone.RotateCurves,
         ScaledValues(bone.Rotate, RadiansPerDegreeSingle), true},
        {"TranslateVector3Animation", axes.Translate, bone.TranslateCurves,
         ScaledValues(bone.Translate, magnify)},
    };
    WriteMember(stream, "Skeleton.Bones[\"" + bone.Name + "\"].AnimatedTransform", [&] {
        stream.Element("TransformAnimation", [&] {
            for (const BoneGroup& group : groups)
                WriteBoneGroup(stream, group);
        });
    });
}

void WriteBoneMembers(const SkeletalModelWriter& content, XmlWriter& stream, const NodeTolerances& tolerances)
{
    const std::vector<Matrix44> bindLocals = ComputeBindLocalMatrices(content.Bones);
    for (std::size_t i = 0; i < content.Bones.size(); ++i) {
        Bone& bone = *content.Bones[i];
        const AnimatedAxes axes = FindAnimatedAxes(bone, bindLocals[i], tolerances);
        if (IsAnyNeeded(axes))
            WriteBoneMember(stream, bone, axes, content.Magnify);
    }
}

void WriteBakeOption(XmlWriter& stream, const SkeletalAnimationSettings& settings)
{
    const NodeTolerances& tolerances = settings.Tolerances;
    stream.Empty("SkeletalAnimationBakeOption",
                 {{"IsBakeAllEnabled", true},
                  {"FramePrecision", "_1_" + std::to_string(settings.FrameSteps)},
                  {"ScaleTolerance", tolerances.Scale},
                  {"RotateTolerance", static_cast<double>(tolerances.Rotate) * RadiansPerDegree},
                  {"TranslateTolerance", tolerances.Translate}});
}

void WriteExportOption(XmlWriter& stream, float magnify, const SkeletalAnimationSettings& settings)
{
    const auto writeOption = [&] {
        stream.Leaf("Key", "DccToolExportOption");
        stream.Element("SkeletalAnimationDccToolExportOption",
                       {{"StartFrame", settings.Range.StartFrame},
                        {"EndFrame", settings.Range.EndFrame},
                        {"Magnify", magnify},
                        {"KeepAtLeastOneKey", false}},
                       [&] { WriteBakeOption(stream, settings); });
    };
    stream.Element("EditData", [&] { stream.Element("GenericMetaData", writeOption); });
}

void WriteSkeletalAnimationData(SkeletalModelWriter& content, XmlWriter& stream,
                                const SkeletalAnimationSettings& settings)
{
    stream.Element("MemberAnimationDataSet", [&] { WriteBoneMembers(content, stream, settings.Tolerances); });
    stream.Empty("SkeletalAnimationBinarizeOption",
                 {{"IsFrameFormat", settings.FrameFormat},
                  {"ScaleQuantizeQuality", settings.ScaleQuantizeQuality},
                  {"RotateQuantizeQuality", settings.RotateQuantizeQuality},
                  {"TranslateQuantizeQuality", settings.TranslateQuantizeQuality}});
    WriteSkeleton(content, stream, stream.Level());
    WriteExportOption(stream, content.Magnify, settings);
}

} // namespace

void WriteSkeletalAnimation(SkeletalModelWriter& content, XmlWriter& stream,
                            const SkeletalAnimationSettings& settings)
{
    if (!IsAnyBoneAnimated(content.Bones))
        return;
    stream.Element("Animations", [&] {
        stream.Element("SkeletalAnimationData",
                       {{"Name", ""},
                        {"FrameSize", FrameSizeOf(settings.Range)},
                        {"LoopMode", LoopModeWord(settings.Range.IsLoop)},
                        {"IsAdditiveAnimation", false}},
                       [&] { WriteSkeletalAnimationData(content, stream, settings); });
    });
}

} // namespace tq4x
