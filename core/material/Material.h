#pragma once

#include "animation/AnimationCurve.h"
#include "material/LookupTable.h"
#include "material/MaterialEnums.h"
#include "math/Vector.h"
#include "scene/UserData.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tq4x
{

class TexturePatternList;
class XmlWriter;

struct Rasterization
{
    tq4x::CullingMode CullingMode = tq4x::CullingMode::BackFace;
    bool IsPolygonOffsetEnabled = false;
    float PolygonOffsetFactor = 0.0f;
    float PolygonOffsetUnit = 0.0f;
};

/// Places in `TextureCoordinator::Curves`.
namespace CoordinatorCurve
{
inline constexpr std::size_t ScaleS = 0;
inline constexpr std::size_t ScaleT = 1;
inline constexpr std::size_t Rotate = 2;
inline constexpr std::size_t TranslateS = 3;
inline constexpr std::size_t TranslateT = 4;
inline constexpr std::size_t Count = 5;
} // namespace CoordinatorCurve

/// Where a texture unit takes its coordinates from, and how it moves them.
struct TextureCoordinator
{
    std::int32_t SourceCoordinate = 0; ///< number of the texture coordinate set
    tq4x::MappingMethod MappingMethod = tq4x::MappingMethod::UvCoordinateMap;
    std::int32_t ReferenceCamera = 0;
    tq4x::MatrixMode MatrixMode = tq4x::MatrixMode::DccSoftimage;
    float ScaleS = 1.0f;
    float ScaleT = 1.0f;
    float Rotate = 0.0f; ///< degrees
    float TranslateS = 0.0f;
    float TranslateT = 0.0f;
    std::array<AnimationCurve, CoordinatorCurve::Count> Curves;
    bool IsLoop = false;
    bool IsScaleAnimated = false;
    bool IsRotateAnimated = false;
    bool IsTranslateAnimated = false;

    /// `TextureCoordinatorQtr`; the rotation in radians, whole turns taken off outside +-360 degrees.
    void WriteXml(XmlWriter& stream, int level) const;
};

/// The texture of a unit and how it is sampled.
struct TextureMapper
{
    /// Texture name by frame. At least one entry: key 0 holds the texture of the model; more than one make a
    /// texture pattern animation.
    std::map<std::int32_t, std::string> Patterns;
    TextureFilter MinFilter = TextureFilter::LinearMipmapLinear;
    TextureFilter MagFilter = TextureFilter::Linear;
    TextureWrap WrapS = TextureWrap::Repeat;
    TextureWrap WrapT = TextureWrap::Repeat;
    std::int32_t MinLod = 0;
    float LodBias = 0.0f;
    Color BorderColor{0.0f, 0.0f, 0.0f, 1.0f};

    /// `PixelBasedTextureMapperQtr`, with a reference to the texture of key 0.
    void WriteXml(XmlWriter& stream, int level) const;
};

struct FragmentBump
{
    std::int32_t BumpTextureIndex = 0; ///< number of the texture mapper that holds the normal map
    tq4x::BumpMode BumpMode = tq4x::BumpMode::NotUsed;
    bool IsBumpRenormalize = false;
};

struct FragmentLighting
{
    tq4x::FresnelConfig FresnelConfig = tq4x::FresnelConfig::No;
    bool IsClampHighLight = false;
    bool IsDistribution0Enabled = false;
    bool IsDistribution1Enabled = false;
    bool IsGeometricFactor0Enabled = false;
    bool IsGeometricFactor1Enabled = false;
    bool IsReflectionEnabled = false;
};

/// One stage that joins colours of fragment lighting, textures and former stages. A new one hands the colour
/// of the former stage on.
struct TextureCombiner
{
    CombineMode CombineRgb = CombineMode::Replace;
    CombineMode CombineAlpha = CombineMode::Replace;
    CombineScale ScaleRgb = CombineScale::One;
    CombineScale ScaleAlpha = CombineScale::One;
    CombineConstant Constant = CombineConstant::Constant0;
    BufferInput BufferInputRgb = BufferInput::PreviousBuffer;
    BufferInput BufferInputAlpha = BufferInput::PreviousBuffer;
    std::array<CombineSource, 3> SourceRgb{CombineSource::Previous, CombineSource::Previous,
                                           CombineSource::Previous};
    std::array<CombineSource, 3> SourceAlpha = SourceRgb;
    std::array<CombineOperand, 3> OperandRgb{CombineOperand::Color, CombineOperand::Color,
                                             CombineOperand::Color};
    std::array<CombineOperand, 3> OperandAlpha{CombineOperand::Alpha, CombineOperand::Alpha,
                                               CombineOperand::Alpha};

    bool operator==(const TextureCombiner&) const = default;
};

struct AlphaTest
{
    bool IsTestEnabled = false;
    AlphaTestFunction TestFunction = AlphaTestFunction::Always;
    float TestReference = 0.0f;

    bool operator==(const AlphaTest&) const = default;
};

struct FragmentShader
{
    std::int32_t LayerConfig = 0; ///< number of the configuration of lighting layers
    Color BufferColor{0.0f, 0.0f, 0.0f, 1.0f};
    tq4x::FragmentBump FragmentBump;
    tq4x::FragmentLighting FragmentLighting;
    std::array<LookupTableSampler, 6> LookupTableSamplers; ///< by `LookupTableSamplerSlot`
    std::vector<TextureCombiner> TextureCombiners;
    tq4x::AlphaTest AlphaTest;

    LookupTableSampler& SamplerAt(LookupTableSamplerSlot slot)
    {
        return LookupTableSamplers[static_cast<std::size_t>(slot)];
    }

    const LookupTableSampler& SamplerAt(LookupTableSamplerSlot slot) const
    {
        return LookupTableSamplers[static_cast<std::size_t>(slot)];
    }

    /// `FragmentShader` with all it holds.
    void WriteXml(XmlWriter& stream, int level, const LookupTableSet& lookupTables) const;
};

struct DepthOperation
{
    bool IsTestEnabled = true;
    DepthTestFunction TestFunction = DepthTestFunction::Less;
    bool IsMaskEnabled = true;

    bool operator==(const DepthOperation&) const = default;
};

struct BlendParameter
{
    BlendFactor BlendFunctionSource = BlendFactor::One;
    BlendFactor BlendFunctionDestination = BlendFactor::Zero;
    tq4x::BlendEquation BlendEquation = tq4x::BlendEquation::FuncAdd;

    bool operator==(const BlendParameter&) const = default;
};

struct BlendOperation
{
    BlendMode Mode = BlendMode::NotUsed;
    tq4x::LogicOperation LogicOperation = tq4x::LogicOperation::Copy;
    BlendParameter RgbParameter{BlendFactor::SourceAlpha, BlendFactor::OneMinusSourceAlpha,
                                BlendEquation::FuncAdd};
    BlendParameter AlphaParameter{BlendFactor::One, BlendFactor::Zero, BlendEquation::FuncAdd};
    Color BlendColor{0.0f, 0.0f, 0.0f, 1.0f};

    bool operator==(const BlendOperation&) const = default;
};

/// The other attributes of the stencil operation are constants of the file.
struct StencilOperation
{
    bool IsTestEnabled = false;
};

/// Largest differences between a sample and the curve fitted to it, for the channels of materials.
struct MaterialTolerances
{
    float Scale = 0.1f;
    float Rotate = 0.1f; ///< degrees
    float Translate = 0.01f;
    float Color = 0.001f; ///< in steps of 1/255
};

/// Curves of the animated colours, four each (R, G, B, A): emission, ambient, diffuse, specular 0.
inline constexpr std::size_t ColorCurveCount = 16;

/// One exported material. Filled by a collector, completed once by `BuildFragmentLighting` when all texture
/// units are known and once by `FinishAnimation` when the frames are sampled, then written.
struct Material
{
    std::string Name;           ///< unique among the materials of the export
    bool IsCompressible = true; ///< false: the tool must not merge it with an equal material
    bool IsFragmentLightEnabled = true;
    bool IsVertexLightEnabled = false;
    bool IsHemiSphereLightEnabled = false;
    bool IsHemiSphereOcclusionEnabled = false;
    bool IsFogEnabled = false;
    std::string TextureCoordinateConfig = "Config0120";
    tq4x::TranslucencyKind TranslucencyKind = tq4x::TranslucencyKind::Opaque;
    std::int32_t ShaderProgramDescriptionIndex = -1;
    std::string ShaderBinaryKind = "Default";
    float VertexColorScale = 1.0f;
    Color Emission;
    Color Ambient;
    Color Diffuse{1.0f, 1.0f, 1.0f, 1.0f};
    Color Specular0;
    Color Specular1;
    std::array<Color, 6> Constant;
    tq4x::Rasterization Rasterization;
    std::vector<TextureCoordinator> TextureCoordinators;
    std::vector<TextureMapper> TextureMappers; ///< same index as the coordinators
    tq4x::FragmentShader FragmentShader;
    tq4x::DepthOperation DepthOperation;
    tq4x::BlendOperation BlendOperation;
    tq4x::StencilOperation StencilOperation;
    bool HasSpecularTable = false; ///< phong or blinn highlight wanted
    float SpecularExponent = 30.0f;
    float SpecularScale = 1.0f;
    bool HasAnisotropicTables = false;                         ///< ward highlight wanted
    tq4x::BlendPreset BlendPreset = tq4x::BlendPreset::Opaque; ///< the last preset applied
    std::vector<UserDataItem> UserData;
    std::int32_t RenderPriority = 0;
    bool IsLoop = false;
    std::array<AnimationCurve, ColorCurveCount> ColorCurves;
    bool IsEmissionAnimated = false;
    bool IsDiffuseAnimated = false;
    bool IsAmbientAnimated = false;
    bool IsSpecular0Animated = false;

    /// Overwrites translucency kind, alpha test, depth and blend operation as a whole and stores the preset.
    /// Nothing happens for the preset that is stored already, even if the fields were changed since; a number
    /// without a preset is stored and changes nothing else.
    void SetBlendPreset(tq4x::BlendPreset preset);

    /// Appends a coordinator and returns the new count. `rotate` in degrees.
    std::size_t AddTextureCoordinator(std::int32_t sourceCoordinate, MappingMethod mappingMethod,
                                      std::int32_t referenceCamera, MatrixMode matrixMode, float scaleS,
                                      float scaleT, float rotate, float translateS, float translateT);

    /// Appends a mapper that holds one texture, at key 0, and returns the new count.
    std::size_t AddTextureMapper(const std::string& textureName, TextureWrap wrapS, TextureWrap wrapT);

    /// Nothing at or past the end.
    TextureCoordinator* TextureCoordinatorAt(std::size_t index);
    TextureMapper* TextureMapperAt(std::size_t index);

    /// Makes the combiners (one or two, whatever the number of textures: the first alone is combined) and the
    /// lookup tables of the wanted highlight, which are found in the set or added. `textureCount` leaves a
    /// normal map out. A second call gives the same combiners.
    void BuildFragmentLighting(LookupTableSet& lookupTables, bool hasVertexColor, std::size_t textureCount);

    /// Makes keys of every moving curve and raises the flags of the groups that are to be written.
    /// `frameSteps` samples make a frame.
    void FinishAnimation(bool isLoop, const MaterialTolerances& tolerances, int frameSteps);

    /// True if `WriteTextureAnimations` or `WriteMemberAnimations` would write a member.
    bool HasAnimatedMember() const;

    /// `MaterialQtr` with all it holds.
    void WriteXml(XmlWriter& stream, int level, const LookupTableSet& lookupTables) const;

    /// One member for each mapper with more than one pattern. The textures join the pattern list, and the
    /// keys hold their places in it.
    void WriteTextureAnimations(TexturePatternList& patternList, XmlWriter& stream, int level) const;

    /// One member for each animated part of a coordinator and for each animated colour.
    void WriteMemberAnimations(XmlWriter& stream, int level) const;
};

} // namespace tq4x
