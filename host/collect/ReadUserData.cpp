#include "collect/ReadUserData.h"

#include <xsi_projectitem.h>

namespace tq4x
{
namespace
{

std::string ReadText(const XSI::ProjectItem& property, const char* name)
{
    const XSI::CString text = property.GetParameterValue(name);
    return text.GetAsciiString();
}

} // namespace

void AppendUserData(const XSI::ProjectItem& property, std::vector<UserDataItem>& items)
{
    const std::string names = ReadText(property, "TQ4X_ForPennonUserDataParamNameList");
    const std::string types = ReadText(property, "TQ4X_ForPennonUserDataParamTypeList");
    const std::string values = ReadText(property, "TQ4X_ForPennonUserDataParamValueList");
    for (const UserDataEntry& entry : ParseUserDataProperty(names, types, values))
        items.push_back(BuildUserDataItem(entry));
}

} // namespace tq4x
