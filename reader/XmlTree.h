#pragma once

#include <cstddef>
#include <memory>
#include <memory_resource>
#include <optional>
#include <span>
#include <string_view>

#include "Finding.h"

namespace tq4x::reader
{

struct XmlAttribute
{
    std::string_view Name;
    std::string_view Value;
};

/// An element with its attributes in file order. Owned by its tree.
struct XmlElement
{
    std::string_view Name;
    std::string_view Text; ///< all text directly inside; white space between children is dropped
    std::span<const XmlAttribute> Attributes;
    const XmlElement* Parent = nullptr;
    const XmlElement* FirstChild = nullptr;
    const XmlElement* LastChild = nullptr;
    const XmlElement* Next = nullptr; ///< sibling
    long Line = 0;                    ///< from 1, where the start tag ends
};

/// The value of an attribute, nothing if it is absent.
[[nodiscard]] std::optional<std::string_view> FindAttribute(const XmlElement& element, std::string_view name);

/// The first child of a name, nullptr if there is none.
[[nodiscard]] const XmlElement* FindChild(const XmlElement& element, std::string_view name);

/// The element behind this one in the order of the file, within `root`. For walks without recursion.
[[nodiscard]] const XmlElement* NextInOrder(const XmlElement& element, const XmlElement& root);

/// A whole document.
class XmlTree
{
public:
    /// Elements may stand this deep. The deepest of the eight kinds needs half of it.
    static constexpr int MostDepth = 32;

    /// So many attributes may an element have. The time of the library grows with the square of their number.
    static constexpr int MostAttributes = 64;

    /// So many elements and attributes may stand in one file; beyond that a small file would need a lot of
    /// memory.
    static constexpr std::size_t MostItems = 12'000'000;

    /// Parses UTF-8 text. Nothing, with a finding of code "TQ-XML...", if it is not well-formed, has a
    /// document type or exceeds a limit. No entity but the five of XML itself is known, nothing is ever
    /// loaded.
    [[nodiscard]] static std::optional<XmlTree> Parse(std::string_view text, FindingList& findings,
                                                      std::size_t mostItems = MostItems);

    [[nodiscard]] const XmlElement& Root() const { return *m_root; }

private:
    XmlTree() : m_memory(std::make_unique<std::pmr::monotonic_buffer_resource>()) {}

    friend class XmlTreeBuilder;

    std::unique_ptr<std::pmr::monotonic_buffer_resource> m_memory; ///< of all elements and texts
    const XmlElement* m_root = nullptr;
};

} // namespace tq4x::reader
