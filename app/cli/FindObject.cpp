#include "cli/FindObject.h"

#include <vector>

#include "gltf/NearestWord.h"
#include "scene/Session.h"

namespace tq4x::cli
{
namespace
{

namespace Host = XSI::Host;

const Host::NodeObject* ParentOf(const Host::NodeObject& node)
{
    return Host::Objects().Find<Host::NodeObject>(node.Parent);
}

/// The path from below the scene root, "left/arm/hand"; of a deep object its last part.
std::string PathOf(const Host::NodeObject& node)
{
    constexpr int MaxLevels = 64;
    std::string path = node.Name;
    const Host::NodeObject* above = ParentOf(node);
    for (int level = 1; level < MaxLevels && above != nullptr && ParentOf(*above) != nullptr; ++level) {
        path.insert(0, above->Name + "/");
        above = ParentOf(*above);
    }
    return path;
}

bool Matches(const std::string& path, const std::string& name)
{
    return path == name || path.ends_with("/" + name);
}

} // namespace

FoundObject FindObject(const std::string& name)
{
    const std::string last = name.substr(name.find_last_of('/') + 1);
    std::vector<const Host::NodeObject*> found;
    std::vector<std::string_view> names;
    Host::Objects().ForEach([&](const Host::Object& object) {
        const auto* const node = dynamic_cast<const Host::NodeObject*>(&object);
        if (node == nullptr || ParentOf(*node) == nullptr) {
            return;
        }
        names.push_back(node->Name);
        if (node->Name == last && Matches(PathOf(*node), name)) {
            found.push_back(node);
        }
    });
    if (found.empty()) {
        const std::string_view nearest = FindNearestWord(name, names);
        return {{},
                "The scene has no object \"" + name + "\"" +
                    (nearest.empty() ? "." : "; did you mean \"" + std::string(nearest) + "\"?")};
    }
    if (found.size() > 1) {
        return {{},
                "The scene has " + std::to_string(found.size()) + " objects \"" + name +
                    "\"; name one by its path, like \"" + PathOf(*found[0]) + "\"."};
    }
    return {Host::RefOf(*found[0]), {}};
}

std::string PathOf(const XSI::CRef& object)
{
    const auto* const node = Host::Objects().Find<Host::NodeObject>(object);
    return node == nullptr ? std::string() : PathOf(*node);
}

} // namespace tq4x::cli
