#include <numbers>
#include <random>

#include "reader/RoundTrip.h"
#include "scene/ExtractChannels.h"

namespace tq4x
{
namespace
{

using test::PrintError;
using test::WrittenScene;

constexpr double RadiansPerDegree = std::numbers::pi / 180.0;

float Draw(std::mt19937& random, float low, float high)
{
    return std::uniform_real_distribution<float>(low, high)(random);
}

/// A bone's path: sine waves of a few frames on some channels, rest on the others.
class RandomMotion
{
public:
    explicit RandomMotion(std::mt19937& random)
    {
        for (std::size_t i = 0; i < 9; ++i) {
            const bool isMoving = random() % 3 == 0;
            const float reach = i < 3 ? 0.4F : i < 6 ? 30.0F : 5.0F;
            m_waves[i] = {Draw(random, -reach, reach), isMoving ? Draw(random, 0, reach) : 0.0F,
                          Draw(random, 0.05F, 0.9F), Draw(random, 0, 6)};
        }
    }

    Matrix44 At(int frame) const
    {
        TransformParts parts;
        parts.Scale = {1 + Wave(0, frame), 1 + Wave(1, frame), 1 + Wave(2, frame)};
        parts.Rotate = {Wave(3, frame), Wave(4, frame), Wave(5, frame)};
        parts.Translate = {Wave(6, frame), Wave(7, frame), Wave(8, frame)};
        return ComposeMatrix(parts);
    }

private:
    struct Channel
    {
        float Rest = 0;
        float Reach = 0;
        float Speed = 0;
        float Phase = 0;
    };

    float Wave(std::size_t channel, int frame) const
    {
        const Channel& wave = m_waves[channel];
        return wave.Rest + wave.Reach * std::sin(wave.Speed * static_cast<float>(frame) + wave.Phase);
    }

    std::array<Channel, 9> m_waves;
};

Matrix44 MatrixOf(const reader::Transform& local)
{
    TransformParts parts;
    parts.Scale = {local.Scale[0], local.Scale[1], local.Scale[2]};
    const auto degrees = [&](std::size_t axis) {
        return static_cast<float>(static_cast<double>(local.Rotate[axis]) / RadiansPerDegree);
    };
    parts.Rotate = {degrees(0), degrees(1), degrees(2)};
    parts.Translate = {local.Translate[0], local.Translate[1], local.Translate[2]};
    return ComposeMatrix(parts);
}

/// What printing takes from a curve between its keys: from the values and, over the length of a segment, from
/// the slopes; both slopes weigh 4/27 of the length at most.
double CurvePrintError(const std::optional<reader::Curve>& curve)
{
    double worst = 0;
    for (std::size_t i = 0; curve && i < curve->Keys.size(); ++i) {
        const reader::Key& key = curve->Keys[i];
        const double length = i == 0 ? 0.0 : static_cast<double>(key.Frame - curve->Keys[i - 1].Frame);
        const double slopes = PrintError(static_cast<double>(key.InSlope)) +
                              PrintError(static_cast<double>(i == 0 ? 0.0F : curve->Keys[i - 1].OutSlope));
        worst = std::max(worst, PrintError(static_cast<double>(key.Value)) + 4.0 / 27.0 * length * slopes);
    }
    return worst;
}

double TriplePrintError(const reader::MemberAnimation* member,
                        reader::CurveTriple reader::MemberAnimation::*group)
{
    double worst = 0;
    for (std::size_t axis = 0; member != nullptr && axis < 3; ++axis)
        worst = std::max(worst, CurvePrintError((member->*group)[axis]));
    return worst;
}

struct Bounds
{
    double Linear = 0;    ///< of the upper 3 x 3
    double Translate = 0; ///< of the row of translation
};

/// A scale may be off by its tolerance and by what printing takes, an angle likewise; each angle moves a row
/// by its size at most, and rows are as long as the scale. Scales here stay below 2.
Bounds BoundsOf(const reader::MemberAnimation* member, const NodeTolerances& tolerances, float magnify)
{
    constexpr double LargestScale = 2.0;
    constexpr double Single = 1e-5; // composing and decomposing in single precision
    const double scale = static_cast<double>(tolerances.Scale) + PrintError(LargestScale) +
                         TriplePrintError(member, &reader::MemberAnimation::Scale);
    const double rotate = static_cast<double>(tolerances.Rotate) * RadiansPerDegree + PrintError(6.3) +
                          TriplePrintError(member, &reader::MemberAnimation::Rotate);
    const double translate = static_cast<double>(tolerances.Translate) * static_cast<double>(magnify) +
                             PrintError(10.0 * static_cast<double>(magnify)) +
                             TriplePrintError(member, &reader::MemberAnimation::Translate);
    return {scale + 3 * LargestScale * rotate + Single, translate + Single * static_cast<double>(magnify)};
}

/// The largest part of a bound that a frame uses.
double Compare(const Matrix44& written, const Matrix44& read, const Bounds& bounds, float magnify)
{
    double worst = 0;
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            const double factor = row == 3 ? static_cast<double>(magnify) : 1.0;
            const double deviation = std::abs(static_cast<double>(read(row, column)) -
                                              factor * static_cast<double>(written(row, column)));
            worst = std::max(worst, deviation / (row == 3 ? bounds.Translate : bounds.Linear));
        }
    }
    return worst;
}

