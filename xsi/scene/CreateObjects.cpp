#include "scene/CreateObjects.h"

#include "scene/CreateMaterials.h"
#include "scene/CreateParameters.h"
#include "scene/NodeRecords.h"
#include "scene/Session.h"

namespace XSI::Host
{

namespace
{

CRef CreateNurbs(const CRef& parent, std::string_view name, const char* type, siClassID geometryClass)
{
    NodeObject& node = CreateNode(siX3DObjectID, parent, name, type);
    PrimitiveObject& primitive = PrimitiveOf(node);
    primitive.Geometry = Objects().Create<GeometryObject>(geometryClass, type, type, primitive.Id).Id;
    return RefOf(node);
}

/// True if the node is the other one or lies below it.
bool IsBelow(const NodeObject& node, const NodeObject& other)
{
    const NodeObject* at = &node;
    while (at != nullptr && at != &other) {
        at = Objects().Find<NodeObject>(at->Parent);
    }
    return at != nullptr;
}

/// Brings the nearest model of a branch up to date.
void UpdateModels(NodeObject& top)
{
    std::vector<NodeObject*> waiting{&top};
    while (!waiting.empty()) {
        NodeObject& node = *waiting.back();
        waiting.pop_back();
        node.Model = ModelForChildrenOf(*Objects().Find<NodeObject>(node.Parent));
        for (const ObjectId child : node.Children) {
            waiting.push_back(Objects().Find<NodeObject>(child));
        }
    }
}

} // namespace

Null CreateNull(const CRef& parent, std::string_view name)
{
    return RefOf(CreateNode(siNullID, parent, name, "null"));
}

Model CreateModel(const CRef& parent, std::string_view name)
{
    return RefOf(CreateNode(siModelID, parent, name, "#model"));
}

Model CreateInstance(const CRef& parent, std::string_view name, const CRef& master)
{
    NodeObject& node = CreateNode(siModelID, parent, name, "#model");
    node.ModelKind = siModelKind_Instance;
    node.InstanceMaster = master.GetObjectID();
    return RefOf(node);
}

ChainRoot CreateChainRoot(const CRef& parent, std::string_view name)
{
    return RefOf(CreateNode(siChainRootID, parent, name, "root"));
}

ChainBone CreateChainBone(const CRef& parent, std::string_view name)
{
    return RefOf(CreateNode(siChainBoneID, parent, name, "bone"));
}

ChainEffector CreateChainEffector(const CRef& parent, std::string_view name)
{
    return RefOf(CreateNode(siChainEffectorID, parent, name, "eff"));
}

Camera CreateCamera(const CRef& parent, std::string_view name)
{
    const CRef camera = RefOf(CreateNode(siCameraID, parent, name, "camera"));
    AddParameter(camera, "proj", 1);
    AddParameter(camera, "fov", 53.13);
    AddParameter(camera, "fovtype", 0);
    AddParameter(camera, "aspect", 4.0 / 3.0);
    AddParameter(camera, "near", 0.1);
    AddParameter(camera, "far", 32768.0);
    AddParameter(camera, "orthoheight", 10.0);
    AddParameter(camera, "projplanewidth", 4.0);
    AddParameter(camera, "projplaneheight", 3.0);
    return camera;
}

Light CreateLight(const CRef& parent, std::string_view name, LightType type)
{
    NodeObject& node = CreateNode(siLightID, parent, name, "light");
    const CRef light = RefOf(node);
    AddParameter(light, "Type", static_cast<LONG>(type));
    AddParameter(light, "LightArea", false);
    AddParameter(light, "LightCone", 40.0);
    AddParameter(light, "DiffuseContribution", true);
    AddParameter(light, "SpecularContribution", true);
    node.Shaders.push_back(CreateShader(light, "Softimage.soft_light.1.0", "soft_light").GetObjectID());
    return light;
}

Shader LightShaderOf(const CRef& light)
{
    return Light(light).GetShaders().GetItem(0);
}

void RemoveLightShaders(const CRef& light)
{
    const CRefArray shaders = Light(light).GetShaders();
    for (LONG i = 0; i < shaders.GetCount(); ++i) {
        Objects().Delete(shaders[i].GetObjectID());
    }
}

X3DObject CreateNurbsSurface(const CRef& parent, std::string_view name)
{
    return CreateNurbs(parent, name, "surfmsh", siNurbsSurfaceMeshID);
}

X3DObject CreateNurbsCurve(const CRef& parent, std::string_view name)
{
    return CreateNurbs(parent, name, "crvlist", siNurbsCurveListID);
}

void AddScalingRule(const CRef& object, bool isHierarchical)
{
    if (auto* node = Objects().Find<NodeObject>(object)) {
        node->ScalingRule = AddParameter(object, "siscaling", isHierarchical).GetObjectID();
    }
}

void SetScalingRule(const CRef& object, bool isHierarchical)
{
    X3DObject(object).GetParameter(L"siscaling").PutValue(isHierarchical);
}

Parameter SetVisibility(const CRef& object, bool isVisible)
{
    Property visibility = FindProperty(object, "visibility");
    if (!visibility.IsValid()) {
        visibility = AddProperty(object, "visibility");
    }
    Parameter viewVisibility = visibility.GetParameter(L"viewvis");
    viewVisibility.PutValue(isVisible);
    return viewVisibility;
}

Constraint AddConstraint(const CRef& constrained, const std::vector<CRef>& constraining, const CRef& upVector,
                         double roll)
{
    auto* kinematics = Objects().Find<KinematicsObject>(X3DObject(constrained).GetKinematics());
    if (kinematics == nullptr) {
        return Constraint();
    }
    auto& constraint = Objects().Create<ConstraintObject>(siConstraintID, "dircns", "dircns", kinematics->Id);
    constraint.Constraining = constraining;
    constraint.UpVector = upVector;
    kinematics->Constraints.push_back(constraint.Id);
    AddParameter(RefOf(constraint), "roll", roll);
    return RefOf(constraint);
}

bool MoveBelow(const CRef& object, const CRef& parent)
{
    auto* node = Objects().Find<NodeObject>(object);
    auto* newParent = Objects().Find<NodeObject>(parent);
    if (node == nullptr || newParent == nullptr || node->Id == Session::Current().Root ||
        IsBelow(*newParent, *node)) {
        return false;
    }
    std::erase(Objects().Find<NodeObject>(node->Parent)->Children, node->Id);
    newParent->Children.push_back(node->Id);
    node->Parent = newParent->Id;
    UpdateModels(*node);
    Objects().TouchNames();
    Objects().TouchTransforms();
    return true;
}

Parameter SetAmbience(double red, double green, double blue)
{
    const CRef root = CRef::FromObjectID(Session::Current().Root);
    Property ambient = FindProperty(root, "AmbientLighting");
    if (!ambient.IsValid()) {
        ambient = AddProperty(root, "AmbientLighting");
        AddColorParameter(ambient, "ambience", red, green, blue);
    }
    const Parameter ambience = ambient.GetParameter(L"ambience");
    SetColor(ambience, red, green, blue);
    return ambience;
}

} // namespace XSI::Host
