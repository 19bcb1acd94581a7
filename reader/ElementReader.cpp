#include "ElementReader.h"

#include <algorithm>

#include "NumberForm.h"

namespace tq4x::reader
{

std::string_view ElementReader::Name() const
{
    return m_element == nullptr ? std::string_view() : m_element->Name;
}

std::string_view ElementReader::Content() const
{
    return m_element == nullptr ? std::string_view() : m_element->Text;
}

ElementReader ElementReader::Child(std::string_view name) const
{
    return {m_element == nullptr ? nullptr : FindChild(*m_element, name), *m_findings};
}

std::vector<ElementReader> ElementReader::Children(std::string_view name) const
{
    std::vector<ElementReader> children;
    const XmlElement* child = m_element == nullptr ? nullptr : m_element->FirstChild;
    for (; child != nullptr; child = child->Next) {
        if (name.empty() || child->Name == name) {
            children.emplace_back(child, *m_findings);
        }
    }
    return children;
}

bool ElementReader::HasAttributes(std::span<const std::string_view> names) const
{
    return m_element != nullptr && std::ranges::equal(m_element->Attributes, names, {}, &XmlAttribute::Name);
}

std::string ElementReader::Text(std::string_view attribute) const
{
    return m_element == nullptr
               ? std::string()
               : std::string(FindAttribute(*m_element, attribute).value_or(std::string_view()));
}

double ElementReader::Number(std::string_view attribute, double otherwise) const
{
    const auto text = m_element == nullptr ? std::nullopt : FindAttribute(*m_element, attribute);
    if (!text) {
        return otherwise;
    }
    const std::optional<double> value = ParseNumber(*text);
    if (!value) {
        m_findings->Error("TQ-NUMBER", Line(),
                          "\"" + std::string(*text) + "\" is no finite number in the form of the files (" +
                              std::string(attribute) + " of " + std::string(Name()) + ").");
    }
    return value.value_or(otherwise);
}

float ElementReader::Float(std::string_view attribute, float otherwise) const
{
    return static_cast<float>(Number(attribute, static_cast<double>(otherwise)));
}

int ElementReader::Integer(std::string_view attribute, int otherwise) const
{
    const auto text = m_element == nullptr ? std::nullopt : FindAttribute(*m_element, attribute);
    if (!text) {
        return otherwise;
    }
    const std::optional<int> value = ParseInteger(*text);
    if (!value) {
        m_findings->Error("TQ-NUMBER", Line(),
                          "\"" + std::string(*text) + "\" is no whole number of 32 bits (" +
                              std::string(attribute) + " of " + std::string(Name()) + ").");
    }
    return value.value_or(otherwise);
}

bool ElementReader::Boolean(std::string_view attribute) const
{
    return m_element != nullptr && FindAttribute(*m_element, attribute) == "true";
}

int ElementReader::NumberBehind(std::string_view attribute, std::string_view word) const
{
    const std::string text = Text(attribute);
    return text.starts_with(word) ? ParseInteger(std::string_view(text).substr(word.size())).value_or(0) : 0;
}

Vector3 ElementReader::Vector(const Vector3& otherwise) const
{
    return {Float("X", otherwise[0]), Float("Y", otherwise[1]), Float("Z", otherwise[2])};
}

Color ElementReader::Rgba() const
{
    return {Float("R"), Float("G"), Float("B"), Float("A")};
}

Transform ReadTransform(const ElementReader& transform)
{
    Transform result;
    result.Scale = transform.Child("Scale").Vector({1, 1, 1});
    result.Rotate = transform.Child("Rotate").Vector();
    result.Translate = transform.Child("Translate").Vector();
    return result;
}

namespace
{

void ReadValue(UserDataItem& item, const ElementReader& value)
{
    if (value.Name() == "StringSet") {
        item.Strings.emplace_back(value.Content());
    } else if (value.Name() == "IntSet") {
        const std::optional<int> number = ParseInteger(value.Content());
        if (!number) {
            value.Findings().Error("TQ-NUMBER", value.Line(),
                                   "\"" + std::string(value.Content()) +
                                       "\" is no whole number of 32 bits (user data).");
        }
        item.Integers.push_back(number.value_or(0));
    } else if (const std::optional<double> number = ParseNumber(value.Content())) {
        item.Floats.push_back(static_cast<float>(*number));
    } else {
        value.Findings().Error("TQ-NUMBER", value.Line(),
                               "\"" + std::string(value.Content()) +
                                   "\" is no finite number in the form of the files (user data).");
    }
}

} // namespace

std::vector<UserDataItem> ReadUserData(const ElementReader& owner)
{
    std::vector<UserDataItem> items;
    for (const ElementReader& element : owner.Child("UserData").Children()) {
        UserDataItem& item = items.emplace_back();
        item.Key = element.Child("Key").Content();
        item.Kind = element.Name() == "IntegerArrayMetaDataXml" ? UserDataItem::ValueKind::Integer
                    : element.Name() == "FloatArrayMetaDataXml" ? UserDataItem::ValueKind::Float
                                                                : UserDataItem::ValueKind::String;
        for (const ElementReader& value : element.Child("Values").Children()) {
            ReadValue(item, value);
        }
    }
    return items;
}

} // namespace tq4x::reader
