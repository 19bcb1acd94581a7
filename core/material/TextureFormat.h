#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tq4x
{

/// The console's texture formats.
enum class TextureFormat : std::int32_t
{
    L4 = 0,
    L8 = 1,
    A4 = 2,
    A8 = 3,
    La4 = 4,
    La8 = 5,
    Hilo8 = 6,
    Rgb565 = 7,
    Rgb8 = 8,
    Rgb5_a1 = 9,
    Rgba4 = 10,
    Rgba8 = 11,
    Etc1 = 12,
    Etc1_a4 = 13,
};

/// The word of a format in the files; "err" for a value that is not in the enumeration.
std::string_view FormatWord(TextureFormat format);

/// The format of a word, which must match in length and bytes.
std::optional<TextureFormat> FindFormat(std::string_view word);

/// Size of a pixel in bits; 0 for a value that is not in the enumeration.
std::int32_t BitsPerPixel(TextureFormat format);

} // namespace tq4x
