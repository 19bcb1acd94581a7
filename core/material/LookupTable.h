#pragma once

#include "material/MaterialEnums.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tq4x
{

class XmlWriter;

/// Values of a table, and as many differences behind them.
inline constexpr std::size_t LookupValueCount = 256;
inline constexpr std::size_t LookupSampleCount = 2 * LookupValueCount;

/// A function of a cosine that the console's lighting reads: half of a highlight, the rim of a cone.
struct LookupTable
{
    std::string Name;
    bool IsGeneratedAsAbs = false; ///< covers 0 to 1; otherwise -1 to 1 with the middle at entry 128
    bool IsSizeDoubled = false;
    bool IsMipMap = false;
    /// Entries 0 to 255 are values, 256 to 511 the differences to the next value. Empty until built.
    std::vector<float> Samples;

    // Each generator replaces the samples and nothing else. Formulas are single precision; powers, roots and
    // cosines are taken in double precision on single-precision arguments and narrowed. At the end samples
    // strictly between -1e-06 and 1e-06 become 0.

    /// `scale` times the power of x from 0 to 1. A negative exponent at x = 0 gives the largest float.
    void BuildSpecular(float exponent, float scale);

    /// The microfacet distribution along the zenith angle. A singular point gives 1000.
    void BuildAnisotropicZenith(float roughness);

    /// The distribution around the axis, symmetric about entry 128. A singular point gives 1000.
    void BuildAnisotropicAzimuth(float roughness);

    /// 0 outside the outer half angle, 1 inside the inner one, a ramp between them. Angles in degrees; equal
    /// angles give a step. An angle that is not finite counts as one of cosine 0.
    void BuildSpotRange(float innerAngle, float outerAngle);
};

/// How a shader or a light reads a lookup table.
struct LookupTableSampler
{
    bool IsAbs = true;
    LookupInput Input = LookupInput::CosNormalHalf;
    LookupScale Scale = LookupScale::One;
    std::int32_t TableIndex = -1; ///< place in the `LookupTableSet`; -1: no table

    bool operator==(const LookupTableSampler&) const = default;
};

/// The lookup tables of all materials, or of all lights. Tables with the same content are kept once; a
/// sampler refers to its table by index.
class LookupTableSet
{
public:
    /// Index of the first table whose three flags are equal and whose samples all compare equal; names take
    /// no part, and a table with a not-a-number never matches.
    std::optional<std::int32_t> Find(const LookupTable& table) const;

    /// Appends a table and returns its index.
    std::int32_t Add(LookupTable table);

    /// The index of the table that `Find` finds, else of the table itself, appended. A shared table keeps the
    /// name of the first.
    std::int32_t FindOrAdd(LookupTable table);

    /// Nothing for an index outside the set.
    const LookupTable* At(std::int32_t index) const;

    const std::vector<LookupTable>& Tables() const { return m_tables; }

    bool IsEmpty() const { return m_tables.empty(); }

    /// Gives tables whose name an earlier table bears the suffix "_1", "_2" and so on, the first that no
    /// earlier table bears. To be called once at the head of a file that holds the set, since samplers refer
    /// to tables by name; a second call changes nothing.
    void MakeNamesUnique();

    /// Writes the section `LookupTableSetContents` at the given level; nothing for an empty set.
    void WriteXml(XmlWriter& stream, int level, std::string_view sectionName) const;

private:
    std::vector<LookupTable> m_tables;
    std::unordered_map<std::uint64_t, std::vector<std::int32_t>> m_indicesByHash; ///< each list ascending
};

/// Writes a sampler as the element `slotName` at the given level, with the present name of its table. An
/// index outside the set counts as no table.
void WriteLookupSampler(XmlWriter& stream, int level, std::string_view slotName,
                        const LookupTableSampler& sampler, const LookupTableSet& lookupTables);

} // namespace tq4x
