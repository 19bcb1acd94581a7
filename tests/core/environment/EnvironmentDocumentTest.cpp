#include "environment/EnvironmentDocument.h"
#include "core/environment/Stage.h"
#include "environment/FinishCameras.h"
#include "environment/FinishLights.h"
#include "pipeline/Envelope.h"
#include "pipeline/XmlWriter.h"
#include "support/Golden.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tq4x
{
namespace
{

using test::MakeCamera;
using test::MakeLight;
using testing::HasSubstr;
using testing::Not;

struct Stage
{
    CameraSet Cameras;
    LightSet Lights;

    std::string Text()
    {
        XmlWriter stream;
        WriteEnvironment(Cameras, Lights, stream, "stage");
        return stream.Text();
    }
};

TEST(EnvironmentDocument, HoldsCamerasThenLights)
{
    Stage stage;
    stage.Cameras.Add() = MakeCamera("cam", CameraViewMode::LookAtTarget, CameraProjectionMode::Perspective);
    stage.Lights.Add() = MakeLight("AmbientLight", LightKind::Ambient);
    XmlWriter stream;
    const FrameRecord record{"ann", "2013-04-09T08:07:06", "scene.scn",
                             "TQ4X_ForPennonExport for Softimage 2013", "0.5.3"};
    WriteFrame(stream, record, EditDataPlace::InsideContent, {},
               [&](XmlWriter& content) { WriteEnvironment(stage.Cameras, stage.Lights, content, "stage"); });
    test::ExpectGolden(stream.Text(), "core/environment/environment.qenv");
}

TEST(EnvironmentDocument, OrdersCamerasTablesAndLights)
{
    Stage stage;
    SetSpotCone(stage.Lights.Add() = MakeLight("spot", LightKind::SpotLight), 90.0f, 5.0f,
                stage.Lights.LookupTables);
    stage.Cameras.Add() = MakeCamera("cam", CameraViewMode::Rotate, CameraProjectionMode::Ortho);
    const std::string text = stage.Text();
    const std::size_t cameras = text.find("\n\t\t</Cameras>\n\t\t<LookupTableSetContents>\n");
    const std::size_t lights = text.find("\n\t\t</LookupTableSetContents>\n\t\t<Lights>\n");
    EXPECT_TRUE(text.starts_with("\t\t<Cameras>\n"));
    EXPECT_NE(cameras, std::string::npos);
    EXPECT_NE(lights, std::string::npos);
    EXPECT_LT(cameras, lights);
    EXPECT_THAT(text, HasSubstr("Name=\"stage.LightLutset\""));
}

TEST(EnvironmentDocument, HoldsNoAnimationOfWhatMoves)
{
    Stage stage;
    test::Sample(stage.Cameras.Add() =
                     MakeCamera("cam", CameraViewMode::Rotate, CameraProjectionMode::Perspective),
                 CameraCurve::Near, {1.0f, 2.0f, 3.0f});
    test::Sample(stage.Lights.Add() = MakeLight("bulb", LightKind::PointLight), LightCurve::Translate,
                 {1.0f, 2.0f, 3.0f});
    const std::string unfinished = stage.Text();
    EXPECT_THAT(unfinished, Not(HasSubstr("Animations")));
    EXPECT_TRUE(stage.Cameras.Cameras[0].Curves[CameraCurve::Near].Keys.empty()) << "writing builds no keys";
    FinishCameras(stage.Cameras, 2, false, {}, 1);
    FinishLights(stage.Lights, 2, false, {}, 0.01f, 1);
    EXPECT_EQ(stage.Text(), unfinished) << "the same text whether or not other files finished them";
}

TEST(EnvironmentDocument, HoldsNothingOfWhatIsNotThere)
{
    Stage empty;
    EXPECT_EQ(empty.Text(), "");

    Stage cameras;
    cameras.Cameras.Add() = MakeCamera("cam", CameraViewMode::Rotate, CameraProjectionMode::Perspective);
    EXPECT_THAT(cameras.Text(), Not(HasSubstr("Lights>")));
    EXPECT_THAT(cameras.Text(), Not(HasSubstr("LookupTableSetContents")));

    Stage lights;
    lights.Lights.Add() = MakeLight("AmbientLight", LightKind::Ambient);
    EXPECT_TRUE(lights.Text().starts_with("\t\t<Lights>\n\t\t\t<AmbientLightQtr Name=\"AmbientLight\""));
    EXPECT_TRUE(lights.Text().ends_with("\t\t\t</AmbientLightQtr>\n\t\t</Lights>\n"));
}

} // namespace
} // namespace tq4x
