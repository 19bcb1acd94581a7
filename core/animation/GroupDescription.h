#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tq4x
{

class XmlWriter;

/// How the values of several animations of one member are blended.
enum class BlendOperationName : std::int32_t
{
    Transform = 0,
    CalculatedTransform = 1,
    CalculatedTransformQuaternion = 2,
    CalculatedTransformAccurateScale = 3,
    CalculatedTransformAccurateScaleQuaternion = 4,
    Bool = 5,
    Int = 6,
    Float = 7,
    Vector2 = 8,
    Vector3 = 9,
    Vector4 = 10,
    RgbaColor = 11,
};

/// One member that an animation may move.
struct AnimationMemberDescription
{
    std::string Path; ///< from the object that the group stands in, such as `ViewUpdater.Twist`
    BlendOperationName BlendOperation = BlendOperationName::Transform;
};

/// The members that one kind of animation may move, and when they are evaluated.
struct AnimationGroupDescription
{
    std::string Name;
    std::string EvaluationTiming;
    std::vector<AnimationMemberDescription> Members;
};

/// Writes a `GraphicsAnimationGroupDescription` at the writer's level.
void WriteGroupDescription(const AnimationGroupDescription& group, XmlWriter& stream);

/// Writes an `AnimationMemberDescription` at the writer's level.
void WriteMemberDescription(const AnimationMemberDescription& member, XmlWriter& stream);

/// Writes the `AnimationGroupDescriptions` of a model, which are the same for all models.
void WriteModelGroupDescriptions(XmlWriter& stream);

} // namespace tq4x
