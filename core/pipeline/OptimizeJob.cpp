#include "pipeline/OptimizeJob.h"

#include "pipeline/ExportChecks.h"

namespace tq4x
{
namespace
{

constexpr std::int32_t CullUninfluential = 2;
constexpr std::int32_t UniteAll = 4;

} // namespace

OptimizeJob MakeOptimizeJob(const ExportOptions& options)
{
    OptimizeJob job;
    job.OptimizeModel = options.OutputQmdl;
    job.OptimizeAnimation = options.OutputQskla;
    job.NodeMode = options.ConvertToModel ? UniteAll : static_cast<std::int32_t>(options.CompressNode);
    job.OptimizePrimitive = options.OptimizePrimitive;
    job.CompressMaterial = options.CompressMaterial;
    job.ConvertToModel = options.ConvertToModel;
    job.Merge = options.MergeQmdl;
    job.WorkName = MergeCopyPrefix;
    job.MergePath = MergeTemporaryPath(options.MergeQmdlPath, job.WorkName).value_or("");
    job.QuantizePos = static_cast<std::int32_t>(options.QuantizePos);
    job.QuantizeNrm = static_cast<std::int32_t>(options.QuantizeNrm);
    job.QuantizeTex = static_cast<std::int32_t>(options.QuantizeTex);
    return job;
}

bool IsOptimizationAskedFor(const OptimizeJob& job)
{
    return job.NodeMode != 0 || job.OptimizePrimitive || job.CompressMaterial || job.ConvertToModel;
}

bool TakesAnimation(const OptimizeJob& job)
{
    return job.OptimizeAnimation && job.NodeMode == CullUninfluential;
}

} // namespace tq4x
