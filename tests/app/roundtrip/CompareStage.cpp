#include "Compare.h"
#include "CurveValues.h"
#include "Deviations.h"
#include "ExpectedMaterial.h"

#include <xsi_application.h>
#include <xsi_camera.h>
#include <xsi_constraint.h>
#include <xsi_model.h>
#include <xsi_property.h>
#include <xsi_rotation.h>
#include <xsi_shader.h>

#include <algorithm>
#include <numbers>

namespace tq4x::test
{
namespace
{

constexpr double RadiansPerDegree = std::numbers::pi / 180.0;
constexpr double UpwardTolerance = 0.001;

/// Degrees in single precision on their way to radians.
Approx Radians(double degrees)
{
    return Narrowed(degrees) * Narrowed(RadiansPerDegree);
}

ApproxVector NarrowedVector(const XSI::MATH::CVector3& vector)
{
    return {Narrowed(vector.GetX()), Narrowed(vector.GetY()), Narrowed(vector.GetZ())};
}

std::string PlaceAt(const std::string& name, const SampledFrame& frame)
{
    return name + " at frame " + std::to_string(frame.File);
}

/// Hidden once and for all: not exported as camera or light.
bool IsHiddenForGood(const XSI::X3DObject& object)
{
    const XSI::Parameter visibility = VisibilityOf(object);
    return visibility.IsValid() && !visibility.GetSource().IsValid() &&
           !static_cast<bool>(visibility.GetValue());
}

XSI::MATH::CTransformation TransformAt(const XSI::X3DObject& object, double frame)
{
    return object.GetKinematics().GetGlobal().GetTransform(frame);
}

/// What a camera looks at.
struct View
{
    XSI::X3DObject Target;
    XSI::X3DObject Up;
    XSI::Parameter Roll;
};

View ViewOf(const XSI::X3DObject& camera)
{
    const XSI::CRefArray constraints = camera.GetKinematics().GetConstraints();
    for (LONG i = 0; i < constraints.GetCount(); ++i) {
        const XSI::Constraint constraint(constraints[i]);
        const XSI::CRefArray targets = constraint.GetConstraining();
        const View view{XSI::X3DObject(targets.GetCount() > 0 ? targets[0] : XSI::CRef()),
                        XSI::X3DObject(constraint.GetUpVectorReference()), constraint.GetParameter("roll")};
        if (view.Target.IsValid() || view.Up.IsValid())
            return view;
    }
    return {};
}

/// The part of the up direction across the view, turned about the view by the roll.
XSI::MATH::CVector3 UpwardAt(const XSI::X3DObject& camera, const View& view, double frame, double roll)
{
    using XSI::MATH::CVector3;
    const CVector3 from = TransformAt(camera, frame).GetTranslation();
    CVector3 axis = TransformAt(view.Target, frame).GetTranslation();
    axis = CVector3(axis.GetX() - from.GetX(), axis.GetY() - from.GetY(), axis.GetZ() - from.GetZ());
    axis.NormalizeInPlace();
    const CVector3 up = TransformAt(view.Up, frame).GetTranslation();
    const CVector3 rise(up.GetX() - from.GetX(), up.GetY() - from.GetY(), up.GetZ() - from.GetZ());
    const double along = rise.Dot(axis);
    CVector3 across(rise.GetX() - axis.GetX() * along, rise.GetY() - axis.GetY() * along,
                    rise.GetZ() - axis.GetZ() * along);
    across.NormalizeInPlace();
    CVector3 side;
    side.Cross(axis, across);
    const double angle = -roll * RadiansPerDegree;
    const double c = std::cos(angle), s = std::sin(angle);
    return {across.GetX() * c + side.GetX() * s, across.GetY() * c + side.GetY() * s,
            across.GetZ() * c + side.GetZ() * s};
}

/// One camera: as it stands and, with the curves of an animation, at a frame.
class CameraComparison
{
public:
    CameraComparison(const RoundTrip& trip, const HostNode& node, const reader::Camera& written)
        : m_trip(trip),
          m_node(node),
          m_written(written),
          m_view(ViewOf(node.Object)),
          m_start(trip.Host.Frames.front().Host)
    {}

