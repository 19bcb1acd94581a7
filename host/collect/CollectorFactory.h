#pragma once

#include "collect/CollectorKey.h"

#include <xsi_ref.h>

namespace tq4x
{

struct ExportContext;

/// Makes the collector that fits an object, and for a mesh those of its materials; does nothing if the object
/// has one already. False for an object that can't be exported (NURBS, subdivision surfaces), with a message:
/// the branch below it is left out too.
bool VisitObject(ExportContext& context, const XSI::CRef& object, bool insideInstance,
                 const InstancePath& instances);

} // namespace tq4x
