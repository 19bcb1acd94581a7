#pragma once

#include <xsi_status.h>

namespace tq4x
{

/// Lets the user choose two folders and runs the batch command with them. A cancelled page is a success.
XSI::CStatus OpenBatchExport();

} // namespace tq4x
