#include "collect/UvRecord.h"
#include "export/Each.h"

#include <xsi_primitive.h>

namespace tq4x
{
namespace
{

bool HasProjection(const XSI::ProjectItem& item)
{
    return item.IsA(XSI::siPrimitiveID) && !item.GetParameterValue("projsclu").IsEmpty();
}

void ReadProjection(const XSI::ProjectItem& projection, UvRecord& record)
{
    record.ScaleU = projection.GetParameter("projsclu");
    record.ScaleV = projection.GetParameter("projsclv");
    record.ScaleW = projection.GetParameter("projsclw");
    record.RotateU = projection.GetParameter("projrotu");
    record.RotateV = projection.GetParameter("projrotv");
    record.RotateW = projection.GetParameter("projrotw");
    record.TranslateU = projection.GetParameter("projtrsu");
    record.TranslateV = projection.GetParameter("projtrsv");
    record.TranslateW = projection.GetParameter("projtrsw");
    record.WrapU = static_cast<bool>(projection.GetParameterValue("wrap_u"));
    record.WrapV = static_cast<bool>(projection.GetParameterValue("wrap_v"));
}

} // namespace

UvRecord ReadUvRecord(const XSI::CRef& property)
{
    const XSI::SIObject set(property);
    UvRecord record;
    record.Name = set.GetName();
    for (const XSI::CRef& nested : Each(set.GetNestedObjects())) {
        const XSI::ProjectItem item(nested);
        if (!HasProjection(item))
            continue;
        ReadProjection(item, record);
        break;
    }
    return record;
}

} // namespace tq4x
