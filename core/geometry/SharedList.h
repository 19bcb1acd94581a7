#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace tq4x
{

/// A list of values that copies share until one of them is changed: copying is cheap whatever its length.
/// Not for use from several threads.
template<typename T>
class SharedList
{
public:
    SharedList() = default;

    explicit SharedList(std::vector<T> values) : m_values(std::make_shared<std::vector<T>>(std::move(values)))
    {}

    /// The values; valid until the list is edited, assigned or destroyed.
    const std::vector<T>& Read() const
    {
        static const std::vector<T> none;
        return m_values ? *m_values : none;
    }

    /// The values to change. Takes a copy of its own first if other lists share them.
    std::vector<T>& Edit()
    {
        if (!m_values)
            m_values = std::make_shared<std::vector<T>>();
        else if (m_values.use_count() > 1)
            m_values = std::make_shared<std::vector<T>>(*m_values);
        return *m_values;
    }

    std::size_t Size() const { return m_values ? m_values->size() : 0; }

    bool IsEmpty() const { return Size() == 0; }

    /// True if both are the same values in memory, not only equal ones. Two lists that never held a value
    /// share nothing.
    bool IsSharedWith(const SharedList& other) const { return m_values && m_values == other.m_values; }

    /// True if some other list has the same values in memory.
    bool IsShared() const { return m_values.use_count() > 1; }

private:
    std::shared_ptr<std::vector<T>> m_values; ///< none until the first value
};

} // namespace tq4x