    void CompareStill() const
    {
        static Deviation& words = DeviationOf("camera words");
        const char* mode = !m_view.Target.IsValid() ? "Rotate"
                           : m_view.Up.IsValid()    ? "LookAtTarget"
                                                    : "AimTarget";
        CheckEqual(words, m_written.ViewMode, mode, m_node.Name + ", view mode");
        CheckEqual(words, m_written.IsOrtho, IsOrtho(), m_node.Name + ", projection");
        CheckEqual(words, m_written.IsBranchVisible, AreParentsVisible(), m_node.Name + ", visibility");
        static Deviation& row = DeviationOf("camera");
        const SampledFrame start{m_start, 0.0f};
        Compare(row, start, nullptr, NumberAt(m_node.Object, "aspect", m_start), true);
    }

    void CompareFrames(const reader::CameraAnimation* animation) const
    {
        static Deviation& row = DeviationOf("camera moving");
        for (const SampledFrame& frame : m_trip.Host.Frames) {
            const double ratio = NumberAt(m_node.Object, "projplanewidth", frame.Host) /
                                 NumberAt(m_node.Object, "projplaneheight", frame.Host);
            Compare(row, frame, animation, ratio, false);
        }
    }

private:
    bool IsOrtho() const { return NumberAt(m_node.Object, "proj", m_start) == 0.0; }

    bool AreParentsVisible() const
    {
        for (int parent = m_node.Parent; parent >= 0;
             parent = m_trip.Host.Nodes[static_cast<std::size_t>(parent)].Parent) {
            const XSI::Parameter visibility =
                VisibilityOf(m_trip.Host.Nodes[static_cast<std::size_t>(parent)].Object);
            if (visibility.IsValid() && !static_cast<bool>(visibility.GetValue()))
                return false;
        }
        return true;
    }

    /// Channels of a member, or what stands still. A comparison of what stands still has no tolerance.
    struct Channels
    {
        const reader::CameraAnimation* Animation;
        float Frame;
        bool IsStill;

        Approx At(const char* path, std::size_t channel, float rest, double tolerance) const
        {
            const reader::MemberAnimation* member =
                Animation == nullptr ? nullptr : FindMember(Animation->Members, path);
            const std::optional<reader::Curve> curve = ChannelOf(member, channel);
            return IsStill ? Printed(rest) : ChannelValue(curve, Printed(rest), Frame, tolerance);
        }

        Approx Transform(bool isScale, std::size_t axis, float rest, double tolerance) const
        {
            const reader::MemberAnimation* member =
                Animation == nullptr ? nullptr : FindMember(Animation->Members, "Transform");
            const reader::CurveTriple none;
            const reader::CurveTriple& curves = member == nullptr ? none
                                                : isScale         ? member->Scale
                                                                  : member->Translate;
            return IsStill ? Printed(rest) : ChannelValue(curves[axis], Printed(rest), Frame, tolerance);
        }
    };

    void Compare(Deviation& row, const SampledFrame& frame, const reader::CameraAnimation* animation,
                 double ratio, bool isStill) const
    {
        const Channels channels{animation, frame.File, isStill};
        const std::string place = PlaceAt(m_node.Name, frame);
        ComparePlace(row, channels, frame, place);
        if (!m_view.Target.IsValid())
            CompareRotation(row, channels, frame, place);
        else
            CompareTarget(row, channels, frame, place);
        CompareProjection(row, channels, frame, ratio, place);
    }

    double LengthTolerance() const { return m_trip.Settings.ToleranceTranslate * m_trip.Settings.Magnify; }

    Approx Magnified(const Approx& length) const { return length * Approx{m_trip.Settings.Magnify, 0.0}; }

    void ComparePlace(Deviation& row, const Channels& channels, const SampledFrame& frame,
                      const std::string& place) const
    {
        const XSI::MATH::CTransformation transform = TransformAt(m_node.Object, frame.Host);
        const ApproxVector scale = NarrowedVector(transform.GetScaling());
        const ApproxVector position = NarrowedVector(transform.GetTranslation());
        for (std::size_t axis = 0; axis < 3; ++axis) {
            Check(row,
                  channels.Transform(true, axis, m_written.Local.Scale[axis], m_trip.Settings.ToleranceScale),
                  scale[axis], place + ", scale");
            Check(row, channels.Transform(false, axis, m_written.Local.Translate[axis], LengthTolerance()),
                  Magnified(position[axis]), place + ", place");
        }
    }

