#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tq4x::test
{

/// How a scene is exported: the options that the comparison needs to know, as the export command takes them.
/// The defaults write all kinds of files.
struct RoundTripSettings
{
    bool WritesTextures = true;
    float Magnify = 1.0f;
    std::optional<std::pair<int, int>> Range; ///< first and last frame, counted from 1; empty: all
    float FramePrecision = 1.0f;              ///< of the sampling, in frames
    std::string QuantizePos = "Float";        ///< "Float", "Short", "Byte"
    std::string QuantizeNrm = "Float";
    std::string QuantizeTex = "Float";
    int CompressNode = 0;
    bool CompressMaterial = false;
    bool OptimizePrimitive = false;
    bool ConvertToModel = false;
    bool IsRigidSkinning = false;
    bool BindsByName = false; ///< visibility of meshes
    bool NonUniformScale = false;
    bool BakesAll = true;
    bool IsLoop = true;
    bool InvertsColorAlpha = true;
    bool IgnoresAmbientTexture = false;
    float ToleranceTranslate = 0.01f;
    float ToleranceRotate = 0.1f; ///< degrees
    float ToleranceScale = 0.1f;
    float ToleranceTexTranslate = 0.01f;
    float ToleranceTexRotate = 0.1f; ///< degrees
    float ToleranceTexScale = 0.1f;
    float ToleranceColor = 0.001f;

    /// The authoring tool is asked for: streams are left to it unquantised.
    bool AsksForTool() const
    {
        return CompressNode != 0 || CompressMaterial || OptimizePrimitive || ConvertToModel;
    }

    /// The texts of the export command.
    std::vector<std::string> Options() const;
};

} // namespace tq4x::test
