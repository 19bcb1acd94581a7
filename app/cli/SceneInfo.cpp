#include "cli/SceneInfo.h"

#include <algorithm>
#include <charconv>
#include <set>

#include "gltf/AccessorReader.h"
#include "gltf/AnimationTracks.h"
#include "gltf/ReadTriangles.h"

namespace tq4x::cli
{
namespace
{

using gltf::JsonArray;
using gltf::JsonObject;
using gltf::JsonValue;

std::size_t CountLevels(const gltf::Document& document)
{
    std::vector<std::size_t> level(document.Nodes.size());
    std::size_t deepest = 0;
    for (const std::size_t node : gltf::NodesInOrder(document)) {
        const gltf::Index parent = document.Nodes[node].Parent;
        level[node] = parent ? level[*parent] + 1 : 1;
        deepest = std::max(deepest, level[node]);
    }
    return deepest;
}

void CountGeometry(const gltf::Document& document, SceneInfo& info)
{
    std::set<std::size_t> counted; // accessors of positions, which primitives may share
    for (std::size_t mesh = 0; mesh < document.Meshes.size(); ++mesh) {
        const auto& primitives = document.Meshes[mesh].Primitives;
        for (std::size_t i = 0; i < primitives.size(); ++i) {
            const std::string place = "/meshes/" + std::to_string(mesh) + "/primitives/" + std::to_string(i);
            info.Triangles += gltf::ReadTriangles(document, primitives[i], place).Corners.size() / 3;
            const gltf::Index positions = primitives[i].Find("POSITION");
            if (positions && counted.insert(*positions).second) {
                info.Vertices += gltf::VertexCount(document, primitives[i]);
            }
        }
    }
}

SceneInfo::Clip DescribeClip(const gltf::Document& document, std::size_t index)
{
    const gltf::Animation& animation = document.Animations[index];
    SceneInfo::Clip clip{gltf::AnimationName(document, index), 0.0, animation.Channels.size()};
    for (const gltf::AnimationSampler& sampler : animation.Samplers) {
        for (const float time : gltf::ReadFloats(document, sampler.Input)) {
            clip.Seconds = std::max(clip.Seconds, static_cast<double>(time));
        }
    }
    return clip;
}

std::string NumberText(double number)
{
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number, std::chars_format::general, 6).ptr;
    return {digits, end};
}

void AddLine(std::string& text, std::string_view label, const std::string& value)
{
    std::string line = "  " + std::string(label);
    line.resize(14, ' ');
    text += line + value + "\n";
}

} // namespace

SceneInfo DescribeScene(const gltf::Document& document)
{
    SceneInfo info;
    info.Generator = document.Generator;
    info.Nodes = document.Nodes.size();
    info.Levels = CountLevels(document);
    info.Meshes = document.Meshes.size();
    CountGeometry(document, info);
    info.Skins = document.Skins.size();
    info.Materials = document.Materials.size();
    info.Images = document.Images.size();
    info.Cameras = document.Cameras.size();
    info.Lights = document.Lights.size();
    for (std::size_t i = 0; i < document.Animations.size(); ++i) {
        info.Clips.push_back(DescribeClip(document, i));
    }
    info.Extensions = document.ExtensionsUsed;
    info.Unread = document.Unread;
    return info;
}

std::string FormatInfo(const SceneInfo& info)
{
    std::string text;
    if (!info.Generator.empty()) {
        AddLine(text, "made by", info.Generator);
    }
    AddLine(text, "nodes", std::to_string(info.Nodes) + ", " + std::to_string(info.Levels) + " levels");
    AddLine(text, "meshes",
            std::to_string(info.Meshes) + ", " + std::to_string(info.Triangles) + " triangles, " +
                std::to_string(info.Vertices) + " vertices");
    AddLine(text, "skins", std::to_string(info.Skins));
    AddLine(text, "materials", std::to_string(info.Materials));
    AddLine(text, "pictures", std::to_string(info.Images));
    AddLine(text, "cameras", std::to_string(info.Cameras));
    AddLine(text, "lights", std::to_string(info.Lights));
    AddLine(text, "clips", std::to_string(info.Clips.size()));
    for (const SceneInfo::Clip& clip : info.Clips) {
        text += "    " + clip.Name + "  " + NumberText(clip.Seconds) + " s, " +
                std::to_string(clip.Channels) + " channels\n";
    }
    for (const std::string& extension : info.Extensions) {
        AddLine(text, "extension", extension);
    }
    for (const gltf::Note& note : info.Unread) {
        AddLine(text, "left out", (note.Object.empty() ? "" : note.Object + ": ") + note.Text);
    }
    text.pop_back();
    return text;
}

JsonValue InfoAsJson(const SceneInfo& info)
{
    const auto number = [](std::size_t count) { return JsonValue{static_cast<std::int64_t>(count)}; };
    JsonArray clips;
    for (const SceneInfo::Clip& clip : info.Clips) {
        clips.push_back({JsonObject{
            {"name", {clip.Name}}, {"seconds", {clip.Seconds}}, {"channels", number(clip.Channels)}}});
    }
    JsonArray extensions;
    for (const std::string& extension : info.Extensions) {
        extensions.push_back({extension});
    }
    JsonArray unread;
    for (const gltf::Note& note : info.Unread) {
        unread.push_back({JsonObject{{"object", {note.Object}}, {"text", {note.Text}}}});
    }
    return {JsonObject{{"generator", {info.Generator}},
                       {"nodes", number(info.Nodes)},
                       {"levels", number(info.Levels)},
                       {"meshes", number(info.Meshes)},
                       {"triangles", number(info.Triangles)},
                       {"vertices", number(info.Vertices)},
                       {"skins", number(info.Skins)},
                       {"materials", number(info.Materials)},
                       {"pictures", number(info.Images)},
                       {"cameras", number(info.Cameras)},
                       {"lights", number(info.Lights)},
                       {"clips", {std::move(clips)}},
                       {"extensions", {std::move(extensions)}},
                       {"leftOut", {std::move(unread)}}}};
}

} // namespace tq4x::cli
