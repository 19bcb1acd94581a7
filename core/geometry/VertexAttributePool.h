#pragma once

#include "geometry/OrientedBoundingBox.h"
#include "geometry/SharedList.h"
#include "math/Vector.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <variant>
#include <vector>

namespace tq4x
{

/// How the components of a vertex stream are stored.
enum class QuantizedMode : std::int32_t
{
    Float = 0,
    Short = 1,
    Ushort = 2,
    Byte = 3,
    Ubyte = 4,
    Auto = 5, ///< acts as `Float`
};

/// The attributes of a vertex, in the order of a corner's indices.
enum class VertexSlot : std::int32_t
{
    Position = 0,
    Normal = 1,
    Tangent = 2,
    Color = 3,
    TextureCoordinate0 = 4,
    TextureCoordinate1 = 5,
    TextureCoordinate2 = 6,
    BoneIndex = 7,
    BoneWeight = 8,
    UserAttribute0 = 9,
    UserAttribute1 = 10,
    UserAttribute2 = 11,
};

inline constexpr std::size_t VertexSlotCount = 12;

/// The place of a slot in lists of twelve.
constexpr std::size_t IndexOf(VertexSlot slot)
{
    return static_cast<std::size_t>(slot);
}

/// Bone tuples belong to the shape; no pool list and no flag stands for their slots.
constexpr bool IsBoneSlot(VertexSlot slot)
{
    return slot == VertexSlot::BoneIndex || slot == VertexSlot::BoneWeight;
}

/// The values of one attribute; nothing for the bone slots.
using AttributeValues =
    std::variant<std::monostate, SharedList<Vector2>, SharedList<Vector3>, SharedList<Vector4>>;

/// One attribute: its values and how they are to be written.
struct VertexAttributeSlot
{
    std::int32_t Dimension = 4;                                     ///< components that are written, 1 to 4
    tq4x::QuantizedMode QuantizedMode = tq4x::QuantizedMode::Float; ///< wanted storage
    AttributeValues Data; ///< the slot's kind of list; empty where the attribute is absent

    /// The values. T is the slot's own type: `Vector3` for slots 0 to 2, `Vector2` for texture coordinates,
    /// `Vector4` for colours and user attributes.
    template<typename T>
    const std::vector<T>& Read() const
    {
        return std::get<SharedList<T>>(Data).Read();
    }

    /// The values to change; other pools that share them keep the old ones.
    template<typename T>
    std::vector<T>& Edit()
    {
        return std::get<SharedList<T>>(Data).Edit();
    }

    /// Number of values; 0 for the bone slots.
    std::size_t Size() const;
};

/// Values of all attributes, each attribute on its own; a vertex is a tuple of indices into the lists. Copies
/// share the lists until one of them is changed.
struct VertexAttributePool
{
    tq4x::OrientedBoundingBox OrientedBoundingBox;
    std::array<VertexAttributeSlot, VertexSlotCount> Slots;

    VertexAttributeSlot& operator[](VertexSlot slot) { return Slots[IndexOf(slot)]; }

    const VertexAttributeSlot& operator[](VertexSlot slot) const { return Slots[IndexOf(slot)]; }
};

/// Wanted storage of the attributes that the user decides on.
struct StreamQuantization
{
    QuantizedMode Position = QuantizedMode::Float;
    QuantizedMode Normal = QuantizedMode::Float;
    QuantizedMode TextureCoordinate = QuantizedMode::Float;

    bool operator==(const StreamQuantization&) const = default;
};

/// An empty pool with the slots' kinds of lists, dimensions and modes. Colour and user attributes have four
/// components until a property says otherwise.
VertexAttributePool MakeVertexAttributePool(const StreamQuantization& quantization);

} // namespace tq4x
