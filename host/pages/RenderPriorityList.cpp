#include "pages/RenderPriorityList.h"

#include "export/Each.h"
#include "export/HostCommands.h"
#include "pages/PageParameters.h"
#include "pages/PageProperty.h"

#include <xsi_application.h>
#include <xsi_materiallibrary.h>
#include <xsi_parameter.h>
#include <xsi_ppgeventcontext.h>
#include <xsi_project.h>
#include <xsi_scene.h>
#include <xsi_x3dobject.h>

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace tq4x
{
namespace
{

constexpr const char* Type = "TQ4X_ForPennonRenderPriorityListProp";
constexpr const char* Select = "TQ4X_ForPennonRenderPriorityListSelect";
constexpr const char* FrameObjects = "TQ4X_ForPennonRenderPriorityListFrameObjects";
constexpr const char* PriorityType = "TQ4X_ForPennonRenderPriorityProp";
constexpr const char* UsePriority = "TQ4X_ForPennonRenderPrioUsePriority";
constexpr const char* Priority = "TQ4X_ForPennonRenderPrioPriority";

constexpr const char* PrioritySortButton = "PrioritySortButton";
constexpr const char* MaterialSortButton = "MaterialSortButton";
constexpr const char* EditButton = "EditPriorityButton";
constexpr const char* MoveUpButton = "PriorityMoveUpButton";
constexpr const char* MoveDownButton = "PriorityMoveDownButton";
constexpr const char* UpdateButton = "PriorityUpdateButton";

constexpr const char* EmptyList = "None";
constexpr LONG ListHeight = 300; // pixels

constexpr PageParameter Parameters[] = {
    {.Name = Select, .Type = XSI::CValue::siInt4},
    {.Name = FrameObjects},
};

/// The materials in the order in which they are shown; only while the page is open.
std::vector<XSI::CRef>& Rows()
{
    static std::vector<XSI::CRef> rows;
    return rows;
}

void CollectMaterials(std::vector<XSI::CRef>& rows)
{
    rows.clear();
    const XSI::Scene scene = XSI::Application().GetActiveProject().GetActiveScene();
    for (const XSI::CRef& library : Each(scene.GetMaterialLibraries()))
        for (const XSI::CRef& material : Each(XSI::MaterialLibrary(library).GetItems()))
            rows.push_back(material);
}

XSI::CustomProperty PriorityProperty(const XSI::CRef& material)
{
    return GetOrAddProperty(material, PriorityType, true);
}

/// 0 for a material that has no priority.
LONG PriorityOf(const XSI::CRef& material)
{
    const XSI::CustomProperty property = PriorityProperty(material);
    const bool isUsed = property.GetParameterValue(UsePriority);
    return isUsed ? static_cast<LONG>(property.GetParameterValue(Priority)) : 0;
}

XSI::CString RowText(const XSI::CRef& material)
{
    const LONG priority = PriorityOf(material);
    const char* const pad = priority < 10 ? "__" : priority < 100 ? "_" : "";
    return XSI::CString("[") + pad + XSI::CString(priority) + "]     " + XSI::Material(material).GetName();
}

/// The chosen row; -1 if there is none.
LONG ChosenRow(const XSI::CustomProperty& property)
{
    const LONG row = property.GetParameterValue(Select);
    return row >= 0 && row < static_cast<LONG>(Rows().size()) ? row : -1;
}

void UpdateList(const XSI::CustomProperty& property)
{
    XSI::CValueArray items;
    for (const XSI::CRef& material : Rows()) {
        const LONG index = items.GetCount() / 2;
        items.Add(RowText(material));
        items.Add(index);
    }
    if (items.GetCount() == 0) {
        items.Add(EmptyList);
        items.Add(0);
    }
    property.GetPPGLayout().GetItem(Select).PutUIItems(items);
}

void UpdateMoveButtons(const XSI::CustomProperty& property)
{
    const XSI::PPGLayout layout = property.GetPPGLayout();
    const LONG chosen = ChosenRow(property);
    const LONG last = static_cast<LONG>(Rows().size()) - 1;
    layout.GetItem(MoveUpButton).PutAttribute(XSI::siUIButtonDisable, chosen <= 0);
    layout.GetItem(MoveDownButton).PutAttribute(XSI::siUIButtonDisable, chosen < 0 || chosen == last);
}

/// The 3D object that a user of a material is or belongs to.
XSI::CRef NodeOf(const XSI::CRef& user)
{
    XSI::SIObject at(user);
    while (at.IsValid() && !at.IsA(XSI::siX3DObjectID))
        at = XSI::SIObject(at.GetParent());
    return at.GetRef();
}

void SelectUsers(const XSI::CRef& material)
{
    XSI::CRefArray nodes;
    std::set<ULONG> seen;
    for (const XSI::CRef& user : Each(XSI::Material(material).GetUsedBy())) {
        const XSI::CRef node = NodeOf(user);
        if (node.IsValid() && seen.insert(node.GetObjectID()).second)
            nodes.Add(node);
    }
    SelectHostObjects(nodes);
}

void OnRowChosen(const XSI::CustomProperty& property)
{
    const LONG chosen = ChosenRow(property);
    if (chosen < 0)
        return;
    SelectUsers(Rows()[static_cast<std::size_t>(chosen)]);
    if (property.GetParameterValue(FrameObjects))
        RunHostCommand("FrameSelection", {});
}

/// Both sorts leave materials of equal rank in their order.
void SortByPriority()
{
    std::vector<std::pair<LONG, XSI::CRef>> rows;
    for (const XSI::CRef& material : Rows())
        rows.emplace_back(PriorityOf(material), material);
    std::ranges::stable_sort(rows, {}, &std::pair<LONG, XSI::CRef>::first);
    std::ranges::transform(rows, Rows().begin(), &std::pair<LONG, XSI::CRef>::second);
}

void SortByName()
{
    std::ranges::stable_sort(Rows(), [](const XSI::CRef& a, const XSI::CRef& b) {
        return XSI::Material(a).GetName().Lower() < XSI::Material(b).GetName().Lower();
    });
}

void EditChosen(const XSI::CustomProperty& property)
{
    const LONG chosen = ChosenRow(property);
    if (chosen < 0)
        return;
    XSI::CRefArray properties;
    properties.Add(PriorityProperty(Rows()[static_cast<std::size_t>(chosen)]));
    InspectHostObjects(properties, InspectMode::Modal);
}

void MoveChosen(XSI::CustomProperty& property, LONG step)
{
    const LONG chosen = ChosenRow(property);
    const LONG other = chosen + step;
    if (chosen < 0 || other < 0 || other >= static_cast<LONG>(Rows().size()))
        return;
    std::swap(Rows()[static_cast<std::size_t>(chosen)], Rows()[static_cast<std::size_t>(other)]);
    property.PutParameterValue(Select, other);
}

void OnButton(XSI::CustomProperty& property, const XSI::CString& button)
{
    if (button == PrioritySortButton) {
        SortByPriority();
    } else if (button == MaterialSortButton) {
        SortByName();
    } else if (button == EditButton) {
        EditChosen(property);
    } else if (button == MoveUpButton) {
        MoveChosen(property, -1);
    } else if (button == MoveDownButton) {
        MoveChosen(property, 1);
    } else if (button == UpdateButton) {
        CollectMaterials(Rows());
        property.PutParameterValue(Select, 0);
    }
}

} // namespace

XSI::CStatus OpenRenderPriorityList()
{
    XSI::CRefArray properties;
    properties.Add(RootProperty(Type));
    InspectHostObjects(properties, InspectMode::Recycled);
    return XSI::CStatus::OK;
}

} // namespace tq4x

