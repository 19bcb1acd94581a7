#include "scene/ReHomeSingleBoneMesh.h"

#include "geometry/EditMesh.h"
#include "geometry/TransformShape.h"
#include "scene/Bone.h"
#include "scene/NodeMatrices.h"

#include <utility>
#include <vector>

namespace tq4x
{
namespace
{

/// The one bone with a share in the vertices; none if there are several, or none.
Bone* FindSingleBone(const SkinWeightTable& table)
{
    Bone* single = nullptr;
    for (const SkinWeightEntry& entry : table)
        for (const SkinInfluence& influence : entry) {
            if (influence.Percentage <= 0)
                continue;
            if (!influence.Bone || (single && influence.Bone != single))
                return nullptr;
            single = influence.Bone;
        }
    return single;
}

void MoveShapes(Mesh& mesh, const Bone& from, const Bone& to)
{
    std::vector<SeparateDataShape*> shapes;
    for (auto& [material, shape] : mesh.Shapes)
        shapes.push_back(shape.get());
    TransformShapes(shapes, Multiply(GetBindGlobalMatrix(from), InvertMatrix(GetBindGlobalMatrix(to))));
}

/// Where both have a shape of one material the target's stays.
void MergeShapes(Mesh& mesh, Mesh& target)
{
    for (auto& [material, shape] : mesh.Shapes)
        target.Shapes.try_emplace(material, std::move(shape));
    mesh.Shapes.clear();
}

} // namespace

bool ReHomeSingleBoneMesh(Mesh& mesh, Bone& meshBone)
{
    Bone* const target = mesh.SkinWeights ? FindSingleBone(*mesh.SkinWeights) : nullptr;
    if (!target)
        return false;
    // Two skins can't be merged; taking the mesh from its bone would lose it.
    if (target != &meshBone && target->Mesh && target->Mesh->SkinWeights)
        return false;
    MoveShapes(mesh, meshBone, *target);
    SetSkinWeights(mesh, nullptr);
    meshBone.Mesh = nullptr;
    if (target->Mesh)
        MergeShapes(mesh, *target->Mesh);
    else
        target->Mesh = &mesh;
    mesh.NodeName = target->Name;
    target->IsVisible = meshBone.IsVisible;
    target->VisibilityCurve = meshBone.VisibilityCurve;
    return true;
}

} // namespace tq4x