TEST(RoundTripAnimation, EveryFrameOfRandomSkeletonsIsWithinTheTolerances)
{
    constexpr int Frames = 60;
    double worst = 0;
    for (std::uint32_t seed = 1; seed <= 12; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const float magnify = seed % 2 == 0 ? 1.0F : 20.0F;
        WrittenScene scene;
        scene.Options.OutputQmdl = scene.Options.OutputQskla = true;
        scene.Options.Magnify = magnify;
        scene.Values.ExportEndFrame = Frames;
        scene.Values.Tolerances = {0.002F, 0.05F, 0.01F};
        std::vector<Bone*> bones = {scene.Content.Root.get()};
        std::map<std::string, RandomMotion> motions;
        for (int i = 0; i < 10; ++i) {
            Bone& bone = scene.AddBone("bone" + std::to_string(i), *bones[random() % bones.size()]);
            bones.push_back(&bone);
            const RandomMotion motion(random);
            for (int frame = 0; frame <= Frames; ++frame)
                frame == 0 ? void(bone.TransformSamples[0] = motion.At(0))
                           : SetSample(bone, frame, motion.At(frame));
            ExtractChannels(bone, {scene.Values.Tolerances, 1});
            motions.emplace(bone.Name, motion);
        }
        ASSERT_NO_FATAL_FAILURE(scene.Write());
        const reader::Document document = scene.Read("scene.qskla");
        ASSERT_TRUE(document.SkeletalAnimation);
        const reader::SkeletalAnimation& animation = *document.SkeletalAnimation;
        ASSERT_EQ(animation.Bones.Bones.size(), 11U);
        EXPECT_EQ(animation.Head.FrameSize, Frames);
        for (std::size_t i = 1; i < animation.Bones.Bones.size(); ++i) {
            const std::string& name = animation.Bones.Bones[i].Name;
            const Bounds bounds =
                BoundsOf(reader::FindBoneMember(animation, name), scene.Values.Tolerances, magnify);
            for (int frame = 0; frame <= Frames; ++frame) {
                const reader::Transform local = reader::EvaluateBone(animation, i, static_cast<float>(frame));
                const double deviation =
                    Compare(motions.at(name).At(frame), MatrixOf(local), bounds, magnify);
                EXPECT_LE(deviation, 1.0) << name << " at frame " << frame;
                worst = std::max(worst, deviation);
            }
        }
    }
    EXPECT_GT(worst, 0.05); // else the bound says nothing
    RecordProperty("worst", std::to_string(worst));
}

