#include <algorithm>
#include <cmath>
#include <map>
#include <string>

#include "gltf/AccessorReader.h"
#include "gltf/MeshParts.h"
#include "gltf/SceneError.h"

namespace tq4x::gltf
{
namespace
{

/// How far a sum of weights may be from 1 without a word: the rounding of weights of one byte.
constexpr double SumTolerance = 0.02;

/// The influences of one vertex: joint and weight, each joint once.
using Influences = std::vector<std::pair<std::size_t, double>>;

/// JOINTS_n and WEIGHTS_n of a part.
struct InfluenceSet
{
    std::vector<std::uint32_t> Joints;
    std::vector<float> Weights;
};

std::vector<InfluenceSet> ReadSets(const Document& document, const MeshPart& part)
{
    std::vector<InfluenceSet> sets;
    for (std::size_t n = 0;; ++n) {
        const Index joints = part.Source->Find("JOINTS_" + std::to_string(n));
        const Index weights = part.Source->Find("WEIGHTS_" + std::to_string(n));
        if (!joints || !weights) {
            return sets;
        }
        sets.push_back({ReadIntegersAt(document, *joints, part.Vertices),
                        ReadFloatsAt(document, *weights, part.Vertices)});
    }
}

void AddInfluence(Influences& influences, std::size_t joint, double weight)
{
    const auto known = std::ranges::find(influences, joint, &Influences::value_type::first);
    if (known == influences.end()) {
        influences.emplace_back(joint, weight);
    } else {
        known->second += weight;
    }
}

/// Weights of 0 and those that are no numbers say nothing, and neither do the joints beside them.
Influences ReadVertex(const std::vector<InfluenceSet>& sets, const MeshPart& part, std::size_t vertex,
                      std::size_t jointCount)
{
    Influences influences;
    for (std::size_t n = 0; n < sets.size(); ++n) {
        for (std::size_t i = 4 * vertex; i < 4 * vertex + 4; ++i) {
            const double weight = sets[n].Weights[i];
            if (!std::isfinite(weight) || weight == 0.0) {
                continue;
            }
            if (sets[n].Joints[i] >= jointCount) {
                throw SceneError(part.Place + "/attributes/JOINTS_" + std::to_string(n),
                                 "Vertex " + std::to_string(part.Vertices[vertex]) + " names joint " +
                                     std::to_string(sets[n].Joints[i]) + "; the skin has " +
                                     std::to_string(jointCount) + ".");
            }
            AddInfluence(influences, sets[n].Joints[i], weight);
        }
    }
    return influences;
}

/// Scales the weights to 100 percent, with so many digits as single precision has: the exporter cuts
/// percentages down to whole ones, so 0.7, which is 69.9999988 percent, must come as 70. False if they have
/// no sum to scale by.
bool ScaleToPercent(Influences& influences, std::size_t& scaledCount)
{
    constexpr double Digits = 1e4;
    double sum = 0.0;
    for (const auto& [joint, weight] : influences) {
        sum += weight;
    }
    if (!(sum > 0.0)) {
        return false;
    }
    scaledCount += std::abs(sum - 1.0) > SumTolerance ? 1 : 0;
    for (auto& [joint, weight] : influences) {
        weight = std::round(weight * 100.0 / sum * Digits) / Digits;
    }
    return true;
}

void NoteWeights(std::size_t scaledCount, std::size_t emptyCount, const std::string& meshName, Notes& notes)
{
    if (scaledCount > 0) {
        notes.push_back({NoteSeverity::Warning, meshName,
                         "The skin weights of " + std::to_string(scaledCount) +
                             " vertices did not sum to 1 and were scaled."});
    }
    if (emptyCount > 0) {
        notes.push_back({NoteSeverity::Warning, meshName,
                         std::to_string(emptyCount) + " vertices have no skin weights."});
    }
}

} // namespace

void FillWeights(const Document& document, const std::vector<MeshPart>& parts, std::size_t jointCount,
                 const std::string& meshName, MeshContent& content, Notes& notes)
{
    std::vector<JointWeights> joints(jointCount);
    std::size_t scaledCount = 0;
    std::size_t emptyCount = 0;
    for (const MeshPart& part : parts) {
        const std::vector<InfluenceSet> sets = ReadSets(document, part);
        content.IsSkinned = content.IsSkinned || !sets.empty();
        for (std::size_t i = 0; i < part.Vertices.size(); ++i) {
            Influences influences = ReadVertex(sets, part, i, jointCount);
            emptyCount += ScaleToPercent(influences, scaledCount) ? 0 : 1;
            for (const auto& [joint, percent] : influences) {
                joints[joint].Weights.emplace_back(static_cast<std::int32_t>(part.FirstVertex + i), percent);
            }
        }
    }
    if (!content.IsSkinned) {
        return;
    }
    NoteWeights(scaledCount, emptyCount, meshName, notes);
    for (std::size_t joint = 0; joint < jointCount; ++joint) {
        if (!joints[joint].Weights.empty()) {
            joints[joint].Joint = joint;
            content.Weights.push_back(std::move(joints[joint]));
        }
    }
}

} // namespace tq4x::gltf
