#include "geometry/VertexStreams.h"

#include "geometry/GetWeightDimension.h"
#include "geometry/QuantizeStream.h"
#include "geometry/ShapeDocumentWords.h"
#include "math/Scalar.h"
#include "pipeline/XmlWriter.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <type_traits>

namespace tq4x
{
namespace
{

/// Elements of the two forms, by dimension less one.
constexpr std::array<std::string_view, 4> StreamElements{"Vector1VertexStreamQtr", "Vector2VertexStreamQtr",
                                                         "Vector3VertexStreamQtr", "Vector4VertexStreamQtr"};
constexpr std::array<std::string_view, 4> ConstantElements{
    "Vector1VertexAttributeQtr", "Vector2VertexAttributeQtr", "Vector3VertexAttributeQtr",
    "Vector4VertexAttributeQtr"};

constexpr std::size_t PositionDimension = 3;

/// Weights in integer storage count percent.
constexpr float WeightFactor = 100.0f;
constexpr float WeightScale = 0.01f;

std::array<float, 4> ComponentsOf(const Vector2& value)
{
    return {value.X, value.Y, 0.0f, 0.0f};
}

std::array<float, 4> ComponentsOf(const Vector3& value)
{
    return {value.X, value.Y, value.Z, 0.0f};
}

std::array<float, 4> ComponentsOf(const Vector4& value)
{
    return {value.X, value.Y, value.Z, value.W};
}

const BoneIndexTuple& ComponentsOf(const BoneIndexTuple& value)
{
    return value;
}

/// The entries of a list that the vertices refer to by a slot; zeros where they refer to none.
template<typename T>
std::vector<T> EntriesOf(const std::vector<T>& list, const SeparateDataShape& shape,
                         const OutputVertices& vertices, VertexSlot slot)
{
    std::vector<T> entries;
    entries.reserve(vertices.Count());
    for (const std::size_t corner : vertices.FirstCorners) {
        const std::int32_t index = shape.Corners[corner][slot];
        const bool exists = index >= 0 && static_cast<std::size_t>(index) < list.size();
        entries.push_back(exists ? list[static_cast<std::size_t>(index)] : T{});
    }
    return entries;
}

/// The first components of each entry, one entry behind the other.
template<typename Number, typename T>
std::vector<Number> Flatten(const std::vector<T>& entries, std::size_t dimension)
{
    std::vector<Number> values;
    values.reserve(entries.size() * dimension);
    for (const T& entry : entries) {
        const auto& components = ComponentsOf(entry);
        values.insert(values.end(), components.begin(), components.begin() + dimension);
    }
    return values;
}

std::size_t DimensionOf(const VertexAttributeSlot& slot)
{
    return static_cast<std::size_t>(std::clamp(slot.Dimension, 1, 4));
}

/// True if each row equals the one before it. One row is equal to itself, whatever it holds.
bool AreRowsEqual(std::span<const float> values, std::size_t perRow)
{
    return std::equal(values.begin() + perRow, values.end(), values.begin());
}

/// What the start tag of a stream says.
struct StreamHead
{
    VertexSlot Usage = VertexSlot::Position;
    std::size_t Dimension = 1;
    float Scale = 1.0f;
    tq4x::QuantizedMode QuantizedMode = tq4x::QuantizedMode::Float;
};

template<typename Number>
void WriteStream(XmlWriter& stream, const StreamHead& head, const std::vector<Number>& values)
{
    // A snapped scale would take small shapes back to nothing.
    stream.Rows(StreamElements[head.Dimension - 1],
                {{"Usage", WordOf(UsageWords, head.Usage)},
                 {"VertexSize", values.size() / head.Dimension},
                 {"Scale", Unsnapped{head.Scale}},
                 {"QuantizedMode", WordOf(QuantizedModeWords, head.QuantizedMode)}},
                std::span<const Number>(values), head.Dimension);
}

template<typename Number>
void WriteConstant(XmlWriter& stream, VertexSlot usage, std::span<const Number> components)
{
    stream.Leaf(ConstantElements[components.size() - 1], {{"Usage", WordOf(UsageWords, usage)}, {"Scale", 1}},
                components);
}

void WriteFloats(XmlWriter& stream, VertexSlot slot, QuantizedMode wanted, std::size_t dimension,
                 std::vector<float> values)
{
    if (values.empty())
        return;
    const std::vector<float> first(values.begin(), values.begin() + dimension);
    const QuantizedMode mode = FitModeToSign(wanted, slot, dimension, values);
    const float scale = QuantizeInPlace(values, mode);
    if (AreRowsEqual(values, dimension))
        WriteConstant(stream, slot, std::span<const float>(first));
    else
        WriteStream(stream, {slot, dimension, scale, mode}, values);
}

void WriteSlot(XmlWriter& stream, const SeparateDataShape& shape, const OutputVertices& vertices,
               VertexSlot slot)
{
    if (!shape.AttributeFlags[IndexOf(slot)])
        return;
    const std::size_t dimension = DimensionOf(shape.Pool[slot]);
    WriteFloats(stream, slot, shape.Pool[slot].QuantizedMode, dimension,
                GatherValues(shape, vertices, slot, dimension));
}

/// Bone tuples are the same for all vertices only if all four components are, also those not written.
template<typename T>
bool AreAllEqual(const std::vector<T>& entries)
{
    return std::equal(entries.begin() + 1, entries.end(), entries.begin());
}

void WriteBoneIndices(XmlWriter& stream, const SeparateDataShape& shape, const OutputVertices& vertices,
                      std::size_t dimension)
{
    const std::vector<BoneIndexTuple> tuples =
        EntriesOf(shape.BoneIndexTuples, shape, vertices, VertexSlot::BoneIndex);
    if (AreAllEqual(tuples))
        WriteConstant(stream, VertexSlot::BoneIndex, std::span(tuples.front()).first(dimension));
    else
        WriteStream(stream,
                    {VertexSlot::BoneIndex, dimension, 1.0f, shape.Pool[VertexSlot::BoneIndex].QuantizedMode},
                    Flatten<std::int32_t>(tuples, dimension));
}

Vector4 Scaled(const Vector4& weights, float factor)
{
    return {weights.X * factor, weights.Y * factor, weights.Z * factor, weights.W * factor};
}

void WriteBoneWeights(XmlWriter& stream, const SeparateDataShape& shape, const OutputVertices& vertices,
                      std::size_t dimension)
{
    const QuantizedMode mode = shape.Pool[VertexSlot::BoneWeight].QuantizedMode;
    std::vector<Vector4> weights = EntriesOf(shape.BoneWeightTuples, shape, vertices, VertexSlot::BoneWeight);
    const std::array<float, 4> first = ComponentsOf(weights.front());
    if (!KeepsValues(mode))
        for (Vector4& tuple : weights)
            tuple = Scaled(tuple, WeightFactor);
    const float scale = KeepsValues(mode) ? 1.0f : WeightScale;
    if (AreAllEqual(weights))
        WriteConstant(stream, VertexSlot::BoneWeight, std::span<const float>(first).first(dimension));
    else
        WriteStream(stream, {VertexSlot::BoneWeight, dimension, scale, mode},
                    Flatten<float>(weights, dimension));
}

void WriteBoneStreams(XmlWriter& stream, const SeparateDataShape& shape, const OutputVertices& vertices)
{
    if (vertices.Count() == 0)
        return;
    const auto dimension =
        static_cast<std::size_t>(GetWeightDimension(shape, LargestBoneTable(shape), shape.BoneWeightTuples));
    WriteBoneIndices(stream, shape, vertices, dimension);
    WriteBoneWeights(stream, shape, vertices, dimension);
}

/// Middle of the range of one component.
float MiddleOf(const std::vector<float>& values, std::size_t component)
{
    if (values.empty())
        return 0.0f;
    float minimum = values[component];
    float maximum = values[component];
    for (std::size_t i = component; i < values.size(); i += PositionDimension) {
        minimum = std::min(minimum, values[i]);
        maximum = std::max(maximum, values[i]);
    }
    return SnapToZero((minimum + maximum) * 0.5f);
}

} // namespace

OffsetPositions ComputeOffsetPositions(const SeparateDataShape& shape, const OutputVertices& vertices,
                                       float magnify)
{
    OffsetPositions positions;
    positions.Values = GatherValues(shape, vertices, VertexSlot::Position, PositionDimension);
    const std::array<float, PositionDimension> middle{
        MiddleOf(positions.Values, 0), MiddleOf(positions.Values, 1), MiddleOf(positions.Values, 2)};
    for (std::size_t i = 0; i < positions.Values.size(); ++i)
        positions.Values[i] = (positions.Values[i] - middle[i % PositionDimension]) * magnify;
    positions.Offset = {middle[0] * magnify, middle[1] * magnify, middle[2] * magnify};
    return positions;
}

std::vector<float> GatherValues(const SeparateDataShape& shape, const OutputVertices& vertices,
                                VertexSlot slot, std::size_t dimension)
{
    return std::visit(
        [&](const auto& list) -> std::vector<float> {
            if constexpr (std::is_same_v<decltype(list), const std::monostate&>)
                return std::vector<float>(vertices.Count() * dimension, 0.0f);
            else
                return Flatten<float>(EntriesOf(list.Read(), shape, vertices, slot), dimension);
        },
        shape.Pool[slot].Data);
}

void WriteVertexAttributes(XmlWriter& stream, const SeparateDataShape& shape, const OutputVertices& vertices,
                           const OffsetPositions& positions)
{
    stream.Element("VertexAttributes", [&] {
        WriteFloats(stream, VertexSlot::Position, shape.Pool[VertexSlot::Position].QuantizedMode,
                    PositionDimension, positions.Values);
        for (const VertexSlot slot :
             {VertexSlot::Normal, VertexSlot::Color, VertexSlot::TextureCoordinate0,
              VertexSlot::TextureCoordinate1, VertexSlot::TextureCoordinate2, VertexSlot::Tangent})
            WriteSlot(stream, shape, vertices, slot);
        if (shape.SkinWeights != nullptr)
            WriteBoneStreams(stream, shape, vertices);
        for (const VertexSlot slot :
             {VertexSlot::UserAttribute0, VertexSlot::UserAttribute1, VertexSlot::UserAttribute2})
            WriteSlot(stream, shape, vertices, slot);
    });
}

} // namespace tq4x
