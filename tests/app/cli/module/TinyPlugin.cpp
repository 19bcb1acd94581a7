// A plug-in of a few commands for the tests of the loader and of the command line. What its export does
// depends on the name of the output files.

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>

#include <xsi_application.h>
#include <xsi_argumentarray.h>
#include <xsi_command.h>
#include <xsi_context.h>
#include <xsi_decl.h>
#include <xsi_pluginregistrar.h>
#include <xsi_progressbar.h>
#include <xsi_selection.h>
#include <xsi_uitoolkit.h>

namespace
{

std::string Text(const XSI::CValue& value)
{
    return value.GetAsText().GetAsciiString();
}

/// Writes what it was called with, one thing a line.
void WriteCall(const std::string& folder, const std::string& name, const XSI::CValueArray& texts)
{
    std::filesystem::create_directories(folder + "/Textures");
    std::ofstream(folder + "/Textures/a.qtex", std::ios::binary) << "texture";
    std::ofstream(folder + "/other.txt") << "not ours";
    std::ofstream file(folder + "/" + name + ".qmdl", std::ios::binary);
    for (LONG i = 0; i < texts.GetCount(); ++i) {
        file << Text(texts[i]) << "\n";
    }
    const XSI::Selection selection = XSI::Application().GetSelection();
    for (LONG i = 0; i < selection.GetCount(); ++i) {
        file << "selected " << XSI::SIObject(selection.GetItem(i)).GetName().GetAsciiString() << "\n";
    }
}

void ShowProgress()
{
    XSI::ProgressBar bar = XSI::Application().GetUIToolkit().GetProgressBar();
    bar.PutVisible(true);
    bar.PutMaximum(10);
    bar.PutStatusText("Working");
    bar.PutValue(5);
}

/// Works for ten seconds unless somebody stops it.
void WorkLong()
{
    for (int i = 0; i < 1000; ++i) {
        XSI::Application().LogMessage("still working", XSI::siInfoMsg);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

XSI::CStatus Export(const std::string& name, const std::string& folder, const XSI::CValueArray& texts)
{
    XSI::Application app;
    if (name == "fails") {
        app.LogMessage("It failed.", XSI::siErrorMsg);
        return XSI::CStatus::Fail;
    }
    if (name == "size") {
        app.LogMessage("Texture size is wrong: a.png (5 x 5)", XSI::siErrorMsg);
        return XSI::CStatus::OK;
    }
    if (name == "unwritable") {
        app.LogMessage("Can't open file(" + XSI::CString(folder.c_str()) + ")", XSI::siErrorMsg);
        return XSI::CStatus::Fail;
    }
    if (name == "asks") {
        LONG answer = 0;
        app.GetUIToolkit().MsgBox("It exists.\nOverwrite?", XSI::siMsgYesNo, "Title", answer);
        return answer == XSI::siMsgYes ? XSI::CStatus::Fail : XSI::CStatus::OK;
    }
    if (name == "throws") {
        throw std::runtime_error("a plug-in's own exception");
    }
    if (name == "works") {
        WorkLong();
    }
    app.LogMessage("The first warning.", XSI::siWarningMsg);
    app.LogMessage("The first warning.", XSI::siWarningMsg);
    app.LogMessage("Some information.", XSI::siInfoMsg);
    if (name == "errs") {
        app.LogMessage("An error that stops nothing.", XSI::siErrorMsg);
    }
    ShowProgress();
    WriteCall(folder, name, texts);
    return XSI::CStatus::OK;
}

void AddArguments(XSI::CRef& context, std::initializer_list<const char*> names)
{
    XSI::Command command = XSI::Context(context).GetSource();
    XSI::ArgumentArray arguments = command.GetArguments();
    for (const char* const name : names) {
        arguments.Add(name, XSI::CValue(""));
    }
}

} // namespace

SICALLBACK XSILoadPlugin(XSI::PluginRegistrar& plugin)
{
    plugin.PutName("Tiny");
    plugin.RegisterCommand("TQ4X_ForPennonExport");
    plugin.RegisterCommand("TQ4X_ForPennonExportSettingFile");
    plugin.RegisterCommand("TinyOpen");
    plugin.RegisterCommand("TinyVersion");
    plugin.RegisterProperty("TinyProp");
    plugin.RegisterMenu(XSI::siMenuMainFileExportID, "TinyMenu", false, false);
    return XSI::CStatus::OK;
}

SICALLBACK TQ4X_ForPennonExport_Init(XSI::CRef& context)
{
    AddArguments(context, {"sceneName", "outputFolder", "arguments"});
    return XSI::CStatus::OK;
}

SICALLBACK TQ4X_ForPennonExport_Execute(XSI::CRef& context)
{
    const XSI::CValueArray arguments = XSI::Context(context).GetAttribute("Arguments");
    return Export(Text(arguments[0]), Text(arguments[1]), arguments[2]);
}

SICALLBACK TQ4X_ForPennonExportSettingFile_Init(XSI::CRef& context)
{
    AddArguments(context, {"q3esFileName", "sceneName", "outputFolder"});
    return XSI::CStatus::OK;
}

SICALLBACK TQ4X_ForPennonExportSettingFile_Execute(XSI::CRef& context)
{
    const XSI::CValueArray arguments = XSI::Context(context).GetAttribute("Arguments");
    XSI::CValueArray texts;
    texts.Add("settings " + XSI::CString(arguments[0]));
    return Export(Text(arguments[1]), Text(arguments[2]), texts);
}

SICALLBACK TinyOpen_Init(XSI::CRef& context)
{
    AddArguments(context, {"file"});
    return XSI::CStatus::OK;
}

SICALLBACK TinyOpen_Execute(XSI::CRef& context)
{
    const XSI::CValueArray arguments = XSI::Context(context).GetAttribute("Arguments");
    XSI::CValueArray call;
    call.Add(arguments[0]);
    XSI::CValue result;
    return XSI::Application().ExecuteCommand("OpenScene", call, result);
}

SICALLBACK TinyVersion_Execute(XSI::CRef&)
{
    LONG answer = 0;
    return XSI::Application().GetUIToolkit().MsgBox("Tiny\n1.0", XSI::siMsgOkOnly, "Version", answer);
}

SICALLBACK TinyMenu_Init(XSI::CRef&)
{
    return XSI::CStatus::OK;
}
