#include "geometry/PrepareSkin.h"

#include "geometry/TransformShape.h"
#include "geometry/UpdatePolygonBones.h"
#include "scene/NodeMatrices.h"
#include "scene/ReHomeSingleBoneMesh.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>
#include <vector>

namespace tq4x
{
namespace
{

bool HasShare(const SkinInfluence& influence)
{
    return influence.Percentage > 0;
}

/// The vertices of the weight table that corners of the shape refer to, ascending.
std::vector<std::size_t> CollectVertices(const SeparateDataShape& shape)
{
    std::vector<bool> isUsed(shape.SkinWeights->size());
    for (const PolygonCorner& corner : shape.Corners)
        if (corner.VertexIndex >= 0 && static_cast<std::size_t>(corner.VertexIndex) < isUsed.size())
            isUsed[static_cast<std::size_t>(corner.VertexIndex)] = true;
    std::vector<std::size_t> vertices;
    for (std::size_t i = 0; i < isUsed.size(); ++i)
        if (isUsed[i])
            vertices.push_back(i);
    return vertices;
}

bool IsRigid(const SkinWeightTable& table, const std::vector<std::size_t>& vertices)
{
    return std::all_of(vertices.begin(), vertices.end(), [&](std::size_t vertex) {
        return std::count_if(table[vertex].begin(), table[vertex].end(), HasShare) == 1;
    });
}

/// Leaves the one influence that has a share.
void ReduceEntries(SkinWeightTable& table, const std::vector<std::size_t>& vertices)
{
    for (const std::size_t vertex : vertices) {
        SkinWeightEntry& entry = table[vertex];
        const auto influence = std::find_if(entry.begin(), entry.end(), HasShare);
        entry = {*influence};
    }
}

/// From the mesh's space into the spaces of the bones, by `BoneIndex`; the identity for bones that move none
/// of the vertices.
std::vector<Matrix44> BuildRigidMatrices(const SkinWeightTable& table,
                                         const std::vector<std::size_t>& vertices, const Bone& meshBone)
{
    std::vector<const Bone*> bones;
    for (const std::size_t vertex : vertices) {
        const Bone* bone = table[vertex].front().Bone;
        if (!bone || bone->BoneIndex < 0)
            continue;
        const auto index = static_cast<std::size_t>(bone->BoneIndex);
        if (index >= bones.size())
            bones.resize(index + 1);
        if (!bones[index])
            bones[index] = bone;
    }
    const Matrix44 meshMatrix = GetBindGlobalMatrix(meshBone);
    std::vector<Matrix44> matrices(bones.size());
    for (std::size_t i = 0; i < bones.size(); ++i)
        if (bones[i])
            matrices[i] = Multiply(meshMatrix, InvertMatrix(GetBindGlobalMatrix(*bones[i])));
    return matrices;
}

void MakeRigid(SeparateDataShape& shape, SkinWeightTable& table, const std::vector<std::size_t>& vertices,
               const Bone& meshBone)
{
    ReduceEntries(table, vertices);
    TransformRigid(shape, BuildRigidMatrices(table, vertices, meshBone));
    shape.IsRigidSkinning = true;
}

} // namespace

void PrepareSkin(Mesh& mesh, Bone& bone, AdjustSkinning adjustSkinning)
{
    if (adjustSkinning != AdjustSkinning::RigidSkinning && ReHomeSingleBoneMesh(mesh, bone))
        return;
    if (!mesh.SkinWeights)
        return;
    std::vector<SeparateDataShape*> smoothShapes;
    for (auto& [material, shape] : mesh.Shapes) {
        const std::vector<std::size_t> vertices = CollectVertices(*shape);
        if (IsRigid(*mesh.SkinWeights, vertices))
            MakeRigid(*shape, *mesh.SkinWeights, vertices, bone);
        else
            smoothShapes.push_back(shape.get());
    }
    TransformShapes(smoothShapes, GetBindGlobalMatrix(bone));
    if (smoothShapes.size() == mesh.Shapes.size())
        return;
    // A rigid shape cut entries that polygons of every shape may refer to.
    for (auto& [material, shape] : mesh.Shapes)
        UpdateAllPolygonBones(*shape);
}

void PrepareSkins(std::span<Bone* const> bones, AdjustSkinning adjustSkinning)
{
    std::unordered_set<const Mesh*> prepared;
    for (Bone* bone : bones)
        if (bone->Mesh && prepared.insert(bone->Mesh).second)
            PrepareSkin(*bone->Mesh, *bone, adjustSkinning);
}

} // namespace tq4x
