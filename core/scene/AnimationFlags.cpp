#include "scene/AnimationFlags.h"

#include "animation/BuildCurveKeys.h"
#include "scene/Bone.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tq4x
{
namespace
{

/// What decides about one group of channels.
struct ChannelGroup
{
    bool IsForced;
    const std::array<AnimationCurve, 3>& Curves;
    Vector3 Value;
    Vector3 BindValue;
    float Tolerance;
};

std::array<bool, 3> NeededAxes(const ChannelGroup& group, bool hasBindPose)
{
    const std::array<float, 3> differences{group.Value.X - group.BindValue.X,
                                           group.Value.Y - group.BindValue.Y,
                                           group.Value.Z - group.BindValue.Z};
    std::array<bool, 3> needed{};
    for (std::size_t axis = 0; axis < 3; ++axis)
        needed[axis] = group.IsForced || group.Curves[axis].Keys.size() > 1 ||
                       (hasBindPose && std::abs(differences[axis]) > group.Tolerance);
    return needed;
}

bool IsAny(const std::array<bool, 3>& axes)
{
    return axes[0] || axes[1] || axes[2];
}

void RebuildVisibility(Bone& bone, int frameSteps)
{
    AnimationCurve& curve = bone.VisibilityCurve;
    curve.Name = bone.Name + ".v";
    curve.Tolerance = 0.0f;
    IsConstantCheck(curve);
    BuildStepKeys(curve, frameSteps);
    if (!curve.IsConstant)
        UpdateNeedsOutput(curve, bone.IsVisible ? 1.0f : 0.0f);
}

} // namespace

AnimatedAxes FindAnimatedAxes(const Bone& bone, const Matrix44& bindLocal, const NodeTolerances& tolerances)
{
    const bool hasBindPose = bone.HasSkinningMatrix;
    const TransformParts bind = hasBindPose ? DecomposeMatrix(bindLocal) : TransformParts{};
    return {.Scale =
                NeededAxes({bone.IsForceScaleKey, bone.ScaleCurves, bone.Scale, bind.Scale, tolerances.Scale},
                           hasBindPose),
            .Rotate = NeededAxes(
                {bone.IsForceRotateKey, bone.RotateCurves, bone.Rotate, bind.Rotate, tolerances.Rotate},
                hasBindPose),
            .Translate = NeededAxes({bone.IsForceTranslateKey, bone.TranslateCurves, bone.Translate,
                                     bind.Translate, tolerances.Translate},
                                    hasBindPose)};
}

void UpdateAnimationFlags(Bone& bone, const Matrix44& bindLocal, const NodeTolerances& tolerances,
                          int frameSteps)
{
    RebuildVisibility(bone, frameSteps);
    const AnimatedAxes axes = FindAnimatedAxes(bone, bindLocal, tolerances);
    bone.IsScaleAnimated = IsAny(axes.Scale);
    bone.IsRotateAnimated = IsAny(axes.Rotate);
    bone.IsTranslateAnimated = IsAny(axes.Translate);
}

bool IsAnyBoneAnimated(std::span<Bone* const> bones)
{
    return std::ranges::any_of(bones, [](const Bone* bone) {
        return bone->IsScaleAnimated || bone->IsRotateAnimated || bone->IsTranslateAnimated;
    });
}

bool IsAnyVisibilityAnimated(std::span<Bone* const> bones)
{
    return std::ranges::any_of(bones, [](const Bone* bone) { return !bone->VisibilityCurve.IsConstant; });
}

} // namespace tq4x
