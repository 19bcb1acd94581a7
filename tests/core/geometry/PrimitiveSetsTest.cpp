#include "geometry/BuildPrimitiveSets.h"
#include "geometry/CheckMesh.h"
#include "geometry/MergePrimitiveSets.h"
#include "geometry/OrderPrimitiveSets.h"
#include "geometry/UpdatePolygonBones.h"
#include "support/GeometryScene.h"

#include <algorithm>
#include <sstream>

namespace tq4x
{
namespace
{

using namespace test;

/// A shape with one triangle for each list of bones, given as letters.
class BoneLists
{
public:
    BoneLists(const std::vector<std::string>& lists, std::uint32_t capacity)
    {
        m_shape.BoneCapacity = capacity;
        m_shape.SkinWeights = &m_table;
        for (const std::string& letters : lists)
            AddTriangle(letters);
    }

    SeparateDataShape& Shape() { return m_shape; }

private:
    void AddTriangle(const std::string& letters)
    {
        BoneList bones;
        for (const char letter : letters)
            InsertBone(bones, m_bones[static_cast<std::size_t>(letter - 'a')]);
        SkinWeightEntry entry;
        for (Bone* bone : bones)
            entry.push_back({bone, 1});
        m_table.push_back(entry);
        const auto vertex = static_cast<std::int32_t>(m_table.size()) - 1;
        m_shape.Polygons.push_back({PrimitiveMode::Triangles, 3,
                                    static_cast<std::int64_t>(m_shape.Corners.size()),
                                    m_shape.BoneLists.FindOrAdd(bones)});
        for (int i = 0; i < 3; ++i)
            m_shape.Corners.push_back(Corner(vertex, vertex));
    }

