#include <gtest/gtest.h>

#include "GltfFile.h"
#include "gltf/ReadTriangles.h"
#include "gltf/SceneError.h"

namespace tq4x::gltf::test
{
namespace
{

// Five vertices (accessor 0), indices as given (accessor 1).
Document MakeMesh(int mode, const std::vector<std::uint16_t>& indices, bool isIndexed)
{
    Bytes data = Bytes(60, 0);
    for (const std::uint16_t index : indices) {
        data = Join({data, Pack(index)});
    }
    return MustOpen(WithData(
        data, R"("accessors":[{"bufferView":0,"componentType":5126,"count":5,"type":"VEC3"},)"
              R"({"bufferView":0,"byteOffset":60,"componentType":5123,"count":)" +
                  std::to_string(indices.size()) +
                  R"(,"type":"SCALAR"}],"meshes":[{"primitives":[{"attributes":{"POSITION":0},"mode":)" +
                  std::to_string(mode) + (isIndexed ? R"(,"indices":1)" : "") + "}]}]"));
}

Triangles Read(int mode, const std::vector<std::uint16_t>& indices, bool isIndexed = true)
{
    const Document document = MakeMesh(mode, indices, isIndexed);
    return ReadTriangles(document, document.Meshes[0].Primitives[0], "/meshes/0/primitives/0");
}

using Corners = std::vector<std::uint32_t>;

TEST(ReadTrianglesTest, UnrollsEveryMode)
{
    const struct
    {
        const char* Name;
        int Mode;
        std::vector<std::uint16_t> Indices;
        Corners Expected;
        std::size_t Dropped = 0;
        std::size_t Loose = 0;
    } cases[] = {
        {"list", 4, {0, 1, 2, 2, 1, 3}, {0, 1, 2, 2, 1, 3}},
        {"list keeps degenerate triangles", 4, {0, 0, 2}, {0, 0, 2}},
        {"list with loose corners", 4, {0, 1, 2, 3, 4}, {0, 1, 2}, 0, 2},
        {"strip", 5, {0, 1, 2, 3, 4}, {0, 1, 2, 1, 3, 2, 2, 3, 4}},
        {"strip drops its joints", 5, {0, 1, 2, 2, 3, 3, 4, 1}, {0, 1, 2, 3, 1, 4}, 4},
        {"strip of two", 5, {0, 1}, {}},
        {"fan", 6, {0, 1, 2, 3}, {1, 2, 0, 2, 3, 0}},
        {"fan drops degenerate triangles", 6, {0, 1, 1, 2}, {1, 2, 0}, 1},
        {"empty list", 4, {}, {}},
        {"points", 0, {0, 1, 2}, {}},
        {"lines", 1, {0, 1, 2}, {}},
        {"line loop", 2, {0, 1, 2}, {}},
        {"line strip", 3, {0, 1, 2}, {}},
    };

    for (const auto& entry : cases) {
        const Triangles triangles = Read(entry.Mode, entry.Indices);
        EXPECT_EQ(triangles.Corners, entry.Expected) << entry.Name;
        EXPECT_EQ(triangles.DroppedCount, entry.Dropped) << entry.Name;
        EXPECT_EQ(triangles.LooseCount, entry.Loose) << entry.Name;
    }
}

TEST(ReadTrianglesTest, WithoutIndicesTheVerticesCountInOrder)
{
    EXPECT_EQ(Read(4, {}, false).Corners, (Corners{0, 1, 2}));
    EXPECT_EQ(Read(4, {}, false).LooseCount, 2u);
    EXPECT_EQ(Read(5, {}, false).Corners, (Corners{0, 1, 2, 1, 3, 2, 2, 3, 4}));
    EXPECT_EQ(Read(6, {}, false).Corners, (Corners{1, 2, 0, 2, 3, 0, 3, 4, 0}));
}

// Every strip of n different vertices has n - 2 triangles, each edge between neighbours run through both
// ways.
TEST(ReadTrianglesTest, StripWindingIsConsistent)
{
    const Corners corners = Read(5, {0, 1, 2, 3, 4, 0, 2}).Corners;
    for (std::size_t t = 0; t + 1 < corners.size() / 3; ++t) {
        const std::uint32_t* const a = &corners[3 * t];
        const std::uint32_t* const b = a + 3;
        int shared = 0;
        for (int i = 0; i < 3; ++i) {
            for (int k = 0; k < 3; ++k) {
                EXPECT_FALSE(a[i] == b[k] && a[(i + 1) % 3] == b[(k + 1) % 3]) << t;
                shared += a[i] == b[(k + 1) % 3] && a[(i + 1) % 3] == b[k] ? 1 : 0;
            }
        }
        EXPECT_EQ(shared, 1) << t;
    }
}

TEST(ReadTrianglesTest, RefusesIndicesBeyondTheVertices)
{
    try {
        (void)Read(4, {0, 1, 65535});
        FAIL();
    } catch (const SceneError& error) {
        EXPECT_EQ(error.Place, "/meshes/0/primitives/0/indices");
        EXPECT_EQ(error.Text, "Index 65535 at position 2 is out of range; the primitive has 5 vertices.");
    }
}

} // namespace
} // namespace tq4x::gltf::test
