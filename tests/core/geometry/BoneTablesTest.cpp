#include "geometry/AssignBoneTables.h"
#include "geometry/BuildBoneTuples.h"
#include "geometry/GetWeightDimension.h"
#include "geometry/PaletteSlots.h"
#include "support/GeometryScene.h"

#include <algorithm>

namespace tq4x
{
namespace
{

using namespace test;
using S = VertexSlot;
using Indices = std::vector<std::int32_t>;

TEST(PaletteSlots, LoadsWhatIsMissing)
{
    PaletteSlots slots(4, 6);

    const struct
    {
        const char* Name;
        Indices Palette;
        std::int32_t Loads;
        Indices Slots;
        std::string Marks;
    } steps[] = {
        {"the first fills from the front", {0, 1, 2}, 3, {0, 1, 2, -1}, "1110"},
        {"an equal palette costs nothing", {0, 1, 2}, 0, {0, 1, 2, -1}, "1110"},
        {"a survivor keeps its slot, the rest takes the first free ones", {1, 3}, 1, {3, 1, 2, -1}, "1100"},
        {"a bone of an older set is still there", {2, 4}, 1, {4, 1, 2, -1}, "1010"},
        {"empty slots are free slots", {1, 2, 3, 5}, 2, {3, 1, 2, 5}, "1111"},
        {"nothing", {}, 0, {3, 1, 2, 5}, "0000"},
        {"a palette past the capacity leaves bones out", {0, 1, 2, 3, 4}, 1, {3, 1, 2, 0}, "1111"},
    };

    for (const auto& step : steps) {
        EXPECT_EQ(slots.Load(step.Palette), step.Loads) << step.Name;
        EXPECT_EQ(Indices(slots.Slots().begin(), slots.Slots().end()), step.Slots) << step.Name;
        std::string marks;
        for (std::size_t i = 0; i < 4; ++i)
            marks += slots.IsMarked(i) ? '1' : '0';
        EXPECT_EQ(marks, step.Marks) << step.Name;
    }
}

TEST(PaletteSlots, RestoresAState)
{
    PaletteSlots slots(3, 5);
    slots.Load(Indices{0, 1, 2});
    const Indices state(slots.Slots().begin(), slots.Slots().end());
    slots.Load(Indices{2, 3, 4});
    slots.Restore(state);
    EXPECT_EQ(slots.Load(Indices{0, 1, 2}), 0);
    EXPECT_EQ(slots.Load(Indices{3}), 1);
}

TEST(PaletteSlots, MoreThanOneWordOfSlots)
{
    PaletteSlots slots(130, 200);
    Indices palette(130);
    for (std::size_t i = 0; i < palette.size(); ++i)
        palette[i] = static_cast<std::int32_t>(i);
    EXPECT_EQ(slots.Load(palette), 130);
    palette[128] = 150;
    EXPECT_EQ(slots.Load(palette), 1);
    EXPECT_EQ(slots.Slots()[128], 150);
    EXPECT_EQ(slots.Load(Indices{160}), 1);
    EXPECT_EQ(slots.Slots()[0], 160);
}

TEST(PaletteSlots, NoSlots)
{
    PaletteSlots slots(0, 1);
    EXPECT_EQ(slots.Load(Indices{0}), 0);
}

/// A shape of sets with these palettes, bones given by number; no polygons.
SeparateDataShape MakeSets(Skeleton& bones, const std::vector<Indices>& palettes, std::uint32_t capacity)
{
    SeparateDataShape shape;
    shape.BoneCapacity = capacity;
    for (const Indices& palette : palettes) {
        PrimitiveSet& set = shape.PrimitiveSets.emplace_back();
        for (const std::int32_t bone : palette)
            InsertBone(set.Palette, bones[static_cast<std::size_t>(bone)]);
    }
    return shape;
}

std::vector<Indices> TablesOf(const SeparateDataShape& shape)
{
    std::vector<Indices> tables;
    for (const PrimitiveSet& set : shape.PrimitiveSets)
        tables.push_back(set.BoneIndexTable);
    return tables;
}

TEST(AssignBoneTables, Cases)
{
    const struct
    {
        const char* Name;
        std::uint32_t Capacity;
        std::vector<Indices> Palettes;
        std::vector<Indices> Tables;
    } cases[] = {
        {"one set: its palette", 20, {{0, 1, 2}}, {{0, 1, 2}}},
        {"a survivor keeps its slot", 3, {{0, 1, 2}, {2, 3}}, {{0, 1, 2}, {3, 2}}},
        {"only the bones of the set are listed", 4, {{0, 1, 2, 3}, {3, 4}}, {{0, 1, 2, 3}, {4, 3}}},
        {"places are ranks among marked slots", 4, {{0, 1, 2, 3}, {1, 3, 5}}, {{0, 1, 2, 3}, {5, 1, 3}}},
        {"a bone comes back from an older set", 4, {{0, 1, 2, 3}, {4}, {0, 3}}, {{0, 1, 2, 3}, {4}, {0, 3}}},
        {"empty palettes", 4, {{}, {1}, {}}, {{}, {1}, {}}},
        {"no sets", 4, {}, {}},
    };

    for (const auto& test : cases) {
        Skeleton bones{"a", "b", "c", "d", "e", "f"};
        SeparateDataShape shape = MakeSets(bones, test.Palettes, test.Capacity);
        AssignBoneTables(shape);
        EXPECT_EQ(TablesOf(shape), test.Tables) << test.Name;
        AssignBoneTables(shape);
        EXPECT_EQ(TablesOf(shape), test.Tables) << test.Name << ", again";
    }
}

TEST(AssignBoneTables, PalettesAreInTheOrderOfNamesNotOfNumbers)
{
    Skeleton bones{"c", "a", "b"};
    SeparateDataShape shape = MakeSets(bones, {{0, 1, 2}}, 20);
    AssignBoneTables(shape);
    EXPECT_EQ(TablesOf(shape), (std::vector<Indices>{{1, 2, 0}}));
}

/// The simulation, with marks and slots as plain lists.
std::vector<Indices> TablesByTheLetter(const SeparateDataShape& shape)
{
    constexpr std::int32_t empty = -7;
    Indices slots(shape.BoneCapacity, empty);
    std::vector<Indices> tables;
    for (const PrimitiveSet& set : shape.PrimitiveSets) {
        std::vector<bool> isMarked(slots.size(), false);
        Indices missing;
        for (const Bone* bone : set.Palette) {
            const auto slot = std::find(slots.begin(), slots.end(), bone->BoneIndex);
            if (slot == slots.end())
                missing.push_back(bone->BoneIndex);
            else
                isMarked[static_cast<std::size_t>(slot - slots.begin())] = true;
        }
        for (const std::int32_t bone : missing) {
            const auto slot = static_cast<std::size_t>(std::find(isMarked.begin(), isMarked.end(), false) -
                                                       isMarked.begin());
            slots[slot] = bone;
            isMarked[slot] = true;
        }
        Indices& table = tables.emplace_back();
        for (std::size_t slot = 0; slot < slots.size(); ++slot)
            if (isMarked[slot])
                table.push_back(slots[slot]);
    }
    return tables;
}

TEST(AssignBoneTables, AgreesWithTheSimulationByTheLetter)
{
    std::mt19937 random(352);
    for (int test = 0; test < 200; ++test) {
        Skeleton bones(15);
        std::vector<Indices> palettes(std::uniform_int_distribution<std::size_t>(0, 12)(random));
        for (Indices& palette : palettes)
            for (std::size_t i = std::uniform_int_distribution<std::size_t>(0, 8)(random); i > 0; --i)
                palette.push_back(std::uniform_int_distribution<std::int32_t>(0, 14)(random));
        SeparateDataShape shape = MakeSets(bones, palettes, 8 + static_cast<std::uint32_t>(test % 4));
        AssignBoneTables(shape);
        ASSERT_EQ(TablesOf(shape), TablesByTheLetter(shape)) << "case " << test;
    }
}

/// A shape with one set and a point for each entry of the table.
struct TupleScene
{
    TupleScene(SkinWeightTable table, Indices boneTable, bool isRigid) : Table(std::move(table))
    {
        Shape.SkinWeights = &Table;
        Shape.IsRigidSkinning = isRigid;
        AddSet(std::move(boneTable), 0, static_cast<std::int32_t>(Table.size()));
    }

