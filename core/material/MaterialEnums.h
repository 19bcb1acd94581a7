#pragma once

#include <cstdint>

namespace tq4x
{

// The values are stored as they are numbered here; the files hold their words (MaterialWords.h).

enum class TranslucencyKind : std::int32_t
{
    Opaque = 0,
    Translucent = 1,
    Subtractive = 2,
    Additive = 3,
};

/// Which faces are left out.
enum class CullingMode : std::int32_t
{
    FrontFace = 0,
    BackFace = 1,
    Always = 2,
    Never = 3,
};

/// Where the coordinates of a texture come from.
enum class MappingMethod : std::int32_t
{
    UvCoordinateMap = 0,
    CameraCubeEnvMap = 1,
    CameraSphereEnvMap = 2,
    ProjectionMap = 3,
};

/// Which package's order of scale, rotation and translation the texture matrix follows.
enum class MatrixMode : std::int32_t
{
    DccMaya = 0,
    DccSoftimage = 1,
    Dcc3dsMax = 2,
};

/// Values 2 and 3 share one word in the files.
enum class TextureFilter : std::int32_t
{
    Nearest = 0,
    Linear = 1,
    NearestMipmapNearest = 2,
    NearestMipmapLinear = 3,
    LinearMipmapNearest = 4,
    LinearMipmapLinear = 5,
};

enum class TextureWrap : std::int32_t
{
    Repeat = 0,
    MirroredRepeat = 1,
    ClampToEdge = 2,
    ClampToBorder = 3,
};

enum class BumpMode : std::int32_t
{
    NotUsed = 0,
    AsBump = 1,
    AsTangent = 2,
};

/// Which alpha the Fresnel table goes to.
enum class FresnelConfig : std::int32_t
{
    PriSec = 0,
    Sec = 1,
    Pri = 2,
    No = 3,
};

/// The angle that a lookup table is read by.
enum class LookupInput : std::int32_t
{
    CosNormalHalf = 0,
    CosViewHalf = 1,
    CosNormalView = 2,
    CosLightNormal = 3,
    CosLightSpot = 4,
    CosPhi = 5,
};

/// Factor on the value read from a lookup table.
enum class LookupScale : std::int32_t
{
    Quarter = 0,
    Half = 1,
    One = 2,
    Two = 3,
    Four = 4,
    Eight = 5,
};

/// The lookup tables of a fragment shader.
enum class LookupTableSamplerSlot : std::int32_t
{
    ReflectanceRSampler = 0,
    ReflectanceGSampler = 1,
    ReflectanceBSampler = 2,
    Distribution0Sampler = 3,
    Distribution1Sampler = 4,
    FresnelSampler = 5,
};

enum class CombineMode : std::int32_t
{
    Replace = 0,
    Modulate = 1,
    Add = 2,
    AddSigned = 3,
    Interpolate = 4,
    Subtract = 5,
    DotProduct3Rgb = 6,
    DotProduct3Rgba = 7,
    AddMult = 8,
    MultAdd = 9,
};

enum class CombineScale : std::int32_t
{
    One = 0,
    Two = 1,
    Four = 2,
};

enum class CombineConstant : std::int32_t
{
    Constant0 = 0,
    Constant1 = 1,
    Constant2 = 2,
    Constant3 = 3,
    Constant4 = 4,
    Constant5 = 5,
    Emission = 6,
    Ambient = 7,
    Diffuse = 8,
    Specular0 = 9,
    Specular1 = 10,
};

enum class BufferInput : std::int32_t
{
    Previous = 0,
    PreviousBuffer = 1,
};

enum class CombineSource : std::int32_t
{
    Texture0 = 0,
    Texture1 = 1,
    Texture2 = 2,
    Texture3 = 3,
    Constant = 4,
    PrimaryColor = 5,
    Previous = 6,
    PreviousBuffer = 7,
    FragmentPrimaryColor = 8,
    FragmentSecondaryColor = 9,
};

enum class CombineOperand : std::int32_t
{
    Color = 0,
    OneMinusColor = 1,
    Alpha = 2,
    OneMinusAlpha = 3,
    Red = 4,
    Green = 5,
    Blue = 6,
    OneMinusRed = 7,
    OneMinusGreen = 8,
    OneMinusBlue = 9,
};

/// Numbered differently from `DepthTestFunction`.
enum class AlphaTestFunction : std::int32_t
{
    Never = 0,
    Always = 1,
    Less = 2,
    Lequal = 3,
    Equal = 4,
    Gequal = 5,
    Greater = 6,
    Notequal = 7,
};

/// Numbered differently from `AlphaTestFunction`.
enum class DepthTestFunction : std::int32_t
{
    Never = 0,
    Less = 1,
    Equal = 2,
    Lequal = 3,
    Greater = 4,
    Notequal = 5,
    Gequal = 6,
    Always = 7,
};

enum class BlendFactor : std::int32_t
{
    Zero = 0,
    One = 1,
    SourceColor = 2,
    OneMinusSourceColor = 3,
    DestinationColor = 4,
    OneMinusDestinationColor = 5,
    SourceAlpha = 6,
    OneMinusSourceAlpha = 7,
    DestinationAlpha = 8,
    OneMinusDestinationAlpha = 9,
    ConstantColor = 10,
    OneMinusConstantColor = 11,
    ConstantAlpha = 12,
    OneMinusConstantAlpha = 13,
    SourceAlphaSaturate = 14,
};

enum class BlendEquation : std::int32_t
{
    FuncAdd = 0,
    FuncSubtract = 1,
    FuncReverseSubtract = 2,
    Min = 3,
    Max = 4,
};

enum class BlendMode : std::int32_t
{
    NotUsed = 0,
    Blend = 1,
    SeparateBlend = 2,
    Logic = 3,
};

enum class LogicOperation : std::int32_t
{
    Clear = 0,
    Copy = 1,
    NoOp = 2,
    Set = 3,
    CopyInverted = 4,
    Invert = 5,
    AndReverse = 6,
    OrReverse = 7,
    And = 8,
    Or = 9,
    Nand = 10,
    Nor = 11,
    Xor = 12,
    Equiv = 13,
    AndInverted = 14,
    OrInverted = 15,
};

/// A ready-made set of alpha test, depth and blend operation. `Auto` is a choice of the user alone and never
/// stored in a material. Other numbers may be stored; they stand for "none of these".
enum class BlendPreset : std::int32_t
{
    Auto = -1,
    Opaque = 0,
    AlphaTest = 1,
    Translucent = 2,
    Add = 3,
    Sub = 4,
    Multiply = 5,
};

} // namespace tq4x
