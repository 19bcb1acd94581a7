#include "export/ExportContext.h"

#include "collect/ExportX3DObject.h"
#include "pipeline/PathText.h"
#include "pipeline/Platform.h"

#include <xsi_application.h>
#include <xsi_project.h>
#include <xsi_scene.h>
#include <xsi_uitoolkit.h>

namespace tq4x
{

namespace
{

std::string SceneFileName()
{
    const XSI::Scene scene = XSI::Application().GetActiveProject().GetActiveScene();
    const XSI::CString path = scene.GetParameterValue("FileName");
    return FilePart(path.GetAsciiString());
}

} // namespace

ExportContext::ExportContext()
    : Date(DateText(CurrentPlatform().Now())),
      Source(SceneFileName()),
      Progress(XSI::Application().GetUIToolkit().GetProgressBar())
{}

ExportContext::~ExportContext() = default;

ExportBase* ExportContext::Find(const CollectorKey& key) const
{
    const auto found = Collectors.find(key);
    return found == Collectors.end() ? nullptr : found->second.get();
}

ExportX3DObject* ExportContext::FindX3DObject(const XSI::CRef& object, InstancePath instances) const
{
    if (!object.IsValid())
        return nullptr;
    ExportBase* collector = Find(KeyOf(object, instances));
    while (collector == nullptr && !instances.empty()) {
        instances.pop_back();
        collector = Find(KeyOf(object, instances));
    }
    const bool isNode = collector != nullptr && collector->IsKindOf(CollectorKind::X3DObject);
    return isNode ? static_cast<ExportX3DObject*>(collector) : nullptr;
}

ExportBase& ExportContext::Add(const CollectorKey& key, std::unique_ptr<ExportBase> collector)
{
    const auto [place, isNew] = Collectors.try_emplace(key, std::move(collector));
    if (isNew)
        InOrderOfCreation.push_back(place->second.get());
    return *place->second;
}

} // namespace tq4x
