#pragma once

#include "geometry/ComputeTangent.h"
#include "math/Vector.h"

#include <vector>

namespace tq4x
{

/// The tangent of one normal number, and the corner that it was computed at.
struct TangentEntry
{
    TangentCorner Corner;
    Vector3 Tangent;
    bool IsStored = false; ///< false where no corner uses the normal: the entry takes no part
};

/// True if two entries are smoothed together: positions and coordinates each less than 1e-6 apart, tangents
/// not more than a right angle (a hair beyond it counts as right). Numbers that are not finite are alike to
/// nothing.
bool AreAlike(const TangentEntry& a, const TangentEntry& b);

/// Replaces the tangents of alike entries by their normalised sum (by the plain sum where that is zero).
///
/// Likeness is not transitive, so the order counts. Taken in ascending order, each entry joins the first
/// entry (seed) that it is alike with, and is a seed itself if there is none; an entry that joined is
/// nobody's seed. Likeness is judged by the tangents before smoothing. The sum starts with the seed and goes
/// on in ascending order. A seed that none joined keeps its tangent.
///
/// Seeds are found through a grid, so the time grows with the number of entries as long as only few of them
/// crowd within 1e-5 of each other without being alike.
void SmoothTangents(std::vector<TangentEntry>& entries);

} // namespace tq4x
