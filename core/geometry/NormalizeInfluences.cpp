#include "geometry/NormalizeInfluences.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace tq4x
{
namespace
{

constexpr std::size_t LargestInfluenceCount = 4;
constexpr std::int64_t WholePercentage = 100;

void SortByPercentage(SkinWeightEntry& entry)
{
    std::stable_sort(entry.begin(), entry.end(), [](const SkinInfluence& left, const SkinInfluence& right) {
        return left.Percentage > right.Percentage;
    });
}

std::int64_t SumOf(const SkinWeightEntry& entry)
{
    std::int64_t sum = 0;
    for (const SkinInfluence& influence : entry)
        sum += influence.Percentage;
    return sum;
}

void TakeExcess(SkinWeightEntry& entry)
{
    std::int64_t total = 0;
    for (std::size_t i = 0; i < entry.size(); ++i) {
        if (total + entry[i].Percentage > WholePercentage) {
            if (WholePercentage - total < 1) {
                entry.resize(i);
                return;
            }
            entry[i].Percentage = static_cast<std::int32_t>(WholePercentage - total);
        }
        total += entry[i].Percentage;
    }
}

} // namespace

void NormalizeInfluences(SkinWeightEntry& entry)
{
    if (entry.size() == 1)
        entry.front().Percentage = WholePercentage;
    if (entry.size() < 2)
        return;
    if (entry.size() > LargestInfluenceCount) {
        SortByPercentage(entry);
        entry.resize(LargestInfluenceCount);
    }
    const std::int64_t sum = SumOf(entry);
    if (sum == WholePercentage)
        return;
    SortByPercentage(entry);
    if (sum > WholePercentage)
        TakeExcess(entry);
    else
        entry.front().Percentage =
            static_cast<std::int32_t>(entry.front().Percentage + WholePercentage - sum);
}

} // namespace tq4x