    void AddSet(Indices boneTable, std::int32_t firstVertex, std::int32_t endVertex)
    {
        PrimitiveSet& set = Shape.PrimitiveSets.emplace_back();
        set.BoneIndexTable = std::move(boneTable);
        set.Polygons.push_back({PrimitiveMode::Points, endVertex - firstVertex, std::ssize(Shape.Corners)});
        for (std::int32_t vertex = firstVertex; vertex < endVertex; ++vertex)
            Shape.Corners.push_back(Corner(vertex, vertex));
    }

    Indices NumbersOf(S slot) const
    {
        Indices numbers;
        for (const PolygonCorner& corner : Shape.Corners)
            numbers.push_back(corner[slot]);
        return numbers;
    }

    SkinWeightTable Table;
    SeparateDataShape Shape;
};

TEST(BuildBoneTuples, SmallSmoothTablesShareOneIndexTuple)
{
    Skeleton bones(10);
    TupleScene scene(
        {{{&bones[4], 30}, {&bones[2], 70}}, {{&bones[9], 100}}, {{&bones[2], 70}, {&bones[4], 30}}},
        {2, 4, 7, 9}, false);
    BuildBoneTuples(scene.Shape);
    EXPECT_EQ(scene.Shape.BoneIndexTuples, (std::vector<BoneIndexTuple>{{0, 1, 2, 3}}));
    EXPECT_EQ(scene.Shape.BoneWeightTuples, (std::vector<Vector4>{{0.7f, 0.3f, 0, 0}, {0, 0, 0, 1}}));
    EXPECT_EQ(scene.NumbersOf(S::BoneIndex), (Indices{0, 0, 0}));
    EXPECT_EQ(scene.NumbersOf(S::BoneWeight), (Indices{0, 1, 0}));
}

TEST(BuildBoneTuples, EntriesPastASmallTableAreZero)
{
    Skeleton bones(5);
    TupleScene scene({{{&bones[3], 100}}}, {3, 1}, false);
    BuildBoneTuples(scene.Shape);
    EXPECT_EQ(scene.Shape.BoneIndexTuples, (std::vector<BoneIndexTuple>{{0, 1, 0, 0}}));
    EXPECT_EQ(scene.Shape.BoneWeightTuples, (std::vector<Vector4>{{1, 0, 0, 0}}));
}

TEST(BuildBoneTuples, FiveBonesGiveEachVertexItsOwn)
{
    Skeleton bones(10);
    TupleScene scene(
        {{{&bones[4], 30}, {&bones[2], 70}}, {{&bones[9], 100}}, {{&bones[2], 70}, {&bones[4], 30}}},
        {2, 4, 6, 7, 9}, false);
    BuildBoneTuples(scene.Shape);
    EXPECT_EQ(scene.Shape.BoneIndexTuples,
              (std::vector<BoneIndexTuple>{{1, 0, 0, 0}, {4, 0, 0, 0}, {0, 1, 0, 0}}));
    EXPECT_EQ(scene.Shape.BoneWeightTuples,
              (std::vector<Vector4>{{0.3f, 0.7f, 0, 0}, {1, 0, 0, 0}, {0.7f, 0.3f, 0, 0}}));
    EXPECT_EQ(scene.NumbersOf(S::BoneIndex), (Indices{0, 1, 2}));
}

TEST(BuildBoneTuples, RigidShapesHoldRealPlacesEvenInSmallTables)
{
    Skeleton bones(5);
    TupleScene scene({{{&bones[3], 100}}, {{&bones[1], 100}}, {{&bones[3], 100}}}, {1, 3}, true);
    BuildBoneTuples(scene.Shape);
    EXPECT_EQ(scene.Shape.BoneIndexTuples, (std::vector<BoneIndexTuple>{{1, 0, 0, 0}, {0, 0, 0, 0}}));
    EXPECT_EQ(scene.Shape.BoneWeightTuples, (std::vector<Vector4>{{1, 0, 0, 0}}));
    EXPECT_EQ(scene.NumbersOf(S::BoneIndex), (Indices{0, 1, 0}));
}

TEST(BuildBoneTuples, OddVertices)
{
    Skeleton bones(10);
    const Indices table{0, 1, 2, 3, 4};

    const struct
    {
        const char* Name;
        SkinWeightEntry Entry;
        BoneIndexTuple Indices;
        Vector4 Weights;
    } cases[] = {
        {"only the first four count",
         {{&bones[0], 50}, {&bones[1], 20}, {&bones[2], 20}, {&bones[3], 5}, {&bones[4], 5}},
         {0, 1, 2, 3},
         {0.5f, 0.2f, 0.2f, 0.05f}},
        {"a bone that the table lacks leaves zeros",
         {{&bones[7], 40}, {&bones[4], 60}},
         {0, 4, 0, 0},
         {0, 0.6f, 0, 0}},
        {"so does no bone", {{nullptr, 40}, {&bones[4], 60}}, {0, 4, 0, 0}, {0, 0.6f, 0, 0}},
        {"a zero percentage has its place", {{&bones[2], 0}, {&bones[4], 100}}, {2, 4, 0, 0}, {0, 1, 0, 0}},
        {"no influences", {}, {0, 0, 0, 0}, {0, 0, 0, 0}},
    };

    for (const auto& test : cases) {
        TupleScene scene({test.Entry}, table, false);
        BuildBoneTuples(scene.Shape);
        EXPECT_EQ(scene.Shape.BoneIndexTuples, (std::vector{test.Indices})) << test.Name;
        EXPECT_EQ(scene.Shape.BoneWeightTuples, (std::vector{test.Weights})) << test.Name;
    }
}

TEST(BuildBoneTuples, CornersWithoutAVertexTakeZeros)
{
    Skeleton bones(2);
    TupleScene scene({{{&bones[1], 100}}}, {0, 1}, true);
    scene.Shape.Corners[0].VertexIndex = -1;
    BuildBoneTuples(scene.Shape);
    EXPECT_EQ(scene.Shape.BoneWeightTuples, (std::vector<Vector4>{{}}));
}

TEST(BuildBoneTuples, ListsAreThoseOfTheWholeShape)
{
    Skeleton bones(10);
    TupleScene scene({{{&bones[0], 100}}, {{&bones[6], 100}}}, {0, 1, 2, 3, 4}, false);
    scene.Shape.PrimitiveSets.clear();
    scene.Shape.Corners.clear();
    scene.AddSet({0, 1, 2, 3, 4}, 0, 1);
    scene.AddSet({6, 7}, 1, 2);
    scene.AddSet({6, 1, 2, 3, 4}, 1, 2);
    BuildBoneTuples(scene.Shape);
    EXPECT_EQ(scene.Shape.BoneIndexTuples, (std::vector<BoneIndexTuple>{{0, 0, 0, 0}, {0, 1, 0, 0}}));
    EXPECT_EQ(scene.NumbersOf(S::BoneIndex), (Indices{0, 1, 0}));
    EXPECT_EQ(scene.NumbersOf(S::BoneWeight), (Indices{0, 0, 0}));
}

void BuildTuplesByTheLetter(SeparateDataShape& shape)
{
    for (const PrimitiveSet& set : shape.PrimitiveSets)
        for (const Polygon& polygon : set.Polygons)
            for (PolygonCorner& corner : CornersOf(shape, polygon)) {
                const SkinWeightEntry& entry =
                    shape.SkinWeights->at(static_cast<std::size_t>(corner.VertexIndex));
                const Indices& table = set.BoneIndexTable;
                const bool isCommon = !shape.IsRigidSkinning && table.size() < 5;
                BoneIndexTuple indices{};
                std::array<float, 4> weights{};
                for (std::size_t i = 0; isCommon && i < table.size(); ++i)
                    indices[i] = static_cast<std::int32_t>(i);
                for (std::size_t k = 0; k < std::min<std::size_t>(entry.size(), 4); ++k)
                    for (std::size_t place = 0; place < table.size(); ++place)
                        if (table[place] == entry[k].Bone->BoneIndex) {
                            weights[isCommon ? place : k] = static_cast<float>(entry[k].Percentage / 100.0);
                            if (!isCommon)
                                indices[k] = static_cast<std::int32_t>(place);
                        }
                const Vector4 weight{weights[0], weights[1], weights[2], weights[3]};
                auto& indexTuples = shape.BoneIndexTuples;
                auto& weightTuples = shape.BoneWeightTuples;
                const auto index =
                    std::find(indexTuples.begin(), indexTuples.end(), indices) - indexTuples.begin();
                const auto number =
                    std::find(weightTuples.begin(), weightTuples.end(), weight) - weightTuples.begin();
                if (index == std::ssize(indexTuples))
                    indexTuples.push_back(indices);
                if (number == std::ssize(weightTuples))
                    weightTuples.push_back(weight);
                corner[S::BoneIndex] = static_cast<std::int32_t>(index);
                corner[S::BoneWeight] = static_cast<std::int32_t>(number);
            }
}

TEST(BuildBoneTuples, AgreesWithTheLinearSearch)
{
    std::mt19937 random(353);
    const auto draw = [&](std::int32_t low, std::int32_t high) {
        return std::uniform_int_distribution<std::int32_t>(low, high)(random);
    };
    for (int test = 0; test < 100; ++test) {
        Skeleton bones(12);
        SkinWeightTable table(60);
        for (SkinWeightEntry& entry : table)
            for (std::int32_t i = draw(0, 6); i > 0; --i)
                entry.push_back({&bones[static_cast<std::size_t>(draw(0, 11))], draw(0, 10) * 10});
        TupleScene scene(table, {3, 4, 5, 6, 7, 8}, test % 3 == 0);
        scene.AddSet({1, 9, 11}, 10, 40);
        scene.AddSet({0, 1, 2, 3}, 0, 60);
        TupleScene literal = scene;
        literal.Shape.SkinWeights = &literal.Table;
        BuildBoneTuples(scene.Shape);
        BuildTuplesByTheLetter(literal.Shape);
        ASSERT_EQ(scene.Shape.BoneIndexTuples, literal.Shape.BoneIndexTuples) << "case " << test;
        ASSERT_EQ(scene.Shape.BoneWeightTuples, literal.Shape.BoneWeightTuples) << "case " << test;
        ASSERT_EQ(scene.Shape.Corners, literal.Shape.Corners) << "case " << test;
    }
}

TEST(GetWeightDimension, Cases)
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();

