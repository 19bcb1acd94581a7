#pragma once

#include "pipeline/ExportValues.h"

#include <cstdint>

namespace tq4x
{

/// Calls `take(frame)` for each sample of the export's frame window. The frame is a running sum of the
/// single-precision step, not a multiple of it: the rounding of the sum decides whether the last frame is
/// met, so a window may end a sample short.
template<typename Take>
void SampleFrames(const ExportValues& values, Take&& take)
{
    const double step = static_cast<double>(values.FramePrecision);
    for (double frame = values.ExportStartFrame; frame <= values.ExportEndFrame; frame += step)
        take(frame);
}

} // namespace tq4x
