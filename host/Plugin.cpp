// The entry points of the plug-in. The host finds everything else by name: the callbacks of commands,
// properties and menu items stand beside what they do.

#include <xsi_application.h>
#include <xsi_pluginregistrar.h>

SICALLBACK XSILoadPlugin(XSI::PluginRegistrar& plugin)
{
    plugin.PutAuthor("Vendaral");
    plugin.PutName("TQ4X_ForPennonExport");
    plugin.PutLabel("TQ4X For Pennon");
    plugin.PutVersion(0, 5);
    plugin.RegisterMenu(XSI::siMenuMainFileExportID, "TQ4XForPennon", false, false);

    plugin.RegisterCommand("TQ4X_ForPennonExport");
    plugin.RegisterCommand("TQ4X_ForPennonExportSettingFile");
    plugin.RegisterCommand("TQ4X_ForPennonBatchExport");
    plugin.RegisterCommand("TQ4X_ForPennonVersionInfo");

    plugin.RegisterProperty("TQ4X_ForPennonExportProp");
    plugin.RegisterProperty("TQ4X_ForPennonBatchExportProp");
    plugin.RegisterProperty("TQ4X_ForPennonNoCompProp");
    plugin.RegisterProperty("TQ4X_ForPennonBillboardProp");
    plugin.RegisterProperty("TQ4X_ForPennonMaterialAttrProp");
    plugin.RegisterProperty("TQ4X_ForPennonRenderPriorityProp");
    plugin.RegisterProperty("TQ4X_ForPennonRenderPriorityListProp");
    plugin.RegisterProperty("TQ4X_ForPennonCombineGroupProp");
    plugin.RegisterProperty("TQ4X_ForPennonForceExportKeyProp");
    plugin.RegisterProperty("TQ4X_ForPennonUserDataProp");
    plugin.RegisterProperty("TQ4X_ForPennonUserDataItemProp");
    return XSI::CStatus::OK;
}

SICALLBACK XSIUnloadPlugin(XSI::PluginRegistrar& plugin)
{
    XSI::Application().LogMessage(plugin.GetName() + " has been unloaded.", XSI::siInfoMsg);
    return XSI::CStatus::OK;
}
