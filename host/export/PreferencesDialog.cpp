#include "export/PreferencesDialog.h"

#include "export/HostCommands.h"
#include "pages/PageParameters.h"
#include "pipeline/Preferences.h"

#include <xsi_application.h>
#include <xsi_ppgeventcontext.h>

#include <string>

namespace tq4x
{
namespace
{

// The property bears another name than its callbacks, so that the host finds none of them for it: what they
// would do is done here. Scenes keep the property under this name.
constexpr const char* PropertyName = "TQ4X_ForPennonPluginPreferencesProp";

constexpr const char* AutoSave = "TQ4X_ForPennonPluginPrefAutoSaveOptionsFlag";
constexpr const char* LoadDir = "TQ4X_ForPennonPluginPrefDefaultLoadDir";
constexpr const char* SaveDir = "TQ4X_ForPennonPluginPrefDefaultSaveDir";

constexpr PageParameter Parameters[] = {
    {.Name = AutoSave, .Default = 1},
    {.Name = LoadDir, .Type = XSI::CValue::siString},
    {.Name = SaveDir, .Type = XSI::CValue::siString},
};

XSI::CustomProperty FindOrAddProperty()
{
    const XSI::Model root = XSI::Application().GetActiveSceneRoot();
    XSI::CustomProperty property(root.GetProperties().Find(PropertyName));
    if (!property.IsValid())
        property = root.AddCustomProperty(PropertyName);
    AddMissingParameters(property, Parameters);
    return property;
}

void PutPreferences(XSI::CustomProperty& property, const PluginPreferences& preferences)
{
    property.PutParameterValue(AutoSave, preferences.AutoSaveExportOptions);
    property.PutParameterValue(LoadDir, preferences.OptionDefaultLoadDir.c_str());
    property.PutParameterValue(SaveDir, preferences.OptionDefaultSaveDir.c_str());
}

PluginPreferences ReadFrom(const XSI::CustomProperty& property)
{
    return {.AutoSaveExportOptions = property.GetParameterValue(AutoSave),
            .OptionDefaultLoadDir = ReadText(property, LoadDir),
            .OptionDefaultSaveDir = ReadText(property, SaveDir)};
}

} // namespace

XSI::CStatus OpenPreferencesDialog()
{
    ReadPreferences(CurrentPreferences());
    XSI::CustomProperty property = FindOrAddProperty();
    PutPreferences(property, CurrentPreferences());
    XSI::CRefArray properties;
    properties.Add(property);
    if (InspectHostObjects(properties, InspectMode::Modal)) {
        CurrentPreferences() = ReadFrom(property);
        WritePreferences(CurrentPreferences());
    }
    return XSI::CStatus::OK;
}

} // namespace tq4x

SICALLBACK TQ4XPluginPreferencesProp_Define(XSI::CRef& reference)
{
    XSI::CustomProperty property(XSI::Context(reference).GetSource());
    tq4x::AddMissingParameters(property, tq4x::Parameters);
    return XSI::CStatus::OK;
}

SICALLBACK TQ4XPluginPreferencesProp_DefineLayout(XSI::CRef& reference)
{
    XSI::PPGLayout layout(XSI::Context(reference).GetSource());
    layout.Clear();
    layout.AddGroup("Auto_SaveLoad_Setting");
    layout.AddItem(tq4x::AutoSave);
    layout.EndGroup();
    return XSI::CStatus::OK;
}

SICALLBACK TQ4XPluginPreferencesProp_PPGEvent(XSI::CRef& reference)
{
    XSI::PPGEventContext(reference).PutAttribute("Refresh", true);
    return XSI::CStatus::OK;
}
