#include <xsi_geometryaccessor.h>

#include <numeric>

#include "scene/Session.h"

namespace XSI
{

namespace
{

const Host::GeometryObject* GeometryOf(const CRef& mesh)
{
    return Host::Objects().Find<Host::GeometryObject>(mesh);
}

const Host::MeshGeometry* MeshOf(const CRef& mesh)
{
    const Host::GeometryObject* geometry = GeometryOf(mesh);
    return geometry != nullptr ? &geometry->Mesh : nullptr;
}

CRefArray PropertiesOf(const CRef& mesh, Host::ClusterPropertyKind kind)
{
    CRefArray found;
    const Host::GeometryObject* geometry = GeometryOf(mesh);
    if (geometry == nullptr) {
        return found;
    }
    for (const Host::ObjectId clusterId : geometry->Clusters) {
        for (const Host::ObjectId id : Host::Objects().Find<Host::ClusterObject>(clusterId)->Properties) {
            const auto* property = Host::Objects().Find<Host::ClusterPropertyObject>(id);
            if (property != nullptr && property->Kind == kind) {
                found.Add(Host::RefOf(*property));
            }
        }
    }
    return found;
}

/// Hands a list out, or fails and leaves the array empty.
template<class Array, class Value>
CStatus Answer(Array& array, const std::vector<Value>* values)
{
    array = values != nullptr ? Array(*values) : Array();
    return values != nullptr ? CStatus::OK : CStatus::Fail;
}

} // namespace

bool CGeometryAccessor::IsValid() const
{
    return GeometryOf(m_mesh) != nullptr;
}

LONG CGeometryAccessor::GetVertexCount() const
{
    const Host::MeshGeometry* mesh = MeshOf(m_mesh);
    return mesh != nullptr ? mesh->VertexCount() : 0;
}

LONG CGeometryAccessor::GetNodeCount() const
{
    const Host::MeshGeometry* mesh = MeshOf(m_mesh);
    return mesh != nullptr ? mesh->NodeCount() : 0;
}

LONG CGeometryAccessor::GetPolygonCount() const
{
    const Host::MeshGeometry* mesh = MeshOf(m_mesh);
    return mesh != nullptr ? mesh->PolygonCount() : 0;
}

LONG CGeometryAccessor::GetTriangleCount() const
{
    const Host::MeshGeometry* mesh = MeshOf(m_mesh);
    return mesh != nullptr ? mesh->TriangleCount() : 0;
}

CStatus CGeometryAccessor::GetVertexPositions(CDoubleArray& positions) const
{
    const Host::MeshGeometry* mesh = MeshOf(m_mesh);
    const bool isReadable = mesh != nullptr && mesh->ArePositionsReadable;
    return Answer(positions, isReadable ? &mesh->Positions : nullptr);
}

CStatus CGeometryAccessor::GetNodeNormals(CFloatArray& normals) const
{
    const Host::MeshGeometry* mesh = MeshOf(m_mesh);
    const bool isReadable = mesh != nullptr && mesh->AreNormalsReadable;
    return Answer(normals, isReadable ? &mesh->NodeNormals : nullptr);
}

CRefArray CGeometryAccessor::GetUserNormals() const
{
    return PropertiesOf(m_mesh, Host::ClusterPropertyKind::UserNormal);
}

CRefArray CGeometryAccessor::GetVertexColors() const
{
    return PropertiesOf(m_mesh, Host::ClusterPropertyKind::Color);
}

CRefArray CGeometryAccessor::GetUVs() const
{
    return PropertiesOf(m_mesh, Host::ClusterPropertyKind::Uv);
}

CRefArray CGeometryAccessor::GetEnvelopeWeights() const
{
    CRefArray envelopes;
    const Host::GeometryObject* geometry = GeometryOf(m_mesh);
    const Host::Object* primitive = geometry != nullptr ? Host::Objects().Find(geometry->Parent) : nullptr;
    if (primitive == nullptr) {
        return envelopes;
    }
    for (const Host::ObjectId id : primitive->Nested) {
        if (const CRef nested = CRef::FromObjectID(id); nested.IsA(siEnvelopeID)) {
            envelopes.Add(nested);
        }
    }
    return envelopes;
}

CRefArray CGeometryAccessor::GetMaterials() const
{
    const Host::MeshGeometry* mesh = MeshOf(m_mesh);
    return mesh != nullptr ? CRefArray(mesh->Materials) : CRefArray();
}

CStatus CGeometryAccessor::GetPolygonMaterialIndices(CLongArray& indices) const
{
    const Host::MeshGeometry* mesh = MeshOf(m_mesh);
    if (mesh != nullptr && mesh->PolygonMaterials.empty()) {
        indices = CLongArray(mesh->PolygonCount());
        return CStatus::OK;
    }
    return Answer(indices, mesh != nullptr ? &mesh->PolygonMaterials : nullptr);
}

CStatus CGeometryAccessor::GetTriangleVertexIndices(CLongArray& indices) const
{
    const Host::MeshGeometry* mesh = MeshOf(m_mesh);
    return Answer(indices, mesh != nullptr ? &mesh->TriangleVertices : nullptr);
}

CStatus CGeometryAccessor::GetTriangleNodeIndices(CLongArray& indices) const
{
    const Host::MeshGeometry* mesh = MeshOf(m_mesh);
    if (mesh != nullptr && mesh->TriangleNodes.empty()) {
        return Answer(indices, &mesh->TriangleVertices);
    }
    return Answer(indices, mesh != nullptr ? &mesh->TriangleNodes : nullptr);
}

CStatus CGeometryAccessor::GetPolygonTriangleIndices(CLongArray& indices) const
{
    const Host::MeshGeometry* mesh = MeshOf(m_mesh);
    if (mesh != nullptr && mesh->TrianglePolygons.empty()) {
        std::vector<LONG> own(static_cast<std::size_t>(mesh->TriangleCount()));
        std::iota(own.begin(), own.end(), 0);
        indices = CLongArray(std::move(own));
        return CStatus::OK;
    }
    return Answer(indices, mesh != nullptr ? &mesh->TrianglePolygons : nullptr);
}

} // namespace XSI
