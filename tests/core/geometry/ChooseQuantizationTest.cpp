#include "geometry/ChooseQuantization.h"

namespace tq4x
{
namespace
{

TEST(ChooseQuantization, TheOptionsDecideWhileNoToolFollows)
{
    const struct
    {
        std::uint32_t Option;
        QuantizedMode Mode;
    } cases[] = {
        {0, QuantizedMode::Float}, {1, QuantizedMode::Short},           {3, QuantizedMode::Byte},
        {5, QuantizedMode::Auto},  {2, QuantizedMode::Float},           {4, QuantizedMode::Float},
        {6, QuantizedMode::Float}, {0xFFFFFFFFu, QuantizedMode::Float},
    };

    for (const auto& test : cases) {
        ExportOptions options;
        options.OptimizePrimitive = false;
        options.QuantizePos = test.Option;
        EXPECT_EQ(ChooseQuantization(options), (StreamQuantization{test.Mode, {}, {}})) << test.Option;
        options.QuantizePos = 0;
        options.QuantizeNrm = test.Option;
        EXPECT_EQ(ChooseQuantization(options), (StreamQuantization{{}, test.Mode, {}})) << test.Option;
        options.QuantizeNrm = 0;
        options.QuantizeTex = test.Option;
        EXPECT_EQ(ChooseQuantization(options), (StreamQuantization{{}, {}, test.Mode})) << test.Option;
    }
}

TEST(ChooseQuantization, AnyRequestToTheToolKeepsTheStreamsFloat)
{
    ExportOptions quantized;
    quantized.OptimizePrimitive = false;
    quantized.QuantizePos = quantized.QuantizeNrm = 1;
    quantized.QuantizeTex = 3;
    EXPECT_NE(ChooseQuantization(quantized), StreamQuantization{});

    ExportOptions options = quantized;
    options.CompressNode = 1;
    EXPECT_EQ(ChooseQuantization(options), StreamQuantization{});
    for (bool ExportOptions::*field : {&ExportOptions::CompressMaterial, &ExportOptions::OptimizePrimitive,
                                       &ExportOptions::ConvertToModel}) {
        options = quantized;
        options.*field = true;
        EXPECT_EQ(ChooseQuantization(options), StreamQuantization{});
    }
}

TEST(ChooseQuantization, BoneAndUserSlotsAreNotTouched)
{
    const VertexAttributePool pool = MakeVertexAttributePool(ChooseQuantization(ExportOptions{}));
    EXPECT_EQ(pool[VertexSlot::Position].QuantizedMode, QuantizedMode::Float);
    EXPECT_EQ(pool[VertexSlot::BoneIndex].QuantizedMode, QuantizedMode::Ubyte);
    EXPECT_EQ(pool[VertexSlot::BoneWeight].QuantizedMode, QuantizedMode::Ubyte);
    EXPECT_EQ(pool[VertexSlot::UserAttribute0].QuantizedMode, QuantizedMode::Byte);
}

} // namespace
} // namespace tq4x
