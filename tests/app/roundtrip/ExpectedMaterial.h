#pragma once

#include "Approx.h"
#include "HostScene.h"

#include <array>

namespace tq4x::test
{

using ApproxColor = std::array<Approx, 4>;

/// Colours of a material at a frame, as its shader tells them.
struct ExpectedColors
{
    ApproxColor Emission = {};
    ApproxColor Ambient = {};
    ApproxColor Diffuse = {};
    ApproxColor Specular0 = {};
};

/// `start` is the export's first frame: colours that are not sampled stay as they are there.
ExpectedColors ColorsAt(const HostMaterial& material, double frame, double start);

/// Whether light shines through the material at one of the frames, by its shader.
bool IsTranslucent(const HostMaterial& material, const std::vector<SampledFrame>& frames);

/// How a coordinate set is laid on: scales, turn in radians, place.
struct ExpectedProjection
{
    Approx ScaleS{1.0, 0.0};
    Approx ScaleT{1.0, 0.0};
    Approx Rotate;
    Approx TranslateS;
    Approx TranslateT;
};

/// The number of a stage's coordinate set on all meshes that use the material; nothing if they disagree.
std::optional<int> CommonSetNumber(const HostScene& host, const HostMaterial& material,
                                   const HostStage& stage);

/// Of the first mesh that uses the material; plain without a common number.
ExpectedProjection ProjectionAt(const HostScene& host, const HostMaterial& material, const HostStage& stage,
                                double frame);

} // namespace tq4x::test
