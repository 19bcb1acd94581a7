#include "scene/CreateGeometry.h"

#include "scene/CreateParameters.h"
#include "scene/NodeRecords.h"
#include "scene/Session.h"

namespace XSI::Host
{

namespace
{

/// The cluster of all nodes, which carries the properties; made with the first of them.
ClusterObject& NodeClusterOf(GeometryObject& geometry)
{
    for (const ObjectId id : geometry.Clusters) {
        if (auto* cluster = Objects().Find<ClusterObject>(id);
            cluster != nullptr && cluster->Type == "sample") {
            return *cluster;
        }
    }
    auto& cluster =
        Objects().Create<ClusterObject>(siClusterID, "Texture_Coordinates_AUTO", "sample", geometry.Id);
    geometry.Clusters.push_back(cluster.Id);
    return cluster;
}

} // namespace

X3DObject CreateMesh(const CRef& parent, std::string_view name, MeshGeometry geometry)
{
    NodeObject& node = CreateNode(siX3DObjectID, parent, name, "polymsh");
    PrimitiveObject& primitive = PrimitiveOf(node);
    auto& mesh = Objects().Create<GeometryObject>(siPolygonMeshID, "polymsh", "polymsh", primitive.Id);
    primitive.Geometry = mesh.Id;
    mesh.Mesh = std::move(geometry);
    for (const CRef& material : mesh.Mesh.Materials) {
        AddMaterialUser(material, RefOf(node));
    }
    return RefOf(node);
}

MeshGeometry* FindMesh(const CRef& object)
{
    GeometryObject* geometry = MeshOf(object);
    return geometry != nullptr ? &geometry->Mesh : nullptr;
}

void SetMaterial(const CRef& user, const CRef& material)
{
    if (auto* node = Objects().Find<NodeObject>(user)) {
        node->Material = material.GetObjectID();
    } else if (auto* cluster = Objects().Find<ClusterObject>(user)) {
        cluster->Material = material.GetObjectID();
    } else {
        return;
    }
    AddMaterialUser(material, user);
}

void AddMaterialUser(const CRef& material, const CRef& user)
{
    if (auto* object = Objects().Find<MaterialObject>(material)) {
        object->UsedBy.Add(user.GetObjectID());
    }
}

Cluster CreateCluster(const CRef& mesh, std::string_view name)
{
    GeometryObject* geometry = MeshOf(mesh);
    if (geometry == nullptr) {
        return Cluster();
    }
    const auto& cluster = Objects().Create<ClusterObject>(siClusterID, name, "poly", geometry->Id);
    geometry->Clusters.push_back(cluster.Id);
    return RefOf(cluster);
}

ClusterProperty AddClusterProperty(const CRef& mesh, ClusterPropertyKind kind, std::string_view name,
                                   LONG valueSize, std::vector<float> values)
{
    GeometryObject* geometry = MeshOf(mesh);
    if (geometry == nullptr) {
        return ClusterProperty();
    }
    ClusterObject& cluster = NodeClusterOf(*geometry);
    auto& property = Objects().Create<ClusterPropertyObject>(siClusterPropertyID, name, {}, cluster.Id);
    property.Kind = kind;
    property.ValueSize = valueSize;
    property.Values = std::move(values);
    cluster.Properties.push_back(property.Id);
    return RefOf(property);
}

void SetReadable(const ClusterProperty& property, bool isReadable)
{
    if (auto* object = Objects().Find<ClusterPropertyObject>(property)) {
        object->IsReadable = isReadable;
    }
}

Primitive AddProjection(const ClusterProperty& coordinates, bool wrapU, bool wrapV)
{
    auto* property = Objects().Find<ClusterPropertyObject>(coordinates);
    if (property == nullptr) {
        return Primitive();
    }
    const auto& projection =
        Objects().Create<PrimitiveObject>(siPrimitiveID, "Texture_Projection_Def", "uvprojdef", property->Id);
    property->Nested.push_back(projection.Id);
    const CRef ref = RefOf(projection);
    for (const char* name : {"projsclu", "projsclv", "projsclw"}) {
        AddParameter(ref, name, 1.0);
    }
    for (const char* name : {"projrotu", "projrotv", "projrotw", "projtrsu", "projtrsv", "projtrsw"}) {
        AddParameter(ref, name, 0.0);
    }
    AddParameter(ref, "wrap_u", wrapU);
    AddParameter(ref, "wrap_v", wrapV);
    return ref;
}

Envelope AddEnvelope(const CRef& mesh, std::vector<DeformerWeights> deformers)
{
    const GeometryObject* geometry = MeshOf(mesh);
    auto* primitive = geometry != nullptr ? Objects().Find<PrimitiveObject>(geometry->Parent) : nullptr;
    if (primitive == nullptr) {
        return Envelope();
    }
    auto& envelope = Objects().Create<EnvelopeObject>(siEnvelopeID, "Envelope", "envelopop", primitive->Id);
    envelope.Deformers = std::move(deformers);
    envelope.VertexCount = geometry->Mesh.VertexCount();
    primitive->Nested.push_back(envelope.Id);
    return RefOf(envelope);
}

} // namespace XSI::Host
