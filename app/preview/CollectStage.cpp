#include "preview/CollectStage.h"

#include <charconv>
#include <filesystem>
#include <numbers>

namespace tq4x::preview
{
namespace
{

/// Numbers for people: up to four digits.
std::string ShortText(float number)
{
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number, std::chars_format::general, 4).ptr;
    return {digits, end};
}

std::string DegreesText(float radians)
{
    return ShortText(radians * (180.0F / std::numbers::pi_v<float>)) + "°";
}

std::string FactsOf(const reader::Camera& camera)
{
    const std::string view = camera.IsOrtho ? "orthographic, " + ShortText(camera.Height) + " high"
                                            : "perspective, " + DegreesText(camera.Fovy) + " high";
    return view + ", from " + ShortText(camera.Near) + " to " + ShortText(camera.Far);
}

std::string FactsOf(const reader::Light& light)
{
    if (light.Kind == "Ambient") {
        return "ambient";
    }
    const std::string reach = light.IsDistanceAttenuationEnabled
                                  ? ", fades from " + ShortText(light.DistanceAttenuationStart) + " to " +
                                        ShortText(light.DistanceAttenuationEnd)
                                  : "";
    const std::string kind = light.Kind == "DirectionalLight" ? "directional"
                             : light.Kind == "PointLight"     ? "point"
                                                              : "spot";
    return kind + ", intensity " + ShortText(light.Diffuse[3]) + reach;
}

template<class Animation>
void AddClip(const Animation& animation, const std::string& name, const std::string& kind,
             const std::string& path, PreviewData& data)
{
    data.Clips.push_back(
        {name, kind, path, animation.Head.FrameSize, animation.Head.IsLoop, animation.Members.size()});
}

} // namespace

void AddStage(const reader::Document& document, const std::string& path, PreviewData& data)
{
    const std::string stem = std::filesystem::path(path).stem().string();
    if (document.SkeletalAnimation) {
        AddClip(*document.SkeletalAnimation, stem, "bones", path, data);
    }
    if (document.MaterialAnimation) {
        AddClip(*document.MaterialAnimation, stem, "materials", path, data);
    }
    if (document.VisibilityAnimation) {
        AddClip(*document.VisibilityAnimation, stem, "visibility", path, data);
    }
    for (const reader::CameraAnimation& animation : document.Stage.CameraAnimations) {
        AddClip(animation, animation.Head.Name, "camera", path, data);
    }
    for (const reader::LightAnimation& animation : document.Stage.LightAnimations) {
        AddClip(animation, animation.Head.Name, "light", path, data);
    }
    for (const reader::Camera& camera : document.Stage.Cameras) {
        data.Cameras.push_back({camera.Name, path, FactsOf(camera)});
    }
    for (const reader::Light& light : document.Stage.Lights) {
        data.Lights.push_back({light.Name, path, FactsOf(light)});
    }
}

} // namespace tq4x::preview
