#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace tq4x::test
{

/// Draws that are the same on every platform: the standard's distributions are not.
class RandomDraw
{
public:
    explicit RandomDraw(std::uint32_t seed) : m_random(seed) {}

    /// From `low` to `high`, both included.
    int Int(int low, int high)
    {
        return low + static_cast<int>(m_random() % static_cast<unsigned>(high - low + 1));
    }

    double Real(double low, double high)
    {
        return low + (high - low) * static_cast<double>(m_random()) / 4294967295.0;
    }

    bool Chance(int percent) { return Int(0, 99) < percent; }

    template<typename T>
    const T& Of(const std::vector<T>& choices)
    {
        return choices[static_cast<std::size_t>(Int(0, static_cast<int>(choices.size()) - 1))];
    }

    std::uint8_t Byte() { return static_cast<std::uint8_t>(m_random()); }

private:
    std::mt19937 m_random;
};

} // namespace tq4x::test
