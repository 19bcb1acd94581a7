#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "gltf/JsonValue.h"

namespace tq4x::gltf
{

/// A record of a document: an item of one of its lists.
struct RecordPlace
{
    std::string List; ///< "nodes", "materials"
    std::size_t Index = 0;
};

/// Sets members of a record's `extras` in a document's text, which must be JSON that `ParseJson` takes. A
/// member that has an equal value already is left as it is written, others are replaced or added at the end;
/// every other byte of the text stays. Throws a `SceneError` if there is no such record, or its `extras` is
/// no object.
[[nodiscard]] std::string EditExtras(std::string_view json, const RecordPlace& place,
                                     const std::vector<JsonMember>& members);

/// The same for a whole file, text or .glb, whose other parts stay.
[[nodiscard]] std::string EditFileExtras(std::span<const std::uint8_t> file, const RecordPlace& place,
                                         const std::vector<JsonMember>& members);

} // namespace tq4x::gltf
