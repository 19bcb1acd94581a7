#pragma once

#include "environment/CameraSet.h"
#include "environment/LightSet.h"

#include <string_view>

namespace tq4x
{

class XmlWriter;

/// Writes the content of an environment file: cameras, then lights, without animation.
void WriteEnvironment(const CameraSet& cameras, LightSet& lights, XmlWriter& stream,
                      std::string_view baseName);

} // namespace tq4x
