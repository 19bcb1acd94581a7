#pragma once

#include <xsi_status.h>

namespace tq4x
{

/// Opens the list of user data of the selected object, cluster or material. With any other number of objects
/// selected than one the page opens on the scene root's own property and edits nothing.
XSI::CStatus OpenUserDataPage();

} // namespace tq4x
