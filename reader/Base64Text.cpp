#include "Base64Text.h"

#include <array>

namespace tq4x::reader
{
namespace
{

constexpr std::string_view Alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t NoDigit = 0xFF;

constexpr std::array<std::uint8_t, 256> MakeDigits()
{
    std::array<std::uint8_t, 256> digits = {};
    digits.fill(NoDigit);
    for (std::size_t i = 0; i < Alphabet.size(); ++i) {
        digits[static_cast<unsigned char>(Alphabet[i])] = static_cast<std::uint8_t>(i);
    }
    return digits;
}

constexpr std::array<std::uint8_t, 256> Digits = MakeDigits();

std::string_view Trimmed(std::string_view text)
{
    constexpr std::string_view Blank = " \t\r\n";
    const std::size_t start = text.find_first_not_of(Blank);
    return start == std::string_view::npos ? std::string_view()
                                           : text.substr(start, text.find_last_not_of(Blank) - start + 1);
}

} // namespace

std::optional<std::vector<std::uint8_t>> DecodeBase64(std::string_view text)
{
    text = Trimmed(text);
    if (text.size() % 4 != 0) {
        return std::nullopt;
    }
    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with("=") ? 1 : 0;
    const std::string_view digits = text.substr(0, text.size() - padding);
    std::vector<std::uint8_t> bytes;
    bytes.reserve(text.size() / 4 * 3);
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        const std::uint8_t digit = Digits[static_cast<unsigned char>(digits[i])];
        if (digit == NoDigit) {
            return std::nullopt;
        }
        bits = bits << 6 | digit;
        // The second, third and fourth digit of each four complete a byte.
        if (i % 4 != 0) {
            bytes.push_back(static_cast<std::uint8_t>(bits >> (6 - 2 * (i % 4))));
        }
    }
    return bytes;
}

std::string EncodeBase64(std::string_view bytes)
{
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::string_view three = bytes.substr(i, 3);
        std::uint32_t bits = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            bits = bits << 8 | (k < three.size() ? static_cast<unsigned char>(three[k]) : 0U);
        }
        for (std::size_t k = 0; k < 4; ++k) {
            text += k <= three.size() ? Alphabet[bits >> (18 - 6 * k) & 63] : '=';
        }
    }
    return text;
}

} // namespace tq4x::reader
