#include "material/Material.h"

#include <gtest/gtest.h>

namespace tq4x
{
namespace
{

constexpr Color Black{0.0f, 0.0f, 0.0f, 1.0f};
constexpr Color Nothing{0.0f, 0.0f, 0.0f, 0.0f};
constexpr BlendParameter AlphaDefault{BlendFactor::One, BlendFactor::Zero, BlendEquation::FuncAdd};

/// What presets decide.
struct PresetFields
{
    tq4x::TranslucencyKind TranslucencyKind;
    tq4x::AlphaTest AlphaTest;
    tq4x::DepthOperation DepthOperation;
    tq4x::BlendOperation BlendOperation;

    bool operator==(const PresetFields&) const = default;
};

PresetFields FieldsOf(const Material& material)
{
    return {material.TranslucencyKind, material.FragmentShader.AlphaTest, material.DepthOperation,
            material.BlendOperation};
}

TEST(Material, NewRecord)
{
    const Material material;
    EXPECT_EQ(material.Name, "");
    EXPECT_TRUE(material.IsCompressible);
    EXPECT_TRUE(material.IsFragmentLightEnabled);
    EXPECT_FALSE(material.IsVertexLightEnabled);
    EXPECT_FALSE(material.IsHemiSphereLightEnabled);
    EXPECT_FALSE(material.IsHemiSphereOcclusionEnabled);
    EXPECT_FALSE(material.IsFogEnabled);
    EXPECT_EQ(material.TextureCoordinateConfig, "Config0120");
    EXPECT_EQ(material.TranslucencyKind, TranslucencyKind::Opaque);
    EXPECT_EQ(material.ShaderProgramDescriptionIndex, -1);
    EXPECT_EQ(material.ShaderBinaryKind, "Default");
    EXPECT_EQ(material.VertexColorScale, 1.0f);
    EXPECT_EQ(material.Emission, Nothing);
    EXPECT_EQ(material.Ambient, Nothing);
    EXPECT_EQ(material.Diffuse, (Color{1.0f, 1.0f, 1.0f, 1.0f}));
    EXPECT_EQ(material.Specular0, Nothing);
    EXPECT_EQ(material.Specular1, Nothing);
    for (const Color& constant : material.Constant)
        EXPECT_EQ(constant, Nothing);
    EXPECT_TRUE(material.TextureCoordinators.empty());
    EXPECT_TRUE(material.TextureMappers.empty());
    EXPECT_FALSE(material.StencilOperation.IsTestEnabled);
    EXPECT_FALSE(material.HasSpecularTable);
    EXPECT_EQ(material.SpecularExponent, 30.0f);
    EXPECT_EQ(material.SpecularScale, 1.0f);
    EXPECT_FALSE(material.HasAnisotropicTables);
    EXPECT_EQ(material.BlendPreset, BlendPreset::Opaque);
    EXPECT_TRUE(material.UserData.empty());
    EXPECT_EQ(material.RenderPriority, 0);
    EXPECT_FALSE(material.IsLoop);
    for (const AnimationCurve& curve : material.ColorCurves)
        EXPECT_TRUE(curve.Samples.empty());
    EXPECT_FALSE(material.IsEmissionAnimated || material.IsDiffuseAnimated || material.IsAmbientAnimated ||
                 material.IsSpecular0Animated);
}

TEST(Material, NewRasterizationAndShader)
{
    const Material material;
    EXPECT_EQ(material.Rasterization.CullingMode, CullingMode::BackFace);
    EXPECT_FALSE(material.Rasterization.IsPolygonOffsetEnabled);
    EXPECT_EQ(material.Rasterization.PolygonOffsetFactor, 0.0f);
    EXPECT_EQ(material.Rasterization.PolygonOffsetUnit, 0.0f);

    const FragmentShader& shader = material.FragmentShader;
    EXPECT_EQ(shader.LayerConfig, 0);
    EXPECT_EQ(shader.BufferColor, Black);
    EXPECT_EQ(shader.FragmentBump.BumpTextureIndex, 0);
    EXPECT_EQ(shader.FragmentBump.BumpMode, BumpMode::NotUsed);
    EXPECT_FALSE(shader.FragmentBump.IsBumpRenormalize);
    const FragmentLighting& lighting = shader.FragmentLighting;
    EXPECT_EQ(lighting.FresnelConfig, FresnelConfig::No);
    EXPECT_FALSE(lighting.IsClampHighLight || lighting.IsDistribution0Enabled ||
                 lighting.IsDistribution1Enabled || lighting.IsGeometricFactor0Enabled ||
                 lighting.IsGeometricFactor1Enabled || lighting.IsReflectionEnabled);
    for (const LookupTableSampler& sampler : shader.LookupTableSamplers)
        EXPECT_EQ(sampler, (LookupTableSampler{true, LookupInput::CosNormalHalf, LookupScale::One, -1}));
    EXPECT_TRUE(shader.TextureCombiners.empty());
}

TEST(Material, NewFragmentOperations)
{
    const PresetFields fields = FieldsOf(Material{});
    EXPECT_EQ(fields.AlphaTest, (AlphaTest{false, AlphaTestFunction::Always, 0.0f}));
    EXPECT_EQ(fields.DepthOperation, (DepthOperation{true, DepthTestFunction::Less, true}));
    const BlendParameter mix{BlendFactor::SourceAlpha, BlendFactor::OneMinusSourceAlpha,
                             BlendEquation::FuncAdd};
    EXPECT_EQ(fields.BlendOperation,
              (BlendOperation{BlendMode::NotUsed, LogicOperation::Copy, mix, AlphaDefault, Black}));
}

TEST(Material, BlendPresets)
{
    using enum BlendFactor;
    const AlphaTest off{false, AlphaTestFunction::Always, 0.0f};

    const struct
    {
        const char* Name;
        BlendPreset Preset;
        TranslucencyKind Kind;
        AlphaTest Test;
        bool HasDepthMask;
        BlendMode Mode;
        BlendParameter Rgb;
    } cases[] = {
        {"alpha test",
         BlendPreset::AlphaTest,
         TranslucencyKind::Opaque,
         {true, AlphaTestFunction::Greater, 0.5f},
         true,
         BlendMode::NotUsed,
         {SourceAlpha, OneMinusSourceAlpha, BlendEquation::FuncAdd}},
        {"translucent",
         BlendPreset::Translucent,
         TranslucencyKind::Translucent,
         off,
         false,
         BlendMode::Blend,
         {SourceAlpha, OneMinusSourceAlpha, BlendEquation::FuncAdd}},
        {"add",
         BlendPreset::Add,
         TranslucencyKind::Additive,
         off,
         false,
         BlendMode::Blend,
         {SourceAlpha, One, BlendEquation::FuncAdd}},
        {"sub",
         BlendPreset::Sub,
         TranslucencyKind::Subtractive,
         off,
         false,
         BlendMode::Blend,
         {SourceAlpha, One, BlendEquation::FuncReverseSubtract}},
        {"multiply counts as subtractive",
         BlendPreset::Multiply,
         TranslucencyKind::Subtractive,
         off,
         false,
         BlendMode::Blend,
         {DestinationColor, Zero, BlendEquation::FuncAdd}},
        {"opaque again",
         BlendPreset::Opaque,
         TranslucencyKind::Opaque,
         off,
         true,
         BlendMode::NotUsed,
         {SourceAlpha, OneMinusSourceAlpha, BlendEquation::FuncAdd}},
    };

    Material material; // one for all: each preset must undo the former one
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        material.SetBlendPreset(c.Preset);
        EXPECT_EQ(material.BlendPreset, c.Preset);
        const PresetFields expected{c.Kind,
                                    c.Test,
                                    {true, DepthTestFunction::Less, c.HasDepthMask},
                                    {c.Mode, LogicOperation::Copy, c.Rgb, AlphaDefault, Black}};
        EXPECT_EQ(FieldsOf(material), expected);
    }
}

TEST(Material, BlendPresetsOverwriteWhole)
{
    Material material;
    material.FragmentShader.AlphaTest = {true, AlphaTestFunction::Less, 0.25f};
    material.DepthOperation = {false, DepthTestFunction::Never, false};
    material.BlendOperation.LogicOperation = LogicOperation::Xor;
    material.BlendOperation.AlphaParameter.BlendEquation = BlendEquation::Max;
    material.BlendOperation.BlendColor = {0.5f, 0.5f, 0.5f, 0.5f};
    material.StencilOperation.IsTestEnabled = true;
    material.SetBlendPreset(BlendPreset::Add);
    Material fresh;
    fresh.SetBlendPreset(BlendPreset::Add);
    EXPECT_EQ(FieldsOf(material), FieldsOf(fresh));
    EXPECT_TRUE(material.StencilOperation.IsTestEnabled) << "no preset touches the stencil";
}

TEST(Material, StoredPresetIsNotAppliedAgain)
{
    Material material;
    material.DepthOperation.IsMaskEnabled = false;
    material.SetBlendPreset(BlendPreset::Opaque);
    EXPECT_FALSE(material.DepthOperation.IsMaskEnabled);

    material.SetBlendPreset(BlendPreset::Add);
    material.TranslucencyKind = TranslucencyKind::Opaque;
    material.SetBlendPreset(BlendPreset::Add);
    EXPECT_EQ(material.TranslucencyKind, TranslucencyKind::Opaque);
}

TEST(Material, UnknownPresetIsStoredAlone)
{
    for (const int number : {6, -1, 100, -2147483647}) {
        SCOPED_TRACE(number);
        Material material;
        material.SetBlendPreset(BlendPreset::Translucent);
        const PresetFields before = FieldsOf(material);
        material.SetBlendPreset(static_cast<BlendPreset>(number));
        EXPECT_EQ(static_cast<int>(material.BlendPreset), number);
        EXPECT_EQ(FieldsOf(material), before);
        material.SetBlendPreset(BlendPreset::Opaque);
        EXPECT_EQ(FieldsOf(material), FieldsOf(Material{}));
    }
}

TEST(Material, AddTextureCoordinator)
{
    Material material;
    EXPECT_EQ(material.AddTextureCoordinator(2, MappingMethod::ProjectionMap, 3, MatrixMode::DccMaya, 0.5f,
                                             0.25f, 90.0f, 1.0f, 2.0f),
              1u);
    EXPECT_EQ(material.AddTextureCoordinator(0, MappingMethod::UvCoordinateMap, 0, MatrixMode::DccSoftimage,
                                             1.0f, 1.0f, 0.0f, 0.0f, 0.0f),
              2u);
    const TextureCoordinator& first = material.TextureCoordinators[0];
    EXPECT_EQ(first.SourceCoordinate, 2);
    EXPECT_EQ(first.MappingMethod, MappingMethod::ProjectionMap);
    EXPECT_EQ(first.ReferenceCamera, 3);
    EXPECT_EQ(first.MatrixMode, MatrixMode::DccMaya);
    EXPECT_EQ(first.ScaleS, 0.5f);
    EXPECT_EQ(first.ScaleT, 0.25f);
    EXPECT_EQ(first.Rotate, 90.0f);
    EXPECT_EQ(first.TranslateS, 1.0f);
    EXPECT_EQ(first.TranslateT, 2.0f);
    EXPECT_FALSE(first.IsLoop || first.IsScaleAnimated || first.IsRotateAnimated ||
                 first.IsTranslateAnimated);
    for (std::size_t i = 0; i < first.Curves.size(); ++i) {
        EXPECT_TRUE(first.Curves[i].Samples.empty()) << i;
        EXPECT_EQ(first.Curves[i].IsAngle, i == 2) << i;
    }
}

TEST(Material, AddTextureMapper)
{
    Material material;
    EXPECT_EQ(material.AddTextureMapper("Wall", TextureWrap::Repeat, TextureWrap::ClampToEdge), 1u);
    EXPECT_EQ(material.AddTextureMapper("Moss", TextureWrap::ClampToEdge, TextureWrap::Repeat), 2u);
    const TextureMapper& mapper = material.TextureMappers[0];
    EXPECT_EQ(mapper.Patterns, (std::map<std::int32_t, std::string>{{0, "Wall"}}));
    EXPECT_EQ(mapper.MinFilter, TextureFilter::LinearMipmapLinear);
    EXPECT_EQ(static_cast<int>(mapper.MinFilter), 5);
    EXPECT_EQ(mapper.MagFilter, TextureFilter::Linear);
    EXPECT_EQ(mapper.WrapS, TextureWrap::Repeat);
    EXPECT_EQ(mapper.WrapT, TextureWrap::ClampToEdge);
    EXPECT_EQ(mapper.MinLod, 0);
    EXPECT_EQ(mapper.LodBias, 0.0f);
    EXPECT_EQ(mapper.BorderColor, Black);
}

TEST(Material, AtAnswersNothingAtOrPastTheEnd)
{
    Material material;
    EXPECT_EQ(material.TextureCoordinatorAt(0), nullptr);
    EXPECT_EQ(material.TextureMapperAt(0), nullptr);
    material.TextureCoordinators.resize(2);
    material.TextureMappers.resize(2);
    EXPECT_EQ(material.TextureCoordinatorAt(1), &material.TextureCoordinators[1]);
    EXPECT_EQ(material.TextureMapperAt(1), &material.TextureMappers[1]);
    EXPECT_EQ(material.TextureCoordinatorAt(2), nullptr);
    EXPECT_EQ(material.TextureMapperAt(2), nullptr);
    EXPECT_EQ(material.TextureMapperAt(static_cast<std::size_t>(-1)), nullptr);
}

TEST(Material, HasAnimatedMember)
{
    const struct
    {
        const char* Name;
        void (*Change)(Material&);
        bool Expected;
    } cases[] = {
        {"plain", [](Material&) {}, false},
        {"one pattern", [](Material& m) { m.AddTextureMapper("A", {}, {}); }, false},
        {"two patterns",
         [](Material& m) {
             m.AddTextureMapper("A", {}, {});
             m.TextureMappers[0].Patterns[5] = "A";
         },
         true},
        {"coordinator at rest", [](Material& m) { m.TextureCoordinators.resize(1); }, false},
        {"scale", [](Material& m) { m.TextureCoordinators.emplace_back().IsScaleAnimated = true; }, true},
        {"rotate of the second",
         [](Material& m) {
             m.TextureCoordinators.resize(2);
             m.TextureCoordinators[1].IsRotateAnimated = true;
         },
         true},
        {"translate", [](Material& m) { m.TextureCoordinators.emplace_back().IsTranslateAnimated = true; },
         true},
        {"emission", [](Material& m) { m.IsEmissionAnimated = true; }, true},
        {"ambient", [](Material& m) { m.IsAmbientAnimated = true; }, true},
        {"diffuse", [](Material& m) { m.IsDiffuseAnimated = true; }, true},
        {"specular", [](Material& m) { m.IsSpecular0Animated = true; }, true},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        Material material;
        c.Change(material);
        EXPECT_EQ(material.HasAnimatedMember(), c.Expected);
    }
}

} // namespace
} // namespace tq4x
