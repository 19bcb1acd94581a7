#include "material/AlphaKind.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tq4x
{
namespace
{

using Bytes = std::vector<std::uint8_t>;

struct DataCase
{
    const char* Name;
    TextureFormat Format;
    Bytes Data;
    AlphaKind Kind;
};

/// Data of an Etc1_a4 block: its alpha bytes, then colour bytes that say nothing.
Bytes AlphaBlock(const Bytes& alphas)
{
    Bytes block = alphas;
    block.resize(16, 0x55);
    return block;
}

const Bytes Opaque(8, 0xFF);

const DataCase DataCases[] = {
    {"L4 has none", TextureFormat::L4, {0x00, 0x77}, AlphaKind::None},
    {"L8 has none", TextureFormat::L8, {0, 128}, AlphaKind::None},
    {"Hilo8 has none", TextureFormat::Hilo8, {0, 128}, AlphaKind::None},
    {"Rgb565 has none", TextureFormat::Rgb565, {0, 128}, AlphaKind::None},
    {"Rgb8 has none", TextureFormat::Rgb8, {0, 128, 0}, AlphaKind::None},
    {"Etc1 has none", TextureFormat::Etc1, {0, 128, 0, 0, 0, 0, 0, 0}, AlphaKind::None},
    {"A4 full", TextureFormat::A4, {0xFF, 0xFF}, AlphaKind::None},
    {"A4 low half", TextureFormat::A4, {0xFF, 0xF0}, AlphaKind::Extremes},
    {"A4 high half", TextureFormat::A4, {0x0F, 0xFF}, AlphaKind::Extremes},
    {"A4 gradual high half", TextureFormat::A4, {0x00, 0xEF}, AlphaKind::Gradual},
    {"A4 gradual low half", TextureFormat::A4, {0x00, 0xF1}, AlphaKind::Gradual},
    {"A8 full", TextureFormat::A8, {255, 255}, AlphaKind::None},
    {"A8 extremes", TextureFormat::A8, {255, 0}, AlphaKind::Extremes},
    {"A8 gradual", TextureFormat::A8, {255, 254}, AlphaKind::Gradual},
    {"La4 full", TextureFormat::La4, {0x0F, 0x7F}, AlphaKind::None},
    {"La4 extremes", TextureFormat::La4, {0xF0, 0xFF}, AlphaKind::Extremes},
    {"La4 gradual", TextureFormat::La4, {0xFE}, AlphaKind::Gradual},
    {"La8 full", TextureFormat::La8, {255, 0, 255, 128}, AlphaKind::None},
    {"La8 extremes", TextureFormat::La8, {255, 0, 0, 128}, AlphaKind::Extremes},
    {"La8 gradual", TextureFormat::La8, {1, 0}, AlphaKind::Gradual},
    {"Rgb5_a1 full", TextureFormat::Rgb5_a1, {0x01, 0x00, 0xFF, 0x00}, AlphaKind::None},
    {"Rgb5_a1 clear", TextureFormat::Rgb5_a1, {0x01, 0x00, 0xFE, 0xFF}, AlphaKind::Extremes},
    {"Rgba4 full", TextureFormat::Rgba4, {0x0F, 0x00, 0xFF, 0x12}, AlphaKind::None},
    {"Rgba4 extremes", TextureFormat::Rgba4, {0x0F, 0x00, 0xF0, 0xFF}, AlphaKind::Extremes},
    {"Rgba4 gradual", TextureFormat::Rgba4, {0xF7, 0x00}, AlphaKind::Gradual},
    {"Rgba8 full", TextureFormat::Rgba8, {255, 0, 1, 2}, AlphaKind::None},
    {"Rgba8 extremes", TextureFormat::Rgba8, {255, 0, 1, 2, 0, 9, 9, 9}, AlphaKind::Extremes},
    {"Rgba8 gradual", TextureFormat::Rgba8, {0, 0, 0, 0, 100, 9, 9, 9}, AlphaKind::Gradual},
    {"Etc1_a4 full, whatever the colours are", TextureFormat::Etc1_a4, AlphaBlock(Opaque), AlphaKind::None},
    {"Etc1_a4 extremes", TextureFormat::Etc1_a4, AlphaBlock({0xFF, 0xFF, 0xF0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}),
     AlphaKind::Extremes},
    {"Etc1_a4 gradual in its last alpha", TextureFormat::Etc1_a4, AlphaBlock({0, 0, 0, 0, 0, 0, 0, 0x0E}),
     AlphaKind::Gradual},
    {"no data", TextureFormat::Rgba8, {}, AlphaKind::None},
    {"an incomplete pixel takes no part", TextureFormat::Rgba8, {255, 0, 0, 0, 0, 0}, AlphaKind::None},
    {"an incomplete block takes no part", TextureFormat::Etc1_a4, Bytes(15, 0), AlphaKind::None},
    {"an unknown format", static_cast<TextureFormat>(77), {0, 1, 2, 3}, AlphaKind::None},
};

TEST(AlphaKind, IsReadFromEncodedData)
{
    for (const DataCase& row : DataCases)
        EXPECT_EQ(AlphaKindOfData(row.Format, row.Data), row.Kind) << row.Name;
}

TEST(AlphaKind, LooksAtTheSecondBlockToo)
{
    Bytes data = AlphaBlock(Opaque);
    const Bytes second = AlphaBlock({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x1F});
    data.insert(data.end(), second.begin(), second.end());
    EXPECT_EQ(AlphaKindOfData(TextureFormat::Etc1_a4, data), AlphaKind::Gradual);
}

} // namespace
} // namespace tq4x
