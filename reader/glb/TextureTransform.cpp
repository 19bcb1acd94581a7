#include "glb/TextureTransform.h"

#include <cmath>

namespace tq4x::reader
{

TextureTransform ComputeTextureTransform(const TextureCoordinator& coordinator)
{
    const double s = coordinator.ScaleS;
    const double t = coordinator.ScaleT;
    const double sine = std::sin(static_cast<double>(coordinator.Rotate));
    const double cosine = std::cos(static_cast<double>(coordinator.Rotate));
    const double moveS = coordinator.TranslateS;
    const double moveT = 1 - static_cast<double>(coordinator.TranslateT); // seen from the top
    TextureTransform transform;
    // Exact for scales of one size and for quarter turns, which swap them. A mirror turns the turn round.
    const double side = s * t < 0 ? -1 : 1;
    transform.Rotation = -side * static_cast<double>(coordinator.Rotate);
    transform.Scale = {s * cosine * cosine + side * t * sine * sine,
                       side * s * sine * sine + t * cosine * cosine};
    transform.Offset = {s * (sine * moveT - cosine * moveS), 1 - t * (sine * moveS + cosine * moveT)};
    constexpr double Tolerance = 1e-4; // of a texture's side
    transform.IsExact = std::abs((std::abs(s) - std::abs(t)) * sine * cosine) <= Tolerance;
    return transform;
}

} // namespace tq4x::reader
