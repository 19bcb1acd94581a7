#include <gtest/gtest.h>

#include "GltfFile.h"
#include "gltf/Container.h"
#include "gltf/SceneError.h"

namespace tq4x::gltf::test
{
namespace
{

std::string ErrorOf(const Bytes& file)
{
    Notes notes;
    try {
        (void)SplitContainer(file, notes);
    } catch (const SceneError& error) {
        return error.Text;
    }
    return "no error";
}

Bytes Header(std::uint32_t version, std::uint32_t length)
{
    return Join({ToBytes("glTF"), Pack(version, length)});
}

Bytes Chunk(std::string_view type, std::uint32_t length, const Bytes& data)
{
    return Join({Pack(length), ToBytes(type), data});
}

TEST(ContainerTest, SplitsBinaryFiles)
{
    const Bytes file = MakeGlb("{}", {1, 2, 3, 4, 5});
    Notes notes;
    const Container container = SplitContainer(file, notes);
    EXPECT_EQ(container.Json, "{}  ");
    ASSERT_TRUE(container.Binary);
    EXPECT_EQ(Bytes(container.Binary->begin(), container.Binary->end()), (Bytes{1, 2, 3, 4, 5, 0, 0, 0}));
    EXPECT_TRUE(notes.empty());
}

TEST(ContainerTest, TakesOtherFilesAsText)
{
    const Bytes file = ToBytes(" {\"asset\":1}");
    Notes notes;
    const Container container = SplitContainer(file, notes);
    EXPECT_EQ(container.Json, " {\"asset\":1}");
    EXPECT_FALSE(container.Binary);
}

TEST(ContainerTest, NotesBytesBehindTheEnd)
{
    Bytes file = MakeGlb("{}", {});
    file.insert(file.end(), 5, 0);
    Notes notes;
    (void)SplitContainer(file, notes);
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_EQ(notes[0].Text, "The file has 5 bytes behind its end.");
}

TEST(ContainerTest, ZerosBehindTheJsonAreNoJson)
{
    const Bytes file = Join({Header(2, 12 + 8 + 4), Chunk("JSON", 4, {'{', '}', 0, 0})});
    Notes notes;
    EXPECT_EQ(SplitContainer(file, notes).Json, "{}");
}

TEST(ContainerTest, PassesOverUnknownChunks)
{
    const Bytes file = Join(
        {Header(2, 12 + 8 + 4 + 8 + 4), Chunk("JSON", 4, ToBytes("{}  ")), Chunk("NEW!", 4, {1, 2, 3, 4})});
    Notes notes;
    EXPECT_FALSE(SplitContainer(file, notes).Binary);
}

TEST(ContainerTest, RefusesHeadersThatDoNotHoldTogether)
{
    const struct
    {
        const char* Name;
        Bytes File;
        const char* Error;
    } cases[] = {
        {"magic only", ToBytes("glTF"), "The file is truncated inside its header."},
        {"version 1", Header(1, 12), "The container has version 1; only version 2 is read."},
        {"length too small", Header(2, 11), "The file is truncated: its header says 11 bytes, it has 12."},
        {"length too large", Header(2, 4294967295u),
         "The file is truncated: its header says 4294967295 bytes, it has 12."},
        {"no chunk", Header(2, 12), "The file is truncated inside the header of a chunk."},
        {"chunk beyond the file", Join({Header(2, 24), Chunk("JSON", 4294967295u, {0, 0, 0, 0})}),
         "The file is truncated: a chunk should have 4294967295 bytes, 4 are left."},
        {"no JSON first", Join({Header(2, 24), Chunk("BIN ", 4, {0, 0, 0, 0})}),
         "The first chunk of the file is not JSON."},
        {"rest too short", Join({Header(2, 27), Chunk("JSON", 4, ToBytes("{}  ")), {1, 2, 3}}),
         "The file is truncated inside the header of a chunk."},
    };

    for (const auto& entry : cases) {
        EXPECT_EQ(ErrorOf(entry.File), entry.Error) << entry.Name;
    }
}

// Each prefix in a block of its very size, so that the sanitizer sees a read behind its end.
TEST(ContainerTest, EveryTruncationOfAFileIsRefused)
{
    const Bytes whole =
        MakeGlb(WithAsset(R"("buffers":[{"byteLength":16}],"bufferViews":[{"buffer":0,"byteLength":16}],
        "accessors":[{"bufferView":0,"componentType":5126,"count":4,"type":"SCALAR"}])"),
                Bytes(16, 7));
    ASSERT_EQ(OpenDocument(whole, AssetFolders{}).Error, "");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_NE(OpenDocument(part, AssetFolders{}).Error, "") << length;
    }
}

TEST(ContainerTest, EveryFlippedByteIsReadOrRefused)
{
    const Bytes whole =
        MakeGlb(WithAsset(R"("buffers":[{"byteLength":24}],"bufferViews":[{"buffer":0,"byteLength":24}],
        "accessors":[{"bufferView":0,"componentType":5126,"count":2,"type":"VEC3"}],
        "meshes":[{"primitives":[{"attributes":{"POSITION":0},"mode":5}]}],"nodes":[{"mesh":0}],
        "scenes":[{"nodes":[0]}])"),
                Bytes(24, 7));
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (const int flip : {0x01, 0x20, 0x80, 0xff}) {
            Bytes changed = whole;
            changed[i] = static_cast<std::uint8_t>(changed[i] ^ flip);
            const OpenedDocument opened = OpenDocument(changed, AssetFolders{});
            EXPECT_EQ(opened.Content.has_value(), opened.Error.empty()) << i;
        }
    }
}

} // namespace
} // namespace tq4x::gltf::test
