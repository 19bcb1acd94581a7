#include "app/material/GltfExport.h"

#include "ReadAnimation.h"

#include <xsi_model.h>
#include <xsi_x3dobject.h>

#include <array>
#include <cmath>
#include <map>

namespace tq4x::test
{
namespace
{

namespace fs = std::filesystem;

const fs::path Samples = fs::path(TQ4X_SAMPLES) / "gltf";

// Smaller than the defaults, so that a reduction that goes wrong shows.
constexpr double ScaleTolerance = 0.001;
constexpr double RotateTolerance = 0.01; // degrees
constexpr double TranslateTolerance = 0.001;

using Rows = std::array<std::array<double, 3>, 4>;

/// The rows of the matrix for row vectors: scale, then turns about X, Y, Z (radians), then translation.
Rows Compose(const reader::Transform& t)
{
    const double sx = std::sin(t.Rotate[0]), cx = std::cos(t.Rotate[0]);
    const double sy = std::sin(t.Rotate[1]), cy = std::cos(t.Rotate[1]);
    const double sz = std::sin(t.Rotate[2]), cz = std::cos(t.Rotate[2]);
    Rows rows = {{{cy * cz, cy * sz, -sy},
                  {sy * sx * cz - cx * sz, sy * sx * sz + cz * cx, cy * sx},
                  {cx * sy * cz + sz * sx, cx * sy * sz - cz * sx, cy * cx},
                  {t.Translate[0], t.Translate[1], t.Translate[2]}}};
    for (std::size_t row = 0; row < 3; ++row)
        for (double& element : rows[row])
            element *= t.Scale[row];
    return rows;
}

/// All objects of the scene by name; objects that share a name are left out.
std::map<std::string, XSI::X3DObject> ObjectsByName()
{
    std::map<std::string, XSI::X3DObject> objects;
    std::map<std::string, int> uses;
    std::vector<XSI::CRef> pending = {XSI::Application().GetActiveSceneRoot().GetRef()};
    while (!pending.empty()) {
        const XSI::X3DObject object(pending.back());
        pending.pop_back();
        const std::string name = object.GetName().GetAsciiString();
        objects[name] = object;
        ++uses[name];
        const XSI::CRefArray children = object.GetChildren();
        for (LONG i = 0; i < children.GetCount(); ++i)
            pending.push_back(children[i]);
    }
    std::erase_if(objects, [&](const auto& entry) { return uses[entry.first] > 1; });
    return objects;
}

/// How far the written pose is from the scene's, as a part of what the tolerances allow: 1 is the limit.
double Deviation(const Rows& written, const XSI::MATH::CMatrix4& scene)
{
    constexpr double radians = RotateTolerance * 3.14159265358979323846 / 180.0;
    constexpr double printed = 2e-5; // six digits, and single precision on the way
    double worst = 0.0;
    for (int row = 0; row < 4; ++row) {
        double length = 0.0;
        for (int column = 0; column < 3; ++column)
            length += std::abs(scene.GetValue(row, column));
        // Each of three angles may be off by the tolerance, and turns the whole row.
        const double limit = row < 3 ? ScaleTolerance + 3.0 * radians * length : TranslateTolerance;
        for (int column = 0; column < 3; ++column) {
            const double difference =
                std::abs(written[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] -
                         scene.GetValue(row, column));
            worst = std::max(worst, difference / (limit + printed * (1.0 + length)));
        }
    }
    return worst;
}

class SampleAnimation : public testing::TestWithParam<const char*>
{};

TEST_P(SampleAnimation, KeysGiveTheSampledPosesAtEveryFrame)
{
    const fs::path scene = Samples / GetParam();
    if (!fs::exists(scene))
        GTEST_SKIP() << "NOT RUN: the sample scenes are absent; they are looked for in " << Samples;
    const GltfExport exported(scene, {},
                              {"OutputQskla:true", "OutputQtex:false", "ToleranceScale:0.001",
                               "ToleranceRotate:0.01", "ToleranceTranslate:0.001"});
    const reader::Document document = exported.Read("out.qskla");
    ASSERT_TRUE(document.SkeletalAnimation.has_value());
    const reader::SkeletalAnimation& animation = *document.SkeletalAnimation;
    const std::map<std::string, XSI::X3DObject> objects = ObjectsByName();
    std::size_t compared = 0;
    for (std::size_t i = 0; i < animation.Bones.Bones.size(); ++i) {
        const std::string& name = animation.Bones.Bones[i].Name;
        const auto object = objects.find(name);
        if (object == objects.end() || reader::FindBoneMember(animation, name) == nullptr)
            continue;
        const XSI::KinematicState local = object->second.GetKinematics().GetLocal();
        for (int frame = 0; frame <= animation.Head.FrameSize; ++frame) {
            const reader::Transform pose = reader::EvaluateBone(animation, i, static_cast<float>(frame));
            const XSI::MATH::CMatrix4 wanted = local.GetTransform(animation.StartFrame + frame).GetMatrix4();
            ASSERT_LE(Deviation(Compose(pose), wanted), 1.0) << name << " at frame " << frame;
            ++compared;
        }
    }
    EXPECT_GT(compared, 0u);
}

INSTANTIATE_TEST_SUITE_P(Scenes, SampleAnimation,
                         testing::Values("Fox/Fox.glb", "CesiumMan/CesiumMan.glb", "Knight/Knight.glb",
                                         "CesiumMilkTruck/CesiumMilkTruck.glb",
                                         "InterpolationTest/InterpolationTest.glb",
                                         "RecursiveSkeletons/RecursiveSkeletons.glb"));

} // namespace
} // namespace tq4x::test