    Skeleton m_bones{"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"};
    SkinWeightTable m_table;
    SeparateDataShape m_shape;
};

/// "ab:0,2 cd:1": palettes and the numbers of their polygons in the order of adding.
std::string Describe(const SeparateDataShape& shape)
{
    std::ostringstream text;
    for (const PrimitiveSet& set : shape.PrimitiveSets) {
        text << (&set == shape.PrimitiveSets.data() ? "" : " ") << NamesOf(set.Palette) << ":";
        for (const Polygon& polygon : set.Polygons)
            text << (&polygon == set.Polygons.data() ? "" : ",") << polygon.FirstCorner / 3;
    }
    return text.str();
}

TEST(SortPolygons, CornersThenModesThenTheFormerOrder)
{
    std::vector<Polygon> polygons{
        {PrimitiveMode::Lines, 2, 0},         {PrimitiveMode::Triangles, 3, 1},
        {PrimitiveMode::TriangleFan, 4, 2},   {PrimitiveMode::Triangles, 3, 3},
        {PrimitiveMode::Points, 1, 4},        {PrimitiveMode::Other, 4, 5},
        {PrimitiveMode::TriangleStrip, 3, 6}, {PrimitiveMode::Lines, 2, 7},
        {PrimitiveMode::LineStrip, 9, 8},
    };
    SortPolygons(polygons);
    std::vector<std::int64_t> order;
    for (const Polygon& polygon : polygons)
        order.push_back(polygon.FirstCorner);
    EXPECT_EQ(order, (std::vector<std::int64_t>{8, 5, 2, 6, 1, 3, 0, 7, 4}));
}

TEST(BuildPrimitiveSets, Cases)
{
    const struct
    {
        const char* Name;
        std::vector<std::string> Lists;
        const char* Sets;
    } cases[] = {
        {"nothing", {}, ""},
        {"one", {"ab"}, "ab:0"},
        {"a new set for bones that no set has", {"ab", "bc"}, "ab:0 bc:1"},
        {"the first set that holds all", {"ab", "abc", "a", "b", "c"}, "ab:0,2,3 abc:1,4"},
        {"not the best", {"abcd", "ab", "ab"}, "abcd:0,1,2"},
        {"palettes never grow by joining", {"ab", "c", "abc", "ac"}, "ab:0 c:1 abc:2,3"},
        {"no bones fit any set", {"ab", "", "cd", ""}, "ab:0,1,3 cd:2"},
        {"no bones first", {"", "ab", ""}, ":0,2 ab:1"},
        {"unskinned: one set", {"", "", ""}, ":0,1,2"},
    };

    for (const auto& test : cases) {
        BoneLists lists(test.Lists, 4);
        EXPECT_EQ(BuildPrimitiveSets(lists.Shape()).Status, 0) << test.Name;
        EXPECT_EQ(Describe(lists.Shape()), test.Sets) << test.Name;
        EXPECT_TRUE(lists.Shape().Polygons.empty()) << test.Name;
    }
}

TEST(BuildPrimitiveSets, SortsBeforeItJoins)
{
    // The fan comes first, so its palette takes the triangle's bones.
    BoneLists lists({"ab", "abc"}, 4);
    lists.Shape().Polygons[1].Mode = PrimitiveMode::TriangleFan;
    static_cast<void>(BuildPrimitiveSets(lists.Shape()));
    EXPECT_EQ(Describe(lists.Shape()), "abc:1,0");
}

TEST(MergePrimitiveSets, Cases)
{
    const struct
    {
        const char* Name;
        std::uint32_t Capacity;
        std::vector<std::string> Lists;
        const char* Sets;
    } cases[] = {
        {"capacity 4: the first pair of equal scores merges, then the union is full",
         4,
         {"ab", "bc", "cd"},
         "abcd:0,1,2"},
        {"a union of 5 never merges", 4, {"abc", "cde"}, "abc:0 cde:1"},
        {"a union of 4 does", 4, {"abc", "cd"}, "abcd:0,1"},
        {"the most bones shared first", 4, {"abc", "cd", "abd", "ef"}, "abcd:0,2,1 ef:3"},
        {"room and shared bones count before the size", 5, {"abcd", "ae", "fgh", "fg"}, "abcde:0,1 fgh:2,3"},
        {"small unions first, while there is room", 4, {"a", "b", "c", "d", "e"}, "abe:0,1,4 cd:2,3"},
        {"one that is inside another", 3, {"abc", "de", "d"}, "abc:0 de:1,2"},
        {"empty palettes join", 2, {"", "ab"}, "ab:1,0"},
        {"capacity 0", 0, {"ab", "cd"}, "ab:0 cd:1"},
    };

    for (const auto& test : cases) {
        BoneLists lists(test.Lists, test.Capacity);
        static_cast<void>(BuildPrimitiveSets(lists.Shape()));
        if (lists.Shape().PrimitiveSets.size() >= 2)
            MergePrimitiveSets(lists.Shape());
        EXPECT_EQ(Describe(lists.Shape()), test.Sets) << test.Name;
    }
}

TEST(OrderPrimitiveSets, Cases)
{
    const struct
    {
        const char* Name;
        std::uint32_t Capacity;
        std::vector<std::string> Lists;
        const char* Sets;
    } cases[] = {
        {"neighbours share bones", 2, {"ab", "cd", "bc"}, "ab:0 bc:2 cd:1"},
        {"nothing to gain stays", 2, {"ab", "cd", "ef"}, "ab:0 cd:1 ef:2"},
        {"an equal palette costs nothing wherever it stands next to its like",
         2,
         {"ab", "cd", "ac"},
         "ab:0 ac:2 cd:1"},
        {"room keeps bones over one set", 4, {"ab", "cd", "ab"}, "ab:0 cd:1"},
        {"one set", 2, {"ab"}, "ab:0"},
    };

    for (const auto& test : cases) {
        BoneLists lists(test.Lists, test.Capacity);
        static_cast<void>(BuildPrimitiveSets(lists.Shape()));
        for (PrimitiveSet& set : lists.Shape().PrimitiveSets)
            set.Polygons.resize(1);
        OrderPrimitiveSets(lists.Shape());
        EXPECT_EQ(Describe(lists.Shape()), test.Sets) << test.Name;
    }
}

// The methods by the letter, against which the fast ones are held.

void BuildByTheLetter(SeparateDataShape& shape)
{
    std::stable_sort(shape.Polygons.begin(), shape.Polygons.end(),
                     [](const Polygon& left, const Polygon& right) {
                         return left.CornerCount != right.CornerCount ? left.CornerCount > right.CornerCount
                                                                      : left.Mode > right.Mode;
                     });
    for (const Polygon& polygon : shape.Polygons) {
        const BoneList& bones = shape.BoneLists[polygon.Bones];
        PrimitiveSet* home = nullptr;
        for (PrimitiveSet& set : shape.PrimitiveSets)
            if (!home && ContainsAll(set.Palette, bones))
                home = &set;
        if (!home)
            home = &shape.PrimitiveSets.emplace_back();
        home->Polygons.push_back(polygon);
        for (Bone* bone : bones)
            InsertBone(home->Palette, *bone);
    }
    shape.Polygons.clear();
}

std::int64_t ScoreByTheLetter(const BoneList& i, const BoneList& j, std::int64_t capacity)
{
    const auto a = static_cast<std::int64_t>(i.size());
    const auto b = static_cast<std::int64_t>(j.size());
    const auto s = std::count_if(j.begin(), j.end(),
                                 [&](Bone* bone) { return std::find(i.begin(), i.end(), bone) != i.end(); });
    const std::int64_t u = a + b - s;
    return u > capacity ? -1 : ((s - u + capacity + 1) * 256 + s) * 256 + std::max(a, b);
}

void MergeByTheLetter(SeparateDataShape& shape)
{
    std::vector<PrimitiveSet>& sets = shape.PrimitiveSets;
    while (true) {
        std::stable_sort(sets.begin(), sets.end(), [](const PrimitiveSet& left, const PrimitiveSet& right) {
            return left.Palette.size() > right.Palette.size();
        });
        std::int64_t best = -1;
        std::size_t bestI = 0;
        std::size_t bestJ = 0;
        for (std::size_t i = 0; i < sets.size(); ++i)
            for (std::size_t j = i + 1; j < sets.size(); ++j) {
                const std::int64_t score =
                    ScoreByTheLetter(sets[i].Palette, sets[j].Palette, shape.BoneCapacity);
                if (score > best) {
                    best = score;
                    bestI = i;
                    bestJ = j;
                }
            }
        if (best < 1)
            return;
        for (const Polygon& polygon : sets[bestJ].Polygons)
            sets[bestI].Polygons.push_back(polygon);
        for (Bone* bone : sets[bestJ].Palette)
            InsertBone(sets[bestI].Palette, *bone);
        sets.erase(sets.begin() + static_cast<std::ptrdiff_t>(bestJ));
    }
}

/// The loads of an order, simulated from the start.
std::int64_t CostByTheLetter(const std::vector<PrimitiveSet>& sets, std::size_t capacity)
{
    constexpr std::int32_t empty = -5;
    std::vector<std::int32_t> slots(capacity, empty);
    for (std::size_t i = 0; i < sets[0].Palette.size(); ++i)
        slots[i] = sets[0].Palette[i]->BoneIndex;
    auto cost = static_cast<std::int64_t>(sets[0].Palette.size());
    for (std::size_t k = 1; k < sets.size(); ++k) {
        std::vector<bool> isMarked(capacity, false);
        std::vector<std::int32_t> missing;
        for (const Bone* bone : sets[k].Palette) {
            const auto slot = std::find(slots.begin(), slots.end(), bone->BoneIndex);
            if (slot == slots.end())
                missing.push_back(bone->BoneIndex);
            else
                isMarked[static_cast<std::size_t>(slot - slots.begin())] = true;
        }
        for (const std::int32_t bone : missing) {
            const auto slot = std::find(isMarked.begin(), isMarked.end(), false) - isMarked.begin();
            slots[static_cast<std::size_t>(slot)] = bone;
            isMarked[static_cast<std::size_t>(slot)] = true;
            ++cost;
        }
    }
    return cost;
}

void OrderByTheLetter(SeparateDataShape& shape)
{
    std::vector<PrimitiveSet>& sets = shape.PrimitiveSets;
    for (std::size_t i = 0; i + 1 < sets.size(); ++i)
        for (std::size_t j = i + 1; j < sets.size(); ++j) {
            const std::int64_t before = CostByTheLetter(sets, shape.BoneCapacity);
            std::swap(sets[i], sets[j]);
            if (CostByTheLetter(sets, shape.BoneCapacity) >= before)
                std::swap(sets[i], sets[j]);
        }
}

void ExpectEqualSets(const SeparateDataShape& shape, const SeparateDataShape& literal)
{
    ASSERT_EQ(shape.PrimitiveSets.size(), literal.PrimitiveSets.size());
    for (std::size_t i = 0; i < shape.PrimitiveSets.size(); ++i) {
        ASSERT_EQ(NamesOf(shape.PrimitiveSets[i].Palette), NamesOf(literal.PrimitiveSets[i].Palette))
            << "set " << i;
        ASSERT_EQ(shape.PrimitiveSets[i].Polygons, literal.PrimitiveSets[i].Polygons) << "set " << i;
    }
}

class RandomSets : public testing::TestWithParam<std::uint32_t>
{
protected:
    /// Bones in short runs, as a skeleton has them, or anywhere.
    void MakePolygons(std::int32_t polygonCount, std::int32_t boneCount, std::int32_t largestList)
    {
        std::mt19937 random(GetParam());
        const auto draw = [&](std::int32_t low, std::int32_t high) {
            return std::uniform_int_distribution<std::int32_t>(low, high)(random);
        };
        const std::int32_t spread = GetParam() % 2 == 0 ? boneCount : largestList * 2;
        m_shape.BoneCapacity = static_cast<std::uint32_t>(largestList + draw(0, 8));
        m_shape.SkinWeights = &m_table;
        for (std::int32_t i = 0; i < polygonCount; ++i) {
            BoneList bones;
            const std::int32_t first = draw(0, boneCount - 1);
            const std::int32_t size = draw(0, largestList);
            for (std::int32_t k = 0; k < size; ++k)
                InsertBone(bones, m_bones[static_cast<std::size_t>((first + draw(0, spread)) % boneCount)]);
            const std::int32_t corners = draw(1, 5);
            m_shape.Polygons.push_back(
                {static_cast<PrimitiveMode>(draw(0, 6)), corners, i, m_shape.BoneLists.FindOrAdd(bones)});
        }
    }

