#include "pages/AttributePage.h"

namespace tq4x
{
namespace
{

constexpr const char* Translate = "TQ4X_ForPennonForceExportKeyTrans";
constexpr const char* Rotate = "TQ4X_ForPennonForceExportKeyRotate";
constexpr const char* Scale = "TQ4X_ForPennonForceExportKeyScale";

constexpr PageParameter Values[] = {{.Name = Translate}, {.Name = Rotate}, {.Name = Scale}};

constexpr SearchBox TranslateBoxes[] = {
    {"TQ4X_ForPennonSearchForceExportKeyTransOn", "On", 1},
    {"TQ4X_ForPennonSearchForceExportKeyTransOff", "Off", 0},
};

constexpr SearchBox RotateBoxes[] = {
    {"TQ4X_ForPennonSearchForceExportKeyRotateOn", "On", 1},
    {"TQ4X_ForPennonSearchForceExportKeyRotateOff", "Off", 0},
};

constexpr SearchBox ScaleBoxes[] = {
    {"TQ4X_ForPennonSearchForceExportKeyScaleOn", "On", 1},
    {"TQ4X_ForPennonSearchForceExportKeyScaleOff", "Off", 0},
};

constexpr SearchGroup Groups[] = {
    {Translate, "Translate", TranslateBoxes},
    {Rotate, "Rotate", RotateBoxes},
    {Scale, "Scale", ScaleBoxes},
};

void AddControls(XSI::PPGLayout& layout)
{
    layout.AddGroup("Force Export Key");
    layout.AddItem(Translate, "Force Export Translate Key", XSI::siControlCheck);
    layout.AddItem(Rotate, "Force Export Rotate Key", XSI::siControlCheck);
    layout.AddItem(Scale, "Force Export Scale Key", XSI::siControlCheck);
    layout.EndGroup();
}

} // namespace

const AttributePage& ForceExportKeyPage()
{
    static constexpr AttributePage Page = {
        .Type = "TQ4X_ForPennonForceExportKeyProp",
        .Values = Values,
        .Groups = Groups,
        .AndOr = "TQ4X_ForPennonForceExportKeySearchAndOr",
        .SearchButton = "TQ4X_ForPennonForceExportKeySearchButton",
        .SelectList = "TQ4X_ForPennonForceExportKeySelectList",
        .AddValueControls = AddControls,
    };
    return Page;
}

} // namespace tq4x

TQ4X_ATTRIBUTE_PAGE_CALLBACKS(TQ4X_ForPennonForceExportKeyProp, ForceExportKeyPage)
