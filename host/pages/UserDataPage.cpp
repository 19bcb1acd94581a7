#include "pages/UserDataPage.h"

#include "export/HostCommands.h"
#include "pages/PageParameters.h"
#include "pages/PageProperty.h"
#include "pages/UserDataItemPage.h"
#include "pages/UserDataRows.h"

#include <xsi_application.h>
#include <xsi_parameter.h>
#include <xsi_ppgeventcontext.h>

#include <algorithm>
#include <utility>

namespace tq4x
{
namespace
{

constexpr const char* Type = "TQ4X_ForPennonUserDataProp";
constexpr const char* SelectList = "TQ4X_ForPennonUserDataSelectList";
constexpr const char* ParamList = "TQ4X_ForPennonUserDataParamList";
constexpr const char* NameList = "TQ4X_ForPennonUserDataParamNameList";
constexpr const char* TypeList = "TQ4X_ForPennonUserDataParamTypeList";
constexpr const char* ValueList = "TQ4X_ForPennonUserDataParamValueList";

constexpr const char* MoveUpButton = "TQ4X_ForPennonUserDataButtonMoveUp";
constexpr const char* MoveDownButton = "TQ4X_ForPennonUserDataButtonMoveDown";
constexpr const char* AddButton = "TQ4X_ForPennonUserDataButtonAdd";
constexpr const char* DeleteButton = "TQ4X_ForPennonUserDataButtonDelete";
constexpr const char* EditButton = "TQ4X_ForPennonUserDataButtonEdit";
constexpr const char* Buttons[] = {MoveUpButton, MoveDownButton, AddButton, DeleteButton, EditButton};

constexpr const char* FixedFont = "Courier New";
constexpr LONG ListHeight = 200; // pixels

constexpr PageParameter Parameters[] = {
    {.Name = SelectList, .Type = XSI::CValue::siString, .IsReadOnly = true},
    {.Name = ParamList, .Type = XSI::CValue::siInt4},
    {.Name = NameList, .Type = XSI::CValue::siString},
    {.Name = TypeList, .Type = XSI::CValue::siString},
    {.Name = ValueList, .Type = XSI::CValue::siString},
};

using Entries = std::vector<UserDataEntry>;

Entries ReadEntries(const XSI::CustomProperty& property)
{
    return ParseUserDataProperty(ReadText(property, NameList), ReadText(property, TypeList),
                                 ReadText(property, ValueList));
}

void WriteEntries(XSI::CustomProperty& property, const Entries& entries)
{
    const UserDataTexts texts = BuildUserDataProperty(entries);
    property.PutParameterValue(NameList, texts.Names.c_str());
    property.PutParameterValue(TypeList, texts.Types.c_str());
    property.PutParameterValue(ValueList, texts.Values.c_str());
}

void UpdateList(const XSI::CustomProperty& property)
{
    XSI::CValueArray items;
    for (const UserDataEntry& entry : ReadEntries(property)) {
        const LONG index = items.GetCount() / 2;
        items.Add(UserDataRow(entry).c_str());
        items.Add(index);
    }
    const LONG end = items.GetCount() / 2;
    items.Add(UserDataEndRow);
    items.Add(end);
    property.GetPPGLayout().GetItem(ParamList).PutUIItems(items);
}

/// The one selected object that can carry user data; invalid if there is none, or more than one.
XSI::SceneItem EditedItem()
{
    const std::vector<XSI::CRef> selected = SelectedObjects();
    return selected.size() == 1 ? CarrierOf(PageCarrier::Item, selected.front()) : XSI::SceneItem();
}

/// Shows what is edited; with nothing, or too much, the buttons go off.
void UpdateSelected(XSI::CustomProperty& property)
{
    const bool hasItem = EditedItem().IsValid();
    const bool isMultiple = SelectedObjects().size() > 1;
    property.PutParameterValue(SelectList, hasItem      ? CarrierName(property) + "\r"
                                           : isMultiple ? XSI::CString("Multiple Node Selected")
                                                        : XSI::CString("None"));
    const XSI::PPGLayout layout = property.GetPPGLayout();
    for (const char* const button : Buttons)
        layout.GetItem(button).PutAttribute(XSI::siUIButtonDisable, !hasItem);
}

bool IsNameTaken(const Entries& entries, const std::string& name, const UserDataEntry* except)
{
    return std::ranges::any_of(
        entries, [&](const UserDataEntry& entry) { return &entry != except && entry.Name == name; });
}

/// Tells why an item can't be taken; false if so. `edited` is the item that it replaces, if any.
bool CheckItem(const Entries& entries, const UserDataEntry& item, const UserDataEntry* edited)
{
    if (IsNameTaken(entries, item.Name, edited)) {
        XSI::Application().LogMessage("Name is already used.", XSI::siErrorMsg);
        return false;
    }
    if (const auto problem = FindUserDataProblem(item)) {
        XSI::Application().LogMessage(std::string(*problem).c_str(), XSI::siErrorMsg);
        OpenScriptEditor();
        return false;
    }
    return true;
}

void AddItem(XSI::CustomProperty& property, Entries entries, std::size_t row)
{
    const std::optional<UserDataEntry> item = EditUserDataItem({});
    if (!item || !CheckItem(entries, *item, nullptr))
        return;
    entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(std::min(row, entries.size())), *item);
    WriteEntries(property, entries);
}

void EditItem(XSI::CustomProperty& property, Entries entries, std::size_t row)
{
    const std::optional<UserDataEntry> item = EditUserDataItem(entries[row]);
    if (!item || !CheckItem(entries, *item, &entries[row]))
        return;
    entries[row] = *item;
    WriteEntries(property, entries);
}

void DeleteItem(XSI::CustomProperty& property, Entries entries, std::size_t row)
{
    entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(row));
    WriteEntries(property, entries);
}

