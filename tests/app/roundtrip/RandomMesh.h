#pragma once

#include "RandomDraw.h"
#include "RandomMaterials.h"

#include <xsi_material.h>
#include <xsi_x3dobject.h>

#include <string>
#include <vector>

namespace tq4x::test
{

/// What meshes of a scene share.
struct MeshSupplies
{
    const std::vector<XSI::Material>& Materials;
    const std::vector<std::string>& Sets; ///< coordinate sets that the materials take
    TimeLine Time;
    std::size_t MostInfluences = 6; ///< of a vertex
};

/// Fills an empty mesh: polygons of three to six corners, normals shared by a vertex's corners or not, up to
/// three materials, all coordinate sets, and by chance colours and attributes of the user.
void DrawMesh(RandomDraw& draw, const XSI::X3DObject& mesh, const MeshSupplies& supplies);

/// Binds a mesh to some of the objects: to one alone, each vertex to one, or each to several.
void DrawSkin(RandomDraw& draw, const XSI::X3DObject& mesh, const std::vector<XSI::X3DObject>& bones,
              const MeshSupplies& supplies);

} // namespace tq4x::test