    /// Angles may differ by whole turns and flips, so that the axes are compared.
    void CompareRotation(Deviation& row, const Channels& channels, const SampledFrame& frame,
                         const std::string& place) const
    {
        ApproxTransform written;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            written.Rotate[axis] = channels.At("ViewUpdater.ViewRotate", axis, m_written.ViewRotate[axis],
                                               m_trip.Settings.ToleranceRotate * RadiansPerDegree);
            // Degrees in single precision, moved by whole turns.
            written.Rotate[axis].Error += 4.0 * SingleRounding * (std::abs(written.Rotate[axis].Value) + 7.0);
        }
        const ApproxMatrix axes = Compose(written);
        const XSI::MATH::CMatrix3 wanted = TransformAt(m_node.Object, frame.Host).GetRotation().GetMatrix();
        for (int i = 0; i < 3; ++i)
            for (int k = 0; k < 3; ++k)
                Check(row, axes[static_cast<std::size_t>(i)][static_cast<std::size_t>(k)],
                      Narrowed(wanted.GetValue(i, k)), place + ", rotation");
    }

    void CompareTarget(Deviation& row, const Channels& channels, const SampledFrame& frame,
                       const std::string& place) const
    {
        const ApproxVector target = NarrowedVector(TransformAt(m_view.Target, frame.Host).GetTranslation());
        for (std::size_t axis = 0; axis < 3; ++axis)
            Check(row,
                  channels.At("ViewUpdater.TargetPosition", axis, m_written.TargetPosition[axis],
                              LengthTolerance()),
                  Magnified(target[axis]), place + ", target");
        // What stands still is read with the roll of the present frame; so is a direction that does not
        // change while the export lasts, for it has no curve.
        const bool isPresent = channels.IsStill || (m_view.Up.IsValid() && !IsUpwardMoving());
        const double roll =
            static_cast<double>(isPresent ? m_view.Roll.GetValue() : m_view.Roll.GetValue(frame.Host));
        if (m_view.Up.IsValid()) {
            const ApproxVector up = NarrowedVector(UpwardAt(m_node.Object, m_view, frame.Host, roll));
            const double tolerance = UpwardTolerance;
            for (std::size_t axis = 0; axis < 3; ++axis)
                Check(row,
                      channels.At("ViewUpdater.UpwardVector", axis, m_written.UpwardVector[axis], tolerance),
                      up[axis], place + ", upward");
            return;
        }
        const Approx twist = channels.At("ViewUpdater.Twist", 0, m_written.Twist,
                                         m_trip.Settings.ToleranceRotate * RadiansPerDegree);
        CheckAngle(row, twist, Radians(roll), place + ", twist");
    }

    bool IsUpwardMoving() const
    {
        const auto upwardAt = [&](double frame) {
            return UpwardAt(m_node.Object, m_view, frame, static_cast<double>(m_view.Roll.GetValue(frame)));
        };
        const XSI::MATH::CVector3 first = upwardAt(m_start);
        return std::ranges::any_of(m_trip.Host.Frames, [&](const SampledFrame& frame) {
            const XSI::MATH::CVector3 upward = upwardAt(frame.Host);
            return std::abs(upward.GetX() - first.GetX()) >= UpwardTolerance ||
                   std::abs(upward.GetY() - first.GetY()) >= UpwardTolerance ||
                   std::abs(upward.GetZ() - first.GetZ()) >= UpwardTolerance;
        });
    }

    static void CheckAngle(Deviation& row, const Approx& written, const Approx& wanted,
                           const std::string& place)
    {
        const double turn = std::remainder(written.Value - wanted.Value, 2.0 * std::numbers::pi);
        Check(row, std::abs(turn), BoundOf(written, wanted), place);
    }

    /// A horizontal angle is converted by the ratio; an animated one by the camera's own.
    Approx FieldOfView(double frame, double ratio) const
    {
        const XSI::X3DObject& camera = m_node.Object;
        const Approx angle = Radians(NumberAt(camera, "fov", frame));
        if (NumberAt(camera, "fovtype", frame) != 1.0)
            return angle;
        const bool isMoving = camera.GetParameter("fov").IsAnimated();
        const Approx divisor = Narrowed(isMoving ? NumberAt(camera, "aspect", m_start) : ratio);
        const Approx half = angle * Approx{0.5, 0.0};
        return Atan2(Sin(half) / Cos(half) / divisor, Approx{1.0, 0.0}) * Approx{2.0, 0.0};
    }

