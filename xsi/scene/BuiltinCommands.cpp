#include "scene/BuiltinCommands.h"

#include <map>
#include <memory>
#include <vector>

#include <xsi_command.h>
#include <xsi_customproperty.h>
#include <xsi_parameter.h>
#include <xsi_selection.h>

#include "scene/PluginLoader.h"
#include "scene/PropertyPage.h"
#include "scene/Session.h"

namespace XSI::Host
{

namespace
{

struct FoundObjects
{
    std::vector<CRef> Refs;
    bool IsComplete = true;
};

void AddNamed(const std::string& name, FoundObjects& found)
{
    const std::vector<ObjectId> ids = Session::Current().Names.Find(Objects(), name);
    for (const ObjectId id : ids) {
        found.Refs.push_back(CRef::FromObjectID(id));
    }
    found.IsComplete = found.IsComplete && !ids.empty();
}

/// All objects that a list of full names stands for. A separator inside a name can't be told from others,
/// save where the whole text is a name.
void AddAllNamed(const std::string& names, FoundObjects& found)
{
    if (!Session::Current().Names.Find(Objects(), names).empty()) {
        AddNamed(names, found);
        return;
    }
    std::size_t start = 0;
    for (std::size_t end = names.find(','); end != std::string::npos; end = names.find(',', start)) {
        AddNamed(names.substr(start, end - start), found);
        start = end + 1;
    }
    AddNamed(names.substr(start), found);
}

FoundObjects FindObjects(const CValue& value)
{
    FoundObjects found;
    const CValueArray values = value;
    for (LONG i = 0; i < values.GetCount(); ++i) {
        if (values[i].GetType() == CValue::siString) {
            AddAllNamed(ToUtf8(values[i]), found);
            continue;
        }
        const CRefArray refs = values[i];
        found.IsComplete = found.IsComplete && refs.GetCount() > 0;
        for (LONG k = 0; k < refs.GetCount(); ++k) {
            found.IsComplete = found.IsComplete && refs[k].IsValid();
            if (refs[k].IsValid()) {
                found.Refs.push_back(refs[k]);
            }
        }
    }
    return found;
}

CStatus StatusOf(const FoundObjects& found)
{
    return found.IsComplete ? CStatus::OK : CStatus::InvalidArgument;
}

bool IsPreference(const std::string& name)
{
    return name.starts_with("preferences.");
}

CStatus GetValue(const CValueArray& arguments, CValue& result)
{
    const std::string name = ToUtf8(arguments[0]);
    if (IsPreference(name)) {
        const auto found = Session::Current().Preferences.find(name);
        result = found != Session::Current().Preferences.end() ? found->second : CValue();
        return found != Session::Current().Preferences.end() ? CStatus::OK : CStatus::InvalidArgument;
    }
    const FoundObjects found = FindObjects(arguments[0]);
    const Parameter parameter = found.Refs.empty() ? CRef() : found.Refs.front();
    result = parameter.GetValue();
    return parameter.IsValid() ? CStatus::OK : CStatus::InvalidArgument;
}

CStatus SetValue(const CValueArray& arguments, CValue&)
{
    const std::string name = ToUtf8(arguments[0]);
    if (IsPreference(name)) {
        Session::Current().Preferences[name] = arguments[1];
        return CStatus::OK;
    }
    const FoundObjects found = FindObjects(arguments[0]);
    Parameter parameter = found.Refs.empty() ? CRef() : found.Refs.front();
    return parameter.IsValid() ? parameter.PutValue(arguments[1]) : CStatus::InvalidArgument;
}

/// The host's own objects and the frame of the scene stay.
bool CanDelete(const CRef& object)
{
    const Session& session = Session::Current();
    const ObjectId id = object.GetObjectID();
    return object.IsA(siProjectItemID) && id != session.Root && id != session.Scene && id != session.Project;
}

CStatus DeleteObj(const CValueArray& arguments, CValue&)
{
    const FoundObjects found = FindObjects(arguments[0]);
    for (const CRef& object : found.Refs) {
        if (!CanDelete(object)) {
            return CStatus::AccessDenied;
        }
    }
    for (const CRef& object : found.Refs) {
        Objects().Delete(object.GetObjectID());
    }
    return StatusOf(found);
}

CStatus SelectObj(const CValueArray& arguments, CValue&)
{
    const FoundObjects found = FindObjects(arguments[0]);
    Selection selection(CRef::FromObjectID(Session::Current().Selection));
    selection.Clear();
    for (const CRef& object : found.Refs) {
        selection.Add(object);
    }
    return StatusOf(found);
}

CStatus DeselectAll(const CValueArray&, CValue&)
{
    return Selection(CRef::FromObjectID(Session::Current().Selection)).Clear();
}

/// There is no view to move: the call alone is kept, with all calls.
CStatus FrameSelection(const CValueArray&, CValue&)
{
    return CStatus::OK;
}

/// The custom properties among the objects, by type, in order of first appearance.
std::vector<CRefArray> GroupByType(const std::vector<CRef>& objects)
{
    std::vector<CRefArray> groups;
    std::map<std::string, std::size_t> places;
    for (const CRef& object : objects) {
        if (object.IsA(siCustomPropertyID)) {
            const auto [place, isNew] =
                places.try_emplace(ToUtf8(CustomProperty(object).GetType()), groups.size());
            if (isNew) {
                groups.emplace_back();
            }
            groups[place->second].Add(object);
        }
    }
    return groups;
}

/// The answer is whether the user cancelled, which pages that apply at once don't know.
CStatus InspectObj(const CValueArray& arguments, CValue& result)
{
    const FoundObjects found = FindObjects(arguments[0]);
    Session& session = Session::Current();
    for (const CRefArray& group : GroupByType(found.Refs)) {
        const auto page = std::make_shared<PropertyPage>(group);
        session.Pages.push_back(page);
        page->Open();
        if (page->IsOpen() && session.Fill.PageOpened) {
            session.Fill.PageOpened(*page);
        }
    }
    result = false;
    return StatusOf(found);
}

CStatus OpenView(const CValueArray& arguments, CValue&)
{
    Session::Current().OpenedViews.push_back(ToUtf8(arguments[0]));
    return CStatus::OK;
}

CStatus OpenScene(const CValueArray& arguments, CValue&)
{
    Session& session = Session::Current();
    if (!session.Fill.OpenScene) {
        session.Log(siErrorMsg, "There is nothing that opens scenes.");
        return CStatus::Fail;
    }
    return session.Fill.OpenScene(ToUtf8(arguments[0]));
}

using BuiltinCommand = CStatus (*)(const CValueArray& arguments, CValue& result);

const std::map<std::string, BuiltinCommand> BuiltinCommands = {
    {"GetValue", GetValue},     {"SetValue", SetValue},       {"DeleteObj", DeleteObj},
    {"SelectObj", SelectObj},   {"DeselectAll", DeselectAll}, {"FrameSelection", FrameSelection},
    {"InspectObj", InspectObj}, {"OpenView", OpenView},       {"OpenScene", OpenScene},
};

Command FindCommand(const std::string& name)
{
    for (const ObjectId pluginId : Session::Current().Plugins) {
        for (const ObjectId id : Objects().Find<PluginObject>(pluginId)->Items) {
            if (const auto* command = Objects().Find<CommandObject>(id);
                command != nullptr && command->Name == name) {
                return RefOf(*command);
            }
        }
    }
    return Command();
}

} // namespace

std::optional<CStatus> RunBuiltinCommand(const std::string& name, const CValueArray& arguments,
                                         CValue& result)
{
    const auto found = BuiltinCommands.find(name);
    return found != BuiltinCommands.end() ? std::optional(found->second(arguments, result)) : std::nullopt;
}

CStatus RunCommand(const std::string& name, const CValueArray& arguments, CValue& result)
{
    Session& session = Session::Current();
    const std::size_t call = session.CommandCalls.size();
    session.CommandCalls.push_back({name, arguments, CStatus::Fail});
    std::optional<CStatus> status = RunBuiltinCommand(name, arguments, result);
    if (!status) {
        Command command = FindCommand(name);
        if (command.IsValid()) {
            status = command.Execute(arguments, result);
        } else {
            session.Log(siErrorMsg, "There is no command " + name + ".");
        }
    }
    if (call < session.CommandCalls.size()) {
        session.CommandCalls[call].Status = status.value_or(CStatus::Fail);
    }
    return status.value_or(CStatus::Fail);
}

} // namespace XSI::Host
