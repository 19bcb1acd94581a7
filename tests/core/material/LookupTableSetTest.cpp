#include "material/LookupTable.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <vector>

namespace tq4x
{
namespace
{

constexpr float NotANumber = std::numeric_limits<float>::quiet_NaN();

LookupTable MakeTable(const std::string& name, std::vector<float> samples, bool isAbs = true,
                      bool isDoubled = true, bool isMipMap = false)
{
    return {name, isAbs, isDoubled, isMipMap, std::move(samples)};
}

std::vector<std::string> NamesOf(const LookupTableSet& set)
{
    std::vector<std::string> names;
    for (const LookupTable& table : set.Tables())
        names.push_back(table.Name);
    return names;
}

TEST(LookupTableSet, FindComparesFlagsAndSamples)
{
    const struct
    {
        const char* Name;
        LookupTable Wanted;
        bool IsFound;
    } cases[] = {
        {"same", MakeTable("A", {1.0f, 0.0f}), true},
        {"another name", MakeTable("B", {1.0f, 0.0f}), true},
        {"minus zero equals zero", MakeTable("A", {1.0f, -0.0f}), true},
        {"another value", MakeTable("A", {1.0f, 1e-30f}), false},
        {"not abs", MakeTable("A", {1.0f, 0.0f}, false), false},
        {"not doubled", MakeTable("A", {1.0f, 0.0f}, true, false), false},
        {"with mipmaps", MakeTable("A", {1.0f, 0.0f}, true, true, true), false},
        {"shorter", MakeTable("A", {1.0f}), false},
        {"longer", MakeTable("A", {1.0f, 0.0f, 0.0f}), false},
        {"not a number", MakeTable("A", {1.0f, NotANumber}), false},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        LookupTableSet set;
        EXPECT_EQ(set.Find(c.Wanted), std::nullopt);
        EXPECT_EQ(set.Add(MakeTable("A", {1.0f, 0.0f})), 0);
        EXPECT_EQ(set.Find(c.Wanted).has_value(), c.IsFound);
        EXPECT_EQ(set.FindOrAdd(c.Wanted), c.IsFound ? 0 : 1);
        EXPECT_EQ(set.Tables().size(), c.IsFound ? 1u : 2u);
        EXPECT_EQ(set.At(0)->Name, "A") << "the first keeps its name";
    }
}

TEST(LookupTableSet, TablesWithoutANumberAreNeverShared)
{
    LookupTableSet set;
    const LookupTable table = MakeTable("A", {NotANumber});
    EXPECT_EQ(set.FindOrAdd(table), 0);
    EXPECT_EQ(set.FindOrAdd(table), 1);
    EXPECT_EQ(set.FindOrAdd(table), 2);
}

TEST(LookupTableSet, AddAppendsEvenAnEqualTable)
{
    LookupTableSet set;
    EXPECT_TRUE(set.IsEmpty());
    EXPECT_EQ(set.Add(MakeTable("A", {1.0f})), 0);
    EXPECT_EQ(set.Add(MakeTable("B", {1.0f})), 1);
    EXPECT_EQ(set.Find(MakeTable("C", {1.0f})), 0) << "the first of equals";
    EXPECT_FALSE(set.IsEmpty());
}

TEST(LookupTableSet, AtAnswersNothingOutside)
{
    LookupTableSet set;
    EXPECT_EQ(set.At(0), nullptr);
    set.Add(MakeTable("A", {1.0f}));
    EXPECT_EQ(set.At(-1), nullptr);
    EXPECT_NE(set.At(0), nullptr);
    EXPECT_EQ(set.At(1), nullptr);
}

TEST(LookupTableSet, RenamedTablesAreStillFound)
{
    LookupTableSet set;
    set.Add(MakeTable("A", {1.0f}));
    set.Add(MakeTable("A", {2.0f}));
    set.MakeNamesUnique();
    EXPECT_EQ(set.FindOrAdd(MakeTable("A", {2.0f})), 1);
}

TEST(LookupTableSet, MakeNamesUnique)
{
    const struct
    {
        const char* Name;
        std::vector<std::string> Before, After;
    } cases[] = {
        {"empty set", {}, {}},
        {"one table", {"Specular"}, {"Specular"}},
        {"distinct names", {"A", "B", "C"}, {"A", "B", "C"}},
        {"three of one name", {"Specular", "Specular", "Specular"}, {"Specular", "Specular_1", "Specular_2"}},
        {"two names mixed", {"A", "B", "A", "B", "A"}, {"A", "B", "A_1", "B_1", "A_2"}},
        {"case counts", {"A", "a", "A"}, {"A", "a", "A_1"}},
        {"a suffixed name is taken", {"A", "A_1", "A", "A"}, {"A", "A_1", "A_2", "A_3"}},
        {"a suffixed name comes later", {"A", "A", "A_1", "A"}, {"A", "A_1", "A_1_1", "A_2"}},
        {"gap in the suffixes", {"A", "A_2", "A", "A", "A"}, {"A", "A_2", "A_1", "A_3", "A_4"}},
        {"names without text", {"", "", ""}, {"", "_1", "_2"}},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        LookupTableSet set;
        for (const std::string& name : c.Before)
            set.Add(MakeTable(name, {}));
        set.MakeNamesUnique();
        EXPECT_EQ(NamesOf(set), c.After);
        set.MakeNamesUnique();
        EXPECT_EQ(NamesOf(set), c.After) << "a second call changes nothing";
    }
}

/// Each table against all earlier ones, starting over after each collision.
std::vector<std::string> MakeNamesUniquePairwise(std::vector<std::string> names)
{
    for (std::size_t i = 1; i < names.size(); ++i) {
        std::string trial = names[i];
        int counter = 1;
        for (std::size_t j = 0; j < i;) {
            if (trial != names[j]) {
                ++j;
                continue;
            }
            trial = names[i] + "_" + std::to_string(counter++);
            j = 0;
        }
        names[i] = trial;
    }
    return names;
}

TEST(LookupTableSet, NamesAreThoseOfThePairwiseMethod)
{
    const std::vector<std::string> stock = {"A", "B", "A_1", "A_2", "A_1_1", "B_3", "_1", "", "A_10"};
    for (unsigned seed = 0; seed < 200; ++seed) {
        std::mt19937 random(seed);
        LookupTableSet set;
        std::vector<std::string> names(random() % 40);
        for (std::string& name : names) {
            name = stock[random() % stock.size()];
            set.Add(MakeTable(name, {}));
        }
        set.MakeNamesUnique();
        ASSERT_EQ(NamesOf(set), MakeNamesUniquePairwise(names)) << "seed " << seed;
    }
}

TEST(LookupTableSet, ManyTablesOfOneNameAreRenamedQuickly)
{
    LookupTableSet set;
    for (int i = 0; i < 20000; ++i)
        set.Add(MakeTable("Specular", {static_cast<float>(i)}));
    set.MakeNamesUnique();
    EXPECT_EQ(set.At(19999)->Name, "Specular_19999");
}

/// A walk from the front.
std::int32_t FindOrAddByWalk(std::vector<LookupTable>& tables, const LookupTable& wanted)
{
    for (std::size_t i = 0; i < tables.size(); ++i) {
        const LookupTable& table = tables[i];
        bool isSame = table.IsGeneratedAsAbs == wanted.IsGeneratedAsAbs &&
                      table.IsSizeDoubled == wanted.IsSizeDoubled && table.IsMipMap == wanted.IsMipMap &&
                      table.Samples.size() == wanted.Samples.size();
        for (std::size_t k = 0; isSame && k < wanted.Samples.size(); ++k)
            isSame = table.Samples[k] == wanted.Samples[k];
        if (isSame)
            return static_cast<std::int32_t>(i);
    }
    tables.push_back(wanted);
    return static_cast<std::int32_t>(tables.size()) - 1;
}

TEST(LookupTableSet, IndicesAreThoseOfTheWalk)
{
    const float stock[] = {0.0f,      -0.0f, 1.0f, -1.0f, 1e-40f, std::numeric_limits<float>::infinity(),
                           NotANumber};
    for (unsigned seed = 0; seed < 100; ++seed) {
        std::mt19937 random(seed);
        LookupTableSet set;
        std::vector<LookupTable> walked;
        for (int i = 0; i < 60; ++i) {
            std::vector<float> samples(1 + random() % 2);
            for (float& sample : samples)
                sample = stock[random() % std::size(stock)];
            const LookupTable table =
                MakeTable("T" + std::to_string(i), samples, random() % 2 == 0, random() % 4 != 0, false);
            ASSERT_EQ(set.FindOrAdd(table), FindOrAddByWalk(walked, table))
                << "seed " << seed << " add " << i;
        }
        ASSERT_EQ(set.Tables().size(), walked.size()) << "seed " << seed;
        for (std::size_t i = 0; i < walked.size(); ++i)
            ASSERT_EQ(set.Tables()[i].Name, walked[i].Name) << "seed " << seed << " table " << i;
    }
}

} // namespace
} // namespace tq4x
