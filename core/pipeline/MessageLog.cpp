#include "pipeline/MessageLog.h"

#include <array>
#include <utility>

namespace tq4x
{
namespace
{

constexpr std::int32_t FirstWarning = 25;

constexpr std::array<std::string_view, 57> MessageTexts = {
    "BrellStudio cannot be found",
    "Can't get texture size",
    "Can't open file",
    "Failed to start BrellStudio",
    "Holed polygon exists",
    "Influence object is not outputted",
    "Multiple bind poses are not supported",
    "No effective node",
    "No output file",
    "No shading group",
    "Node for Output File Name is not selected",
    "Output File Name is wrong",
    "Output Folder is wrong",
    "Same user attribute exists",
    "Texture image name is wrong",
    "Texture size is wrong",
    "TGA file is wrong",
    "The number of composite texture is over 3",
    "UV linking is not identical",
    "Vertex number is different from original mesh",
    "Wrong weighted vertices exist",
    "Polygon bone size is over",
    "Max Reserved Uniform Registers is wrong",
    "Internal Error",
    "Path of qmdl file to merge is wrong",
    "Unknown Error",
    "Animation curve or expression is not connected to frame extension",
    "Can't export NURBS surface",
    "Can't export Subdivision surface",
    "Can't get UV",
    "Deformer is not effective",
    "File texture is not connected",
    "Frame offset is not zero",
    "Inherits transform of non-skinned object is off",
    "Material name is changed",
    "No shader",
    "Node name is changed",
    "Output File Name is changed",
    "Procedural texture is ignored",
    "Projection mapping is not supported",
    "PSD file texture is ignored",
    "Shader is not supported",
    "Shear is not zero",
    "Stencil mapping is not supported",
    "Texture file for texture pattern animation is not found",
    "Texture name is changed",
    "There are multiple shape",
    "There are multiple texture files with the same name",
    "Zero normal exist",
    "Texture file doesn't exist",
    "Texture type is not supported",
    "Texture format is not supported",
    "The number of composite texture is over 3", // fatal as 17, a warning here
    "Map channel does not exist",
    "Optimization failed",
    "Can't get UV data for generating the tangent",
    "Billboard Type is ignored if 'Convert To Model' option is ON",
};

std::string_view TextOf(std::int32_t code)
{
    const bool isKnown = code >= 0 && code < static_cast<std::int32_t>(MessageTexts.size());
    return isKnown ? MessageTexts[static_cast<std::size_t>(code)] : "Unknown Error";
}

} // namespace

MessageLog& MessageLog::Instance()
{
    static MessageLog log;
    return log;
}

LogResult MessageLog::Print(const std::string& text, Severity severity) const
{
    if (m_callback == nullptr)
        return {1, "Loggin callback is NULL."};
    return m_callback(text, severity);
}

LogResult MessageLog::Report(MessageCode code, std::string detail) const
{
    const auto number = static_cast<std::int32_t>(code);
    std::string text{TextOf(number)};
    if (!detail.empty())
        text += "(" + std::exchange(detail, {}) + ")";
    return Print(text, number < FirstWarning ? Severity::Error : Severity::Warning);
}

void PrintMessage(const std::string& text, Severity severity)
{
    static_cast<void>(MessageLog::Instance().Print(text, severity));
}

void ReportMessage(MessageCode code, std::string detail)
{
    static_cast<void>(MessageLog::Instance().Report(code, std::move(detail)));
}

} // namespace tq4x
