#include "collect/ReadEnvelope.h"

#include "collect/ExportX3DObject.h"
#include "export/Each.h"
#include "export/ExportContext.h"
#include "geometry/NormalizeInfluences.h"
#include "pipeline/MessageLog.h"

#include <xsi_doublearray.h>

#include <algorithm>
#include <cmath>

namespace tq4x
{
namespace
{

/// A vertex is fully weighted from here on; what is missing is put right by normalising.
constexpr double LeastWeightSum = 99.9;

/// Percentages outside this range can't come from a sane scene and are held within it.
constexpr double LargestPercentage = 1e6;

std::int32_t TruncatePercentage(double weight)
{
    return static_cast<std::int32_t>(std::clamp(weight, -LargestPercentage, LargestPercentage));
}

ReadResult GiveUp(MessageCode code, const std::string& name)
{
    ReportMessage(code, name);
    return ReadResult::GivenUp;
}

void AddDeformer(Bone& bone, const XSI::CDoubleArray& weights, SkinWeightTable& table,
                 std::vector<double>& sums)
{
    for (std::size_t vertex = 0; vertex < table.size(); ++vertex) {
        const double weight = weights[static_cast<LONG>(vertex)];
        if (weight == 0.0)
            continue;
        sums[vertex] += weight;
        if (std::isfinite(weight)) // the sum tells of the others
            table[vertex].push_back({&bone, TruncatePercentage(weight)});
    }
}

} // namespace

XSI::Envelope FindEnvelope(const XSI::X3DObject& object)
{
    const XSI::CRefArray envelopes = object.GetEnvelopes();
    return envelopes.GetCount() > 0 ? XSI::Envelope(envelopes[0]) : XSI::Envelope();
}

ReadResult ReadEnvelope(const ExportContext& context, const XSI::Envelope& envelope,
                        const InstancePath& instances, std::size_t vertexCount, const std::string& name,
                        std::unique_ptr<SkinWeightTable>& table)
{
    table = std::make_unique<SkinWeightTable>(vertexCount);
    std::vector<double> sums(vertexCount, 0.0);
    for (const XSI::CRef& deformer : Each(envelope.GetDeformers())) {
        const XSI::CDoubleArray weights = envelope.GetDeformerWeights(deformer);
        if (static_cast<std::size_t>(weights.GetCount()) != vertexCount)
            return GiveUp(MessageCode::InternalError, name);
        ExportX3DObject* collector = context.FindX3DObject(deformer, instances);
        if (collector == nullptr)
            return GiveUp(MessageCode::InternalError, name);
        AddDeformer(collector->TargetBone(), weights, *table, sums);
    }
    const auto isFull = [](double sum) { return std::isfinite(sum) && sum >= LeastWeightSum; };
    if (!std::all_of(sums.begin(), sums.end(), isFull))
        return GiveUp(MessageCode::WrongWeightedVertices, name);
    for (SkinWeightEntry& entry : *table)
        NormalizeInfluences(entry);
    return ReadResult::Done;
}

} // namespace tq4x
