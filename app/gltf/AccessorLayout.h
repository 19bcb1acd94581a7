#pragma once

#include "gltf/GltfDocument.h"

namespace tq4x::gltf
{

/// Most numbers that an accessor without data may stand for: they cost memory that no file has to hold.
inline constexpr std::uint64_t MaxImplicitNumbers = 16'777'216;

/// Components in one column of a matrix; all of a value of another shape.
[[nodiscard]] std::size_t ColumnLength(AccessorShape shape);

/// Bytes of one value. The columns of matrices of one- and two-byte components start at multiples of four.
[[nodiscard]] std::uint64_t ElementSize(const Accessor& accessor);

/// Bytes from the start of one column of a matrix to the next; of a whole value for the other shapes.
[[nodiscard]] std::uint64_t ColumnSize(const Accessor& accessor);

/// Bytes from one value to the next.
[[nodiscard]] std::uint64_t ElementStride(const Accessor& accessor, const Document& document);

} // namespace tq4x::gltf
