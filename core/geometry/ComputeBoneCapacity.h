#pragma once

#include <cstdint>

namespace tq4x
{

/// The largest number of bones in a palette: 60 registers, less those that the user keeps free, three for
/// each bone, six where the skeleton may scale non-uniformly. 0 if more than 60 are kept free.
std::int32_t ComputeBoneCapacity(bool isNonUniformScale, std::int32_t maxReservedUniformRegisters);

} // namespace tq4x