    Skeleton m_bones{40};
    SkinWeightTable m_table;
    SeparateDataShape m_shape;
};

TEST_P(RandomSets, BuildAgreesWithTheScan)
{
    MakePolygons(400, 40, 6);
    SeparateDataShape literal = m_shape;
    static_cast<void>(BuildPrimitiveSets(m_shape));
    BuildByTheLetter(literal);
    ExpectEqualSets(m_shape, literal);
}

TEST_P(RandomSets, MergeAndOrderAgreeWithTheRounds)
{
    MakePolygons(60, 25, 5);
    static_cast<void>(BuildPrimitiveSets(m_shape));
    if (m_shape.PrimitiveSets.size() < 2)
        return;
    SeparateDataShape literal = m_shape;
    MergePrimitiveSets(m_shape);
    MergeByTheLetter(literal);
    OrderByTheLetter(literal);
    for (PrimitiveSet& set : literal.PrimitiveSets)
        SortPolygons(set.Polygons);
    ExpectEqualSets(m_shape, literal);
}

TEST_P(RandomSets, MergeAgreesWhereManyPairsTie)
{
    MakePolygons(90, 40, 1 + static_cast<std::int32_t>(GetParam() % 4));
    m_shape.BoneCapacity = 4 + GetParam() % 7; // no list is larger
    static_cast<void>(BuildPrimitiveSets(m_shape));
    SeparateDataShape literal = m_shape;
    MergePrimitiveSets(m_shape);
    MergeByTheLetter(literal);
    OrderByTheLetter(literal);
    for (PrimitiveSet& set : literal.PrimitiveSets)
        SortPolygons(set.Polygons);
    ExpectEqualSets(m_shape, literal);
}

TEST_P(RandomSets, OrderAgreesWithoutMerging)
{
    MakePolygons(24, 18, 6);
    static_cast<void>(BuildPrimitiveSets(m_shape));
    SeparateDataShape literal = m_shape;
    OrderPrimitiveSets(m_shape);
    OrderByTheLetter(literal);
    ExpectEqualSets(m_shape, literal);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomSets, testing::Range(0u, 40u));

} // namespace
} // namespace tq4x
