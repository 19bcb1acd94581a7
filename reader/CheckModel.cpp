#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "CheckSections.h"

namespace tq4x::reader
{
namespace
{

void CheckMeshes(const Model& model, FindingList& findings)
{
    std::unordered_set<std::string_view> materials;
    for (const Material& material : model.Materials) {
        materials.insert(material.Name);
    }
    std::vector<bool> isDrawn(model.Shapes.size(), false);
    for (const Mesh& mesh : model.Meshes) {
        if (mesh.Shape < 0 || static_cast<std::size_t>(mesh.Shape) >= model.Shapes.size()) {
            findings.Error("TQ-REF-SHAPE", mesh.ShapeLine,
                           "There is no shape " + std::to_string(mesh.Shape) + ", the model has " +
                               std::to_string(model.Shapes.size()) + ".");
        } else {
            isDrawn[static_cast<std::size_t>(mesh.Shape)] = true;
        }
        if (!materials.contains(mesh.MaterialName)) {
            findings.Error("TQ-REF-MATERIAL", mesh.MaterialLine,
                           "There is no material \"" + mesh.MaterialName + "\".");
        }
        if (FindBone(model.Bones, mesh.NodeName) < 0) {
            findings.Error("TQ-REF-NODE", mesh.Line,
                           "There is no bone \"" + mesh.NodeName + "\" for this mesh.");
        }
    }
    for (std::size_t i = 0; i < isDrawn.size(); ++i) {
        if (!isDrawn[i]) {
            findings.Warning("TQ-UNUSED-SHAPE", model.Shapes[i].Line,
                             "No mesh draws shape " + std::to_string(i) + ".");
        }
    }
}

void CheckNodeVisibilities(const Model& model, FindingList& findings)
{
    const bool isByName = model.MeshVisibilityMode == "BindByName";
    if (model.HasNodeVisibilities != isByName) {
        findings.Error("TQ-VISIBILITY-MODE", model.Line,
                       isByName ? "BindByName needs MeshNodeVisibilities."
                                : "MeshNodeVisibilities belong to BindByName.");
    }
    for (const MeshNodeVisibility& node : model.NodeVisibilities) {
        if (FindBone(model.Bones, node.Name) < 0) {
            findings.Error("TQ-REF-NODE", node.Line, "There is no bone \"" + node.Name + "\".");
        }
    }
}

void CheckCount(std::string_view name, int stated, std::size_t actual, long line, FindingList& findings)
{
    if (stated < 0 || static_cast<std::size_t>(stated) != actual) {
        findings.Error("TQ-SUMMARY", line,
                       std::string(name) + " says " + std::to_string(stated) + ", there are " +
                           std::to_string(actual) + ".");
    }
}

/// Shapes and meshes are both counted by mesh nodes, some of which may have no shape at all. So these two
/// must agree, and no shape may lack a node.
void CheckSummary(const Model& model, FindingList& findings)
{
    const ContentSummary& summary = model.Summary;
    CheckCount("MaterialCount", summary.MaterialCount, model.Materials.size(), summary.Line, findings);
    CheckCount("BoneCount", summary.BoneCount, model.Bones.Bones.size(), summary.Line, findings);
    std::unordered_set<std::string_view> nodes;
    for (const Mesh& mesh : model.Meshes) {
        nodes.insert(mesh.NodeName);
    }
    const bool hasRoom =
        summary.MeshCount >= 0 && static_cast<std::size_t>(summary.MeshCount) >= nodes.size();
    if (summary.ShapeCount != summary.MeshCount || !hasRoom) {
        findings.Error("TQ-SUMMARY", summary.Line,
                       "ShapeCount and MeshCount say " + std::to_string(summary.ShapeCount) + " and " +
                           std::to_string(summary.MeshCount) + ", meshes stand on " +
                           std::to_string(nodes.size()) + " nodes.");
    }
}

} // namespace

void CheckModel(const Model& model, FindingList& findings)
{
    for (std::size_t i = 0; i < model.Shapes.size(); ++i) {
        CheckShape(model, model.Shapes[i], "Shape " + std::to_string(i), findings);
    }
    CheckMaterials(model, findings);
    CheckMeshes(model, findings);
    CheckNodeVisibilities(model, findings);
    CheckSkeleton(model.Bones, findings);
    CheckSummary(model, findings);
    CheckLookupTables(model.LookupTables, findings);
}

} // namespace tq4x::reader
