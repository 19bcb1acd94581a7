#include "collect/ExportCamera.h"

#include "collect/FiniteValues.h"
#include "collect/SampleFrames.h"
#include "collect/Visibility.h"
#include "environment/Camera.h"
#include "environment/CameraMath.h"
#include "export/Each.h"
#include "export/ExportContext.h"
#include "math/Scalar.h"
#include "pipeline/ExportValues.h"
#include "scene/Bone.h"

#include <xsi_camera.h>
#include <xsi_constraint.h>
#include <xsi_math.h>
#include <xsi_rotation.h>

namespace tq4x
{
namespace
{

using XSI::MATH::CTransformation;
using XSI::MATH::CVector3;

constexpr int OrthographicProjection = 0; // the host's `proj`
constexpr int HorizontalFieldOfView = 1;  // the host's `fovtype`
constexpr double DegreesPerRadian = 180.0 / XSI::MATH::PI;

Vector3 Narrow(const CVector3& vector)
{
    return {static_cast<float>(vector.GetX()), static_cast<float>(vector.GetY()),
            static_cast<float>(vector.GetZ())};
}

Vector3 Scaled(const Vector3& vector, float factor)
{
    return {vector.X * factor, vector.Y * factor, vector.Z * factor};
}

CTransformation GlobalAt(const XSI::X3DObject& object, double frame)
{
    return object.GetKinematics().GetGlobal().GetTransform(frame);
}

/// X, Y, Z angles in degrees.
Vector3 RotationAngles(const CTransformation& transform)
{
    XSI::MATH::CRotation rotation(0.0, 0.0, 0.0, XSI::MATH::CRotation::siZXY);
    rotation.SetFromMatrix(transform.GetRotation().GetMatrix());
    CVector3 angles = rotation.GetXYZAngles();
    return Narrow(angles.ScaleInPlace(DegreesPerRadian));
}

void Push(Camera& camera, std::size_t first, const Vector3& vector)
{
    camera.Curves[first].Samples.push_back(vector.X);
    camera.Curves[first + 1].Samples.push_back(vector.Y);
    camera.Curves[first + 2].Samples.push_back(vector.Z);
}

std::array<double, 3> ToArray(const CVector3& vector)
{
    return {vector.GetX(), vector.GetY(), vector.GetZ()};
}

} // namespace

bool ExportCamera::Export()
{
    if (!ExportNode::Export())
        return false;
    if (IsHiddenForGood(Object))
        return true;
    m_camera = &Context.Cameras.Add();
    m_camera->Name = TargetBone().Name;
    ReadProjection();
    ReadView();
    ResolveBranchVisibility();
    CheckFinite(AreFinite(*m_camera));
    return true;
}

/// The vertical field of view in degrees. A horizontal one is converted by the ratio; an animated one by the
/// static aspect in the place of the plane's.
float ExportCamera::ReadFieldOfView(double frame, float ratio) const
{
    const XSI::Camera camera(Object);
    const auto angle = static_cast<float>(camera.GetParameterValue("fov", frame));
    if (static_cast<LONG>(camera.GetParameterValue("fovtype", frame)) != HorizontalFieldOfView)
        return angle;
    return ToVerticalFieldOfView(angle, ratio);
}

void ExportCamera::ReadProjection()
{
    const XSI::Camera camera(Object);
    const ExportValues& values = GlobalExportValues();
    const double start = values.ExportStartFrame;
    const float magnify = values.CameraMagnify;
    const auto read = [&](const char* name, double frame) {
        return static_cast<float>(camera.GetParameterValue(name, frame));
    };
    const bool isOrtho = static_cast<LONG>(camera.GetParameterValue("proj", start)) == OrthographicProjection;
    const bool isFovAnimated = camera.GetParameter("fov").IsAnimated(XSI::siAnySource);
    const float aspect = read("aspect", start);
    SampleFrames(values, [&](double frame) {
        const float ratio = read("projplanewidth", frame) / read("projplaneheight", frame);
        m_camera->Curves[CameraCurve::AspectRatio].Samples.push_back(ratio);
        if (isOrtho)
            m_camera->Curves[CameraCurve::Height].Samples.push_back(read("orthoheight", frame) * magnify);
        else
            m_camera->Curves[CameraCurve::Fovy].Samples.push_back(
                ReadFieldOfView(frame, isFovAnimated ? aspect : ratio));
        m_camera->Curves[CameraCurve::Near].Samples.push_back(read("near", frame) * magnify);
        m_camera->Curves[CameraCurve::Far].Samples.push_back(read("far", frame) * magnify);
    });
    m_camera->ProjectionMode = isOrtho ? CameraProjectionMode::Ortho : CameraProjectionMode::Perspective;
    m_camera->AspectRatio = aspect;
    if (isOrtho)
        m_camera->Height = read("orthoheight", start) * magnify;
    else
        m_camera->Fovy = ReadFieldOfView(start, aspect);
    m_camera->Near = read("near", start) * magnify;
    m_camera->Far = read("far", start) * magnify;
}

/// The first constraint that gives a target or an up object decides.
ExportCamera::View ExportCamera::FindView() const
{
    for (const XSI::CRef& reference : Each(XSI::X3DObject(Object).GetKinematics().GetConstraints())) {
        const XSI::Constraint constraint(reference);
        if (!constraint.IsValid())
            continue;
        View view;
        for (const XSI::CRef& constraining : Each(constraint.GetConstraining())) {
            view.Target = XSI::X3DObject(constraining);
            if (view.Target.IsValid())
                break;
        }
        view.Up = XSI::X3DObject(constraint.GetUpVectorReference());
        view.Roll = constraint.GetParameter("roll");
        if (view.Target.IsValid() || view.Up.IsValid())
            return view;
    }
    return {};
}

void ExportCamera::ReadView()
{
    const View view = FindView();
    m_camera->ViewMode = !view.Target.IsValid() ? CameraViewMode::Rotate
                         : view.Up.IsValid()    ? CameraViewMode::LookAtTarget
                                                : CameraViewMode::AimTarget;
    const ExportValues& values = GlobalExportValues();
    SampleFrames(values, [&](double frame) { SampleView(view, frame); });
    SetStaticView(view, values.ExportStartFrame);
}

void ExportCamera::SampleView(const View& view, double frame)
{
    const float magnify = GlobalExportValues().CameraMagnify;
    const CTransformation transform = GlobalAt(XSI::X3DObject(Object), frame);
    Push(*m_camera, CameraCurve::Translate, Scaled(Narrow(transform.GetTranslation()), magnify));
    Push(*m_camera, CameraCurve::Scale, Narrow(transform.GetScaling()));
    if (m_camera->ViewMode == CameraViewMode::Rotate)
        return Push(*m_camera, CameraCurve::Rotate, RotationAngles(transform));
    const CVector3 target = GlobalAt(view.Target, frame).GetTranslation();
    Push(*m_camera, CameraCurve::TargetPosition, Scaled(Narrow(target), magnify));
    const double roll = view.Roll.GetValue(frame);
    if (m_camera->ViewMode == CameraViewMode::AimTarget)
        return m_camera->Curves[CameraCurve::Twist].Samples.push_back(static_cast<float>(roll));
    Push(*m_camera, CameraCurve::UpwardVector,
         ComputeUpVector(ToArray(transform.GetTranslation()), ToArray(target),
                         ToArray(GlobalAt(view.Up, frame).GetTranslation()), roll));
}

/// The same reads for the static fields; the roll alone is taken at the current time.
void ExportCamera::SetStaticView(const View& view, double frame)
{
    const float magnify = GlobalExportValues().CameraMagnify;
    const CTransformation transform = GlobalAt(XSI::X3DObject(Object), frame);
    m_camera->Translate = Scaled(Narrow(transform.GetTranslation()), magnify);
    m_camera->Scale = Narrow(transform.GetScaling());
    if (m_camera->ViewMode == CameraViewMode::Rotate) {
        m_camera->Rotate = RotationAngles(transform);
        return;
    }
    const CVector3 target = GlobalAt(view.Target, frame).GetTranslation();
    m_camera->TargetPosition = Scaled(Narrow(target), magnify);
    const double roll = view.Roll.GetValue(XSI::CurrentTime);
    if (m_camera->ViewMode == CameraViewMode::AimTarget)
        m_camera->Twist = static_cast<float>(roll);
    else
        m_camera->UpwardVector = ComputeUpVector(ToArray(transform.GetTranslation()), ToArray(target),
                                                 ToArray(GlobalAt(view.Up, frame).GetTranslation()), roll);
}

void ExportCamera::ResolveBranchVisibility()
{
    const Bone* bone = TargetBone().Parent;
    while (bone != nullptr && bone->IsVisible)
        bone = bone->Parent;
    m_camera->IsBranchVisible = bone == nullptr;
}

} // namespace tq4x
