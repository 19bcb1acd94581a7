#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "gltf/GltfDocument.h"

namespace tq4x::gltf
{

/// The triangles of a primitive, three vertex numbers each, in the winding of the file.
struct Triangles
{
    std::vector<std::uint32_t> Corners;
    std::size_t DroppedCount = 0; ///< of a strip or fan: triangles that use a vertex twice, made to join runs
    std::size_t LooseCount = 0;   ///< of a list: one or two corners behind the last whole triangle
};

/// Reads a primitive of mode `Triangles`, `TriangleStrip` or `TriangleFan`, with or without indices.
/// Triangles of a list are kept as they are, degenerate ones too: the author wrote them. Points and lines
/// give none. Throws `SceneError` at `place` for an index beyond the vertices.
[[nodiscard]] Triangles ReadTriangles(const Document& document, const Primitive& primitive,
                                      const std::string& place);

/// Vertices of a primitive: the length of its POSITION, 0 without one.
[[nodiscard]] std::size_t VertexCount(const Document& document, const Primitive& primitive);

} // namespace tq4x::gltf
