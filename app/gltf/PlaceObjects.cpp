#include <array>

#include "gltf/SceneBuild.h"
#include "scene/SetTransforms.h"

namespace tq4x::gltf
{
namespace
{

namespace Host = XSI::Host;
namespace Math = XSI::MATH;

/// Translation, rotation (x, y, z, w) and scaling of a node at one frame.
struct Pose
{
    std::array<double, 3> Translation;
    std::array<double, 4> Rotation;
    std::array<double, 3> Scale;
};

Math::CTransformation ToTransform(const Pose& pose)
{
    const auto& [t, q, s] = pose;
    return Host::MakeTransform({t[0], t[1], t[2]}, {q[3], q[0], q[1], q[2]}, {s[0], s[1], s[2]});
}

/// Columns of the file are rows of the host, so the sixteen numbers stay in their order.
Math::CMatrix4 ToMatrix(const std::array<double, 16>& columns)
{
    std::array<double, 16> rows = columns;
    rows[3] = rows[7] = rows[11] = 0.0; // what else stood there could not be a placing
    rows[15] = 1.0;
    Math::CMatrix4 matrix;
    matrix.Set(rows.data());
    return matrix;
}

/// The pose of a node that is not animated, or where its tracks say nothing.
Pose PoseAtRest(const Node& node)
{
    if (!node.Matrix) {
        return {node.Translation, node.Rotation, node.Scale};
    }
    const Math::CTransformation whole(ToMatrix(*node.Matrix));
    const Math::CVector3 t = whole.GetTranslation();
    const Math::CQuaternion q = whole.GetRotationQuaternion();
    const Math::CVector3 s = whole.GetScaling();
    return {{t.GetX(), t.GetY(), t.GetZ()},
            {q.GetX(), q.GetY(), q.GetZ(), q.GetW()},
            {s.GetX(), s.GetY(), s.GetZ()}};
}

/// The three tracks of a node; any may be absent.
struct PoseTracks
{
    AnimationTracks::Track Translation;
    AnimationTracks::Track Rotation;
    AnimationTracks::Track Scale;

    [[nodiscard]] bool IsEmpty() const { return !Translation && !Rotation && !Scale; }
};

Pose PoseAt(const Pose& rest, const PoseTracks& tracks, double frame)
{
    Pose pose = rest;
    if (tracks.Translation) {
        EvaluateTrack(*tracks.Translation, frame, pose.Translation);
    }
    if (tracks.Rotation) {
        EvaluateTrack(*tracks.Rotation, frame, pose.Rotation);
    }
    if (tracks.Scale) {
        EvaluateTrack(*tracks.Scale, frame, pose.Scale);
    }
    return pose;
}

void PlaceNode(const SceneBuild& build, std::size_t node)
{
    const Node& source = build.Source->Nodes[node];
    const PoseTracks tracks = {build.Tracks.Find(AnimatedProperty::Translation, node),
                               build.Tracks.Find(AnimatedProperty::Rotation, node),
                               build.Tracks.Find(AnimatedProperty::Scale, node)};
    const XSI::X3DObject& object = build.Objects[node];
    if (tracks.IsEmpty() && source.Matrix) {
        Host::SetLocalTransform(object, Math::CTransformation(ToMatrix(*source.Matrix)));
        return;
    }
    const Pose rest = PoseAtRest(source);
    Host::SetLocalTransform(object, ToTransform(rest));
    if (!tracks.IsEmpty()) {
        Host::SetLocalTransformSource(
            object, [rest, tracks](double frame) { return ToTransform(PoseAt(rest, tracks, frame)); });
    }
}

} // namespace

void PlaceObjects(SceneBuild& build)
{
    for (const std::size_t node : build.Order) {
        PlaceNode(build, node);
    }
}

} // namespace tq4x::gltf
