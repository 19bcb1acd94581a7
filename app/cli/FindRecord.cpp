#include "cli/FindRecord.h"

#include <algorithm>
#include <charconv>
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
        if (gltf::MaterialName(document, i) == name) {
            found.push_back(i);
        }
    }
    return found;
}

/// The record of a number that counts in the order of the file, "#3".
std::vector<std::size_t> FindNumber(std::string_view text, std::size_t count)
{
    std::size_t number = 0;
    const char* const end = text.data() + text.size();
    const bool isNumber = text.starts_with('#') && text.size() > 1 &&
                          std::from_chars(text.data() + 1, end, number) == std::from_chars_result{end, {}};
    return isNumber && number < count ? std::vector{number} : std::vector<std::size_t>();
}

/// The kinds that a name may mean.
struct WantedKinds
{
    bool Nodes = true;
    bool Materials = true;
};

std::string WordsFor(const WantedKinds& wanted)
{
    return wanted.Nodes && wanted.Materials ? "object or material" : wanted.Nodes ? "object" : "material";
}

std::string UnknownName(const gltf::Document& document, const std::string& name, const WantedKinds& wanted)
{
    std::vector<std::string> names;
    for (std::size_t i = 0; wanted.Nodes && i < document.Nodes.size(); ++i) {
        names.push_back(gltf::NodeName(document, i));
    }
    for (std::size_t i = 0; wanted.Materials && i < document.Materials.size(); ++i) {
        names.push_back(gltf::MaterialName(document, i));
    }
    const std::vector<std::string_view> words(names.begin(), names.end());
    const std::string_view nearest = FindNearestWord(name, words);
    return "The scene has no " + WordsFor(wanted) + " \"" + name + "\"" +
           (nearest.empty() ? "." : "; did you mean \"" + std::string(nearest) + "\"?");
}

bool HasMaterial(const gltf::Document& document, const gltf::Node& node)
{
    return node.Mesh &&
           std::ranges::any_of(document.Meshes[*node.Mesh].Primitives, [](const gltf::Primitive& primitive) {
               return primitive.Material.has_value();
           });
}

/// What the extras of a node say after those of its mesh, which count for it too.
gltf::JsonValue ExtrasOf(const gltf::Document& document, const gltf::Node& node)
{
    const gltf::JsonObject* const own = node.Extras.Object();
    const gltf::JsonObject* const shared = node.Mesh ? document.Meshes[*node.Mesh].Extras.Object() : nullptr;
    gltf::JsonObject members = shared != nullptr ? *shared : gltf::JsonObject();
    for (const gltf::JsonMember& member : own != nullptr ? *own : gltf::JsonObject()) {
        members.push_back(member);
    }
    return members;
}

FoundRecord RecordOf(const gltf::Document& document, std::size_t index, bool isMaterial)
{
    FoundRecord record;
    record.Place = {isMaterial ? "materials" : "nodes", index};
    record.Extras = isMaterial ? document.Materials[index].Extras : ExtrasOf(document, document.Nodes[index]);
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
    const WantedKinds wanted{.Nodes = !name.starts_with(MaterialPrefix),
                             .Materials = !name.starts_with(NodePrefix)};
    const std::string bare = name.substr(!wanted.Materials ? NodePrefix.size()
                                         : !wanted.Nodes   ? MaterialPrefix.size()
                                                           : 0);
    std::vector<std::size_t> found;
    if (wanted.Nodes) {
        found = FindNodes(document, bare);
    }
    if (found.empty() && !wanted.Materials) {
        found = FindNumber(bare, document.Nodes.size());
    }
    const bool isMaterial = found.empty() && wanted.Materials;
    if (isMaterial) {
        found = FindMaterials(document, bare);
    }
    if (found.empty() && !wanted.Nodes) {
        found = FindNumber(bare, document.Materials.size());
    }
    if (found.empty()) {
        return Refuse(UnknownName(document, bare, wanted));
    }
    if (found.size() > 1) {
        return Refuse("The scene has " + std::to_string(found.size()) +
                      (isMaterial ? " materials \"" : " objects \"") + bare + "\"; name one by its " +
                      (isMaterial ? "number, like material:#"
                                  : "path, like \"" + gltf::NodePath(document, found.front()) +
                                        "\", or by its number, like node:#") +
                      std::to_string(found.front()) + ".");
    }
    return RecordOf(document, found.front(), isMaterial);
}

} // namespace tq4x::cli
