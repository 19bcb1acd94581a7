#pragma once

#include "pipeline/ExportOptions.h"

namespace tq4x
{

/// The host's time line, in host frames, which count from 0.
struct PlayControl
{
    double GlobalIn = 0.0;
    double GlobalOut = 0.0;
    double In = 0.0;
    double Out = 0.0;
};

/// The host frames that an export samples, both ends included.
struct FrameWindow
{
    double Start = 0.0;
    double End = 0.0;
};

/// The window that the options ask for. The user's range counts from 1, hence each bound loses 1. A range
/// that makes no sense is told by a warning for each fault, and repaired: bounds in the wrong order are
/// swapped, one outside the time line becomes the time line's.
FrameWindow ResolveFrameWindow(const ExportOptions& options, const PlayControl& control);

/// The sampling step that is used for the user's `FramePrecision`: inside 0.1 to 1.0, with one warning that
/// names the value if it was not. A value that is not finite counts as 1.0.
float UsableFramePrecision(float framePrecision);

/// Samples per frame for a usable precision: 1.0 gives 1, 0.5 gives 2, 0.1 gives 10. The tenths are cut, not
/// rounded: 0.7 in single precision is 6 tenths.
int ComputeFrameSteps(float framePrecision);

/// False, with an error that names the window, if sampling it would take more than 1,000,000 samples for each
/// channel or would never end.
[[nodiscard]] bool CheckSampleCount(const FrameWindow& window, float framePrecision);

} // namespace tq4x
