// Encoding a texture of 1024 x 1024 with 8 levels, its Base64 text and its whole file, beside a plain copy of
// the same number of bytes.

#include "material/Base64.h"
#include "material/EncodeTexture.h"
#include "material/TextureImage.h"
#include "pipeline/Envelope.h"
#include "pipeline/XmlWriter.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace tq4x
{
namespace
{

using Bytes = std::vector<std::uint8_t>;

constexpr std::int32_t Side = 1024;

Bytes NoisyPixels()
{
    std::mt19937 random(1);
    Bytes pixels(std::size_t{Side} * Side * 4);
    for (std::uint8_t& byte : pixels)
        byte = static_cast<std::uint8_t>(random());
    return pixels;
}

/// Ready for encoding: size tested, all levels asked for.
TextureImage MakeImage(TextureFormat format)
{
    TextureImage image;
    image.Path = "noise.png";
    image.SetPixels(NoisyPixels(), Side, Side, true);
    image.MipmapSize = MaximumMipmapSize;
    static_cast<void>(image.Convert(TextureUsage::Color, false));
    image.Format = format;
    return image;
}

/// Rates are in bytes of source pixels: 4 MiB for each texture, whatever the format makes of them.
void CountSourceBytes(benchmark::State& state)
{
    state.SetBytesProcessed(state.iterations() * std::int64_t{Side} * Side * 4);
}

void CopyPixels(benchmark::State& state)
{
    const Bytes source = NoisyPixels();
    Bytes target(source.size());
    for (auto _ : state) {
        std::memcpy(target.data(), source.data(), source.size());
        benchmark::DoNotOptimize(target.data());
        benchmark::ClobberMemory();
    }
    CountSourceBytes(state);
}

BENCHMARK(CopyPixels);

void EncodeAllLevels(benchmark::State& state, TextureFormat format)
{
    TextureImage image = MakeImage(format);
    for (auto _ : state) {
        EncodeTexture(image);
        benchmark::DoNotOptimize(image.TextureData.data());
    }
    CountSourceBytes(state);
}

BENCHMARK_CAPTURE(EncodeAllLevels, Rgb565, TextureFormat::Rgb565);
BENCHMARK_CAPTURE(EncodeAllLevels, Rgba8, TextureFormat::Rgba8);

void ConvertWhole(benchmark::State& state)
{
    TextureImage image = MakeImage(TextureFormat::Rgba4);
    for (auto _ : state) {
        benchmark::DoNotOptimize(image.Convert(TextureUsage::Color, true).Status);
        benchmark::DoNotOptimize(image.TextureData.data());
    }
    CountSourceBytes(state);
}

BENCHMARK(ConvertWhole);

void Base64(benchmark::State& state)
{
    const Bytes bytes = NoisyPixels();
    for (auto _ : state)
        benchmark::DoNotOptimize(EncodeBase64(bytes.data(), bytes.size()));
    CountSourceBytes(state);
}

BENCHMARK(Base64);

/// One byte in, six bits out, one character after the other.
std::string EncodeByteWise(const Bytes& bytes)
{
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    unsigned bits = 0;
    int count = 0;
    for (const std::uint8_t byte : bytes) {
        bits = bits << 8 | byte;
        for (count += 8; count >= 6; count -= 6)
            text += alphabet[bits >> (count - 6) & 63];
    }
    if (count > 0)
        text += alphabet[bits << (6 - count) & 63];
    while (text.size() % 4 != 0)
        text += '=';
    return text;
}

void Base64ByteWise(benchmark::State& state)
{
    const Bytes bytes = NoisyPixels();
    for (auto _ : state)
        benchmark::DoNotOptimize(EncodeByteWise(bytes));
    CountSourceBytes(state);
}

BENCHMARK(Base64ByteWise);

/// From pixels to a finished file.
void WholeFile(benchmark::State& state, TextureFormat format)
{
    const std::string path = (std::filesystem::temp_directory_path() / "tq4x_bench.qtex").string();
    TextureImage image = MakeImage(format);
    for (auto _ : state) {
        EncodeTexture(image);
        const auto write = [&](XmlWriter& stream) { static_cast<void>(image.WriteXml(stream, 3)); };
        if (!WriteFrameFile(path, {}, EditDataPlace::BeforeContent, {}, write))
            state.SkipWithError("the file can't be opened");
    }
    std::filesystem::remove(path);
    CountSourceBytes(state);
}

BENCHMARK_CAPTURE(WholeFile, Rgb565, TextureFormat::Rgb565);
BENCHMARK_CAPTURE(WholeFile, Rgba8, TextureFormat::Rgba8);

} // namespace
} // namespace tq4x
