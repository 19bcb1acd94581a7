#pragma once

#include <array>
#include <string>
#include <vector>

#include "ReadCurve.h"
#include "ReadValues.h"

namespace tq4x::reader
{

/// A table over the frames 0 to 255, or -255 to 255 where it is not generated as absolute.
struct LookupTable
{
    std::string Name;
    bool IsGeneratedAsAbs = true;
    bool IsSizeDoubled = false;
    bool IsMipMap = false;
    Curve Values;
    long Line = 0;
};

struct LookupTableSet
{
    std::string Name; ///< the file's base name and ".MaterialLutset" or ".LightLutset"; empty: no set
    std::vector<LookupTable> Tables;
    long Line = 0;
};

struct LookupTableSampler
{
    bool IsAbs = true;
    std::string Input;
    std::string Scale;
    std::string TableName; ///< empty with `HasTable` false
    bool HasTable = false;
    long Line = 0;
};

/// How texture coordinates move. Values at the first frame.
struct TextureCoordinator
{
    int SourceCoordinate = 0; ///< 0 to 2: which TextureCoordinate stream
    std::string MappingMethod;
    int ReferenceCamera = 0;
    std::string MatrixMode;
    float ScaleS = 1;
    float ScaleT = 1;
    float Rotate = 0; ///< radians
    float TranslateS = 0;
    float TranslateT = 0;
};

/// A texture's name and the file that holds it.
struct TextureReference
{
    std::string Name;
    std::string Path; ///< relative to the model's folder, "/" between its pieces
    long Line = 0;
};

struct TextureMapper
{
    TextureReference Texture;
    std::string MinFilter;
    std::string MagFilter;
    std::string WrapS;
    std::string WrapT;
    int MinLod = 0;
    float LodBias = 0;
    Color BorderColor = {};
};

struct TextureCombiner
{
    std::string CombineRgb;
    std::string CombineAlpha;
    std::string ScaleRgb;
    std::string ScaleAlpha;
    std::string Constant;
    std::string BufferInputRgb;
    std::string BufferInputAlpha;
    std::array<std::string, 3> SourceRgb;
    std::array<std::string, 3> OperandRgb;
    std::array<std::string, 3> SourceAlpha;
    std::array<std::string, 3> OperandAlpha;
};

struct FragmentShader
{
    int LayerConfig = 0; ///< the number behind "ConfigurationType"
    Color BufferColor = {};
    int BumpTextureIndex = 0; ///< the number behind "Texture"
    std::string BumpMode = "NotUsed";
    bool IsBumpRenormalize = false;
    std::string FresnelConfig;
    bool IsClampHighLight = false;
    bool IsDistribution0Enabled = false;
    bool IsDistribution1Enabled = false;
    bool IsGeometricFactor0Enabled = false;
    bool IsGeometricFactor1Enabled = false;
    bool IsReflectionEnabled = false;
    LookupTableSampler ReflectanceR;
    LookupTableSampler ReflectanceG;
    LookupTableSampler ReflectanceB;
    LookupTableSampler Distribution0;
    LookupTableSampler Distribution1;
    LookupTableSampler Fresnel;
    std::vector<TextureCombiner> Combiners;
    bool IsAlphaTestEnabled = false;
    std::string AlphaTestFunction;
    float AlphaTestReference = 0;
};

struct BlendParameter
{
    std::string Source;
    std::string Destination;
    std::string Equation;
};

struct FragmentOperation
{
    bool IsDepthTestEnabled = true;
    std::string DepthTestFunction;
    bool IsDepthMaskEnabled = true;
    std::string BlendMode = "NotUsed"; ///< "NotUsed", "Blend", "SeparateBlend", "Logic"
    std::string LogicOperation;
    BlendParameter Rgb;
    BlendParameter Alpha;
    Color BlendColor = {};
    bool IsStencilTestEnabled = false;
};

struct Material
{
    std::string Name;
    bool IsCompressible = true;
    bool IsFragmentLightEnabled = true;
    bool IsVertexLightEnabled = false;
    bool IsHemiSphereLightEnabled = false;
    bool IsHemiSphereOcclusionEnabled = false;
    bool IsFogEnabled = false;
    std::string TranslucencyKind;
    int ShaderProgramDescriptionIndex = -1;
    std::vector<UserDataItem> UserData;
    float VertexColorScale = 1;
    Color Emission = {};
    Color Ambient = {};
    Color Diffuse = {};
    Color Specular0 = {};
    Color Specular1 = {};
    std::array<Color, 6> Constants = {};
    std::string CullingMode; ///< which faces are left out: "FrontFace", "BackFace", "Always", "Never"
    bool IsPolygonOffsetEnabled = false;
    float PolygonOffsetFactor = 0;
    float PolygonOffsetUnit = 0;
    std::vector<TextureCoordinator> Coordinators; ///< one for each mapper
    std::vector<TextureMapper> Mappers;
    FragmentShader Shader;
    FragmentOperation Operation;
    long Line = 0;
};

} // namespace tq4x::reader
