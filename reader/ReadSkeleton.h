#pragma once

#include <string>
#include <vector>

#include "ReadValues.h"

namespace tq4x::reader
{

struct Bone
{
    std::string Name;
    std::string ParentName; ///< empty: a root
    int Parent = -1; ///< index into `Skeleton::Bones`, always below the bone's own; -1: none or unknown
    bool IsSegmentScaleCompensate = false;
    bool IsCompressible = true;
    bool IsNeededRendering = false;
    bool HasSkinningMatrix = false; ///< `Local` is the bind pose; else the pose at the first frame
    std::string BillboardMode = "Off";
    std::vector<UserDataItem> UserData;
    Transform Local; ///< relative to the parent
    long Line = 0;
};

/// The hierarchy of a model: parents stand before their children.
struct Skeleton
{
    std::string RootBoneName;
    std::string ScalingRule = "Standard"; ///< "Standard", "Maya", "Softimage"
    std::vector<Bone> Bones;
    long Line = 0;
};

/// The index of the first bone of a name, -1 if there is none.
[[nodiscard]] int FindBone(const Skeleton& skeleton, const std::string& name);

} // namespace tq4x::reader
