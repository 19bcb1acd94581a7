#include "pages/AttributePage.h"

namespace tq4x
{
namespace
{

constexpr const char* Type = "TQ4X_ForPennonBillboardType";

constexpr const char* TypeWords[] = {
    "None", "World", "World Viewpoint", "Screen", "Screen Viewpoint", "Y Axial", "Y Axial Viewpoint"};

constexpr PageParameter Values[] = {
    {.Name = Type, .Type = XSI::CValue::siInt4, .Max = 6},
};

constexpr SearchBox Boxes[] = {
    {"TQ4X_ForPennonSearchBillboardWorld", "World", 1},
    {"TQ4X_ForPennonSearchBillboardWorldViewpoint", "World Viewpoint", 2},
    {"TQ4X_ForPennonSearchBillboardScreen", "Screen", 3},
    {"TQ4X_ForPennonSearchBillboardScreenViewpoint", "Screen Viewpoint", 4},
    {"TQ4X_ForPennonSearchYBillboard", "Y Axial", 5},
    {"TQ4X_ForPennonSearchYBillboardViewpoint", "Y Axial Viewpoint", 6},
};

constexpr SearchGroup Groups[] = {{Type, "", Boxes}};

void AddControls(XSI::PPGLayout& layout)
{
    layout.AddGroup("Billboard");
    layout.AddEnumControl(Type, Choices(TypeWords), XSI::CString(), XSI::siControlRadio);
    layout.EndGroup();
}

} // namespace

const AttributePage& BillboardPage()
{
    static constexpr AttributePage Page = {
        .Type = "TQ4X_ForPennonBillboardProp",
        .Values = Values,
        .Groups = Groups,
        .SearchButton = "TQ4X_ForPennonBillboardSearchButton",
        .SelectList = "TQ4X_ForPennonBillboardSelectList",
        .AddValueControls = AddControls,
    };
    return Page;
}

} // namespace tq4x

TQ4X_ATTRIBUTE_PAGE_CALLBACKS(TQ4X_ForPennonBillboardProp, BillboardPage)
