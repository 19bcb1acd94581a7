#include "material/Material.h"

#include <algorithm>
#include <utility>

namespace tq4x
{
namespace
{

struct BlendPresetRow
{
    tq4x::TranslucencyKind TranslucencyKind;
    tq4x::AlphaTest AlphaTest;
    bool IsMaskEnabled;
    BlendMode Mode;
    BlendParameter RgbParameter;
};

constexpr AlphaTest NoAlphaTest{false, AlphaTestFunction::Always, 0.0f};
constexpr AlphaTest CutOut{true, AlphaTestFunction::Greater, 0.5f};
constexpr BlendParameter Mix{BlendFactor::SourceAlpha, BlendFactor::OneMinusSourceAlpha,
                             BlendEquation::FuncAdd};
constexpr BlendParameter Plus{BlendFactor::SourceAlpha, BlendFactor::One, BlendEquation::FuncAdd};
constexpr BlendParameter Minus{BlendFactor::SourceAlpha, BlendFactor::One,
                               BlendEquation::FuncReverseSubtract};
constexpr BlendParameter Times{BlendFactor::DestinationColor, BlendFactor::Zero, BlendEquation::FuncAdd};

/// By preset. `Multiply` counts as subtractive: it darkens what is behind it.
constexpr std::array<BlendPresetRow, 6> BlendPresetRows{{
    {TranslucencyKind::Opaque, NoAlphaTest, true, BlendMode::NotUsed, Mix},
    {TranslucencyKind::Opaque, CutOut, true, BlendMode::NotUsed, Mix},
    {TranslucencyKind::Translucent, NoAlphaTest, false, BlendMode::Blend, Mix},
    {TranslucencyKind::Additive, NoAlphaTest, false, BlendMode::Blend, Plus},
    {TranslucencyKind::Subtractive, NoAlphaTest, false, BlendMode::Blend, Minus},
    {TranslucencyKind::Subtractive, NoAlphaTest, false, BlendMode::Blend, Times},
}};

const BlendPresetRow* FindRow(BlendPreset preset)
{
    const auto number = static_cast<std::int32_t>(preset);
    const bool isKnown = number >= 0 && static_cast<std::size_t>(number) < BlendPresetRows.size();
    return isKnown ? &BlendPresetRows[static_cast<std::size_t>(number)] : nullptr;
}

bool IsAnimated(const TextureCoordinator& coordinator)
{
    return coordinator.IsTranslateAnimated || coordinator.IsScaleAnimated || coordinator.IsRotateAnimated;
}

} // namespace

void Material::SetBlendPreset(tq4x::BlendPreset preset)
{
    if (preset == BlendPreset)
        return;
    BlendPreset = preset;
    const BlendPresetRow* row = FindRow(preset);
    if (row == nullptr)
        return;
    TranslucencyKind = row->TranslucencyKind;
    FragmentShader.AlphaTest = row->AlphaTest;
    DepthOperation = {};
    DepthOperation.IsMaskEnabled = row->IsMaskEnabled;
    BlendOperation = {};
    BlendOperation.Mode = row->Mode;
    BlendOperation.RgbParameter = row->RgbParameter;
}

std::size_t Material::AddTextureCoordinator(std::int32_t sourceCoordinate, MappingMethod mappingMethod,
                                            std::int32_t referenceCamera, MatrixMode matrixMode, float scaleS,
                                            float scaleT, float rotate, float translateS, float translateT)
{
    TextureCoordinator& coordinator = TextureCoordinators.emplace_back();
    coordinator.SourceCoordinate = sourceCoordinate;
    coordinator.MappingMethod = mappingMethod;
    coordinator.ReferenceCamera = referenceCamera;
    coordinator.MatrixMode = matrixMode;
    coordinator.ScaleS = scaleS;
    coordinator.ScaleT = scaleT;
    coordinator.Rotate = rotate;
    coordinator.TranslateS = translateS;
    coordinator.TranslateT = translateT;
    coordinator.Curves[CoordinatorCurve::Rotate].IsAngle = true;
    return TextureCoordinators.size();
}

std::size_t Material::AddTextureMapper(const std::string& textureName, TextureWrap wrapS, TextureWrap wrapT)
{
    TextureMapper& mapper = TextureMappers.emplace_back();
    mapper.Patterns.emplace(0, textureName);
    mapper.WrapS = wrapS;
    mapper.WrapT = wrapT;
    return TextureMappers.size();
}

TextureCoordinator* Material::TextureCoordinatorAt(std::size_t index)
{
    return index < TextureCoordinators.size() ? &TextureCoordinators[index] : nullptr;
}

TextureMapper* Material::TextureMapperAt(std::size_t index)
{
    return index < TextureMappers.size() ? &TextureMappers[index] : nullptr;
}

bool Material::HasAnimatedMember() const
{
    const auto hasPatterns = [](const TextureMapper& mapper) { return mapper.Patterns.size() > 1; };
    return IsEmissionAnimated || IsAmbientAnimated || IsDiffuseAnimated || IsSpecular0Animated ||
           std::ranges::any_of(TextureCoordinators, IsAnimated) ||
           std::ranges::any_of(TextureMappers, hasPatterns);
}

} // namespace tq4x
