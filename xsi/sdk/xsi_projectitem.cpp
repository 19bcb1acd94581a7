#include <xsi_projectitem.h>

#include <xsi_parameter.h>

#include "scene/Session.h"
#include "scene/Text.h"

namespace XSI
{

namespace
{

/// The parameters of an item, or the components of a parameter.
const std::vector<Host::ObjectId>& ParametersOf(const CRef& ref)
{
    static const std::vector<Host::ObjectId> none;
    if (const auto* item = Host::Objects().Find<Host::ItemObject>(ref)) {
        return item->Parameters;
    }
    const auto* parameter = Host::Objects().Find<Host::ParameterObject>(ref);
    return parameter != nullptr ? parameter->Components : none;
}

} // namespace

Parameter ProjectItem::GetParameter(const CString& name) const
{
    const std::string wanted = Host::ToUtf8(name);
    for (const Host::ObjectId id : ParametersOf(GetRef())) {
        const Host::Object* object = Host::Objects().Find(id);
        if (object != nullptr && object->Name == wanted) {
            return Host::RefOf(*object);
        }
    }
    return Parameter();
}

CRefArray ProjectItem::GetParameters() const
{
    return Host::RefsOf(Host::Objects(), ParametersOf(GetRef()));
}

CValue ProjectItem::GetParameterValue(const CString& name, double time) const
{
    return GetParameter(name).GetValue(time);
}

CStatus ProjectItem::PutParameterValue(const CString& name, const CValue& value, double time)
{
    Parameter parameter = GetParameter(name);
    return parameter.IsValid() ? parameter.PutValue(value, time) : CStatus(CStatus::MemberNotFound);
}

bool ProjectItem::IsAnimated(siSourceType type) const
{
    for (const Host::ObjectId id : ParametersOf(GetRef())) {
        if (Parameter(CRef::FromObjectID(id)).IsAnimated(type)) {
            return true;
        }
    }
    return false;
}

} // namespace XSI
