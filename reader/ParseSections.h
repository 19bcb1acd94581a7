#pragma once

#include "ElementReader.h"
#include "ReadAnimation.h"
#include "ReadModel.h"
#include "ReadStage.h"
#include "ReadTexture.h"

namespace tq4x::reader
{

// One function for each section of the files, from the element named by the parameter. An absent element
// gives the record's defaults.

[[nodiscard]] Model ParseModel(const ElementReader& content);
[[nodiscard]] Shape ParseShape(const ElementReader& shape);
[[nodiscard]] VertexStream ParseVertexStream(const ElementReader& attribute, const Vector3& positionOffset);
[[nodiscard]] IndexStream ParseIndexStream(const ElementReader& stream);
[[nodiscard]] Material ParseMaterial(const ElementReader& material);
[[nodiscard]] TextureReference ParseTextureReference(const ElementReader& reference);
[[nodiscard]] LookupTableSampler ParseSampler(const ElementReader& sampler);
[[nodiscard]] LookupTableSet ParseLookupTables(const ElementReader& content);
[[nodiscard]] Skeleton ParseSkeleton(const ElementReader& skeleton);
[[nodiscard]] Texture ParseTexture(const ElementReader& texture);
[[nodiscard]] Curve ParseCurve(const ElementReader& curve);
[[nodiscard]] AnimationHead ParseAnimationHead(const ElementReader& animation);
[[nodiscard]] std::vector<MemberAnimation> ParseMembers(const ElementReader& animation);
[[nodiscard]] SkeletalAnimation ParseSkeletalAnimation(const ElementReader& animation);
[[nodiscard]] MaterialAnimation ParseMaterialAnimation(const ElementReader& animation);
[[nodiscard]] VisibilityAnimation ParseVisibilityAnimation(const ElementReader& animation);
[[nodiscard]] Stage ParseStage(const ElementReader& content);

} // namespace tq4x::reader
