#include "WrittenShape.h"

namespace tq4x::test
{
namespace
{

/// The largest number of a storage; 0 for floats. Bytes may turn out unsigned, which is finer.
double HighLimit(const std::string& mode)
{
    return mode == "Short" ? 32767.0 : mode == "Byte" ? 127.0 : 0.0;
}

/// Numbers that round to the same differ by less than a step, which is the largest of them by the limit; the
/// largest may itself be a step above the first.
double StepOfConstant(const reader::VertexStream& stream, const reader::Vector3& offset, double limit)
{
    if (limit == 0.0 || stream.Values.size() < stream.Dimension)
        return 0.0;
    double largest = 0.0;
    for (std::size_t i = 0; i < stream.Dimension; ++i) {
        const double shift = i < offset.size() ? static_cast<double>(offset[i]) : 0.0;
        largest = std::max(largest, std::abs(static_cast<double>(stream.Values[i]) - shift));
    }
    return largest / (limit - 1.0) * (1.0 + 8.0 * SingleRounding);
}

} // namespace

WrittenStream::WrittenStream(const reader::VertexStream& stream, const std::string& wantedMode,
                             const reader::Vector3& offset)
    : m_stream(&stream),
      m_offset(offset),
      m_constantError(stream.IsConstant ? StepOfConstant(stream, offset, HighLimit(wantedMode)) : 0.0)
{}

/// Of a number before the offset. Floats are printed. Others are whole numbers: half a step of rounding, the
/// scale is printed, and the numbers were multiplied in single precision before they were rounded. Weights
/// are printed in percent.
double WrittenStream::StorageError(double raw) const
{
    const double scale = m_stream->Scale;
    if (m_stream->IsConstant || m_stream->QuantizedMode == "Float" || m_stream->QuantizedMode == "Auto")
        return PrintedError(raw) + m_constantError;
    const double stored = raw / scale;
    constexpr double sixDigits = 5e-6; // most that printing takes from a number, relative to it
    const double scaleError = std::abs(raw) * sixDigits;
    const double product = 4.0 * SingleRounding * std::abs(raw);
    const bool isPercent = m_stream->Usage == "BoneWeight";
    return scaleError + product + scale * (isPercent ? PrintedError(stored) : 0.5);
}

Approx WrittenStream::At(std::size_t vertex, std::size_t component) const
{
    const double value = m_stream->Values.at(vertex * m_stream->Dimension + component);
    const double offset = component < m_offset.size() ? m_offset[component] : 0.0F;
    const double offsetError = m_stream->Usage == "Position" ? PrintedError(offset) : 0.0;
    const double raw = value - offset;
    return Rounded(value,
                   StorageError(raw) + offsetError + SingleRounding * (std::abs(raw) + std::abs(offset)));
}

std::vector<WrittenTriangle> ListTriangles(const reader::Shape& shape)
{
    std::vector<WrittenTriangle> triangles;
    for (std::size_t set = 0; set < shape.Sets.size(); ++set)
        for (const reader::IndexStream& stream : shape.Sets[set].Streams)
            for (const auto& vertices : reader::ListTriangles(stream))
                triangles.push_back({set, vertices});
    return triangles;
}

} // namespace tq4x::test
