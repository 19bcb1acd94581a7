#include <algorithm>
#include <cmath>

#include "glb/AddMaterials.h"

namespace tq4x::reader
{
namespace
{

/// Of surfaces that are no metal, seen straight on.
constexpr double DielectricReflectance = 0.04;

double MeanOf(const Color& color)
{
    return (static_cast<double>(color[0]) + static_cast<double>(color[1]) + static_cast<double>(color[2])) /
           3;
}

/// The power n of a table of (i / 256)ⁿ, from where it passes one half, or from its end. Nothing for a table
/// of another kind.
std::optional<double> PowerOf(const LookupTable& table)
{
    constexpr int Last = 255;
    constexpr double Steps = 256;
    for (int i = 1; i <= Last && table.IsGeneratedAsAbs; ++i) {
        const double value =
            static_cast<double>(EvaluateCurve(table.Values, static_cast<float>(i)).value_or(0));
        const bool isUsable = value > 0 && value < 1;
        if (isUsable && (value >= 0.5 || i == Last)) {
            return std::log(value) / std::log(i / Steps);
        }
    }
    return std::nullopt;
}

} // namespace

SurfaceFinish ComputeFinish(const Material& material, const LookupTableSet& tables)
{
    const LookupTableSampler& sampler = material.Shader.Distribution0;
    const double specular = MeanOf(material.Specular0);
    if (!material.Shader.IsDistribution0Enabled || !sampler.HasTable || !(specular > 0)) {
        return {};
    }
    SurfaceFinish finish;
    const double range = MeanOf(material.Diffuse) - DielectricReflectance;
    constexpr double LeastRange = 0.01; // below, highlights of metals and others are the same
    if (range > LeastRange) {
        finish.Metallic = std::clamp((specular - DielectricReflectance) / range, 0.0, 1.0);
    }
    const auto table = std::ranges::find(tables.Tables, sampler.TableName, &LookupTable::Name);
    const std::optional<double> power = table == tables.Tables.end() ? std::nullopt : PowerOf(*table);
    if (power) {
        finish.Roughness = std::clamp(std::pow(2 / (*power + 2), 0.25), 0.0, 1.0);
    }
    return finish;
}

} // namespace tq4x::reader
