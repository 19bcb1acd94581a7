#include "glb/BuildPrimitive.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace tq4x::reader
{
namespace
{

using Triple = std::array<float, 3>;

constexpr std::size_t CoordinateSetCount = 3;
constexpr std::size_t UserAttributeCount = 3;
constexpr std::size_t InfluenceCount = 4; ///< of a vertex in glTF

float ValueAt(const VertexStream& stream, std::size_t vertex, std::size_t component)
{
    return component < stream.Dimension ? stream.Values[vertex * stream.Dimension + component] : 0.0F;
}

Triple TripleAt(const VertexStream& stream, std::size_t vertex)
{
    return {ValueAt(stream, vertex, 0), ValueAt(stream, vertex, 1), ValueAt(stream, vertex, 2)};
}

/// Of length 1; `otherwise` for a vector of no length.
Triple Normalized(const Triple& vector, const Triple& otherwise)
{
    const double x = vector[0];
    const double y = vector[1];
    const double z = vector[2];
    const double length = std::sqrt(x * x + y * y + z * z);
    if (!(length > 0)) {
        return otherwise;
    }
    return {static_cast<float>(x / length), static_cast<float>(y / length), static_cast<float>(z / length)};
}

/// A vector of length 1 that is perpendicular to another one.
Triple Perpendicular(const Triple& vector)
{
    const bool isAlongX = std::abs(vector[0]) > std::abs(vector[1]);
    return Normalized(isAlongX ? Triple{-vector[2], 0, vector[0]} : Triple{0, vector[2], -vector[1]},
                      {1, 0, 0});
}

std::vector<float> NormalsOf(const VertexStream& stream, std::size_t vertexCount)
{
    std::vector<float> values;
    values.reserve(3 * vertexCount);
    for (std::size_t i = 0; i < vertexCount; ++i) {
        const Triple normal = Normalized(TripleAt(stream, i), {0, 0, 1});
        values.insert(values.end(), normal.begin(), normal.end());
    }
    return values;
}

/// The files don't say on which side the third axis stands: it is always the right-handed one.
std::vector<float> TangentsOf(const VertexStream& stream, const std::vector<float>& normals)
{
    std::vector<float> values;
    values.reserve(normals.size() / 3 * 4);
    for (std::size_t i = 0; i < normals.size() / 3; ++i) {
        const Triple normal = {normals[3 * i], normals[3 * i + 1], normals[3 * i + 2]};
        const Triple tangent = Normalized(TripleAt(stream, i), Perpendicular(normal));
        values.insert(values.end(), tangent.begin(), tangent.end());
        values.push_back(1);
    }
    return values;
}

/// Three or four components from 0 to 1. One component is a grey.
std::vector<float> ColorsOf(const VertexStream& stream, std::size_t vertexCount)
{
    std::vector<float> values;
    const std::size_t components = stream.Dimension == 4 ? 4 : 3;
    values.reserve(components * vertexCount);
    for (std::size_t i = 0; i < vertexCount; ++i) {
        for (std::size_t k = 0; k < components; ++k) {
            const float value = ValueAt(stream, i, stream.Dimension == 1 ? 0 : k);
            values.push_back(std::clamp(value, 0.0F, 1.0F));
        }
    }
    return values;
}

/// glTF's v points downwards.
std::vector<float> CoordinatesOf(const VertexStream& stream, std::size_t vertexCount)
{
    std::vector<float> values;
    values.reserve(2 * vertexCount);
    for (std::size_t i = 0; i < vertexCount; ++i) {
        values.push_back(ValueAt(stream, i, 0));
        values.push_back(1 - ValueAt(stream, i, 1));
    }
    return values;
}

/// glTF numbers sets without gaps.
void AddCoordinates(const Shape& shape, int leastCount, Json& attributes, GlbWriter& writer)
{
    std::size_t count = static_cast<std::size_t>(std::max(leastCount, 0));
    for (std::size_t i = 0; i < CoordinateSetCount; ++i) {
        if (FindStream(shape, "TextureCoordinate" + std::to_string(i)) != nullptr) {
            count = std::max(count, i + 1);
        }
    }
    for (std::size_t i = 0; i < count; ++i) {
        const VertexStream* const stream = FindStream(shape, "TextureCoordinate" + std::to_string(i));
        const std::vector<float> values = stream == nullptr ? std::vector<float>(2 * shape.VertexCount)
                                                            : CoordinatesOf(*stream, shape.VertexCount);
        attributes["TEXCOORD_" + std::to_string(i)] = writer.AddFloats(values, 2, BufferUse::Vertices);
    }
}

void AddUserAttributes(const Shape& shape, Json& attributes, GlbWriter& writer)
{
    for (std::size_t i = 0; i < UserAttributeCount; ++i) {
        if (const VertexStream* const stream = FindStream(shape, "UserAttribute" + std::to_string(i))) {
            attributes["_TQ4XUSER" + std::to_string(i)] =
                writer.AddFloats(stream->Values, stream->Dimension, BufferUse::Vertices);
        }
    }
}

struct JointWeight
{
    std::uint32_t Joint = 0;
    float Weight = 0;
};

/// Each joint once, the weights summing to 1. A vertex that nothing moves follows the first joint.
std::vector<JointWeight> JointsOf(const Shape& shape, const PrimitiveSet& set, std::size_t vertex,
                                  std::size_t boneCount)
{
    std::vector<JointWeight> joints;
    float sum = 0;
    for (const Influence& influence : InfluencesOf(shape, set, vertex)) {
        if (influence.Bone < 0 || static_cast<std::size_t>(influence.Bone) >= boneCount) {
            continue;
        }
        const auto joint = static_cast<std::uint32_t>(influence.Bone);
        const auto known = std::ranges::find(joints, joint, &JointWeight::Joint);
        sum += influence.Weight;
        if (known != joints.end()) {
            known->Weight += influence.Weight;
        } else if (joints.size() < InfluenceCount) {
            joints.push_back({joint, influence.Weight});
        }
    }
    if (!(sum > 0)) {
        return {{0, 1}};
    }
    for (JointWeight& joint : joints) {
        joint.Weight /= sum;
    }
    return joints;
}

/// The new number of each vertex that a set draws, counted up; -1 for the others.
std::vector<int> NumberDrawn(const Shape& shape, const PrimitiveSet& set)
{
    std::vector<int> numbers(shape.VertexCount, -1);
    for (const IndexStream& stream : set.Streams) {
        for (const std::uint32_t index : stream.Indices) {
            numbers.at(index) = 0;
        }
    }
    int count = 0;
    for (int& number : numbers) {
        number = number < 0 ? -1 : count++;
    }
    return numbers;
}

VertexStream PickRows(const VertexStream& stream, const std::vector<int>& numbers)
{
    VertexStream picked = stream;
    picked.Values.clear();
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        for (std::size_t k = 0; numbers[i] >= 0 && k < stream.Dimension; ++k) {
            picked.Values.push_back(ValueAt(stream, i, k));
        }
    }
    return picked;
}

} // namespace

