// Writes a camera file: records go in, a document comes out; no host is needed.
#include <cstdio>

#include <environment/CameraDocument.h>
#include <environment/FinishCameras.h>
#include <pipeline/Envelope.h>
#include <pipeline/XmlWriter.h>

namespace
{

/// A camera that rises from 1 to 3 within two frames.
tq4x::CameraSet RisingCamera()
{
    tq4x::CameraSet set;
    tq4x::Camera& camera = set.Add();
    camera.Name = "rising";
    camera.Translate = {0.0f, 1.0f, 8.0f};
    camera.Near = 0.1f;
    camera.Far = 100.0f;
    camera.AspectRatio = 16.0f / 9.0f;
    camera.Fovy = 45.0f;
    tq4x::AnimationCurve* const translate = &camera.Curves[tq4x::CameraCurve::Translate];
    translate[0].Samples = {0.0f, 0.0f, 0.0f};
    translate[1].Samples = {1.0f, 2.0f, 3.0f};
    translate[2].Samples = {8.0f, 8.0f, 8.0f};
    return set;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: write_camera FILE.qcam\n");
        return 2;
    }
    tq4x::CameraSet set = RisingCamera();
    tq4x::FinishCameras(set, 2, false, {}, 1);
    const auto record = tq4x::MakeFrameRecord("2026-01-01T00:00:00", "write_camera");
    const auto sections = [&set](tq4x::XmlWriter& stream) {
        tq4x::WriteCameraAnimations(set, stream);
        tq4x::WriteCameras(set, stream);
    };
    return tq4x::WriteFrameFile(argv[1], record, tq4x::EditDataPlace::InsideContent, {}, sections) ? 0 : 4;
}
