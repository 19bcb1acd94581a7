#include "geometry/BuildPrimitiveSets.h"
#include "geometry/FinalizeMesh.h"
#include "geometry/MergePrimitiveSets.h"
#include "geometry/OrderPrimitiveSets.h"
#include "geometry/UpdatePolygonBones.h"
#include "scene/Bone.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <random>
#include <string>

namespace
{

using namespace tq4x;

/// Bones without a tree.
class Skeleton
{
public:
    explicit Skeleton(std::int32_t count)
    {
        for (std::int32_t i = 0; i < count; ++i) {
            m_bones.push_back(std::make_unique<Bone>());
            m_bones.back()->Name = "joint_" + std::to_string(100000 + i);
            m_bones.back()->BoneIndex = i;
        }
    }

    Bone& operator[](std::int32_t i) { return *m_bones[static_cast<std::size_t>(i) % m_bones.size()]; }

private:
    std::vector<std::unique_ptr<Bone>> m_bones;
};

/// A skinned shape of triangles; a triangle has the bones of a short run of the skeleton, as the vertices of
/// a character have those of neighbouring joints.
struct SkinnedShape
{
    SkinnedShape(std::int64_t triangleCount, std::int32_t boneCount) : Bones(boneCount)
    {
        std::mt19937 random(1);
        for (std::int64_t i = 0; i < triangleCount; ++i) {
            const auto joint = static_cast<std::int32_t>(i * boneCount / triangleCount);
            for (std::int32_t k = 0; k < 3; ++k) {
                const std::int32_t near = joint + std::uniform_int_distribution(0, 2)(random);
                const std::int32_t far = joint + std::uniform_int_distribution(3, 6)(random);
                PolygonCorner& corner = Shape.Corners.emplace_back();
                corner.VertexIndex = static_cast<std::int32_t>(Table.size());
                Table.push_back({{&Bones[near], 60}, {&Bones[far], 40}});
            }
            Shape.Polygons.push_back({PrimitiveMode::Triangles, 3, i * 3, BoneListSet::None});
        }
        Shape.BoneCapacity = 20;
        Shape.SkinWeights = &Table;
        UpdateAllPolygonBones(Shape);
    }

    Skeleton Bones;
    SkinWeightTable Table;
    SeparateDataShape Shape;
};

void CollectPolygonBones(benchmark::State& state)
{
    SkinnedShape scene(state.range(0), 200);
    for (auto _ : state)
        UpdateAllPolygonBones(scene.Shape);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BuildSets(benchmark::State& state)
{
    const SkinnedShape scene(state.range(0), 200);
    for (auto _ : state) {
        state.PauseTiming();
        SeparateDataShape shape = scene.Shape;
        state.ResumeTiming();
        static_cast<void>(BuildPrimitiveSets(shape));
        state.PauseTiming();
        state.counters["sets"] = static_cast<double>(shape.PrimitiveSets.size());
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// All of it: sets, merging, order, tables, tuples.
void FinalizeSkin(benchmark::State& state)
{
    const SkinnedShape scene(state.range(0), 200);
    for (auto _ : state) {
        state.PauseTiming();
        SeparateDataShape shape = scene.Shape;
        state.ResumeTiming();
        static_cast<void>(FinalizeShape(shape));
        state.PauseTiming();
        state.counters["sets"] = static_cast<double>(shape.PrimitiveSets.size());
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// Sets of 4 to 12 bones of 300: runs of neighbours, or anywhere.
SeparateDataShape MakeSets(Skeleton& bones, std::int64_t setCount, bool isScattered)
{
    std::mt19937 random(2);
    SeparateDataShape shape;
    shape.BoneCapacity = 20;
    for (std::int64_t i = 0; i < setCount; ++i) {
        PrimitiveSet& set = shape.PrimitiveSets.emplace_back();
        const std::int32_t first = std::uniform_int_distribution(0, 299)(random);
        for (std::int32_t k = std::uniform_int_distribution(4, 12)(random); k > 0; --k)
            InsertBone(set.Palette,
                       bones[first + std::uniform_int_distribution(0, isScattered ? 299 : 30)(random)]);
    }
    return shape;
}

void MergeSets(benchmark::State& state)
{
    Skeleton bones(300);
    const SeparateDataShape source = MakeSets(bones, state.range(0), state.range(1) != 0);
    for (auto _ : state) {
        SeparateDataShape shape = source;
        MergePrimitiveSets(shape);
        state.counters["left"] = static_cast<double>(shape.PrimitiveSets.size());
    }
}

/// The order alone, of sets as they are before merging: the worst case.
void OrderSets(benchmark::State& state)
{
    Skeleton bones(300);
    const SeparateDataShape source = MakeSets(bones, state.range(0), state.range(1) != 0);
    for (auto _ : state) {
        SeparateDataShape shape = source;
        OrderPrimitiveSets(shape);
    }
}

BENCHMARK(CollectPolygonBones)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(BuildSets)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(FinalizeSkin)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(MergeSets)
    ->ArgsProduct({{200, 2000}, {0, 1}})
    ->ArgNames({"sets", "scattered"})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(OrderSets)
    ->ArgsProduct({{50, 100, 200, 400}, {0, 1}})
    ->ArgNames({"sets", "scattered"})
    ->Unit(benchmark::kMillisecond);

} // namespace
