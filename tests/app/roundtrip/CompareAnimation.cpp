#include "Compare.h"
#include "CurveValues.h"
#include "Deviations.h"
#include "ExpectedGeometry.h"
#include "ExpectedMaterial.h"

#include <algorithm>
#include <numbers>

namespace tq4x::test
{
namespace
{

constexpr double RadiansPerDegree = std::numbers::pi / 180.0;

/// Poses of a written animation.
class WrittenPoses
{
public:
    explicit WrittenPoses(const RoundTrip& trip) : m_settings(trip.Settings)
    {
        const auto& animation = trip.Written.Skeletal.SkeletalAnimation;
        m_skeleton = animation ? &animation->Bones : &trip.Written.Model.Bones;
        for (const reader::Bone& bone : m_skeleton->Bones)
            m_members.push_back(animation ? reader::FindBoneMember(*animation, bone.Name) : nullptr);
    }

    const reader::Skeleton& Skeleton() const { return *m_skeleton; }

    /// A channel that does not move is within the tolerance of its first sample, and this of the bind pose,
    /// if the file holds that.
    ApproxTransform At(std::size_t bone, float frame) const
    {
        const ApproxTransform still = PrintedTransform(m_skeleton->Bones[bone].Local);
        const double bind = m_skeleton->Bones[bone].HasSkinningMatrix ? 2.0 : 1.0;
        const reader::MemberAnimation* member = m_members[bone];
        const reader::CurveTriple none;
        const auto group = [&](const reader::CurveTriple* curves, const ApproxVector& rest,
                               double tolerance) {
            ApproxVector values;
            for (std::size_t axis = 0; axis < 3; ++axis) {
                const std::optional<reader::Curve>& curve = (curves != nullptr ? *curves : none)[axis];
                values[axis] = ChannelValue(curve, rest[axis], frame, curve ? tolerance : bind * tolerance);
            }
            return values;
        };
        return {.Scale = group(member ? &member->Scale : nullptr, still.Scale, m_settings.ToleranceScale),
                .Rotate = group(member ? &member->Rotate : nullptr, still.Rotate,
                                m_settings.ToleranceRotate * RadiansPerDegree),
                .Translate = group(member ? &member->Translate : nullptr, still.Translate,
                                   m_settings.ToleranceTranslate * m_settings.Magnify)};
    }

private:
    const RoundTripSettings& m_settings;
    const reader::Skeleton* m_skeleton;
    std::vector<const reader::MemberAnimation*> m_members;
};

void ComparePose(Deviation& turned, Deviation& moved, const ApproxMatrix& written, const ApproxMatrix& wanted,
                 float magnify, const std::string& place)
{
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            Check(row < 3 ? turned : moved, written[row][column],
                  row < 3 ? wanted[row][column] : wanted[row][column] * Approx{magnify, 0.0}, place);
}

std::string PlaceAt(const std::string& name, const SampledFrame& frame)
{
    return name + " at frame " + std::to_string(frame.File);
}

void CompareHead(const RoundTrip& trip, const reader::AnimationHead& head)
{
    static Deviation& words = DeviationOf("animation form");
    CheckEqual(words, head.FrameSize, static_cast<int>(trip.Host.LastFrame - trip.Host.FirstFrame), "length");
    CheckEqual(words, head.IsLoop, trip.Settings.IsLoop, "loop");
}

/// One material at all frames.
class MaterialFrames
{
public:
    MaterialFrames(const RoundTrip& trip, const HostMaterial& host, const reader::Material& still)
        : m_trip(trip),
          m_host(host),
          m_still(still)
    {}

    void Compare() const
    {
        for (std::size_t i = 0; i < m_host.Stages.size(); ++i)
            ComparePictures(i);
        for (const SampledFrame& frame : m_trip.Host.Frames) {
            CompareColors(frame);
            for (std::size_t i = 0; i < std::min(m_host.Stages.size(), m_still.Coordinators.size()); ++i)
                CompareCoordinator(i, frame);
        }
    }

private:
    const reader::MemberAnimation* Member(const std::string& path) const
    {
        const auto& animation = m_trip.Written.Materials.MaterialAnimation;
        return animation ? FindMember(animation->Members, "Materials[\"" + m_host.Name + "\"]." + path)
                         : nullptr;
    }

