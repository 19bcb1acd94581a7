#include "pages/AttributePage.h"

#include <xsi_application.h>

#include <algorithm>
#include <map>
#include <vector>

namespace tq4x
{
namespace
{

constexpr const char* Type = "TQ4X_ForPennonCombineGroupProp";
constexpr const char* UseGroup = "TQ4X_ForPennonCombineGroupUse";
constexpr const char* Group = "TQ4X_ForPennonCombineGroupValue";
constexpr const char* SetSequentialButton = "TQ4X_ForPennonCombineGroupSetSequentialButton";
constexpr LONG HighestGroup = 255;

constexpr PageParameter Values[] = {
    {.Name = UseGroup},
    {.Name = Group, .Type = XSI::CValue::siInt4, .Max = HighestGroup},
    {.Name = SetSequentialButton},
};

constexpr NumberSearch Search = {
    .UseParameter = UseGroup,
    .ValueParameter = Group,
    .IsCompared = "TQ4X_ForPennonCombineGroupSearchUsePrecondition",
    .Relation = "TQ4X_ForPennonCombineGroupSearchPrecondition",
    .Number = {.Name = "TQ4X_ForPennonCombineGroupSearchPreconditionValue",
               .Type = XSI::CValue::siInt4,
               .Max = HighestGroup},
};

void AddControls(XSI::PPGLayout& layout)
{
    layout.AddGroup("Combine Group");
    layout.AddRow();
    layout.AddItem(UseGroup, "Combine\nGroup", XSI::siControlCheck);
    layout.AddItem(Group, "Setting range 0 - 255", XSI::siControlNumber);
    layout.EndRow();
    AddPushButton(layout, SetSequentialButton, "Set Sequential");
    layout.EndGroup();
}

/// Number of objects above an object.
int DepthOf(const XSI::CRef& object)
{
    int depth = 0;
    XSI::X3DObject parent(XSI::X3DObject(object).GetParent());
    for (; parent.IsValid(); parent = XSI::X3DObject(parent.GetParent()))
        ++depth;
    return depth;
}

std::vector<XSI::CRef> SelectedNodes()
{
    std::vector<XSI::CRef> nodes = SelectedObjects();
    std::erase_if(nodes, [](const XSI::CRef& object) { return !object.IsA(XSI::siX3DObjectID); });
    return nodes;
}

/// Brings objects higher up before those below; at one depth they keep their order.
void SortByDepth(std::vector<XSI::CRef>& objects)
{
    std::map<ULONG, int> depths;
    for (const XSI::CRef& object : objects)
        depths[object.GetObjectID()] = DepthOf(object);
    std::ranges::stable_sort(objects, {},
                             [&](const XSI::CRef& object) { return depths[object.GetObjectID()]; });
}

/// Numbers the selected objects upwards from `start`; none of them if there are not enough numbers.
void SetSequential(LONG start)
{
    std::vector<XSI::CRef> objects = SelectedNodes();
    if (static_cast<long long>(objects.size()) + start - 1 > HighestGroup) {
        XSI::Application().LogMessage("Combine Group will be greater than 255", XSI::siWarningMsg);
        return;
    }
    SortByDepth(objects);
    LONG next = start;
    for (const XSI::CRef& object : objects) {
        XSI::CustomProperty property = GetOrAddProperty(object, Type, true);
        property.PutParameterValue(Group, next++);
        property.PutParameterValue(UseGroup, true);
    }
}

void OnValueChanged(const XSI::CRefArray& properties, const XSI::CString& parameter)
{
    if (parameter != SetSequentialButton)
        return;
    SetSequential(XSI::CustomProperty(properties[0]).GetParameterValue(Group));
    for (LONG i = 0; i < properties.GetCount(); ++i)
        XSI::CustomProperty(properties[i]).PutParameterValue(SetSequentialButton, false);
}

} // namespace

const AttributePage& CombineGroupPage()
{
    static constexpr AttributePage Page = {
        .Type = Type,
        .Values = Values,
        .Number = &Search,
        .SearchButton = "TQ4X_ForPennonCombineGroupSearchButton",
        .SelectList = "TQ4X_ForPennonCombineGroupSelectList",
        .AddValueControls = AddControls,
        .OnValueChanged = OnValueChanged,
    };
    return Page;
}

} // namespace tq4x

TQ4X_ATTRIBUTE_PAGE_CALLBACKS(TQ4X_ForPennonCombineGroupProp, CombineGroupPage)
