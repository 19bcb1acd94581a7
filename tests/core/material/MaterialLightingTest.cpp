#include "material/Material.h"
#include "material/MaterialWords.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tq4x
{
namespace
{

using Texts = std::vector<std::string>;

constexpr auto Distribution0 = LookupTableSamplerSlot::Distribution0Sampler;
constexpr auto Fresnel = LookupTableSamplerSlot::FresnelSampler;

/// "Mode(source,source,source)", with the operand behind a dot where it is not the usual one.
std::string Describe(CombineMode mode, const std::array<CombineSource, 3>& sources,
                     const std::array<CombineOperand, 3>& operands, CombineOperand usual)
{
    std::string text(WordOf(CombineModeWords, mode));
    for (std::size_t i = 0; i < 3; ++i) {
        text += i == 0 ? '(' : ',';
        text += WordOf(CombineSourceWords, sources[i]);
        if (operands[i] != usual)
            text += '.' + std::string(WordOf(CombineOperandWords, operands[i]));
    }
    return text + ')';
}

Texts DescribeStages(const Material& material)
{
    Texts texts;
    for (const TextureCombiner& c : material.FragmentShader.TextureCombiners)
        texts.push_back(Describe(c.CombineRgb, c.SourceRgb, c.OperandRgb, CombineOperand::Color) + " " +
                        Describe(c.CombineAlpha, c.SourceAlpha, c.OperandAlpha, CombineOperand::Alpha));
    return texts;
}

struct LightingCase
{
    const char* Name;
    bool IsLit, HasSpecular, HasAnisotropic, HasVertexColor;
    std::size_t TextureCount;
    Texts Stages;
};

const std::string ReplaceAlpha = " Replace(PrimaryColor,Constant,Constant)";
const std::string ModulateAlpha = " Modulate(PrimaryColor,Texture0,Constant)";
const std::string Textured = "Modulate(FragmentPrimaryColor,Texture0,Constant)" + ModulateAlpha;
const std::string TexturedUnlit = "Modulate(PrimaryColor,Texture0,Constant)" + ModulateAlpha;
const std::string Plain = "Replace(FragmentPrimaryColor,Constant,Constant)" + ReplaceAlpha;
const std::string PlainUnlit = "Replace(PrimaryColor,Constant,Constant)" + ReplaceAlpha;
const std::string Colored = "Modulate(FragmentPrimaryColor,PrimaryColor,Constant)" + ReplaceAlpha;
const std::string AddHighlight = "Add(FragmentPrimaryColor,FragmentSecondaryColor,Constant)" + ReplaceAlpha;
const std::string Ward = "MultAdd(FragmentSecondaryColor,FragmentSecondaryColor.Alpha,Previous) "
                         "Replace(Previous,Previous,Previous)";
const std::string Phong = "Add(FragmentSecondaryColor,Previous,Previous) "
                          "Replace(Previous,Previous,Previous)";

const LightingCase LightingCases[] = {
    {"lit", true, false, false, false, 0, {Plain}},
    {"lit with vertex colours", true, false, false, true, 0, {Colored}},
    {"phong", true, true, false, false, 0, {AddHighlight}},
    {"phong leaves vertex colours out", true, true, false, true, 0, {AddHighlight}},
    {"ward", true, false, true, false, 0, {Plain, Ward}},
    {"ward leaves vertex colours out", true, false, true, true, 0, {Plain, Ward}},
    {"ward wins over phong", true, true, true, false, 0, {Plain, Ward}},
    {"lit, texture", true, false, false, false, 1, {Textured}},
    {"lit, texture leaves vertex colours out", true, false, false, true, 1, {Textured}},
    {"phong, texture", true, true, false, false, 1, {Textured, Phong}},
    {"ward, texture", true, false, true, false, 1, {Textured, Ward}},
    {"ward and phong, texture", true, true, true, false, 1, {Textured, Ward}},
    {"three textures are as one", true, true, false, false, 3, {Textured, Phong}},
    {"unlit", false, false, false, false, 0, {PlainUnlit}},
    {"unlit with vertex colours", false, false, false, true, 0, {PlainUnlit}},
    {"unlit phong has no highlight", false, true, false, false, 0, {PlainUnlit}},
    {"unlit ward has no highlight", false, false, true, true, 0, {PlainUnlit}},
    {"unlit, texture", false, false, false, false, 1, {TexturedUnlit}},
    {"unlit phong, texture", false, true, false, true, 2, {TexturedUnlit}},
};

Material MakeMaterial(const LightingCase& c)
{
    Material material;
    material.IsFragmentLightEnabled = c.IsLit;
    material.HasSpecularTable = c.HasSpecular;
    material.HasAnisotropicTables = c.HasAnisotropic;
    return material;
}

TEST(MaterialLighting, Combiners)
{
    for (const LightingCase& c : LightingCases) {
        SCOPED_TRACE(c.Name);
        Material material = MakeMaterial(c);
        LookupTableSet tables;
        material.BuildFragmentLighting(tables, c.HasVertexColor, c.TextureCount);
        EXPECT_EQ(DescribeStages(material), c.Stages);
        for (const TextureCombiner& combiner : material.FragmentShader.TextureCombiners) {
            EXPECT_EQ(combiner.ScaleRgb, CombineScale::One);
            EXPECT_EQ(combiner.ScaleAlpha, CombineScale::One);
            EXPECT_EQ(combiner.Constant, CombineConstant::Constant0);
            EXPECT_EQ(combiner.BufferInputRgb, BufferInput::PreviousBuffer);
            EXPECT_EQ(combiner.BufferInputAlpha, BufferInput::PreviousBuffer);
        }
    }
}

TEST(MaterialLighting, TablesAndFlags)
{
    for (const LightingCase& c : LightingCases) {
        SCOPED_TRACE(c.Name);
        Material material = MakeMaterial(c);
        LookupTableSet tables;
        material.BuildFragmentLighting(tables, c.HasVertexColor, c.TextureCount);
        const FragmentShader& shader = material.FragmentShader;
        const bool isWard = c.IsLit && c.HasAnisotropic;
        const bool isPhong = c.IsLit && c.HasSpecular && !c.HasAnisotropic;
        EXPECT_EQ(shader.LayerConfig, isWard ? 7 : 0);
        EXPECT_EQ(shader.FragmentLighting.IsDistribution0Enabled, isWard || isPhong);
        EXPECT_EQ(shader.FragmentLighting.FresnelConfig, isWard ? FresnelConfig::Sec : FresnelConfig::No);
        EXPECT_EQ(shader.SamplerAt(Distribution0),
                  (LookupTableSampler{!isWard, isWard ? LookupInput::CosPhi : LookupInput::CosNormalHalf,
                                      LookupScale::One, isWard || isPhong ? 0 : -1}));
        EXPECT_EQ(shader.SamplerAt(Fresnel),
                  (LookupTableSampler{true, LookupInput::CosNormalHalf, LookupScale::One, isWard ? 1 : -1}));
        EXPECT_EQ(tables.Tables().size(), isWard ? 2u : isPhong ? 1u : 0u);
        for (const auto slot :
             {LookupTableSamplerSlot::ReflectanceRSampler, LookupTableSamplerSlot::ReflectanceGSampler,
              LookupTableSamplerSlot::ReflectanceBSampler, LookupTableSamplerSlot::Distribution1Sampler})
            EXPECT_EQ(shader.SamplerAt(slot), LookupTableSampler{});
    }
}

TEST(MaterialLighting, WardAddsAzimuthBeforeZenith)
{
    Material material;
    material.HasAnisotropicTables = true;
    LookupTableSet tables;
    material.BuildFragmentLighting(tables, false, 0);
    ASSERT_EQ(tables.Tables().size(), 2u);
    LookupTable azimuth{"AnisotropicAzimuth", false, true, false, {}};
    azimuth.BuildAnisotropicAzimuth(0.05f);
    LookupTable zenith{"AnisotropicZenith", true, true, false, {}};
    zenith.BuildAnisotropicZenith(0.5f);
    EXPECT_EQ(tables.At(0)->Name, "AnisotropicAzimuth");
    EXPECT_EQ(tables.Find(azimuth), 0);
    EXPECT_EQ(tables.At(1)->Name, "AnisotropicZenith");
    EXPECT_EQ(tables.Find(zenith), 1);
}

TEST(MaterialLighting, PhongTableFollowsExponentAndScale)
{
    Material material;
    material.HasSpecularTable = true;
    material.SpecularExponent = 12.5f;
    material.SpecularScale = 0.5f;
    LookupTableSet tables;
    material.BuildFragmentLighting(tables, false, 0);
    LookupTable expected{"Specular", true, true, false, {}};
    expected.BuildSpecular(12.5f, 0.5f);
    EXPECT_EQ(tables.Find(expected), 0);
    EXPECT_EQ(tables.At(0)->Name, "Specular");
}

TEST(MaterialLighting, EqualHighlightsShareATable)
{
    LookupTableSet tables;
    const auto tableIndexOf = [&](float exponent) {
        Material material;
        material.HasSpecularTable = true;
        material.SpecularExponent = exponent;
        material.BuildFragmentLighting(tables, false, 1);
        return material.FragmentShader.SamplerAt(Distribution0).TableIndex;
    };
    EXPECT_EQ(tableIndexOf(30.0f), 0);
    EXPECT_EQ(tableIndexOf(30.0f), 0);
    EXPECT_EQ(tableIndexOf(10.0f), 1);
    EXPECT_EQ(tableIndexOf(30.0f), 0);
    EXPECT_EQ(tables.At(0)->Name, "Specular");
    EXPECT_EQ(tables.At(1)->Name, "Specular") << "names are made unique when the file is written";
    tables.MakeNamesUnique();
    EXPECT_EQ(tables.At(0)->Name, "Specular");
    EXPECT_EQ(tables.At(1)->Name, "Specular_1");
}

TEST(MaterialLighting, SecondCallGivesTheSame)
{
    for (const LightingCase& c : LightingCases) {
        SCOPED_TRACE(c.Name);
        Material material = MakeMaterial(c);
        LookupTableSet tables;
        material.BuildFragmentLighting(tables, c.HasVertexColor, c.TextureCount);
        const std::size_t tableCount = tables.Tables().size();
        const auto samplers = material.FragmentShader.LookupTableSamplers;
        material.BuildFragmentLighting(tables, c.HasVertexColor, c.TextureCount);
        EXPECT_EQ(DescribeStages(material), c.Stages);
        EXPECT_EQ(tables.Tables().size(), tableCount);
        EXPECT_EQ(material.FragmentShader.LookupTableSamplers, samplers);
    }
}

TEST(MaterialLighting, SecondCallWithoutAHighlightKeepsTheTables)
{
    Material material;
    material.HasSpecularTable = true;
    LookupTableSet tables;
    material.BuildFragmentLighting(tables, false, 0);
    material.HasSpecularTable = false;
    material.BuildFragmentLighting(tables, false, 0);
    EXPECT_EQ(DescribeStages(material), (Texts{Plain}));
    EXPECT_EQ(tables.Tables().size(), 1u);
}

} // namespace
} // namespace tq4x
