#include "geometry/AssignBoneTables.h"

#include "geometry/PaletteSlots.h"

namespace tq4x
{

void AssignBoneTables(SeparateDataShape& shape)
{
    const NumberedPalettes numbered = NumberPalettes(shape);
    PaletteSlots slots(numbered.SlotCount, numbered.BoneIndices.size());
    for (std::size_t i = 0; i < shape.PrimitiveSets.size(); ++i) {
        slots.Load(numbered.Palettes[i]);
        std::vector<std::int32_t>& table = shape.PrimitiveSets[i].BoneIndexTable;
        table.clear();
        for (std::size_t slot = 0; slot < numbered.SlotCount; ++slot)
            if (slots.IsMarked(slot))
                table.push_back(numbered.BoneIndices[static_cast<std::size_t>(slots.Slots()[slot])]);
    }
}

} // namespace tq4x
