#include "environment/FinishCameras.h"
#include "core/environment/Stage.h"

#include <gtest/gtest.h>

namespace tq4x
{
namespace
{

using test::MakeCamera;
using test::Sample;
using test::Samples;

constexpr NodeTolerances Tolerances{.Scale = 0.02f, .Rotate = 0.03f, .Translate = 0.0625f};
constexpr float Magnify = 2.5f;

struct ChannelCase
{
    const char* Name;
    bool IsAngle;
    float Tolerance;
};

constexpr ChannelCase Channels[] = {
    {"sx", false, 0.02f},
    {"sy", false, 0.02f},
    {"sz", false, 0.02f},
    {"rx", true, 0.03f},
    {"ry", true, 0.03f},
    {"rz", true, 0.03f},
    {"tx", false, 0.15625f},
    {"ty", false, 0.15625f},
    {"tz", false, 0.15625f},
    {"ax", false, 0.15625f},
    {"ay", false, 0.15625f},
    {"az", false, 0.15625f},
    {"ux", false, 0.001f},
    {"uy", false, 0.001f},
    {"uz", false, 0.001f},
    {"twist", true, 0.03f},
    {"nearClipPlane", false, 0.15625f},
    {"farClipPlane", false, 0.15625f},
    {"aspect", false, 0.01f},
    {"fovy", true, 0.03f},
    {"orthoH", false, 0.15625f},
};

TEST(FinishCamera, NamesItsCurvesAndSetsTheirTolerances)
{
    Camera camera = MakeCamera("cam", CameraViewMode::Rotate, CameraProjectionMode::Perspective);
    FinishCamera(camera, true, Tolerances, Magnify, 1);
    ASSERT_EQ(std::size(Channels), camera.Curves.size());
    for (std::size_t i = 0; i < camera.Curves.size(); ++i) {
        const AnimationCurve& curve = camera.Curves[i];
        EXPECT_EQ(curve.Name, std::string("cam.") + Channels[i].Name);
        EXPECT_EQ(curve.IsAngle, Channels[i].IsAngle) << curve.Name;
        EXPECT_EQ(curve.Tolerance, Channels[i].Tolerance) << curve.Name;
        EXPECT_TRUE(curve.IsLoop) << curve.Name;
        EXPECT_TRUE(curve.IsConstant) << curve.Name;
        EXPECT_FALSE(curve.NeedsOutput) << curve.Name;
    }
    EXPECT_FALSE(HasAnimation(camera));
}

/// The static values in the order of the curves.
std::vector<float*> StaticValues(Camera& camera)
{
    std::vector<float*> values;
    for (Vector3* vector :
         {&camera.Scale, &camera.Rotate, &camera.Translate, &camera.TargetPosition, &camera.UpwardVector})
        for (float* component : {&vector->X, &vector->Y, &vector->Z})
            values.push_back(component);
    for (float* value :
         {&camera.Twist, &camera.Near, &camera.Far, &camera.AspectRatio, &camera.Fovy, &camera.Height})
        values.push_back(value);
    return values;
}

TEST(FinishCamera, SnapsStaticValuesThatAreNearlyZero)
{
    Camera camera;
    for (float* value : StaticValues(camera))
        *value = -9e-7f;
    camera.Translate.Y = 1e-6f; // the edge is not inside
    camera.CenterX = 9e-7f;     // feeds no curve
    FinishCamera(camera, false, Tolerances, Magnify, 1);
    for (float* value : StaticValues(camera)) {
        if (value != &camera.Translate.Y) {
            EXPECT_EQ(*value, 0.0f);
            EXPECT_FALSE(std::signbit(*value));
        }
    }
    EXPECT_EQ(camera.Translate.Y, 1e-6f);
    EXPECT_EQ(camera.CenterX, 9e-7f);
}

TEST(FinishCamera, ComparesEachCurveWithItsStaticValue)
{
    for (std::size_t i = 0; i < CameraCurve::Count; ++i) {
        Camera camera;
        for (float* value : StaticValues(camera))
            *value = 7.0f;
        *StaticValues(camera)[i] = 3.0f;
        for (AnimationCurve& curve : camera.Curves)
            curve.Samples = {3.0f, 3.0f};
        FinishCamera(camera, false, Tolerances, Magnify, 1);
        for (std::size_t k = 0; k < CameraCurve::Count; ++k)
            EXPECT_EQ(camera.Curves[k].NeedsOutput, k != i) << i << " " << k;
    }
}

/// The flag that each curve raises when it moves; nothing for those that count by themselves.
const bool Camera::*FlagOf(std::size_t curve)
{
    const bool Camera::*const flags[] = {&Camera::IsScaleAnimated, &Camera::IsRotateAnimated,
                                         &Camera::IsTranslateAnimated, &Camera::IsTargetAnimated,
                                         &Camera::IsUpwardAnimated};
    return curve < 15 ? flags[curve / 3] : nullptr;
}

TEST(FinishCamera, RaisesTheFlagOfWhatMovesAndBuildsItsKeys)
{
    for (std::size_t i = 0; i < CameraCurve::Count; ++i) {
        Camera camera;
        Sample(camera, i, {0.0f, 1.0f, 2.0f});
        FinishCamera(camera, false, Tolerances, Magnify, 2);
        for (std::size_t k = 0; k < CameraCurve::Count; ++k)
            EXPECT_EQ(camera.Curves[k].Keys.size(), k == i ? 2u : 0u) << i << " " << k;
        EXPECT_EQ(camera.Curves[i].Keys.back(), (CurveKey{1.0f, 2.0f, KeyKind::Hermite, 2.0f, 2.0f}));
        for (std::size_t k = 0; k < 15; k += 3)
            EXPECT_EQ(camera.*FlagOf(k), k == i / 3 * 3) << i << " " << k;
        EXPECT_TRUE(HasAnimation(camera)) << i;
    }
}

TEST(FinishCamera, CountsAConstantOfTheLastSixButNotOfAGroup)
{
    for (std::size_t i = 0; i < CameraCurve::Count; ++i) {
        Camera camera;
        Sample(camera, i, {5.0f, 5.0f});
        FinishCamera(camera, false, Tolerances, Magnify, 1);
        EXPECT_TRUE(camera.Curves[i].NeedsOutput) << i;
        EXPECT_TRUE(camera.Curves[i].Keys.empty()) << i;
        EXPECT_EQ(HasAnimation(camera), i >= 15) << i;
    }
}

TEST(FinishCamera, IsAnimatedByPlanesThatDifferFromItsAspect)
{
    Camera camera = MakeCamera("cam", CameraViewMode::Rotate, CameraProjectionMode::Perspective);
    test::Rest(camera, CameraCurve::AspectRatio, {1.5f});
    FinishCamera(camera, false, Tolerances, 1.0f, 1);
    EXPECT_FALSE(HasAnimation(camera));
    test::Rest(camera, CameraCurve::AspectRatio, {1.3333f});
    FinishCamera(camera, false, Tolerances, 1.0f, 1);
    EXPECT_TRUE(HasAnimation(camera));
}

TEST(FinishCamera, ScalesTheToleranceOfLengths)
{
    const Samples samples = {0.0f, 0.09f};
    for (const auto& [magnify, isConstant] : {std::pair{1.0f, false}, {2.5f, true}}) {
        Camera camera;
        Sample(camera, CameraCurve::Translate, samples);
        Sample(camera, CameraCurve::Scale, samples);
        FinishCamera(camera, false, Tolerances, magnify, 1);
        EXPECT_EQ(camera.Curves[CameraCurve::Translate].IsConstant, isConstant) << magnify;
        EXPECT_FALSE(camera.Curves[CameraCurve::Scale].IsConstant) << magnify;
    }
}

TEST(FinishCamera, KeepsTheSamplesOfItsRotationAndUnwrapsTheKeys)
{
    const Samples samples = {170.0f, 179.0f, -179.0f, -170.0f};
    for (const std::size_t curve : {CameraCurve::Rotate, CameraCurve::Rotate + 1, CameraCurve::Rotate + 2,
                                    CameraCurve::Twist, CameraCurve::Fovy}) {
        Camera camera;
        Sample(camera, curve, samples);
        FinishCamera(camera, false, Tolerances, 1.0f, 1);
        EXPECT_EQ(camera.Curves[curve].Samples, samples);
        EXPECT_EQ(camera.Curves[curve].SavedSamples, curve < 6 ? samples : Samples());
        EXPECT_EQ(camera.Curves[curve].Keys.front().Value, 170.0f);
        EXPECT_EQ(camera.Curves[curve].Keys.back().Value, 190.0f);
    }
}

/// The same orientation in two forms, which the filter of a light's rotation would take for one.
TEST(FinishCamera, DoesNotFilterItsRotation)
{
    Camera camera;
    Sample(camera, CameraCurve::Rotate, {0.0f, 180.0f});
    Sample(camera, CameraCurve::Rotate + 1, {80.0f, 100.0f});
    Sample(camera, CameraCurve::Rotate + 2, {0.0f, 180.0f});
    FinishCamera(camera, false, Tolerances, 1.0f, 1);
    EXPECT_EQ(camera.Curves[CameraCurve::Rotate].Keys.back().Value, 180.0f);
    EXPECT_EQ(camera.Curves[CameraCurve::Rotate + 1].Keys.back().Value, 100.0f);
}

TEST(FinishCameras, KeepsFrameSizeAndLoopInTheSet)
{
    CameraSet set;
    set.Magnify = 10.0f;
    set.Add() = MakeCamera("a", CameraViewMode::Rotate, CameraProjectionMode::Perspective);
    Sample(set.Add() = MakeCamera("b", CameraViewMode::AimTarget, CameraProjectionMode::Ortho),
           CameraCurve::Translate, {0.0f, 0.3f});
    FinishCameras(set, 24, true, Tolerances, 1);
    EXPECT_EQ(set.FrameSize, 24);
    EXPECT_TRUE(set.IsLoop);
    EXPECT_EQ(set.Cameras[1].Curves[CameraCurve::Translate].Tolerance, 0.625f);
    EXPECT_TRUE(set.Cameras[1].Curves[CameraCurve::Translate].IsConstant) << "within the scaled tolerance";
    EXPECT_EQ(set.Cameras[0].Curves[0].Name, "a.sx");
}

} // namespace
} // namespace tq4x
