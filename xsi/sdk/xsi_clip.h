#pragma once

#include <xsi_projectitem.h>
#include <xsi_timecontrol.h>

namespace XSI
{

/// A stretch of media on the time line.
class Clip : public ProjectItem
{
public:
    Clip() = default;

    Clip(const CRef& ref) : ProjectItem(ref.As(siClipID)) {}

    TimeControl GetTimeControl() const;
};

} // namespace XSI
