#include <xsi_application.h>

#include "scene/BuiltinCommands.h"
#include "scene/Session.h"
#include "scene/Text.h"

namespace XSI
{

namespace
{

/// What plug-ins registered of one class.
CRefArray RegisteredItems(siClassID classId)
{
    CRefArray found;
    for (const Host::ObjectId pluginId : Host::Session::Current().Plugins) {
        for (const Host::ObjectId id : Host::Objects().Find<Host::PluginObject>(pluginId)->Items) {
            const CRef item = CRef::FromObjectID(id);
            if (item.IsA(classId)) {
                found.Add(item);
            }
        }
    }
    return found;
}

} // namespace

Application::Application() : SIObject(CRef::FromObjectID(Host::Session::Current().Application)) {}

CString Application::GetName() const
{
    return SIObject::GetName();
}

CString Application::GetVersion() const
{
    return L"11.0";
}

Project Application::GetActiveProject() const
{
    return CRef::FromObjectID(Host::Session::Current().Project);
}

Model Application::GetActiveSceneRoot() const
{
    return CRef::FromObjectID(Host::Session::Current().Root);
}

Selection Application::GetSelection() const
{
    return CRef::FromObjectID(Host::Session::Current().Selection);
}

UIToolkit Application::GetUIToolkit() const
{
    return CRef::FromObjectID(Host::Session::Current().UiToolkit);
}

CRefArray Application::GetCommands() const
{
    return RegisteredItems(siCommandID);
}

CRefArray Application::GetPlugins() const
{
    return Host::RefsOf(Host::Objects(), Host::Session::Current().Plugins);
}

CRef Application::GetObjectFromID(ULONG id) const
{
    return CRef::FromObjectID(id);
}

CStatus Application::ExecuteCommand(const CString& name, const CValueArray& arguments, CValue& result)
{
    return Host::RunCommand(Host::ToUtf8(name), arguments, result);
}

CStatus Application::ExecuteScriptCode(const CString& code, const CString& language, const CString& procedure,
                                       const CValueArray& arguments, CValue& result)
{
    Host::Session& session = Host::Session::Current();
    if (!session.Fill.RunScript) {
        session.Log(siErrorMsg, "There is nothing that runs scripts.");
        return CStatus::Fail;
    }
    return session.Fill.RunScript(
        {Host::ToUtf8(code), Host::ToUtf8(language), Host::ToUtf8(procedure), arguments}, result);
}

void Application::LogMessage(const CString& text, siSeverityType severity) const
{
    Host::Session::Current().Log(severity, Host::ToUtf8(text));
}

Scene Project::GetActiveScene() const
{
    return IsValid() ? CRef::FromObjectID(Host::Session::Current().Scene) : CRef();
}

Model Scene::GetRoot() const
{
    const auto* scene = Host::Objects().Find<Host::SceneObject>(GetRef());
    return scene != nullptr ? CRef::FromObjectID(scene->Root) : CRef();
}

CRefArray Scene::GetMaterialLibraries() const
{
    const auto* scene = Host::Objects().Find<Host::SceneObject>(GetRef());
    return scene != nullptr ? Host::RefsOf(Host::Objects(), scene->Libraries) : CRefArray();
}

} // namespace XSI
