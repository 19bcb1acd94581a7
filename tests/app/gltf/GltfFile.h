#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "gltf/OpenDocument.h"

namespace tq4x::gltf::test
{

/// Little-endian bytes of numbers, one behind the other.
template<class... Numbers>
Bytes Pack(Numbers... numbers)
{
    Bytes bytes;
    const auto append = [&](auto number) {
        const auto* const start = reinterpret_cast<const std::uint8_t*>(&number);
        bytes.insert(bytes.end(), start, start + sizeof number);
    };
    (append(numbers), ...);
    return bytes;
}

inline Bytes Join(std::vector<Bytes> parts)
{
    Bytes all;
    for (const Bytes& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

inline Bytes ToBytes(std::string_view text)
{
    return {text.begin(), text.end()};
}

inline std::string EncodeBase64(const Bytes& bytes)
{
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t bits = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            bits = bits << 8 | (i + k < bytes.size() ? bytes[i + k] : 0u);
        }
        for (std::size_t k = 0; k < 4; ++k) {
            text += i + k > bytes.size() ? '=' : digits[bits >> (18 - 6 * k) & 63];
        }
    }
    return text;
}

inline std::string DataUri(const Bytes& bytes)
{
    return "data:application/octet-stream;base64," + EncodeBase64(bytes);
}

/// The members of a file's root that every file needs, in front of the given ones.
inline std::string WithAsset(const std::string& members)
{
    return R"({"asset":{"version":"2.0"})" + (members.empty() ? "" : "," + members) + "}";
}

/// A file with one buffer that holds the given bytes, and one view of it all, which is view 0.
inline std::string WithData(const Bytes& data, const std::string& members)
{
    const std::string length = std::to_string(data.size());
    return WithAsset(R"("buffers":[{"byteLength":)" + length + R"(,"uri":")" + DataUri(data) +
                     R"("}],"bufferViews":[{"buffer":0,"byteLength":)" + length + "}]" +
                     (members.empty() ? "" : "," + members));
}

inline Bytes MakeGlb(std::string json, Bytes binary)
{
    json.resize((json.size() + 3) / 4 * 4, ' ');
    binary.resize((binary.size() + 3) / 4 * 4, 0);
    const auto jsonSize = static_cast<std::uint32_t>(json.size());
    const auto binarySize = static_cast<std::uint32_t>(binary.size());
    return Join({ToBytes("glTF"), Pack(std::uint32_t{2}, 12 + 8 + jsonSize + 8 + binarySize), Pack(jsonSize),
                 ToBytes("JSON"), ToBytes(json), Pack(binarySize), ToBytes(std::string_view("BIN\0", 4)),
                 binary});
}

inline OpenedDocument OpenText(const std::string& json)
{
    return OpenDocument(ToBytes(json), AssetFolders{});
}

/// Opens what must open; the error is the test's failure text.
inline Document MustOpen(const std::string& json)
{
    OpenedDocument opened = OpenText(json);
    EXPECT_EQ(opened.Error, "");
    return opened.Content ? *std::move(opened.Content) : Document();
}

} // namespace tq4x::gltf::test