    const struct
    {
        const char* Name;
        bool IsSkinned;
        std::size_t TableSize;
        std::vector<Vector4> Weights;
        std::int32_t Expected;
    } cases[] = {
        {"unskinned", false, 4, {{0, 0, 0, 1}}, 1},
        {"no table", true, 0, {{0, 0, 0, 1}}, 1},
        {"a table of one", true, 1, {{1, 0, 0, 0}}, 1},
        {"a table of two", true, 2, {{1, 0, 0, 0}}, 2},
        {"a table of two decides, whatever the weights", true, 2, {{0, 0, 0, 1}}, 2},
        {"no tuples", true, 3, {}, 2},
        {"first component only", true, 3, {{1, 0, 0, 0}}, 2},
        {"third component", true, 3, {{1, 0, 0, 0}, {0.5f, 0, 0.5f, 0}}, 3},
        {"fourth component", true, 20, {{1, 0, 0, 0}, {0.5f, 0, 0, 0.5f}}, 4},
        {"fourth before third", true, 5, {{0, 0, 1, 0}, {0, 0, 0, 1}}, 4},
        {"a third that is no number", true, 3, {{1, 0, nan, 0}}, 3},
        {"a fourth that is no number", true, 3, {{1, 0, 0, nan}}, 4},
        {"minus zero is zero", true, 3, {{1, 0, -0.0f, -0.0f}}, 2},
    };

    const SkinWeightTable table;
    for (const auto& test : cases) {
        SeparateDataShape shape;
        shape.SkinWeights = test.IsSkinned ? &table : nullptr;
        EXPECT_EQ(GetWeightDimension(shape, test.TableSize, test.Weights), test.Expected) << test.Name;
    }
}

TEST(LargestBoneTable, OverAllSets)
{
    SeparateDataShape shape;
    EXPECT_EQ(LargestBoneTable(shape), 0u);
    shape.PrimitiveSets = {{{}, {}, {1}}, {{}, {}, {1, 2, 3}}, {{}, {}, {}}};
    EXPECT_EQ(LargestBoneTable(shape), 3u);
}

} // namespace
} // namespace tq4x
