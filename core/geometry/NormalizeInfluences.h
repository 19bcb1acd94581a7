#pragma once

#include "geometry/SkinWeightTable.h"

namespace tq4x
{

/// Leaves at most four influences whose percentages sum to 100. An empty list stays empty. More than four:
/// the largest four stay. Too much is taken from the smallest ones, down to dropping them; what is missing
/// goes to the largest. A list that needs no correction keeps its order, a corrected one is sorted by
/// descending percentage, equal ones in their former order. Zero and negative percentages are entries like
/// others.
///
/// 70, 70 becomes 70, 30; 100, 30 becomes 100; 30, 30 becomes 70, 30.
void NormalizeInfluences(SkinWeightEntry& entry);

} // namespace tq4x
