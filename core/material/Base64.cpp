#include "material/Base64.h"

#include <array>
#include <cstring>
#include <string_view>

namespace tq4x
{
namespace
{

constexpr std::string_view Alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

using CharacterPair = std::array<char, 2>;

/// The two characters of every twelve bits: half the look-ups of one character at a time, and small enough
/// for the first cache.
constexpr auto Pairs = [] {
    std::array<CharacterPair, 4096> pairs{};
    for (std::size_t bits = 0; bits < pairs.size(); ++bits)
        pairs[bits] = {Alphabet[bits >> 6], Alphabet[bits & 63]};
    return pairs;
}();

/// Three bytes as 24 bits, most significant first.
std::uint32_t TwentyFourBits(const std::uint8_t* bytes)
{
    return static_cast<std::uint32_t>(bytes[0]) << 16 | static_cast<std::uint32_t>(bytes[1]) << 8 | bytes[2];
}

void PutFour(char* out, std::uint32_t bits)
{
    std::memcpy(out, Pairs[bits >> 12].data(), 2);
    std::memcpy(out + 2, Pairs[bits & 0xFFF].data(), 2);
}

} // namespace

std::string EncodeBase64(const std::uint8_t* bytes, std::size_t size)
{
    const std::size_t rest = size % 3;
    const std::uint8_t* const end = bytes + (size - rest);
    std::string text((size + 2) / 3 * 4, '=');
    char* out = text.data();
    for (; bytes != end; bytes += 3, out += 4)
        PutFour(out, TwentyFourBits(bytes));
    if (rest > 0) {
        const std::array<std::uint8_t, 3> tail = {bytes[0], rest == 2 ? bytes[1] : std::uint8_t{0}, 0};
        std::array<char, 4> characters{};
        PutFour(characters.data(), TwentyFourBits(tail.data()));
        std::memcpy(out, characters.data(), rest + 1); // the padding stands there already
    }
    return text;
}

} // namespace tq4x
