#include "material/MaterialWords.h"

#include <gtest/gtest.h>

#include <span>
#include <string>

namespace tq4x
{
namespace
{

TEST(MaterialWords, StandInTheOrderOfTheFormat)
{
    const struct
    {
        const char* Name;
        std::span<const std::string_view> Words;
        const char* Expected;
    } cases[] = {
        {"TranslucencyKind", TranslucencyKindWords, "Opaque Translucent Subtractive Additive"},
        {"CullingMode", CullingModeWords, "FrontFace BackFace Always Never"},
        {"MappingMethod", MappingMethodWords,
         "UvCoordinateMap CameraCubeEnvMap CameraSphereEnvMap ProjectionMap"},
        {"MatrixMode", MatrixModeWords, "DccMaya DccSoftimage Dcc3dsMax"},
        {"TextureFilter", TextureFilterWords,
         "Nearest Linear NearestMipmapNearest NearestMipmapNearest LinearMipmapNearest LinearMipmapLinear"},
        {"TextureWrap", TextureWrapWords, "Repeat MirroredRepeat ClampToEdge ClampToBorder"},
        {"BumpMode", BumpModeWords, "NotUsed AsBump AsTangent"},
        {"FresnelConfig", FresnelConfigWords, "PriSec Sec Pri No"},
        {"LookupInput", LookupInputWords,
         "CosNormalHalf CosViewHalf CosNormalView CosLightNormal CosLightSpot CosPhi"},
        {"LookupScale", LookupScaleWords, "Quarter Half One Two Four Eight"},
        {"LookupTableSamplerSlot", LookupTableSamplerSlotWords,
         "ReflectanceRSampler ReflectanceGSampler ReflectanceBSampler Distribution0Sampler "
         "Distribution1Sampler FresnelSampler"},
        {"CombineMode", CombineModeWords,
         "Replace Modulate Add AddSigned Interpolate Subtract DotProduct3Rgb DotProduct3Rgba AddMult "
         "MultAdd"},
        {"CombineScale", CombineScaleWords, "One Two Four"},
        {"CombineConstant", CombineConstantWords,
         "Constant0 Constant1 Constant2 Constant3 Constant4 Constant5 Emission Ambient Diffuse Specular0 "
         "Specular1"},
        {"BufferInput", BufferInputWords, "Previous PreviousBuffer"},
        {"CombineSource", CombineSourceWords,
         "Texture0 Texture1 Texture2 Texture3 Constant PrimaryColor Previous PreviousBuffer "
         "FragmentPrimaryColor FragmentSecondaryColor"},
        {"CombineOperand", CombineOperandWords,
         "Color OneMinusColor Alpha OneMinusAlpha Red Green Blue OneMinusRed OneMinusGreen OneMinusBlue"},
        {"AlphaTestFunction", AlphaTestFunctionWords,
         "Never Always Less Lequal Equal Gequal Greater Notequal"},
        {"DepthTestFunction", DepthTestFunctionWords,
         "Never Less Equal Lequal Greater Notequal Gequal Always"},
        {"BlendFactor", BlendFactorWords,
         "Zero One SourceColor OneMinusSourceColor DestinationColor OneMinusDestinationColor SourceAlpha "
         "OneMinusSourceAlpha DestinationAlpha OneMinusDestinationAlpha ConstantColor OneMinusConstantColor "
         "ConstantAlpha OneMinusConstantAlpha SourceAlphaSaturate"},
        {"BlendEquation", BlendEquationWords, "FuncAdd FuncSubtract FuncReverseSubtract Min Max"},
        {"BlendMode", BlendModeWords, "NotUsed Blend SeparateBlend Logic"},
        {"LogicOperation", LogicOperationWords,
         "Clear Copy NoOp Set CopyInverted Invert AndReverse OrReverse And Or Nand Nor Xor Equiv "
         "AndInverted OrInverted"},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        std::string words;
        for (const std::string_view word : c.Words)
            words += (words.empty() ? "" : " ") + std::string(word);
        EXPECT_EQ(words, c.Expected);
    }
}

TEST(MaterialWords, RepeatedFilterWordIsReadAsTheFirst)
{
    EXPECT_EQ(WordOf(TextureFilterWords, TextureFilter::NearestMipmapLinear),
              WordOf(TextureFilterWords, TextureFilter::NearestMipmapNearest));
    EXPECT_EQ((FindWord<TextureFilter>(TextureFilterWords, "NearestMipmapNearest")),
              TextureFilter::NearestMipmapNearest);
    EXPECT_EQ(static_cast<int>(TextureFilter::NearestMipmapNearest), 2);
}

TEST(MaterialWords, TestFunctionsAreNumberedDifferently)
{
    EXPECT_EQ(AlphaTestFunctionWords[1], "Always");
    EXPECT_EQ(DepthTestFunctionWords[1], "Less");
    EXPECT_EQ(static_cast<int>(AlphaTestFunction::Always), 1);
    EXPECT_EQ(static_cast<int>(DepthTestFunction::Less), 1);
}

} // namespace
} // namespace tq4x
