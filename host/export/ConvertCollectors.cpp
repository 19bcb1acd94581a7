#include "export/ConvertCollectors.h"

#include "collect/ExportMaterial.h"
#include "collect/ExportX3DObject.h"
#include "export/ExportContext.h"
#include "pipeline/MessageLog.h"

#include <xsi_parameter.h>
#include <xsi_x3dobject.h>

#include <algorithm>

namespace tq4x
{
namespace
{

bool IsHierarchical(const ExportBase& collector)
{
    return static_cast<bool>(XSI::X3DObject(collector.Object).GetParameterValue("siscaling"));
}

/// Hierarchical scaling is a setting of each object, but makes sense for whole trees only.
void CheckScalingRules(const ExportContext& context)
{
    const ExportBase* first = nullptr;
    for (const ExportBase* collector : context.InOrderOfCreation) {
        if (!collector->IsKindOf(CollectorKind::X3DObject))
            continue;
        if (first == nullptr)
            first = collector;
        if (IsHierarchical(*collector) == IsHierarchical(*first))
            continue;
        PrintMessage("Hierarchical Scaling settings are not identical", Severity::Warning);
        return;
    }
}

/// Phases of the conversion, in order.
enum class Phase
{
    Shaders,
    Textures,
    AmbientLight,
    SceneObjects,
};

Phase PhaseOf(const ExportBase& collector)
{
    switch (collector.GetKind()) {
    case CollectorKind::Material:
        return Phase::Shaders;
    case CollectorKind::Texture:
        return Phase::Textures;
    case CollectorKind::AmbientLight:
        return Phase::AmbientLight;
    case CollectorKind::X3DObject:
    case CollectorKind::Mesh:
    case CollectorKind::Node:
    case CollectorKind::Light:
    case CollectorKind::Camera:
        return Phase::SceneObjects;
    }
    return Phase::SceneObjects;
}

/// By number: reading shaders adds the collectors of their textures behind.
bool RunPhase(ExportContext& context, Phase phase)
{
    for (std::size_t i = 0; i < context.InOrderOfCreation.size(); ++i) {
        ExportBase& collector = *context.InOrderOfCreation[i];
        if (PhaseOf(collector) != phase)
            continue;
        if (!collector.Export())
            return false;
        context.Progress.Increment();
    }
    return true;
}

void RegisterNames(const ExportContext& context)
{
    for (ExportBase* collector : context.InOrderOfCreation)
        if (collector->IsKindOf(CollectorKind::X3DObject))
            static_cast<ExportX3DObject*>(collector)->RegisterName();
}

bool FinishMaterials(ExportContext& context)
{
    return std::all_of(
        context.InOrderOfCreation.begin(), context.InOrderOfCreation.end(), [](ExportBase* each) {
            return each->GetKind() != CollectorKind::Material || static_cast<ExportMaterial*>(each)->Finish();
        });
}

/// Skins refer to bones that come later in the scene, by their names.
bool RunSceneObjects(ExportContext& context)
{
    RegisterNames(context);
    return RunPhase(context, Phase::SceneObjects);
}

} // namespace

bool ConvertCollectors(ExportContext& context)
{
    CheckScalingRules(context);
    return RunPhase(context, Phase::Shaders) && RunPhase(context, Phase::Textures) &&
           RunPhase(context, Phase::AmbientLight) && RunSceneObjects(context) && FinishMaterials(context);
}

} // namespace tq4x
