#include "animation/Angles.h"
#include "material/Material.h"
#include "material/MaterialWords.h"
#include "material/TextureReference.h"
#include "math/Scalar.h"
#include "pipeline/XmlWriter.h"

#include <span>

namespace tq4x
{
namespace
{

constexpr std::array<std::string_view, 6> ConstantNames = {"Constant0", "Constant1", "Constant2",
                                                           "Constant3", "Constant4", "Constant5"};

void WriteMaterialColor(XmlWriter& stream, const Material& material)
{
    stream.Element("MaterialColor", {{"VertexColorScale", material.VertexColorScale}}, [&] {
        stream.ColorElement("Emission", material.Emission);
        stream.ColorElement("Ambient", material.Ambient);
        stream.ColorElement("Diffuse", material.Diffuse);
        stream.ColorElement("Specular0", material.Specular0);
        stream.ColorElement("Specular1", material.Specular1);
        for (std::size_t i = 0; i < ConstantNames.size(); ++i)
            stream.ColorElement(ConstantNames[i], material.Constant[i]);
    });
}

void WriteRasterization(XmlWriter& stream, const Rasterization& rasterization)
{
    stream.Empty("Rasterization", {{"CullingMode", WordOf(CullingModeWords, rasterization.CullingMode)},
                                   {"IsPolygonOffsetEnabled", rasterization.IsPolygonOffsetEnabled},
                                   {"PolygonOffsetFactor", rasterization.PolygonOffsetFactor},
                                   {"PolygonOffsetUnit", rasterization.PolygonOffsetUnit}});
}

/// A list element with one child for each item; nothing for an empty list.
template<typename Item>
void WriteList(XmlWriter& stream, std::string_view name, const std::vector<Item>& items)
{
    if (items.empty())
        return;
    stream.Element(name, [&] {
        for (const Item& item : items)
            item.WriteXml(stream, stream.Level());
    });
}

void WriteFragmentBump(XmlWriter& stream, const FragmentBump& bump)
{
    stream.Empty("FragmentBump", {{"BumpTextureIndex", "Texture" + std::to_string(bump.BumpTextureIndex)},
                                  {"BumpMode", WordOf(BumpModeWords, bump.BumpMode)},
                                  {"IsBumpRenormalize", bump.IsBumpRenormalize}});
}

void WriteFragmentLighting(XmlWriter& stream, const FragmentLighting& lighting)
{
    stream.Empty("FragmentLighting", {{"FresnelConfig", WordOf(FresnelConfigWords, lighting.FresnelConfig)},
                                      {"IsClampHighLight", lighting.IsClampHighLight},
                                      {"IsDistribution0Enabled", lighting.IsDistribution0Enabled},
                                      {"IsDistribution1Enabled", lighting.IsDistribution1Enabled},
                                      {"IsGeometricFactor0Enabled", lighting.IsGeometricFactor0Enabled},
                                      {"IsGeometricFactor1Enabled", lighting.IsGeometricFactor1Enabled},
                                      {"IsReflectionEnabled", lighting.IsReflectionEnabled}});
}

void WriteFragmentLightingTable(XmlWriter& stream, const FragmentShader& shader,
                                const LookupTableSet& lookupTables)
{
    stream.Element("FragmentLightingTable", [&] {
        for (std::size_t i = 0; i < LookupTableSamplerSlotWords.size(); ++i)
            WriteLookupSampler(stream, stream.Level(), LookupTableSamplerSlotWords[i],
                               shader.LookupTableSamplers[i], lookupTables);
    });
}

void WriteSources(XmlWriter& stream, std::string_view name, const std::array<CombineSource, 3>& sources)
{
    stream.Empty(name, {{"Source0", WordOf(CombineSourceWords, sources[0])},
                        {"Source1", WordOf(CombineSourceWords, sources[1])},
                        {"Source2", WordOf(CombineSourceWords, sources[2])}});
}

void WriteOperands(XmlWriter& stream, std::string_view name, const std::array<CombineOperand, 3>& operands)
{
    stream.Empty(name, {{"Operand0", WordOf(CombineOperandWords, operands[0])},
                        {"Operand1", WordOf(CombineOperandWords, operands[1])},
                        {"Operand2", WordOf(CombineOperandWords, operands[2])}});
}

void WriteCombiner(XmlWriter& stream, const TextureCombiner& combiner)
{
    const XmlAttributes attributes = {
        {"CombineRgb", WordOf(CombineModeWords, combiner.CombineRgb)},
        {"CombineAlpha", WordOf(CombineModeWords, combiner.CombineAlpha)},
        {"ScaleRgb", WordOf(CombineScaleWords, combiner.ScaleRgb)},
        {"ScaleAlpha", WordOf(CombineScaleWords, combiner.ScaleAlpha)},
        {"Constant", WordOf(CombineConstantWords, combiner.Constant)},
        {"BufferInputRgb", WordOf(BufferInputWords, combiner.BufferInputRgb)},
        {"BufferInputAlpha", WordOf(BufferInputWords, combiner.BufferInputAlpha)}};
    stream.Element("TextureCombinerQtr", attributes, [&] {
        WriteSources(stream, "SourceRgb", combiner.SourceRgb);
        WriteOperands(stream, "OperandRgb", combiner.OperandRgb);
        WriteSources(stream, "SourceAlpha", combiner.SourceAlpha);
        WriteOperands(stream, "OperandAlpha", combiner.OperandAlpha);
    });
}

void WriteAlphaTest(XmlWriter& stream, const AlphaTest& alphaTest)
{
    stream.Empty("AlphaTest", {{"IsTestEnabled", alphaTest.IsTestEnabled},
                               {"TestFunction", WordOf(AlphaTestFunctionWords, alphaTest.TestFunction)},
                               {"TestReference", alphaTest.TestReference}});
}

void WriteDepthOperation(XmlWriter& stream, const DepthOperation& depth)
{
    stream.Empty("DepthOperation", {{"IsTestEnabled", depth.IsTestEnabled},
                                    {"TestFunction", WordOf(DepthTestFunctionWords, depth.TestFunction)},
                                    {"IsMaskEnabled", depth.IsMaskEnabled}});
}

void WriteBlendParameter(XmlWriter& stream, std::string_view name, const BlendParameter& parameter)
{
    stream.Empty(name,
                 {{"BlendFunctionSource", WordOf(BlendFactorWords, parameter.BlendFunctionSource)},
                  {"BlendFunctionDestination", WordOf(BlendFactorWords, parameter.BlendFunctionDestination)},
                  {"BlendEquation", WordOf(BlendEquationWords, parameter.BlendEquation)}});
}

void WriteBlendOperation(XmlWriter& stream, const BlendOperation& blend)
{
    const XmlAttributes attributes = {{"Mode", WordOf(BlendModeWords, blend.Mode)},
                                      {"LogicOperation", WordOf(LogicOperationWords, blend.LogicOperation)}};
    stream.Element("BlendOperation", attributes, [&] {
        WriteBlendParameter(stream, "RgbParameter", blend.RgbParameter);
        WriteBlendParameter(stream, "AlphaParameter", blend.AlphaParameter);
        stream.ColorElement("BlendColor", blend.BlendColor);
    });
}

void WriteStencilOperation(XmlWriter& stream, const StencilOperation& stencil)
{
    stream.Empty("StencilOperation", {{"IsTestEnabled", stencil.IsTestEnabled},
                                      {"TestFunction", "Never"},
                                      {"TestReference", 0},
                                      {"TestMask", 255},
                                      {"FailOperation", "Keep"},
                                      {"ZFailOperation", "Keep"},
                                      {"PassOperation", "Keep"}});
}

void WriteFragmentOperation(XmlWriter& stream, const Material& material)
{
    stream.Element("FragmentOperation", [&] {
        WriteDepthOperation(stream, material.DepthOperation);
        WriteBlendOperation(stream, material.BlendOperation);
        WriteStencilOperation(stream, material.StencilOperation);
    });
}

void WriteMaterialContent(XmlWriter& stream, const Material& material, const LookupTableSet& lookupTables)
{
    WriteUserData(stream, stream.Level(), material.UserData);
    stream.Empty("ShaderReference");
    WriteMaterialColor(stream, material);
    WriteRasterization(stream, material.Rasterization);
    WriteList(stream, "TextureCoordinators", material.TextureCoordinators);
    WriteList(stream, "TextureMappers", material.TextureMappers);
    material.FragmentShader.WriteXml(stream, stream.Level(), lookupTables);
    WriteFragmentOperation(stream, material);
}

} // namespace

void TextureCoordinator::WriteXml(XmlWriter& stream, int level) const
{
    stream.AtLevel(level, [&] {
        stream.Empty("TextureCoordinatorQtr", {{"SourceCoordinate", SourceCoordinate},
                                               {"MappingMethod", WordOf(MappingMethodWords, MappingMethod)},
                                               {"ReferenceCamera", ReferenceCamera},
                                               {"MatrixMode", WordOf(MatrixModeWords, MatrixMode)},
                                               {"ScaleS", ScaleS},
                                               {"ScaleT", ScaleT},
                                               {"Rotate", DropWholeTurns(Rotate) * RadiansPerDegreeSingle},
                                               {"TranslateS", TranslateS},
                                               {"TranslateT", TranslateT}});
    });
}

void TextureMapper::WriteXml(XmlWriter& stream, int level) const
{
    const auto first = Patterns.find(0);
    const std::string_view textureName = first != Patterns.end() ? first->second : std::string_view();
    const XmlAttributes sampler = {{"MinFilter", WordOf(TextureFilterWords, MinFilter)},
                                   {"MagFilter", WordOf(TextureFilterWords, MagFilter)},
                                   {"WrapS", WordOf(TextureWrapWords, WrapS)},
                                   {"WrapT", WordOf(TextureWrapWords, WrapT)},
                                   {"MinLod", MinLod},
                                   {"LodBias", LodBias}};
    stream.AtLevel(level, [&] {
        stream.Element("PixelBasedTextureMapperQtr", [&] {
            WriteTextureReference(stream, stream.Level(), textureName);
            stream.Element("StandardTextureSamplerQtr", sampler,
                           [&] { stream.ColorElement("BorderColor", BorderColor); });
        });
    });
}

void FragmentShader::WriteXml(XmlWriter& stream, int level, const LookupTableSet& lookupTables) const
{
    const std::string configuration = "ConfigurationType" + std::to_string(LayerConfig);
    stream.AtLevel(level, [&] {
        stream.Element("FragmentShader", {{"LayerConfig", configuration}}, [&] {
            stream.ColorElement("BufferColor", BufferColor);
            WriteFragmentBump(stream, FragmentBump);
            WriteFragmentLighting(stream, FragmentLighting);
            WriteFragmentLightingTable(stream, *this, lookupTables);
            stream.Element("TextureCombiners", [&] {
                for (const TextureCombiner& combiner : TextureCombiners)
                    WriteCombiner(stream, combiner);
            });
            WriteAlphaTest(stream, AlphaTest);
        });
    });
}

void Material::WriteXml(XmlWriter& stream, int level, const LookupTableSet& lookupTables) const
{
    const XmlAttributes attributes = {{"Name", Name},
                                      {"IsCompressible", IsCompressible},
                                      {"IsFragmentLightEnabled", IsFragmentLightEnabled},
                                      {"IsVertexLightEnabled", IsVertexLightEnabled},
                                      {"IsHemiSphereLightEnabled", IsHemiSphereLightEnabled},
                                      {"IsHemiSphereOcclusionEnabled", IsHemiSphereOcclusionEnabled},
                                      {"IsFogEnabled", IsFogEnabled},
                                      {"TextureCoordinateConfig", TextureCoordinateConfig},
                                      {"TranslucencyKind", WordOf(TranslucencyKindWords, TranslucencyKind)},
                                      {"ShaderProgramDescriptionIndex", ShaderProgramDescriptionIndex},
                                      {"ShaderBinaryKind", ShaderBinaryKind}};
    stream.AtLevel(level, [&] {
        stream.Element("MaterialQtr", attributes, [&] { WriteMaterialContent(stream, *this, lookupTables); });
    });
}

} // namespace tq4x
