#include "geometry/NormalizeInfluences.h"
#include "support/GeometryScene.h"

#include <algorithm>
#include <numeric>

namespace tq4x
{
namespace
{

using namespace test;
using Percentages = std::vector<std::int32_t>;

SkinWeightEntry MakeEntry(Skeleton& bones, const Percentages& percentages)
{
    SkinWeightEntry entry;
    for (std::size_t i = 0; i < percentages.size(); ++i)
        entry.push_back({&bones[i], percentages[i]});
    return entry;
}

Percentages PercentagesOf(const SkinWeightEntry& entry)
{
    Percentages percentages;
    for (const SkinInfluence& influence : entry)
        percentages.push_back(influence.Percentage);
    return percentages;
}

std::string NamesOf(const SkinWeightEntry& entry)
{
    std::string names;
    for (const SkinInfluence& influence : entry)
        names += influence.Bone->Name;
    return names;
}

TEST(NormalizeInfluences, Cases)
{
    const struct
    {
        const char* Name;
        Percentages Before;
        Percentages After;
        const char* Bones; ///< named a, b, c, ... in the order before
    } cases[] = {
        {"empty", {}, {}, ""},
        {"single", {30}, {100}, "a"},
        {"single of nothing", {0}, {100}, "a"},
        {"right already keeps its order", {20, 50, 30}, {20, 50, 30}, "abc"},
        {"five: the smallest goes, the sum is right", {40, 30, 20, 10, 5}, {40, 30, 20, 10}, "abcd"},
        {"five, unsorted", {5, 20, 40, 10, 30}, {40, 30, 20, 10}, "cebd"},
        {"five that sum to 100 lose the smallest", {5, 35, 30, 20, 10}, {40, 30, 20, 10}, "bcde"},
        {"six", {10, 10, 10, 60, 5, 5}, {70, 10, 10, 10}, "dabc"},
        {"the second is cut down", {70, 70}, {70, 30}, "ab"},
        {"the second would be 0: it goes", {100, 30}, {100}, "a"},
        {"and all behind it", {100, 30, 20}, {100}, "a"},
        {"sorted before it is cut", {30, 100}, {100}, "b"},
        {"the first alone is too much", {150, 20}, {100}, "a"},
        {"a later entry fills what is left", {60, 30, 30}, {60, 30, 10}, "abc"},
        {"a corrected entry of 1 stays", {99, 5, 1}, {99, 1}, "ab"},
        {"zeros behind a full sum stay", {100, 1, 0}, {100}, "a"},
        {"what is missing goes to the largest", {30, 30}, {70, 30}, "ab"},
        {"to the largest, wherever it stood", {10, 20, 30}, {70, 20, 10}, "cba"},
        {"equal ones keep their order", {20, 10, 20, 10}, {60, 20, 10, 10}, "acbd"},
        {"all zero", {0, 0}, {100, 0}, "ab"},
        {"negative ones count", {-10, 60}, {110, -10}, "ba"},
        {"negative ones behind too much", {90, 50, -10}, {90, 10, -10}, "abc"},
    };

    for (const auto& test : cases) {
        Skeleton bones{"a", "b", "c", "d", "e", "f"};
        SkinWeightEntry entry = MakeEntry(bones, test.Before);
        NormalizeInfluences(entry);
        EXPECT_EQ(PercentagesOf(entry), test.After) << test.Name;
        EXPECT_EQ(NamesOf(entry), test.Bones) << test.Name;
    }
}

/// The exchange sort, which leaves equal percentages in any order.
void ExchangeSort(SkinWeightEntry& entry)
{
    for (std::size_t i = 0; i < entry.size(); ++i)
        for (std::size_t j = i + 1; j < entry.size(); ++j)
            if (entry[j].Percentage > entry[i].Percentage)
                std::swap(entry[i], entry[j]);
}

void NormalizeByTheLetter(SkinWeightEntry& entry)
{
    if (entry.size() == 1)
        entry[0].Percentage = 100;
    if (entry.size() < 2)
        return;
    if (entry.size() > 4) {
        ExchangeSort(entry);
        entry.resize(4);
    }
    const Percentages before = PercentagesOf(entry);
    const std::int32_t sum = std::accumulate(before.begin(), before.end(), 0);
    if (sum == 100)
        return;
    ExchangeSort(entry);
    if (sum < 100) {
        std::int32_t others = 0;
        for (std::size_t i = 1; i < entry.size(); ++i)
            others += entry[i].Percentage;
        entry[0].Percentage = 100 - others;
        return;
    }
    std::int32_t total = 0;
    for (std::size_t i = 0; i < entry.size(); ++i) {
        if (total + entry[i].Percentage > 100) {
            entry[i].Percentage = 100 - total;
            if (entry[i].Percentage < 1) {
                entry.resize(i);
                return;
            }
        }
        total += entry[i].Percentage;
    }
}

TEST(NormalizeInfluences, AgreesWithTheExchangeSort)
{
    constexpr unsigned seed = 311;
    std::mt19937 random(seed);
    for (int test = 0; test < 5000; ++test) {
        Skeleton bones(8);
        Percentages percentages(std::uniform_int_distribution<std::size_t>(0, 8)(random));
        for (std::int32_t& percentage : percentages)
            percentage = std::uniform_int_distribution<std::int32_t>(0, test % 2 ? 100 : 30)(random);
        SkinWeightEntry entry = MakeEntry(bones, percentages);
        SkinWeightEntry literal = entry;
        NormalizeInfluences(entry);
        NormalizeByTheLetter(literal);
        ASSERT_EQ(PercentagesOf(entry), PercentagesOf(literal)) << "case " << test;
        Percentages sorted = percentages;
        std::sort(sorted.begin(), sorted.end());
        if (std::adjacent_find(sorted.begin(), sorted.end()) == sorted.end()) {
            ASSERT_EQ(entry, literal) << "case " << test;
        }
        if (!entry.empty()) {
            const Percentages after = PercentagesOf(entry);
            ASSERT_EQ(std::accumulate(after.begin(), after.end(), 0), 100) << "case " << test;
            ASSERT_LE(entry.size(), 4u) << "case " << test;
        }
    }
}

} // namespace
} // namespace tq4x
