#include <unordered_map>

#include "ParseSections.h"

namespace tq4x::reader
{
namespace
{

Bone ParseBone(const ElementReader& element)
{
    Bone bone;
    bone.Name = element.Text("Name");
    bone.ParentName = element.Text("ParentBoneName");
    bone.IsSegmentScaleCompensate = element.Boolean("IsSegmentScaleCompensate");
    bone.IsCompressible = element.Boolean("IsCompressible");
    bone.IsNeededRendering = element.Boolean("IsNeededRendering");
    bone.HasSkinningMatrix = element.Boolean("HasSkinningMatrix");
    bone.BillboardMode = element.Text("BillboardMode");
    bone.UserData = ReadUserData(element);
    bone.Local = ReadTransform(element.Child("Transform"));
    bone.Line = element.Line();
    return bone;
}

} // namespace

Skeleton ParseSkeleton(const ElementReader& element)
{
    Skeleton skeleton;
    skeleton.RootBoneName = element.Text("RootBoneName");
    skeleton.ScalingRule = element.Text("ScalingRule");
    skeleton.Line = element.Line();
    std::unordered_map<std::string, int> places;
    for (const ElementReader& child : element.Child("Bones").Children("Bone")) {
        Bone& bone = skeleton.Bones.emplace_back(ParseBone(child));
        const auto parent = places.find(bone.ParentName);
        bone.Parent = bone.ParentName.empty() || parent == places.end() ? -1 : parent->second;
        places.emplace(bone.Name, static_cast<int>(skeleton.Bones.size() - 1));
    }
    return skeleton;
}

int FindBone(const Skeleton& skeleton, const std::string& name)
{
    for (std::size_t i = 0; i < skeleton.Bones.size(); ++i) {
        if (skeleton.Bones[i].Name == name) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

} // namespace tq4x::reader
