#include "environment/CameraMath.h"
#include "math/Matrix44.h"
#include "support/CollectRun.h"

#include <cmath>
#include <limits>
#include <random>

namespace tq4x::test
{
namespace
{

using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;
using testing::FloatNear;
using testing::IsEmpty;
using testing::SizeIs;
using XSI::MATH::CTransformation;

constexpr double Infinite = std::numeric_limits<double>::infinity();

/// What became of the camera "camera", which must be there.
const Camera& CameraOf(const CollectRun& run)
{
    static const Camera none;
    const Camera* camera = run.FindCamera("camera");
    EXPECT_NE(camera, nullptr);
    return camera != nullptr ? *camera : none;
}

const std::vector<float>& Samples(const Camera& camera, std::size_t curve)
{
    return camera.Curves[curve].Samples;
}

void ExpectNear(const Vector3& actual, const Vector3& expected, float bound = 1e-5f)
{
    EXPECT_NEAR(actual.X, expected.X, bound);
    EXPECT_NEAR(actual.Y, expected.Y, bound);
    EXPECT_NEAR(actual.Z, expected.Z, bound);
}

TEST(CameraCollector, AFreeCameraTurnsByItsRotation)
{
    SceneBuilder scene;
    scene.Frames(0, 1);
    const SceneNode parent = scene.Null("parent").At(10, 0, 0);
    scene.Camera("camera", parent).Turned(10, 20, 30).Moving({{0, 1}, {1, 2}}).Growing({{0, 1}, {1, 3}});
    const CollectRun run({"Magnify:2"});
    const Camera& camera = CameraOf(run);
    EXPECT_EQ(camera.ViewMode, CameraViewMode::Rotate);
    ExpectNear(camera.Translate, {22, 0, 0});
    ExpectNear(camera.Scale, {1, 1, 1});
    ExpectNear(camera.Rotate, {10, 20, 30});
    EXPECT_THAT(Samples(camera, CameraCurve::Translate), ElementsAre(22, 24));
    EXPECT_THAT(Samples(camera, CameraCurve::Scale), ElementsAre(FloatNear(1, 1e-5f), FloatNear(3, 1e-5f)));
    EXPECT_THAT(Samples(camera, CameraCurve::Rotate + 2), Each(FloatNear(30, 1e-4f)));
    for (std::size_t curve = CameraCurve::TargetPosition; curve <= CameraCurve::Twist; ++curve)
        EXPECT_THAT(Samples(camera, curve), IsEmpty()) << curve;
    EXPECT_THAT(run.Messages(), IsEmpty());
}

TEST(CameraCollector, ATargetMakesItAim)
{
    SceneBuilder scene;
    scene.Frames(1, 2);
    const SceneNode target = scene.Null("target").Moving({{0, 0}, {10, 10}});
    const SceneNode camera = scene.Camera("camera").At(0, 0, 5).AimedAt(target);
    const XSI::Constraint constraint(camera.Object().GetKinematics().GetConstraints()[0]);
    XSI::Host::SetCurve(constraint.GetParameter("roll"), {{{0, 0}, {10, 100}}});
    scene.Host().CurrentFrame = 7.0;
    const CollectRun run({"Magnify:10"});
    const Camera& record = CameraOf(run);
    EXPECT_EQ(record.ViewMode, CameraViewMode::AimTarget);
    EXPECT_EQ(record.TargetPosition, (Vector3{10, 0, 0}));
    EXPECT_EQ(record.Twist, 70) << "at the current time, not at the first frame";
    EXPECT_THAT(Samples(record, CameraCurve::TargetPosition), ElementsAre(10, 20));
    EXPECT_THAT(Samples(record, CameraCurve::Twist), ElementsAre(10, 20)) << "raw degrees";
    EXPECT_EQ(record.Rotate, Vector3{});
    for (const std::size_t first : {CameraCurve::Rotate, CameraCurve::UpwardVector})
        for (std::size_t axis = 0; axis < 3; ++axis)
            EXPECT_THAT(Samples(record, first + axis), IsEmpty());
}

TEST(CameraCollector, ATargetAndAnUpObjectMakeItLook)
{
    SceneBuilder scene;
    scene.Frames(1, 2);
    const SceneNode target = scene.Null("target");
    const SceneNode up = scene.Null("up").At(0, 3, 2);
    const SceneNode camera = scene.Camera("camera").At(0, 0, 5).AimedAt(target, up);
    const XSI::Constraint constraint(camera.Object().GetKinematics().GetConstraints()[0]);
    XSI::Host::SetCurve(constraint.GetParameter("roll"), {{{0, -90}, {1, 0}, {2, 90}}});
    scene.Host().CurrentFrame = 2.0;
    const CollectRun run({"Magnify:10"});
    const Camera& record = CameraOf(run);
    EXPECT_EQ(record.ViewMode, CameraViewMode::LookAtTarget);
    EXPECT_EQ(record.TargetPosition, Vector3{});
    ExpectNear(record.UpwardVector, {-1, 0, 0}); // rolled by 90 degrees: the roll of now
    EXPECT_THAT(Samples(record, CameraCurve::UpwardVector),
                ElementsAre(FloatNear(0, 1e-6f), FloatNear(-1, 1e-6f)));
    EXPECT_THAT(Samples(record, CameraCurve::UpwardVector + 1),
                ElementsAre(FloatNear(1, 1e-6f), FloatNear(0, 1e-6f)));
    EXPECT_THAT(Samples(record, CameraCurve::Twist), IsEmpty());
    EXPECT_THAT(Samples(record, CameraCurve::Rotate), IsEmpty());
}

TEST(CameraCollector, AllChannelsAreOfOneLengthWhateverTheStep)
{
    const struct
    {
        const char* Precision;
        std::size_t Samples;
    } rows[] = {
        {"FramePrecision:1", 3},
        {"FramePrecision:0.5", 5},
        {"FramePrecision:0.3", 7},  // 0 to 1.8
        {"FramePrecision:0.1", 20}, // the float step is above 0.1: the last frame is missed
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Precision);
        SceneBuilder scene;
        scene.Frames(0, 2);
        const SceneNode target = scene.Null("target").Moving({{0, 0}, {2, 2}});
        const SceneNode up = scene.Null("up").At(0, 3, 2);
        scene.Camera("free").Moving({{0, 1}, {2, 2}});
        scene.Camera("aiming").At(0, 0, 5).AimedAt(target);
        scene.Camera("looking").At(0, 0, 5).AimedAt(target, up);
        scene.Camera("flat").Set("proj", 0);
        const CollectRun run({row.Precision});
        for (const char* name : {"free", "aiming", "looking", "flat"}) {
            const Camera* camera = run.FindCamera(name);
            ASSERT_NE(camera, nullptr);
            EXPECT_THAT(Samples(*camera, CameraCurve::Translate), SizeIs(row.Samples)) << name;
            for (std::size_t curve = 0; curve < CameraCurve::Count; ++curve)
                EXPECT_THAT(Samples(*camera, curve), AnyOf(IsEmpty(), SizeIs(row.Samples))) << name << curve;
        }
    }
}

TEST(CameraCollector, TheFirstConstraintThatTellsSomethingDecides)
{
    using Tie = void (*)(SceneNode & camera, const SceneNode& target, const SceneNode& up);

    const struct
    {
        const char* Name;
        Tie Constrain;
        CameraViewMode Mode;
    } rows[] = {
        {"no constraint", [](SceneNode&, const SceneNode&, const SceneNode&) {}, CameraViewMode::Rotate},
        {"a target",
         [](SceneNode& camera, const SceneNode& target, const SceneNode&) { camera.AimedAt(target); },
         CameraViewMode::AimTarget},
        {"both",
         [](SceneNode& camera, const SceneNode& target, const SceneNode& up) { camera.AimedAt(target, up); },
         CameraViewMode::LookAtTarget},
        {"an up object alone ends the search",
         [](SceneNode& camera, const SceneNode& target, const SceneNode& up) {
             XSI::Host::AddConstraint(camera, {}, up);
             camera.AimedAt(target, up);
         },
         CameraViewMode::Rotate},
        {"a constraint that tells nothing is passed over",
         [](SceneNode& camera, const SceneNode& target, const SceneNode&) {
             XSI::Host::AddConstraint(camera, {});
             XSI::Host::AddConstraint(camera, {XSI::CRef()});
             camera.AimedAt(target);
         },
         CameraViewMode::AimTarget},
        {"the first target that is one",
         [](SceneNode& camera, const SceneNode& target, const SceneNode&) {
             XSI::Host::AddConstraint(camera, {XSI::CRef(), target});
         },
         CameraViewMode::AimTarget},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        SceneBuilder scene;
        const SceneNode target = scene.Null("target").At(1, 2, 3);
        const SceneNode up = scene.Null("up").At(0, 9, 0);
        SceneNode camera = scene.Camera("camera").At(0, 0, 5);
        row.Constrain(camera, target, up);
        const CollectRun run;
        EXPECT_EQ(CameraOf(run).ViewMode, row.Mode);
        const bool hasTarget = row.Mode != CameraViewMode::Rotate;
        EXPECT_EQ(CameraOf(run).TargetPosition, (hasTarget ? Vector3{1, 2, 3} : Vector3{}));
    }
}

TEST(CameraProjection, PerspectiveHasAFieldOfViewAndNoHeight)
{
    SceneBuilder scene;
    scene.Frames(1, 2);
    scene.Camera("camera")
        .Set("fov", 60.0)
        .Set("near", 0.5)
        .Set("far", 100.0)
        .Animate("near", {{1, 0.5}, {2, 1.0}});
    const CollectRun run({"Magnify:10"});
    const Camera& camera = CameraOf(run);
    EXPECT_EQ(camera.ProjectionMode, CameraProjectionMode::Perspective);
    EXPECT_EQ(camera.Fovy, 60);
    EXPECT_EQ(camera.Height, 0);
    EXPECT_EQ(camera.Near, 5);
    EXPECT_EQ(camera.Far, 1000);
    EXPECT_FLOAT_EQ(camera.AspectRatio, 4.0f / 3.0f);
    EXPECT_THAT(Samples(camera, CameraCurve::Near), ElementsAre(5, 10));
    EXPECT_THAT(Samples(camera, CameraCurve::Far), ElementsAre(1000, 1000));
    EXPECT_THAT(Samples(camera, CameraCurve::Fovy), ElementsAre(60, 60));
    EXPECT_THAT(Samples(camera, CameraCurve::Height), IsEmpty());
    EXPECT_THAT(Samples(camera, CameraCurve::AspectRatio), SizeIs(2));
}

TEST(CameraProjection, OrthographicHasAHeightAndNoFieldOfView)
{
    SceneBuilder scene;
    scene.Frames(0, 1);
    scene.Camera("camera").Set("proj", 0).Animate("orthoheight", {{0, 2}, {1, 4}});
    const CollectRun run({"Magnify:10"});
    const Camera& camera = CameraOf(run);
    EXPECT_EQ(camera.ProjectionMode, CameraProjectionMode::Ortho);
    EXPECT_EQ(static_cast<int>(camera.ProjectionMode), 1);
    EXPECT_EQ(camera.Height, 20);
    EXPECT_EQ(camera.Fovy, 0);
    EXPECT_EQ(camera.CenterX, 0);
    EXPECT_THAT(Samples(camera, CameraCurve::Height), ElementsAre(20, 40));
    EXPECT_THAT(Samples(camera, CameraCurve::Fovy), IsEmpty());
}

TEST(CameraProjection, IsReadAtTheFirstFrameAlone)
{
    SceneBuilder scene;
    scene.Frames(0, 2);
    scene.Camera("camera").Animate("proj", {{0, 1}, {1, 0}});
    const CollectRun run;
    const Camera& camera = CameraOf(run);
    EXPECT_EQ(camera.ProjectionMode, CameraProjectionMode::Perspective);
    EXPECT_THAT(Samples(camera, CameraCurve::Fovy), SizeIs(3));
    EXPECT_THAT(Samples(camera, CameraCurve::Height), IsEmpty());
}

TEST(CameraProjection, AspectIsAParameterAndItsSamplesThePlanes)
{
    SceneBuilder scene;
    scene.Frames(0, 1);
    scene.Camera("camera")
        .Set("aspect", 1.5)
        .Set("projplanewidth", 4.0)
        .Animate("projplaneheight", {{0, 2}, {1, 1}});
    const CollectRun run;
    EXPECT_EQ(CameraOf(run).AspectRatio, 1.5f);
    EXPECT_THAT(Samples(CameraOf(run), CameraCurve::AspectRatio), ElementsAre(2, 4));
}

TEST(CameraProjection, HorizontalFieldsOfViewAreConverted)
{
    const struct
    {
        const char* Name;
        int Type;
        double Aspect, Width, Height;
        float Static, Sample;
    } rows[] = {
        {"vertical", 0, 2, 4, 2, 90, 90},
        {"horizontal", 1, 2, 4, 2, 53.1301f, 53.1301f},
        {"other types are taken as they are", 2, 2, 4, 2, 90, 90},
        {"by the plane in samples, by the parameter else", 1, 1, 4, 2, 90, 53.1301f},
        {"no width", 1, 2, 0, 2, 53.1301f, 0},
        {"negative", 1, -2, -4, 2, 0, 0},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        SceneBuilder scene;
        scene.Frames(0, 0);
        scene.Camera("camera")
            .Set("fov", 90.0)
            .Set("fovtype", row.Type)
            .Set("aspect", row.Aspect)
            .Set("projplanewidth", row.Width)
            .Set("projplaneheight", row.Height);
        const CollectRun run;
        EXPECT_NEAR(CameraOf(run).Fovy, row.Static, 1e-4f);
        EXPECT_THAT(Samples(CameraOf(run), CameraCurve::Fovy), ElementsAre(FloatNear(row.Sample, 1e-4f)));
    }
}

TEST(CameraProjection, AnAnimatedFieldOfViewIsConvertedByTheStaticAspect)
{
    const struct
    {
        const char* Name;
        bool IsAnimated;
        bool IsExpression;
        float Sample;
    } rows[] = {
        {"constant: by the plane", false, false, 90.0f},
        {"a curve: by the aspect of the first frame", true, false, 53.1301f},
        {"an expression is animation too", true, true, 53.1301f},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        SceneBuilder scene;
        scene.Frames(1, 2);
        SceneNode camera = scene.Camera("camera");
        camera.Set("fov", 90.0).Set("fovtype", 1).Set("projplanewidth", 1.0).Set("projplaneheight", 1.0);
        camera.Animate("aspect", {{1, 2}, {2, 5}});
        const XSI::Parameter fov = camera.Object().GetParameter("fov");
        if (row.IsExpression)
            XSI::Host::SetExpression(fov, [](double) { return 90.0; });
        else if (row.IsAnimated)
            camera.Animate("fov", {{0, 90}, {5, 90}});
        const CollectRun run;
        EXPECT_THAT(Samples(CameraOf(run), CameraCurve::Fovy), Each(FloatNear(row.Sample, 1e-4f)));
        EXPECT_THAT(Samples(CameraOf(run), CameraCurve::AspectRatio), Each(1.0f));
    }
}

TEST(CameraVisibility, HiddenForGoodIsNoCameraButANode)
{
    const struct
    {
        const char* Name;
        bool HasProperty, IsVisible, IsAnimated;
        bool IsExported;
    } rows[] = {
        {"no property", false, true, false, true},
        {"shown", true, true, false, true},
        {"hidden", true, false, false, false},
        {"animated, hidden now", true, false, true, true},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        SceneBuilder scene;
        SceneNode camera = scene.Camera("camera");
        if (row.HasProperty)
            camera.Visible(row.IsVisible);
        if (row.IsAnimated)
            camera.Blinking({{0, 0}, {50, 1}});
        const CollectRun run;
        EXPECT_EQ(run.FindCamera("camera") != nullptr, row.IsExported);
        EXPECT_EQ(run.BoneOf(camera).Name, "camera");
        EXPECT_EQ(run.BoneOf(camera).IsVisible, row.IsVisible && !row.IsAnimated);
    }
}

TEST(CameraVisibility, OfTheBranchLooksAtTheParents)
{
    const struct
    {
        bool IsTopVisible, IsParentVisible;
        bool IsBranchVisible;
    } rows[] = {{true, true, true}, {false, true, false}, {true, false, false}, {false, false, false}};

    for (const auto& row : rows) {
        SceneBuilder scene;
        const SceneNode top = scene.Null("top").Visible(row.IsTopVisible);
        const SceneNode parent = scene.Null("parent", top).Visible(row.IsParentVisible);
        scene.Camera("camera", parent);
        const CollectRun run;
        EXPECT_EQ(CameraOf(run).IsBranchVisible, row.IsBranchVisible);
    }
    SceneBuilder scene; // a root, hidden at the moment: its own mark does not count
    scene.Camera("camera").Blinking({{0, 0}, {50, 1}});
    const CollectRun run;
    EXPECT_TRUE(CameraOf(run).IsBranchVisible);
}

TEST(CameraName, IsTheNodesAndWarnedAboutOnce)
{
    SceneBuilder scene;
    scene.Null("camera");
    const SceneNode camera = scene.Camera("camera");
    const CollectRun run;
    EXPECT_EQ(run.BoneOf(camera).Name, "camera_1");
    EXPECT_NE(run.FindCamera("camera_1"), nullptr);
    EXPECT_THAT(run.Messages(), ElementsAre("W Node name is changed(camera -> camera_1)"));
}

TEST(CameraCollector, NumbersThatAreNotFiniteAreTold)
{
    using Spoil = void (*)(SceneNode & camera, const SceneNode& target, const SceneNode& up);

    const struct
    {
        const char* Name;
        Spoil Change;
        bool IsTold;
    } rows[] = {
        {"a plane without height",
         [](SceneNode& camera, const SceneNode&, const SceneNode&) { camera.Set("projplaneheight", 0.0); },
         true},
        {"a plane without size",
         [](SceneNode& camera, const SceneNode&, const SceneNode&) {
             camera.Set("projplaneheight", 0.0).Set("projplanewidth", 0.0);
         },
         true},
        {"a far plane without end",
         [](SceneNode& camera, const SceneNode&, const SceneNode&) {
             XSI::Host::SetExpression(camera.Object().GetParameter("far"), [](double) { return Infinite; });
         },
         true},
        {"a camera that looks at itself",
         [](SceneNode& camera, const SceneNode&, const SceneNode& up) { camera.AimedAt(camera, up); }, true},
        {"a camera that aims at itself", // there is no axis, yet all numbers are
         [](SceneNode& camera, const SceneNode&, const SceneNode&) { camera.AimedAt(camera); }, false},
        {"an up object on the view axis",
         [](SceneNode& camera, const SceneNode& target, const SceneNode&) { camera.AimedAt(target, target); },
         false},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        SceneBuilder scene;
        scene.Frames(0, 0);
        const SceneNode target = scene.Null("target");
        const SceneNode up = scene.Null("up").At(0, 4, 0);
        SceneNode camera = scene.Camera("camera").At(0, 0, 5);
        row.Change(camera, target, up);
        const CollectRun run;
        EXPECT_NE(run.FindCamera("camera"), nullptr);
        const std::vector<std::string> told = {"W Values that are not finite exist(camera)."};
        EXPECT_EQ(run.Messages(), (row.IsTold ? told : std::vector<std::string>{}));
    }
}

/// Draws numbers, rotations and places.
class RandomPlaces
{
public:
    explicit RandomPlaces(unsigned seed) : m_random(seed) {}

