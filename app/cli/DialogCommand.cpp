#include <xsi_parameter.h>
#include <xsi_ppgitem.h>
#include <xsi_ppglayout.h>

#include <filesystem>
#include <fstream>
#include <memory>

#include "cli/Command.h"
#include "cli/HostConnection.h"
#include "cli/ReadSettings.h"
#include "cli/ToolFolder.h"
#include "scene/PluginLoader.h"
#include "scene/PropertyPage.h"
#include "scene/Session.h"
#include "scene/Text.h"

namespace tq4x::cli
{
namespace
{

namespace Host = XSI::Host;

constexpr const char* OpenDialog = "OnTQ4XExportWithSetting";

constexpr std::string_view AskForFile = "-"; // in the place of a file

constexpr OptionSpec Specs[] = {
    {"--load", 0, "FILE.q3es", "press Load and choose this file; - asks for one on the terminal"},
    {"--save", 0, "FILE.q3es", "press Save and choose this file; - asks for one on the terminal"},
    {"--asset-root", 0, "DIR", "allow files of the scene anywhere below this folder"},
    {"--plugin", 0, "FILE", "load this plug-in; default: $TQ4X_PLUGIN, else the one beside the program"},
};

/// The text that a list shows for a value; the value itself where there is no list.
std::string ShownValue(const XSI::PPGItem& item, const XSI::CValue& value)
{
    const std::string text = Host::ToUtf8(value.GetAsText());
    const XSI::CValueArray choices = item.GetUIItems();
    for (LONG i = 0; i + 1 < choices.GetCount(); i += 2) {
        if (Host::ToUtf8(choices[i + 1].GetAsText()) == text) {
            return Host::ToUtf8(choices[i].GetAsText());
        }
    }
    return text;
}

std::string LineOf(const Host::PropertyPage& page, const XSI::PPGItem& item)
{
    const std::string name = Host::ToUtf8(item.GetName());
    const std::string label = Host::ToUtf8(item.GetLabel());
    const std::string shown = label.empty() ? name : label;
    if (Host::ToUtf8(item.GetType()) == "button") {
        return "[" + shown + "]";
    }
    return shown + ": " + ShownValue(item, page.Get(name)) + (page.IsEnabled(name) ? "" : "  (disabled)");
}

void PrintPage(const Host::PropertyPage& page, Console& console)
{
    const XSI::PPGLayout layout = page.GetLayout();
    std::size_t depth = 0;
    for (LONG i = 0; i < layout.GetCount(); ++i) {
        const XSI::PPGItem item = layout.GetItem(i);
        const std::string control = Host::ToUtf8(item.GetType());
        if (control == "group") {
            console.Result(MakePrintable(Host::ToUtf8(item.GetLabel())));
            ++depth;
        } else if (control == "endgroup") {
            --depth;
        } else if (control != "row" && control != "endrow") {
            console.Result(std::string(2 * depth, ' ') + MakePrintable(LineOf(page, item)));
        }
    }
}

/// The title that a file window's script gives it.
std::string TitleOf(const Host::ScriptCall& call)
{
    constexpr std::string_view Assignment = "DialogTitle = \"";
    const std::size_t start = call.Code.find(Assignment);
    if (start == std::string::npos) {
        return "File";
    }
    const std::size_t title = start + Assignment.size();
    return call.Code.substr(title, call.Code.find('"', title) - title);
}

/// Presses a button that opens the host's file window, which is answered by a file. `file` takes up what a
/// person chose, empty for none. False if the plug-in told an error.
bool PressFileButton(Host::PropertyPage& page, const char* button, std::string& file, Console& console)
{
    const std::size_t errors = console.CountOf(Severity::Error);
    auto& runScript = Host::Session::Current().Fill.RunScript;
    runScript = [&file, &console](const Host::ScriptCall& call, XSI::CValue& result) {
        if (file == AskForFile) {
            file = console.AskFor(TitleOf(call) + ":");
        }
        result = Host::FromUtf8(file);
        return XSI::CStatus(XSI::CStatus::OK);
    };
    page.Press(button);
    runScript = nullptr;
    return console.CountOf(Severity::Error) == errors;
}

/// Says more about a file that could not be loaded than the plug-in does.
void ExplainUnread(const std::string& file, Console& console)
{
    const std::string problem = ReadSettings(file).Error;
    if (!problem.empty()) {
        console.Error(problem);
    }
}

/// Whether a file is there and may be written, which the plug-in passes over in silence where it may not.
bool IsWritable(const std::string& file)
{
    std::error_code error;
    return std::filesystem::exists(file, error) && std::ofstream(file, std::ios::app).is_open();
}

/// What the options want done on the page, in the order of its buttons.
ExitCode UsePage(Host::PropertyPage& page, const Arguments& arguments, Console& console)
{
    if (auto file = arguments.Value("--load");
        file && !PressFileButton(page, "LoadOptions", *file, console)) {
        ExplainUnread(*file, console);
        return BadInput;
    }
    auto target = arguments.Value("--save");
    if (target && !PressFileButton(page, "SaveOptions", *target, console)) {
        return BadOutput;
    }
    if (target && !target->empty() && !IsWritable(*target)) {
        console.Error("The file " + *target + " can't be written.");
        return BadOutput;
    }
    return Done;
}

/// True if a file is to be asked for and nobody can be.
bool IsUnanswerable(const Arguments& arguments, const Console& console)
{
    return !console.CanAsk() &&
           (arguments.Value("--load") == AskForFile || arguments.Value("--save") == AskForFile);
}

ExitCode RunDialog(const Arguments& arguments, Console& console)
{
    if (IsUnanswerable(arguments, console)) {
        console.Error("Nobody can be asked for a file; --load FILE.q3es and --save FILE.q3es name one.");
        return WrongUsage;
    }
    const ToolFolder tool;
    if (const ExitCode code = LoadPlugin(arguments, console); code != Done) {
        return code;
    }
    gltf::SceneOptions options;
    options.AssetRoot = arguments.Value("--asset-root").value_or("");
    const HostConnection connection(console, options);
    if (const ExitCode code = OpenInHost(arguments.Positionals[0], options, console); code != Done) {
        return code;
    }
    const bool isOpen = Host::RunMenuItem(Host::FindMenuItem(OpenDialog)).Succeeded();
    const auto& pages = Host::Session::Current().Pages;
    if (!isOpen || pages.empty()) {
        console.Error("The plug-in has no export dialog.");
        return Failed;
    }
    const std::shared_ptr<Host::PropertyPage> page = pages.back();
    const ExitCode code = UsePage(*page, arguments, console);
    if (code == Done) {
        PrintPage(*page, console);
    }
    return code;
}

} // namespace

const Command DialogCommand = {"dialog", "SCENE",  1, 1, "Shows the export dialog as it opens on a scene.",
                               Specs,    RunDialog};

} // namespace tq4x::cli
