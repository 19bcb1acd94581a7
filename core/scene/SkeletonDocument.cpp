#include "scene/SkeletonDocument.h"

#include "math/Scalar.h"
#include "pipeline/WordTable.h"
#include "pipeline/XmlWriter.h"
#include "scene/Bone.h"
#include "scene/NodeMatrices.h"
#include "scene/SkeletalModelWriter.h"

#include <array>
#include <cassert>
#include <string>

namespace tq4x
{
namespace
{

constexpr auto ScalingRuleWords = WordTable<ScalingRule::Softimage>({
    {ScalingRule::Standard, "Standard"},
    {ScalingRule::Maya, "Maya"},
    {ScalingRule::Softimage, "Softimage"},
});

/// Direction from which a node always shows the same face.
enum class BillboardMode : std::int32_t
{
    Off = 0,
    World = 1,
    WorldViewpoint = 2,
    Screen = 3,
    ScreenViewpoint = 4,
};

constexpr auto BillboardModeWords = WordTable<BillboardMode::ScreenViewpoint>({
    {BillboardMode::Off, "Off"},
    {BillboardMode::World, "World"},
    {BillboardMode::WorldViewpoint, "WorldViewpoint"},
    {BillboardMode::Screen, "Screen"},
    {BillboardMode::ScreenViewpoint, "ScreenViewpoint"},
});

/// The word of a number that may lie outside its table, and what stands for such a number.
template<std::size_t Count>
std::string_view WordOrElse(const std::array<std::string_view, Count>& words, std::int32_t number,
                            std::string_view other)
{
    if (number < 0 || static_cast<std::size_t>(number) >= Count)
        return other;
    return words[static_cast<std::size_t>(number)];
}

void WriteMeshEditData(XmlWriter& stream, const Mesh& mesh)
{
    stream.Element("EditData", [&] {
        stream.Element("DccToolSourceNodeMetaData", [&] {
            stream.Leaf("Key", "DccToolSourceNode");
            stream.Element("Values", [&] { stream.Leaf("NodeName", mesh.NodeName); });
        });
        if (mesh.CombineGroup < 0)
            return;
        stream.Element("MeshCombineGroupMetaData", [&] {
            stream.Leaf("Key", "MeshCombineGroup");
            stream.Leaf("CombineGroupName", "CombineGroup" + std::to_string(mesh.CombineGroup));
        });
    });
}

void WriteMesh(XmlWriter& stream, const Mesh& mesh, const SeparateDataShape& shape, std::int32_t shapeIndex,
               const MeshMaterial& material)
{
    stream.Element("Mesh",
                   {{"IsVisible", shape.IsVisible},
                    {"RenderPriority", material.RenderPriority},
                    {"MeshNodeName", mesh.NodeName}},
                   [&] {
                       WriteMeshEditData(stream, mesh);
                       stream.Leaf("SeparateShapeReference", "Shapes[" + std::to_string(shapeIndex) + "]");
                       stream.Leaf("MaterialReference", "Materials[\"" + std::string(material.Name) + "\"]");
                   });
}

void WriteEntryMeshes(XmlWriter& stream, const MeshEntry& entry, const MaterialLookup& materials)
{
    std::int32_t shapeIndex = entry.FirstShapeIndex;
    for (const auto& [materialIndex, shape] : entry.Mesh->Shapes)
        WriteMesh(stream, *entry.Mesh, *shape, shapeIndex++,
                  materials(materialIndex).value_or(MeshMaterial{}));
}

void WriteMeshNodeVisibilities(const SkeletalModelWriter& content, XmlWriter& stream)
{
    stream.Element("MeshNodeVisibilities", [&] {
        for (const MeshEntry& entry : content.MeshEntries)
            stream.Empty("MeshNodeVisibility",
                         {{"Name", entry.Bone->Name}, {"IsVisible", entry.Bone->IsVisible}});
    });
}

/// The matrix of each bone relative to its parent. A bone without samples rests at its parent.
std::vector<Matrix44> LocalMatricesOf(const std::vector<Bone*>& bones)
{
    std::vector<Matrix44> matrices = ComputeBindLocalMatrices(bones);
    for (std::size_t i = 0; i < bones.size(); ++i)
        if (!bones[i]->HasSkinningMatrix && !bones[i]->TransformSamples.empty())
            matrices[i] = bones[i]->TransformSamples.front();
    return matrices;
}

void WriteTransform(XmlWriter& stream, const Matrix44& matrix, float magnify)
{
    const TransformParts parts = DecomposeMatrix(matrix);
    const auto scaled = [](const Vector3& vector, float factor) {
        return Vector3{vector.X * factor, vector.Y * factor, vector.Z * factor};
    };
    stream.Element("Transform", [&] {
        stream.Vector("Scale", parts.Scale);
        stream.Vector("Rotate", scaled(parts.Rotate, RadiansPerDegreeSingle));
        stream.Vector("Translate", scaled(parts.Translate, magnify));
    });
}

void WriteBone(XmlWriter& stream, const Bone& bone, const Matrix44& matrix, float magnify)
{
    const std::string_view parentName = bone.Parent != nullptr ? std::string_view(bone.Parent->Name) : "";
    stream.Element("Bone",
                   {{"Name", bone.Name},
                    {"ParentBoneName", parentName},
                    {"IsSegmentScaleCompensate", bone.IsSegmentScaleCompensate},
                    {"IsCompressible", !bone.IsNoCompress},
                    {"IsNeededRendering", bone.IsNeededRendering},
                    {"HasSkinningMatrix", bone.HasSkinningMatrix},
                    {"BillboardMode", WordOrElse(BillboardModeWords, bone.BillboardMode, "Off")}},
                   [&] {
                       WriteUserData(stream, stream.Level(), bone.UserData);
                       WriteTransform(stream, matrix, magnify);
                   });
}

void WriteNotes(XmlWriter& stream, const SkeletalModelWriter& content, std::size_t materialCount)
{
    stream.Empty("Note", {{"Name", "MaterialCount"}, {"Value", materialCount}});
    stream.Empty("Note", {{"Name", "ShapeCount"}, {"Value", content.MeshEntries.size()}});
    stream.Empty("Note", {{"Name", "MeshCount"}, {"Value", content.MeshEntries.size()}});
    stream.Empty("Note", {{"Name", "BoneCount"}, {"Value", content.Bones.size()}});
}

void WriteContentSummaryElement(XmlWriter& stream, const SkeletalModelWriter& content,
                                std::size_t materialCount)
{
    stream.Element("ContentSummary", {{"ContentTypeName", "GraphicsContent"}}, [&] {
        stream.Element("ObjectSummaries", [&] {
            stream.Element("ObjectSummary", {{"TypeName", "SkeletalModel"}, {"Name", ""}}, [&] {
                stream.Element("Notes", [&] { WriteNotes(stream, content, materialCount); });
            });
        });
    });
}

} // namespace

void WriteMeshes(const SkeletalModelWriter& content, XmlWriter& stream, int level,
                 const MaterialLookup& materials)
{
    stream.AtLevel(level, [&] {
        stream.Element("Meshes", [&] {
            for (const MeshEntry& entry : content.MeshEntries)
                WriteEntryMeshes(stream, entry, materials);
        });
        if (content.MeshVisibilityMode == MeshVisibilityMode::BindByName)
            WriteMeshNodeVisibilities(content, stream);
    });
}

void WriteSkeleton(const SkeletalModelWriter& content, XmlWriter& stream, int level)
{
    // A model always has a root: the export stops earlier where no node is left.
    assert(!content.Bones.empty());
    const Bone& root = *content.Bones.front();
    const std::vector<Matrix44> matrices = LocalMatricesOf(content.Bones);
    const auto rule = static_cast<std::int32_t>(root.ScalingRule);
    stream.AtLevel(level, [&] {
        stream.Element("Skeleton",
                       {{"RootBoneName", root.Name},
                        {"ScalingRule", WordOrElse(ScalingRuleWords, rule, "")},
                        {"IsTranslateAnimationEnabled", true}},
                       [&] {
                           stream.Element("Bones", [&] {
                               for (std::size_t i = 0; i < content.Bones.size(); ++i)
                                   WriteBone(stream, *content.Bones[i], matrices[i], content.Magnify);
                           });
                       });
    });
}

void WriteContentSummary(const SkeletalModelWriter& content, XmlWriter& stream, std::size_t materialCount)
{
    stream.AtLevel(2, [&] {
        stream.Element("ContentSummaryMetaData", [&] {
            stream.Leaf("Key", "ContentSummaries");
            stream.Element("Values", [&] { WriteContentSummaryElement(stream, content, materialCount); });
        });
    });
}

} // namespace tq4x