    void CompareProjection(Deviation& row, const Channels& channels, const SampledFrame& frame, double ratio,
                           const std::string& place) const
    {
        const auto length = [&](const char* member, float rest, const char* parameter) {
            Check(row, channels.At(member, 0, rest, LengthTolerance()),
                  Magnified(Narrowed(NumberAt(m_node.Object, parameter, frame.Host))),
                  place + ", " + parameter);
        };
        length("ProjectionUpdater.Near", m_written.Near, "near");
        length("ProjectionUpdater.Far", m_written.Far, "far");
        constexpr double ratioTolerance = 0.01;
        Check(row, channels.At("ProjectionUpdater.AspectRatio", 0, m_written.AspectRatio, ratioTolerance),
              Narrowed(ratio) / Approx{1.0, 0.0}, place + ", aspect");
        if (IsOrtho())
            return length("ProjectionUpdater.Height", m_written.Height, "orthoheight");
        CheckAngle(row,
                   channels.At("ProjectionUpdater.Fovy", 0, m_written.Fovy,
                               m_trip.Settings.ToleranceRotate * RadiansPerDegree),
                   FieldOfView(frame.Host, ratio), place + ", field of view");
    }

    const RoundTrip& m_trip;
    const HostNode& m_node;
    const reader::Camera& m_written;
    View m_view;
    double m_start;
};

const char* KindOf(const XSI::X3DObject& light)
{
    const char* const words[] = {"PointLight", "DirectionalLight", "SpotLight"};
    return words[static_cast<std::size_t>(NumberAt(light, "Type", 0.0))];
}

class LightComparison
{
public:
    LightComparison(const RoundTrip& trip, const HostNode& node, const reader::Light& written)
        : m_trip(trip),
          m_node(node),
          m_written(written)
    {}

    void CompareStill(const reader::Stage& stage) const
    {
        static Deviation& words = DeviationOf("light words");
        CheckEqual(words, m_written.Kind, KindOf(m_node.Object), m_node.Name + ", kind");
        CheckEqual(words, m_written.IsBranchVisible, IsVisibleAt(m_trip.Host.Frames.front().Host),
                   m_node.Name + ", visibility");
        if (m_written.Kind == "SpotLight")
            CompareCone(stage);
    }

    /// Without an animation what stands still is compared at the first frame only.
    void CompareFrames(const reader::LightAnimation* animation, bool isStill) const
    {
        static Deviation& still = DeviationOf("light");
        static Deviation& moving = DeviationOf("light moving");
        for (const SampledFrame& frame : m_trip.Host.Frames) {
            CompareFrame(isStill ? still : moving, animation, frame, isStill);
            if (isStill)
                return;
        }
    }

private:
    bool IsVisibleAt(double frame) const
    {
        const XSI::CRef root = XSI::Application().GetActiveSceneRoot();
        for (XSI::X3DObject object = m_node.Object; object.IsValid();
             object = XSI::X3DObject(object.GetParent())) {
            const XSI::Parameter visibility = VisibilityOf(object);
            if (visibility.IsValid() && !static_cast<bool>(visibility.GetValue(frame)))
                return false;
            if (object.GetRef() == root)
                break;
        }
        return true;
    }

    XSI::Shader Shader() const
    {
        const XSI::CRefArray shaders = XSI::Light(m_node.Object).GetShaders();
        return XSI::Shader(shaders.GetCount() > 0 ? shaders[0] : XSI::CRef());
    }

    /// Colour with the intensity as alpha; black where the light does not contribute.
    ApproxColor ColorAt(const char* contribution, double frame) const
    {
        const XSI::Shader shader = Shader();
        if (!shader.IsValid())
            return {Approx{1, 0}, Approx{1, 0}, Approx{1, 0}, Approx{1, 0}};
        if (!FlagAt(m_node.Object, contribution, 0.0))
            return {Approx{}, Approx{}, Approx{}, Approx{1, 0}};
        const XSI::Parameter color = shader.GetParameter("color");
        const auto component = [&](const char* name) {
            return Narrowed(static_cast<double>(color.GetParameter(name).GetValue(frame)));
        };
        return {component("red"), component("green"), component("blue"),
                Narrowed(NumberAt(shader, "intensity", frame))};
    }

