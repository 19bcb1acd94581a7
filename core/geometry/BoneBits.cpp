#include "geometry/BoneBits.h"

#include <cstddef>

namespace tq4x
{

std::int32_t BoneNumbering::NumberOf(const Bone* bone)
{
    return m_numbers.try_emplace(bone, static_cast<std::int32_t>(m_numbers.size())).first->second;
}

BoneBits BoneNumbering::BitsOf(const BoneList& bones)
{
    BoneBits bits;
    for (const Bone* bone : bones) {
        const auto number = static_cast<std::size_t>(NumberOf(bone));
        if (number / 64 >= bits.size())
            bits.resize(number / 64 + 1);
        bits[number / 64] |= std::uint64_t{1} << number % 64;
    }
    return bits;
}

bool ContainsAll(const BoneBits& whole, const BoneBits& part)
{
    for (std::size_t i = 0; i < part.size(); ++i)
        if (part[i] & ~(i < whole.size() ? whole[i] : 0))
            return false;
    return true;
}

} // namespace tq4x
