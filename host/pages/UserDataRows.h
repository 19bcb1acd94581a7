#pragma once

#include "scene/UserData.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tq4x
{

/// The value as it is tested and stored: line ends of any kind become CR LF, empty lines at the end are
/// dropped.
std::string NormalizeUserDataValue(std::string_view value);

/// Why an item can't be taken, in the words for the user; nothing if it can. The value is a normalised one.
///
/// A name has letters, digits, "-", "_" and ".". Integers are lines that read and print back equal within 32
/// bits, floats are lines that are one decimal number; both have at least one. A text is not empty and has no
/// character that markup is made of.
std::optional<std::string_view> FindUserDataProblem(const UserDataEntry& entry);

/// The columns above the rows.
inline constexpr const char* UserDataHeading = "Name            Type      Size    Value";

/// The row behind all items, which stands for the end of the list.
inline constexpr const char* UserDataEndRow = "------";

/// An item as a row of the list. `ShortenName` and `ShortenValue` give its first and last column; lengths
/// count characters.
std::string UserDataRow(const UserDataEntry& entry);
std::string ShortenName(std::string_view name);
std::string ShortenValue(std::string_view value);

} // namespace tq4x
