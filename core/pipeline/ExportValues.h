#pragma once

namespace tq4x
{

struct ExportOptions;

/// Largest differences between a sample and the curve fitted to it, for the channels of nodes.
struct NodeTolerances
{
    float Scale = 0.01f;
    float Rotate = 0.01f;    ///< degrees
    float Translate = 0.01f; ///< host units
};

/// What the driver derives from the options once per export and everything that samples the scene reads.
struct ExportValues
{
    double ExportStartFrame = 0.0; ///< host frames
    double ExportEndFrame = 0.0;   ///< host frames
    float FramePrecision = 1.0f;   ///< sampling step in frames, inside 0.1 to 1.0
    int FrameSteps = 1;            ///< samples per frame; key frames are the sample index divided by it
    bool IsRigidSkinning = false;
    NodeTolerances Tolerances; ///< 0.01 each before the first export
    float LightMagnify = 1.0f;
    float CameraMagnify = 1.0f;
};

/// The process-wide record.
ExportValues& GlobalExportValues();

/// Sets what the sampling of the scene needs: sampling step, samples per frame, rigid skinning. Warns once if
/// the user's precision can't be used as it is.
void SetSamplingValues(ExportValues& values, const ExportOptions& options);

/// Sets what the conversion of samples needs: tolerances of nodes and the scales of lights and cameras.
void SetConversionValues(ExportValues& values, const ExportOptions& options);

} // namespace tq4x
