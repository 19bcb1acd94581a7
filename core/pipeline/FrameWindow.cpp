#include "pipeline/FrameWindow.h"

#include "pipeline/MessageLog.h"
#include "pipeline/NumberText.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tq4x
{
namespace
{

constexpr float FinestPrecision = 0.1f;
constexpr float CoarsestPrecision = 1.0f;
constexpr double MaxSamples = 1000000.0; // of one channel

enum FrameRangeValue : std::uint32_t
{
    RangePlayback = 1,
    RangeFrames = 2,
};

FrameWindow RepairRange(FrameWindow window, const PlayControl& control)
{
    if (window.End < window.Start) {
        PrintMessage("Start frame is bigger than End frame", Severity::Warning);
        std::swap(window.Start, window.End);
    }
    if (control.GlobalOut < window.Start) {
        PrintMessage("Start frame is wrong", Severity::Warning);
        window.Start = control.GlobalIn;
    }
    if (window.End < control.GlobalIn) {
        PrintMessage("End frame is wrong", Severity::Warning);
        window.End = control.GlobalOut;
    }
    return window;
}

template<typename Number>
std::string Text(Number number)
{
    std::string text;
    AppendNumber(text, number);
    return text;
}

} // namespace

FrameWindow ResolveFrameWindow(const ExportOptions& options, const PlayControl& control)
{
    if (options.FrameRange == RangePlayback)
        return {control.In, control.Out};
    if (options.FrameRange == RangeFrames)
        return RepairRange({options.StartFrame - 1.0, options.EndFrame - 1.0}, control);
    return {control.GlobalIn, control.GlobalOut};
}

float UsableFramePrecision(float framePrecision)
{
    if (framePrecision >= FinestPrecision && framePrecision <= CoarsestPrecision)
        return framePrecision;
    PrintMessage("Frame precision is wrong(" + Text(framePrecision) + ").", Severity::Warning);
    return std::isfinite(framePrecision) ? std::clamp(framePrecision, FinestPrecision, CoarsestPrecision)
                                         : CoarsestPrecision;
}

int ComputeFrameSteps(float framePrecision)
{
    return 10 / static_cast<int>(static_cast<double>(framePrecision) * 10.0);
}

bool CheckSampleCount(const FrameWindow& window, float framePrecision)
{
    const double step = framePrecision;
    const double samples = std::abs(window.End - window.Start) / step + 1.0;
    // Far from zero a step is lost in rounding, and the running sum would stand still.
    const bool advances = window.Start + step > window.Start && window.End + step > window.End;
    if (advances && samples <= MaxSamples)
        return true;
    PrintMessage("Frame window is too long(" + Text(window.Start) + " to " + Text(window.End) + ").",
                 Severity::Error);
    return false;
}

} // namespace tq4x
