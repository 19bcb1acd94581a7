#pragma once

#include "geometry/Mesh.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tq4x
{

/// The palettes of a shape's sets by numbers of bones, which ascend with `BoneIndex`.
struct NumberedPalettes
{
    std::vector<std::int32_t> BoneIndices;           ///< by number, ascending
    std::vector<std::vector<std::int32_t>> Palettes; ///< by set, in palette order
    std::size_t SlotCount = 0;                       ///< slots that can ever be used
};

/// Needs the bone list (`BoneIndex`).
NumberedPalettes NumberPalettes(const SeparateDataShape& shape);

/// The table of bone matrices as the hardware keeps it from set to set, all slots empty at the start. A bone
/// that the next set has too stays where it is; the others go to the first slots that no bone of that set has
/// taken.
class PaletteSlots
{
public:
    static constexpr std::int32_t Empty = -1;

    PaletteSlots(std::size_t slotCount, std::size_t boneCount);

    /// Brings a palette into the table; the number of bones that had to be loaded. A bone that finds no slot
    /// is left out.
    std::int32_t Load(std::span<const std::int32_t> palette);

    /// Bone numbers by slot.
    std::span<const std::int32_t> Slots() const { return m_bones; }

    /// True for the slots of the palette that was loaded last.
    bool IsMarked(std::size_t slot) const { return (m_marks[slot / 64] >> slot % 64 & 1) != 0; }

    /// Brings the table into the state that `Slots` had.
    void Restore(std::span<const std::int32_t> slots);

private:
    void Mark(std::size_t slot) { m_marks[slot / 64] |= std::uint64_t{1} << slot % 64; }

    std::size_t FindFreeSlot() const;
    void Replace(std::size_t slot, std::int32_t bone);

    std::vector<std::int32_t> m_bones;   ///< by slot
    std::vector<std::int32_t> m_slots;   ///< by bone
    std::vector<std::uint64_t> m_marks;  ///< a bit for each slot
    std::vector<std::int32_t> m_missing; ///< bones to load; kept for its memory
};

} // namespace tq4x
