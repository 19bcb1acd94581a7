#include "preview/FormatPreview.h"

#include <span>

#include "Base64Text.h"
#include "cli/ExportReport.h"
#include "cli/FindingText.h"
#include "glb/GlbWriter.h"
#include "gltf/JsonValue.h"

namespace tq4x::preview
{
namespace
{

using gltf::JsonArray;
using gltf::JsonObject;
using gltf::JsonValue;

JsonValue Number(std::uint64_t number)
{
    return {static_cast<std::int64_t>(number)};
}

JsonValue Real(float number)
{
    return {reader::ShortNumber(number)};
}

template<class Items, class Make>
JsonValue List(const Items& items, Make make)
{
    JsonArray list;
    for (const auto& item : items) {
        list.push_back(make(item));
    }
    return {std::move(list)};
}

JsonValue Texts(const std::vector<std::string>& texts)
{
    return List(texts, [](const std::string& text) { return JsonValue{text}; });
}

JsonValue Reals(std::span<const float> numbers)
{
    return List(numbers, Real);
}

JsonValue BoxJson(const reader::OrientedBoundingBox& box)
{
    return {JsonObject{
        {"center", Reals(box.CenterPosition)},
        {"axes", List(box.OrientationMatrix, [](const reader::Vector3& axis) { return Reals(axis); })},
        {"size", Reals(box.Size)}}};
}

JsonValue StreamJson(const PreviewStream& stream)
{
    return {JsonObject{{"usage", {stream.Usage}},
                       {"mode", {stream.Mode}},
                       {"dimension", Number(stream.Dimension)},
                       {"constant", {stream.IsConstant}}}};
}

JsonValue MeshJson(const PreviewMesh& mesh)
{
    return {JsonObject{{"node", {mesh.Node}},
                       {"material", {mesh.Material}},
                       {"visible", {mesh.IsVisible}},
                       {"vertices", Number(mesh.Vertices)},
                       {"triangles", Number(mesh.Triangles)},
                       {"sets", Number(mesh.Sets)},
                       {"skinning", {mesh.Skinning}},
                       {"streams", List(mesh.Streams, StreamJson)},
                       {"box", mesh.Box ? BoxJson(*mesh.Box) : JsonValue()}}};
}

JsonValue MaterialJson(const PreviewMaterial& material)
{
    return {JsonObject{{"name", {material.Name}},
                       {"diffuse", Reals(material.Diffuse)},
                       {"textures", Texts(material.Textures)},
                       {"culling", {material.Culling}},
                       {"blend", {material.Blend}},
                       {"alphaTest", {material.HasAlphaTest}},
                       {"lit", {material.IsLit}},
                       {"users", Number(material.Users)}}};
}

std::string IdOf(std::size_t scene)
{
    return "scene-" + std::to_string(scene);
}

JsonValue ScenesJson(const std::vector<PreviewScene>& scenes)
{
    JsonArray list;
    for (const PreviewScene& scene : scenes) {
        list.push_back({JsonObject{{"glb", {scene.Glb.empty() ? "" : IdOf(list.size())}},
                                   {"problem", {scene.Problem}},
                                   {"notes", Texts(scene.Notes)},
                                   {"bones", Texts(scene.Bones)},
                                   {"meshes", List(scene.Meshes, MeshJson)},
                                   {"materials", List(scene.Materials, MaterialJson)}}});
    }
    return {std::move(list)};
}

std::string PictureAddress(const std::string& png)
{
    return png.empty() ? "" : "data:image/png;base64," + reader::EncodeBase64(png);
}

JsonValue TextureJson(const PreviewTexture& texture)
{
    return {JsonObject{{"name", {texture.Name}},
                       {"file", {texture.File}},
                       {"width", Number(static_cast<std::uint64_t>(texture.Width))},
                       {"height", Number(static_cast<std::uint64_t>(texture.Height))},
                       {"isCube", {texture.IsCube}},
                       {"format", {texture.Format}},
                       {"levels", Number(texture.Levels)},
                       {"bytes", Number(texture.Bytes)},
                       {"thumbnail", {PictureAddress(texture.Thumbnail)}}}};
}

JsonValue ClipJson(const PreviewClip& clip)
{
    return {JsonObject{{"name", {clip.Name}},
                       {"kind", {clip.Kind}},
                       {"file", {clip.File}},
                       {"frames", {static_cast<std::int64_t>(clip.Frames)}},
                       {"loop", {clip.IsLoop}},
                       {"members", Number(clip.Members)}}};
}

JsonValue StageJson(const PreviewStageObject& object)
{
    return {JsonObject{{"name", {object.Name}}, {"file", {object.File}}, {"facts", {object.Facts}}}};
}

JsonValue FileJson(const PreviewFile& file)
{
    return {JsonObject{{"path", {file.Path}}, {"kind", {file.Kind}}, {"size", Number(file.Size)}}};
}

JsonValue DataJson(const PreviewData& data)
{
    return {JsonObject{{"program", {data.Program}},
                       {"name", {data.Name}},
                       {"scene", {data.Scene}},
                       {"folder", {data.Folder}},
                       {"author", {data.Author}},
                       {"date", {data.Date}},
                       {"exitCode", {static_cast<std::int64_t>(data.ExitCode)}},
                       {"framesPerSecond", Real(data.FramesPerSecond)},
                       {"files", List(data.Files, FileJson)},
                       {"messages", cli::MessagesAsJson(data.Messages)},
                       {"findings", List(data.Findings, cli::FindingAsJson)},
                       {"scenes", ScenesJson(data.Scenes)},
                       {"textures", List(data.Textures, TextureJson)},
                       {"clips", List(data.Clips, ClipJson)},
                       {"cameras", List(data.Cameras, StageJson)},
                       {"lights", List(data.Lights, StageJson)}}};
}

void ReplaceAll(std::string& text, std::string_view sign, std::string_view by)
{
    for (std::size_t at = text.find(sign); at != std::string::npos; at = text.find(sign, at + by.size())) {
        text.replace(at, sign.size(), by);
    }
}

std::string MarkupText(std::string text)
{
    ReplaceAll(text, "&", "&amp;");
    ReplaceAll(text, "<", "&lt;");
    return text;
}

std::string ScenesMarkup(const std::vector<PreviewScene>& scenes)
{
    std::string text;
    for (std::size_t i = 0; i < scenes.size(); ++i) {
        if (!scenes[i].Glb.empty()) {
            text += "<script type=\"text/plain\" id=\"" + IdOf(i) + "\">" +
                    reader::EncodeBase64(scenes[i].Glb) + "</script>\n";
        }
    }
    return text;
}

} // namespace

std::string FormatPreviewJson(const PreviewData& data)
{
    std::string json = gltf::FormatJson(DataJson(data));
    // Outside of texts JSON has no such sign; inside them this says the same.
    ReplaceAll(json, "<", "\\u003c");
    return json;
}

std::string FillPreviewPage(std::string_view page, const PreviewData& data)
{
    const std::array<std::pair<std::string_view, std::string>, 3> gaps = {
        {{"@TITLE@", MarkupText(data.Name + " – " + data.Program)},
         {"@DATA@", FormatPreviewJson(data)},
         {"@MODELS@", ScenesMarkup(data.Scenes)}}};
    // From front to back, so that what fills a gap is never searched.
    std::string filled;
    for (const auto& [gap, text] : gaps) {
        const std::size_t at = page.find(gap);
        filled.append(page.substr(0, at)).append(text);
        page.remove_prefix(at + gap.size());
    }
    return filled.append(page);
}

} // namespace tq4x::preview
