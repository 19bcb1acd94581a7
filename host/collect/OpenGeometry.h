#pragma once

#include <xsi_geometryaccessor.h>
#include <xsi_x3dobject.h>

namespace tq4x
{

/// The triangulated polygon mesh of an object as it was modelled, without subdivision. Where normals part is
/// up to the object's geometry approximation; without one, at edges of more than 60 degrees.
XSI::CGeometryAccessor OpenGeometry(const XSI::X3DObject& object);

} // namespace tq4x
