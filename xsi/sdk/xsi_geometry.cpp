#include <xsi_geometry.h>

#include <xsi_cluster.h>
#include <xsi_clusterproperty.h>
#include <xsi_envelope.h>
#include <xsi_material.h>
#include <xsi_polygonmesh.h>
#include <xsi_primitive.h>

#include "scene/Session.h"

namespace XSI
{

namespace
{

const Host::EnvelopeObject* EnvelopeOf(const CRef& ref)
{
    return Host::Objects().Find<Host::EnvelopeObject>(ref);
}

/// Puts one deformer's weights into every `stride`-th place from `first` on.
void Spread(const Host::DeformerWeights& deformer, LONG vertexCount, std::size_t first, std::size_t stride,
            std::vector<double>& weights)
{
    for (const auto& [vertex, weight] : deformer.Weights) {
        if (vertex >= 0 && vertex < vertexCount) {
            weights[first + static_cast<std::size_t>(vertex) * stride] = weight;
        }
    }
}

} // namespace

Geometry Primitive::GetGeometry(double) const
{
    const auto* primitive = Host::Objects().Find<Host::PrimitiveObject>(GetRef());
    return primitive != nullptr ? CRef::FromObjectID(primitive->Geometry) : CRef();
}

CRefArray Geometry::GetClusters() const
{
    const auto* geometry = Host::Objects().Find<Host::GeometryObject>(GetRef());
    return geometry != nullptr ? Host::RefsOf(Host::Objects(), geometry->Clusters) : CRefArray();
}

CGeometryAccessor PolygonMesh::GetGeometryAccessor(siConstructionMode mode, siSubdivisionRuleType rule,
                                                   LONG level, bool useDiscontinuity,
                                                   double discontinuityAngle) const
{
    return CGeometryAccessor(GetRef(), {mode, rule, level, useDiscontinuity, discontinuityAngle});
}

Material Cluster::GetMaterial() const
{
    const auto* cluster = Host::Objects().Find<Host::ClusterObject>(GetRef());
    return cluster != nullptr ? CRef::FromObjectID(cluster->Material) : CRef();
}

LONG ClusterProperty::GetValueSize() const
{
    const auto* property = Host::Objects().Find<Host::ClusterPropertyObject>(GetRef());
    return property != nullptr ? property->ValueSize : 0;
}

CStatus ClusterProperty::GetValues(CFloatArray& values) const
{
    const auto* property = Host::Objects().Find<Host::ClusterPropertyObject>(GetRef());
    const bool isReadable = property != nullptr && property->IsReadable;
    values = isReadable ? CFloatArray(property->Values) : CFloatArray();
    return isReadable ? CStatus::OK : CStatus::Fail;
}

CRefArray Envelope::GetDeformers() const
{
    CRefArray deformers;
    if (const Host::EnvelopeObject* envelope = EnvelopeOf(GetRef())) {
        for (const Host::DeformerWeights& deformer : envelope->Deformers) {
            deformers.Add(deformer.Deformer);
        }
    }
    return deformers;
}

CDoubleArray Envelope::GetDeformerWeights(const CRef& deformer, double) const
{
    const Host::EnvelopeObject* envelope = EnvelopeOf(GetRef());
    if (envelope == nullptr) {
        return CDoubleArray();
    }
    for (const Host::DeformerWeights& entry : envelope->Deformers) {
        if (entry.Deformer == deformer) {
            std::vector<double> weights(static_cast<std::size_t>(envelope->VertexCount));
            Spread(entry, envelope->VertexCount, 0, 1, weights);
            return CDoubleArray(std::move(weights));
        }
    }
    return CDoubleArray();
}

CDoubleArray Envelope::GetWeights(double) const
{
    const Host::EnvelopeObject* envelope = EnvelopeOf(GetRef());
    if (envelope == nullptr) {
        return CDoubleArray();
    }
    const std::size_t count = envelope->Deformers.size();
    std::vector<double> weights(static_cast<std::size_t>(envelope->VertexCount) * count);
    for (std::size_t i = 0; i < count; ++i) {
        Spread(envelope->Deformers[i], envelope->VertexCount, i, count, weights);
    }
    return CDoubleArray(std::move(weights));
}

} // namespace XSI
