#pragma once

#include <string_view>
#include <vector>

#include <xsi_cluster.h>
#include <xsi_clusterproperty.h>
#include <xsi_envelope.h>
#include <xsi_material.h>
#include <xsi_primitive.h>
#include <xsi_x3dobject.h>

#include "scene/MeshGeometry.h"
#include "scene/Records.h"

namespace XSI::Host
{

/// A polygon mesh object. The materials of the geometry count it among their users.
X3DObject CreateMesh(const CRef& parent, std::string_view name, MeshGeometry geometry);

/// The geometry, for changes after the mesh was made; null if the object has none.
MeshGeometry* FindMesh(const CRef& object);

/// Gives an object or a cluster a material of its own.
void SetMaterial(const CRef& user, const CRef& material);

/// Enters an object or a cluster among the users of a material, once.
void AddMaterialUser(const CRef& material, const CRef& user);

/// A cluster on a mesh, behind those that it has.
Cluster CreateCluster(const CRef& mesh, std::string_view name);

/// Values per node: colours and attributes of the user, coordinates, or normals. The values are taken as they
/// are, whatever their count is.
ClusterProperty AddClusterProperty(const CRef& mesh, ClusterPropertyKind kind, std::string_view name,
                                   LONG valueSize, std::vector<float> values);

/// Makes GetValues of a property fail, or no longer.
void SetReadable(const ClusterProperty& property, bool isReadable);

/// Adds the projection of a coordinate set: the parameters `projsclu` to `projsclw` at 1, `projrotu` to
/// `projrotw` and `projtrsu` to `projtrsw` at 0, `wrap_u` and `wrap_v`.
Primitive AddProjection(const ClusterProperty& coordinates, bool wrapU = true, bool wrapV = true);

/// Binds a mesh to the objects that move it.
Envelope AddEnvelope(const CRef& mesh, std::vector<DeformerWeights> deformers);

} // namespace XSI::Host
