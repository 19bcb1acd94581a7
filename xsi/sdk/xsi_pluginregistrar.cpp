#include <xsi_pluginregistrar.h>

#include <xsi_plugin.h>

#include "scene/Session.h"
#include "scene/Text.h"

namespace XSI
{

namespace
{

Host::PluginObject* RecordOf(const CRef& ref)
{
    return Host::Objects().Find<Host::PluginObject>(ref);
}

/// Runs a change on the plug-in's record; Fail if there is none.
template<class Change>
CStatus ChangePlugin(const CRef& ref, const Change& change)
{
    Host::PluginObject* plugin = RecordOf(ref);
    if (plugin == nullptr) {
        return CStatus::Fail;
    }
    change(*plugin);
    return CStatus::OK;
}

CStatus PutNote(const CRef& ref, const char* subject, const CString& text)
{
    return ChangePlugin(ref, [&](Host::PluginObject& plugin) { plugin.Notes[subject] = Host::ToUtf8(text); });
}

/// Makes the object of something that a plug-in registers.
template<class T>
T& Register(Host::PluginObject& plugin, siClassID classId, const CString& name)
{
    T& item = Host::Objects().Create<T>(classId, Host::ToUtf8(name), {}, plugin.Id);
    plugin.Items.push_back(item.Id);
    return item;
}

} // namespace

CStatus PluginRegistrar::PutAuthor(const CString& author)
{
    return ChangePlugin(GetRef(), [&](Host::PluginObject& plugin) { plugin.Author = Host::ToUtf8(author); });
}

CStatus PluginRegistrar::PutLabel(const CString& label)
{
    return ChangePlugin(GetRef(), [&](Host::PluginObject& plugin) { plugin.Label = Host::ToUtf8(label); });
}

CStatus PluginRegistrar::PutEmail(const CString& address)
{
    return PutNote(GetRef(), "Email", address);
}

CStatus PluginRegistrar::PutURL(const CString& address)
{
    return PutNote(GetRef(), "URL", address);
}

CStatus PluginRegistrar::PutHelp(const CString& path)
{
    return PutNote(GetRef(), "Help", path);
}

CStatus PluginRegistrar::PutCategories(const CString& categories)
{
    return PutNote(GetRef(), "Categories", categories);
}

CStatus PluginRegistrar::PutVersion(LONG major, LONG minor)
{
    return ChangePlugin(GetRef(), [=](Host::PluginObject& plugin) {
        plugin.Major = major;
        plugin.Minor = minor;
    });
}

CStatus PluginRegistrar::PutMajor(LONG major)
{
    return ChangePlugin(GetRef(), [=](Host::PluginObject& plugin) { plugin.Major = major; });
}

CStatus PluginRegistrar::PutMinor(LONG minor)
{
    return ChangePlugin(GetRef(), [=](Host::PluginObject& plugin) { plugin.Minor = minor; });
}

CString PluginRegistrar::GetAuthor() const
{
    const Host::PluginObject* plugin = RecordOf(GetRef());
    return plugin != nullptr ? Host::FromUtf8(plugin->Author) : CString();
}

CString PluginRegistrar::GetLabel() const
{
    const Host::PluginObject* plugin = RecordOf(GetRef());
    return plugin != nullptr ? Host::FromUtf8(plugin->Label) : CString();
}

LONG PluginRegistrar::GetMajor() const
{
    const Host::PluginObject* plugin = RecordOf(GetRef());
    return plugin != nullptr ? plugin->Major : 0;
}

LONG PluginRegistrar::GetMinor() const
{
    const Host::PluginObject* plugin = RecordOf(GetRef());
    return plugin != nullptr ? plugin->Minor : 0;
}

CStatus PluginRegistrar::RegisterCommand(const CString& name, const CString&)
{
    return ChangePlugin(GetRef(), [&](Host::PluginObject& plugin) {
        Register<Host::CommandObject>(plugin, siCommandID, name);
    });
}

CStatus PluginRegistrar::RegisterProperty(const CString& type)
{
    return ChangePlugin(
        GetRef(), [&](Host::PluginObject& plugin) { Register<Host::Object>(plugin, siSIObjectID, type); });
}

CStatus PluginRegistrar::RegisterMenu(LONG anchor, const CString& name, bool, bool isDynamic)
{
    return ChangePlugin(GetRef(), [&](Host::PluginObject& plugin) {
        auto& menu = Register<Host::MenuObject>(plugin, siMenuID, name);
        menu.Anchor = anchor;
        menu.IsDynamic = isDynamic;
    });
}

CRefArray Plugin::GetItems() const
{
    const Host::PluginObject* plugin = RecordOf(GetRef());
    return plugin != nullptr ? Host::RefsOf(Host::Objects(), plugin->Items) : CRefArray();
}

} // namespace XSI
