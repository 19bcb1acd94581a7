#include <xsi_siobject.h>

#include "scene/Session.h"
#include "scene/Text.h"

namespace XSI
{

CString SIObject::GetName() const
{
    const Host::Object* object = Host::Objects().Find(GetRef());
    return object != nullptr ? Host::FromUtf8(object->Name) : CString();
}

CStatus SIObject::PutName(const CString& name)
{
    Host::Object* object = Host::Objects().Find(GetRef());
    if (object == nullptr) {
        return CStatus::Fail;
    }
    object->Name = Host::ToUtf8(name);
    Host::Objects().TouchNames();
    return CStatus::OK;
}

CString SIObject::GetFullName() const
{
    return GetRef().GetAsText();
}

CString SIObject::GetUniqueName() const
{
    const CString name = GetFullName();
    const auto found = Host::Session::Current().Names.Find(Host::Objects(), Host::ToUtf8(name));
    return found.size() > 1 ? name + L"#" + CString(GetRef().GetObjectID()) : name;
}

CString SIObject::GetType() const
{
    const Host::Object* object = Host::Objects().Find(GetRef());
    return object != nullptr ? Host::FromUtf8(object->Type) : CString();
}

CRef SIObject::GetParent() const
{
    const Host::Object* object = Host::Objects().Find(GetRef());
    return object != nullptr ? CRef::FromObjectID(object->Parent) : CRef();
}

CRefArray SIObject::GetNestedObjects() const
{
    const Host::Object* object = Host::Objects().Find(GetRef());
    if (object == nullptr) {
        return CRefArray();
    }
    CRefArray nested;
    if (const auto* node = dynamic_cast<const Host::NodeObject*>(object)) {
        if (const auto* primitive = Host::Objects().Find<Host::PrimitiveObject>(node->Primitive)) {
            nested.Add(Host::RefOf(*primitive));
            nested += Host::RefsOf(Host::Objects(), primitive->Nested);
        }
    }
    nested += Host::RefsOf(Host::Objects(), object->Nested);
    return nested;
}

} // namespace XSI
