#pragma once

#include "math/Matrix44.h"
#include "pipeline/ExportValues.h"

#include <array>
#include <span>

namespace tq4x
{

struct Bone;

/// Which of a node's nine channels an animation file needs; X, Y, Z each.
struct AnimatedAxes
{
    std::array<bool, 3> Scale{};
    std::array<bool, 3> Rotate{};
    std::array<bool, 3> Translate{};
};

/// A channel is needed if its group is forced by the user, if it has more than one key, or if its first value
/// differs from the bind pose by more than the tolerance. `bindLocal` is the node's `GetBindLocalMatrix`.
AnimatedAxes FindAnimatedAxes(const Bone& bone, const Matrix44& bindLocal, const NodeTolerances& tolerances);

/// Builds the visibility curve anew under the node's name, and sets the three animated flags: a group is
/// animated if any of its axes is.
void UpdateAnimationFlags(Bone& bone, const Matrix44& bindLocal, const NodeTolerances& tolerances,
                          int frameSteps);

/// True if any bone has one of its three flags.
bool IsAnyBoneAnimated(std::span<Bone* const> bones);

/// True if the visibility of any bone changes.
bool IsAnyVisibilityAnimated(std::span<Bone* const> bones);

} // namespace tq4x
