#include "SamplePlugin.h"

#include <xsi_application.h>
#include <xsi_command.h>
#include <xsi_customproperty.h>
#include <xsi_menu.h>
#include <xsi_parameter.h>
#include <xsi_pluginregistrar.h>
#include <xsi_ppgeventcontext.h>
#include <xsi_ppglayout.h>

#include "PrintValues.h"

using namespace XSI;
using tq4x::test::SamplePlugin;
using tq4x::test::Text;

namespace
{

void WriteDown(const std::string& call)
{
    SamplePlugin::Calls().push_back(call);
}

} // namespace

SICALLBACK XSILoadPlugin(PluginRegistrar& plugin)
{
    plugin.PutAuthor(L"Somebody");
    plugin.PutName(L"Sample");
    plugin.PutLabel(L"A sample");
    plugin.PutVersion(1, 2);
    plugin.RegisterMenu(siMenuMainFileExportID, L"SampleMenu");
    plugin.RegisterCommand(L"Sample", L"Sample");
    plugin.RegisterCommand(L"SampleFailing", L"SampleFailing");
    plugin.RegisterCommand(L"SampleMissing", L"SampleMissing");
    plugin.RegisterProperty(L"SampleProp");
    plugin.RegisterProperty(L"OtherProp");
    return CStatus::OK;
}

SICALLBACK XSIUnloadPlugin(const PluginRegistrar& plugin)
{
    Application().LogMessage(plugin.GetName() + L" has been unloaded.");
    return CStatus::OK;
}

SICALLBACK Sample_Init(CRef& context)
{
    Command command = Context(context).GetSource();
    command.PutDescription(L"Joins its arguments.");
    command.EnableReturnValue(true);
    ArgumentArray arguments = command.GetArguments();
    arguments.Add(L"first", L"one");
    arguments.Add(L"second", L"two");
    return CStatus::OK;
}

SICALLBACK Sample_Execute(CRef& context)
{
    Context call(context);
    const CValue arguments = call.GetAttribute(L"Arguments");
    WriteDown("Sample_Execute " + Text(arguments.GetAsText()));
    call.PutAttribute(L"ReturnValue", arguments.GetAsText());
    return CStatus::OK;
}

SICALLBACK SampleFailing_Execute(CRef&)
{
    return CStatus::Abort;
}

SICALLBACK SampleMenu_Init(CRef& context)
{
    Menu menu = Context(context).GetSource();
    MenuItem item;
    menu.AddCallbackItem(L"Do it ...", L"OnSampleDoIt", item);
    menu.AddSeparatorItem(item);
    menu.AddCallbackItem(L"Nowhere", L"OnSampleNowhere", item);
    return CStatus::OK;
}

SICALLBACK OnSampleDoIt(CRef& context)
{
    WriteDown("OnSampleDoIt " + Text(MenuItem(Context(context).GetSource()).GetLabel()));
    return CStatus::OK;
}

SICALLBACK SampleProp_Define(CRef& context)
{
    CustomProperty property = Context(context).GetSource();
    Parameter added;
    property.AddParameter(L"Value", CValue::siInt4, siPersistable, L"The value", L"", 1, 0, 6, 0, 6, added);
    property.AddParameter(L"Search", CValue::siBool, siPersistable, L"", L"", false, added);
    property.AddParameter(L"List", CValue::siString, siPersistable | siReadOnly, L"", L"", L"", added);
    return CStatus::OK;
}

SICALLBACK SampleProp_DefineLayout(CRef& context)
{
    PPGLayout layout = Context(context).GetSource();
    layout.Clear();
    layout.AddGroup(L"Selected");
    layout.AddString(L"List", L"", true, 60).PutAttribute(siUINoLabel, true);
    layout.EndGroup();
    CValueArray items;
    items.Add(L"None");
    items.Add(0);
    items.Add(L"Some");
    items.Add(1);
    layout.AddEnumControl(L"Value", items, L"Value", siControlRadio);
    layout.AddItem(L"Search", L"Search", siControlDSControl).PutAttribute(siUIClass, L"Button");
    layout.AddRow();
    layout.AddButton(L"Up", L"Move Up");
    layout.AddButton(L"Down").PutAttribute(siUIButtonDisable, true);
    layout.AddButton(L"Done");
    layout.EndRow();
    return CStatus::OK;
}

SICALLBACK SampleProp_PPGEvent(const CRef& context)
{
    PPGEventContext event(context);
    std::string call = "SampleProp_PPGEvent " + std::to_string(event.GetEventID());
    call += " " + Text(SIObject(event.GetSource()).GetName());
    const CString button = event.GetAttribute(L"Button");
    call += button.IsEmpty() ? "" : " " + Text(button);
    WriteDown(call + " of " + std::to_string(event.GetInspectedObjects().GetCount()));
    if (button == L"Done") {
        event.PutAttribute(L"Close", true);
    } else {
        event.PutAttribute(L"Refresh", true);
    }
    return CStatus::OK;
}

namespace tq4x::test
{
namespace
{

struct Function
{
    const char* Name;
    CStatus (*Address)(CRef&);
};

constexpr Function Functions[] = {
    {"Sample_Init", Sample_Init},
    {"Sample_Execute", Sample_Execute},
    {"SampleFailing_Execute", SampleFailing_Execute},
    {"SampleMenu_Init", SampleMenu_Init},
    {"OnSampleDoIt", OnSampleDoIt},
    {"SampleProp_Define", SampleProp_Define},
    {"SampleProp_DefineLayout", SampleProp_DefineLayout},
};

} // namespace

XSI::Host::CallbackTable SamplePlugin::Callbacks()
{
    XSI::Host::CallbackTable table;
    for (const Function& function : Functions) {
        table[function.Name] = function.Address;
    }
    table["XSILoadPlugin"] = [](CRef& plugin) {
        PluginRegistrar registrar(plugin);
        return XSILoadPlugin(registrar);
    };
    table["XSIUnloadPlugin"] = [](CRef& plugin) { return XSIUnloadPlugin(PluginRegistrar(plugin)); };
    table["SampleProp_PPGEvent"] = [](CRef& context) { return SampleProp_PPGEvent(context); };
    return table;
}

void* SamplePlugin::FindSymbol(const char* name)
{
    const std::string wanted = name;
    if (wanted == "XSILoadPlugin") {
        return reinterpret_cast<void*>(XSILoadPlugin);
    }
    if (wanted == "XSIUnloadPlugin") {
        return reinterpret_cast<void*>(XSIUnloadPlugin);
    }
    if (wanted == "SampleProp_PPGEvent") {
        return reinterpret_cast<void*>(SampleProp_PPGEvent);
    }
    for (const Function& function : Functions) {
        if (wanted == function.Name) {
            return reinterpret_cast<void*>(function.Address);
        }
    }
    return nullptr;
}

std::vector<std::string>& SamplePlugin::Calls()
{
    static std::vector<std::string> calls;
    return calls;
}

} // namespace tq4x::test
