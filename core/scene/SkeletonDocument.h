#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace tq4x
{

class XmlWriter;
struct SkeletalModelWriter;

/// What a mesh says about its material.
struct MeshMaterial
{
    std::string_view Name; ///< valid while the materials are
    std::int32_t RenderPriority = 0;
};

/// Finds the material of an index; nothing if there is none.
using MaterialLookup = std::function<std::optional<MeshMaterial>(std::uint32_t materialIndex)>;

/// Writes `Meshes` at the given level: one `Mesh` for each shape, in the order of `Shapes`. A shape without
/// material refers to the empty name. With `BindByName`, `MeshNodeVisibilities` follows at the same level:
/// one element for each mesh entry, also for one without shapes.
void WriteMeshes(const SkeletalModelWriter& content, XmlWriter& stream, int level,
                 const MaterialLookup& materials);

/// Writes `Skeleton` at the given level: all bones by index, each with its user data and its local transform.
/// The transform is the bind pose's where a bone has one, else the first sample's; angles in radians,
/// translations magnified.
void WriteSkeleton(const SkeletalModelWriter& content, XmlWriter& stream, int level);

/// Writes `ContentSummaryMetaData` at level 2, for the edit block of the file's head. `ShapeCount` and
/// `MeshCount` both count mesh entries.
void WriteContentSummary(const SkeletalModelWriter& content, XmlWriter& stream, std::size_t materialCount);

} // namespace tq4x
