// The plug-in's menu in the host's menu bar, and what its items do.

#include "export/BatchExport.h"
#include "export/ExportDialog.h"
#include "export/HostCommands.h"
#include "export/HostLog.h"
#include "export/PlaceDialog.h"
#include "export/PreferencesDialog.h"
#include "pages/AttributePage.h"
#include "pages/RenderPriorityList.h"
#include "pages/UserDataPage.h"
#include "pipeline/Preferences.h"

#include <xsi_context.h>
#include <xsi_menu.h>

namespace tq4x
{
namespace
{

struct MenuRow
{
    const char* Text;
    const char* Callback;
};

constexpr MenuRow Rows[] = {
    {"TQ4X_ForPennon Export", "OnTQ4XExport"},
    {"TQ4X_ForPennon Export with Setting ...", "OnTQ4XExportWithSetting"},
    {"TQ4X_ForPennon Auto Save Export Setting", "OnTQ4XAutoSaveExportSettingDialog"},
    {"TQ4X_ForPennon Set Material Attribute", "OnTQ4XSetMaterialAttrDialog"},
    {"TQ4X_ForPennon Set Render Priority", "OnTQ4XSetRenderPriorityDialog"},
    {"TQ4X_ForPennon Render Priority List", "OnTQ4XRenderPriorityListDialog"},
    {"TQ4X_ForPennon Set No Compress Node", "OnTQ4XSetNoCompDialog"},
    {"TQ4X_ForPennon Set Billboard", "OnTQ4XSetBillboardDialog"},
    {"TQ4X_ForPennon Set Combine Group", "OnTQ4XSetCombineGroupDialog"},
    {"TQ4X_ForPennon Set Force Export Key", "OnTQ4XSetForceExportKeyDialog"},
    {"TQ4X_ForPennon Set User Data", "OnTQ4XSetUserDataDialog"},
    {"TQ4X_ForPennon Batch Export", "OnTQ4XBatchExport"},
    {"Plugin Version...", "OnTQ4XVersionInfo"},
};

XSI::CStatus OpenExportDialog()
{
    ReadPreferences(CurrentPreferences()); // where its file windows begin
    XSI::CRefArray properties;
    const XSI::CustomProperty property = GetExportProperty();
    properties.Add(property);
    InspectHostObjects(properties, InspectMode::Recycled);
    PlaceDialog(property.GetName().GetAsciiString());
    return XSI::CStatus::OK;
}

} // namespace
} // namespace tq4x

SICALLBACK TQ4XForPennon_Init(XSI::CRef& reference)
{
    XSI::Menu menu(XSI::Context(reference).GetSource());
    for (const tq4x::MenuRow& row : tq4x::Rows) {
        XSI::MenuItem added;
        menu.AddCallbackItem(row.Text, row.Callback, added);
    }
    return XSI::CStatus::OK;
}

SICALLBACK OnTQ4XExport(XSI::CRef&)
{
    tq4x::InstallHostLog();
    return tq4x::RunExportCommand(tq4x::GetExportProperty());
}

SICALLBACK OnTQ4XExportWithSetting(XSI::CRef&)
{
    tq4x::InstallHostLog();
    return tq4x::OpenExportDialog();
}

SICALLBACK OnTQ4XAutoSaveExportSettingDialog(XSI::CRef&)
{
    tq4x::InstallHostLog();
    return tq4x::OpenPreferencesDialog();
}

SICALLBACK OnTQ4XSetMaterialAttrDialog(XSI::CRef&)
{
    return tq4x::OpenAttributePage(tq4x::MaterialAttributePage());
}

SICALLBACK OnTQ4XSetRenderPriorityDialog(XSI::CRef&)
{
    return tq4x::OpenAttributePage(tq4x::RenderPriorityPage());
}

SICALLBACK OnTQ4XRenderPriorityListDialog(XSI::CRef&)
{
    return tq4x::OpenRenderPriorityList();
}

SICALLBACK OnTQ4XSetNoCompDialog(XSI::CRef&)
{
    return tq4x::OpenAttributePage(tq4x::NoCompressPage());
}

SICALLBACK OnTQ4XSetBillboardDialog(XSI::CRef&)
{
    return tq4x::OpenAttributePage(tq4x::BillboardPage());
}

SICALLBACK OnTQ4XSetCombineGroupDialog(XSI::CRef&)
{
    return tq4x::OpenAttributePage(tq4x::CombineGroupPage());
}

SICALLBACK OnTQ4XSetForceExportKeyDialog(XSI::CRef&)
{
    return tq4x::OpenAttributePage(tq4x::ForceExportKeyPage());
}

SICALLBACK OnTQ4XSetUserDataDialog(XSI::CRef&)
{
    return tq4x::OpenUserDataPage();
}

SICALLBACK OnTQ4XBatchExport(XSI::CRef&)
{
    return tq4x::OpenBatchExport();
}

SICALLBACK OnTQ4XVersionInfo(XSI::CRef&)
{
    return tq4x::RunHostCommand("TQ4X_ForPennonVersionInfo", {});
}
