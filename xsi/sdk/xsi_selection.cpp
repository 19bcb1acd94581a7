#include <xsi_selection.h>

#include "scene/BuiltinCommands.h"
#include "scene/Session.h"

namespace XSI
{

namespace
{

/// The selection, without the objects that were deleted since it was last looked at.
Host::SelectionObject* RecordOf(const CRef& ref)
{
    const Host::Database& objects = Host::Objects();
    auto* selection = objects.Find<Host::SelectionObject>(ref);
    if (selection != nullptr && selection->CheckedRevision != objects.NameRevision()) {
        selection->Selected.RemoveIf([&](Host::ObjectId id) { return objects.Find(id) == nullptr; });
        selection->CheckedRevision = objects.NameRevision();
    }
    return selection;
}

} // namespace

LONG Selection::GetCount() const
{
    const Host::SelectionObject* selection = RecordOf(GetRef());
    return selection != nullptr ? static_cast<LONG>(selection->Selected.InOrder().size()) : 0;
}

CRef Selection::GetItem(LONG index) const
{
    const Host::SelectionObject* selection = RecordOf(GetRef());
    const bool isInside = selection != nullptr && index >= 0 && index < GetCount();
    return isInside ? CRef::FromObjectID(selection->Selected.InOrder()[static_cast<std::size_t>(index)])
                    : CRef();
}

CRefArray Selection::GetArray() const
{
    const Host::SelectionObject* selection = RecordOf(GetRef());
    return selection != nullptr ? Host::RefsOf(Host::Objects(), selection->Selected.InOrder()) : CRefArray();
}

CString Selection::GetAsText() const
{
    return GetArray().GetAsText();
}

CStatus Selection::Add(const CRef& object)
{
    Host::SelectionObject* selection = RecordOf(GetRef());
    if (selection == nullptr || !object.IsValid()) {
        return CStatus::Fail;
    }
    selection->Selected.Add(object.GetObjectID());
    return CStatus::OK;
}

CStatus Selection::Remove(const CRef& object)
{
    Host::SelectionObject* selection = RecordOf(GetRef());
    const bool isRemoved = selection != nullptr && selection->Selected.Remove(object.GetObjectID());
    return isRemoved ? CStatus::OK : CStatus::Fail;
}

CStatus Selection::Clear()
{
    Host::SelectionObject* selection = RecordOf(GetRef());
    if (selection == nullptr) {
        return CStatus::Fail;
    }
    selection->Selected.Clear();
    return CStatus::OK;
}

CStatus Selection::SetAsText(const CString& names)
{
    CValueArray arguments;
    arguments.Add(names);
    CValue result;
    return Host::RunBuiltinCommand("SelectObj", arguments, result).value_or(CStatus::Fail);
}

} // namespace XSI
