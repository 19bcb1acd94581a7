#include <xsi_context.h>

#include <xsi_ppgeventcontext.h>

#include "scene/Session.h"
#include "scene/Text.h"

namespace XSI
{

namespace
{

Host::ContextObject* RecordOf(const CRef& ref)
{
    return Host::Objects().Find<Host::ContextObject>(ref);
}

} // namespace

CRef Context::GetSource() const
{
    const Host::ContextObject* context = RecordOf(GetRef());
    return context != nullptr ? CRef::FromObjectID(context->Source.GetObjectID()) : CRef();
}

CValue Context::GetAttribute(const CString& name) const
{
    const Host::ContextObject* context = RecordOf(GetRef());
    if (context == nullptr) {
        return CValue();
    }
    const auto found = context->Values.find(Host::ToUtf8(name));
    return found != context->Values.end() ? found->second : CValue();
}

CStatus Context::PutAttribute(const CString& name, const CValue& value)
{
    Host::ContextObject* context = RecordOf(GetRef());
    if (context == nullptr) {
        return CStatus::Fail;
    }
    context->Values[Host::ToUtf8(name)] = value;
    return CStatus::OK;
}

PPGEventContext::PPGEventID PPGEventContext::GetEventID() const
{
    const Host::ContextObject* context = RecordOf(GetRef());
    return context != nullptr ? static_cast<PPGEventID>(context->Event) : PPGEventID{};
}

CRefArray PPGEventContext::GetInspectedObjects() const
{
    const Host::ContextObject* context = RecordOf(GetRef());
    return context != nullptr ? context->Inspected : CRefArray();
}

} // namespace XSI
