#include "pages/AttributePage.h"

namespace tq4x
{
namespace
{

constexpr const char* UsePriority = "TQ4X_ForPennonRenderPrioUsePriority";
constexpr const char* Priority = "TQ4X_ForPennonRenderPrioPriority";

constexpr PageParameter Values[] = {
    {.Name = UsePriority},
    {.Name = Priority, .Type = XSI::CValue::siInt4, .Default = 1, .Min = 1, .Max = 255},
};

constexpr NumberSearch Search = {
    .UseParameter = UsePriority,
    .ValueParameter = Priority,
    .IsCompared = "TQ4X_ForPennonRenderPrioSearchUsePrecondition",
    .Relation = "TQ4X_ForPennonRenderPrioSearchPrecondition",
    .Number = {.Name = "TQ4X_ForPennonRenderPrioSearchPreconditionValue",
               .Type = XSI::CValue::siInt4,
               .Default = 1,
               .Min = 1,
               .Max = 255},
};

void AddControls(XSI::PPGLayout& layout)
{
    layout.AddGroup("Render Priority");
    layout.AddRow();
    layout.AddItem(UsePriority, "Render\nPriority", XSI::siControlCheck);
    layout.AddItem(Priority, "Priority 1(High Priority) - 255(Low Priority)", XSI::siControlNumber);
    layout.EndRow();
    layout.EndGroup();
}

} // namespace

const AttributePage& RenderPriorityPage()
{
    static constexpr AttributePage Page = {
        .Type = "TQ4X_ForPennonRenderPriorityProp",
        .Carrier = PageCarrier::Material, // which is where the exporter reads it
        .Values = Values,
        .Number = &Search,
        .SearchButton = "TQ4X_ForPennonRenderPrioSearchButton",
        .SelectList = "TQ4X_ForPennonRenderPrioSelectList",
        .AddValueControls = AddControls,
    };
    return Page;
}

} // namespace tq4x

TQ4X_ATTRIBUTE_PAGE_CALLBACKS(TQ4X_ForPennonRenderPriorityProp, RenderPriorityPage)