    static Approx Channel(const reader::MemberAnimation* member, std::size_t channel, float rest, float frame,
                          double tolerance, bool isStill)
    {
        return isStill ? Printed(rest)
                       : ChannelValue(ChannelOf(member, channel), Printed(rest), frame, tolerance);
    }

    void CompareFrame(Deviation& row, const reader::LightAnimation* animation, const SampledFrame& frame,
                      bool isStill) const
    {
        const std::string place = PlaceAt(m_node.Name, frame);
        const auto member = [&](const char* path) {
            return animation == nullptr ? nullptr : FindMember(animation->Members, path);
        };
        const ApproxColor diffuse = ColorAt("DiffuseContribution", frame.Host);
        const ApproxColor specular = ColorAt("SpecularContribution", frame.Host);
        const double tolerance = m_trip.Settings.ToleranceColor;
        for (std::size_t i = 0; i < 4; ++i) {
            const auto compare = [&](const char* path, float rest, const ApproxColor& wanted) {
                Check(row, Channel(member(path), i, rest, frame.File, tolerance, isStill), wanted[i],
                      place + ", " + path);
            };
            compare("Diffuse", m_written.Diffuse[i], diffuse);
            compare("Specular0", m_written.Specular0[i], specular);
            compare("Specular1", m_written.Specular1[i], specular);
        }
        ComparePlace(row, member("Transform"), member("Direction"), frame, isStill);
        const reader::MemberAnimation* visible = member("IsLightEnabled");
        const bool isVisible = visible != nullptr && visible->Bool
                                   ? reader::EvaluateBoolCurve(*visible->Bool, frame.File)
                                   : m_written.IsBranchVisible;
        CheckEqual(row, isVisible, IsVisibleAt(frame.Host), place + ", visibility");
    }

    void ComparePlace(Deviation& row, const reader::MemberAnimation* transform,
                      const reader::MemberAnimation* direction, const SampledFrame& frame, bool isStill) const
    {
        const XSI::MATH::CMatrix4 global = GlobalAt(m_node.Object, frame.Host);
        const std::string place = PlaceAt(m_node.Name, frame);
        const Approx magnify{m_trip.Settings.Magnify, 0.0};
        const reader::CurveTriple none;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const std::optional<reader::Curve>& curve =
                (transform == nullptr ? none : transform->Translate)[axis];
            const Approx rest = Printed(m_written.Local.Translate[axis]);
            const Approx written =
                isStill ? rest : ChannelValue(curve, rest, frame.File, m_trip.Settings.ToleranceTranslate);
            Check(row, written, Narrowed(global.GetValue(3, static_cast<int>(axis))) * magnify,
                  place + ", place");
            if (m_written.Kind == "PointLight" && !isStill)
                continue; // shines all around, and nothing in the file turns it
            constexpr double tolerance = 0.001;
            Check(row, Channel(direction, axis, m_written.Direction[axis], frame.File, tolerance, isStill),
                  -Narrowed(global.GetValue(2, static_cast<int>(axis))), place + ", direction");
        }
    }

    /// The table holds brightness over the cosine: none outside the cone, full inside, straight between.
    void CompareCone(const reader::Stage& stage) const
    {
        static Deviation& row = DeviationOf("spot cone");
        const auto table = std::ranges::find(stage.LookupTables.Tables, m_written.Angle.TableName,
                                             &reader::LookupTable::Name);
        if (!CheckEqual(row, table != stage.LookupTables.Tables.end(), true, m_node.Name))
            return;
        const double outer = NumberAt(m_node.Object, "LightCone", 0.0) * 0.5;
        const double spread = Shader().IsValid() ? NumberAt(Shader(), "spread", 0.0) : 5.0;
        const double inner = std::max(outer - spread, 0.0);
        const int full = static_cast<int>(std::cos(inner * RadiansPerDegree) * 256.0);
        const int none = static_cast<int>(std::cos(outer * RadiansPerDegree) * 256.0);
        constexpr double tolerance = 0.001; // of the keys
        for (int i = 0; i < 256; ++i) {
            const double wanted = i < none ? 0.0
                                  : i >= full
                                      ? 1.0
                                      : static_cast<double>(i - none) / static_cast<double>(full - none);
            const double value = reader::EvaluateCurve(table->Values, static_cast<float>(i)).value_or(-1.0F);
            Check(row, Rounded(value, tolerance + 3.0 * PrintedError(1.0)), Narrowed(wanted), m_node.Name);
        }
    }

