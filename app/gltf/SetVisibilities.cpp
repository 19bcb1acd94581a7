#include <xsi_parameter.h>

#include "gltf/SceneBuild.h"
#include "scene/CreateObjects.h"
#include "scene/CreateParameters.h"

namespace tq4x::gltf
{
namespace
{

namespace Host = XSI::Host;

/// A node that hides itself and all below it, at some frames or always.
struct VisibilityRule
{
    AnimationTracks::Track Track; ///< null: hidden at all frames
    Index Above;                  ///< the next rule on the way to the root
    bool IsAnimated = false;      ///< this one or one above it
};

using VisibilityRules = std::vector<VisibilityRule>;

bool IsVisibleAt(const VisibilityRules& rules, std::size_t rule, double frame)
{
    for (Index next = rule; next; next = rules[*next].Above) {
        double value = 0.0;
        if (rules[*next].Track) {
            EvaluateTrack(*rules[*next].Track, frame, {&value, 1});
        }
        if (value == 0.0) {
            return false;
        }
    }
    return true;
}

/// The rules of the scene, and for each node the lowest one that it is under.
struct VisibilityTable
{
    VisibilityRules Rules;
    std::vector<Index> OfNode;
};

VisibilityTable BuildTable(const SceneBuild& build)
{
    VisibilityTable table;
    table.OfNode.resize(build.Source->Nodes.size());
    for (const std::size_t node : build.Order) {
        const Node& source = build.Source->Nodes[node];
        const Index above = source.Parent ? table.OfNode[*source.Parent] : Index();
        const auto track = build.Tracks.Find(AnimatedProperty::Visible, node);
        if (!track && source.Visible != false) {
            table.OfNode[node] = above;
            continue;
        }
        table.OfNode[node] = table.Rules.size();
        table.Rules.push_back({track, above, track || (above && table.Rules[*above].IsAnimated)});
    }
    return table;
}

void SetVisibility(const XSI::X3DObject& object, const std::shared_ptr<const VisibilityRules>& rules,
                   std::size_t rule)
{
    const XSI::Parameter parameter = Host::SetVisibility(object, IsVisibleAt(*rules, rule, 0.0));
    if ((*rules)[rule].IsAnimated) {
        Host::SetCurveFunction(
            parameter, [rules, rule](double frame) { return IsVisibleAt(*rules, rule, frame) ? 1.0 : 0.0; });
    }
}

} // namespace

// In the file a hidden node hides all that lies below it; in the host each object has a switch of its own.
void SetVisibilities(SceneBuild& build)
{
    VisibilityTable table = BuildTable(build);
    const auto rules = std::make_shared<const VisibilityRules>(std::move(table.Rules));
    for (const std::size_t node : build.Order) {
        if (!table.OfNode[node]) {
            continue;
        }
        for (const XSI::X3DObject& object : {build.Objects[node], build.Cameras[node], build.Lights[node]}) {
            if (object.IsValid()) {
                SetVisibility(object, rules, *table.OfNode[node]);
            }
        }
    }
}

} // namespace tq4x::gltf
