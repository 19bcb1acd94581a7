#pragma once

#include <utility>
#include <vector>

#include <xsi_decl.h>

namespace XSI
{

/// What the host's arrays have in common: a counted list whose every index is safe. Reading outside gives a
/// default value, writing outside goes nowhere.
template<class T>
class CBaseArray
{
public:
    CBaseArray() = default;

    explicit CBaseArray(LONG count) { Resize(count); }

    explicit CBaseArray(std::vector<T> values) : m_values(std::move(values)) {}

    LONG GetCount() const { return static_cast<LONG>(m_values.size()); }

    void Resize(LONG count) { m_values.resize(count > 0 ? static_cast<std::size_t>(count) : 0); }

    void Clear() { m_values.clear(); }

    LONG Add(const T& value)
    {
        m_values.push_back(value);
        return GetCount() - 1;
    }

    const T& operator[](LONG index) const
    {
        static const T none{};
        return IsInside(index) ? m_values[static_cast<std::size_t>(index)] : none;
    }

    T& operator[](LONG index)
    {
        static T spare{};
        if (IsInside(index)) {
            return m_values[static_cast<std::size_t>(index)];
        }
        spare = T{};
        return spare;
    }

    /// The values in one block, for reading many of them; null if there are none.
    const T* GetArray() const { return m_values.empty() ? nullptr : m_values.data(); }

private:
    bool IsInside(LONG index) const { return index >= 0 && index < GetCount(); }

    std::vector<T> m_values;
};

class CLongArray : public CBaseArray<LONG>
{
public:
    using CBaseArray::CBaseArray;
};

class CFloatArray : public CBaseArray<float>
{
public:
    using CBaseArray::CBaseArray;
};

class CDoubleArray : public CBaseArray<double>
{
public:
    using CBaseArray::CBaseArray;
};

} // namespace XSI
