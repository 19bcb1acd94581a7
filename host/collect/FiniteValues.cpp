#include "collect/FiniteValues.h"

#include "collect/ReadMeshAttributes.h"
#include "environment/Camera.h"
#include "environment/Light.h"
#include "material/Material.h"
#include "scene/Bone.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tq4x
{
namespace
{

bool IsFinite(float value)
{
    return std::isfinite(value);
}

bool IsFinite(const Vector2& vector)
{
    return std::isfinite(vector.X) && std::isfinite(vector.Y);
}

bool IsFinite(const Vector3& vector)
{
    return std::isfinite(vector.X) && std::isfinite(vector.Y) && std::isfinite(vector.Z);
}

bool IsFinite(const Vector4& vector)
{
    return std::isfinite(vector.X) && std::isfinite(vector.Y) && std::isfinite(vector.Z) &&
           std::isfinite(vector.W);
}

bool IsFinite(const Color& color)
{
    return std::isfinite(color.R) && std::isfinite(color.G) && std::isfinite(color.B) &&
           std::isfinite(color.A);
}

template<typename List>
bool AreAllFinite(const List& values)
{
    return std::all_of(values.begin(), values.end(), [](const auto& value) { return IsFinite(value); });
}

template<typename Curves>
bool AreSamplesFinite(const Curves& curves)
{
    return std::all_of(curves.begin(), curves.end(),
                       [](const AnimationCurve& curve) { return AreAllFinite(curve.Samples); });
}

} // namespace

bool AreFinite(const Bone& bone)
{
    bool isFinite = true;
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            isFinite = isFinite && std::isfinite(bone.BindMatrix(row, column));
    return isFinite && AreSamplesFinite(bone.ScaleCurves) && AreSamplesFinite(bone.RotateCurves) &&
           AreSamplesFinite(bone.TranslateCurves);
}

bool AreFinite(const Camera& camera)
{
    const std::array numbers = {camera.Twist,       camera.Near, camera.Far,
                                camera.AspectRatio, camera.Fovy, camera.Height};
    return AreAllFinite(numbers) && IsFinite(camera.Scale) && IsFinite(camera.Rotate) &&
           IsFinite(camera.Translate) && IsFinite(camera.TargetPosition) && IsFinite(camera.UpwardVector) &&
           AreSamplesFinite(camera.Curves);
}

bool AreFinite(const Light& light)
{
    return IsFinite(light.Translate) && IsFinite(light.Direction) && IsFinite(light.Ambient) &&
           IsFinite(light.Diffuse) && IsFinite(light.Specular0) && IsFinite(light.Specular1) &&
           AreSamplesFinite(light.Curves);
}

bool AreFinite(const Material& material)
{
    const std::array colors = {material.Emission, material.Ambient, material.Diffuse, material.Specular0};
    const auto isFinite = [](const TextureCoordinator& coordinator) {
        const std::array numbers = {coordinator.ScaleS, coordinator.ScaleT, coordinator.Rotate,
                                    coordinator.TranslateS, coordinator.TranslateT};
        return AreAllFinite(numbers) && AreSamplesFinite(coordinator.Curves);
    };
    return AreAllFinite(colors) && std::isfinite(material.SpecularExponent) &&
           AreSamplesFinite(material.ColorCurves) &&
           std::all_of(material.TextureCoordinators.begin(), material.TextureCoordinators.end(), isFinite);
}

bool AreFinite(const MeshAttributes& attributes)
{
    const bool areUserAttributesFinite = std::all_of(
        attributes.UserAttributes.begin(), attributes.UserAttributes.end(),
        [](const std::optional<UserAttribute>& each) { return !each || AreAllFinite(each->Values); });
    const bool areCoordinatesFinite =
        std::all_of(attributes.CoordinateSets.begin(), attributes.CoordinateSets.end(),
                    [](const auto& set) { return AreAllFinite(set.second.Values); });
    return areUserAttributesFinite && areCoordinatesFinite && AreAllFinite(attributes.Positions) &&
           AreAllFinite(attributes.Normals) && AreAllFinite(attributes.Colors);
}

} // namespace tq4x
