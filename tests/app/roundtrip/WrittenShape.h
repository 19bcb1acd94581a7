#pragma once

#include "Approx.h"
#include "ReadModel.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace tq4x::test
{

/// A stream of a written shape whose numbers are known up to the way in which they are stored.
class WrittenStream
{
public:
    /// `wantedMode` is the storage that was asked for: a stream whose numbers all round to the same is
    /// written once, unrounded, and does not tell how it was rounded. `offset` was added to each row by the
    /// reader.
    WrittenStream(const reader::VertexStream& stream, const std::string& wantedMode,
                  const reader::Vector3& offset = {});

    std::size_t Dimension() const { return m_stream->Dimension; }

    Approx At(std::size_t vertex, std::size_t component) const;

private:
    double StorageError(double raw) const;

    const reader::VertexStream* m_stream;
    reader::Vector3 m_offset;
    double m_constantError = 0.0; ///< how far other vertices may lie from the first in a constant stream
};

/// A triangle of a written shape, drawn with one of its sets.
struct WrittenTriangle
{
    std::size_t Set = 0;
    std::array<std::uint32_t, 3> Vertices = {};
};

/// Set by set, in the order of the indices.
std::vector<WrittenTriangle> ListTriangles(const reader::Shape& shape);

} // namespace tq4x::test
