#pragma once

#include <xsi_ref.h>

#include <vector>

namespace tq4x
{

struct ExportContext;

/// What an export begins with: the selected objects in selection order, or the children of the scene root.
std::vector<XSI::CRef> CollectRoots(bool selectionOnly);

/// Number of objects that a walk from a root meets.
std::size_t CountNodes(const XSI::CRef& root);

/// Visits an object and everything below it with the collector factory, parents first, children in host
/// order; an instance of a model shows the children of its master. A refused object cuts its branch and is a
/// success. The bar advances by one for each object.
bool WalkScene(ExportContext& context, const XSI::CRef& root);

} // namespace tq4x
