#include <xsi_ppglayout.h>

#include "scene/Session.h"
#include "scene/Text.h"

namespace XSI
{

namespace
{

Host::LayoutObject* LayoutOf(const CRef& ref)
{
    return Host::Objects().Find<Host::LayoutObject>(ref);
}

Host::PageItemObject* ItemOf(const CRef& ref)
{
    return Host::Objects().Find<Host::PageItemObject>(ref);
}

PPGItem Add(const CRef& ref, const CString& control, const CString& name, const CString& label = CString())
{
    Host::LayoutObject* layout = LayoutOf(ref);
    if (layout == nullptr) {
        return PPGItem();
    }
    auto& item =
        Host::Objects().Create<Host::PageItemObject>(siPPGItemID, Host::ToUtf8(name), {}, layout->Id);
    item.Control = Host::ToUtf8(control);
    item.Label = Host::ToUtf8(label);
    layout->Items.push_back(item.Id);
    return Host::RefOf(item);
}

PPGItem Sized(PPGItem item, LONG width, LONG height)
{
    if (width != 0) {
        item.PutAttribute(siUICX, width);
    }
    if (height != 0) {
        item.PutAttribute(siUICY, height);
    }
    return item;
}

CStatus StatusOf(const PPGItem& item)
{
    return item.IsValid() ? CStatus::OK : CStatus::Fail;
}

CValue ReadAttribute(const Host::Attributes& attributes, const CString& name)
{
    const auto found = attributes.find(Host::ToUtf8(name));
    return found != attributes.end() ? found->second : CValue();
}

} // namespace

CString PPGItem::GetType() const
{
    const Host::PageItemObject* item = ItemOf(GetRef());
    return item != nullptr ? Host::FromUtf8(item->Control) : CString();
}

CStatus PPGItem::PutType(const CString& type)
{
    Host::PageItemObject* item = ItemOf(GetRef());
    if (item == nullptr) {
        return CStatus::Fail;
    }
    item->Control = Host::ToUtf8(type);
    return CStatus::OK;
}

CString PPGItem::GetLabel() const
{
    const Host::PageItemObject* item = ItemOf(GetRef());
    return item != nullptr ? Host::FromUtf8(item->Label) : CString();
}

CStatus PPGItem::PutLabel(const CString& label)
{
    Host::PageItemObject* item = ItemOf(GetRef());
    if (item == nullptr) {
        return CStatus::Fail;
    }
    item->Label = Host::ToUtf8(label);
    return CStatus::OK;
}

CValueArray PPGItem::GetUIItems() const
{
    const Host::PageItemObject* item = ItemOf(GetRef());
    return item != nullptr ? item->UiItems : CValueArray();
}

CStatus PPGItem::PutUIItems(const CValueArray& items)
{
    Host::PageItemObject* item = ItemOf(GetRef());
    if (item == nullptr) {
        return CStatus::Fail;
    }
    item->UiItems = items;
    return CStatus::OK;
}

CValue PPGItem::GetAttribute(const CString& name) const
{
    const Host::PageItemObject* item = ItemOf(GetRef());
    return item != nullptr ? ReadAttribute(item->Values, name) : CValue();
}

CStatus PPGItem::PutAttribute(const CString& name, const CValue& value)
{
    Host::PageItemObject* item = ItemOf(GetRef());
    if (item == nullptr) {
        return CStatus::Fail;
    }
    item->Values[Host::ToUtf8(name)] = value;
    return CStatus::OK;
}

void PPGLayout::Clear()
{
    Host::LayoutObject* layout = LayoutOf(GetRef());
    if (layout == nullptr) {
        return;
    }
    const std::vector<Host::ObjectId> items = std::move(layout->Items);
    layout->Items.clear();
    layout->Values.clear();
    for (const Host::ObjectId id : items) {
        Host::Objects().Delete(id);
    }
}

PPGItem PPGLayout::AddGroup(const CString& caption, bool isBoxVisible, LONG widthPercentage)
{
    PPGItem group = Add(GetRef(), siControlGroup, CString(), caption);
    group.PutAttribute(L"ShowFrame", isBoxVisible);
    if (widthPercentage >= 0) {
        group.PutWidthPercentage(widthPercentage);
    }
    return group;
}

CStatus PPGLayout::EndGroup()
{
    return StatusOf(Add(GetRef(), siControlEndGroup, CString()));
}

PPGItem PPGLayout::AddRow()
{
    return Add(GetRef(), siControlRow, CString());
}

CStatus PPGLayout::EndRow()
{
    return StatusOf(Add(GetRef(), siControlEndRow, CString()));
}

PPGItem PPGLayout::AddTab(const CString& caption)
{
    return Add(GetRef(), siControlTab, CString(), caption);
}

PPGItem PPGLayout::AddItem(const CString& parameter, const CString& label, const CString& control)
{
    return Add(GetRef(), control, parameter, label);
}

PPGItem PPGLayout::AddEnumControl(const CString& parameter, const CValueArray& items, const CString& label,
                                  const CString& control)
{
    PPGItem item = Add(GetRef(), control, parameter, label);
    item.PutUIItems(items);
    return item;
}

PPGItem PPGLayout::AddString(const CString& parameter, const CString& label, bool isMultiline, LONG height)
{
    PPGItem item = Add(GetRef(), siControlString, parameter, label);
    item.PutAttribute(L"MultiLine", isMultiline);
    return Sized(item, 0, height);
}

PPGItem PPGLayout::AddButton(const CString& name, const CString& label)
{
    return Add(GetRef(), siControlButton, name, label);
}

PPGItem PPGLayout::AddStaticText(const CString& text, LONG width, LONG height)
{
    return Sized(Add(GetRef(), siControlStatic, CString(), text), width, height);
}

PPGItem PPGLayout::AddSpacer(LONG width, LONG height)
{
    return Sized(Add(GetRef(), siControlSpacer, CString()), width, height);
}

LONG PPGLayout::GetCount() const
{
    const Host::LayoutObject* layout = LayoutOf(GetRef());
    return layout != nullptr ? static_cast<LONG>(layout->Items.size()) : 0;
}

PPGItem PPGLayout::GetItem(LONG index) const
{
    const Host::LayoutObject* layout = LayoutOf(GetRef());
    const bool isInside = layout != nullptr && index >= 0 && index < GetCount();
    return isInside ? CRef::FromObjectID(layout->Items[static_cast<std::size_t>(index)]) : CRef();
}

PPGItem PPGLayout::GetItem(const CString& name) const
{
    for (LONG i = 0; i < GetCount(); ++i) {
        if (PPGItem item = GetItem(i); !name.IsEmpty() && item.GetName() == name) {
            return item;
        }
    }
    return PPGItem();
}

CValue PPGLayout::GetAttribute(const CString& name) const
{
    const Host::LayoutObject* layout = LayoutOf(GetRef());
    return layout != nullptr ? ReadAttribute(layout->Values, name) : CValue();
}

CStatus PPGLayout::PutAttribute(const CString& name, const CValue& value)
{
    Host::LayoutObject* layout = LayoutOf(GetRef());
    if (layout == nullptr) {
        return CStatus::Fail;
    }
    layout->Values[Host::ToUtf8(name)] = value;
    return CStatus::OK;
}

} // namespace XSI
