#include "geometry/PaletteSlots.h"

#include "scene/Bone.h"

#include <algorithm>
#include <bit>

namespace tq4x
{
namespace
{

std::vector<std::int32_t> CollectBoneIndices(const SeparateDataShape& shape)
{
    std::vector<std::int32_t> indices;
    for (const PrimitiveSet& set : shape.PrimitiveSets)
        for (const Bone* bone : set.Palette)
            indices.push_back(bone->BoneIndex);
    std::sort(indices.begin(), indices.end());
    indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
    return indices;
}

std::vector<std::int32_t> NumberPalette(const BoneList& palette, const std::vector<std::int32_t>& indices)
{
    std::vector<std::int32_t> numbers;
    for (const Bone* bone : palette) {
        const auto place = std::lower_bound(indices.begin(), indices.end(), bone->BoneIndex);
        const auto number = static_cast<std::int32_t>(place - indices.begin());
        // Bones outside the bone list all have the same index.
        if (std::find(numbers.begin(), numbers.end(), number) == numbers.end())
            numbers.push_back(number);
    }
    return numbers;
}

} // namespace

NumberedPalettes NumberPalettes(const SeparateDataShape& shape)
{
    NumberedPalettes numbered;
    numbered.BoneIndices = CollectBoneIndices(shape);
    for (const PrimitiveSet& set : shape.PrimitiveSets) {
        numbered.Palettes.push_back(NumberPalette(set.Palette, numbered.BoneIndices));
        // Bones go to the first free slot, so no slot past the largest palette is ever reached.
        numbered.SlotCount = std::max(numbered.SlotCount, set.Palette.size());
    }
    numbered.SlotCount = std::min<std::size_t>(numbered.SlotCount, shape.BoneCapacity);
    return numbered;
}

PaletteSlots::PaletteSlots(std::size_t slotCount, std::size_t boneCount)
    : m_bones(slotCount, Empty),
      m_slots(boneCount, Empty),
      m_marks(slotCount / 64 + 1)
{}

std::int32_t PaletteSlots::Load(std::span<const std::int32_t> palette)
{
    std::fill(m_marks.begin(), m_marks.end(), 0);
    m_missing.clear();
    for (const std::int32_t bone : palette) {
        const std::int32_t slot = m_slots[static_cast<std::size_t>(bone)];
        if (slot == Empty)
            m_missing.push_back(bone);
        else
            Mark(static_cast<std::size_t>(slot));
    }
    std::int32_t loads = 0;
    for (const std::int32_t bone : m_missing) {
        const std::size_t slot = FindFreeSlot();
        if (slot >= m_bones.size())
            break;
        Replace(slot, bone);
        Mark(slot);
        ++loads;
    }
    return loads;
}

void PaletteSlots::Restore(std::span<const std::int32_t> slots)
{
    for (std::size_t slot = 0; slot < m_bones.size(); ++slot)
        Replace(slot, Empty);
    for (std::size_t slot = 0; slot < m_bones.size(); ++slot)
        Replace(slot, slots[slot]);
}

std::size_t PaletteSlots::FindFreeSlot() const
{
    std::size_t word = 0;
    while (word + 1 < m_marks.size() && ~m_marks[word] == 0)
        ++word;
    return word * 64 + static_cast<std::size_t>(std::countr_one(m_marks[word]));
}

void PaletteSlots::Replace(std::size_t slot, std::int32_t bone)
{
    if (m_bones[slot] != Empty)
        m_slots[static_cast<std::size_t>(m_bones[slot])] = Empty;
    m_bones[slot] = bone;
    if (bone != Empty)
        m_slots[static_cast<std::size_t>(bone)] = static_cast<std::int32_t>(slot);
}

} // namespace tq4x
