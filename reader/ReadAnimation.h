#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "ReadCurve.h"
#include "ReadMaterial.h"
#include "ReadSkeleton.h"

namespace tq4x::reader
{

/// Three channels, each present or not.
using CurveTriple = std::array<std::optional<Curve>, 3>;

/// What moves one member of an object. `Kind` names the element in the file; it tells which of the curves are
/// in use.
struct MemberAnimation
{
    std::string Path;   ///< "ViewUpdater.Twist"
    std::string Kind;   ///< "TransformAnimation", "FloatAnimation", "Vector3Animation", "BoolAnimation", ...
    CurveTriple Scale;  ///< of a TransformAnimation
    CurveTriple Rotate; ///< of a TransformAnimation, radians
    CurveTriple Translate;                        ///< of a TransformAnimation
    std::array<std::optional<Curve>, 4> Channels; ///< X Y Z or R G B A; a float or integer has the first only
    std::optional<BoolCurve> Bool;
    long Line = 0;
    long PathLine = 0;
};

/// What all animations state.
struct AnimationHead
{
    std::string Name;
    int FrameSize = 0; ///< length in frames
    bool IsLoop = false;
    long Line = 0;
};

/// Bones over time. The member's paths are `Skeleton.Bones["name"].AnimatedTransform`.
struct SkeletalAnimation
{
    AnimationHead Head;
    std::vector<MemberAnimation> Members;
    bool IsFrameFormat = false;
    int ScaleQuantizeQuality = 0;
    int RotateQuantizeQuality = 0;
    int TranslateQuantizeQuality = 0;
    Skeleton Bones; ///< of the model that it moves
    double StartFrame = 0;
    double EndFrame = 0;
    float Magnify = 1;
    int FrameSteps = 1; ///< samples for each frame
    double ScaleTolerance = 0;
    double RotateTolerance = 0; ///< radians
    double TranslateTolerance = 0;
};

/// Visibility of meshes: `Meshes[n].IsVisible` or `MeshNodeVisibilities["name"].IsVisible`.
struct VisibilityAnimation
{
    AnimationHead Head;
    std::vector<MemberAnimation> Members;
};

/// Materials over time. The value of a texture's curve is an index into `Patterns`.
struct MaterialAnimation
{
    AnimationHead Head;
    std::vector<MemberAnimation> Members;
    std::vector<TextureReference> Patterns;
};

/// What a member's path points at, taken apart.
struct MemberPath
{
    std::string Owner;    ///< name between quotes; empty: none
    int OwnerIndex = -1;  ///< number between brackets; -1: none
    std::string Member;   ///< "AnimatedTransform", "TextureMappers", "MaterialColor.Diffuse", ...
    int MemberIndex = -1; ///< n of `TextureMappers[n]` and `TextureCoordinators[n]`
    std::string Last;     ///< "Texture", "Translate", ... behind an index; else empty
};

/// Takes a path such as `Materials["wall"].TextureCoordinators[0].Scale` apart: the list is `collection`
/// ("Materials"). Nothing if the path is not of this form.
[[nodiscard]] std::optional<MemberPath> ParseMemberPath(const std::string& path,
                                                        const std::string& collection);

/// The member that moves a bone, nullptr if it stands still.
[[nodiscard]] const MemberAnimation* FindBoneMember(const SkeletalAnimation& animation,
                                                    const std::string& bone);

/// The local transform of a bone at a frame: what its member gives, else what the skeleton says.
[[nodiscard]] Transform EvaluateBone(const SkeletalAnimation& animation, std::size_t bone, float frame);

} // namespace tq4x::reader
