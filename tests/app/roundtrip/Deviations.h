#pragma once

#include "Approx.h"

#include <cstddef>
#include <string>

namespace tq4x::test
{

/// What was compared of one quantity, and where it came closest to its bound or crossed it.
struct Deviation
{
    std::string Quantity;
    std::size_t Count = 0;
    double Worst = 0.0; ///< of the comparison with the worst ratio
    double Bound = 0.0;
    double Ratio = -1.0; ///< deviation by bound: 1 is the limit
    std::string Scene;
    std::string Place;
};

/// The row of a quantity in the table that is printed behind all tests.
Deviation& DeviationOf(const std::string& quantity);

/// What is compared now, for the table and for messages: "seed 17", "Fox.glb".
void SetSceneName(const std::string& name);
const std::string& SceneName();

/// Whether a comparison of this scene failed.
bool HasFailures();

/// Enters a comparison. False, and a failure with `place`, if the deviation is above the bound. Of the
/// failures of one scene the first ones are told.
bool Check(Deviation& row, double deviation, double bound, const std::string& place);

inline bool Check(Deviation& row, const Approx& written, const Approx& wanted, const std::string& place)
{
    return Check(row, Distance(written, wanted), BoundOf(written, wanted), place);
}

/// Enters a comparison of what must be equal: words, names, flags, counts.
template<typename T, typename U>
bool CheckEqual(Deviation& row, const T& written, const U& wanted, const std::string& place)
{
    return Check(row, written == wanted ? 0.0 : 1.0, 0.0, place);
}

} // namespace tq4x::test
