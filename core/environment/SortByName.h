#pragma once

#include <algorithm>
#include <vector>

namespace tq4x
{

/// The items of a list by ascending bytes of their names, equal names in list order; the list stays as it is.
template<typename List>
auto SortByName(const List& items)
{
    std::vector<const typename List::value_type*> sorted;
    sorted.reserve(items.size());
    for (const auto& item : items)
        sorted.push_back(&item);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto* a, const auto* b) { return a->Name < b->Name; });
    return sorted;
}

} // namespace tq4x
