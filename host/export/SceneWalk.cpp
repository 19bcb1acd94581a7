#include "export/SceneWalk.h"

#include "collect/CollectorFactory.h"
#include "export/Each.h"
#include "export/ExportContext.h"

#include <xsi_application.h>
#include <xsi_model.h>
#include <xsi_selection.h>

#include <algorithm>
#include <utility>

namespace tq4x
{
namespace
{

struct Step
{
    XSI::CRef Object;
    InstancePath Instances;
    bool IsEnd = false; ///< all children were walked
};

bool IsInstance(const XSI::CRef& object)
{
    return object.GetClassID() == XSI::siModelID &&
           XSI::Model(object).GetModelKind() == XSI::siModelKind_Instance;
}

XSI::CRefArray ChildrenOf(const XSI::CRef& object)
{
    return IsInstance(object) ? XSI::Model(object).GetInstanceMaster().GetChildren()
                              : XSI::X3DObject(object).GetChildren();
}

/// True if one of the instances shows the same model: that model would stand below itself without end.
bool IsShownAlready(const InstancePath& instances, const XSI::CRef& instance)
{
    const XSI::CRef master = XSI::Model(instance).GetInstanceMaster().GetRef();
    return std::any_of(instances.begin(), instances.end(), [&master](const XSI::CRef& outer) {
        return XSI::Model(outer).GetInstanceMaster().GetRef() == master;
    });
}

/// Pushes the children so that the first is taken from the stack first.
void PushChildren(std::vector<Step>& pending, const Step& step)
{
    InstancePath instances = step.Instances;
    if (IsInstance(step.Object)) {
        if (IsShownAlready(instances, step.Object))
            return;
        instances.push_back(step.Object);
    }
    const XSI::CRefArray children = ChildrenOf(step.Object);
    for (LONG i = children.GetCount() - 1; i >= 0; --i)
        pending.push_back({children[i], instances});
}

} // namespace

std::vector<XSI::CRef> CollectRoots(bool selectionOnly)
{
    const XSI::Application application;
    std::vector<XSI::CRef> roots;
    if (selectionOnly) {
        const XSI::Selection selection = application.GetSelection();
        for (LONG i = 0; i < selection.GetCount(); ++i)
            if (selection[i].IsA(XSI::siX3DObjectID)) // materials and properties can be selected too
                roots.push_back(selection[i]);
    } else {
        for (const XSI::CRef& child : Each(application.GetActiveSceneRoot().GetChildren()))
            roots.push_back(child);
    }
    return roots;
}

std::size_t CountNodes(const XSI::CRef& root)
{
    std::size_t count = 0;
    std::vector<Step> pending{{root, {}}};
    while (!pending.empty()) {
        const Step step = std::move(pending.back());
        pending.pop_back();
        ++count;
        PushChildren(pending, step);
    }
    return count;
}

bool WalkScene(ExportContext& context, const XSI::CRef& root)
{
    bool insideInstance = false;
    std::vector<Step> pending{{root, {}}};
    while (!pending.empty()) {
        const Step step = std::move(pending.back());
        pending.pop_back();
        if (step.IsEnd) {
            insideInstance = false;
            continue;
        }
        if (!VisitObject(context, step.Object, insideInstance, step.Instances)) {
            insideInstance = false;
            continue;
        }
        context.Progress.Increment();
        insideInstance = insideInstance || IsInstance(step.Object);
        pending.push_back({step.Object, step.Instances, true});
        PushChildren(pending, step);
    }
    return true;
}

} // namespace tq4x
