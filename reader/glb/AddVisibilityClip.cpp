#include "glb/AddVisibilityClip.h"

#include <unordered_map>

namespace tq4x::reader
{
namespace
{

/// The meshes that a path leads to: one by its index, or all of a node.
class MeshFinder
{
public:
    explicit MeshFinder(const Model& model) : m_count(model.Meshes.size())
    {
        for (std::size_t i = 0; i < model.Meshes.size(); ++i) {
            m_ofNode[model.Meshes[i].NodeName].push_back(i);
        }
    }

    [[nodiscard]] std::vector<std::size_t> Find(const std::string& path) const
    {
        if (const auto mesh = ParseMemberPath(path, "Meshes")) {
            const std::size_t index = static_cast<std::size_t>(mesh->OwnerIndex);
            return mesh->OwnerIndex >= 0 && index < m_count ? std::vector{index} : std::vector<std::size_t>();
        }
        const auto node = ParseMemberPath(path, "MeshNodeVisibilities");
        const auto found = node ? m_ofNode.find(node->Owner) : m_ofNode.end();
        return found == m_ofNode.end() ? std::vector<std::size_t>() : found->second;
    }

private:
    std::size_t m_count = 0;
    std::unordered_map<std::string, std::vector<std::size_t>> m_ofNode;
};

} // namespace

std::set<std::size_t> MovingMeshes(const VisibilityAnimation& animation, const Model& model)
{
    const MeshFinder finder(model);
    std::set<std::size_t> moving;
    for (const MemberAnimation& member : animation.Members) {
        const std::vector<std::size_t> found = finder.Find(member.Path);
        moving.insert(found.begin(), found.end());
    }
    return moving;
}

std::vector<bool> VisibleMeshes(const Model& model)
{
    std::unordered_map<std::string_view, bool> isNodeVisible;
    for (const MeshNodeVisibility& node : model.NodeVisibilities) {
        isNodeVisible.emplace(node.Name, node.IsVisible);
    }
    std::vector<bool> isVisible;
    for (const Mesh& mesh : model.Meshes) {
        const auto node = isNodeVisible.find(mesh.NodeName);
        isVisible.push_back(mesh.IsVisible && (node == isNodeVisible.end() || node->second));
    }
    return isVisible;
}

std::string SetVisible(int node, bool isVisible, GlbScene& scene)
{
    scene.Writer.UseExtension("KHR_node_visibility");
    scene.Writer.At("nodes", node)["extensions"]["KHR_node_visibility"] = {{"visible", isVisible}};
    return "/nodes/" + std::to_string(node) + "/extensions/KHR_node_visibility/visible";
}

void AddVisibilityClip(const VisibilityAnimation& animation, const Model& model,
                       const std::vector<int>& nodes, ClipBuilder& clip, GlbScene& scene)
{
    const MeshFinder finder(model);
    const std::vector<bool> isVisible = VisibleMeshes(model);
    for (const MemberAnimation& member : animation.Members) {
        const std::vector<std::size_t> meshes = finder.Find(member.Path);
        if (meshes.empty() || !member.Bool) {
            scene.Warnings.push_back(member.Path + ": the model has no such mesh to be shown or hidden.");
            continue;
        }
        for (const std::size_t mesh : meshes) {
            if (nodes[mesh] >= 0) {
                clip.SwitchPointer(SetVisible(nodes[mesh], isVisible[mesh], scene), *member.Bool,
                                   isVisible[mesh]);
            }
        }
    }
}

} // namespace tq4x::reader
