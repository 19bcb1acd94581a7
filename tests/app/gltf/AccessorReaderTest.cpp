#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "GltfFile.h"
#include "gltf/AccessorReader.h"
#include "gltf/SceneError.h"

namespace tq4x::gltf::test
{
namespace
{

std::string ErrorOf(const Document& document, bool integers)
{
    try {
        integers ? (void)ReadIntegers(document, 0) : (void)ReadFloats(document, 0);
    } catch (const SceneError& error) {
        return error.Place + ": " + error.Text;
    }
    return "no error";
}

std::string AccessorText(int type, int count, const char* shape, const std::string& more = "")
{
    return R"("accessors":[{"bufferView":0,"componentType":)" + std::to_string(type) + R"(,"count":)" +
           std::to_string(count) + R"(,"type":")" + shape + "\"" + more + "}]";
}

using Floats = std::vector<float>;

TEST(AccessorReaderTest, NormalisesAsTheFormatSays)
{
    const struct
    {
        const char* Name;
        int Type;
        Bytes Data;
        bool Normalised;
        Floats Expected;
    } cases[] = {
        {"byte",
         5120,
         Pack(std::int8_t{-128}, std::int8_t{-127}, std::int8_t{0}, std::int8_t{127}),
         true,
         {-1.0f, -1.0f, 0.0f, 1.0f}},
        {"unsigned byte", 5121, Bytes{0, 51, 255}, true, {0.0f, 0.2f, 1.0f}},
        {"short", 5122, Pack(std::int16_t{-32768}, std::int16_t{32767}), true, {-1.0f, 1.0f}},
        {"unsigned short", 5123, Pack(std::uint16_t{0}, std::uint16_t{65535}), true, {0.0f, 1.0f}},
        {"plain byte", 5120, Pack(std::int8_t{-128}, std::int8_t{5}), false, {-128.0f, 5.0f}},
        {"plain unsigned byte", 5121, Bytes{0, 255}, false, {0.0f, 255.0f}},
        {"plain short", 5122, Pack(std::int16_t{-300}), false, {-300.0f}},
        {"unsigned int", 5125, Pack(std::uint32_t{70000}), false, {70000.0f}},
        {"float", 5126, Pack(1.5f, -0.0f), false, {1.5f, -0.0f}},
        {"float is never normalised", 5126, Pack(3.5f), true, {3.5f}},
    };

    for (const auto& entry : cases) {
        const Document document = MustOpen(
            WithData(entry.Data, AccessorText(entry.Type, static_cast<int>(entry.Expected.size()), "SCALAR",
                                              entry.Normalised ? R"(,"normalized":true)" : "")));
        EXPECT_EQ(ReadFloats(document, 0), entry.Expected) << entry.Name;
    }
}

TEST(AccessorReaderTest, ReadsIntegersExactly)
{
    const Document document = MustOpen(WithData(Pack(std::uint32_t{4294967295u}, std::uint32_t{16777217u}),
                                                AccessorText(5125, 2, "SCALAR")));
    EXPECT_EQ(ReadIntegers(document, 0), (std::vector<std::uint32_t>{4294967295u, 16777217u}));
}

TEST(AccessorReaderTest, RefusesIntegersFromOtherTypes)
{
    EXPECT_EQ(ErrorOf(MustOpen(WithData(Pack(1.0f), AccessorText(5126, 1, "SCALAR"))), true),
              "/accessors/0: Unsigned integers are wanted here.");
    EXPECT_EQ(ErrorOf(MustOpen(WithData(Bytes{1}, AccessorText(5120, 1, "SCALAR"))), true),
              "/accessors/0: Unsigned integers are wanted here.");
}

TEST(AccessorReaderTest, SkipsThePaddingOfSmallMatrices)
{
    const Bytes mat2 = {1, 2, 99, 99, 3, 4, 99, 99, 5, 6, 99, 99, 7, 8, 99, 99};
    EXPECT_EQ(ReadFloats(MustOpen(WithData(mat2, AccessorText(5121, 2, "MAT2"))), 0),
              (Floats{1, 2, 3, 4, 5, 6, 7, 8}));
    const Bytes mat3 = {1, 2, 3, 99, 4, 5, 6, 99, 7, 8, 9, 99};
    EXPECT_EQ(ReadFloats(MustOpen(WithData(mat3, AccessorText(5121, 1, "MAT3"))), 0),
              (Floats{1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(AccessorReaderTest, WithoutAViewThereAreZeros)
{
    const Document document =
        MustOpen(WithAsset(R"("accessors":[{"componentType":5126,"count":2,"type":"VEC2"}])"));
    EXPECT_EQ(ReadFloats(document, 0), (Floats{0, 0, 0, 0}));
}

TEST(AccessorReaderTest, SparseValuesReplace)
{
    const Bytes data = Join({Pack(1.0f, 2.0f, 3.0f, 4.0f), {1, 3}, Pack(20.0f, 40.0f)});
    const std::string sparse =
        R"(,"sparse":{"count":2,"indices":{"bufferView":0,"byteOffset":16,"componentType":5121},
        "values":{"bufferView":0,"byteOffset":18}})";
    EXPECT_EQ(ReadFloats(MustOpen(WithData(data, AccessorText(5126, 4, "SCALAR", sparse))), 0),
              (Floats{1, 20, 3, 40}));
}

TEST(AccessorReaderTest, RefusesSparseIndicesOutOfOrderOrRange)
{
    for (const Bytes& indices : {Bytes{3, 1}, Bytes{1, 1}, Bytes{1, 4}}) {
        const Bytes data = Join({Pack(1.0f, 2.0f, 3.0f, 4.0f), indices, Pack(20.0f, 40.0f)});
        const std::string sparse =
            R"(,"sparse":{"count":2,"indices":{"bufferView":0,"byteOffset":16,"componentType":5121},
            "values":{"bufferView":0,"byteOffset":18}})";
        EXPECT_EQ(ErrorOf(MustOpen(WithData(data, AccessorText(5126, 4, "SCALAR", sparse))), false),
                  "/accessors/0/sparse/indices: Entry 1 is out of range or out of order.");
    }
}

// Random layouts: the reader gives back what was put in, wherever the bytes lie.
TEST(AccessorReaderTest, RandomLayoutsReadBack)
{
    struct Shape
    {
        const char* Word;
        AccessorShape Value;
    };

    constexpr Shape shapes[] = {{"SCALAR", AccessorShape::Scalar},
                                {"VEC2", AccessorShape::Vec2},
                                {"VEC3", AccessorShape::Vec3},
                                {"VEC4", AccessorShape::Vec4},
                                {"MAT4", AccessorShape::Mat4}};
    for (unsigned seed = 0; seed < 300; ++seed) {
        std::mt19937 random(seed);
        const auto below = [&random](std::size_t limit) {
            return static_cast<std::size_t>(random() % limit);
        };
        const Shape shape = shapes[below(5)];
        const std::size_t components = ComponentCount(shape.Value);
        const std::size_t count = 1 + below(9);
        const std::size_t offset = below(7);
        const std::size_t gap = below(3) == 0 ? 0 : below(9);
        const std::size_t stride = components * 4 + gap;
        Floats expected(count * components);
        Bytes data(offset + (count - 1) * stride + components * 4, 0xee);
        for (std::size_t i = 0; i < expected.size(); ++i) {
            expected[i] = static_cast<float>(static_cast<int>(random() % 2001) - 1000) / 8.0f;
            std::memcpy(&data[offset + i / components * stride + i % components * 4], &expected[i], 4);
        }
        const std::string length = std::to_string(data.size());
        const Document document = MustOpen(WithAsset(
            R"("buffers":[{"byteLength":)" + length + R"(,"uri":")" + DataUri(data) +
            R"("}],"bufferViews":[{"buffer":0,"byteLength":)" + length +
            (gap == 0 ? "" : R"(,"byteStride":)" + std::to_string(stride)) +
            R"(}],"accessors":[{"bufferView":0,"componentType":5126,"byteOffset":)" + std::to_string(offset) +
            R"(,"count":)" + std::to_string(count) + R"(,"type":")" + shape.Word + "\"}]"));
        ASSERT_EQ(ReadFloats(document, 0), expected) << "seed " << seed;
    }
}

} // namespace
} // namespace tq4x::gltf::test
