#pragma once

#include "scene/ExtractChannels.h"

namespace tq4x
{

struct Bone;
struct SkeletalModelWriter;

/// What bringing a model to its final form needs to know.
struct PrepareSettings
{
    ChannelSettings Channels;
    bool IsRigidSkinning = false; ///< single-bone meshes stay on their own node
};

/// Brings the model below a root to the form that the section writers read; called once per export. Without a
/// root the model is empty, which is fine. False if a shape could not be finished.
[[nodiscard]] bool PrepareForWriting(SkeletalModelWriter& content, Bone* root,
                                     const PrepareSettings& settings);

} // namespace tq4x
