#include "geometry/ShapeDocument.h"

#include "geometry/CollectOutputVertices.h"
#include "geometry/ShapeDocumentWords.h"
#include "geometry/VertexStreams.h"
#include "pipeline/MessageLog.h"
#include "pipeline/XmlWriter.h"
#include "scene/SkeletalModelWriter.h"

namespace tq4x
{
namespace
{

/// Vertices that an index of one byte can number.
constexpr std::size_t UbyteVertexCount = 256;
/// Vertices that an index of two bytes can number.
constexpr std::size_t UshortVertexCount = 65536;

SkinningMode SkinningModeOf(const SeparateDataShape& shape)
{
    if (shape.SkinWeights == nullptr)
        return SkinningMode::None;
    return shape.IsRigidSkinning ? SkinningMode::RigidSkinning : SkinningMode::SmoothSkinning;
}

void WriteBoundingBox(XmlWriter& stream, const OrientedBoundingBox& box)
{
    const std::array<float, 9>& m = box.OrientationMatrix;
    stream.Element("OrientedBoundingBox", [&] {
        stream.Vector("CenterPosition", box.CenterPosition);
        stream.Empty("OrientationMatrix", {{"M00", m[0]},
                                           {"M01", m[1]},
                                           {"M02", m[2]},
                                           {"M10", m[3]},
                                           {"M11", m[4]},
                                           {"M12", m[5]},
                                           {"M20", m[6]},
                                           {"M21", m[7]},
                                           {"M22", m[8]}});
        stream.Vector("Size", box.Size);
    });
}

void WriteIndexStream(XmlWriter& stream, const Polygon& primitive, const OutputVertices& vertices)
{
    const std::span<const std::int32_t> indices = IndicesOf(vertices, primitive);
    if (indices.empty())
        return;
    const bool isUbyte = vertices.Count() <= UbyteVertexCount;
    stream.Leaf(isUbyte ? "UbyteIndexStreamQtr" : "UshortIndexStreamQtr",
                {{"PrimitiveMode", WordOf(PrimitiveModeWords, primitive.Mode)}, {"Size", indices.size()}},
                indices);
}

void WriteBoneIndexTable(XmlWriter& stream, const SeparateDataShape& shape, const PrimitiveSet& set,
                         const Bone& bone)
{
    if (shape.SkinWeights == nullptr)
        stream.Leaf("BoneIndexTable", bone.BoneIndex);
    else
        stream.Leaf("BoneIndexTable", {}, std::span<const std::int32_t>(set.BoneIndexTable));
}

void WritePrimitiveSet(XmlWriter& stream, const SeparateDataShape& shape, const PrimitiveSet& set,
                       const OutputVertices& vertices, const Bone& bone)
{
    const std::string_view mode = WordOf(SkinningModeWords, SkinningModeOf(shape));
    stream.Element("PrimitiveSetQtr", {{"SkinningMode", mode}}, [&] {
        WriteBoneIndexTable(stream, shape, set, bone);
        stream.Element("Primitives", [&] {
            stream.Element("PrimitiveQtr", [&] {
                stream.Element("IndexStreams", [&] {
                    for (const Polygon& primitive : set.Polygons)
                        WriteIndexStream(stream, primitive, vertices);
                });
            });
        });
    });
}

void WarnAboutVertexCount(const SeparateDataShape& shape, std::size_t count)
{
    if (count > UshortVertexCount)
        PrintMessage("Number of vertices is over 65536(" + shape.Name + ").", Severity::Warning);
}

} // namespace

void WriteShape(const SeparateDataShape& shape, XmlWriter& stream, const Bone& bone, float magnify)
{
    const OutputVertices vertices = CollectOutputVertices(shape);
    const OffsetPositions positions = ComputeOffsetPositions(shape, vertices, magnify);
    WarnAboutVertexCount(shape, vertices.Count());
    stream.Element("SeparateDataShapeQtr", [&] {
        WriteBoundingBox(stream, shape.Pool.OrientedBoundingBox);
        stream.Vector("PositionOffset", positions.Offset);
        stream.Element("PrimitiveSets", [&] {
            for (const PrimitiveSet& set : shape.PrimitiveSets)
                WritePrimitiveSet(stream, shape, set, vertices, bone);
        });
        WriteVertexAttributes(stream, shape, vertices, positions);
    });
}

void WriteShapes(const SkeletalModelWriter& content, XmlWriter& stream, int level)
{
    stream.AtLevel(level, [&] {
        stream.Element("Shapes", [&] {
            for (const MeshEntry& entry : content.MeshEntries)
                for (const auto& [materialIndex, shape] : entry.Mesh->Shapes)
                    WriteShape(*shape, stream, *entry.Bone, content.Magnify);
        });
    });
}

} // namespace tq4x
