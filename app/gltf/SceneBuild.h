#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <xsi_material.h>
#include <xsi_x3dobject.h>

#include "gltf/AnimationTracks.h"
#include "gltf/CoordinateSets.h"
#include "gltf/MeshContent.h"
#include "gltf/OpenScene.h"
#include "gltf/PageParameters.h"

// The steps that turn a document into objects of the host. Each takes over one kind of thing; `OpenScene`
// calls them in the order in which they stand here.
namespace tq4x::gltf
{

/// What the steps share: the document, and the objects that were made from it so far.
struct SceneBuild
{
    std::shared_ptr<const Document> Source; ///< shared with what reads pictures later
    SceneOptions Options;
    AnimationTracks Tracks;
    CoordinateSets Sets;
    std::vector<std::size_t> Order;      ///< nodes of the scene, parents first
    std::vector<XSI::X3DObject> Objects; ///< by node; invalid for nodes of other scenes
    std::vector<XSI::X3DObject>
        Cameras; ///< by node: the object itself, or a child where the node has a mesh too
    std::vector<XSI::X3DObject> Lights;   ///< by node, likewise
    std::vector<XSI::Material> Materials; ///< by material
    XSI::Material DefaultMaterial;        ///< of primitives without one; made when first needed
    std::map<std::size_t, std::vector<JointWeights>> Weights; ///< by node, until the envelopes are made
    std::set<std::size_t> NotedMeshes;                        ///< meshes whose oddities were noted
    Notes Remarks;
};

/// Sets the frames of the project property `Play Control` from the tracks.
void SetPlayControl(const SceneBuild& build);

/// Makes a material with its shaders, clips and coordinate sets for each of the document.
void BuildMaterials(SceneBuild& build, const PageParameters& pages);

/// The material of a primitive; for none the default one.
[[nodiscard]] XSI::Material MaterialOf(SceneBuild& build, const Index& material);

/// Makes the objects of all nodes of the scene under their parents, with their meshes, cameras and lights.
void BuildObjects(SceneBuild& build);

/// Makes the mesh object of a node.
[[nodiscard]] XSI::X3DObject BuildMesh(SceneBuild& build, std::size_t node, const XSI::CRef& parent,
                                       const std::string& name, std::uint64_t& corners);

/// Sets the parameters of a camera or light from its record and from what moves it.
void SetCamera(const SceneBuild& build, std::size_t camera, const XSI::X3DObject& object, Notes& notes);
void SetLight(const SceneBuild& build, std::size_t light, const XSI::X3DObject& object);

/// Places all objects, at rest or by their tracks.
void PlaceObjects(SceneBuild& build);

/// Gives joints and skinned meshes their bind poses.
void SetBindPoses(SceneBuild& build);

/// Sets `viewvis` on nodes that are hidden at some time, and on what lies below them.
void SetVisibilities(SceneBuild& build);

/// Sets parameters of the plug-in's properties from custom properties of nodes, meshes, materials and the
/// scene.
void ApplyExtras(SceneBuild& build, const PageParameters& pages);

/// A name in the host, with a note if it had to be changed.
[[nodiscard]] std::string HostName(const std::string& name, Notes& notes);

} // namespace tq4x::gltf
