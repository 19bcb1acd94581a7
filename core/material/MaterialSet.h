#pragma once

#include "material/LookupTable.h"
#include "material/Material.h"
#include "material/TextureReference.h"
#include "material/TextureSet.h"

#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>

namespace tq4x
{

class XmlWriter;

/// A material and its number, which shapes refer to.
struct MaterialEntry
{
    std::int32_t Index = 0; ///< order of creation
    tq4x::Material Material;
};

/// Everything of an export that belongs to materials. Materials only grow; their addresses stay.
struct MaterialSet
{
    std::deque<MaterialEntry> Materials; ///< in the order of creation
    TextureSet Textures;
    LookupTableSet LookupTables;
    TexturePatternList TexturePatterns; ///< of the material animation file written last
    std::string BaseName;               ///< stands before the ending of the lookup section's name
    std::int32_t FrameSize = 0;         ///< length of the animation in frames
    bool IsLoop = false;
    bool HasAnimation = false; ///< the material animation file is wanted

    /// The material of a collector, made at the first call. The owner is compared by address alone.
    MaterialEntry& MaterialFor(const void* owner);

    /// By order of creation; nothing if there is none.
    Material* MaterialAt(std::int32_t index);
    const Material* MaterialAt(std::int32_t index) const;

    /// Makes the keys of all materials, but only if `HasAnimation` is set. `frameSteps` samples make a frame.
    void FinishAnimation(std::int32_t frameSize, bool isLoop, const MaterialTolerances& tolerances,
                         int frameSteps);

    /// True if the material animation file would hold a member.
    bool HasAnimatedMember() const;

    /// `Materials` at level 4, sorted by name. The names of the lookup tables must be unique by then.
    void WriteMaterials(XmlWriter& stream) const;

    /// The section of the lookup tables. Returns its name, `BaseName` and ".MaterialLutset", or an empty
    /// string if there is no table and nothing was written.
    std::string WriteLookupTables(XmlWriter& stream, int level) const;

    /// `MemberAnimationDataSet` and `TexturePatterns` at level 4.
    void WriteAnimations(XmlWriter& stream);

private:
    std::unordered_map<const void*, std::int32_t> m_indices; ///< by owner; never walked
};

} // namespace tq4x
