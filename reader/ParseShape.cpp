#include <algorithm>
#include <optional>

#include "NumberForm.h"
#include "ParseSections.h"

namespace tq4x::reader
{
namespace
{

/// Reads the words of a stream. Nothing, and the first one is told, if any is malformed.
std::optional<std::vector<double>> ParseNumbers(const ElementReader& stream)
{
    std::vector<double> numbers;
    WordCursor cursor(stream.Content());
    for (std::string_view word = cursor.Next(); !word.empty(); word = cursor.Next()) {
        const std::optional<double> number = ParseNumber(word);
        if (!number) {
            stream.Findings().Error("TQ-NUMBER", stream.Line() + cursor.Lines(),
                                    "\"" + std::string(word) +
                                        "\" is no finite number in the form of the files (" +
                                        std::string(stream.Name()) + ").");
            return std::nullopt;
        }
        numbers.push_back(*number);
    }
    return numbers;
}

/// The same for indices.
template<class Index>
std::optional<std::vector<Index>> ParseIndices(const ElementReader& stream)
{
    std::vector<Index> indices;
    WordCursor cursor(stream.Content());
    for (std::string_view word = cursor.Next(); !word.empty(); word = cursor.Next()) {
        const std::optional<int> index = ParseInteger(word);
        if (!index || *index < 0) {
            stream.Findings().Error("TQ-NUMBER", stream.Line() + cursor.Lines(),
                                    "\"" + std::string(word) + "\" is no index (" +
                                        std::string(stream.Name()) + ").");
            return std::nullopt;
        }
        indices.push_back(static_cast<Index>(*index));
    }
    return indices;
}

/// N of "VectorNVertexStreamQtr".
std::size_t DimensionOf(std::string_view name)
{
    constexpr std::string_view Prefix = "Vector";
    const char digit = name.starts_with(Prefix) && name.size() > Prefix.size() ? name[Prefix.size()] : '0';
    return digit >= '1' && digit <= '4' ? static_cast<std::size_t>(digit - '0') : 0;
}

/// The stated size is compared with what stands there.
void CheckStatedSize(const ElementReader& stream, std::string_view attribute, std::size_t actual)
{
    const int stated = stream.Integer(attribute);
    if (stated < 0 || static_cast<std::size_t>(stated) != actual) {
        stream.Findings().Error("TQ-COUNT", stream.Line(),
                                std::string(attribute) + " of " + std::string(stream.Name()) + " says " +
                                    std::to_string(stated) + ", there are " + std::to_string(actual) + ".");
    }
}

/// Numbers must fill whole rows: for a constant exactly one.
void CheckRows(const ElementReader& stream, const VertexStream& result, std::size_t numberCount)
{
    const bool isWhole =
        result.IsConstant ? numberCount == result.Dimension : numberCount % result.Dimension == 0;
    if (!isWhole) {
        stream.Findings().Error("TQ-COUNT", stream.Line(),
                                std::string(stream.Name()) + " holds " + std::to_string(numberCount) +
                                    " numbers, its rows need " + std::to_string(result.Dimension) + " each.");
    }
}

/// Whether numbers are whole and within the limits of their storage. Weights stand as they are.
void CheckStorage(const ElementReader& stream, const VertexStream& result, const std::vector<double>& numbers)
{
    struct Limit
    {
        std::string_view Mode;
        double Low;
        double High;
    };

    constexpr Limit Limits[] = {
        {"Short", -32767, 32767}, {"Ushort", 0, 65535}, {"Byte", -127, 127}, {"Ubyte", 0, 255}};
    const auto limit = std::ranges::find(Limits, std::string_view(result.QuantizedMode), &Limit::Mode);
    if (result.IsConstant || result.Usage == "BoneWeight" || limit == std::end(Limits)) {
        return;
    }
    const auto isOutside = [limit](double number) {
        return number < limit->Low || number > limit->High ||
               number != static_cast<double>(static_cast<long>(number));
    };
    const auto wrong = std::ranges::find_if(numbers, isOutside);
    if (wrong != numbers.end()) {
        const long row = (wrong - numbers.begin()) / static_cast<long>(result.Dimension);
        stream.Findings().Error("TQ-QUANTIZE", stream.Line() + 1 + row,
                                "A number of " + result.Usage + " can't be stored as " +
                                    result.QuantizedMode + ".");
    }
}

OrientedBoundingBox ParseBox(const ElementReader& element)
{
    OrientedBoundingBox box;
    box.CenterPosition = element.Child("CenterPosition").Vector();
    box.Size = element.Child("Size").Vector();
    const ElementReader matrix = element.Child("OrientationMatrix");
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            const std::string name = "M" + std::to_string(row) + std::to_string(column);
            box.OrientationMatrix[row][column] = matrix.Float(name);
        }
    }
    return box;
}

