#include "geometry/MarkNeededBones.h"

#include "geometry/Mesh.h"
#include "scene/Bone.h"

#include <cstddef>
#include <vector>

namespace tq4x
{
namespace
{

void MarkInfluences(const SkinWeightEntry& entry, Mesh& mesh)
{
    for (const SkinInfluence& influence : entry)
        if (influence.Bone) {
            influence.Bone->IsNeededRendering = true;
            influence.Bone->SkinOwner = &mesh;
        }
}

} // namespace

void MarkNeededBones(Mesh& mesh, Bone& bone)
{
    if (!mesh.SkinWeights) {
        bone.IsNeededRendering = true;
        return;
    }
    const SkinWeightTable& table = *mesh.SkinWeights;
    std::vector<bool> isMarked(table.size());
    for (const auto& [material, shape] : mesh.Shapes)
        for (const PolygonCorner& corner : shape->Corners) {
            const auto vertex = static_cast<std::size_t>(corner.VertexIndex);
            if (corner.VertexIndex < 0 || vertex >= table.size() || isMarked[vertex])
                continue;
            isMarked[vertex] = true;
            MarkInfluences(table[vertex], mesh);
        }
}

} // namespace tq4x
