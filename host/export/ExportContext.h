#pragma once

#include "collect/CollectorKey.h"
#include "environment/CameraSet.h"
#include "environment/LightSet.h"
#include "pipeline/NameRegistory.h"
#include "pipeline/SceneContent.h"

#include <xsi_progressbar.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tq4x
{

class ExportBase;
class ExportX3DObject;

/// The state of one export. Lives on the driver's stack, owns all collectors and the model, and frees them in
/// one step.
struct ExportContext
{
    /// Stamps `Date` and `Source` and takes the host's progress bar.
    ExportContext();
    ExportContext(const ExportContext&) = delete;
    ExportContext& operator=(const ExportContext&) = delete;
    ~ExportContext();

    std::map<CollectorKey, std::unique_ptr<ExportBase>> Collectors;
    SceneContent Content; ///< the host-independent model
    LightSet Lights;
    CameraSet Cameras;
    std::string Date;        ///< local time of the export
    std::string Source;      ///< the scene file's name without its folder
    NameRegistory NodeNames; ///< nodes, cameras, lights
    NameRegistory MaterialNames;
    XSI::ProgressBar Progress;
    std::vector<ExportBase*> InOrderOfCreation; ///< parents before their children, as the walk met them

    /// The collector under a key, or nullptr.
    ExportBase* Find(const CollectorKey& key) const;

    /// The collector of an object in space: the one reached through the same instances first, then through
    /// ever fewer of them, last the one outside of all; nullptr if there is none.
    ExportX3DObject* FindX3DObject(const XSI::CRef& object, InstancePath instances) const;

    /// Takes a collector over, unless its key has one already; answers the one that stands there now.
    ExportBase& Add(const CollectorKey& key, std::unique_ptr<ExportBase> collector);
};

} // namespace tq4x
