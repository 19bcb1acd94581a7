#include "pages/AttributePage.h"

#include "export/Each.h"
#include "export/HostCommands.h"
#include "pages/SearchScene.h"

#include <xsi_application.h>
#include <xsi_parameter.h>
#include <xsi_ppgeventcontext.h>

#include <iterator>
#include <set>

namespace tq4x
{
namespace
{

constexpr const char* NothingSelected = "None";
constexpr const char* AndOrWords[] = {"and", "or"};
constexpr const char* CareWords[] = {"Don't care", "care"};
constexpr const char* RelationWords[] = {"< : (under)", "<= : (below)", "= : (exactly)", ">= : (above)",
                                         "> : (over)"};

void AddFlag(XSI::CustomProperty& property, const char* name, bool isReadOnly = false)
{
    const PageParameter parameter{.Name = name, .IsReadOnly = isReadOnly};
    AddMissingParameters(property, {&parameter, 1});
}

void AddInteger(XSI::CustomProperty& property, const char* name, int highest)
{
    const PageParameter parameter{.Name = name, .Type = XSI::CValue::siInt4, .Max = highest};
    AddMissingParameters(property, {&parameter, 1});
}

void AddNumberSearch(XSI::CustomProperty& property, const NumberSearch& search)
{
    AddFlag(property, search.IsCompared);
    AddInteger(property, search.Relation, static_cast<int>(std::size(RelationWords)) - 1);
    AddMissingParameters(property, {&search.Number, 1});
}

void PutOnAll(const XSI::CRefArray& properties, const char* parameter, const XSI::CValue& value)
{
    for (const XSI::CRef& reference : Each(properties))
        XSI::CustomProperty(reference).PutParameterValue(parameter, value);
}

/// The button works while there is something to search for; a search by number always has.
void UpdateSearchButton(const AttributePage& page, const XSI::CustomProperty& property)
{
    SetEnabled(property, page.SearchButton, page.Number != nullptr || IsAnyBoxOn(page, property));
}

void UpdateSearchButtons(const AttributePage& page, const XSI::CRefArray& properties)
{
    for (const XSI::CRef& reference : Each(properties))
        UpdateSearchButton(page, reference);
}

/// The property for which a selected object stands on this page: itself, or that of what carries it.
XSI::CustomProperty SelectedProperty(const AttributePage& page, const XSI::CRef& selected)
{
    const XSI::CustomProperty property(selected);
    if (property.IsValid() && property.GetType() == page.Type)
        return property;
    return GetOrAddProperty(CarrierOf(page.Carrier, selected), page.Type, false);
}

/// Writes the names of what is selected into the list, one a line; `noneText` if there is nothing.
void FillSelectList(const AttributePage& page, const XSI::CRefArray& properties, const XSI::CString& noneText)
{
    XSI::CString text;
    std::set<ULONG> listed;
    for (const XSI::CRef& selected : SelectedObjects()) {
        const XSI::CustomProperty property = SelectedProperty(page, selected);
        if (property.IsValid() && listed.insert(property.GetObjectID()).second)
            text += CarrierName(property) + "\r";
    }
    PutOnAll(properties, page.SelectList, text.IsEmpty() ? noneText : text);
}

void CopyValues(const AttributePage& page, const XSI::CustomProperty& from, XSI::CustomProperty& to)
{
    for (const PageParameter& value : page.Values)
        to.PutParameterValue(value.Name, from.GetParameterValue(value.Name));
}

/// Goes on with the values of the page on the scene root's property, where they can't be changed: there is
/// nothing that they would belong to.
void ShowNothingFound(const AttributePage& page, const XSI::CustomProperty& shown)
{
    DeselectHostObjects();
    XSI::CustomProperty property = RootProperty(page.Type);
    CopyValues(page, shown, property);
    UpdateSearchButton(page, property);
    property.PutParameterValue(page.SelectList, NothingSelected);
    for (const PageParameter& value : page.Values)
        SetEnabled(property, value.Name, false);
    XSI::CRefArray properties;
    properties.Add(property);
    InspectHostObjects(properties, InspectMode::Recycled);
}

void RunSearch(const AttributePage& page, const XSI::CRefArray& properties)
{
    const XSI::CustomProperty asked(properties[0]);
    const XSI::CRefArray found = SearchScene(XSI::Application().GetActiveSceneRoot(), page, asked);
    if (found.GetCount() == 0) {
        ShowNothingFound(page, asked);
    } else {
        SelectHostObjects(found);
        FillSelectList(page, properties, XSI::CString());
    }
    PutOnAll(properties, page.SearchButton, false);
}

bool IsSearchBox(const AttributePage& page, const XSI::CString& parameter)
{
    for (const SearchGroup& group : page.Groups)
        for (const SearchBox& box : group.Boxes)
            if (parameter == box.Parameter)
                return true;
    return false;
}

void OnParameterChanged(const AttributePage& page, const XSI::CRefArray& properties,
                        const XSI::CString& parameter)
{
    if (IsSearchBox(page, parameter))
        UpdateSearchButtons(page, properties);
    else if (parameter == page.SearchButton)
        RunSearch(page, properties);
    else if (page.OnValueChanged != nullptr)
        page.OnValueChanged(properties, parameter);
}

void AddBoxes(XSI::PPGLayout& layout, const SearchGroup& group)
{
    const bool hasFrame = group.Caption[0] != '\0';
    if (hasFrame)
        layout.AddGroup(group.Caption);
    for (const SearchBox& box : group.Boxes)
        layout.AddItem(box.Parameter, box.Label, XSI::siControlCheck);
    if (hasFrame)
        layout.EndGroup();
}

void AddNumberControls(XSI::PPGLayout& layout, const NumberSearch& search)
{
    layout.AddEnumControl(search.IsCompared, Choices(CareWords), XSI::CString(), XSI::siControlRadio);
    layout.AddRow();
    layout.AddEnumControl(search.Relation, Choices(RelationWords));
    layout.AddItem(search.Number.Name, XSI::CString(), XSI::siControlNumber);
    layout.EndRow();
}

void AddSearchBlock(XSI::PPGLayout& layout, const AttributePage& page)
{
    layout.AddGroup("Search");
    for (const SearchGroup& group : page.Groups)
        AddBoxes(layout, group);
    if (page.AndOr != nullptr)
        layout.AddEnumControl(page.AndOr, Choices(AndOrWords), XSI::CString(), XSI::siControlRadio);
    if (page.Number != nullptr)
        AddNumberControls(layout, *page.Number);
    AddPushButton(layout, page.SearchButton, "Search");
    layout.EndGroup();
}

} // namespace

XSI::CStatus DefineAttributePage(const AttributePage& page, const XSI::CRef& context)
{
    XSI::CustomProperty property(XSI::Context(context).GetSource());
    AddMissingParameters(property, page.Values);
    for (const SearchGroup& group : page.Groups)
        for (const SearchBox& box : group.Boxes)
            AddFlag(property, box.Parameter);
    if (page.AndOr != nullptr)
        AddInteger(property, page.AndOr, static_cast<int>(std::size(AndOrWords)) - 1);
    if (page.Number != nullptr)
        AddNumberSearch(property, *page.Number);
    AddFlag(property, page.SearchButton, page.Number == nullptr);
    const PageParameter list{.Name = page.SelectList, .Type = XSI::CValue::siString, .IsReadOnly = true};
    AddMissingParameters(property, {&list, 1});
    return XSI::CStatus::OK;
}

XSI::CStatus LayOutAttributePage(const AttributePage& page, const XSI::CRef& context)
{
    XSI::PPGLayout layout(XSI::Context(context).GetSource());
    layout.Clear();
    AddSelectedBlock(layout, page.SelectList);
    page.AddValueControls(layout);
    AddSearchBlock(layout, page);
    return XSI::CStatus::OK;
}

XSI::CStatus HandleAttributePageEvent(const AttributePage& page, const XSI::CRef& reference)
{
    XSI::PPGEventContext context(reference);
    const XSI::CRefArray properties = context.GetInspectedObjects();
    switch (context.GetEventID()) {
    case XSI::PPGEventContext::siOnInit:
        FillSelectList(page, properties, NothingSelected);
        UpdateSearchButtons(page, properties); // boxes of a stored scene may be on
        PutOnAll(properties, page.SearchButton, false);
        break;
    case XSI::PPGEventContext::siParameterChange:
        OnParameterChanged(page, properties, XSI::Parameter(context.GetSource()).GetName());
        break;
    case XSI::PPGEventContext::siButtonClicked:
        break;
    case XSI::PPGEventContext::siOnClosed:
    case XSI::PPGEventContext::siTabChange:
        return XSI::CStatus::OK;
    }
    context.PutAttribute("Refresh", true);
    return XSI::CStatus::OK;
}

XSI::CStatus OpenAttributePage(const AttributePage& page)
{
    XSI::CRefArray properties;
    std::set<ULONG> opened; // objects may share a material
    for (const XSI::CRef& selected : SelectedObjects()) {
        const XSI::SceneItem carrier = CarrierOf(page.Carrier, selected);
        if (carrier.IsValid() && opened.insert(carrier.GetObjectID()).second)
            properties.Add(GetOrAddProperty(carrier, page.Type, true));
    }
    if (properties.GetCount() == 0)
        properties.Add(RootProperty(page.Type));
    InspectHostObjects(properties, InspectMode::Recycled);
    return XSI::CStatus::OK;
}

} // namespace tq4x
