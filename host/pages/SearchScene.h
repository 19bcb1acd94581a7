#pragma once

#include "pages/AttributePage.h"

namespace tq4x
{

/// The objects, or materials, below and including `root` whose property of the page's type has what the
/// search parameters of `asked` ask for: each once, parents before children, siblings in order. What has no
/// such property is never found, and nothing is if no box is on.
XSI::CRefArray SearchScene(const XSI::CRef& root, const AttributePage& page,
                           const XSI::CustomProperty& asked);

/// True if any box of the page is on.
bool IsAnyBoxOn(const AttributePage& page, const XSI::CustomProperty& property);

} // namespace tq4x
