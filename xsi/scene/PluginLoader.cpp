#include "scene/PluginLoader.h"

#include "scene/Session.h"

namespace XSI::Host
{

namespace
{

/// The two entry points get the plug-in itself, all other callbacks a context: both are references.
using RawCallback = CStatus (*)(CRef&);
using RawEntryPoint = CStatus (*)(PluginRegistrar&);

PluginObject& CreatePlugin()
{
    auto& plugin = Objects().Create<PluginObject>(siPluginID, "");
    plugin.Life = Lifetime::Session;
    return plugin;
}

Plugin Refuse(PluginObject& plugin, const std::string& reason)
{
    Session::Current().Log(siErrorMsg, "The plug-in can't be loaded: " + reason);
    plugin.Unload = nullptr; // what was not loaded needs no farewell
    UnloadPlugin(RefOf(plugin));
    return Plugin();
}

/// Lets the plug-in declare the arguments of its commands and fill its menus.
void InitItems(const PluginObject& plugin)
{
    const std::vector<ObjectId> items = plugin.Items;
    for (const ObjectId id : items) {
        const Object* item = Objects().Find(id);
        if (item != nullptr && item->ClassId != siSIObjectID) {
            CallbackCall call;
            call.Source = RefOf(*item);
            RunCallback(item->Name + "_Init", call);
        }
    }
}

Plugin Load(PluginObject& plugin, const std::function<CStatus(PluginRegistrar&)>& entry)
{
    Session& session = Session::Current();
    session.Plugins.push_back(plugin.Id);
    if (!entry) {
        return Refuse(plugin, "it has no function XSILoadPlugin.");
    }
    PluginRegistrar registrar(RefOf(plugin));
    if (!entry(registrar).Succeeded()) {
        return Refuse(plugin, "XSILoadPlugin failed.");
    }
    InitItems(plugin);
    return RefOf(plugin);
}

Callback CallbackFromSymbol(void* symbol)
{
    return symbol != nullptr ? Callback(reinterpret_cast<RawCallback>(symbol)) : Callback();
}

std::function<CStatus(PluginRegistrar&)> EntryFromSymbol(void* symbol)
{
    if (symbol == nullptr) {
        return {};
    }
    return reinterpret_cast<RawEntryPoint>(symbol);
}

Callback FindInTable(const CallbackTable& callbacks, const std::string& name)
{
    const auto found = callbacks.find(name);
    return found != callbacks.end() ? found->second : Callback();
}

/// Entry points of a table take the plug-in as a plain reference.
std::function<CStatus(PluginRegistrar&)> EntryFromTable(const CallbackTable& callbacks, const char* name)
{
    const Callback entry = FindInTable(callbacks, name);
    if (!entry) {
        return {};
    }
    return [entry](PluginRegistrar& registrar) {
        CRef plugin = registrar;
        return entry(plugin);
    };
}

} // namespace

Plugin LoadPlugin(const SymbolLookup& find)
{
    PluginObject& plugin = CreatePlugin();
    plugin.FindCallback = [find](const std::string& name) { return CallbackFromSymbol(find(name.c_str())); };
    plugin.Unload = EntryFromSymbol(find("XSIUnloadPlugin"));
    return Load(plugin, EntryFromSymbol(find("XSILoadPlugin")));
}

Plugin LoadPlugin(const CallbackTable& callbacks)
{
    PluginObject& plugin = CreatePlugin();
    plugin.FindCallback = [callbacks](const std::string& name) { return FindInTable(callbacks, name); };
    plugin.Unload = EntryFromTable(callbacks, "XSIUnloadPlugin");
    return Load(plugin, EntryFromTable(callbacks, "XSILoadPlugin"));
}

void UnloadPlugin(const Plugin& plugin)
{
    const auto* object = Objects().Find<PluginObject>(plugin);
    if (object == nullptr) {
        return;
    }
    if (object->Unload) {
        PluginRegistrar registrar(plugin);
        object->Unload(registrar);
    }
    std::erase(Session::Current().Plugins, object->Id);
    Objects().Delete(object->Id);
}

std::vector<std::string> RegisteredPropertyTypes()
{
    std::vector<std::string> types;
    for (const ObjectId pluginId : Session::Current().Plugins) {
        for (const ObjectId id : Objects().Find<PluginObject>(pluginId)->Items) {
            if (const Object* item = Objects().Find(id); item->ClassId == siSIObjectID) {
                types.push_back(item->Name);
            }
        }
    }
    return types;
}

std::vector<Menu> RegisteredMenus()
{
    std::vector<Menu> menus;
    for (const ObjectId pluginId : Session::Current().Plugins) {
        for (const ObjectId id : Objects().Find<PluginObject>(pluginId)->Items) {
            if (const auto* menu = Objects().Find<MenuObject>(id)) {
                menus.emplace_back(RefOf(*menu));
            }
        }
    }
    return menus;
}

CStatus RunMenuItem(const MenuItem& item)
{
    const auto* object = Objects().Find<MenuItemObject>(item);
    if (object == nullptr) {
        return CStatus::InvalidArgument;
    }
    CallbackCall call;
    call.Source = item;
    const std::string callback = object->Callback;
    const std::optional<CStatus> status = RunCallback(callback, call);
    if (!status) {
        Session::Current().Log(siErrorMsg, "No plug-in has the callback " + callback + ".");
    }
    return status.value_or(CStatus::Fail);
}

MenuItem FindMenuItem(std::string_view callback)
{
    for (const Menu& menu : RegisteredMenus()) {
        for (const ObjectId id : Objects().Find<MenuObject>(menu)->Items) {
            if (const auto* item = Objects().Find<MenuItemObject>(id); item->Callback == callback) {
                return RefOf(*item);
            }
        }
    }
    return MenuItem();
}

std::optional<CStatus> RunCallback(const std::string& name, CallbackCall& call)
{
    Callback callback;
    for (const ObjectId id : Session::Current().Plugins) {
        callback = Objects().Find<PluginObject>(id)->FindCallback(name);
        if (callback) {
            break;
        }
    }
    if (!callback) {
        return std::nullopt;
    }
    auto& context = Objects().Create<ContextObject>(siContextID, name);
    context.Life = Lifetime::Session; // it outlives a scene that the callback opens
    context.Source = call.Source;
    context.Event = call.Event;
    context.Inspected = call.Inspected;
    context.Values = call.Values;
    CRef ref = RefOf(context);
    const CStatus status = callback(ref);
    if (const auto* after = Objects().Find<ContextObject>(ref)) {
        call.Values = after->Values;
        Objects().Delete(after->Id);
    }
    return status;
}

} // namespace XSI::Host
