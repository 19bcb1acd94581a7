#include "material/Material.h"
#include "material/TextureReference.h"
#include "pipeline/TextHelpers.h"
#include "pipeline/XmlWriter.h"
#include "support/Golden.h"

#include <gtest/gtest.h>

#include <string>

namespace tq4x
{
namespace
{

using test::ExpectGolden;

constexpr int MaterialLevel = 5;

std::string TextOf(const Material& material, const LookupTableSet& tables)
{
    XmlWriter stream;
    material.WriteXml(stream, MaterialLevel, tables);
    return stream.Text();
}

void AddTexture(Material& material, const std::string& name)
{
    material.AddTextureCoordinator(static_cast<std::int32_t>(material.TextureCoordinators.size()),
                                   MappingMethod::UvCoordinateMap, 0, MatrixMode::DccSoftimage, 2.0f, 0.5f,
                                   45.0f, 0.25f, -0.125f);
    material.AddTextureMapper(name, TextureWrap::Repeat, TextureWrap::ClampToEdge);
}

TEST(MaterialDocument, Phong)
{
    Material material;
    material.Name = "Roof";
    material.Ambient = {1.0f, 1.0f, 1.0f, 0.0f};
    material.Diffuse = {0.8f, 0.4f, 0.2f, 0.5f};
    material.Specular0 = {0.1f, 0.2f, 0.3f, 1.0f};
    material.HasSpecularTable = true;
    material.SetBlendPreset(BlendPreset::Translucent);
    AddTexture(material, "Tiles");
    LookupTableSet tables;
    material.BuildFragmentLighting(tables, false, 1);
    ExpectGolden(TextOf(material, tables), "core/material/material-phong.xml");
}

TEST(MaterialDocument, Ward)
{
    Material material;
    material.Name = "Brass";
    material.Ambient = {1.0f, 1.0f, 1.0f, 0.0f};
    material.Diffuse = {0.7f, 0.6f, 0.1f, 1.0f};
    material.Emission = {0.01f, 0.02f, 0.03f, 0.04f};
    material.HasAnisotropicTables = true;
    material.SetBlendPreset(BlendPreset::AlphaTest);
    material.FragmentShader.FragmentBump = {1, BumpMode::AsBump, true};
    LookupTableSet tables;
    material.BuildFragmentLighting(tables, false, 0);
    ExpectGolden(TextOf(material, tables), "core/material/material-ward.xml");
}

TEST(MaterialDocument, Constant)
{
    Material material;
    material.Name = "Sign";
    material.IsCompressible = false;
    material.IsFragmentLightEnabled = false;
    material.IsVertexLightEnabled = true;
    material.Rasterization.CullingMode = CullingMode::Never;
    material.UserData.push_back({"height", UserDataKind::Integer, {}, {3, -4}, {}});
    LookupTableSet tables;
    material.BuildFragmentLighting(tables, false, 0);
    ExpectGolden(TextOf(material, tables), "core/material/material-constant.xml");
}

TEST(MaterialDocument, UnsupportedShaderLeavesTheDefaults)
{
    Material material;
    material.Name = "Toon";
    LookupTableSet tables;
    material.BuildFragmentLighting(tables, true, 0);
    ExpectGolden(TextOf(material, tables), "core/material/material-unsupported.xml");
}

/// The material's text with every field away from its default, each value another.
TEST(MaterialDocument, EveryFieldIsWrittenInItsPlace)
{
    Material material;
    material.Name = "All";
    material.IsHemiSphereLightEnabled = true;
    material.IsHemiSphereOcclusionEnabled = true;
    material.IsFogEnabled = true;
    material.TextureCoordinateConfig = "Config0000";
    material.TranslucencyKind = TranslucencyKind::Subtractive;
    material.ShaderProgramDescriptionIndex = 12;
    material.ShaderBinaryKind = "Other";
    material.VertexColorScale = 2.5f;
    material.Specular1 = {0.5f, 0.25f, 0.125f, 0.0625f};
    for (std::size_t i = 0; i < 6; ++i)
        material.Constant[i] = {static_cast<float>(i), 1.0f, 2.0f, 3.0f};
    material.Rasterization = {CullingMode::FrontFace, true, 1.5f, -2.0f};
    material.FragmentShader.LayerConfig = 3;
    material.FragmentShader.BufferColor = {0.1f, 0.2f, 0.3f, 0.4f};
    material.FragmentShader.FragmentBump = {2, BumpMode::AsTangent, false};
    material.FragmentShader.FragmentLighting = {FresnelConfig::PriSec, true, false, true, false, true, false};
    material.FragmentShader.AlphaTest = {true, AlphaTestFunction::Notequal, 0.75f};
    material.DepthOperation = {false, DepthTestFunction::Notequal, false};
    material.BlendOperation = {
        BlendMode::Logic,
        LogicOperation::Xor,
        {BlendFactor::ConstantAlpha, BlendFactor::SourceAlphaSaturate, BlendEquation::Min},
        {BlendFactor::DestinationAlpha, BlendFactor::OneMinusConstantColor, BlendEquation::FuncSubtract},
        {0.9f, 0.8f, 0.7f, 0.6f}};
    material.StencilOperation.IsTestEnabled = true;
    ExpectGolden(TextOf(material, {}), "core/material/material-every-field.xml");
}

TEST(MaterialDocument, CombinerAndSamplers)
{
    using enum CombineSource;
    FragmentShader shader;
    TextureCombiner& combiner = shader.TextureCombiners.emplace_back();
    combiner = {CombineMode::DotProduct3Rgba,
                CombineMode::Interpolate,
                CombineScale::Two,
                CombineScale::Four,
                CombineConstant::Specular1,
                BufferInput::Previous,
                BufferInput::PreviousBuffer,
                {Texture1, Texture2, Texture3},
                {Constant, PreviousBuffer, FragmentSecondaryColor},
                {CombineOperand::OneMinusColor, CombineOperand::Red, CombineOperand::Green},
                {CombineOperand::Blue, CombineOperand::OneMinusAlpha, CombineOperand::OneMinusRed}};
    LookupTableSet tables;
    for (const char* name : {"A", "A"})
        tables.Add({name, true, true, false, {}});
    shader.SamplerAt(LookupTableSamplerSlot::ReflectanceGSampler) = {false, LookupInput::CosLightSpot,
                                                                     LookupScale::Quarter, 1};
    shader.SamplerAt(LookupTableSamplerSlot::Distribution1Sampler).TableIndex = 2; // outside the set
    tables.MakeNamesUnique();
    XmlWriter stream;
    shader.WriteXml(stream, 0, tables);
    ExpectGolden(stream.Text(), "core/material/shader-combiner-and-samplers.xml");
}

TEST(MaterialDocument, ListsWithoutItemsAreLeftOut)
{
    const std::string text = TextOf(Material{}, {});
    EXPECT_EQ(text.find("TextureCoordinators"), std::string::npos);
    EXPECT_EQ(text.find("TextureMappers"), std::string::npos);
    EXPECT_NE(text.find("\t\t\t\t\t\t\t<TextureCombiners>\n\t\t\t\t\t\t\t</TextureCombiners>\n"),
              std::string::npos)
        << "combiners stand even without one";
}

TEST(MaterialDocument, MaterialStandsAtTheLevelOfItsCaller)
{
    XmlWriter deep;
    Material{}.WriteXml(deep, 5, {});
    XmlWriter flat;
    Material{}.WriteXml(flat, 0, {});
    std::string shifted;
    std::string line;
    for (const char c : flat.Text()) {
        line += c;
        if (c != '\n')
            continue;
        shifted += "\t\t\t\t\t" + line;
        line.clear();
    }
    EXPECT_EQ(deep.Text(), shifted);
    EXPECT_EQ(deep.Level(), 0) << "the writer's own level is untouched";
}

TEST(MaterialDocument, RotationIsReducedOutsideATurn)
{
    const struct
    {
        const char* Name;
        float Degrees;
        const char* Expected;
    } cases[] = {
        {"none", 0.0f, "0"},
        {"right angle", 90.0f, "1.5708"},
        {"two turns and five degrees", 725.0f, "0.0872665"},
        {"the other way round", -725.0f, "-0.0872665"},
        {"a whole turn stays", 360.0f, "6.28319"},
        {"a whole turn back stays", -360.0f, "-6.28319"},
        {"just above a turn", 361.0f, "0.0174533"},
        {"two turns leave nothing", 720.0f, "0"},
        {"two turns back leave nothing", -720.0f, "0"},
        {"negligible", 1e-05f, "0"},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        TextureCoordinator coordinator;
        coordinator.Rotate = c.Degrees;
        XmlWriter stream;
        coordinator.WriteXml(stream, 0);
        EXPECT_NE(stream.Text().find(" Rotate=\"" + std::string(c.Expected) + "\" "), std::string::npos)
            << stream.Text();
    }
}

TEST(MaterialDocument, CoordinatorAndMapper)
{
    TextureCoordinator coordinator;
    coordinator.SourceCoordinate = 2;
    coordinator.MappingMethod = MappingMethod::CameraSphereEnvMap;
    coordinator.ReferenceCamera = -1;
    coordinator.MatrixMode = MatrixMode::Dcc3dsMax;
    XmlWriter stream;
    coordinator.WriteXml(stream, 1);
    EXPECT_EQ(stream.Text(),
              "\t<TextureCoordinatorQtr SourceCoordinate=\"2\" MappingMethod=\"CameraSphereEnvMap\" "
              "ReferenceCamera=\"-1\" MatrixMode=\"Dcc3dsMax\" ScaleS=\"1\" ScaleT=\"1\" Rotate=\"0\" "
              "TranslateS=\"0\" TranslateT=\"0\"/>\n");

    TextureMapper mapper{{{-2, "Early"}, {0, "Model"}, {4, "Late"}},
                         TextureFilter::NearestMipmapLinear,
                         TextureFilter::Nearest,
                         TextureWrap::MirroredRepeat,
                         TextureWrap::ClampToBorder,
                         2,
                         -0.5f,
                         {0.1f, 0.2f, 0.3f, 0.4f}};
    XmlWriter other;
    mapper.WriteXml(other, 1);
    EXPECT_EQ(other.Text(),
              "\t<PixelBasedTextureMapperQtr>\n"
              "\t\t<TextureReference>Textures[\"Model\"]@file:Textures/Model.qtex</TextureReference>\n"
              "\t\t<StandardTextureSamplerQtr MinFilter=\"NearestMipmapNearest\" MagFilter=\"Nearest\" "
              "WrapS=\"MirroredRepeat\" WrapT=\"ClampToBorder\" MinLod=\"2\" LodBias=\"-0.5\">\n"
              "\t\t\t<BorderColor R=\"0.1\" G=\"0.2\" B=\"0.3\" A=\"0.4\"/>\n"
              "\t\t</StandardTextureSamplerQtr>\n"
              "\t</PixelBasedTextureMapperQtr>\n");
}

TEST(MaterialDocument, NameBecomesUtf8)
{
    const unsigned former = SystemCodePage();
    SetSystemCodePage(CodePageShiftJis);
    Material material;
    material.Name = "\x83\x41"; // a katakana letter
    const std::string text = TextOf(material, {});
    SetSystemCodePage(former);
    EXPECT_NE(text.find("<MaterialQtr Name=\"\xE3\x82\xA2\" "), std::string::npos);
}

TEST(MaterialDocument, SamplerRefersToTheNameAfterRenaming)
{
    LookupTableSet tables;
    tables.Add({"Specular", true, true, false, {1.0f}});
    tables.Add({"Specular", true, true, false, {2.0f}});
    const LookupTableSampler sampler{true, LookupInput::CosNormalView, LookupScale::Quarter, 1};
    tables.MakeNamesUnique();
    XmlWriter stream;
    WriteLookupSampler(stream, 2, "AngleSampler", sampler, tables);
    EXPECT_EQ(stream.Text(), "\t\t<AngleSampler IsAbs=\"true\" Input=\"CosNormalView\" Scale=\"Quarter\">\n"
                             "\t\t\t<ReferenceLookupTableQtr TableName=\"Specular_1\">\n"
                             "\t\t\t\t<LookupTableSetContentReferenceQtr>LookupTableSetContents[\"*\"]"
                             "</LookupTableSetContentReferenceQtr>\n"
                             "\t\t\t</ReferenceLookupTableQtr>\n"
                             "\t\t</AngleSampler>\n");
}

TEST(MaterialDocument, SamplerWithoutATable)
{
    XmlWriter stream;
    WriteLookupSampler(stream, 0, "FresnelSampler", {}, {});
    EXPECT_EQ(stream.Text(), "<FresnelSampler IsAbs=\"true\" Input=\"CosNormalHalf\" Scale=\"One\">\n"
                             "\t<NullLookupTableQtr/>\n"
                             "</FresnelSampler>\n");
}

} // namespace
} // namespace tq4x
