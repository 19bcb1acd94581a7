#include <xsi_x3dobject.h>

#include <algorithm>

#include <xsi_cluster.h>
#include <xsi_envelope.h>
#include <xsi_light.h>
#include <xsi_material.h>
#include <xsi_model.h>
#include <xsi_primitive.h>

#include "scene/NodeRecords.h"
#include "scene/Session.h"
#include "scene/Text.h"

namespace XSI
{

namespace
{

Host::NodeObject* RecordOf(const CRef& ref)
{
    return Host::Objects().Find<Host::NodeObject>(ref);
}

void AddOnce(CRefArray& list, const CRef& ref)
{
    bool isNew = ref.IsValid();
    for (LONG i = 0; i < list.GetCount() && isNew; ++i) {
        isNew = list[i] != ref;
    }
    if (isNew) {
        list.Add(ref);
    }
}

} // namespace

CRefArray X3DObject::GetChildren() const
{
    const Host::NodeObject* node = RecordOf(GetRef());
    return node != nullptr ? Host::RefsOf(Host::Objects(), node->Children) : CRefArray();
}

CRefArray X3DObject::FindChildren(const CString& name, const CString& type, const CStringArray&,
                                  bool recursive) const
{
    const std::string wantedName = Host::ToUtf8(name);
    const std::string wantedType = Host::ToUtf8(type);
    CRefArray found;
    const Host::NodeObject* top = RecordOf(GetRef());
    std::vector<Host::ObjectId> waiting; // the next one last
    if (top != nullptr) {
        waiting.assign(top->Children.rbegin(), top->Children.rend());
    }
    while (!waiting.empty()) {
        const auto* node = Host::Objects().Find<Host::NodeObject>(waiting.back());
        waiting.pop_back();
        if ((wantedName.empty() || node->Name == wantedName) &&
            (wantedType.empty() || node->Type == wantedType)) {
            found.Add(Host::RefOf(*node));
        }
        if (recursive) {
            waiting.insert(waiting.end(), node->Children.rbegin(), node->Children.rend());
        }
    }
    return found;
}

Kinematics X3DObject::GetKinematics() const
{
    Host::NodeObject* node = RecordOf(GetRef());
    return node != nullptr ? Host::RefOf(Host::KinematicsOf(*node)) : CRef();
}

bool X3DObject::HasStaticKinematicState() const
{
    const Host::NodeObject* node = RecordOf(GetRef());
    return node != nullptr && node->StaticState.has_value();
}

StaticKinematicState X3DObject::GetStaticKinematicState() const
{
    Host::NodeObject* node = RecordOf(GetRef());
    const bool hasState = node != nullptr && node->StaticState.has_value();
    return hasState ? Host::RefOf(Host::StaticKinematicsOf(*node)) : CRef();
}

Primitive X3DObject::GetActivePrimitive(double) const
{
    Host::NodeObject* node = RecordOf(GetRef());
    return node != nullptr ? Host::RefOf(Host::PrimitiveOf(*node)) : CRef();
}

Material X3DObject::GetMaterial() const
{
    return GetMaterials().GetItem(0);
}

CRefArray X3DObject::GetMaterials() const
{
    CRefArray materials;
    if (const Host::NodeObject* node = RecordOf(GetRef())) {
        AddOnce(materials, CRef::FromObjectID(node->Material));
    }
    if (const Host::GeometryObject* geometry = Host::MeshOf(GetRef())) {
        for (const CRef& material : geometry->Mesh.Materials) {
            AddOnce(materials, material);
        }
        for (const Host::ObjectId id : geometry->Clusters) {
            AddOnce(materials, Cluster(CRef::FromObjectID(id)).GetMaterial());
        }
    }
    return materials;
}

CRefArray X3DObject::GetEnvelopes() const
{
    CRefArray envelopes;
    const CRefArray nested = GetNestedObjects();
    for (LONG i = 0; i < nested.GetCount(); ++i) {
        if (nested[i].IsA(siEnvelopeID)) {
            envelopes.Add(nested[i]);
        }
    }
    return envelopes;
}

siModelKind Model::GetModelKind() const
{
    const Host::NodeObject* node = RecordOf(GetRef());
    return node != nullptr ? node->ModelKind : siModelKind_Regular;
}

Model Model::GetInstanceMaster() const
{
    const Host::NodeObject* node = RecordOf(GetRef());
    return node != nullptr ? CRef::FromObjectID(node->InstanceMaster) : CRef();
}

CRefArray Light::GetShaders() const
{
    const Host::NodeObject* node = RecordOf(GetRef());
    return node != nullptr ? Host::RefsOf(Host::Objects(), node->Shaders) : CRefArray();
}

} // namespace XSI