TEST(RoundTripAnimation, ParentsOfRandomTreesReadBack)
{
    for (std::uint32_t seed = 1; seed <= 8; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        WrittenScene scene;
        scene.Options.OutputQmdl = true;
        std::vector<Bone*> bones = {scene.Content.Root.get()};
        for (int i = 0; i < 50; ++i)
            bones.push_back(&scene.AddBone("bone" + std::to_string(i), *bones[random() % bones.size()]));
        ASSERT_NO_FATAL_FAILURE(scene.Write());
        const reader::Document document = scene.Read("scene.qmdl");
        const std::vector<reader::Bone>& read = document.Model->Bones.Bones;
        ASSERT_EQ(read.size(), scene.Content.Model.Bones.size());
        for (std::size_t i = 0; i < read.size(); ++i) {
            const Bone& written = *scene.Content.Model.Bones[i];
            EXPECT_EQ(read[i].Name, written.Name);
            EXPECT_EQ(read[i].Parent, written.Parent == nullptr ? -1 : written.Parent->BoneIndex);
        }
    }
}

TEST(RoundTripAnimation, CamerasAndLightsReadBack)
{
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        WrittenScene scene;
        scene.Options.OutputQenv = true;
        Camera& camera = scene.Cameras.Add();
        camera.Name = "eye";
        camera.ViewMode = static_cast<CameraViewMode>(seed % 3);
        camera.ProjectionMode = static_cast<CameraProjectionMode>(seed % 2);
        camera.Translate = {Draw(random, -1e3F, 1e3F), Draw(random, -1, 1), Draw(random, -1e-3F, 1e-3F)};
        camera.Rotate = {Draw(random, -180, 180), Draw(random, -90, 90), Draw(random, -180, 180)};
        camera.TargetPosition = {Draw(random, -9, 9), Draw(random, -9, 9), Draw(random, -9, 9)};
        camera.UpwardVector = {Draw(random, -1, 1), Draw(random, -1, 1), Draw(random, -1, 1)};
        camera.Twist = Draw(random, -180, 180);
        camera.Near = Draw(random, 0.01F, 1);
        camera.Far = Draw(random, 10, 1e5F);
        camera.AspectRatio = Draw(random, 0.5F, 2);
        camera.Fovy = Draw(random, 5, 120);
        camera.Height = Draw(random, 1, 100);
        ASSERT_NO_FATAL_FAILURE(scene.Write());
        const reader::Document document = scene.Read("scene.qenv");
        ASSERT_EQ(document.Stage.Cameras.size(), 1U);
        const reader::Camera& read = document.Stage.Cameras[0];
        const auto near = [](float actual, double expected) {
            EXPECT_NEAR(static_cast<double>(actual), expected,
                        PrintError(expected) + 3e-7 * std::abs(expected));
        };
        const auto radians = [](float degrees) { return static_cast<double>(degrees) * RadiansPerDegree; };
        near(read.Local.Translate[0], static_cast<double>(camera.Translate.X));
        near(read.Local.Translate[2], static_cast<double>(camera.Translate.Z));
        near(read.Near, static_cast<double>(camera.Near));
        near(read.Far, static_cast<double>(camera.Far));
        near(read.AspectRatio, static_cast<double>(camera.AspectRatio));
        EXPECT_EQ(read.IsOrtho, camera.ProjectionMode == CameraProjectionMode::Ortho);
        if (read.IsOrtho)
            near(read.Height, static_cast<double>(camera.Height));
        else
            near(read.Fovy, radians(camera.Fovy));
        if (camera.ViewMode == CameraViewMode::Rotate)
            near(read.ViewRotate[1], radians(camera.Rotate.Y));
        else
            near(read.TargetPosition[2], static_cast<double>(camera.TargetPosition.Z));
        if (camera.ViewMode == CameraViewMode::AimTarget)
            near(read.Twist, radians(camera.Twist));
        if (camera.ViewMode == CameraViewMode::LookAtTarget)
            near(read.UpwardVector[0], static_cast<double>(camera.UpwardVector.X));
    }
}

} // namespace
} // namespace tq4x
