#include "Summarize.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <string_view>

namespace tq4x::reader
{
namespace
{

class Summary
{
public:
    void Count(std::string_view name, std::size_t count)
    {
        m_rows.push_back({std::string(name), static_cast<long>(count)});
    }

    void Number(std::string_view name, double number) { m_rows.push_back({std::string(name), number}); }

    void Text(std::string_view name, std::string text)
    {
        m_rows.push_back({std::string(name), std::move(text)});
    }

    std::vector<SummaryRow> Take() { return std::move(m_rows); }

private:
    std::vector<SummaryRow> m_rows;
};

std::string Joined(const std::set<std::string>& words)
{
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : ", ") + word;
    }
    return text;
}

void AddEnvelope(Summary& summary, const Document& document)
{
    summary.Text("kind", std::string(ExtensionOf(document.Kind)));
    summary.Text("source", document.Head.Source);
    summary.Text("date", document.Head.Date);
    summary.Text("author", document.Head.Author);
    summary.Text("tool", document.Head.ToolName + " " + document.Head.ToolVersion);
}

struct GeometryCounts
{
    std::size_t Vertices = 0;
    std::size_t Triangles = 0;
    std::size_t Sets = 0;
    std::size_t LargestPalette = 0;
    std::set<std::string> Streams; ///< "Position Short"
};

GeometryCounts CountGeometry(const Model& model)
{
    GeometryCounts counts;
    for (const Shape& shape : model.Shapes) {
        counts.Vertices += shape.VertexCount;
        counts.Sets += shape.Sets.size();
        for (const PrimitiveSet& set : shape.Sets) {
            counts.LargestPalette = std::max(counts.LargestPalette, set.BoneIndexTable.size());
            for (const IndexStream& stream : set.Streams) {
                counts.Triangles += ListTriangles(stream).size();
            }
        }
        for (const VertexStream& stream : shape.Streams) {
            counts.Streams.insert(stream.Usage + " " +
                                  (stream.IsConstant ? "constant" : stream.QuantizedMode));
        }
    }
    return counts;
}

void AddModel(Summary& summary, const Model& model)
{
    const GeometryCounts counts = CountGeometry(model);
    std::set<std::string> textures;
    for (const Material& material : model.Materials) {
        for (const TextureMapper& mapper : material.Mappers) {
            textures.insert(mapper.Texture.Name);
        }
    }
    summary.Count("bones", model.Bones.Bones.size());
    summary.Count("meshes", model.Meshes.size());
    summary.Count("shapes", model.Shapes.size());
    summary.Count("vertices", counts.Vertices);
    summary.Count("triangles", counts.Triangles);
    summary.Count("primitiveSets", counts.Sets);
    summary.Count("largestPalette", counts.LargestPalette);
    summary.Number("boneCapacity", model.NeededBoneCapacity);
    summary.Text("streams", Joined(counts.Streams));
    summary.Count("materials", model.Materials.size());
    summary.Count("lookupTables", model.LookupTables.Tables.size());
    summary.Text("textures", Joined(textures));
    summary.Number("magnify", static_cast<double>(model.Magnify));
}

void AddTexture(Summary& summary, const Texture& texture)
{
    std::size_t bytes = 0;
    for (const TextureFace& face : texture.Faces) {
        for (const TextureLevel& level : face.Levels) {
            bytes += level.Data.size();
        }
    }
    summary.Text("path", texture.Path);
    summary.Text("format", texture.Format);
    summary.Number("width", texture.Width);
    summary.Number("height", texture.Height);
    summary.Count("faces", texture.Faces.size());
    summary.Number("levels", texture.MipmapSize);
    summary.Count("bytes", bytes);
}

template<class CurveList>
void CountCurves(const CurveList& curves, std::size_t& curveCount, std::size_t& keyCount)
{
    for (const std::optional<Curve>& curve : curves) {
        curveCount += curve ? 1 : 0;
        keyCount += curve ? curve->Keys.size() : 0;
    }
}

/// A clip and how much of it there is. `prefix` keeps the rows of several clips apart.
void AddClip(Summary& summary, const AnimationHead& head, const std::vector<MemberAnimation>& members,
             const std::string& prefix)
{
    std::size_t curves = 0;
    std::size_t keys = 0;
    for (const MemberAnimation& member : members) {
        CountCurves(member.Scale, curves, keys);
        CountCurves(member.Rotate, curves, keys);
        CountCurves(member.Translate, curves, keys);
        CountCurves(member.Channels, curves, keys);
        curves += member.Bool ? 1 : 0;
        keys += member.Bool ? member.Bool->Keys.size() : 0;
    }
    summary.Number(prefix + "frames", head.FrameSize);
    summary.Text(prefix + "loopMode", head.IsLoop ? "Loop" : "OneTime");
    summary.Count(prefix + "members", members.size());
    summary.Count(prefix + "curves", curves);
    summary.Count(prefix + "keys", keys);
}

void AddStage(Summary& summary, const Stage& stage)
{
    summary.Count("cameras", stage.Cameras.size());
    summary.Count("lights", stage.Lights.size());
    summary.Count("lookupTables", stage.LookupTables.Tables.size());
    std::size_t number = 0;
    for (const CameraAnimation& animation : stage.CameraAnimations) {
        const std::string prefix = "clip" + std::to_string(number++) + ".";
        summary.Text(prefix + "name", animation.Head.Name);
        AddClip(summary, animation.Head, animation.Members, prefix);
    }
    for (const LightAnimation& animation : stage.LightAnimations) {
        const std::string prefix = "clip" + std::to_string(number++) + ".";
        summary.Text(prefix + "name", animation.Head.Name);
        AddClip(summary, animation.Head, animation.Members, prefix);
    }
}

bool IsStage(FileKind kind)
{
    return kind == FileKind::Camera || kind == FileKind::Light || kind == FileKind::Environment;
}

} // namespace

std::vector<SummaryRow> Summarize(const Document& document)
{
    Summary summary;
    AddEnvelope(summary, document);
    if (document.Model) {
        AddModel(summary, *document.Model);
    }
    if (document.Texture) {
        AddTexture(summary, *document.Texture);
    }
    if (document.SkeletalAnimation) {
        AddClip(summary, document.SkeletalAnimation->Head, document.SkeletalAnimation->Members, "");
        summary.Count("bones", document.SkeletalAnimation->Bones.Bones.size());
        summary.Number("startFrame", document.SkeletalAnimation->StartFrame);
        summary.Number("endFrame", document.SkeletalAnimation->EndFrame);
    }
    if (document.MaterialAnimation) {
        AddClip(summary, document.MaterialAnimation->Head, document.MaterialAnimation->Members, "");
        summary.Count("texturePatterns", document.MaterialAnimation->Patterns.size());
    }
    if (document.VisibilityAnimation) {
        AddClip(summary, document.VisibilityAnimation->Head, document.VisibilityAnimation->Members, "");
    }
    if (IsStage(document.Kind)) {
        AddStage(summary, document.Stage);
    }
    return summary.Take();
}

std::string ValueText(const SummaryRow& row)
{
    if (const long* const count = std::get_if<long>(&row.Value)) {
        return std::to_string(*count);
    }
    if (const double* const number = std::get_if<double>(&row.Value)) {
        char text[32];
        const std::to_chars_result result =
            std::to_chars(text, text + sizeof(text), *number, std::chars_format::general, 6);
        return {text, result.ptr};
    }
    return std::get<std::string>(row.Value);
}

} // namespace tq4x::reader
