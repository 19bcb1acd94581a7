#pragma once

#include "environment/CameraSet.h"

namespace tq4x
{

class XmlWriter;

/// Writes a `Camera` element at the writer's level.
void WriteCamera(const Camera& camera, XmlWriter& stream);

/// Writes the `CameraAnimationData` of a finished camera at the writer's level.
void WriteCameraAnimation(const Camera& camera, XmlWriter& stream, std::int32_t frameSize, bool isLoop);

/// Writes `Cameras` at level 2, sorted by name; nothing for an empty set.
void WriteCameras(const CameraSet& set, XmlWriter& stream);

/// Writes `Animations` at level 2 with the cameras that move, in list order; nothing if none does. Needs
/// finished cameras.
void WriteCameraAnimations(const CameraSet& set, XmlWriter& stream);

} // namespace tq4x
