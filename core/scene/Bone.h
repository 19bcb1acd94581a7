#pragma once

#include "animation/AnimationCurve.h"
#include "math/Matrix44.h"
#include "math/Vector.h"
#include "scene/UserData.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tq4x
{

struct Mesh;

/// Rule by which a child's transform meets its parent's scale.
enum class ScalingRule : std::int32_t
{
    Standard = 0,
    Maya = 1,
    Softimage = 2, ///< the host's hierarchical scaling
};

/// One node of the exported hierarchy. Lengths in host units, angles in degrees; a bone owns its children,
/// not its mesh.
struct Bone
{
    Bone() = default;
    Bone(const Bone&) = delete;
    Bone& operator=(const Bone&) = delete;
    /// Releases the whole tree below without recursion, so that a chain of any length can end.
    ~Bone();

    std::string Name;                       ///< unique output name
    Bone* Parent = nullptr;                 ///< none for a root
    std::unique_ptr<Bone> FirstChild;       ///< head of the child chain, in reverse order of insertion
    std::unique_ptr<Bone> NextSibling;      ///< next in the parent's chain
    tq4x::Mesh* Mesh = nullptr;             ///< mesh carried by this node, if any
    bool IsOutput = true;                   ///< only children with this flag are taken into the bone list
    bool IsNoCompress = false;              ///< the user's mark; written as its negation
    std::int32_t BillboardMode = 0;         ///< as the user's property has it; values above 4 have no word
    bool IsVisible = true;                  ///< visibility at the moment of the export
    std::int32_t SamplesFirstFrame = -1;    ///< frame index of the first entry of `TransformSamples`
    std::vector<Matrix44> TransformSamples; ///< local matrices; the first alone after channel extraction
    tq4x::Mesh* SkinOwner = nullptr;        ///< a mesh that this bone influences, the last writer's
    Matrix44 BindMatrix;                    ///< global, in the bind pose; valid with `HasSkinningMatrix`
    bool IsSegmentScaleCompensate = false;
    bool IsNeededRendering = false; ///< a skin influence, or carries an unskinned mesh
    bool HasSkinningMatrix = false;
    std::int32_t BoneIndex = -1; ///< position in the bone list; -1 before it exists
    tq4x::ScalingRule ScalingRule = tq4x::ScalingRule::Standard;
    Vector3 Scale{1.0f, 1.0f, 1.0f};               ///< first sample
    Vector3 Rotate;                                ///< first sample, degrees
    Vector3 Translate;                             ///< first sample, host units
    std::array<AnimationCurve, 3> ScaleCurves;     ///< X, Y, Z: samples and keys
    std::array<AnimationCurve, 3> RotateCurves;    ///< degrees
    std::array<AnimationCurve, 3> TranslateCurves; ///< host units
    AnimationCurve VisibilityCurve;                ///< step curve of 0 and 1
    std::int32_t CombineGroup = -1;                ///< -1 none, else 0 to 255
    std::vector<UserDataItem> UserData;
    bool IsScaleAnimated = false;
    bool IsRotateAnimated = false;
    bool IsTranslateAnimated = false;
    bool IsForceScaleKey = false;
    bool IsForceRotateKey = false;
    bool IsForceTranslateKey = false;
};

} // namespace tq4x
