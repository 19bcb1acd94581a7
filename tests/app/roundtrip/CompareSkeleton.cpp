#include "Compare.h"
#include "Deviations.h"

#include <gtest/gtest.h>

namespace tq4x::test
{
namespace
{

void CompareMatrix(Deviation& turned, Deviation& moved, const ApproxMatrix& written,
                   const ApproxMatrix& wanted, float magnify, const std::string& place)
{
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            Check(turned, written[row][column], wanted[row][column], place);
    for (std::size_t column = 0; column < 3; ++column)
        Check(moved, written[3][column], wanted[3][column] * Approx{magnify, 0.0}, place);
}

/// What a reader makes of the local transforms of a skeleton.
std::vector<ApproxMatrix> WorldsOf(const reader::Skeleton& skeleton)
{
    const bool isHierarchical = skeleton.ScalingRule == "Softimage";
    std::vector<ApproxMatrix> worlds;
    for (const reader::Bone& bone : skeleton.Bones) {
        const ApproxMatrix local = Compose(PrintedTransform(bone.Local));
        worlds.push_back(bone.Parent < 0
                             ? local
                             : ToWorld(local, worlds[static_cast<std::size_t>(bone.Parent)], isHierarchical));
    }
    return worlds;
}

void CompareBone(const RoundTrip& trip, std::size_t number, const reader::Bone& bone,
                 const ApproxMatrix& world)
{
    const HostNode& node = trip.Host.Nodes[number];
    const ExpectedBone& wanted = trip.Skeleton.Bones[number];
    const std::string parent = node.Parent >= 0 ? trip.Host.Nodes[static_cast<std::size_t>(node.Parent)].Name
                               : number == 0 || !trip.Host.SyntheticRoot.empty()
                                   ? trip.Host.SyntheticRoot
                                   : trip.Host.Nodes.front().Name;
    static Deviation& words = DeviationOf("node hierarchy");
    CheckEqual(words, bone.ParentName, parent, node.Name + ", parent");
    CheckEqual(words, bone.HasSkinningMatrix, wanted.HasBind, node.Name + ", bind pose");
    static Deviation& turned = DeviationOf("node local axes");
    static Deviation& moved = DeviationOf("node local place");
    const float magnify = trip.Settings.Magnify;
    CompareMatrix(turned, moved, Compose(PrintedTransform(bone.Local)), wanted.Local, magnify, node.Name);
    static Deviation& worldTurned = DeviationOf("bind pose world axes");
    static Deviation& worldMoved = DeviationOf("bind pose world place");
    if (wanted.IsBindKept)
        CompareMatrix(worldTurned, worldMoved, world, WithErrorsOf(wanted.Bind, wanted.World), magnify,
                      node.Name);
}

} // namespace

void CompareSkeleton(const RoundTrip& trip)
{
    const reader::Skeleton& skeleton = trip.Written.Model.Bones;
    static Deviation& words = DeviationOf("node hierarchy");
    const bool hasMadeRoot = !trip.Host.SyntheticRoot.empty();
    CheckEqual(words, skeleton.Bones.size(), trip.Host.Nodes.size() + (hasMadeRoot ? 1 : 0),
               "count of nodes");
    CheckEqual(words, skeleton.ScalingRule, trip.Skeleton.IsHierarchical ? "Softimage" : "Standard",
               "scaling rule");
    const std::vector<ApproxMatrix> worlds = WorldsOf(skeleton);
    for (std::size_t number = 0; number < trip.Host.Nodes.size(); ++number) {
        const std::string& name = trip.Host.Nodes[number].Name;
        const int bone = reader::FindBone(skeleton, name);
        if (CheckEqual(words, bone >= 0, true, name))
            CompareBone(trip, number, skeleton.Bones[static_cast<std::size_t>(bone)],
                        worlds[static_cast<std::size_t>(bone)]);
    }
}

} // namespace tq4x::test
