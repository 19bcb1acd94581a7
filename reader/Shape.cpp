#include <algorithm>

#include "ReadModel.h"

namespace tq4x::reader
{

const VertexStream* FindStream(const Shape& shape, std::string_view usage)
{
    const auto found = std::ranges::find(shape.Streams, usage, &VertexStream::Usage);
    return found == shape.Streams.end() ? nullptr : &*found;
}

const Material* FindMaterial(const Model& model, std::string_view name)
{
    const auto found = std::ranges::find(model.Materials, name, &Material::Name);
    return found == model.Materials.end() ? nullptr : &*found;
}

std::vector<std::array<std::uint32_t, 3>> ListTriangles(const IndexStream& stream)
{
    std::vector<std::array<std::uint32_t, 3>> triangles;
    const std::vector<std::uint32_t>& at = stream.Indices;
    if (stream.PrimitiveMode == "Triangles") {
        for (std::size_t i = 2; i < at.size(); i += 3) {
            triangles.push_back({at[i - 2], at[i - 1], at[i]});
        }
    } else if (stream.PrimitiveMode == "TriangleStrip") {
        for (std::size_t i = 2; i < at.size(); ++i) {
            const bool isOdd = i % 2 == 1;
            triangles.push_back({at[isOdd ? i - 1 : i - 2], at[isOdd ? i - 2 : i - 1], at[i]});
        }
    } else if (stream.PrimitiveMode == "TriangleFan") {
        for (std::size_t i = 2; i < at.size(); ++i) {
            triangles.push_back({at[0], at[i - 1], at[i]});
        }
    }
    return triangles;
}

namespace
{

float ValueAt(const VertexStream& stream, std::size_t vertex, std::size_t component)
{
    const std::size_t place = vertex * stream.Dimension + component;
    return place < stream.Values.size() ? stream.Values[place] : 0.0F;
}

int BoneOfSlot(const PrimitiveSet& set, float slot)
{
    const bool isInTable = slot >= 0 && slot < static_cast<float>(set.BoneIndexTable.size());
    return isInTable ? set.BoneIndexTable[static_cast<std::size_t>(slot)] : -1;
}

} // namespace

std::vector<Influence> InfluencesOf(const Shape& shape, const PrimitiveSet& set, std::size_t vertex)
{
    if (set.SkinningMode == "None") {
        return {{set.BoneIndexTable.empty() ? -1 : set.BoneIndexTable[0], 1.0F}};
    }
    std::vector<Influence> influences;
    const VertexStream* const indices = FindStream(shape, "BoneIndex");
    const VertexStream* const weights = FindStream(shape, "BoneWeight");
    if (indices == nullptr || weights == nullptr) {
        return influences;
    }
    for (std::size_t k = 0; k < std::min(indices->Dimension, weights->Dimension); ++k) {
        const float weight = ValueAt(*weights, vertex, k);
        if (weight > 0) {
            influences.push_back({BoneOfSlot(set, ValueAt(*indices, vertex, k)), weight});
        }
    }
    return influences;
}

} // namespace tq4x::reader
