#pragma once

#include <xsi_decl.h>

namespace XSI::Host
{

/// True if a class is the other one or derived from it. siUnknownClassID is derived from nothing.
bool IsDerived(siClassID classId, siClassID base);

} // namespace XSI::Host
