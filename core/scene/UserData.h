#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tq4x
{

class XmlWriter;

/// Type of the values of a user data item.
enum class UserDataKind : std::int32_t
{
    String = 0,
    Integer = 1,
    Float = 2,
};

/// A named, typed list of values that the author of the scene attached to a node or a material. Only the list
/// of its kind is used.
struct UserDataItem
{
    std::string Key;
    UserDataKind Kind = UserDataKind::String;
    std::vector<std::string> Strings;
    std::vector<std::int32_t> Integers;
    std::vector<float> Floats;

    bool operator==(const UserDataItem&) const = default;
};

/// One entry of the three parallel texts of the user data property: name, kind and the value as it is stored,
/// several values parted by carriage return and line feed.
struct UserDataEntry
{
    std::string Name;
    UserDataKind Kind = UserDataKind::String;
    std::string Value;

    bool operator==(const UserDataEntry&) const = default;
};

/// The three texts of the user data property, items parted by CR LF, line breaks inside an item stored as a
/// lone CR.
struct UserDataTexts
{
    std::string Names;
    std::string Types;
    std::string Values;
};

/// Takes the three texts apart. The number of names decides; a missing type is a string, a missing value
/// empty.
std::vector<UserDataEntry> ParseUserDataProperty(std::string_view nameList, std::string_view typeList,
                                                 std::string_view valueList);

/// The inverse of `ParseUserDataProperty`.
UserDataTexts BuildUserDataProperty(const std::vector<UserDataEntry>& entries);

/// Splits the value of an entry and converts each piece to the entry's kind; no digits give 0.
UserDataItem BuildUserDataItem(const UserDataEntry& entry);

/// Writes the `UserData` element at the given level; nothing for an empty list.
void WriteUserData(XmlWriter& stream, int level, const std::vector<UserDataItem>& items);

} // namespace tq4x
