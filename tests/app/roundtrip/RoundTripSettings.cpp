#include "RoundTripSettings.h"

#include <charconv>

namespace tq4x::test
{
namespace
{

std::string Text(float number)
{
    char digits[32];
    return std::string(digits, std::to_chars(digits, digits + sizeof(digits), number).ptr);
}

std::string Text(bool flag)
{
    return flag ? "true" : "false";
}

} // namespace

std::vector<std::string> RoundTripSettings::Options() const
{
    std::vector<std::string> options;
    const auto add = [&](const char* key, const std::string& value) {
        options.push_back(key + (":" + value));
    };
    for (const char* kind :
         {"OutputQskla", "OutputQmata", "OutputQmdla", "OutputQcam", "OutputQlgt", "OutputQenv"})
        add(kind, "true");
    add("OutputQtex", Text(WritesTextures));
    add("Magnify", Text(Magnify));
    if (Range) {
        add("FrameRange", "Range");
        add("StartFrame", std::to_string(Range->first));
        add("EndFrame", std::to_string(Range->second));
    }
    add("FramePrecision", Text(FramePrecision));
    add("QuantizePos", QuantizePos);
    add("QuantizeNrm", QuantizeNrm);
    add("QuantizeTex", QuantizeTex);
    add("NodeCompression", std::to_string(CompressNode));
    add("MaterialCompression", CompressMaterial ? "1" : "0");
    add("OptimizePrimitive", Text(OptimizePrimitive));
    add("ConvertToModel", Text(ConvertToModel));
    add("AdjustSkinning", IsRigidSkinning ? "1" : "0");
    add("MeshVisibilityMode", BindsByName ? "1" : "0");
    add("NonUniformScale", Text(NonUniformScale));
    add("BakeAllAnim", Text(BakesAll));
    add("LoopAnim", Text(IsLoop));
    add("InvertVertexColorAlpha", Text(InvertsColorAlpha));
    add("IgnoreAmbientTexture", Text(IgnoresAmbientTexture));
    add("ToleranceTranslate", Text(ToleranceTranslate));
    add("ToleranceRotate", Text(ToleranceRotate));
    add("ToleranceScale", Text(ToleranceScale));
    add("ToleranceTexTranslate", Text(ToleranceTexTranslate));
    add("ToleranceTexRotate", Text(ToleranceTexRotate));
    add("ToleranceTexScale", Text(ToleranceTexScale));
    add("ToleranceColor", Text(ToleranceColor));
    return options;
}

} // namespace tq4x::test
