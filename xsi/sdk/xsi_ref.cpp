#include <xsi_ref.h>

#include "scene/ClassTree.h"
#include "scene/Session.h"
#include "scene/Text.h"

namespace XSI
{

CRef CRef::FromObjectID(ULONG id)
{
    CRef ref;
    ref.m_id = Host::Objects().Find(id) != nullptr ? id : 0;
    return ref;
}

bool CRef::IsValid() const
{
    return Host::Objects().Find(m_id) != nullptr;
}

siClassID CRef::GetClassID() const
{
    const Host::Object* object = Host::Objects().Find(m_id);
    return object != nullptr ? object->ClassId : siUnknownClassID;
}

bool CRef::IsA(siClassID classId) const
{
    return Host::IsDerived(GetClassID(), classId);
}

CString CRef::GetAsText() const
{
    const Host::Object* object = Host::Objects().Find(m_id);
    return object != nullptr ? Host::FromUtf8(Host::FullNameOf(Host::Objects(), *object)) : CString();
}

CStatus CRef::Set(const CString& fullName)
{
    const auto found = Host::Session::Current().Names.Find(Host::Objects(), Host::ToUtf8(fullName));
    m_id = found.empty() ? 0 : found.front();
    return found.empty() ? CStatus::Fail : CStatus::OK;
}

CRef CRefArray::Find(const CString& name) const
{
    const std::string wanted = Host::ToUtf8(name);
    for (LONG i = 0; i < GetCount(); ++i) {
        const Host::Object* object = Host::Objects().Find((*this)[i]);
        if (object != nullptr && object->Name == wanted) {
            return (*this)[i];
        }
    }
    return CRef();
}

CString CRefArray::GetAsText() const
{
    CString text;
    for (LONG i = 0; i < GetCount(); ++i) {
        text += i > 0 ? L"," : L"";
        text += (*this)[i].GetAsText();
    }
    return text;
}

CRefArray& CRefArray::operator+=(const CRefArray& other)
{
    const LONG count = other.GetCount();
    for (LONG i = 0; i < count; ++i) {
        Add(CRef(other[i]));
    }
    return *this;
}

} // namespace XSI
