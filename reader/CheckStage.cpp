#include <algorithm>
#include <cmath>
#include <string>

#include "CheckSections.h"

namespace tq4x::reader
{
namespace
{

constexpr std::string_view LightAnimationEnding = ".LightAnimation";

/// Cameras and lights stand by name.
template<class Record>
void CheckNames(const std::vector<Record>& records, std::string_view what, FindingList& findings)
{
    for (std::size_t i = 1; i < records.size(); ++i) {
        const std::string& before = records[i - 1].Name;
        if (records[i].Name < before) {
            findings.Warning("TQ-ORDER", records[i].Line,
                             std::string(what) + " \"" + records[i].Name + "\" stands behind \"" + before +
                                 "\".");
        } else if (records[i].Name == before) {
            findings.Warning("TQ-NAME-REPEAT", records[i].Line, "The name \"" + before + "\" stands twice.");
        }
    }
}

template<class Record>
const Record* FindNamed(const std::vector<Record>& records, const std::string& name)
{
    const auto found = std::ranges::find(records, name, &Record::Name);
    return found == records.end() ? nullptr : &*found;
}

void CheckProjection(const Camera& camera, FindingList& findings)
{
    const std::string place = "Camera \"" + camera.Name + "\": ";
    if (!(camera.Far > camera.Near)) {
        findings.Warning("TQ-CAMERA", camera.Line, place + "the far plane is not behind the near one.");
    }
    constexpr float Pi = 3.14159265F;
    if (!camera.IsOrtho && !(camera.Fovy > 0 && camera.Fovy < Pi)) {
        findings.Warning("TQ-CAMERA", camera.Line,
                         place + "the field of view is not between 0 and half a turn.");
    }
    if (camera.IsOrtho && !(camera.Height > 0)) {
        findings.Warning("TQ-CAMERA", camera.Line, place + "the height is not above 0.");
    }
}

void CheckCameraAnimation(const CameraAnimation& animation, const Stage& stage, FindingList& findings)
{
    CheckMembers(animation.Head, animation.Members, findings);
    const Camera* const camera = FindNamed(stage.Cameras, animation.Head.Name);
    if (camera == nullptr) {
        findings.Error("TQ-REF-CAMERA", animation.Head.Line,
                       "There is no camera \"" + animation.Head.Name + "\".");
        return;
    }
    const std::string projection = camera->IsOrtho ? "Ortho" : "Perspective";
    if (animation.ViewMode != camera->ViewMode || animation.ProjectionMode != projection) {
        findings.Error("TQ-CAMERA-MODE", animation.Head.Line,
                       "The modes of the animation are not those of camera \"" + camera->Name + "\".");
    }
}

void CheckLightAnimation(const LightAnimation& animation, const Stage& stage, FindingList& findings)
{
    CheckMembers(animation.Head, animation.Members, findings);
    std::string name = animation.Head.Name;
    if (name.ends_with(LightAnimationEnding)) {
        name.resize(name.size() - LightAnimationEnding.size());
    }
    const Light* const light = FindNamed(stage.Lights, name);
    if (light == nullptr) {
        findings.Error("TQ-REF-LIGHT", animation.Head.Line, "There is no light \"" + name + "\".");
        return;
    }
    const bool isAmbient = light->Kind == "Ambient";
    if (animation.LightKind != (isAmbient ? "Unused" : light->Kind) ||
        animation.LightType != (isAmbient ? "Ambient" : "Fragment")) {
        findings.Error("TQ-LIGHT-KIND", animation.Head.Line,
                       "The kind of the animation is not that of light \"" + light->Name + "\".");
    }
}

void CheckLight(const Light& light, const Stage& stage, FindingList& findings)
{
    const std::string place = "Light \"" + light.Name + "\"";
    CheckSampler(light.Angle, stage.LookupTables, place, findings);
    if (light.Kind == "Ambient") {
        return;
    }
    if ((light.Kind == "SpotLight") != light.Angle.HasTable) {
        findings.Error("TQ-LIGHT-TABLE", light.Line, place + ": spot lights, and no others, name a table.");
    }
}

} // namespace

void CheckStage(const Stage& stage, FindingList& findings)
{
    CheckNames(stage.Cameras, "Camera", findings);
    CheckNames(stage.Lights, "Light", findings);
    CheckLookupTables(stage.LookupTables, findings);
    for (const Camera& camera : stage.Cameras) {
        CheckProjection(camera, findings);
    }
    for (const CameraAnimation& animation : stage.CameraAnimations) {
        CheckCameraAnimation(animation, stage, findings);
    }
    for (const Light& light : stage.Lights) {
        CheckLight(light, stage, findings);
    }
    for (const LightAnimation& animation : stage.LightAnimations) {
        CheckLightAnimation(animation, stage, findings);
    }
}

} // namespace tq4x::reader
