#include "scene/NodeRecords.h"

#include "scene/CreateObjects.h"
#include "scene/Session.h"

namespace XSI::Host
{

NodeObject& CreateNode(siClassID classId, const CRef& parent, std::string_view name, std::string_view type)
{
    Database& objects = Objects();
    auto* above = objects.Find<NodeObject>(parent);
    if (above == nullptr) {
        above = objects.Find<NodeObject>(Session::Current().Root);
    }
    auto& node = objects.Create<NodeObject>(classId, name, type, above->Id);
    above->Children.push_back(node.Id);
    node.Model = ModelForChildrenOf(*above);
    AddScalingRule(RefOf(node), false);
    objects.TouchNames();
    return node;
}

ObjectId ModelForChildrenOf(const NodeObject& parent)
{
    return parent.ClassId == siModelID ? parent.Id : parent.Model;
}

PrimitiveObject& PrimitiveOf(NodeObject& node)
{
    if (auto* primitive = Objects().Find<PrimitiveObject>(node.Primitive)) {
        return *primitive;
    }
    auto& primitive = Objects().Create<PrimitiveObject>(siPrimitiveID, node.Type, node.Type, node.Id);
    node.Primitive = primitive.Id;
    return primitive;
}

KinematicsObject& KinematicsOf(NodeObject& node)
{
    Database& objects = Objects();
    if (auto* kinematics = objects.Find<KinematicsObject>(node.Kinematics)) {
        return *kinematics;
    }
    auto& kinematics = objects.Create<KinematicsObject>(siKinematicsID, "kine", "kine", node.Id);
    node.Kinematics = kinematics.Id;
    kinematics.Local = objects.Create<ItemObject>(siKinematicStateID, "local", "local", kinematics.Id).Id;
    kinematics.Global = objects.Create<ItemObject>(siKinematicStateID, "global", "global", kinematics.Id).Id;
    return kinematics;
}

ItemObject& StaticKinematicsOf(NodeObject& node)
{
    if (auto* state = Objects().Find<ItemObject>(node.StaticKinematics)) {
        return *state;
    }
    auto& state = Objects().Create<ItemObject>(siStaticKinematicStateID, "StaticKinematicState", {}, node.Id);
    node.StaticKinematics = state.Id;
    return state;
}

GeometryObject* MeshOf(const CRef& node)
{
    const auto* object = Objects().Find<NodeObject>(node);
    const auto* primitive = object != nullptr ? Objects().Find<PrimitiveObject>(object->Primitive) : nullptr;
    auto* geometry = primitive != nullptr ? Objects().Find<GeometryObject>(primitive->Geometry) : nullptr;
    return geometry != nullptr && geometry->ClassId == siPolygonMeshID ? geometry : nullptr;
}

} // namespace XSI::Host