Shape PickSet(const Shape& shape, const PrimitiveSet& set)
{
    const std::vector<int> numbers = NumberDrawn(shape, set);
    Shape picked;
    picked.VertexCount =
        static_cast<std::size_t>(std::ranges::count_if(numbers, [](int n) { return n >= 0; }));
    picked.Sets = {set};
    for (IndexStream& stream : picked.Sets[0].Streams) {
        for (std::uint32_t& index : stream.Indices) {
            index = static_cast<std::uint32_t>(numbers[index]);
        }
    }
    for (const VertexStream& stream : shape.Streams) {
        picked.Streams.push_back(PickRows(stream, numbers));
    }
    return picked;
}

Json BuildAttributes(const Shape& shape, int leastCoordinates, GlbWriter& writer)
{
    Json attributes;
    attributes["POSITION"] =
        writer.AddFloats(FindStream(shape, "Position")->Values, 3, BufferUse::Vertices, true);
    if (const VertexStream* const normal = FindStream(shape, "Normal")) {
        const std::vector<float> normals = NormalsOf(*normal, shape.VertexCount);
        attributes["NORMAL"] = writer.AddFloats(normals, 3, BufferUse::Vertices);
        if (const VertexStream* const tangent = FindStream(shape, "Tangent")) {
            attributes["TANGENT"] = writer.AddFloats(TangentsOf(*tangent, normals), 4, BufferUse::Vertices);
        }
    }
    if (const VertexStream* const color = FindStream(shape, "Color")) {
        const std::vector<float> colors = ColorsOf(*color, shape.VertexCount);
        attributes["COLOR_0"] =
            writer.AddFloats(colors, colors.size() / shape.VertexCount, BufferUse::Vertices);
    }
    AddCoordinates(shape, leastCoordinates, attributes, writer);
    AddUserAttributes(shape, attributes, writer);
    return attributes;
}

void AddInfluences(const Shape& shape, const PrimitiveSet& set, std::size_t boneCount, Json& attributes,
                   GlbWriter& writer)
{
    std::vector<std::uint32_t> joints(InfluenceCount * shape.VertexCount);
    std::vector<float> weights(InfluenceCount * shape.VertexCount);
    for (std::size_t i = 0; i < shape.VertexCount; ++i) {
        std::size_t place = InfluenceCount * i;
        for (const JointWeight& joint : JointsOf(shape, set, i, boneCount)) {
            joints[place] = joint.Joint;
            weights[place++] = joint.Weight;
        }
    }
    const bool isByte = std::ranges::all_of(joints, [](std::uint32_t joint) { return joint < 256; });
    attributes["JOINTS_0"] = writer.AddIntegers(joints, InfluenceCount, BufferUse::Vertices, isByte);
    attributes["WEIGHTS_0"] = writer.AddFloats(weights, InfluenceCount, BufferUse::Vertices);
}

std::optional<int> AddTriangles(const PrimitiveSet& set, GlbWriter& writer)
{
    std::vector<std::uint32_t> indices;
    for (const IndexStream& stream : set.Streams) {
        for (const auto& [a, b, c] : ListTriangles(stream)) {
            if (a != b && b != c && a != c) {
                indices.insert(indices.end(), {a, b, c});
            }
        }
    }
    if (indices.empty()) {
        return std::nullopt;
    }
    return writer.AddIntegers(indices, 1, BufferUse::Indices);
}

} // namespace tq4x::reader
