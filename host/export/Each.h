#pragma once

#include <xsi_decl.h>

#include <type_traits>
#include <utility>

namespace tq4x
{

/// Makes an array of the host, which knows counts and indices alone, fit for a range loop:
/// `for (const XSI::CRef& child : Each(object.GetChildren()))`. Keeps a temporary array for the time of the
/// loop and refers to one that has a name.
template<typename Array>
class Each
{
    using List = std::remove_reference_t<Array>;

public:
    explicit Each(Array&& array) : m_array(std::forward<Array>(array)) {}

    class Iterator
    {
    public:
        Iterator(const List& array, LONG index) : m_array(array), m_index(index) {}

        decltype(auto) operator*() const { return m_array[m_index]; }

        Iterator& operator++()
        {
            ++m_index;
            return *this;
        }

        bool operator!=(const Iterator& other) const { return m_index != other.m_index; }

    private:
        const List& m_array;
        LONG m_index;
    };

    Iterator begin() const { return {m_array, 0}; }

    Iterator end() const { return {m_array, m_array.GetCount()}; }

private:
    Array m_array; // a reference for an array that has a name
};

template<typename Array>
Each(Array&&) -> Each<Array>;

} // namespace tq4x
