#include "collect/ExportBase.h"

#include "pipeline/MessageLog.h"

#include <xsi_siobject.h>

namespace tq4x
{

ExportBase::ExportBase(ExportContext& context, const XSI::CRef& object) : Context(context), Object(object) {}

ExportBase::~ExportBase() = default;

bool ExportBase::CheckObject() const
{
    if (XSI::SIObject(Object).IsValid())
        return true;
    ReportMessage(MessageCode::InternalError, ObjectName());
    return false;
}

std::string ExportBase::ObjectName() const
{
    const XSI::SIObject object(Object);
    return object.IsValid() ? object.GetName().GetAsciiString() : "Invalid XSI Object.";
}

} // namespace tq4x
