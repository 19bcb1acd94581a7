#include "animation/AnimationDocument.h"
#include "animation/BuildCurveKeys.h"
#include "animation/BuildHermiteKeys.h"
#include "material/LookupTable.h"
#include "material/MaterialWords.h"
#include "pipeline/XmlWriter.h"

#include <algorithm>

namespace tq4x
{
namespace
{

constexpr float CurveTolerance = 0.001f;

/// Frame of the entry `k + 1` of a table over -1 to 1, whose curve runs from -255 to 255.
float FrameOfSignedEntry(std::size_t k)
{
    return (static_cast<float>(k) - 127.0f) / 127.0f * 255.0f;
}

/// The keys of the values of a table; the differences are the console's business.
std::vector<CurveKey> BuildTableKeys(const LookupTable& table)
{
    const std::size_t count = std::min(table.Samples.size(), LookupValueCount);
    AnimationCurve curve;
    curve.Tolerance = CurveTolerance;
    curve.Samples.assign(table.Samples.begin(), table.Samples.begin() + static_cast<std::ptrdiff_t>(count));
    IsConstantCheck(curve);
    if (curve.IsConstant)
        return {{0.0f, curve.Samples.front(), KeyKind::Linear, 0.0f, 0.0f}};

    const std::span<const float> values(curve.Samples);
    if (table.IsGeneratedAsAbs)
        BuildHermiteKeys(
            curve.Keys, values, [](std::size_t k) { return static_cast<float>(k); }, CurveTolerance);
    else
        BuildHermiteKeys(curve.Keys, values.subspan(1), FrameOfSignedEntry, CurveTolerance);
    return curve.Keys;
}

void WriteTable(XmlWriter& stream, const LookupTable& table)
{
    if (table.Samples.empty())
        return;
    const XmlAttributes attributes = {{"Name", table.Name},
                                      {"IsGeneratedAsAbs", table.IsGeneratedAsAbs},
                                      {"IsSizeDoubled", table.IsSizeDoubled},
                                      {"IsMipMap", table.IsMipMap}};
    stream.Element("ImageLookupTableQtr", attributes, [&] {
        stream.Element("CurveLookupTableQtr", [&] {
            WriteSegmentsCurve(stream, "SegmentsFloatCurve", BuildTableKeys(table), RepeatMethod::None,
                               RepeatMethod::None, false);
        });
    });
}

void WriteTableReference(XmlWriter& stream, const LookupTable& table)
{
    stream.Element("ReferenceLookupTableQtr", {{"TableName", table.Name}}, [&] {
        stream.Leaf("LookupTableSetContentReferenceQtr", "LookupTableSetContents[\"*\"]");
    });
}

} // namespace

void LookupTableSet::WriteXml(XmlWriter& stream, int level, std::string_view sectionName) const
{
    if (m_tables.empty())
        return;
    const auto writeSamplers = [&] {
        for (const LookupTable& table : m_tables)
            WriteTable(stream, table);
    };
    stream.AtLevel(level, [&] {
        stream.Element("LookupTableSetContents", [&] {
            stream.Element("LookupTableSetContentQtr", {{"Name", sectionName}}, [&] {
                stream.Element("LookupTableSet", {{"Name", ""}},
                               [&] { stream.Element("Samplers", writeSamplers); });
            });
        });
    });
}

void WriteLookupSampler(XmlWriter& stream, int level, std::string_view slotName,
                        const LookupTableSampler& sampler, const LookupTableSet& lookupTables)
{
    const XmlAttributes attributes = {{"IsAbs", sampler.IsAbs},
                                      {"Input", WordOf(LookupInputWords, sampler.Input)},
                                      {"Scale", WordOf(LookupScaleWords, sampler.Scale)}};
    const LookupTable* table = lookupTables.At(sampler.TableIndex);
    stream.AtLevel(level, [&] {
        stream.Element(slotName, attributes, [&] {
            if (table == nullptr)
                stream.Empty("NullLookupTableQtr");
            else
                WriteTableReference(stream, *table);
        });
    });
}

} // namespace tq4x
