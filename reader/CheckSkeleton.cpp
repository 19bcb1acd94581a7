#include <string>
#include <unordered_set>

#include "CheckSections.h"

namespace tq4x::reader
{

void CheckSkeleton(const Skeleton& skeleton, FindingList& findings)
{
    if (!skeleton.Bones.empty() && skeleton.RootBoneName != skeleton.Bones.front().Name) {
        findings.Error("TQ-REF-ROOT", skeleton.Line,
                       "RootBoneName \"" + skeleton.RootBoneName + "\" is not the first bone, \"" +
                           skeleton.Bones.front().Name + "\".");
    }
    std::unordered_set<std::string> names;
    for (const Bone& bone : skeleton.Bones) {
        if (!bone.ParentName.empty() && bone.Parent < 0) {
            const bool isLater = FindBone(skeleton, bone.ParentName) >= 0;
            findings.Error("TQ-REF-PARENT", bone.Line,
                           "The parent \"" + bone.ParentName + "\" of bone \"" + bone.Name + "\" " +
                               (isLater ? "does not stand before it." : "does not exist."));
        }
        if (bone.ParentName.empty() && &bone != &skeleton.Bones.front()) {
            findings.Error("TQ-REF-PARENT", bone.Line, "Bone \"" + bone.Name + "\" is a second root.");
        }
        if (!names.insert(bone.Name).second) {
            findings.Warning("TQ-NAME-REPEAT", bone.Line,
                             "The bone name \"" + bone.Name + "\" stands twice.");
        }
    }
}

} // namespace tq4x::reader
