#include <algorithm>
#include <cmath>
#include <string>

#include "CheckSections.h"

namespace tq4x::reader
{
namespace
{

std::string Quoted(std::string_view text)
{
    return "\"" + std::string(text) + "\"";
}

void CheckIndices(const Shape& shape, const IndexStream& stream, std::string_view place,
                  FindingList& findings)
{
    constexpr std::size_t MostUbyteVertices = 256;
    constexpr std::size_t MostUshortVertices = 65536;
    const auto largest = std::ranges::max_element(stream.Indices);
    if (largest != stream.Indices.end() && *largest >= shape.VertexCount) {
        findings.Error("TQ-INDEX-RANGE", stream.Line,
                       std::string(place) + ": index " + std::to_string(*largest) +
                           " is out of range, there are " + std::to_string(shape.VertexCount) + " vertices.");
    }
    if (stream.IsUbyte != (shape.VertexCount <= MostUbyteVertices)) {
        findings.Error("TQ-INDEX-SIZE", stream.Line,
                       std::string(place) + ": indices must have " +
                           (stream.IsUbyte ? "two bytes" : "one byte") + " with " +
                           std::to_string(shape.VertexCount) + " vertices.");
    }
    if (shape.VertexCount > MostUshortVertices) {
        findings.Error("TQ-INDEX-SIZE", stream.Line,
                       std::string(place) + ": indices of two bytes can't number " +
                           std::to_string(shape.VertexCount) + " vertices.");
    }
}

/// As many indices as the mode makes whole primitives of.
void CheckPrimitives(const IndexStream& stream, std::string_view place, FindingList& findings)
{
    const std::size_t count = stream.Indices.size();
    const bool isWhole = stream.PrimitiveMode == "Triangles"       ? count % 3 == 0
                         : stream.PrimitiveMode == "Lines"         ? count % 2 == 0
                         : stream.PrimitiveMode == "LineStrip"     ? count >= 2
                         : stream.PrimitiveMode == "TriangleStrip" ? count >= 3
                         : stream.PrimitiveMode == "TriangleFan"   ? count >= 3
                                                                   : true;
    if (!isWhole) {
        findings.Error("TQ-INDEX-COUNT", stream.Line,
                       std::string(place) + ": " + std::to_string(count) + " indices make no whole " +
                           stream.PrimitiveMode + ".");
    }
}

void CheckPalette(const Model& model, const PrimitiveSet& set, std::string_view place, FindingList& findings)
{
    const std::size_t size = set.BoneIndexTable.size();
    const bool isSkinned = set.SkinningMode != "None";
    if (!isSkinned && size != 1) {
        findings.Error("TQ-PALETTE-SIZE", set.Line,
                       std::string(place) + ": an unskinned set names one bone, this one " +
                           std::to_string(size) + ".");
    }
    if (isSkinned && (size == 0 || size > static_cast<std::size_t>(std::max(model.NeededBoneCapacity, 0)))) {
        findings.Error("TQ-PALETTE-SIZE", set.Line,
                       std::string(place) + ": the palette holds " + std::to_string(size) +
                           " bones, NeededBoneCapacity allows 1 to " +
                           std::to_string(model.NeededBoneCapacity) + ".");
    }
    for (const int bone : set.BoneIndexTable) {
        if (static_cast<std::size_t>(bone) >= model.Bones.Bones.size()) {
            findings.Error("TQ-REF-BONE", set.Line,
                           std::string(place) + ": there is no bone " + std::to_string(bone) +
                               ", the skeleton has " + std::to_string(model.Bones.Bones.size()) + ".");
        } else if (!model.Bones.Bones[static_cast<std::size_t>(bone)].IsNeededRendering) {
            findings.Error("TQ-BONE-NEEDED", set.Line,
                           std::string(place) + ": bone " +
                               Quoted(model.Bones.Bones[static_cast<std::size_t>(bone)].Name) +
                               " is drawn with, but its IsNeededRendering is false.");
        }
    }
}

void CheckPaletteRepeats(const PrimitiveSet& set, std::string_view place, FindingList& findings)
{
    std::vector<int> sorted = set.BoneIndexTable;
    std::ranges::sort(sorted);
    const auto repeated = std::ranges::adjacent_find(sorted);
    if (repeated != sorted.end()) {
        findings.Error("TQ-PALETTE-REPEAT", set.Line,
                       std::string(place) + ": bone " + std::to_string(*repeated) +
                           " stands twice in the palette.");
    }
}

/// Whether the weights of the vertices that a set draws name slots of its palette and sum to 100 percent.
void CheckInfluences(const Shape& shape, const PrimitiveSet& set, std::vector<bool>& isChecked,
                     std::string_view place, FindingList& findings)
{
    constexpr float SumTolerance = 1e-4F; // four printed weights of six digits each
    isChecked.assign(shape.VertexCount, false);
    for (const IndexStream& stream : set.Streams) {
        for (const std::uint32_t vertex : stream.Indices) {
            if (vertex >= shape.VertexCount || isChecked[vertex]) {
                continue;
            }
            isChecked[vertex] = true;
            float sum = 0;
            for (const Influence& influence : InfluencesOf(shape, set, vertex)) {
                sum += influence.Weight;
                if (influence.Bone < 0) {
                    findings.Error("TQ-SLOT-RANGE", stream.Line,
                                   std::string(place) + ": vertex " + std::to_string(vertex) +
                                       " names a slot behind the palette's " +
                                       std::to_string(set.BoneIndexTable.size()) + " bones.");
                }
            }
            if (std::abs(sum - 1.0F) > SumTolerance) {
                findings.Error("TQ-WEIGHT-SUM", stream.Line,
                               std::string(place) + ": the weights of vertex " + std::to_string(vertex) +
                                   " sum to " + std::to_string(sum * 100.0F) + " percent.");
            }
        }
    }
}

void CheckWeightRange(const Shape& shape, std::string_view place, FindingList& findings)
{
    const VertexStream* const weights = FindStream(shape, "BoneWeight");
    if (weights != nullptr && std::ranges::any_of(weights->Values, [](float weight) { return weight < 0; })) {
        findings.Error("TQ-WEIGHT-RANGE", weights->Line, std::string(place) + ": a weight is negative.");
    }
}

void CheckStreamSizes(const Shape& shape, std::string_view place, FindingList& findings)
{
    for (const VertexStream& stream : shape.Streams) {
        const std::size_t rows = stream.Dimension == 0 ? 0 : stream.Values.size() / stream.Dimension;
        if (rows != shape.VertexCount) {
            findings.Error("TQ-COUNT", stream.Line,
                           std::string(place) + ": " + stream.Usage + " has " + std::to_string(rows) +
                               " rows, other streams have " + std::to_string(shape.VertexCount) + ".");
        }
    }
}

/// The order in which attributes stand, with the dimensions that they may have.
struct UsageRow
{
    std::string_view Usage;
    std::size_t Least;
    std::size_t Most;
};

constexpr UsageRow Usages[] = {
    {"Position", 3, 3},
    {"Normal", 3, 3},
    {"Color", 1, 4},
    {"TextureCoordinate0", 2, 2},
    {"TextureCoordinate1", 2, 2},
    {"TextureCoordinate2", 2, 2},
    {"Tangent", 3, 3},
    {"BoneIndex", 1, 4},
    {"BoneWeight", 1, 4},
    {"UserAttribute0", 1, 4},
    {"UserAttribute1", 1, 4},
    {"UserAttribute2", 1, 4},
};

void CheckUsages(const Shape& shape, std::string_view place, FindingList& findings)
{
    const UsageRow* last = nullptr;
    for (const VertexStream& stream : shape.Streams) {
        const UsageRow* const row =
            std::ranges::find(Usages, std::string_view(stream.Usage), &UsageRow::Usage);
        if (row == std::end(Usages)) {
            continue; // the grammar tells
        }
        if (last != nullptr && row <= last) {
            findings.Error("TQ-USAGE-ORDER", stream.Line,
                           std::string(place) + ": " + stream.Usage + " may not stand behind " +
                               std::string(last->Usage) + ".");
        }
        last = row;
        if (stream.Dimension < row->Least || stream.Dimension > row->Most) {
            findings.Error("TQ-DIMENSION", stream.Line,
                           std::string(place) + ": " + stream.Usage + " can't have " +
                               std::to_string(stream.Dimension) + " numbers for each vertex.");
        }
    }
    if (FindStream(shape, "Position") == nullptr && shape.VertexCount > 0) {
        findings.Error("TQ-USAGE", shape.Line, std::string(place) + ": there is no Position.");
    }
}

/// Skinned shapes, and no others, carry both bone streams, in one dimension; all sets agree on skinning.
void CheckSkinStreams(const Shape& shape, std::string_view place, FindingList& findings)
{
    const bool isSkinned =
        std::ranges::any_of(shape.Sets, [](const PrimitiveSet& set) { return set.SkinningMode != "None"; });
    const VertexStream* const indices = FindStream(shape, "BoneIndex");
    const VertexStream* const weights = FindStream(shape, "BoneWeight");
    if (shape.VertexCount > 0 && ((indices != nullptr) != isSkinned || (weights != nullptr) != isSkinned)) {
        findings.Error("TQ-SKIN-STREAMS", shape.Line,
                       std::string(place) + (isSkinned
                                                 ? ": a skinned shape needs BoneIndex and BoneWeight."
                                                 : ": an unskinned shape has BoneIndex or BoneWeight."));
    } else if (indices != nullptr && weights != nullptr && indices->Dimension != weights->Dimension) {
        findings.Error("TQ-DIMENSION", weights->Line,
                       std::string(place) + ": BoneIndex and BoneWeight have different dimensions.");
    }
    for (const PrimitiveSet& set : shape.Sets) {
        if (set.SkinningMode != shape.Sets.front().SkinningMode) {
            findings.Error("TQ-SKIN-MODE", set.Line,
                           std::string(place) + ": the sets of a shape must agree on SkinningMode.");
        }
    }
}

/// The axes of the box must be perpendicular and of length 1; its sides must not be negative.
void CheckBox(const Shape& shape, std::string_view place, FindingList& findings)
{
    constexpr float Tolerance = 1e-3F;
    const std::array<Vector3, 3>& axes = shape.BoundingBox.OrientationMatrix;
    bool isGood = std::ranges::all_of(shape.BoundingBox.Size, [](float side) { return side >= 0; });
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = i; j < 3; ++j) {
            const float dot = axes[i][0] * axes[j][0] + axes[i][1] * axes[j][1] + axes[i][2] * axes[j][2];
            isGood = isGood && std::abs(dot - (i == j ? 1.0F : 0.0F)) <= Tolerance;
        }
    }
    if (!isGood) {
        findings.Error("TQ-BOX", shape.Line, std::string(place) + ": the bounding box is none.");
    }
}

} // namespace

void CheckShape(const Model& model, const Shape& shape, std::string_view place, FindingList& findings)
{
    CheckBox(shape, place, findings);
    CheckUsages(shape, place, findings);
    CheckStreamSizes(shape, place, findings);
    CheckSkinStreams(shape, place, findings);
    CheckWeightRange(shape, place, findings);
    std::vector<bool> isChecked;
    for (const PrimitiveSet& set : shape.Sets) {
        CheckPalette(model, set, place, findings);
        CheckPaletteRepeats(set, place, findings);
        for (const IndexStream& stream : set.Streams) {
            CheckIndices(shape, stream, place, findings);
            CheckPrimitives(stream, place, findings);
        }
        if (set.SkinningMode != "None" && FindStream(shape, "BoneWeight") != nullptr) {
            CheckInfluences(shape, set, isChecked, place, findings);
        }
    }
}

} // namespace tq4x::reader
