#include "animation/BuildHermiteKeys.h"
#include "scene/Bone.h"
#include "scene/ExtractChannels.h"
#include "scene/NodeMatrices.h"
#include "scene/NodeTree.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

namespace
{

using namespace tq4x;

constexpr int ChannelCount = 9;

/// What a channel does over time.
enum class Manner
{
    Rest,
    Ramp,
    Sine,
    Steps,
    Noise,
};

/// Repeatable noise between -0.5 and 0.5.
float NoiseAt(std::size_t i)
{
    std::uint32_t bits = static_cast<std::uint32_t>(i) * 2654435761u;
    bits ^= bits >> 15;
    bits *= 2246822519u;
    return static_cast<float>(bits >> 8) / static_cast<float>(1 << 24) - 0.5f;
}

/// The same stretch again and again, so that longer lists hold more of the same.
constexpr std::size_t Period = 5000;

float SampleAt(Manner manner, std::size_t i)
{
    const float t = static_cast<float>(i % Period);
    switch (manner) {
    case Manner::Rest:
        return 3.7f;
    case Manner::Ramp:
        return 0.01f * t;
    case Manner::Sine:
        return 10.0f * std::sin(0.01f * t);
    case Manner::Steps:
        return std::floor(t * 0.01f);
    case Manner::Noise:
        return NoiseAt(i % Period);
    }
    return 0.0f;
}

/// Nine channels of one manner.
void BuildKeys(benchmark::State& state, Manner manner)
{
    const std::size_t count = static_cast<std::size_t>(state.range(0));
    std::vector<float> samples(count);
    for (std::size_t i = 0; i < count; ++i)
        samples[i] = SampleAt(manner, i);
    const std::vector<float> frames = SampleFrames(count, 1);
    std::vector<CurveKey> keys;
    for (auto _ : state) {
        for (int channel = 0; channel < ChannelCount; ++channel)
            BuildHermiteKeys(keys, samples, frames, 0.01f);
        benchmark::DoNotOptimize(keys.data());
    }
    state.counters["keys"] = static_cast<double>(keys.size());
    state.SetItemsProcessed(state.iterations() * state.range(0) * ChannelCount);
}

BENCHMARK_CAPTURE(BuildKeys, Rest, Manner::Rest)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BuildKeys, Ramp, Manner::Ramp)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BuildKeys, Sine, Manner::Sine)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BuildKeys, Steps, Manner::Steps)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BuildKeys, Noise, Manner::Noise)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// One node's local matrix at a frame of a walk.
Matrix44 PoseAt(std::int32_t node, std::int32_t frame)
{
    const float phase = 0.1f * static_cast<float>(frame) + static_cast<float>(node);
    return ComposeMatrix({{1, 1, 1}, {40.0f * std::sin(phase), 30.0f * std::cos(phase), 5.0f}, {0, 2, 0}});
}

/// A character: nodes times frames, from matrices to keys.
void ExtractCharacter(benchmark::State& state)
{
    const std::int32_t nodeCount = static_cast<std::int32_t>(state.range(0));
    const std::int32_t frameCount = static_cast<std::int32_t>(state.range(1));
    for (auto _ : state) {
        for (std::int32_t node = 0; node < nodeCount; ++node) {
            state.PauseTiming();
            Bone bone;
            for (std::int32_t frame = 0; frame < frameCount; ++frame)
                SetSample(bone, frame, PoseAt(node, frame));
            state.ResumeTiming();
            ExtractChannels(bone, {});
            benchmark::DoNotOptimize(bone.RotateCurves[0].Keys.data());
        }
    }
    state.SetItemsProcessed(state.iterations() * nodeCount * frameCount);
}

BENCHMARK(ExtractCharacter)->Args({200, 100})->Args({200, 1000})->Unit(benchmark::kMillisecond);

/// World and bind matrices of a chain, in which every node's depth counts.
void ComputeChainMatrices(benchmark::State& state)
{
    Bone root;
    Bone* last = &root;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        last = &AddChild(std::make_unique<Bone>(), *last);
        last->HasSkinningMatrix = i % 2 == 0;
        SetSample(*last, 0, PoseAt(static_cast<std::int32_t>(i), 0));
    }
    std::vector<Bone*> bones;
    CollectBones(root, bones);
    for (auto _ : state)
        benchmark::DoNotOptimize(ComputeBindLocalMatrices(bones).data());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(ComputeChainMatrices)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace
