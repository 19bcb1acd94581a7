#include "pages/UserDataItemPage.h"

#include "export/HostCommands.h"
#include "pages/PageParameters.h"
#include "pages/PageProperty.h"
#include "pages/UserDataRows.h"

#include <xsi_context.h>
#include <xsi_parameter.h>

namespace tq4x
{
namespace
{

constexpr const char* Type = "TQ4X_ForPennonUserDataItemProp";
constexpr const char* Name = "TQ4X_ForPennonUserDataItemName";
constexpr const char* Kind = "TQ4X_ForPennonUserDataItemType";
constexpr const char* Value = "TQ4X_ForPennonUserDataItemValue";

constexpr const char* KindWords[] = {"String", "Integer", "Float"};
constexpr LONG ValueHeight = 200; // pixels

constexpr PageParameter Parameters[] = {
    {.Name = Name, .Type = XSI::CValue::siString},
    {.Name = Kind, .Type = XSI::CValue::siInt4, .Max = 2},
    {.Name = Value, .Type = XSI::CValue::siString},
};

} // namespace

std::optional<UserDataEntry> EditUserDataItem(const UserDataEntry& item)
{
    XSI::CustomProperty property = RootProperty(Type);
    property.PutParameterValue(Name, item.Name.c_str());
    property.PutParameterValue(Kind, static_cast<LONG>(item.Kind));
    property.PutParameterValue(Value, item.Value.c_str());
    XSI::CRefArray properties;
    properties.Add(property);
    const bool isConfirmed = InspectHostObjects(properties, InspectMode::Modal);
    const LONG kind = property.GetParameterValue(Kind);
    const UserDataEntry edited{.Name = ReadText(property, Name),
                               .Kind = static_cast<UserDataKind>(kind),
                               .Value = NormalizeUserDataValue(ReadText(property, Value))};
    DeleteHostObject(property.GetFullName()); // the scene keeps nothing of the dialog
    return isConfirmed ? std::optional(edited) : std::nullopt;
}

} // namespace tq4x

SICALLBACK TQ4X_ForPennonUserDataItemProp_Define(XSI::CRef& reference)
{
    XSI::CustomProperty property(XSI::Context(reference).GetSource());
    tq4x::AddMissingParameters(property, tq4x::Parameters);
    return XSI::CStatus::OK;
}

SICALLBACK TQ4X_ForPennonUserDataItemProp_DefineLayout(XSI::CRef& reference)
{
    XSI::PPGLayout layout(XSI::Context(reference).GetSource());
    layout.Clear();
    layout.AddItem(tq4x::Name, "Name", XSI::siControlString);
    layout.AddEnumControl(tq4x::Kind, tq4x::Choices(tq4x::KindWords), "Type");
    layout.AddString(tq4x::Value, "Number or String:[One value per line]", true, tq4x::ValueHeight);
    return XSI::CStatus::OK;
}
