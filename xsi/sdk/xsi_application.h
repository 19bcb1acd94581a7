#pragma once

#include <xsi_model.h>
#include <xsi_project.h>
#include <xsi_selection.h>
#include <xsi_siobject.h>
#include <xsi_uitoolkit.h>
#include <xsi_value.h>

namespace XSI
{

/// The host. Unlike other handles one that is made by default is valid.
class Application : public SIObject
{
public:
    Application();

    CString GetName() const;
    CString GetVersion() const;

    Project GetActiveProject() const;
    Model GetActiveSceneRoot() const;
    Selection GetSelection() const;
    UIToolkit GetUIToolkit() const;

    /// Commands and plug-ins, in order of registration.
    CRefArray GetCommands() const;
    CRefArray GetPlugins() const;

    /// Invalid if no object bears the number.
    CRef GetObjectFromID(ULONG id) const;

    /// Runs a built-in command or one that a plug-in registered. Arguments are positional; those that are
    /// missing take the command's defaults.
    CStatus ExecuteCommand(const CString& name, const CValueArray& arguments, CValue& result);

    /// Has the host's script runner call a procedure of the code.
    CStatus ExecuteScriptCode(const CString& code, const CString& language, const CString& procedure,
                              const CValueArray& arguments, CValue& result);

    void LogMessage(const CString& text, siSeverityType severity = siInfoMsg) const;
};

} // namespace XSI
