#include "pipeline/NumberText.h"
#include "pipeline/XmlWriter.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <random>
#include <sstream>
#include <vector>

namespace
{

constexpr std::size_t Count = 1000000;

/// Numbers as they stand in position streams: a few digits before the point, all significant digits in use.
const std::vector<float>& Numbers()
{
    static const std::vector<float> numbers = [] {
        std::mt19937 random(1);
        std::uniform_real_distribution<float> spread(-100.0f, 100.0f);
        std::vector<float> made(Count);
        for (float& number : made)
            number = spread(random);
        return made;
    }();
    return numbers;
}

void Finish(benchmark::State& state)
{
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(Count));
}

void AppendNumbers(benchmark::State& state)
{
    std::string text;
    for (auto _ : state) {
        text.clear();
        for (const float number : Numbers()) {
            tq4x::AppendNumber(text, number);
            text += ' ';
        }
        benchmark::DoNotOptimize(text.data());
    }
    Finish(state);
}

void PrintNumbers(benchmark::State& state)
{
    std::string text;
    for (auto _ : state) {
        text.clear();
        for (const float number : Numbers()) {
            std::array<char, 32> digits;
            const int length =
                std::snprintf(digits.data(), digits.size(), "%.6g ", static_cast<double>(number));
            text.append(digits.data(), static_cast<std::size_t>(length));
        }
        benchmark::DoNotOptimize(text.data());
    }
    Finish(state);
}

void StreamNumbers(benchmark::State& state)
{
    for (auto _ : state) {
        std::ostringstream stream;
        for (const float number : Numbers())
            stream << number << ' ';
        benchmark::DoNotOptimize(stream.str().data());
    }
    Finish(state);
}

void WriteRows(benchmark::State& state)
{
    constexpr std::size_t perRow = 3;
    const std::span<const float> rows(Numbers().data(), Count / perRow * perRow);
    for (auto _ : state) {
        tq4x::XmlWriter stream;
        stream.Rows("PositionStream", {}, rows, perRow);
        benchmark::DoNotOptimize(stream.Text().data());
    }
    Finish(state);
}

BENCHMARK(AppendNumbers)->Unit(benchmark::kMillisecond);
BENCHMARK(PrintNumbers)->Unit(benchmark::kMillisecond);
BENCHMARK(StreamNumbers)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteRows)->Unit(benchmark::kMillisecond);

} // namespace
