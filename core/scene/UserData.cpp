#include "scene/UserData.h"

#include "pipeline/NumberText.h"
#include "pipeline/WordTable.h"
#include "pipeline/XmlWriter.h"

#include <cstddef>

namespace tq4x
{
namespace
{

constexpr std::string_view LineEnd = "\r\n";

/// Words of the kinds on the property.
constexpr auto KindWords = WordTable<UserDataKind::Float>({
    {UserDataKind::String, "String"},
    {UserDataKind::Integer, "Integer"},
    {UserDataKind::Float, "Float"},
});

constexpr auto ElementWords = WordTable<UserDataKind::Float>({
    {UserDataKind::String, "StringArrayMetaDataXml"},
    {UserDataKind::Integer, "IntegerArrayMetaDataXml"},
    {UserDataKind::Float, "FloatArrayMetaDataXml"},
});

/// The word both of the `DataKind` attribute and of the element around each value.
constexpr auto DataKindWords = WordTable<UserDataKind::Float>({
    {UserDataKind::String, "StringSet"},
    {UserDataKind::Integer, "IntSet"},
    {UserDataKind::Float, "FloatSet"},
});

/// The pieces between the separators; an empty text is one empty piece.
std::vector<std::string_view> Split(std::string_view text, std::string_view separator)
{
    std::vector<std::string_view> pieces;
    for (;;) {
        const std::size_t end = text.find(separator);
        pieces.push_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return pieces;
        text.remove_prefix(end + separator.size());
    }
}

/// The items of a stored list. A piece behind a carriage return that begins with a line feed is a new item,
/// any other goes on with the one before, as a new line of it.
std::vector<std::string> SplitItems(std::string_view stored)
{
    std::vector<std::string> items;
    if (stored.empty())
        return items;
    for (const std::string_view piece : Split(stored, "\r")) {
        if (items.empty())
            items.emplace_back(piece);
        else if (piece.starts_with('\n'))
            items.emplace_back(piece.substr(1));
        else
            items.back().append(LineEnd).append(piece);
    }
    return items;
}

/// An item as it stands in a stored list: its line ends as lone carriage returns.
std::string StoreItem(std::string_view item)
{
    std::string stored;
    for (const std::string_view line : Split(item, LineEnd)) {
        if (line.data() != item.data())
            stored += '\r';
        stored += line;
    }
    return stored;
}

void AppendItem(std::string& stored, std::string_view item, bool isFirst)
{
    if (!isFirst)
        stored += LineEnd;
    stored += StoreItem(item);
}

template<typename Value>
void WriteValues(XmlWriter& stream, std::string_view name, const std::vector<Value>& values)
{
    for (const Value& value : values)
        stream.Leaf(name, value);
}

void WriteStrings(XmlWriter& stream, std::string_view name, const std::vector<std::string>& values)
{
    for (const std::string& value : values)
        stream.Leaf(name, Escaped{value});
}

void WriteValueElements(XmlWriter& stream, const UserDataItem& item)
{
    const std::string_view name = WordOf(DataKindWords, item.Kind);
    switch (item.Kind) {
    case UserDataKind::String:
        WriteStrings(stream, name, item.Strings);
        break;
    case UserDataKind::Integer:
        WriteValues(stream, name, item.Integers);
        break;
    case UserDataKind::Float:
        WriteValues(stream, name, item.Floats);
        break;
    }
}

void WriteItem(XmlWriter& stream, const UserDataItem& item)
{
    const XmlAttribute dataKind{"DataKind", WordOf(DataKindWords, item.Kind)};
    stream.Element(WordOf(ElementWords, item.Kind), {dataKind}, [&] {
        stream.Leaf("Key", Escaped{item.Key});
        if (item.Kind == UserDataKind::String)
            stream.Leaf("BinarizeEncoding", "Utf16LittleEndian");
        stream.Element("Values", [&] { WriteValueElements(stream, item); });
    });
}

} // namespace

std::vector<UserDataEntry> ParseUserDataProperty(std::string_view nameList, std::string_view typeList,
                                                 std::string_view valueList)
{
    std::vector<std::string> names = SplitItems(nameList);
    const std::vector<std::string> types = SplitItems(typeList);
    const std::vector<std::string> values = SplitItems(valueList);
    if (!names.empty() && names.back().empty())
        names.pop_back(); // the list ended with a line end
    std::vector<UserDataEntry> entries;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string_view type = i < types.size() ? types[i] : std::string_view();
        entries.push_back({.Name = names[i],
                           .Kind = FindWord<UserDataKind>(KindWords, type).value_or(UserDataKind::String),
                           .Value = i < values.size() ? values[i] : std::string()});
    }
    return entries;
}

UserDataTexts BuildUserDataProperty(const std::vector<UserDataEntry>& entries)
{
    UserDataTexts texts;
    for (const UserDataEntry& entry : entries) {
        const bool isFirst = &entry == entries.data();
        AppendItem(texts.Names, entry.Name, isFirst);
        AppendItem(texts.Types, WordOf(KindWords, entry.Kind), isFirst);
        AppendItem(texts.Values, entry.Value, isFirst);
    }
    return texts;
}

UserDataItem BuildUserDataItem(const UserDataEntry& entry)
{
    UserDataItem item;
    item.Key = entry.Name;
    item.Kind = entry.Kind;
    for (const std::string_view piece : Split(entry.Value, LineEnd)) {
        switch (entry.Kind) {
        case UserDataKind::String:
            item.Strings.emplace_back(piece);
            break;
        case UserDataKind::Integer:
            item.Integers.push_back(ParseInteger(piece));
            break;
        case UserDataKind::Float:
            item.Floats.push_back(ParseDecimal(piece));
            break;
        }
    }
    return item;
}

void WriteUserData(XmlWriter& stream, int level, const std::vector<UserDataItem>& items)
{
    if (items.empty())
        return;
    stream.AtLevel(level, [&] {
        stream.Element("UserData", [&] {
            for (const UserDataItem& item : items)
                WriteItem(stream, item);
        });
    });
}

} // namespace tq4x
