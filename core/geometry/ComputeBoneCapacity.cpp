#include "geometry/ComputeBoneCapacity.h"

namespace tq4x
{

std::int32_t ComputeBoneCapacity(bool isNonUniformScale, std::int32_t maxReservedUniformRegisters)
{
    constexpr std::int64_t uniformRegisters = 60;
    constexpr std::int64_t registersPerBone = 3;
    constexpr std::int64_t registersPerScaledBone = 6; // the normals need a matrix of their own
    if (maxReservedUniformRegisters > uniformRegisters)
        return 0;
    const std::int64_t perBone = isNonUniformScale ? registersPerScaledBone : registersPerBone;
    return static_cast<std::int32_t>((uniformRegisters - maxReservedUniformRegisters) / perBone);
}

} // namespace tq4x
