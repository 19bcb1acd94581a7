#include "material/MaterialSet.h"

#include "pipeline/XmlWriter.h"

#include <algorithm>
#include <vector>

namespace tq4x
{
namespace
{

constexpr int MaterialsLevel = 4;
constexpr int AnimationsLevel = 4;

/// The order of the files. Materials of one name keep the order of creation.
std::vector<const Material*> SortedByName(const std::deque<MaterialEntry>& entries)
{
    std::vector<const Material*> materials;
    materials.reserve(entries.size());
    for (const MaterialEntry& entry : entries)
        materials.push_back(&entry.Material);
    std::ranges::stable_sort(materials, {}, &Material::Name);
    return materials;
}

} // namespace

MaterialEntry& MaterialSet::MaterialFor(const void* owner)
{
    const auto next = static_cast<std::int32_t>(Materials.size());
    const auto [place, isNew] = m_indices.try_emplace(owner, next);
    if (isNew)
        Materials.emplace_back().Index = next;
    return Materials[static_cast<std::size_t>(place->second)];
}

Material* MaterialSet::MaterialAt(std::int32_t index)
{
    const bool isInside = index >= 0 && static_cast<std::size_t>(index) < Materials.size();
    return isInside ? &Materials[static_cast<std::size_t>(index)].Material : nullptr;
}

const Material* MaterialSet::MaterialAt(std::int32_t index) const
{
    return const_cast<MaterialSet*>(this)->MaterialAt(index);
}

void MaterialSet::FinishAnimation(std::int32_t frameSize, bool isLoop, const MaterialTolerances& tolerances,
                                  int frameSteps)
{
    if (!HasAnimation)
        return;
    FrameSize = frameSize;
    IsLoop = isLoop;
    for (MaterialEntry& entry : Materials)
        entry.Material.FinishAnimation(isLoop, tolerances, frameSteps);
}

bool MaterialSet::HasAnimatedMember() const
{
    return std::ranges::any_of(Materials,
                               [](const MaterialEntry& entry) { return entry.Material.HasAnimatedMember(); });
}

void MaterialSet::WriteMaterials(XmlWriter& stream) const
{
    stream.AtLevel(MaterialsLevel, [&] {
        stream.Element("Materials", [&] {
            for (const Material* material : SortedByName(Materials))
                material->WriteXml(stream, stream.Level(), LookupTables);
        });
    });
}

std::string MaterialSet::WriteLookupTables(XmlWriter& stream, int level) const
{
    if (LookupTables.IsEmpty())
        return {};
    std::string sectionName = BaseName + ".MaterialLutset";
    LookupTables.WriteXml(stream, level, sectionName);
    return sectionName;
}

void MaterialSet::WriteAnimations(XmlWriter& stream)
{
    const std::vector<const Material*> materials = SortedByName(Materials);
    TexturePatterns.Clear();
    stream.AtLevel(AnimationsLevel, [&] {
        stream.Element("MemberAnimationDataSet", [&] {
            for (const Material* material : materials)
                material->WriteTextureAnimations(TexturePatterns, stream, stream.Level());
            for (const Material* material : materials)
                material->WriteMemberAnimations(stream, stream.Level());
        });
        TexturePatterns.WriteXml(stream, stream.Level());
    });
}

} // namespace tq4x
