#include <algorithm>
#include <cmath>

#include <xsi_envelope.h>

#include "gltf/AccessorReader.h"
#include "gltf/SceneBuild.h"
#include "gltf/SceneError.h"
#include "scene/CreateGeometry.h"
#include "scene/SetTransforms.h"

namespace tq4x::gltf
{
namespace
{

namespace Host = XSI::Host;
namespace Math = XSI::MATH;

/// Largest difference of two matrices that count as one, relative to the larger of their elements.
constexpr double PoseTolerance = 1e-4;

/// The inverse bind matrices of a skin, for row vectors.
std::vector<Math::CMatrix4> ReadInverseBindMatrices(const Document& document, std::size_t index)
{
    const Skin& skin = document.Skins[index];
    std::vector<Math::CMatrix4> matrices(skin.Joints.size());
    if (!skin.InverseBindMatrices) {
        return matrices;
    }
    const std::vector<float> values = ReadFloats(document, *skin.InverseBindMatrices);
    for (std::size_t joint = 0; joint < matrices.size(); ++joint) {
        double row[16];
        std::copy_n(&values[16 * joint], 16, row);
        if (!std::all_of(row, row + 16, [](double x) { return std::isfinite(x); })) {
            throw SceneError("/skins/" + std::to_string(index) + "/inverseBindMatrices",
                             "The matrix of joint " + std::to_string(joint) +
                                 " holds a number that is none.");
        }
        row[3] = row[7] = row[11] = 0.0; // single precision may leave next to nothing there
        row[15] = 1.0;
        matrices[joint].Set(row);
    }
    return matrices;
}

bool AreAlike(const Math::CMatrix4& a, const Math::CMatrix4& b)
{
    double x[16];
    double y[16];
    a.Get(x);
    b.Get(y);
    double largest = 1.0;
    double difference = 0.0;
    for (int i = 0; i < 16; ++i) {
        largest = std::max({largest, std::abs(x[i]), std::abs(y[i])});
        difference = std::max(difference, std::abs(x[i] - y[i]));
    }
    return difference <= PoseTolerance * largest;
}

/// A joint has one bind pose in the host. The first skin that uses it sets it.
class BindPoses
{
public:
    explicit BindPoses(SceneBuild& build) : m_build(build) {}

    /// Sets the poses of a skin's joints that have none yet. Answers the pose that its meshes had, so that
    /// their vertices and the poses of the joints speak of one space: identity, unless a joint had another
    /// pose already.
    Math::CMatrix4 SetJoints(std::size_t index)
    {
        const Skin& skin = m_build.Source->Skins[index];
        const auto inverses = ReadInverseBindMatrices(*m_build.Source, index);
        std::optional<Math::CMatrix4> meshPose;
        for (std::size_t i = 0; i < skin.Joints.size(); ++i) {
            const XSI::X3DObject& object = m_build.Objects[skin.Joints[i]];
            if (!object.IsValid()) {
                throw SceneError("/skins/" + std::to_string(index) + "/joints/" + std::to_string(i),
                                 "The joint " + NodePath(*m_build.Source, skin.Joints[i]) +
                                     " is not in the scene that is opened.");
            }
            const auto [known, isNew] =
                m_poses.try_emplace(skin.Joints[i], PoseOf(inverses[i], skin.Joints[i]));
            if (isNew) {
                Host::SetStaticTransform(object, Math::CTransformation(known->second));
            }
            CompareMeshPose(inverses[i], known->second, index, meshPose);
        }
        return meshPose.value_or(Math::CMatrix4());
    }

private:
    Math::CMatrix4 PoseOf(Math::CMatrix4 inverse, std::size_t joint)
    {
        if (!inverse.InvertInPlace()) {
            m_build.Remarks.push_back(
                {NoteSeverity::Warning, NodePath(*m_build.Source, joint),
                 "The joint's inverse bind matrix has no inverse; it counts as identity."});
            return {};
        }
        return inverse;
    }

    /// A vertex goes through the inverse bind matrix and the joint. Where the joint's stored pose is another
    /// one, the mesh's pose makes up for it: mesh pose = inverse bind matrix * stored pose.
    void CompareMeshPose(const Math::CMatrix4& inverse, const Math::CMatrix4& pose, std::size_t skin,
                         std::optional<Math::CMatrix4>& meshPose)
    {
        Math::CMatrix4 wanted;
        wanted.Mul(inverse, pose);
        if (!meshPose) {
            meshPose = AreAlike(wanted, {}) ? Math::CMatrix4() : wanted;
        } else if (!AreAlike(*meshPose, wanted) && m_differing != skin) {
            m_differing = skin;
            m_build.Remarks.push_back(
                {NoteSeverity::Warning, "/skins/" + std::to_string(skin),
                 "The skin has other bind poses than a skin that shares its joints; its "
                 "meshes may be displaced."});
        }
    }

    SceneBuild& m_build;
    std::map<std::size_t, Math::CMatrix4> m_poses; ///< by node
    Index m_differing;
};

std::vector<Host::DeformerWeights> DeformersOf(const SceneBuild& build, const Skin& skin,
                                               std::vector<JointWeights>& weights)
{
    std::vector<Host::DeformerWeights> deformers(skin.Joints.size());
    for (std::size_t i = 0; i < skin.Joints.size(); ++i) {
        deformers[i].Deformer = build.Objects[skin.Joints[i]].GetRef();
    }
    for (JointWeights& joint : weights) {
        deformers[joint.Joint].Weights.assign(joint.Weights.begin(), joint.Weights.end());
    }
    return deformers;
}

} // namespace

void SetBindPoses(SceneBuild& build)
{
    BindPoses poses(build);
    std::map<std::size_t, Math::CMatrix4> meshPoses; // by skin
    for (auto& [node, weights] : build.Weights) {
        const std::size_t skin = *build.Source->Nodes[node].Skin;
        if (!meshPoses.contains(skin)) {
            meshPoses[skin] = poses.SetJoints(skin);
        }
        Host::SetStaticTransform(build.Objects[node], Math::CTransformation(meshPoses[skin]));
        Host::AddEnvelope(build.Objects[node], DeformersOf(build, build.Source->Skins[skin], weights));
    }
    build.Weights.clear();
}

} // namespace tq4x::gltf
