#include "geometry/CloneMesh.h"

namespace tq4x
{

std::unique_ptr<SeparateDataShape> CloneShape(const SeparateDataShape& shape, const SkinWeightTable* table)
{
    auto clone = std::make_unique<SeparateDataShape>(shape);
    clone->SkinWeights = table;
    return clone;
}

std::unique_ptr<Mesh> CloneMesh(const Mesh& mesh)
{
    auto clone = std::make_unique<Mesh>();
    clone->BoneCapacity = mesh.BoneCapacity;
    clone->AttributeFlags = mesh.AttributeFlags;
    clone->NodeName = mesh.NodeName;
    clone->ProgressCallback = mesh.ProgressCallback;
    clone->Pool = mesh.Pool;
    clone->CombineGroup = mesh.CombineGroup;
    if (mesh.SkinWeights)
        clone->SkinWeights = std::make_unique<SkinWeightTable>(*mesh.SkinWeights);
    for (const auto& [material, shape] : mesh.Shapes)
        clone->Shapes[material] = CloneShape(*shape, clone->SkinWeights.get());
    return clone;
}

} // namespace tq4x
