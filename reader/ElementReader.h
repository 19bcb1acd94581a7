#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Finding.h"
#include "ReadValues.h"
#include "XmlTree.h"

namespace tq4x::reader
{

/// Reads an element into plain values. What is absent gives a default without a finding, for the grammar
/// tells that; numbers that are malformed, not finite or out of range give "TQ-NUMBER" and the default. A
/// reader of an absent element has absent children and attributes.
class ElementReader
{
public:
    ElementReader(const XmlElement* element, FindingList& findings)
        : m_element(element),
          m_findings(&findings)
    {}

    [[nodiscard]] bool Exists() const { return m_element != nullptr; }

    [[nodiscard]] long Line() const { return m_element == nullptr ? 0 : m_element->Line; }

    [[nodiscard]] std::string_view Name() const;

    /// The text inside.
    [[nodiscard]] std::string_view Content() const;

    [[nodiscard]] FindingList& Findings() const { return *m_findings; }

    [[nodiscard]] ElementReader Child(std::string_view name) const;

    /// The children of a name; all with an empty name.
    [[nodiscard]] std::vector<ElementReader> Children(std::string_view name = {}) const;

    [[nodiscard]] bool HasChildren() const
    {
        return m_element != nullptr && m_element->FirstChild != nullptr;
    }

    /// Whether the attributes are these, in this order.
    [[nodiscard]] bool HasAttributes(std::span<const std::string_view> names) const;

    [[nodiscard]] std::string Text(std::string_view attribute) const;
    [[nodiscard]] double Number(std::string_view attribute, double otherwise = 0) const;
    [[nodiscard]] float Float(std::string_view attribute, float otherwise = 0) const;
    [[nodiscard]] int Integer(std::string_view attribute, int otherwise = 0) const;
    [[nodiscard]] bool Boolean(std::string_view attribute) const;

    /// The number at the end of an attribute such as "ConfigurationType7", behind the word before it.
    [[nodiscard]] int NumberBehind(std::string_view attribute, std::string_view word) const;

    /// Attributes X, Y, Z of this element.
    [[nodiscard]] Vector3 Vector(const Vector3& otherwise = {}) const;

    /// Attributes R, G, B, A of this element.
    [[nodiscard]] Color Rgba() const;

private:
    const XmlElement* m_element;
    FindingList* m_findings;
};

/// `Scale`, `Rotate` and `Translate` in a `Transform` element.
[[nodiscard]] Transform ReadTransform(const ElementReader& transform);

/// The items of the `UserData` in an element.
[[nodiscard]] std::vector<UserDataItem> ReadUserData(const ElementReader& owner);

} // namespace tq4x::reader