    /// Pictures change at frames of the host, not at such that count from the start of the export.
    void ComparePictures(std::size_t number) const
    {
        static Deviation& row = DeviationOf("changing picture");
        const std::map<int, std::string>& wanted = m_host.Stages[number].Pictures;
        const std::string path = "TextureMappers[" + std::to_string(number) + "].Texture";
        const std::optional<reader::Curve> curve = ChannelOf(Member(path), 0);
        const std::string place = m_host.Name + "." + path;
        if (!CheckEqual(row, curve.has_value(), wanted.size() > 1, place) || !curve)
            return;
        for (int frame = wanted.begin()->first; frame <= m_trip.Host.LastFrame; ++frame)
            CheckEqual(row, PatternAt(*curve, frame),
                       LegalName(BaseName(std::prev(wanted.upper_bound(frame))->second)),
                       place + " at frame " + std::to_string(frame));
    }

    /// The name of the picture that a curve shows; empty if there is none.
    std::string PatternAt(const reader::Curve& curve, int frame) const
    {
        const auto& patterns = m_trip.Written.Materials.MaterialAnimation->Patterns;
        const auto index =
            static_cast<std::size_t>(reader::EvaluateCurve(curve, static_cast<float>(frame)).value_or(-1.0F));
        return index < patterns.size() ? patterns[index].Name : "";
    }

    void CompareColors(const SampledFrame& frame) const
    {
        static Deviation& row = DeviationOf("material colour moving");
        const ExpectedColors wanted = ColorsAt(m_host, frame.Host, m_trip.Host.Frames.front().Host);
        const double tolerance = static_cast<double>(m_trip.Settings.ToleranceColor) / 255.0;

        const struct
        {
            const char* Path;
            const reader::Color& Still;
            const ApproxColor& Wanted;
        } colors[] = {{"MaterialColor.Emission", m_still.Emission, wanted.Emission},
                      {"MaterialColor.Ambient", m_still.Ambient, wanted.Ambient},
                      {"MaterialColor.Diffuse", m_still.Diffuse, wanted.Diffuse},
                      {"MaterialColor.Specular0", m_still.Specular0, wanted.Specular0}};

        for (const auto& color : colors)
            for (std::size_t i = 0; i < 4; ++i)
                Check(row,
                      ChannelValue(ChannelOf(Member(color.Path), i), Printed(color.Still[i]), frame.File,
                                   tolerance),
                      color.Wanted[i], PlaceAt(m_host.Name + color.Path, frame));
    }

    void CompareCoordinator(std::size_t number, const SampledFrame& frame) const
    {
        static Deviation& row = DeviationOf("texture transform moving");
        const RoundTripSettings& settings = m_trip.Settings;
        const reader::TextureCoordinator& still = m_still.Coordinators[number];
        const ExpectedProjection wanted =
            ProjectionAt(m_trip.Host, m_host, m_host.Stages[number], frame.Host);
        const std::string path = "TextureCoordinators[" + std::to_string(number) + "].";
        const std::string place = PlaceAt(m_host.Name + "." + path, frame);
        const auto value = [&](const char* member, std::size_t channel, float rest, double tolerance) {
            return ChannelValue(ChannelOf(Member(path + member), channel), Printed(rest), frame.File,
                                tolerance);
        };
        Check(row, value("Scale", 0, still.ScaleS, settings.ToleranceTexScale), wanted.ScaleS, place);
        Check(row, value("Scale", 1, still.ScaleT, settings.ToleranceTexScale), wanted.ScaleT, place);
        Check(row, value("Translate", 0, still.TranslateS, settings.ToleranceTexTranslate), wanted.TranslateS,
              place);
        Check(row, value("Translate", 1, still.TranslateT, settings.ToleranceTexTranslate), wanted.TranslateT,
              place);
        const Approx turn = value("Rotate", 0, still.Rotate, settings.ToleranceTexRotate * RadiansPerDegree);
        const double distance = std::remainder(turn.Value - wanted.Rotate.Value, 2.0 * std::numbers::pi);
        Check(row, std::abs(distance), BoundOf(turn, wanted.Rotate), place);
    }

