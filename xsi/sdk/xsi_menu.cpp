#include <xsi_menu.h>

#include "scene/Session.h"
#include "scene/Text.h"

namespace XSI
{

namespace
{

CStatus AddItem(const CRef& ref, const CString& label, const CString& callback, MenuItem& added)
{
    auto* menu = Host::Objects().Find<Host::MenuObject>(ref);
    if (menu == nullptr) {
        return CStatus::Fail;
    }
    auto& item =
        Host::Objects().Create<Host::MenuItemObject>(siMenuItemID, Host::ToUtf8(label), {}, menu->Id);
    item.Callback = Host::ToUtf8(callback);
    menu->Items.push_back(item.Id);
    added = Host::RefOf(item);
    return CStatus::OK;
}

} // namespace

CString MenuItem::GetCallback() const
{
    const auto* item = Host::Objects().Find<Host::MenuItemObject>(GetRef());
    return item != nullptr ? Host::FromUtf8(item->Callback) : CString();
}

CStatus Menu::AddCallbackItem(const CString& label, const CString& callback, MenuItem& added)
{
    return AddItem(GetRef(), label, callback, added);
}

CStatus Menu::AddSeparatorItem(MenuItem& added)
{
    return AddItem(GetRef(), CString(), CString(), added);
}

CRefArray Menu::GetItems() const
{
    const auto* menu = Host::Objects().Find<Host::MenuObject>(GetRef());
    return menu != nullptr ? Host::RefsOf(Host::Objects(), menu->Items) : CRefArray();
}

} // namespace XSI
