#include <algorithm>
#include <functional>

#include "gltf/SceneBuild.h"
#include "scene/PluginLoader.h"
#include "scene/Session.h"

namespace tq4x::gltf
{
namespace
{

void Note(SceneBuild& build, const std::string& object, std::string text)
{
    build.Remarks.push_back({NoteSeverity::Warning, object, std::move(text)});
}

/// Materials of the mesh that a node carries.
std::vector<XSI::SceneItem> MaterialsOfNode(const SceneBuild& build, std::size_t node)
{
    std::vector<XSI::SceneItem> materials;
    const Index mesh = build.Source->Nodes[node].Mesh;
    for (const Primitive& primitive :
         mesh ? build.Source->Meshes[*mesh].Primitives : std::vector<Primitive>()) {
        if (primitive.Material) {
            materials.emplace_back(build.Materials[*primitive.Material].GetRef());
        }
    }
    return materials;
}

/// Where a parameter of a type goes that was found on something.
using FindOwners = std::function<std::vector<XSI::SceneItem>(const std::string& type)>;

void ApplyMembers(SceneBuild& build, const PageParameters& pages, const std::string& object,
                  const JsonValue& extras, const FindOwners& findOwners)
{
    const JsonObject* const members = extras.Object();
    for (const JsonMember& member : members == nullptr ? JsonObject() : *members) {
        if (!PageParameters::IsOurs(member.Key)) {
            continue; // somebody else's
        }
        const std::string type = pages.FindType(member.Key);
        if (type.empty()) {
            const std::string nearest = pages.FindNearest(member.Key);
            Note(build, object,
                 "No page has the parameter " + member.Key +
                     (nearest.empty() ? "." : "; did you mean " + nearest + "?"));
            continue;
        }
        const auto owners = findOwners(type);
        if (owners.empty()) {
            Note(build, object, "The parameter " + member.Key + " has no place here; it is passed over.");
        }
        for (const XSI::SceneItem& owner : owners) {
            const std::string problem = pages.Set(owner, type, member.Key, member.Value);
            if (!problem.empty()) {
                Note(build, object, problem);
            }
        }
    }
}

/// The settings of the scene's export stand in an object of their own: their names, made for a dialog, are
/// those of anything.
void ApplyExportSettings(SceneBuild& build, const PageParameters& pages)
{
    const std::string type(ExportSettingsType);
    const JsonValue* const settings = build.Source->SceneExtras.Find(type);
    if (settings == nullptr) {
        return;
    }
    const std::string& scene = build.Source->SceneName;
    if (settings->Object() == nullptr) {
        return Note(build, scene, "The value of " + type + " must be an object.");
    }
    const std::vector<std::string> types = XSI::Host::RegisteredPropertyTypes();
    if (std::ranges::find(types, type) == types.end()) {
        return Note(build, scene, "No plug-in has the settings " + type + ".");
    }
    const XSI::SceneItem root(XSI::CRef::FromObjectID(XSI::Host::Session::Current().Root));
    for (const JsonMember& member : *settings->Object()) {
        const std::string problem = pages.Set(root, type, member.Key, member.Value);
        if (!problem.empty()) {
            Note(build, scene, problem);
        }
    }
}

} // namespace

void ApplyExtras(SceneBuild& build, const PageParameters& pages)
{
    for (std::size_t i = 0; i < build.Materials.size(); ++i) {
        const Material& source = build.Source->Materials[i];
        ApplyMembers(build, pages, MaterialName(*build.Source, i), source.Extras,
                     [&](const std::string& type) {
                         return PageParameters::IsForMaterials(type) || PageParameters::IsForBoth(type)
                                    ? std::vector<XSI::SceneItem>{build.Materials[i].GetRef()}
                                    : std::vector<XSI::SceneItem>();
                     });
    }
    for (const std::size_t node : build.Order) {
        const Node& source = build.Source->Nodes[node];
        const auto findOwners = [&](const std::string& type) {
            return PageParameters::IsForMaterials(type)
                       ? MaterialsOfNode(build, node)
                       : std::vector<XSI::SceneItem>{build.Objects[node].GetRef()};
        };
        const std::string name = NodeName(*build.Source, node);
        if (source.Mesh) {
            ApplyMembers(build, pages, name, build.Source->Meshes[*source.Mesh].Extras, findOwners);
        }
        ApplyMembers(build, pages, name, source.Extras, findOwners);
    }
    ApplyExportSettings(build, pages);
}

} // namespace tq4x::gltf
