#include "ExpectedSkeleton.h"

namespace tq4x::test
{
namespace
{

/// Equal as far as the numbers are known, and known well enough to tell.
bool AreSame(const ApproxMatrix& a, const ApproxMatrix& b)
{
    constexpr double wellKnown = 1e-3; // of a number's size
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 3; ++column) {
            const double bound = BoundOf(a[row][column], b[row][column]);
            const bool isKnown = bound <= wellKnown * (1.0 + std::abs(b[row][column].Value));
            if (!isKnown || Distance(a[row][column], b[row][column]) > bound)
                return false;
        }
    return true;
}

class SkeletonBuilder
{
public:
    SkeletonBuilder(const HostScene& host, ExpectedSkeleton& skeleton) : m_host(host), m_skeleton(skeleton) {}

    /// Parents stand before their children.
    void Build()
    {
        for (const HostNode& node : m_host.Nodes)
            Add(node);
    }

private:
    void Add(const HostNode& node)
    {
        const bool isHierarchical = IsHierarchical(node.Object);
        const ApproxMatrix first = NarrowedMatrix(LocalAt(node.Object, m_host.Frames.front().Host));
        m_sampledWorlds.push_back(
            ToWorld(first, ParentOf(node, m_sampledWorlds), isHierarchical && HasParent(node)));
        ExpectedBone bone;
        const std::optional<XSI::MATH::CMatrix4> bind = BindPoseOf(node);
        bone.HasBind = bind.has_value();
        if (bind)
            bone.Bind = NarrowedMatrix(*bind);
        bone.Local = Recompose(bind ? ToLocal(bone.Bind, BindParent(node), isHierarchical) : first);
        bone.World = HasParent(node) ? ToWorld(bone.Local, WorldOf(node.Parent), m_skeleton.IsHierarchical)
                                     : bone.Local;
        bone.IsBindKept = bind && AreSame(bone.World, bone.Bind);
        m_skeleton.Bones.push_back(bone);
    }

    /// The first node of an export with one root has no parent. All others have, if only the made one.
    bool HasParent(const HostNode& node) const { return node.Parent >= 0 || !m_host.SyntheticRoot.empty(); }

    static ApproxMatrix ParentOf(const HostNode& node, const std::vector<ApproxMatrix>& worlds)
    {
        return node.Parent >= 0 ? worlds[static_cast<std::size_t>(node.Parent)] : ApproxMatrix{};
    }

    ApproxMatrix WorldOf(int node) const
    {
        return node >= 0 ? m_skeleton.Bones[static_cast<std::size_t>(node)].World : ApproxMatrix{};
    }

    ApproxMatrix BindParent(const HostNode& node) const
    {
        if (node.Parent < 0)
            return {};
        const ExpectedBone& parent = m_skeleton.Bones[static_cast<std::size_t>(node.Parent)];
        return parent.HasBind ? parent.Bind : ParentOf(node, m_sampledWorlds);
    }

    const HostScene& m_host;
    ExpectedSkeleton& m_skeleton;
    std::vector<ApproxMatrix> m_sampledWorlds; ///< at the first frame
};

} // namespace

ExpectedSkeleton ExpectSkeleton(const HostScene& host)
{
    ExpectedSkeleton skeleton;
    // A made root scales plainly, and the root's rule is what the file tells.
    skeleton.IsHierarchical =
        host.SyntheticRoot.empty() && !host.Nodes.empty() && IsHierarchical(host.Nodes.front().Object);
    SkeletonBuilder(host, skeleton).Build();
    return skeleton;
}

} // namespace tq4x::test
