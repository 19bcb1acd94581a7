#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "gltf/GltfDocument.h"

/// The one place where the bytes of accessors are read. Ranges were checked when the document was read, so
/// what can still go wrong is the content: such a `SceneError` names the accessor.
namespace tq4x::gltf
{

/// All components of all values, value after value; matrices column after column. Integer components become
/// -1..1 or 0..1 where the accessor is normalised, else their plain number. Sparse values are put in.
[[nodiscard]] std::vector<float> ReadFloats(const Document& document, std::size_t accessor);

/// The same for some of the values, in the order in which they are asked for.
[[nodiscard]] std::vector<float> ReadFloatsAt(const Document& document, std::size_t accessor,
                                              std::span<const std::uint32_t> wanted);

/// The same for integer components, never normalised. Refuses float and signed components, as indices and
/// joints have neither.
[[nodiscard]] std::vector<std::uint32_t> ReadIntegers(const Document& document, std::size_t accessor);
[[nodiscard]] std::vector<std::uint32_t> ReadIntegersAt(const Document& document, std::size_t accessor,
                                                        std::span<const std::uint32_t> wanted);

} // namespace tq4x::gltf
