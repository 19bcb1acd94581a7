#include "geometry/UpdatePolygonBones.h"

namespace tq4x
{

BoneList CollectCornerBones(std::span<const PolygonCorner> corners, const SkinWeightTable& table)
{
    BoneList bones;
    for (const PolygonCorner& corner : corners)
        for (const SkinInfluence& influence : InfluencesOf(table, corner))
            if (influence.Bone)
                InsertBone(bones, *influence.Bone);
    return bones;
}

void UpdatePolygonBones(SeparateDataShape& shape, Polygon& polygon)
{
    polygon.Bones = BoneListSet::None;
    if (shape.SkinWeights)
        polygon.Bones =
            shape.BoneLists.FindOrAdd(CollectCornerBones(CornersOf(shape, polygon), *shape.SkinWeights));
}

void UpdateAllPolygonBones(SeparateDataShape& shape)
{
    shape.BoneLists = {};
    ForEachPolygon(shape, [&](Polygon& polygon) { UpdatePolygonBones(shape, polygon); });
}

} // namespace tq4x
