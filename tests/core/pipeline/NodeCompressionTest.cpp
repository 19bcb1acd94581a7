#include "pipeline/NodeCompression.h"

namespace tq4x
{
namespace
{

TEST(IsToolPostProcessingRequested, AnyOneOfFour)
{
    ExportOptions none;
    none.OptimizePrimitive = false; // on by default
    EXPECT_TRUE(IsToolPostProcessingRequested(ExportOptions{}));
    EXPECT_FALSE(IsToolPostProcessingRequested(none));

    for (const std::uint32_t mode : {1u, 2u, 3u, 4u, 5u, 99u}) {
        ExportOptions options = none;
        options.CompressNode = mode;
        EXPECT_TRUE(IsToolPostProcessingRequested(options)) << mode;
    }
    for (bool ExportOptions::*field : {&ExportOptions::CompressMaterial, &ExportOptions::OptimizePrimitive,
                                       &ExportOptions::ConvertToModel}) {
        ExportOptions options = none;
        options.*field = true;
        EXPECT_TRUE(IsToolPostProcessingRequested(options));
    }
}

TEST(IsToolPostProcessingRequested, OtherSettingsDoNotCount)
{
    ExportOptions options;
    options.OptimizePrimitive = false;
    options.MergeQmdl = true;
    options.UseBrellStudio = true;
    options.QuantizePos = 3;
    EXPECT_FALSE(IsToolPostProcessingRequested(options));
}

TEST(NodeCompressionKeyword, Cases)
{
    const struct
    {
        std::uint32_t Mode;
        const char* Keyword;
    } cases[] = {
        {0, ""},
        {1, "CullLeafBone"},
        {2, "CullUninfluentialBone"},
        {3, "UniteCompressibleBone"},
        {4, "UniteAllBone"},
        {5, ""},
        {0xFFFFFFFFu, ""},
    };

    for (const auto& test : cases)
        EXPECT_EQ(NodeCompressionKeyword(test.Mode), test.Keyword) << test.Mode;
}

} // namespace
} // namespace tq4x