    const RoundTrip& m_trip;
    const HostMaterial& m_host;
    const reader::Material& m_still;
};

/// Whether a mesh is drawn at a frame: by the member of its path or as it stands in the model.
bool WrittenVisibility(const RoundTrip& trip, const std::string& path, bool still, float frame)
{
    const auto& animation = trip.Written.Visibility.VisibilityAnimation;
    const reader::MemberAnimation* member = animation ? FindMember(animation->Members, path) : nullptr;
    return member != nullptr && member->Bool ? reader::EvaluateBoolCurve(*member->Bool, frame) : still;
}

bool ChangesBetween(const XSI::Parameter& flag, const std::vector<SampledFrame>& frames)
{
    return flag.IsValid() && std::ranges::any_of(frames, [&](const SampledFrame& frame) {
               return static_cast<bool>(flag.GetValue(frame.Host)) !=
                      static_cast<bool>(flag.GetValue(frames.front().Host));
           });
}

} // namespace

void CompareSkeletalAnimation(const RoundTrip& trip)
{
    static Deviation& turned = DeviationOf("moving local axes");
    static Deviation& moved = DeviationOf("moving local place");
    static Deviation& worldTurned = DeviationOf("moving world axes");
    static Deviation& worldMoved = DeviationOf("moving world place");
    if (trip.Written.Skeletal.SkeletalAnimation)
        CompareHead(trip, trip.Written.Skeletal.SkeletalAnimation->Head);
    const WrittenPoses poses(trip);
    std::vector<int> bones;
    for (const HostNode& node : trip.Host.Nodes)
        bones.push_back(reader::FindBone(poses.Skeleton(), node.Name));
    for (const SampledFrame& frame : trip.Host.Frames) {
        std::vector<ApproxMatrix> worlds, wantedWorlds;
        for (std::size_t i = 0; i < trip.Host.Nodes.size(); ++i) {
            const HostNode& node = trip.Host.Nodes[i];
            if (bones[i] < 0)
                return; // told with the skeleton
            const ApproxMatrix written = Compose(poses.At(static_cast<std::size_t>(bones[i]), frame.File));
            const ApproxMatrix wanted = Recompose(NarrowedMatrix(LocalAt(node.Object, frame.Host)));
            const std::string place = PlaceAt(node.Name, frame);
            ComparePose(turned, moved, written, wanted, trip.Settings.Magnify, place);
            const bool isHierarchical = IsHierarchical(node.Object);
            const auto worldOf = [&](const ApproxMatrix& local, const std::vector<ApproxMatrix>& parents) {
                return node.Parent < 0
                           ? local
                           : ToWorld(local, parents[static_cast<std::size_t>(node.Parent)], isHierarchical);
            };
            worlds.push_back(worldOf(written, worlds));
            wantedWorlds.push_back(worldOf(wanted, wantedWorlds));
            const ApproxMatrix global = NarrowedMatrix(GlobalAt(node.Object, frame.Host));
            ComparePose(worldTurned, worldMoved, worlds.back(), WithErrorsOf(global, wantedWorlds.back()),
                        trip.Settings.Magnify, place);
        }
    }
}

void CompareMaterialAnimation(const RoundTrip& trip)
{
    if (trip.Written.Materials.MaterialAnimation)
        CompareHead(trip, trip.Written.Materials.MaterialAnimation->Head);
    for (const HostMaterial& material : trip.Host.Materials)
        if (const reader::Material* still = reader::FindMaterial(trip.Written.Model, material.Name))
            MaterialFrames(trip, material, *still).Compare();
}

void CompareVisibility(const RoundTrip& trip)
{
    static Deviation& row = DeviationOf("visibility");
    if (trip.Written.Visibility.VisibilityAnimation)
        CompareHead(trip, trip.Written.Visibility.VisibilityAnimation->Head);
    const reader::Model& model = trip.Written.Model;
    CheckEqual(row, model.HasNodeVisibilities, trip.Settings.BindsByName, "binding");
    for (std::size_t i = 0; i < model.Meshes.size(); ++i) {
        const reader::Mesh& mesh = model.Meshes[i];
        const auto node = std::ranges::find(trip.Host.Nodes, mesh.NodeName, &HostNode::Name);
        if (node == trip.Host.Nodes.end() || !node->IsMesh)
            continue; // a skin that moved to its bone: the bone has another visibility
        const XSI::Parameter visibility = VisibilityOf(node->Object);
        // What does not change while the export lasts stands in the model as it is at the present frame.
        const bool isMoving = ChangesBetween(visibility, trip.Host.Frames);
        for (const SampledFrame& frame : trip.Host.Frames) {
            const double time = isMoving ? frame.Host : XSI::CurrentTime;
            const bool wanted = !visibility.IsValid() || static_cast<bool>(visibility.GetValue(time));
            const std::string path = trip.Settings.BindsByName
                                         ? "MeshNodeVisibilities[\"" + mesh.NodeName + "\"].IsVisible"
                                         : "Meshes[" + std::to_string(i) + "].IsVisible";
            CheckEqual(row, WrittenVisibility(trip, path, mesh.IsVisible, frame.File), wanted,
                       PlaceAt(mesh.NodeName, frame));
        }
    }
}

} // namespace tq4x::test
