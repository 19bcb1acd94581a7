#include <gmock/gmock.h>

#include <limits>

#include "glb/GlbWriter.h"
#include "reader/glb/ReadGlb.h"

namespace tq4x::reader::test
{
namespace
{

using testing::ElementsAre;

TEST(GlbWriter, AFileWithoutNumbersHasNoBuffer)
{
    GlbWriter writer;
    const std::string bytes = writer.Finish();
    EXPECT_EQ(bytes.size() % 4, 0U);
    EXPECT_EQ(ParseGlb(bytes).Root.dump(), R"({"asset":{"version":"2.0","generator":"tq4x to-gltf"}})");
}

TEST(GlbWriter, EveryViewBeginsAtAMultipleOfFour)
{
    GlbWriter writer;
    EXPECT_EQ(writer.AddBytes("abc"), 0);
    const std::uint32_t bytes[] = {1, 2, 255};
    EXPECT_EQ(writer.AddIntegers(bytes, 1, BufferUse::Vertices, true), 0);
    const float numbers[] = {1.5F, -2};
    EXPECT_EQ(writer.AddFloats(numbers, 2, BufferUse::Data), 1);
    const Glb glb = ParseGlb(writer.Finish());
    EXPECT_EQ(glb.Root.at("bufferViews").dump(),
              R"([{"buffer":0,"byteOffset":0,"byteLength":3},)"
              R"({"buffer":0,"byteOffset":4,"byteLength":3,"target":34962},)"
              R"({"buffer":0,"byteOffset":8,"byteLength":8}])");
    EXPECT_EQ(glb.Buffer.substr(0, 8), std::string("abc\0\1\2\xFF\0", 8));
    EXPECT_THAT(glb.Numbers(1), ElementsAre(1.5, -2));
}

TEST(GlbWriter, AccessorsTellTypeCountAndBounds)
{
    GlbWriter writer;
    const float points[] = {1, 5, -3, 0.1F, 2, 7};
    ASSERT_EQ(writer.AddFloats(points, 3, BufferUse::Vertices, true), 0);
    ASSERT_EQ(writer.AddFloats(points, 2, BufferUse::Vertices), 1);
    const std::vector<float> matrix(16, 2);
    ASSERT_EQ(writer.AddFloats(matrix, 16, BufferUse::Data), 2);
    const Glb glb = ParseGlb(writer.Finish());
    const Json& accessors = glb.Root.at("accessors");
    EXPECT_EQ(accessors.at(0).dump(), R"({"bufferView":0,"componentType":5126,"count":2,"type":"VEC3",)"
                                      R"("min":[0.10000000149011612,2.0,-3.0],"max":[1.0,5.0,7.0]})");
    EXPECT_EQ(accessors.at(1).dump(), R"({"bufferView":1,"componentType":5126,"count":3,"type":"VEC2"})");
    EXPECT_EQ(accessors.at(2).at("type"), "MAT4");
}

TEST(GlbWriter, IntegersTakeTheSmallestTypeThatKeepsTheRestartNumberFree)
{
    const struct
    {
        std::uint32_t Largest;
        bool IsByte;
        int Type;
    } cases[] = {
        {255, true, 5121},    {255, false, 5123},   {65534, false, 5123},
        {65535, false, 5125}, {65536, false, 5125},
    };

    for (const auto& entry : cases) {
        GlbWriter writer;
        const std::uint32_t values[] = {0, entry.Largest};
        const int accessor = writer.AddIntegers(values, 1, BufferUse::Indices, entry.IsByte);
        EXPECT_EQ(writer.At("accessors", accessor).at("componentType"), entry.Type) << entry.Largest;
        const Glb glb = ParseGlb(writer.Finish());
        EXPECT_THAT(glb.Numbers(0), ElementsAre(0, entry.Largest));
    }
}

TEST(GlbWriter, EqualNumbersOfOneUseAreStoredOnce)
{
    GlbWriter writer;
    const float numbers[] = {1, 2, 3, 4, 5, 6};
    const float others[] = {1, 2, 3, 4, 5, 7};
    const int first = writer.AddFloats(numbers, 3, BufferUse::Vertices);
    EXPECT_EQ(writer.AddFloats(numbers, 3, BufferUse::Vertices), first);
    EXPECT_NE(writer.AddFloats(others, 3, BufferUse::Vertices), first);
    EXPECT_NE(writer.AddFloats(numbers, 2, BufferUse::Vertices), first);
    EXPECT_NE(writer.AddFloats(numbers, 3, BufferUse::Data), first);
    EXPECT_NE(writer.AddFloats(numbers, 3, BufferUse::Vertices, true), first);
    EXPECT_EQ(ParseGlb(writer.Finish()).Root.at("accessors").size(), 5U);
}

TEST(GlbWriter, NumbersAreFinite)
{
    constexpr float Largest = std::numeric_limits<float>::max();
    constexpr float Endless = std::numeric_limits<float>::infinity();
    GlbWriter writer;
    const float numbers[] = {Endless, std::numeric_limits<float>::quiet_NaN(), -Endless};
    writer.AddFloats(numbers, 1, BufferUse::Data, true);
    const Glb glb = ParseGlb(writer.Finish());
    EXPECT_THAT(glb.Numbers(0), ElementsAre(Largest, 0, -Largest));
    EXPECT_EQ(glb.Root.at("accessors").at(0).at("min").at(0), -static_cast<double>(Largest));
    EXPECT_EQ(Json(ShortNumber(Endless)).dump(), "3.4028235e+38");
}

TEST(GlbWriter, ExtensionsAreNamedOnce)
{
    GlbWriter writer;
    writer.UseExtension("KHR_b");
    writer.UseExtension("KHR_a");
    writer.UseExtension("KHR_b");
    EXPECT_EQ(ParseGlb(writer.Finish()).Root.at("extensionsUsed").dump(), R"(["KHR_b","KHR_a"])");
}

TEST(GlbWriter, NamesThatAreNoUtf8AreReplaced)
{
    GlbWriter writer;
    writer.Add("nodes", {{"name", "a\xFFz"}});
    EXPECT_EQ(ParseGlb(writer.Finish()).Root.at("nodes").at(0).at("name"), "a\xEF\xBF\xBDz");
}

TEST(GlbWriter, FloatsArePrintedShort)
{
    const struct
    {
        float Value;
        const char* Text;
    } cases[] = {
        {0.1F, "0.1"}, {-0.0F, "0.0"}, {1e-20F, "1e-20"}, {16777216, "16777216.0"}, {1.0F / 3, "0.33333334"}};

    for (const auto& entry : cases) {
        EXPECT_EQ(Json(ShortNumber(entry.Value)).dump(), entry.Text);
    }
}

} // namespace
} // namespace tq4x::reader::test
