#include "material/TextureFormat.h"

#include "pipeline/WordTable.h"

#include <array>
#include <cstddef>

namespace tq4x
{
namespace
{

constexpr auto FormatWords = WordTable<TextureFormat::Etc1_a4>({
    {TextureFormat::L4, "L4"},
    {TextureFormat::L8, "L8"},
    {TextureFormat::A4, "A4"},
    {TextureFormat::A8, "A8"},
    {TextureFormat::La4, "La4"},
    {TextureFormat::La8, "La8"},
    {TextureFormat::Hilo8, "Hilo8"},
    {TextureFormat::Rgb565, "Rgb565"},
    {TextureFormat::Rgb8, "Rgb8"},
    {TextureFormat::Rgb5_a1, "Rgb5_a1"},
    {TextureFormat::Rgba4, "Rgba4"},
    {TextureFormat::Rgba8, "Rgba8"},
    {TextureFormat::Etc1, "Etc1"},
    {TextureFormat::Etc1_a4, "Etc1_a4"},
});

constexpr std::array<std::int32_t, FormatWords.size()> FormatBits = {4,  8,  4,  8,  8,  16, 16,
                                                                     16, 24, 16, 16, 32, 4,  8};

bool IsKnown(TextureFormat format)
{
    return format >= TextureFormat::L4 && format <= TextureFormat::Etc1_a4;
}

} // namespace

std::string_view FormatWord(TextureFormat format)
{
    return IsKnown(format) ? WordOf(FormatWords, format) : "err";
}

std::optional<TextureFormat> FindFormat(std::string_view word)
{
    return FindWord<TextureFormat>(FormatWords, word);
}

std::int32_t BitsPerPixel(TextureFormat format)
{
    return IsKnown(format) ? FormatBits[static_cast<std::size_t>(format)] : 0;
}

} // namespace tq4x