PrimitiveSet ParseSet(const ElementReader& element)
{
    PrimitiveSet set;
    set.SkinningMode = element.Text("SkinningMode");
    set.BoneIndexTable = ParseIndices<int>(element.Child("BoneIndexTable")).value_or(std::vector<int>());
    set.Line = element.Line();
    const ElementReader streams = element.Child("Primitives").Child("PrimitiveQtr").Child("IndexStreams");
    for (const ElementReader& stream : streams.Children()) {
        set.Streams.push_back(ParseIndexStream(stream));
    }
    return set;
}

/// As many vertices as the streams have rows. A shape of constants alone has those that its indices name:
/// they number vertices in the order of their first use, so there are no more vertices than indices. A larger
/// index is damage, and must not cost memory.
std::size_t CountVertices(const Shape& shape)
{
    for (const VertexStream& stream : shape.Streams) {
        if (!stream.IsConstant && stream.Dimension > 0) {
            return stream.Values.size() / stream.Dimension;
        }
    }
    std::size_t named = 0;
    std::size_t count = 0;
    for (const PrimitiveSet& set : shape.Sets) {
        for (const IndexStream& stream : set.Streams) {
            count += stream.Indices.size();
            for (const std::uint32_t index : stream.Indices) {
                named = std::max(named, std::size_t{index} + 1);
            }
        }
    }
    return std::min(named, count);
}

void ExpandConstants(Shape& shape)
{
    for (VertexStream& stream : shape.Streams) {
        if (!stream.IsConstant || stream.Values.size() != stream.Dimension) {
            continue;
        }
        const std::vector<float> value = stream.Values;
        stream.Values.clear();
        stream.Values.reserve(shape.VertexCount * stream.Dimension);
        for (std::size_t i = 0; i < shape.VertexCount; ++i) {
            stream.Values.insert(stream.Values.end(), value.begin(), value.end());
        }
    }
}

} // namespace

IndexStream ParseIndexStream(const ElementReader& element)
{
    IndexStream stream;
    stream.PrimitiveMode = element.Text("PrimitiveMode");
    stream.IsUbyte = element.Name() == "UbyteIndexStreamQtr";
    stream.Line = element.Line();
    if (std::optional<std::vector<std::uint32_t>> indices = ParseIndices<std::uint32_t>(element)) {
        stream.Indices = std::move(*indices);
        CheckStatedSize(element, "Size", stream.Indices.size());
    }
    return stream;
}

VertexStream ParseVertexStream(const ElementReader& element, const Vector3& positionOffset)
{
    VertexStream stream;
    stream.Usage = element.Text("Usage");
    stream.Dimension = DimensionOf(element.Name());
    stream.IsConstant = element.Name().ends_with("VertexAttributeQtr");
    const double scale = element.Number("Scale", 1);
    stream.Scale = static_cast<float>(scale);
    stream.QuantizedMode = stream.IsConstant ? "Float" : element.Text("QuantizedMode");
    stream.Line = element.Line();
    const std::optional<std::vector<double>> parsed = ParseNumbers(element);
    if (!parsed || stream.Dimension == 0) {
        return stream;
    }
    const std::vector<double>& numbers = *parsed;
    CheckRows(element, stream, numbers.size());
    if (!stream.IsConstant) {
        CheckStatedSize(element, "VertexSize", numbers.size() / stream.Dimension);
    }
    CheckStorage(element, stream, numbers);
    const bool isPosition = stream.Usage == "Position" && stream.Dimension == 3;
    stream.Values.reserve(numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const double offset = isPosition ? static_cast<double>(positionOffset[i % 3]) : 0.0;
        stream.Values.push_back(static_cast<float>(numbers[i] * scale + offset));
    }
    return stream;
}

Shape ParseShape(const ElementReader& element)
{
    Shape shape;
    shape.BoundingBox = ParseBox(element.Child("OrientedBoundingBox"));
    shape.PositionOffset = element.Child("PositionOffset").Vector();
    shape.Line = element.Line();
    for (const ElementReader& set : element.Child("PrimitiveSets").Children("PrimitiveSetQtr")) {
        shape.Sets.push_back(ParseSet(set));
    }
    for (const ElementReader& attribute : element.Child("VertexAttributes").Children()) {
        shape.Streams.push_back(ParseVertexStream(attribute, shape.PositionOffset));
    }
    shape.VertexCount = CountVertices(shape);
    ExpandConstants(shape);
    return shape;
}

} // namespace tq4x::reader
