#include <cmath>

#include "gltf/LegalHostName.h"
#include "gltf/SceneBuild.h"
#include "scene/CreateObjects.h"
#include "scene/CreateParameters.h"
#include "scene/Session.h"

namespace tq4x::gltf
{
namespace
{

namespace Host = XSI::Host;

constexpr double FramesOfAStillScene = 100.0;

Host::LightType TypeOf(LightKind kind)
{
    switch (kind) {
    case LightKind::Directional:
        return Host::LightType::Infinite;
    case LightKind::Point:
        return Host::LightType::Point;
    case LightKind::Spot:
        return Host::LightType::Spot;
    }
    return Host::LightType::Point;
}

XSI::CRef ParentOf(const SceneBuild& build, std::size_t node)
{
    const Index parent = build.Source->Nodes[node].Parent;
    return parent ? build.Objects[*parent].GetRef() : XSI::CRef();
}

XSI::X3DObject MakeLight(const SceneBuild& build, std::size_t light, const XSI::CRef& parent,
                         const std::string& name)
{
    const XSI::X3DObject object = Host::CreateLight(parent, name, TypeOf(build.Source->Lights[light].Kind));
    SetLight(build, light, object);
    return object;
}

XSI::X3DObject MakeCamera(SceneBuild& build, std::size_t camera, const XSI::CRef& parent,
                          const std::string& name)
{
    const XSI::X3DObject object = Host::CreateCamera(parent, name);
    SetCamera(build, camera, object, build.Remarks);
    return object;
}

/// The object that a node becomes: what it carries, in this order of importance.
XSI::X3DObject MakeObject(SceneBuild& build, std::size_t node, std::uint64_t& corners)
{
    const Node& source = build.Source->Nodes[node];
    const XSI::CRef parent = ParentOf(build, node);
    const std::string name = HostName(NodeName(*build.Source, node), build.Remarks);
    if (source.Mesh) {
        return BuildMesh(build, node, parent, name, corners);
    }
    if (source.Camera) {
        return build.Cameras[node] = MakeCamera(build, *source.Camera, parent, name);
    }
    if (source.Light) {
        return build.Lights[node] = MakeLight(build, *source.Light, parent, name);
    }
    return Host::CreateNull(parent, name);
}

/// A camera or a light of a node that became something else: an object of its own below it.
void AddCarried(SceneBuild& build, std::size_t node)
{
    const Node& source = build.Source->Nodes[node];
    const XSI::CRef parent = build.Objects[node].GetRef();
    const std::string name = LegalHostName(NodeName(*build.Source, node)); // noted with the node itself
    if (source.Camera && !build.Cameras[node].IsValid()) {
        build.Cameras[node] = MakeCamera(build, *source.Camera, parent, name + "_camera");
        Host::SetScalingRule(build.Cameras[node], false);
    }
    if (source.Light && !build.Lights[node].IsValid()) {
        build.Lights[node] = MakeLight(build, *source.Light, parent, name + "_light");
        Host::SetScalingRule(build.Lights[node], false);
    }
}

} // namespace

std::string HostName(const std::string& name, Notes& notes)
{
    std::string legal = LegalHostName(name);
    if (legal != name) {
        notes.push_back({NoteSeverity::Warning, legal,
                         "The name had characters that the exported files can't hold; they became \"_\"."});
    }
    return legal;
}

void SetPlayControl(const SceneBuild& build)
{
    const double last = std::ceil(build.Tracks.LastFrame());
    const double out = last > 0.0 ? last : FramesOfAStillScene;
    const XSI::CRef project = XSI::CRef::FromObjectID(Host::Session::Current().Project);
    const XSI::CRef control = Host::FindProperty(project, "PlayControl").GetRef();
    Host::AddParameter(control, "GlobalIn", 0.0);
    Host::AddParameter(control, "GlobalOut", out);
    Host::AddParameter(control, "In", 0.0);
    Host::AddParameter(control, "Out", out);
}

void BuildObjects(SceneBuild& build)
{
    const std::size_t count = build.Source->Nodes.size();
    build.Objects.resize(count);
    build.Cameras.resize(count);
    build.Lights.resize(count);
    std::uint64_t corners = 0;
    for (const std::size_t node : build.Order) {
        build.Objects[node] = MakeObject(build, node, corners);
        Host::SetScalingRule(build.Objects[node], false);
    }
    // Behind all nodes, so that the children of the file keep their places.
    for (const std::size_t node : build.Order) {
        AddCarried(build, node);
    }
}

} // namespace tq4x::gltf
