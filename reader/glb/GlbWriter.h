#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

#include <nlohmann/json.hpp>

namespace tq4x::reader
{

/// Keeps the order in which members are added, so that equal input gives equal bytes.
using Json = nlohmann::ordered_json;

/// The number that a float shows when it is printed as short as it can be: 0.1 instead of 0.10000000149. What
/// is infinite becomes the largest number, what is none becomes 0.
[[nodiscard]] double ShortNumber(float value);

/// What the numbers of a buffer view are for.
enum class BufferUse
{
    Data,     ///< keys, matrices
    Vertices, ///< drawn: a target for the graphics hardware
    Indices,
};

/// Collects the JSON and the buffer of a binary glTF file. Arrays of the JSON come into being with their
/// first element, as glTF allows no empty ones.
class GlbWriter
{
public:
    GlbWriter();

    /// Appends an element to a top-level array and gives its index.
    int Add(std::string_view array, Json element);

    /// The element of a top-level array, to be completed.
    [[nodiscard]] Json& At(std::string_view array, int index);

    /// Rows of `components` numbers as an accessor: 1 SCALAR, 2 to 4 VEC2 to VEC4, 16 MAT4. With bounds where
    /// glTF wants them (positions, key times). The same numbers for the same use are stored once. There must
    /// be at least one row. Numbers that are not finite change as in `ShortNumber`.
    int AddFloats(std::span<const float> values, std::size_t components, BufferUse use,
                  bool hasBounds = false);

    /// The same for whole numbers: of one byte where `isByte`, else of two, or four if one does not fit.
    int AddIntegers(std::span<const std::uint32_t> values, std::size_t components, BufferUse use,
                    bool isByte = false);

    /// Bytes that are no numbers, such as a picture, as a buffer view.
    int AddBytes(std::string_view bytes);

    /// Names an extension in `extensionsUsed`.
    void UseExtension(std::string_view name);

    /// The top level, for what no function is for: `scene`.
    [[nodiscard]] Json& Root() { return m_root; }

    /// The whole file. Empty if it would be larger than the 4 GiB that its head can state. Leaves nothing in
    /// the writer.
    [[nodiscard]] std::string Finish();

private:
    /// Where the numbers of an accessor stand, to find equal ones.
    struct StoredNumbers
    {
        std::size_t Offset = 0;
        std::size_t Size = 0;
        BufferUse Use = BufferUse::Data;
        int Accessor = 0;
    };

    int AddView(std::string_view bytes, BufferUse use);
    int AddAccessor(std::string_view bytes, BufferUse use, Json accessor);
    [[nodiscard]] bool IsStored(const StoredNumbers& stored, std::string_view bytes, BufferUse use,
                                const Json& accessor) const;

    Json m_root;
    std::string m_buffer;
    std::unordered_multimap<std::size_t, StoredNumbers> m_stored; ///< by hash of their bytes
};

} // namespace tq4x::reader
