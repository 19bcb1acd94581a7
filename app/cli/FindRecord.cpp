#include "cli/FindRecord.h"

#include <algorithm>
#include <vector>

#include "gltf/NearestWord.h"

namespace tq4x::cli
{
namespace
{

constexpr std::string_view NodePrefix = "node:";
constexpr std::string_view MaterialPrefix = "material:";

/// Whether the names of a node and of those above it end as the path says.
bool MatchesPath(const gltf::Document& document, std::size_t node, std::string_view path)
{
    gltf::Index at = node;
    for (;;) {
        const std::string name = at ? gltf::NodeName(document, *at) : std::string();
        if (at && path == name) {
            return true;
        }
        if (!at || !path.ends_with("/" + name)) {
            return false;
        }
        path.remove_suffix(name.size() + 1);
        at = document.Nodes[*at].Parent;
    }
}

std::vector<std::size_t> FindNodes(const gltf::Document& document, std::string_view path)
{
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < document.Nodes.size(); ++i) {
        if (MatchesPath(document, i, path)) {
            found.push_back(i);
        }
    }
    return found;
}

std::vector<std::size_t> FindMaterials(const gltf::Document& document, std::string_view name)
{
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < document.Materials.size(); ++i) {
        if (document.Materials[i].Name == name) {
            found.push_back(i);
        }
    }
    return found;
}

std::string UnknownName(const gltf::Document& document, const std::string& name)
{
    std::vector<std::string> names;
    for (std::size_t i = 0; i < document.Nodes.size(); ++i) {
        names.push_back(gltf::NodeName(document, i));
    }
    for (const gltf::Material& material : document.Materials) {
        names.push_back(material.Name);
    }
    const std::vector<std::string_view> words(names.begin(), names.end());
    const std::string_view nearest = FindNearestWord(name, words);
    return "The scene has no object or material \"" + name + "\"" +
           (nearest.empty() ? "." : "; did you mean \"" + std::string(nearest) + "\"?");
}

bool HasMaterial(const gltf::Document& document, const gltf::Node& node)
{
    return node.Mesh &&
           std::ranges::any_of(document.Meshes[*node.Mesh].Primitives, [](const gltf::Primitive& primitive) {
               return primitive.Material.has_value();
           });
}

FoundRecord RecordOf(const gltf::Document& document, std::size_t index, bool isMaterial)
{
    FoundRecord record;
    record.Place = {isMaterial ? "materials" : "nodes", index};
    record.Extras = isMaterial ? document.Materials[index].Extras : document.Nodes[index].Extras;
    record.HasMaterial = isMaterial || HasMaterial(document, document.Nodes[index]);
    record.IsMaterial = isMaterial;
    return record;
}

FoundRecord Refuse(std::string error)
{
    FoundRecord refused;
    refused.Error = std::move(error);
    return refused;
}

} // namespace

FoundRecord FindRecord(const gltf::Document& document, const std::string& name)
{
    const bool wantsNode = name.starts_with(NodePrefix);
    const bool wantsMaterial = name.starts_with(MaterialPrefix);
    const std::string bare = name.substr(wantsNode       ? NodePrefix.size()
                                         : wantsMaterial ? MaterialPrefix.size()
                                                         : 0);
    std::vector<std::size_t> found;
    if (!wantsMaterial) {
        found = FindNodes(document, bare);
    }
    const bool isMaterial = found.empty() && !wantsNode;
    if (isMaterial) {
        found = FindMaterials(document, bare);
    }
    if (found.empty()) {
        return Refuse(UnknownName(document, bare));
    }
    if (found.size() > 1) {
        return Refuse("The scene has " + std::to_string(found.size()) +
                      (isMaterial ? " materials \"" : " objects \"") + bare +
                      (isMaterial ? "\"." : "\"; name one by its path, like \"parent/" + bare + "\"."));
    }
    return RecordOf(document, found.front(), isMaterial);
}

} // namespace tq4x::cli
