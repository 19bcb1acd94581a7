#pragma once

#include <xsi_status.h>

namespace tq4x
{

/// Opens the list of all materials of the scene with their render priorities.
XSI::CStatus OpenRenderPriorityList();

} // namespace tq4x
