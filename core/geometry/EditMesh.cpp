#include "geometry/EditMesh.h"

#include "geometry/UpdatePolygonBones.h"

#include <utility>

namespace tq4x
{

void SetAttributeFlag(Mesh& mesh, VertexSlot slot, bool value)
{
    if (!IsBoneSlot(slot))
        mesh.AttributeFlags[IndexOf(slot)] = value;
}

void SetSkinWeights(Mesh& mesh, std::unique_ptr<SkinWeightTable> table)
{
    mesh.SkinWeights = std::move(table);
    for (auto& [material, shape] : mesh.Shapes) {
        shape->SkinWeights = mesh.SkinWeights.get();
        UpdateAllPolygonBones(*shape);
    }
}

SeparateDataShape& GetOrCreateShape(Mesh& mesh, std::uint32_t materialIndex)
{
    std::unique_ptr<SeparateDataShape>& shape = mesh.Shapes[materialIndex];
    if (!shape) {
        shape = std::make_unique<SeparateDataShape>();
        shape->BoneCapacity = mesh.BoneCapacity;
        shape->Name = mesh.NodeName;
        shape->AttributeFlags = mesh.AttributeFlags;
        shape->Pool = mesh.Pool;
        shape->SkinWeights = mesh.SkinWeights.get();
        shape->ProgressCallback = mesh.ProgressCallback;
    }
    return *shape;
}

std::int32_t CountShapes(const Mesh& mesh)
{
    return static_cast<std::int32_t>(mesh.Shapes.size());
}

} // namespace tq4x