SICALLBACK TQ4X_ForPennonRenderPriorityListProp_Define(XSI::CRef& reference)
{
    XSI::CustomProperty property(XSI::Context(reference).GetSource());
    tq4x::AddMissingParameters(property, tq4x::Parameters);
    return XSI::CStatus::OK;
}

SICALLBACK TQ4X_ForPennonRenderPriorityListProp_DefineLayout(XSI::CRef& reference)
{
    XSI::PPGLayout layout(XSI::Context(reference).GetSource());
    layout.Clear();
    layout.AddRow();
    layout.AddButton(tq4x::PrioritySortButton, "Priority");
    layout.AddButton(tq4x::MaterialSortButton, "Material");
    layout.EndRow();
    XSI::PPGItem list =
        layout.AddEnumControl(tq4x::Select, XSI::CValueArray(), XSI::CString(), XSI::siControlListBox);
    list.PutAttribute(XSI::siUICY, tq4x::ListHeight);
    list.PutAttribute(XSI::siUINoLabel, true);
    layout.AddRow();
    layout.AddButton(tq4x::EditButton, "Edit");
    layout.AddButton(tq4x::MoveUpButton, "Move Up");
    layout.AddButton(tq4x::MoveDownButton, "Move Down");
    layout.AddButton(tq4x::UpdateButton, "Update");
    layout.EndRow();
    layout.AddItem(tq4x::FrameObjects, "Frame Objects", XSI::siControlCheck);
    return XSI::CStatus::OK;
}

SICALLBACK TQ4X_ForPennonRenderPriorityListProp_PPGEvent(XSI::CRef& reference)
{
    XSI::PPGEventContext context(reference);
    XSI::CustomProperty property(context.GetInspectedObjects().GetItem(0));
    switch (context.GetEventID()) {
    case XSI::PPGEventContext::siOnInit:
        tq4x::CollectMaterials(tq4x::Rows());
        break;
    case XSI::PPGEventContext::siParameterChange:
        if (XSI::Parameter(context.GetSource()).GetName() == tq4x::Select)
            tq4x::OnRowChosen(property);
        break;
    case XSI::PPGEventContext::siButtonClicked:
        tq4x::OnButton(property, context.GetAttribute("Button"));
        break;
    case XSI::PPGEventContext::siOnClosed:
        tq4x::Rows().clear();
        return XSI::CStatus::OK;
    case XSI::PPGEventContext::siTabChange:
        return XSI::CStatus::OK;
    }
    std::erase_if(tq4x::Rows(), [](const XSI::CRef& material) { return !material.IsValid(); });
    tq4x::UpdateList(property);
    tq4x::UpdateMoveButtons(property);
    context.PutAttribute("Refresh", true);
    return XSI::CStatus::OK;
}