    double Draw(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(m_random);
    }

    CTransformation Turn()
    {
        CTransformation turn;
        turn.SetRotationFromXYZAnglesValues(Draw(-3.1, 3.1), Draw(-3.1, 3.1), Draw(-3.1, 3.1));
        return turn;
    }

    CTransformation Place()
    {
        CTransformation place = Turn();
        place.SetTranslationFromValues(Draw(-10, 10), Draw(-10, 10), Draw(-10, 10));
        return place;
    }

private:
    std::mt19937 m_random;
};

Vector3 RowOf(const CTransformation& transform, int row)
{
    const XSI::MATH::CMatrix4 matrix = transform.GetMatrix4();
    return {static_cast<float>(matrix.GetValue(row, 0)), static_cast<float>(matrix.GetValue(row, 1)),
            static_cast<float>(matrix.GetValue(row, 2))};
}

TEST(CameraView, OfAFreeCameraIsTheSourcesViewMatrix)
{
    constexpr unsigned seed = 4711;
    RandomPlaces places(seed);
    for (int i = 0; i < 300; ++i) {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", case " + std::to_string(i));
        SceneBuilder scene;
        scene.Frames(0, 0);
        const SceneNode parent = scene.Null("parent").Placed(places.Place());
        const double size = places.Draw(0.5, 2.0);
        const SceneNode camera = scene.Camera("camera", parent).Placed(places.Place());
        SceneNode(parent).Scaled(size, size, size);
        const CollectRun run;
        const Camera& record = CameraOf(run);
        const Matrix44 placed = ComposeMatrix({{1, 1, 1}, record.Rotate, record.Translate});
        CTransformation source = camera.Object().GetKinematics().GetGlobal().GetTransform();
        source.SetScalingFromValues(1, 1, 1); // a view has no size
        ExpectNear(record.Scale,
                   {static_cast<float>(size), static_cast<float>(size), static_cast<float>(size)});
        const Matrix44 view = InvertMatrix(placed);
        ASSERT_TRUE(source.InvertInPlace());
        for (std::size_t row = 0; row < 4; ++row)
            for (std::size_t column = 0; column < 3; ++column)
                ASSERT_NEAR(view(row, column),
                            source.GetMatrix4().GetValue(static_cast<LONG>(row), static_cast<LONG>(column)),
                            row == 3 ? 1e-4 : 1e-5);
    }
}

