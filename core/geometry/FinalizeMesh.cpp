#include "geometry/FinalizeMesh.h"

#include "geometry/AssignBoneTables.h"
#include "geometry/BuildBoneTuples.h"
#include "geometry/BuildPrimitiveSets.h"
#include "geometry/DropUnusedValues.h"
#include "geometry/MergePrimitiveSets.h"
#include "geometry/OrientedBoundingBox.h"
#include "geometry/RegroupPrimitives.h"
#include "geometry/WeldPools.h"

namespace tq4x
{

GeometryResult FinalizeShape(SeparateDataShape& shape)
{
    const GeometryResult result = BuildPrimitiveSets(shape);
    if (shape.PrimitiveSets.size() >= 2) {
        if (shape.ProgressCallback)
            shape.ProgressCallback();
        MergePrimitiveSets(shape);
    }
    RegroupPrimitives(shape);
    if (shape.SkinWeights) {
        AssignBoneTables(shape);
        BuildBoneTuples(shape); // after the tables: a tuple holds places in them
    }
    if (shape.Pool[VertexSlot::Position].Size() > 0)
        ComputeOrientedBoundingBox(shape.Pool.OrientedBoundingBox,
                                   shape.Pool[VertexSlot::Position].Read<Vector3>());
    return result;
}

bool FinalizeMesh(Mesh& mesh)
{
    bool isFine = true;
    WeldCache cache;
    for (auto& [material, shape] : mesh.Shapes) {
        WeldPools(*shape, cache); // before dropping: the order is that of the whole pool, used or not
        DropUnusedValues(*shape);
        isFine = FinalizeShape(*shape).Status == 0 && isFine;
    }
    return isFine;
}

} // namespace tq4x
