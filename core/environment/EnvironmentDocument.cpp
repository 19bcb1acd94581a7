#include "environment/EnvironmentDocument.h"

#include "environment/CameraDocument.h"
#include "environment/LightDocument.h"

namespace tq4x
{

void WriteEnvironment(const CameraSet& cameras, LightSet& lights, XmlWriter& stream,
                      std::string_view baseName)
{
    WriteCameras(cameras, stream);
    WriteLights(lights, stream, baseName);
}

} // namespace tq4x
