#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tq4x
{

/// What the export command was called with.
struct ExportArguments
{
    std::string OutputFileName;
    std::string OutputFolder;
    std::vector<std::string> Options; ///< `Key:Value` texts
};

/// Every setting of an export. Written by the loaders of its vocabularies only; read by everyone else.
struct ExportOptions
{
    std::string OutputFileName;     ///< base name of every output file, no extension
    std::string OutputFolder;       ///< folder that receives the files
    std::uint32_t ExportTarget = 0; ///< 0 all, 1 selection
    bool MergeQmdl = false;         ///< merge into an existing model file by the tool
    std::string MergeQmdlPath;      ///< path of the model file to merge with
    bool AlwaysOverwrite = false;   ///< skip the overwrite prompt
    bool UseBrellStudio = false;    ///< hand the result to the viewer tool
    float Magnify = 1.0f;           ///< scale applied to positions
    std::uint32_t FrameRange = 0;   ///< 0 all, 1 playback, 2 range
    std::int32_t StartFrame = 1;    ///< first frame of a range, counted from 1
    std::int32_t EndFrame = 9999;   ///< last frame of a range, counted from 1
    bool OutputQmdl = true;         ///< write the model file
    bool OutputQtex = true;         ///< write the texture files
    bool OutputQskla = false;       ///< write the skeletal animation file
    bool OutputQmata = false;       ///< write the material animation file
    bool OutputQlgt = false;        ///< write the light file
    bool OutputQcam = false;        ///< write the camera file
    bool OutputQmdla = false;       ///< write the model animation file
    bool OutputQenv = false;        ///< write the environment file
    std::uint32_t CompressNode =
        0; ///< 0 none, 1 cull, 2 cull uninfluential, 3 unite compressible, 4 unite all
    bool CompressMaterial = false;                ///< merge identical materials
    bool OptimizePrimitive = true;                ///< let the tool optimise primitives
    bool ConvertToModel = false;                  ///< flatten to a model in the tool
    std::uint32_t QuantizePos = 0;                ///< 0 float, 1 short, 3 byte
    std::uint32_t QuantizeNrm = 0;                ///< as above
    std::uint32_t QuantizeTex = 0;                ///< as above
    std::uint32_t AdjustSkinning = 0;             ///< 0 `None`, 1 `RigidSkinning`
    std::uint32_t MeshVisibilityMode = 0;         ///< 0 `BindByIndex`, 1 `BindByName`
    bool NonUniformScale = false;                 ///< skeleton allows non-uniform scale
    std::int32_t MaxReservedUniformRegisters = 0; ///< registers that the user keeps free
    float FramePrecision = 1.0f;                  ///< animation sampling step in frames, as the user gave it
    bool LoopAnim = true;                         ///< animations loop
    bool FrameFormat = false;                     ///< frame-format flag of skeletal animation
    std::int32_t TranslateQuantizeQuality = 9;
    std::int32_t RotateQuantizeQuality = 9;
    std::int32_t ScaleQuantizeQuality = 9;
    float ToleranceTranslate = 0.01f; ///< host units
    float ToleranceRotate = 0.1f;     ///< degrees
    float ToleranceScale = 0.1f;
    float ToleranceTexTranslate = 0.01f;
    float ToleranceTexRotate = 0.1f; ///< degrees
    float ToleranceTexScale = 0.1f;
    float ToleranceColor = 0.001f;
    bool SoftimageInvertVertexColorAlpha = true;
    bool SoftimageIgnoreAmbientTexture = false;

    bool operator==(const ExportOptions&) const = default;

    /// Takes over the arguments of the export command. A text of the list is parted at its first ":"; without
    /// one its value is empty. Keys are compared exactly, unknown ones are passed over, and of several rows
    /// with one key the first in the option table counts. See OptionTable.h for how values are read.
    void LoadFromArguments(const ExportArguments& arguments);
};

/// The live record if one exists, else a record with the defaults: options may be read before an export.
const ExportOptions& CurrentOptions();

/// Destroys the old live record and makes a new one with the defaults, which becomes the live record. Without
/// memory for it: nullptr, with an error in the log, and no live record.
[[nodiscard]] ExportOptions* CreateOptions();

/// The live record, or nullptr.
ExportOptions* LiveOptions();

/// Destroys the live record; the defaults are read from then on.
void DestroyOptions();

} // namespace tq4x
