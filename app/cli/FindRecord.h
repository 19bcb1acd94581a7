#pragma once

#include <string>

#include "gltf/EditExtras.h"
#include "gltf/GltfDocument.h"

namespace tq4x::cli
{

/// A node or material of a document, or a sentence that says why there is none.
struct FoundRecord
{
    gltf::RecordPlace Place;
    gltf::JsonValue Extras;   ///< of a node with those of its mesh before them, so that a key may stand twice
    bool HasMaterial = false; ///< it is a material, or a node with a mesh that has one
    bool IsMaterial = false;
    std::string Error;
};

/// Finds a node by its name or the end of its path, "left/arm/hand", or else a material by its name. A prefix
/// "node:" or "material:" looks for that kind alone, and behind it a number counts in the order of the file
/// from 0: "node:#3". The nearest name is proposed for one that does not exist; several of one name are
/// refused.
[[nodiscard]] FoundRecord FindRecord(const gltf::Document& document, const std::string& name);

} // namespace tq4x::cli