TEST(CameraView, OfALookingCameraIsTheSourcesViewMatrix)
{
    constexpr unsigned seed = 1147;
    RandomPlaces places(seed);
    for (int i = 0; i < 300; ++i) {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", case " + std::to_string(i));
        const CTransformation upright = places.Place();
        const double roll = places.Draw(-180, 180);
        // The camera turns by its roll about its own axis, then takes its place; it looks along its -Z.
        CTransformation rolled;
        rolled.SetRotationFromXYZAnglesValues(0, 0, XSI::MATH::DegreesToRadians(roll));
        rolled.MulInPlace(upright);
        const auto along = [&](double y, double z) {
            CTransformation place;
            place.SetTranslationFromValues(0, y, z);
            return place.MulInPlace(upright);
        };
        SceneBuilder scene;
        scene.Frames(0, 0);
        const SceneNode target = scene.Null("target").Placed(along(0, -places.Draw(1, 9)));
        const SceneNode up = scene.Null("up").Placed(along(places.Draw(1, 9), places.Draw(-9, 9)));
        scene.Camera("camera").Placed(rolled).AimedAt(target, up, roll);
        const CollectRun run;
        const Camera& record = CameraOf(run);
        ExpectNear(record.Translate, RowOf(rolled, 3));
        ExpectNear(record.UpwardVector, RowOf(rolled, 1), 2e-6f);
        const Vector3 backward = RowOf(rolled, 2);
        const Vector3 way{record.Translate.X - record.TargetPosition.X,
                          record.Translate.Y - record.TargetPosition.Y,
                          record.Translate.Z - record.TargetPosition.Z};
        const float length = std::sqrt(way.X * way.X + way.Y * way.Y + way.Z * way.Z);
        ExpectNear({way.X / length, way.Y / length, way.Z / length}, backward, 4e-6f);
    }
}

} // namespace
} // namespace tq4x::test
