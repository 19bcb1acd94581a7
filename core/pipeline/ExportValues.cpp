#include "pipeline/ExportValues.h"

#include "pipeline/ExportOptions.h"
#include "pipeline/FrameWindow.h"

namespace tq4x
{
namespace
{

constexpr std::uint32_t RigidSkinning = 1; // of `AdjustSkinning`

} // namespace

ExportValues& GlobalExportValues()
{
    static ExportValues values;
    return values;
}

void SetSamplingValues(ExportValues& values, const ExportOptions& options)
{
    values.FramePrecision = UsableFramePrecision(options.FramePrecision);
    values.FrameSteps = ComputeFrameSteps(values.FramePrecision);
    values.IsRigidSkinning = options.AdjustSkinning == RigidSkinning;
}

void SetConversionValues(ExportValues& values, const ExportOptions& options)
{
    values.Tolerances = {options.ToleranceScale, options.ToleranceRotate, options.ToleranceTranslate};
    values.LightMagnify = options.Magnify;
    values.CameraMagnify = options.Magnify;
}

} // namespace tq4x
