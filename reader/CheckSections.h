#pragma once

#include <filesystem>
#include <string_view>

#include "Finding.h"
#include "ReadDocument.h"

namespace tq4x::reader
{

// What belongs together inside one file, checked on its records.

void CheckModel(const Model& model, FindingList& findings);
void CheckShape(const Model& model, const Shape& shape, std::string_view place, FindingList& findings);
void CheckMaterials(const Model& model, FindingList& findings);
void CheckSkeleton(const Skeleton& skeleton, FindingList& findings);
void CheckTexture(const Texture& texture, FindingList& findings);
void CheckCurve(const Curve& curve, std::string_view place, FindingList& findings);
void CheckMembers(const AnimationHead& head, const std::vector<MemberAnimation>& members,
                  FindingList& findings);
void CheckSkeletalAnimation(const SkeletalAnimation& animation, FindingList& findings);
void CheckMaterialAnimation(const MaterialAnimation& animation, FindingList& findings);
void CheckVisibilityAnimation(const VisibilityAnimation& animation, FindingList& findings);
void CheckStage(const Stage& stage, FindingList& findings);
void CheckLookupTables(const LookupTableSet& set, FindingList& findings);

/// A table that a sampler names must be in the set.
void CheckSampler(const LookupTableSampler& sampler, const LookupTableSet& set, std::string_view place,
                  FindingList& findings);

// What a file refers to in the files beside it.

/// A texture's file must exist below the folder of the file that refers to it.
void CheckTextureFile(const TextureReference& reference, const std::filesystem::path& folder,
                      FindingList& findings);

void CheckAgainstModel(const SkeletalAnimation& animation, const Model& model, FindingList& findings);
void CheckAgainstModel(const MaterialAnimation& animation, const Model& model, FindingList& findings);
void CheckAgainstModel(const VisibilityAnimation& animation, const Model& model, FindingList& findings);

} // namespace tq4x::reader
