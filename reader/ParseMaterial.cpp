#include "ParseSections.h"

namespace tq4x::reader
{
namespace
{

TextureCoordinator ParseCoordinator(const ElementReader& element)
{
    TextureCoordinator coordinator;
    coordinator.SourceCoordinate = element.Integer("SourceCoordinate");
    coordinator.MappingMethod = element.Text("MappingMethod");
    coordinator.ReferenceCamera = element.Integer("ReferenceCamera");
    coordinator.MatrixMode = element.Text("MatrixMode");
    coordinator.ScaleS = element.Float("ScaleS", 1);
    coordinator.ScaleT = element.Float("ScaleT", 1);
    coordinator.Rotate = element.Float("Rotate");
    coordinator.TranslateS = element.Float("TranslateS");
    coordinator.TranslateT = element.Float("TranslateT");
    return coordinator;
}

TextureMapper ParseMapper(const ElementReader& element)
{
    TextureMapper mapper;
    mapper.Texture = ParseTextureReference(element.Child("TextureReference"));
    const ElementReader sampler = element.Child("StandardTextureSamplerQtr");
    mapper.MinFilter = sampler.Text("MinFilter");
    mapper.MagFilter = sampler.Text("MagFilter");
    mapper.WrapS = sampler.Text("WrapS");
    mapper.WrapT = sampler.Text("WrapT");
    mapper.MinLod = sampler.Integer("MinLod");
    mapper.LodBias = sampler.Float("LodBias");
    mapper.BorderColor = sampler.Child("BorderColor").Rgba();
    return mapper;
}

std::array<std::string, 3> ParseTriple(const ElementReader& element, const std::string& prefix)
{
    return {element.Text(prefix + "0"), element.Text(prefix + "1"), element.Text(prefix + "2")};
}

TextureCombiner ParseCombiner(const ElementReader& element)
{
    TextureCombiner combiner;
    combiner.CombineRgb = element.Text("CombineRgb");
    combiner.CombineAlpha = element.Text("CombineAlpha");
    combiner.ScaleRgb = element.Text("ScaleRgb");
    combiner.ScaleAlpha = element.Text("ScaleAlpha");
    combiner.Constant = element.Text("Constant");
    combiner.BufferInputRgb = element.Text("BufferInputRgb");
    combiner.BufferInputAlpha = element.Text("BufferInputAlpha");
    combiner.SourceRgb = ParseTriple(element.Child("SourceRgb"), "Source");
    combiner.OperandRgb = ParseTriple(element.Child("OperandRgb"), "Operand");
    combiner.SourceAlpha = ParseTriple(element.Child("SourceAlpha"), "Source");
    combiner.OperandAlpha = ParseTriple(element.Child("OperandAlpha"), "Operand");
    return combiner;
}

void ParseLighting(FragmentShader& shader, const ElementReader& element)
{
    const ElementReader lighting = element.Child("FragmentLighting");
    shader.FresnelConfig = lighting.Text("FresnelConfig");
    shader.IsClampHighLight = lighting.Boolean("IsClampHighLight");
    shader.IsDistribution0Enabled = lighting.Boolean("IsDistribution0Enabled");
    shader.IsDistribution1Enabled = lighting.Boolean("IsDistribution1Enabled");
    shader.IsGeometricFactor0Enabled = lighting.Boolean("IsGeometricFactor0Enabled");
    shader.IsGeometricFactor1Enabled = lighting.Boolean("IsGeometricFactor1Enabled");
    shader.IsReflectionEnabled = lighting.Boolean("IsReflectionEnabled");
    const ElementReader table = element.Child("FragmentLightingTable");
    shader.ReflectanceR = ParseSampler(table.Child("ReflectanceRSampler"));
    shader.ReflectanceG = ParseSampler(table.Child("ReflectanceGSampler"));
    shader.ReflectanceB = ParseSampler(table.Child("ReflectanceBSampler"));
    shader.Distribution0 = ParseSampler(table.Child("Distribution0Sampler"));
    shader.Distribution1 = ParseSampler(table.Child("Distribution1Sampler"));
    shader.Fresnel = ParseSampler(table.Child("FresnelSampler"));
}

FragmentShader ParseShader(const ElementReader& element)
{
    FragmentShader shader;
    shader.LayerConfig = element.NumberBehind("LayerConfig", "ConfigurationType");
    shader.BufferColor = element.Child("BufferColor").Rgba();
    const ElementReader bump = element.Child("FragmentBump");
    shader.BumpTextureIndex = bump.NumberBehind("BumpTextureIndex", "Texture");
    shader.BumpMode = bump.Text("BumpMode");
    shader.IsBumpRenormalize = bump.Boolean("IsBumpRenormalize");
    ParseLighting(shader, element);
    for (const ElementReader& combiner : element.Child("TextureCombiners").Children("TextureCombinerQtr")) {
        shader.Combiners.push_back(ParseCombiner(combiner));
    }
    const ElementReader test = element.Child("AlphaTest");
    shader.IsAlphaTestEnabled = test.Boolean("IsTestEnabled");
    shader.AlphaTestFunction = test.Text("TestFunction");
    shader.AlphaTestReference = test.Float("TestReference");
    return shader;
}

BlendParameter ParseBlendParameter(const ElementReader& element)
{
    return {element.Text("BlendFunctionSource"), element.Text("BlendFunctionDestination"),
            element.Text("BlendEquation")};
}

FragmentOperation ParseOperation(const ElementReader& element)
{
    FragmentOperation operation;
    const ElementReader depth = element.Child("DepthOperation");
    operation.IsDepthTestEnabled = depth.Boolean("IsTestEnabled");
    operation.DepthTestFunction = depth.Text("TestFunction");
    operation.IsDepthMaskEnabled = depth.Boolean("IsMaskEnabled");
    const ElementReader blend = element.Child("BlendOperation");
    operation.BlendMode = blend.Text("Mode");
    operation.LogicOperation = blend.Text("LogicOperation");
    operation.Rgb = ParseBlendParameter(blend.Child("RgbParameter"));
    operation.Alpha = ParseBlendParameter(blend.Child("AlphaParameter"));
    operation.BlendColor = blend.Child("BlendColor").Rgba();
    operation.IsStencilTestEnabled = element.Child("StencilOperation").Boolean("IsTestEnabled");
    return operation;
}

void ParseFlags(Material& material, const ElementReader& element)
{
    material.IsCompressible = element.Boolean("IsCompressible");
    material.IsFragmentLightEnabled = element.Boolean("IsFragmentLightEnabled");
    material.IsVertexLightEnabled = element.Boolean("IsVertexLightEnabled");
    material.IsHemiSphereLightEnabled = element.Boolean("IsHemiSphereLightEnabled");
    material.IsHemiSphereOcclusionEnabled = element.Boolean("IsHemiSphereOcclusionEnabled");
    material.IsFogEnabled = element.Boolean("IsFogEnabled");
}

void ParseColors(Material& material, const ElementReader& colors)
{
    material.VertexColorScale = colors.Float("VertexColorScale", 1);
    material.Emission = colors.Child("Emission").Rgba();
    material.Ambient = colors.Child("Ambient").Rgba();
    material.Diffuse = colors.Child("Diffuse").Rgba();
    material.Specular0 = colors.Child("Specular0").Rgba();
    material.Specular1 = colors.Child("Specular1").Rgba();
    for (std::size_t i = 0; i < material.Constants.size(); ++i) {
        material.Constants[i] = colors.Child("Constant" + std::to_string(i)).Rgba();
    }
}

void ParseRasterization(Material& material, const ElementReader& rasterization)
{
    material.CullingMode = rasterization.Text("CullingMode");
    material.IsPolygonOffsetEnabled = rasterization.Boolean("IsPolygonOffsetEnabled");
    material.PolygonOffsetFactor = rasterization.Float("PolygonOffsetFactor");
    material.PolygonOffsetUnit = rasterization.Float("PolygonOffsetUnit");
}

/// The text between two others; empty if either is missing.
std::string Between(std::string_view text, std::string_view before, std::string_view behind)
{
    const std::size_t start = text.find(before);
    const std::size_t end =
        text.find(behind, start == std::string_view::npos ? start : start + before.size());
    return end == std::string_view::npos
               ? std::string()
               : std::string(text.substr(start + before.size(), end - start - before.size()));
}

} // namespace

TextureReference ParseTextureReference(const ElementReader& element)
{
    constexpr std::string_view Behind = "\"]@file:";
    const std::string_view text = element.Content();
    const std::size_t path = text.find(Behind);
    return {Between(text, "Textures[\"", Behind),
            path == std::string_view::npos ? std::string() : std::string(text.substr(path + Behind.size())),
            element.Line()};
}

LookupTableSampler ParseSampler(const ElementReader& element)
{
    LookupTableSampler sampler;
    sampler.IsAbs = element.Boolean("IsAbs");
    sampler.Input = element.Text("Input");
    sampler.Scale = element.Text("Scale");
    const ElementReader reference = element.Child("ReferenceLookupTableQtr");
    sampler.HasTable = reference.Exists();
    sampler.TableName = reference.Text("TableName");
    sampler.Line = reference.Exists() ? reference.Line() : element.Line();
    return sampler;
}

LookupTableSet ParseLookupTables(const ElementReader& content)
{
    LookupTableSet set;
    const ElementReader element = content.Child("LookupTableSetContents").Child("LookupTableSetContentQtr");
    set.Name = element.Text("Name");
    set.Line = element.Line();
    for (const ElementReader& row : element.Child("LookupTableSet").Child("Samplers").Children()) {
        LookupTable& table = set.Tables.emplace_back();
        table.Name = row.Text("Name");
        table.IsGeneratedAsAbs = row.Boolean("IsGeneratedAsAbs");
        table.IsSizeDoubled = row.Boolean("IsSizeDoubled");
        table.IsMipMap = row.Boolean("IsMipMap");
        table.Values = ParseCurve(row.Child("CurveLookupTableQtr").Child("SegmentsFloatCurve"));
        table.Line = row.Line();
    }
    return set;
}

Material ParseMaterial(const ElementReader& element)
{
    Material material;
    material.Name = element.Text("Name");
    material.TranslucencyKind = element.Text("TranslucencyKind");
    material.ShaderProgramDescriptionIndex = element.Integer("ShaderProgramDescriptionIndex", -1);
    material.UserData = ReadUserData(element);
    material.Line = element.Line();
    ParseFlags(material, element);
    ParseColors(material, element.Child("MaterialColor"));
    ParseRasterization(material, element.Child("Rasterization"));
    for (const ElementReader& child :
         element.Child("TextureCoordinators").Children("TextureCoordinatorQtr")) {
        material.Coordinators.push_back(ParseCoordinator(child));
    }
    for (const ElementReader& child :
         element.Child("TextureMappers").Children("PixelBasedTextureMapperQtr")) {
        material.Mappers.push_back(ParseMapper(child));
    }
    material.Shader = ParseShader(element.Child("FragmentShader"));
    material.Operation = ParseOperation(element.Child("FragmentOperation"));
    return material;
}

} // namespace tq4x::reader
