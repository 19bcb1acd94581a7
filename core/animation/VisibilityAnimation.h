#pragma once

#include "animation/AnimationDocument.h"

namespace tq4x
{

struct SkeletalModelWriter;

/// Writes the content of a model animation file: `Animations` with the visibility of meshes (bound by index)
/// or of mesh nodes (bound by name), or nothing if no member would be written. Needs a model after
/// `PrepareForWriting`.
void WriteVisibilityAnimation(const SkeletalModelWriter& content, XmlWriter& stream,
                              const AnimationRange& range);

} // namespace tq4x
