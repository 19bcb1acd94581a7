#pragma once

#include "HostScene.h"
#include "RoundTripSettings.h"

#include <vector>

namespace tq4x::test
{

/// A node's poses as the files should hold them, unmagnified.
struct ExpectedBone
{
    bool HasBind = false;
    ApproxMatrix Bind;  ///< in the world; identity for a node without a bind pose
    ApproxMatrix Local; ///< relative to the parent: of the bind pose, or at the first frame
    ApproxMatrix World; ///< what a reader makes of the local poses

    /// The pose into which skins and meshes are stored.
    bool IsBindKept = false; ///< `World` is `Bind`: no parent moved before the first frame, no shear was lost
};

/// By number of the host's nodes.
struct ExpectedSkeleton
{
    bool IsHierarchical = false; ///< scales multiply along the axes of each node
    std::vector<ExpectedBone> Bones;
};

ExpectedSkeleton ExpectSkeleton(const HostScene& host);

} // namespace tq4x::test
