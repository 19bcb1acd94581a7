#include "export/LinkCheck.h"

#include "collect/ExportMesh.h"
#include "export/ExportContext.h"
#include "pipeline/ExportOptions.h"
#include "pipeline/MessageLog.h"

#include <xsi_siobject.h>

#include <algorithm>

namespace tq4x
{
namespace
{

bool LinkInfluences(ExportContext& context, ExportMesh& mesh)
{
    bool isComplete = true;
    for (const XSI::CRef& influence : mesh.CollectInfluenceObjects()) {
        ExportX3DObject* collector = context.FindX3DObject(influence, mesh.Instances);
        if (collector != nullptr) {
            mesh.Influences.push_back(collector);
            collector->InfluencedMeshes.push_back(&mesh);
            continue;
        }
        if (context.Find({.ObjectID = influence.GetObjectID()}) != nullptr)
            continue; // exported, though not as an object in space
        ReportMessage(MessageCode::InfluenceNotOutputted,
                      XSI::SIObject(influence).GetName().GetAsciiString());
        isComplete = false;
    }
    return isComplete;
}

/// Nodes and meshes make a model; cameras and lights alone don't.
bool IsEffectiveNode(CollectorKind kind)
{
    return kind == CollectorKind::X3DObject || kind == CollectorKind::Mesh || kind == CollectorKind::Node;
}

} // namespace

bool CheckLinks(ExportContext& context, const ExportOptions& options)
{
    bool isComplete = true;
    bool hasNode = false;
    for (const auto& [key, collector] : context.Collectors) {
        if (collector->GetKind() == CollectorKind::Mesh)
            isComplete &= LinkInfluences(context, static_cast<ExportMesh&>(*collector));
        hasNode |= IsEffectiveNode(collector->GetKind());
    }
    if (!hasNode && (options.OutputQmdl || options.OutputQmdla)) {
        ReportMessage(MessageCode::NoEffectiveNode);
        return false;
    }
    return isComplete;
}

} // namespace tq4x
