#include "export/ExportDialog.h"

#include "export/Each.h"
#include "export/ExportParameters.h"
#include "export/HostCommands.h"
#include "pipeline/Preferences.h"
#include "pipeline/SettingsFile.h"

#include <xsi_application.h>
#include <xsi_project.h>
#include <xsi_scene.h>

namespace tq4x
{
namespace
{

XSI::CustomProperty FindRootProperty(const char* name)
{
    return XSI::CustomProperty(XSI::Application().GetActiveSceneRoot().GetProperties().Find(name));
}

/// Fills a new property from the last export, by a record that is live for the time being: the settings of an
/// export that ended early are replaced.
void LoadLastOptions(XSI::CustomProperty& property)
{
    ExportOptions* options = CreateOptions();
    if (options != nullptr && LoadLastExport(*options))
        PutExportOptions(property, *options);
    DestroyOptions();
}

} // namespace

XSI::CustomProperty GetExportProperty()
{
    const bool isKept = CurrentPreferences().AutoSaveExportOptions;
    XSI::CustomProperty property = FindRootProperty(ExportPropertyType);
    if (property.IsValid() && isKept) {
        DefineExportParameters(property);
        return property;
    }
    const char* const name = isKept ? ExportPropertyType : ExportPropertyOfOneExport;
    if (const XSI::CustomProperty leftOver = FindRootProperty(name); leftOver.IsValid())
        DeleteHostObject(leftOver.GetFullName()); // of a dialog that was closed without an export
    property = XSI::CustomProperty(
        XSI::Application().GetActiveSceneRoot().AddProperty(ExportPropertyType, false, name));
    LoadLastOptions(property);
    ApplyEnableRules(property);
    return property;
}

std::vector<std::string> BuildExportArguments(const XSI::CustomProperty& property)
{
    return BuildDialogArguments(
        [&](std::string_view parameter) { return ReadDialogValue(property, parameter); });
}

XSI::CStatus RunExportCommand(const XSI::CString& name, const XSI::CString& folder,
                              const std::vector<std::string>& options)
{
    XSI::CValueArray texts;
    for (const std::string& option : options)
        texts.Add(option.c_str());
    return RunHostCommand("TQ4X_ForPennonExport", {name, folder, texts});
}

XSI::CStatus RunExportCommand(const XSI::CustomProperty& property)
{
    const XSI::CString name = property.GetParameterValue("OutputFileName");
    const XSI::CString folder = property.GetParameterValue("OutputFolder");
    return RunExportCommand(name, folder, BuildExportArguments(property));
}

XSI::CString SceneOutputName()
{
    const XSI::CString name = XSI::Application().GetActiveProject().GetActiveScene().GetName();
    return name.GetAt(0) == L'_' ? name.GetSubString(1) : name;
}

} // namespace tq4x
