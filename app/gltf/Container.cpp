#include "gltf/Container.h"

#include <cstring>
#include <string>

#include "gltf/SceneError.h"

namespace tq4x::gltf
{
namespace
{

constexpr std::size_t HeaderSize = 12;
constexpr std::size_t ChunkHeaderSize = 8;
constexpr std::string_view Magic = "glTF";
constexpr std::string_view JsonChunk = "JSON";
constexpr std::string_view BinaryChunk("BIN\0", 4);

std::uint32_t LoadNumber(std::span<const std::uint8_t> bytes, std::size_t offset)
{
    return static_cast<std::uint32_t>(bytes[offset]) | static_cast<std::uint32_t>(bytes[offset + 1]) << 8 |
           static_cast<std::uint32_t>(bytes[offset + 2]) << 16 |
           static_cast<std::uint32_t>(bytes[offset + 3]) << 24;
}

std::string_view AsText(std::span<const std::uint8_t> bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

[[noreturn]] void Fail(const std::string& text)
{
    throw SceneError("", text);
}

struct Chunk
{
    std::string_view Type;
    std::span<const std::uint8_t> Data;
};

// Takes the first chunk off `rest`.
Chunk TakeChunk(std::span<const std::uint8_t>& rest)
{
    if (rest.size() < ChunkHeaderSize) {
        Fail("The file is truncated inside the header of a chunk.");
    }
    const std::size_t length = LoadNumber(rest, 0);
    if (length > rest.size() - ChunkHeaderSize) {
        Fail("The file is truncated: a chunk should have " + std::to_string(length) + " bytes, " +
             std::to_string(rest.size() - ChunkHeaderSize) + " are left.");
    }
    const Chunk chunk{AsText(rest.subspan(4, 4)), rest.subspan(ChunkHeaderSize, length)};
    rest = rest.subspan(ChunkHeaderSize + length);
    return chunk;
}

// The bytes of all chunks.
std::span<const std::uint8_t> CheckHeader(std::span<const std::uint8_t> file, Notes& notes)
{
    if (file.size() < HeaderSize) {
        Fail("The file is truncated inside its header.");
    }
    if (const std::uint32_t version = LoadNumber(file, 4); version != 2) {
        Fail("The container has version " + std::to_string(version) + "; only version 2 is read.");
    }
    const std::size_t length = LoadNumber(file, 8);
    if (length < HeaderSize || length > file.size()) {
        Fail("The file is truncated: its header says " + std::to_string(length) + " bytes, it has " +
             std::to_string(file.size()) + ".");
    }
    if (length < file.size()) {
        notes.push_back({NoteSeverity::Warning, "",
                         "The file has " + std::to_string(file.size() - length) + " bytes behind its end."});
    }
    return file.subspan(HeaderSize, length - HeaderSize);
}

} // namespace

Container SplitContainer(std::span<const std::uint8_t> file, Notes& notes)
{
    if (!AsText(file).starts_with(Magic)) {
        return {AsText(file), std::nullopt};
    }
    auto rest = CheckHeader(file, notes);
    const Chunk json = TakeChunk(rest);
    if (json.Type != JsonChunk) {
        Fail("The first chunk of the file is not JSON.");
    }
    std::string_view text = AsText(json.Data);
    while (text.ends_with('\0')) {
        text.remove_suffix(1); // some programs fill up with zeros instead of blanks
    }
    Container container{text, std::nullopt};
    if (!rest.empty()) {
        const Chunk binary = TakeChunk(rest);
        if (binary.Type == BinaryChunk) {
            container.Binary = binary.Data;
        }
    }
    return container; // chunks of later versions of the format are passed over
}

} // namespace tq4x::gltf
