#include <algorithm>
#include <cmath>
#include <numbers>

#include "glb/AddStage.h"
#include "glb/MemberValues.h"
#include "glb/NodeMath.h"

namespace tq4x::reader
{
namespace
{

using Axis = std::array<double, 3>;

Axis Difference(const Vector3& to, const Vector3& from)
{
    return {static_cast<double>(to[0]) - static_cast<double>(from[0]),
            static_cast<double>(to[1]) - static_cast<double>(from[1]),
            static_cast<double>(to[2]) - static_cast<double>(from[2])};
}

Axis Cross(const Axis& a, const Axis& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

/// Of length 1; nothing for a vector of (nearly) no length.
std::optional<Axis> Normalized(const Axis& axis)
{
    constexpr double LeastLength = 1e-9;
    const double length = std::hypot(axis[0], axis[1], axis[2]);
    if (!(length > LeastLength)) {
        return std::nullopt;
    }
    return Axis{axis[0] / length, axis[1] / length, axis[2] / length};
}

/// Looks from a place to a target, with a direction that is up.
Quaternion LookAt(const Vector3& from, const Vector3& to, const Axis& up)
{
    const std::optional<Axis> back = Normalized(Difference(from, to));
    if (!back) {
        return {0, 0, 0, 1};
    }
    std::optional<Axis> right = Normalized(Cross(up, *back));
    if (!right) { // straight up or down
        right = Normalized(Cross({0, 0, -1}, *back));
    }
    const Axis side = right.value_or(Axis{1, 0, 0});
    return QuaternionOfAxes({side, Cross(*back, side), *back});
}

/// What follows, about the camera's own axis of view.
Quaternion Roll(const Quaternion& rotation, double angle)
{
    const double sine = std::sin(0.5 * angle);
    const double cosine = std::cos(0.5 * angle);
    const auto& [x, y, z, w] = rotation;
    return {x * cosine + y * sine, y * cosine - x * sine, z * cosine + w * sine, w * cosine - z * sine};
}

/// A positive twist leans the camera to its left, as the host's roll does.
Quaternion ViewOf(const Camera& camera)
{
    if (camera.ViewMode == "AimTarget") {
        const Quaternion straight = LookAt(camera.Local.Translate, camera.TargetPosition, {0, 1, 0});
        return Roll(straight, static_cast<double>(camera.Twist));
    }
    if (camera.ViewMode == "LookAtTarget") {
        return LookAt(camera.Local.Translate, camera.TargetPosition, Difference(camera.UpwardVector, {}));
    }
    return QuaternionOf(camera.ViewRotate);
}

/// The camera at a frame of its animation.
Camera CameraAt(const Camera& start, const CameraAnimation& animation, float frame)
{
    Camera now = start;
    if (const MemberAnimation* const transform = FindMember(animation.Members, "Transform")) {
        EvaluateCurves(transform->Translate, frame, now.Local.Translate);
    }
    const auto evaluate = [&](std::string_view path, std::span<float> values) {
        EvaluateMember(FindMember(animation.Members, path), frame, values);
    };
    evaluate("ViewUpdater.ViewRotate", now.ViewRotate);
    evaluate("ViewUpdater.TargetPosition", now.TargetPosition);
    evaluate("ViewUpdater.UpwardVector", now.UpwardVector);
    evaluate("ViewUpdater.Twist", {&now.Twist, 1});
    evaluate("ProjectionUpdater.Near", {&now.Near, 1});
    evaluate("ProjectionUpdater.Far", {&now.Far, 1});
    evaluate("ProjectionUpdater.AspectRatio", {&now.AspectRatio, 1});
    evaluate("ProjectionUpdater.Fovy", {&now.Fovy, 1});
    evaluate("ProjectionUpdater.Height", {&now.Height, 1});
    return now;
}

/// A property of a projection: its name in glTF, how it comes from a camera, and what moves it.
struct LensRow
{
    std::string_view Name;
    float (*Take)(const Camera& camera) = nullptr;
    std::array<std::string_view, 2> Paths;
};

constexpr float LeastDistance = 1e-3F; ///< glTF wants planes and sizes above 0

float Positive(float value)
{
    return std::max(value, LeastDistance);
}

constexpr std::array<LensRow, 4> PerspectiveRows = {{
    {"yfov",
     [](const Camera& camera) {
         return std::clamp(camera.Fovy, LeastDistance, std::numbers::pi_v<float> - LeastDistance);
     },
     {"ProjectionUpdater.Fovy"}},
    {"aspectRatio",
     [](const Camera& camera) { return Positive(camera.AspectRatio); },
     {"ProjectionUpdater.AspectRatio"}},
    {"znear", [](const Camera& camera) { return Positive(camera.Near); }, {"ProjectionUpdater.Near"}},
    {"zfar",
     [](const Camera& camera) { return std::max(camera.Far, Positive(camera.Near) + LeastDistance); },
     {"ProjectionUpdater.Far", "ProjectionUpdater.Near"}},
}};

constexpr std::array<LensRow, 4> OrthoRows = {{
    {"xmag",
     [](const Camera& camera) { return Positive(0.5F * camera.Height * camera.AspectRatio); },
     {"ProjectionUpdater.Height", "ProjectionUpdater.AspectRatio"}},
    {"ymag",
     [](const Camera& camera) { return Positive(0.5F * camera.Height); },
     {"ProjectionUpdater.Height"}},
    {"znear", [](const Camera& camera) { return std::max(camera.Near, 0.0F); }, {"ProjectionUpdater.Near"}},
    {"zfar",
     [](const Camera& camera) { return std::max(camera.Far, std::max(camera.Near, 0.0F) + LeastDistance); },
     {"ProjectionUpdater.Far", "ProjectionUpdater.Near"}},
}};

std::span<const LensRow> RowsOf(const Camera& camera)
{
    return camera.IsOrtho ? OrthoRows : PerspectiveRows;
}

std::string LensWord(const Camera& camera)
{
    return camera.IsOrtho ? "orthographic" : "perspective";
}

struct AddedCamera
{
    int Node = -1;
    int Lens = -1;
};

AddedCamera AddCamera(const Camera& camera, GlbScene& scene)
{
    Json lens;
    for (const LensRow& row : RowsOf(camera)) {
        lens[std::string(row.Name)] = ShortNumber(row.Take(camera));
    }
    const std::string word = LensWord(camera);
    AddedCamera added;
    added.Lens =
        scene.Writer.Add("cameras", {{"name", camera.Name}, {"type", word}, {word, std::move(lens)}});
    Json node = {{"name", camera.Name},
                 {"camera", added.Lens},
                 {"translation", NumberList(camera.Local.Translate)},
                 {"rotation", NumberList(ToFloats(ViewOf(camera)))}};
    added.Node = scene.Writer.Add("nodes", std::move(node));
    scene.Roots.push_back(added.Node);
    return added;
}

class CameraClip
{
public:
    CameraClip(const Camera& camera, const CameraAnimation& animation, ClipBuilder& clip)
        : m_camera(camera),
          m_animation(animation),
          m_clip(clip)
    {}

    void Run(const AddedCamera& added)
    {
        const auto translate = [](const Camera& camera, std::span<float> values) {
            std::ranges::copy(camera.Local.Translate, values.begin());
        };
        const auto rotate = [](const Camera& camera, std::span<float> values) {
            std::ranges::copy(ToFloats(ViewOf(camera)), values.begin());
        };
        m_clip.MoveNode(added.Node, "translation", Sample({"Transform"}, 3, TrackForm::Linear, translate),
                        m_camera.Local.Translate);
        m_clip.MoveNode(added.Node, "rotation",
                        Sample({"Transform", "ViewUpdater.ViewRotate", "ViewUpdater.TargetPosition",
                                "ViewUpdater.UpwardVector", "ViewUpdater.Twist"},
                               4, TrackForm::Curved, rotate),
                        ToFloats(ViewOf(m_camera)));
        for (const LensRow& row : RowsOf(m_camera)) {
            MoveLens(row, "/cameras/" + std::to_string(added.Lens) + "/" + LensWord(m_camera) + "/");
        }
    }

private:
    void MoveLens(const LensRow& row, const std::string& place)
    {
        const auto take = [&](const Camera& camera, std::span<float> values) {
            values[0] = row.Take(camera);
        };
        const float atRest = row.Take(m_camera);
        m_clip.MovePointer(place + std::string(row.Name), Sample(row.Paths, 1, TrackForm::Curved, take),
                           {&atRest, 1});
    }

    template<class Take>
    Track Sample(std::initializer_list<std::string_view> paths, std::size_t components, TrackForm form,
                 Take take)
    {
        return Sample(std::span(paths.begin(), paths.size()), components, form, take);
    }

    template<class Take>
    Track Sample(std::span<const std::string_view> paths, std::size_t components, TrackForm form, Take take)
    {
        std::vector<const Curve*> curves;
        for (const std::string_view path : paths) {
            std::ranges::copy(CurvesOf({FindMember(m_animation.Members, path)}), std::back_inserter(curves));
        }
        return m_clip.Sample(curves, m_animation.Head.FrameSize, components, form,
                             [&](float frame, std::span<float> values) {
                                 take(CameraAt(m_camera, m_animation, frame), values);
                             });
    }

    const Camera& m_camera;
    const CameraAnimation& m_animation;
    ClipBuilder& m_clip;
};

} // namespace

void AddCameras(const Stage& stage, StageNames& known, ClipBuilder& clip, GlbScene& scene)
{
    for (const Camera& camera : stage.Cameras) {
        if (!known.Cameras.insert(camera.Name).second) {
            continue;
        }
        const AddedCamera added = AddCamera(camera, scene);
        for (const CameraAnimation& animation : stage.CameraAnimations) {
            if (animation.Head.Name == camera.Name) {
                CameraClip(camera, animation, clip).Run(added);
            }
        }
    }
}

} // namespace tq4x::reader
