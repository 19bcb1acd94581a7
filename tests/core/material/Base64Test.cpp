#include "material/Base64.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace tq4x
{
namespace
{

std::string Encode(std::string_view text)
{
    return EncodeBase64(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
}

struct Base64Case
{
    std::string_view Bytes;
    const char* Text;
};

constexpr Base64Case Cases[] = {
    {"f", "Zg=="},
    {"fo", "Zm8="},
    {"foo", "Zm9v"},
    {"foob", "Zm9vYg=="},
    {"fooba", "Zm9vYmE="},
    {"foobar", "Zm9vYmFy"},
    {{"\0", 1}, "AA=="},
    {{"\0\0", 2}, "AAA="},
    {{"\0\0\0", 3}, "AAAA"},
    {"\xFF", "/w=="},
    {"\xFF\xFF", "//8="},
    {"\xFF\xFF\xFF", "////"},
    {"\xFB\xEF\xBE", "++++"},
    {"\x14\xFB\x9C\x03\xD9\x7E", "FPucA9l+"},
    {"", ""},
};

TEST(Base64, EncodesKnownTexts)
{
    for (const Base64Case& row : Cases)
        EXPECT_EQ(Encode(row.Bytes), row.Text);
}

TEST(Base64, UsesTheWholeAlphabetInOrder)
{
    const std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    for (unsigned i = 0; i < 64; i += 4) {
        const unsigned bits = i << 18 | (i + 1) << 12 | (i + 2) << 6 | (i + 3);
        for (const unsigned shift : {16u, 8u, 0u})
            bytes += static_cast<char>(bits >> shift);
    }
    EXPECT_EQ(Encode(bytes), alphabet);
}

/// One character after the other, six bits each.
std::string EncodeBySixBits(const std::vector<std::uint8_t>& bytes)
{
    const std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    unsigned bits = 0;
    int count = 0;
    for (const std::uint8_t byte : bytes) {
        bits = (bits << 8 | byte) & 0xFFFF;
        for (count += 8; count >= 6; count -= 6)
            text += alphabet[bits >> (count - 6) & 63];
    }
    if (count > 0)
        text += alphabet[bits << (6 - count) & 63];
    while (text.size() % 4 != 0)
        text += '=';
    return text;
}

TEST(Base64, EqualsTheSlowMethodForEveryLength)
{
    constexpr unsigned seed = 77;
    std::mt19937 random(seed);
    for (std::size_t size = 0; size < 400; ++size) {
        std::vector<std::uint8_t> bytes(size);
        for (std::uint8_t& byte : bytes)
            byte = static_cast<std::uint8_t>(random());
        EXPECT_EQ(EncodeBase64(bytes.data(), size), EncodeBySixBits(bytes))
            << "seed " << seed << " size " << size;
    }
}

TEST(Base64, InsertsNoLineFeeds)
{
    const std::vector<std::uint8_t> bytes(100000, '\n');
    const std::string text = EncodeBase64(bytes.data(), bytes.size());
    EXPECT_EQ(text.size(), (bytes.size() + 2) / 3 * 4);
    EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos);
}

} // namespace
} // namespace tq4x
