#include <xsi_command.h>

#include "scene/PluginLoader.h"
#include "scene/Session.h"
#include "scene/Text.h"

namespace XSI
{

namespace
{

Host::CommandObject* RecordOf(const CRef& ref)
{
    return Host::Objects().Find<Host::CommandObject>(ref);
}

/// The arguments as the callback gets them: those that were given, then the defaults of the others.
CValueArray CompleteArguments(const Host::CommandObject& command, const CValueArray& given)
{
    CValueArray complete = given;
    for (std::size_t i = 0; i < command.Arguments.size(); ++i) {
        auto* argument = Host::Objects().Find<Host::ArgumentObject>(command.Arguments[i]);
        const auto index = static_cast<LONG>(i);
        if (index >= given.GetCount()) {
            complete.Add(argument->Default);
        }
        argument->Value = complete[index];
    }
    return complete;
}

} // namespace

CValue Argument::GetDefault() const
{
    const auto* argument = Host::Objects().Find<Host::ArgumentObject>(GetRef());
    return argument != nullptr ? argument->Default : CValue();
}

CValue Argument::GetValue() const
{
    const auto* argument = Host::Objects().Find<Host::ArgumentObject>(GetRef());
    return argument != nullptr ? argument->Value : CValue();
}

LONG ArgumentArray::Add(const CString& name, const CValue& defaultValue)
{
    Host::CommandObject* command = RecordOf(m_command);
    if (command == nullptr) {
        return -1;
    }
    auto& argument =
        Host::Objects().Create<Host::ArgumentObject>(siArgumentID, Host::ToUtf8(name), {}, command->Id);
    argument.Default = defaultValue;
    command->Arguments.push_back(argument.Id);
    return GetCount() - 1;
}

LONG ArgumentArray::GetCount() const
{
    const Host::CommandObject* command = RecordOf(m_command);
    return command != nullptr ? static_cast<LONG>(command->Arguments.size()) : 0;
}

Argument ArgumentArray::GetItem(LONG index) const
{
    const Host::CommandObject* command = RecordOf(m_command);
    return command != nullptr ? Host::RefsOf(Host::Objects(), command->Arguments).GetItem(index) : CRef();
}

ArgumentArray Command::GetArguments() const
{
    return ArgumentArray(GetRef());
}

CStatus Command::PutDescription(const CString& text)
{
    Host::CommandObject* command = RecordOf(GetRef());
    if (command == nullptr) {
        return CStatus::Fail;
    }
    command->Description = Host::ToUtf8(text);
    return CStatus::OK;
}

CString Command::GetDescription() const
{
    const Host::CommandObject* command = RecordOf(GetRef());
    return command != nullptr ? Host::FromUtf8(command->Description) : CString();
}

CStatus Command::EnableReturnValue(bool on)
{
    Host::CommandObject* command = RecordOf(GetRef());
    if (command == nullptr) {
        return CStatus::Fail;
    }
    command->HasReturnValue = on;
    return CStatus::OK;
}

CStatus Command::Execute(const CValueArray& arguments, CValue& result)
{
    Host::CommandObject* command = RecordOf(GetRef());
    if (command == nullptr) {
        return CStatus::Fail;
    }
    const std::string callback = command->Name + "_Execute";
    Host::CallbackCall call;
    call.Source = GetRef();
    call.Values["Arguments"] = CompleteArguments(*command, arguments);
    const std::optional<CStatus> status = Host::RunCallback(callback, call);
    if (!status) {
        Host::Session::Current().Log(siErrorMsg, "No plug-in has the callback " + callback + ".");
    }
    const auto returned = call.Values.find("ReturnValue");
    result = returned != call.Values.end() ? returned->second : CValue();
    return status.value_or(CStatus::Fail);
}

} // namespace XSI
