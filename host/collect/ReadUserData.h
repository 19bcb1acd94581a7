#pragma once

#include "scene/UserData.h"

#include <vector>

namespace XSI
{
class ProjectItem;
}

namespace tq4x
{

/// Appends the items of a user data property.
void AppendUserData(const XSI::ProjectItem& property, std::vector<UserDataItem>& items);

} // namespace tq4x
