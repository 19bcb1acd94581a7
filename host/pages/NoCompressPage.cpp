#include "pages/AttributePage.h"

namespace tq4x
{
namespace
{

constexpr const char* NoCompress = "TQ4X_ForPennonNoCompressNode";

constexpr const char* NoCompressWords[] = {"Compress this node if possible", "Don't compress this node"};

constexpr PageParameter Values[] = {
    {.Name = NoCompress, .Type = XSI::CValue::siInt4, .Max = 1},
};

constexpr SearchBox Boxes[] = {
    {"TQ4X_ForPennonSearchCompNode", "Compress", 0},
    {"TQ4X_ForPennonSearchNoCompNode", "No Compress", 1},
};

constexpr SearchGroup Groups[] = {{NoCompress, "", Boxes}};

void AddControls(XSI::PPGLayout& layout)
{
    layout.AddGroup("No Compress");
    layout.AddEnumControl(NoCompress, Choices(NoCompressWords), XSI::CString(), XSI::siControlRadio);
    layout.EndGroup();
}

} // namespace

const AttributePage& NoCompressPage()
{
    static constexpr AttributePage Page = {
        .Type = "TQ4X_ForPennonNoCompProp",
        .Values = Values,
        .Groups = Groups,
        .SearchButton = "TQ4X_ForPennonNoCompSearchButton",
        .SelectList = "TQ4X_ForPennonNoCompSelectList",
        .AddValueControls = AddControls,
    };
    return Page;
}

} // namespace tq4x

TQ4X_ATTRIBUTE_PAGE_CALLBACKS(TQ4X_ForPennonNoCompProp, NoCompressPage)