void SwapItems(XSI::CustomProperty& property, Entries entries, std::size_t row, std::size_t other)
{
    std::swap(entries[row], entries[other]);
    WriteEntries(property, entries);
    property.PutParameterValue(ParamList, other);
}

void OnButton(XSI::CustomProperty& property, const XSI::CString& button)
{
    const Entries entries = ReadEntries(property);
    const LONG chosen = property.GetParameterValue(ParamList);
    const auto row = static_cast<std::size_t>(std::max(chosen, LONG{0}));
    const bool hasItem = chosen >= 0 && row < entries.size(); // the end of the list is no item
    if (button == AddButton)
        AddItem(property, entries, row);
    else if (button == EditButton && hasItem)
        EditItem(property, entries, row);
    else if (button == DeleteButton && hasItem)
        DeleteItem(property, entries, row);
    else if (button == MoveUpButton && hasItem && row > 0)
        SwapItems(property, entries, row, row - 1);
    else if (button == MoveDownButton && hasItem && row + 1 < entries.size())
        SwapItems(property, entries, row, row + 1);
}

} // namespace

XSI::CStatus OpenUserDataPage()
{
    const XSI::SceneItem item = EditedItem();
    XSI::CRefArray properties;
    properties.Add(item.IsValid() ? GetOrAddProperty(item, Type, true) : RootProperty(Type));
    InspectHostObjects(properties, InspectMode::Recycled);
    return XSI::CStatus::OK;
}

} // namespace tq4x

SICALLBACK TQ4X_ForPennonUserDataProp_Define(XSI::CRef& reference)
{
    XSI::CustomProperty property(XSI::Context(reference).GetSource());
    tq4x::AddMissingParameters(property, tq4x::Parameters);
    return XSI::CStatus::OK;
}

SICALLBACK TQ4X_ForPennonUserDataProp_DefineLayout(XSI::CRef& reference)
{
    XSI::PPGLayout layout(XSI::Context(reference).GetSource());
    layout.Clear();
    tq4x::AddSelectedBlock(layout, tq4x::SelectList);
    layout.AddGroup("User Data");
    layout.AddStaticText(tq4x::UserDataHeading).PutAttribute(XSI::siUIFont, tq4x::FixedFont);
    XSI::PPGItem list =
        layout.AddEnumControl(tq4x::ParamList, XSI::CValueArray(), XSI::CString(), XSI::siControlListBox);
    list.PutAttribute(XSI::siUIFont, tq4x::FixedFont);
    list.PutAttribute(XSI::siUICY, tq4x::ListHeight);
    list.PutAttribute(XSI::siUINoLabel, true);
    layout.AddRow();
    layout.AddButton(tq4x::MoveUpButton, "Move Up");
    layout.AddButton(tq4x::MoveDownButton, "Move Down");
    layout.AddButton(tq4x::AddButton, "Add");
    layout.AddButton(tq4x::DeleteButton, "Delete");
    layout.AddButton(tq4x::EditButton, "Edit");
    layout.EndRow();
    layout.EndGroup();
    return XSI::CStatus::OK;
}

SICALLBACK TQ4X_ForPennonUserDataProp_PPGEvent(XSI::CRef& reference)
{
    XSI::PPGEventContext context(reference);
    XSI::CustomProperty property(context.GetInspectedObjects().GetItem(0));
    switch (context.GetEventID()) {
    case XSI::PPGEventContext::siOnInit:
    case XSI::PPGEventContext::siParameterChange:
        break;
    case XSI::PPGEventContext::siButtonClicked:
        tq4x::OnButton(property, context.GetAttribute("Button"));
        break;
    case XSI::PPGEventContext::siOnClosed:
    case XSI::PPGEventContext::siTabChange:
        return XSI::CStatus::OK;
    }
    tq4x::UpdateSelected(property);
    tq4x::UpdateList(property);
    context.PutAttribute("Refresh", true);
    return XSI::CStatus::OK;
}
