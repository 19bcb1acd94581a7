#pragma once

#include "scene/UserData.h"

#include <optional>

namespace tq4x
{

/// Lets the user edit one item in a dialog of its own, which begins with the values of `item`. Nothing if the
/// user cancelled. The value comes back normalised; nothing is tested.
std::optional<UserDataEntry> EditUserDataItem(const UserDataEntry& item);

} // namespace tq4x
