#pragma once

#include <xsi_status.h>

namespace tq4x
{

/// Lets the user change what the plug-in remembers between sessions, and stores it.
XSI::CStatus OpenPreferencesDialog();

} // namespace tq4x
