#include <xsi_sceneitem.h>

#include <xsi_customproperty.h>
#include <xsi_property.h>

#include "scene/CreateParameters.h"
#include "scene/CustomProperties.h"
#include "scene/Session.h"
#include "scene/Text.h"

namespace XSI
{

CRefArray SceneItem::GetProperties() const
{
    const auto* item = Host::Objects().Find<Host::ItemObject>(GetRef());
    return item != nullptr ? Host::RefsOf(Host::Objects(), item->Properties) : CRefArray();
}

Property SceneItem::AddProperty(const CString& type, bool, const CString& name) const
{
    const std::string typeWord = Host::ToUtf8(type);
    const std::string ownName = name.IsEmpty() ? typeWord : Host::ToUtf8(name);
    if (typeWord == "visibility" || typeWord == "geomapprox") {
        return Host::AddProperty(GetRef(), typeWord, ownName);
    }
    return Host::AddDefinedProperty(GetRef(), typeWord, ownName);
}

CStatus SceneItem::AddProperty(const CString& type, bool branch, const CString& name, Property& added) const
{
    added = AddProperty(type, branch, name);
    return added.IsValid() ? CStatus::OK : CStatus::Fail;
}

CustomProperty SceneItem::AddCustomProperty(const CString& name, bool) const
{
    const std::string ownName = Host::ToUtf8(name);
    return Host::AddPlainProperty(GetRef(), ownName, ownName);
}

} // namespace XSI
