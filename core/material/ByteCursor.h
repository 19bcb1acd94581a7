#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace tq4x
{

/// Little-endian numbers at a place that the bytes hold.
constexpr std::uint16_t Word16(const std::uint8_t* bytes)
{
    return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}

constexpr std::uint32_t Word32(const std::uint8_t* bytes)
{
    return Word16(bytes) | static_cast<std::uint32_t>(Word16(bytes + 2)) << 16;
}

/// Walks bytes from the front. Whoever takes asks first whether there is enough.
class ByteCursor
{
public:
    /// Starts at a position, which may lie behind the end.
    ByteCursor(std::span<const std::uint8_t> bytes, std::size_t position)
        : m_rest(bytes.subspan(position < bytes.size() ? position : bytes.size()))
    {}

    bool Has(std::size_t count) const { return count <= m_rest.size(); }

    /// Needs `Has(count)`.
    const std::uint8_t* Take(std::size_t count)
    {
        const std::uint8_t* taken = m_rest.data();
        m_rest = m_rest.subspan(count);
        return taken;
    }

private:
    std::span<const std::uint8_t> m_rest;
};

} // namespace tq4x
