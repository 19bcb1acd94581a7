#include "material/Material.h"

#include <utility>

namespace tq4x
{
namespace
{

constexpr float AzimuthRoughness = 0.05f;
constexpr float ZenithRoughness = 0.5f;
constexpr std::int32_t AllTablesConfig = 7; ///< the configuration of layers that reads every table

enum class Highlight
{
    None,
    Specular,
    Anisotropic,
};

Highlight WantedHighlight(const Material& material)
{
    if (!material.IsFragmentLightEnabled)
        return Highlight::None;
    if (material.HasAnisotropicTables)
        return Highlight::Anisotropic;
    return material.HasSpecularTable ? Highlight::Specular : Highlight::None;
}

/// The lit colour, or the colour of the vertices where nothing lights the material. Alpha is the vertices'.
TextureCombiner MakeFirstStage(bool isLit)
{
    const CombineSource color = isLit ? CombineSource::FragmentPrimaryColor : CombineSource::PrimaryColor;
    TextureCombiner stage;
    stage.SourceRgb = {color, CombineSource::Constant, CombineSource::Constant};
    stage.SourceAlpha = {CombineSource::PrimaryColor, CombineSource::Constant, CombineSource::Constant};
    return stage;
}

void Combine(TextureCombiner& stage, CombineMode mode, CombineSource second)
{
    stage.CombineRgb = mode;
    stage.SourceRgb[1] = second;
}

void ModulateByTexture(TextureCombiner& stage)
{
    Combine(stage, CombineMode::Modulate, CombineSource::Texture0);
    stage.CombineAlpha = CombineMode::Modulate;
    stage.SourceAlpha[1] = CombineSource::Texture0;
}

/// Highlight times its own alpha, onto the former stage.
TextureCombiner MakeAnisotropicStage()
{
    TextureCombiner stage;
    stage.CombineRgb = CombineMode::MultAdd;
    stage.SourceRgb = {CombineSource::FragmentSecondaryColor, CombineSource::FragmentSecondaryColor,
                       CombineSource::Previous};
    stage.OperandRgb[1] = CombineOperand::Alpha;
    return stage;
}

/// Highlight onto the former stage, where a texture has taken the place in the first.
TextureCombiner MakeSpecularStage()
{
    TextureCombiner stage;
    stage.CombineRgb = CombineMode::Add;
    stage.SourceRgb[0] = CombineSource::FragmentSecondaryColor;
    return stage;
}

std::vector<TextureCombiner> MakeCombiners(Highlight highlight, bool isLit, bool hasVertexColor,
                                           bool hasTexture)
{
    TextureCombiner first = MakeFirstStage(isLit);
    if (hasTexture)
        ModulateByTexture(first);
    else if (highlight == Highlight::Specular)
        Combine(first, CombineMode::Add, CombineSource::FragmentSecondaryColor);
    else if (highlight == Highlight::None && hasVertexColor && isLit)
        Combine(first, CombineMode::Modulate, CombineSource::PrimaryColor);

    std::vector<TextureCombiner> combiners{first};
    if (highlight == Highlight::Anisotropic)
        combiners.push_back(MakeAnisotropicStage());
    else if (highlight == Highlight::Specular && hasTexture)
        combiners.push_back(MakeSpecularStage());
    return combiners;
}

LookupTable MakeTable(const char* name, bool isAbs)
{
    LookupTable table;
    table.Name = name;
    table.IsGeneratedAsAbs = isAbs;
    table.IsSizeDoubled = true;
    return table;
}

void AddAnisotropicTables(FragmentShader& shader, LookupTableSet& lookupTables)
{
    shader.LayerConfig = AllTablesConfig;

    shader.FragmentLighting.IsDistribution0Enabled = true;
    LookupTableSampler& distribution = shader.SamplerAt(LookupTableSamplerSlot::Distribution0Sampler);
    distribution.IsAbs = false;
    distribution.Input = LookupInput::CosPhi;
    LookupTable azimuth = MakeTable("AnisotropicAzimuth", false);
    azimuth.BuildAnisotropicAzimuth(AzimuthRoughness);
    distribution.TableIndex = lookupTables.FindOrAdd(std::move(azimuth));

    shader.FragmentLighting.FresnelConfig = FresnelConfig::Sec;
    LookupTableSampler& fresnel = shader.SamplerAt(LookupTableSamplerSlot::FresnelSampler);
    fresnel.Input = LookupInput::CosNormalHalf;
    LookupTable zenith = MakeTable("AnisotropicZenith", true);
    zenith.BuildAnisotropicZenith(ZenithRoughness);
    fresnel.TableIndex = lookupTables.FindOrAdd(std::move(zenith));
}

void AddSpecularTable(FragmentShader& shader, LookupTableSet& lookupTables, float exponent, float scale)
{
    shader.FragmentLighting.IsDistribution0Enabled = true;
    LookupTable specular = MakeTable("Specular", true);
    specular.BuildSpecular(exponent, scale);
    shader.SamplerAt(LookupTableSamplerSlot::Distribution0Sampler).TableIndex =
        lookupTables.FindOrAdd(std::move(specular));
}

} // namespace

void Material::BuildFragmentLighting(LookupTableSet& lookupTables, bool hasVertexColor,
                                     std::size_t textureCount)
{
    const Highlight highlight = WantedHighlight(*this);
    FragmentShader.TextureCombiners =
        MakeCombiners(highlight, IsFragmentLightEnabled, hasVertexColor, textureCount > 0);
    if (highlight == Highlight::Anisotropic)
        AddAnisotropicTables(FragmentShader, lookupTables);
    else if (highlight == Highlight::Specular)
        AddSpecularTable(FragmentShader, lookupTables, SpecularExponent, SpecularScale);
}

} // namespace tq4x
