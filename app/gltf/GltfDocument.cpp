#include "gltf/GltfDocument.h"

#include <algorithm>

namespace tq4x::gltf
{

Index Primitive::Find(std::string_view name) const
{
    const auto found =
        std::ranges::find_if(Attributes, [name](const Attribute& entry) { return entry.Name == name; });
    return found == Attributes.end() ? Index() : Index(found->Accessor);
}

std::string NodeName(const Document& document, std::size_t node)
{
    const std::string& name = document.Nodes[node].Name;
    return name.empty() ? "node" + std::to_string(node) : name;
}

std::string MaterialName(const Document& document, std::size_t material)
{
    const std::string& name = document.Materials[material].Name;
    return name.empty() ? "material" + std::to_string(material) : name;
}

std::string NodePath(const Document& document, std::size_t node)
{
    constexpr int MaxLevels = 16; // a message should stay readable on a chain of thousands
    std::string path = NodeName(document, node);
    Index parent = document.Nodes[node].Parent;
    for (int level = 1; parent; ++level, parent = document.Nodes[*parent].Parent) {
        if (level == MaxLevels) {
            return ".../" + path;
        }
        path.insert(0, NodeName(document, *parent) + "/");
    }
    return path;
}

std::vector<std::size_t> NodesInOrder(const Document& document)
{
    std::vector<std::size_t> order;
    std::vector<std::size_t> open(document.Roots.rbegin(), document.Roots.rend());
    while (!open.empty()) {
        const std::size_t node = open.back();
        open.pop_back();
        order.push_back(node);
        const auto& children = document.Nodes[node].Children;
        open.insert(open.end(), children.rbegin(), children.rend());
    }
    return order;
}

} // namespace tq4x::gltf
