#include "RunRoundTrip.h"

#include "Deviations.h"
#include "support/ExportRun.h"

#include <gtest/gtest.h>

namespace tq4x::test
{
namespace
{

reader::Document ReadFile(const ExportRun& run, const std::string& name)
{
    reader::FindingList findings(name);
    std::optional<reader::Document> document = reader::ReadDocument(run.Folder() / name, findings);
    EXPECT_TRUE(document.has_value() && !findings.HasErrors()) << SceneName() << ": " << name;
    return document ? *std::move(document) : reader::Document();
}

WrittenScene ReadFiles(const ExportRun& run)
{
    WrittenScene written;
    written.Folder = run.Folder();
    written.Model = ReadFile(run, "out.qmdl").Model.value_or(reader::Model());
    written.Skeletal = ReadFile(run, "out.qskla");
    written.Materials = ReadFile(run, "out.qmata");
    written.Visibility = ReadFile(run, "out.qmdla");
    written.Cameras = ReadFile(run, "out.qcam").Stage;
    written.Lights = ReadFile(run, "out.qlgt").Stage;
    written.Environment = ReadFile(run, "out.qenv").Stage;
    return written;
}

std::string TextOf(const ExportRun& run)
{
    std::string text;
    for (const std::string& message : run.Messages())
        text += message + "\n";
    return text;
}

} // namespace

void RunRoundTrip(const std::string& name, const RoundTripSettings& settings, const SourcePictures& pictures)
{
    SetSceneName(name);
    const ExportRun run(settings.Options());
    ASSERT_TRUE(run.Succeeded()) << name << "\n" << TextOf(run);
    const HostScene host = ReadHostScene(settings);
    const ExpectedSkeleton skeleton = ExpectSkeleton(host);
    const WrittenScene written = ReadFiles(run);
    const RoundTrip trip{settings, host, skeleton, written, pictures};
    CompareSkeleton(trip);
    CompareGeometry(trip);
    CompareMaterials(trip);
    if (settings.WritesTextures)
        CompareTextures(trip);
    CompareSkeletalAnimation(trip);
    CompareMaterialAnimation(trip);
    CompareVisibility(trip);
    CompareCameras(trip);
    CompareLights(trip);
    if (HasFailures())
        ADD_FAILURE() << name << " said\n" << TextOf(run);
}

} // namespace tq4x::test
