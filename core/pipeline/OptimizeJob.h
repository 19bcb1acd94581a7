#pragma once

#include "pipeline/ExportOptions.h"

#include <cstdint>
#include <string>

namespace tq4x
{

/// What the authoring tool is asked to do with the written files.
struct OptimizeJob
{
    bool OptimizeModel = false;     ///< a model file was written
    bool OptimizeAnimation = false; ///< a skeletal animation file was written
    std::int32_t NodeMode = 0;      ///< values of `CompressNode`; 4 when the model is to be flattened
    bool OptimizePrimitive = true;
    bool CompressMaterial = false;
    bool ConvertToModel = false;
    bool Merge = false;
    std::string MergePath; ///< copy of the file to merge with, in the folder for temporary files
    std::string WorkName = "TQ4X_Optimize_"; ///< prefix of that copy's name; exporters set their own
    std::int32_t QuantizePos = 0;            ///< 0 float, 1 short, 3 byte, 5 automatic
    std::int32_t QuantizeNrm = 0;
    std::int32_t QuantizeTex = 0;
};

/// The job that the options ask for.
OptimizeJob MakeOptimizeJob(const ExportOptions& options);

/// True if the tool has something to optimise; merging apart.
bool IsOptimizationAskedFor(const OptimizeJob& job);

/// True if the skeletal animation is loaded beside the model: only the culling of uninfluential nodes needs
/// it.
bool TakesAnimation(const OptimizeJob& job);

} // namespace tq4x
