#include "environment/CameraDocument.h"
#include "core/environment/Stage.h"
#include "environment/FinishCameras.h"
#include "pipeline/XmlWriter.h"
#include "support/Golden.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tq4x
{
namespace
{

using test::MakeCamera;
using test::Rest;
using test::Sample;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr auto Perspective = CameraProjectionMode::Perspective;
constexpr auto Ortho = CameraProjectionMode::Ortho;

CameraSet SetOf(std::vector<Camera> cameras)
{
    CameraSet set;
    for (Camera& camera : cameras)
        set.Add() = std::move(camera);
    return set;
}

std::string CamerasText(const CameraSet& set)
{
    XmlWriter stream;
    WriteCameras(set, stream);
    EXPECT_EQ(stream.Level(), 0);
    return stream.Text();
}

std::string AnimationsText(CameraSet set, bool isLoop = false)
{
    FinishCameras(set, 2, isLoop, {}, 1);
    XmlWriter stream;
    WriteCameraAnimations(set, stream);
    EXPECT_EQ(stream.Level(), 0);
    return stream.Text();
}

TEST(CameraDocument, WritesACameraThatTurnsByItself)
{
    Camera camera = MakeCamera("persp", CameraViewMode::Rotate, Perspective);
    camera.Rotate.Z = 5e-5f; // no longer 0, but too small in radians
    test::ExpectGolden(CamerasText(SetOf({camera})), "core/environment/camera-rotate-perspective.xml");
}

TEST(CameraDocument, WritesACameraThatAims)
{
    Camera camera = MakeCamera("aim", CameraViewMode::AimTarget, Ortho);
    camera.IsBranchVisible = false;
    camera.CenterX = 0.5f;
    camera.CenterY = -0.25f;
    test::ExpectGolden(CamerasText(SetOf({camera})), "core/environment/camera-aim-ortho.xml");
}

TEST(CameraDocument, WritesACameraThatLooksAtATarget)
{
    Camera camera = MakeCamera("look", CameraViewMode::LookAtTarget, Perspective);
    camera.Scale = {2.0f, 3.0f, 4.0f};
    camera.IsInheritingTargetRotate = camera.IsInheritingTargetTranslate = camera.IsInheritingUpRotate = true;
    test::ExpectGolden(CamerasText(SetOf({camera})), "core/environment/camera-look-at-perspective.xml");
}

TEST(CameraDocument, AnimatesACameraThatTurnsByItself)
{
    Camera camera = MakeCamera("persp", CameraViewMode::Rotate, Perspective);
    Rest(camera, CameraCurve::Scale, {1.0f, 1.0f, 1.0f});
    Sample(camera, CameraCurve::Scale + 1, {1.0f, 2.0f, 3.0f});
    Rest(camera, CameraCurve::Translate, {1.0f, 2.0f, 3.0f});
    Sample(camera, CameraCurve::Translate, {1.0f, 1.5f, 2.0f});
    Rest(camera, CameraCurve::Translate + 2, {9.0f}); // rests elsewhere beside one that moves
    Sample(camera, CameraCurve::Rotate, {90.0f, 180.0f, 270.0f});
    Rest(camera, CameraCurve::AspectRatio, {4.0f / 3.0f});
    Sample(camera, CameraCurve::Fovy, {60.0f, 45.0f, 30.0f});
    Sample(camera, CameraCurve::Height, {1.0f, 2.0f, 3.0f}); // perspective has no such member
    test::ExpectGolden(AnimationsText(SetOf({camera}), true),
                       "core/environment/camera-animation-rotate-perspective.xml");
}

TEST(CameraDocument, AnimatesACameraThatAims)
{
    Camera camera = MakeCamera("aim", CameraViewMode::AimTarget, Ortho);
    Sample(camera, CameraCurve::TargetPosition + 1, {5.0f, 6.0f, 7.0f});
    Sample(camera, CameraCurve::Twist, {30.0f, 60.0f, 90.0f});
    Sample(camera, CameraCurve::Near, {0.1f, 1.1f, 2.1f});
    Rest(camera, CameraCurve::Far, {500.0f});
    Sample(camera, CameraCurve::Height, {20.0f, 10.0f, 0.0f});
    Sample(camera, CameraCurve::Fovy, {1.0f, 2.0f, 3.0f});         // orthographic has no such member
    Sample(camera, CameraCurve::Rotate, {0.0f, 1.0f, 2.0f});       // neither has one that aims
    Sample(camera, CameraCurve::UpwardVector, {0.0f, 1.0f, 2.0f}); // nor this
    test::ExpectGolden(AnimationsText(SetOf({camera})), "core/environment/camera-animation-aim-ortho.xml");
}

TEST(CameraDocument, AnimatesACameraThatLooksAtATarget)
{
    Camera camera = MakeCamera("look", CameraViewMode::LookAtTarget, Perspective);
    Sample(camera, CameraCurve::TargetPosition, {4.0f, 5.0f, 6.0f});
    Sample(camera, CameraCurve::UpwardVector, {0.0f, 0.5f, 1.0f});
    Sample(camera, CameraCurve::Twist, {1.0f, 2.0f, 3.0f}); // an upward vector leaves nothing to twist
    test::ExpectGolden(AnimationsText(SetOf({camera})), "core/environment/camera-animation-look-at.xml");
}

struct MemberCase
{
    const char* Name;
    CameraViewMode ViewMode;
    CameraProjectionMode Projection;
    std::vector<std::string> Paths; ///< if every curve moves
};

const MemberCase MemberCases[] = {
    {"rotate, perspective",
     CameraViewMode::Rotate,
     Perspective,
     {"Transform", "ViewUpdater.ViewRotate", "ProjectionUpdater.Near", "ProjectionUpdater.Far",
      "ProjectionUpdater.AspectRatio", "ProjectionUpdater.Fovy"}},
    {"aim, perspective",
     CameraViewMode::AimTarget,
     Perspective,
     {"Transform", "ViewUpdater.TargetPosition", "ViewUpdater.Twist", "ProjectionUpdater.Near",
      "ProjectionUpdater.Far", "ProjectionUpdater.AspectRatio", "ProjectionUpdater.Fovy"}},
    {"look at, orthographic",
     CameraViewMode::LookAtTarget,
     Ortho,
     {"Transform", "ViewUpdater.TargetPosition", "ViewUpdater.UpwardVector", "ProjectionUpdater.Near",
      "ProjectionUpdater.Far", "ProjectionUpdater.AspectRatio", "ProjectionUpdater.Height"}},
};

/// The texts between two marks, in their order.
std::vector<std::string> TextsBetween(const std::string& text, const std::string& before,
                                      const std::string& behind)
{
    std::vector<std::string> found;
    for (std::size_t at = text.find(before); at != std::string::npos; at = text.find(before, at)) {
        at += before.size();
        found.push_back(text.substr(at, text.find(behind, at) - at));
    }
    return found;
}

TEST(CameraDocument, ChoosesMembersByTheModes)
{
    for (const MemberCase& row : MemberCases) {
        Camera camera = MakeCamera("c", row.ViewMode, row.Projection);
        for (AnimationCurve& curve : camera.Curves)
            curve.Samples = {0.0f, 10.0f, 20.0f};
        EXPECT_EQ(TextsBetween(AnimationsText(SetOf({camera})), "<Path>", "</Path>"), row.Paths) << row.Name;
    }
}

TEST(CameraDocument, SortsCamerasByTheBytesOfTheirNames)
{
    CameraSet set;
    for (const char* name : {"b", "a_1", "\xC3\xA4", "B", "a", "10", "9"})
        Sample(set.Add() = MakeCamera(name, CameraViewMode::Rotate, Perspective), CameraCurve::Fovy,
               {1.0f, 2.0f, 3.0f});
    EXPECT_THAT(TextsBetween(CamerasText(set), "<Camera Name=\"", "\""),
                ElementsAre("10", "9", "B", "a", "a_1", "b", "\xC3\xA4"));
    EXPECT_THAT(TextsBetween(AnimationsText(set), "<CameraAnimationData Name=\"", "\""),
                ElementsAre("b", "a_1", "\xC3\xA4", "B", "a", "10", "9"))
        << "animations stay in the order of the list";
}

TEST(CameraDocument, WritesNothingWhereThereIsNothing)
{
    EXPECT_EQ(CamerasText({}), "");
    EXPECT_EQ(AnimationsText({}), "");
    EXPECT_EQ(AnimationsText(SetOf({MakeCamera("still", CameraViewMode::Rotate, Perspective)})), "");
}

TEST(CameraDocument, LeavesOutTheAnimationOfACameraThatRests)
{
    Camera moving = MakeCamera("moving", CameraViewMode::Rotate, Perspective);
    Sample(moving, CameraCurve::Near, {1.0f, 2.0f, 3.0f});
    const CameraSet set = SetOf({MakeCamera("still", CameraViewMode::Rotate, Perspective), moving});
    EXPECT_THAT(TextsBetween(AnimationsText(set), "<CameraAnimationData Name=\"", "\""),
                ElementsAre("moving"));
    EXPECT_THAT(CamerasText(set), HasSubstr("still"));
}

/// Its flag counts it as animated, but none of its members can be written in this mode.
TEST(CameraDocument, WritesAnAnimationWithoutMembers)
{
    Camera camera = MakeCamera("c", CameraViewMode::Rotate, Perspective);
    Sample(camera, CameraCurve::Height, {1.0f, 2.0f, 3.0f});
    const std::string text = AnimationsText(SetOf({camera}));
    EXPECT_THAT(text, HasSubstr("\t\t\t\t<MemberAnimationDataSet>\n\t\t\t\t</MemberAnimationDataSet>\n"));
    EXPECT_THAT(TextsBetween(text, "<Path>", "</Path>"), IsEmpty());
}

TEST(CameraDocument, DoesNotMagnifyWhatIsMagnifiedAlready)
{
    CameraSet set = SetOf({MakeCamera("c", CameraViewMode::AimTarget, Ortho)});
    const std::string plain = CamerasText(set);
    set.Magnify = 100.0f;
    EXPECT_EQ(CamerasText(set), plain);
}

} // namespace
} // namespace tq4x
