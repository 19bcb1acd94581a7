#include "NumberForm.h"
#include "ParseSections.h"

namespace tq4x::reader
{
namespace
{

ContentSummary ParseSummary(const ElementReader& metaData)
{
    ContentSummary summary;
    const ElementReader content = metaData.Child("Values").Child("ContentSummary");
    const ElementReader object = content.Child("ObjectSummaries").Child("ObjectSummary");
    summary.Line = object.Line();
    for (const ElementReader& note : object.Child("Notes").Children("Note")) {
        const std::string name = note.Text("Name");
        int& target = name == "MaterialCount" ? summary.MaterialCount
                      : name == "ShapeCount"  ? summary.ShapeCount
                      : name == "MeshCount"   ? summary.MeshCount
                                              : summary.BoneCount;
        target = note.Integer("Value");
    }
    return summary;
}

/// The text between a word and the bracket or quote behind it: "3" of "Shapes[3]".
std::string_view Inside(std::string_view text, std::string_view before, std::string_view behind)
{
    if (!text.starts_with(before) || !text.ends_with(behind) || text.size() < before.size() + behind.size()) {
        return {};
    }
    return text.substr(before.size(), text.size() - before.size() - behind.size());
}

Mesh ParseMesh(const ElementReader& element)
{
    Mesh mesh;
    mesh.IsVisible = element.Boolean("IsVisible");
    mesh.RenderPriority = element.Integer("RenderPriority");
    mesh.NodeName = element.Text("MeshNodeName");
    const ElementReader group = element.Child("EditData").Child("MeshCombineGroupMetaData");
    mesh.CombineGroup =
        ParseInteger(Inside(group.Child("CombineGroupName").Content(), "CombineGroup", "")).value_or(-1);
    const ElementReader shape = element.Child("SeparateShapeReference");
    mesh.Shape = ParseInteger(Inside(shape.Content(), "Shapes[", "]")).value_or(-1);
    mesh.ShapeLine = shape.Line();
    const ElementReader material = element.Child("MaterialReference");
    mesh.MaterialName = Inside(material.Content(), "Materials[\"", "\"]");
    mesh.MaterialLine = material.Line();
    mesh.Line = element.Line();
    return mesh;
}

void ParseLists(Model& model, const ElementReader& element)
{
    for (const ElementReader& shape : element.Child("Shapes").Children("SeparateDataShapeQtr")) {
        model.Shapes.push_back(ParseShape(shape));
    }
    for (const ElementReader& material : element.Child("Materials").Children("MaterialQtr")) {
        model.Materials.push_back(ParseMaterial(material));
    }
    for (const ElementReader& mesh : element.Child("Meshes").Children("Mesh")) {
        model.Meshes.push_back(ParseMesh(mesh));
    }
    const ElementReader visibilities = element.Child("MeshNodeVisibilities");
    model.HasNodeVisibilities = visibilities.Exists();
    for (const ElementReader& node : visibilities.Children("MeshNodeVisibility")) {
        model.NodeVisibilities.push_back({node.Text("Name"), node.Boolean("IsVisible"), node.Line()});
    }
}

} // namespace

Model ParseModel(const ElementReader& content)
{
    Model model;
    model.Summary = ParseSummary(content.Child("EditData").Child("ContentSummaryMetaData"));
    const ElementReader element = content.Child("Models").Child("SkeletalModel");
    model.IsNonuniformScalable = element.Boolean("IsNonuniformScalable");
    model.NeededBoneCapacity = element.Integer("NeededBoneCapacity");
    model.Root = ReadTransform(element.Child("Transform"));
    model.Line = element.Line();
    ParseLists(model, element);
    model.Bones = ParseSkeleton(element.Child("Skeleton"));
    const ElementReader option = element.Child("EditData").Child("ModelDccToolExportOption");
    model.ExportStartFrame = option.Float("ExportStartFrame");
    model.Magnify = option.Float("Magnify", 1);
    model.AdjustSkinning = option.Text("AdjustSkinning");
    model.MeshVisibilityMode = option.Text("MeshVisibilityMode");
    model.LookupTables = ParseLookupTables(content);
    return model;
}

} // namespace tq4x::reader
