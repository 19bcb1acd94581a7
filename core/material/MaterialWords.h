#pragma once

#include "material/MaterialEnums.h"
#include "pipeline/WordTable.h"

namespace tq4x
{

// Words of the files, slips included: `TextureFilter` writes one word for two values, and the two test
// functions are numbered differently, so that each has a table of its own.

inline constexpr auto TranslucencyKindWords = WordTable<TranslucencyKind::Additive>({
    {TranslucencyKind::Opaque, "Opaque"},
    {TranslucencyKind::Translucent, "Translucent"},
    {TranslucencyKind::Subtractive, "Subtractive"},
    {TranslucencyKind::Additive, "Additive"},
});

inline constexpr auto CullingModeWords = WordTable<CullingMode::Never>({
    {CullingMode::FrontFace, "FrontFace"},
    {CullingMode::BackFace, "BackFace"},
    {CullingMode::Always, "Always"},
    {CullingMode::Never, "Never"},
});

inline constexpr auto MappingMethodWords = WordTable<MappingMethod::ProjectionMap>({
    {MappingMethod::UvCoordinateMap, "UvCoordinateMap"},
    {MappingMethod::CameraCubeEnvMap, "CameraCubeEnvMap"},
    {MappingMethod::CameraSphereEnvMap, "CameraSphereEnvMap"},
    {MappingMethod::ProjectionMap, "ProjectionMap"},
});

inline constexpr auto MatrixModeWords = WordTable<MatrixMode::Dcc3dsMax>({
    {MatrixMode::DccMaya, "DccMaya"},
    {MatrixMode::DccSoftimage, "DccSoftimage"},
    {MatrixMode::Dcc3dsMax, "Dcc3dsMax"},
});

inline constexpr auto TextureFilterWords = WordTable<TextureFilter::LinearMipmapLinear>({
    {TextureFilter::Nearest, "Nearest"},
    {TextureFilter::Linear, "Linear"},
    {TextureFilter::NearestMipmapNearest, "NearestMipmapNearest"},
    {TextureFilter::NearestMipmapLinear, "NearestMipmapNearest"},
    {TextureFilter::LinearMipmapNearest, "LinearMipmapNearest"},
    {TextureFilter::LinearMipmapLinear, "LinearMipmapLinear"},
});

inline constexpr auto TextureWrapWords = WordTable<TextureWrap::ClampToBorder>({
    {TextureWrap::Repeat, "Repeat"},
    {TextureWrap::MirroredRepeat, "MirroredRepeat"},
    {TextureWrap::ClampToEdge, "ClampToEdge"},
    {TextureWrap::ClampToBorder, "ClampToBorder"},
});

inline constexpr auto BumpModeWords = WordTable<BumpMode::AsTangent>({
    {BumpMode::NotUsed, "NotUsed"},
    {BumpMode::AsBump, "AsBump"},
    {BumpMode::AsTangent, "AsTangent"},
});

inline constexpr auto FresnelConfigWords = WordTable<FresnelConfig::No>({
    {FresnelConfig::PriSec, "PriSec"},
    {FresnelConfig::Sec, "Sec"},
    {FresnelConfig::Pri, "Pri"},
    {FresnelConfig::No, "No"},
});

inline constexpr auto LookupInputWords = WordTable<LookupInput::CosPhi>({
    {LookupInput::CosNormalHalf, "CosNormalHalf"},
    {LookupInput::CosViewHalf, "CosViewHalf"},
    {LookupInput::CosNormalView, "CosNormalView"},
    {LookupInput::CosLightNormal, "CosLightNormal"},
    {LookupInput::CosLightSpot, "CosLightSpot"},
    {LookupInput::CosPhi, "CosPhi"},
});

inline constexpr auto LookupScaleWords = WordTable<LookupScale::Eight>({
    {LookupScale::Quarter, "Quarter"},
    {LookupScale::Half, "Half"},
    {LookupScale::One, "One"},
    {LookupScale::Two, "Two"},
    {LookupScale::Four, "Four"},
    {LookupScale::Eight, "Eight"},
});

inline constexpr auto LookupTableSamplerSlotWords = WordTable<LookupTableSamplerSlot::FresnelSampler>({
    {LookupTableSamplerSlot::ReflectanceRSampler, "ReflectanceRSampler"},
    {LookupTableSamplerSlot::ReflectanceGSampler, "ReflectanceGSampler"},
    {LookupTableSamplerSlot::ReflectanceBSampler, "ReflectanceBSampler"},
    {LookupTableSamplerSlot::Distribution0Sampler, "Distribution0Sampler"},
    {LookupTableSamplerSlot::Distribution1Sampler, "Distribution1Sampler"},
    {LookupTableSamplerSlot::FresnelSampler, "FresnelSampler"},
});

inline constexpr auto CombineModeWords = WordTable<CombineMode::MultAdd>({
    {CombineMode::Replace, "Replace"},
    {CombineMode::Modulate, "Modulate"},
    {CombineMode::Add, "Add"},
    {CombineMode::AddSigned, "AddSigned"},
    {CombineMode::Interpolate, "Interpolate"},
    {CombineMode::Subtract, "Subtract"},
    {CombineMode::DotProduct3Rgb, "DotProduct3Rgb"},
    {CombineMode::DotProduct3Rgba, "DotProduct3Rgba"},
    {CombineMode::AddMult, "AddMult"},
    {CombineMode::MultAdd, "MultAdd"},
});

inline constexpr auto CombineScaleWords = WordTable<CombineScale::Four>({
    {CombineScale::One, "One"},
    {CombineScale::Two, "Two"},
    {CombineScale::Four, "Four"},
});

inline constexpr auto CombineConstantWords = WordTable<CombineConstant::Specular1>({
    {CombineConstant::Constant0, "Constant0"},
    {CombineConstant::Constant1, "Constant1"},
    {CombineConstant::Constant2, "Constant2"},
    {CombineConstant::Constant3, "Constant3"},
    {CombineConstant::Constant4, "Constant4"},
    {CombineConstant::Constant5, "Constant5"},
    {CombineConstant::Emission, "Emission"},
    {CombineConstant::Ambient, "Ambient"},
    {CombineConstant::Diffuse, "Diffuse"},
    {CombineConstant::Specular0, "Specular0"},
    {CombineConstant::Specular1, "Specular1"},
});

inline constexpr auto BufferInputWords = WordTable<BufferInput::PreviousBuffer>({
    {BufferInput::Previous, "Previous"},
    {BufferInput::PreviousBuffer, "PreviousBuffer"},
});

inline constexpr auto CombineSourceWords = WordTable<CombineSource::FragmentSecondaryColor>({
    {CombineSource::Texture0, "Texture0"},
    {CombineSource::Texture1, "Texture1"},
    {CombineSource::Texture2, "Texture2"},
    {CombineSource::Texture3, "Texture3"},
    {CombineSource::Constant, "Constant"},
    {CombineSource::PrimaryColor, "PrimaryColor"},
    {CombineSource::Previous, "Previous"},
    {CombineSource::PreviousBuffer, "PreviousBuffer"},
    {CombineSource::FragmentPrimaryColor, "FragmentPrimaryColor"},
    {CombineSource::FragmentSecondaryColor, "FragmentSecondaryColor"},
});

inline constexpr auto CombineOperandWords = WordTable<CombineOperand::OneMinusBlue>({
    {CombineOperand::Color, "Color"},
    {CombineOperand::OneMinusColor, "OneMinusColor"},
    {CombineOperand::Alpha, "Alpha"},
    {CombineOperand::OneMinusAlpha, "OneMinusAlpha"},
    {CombineOperand::Red, "Red"},
    {CombineOperand::Green, "Green"},
    {CombineOperand::Blue, "Blue"},
    {CombineOperand::OneMinusRed, "OneMinusRed"},
    {CombineOperand::OneMinusGreen, "OneMinusGreen"},
    {CombineOperand::OneMinusBlue, "OneMinusBlue"},
});

inline constexpr auto AlphaTestFunctionWords = WordTable<AlphaTestFunction::Notequal>({
    {AlphaTestFunction::Never, "Never"},
    {AlphaTestFunction::Always, "Always"},
    {AlphaTestFunction::Less, "Less"},
    {AlphaTestFunction::Lequal, "Lequal"},
    {AlphaTestFunction::Equal, "Equal"},
    {AlphaTestFunction::Gequal, "Gequal"},
    {AlphaTestFunction::Greater, "Greater"},
    {AlphaTestFunction::Notequal, "Notequal"},
});

inline constexpr auto DepthTestFunctionWords = WordTable<DepthTestFunction::Always>({
    {DepthTestFunction::Never, "Never"},
    {DepthTestFunction::Less, "Less"},
    {DepthTestFunction::Equal, "Equal"},
    {DepthTestFunction::Lequal, "Lequal"},
    {DepthTestFunction::Greater, "Greater"},
    {DepthTestFunction::Notequal, "Notequal"},
    {DepthTestFunction::Gequal, "Gequal"},
    {DepthTestFunction::Always, "Always"},
});

inline constexpr auto BlendFactorWords = WordTable<BlendFactor::SourceAlphaSaturate>({
    {BlendFactor::Zero, "Zero"},
    {BlendFactor::One, "One"},
    {BlendFactor::SourceColor, "SourceColor"},
    {BlendFactor::OneMinusSourceColor, "OneMinusSourceColor"},
    {BlendFactor::DestinationColor, "DestinationColor"},
    {BlendFactor::OneMinusDestinationColor, "OneMinusDestinationColor"},
    {BlendFactor::SourceAlpha, "SourceAlpha"},
    {BlendFactor::OneMinusSourceAlpha, "OneMinusSourceAlpha"},
    {BlendFactor::DestinationAlpha, "DestinationAlpha"},
    {BlendFactor::OneMinusDestinationAlpha, "OneMinusDestinationAlpha"},
    {BlendFactor::ConstantColor, "ConstantColor"},
    {BlendFactor::OneMinusConstantColor, "OneMinusConstantColor"},
    {BlendFactor::ConstantAlpha, "ConstantAlpha"},
    {BlendFactor::OneMinusConstantAlpha, "OneMinusConstantAlpha"},
    {BlendFactor::SourceAlphaSaturate, "SourceAlphaSaturate"},
});

inline constexpr auto BlendEquationWords = WordTable<BlendEquation::Max>({
    {BlendEquation::FuncAdd, "FuncAdd"},
    {BlendEquation::FuncSubtract, "FuncSubtract"},
    {BlendEquation::FuncReverseSubtract, "FuncReverseSubtract"},
    {BlendEquation::Min, "Min"},
    {BlendEquation::Max, "Max"},
});

inline constexpr auto BlendModeWords = WordTable<BlendMode::Logic>({
    {BlendMode::NotUsed, "NotUsed"},
    {BlendMode::Blend, "Blend"},
    {BlendMode::SeparateBlend, "SeparateBlend"},
    {BlendMode::Logic, "Logic"},
});

inline constexpr auto LogicOperationWords = WordTable<LogicOperation::OrInverted>({
    {LogicOperation::Clear, "Clear"},
    {LogicOperation::Copy, "Copy"},
    {LogicOperation::NoOp, "NoOp"},
    {LogicOperation::Set, "Set"},
    {LogicOperation::CopyInverted, "CopyInverted"},
    {LogicOperation::Invert, "Invert"},
    {LogicOperation::AndReverse, "AndReverse"},
    {LogicOperation::OrReverse, "OrReverse"},
    {LogicOperation::And, "And"},
    {LogicOperation::Or, "Or"},
    {LogicOperation::Nand, "Nand"},
    {LogicOperation::Nor, "Nor"},
    {LogicOperation::Xor, "Xor"},
    {LogicOperation::Equiv, "Equiv"},
    {LogicOperation::AndInverted, "AndInverted"},
    {LogicOperation::OrInverted, "OrInverted"},
});

} // namespace tq4x
