#include "environment/Light.h"

#include <utility>

namespace tq4x
{

void SetSpotCone(Light& light, float cone, float spread, LookupTableSet& lookupTables)
{
    const float outer = cone * 0.5f;
    const float inner = outer <= spread ? 0.0f : outer - spread;
    LookupTable table;
    table.Name = light.Name;
    table.IsGeneratedAsAbs = true;
    table.IsSizeDoubled = true;
    table.IsMipMap = false;
    table.BuildSpotRange(inner, outer);
    light.AngleSampler.IsAbs = true;
    light.AngleSampler.Input = 2;
    light.AngleSampler.TableIndex = lookupTables.FindOrAdd(std::move(table));
}

} // namespace tq4x
