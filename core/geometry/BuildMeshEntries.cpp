#include "geometry/BuildMeshEntries.h"

#include "geometry/CloneMesh.h"
#include "geometry/EditMesh.h"

#include <unordered_set>
#include <utility>

namespace tq4x
{

void BuildMeshEntries(SkeletalModelWriter& content)
{
    content.MeshEntries.clear();
    std::unordered_set<const Mesh*> seen;
    std::int32_t firstShapeIndex = 0;
    for (Bone* bone : content.Bones) {
        if (!bone->IsOutput || !bone->Mesh)
            continue;
        Mesh* mesh = bone->Mesh;
        if (!seen.insert(mesh).second) {
            content.Meshes.push_back(CloneMesh(*mesh));
            mesh = content.Meshes.back().get();
        }
        content.MeshEntries.push_back({bone, mesh, firstShapeIndex});
        firstShapeIndex += CountShapes(*mesh);
    }
}

} // namespace tq4x
