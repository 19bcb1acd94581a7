#include "RandomSettings.h"

namespace tq4x::test
{

RoundTripSettings DrawSettings(RandomDraw& draw, int first, int last)
{
    RoundTripSettings settings;
    settings.Magnify = draw.Of<float>({1.0f, 1.0f, 0.5f, 2.0f, 10.0f});
    if (draw.Chance(30)) {
        const int begin = draw.Int(first, last);
        settings.Range = {begin + 1, draw.Int(begin, last) + 1}; // options count from 1
    }
    settings.FramePrecision = draw.Of<float>({1.0f, 1.0f, 0.5f, 0.2f, 0.1f});
    const std::vector<std::string> modes = {"Float", "Short", "Byte"};
    settings.QuantizePos = draw.Of(modes);
    settings.QuantizeNrm = draw.Of(modes);
    settings.QuantizeTex = draw.Of(modes);
    settings.CompressNode = draw.Chance(15) ? draw.Int(1, 4) : 0;
    settings.CompressMaterial = draw.Chance(10);
    settings.OptimizePrimitive = draw.Chance(10);
    settings.ConvertToModel = draw.Chance(10);
    settings.IsRigidSkinning = draw.Chance(50);
    settings.BindsByName = draw.Chance(50);
    settings.NonUniformScale = draw.Chance(30);
    settings.BakesAll = draw.Chance(50);
    settings.IsLoop = draw.Chance(50);
    settings.InvertsColorAlpha = draw.Chance(70);
    settings.IgnoresAmbientTexture = draw.Chance(30);
    const std::vector<float> tolerances = {0.01f, 0.001f, 0.1f, 0.0f};
    settings.ToleranceTranslate = draw.Of(tolerances);
    settings.ToleranceRotate = draw.Of(tolerances);
    settings.ToleranceScale = draw.Of(tolerances);
    settings.ToleranceTexTranslate = draw.Of(tolerances);
    settings.ToleranceTexRotate = draw.Of(tolerances);
    settings.ToleranceTexScale = draw.Of(tolerances);
    settings.ToleranceColor = draw.Of(tolerances);
    return settings;
}

} // namespace tq4x::test
