#include "environment/CameraDocument.h"

#include "animation/AnimationDocument.h"
#include "animation/GroupDescription.h"
#include "environment/FinishCameras.h"
#include "environment/SortByName.h"
#include "math/Scalar.h"
#include "pipeline/WordTable.h"
#include "pipeline/XmlWriter.h"

#include <algorithm>
#include <span>

namespace tq4x
{
namespace
{

constexpr int SectionLevel = 2;

constexpr auto ViewModeWords = WordTable<CameraViewMode::LookAtTarget>({
    {CameraViewMode::Rotate, "Rotate"},
    {CameraViewMode::AimTarget, "AimTarget"},
    {CameraViewMode::LookAtTarget, "LookAtTarget"},
});

constexpr auto ProjectionModeWords = WordTable<CameraProjectionMode::Ortho>({
    {CameraProjectionMode::Perspective, "Perspective"},
    {CameraProjectionMode::Ortho, "Ortho"},
});

/// The same members for every camera, whatever its modes are.
const AnimationGroupDescription& CameraGroup()
{
    static const AnimationGroupDescription group{
        "CameraAnimation",
        "BeforeWorldUpdate",
        {
            {"Transform", BlendOperationName::Transform},
            {"ViewUpdater.TargetPosition", BlendOperationName::Vector3},
            {"ViewUpdater.Twist", BlendOperationName::Float},
            {"ViewUpdater.UpwardVector", BlendOperationName::Vector3},
            {"ViewUpdater.ViewRotate", BlendOperationName::Vector3},
            {"ProjectionUpdater.Near", BlendOperationName::Float},
            {"ProjectionUpdater.Far", BlendOperationName::Float},
            {"ProjectionUpdater.Fovy", BlendOperationName::Float},
            {"ProjectionUpdater.AspectRatio", BlendOperationName::Float},
            {"ProjectionUpdater.Height", BlendOperationName::Float},
        }};
    return group;
}

float ToRadians(float degrees)
{
    return SnapToZero(degrees * RadiansPerDegreeSingle);
}

Vector3 ToRadians(const Vector3& degrees)
{
    return {ToRadians(degrees.X), ToRadians(degrees.Y), ToRadians(degrees.Z)};
}

/// The rotation stands in the view updater, never here.
void WriteTransform(const Camera& camera, XmlWriter& stream)
{
    stream.Element("Transform", [&] {
        stream.Vector("Scale", camera.Scale);
        stream.Vector("Rotate", {});
        stream.Vector("Translate", camera.Translate);
    });
}

void WriteViewUpdater(const Camera& camera, XmlWriter& stream)
{
    switch (camera.ViewMode) {
    case CameraViewMode::Rotate:
        stream.Element("RotateViewUpdater", {{"IsInheritingRotate", camera.IsInheritingRotate}},
                       [&] { stream.Vector("ViewRotate", ToRadians(camera.Rotate)); });
        break;
    case CameraViewMode::AimTarget:
        stream.Element("AimTargetViewUpdater",
                       {{"Twist", ToRadians(camera.Twist)},
                        {"IsInheritingTargetRotate", camera.IsInheritingTargetRotate},
                        {"IsInheritingTargetTranslate", camera.IsInheritingTargetTranslate}},
                       [&] { stream.Vector("TargetPosition", camera.TargetPosition); });
        break;
    case CameraViewMode::LookAtTarget:
        stream.Element("LookAtTargetViewUpdater",
                       {{"IsInheritingTargetRotate", camera.IsInheritingTargetRotate},
                        {"IsInheritingTargetTranslate", camera.IsInheritingTargetTranslate},
                        {"IsInheritingUpRotate", camera.IsInheritingUpRotate}},
                       [&] {
                           stream.Vector("TargetPosition", camera.TargetPosition);
                           stream.Vector("UpwardVector", camera.UpwardVector);
                       });
        break;
    }
}

void WriteProjectionUpdater(const Camera& camera, XmlWriter& stream)
{
    if (camera.ProjectionMode == CameraProjectionMode::Perspective) {
        stream.Empty("PerspectiveProjectionUpdater", {{"Near", camera.Near},
                                                      {"Far", camera.Far},
                                                      {"Fovy", ToRadians(camera.Fovy)},
                                                      {"AspectRatio", camera.AspectRatio}});
        return;
    }
    stream.Element("OrthoProjectionUpdater",
                   {{"Near", camera.Near},
                    {"Far", camera.Far},
                    {"AspectRatio", camera.AspectRatio},
                    {"Height", camera.Height}},
                   [&] {
                       stream.Vector("Center", {camera.CenterX, camera.CenterY, 0.0f});
                   });
}

std::span<const AnimationCurve> Three(const Camera& camera, std::size_t first)
{
    return std::span(camera.Curves).subspan(first, 3);
}

void WriteTransformMember(const Camera& camera, XmlWriter& stream)
{
    if (!camera.IsScaleAnimated && !camera.IsTranslateAnimated)
        return;
    WriteMember(stream, "Transform", [&] {
        stream.Element("TransformAnimation", [&] {
            if (camera.IsScaleAnimated)
                WriteVectorAnimation(stream, Three(camera, CameraCurve::Scale), "ScaleVector3Animation");
            if (camera.IsTranslateAnimated)
                WriteVectorAnimation(stream, Three(camera, CameraCurve::Translate),
                                     "TranslateVector3Animation");
        });
    });
}

void WriteVectorMember(const Camera& camera, XmlWriter& stream, std::string_view path, std::size_t first,
                       bool isWritten)
{
    if (isWritten)
        WriteMember(stream, path,
                    [&] { WriteVectorAnimation(stream, Three(camera, first), "Vector3Animation"); });
}

void WriteFloatMember(const Camera& camera, XmlWriter& stream, std::string_view path, std::size_t curve,
                      bool isPossible = true)
{
    if (isPossible && camera.Curves[curve].NeedsOutput)
        WriteMember(stream, path, [&] { WriteFloatAnimation(stream, camera.Curves[curve]); });
}

void WriteMembers(const Camera& camera, XmlWriter& stream)
{
    const bool hasTarget = camera.ViewMode != CameraViewMode::Rotate;
    const bool isOrtho = camera.ProjectionMode == CameraProjectionMode::Ortho;
    WriteTransformMember(camera, stream);
    WriteVectorMember(camera, stream, "ViewUpdater.TargetPosition", CameraCurve::TargetPosition,
                      hasTarget && camera.IsTargetAnimated);
    WriteVectorMember(camera, stream, "ViewUpdater.UpwardVector", CameraCurve::UpwardVector,
                      camera.ViewMode == CameraViewMode::LookAtTarget && camera.IsUpwardAnimated);
    WriteFloatMember(camera, stream, "ViewUpdater.Twist", CameraCurve::Twist,
                     camera.ViewMode == CameraViewMode::AimTarget);
    WriteVectorMember(camera, stream, "ViewUpdater.ViewRotate", CameraCurve::Rotate,
                      !hasTarget && camera.IsRotateAnimated);
    WriteFloatMember(camera, stream, "ProjectionUpdater.Near", CameraCurve::Near);
    WriteFloatMember(camera, stream, "ProjectionUpdater.Far", CameraCurve::Far);
    WriteFloatMember(camera, stream, "ProjectionUpdater.AspectRatio", CameraCurve::AspectRatio);
    WriteFloatMember(camera, stream, "ProjectionUpdater.Height", CameraCurve::Height, isOrtho);
    WriteFloatMember(camera, stream, "ProjectionUpdater.Fovy", CameraCurve::Fovy, !isOrtho);
}

} // namespace

void WriteCamera(const Camera& camera, XmlWriter& stream)
{
    stream.Element("Camera", {{"Name", camera.Name}, {"IsBranchVisible", camera.IsBranchVisible}}, [&] {
        stream.Element("AnimationGroupDescriptions", [&] { WriteGroupDescription(CameraGroup(), stream); });
        WriteTransform(camera, stream);
        WriteViewUpdater(camera, stream);
        WriteProjectionUpdater(camera, stream);
    });
}

void WriteCameraAnimation(const Camera& camera, XmlWriter& stream, std::int32_t frameSize, bool isLoop)
{
    stream.Element("CameraAnimationData",
                   {{"Name", camera.Name},
                    {"FrameSize", frameSize},
                    {"LoopMode", LoopModeWord(isLoop)},
                    {"IsAdditiveAnimation", false},
                    {"ViewMode", WordOf(ViewModeWords, camera.ViewMode)},
                    {"ProjectionMode", WordOf(ProjectionModeWords, camera.ProjectionMode)}},
                   [&] { stream.Element("MemberAnimationDataSet", [&] { WriteMembers(camera, stream); }); });
}

void WriteCameras(const CameraSet& set, XmlWriter& stream)
{
    if (set.Cameras.empty())
        return;
    stream.AtLevel(SectionLevel, [&] {
        stream.Element("Cameras", [&] {
            for (const Camera* camera : SortByName(set.Cameras))
                WriteCamera(*camera, stream);
        });
    });
}

void WriteCameraAnimations(const CameraSet& set, XmlWriter& stream)
{
    if (std::none_of(set.Cameras.begin(), set.Cameras.end(),
                     [](const Camera& each) { return HasAnimation(each); }))
        return;
    stream.AtLevel(SectionLevel, [&] {
        stream.Element("Animations", [&] {
            for (const Camera& camera : set.Cameras)
                if (HasAnimation(camera))
                    WriteCameraAnimation(camera, stream, set.FrameSize, set.IsLoop);
        });
    });
}

} // namespace tq4x
