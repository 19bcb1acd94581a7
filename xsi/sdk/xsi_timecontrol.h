#pragma once

#include <xsi_projectitem.h>

namespace XSI
{

/// How the frames of a clip lie on the frames of the scene.
class TimeControl : public ProjectItem
{
public:
    TimeControl() = default;

    TimeControl(const CRef& ref) : ProjectItem(ref.As(siTimeControlID)) {}

    /// First and last frame of the source that are used; both 0 for a still image.
    double GetClipIn() const;
    double GetClipOut() const;

    /// Source frames per frame of the scene.
    double GetScale() const;

    /// Frame of the scene at which the clip starts.
    double GetStartOffset() const;
};

} // namespace XSI