    const RoundTrip& m_trip;
    const HostNode& m_node;
    const reader::Light& m_written;
};

void CompareAmbientLight(const RoundTrip& trip, const reader::Stage& stage,
                         const reader::LightAnimation* animation)
{
    static Deviation& row = DeviationOf("ambient light");
    const auto light = std::ranges::find(stage.Lights, trip.Host.AmbientLight, &reader::Light::Name);
    if (!CheckEqual(row, light != stage.Lights.end() && light->Kind == "Ambient", true, "ambient light"))
        return;
    const XSI::CRefArray properties = XSI::Application().GetActiveSceneRoot().GetProperties();
    XSI::Parameter ambience;
    for (LONG i = 0; i < properties.GetCount() && !ambience.IsValid(); ++i)
        ambience = XSI::Property(properties[i]).GetParameter("ambience");
    if (!ambience.IsValid())
        return;
    const char* const names[] = {"red", "green", "blue"};
    const reader::MemberAnimation* member =
        animation == nullptr ? nullptr : FindMember(animation->Members, "Ambient");
    for (const SampledFrame& frame : trip.Host.Frames)
        for (std::size_t i = 0; i < 3; ++i)
            Check(row,
                  ChannelValue(ChannelOf(member, i), Printed(light->Ambient[i]), frame.File,
                               trip.Settings.ToleranceColor),
                  Narrowed(static_cast<double>(ambience.GetParameter(names[i]).GetValue(frame.Host))),
                  PlaceAt("ambience", frame));
}

template<typename List>
auto FindAnimation(const List& list, const std::string& name) -> const typename List::value_type*
{
    const auto found = std::ranges::find_if(list, [&](const auto& each) { return each.Head.Name == name; });
    return found == list.end() ? nullptr : &*found;
}

} // namespace

void CompareCameras(const RoundTrip& trip)
{
    static Deviation& words = DeviationOf("camera words");
    std::size_t count = 0;
    for (const HostNode& node : trip.Host.Nodes) {
        if (!node.Object.IsA(XSI::siCameraID) || IsHiddenForGood(node.Object))
            continue;
        ++count;
        for (const reader::Stage* stage : {&trip.Written.Cameras, &trip.Written.Environment}) {
            const auto camera = std::ranges::find(stage->Cameras, node.Name, &reader::Camera::Name);
            if (!CheckEqual(words, camera != stage->Cameras.end(), true, node.Name))
                continue;
            const CameraComparison comparison(trip, node, *camera);
            comparison.CompareStill();
            if (stage == &trip.Written.Cameras)
                comparison.CompareFrames(FindAnimation(stage->CameraAnimations, node.Name));
        }
    }
    CheckEqual(words, trip.Written.Cameras.Cameras.size(), count, "count of cameras");
}

void CompareLights(const RoundTrip& trip)
{
    static Deviation& words = DeviationOf("light words");
    std::size_t count = 1; // the ambient light
    for (const HostNode& node : trip.Host.Nodes) {
        if (!node.Object.IsA(XSI::siLightID) || IsHiddenForGood(node.Object))
            continue;
        ++count;
        for (const reader::Stage* stage : {&trip.Written.Lights, &trip.Written.Environment}) {
            const auto light = std::ranges::find(stage->Lights, node.Name, &reader::Light::Name);
            if (!CheckEqual(words, light != stage->Lights.end(), true, node.Name))
                continue;
            const LightComparison comparison(trip, node, *light);
            comparison.CompareStill(*stage);
            comparison.CompareFrames(nullptr, true);
            if (stage == &trip.Written.Lights)
                comparison.CompareFrames(FindAnimation(stage->LightAnimations, node.Name + ".LightAnimation"),
                                         false);
        }
    }
    CheckEqual(words, trip.Written.Lights.Lights.size(), count, "count of lights");
    CompareAmbientLight(
        trip, trip.Written.Lights,
        FindAnimation(trip.Written.Lights.LightAnimations, trip.Host.AmbientLight + ".LightAnimation"));
}

} // namespace tq4x::test
