#include "AttributeOrder.h"

#include <algorithm>
#include <array>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include "EmbeddedSchemas.h"

namespace tq4x::reader
{
namespace
{

using Names = std::vector<std::string>;
using Orders = std::map<std::string, Names, std::less<>>; ///< by element

std::string Attribute(const XmlElement& element, std::string_view name)
{
    return std::string(FindAttribute(element, name).value_or(std::string_view()));
}

/// Reads the XML form of a grammar and of all that it includes.
class OrderReader
{
public:
    Orders Read(const std::string& file)
    {
        Load(file);
        for (std::size_t i = 0; i < m_files.size(); ++i) { // grows while files include others
            Visit(m_files[i].Root());
        }
        Orders orders;
        for (const XmlElement* const element : m_elements) {
            orders.try_emplace(Attribute(*element, "name"), AttributesOf(*element));
        }
        return orders;
    }

private:
    void Load(const std::string& file)
    {
        const auto embedded = std::ranges::find(EmbeddedSchemas(), file, &EmbeddedFile::Name);
        FindingList findings(file);
        std::optional<XmlTree> tree = XmlTree::Parse(embedded->Text, findings);
        m_files.push_back(std::move(tree).value());
    }

    /// What a file redefines of one that it includes stands before it, so the first definition holds.
    void Visit(const XmlElement& root)
    {
        for (const XmlElement* at = &root; at != nullptr; at = NextInOrder(*at, root)) {
            if (at->Name == "include") {
                Load(Attribute(*at, "href"));
            } else if (at->Name == "define") {
                m_definitions.try_emplace(Attribute(*at, "name"), at);
            } else if (at->Name == "element") {
                m_elements.push_back(at);
            }
        }
    }

    /// The attributes of an element itself, those that it takes from definitions in their place.
    Names AttributesOf(const XmlElement& element) const
    {
        Names names;
        std::vector<const XmlElement*> open = {element.FirstChild};
        while (!open.empty()) {
            const XmlElement* const at = open.back();
            open.pop_back();
            if (at == nullptr) {
                continue;
            }
            open.push_back(at->Next);
            if (at->Name == "attribute") {
                names.push_back(Attribute(*at, "name"));
            } else if (at->Name == "ref") {
                open.push_back(m_definitions.at(Attribute(*at, "name"))->FirstChild);
            } else if (at->Name != "element") {
                open.push_back(at->FirstChild);
            }
        }
        return names;
    }

    std::deque<XmlTree> m_files;
    std::vector<const XmlElement*> m_elements;
    std::map<std::string, const XmlElement*> m_definitions;
};

/// Read when they are needed first, and kept.
const Orders& OrdersOf(FileKind kind)
{
    static std::array<Orders, FileKindCount> known;
    Orders& orders = known[static_cast<std::size_t>(kind)];
    if (orders.empty()) {
        orders = OrderReader().Read(std::string(ExtensionOf(kind)) + ".rng");
    }
    return orders;
}

bool IsInOrder(const XmlElement& element, const Names& order)
{
    auto next = order.begin();
    for (const XmlAttribute& attribute : element.Attributes) {
        const auto place = std::ranges::find(order, attribute.Name);
        if (place == order.end()) {
            continue; // the grammar tells
        }
        if (place < next) {
            return false;
        }
        next = place;
    }
    return true;
}

std::string Joined(const Names& names)
{
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : ", ") + name;
    }
    return text;
}

} // namespace

void CheckAttributeOrder(FileKind kind, const XmlTree& tree, FindingList& findings)
{
    const Orders& orders = OrdersOf(kind);
    const XmlElement& root = tree.Root();
    for (const XmlElement* at = &root; at != nullptr; at = NextInOrder(*at, root)) {
        const auto order = at->Attributes.size() < 2 ? orders.end() : orders.find(at->Name);
        if (order != orders.end() && !IsInOrder(*at, order->second) && !findings.HasAt(at->Line)) {
            findings.Error("TQ-ATTRIBUTE-ORDER", at->Line,
                           "The attributes of " + std::string(at->Name) + " must stand in the order " +
                               Joined(order->second) + ".");
        }
    }
}

} // namespace tq4x::reader
