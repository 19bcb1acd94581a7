#include "pages/SearchScene.h"

#include "export/Each.h"

#include <xsi_x3dobject.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <vector>

namespace tq4x
{
namespace
{

constexpr LONG Or = 1;

/// The values that one group asks for, a bit for each, counted from the smallest value of its boxes or 0.
struct ValueMask
{
    const char* ValueParameter;
    LONG First;
    std::uint32_t Bits;
};

LONG ReadInteger(const XSI::CustomProperty& property, const char* parameter)
{
    return property.GetParameterValue(parameter);
}

bool ReadFlag(const XSI::CustomProperty& property, const char* parameter)
{
    return property.GetParameterValue(parameter);
}

ValueMask MaskOf(const SearchGroup& group, const XSI::CustomProperty& asked)
{
    ValueMask mask{group.ValueParameter, 0, 0};
    for (const SearchBox& box : group.Boxes)
        mask.First = std::min(mask.First, box.Value);
    for (const SearchBox& box : group.Boxes)
        if (ReadFlag(asked, box.Parameter))
            mask.Bits |= std::uint32_t{1} << (box.Value - mask.First);
    return mask;
}

bool Meets(const ValueMask& mask, const XSI::CustomProperty& property)
{
    const LONG bit = ReadInteger(property, mask.ValueParameter) - mask.First;
    return bit >= 0 && bit < 32 && ((mask.Bits >> bit) & 1) != 0;
}

/// What the boxes of a page ask for, read once for the whole search.
class BoxQuery
{
public:
    BoxQuery(const AttributePage& page, const XSI::CustomProperty& asked)
        : m_isOr(page.AndOr != nullptr && ReadInteger(asked, page.AndOr) == Or)
    {
        for (const SearchGroup& group : page.Groups)
            if (const ValueMask mask = MaskOf(group, asked); mask.Bits != 0)
                m_masks.push_back(mask);
    }

    bool Matches(const XSI::CustomProperty& property) const
    {
        for (const ValueMask& mask : m_masks)
            if (Meets(mask, property) == m_isOr)
                return m_isOr;
        return !m_isOr && !m_masks.empty();
    }

private:
    bool m_isOr;
    std::vector<ValueMask> m_masks;
};

/// What a page that searches by number asks for.
class NumberQuery
{
public:
    NumberQuery(const NumberSearch& search, const XSI::CustomProperty& asked)
        : m_search(search),
          m_isCompared(ReadFlag(asked, search.IsCompared)),
          m_relation(ReadInteger(asked, search.Relation)),
          m_number(ReadInteger(asked, search.Number.Name))
    {}

    bool Matches(const XSI::CustomProperty& property) const
    {
        if (!ReadFlag(property, m_search.UseParameter))
            return false;
        return !m_isCompared || IsRelated(ReadInteger(property, m_search.ValueParameter));
    }

private:
    bool IsRelated(LONG value) const
    {
        switch (m_relation) {
        case 0:
            return value < m_number;
        case 1:
            return value <= m_number;
        case 2:
            return value == m_number;
        case 3:
            return value >= m_number;
        default:
            return value > m_number;
        }
    }

    const NumberSearch& m_search;
    bool m_isCompared;
    LONG m_relation;
    LONG m_number;
};

/// Gathers what matches, each object once.
template<typename Query>
class Finder
{
public:
    Finder(const AttributePage& page, const Query& query) : m_page(page), m_query(query) {}

    void Visit(const XSI::X3DObject& object)
    {
        if (m_page.FindsMaterials)
            for (const XSI::CRef& material : Each(object.GetMaterials()))
                AddIfMatching(material);
        else
            AddIfMatching(object);
    }

    XSI::CRefArray Found;

private:
    void AddIfMatching(const XSI::CRef& object)
    {
        if (!m_seen.insert(object.GetObjectID()).second)
            return;
        const XSI::CustomProperty property =
            GetOrAddProperty(CarrierOf(m_page.Carrier, object), m_page.Type, false);
        if (property.IsValid() && m_query.Matches(property))
            Found.Add(object);
    }

    const AttributePage& m_page;
    const Query& m_query;
    std::set<ULONG> m_seen;
};

/// Depth first, with a stack of its own: scenes may be deeper than the call stack.
template<typename Query>
XSI::CRefArray Search(const XSI::CRef& root, const AttributePage& page, const Query& query)
{
    Finder<Query> finder(page, query);
    std::vector<XSI::CRef> waiting{root};
    while (!waiting.empty()) {
        const XSI::X3DObject object(waiting.back());
        waiting.pop_back();
        finder.Visit(object);
        const XSI::CRefArray children = object.GetChildren();
        for (LONG i = children.GetCount() - 1; i >= 0; --i)
            waiting.push_back(children[i]);
    }
    return finder.Found;
}

} // namespace

XSI::CRefArray SearchScene(const XSI::CRef& root, const AttributePage& page, const XSI::CustomProperty& asked)
{
    if (page.Number != nullptr)
        return Search(root, page, NumberQuery(*page.Number, asked));
    return Search(root, page, BoxQuery(page, asked));
}

bool IsAnyBoxOn(const AttributePage& page, const XSI::CustomProperty& property)
{
    for (const SearchGroup& group : page.Groups)
        for (const SearchBox& box : group.Boxes)
            if (ReadFlag(property, box.Parameter))
                return true;
    return false;
}

} // namespace tq4x
