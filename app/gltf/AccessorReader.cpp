#include "gltf/AccessorReader.h"

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstring>
#include <string>

#include "gltf/AccessorLayout.h"
#include "gltf/SceneError.h"

namespace tq4x::gltf
{
namespace
{

static_assert(std::endian::native == std::endian::little,
              "accessors are little-endian and are copied as they are");

std::string PlaceOf(std::size_t accessor)
{
    return "/accessors/" + std::to_string(accessor);
}

const std::uint8_t* DataOf(const Document& document, std::size_t view)
{
    const BufferView& source = document.Views[view];
    return document.Buffers[source.Buffer].Data.data() + source.ByteOffset;
}

template<class Stored>
Stored Load(const std::uint8_t* from)
{
    Stored value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

template<class Stored>
float ToFloat(Stored value, bool normalized)
{
    if constexpr (std::same_as<Stored, float>) {
        return value;
    } else {
        const auto plain = static_cast<float>(value);
        constexpr auto Largest = static_cast<float>(std::numeric_limits<Stored>::max());
        return normalized ? std::max(plain / Largest, -1.0f) : plain;
    }
}

// Where the values of one block lie: the base of an accessor, or its sparse values.
struct Block
{
    const std::uint8_t* Data;
    std::uint64_t Stride;
    std::uint64_t ColumnSize;
    std::size_t Components;   // of a value
    std::size_t ColumnLength; // components in one column
};

template<class Stored, class Out, class Convert>
void CopyValue(const Block& block, std::uint64_t value, Out* into, Convert convert)
{
    const std::uint8_t* const start = block.Data + value * block.Stride;
    for (std::size_t i = 0; i < block.Components; ++i) {
        const std::size_t column = i / block.ColumnLength;
        const std::size_t row = i % block.ColumnLength;
        into[i] = convert(Load<Stored>(start + column * block.ColumnSize + row * sizeof(Stored)));
    }
}

// Calls `use` with a value of the C++ type that is stored.
template<class Use>
auto WithStoredType(ComponentType type, Use use)
{
    switch (type) {
    case ComponentType::Byte:
        return use(std::int8_t{});
    case ComponentType::UnsignedByte:
        return use(std::uint8_t{});
    case ComponentType::Short:
        return use(std::int16_t{});
    case ComponentType::UnsignedShort:
        return use(std::uint16_t{});
    case ComponentType::UnsignedInt:
        return use(std::uint32_t{});
    case ComponentType::Float:
        break;
    }
    return use(float{});
}

std::vector<std::uint64_t> ReadSparseIndices(const Document& document, std::size_t accessor)
{
    const SparseValues& sparse = *document.Accessors[accessor].Sparse;
    const std::uint8_t* const data = DataOf(document, sparse.IndicesView) + sparse.IndicesOffset;
    std::vector<std::uint64_t> indices(sparse.Count);
    WithStoredType(sparse.IndicesType, [&](auto stored) {
        for (std::size_t i = 0; i < indices.size(); ++i) {
            indices[i] = static_cast<std::uint64_t>(Load<decltype(stored)>(data + i * sizeof stored));
        }
        return 0;
    });
    for (std::size_t i = 0; i < indices.size(); ++i) {
        if (indices[i] >= document.Accessors[accessor].Count || (i > 0 && indices[i] <= indices[i - 1])) {
            throw SceneError(PlaceOf(accessor) + "/sparse/indices",
                             "Entry " + std::to_string(i) + " is out of range or out of order.");
        }
    }
    return indices;
}

Block BlockOf(const Document& document, const Accessor& accessor)
{
    const std::uint8_t* const data =
        accessor.View ? DataOf(document, *accessor.View) + accessor.ByteOffset : nullptr;
    return {data, ElementStride(accessor, document), ColumnSize(accessor), ComponentCount(accessor.Shape),
            ColumnLength(accessor.Shape)};
}

// `convert` takes a stored component of any type.
template<class Out, class Convert>
std::vector<Out> ReadAll(const Document& document, std::size_t index, Convert convert)
{
    const Accessor& accessor = document.Accessors[index];
    Block block = BlockOf(document, accessor);
    std::vector<Out> values(static_cast<std::size_t>(accessor.Count) * block.Components);
    WithStoredType(accessor.Type, [&](auto stored) {
        using Stored = decltype(stored);
        for (std::size_t i = 0; accessor.View && i < accessor.Count; ++i) {
            CopyValue<Stored>(block, i, values.data() + i * block.Components, convert);
        }
        if (accessor.Sparse) {
            block.Data = DataOf(document, accessor.Sparse->ValuesView) + accessor.Sparse->ValuesOffset;
            block.Stride = ElementSize(accessor);
            const auto targets = ReadSparseIndices(document, index);
            for (std::size_t i = 0; i < targets.size(); ++i) {
                CopyValue<Stored>(block, i, values.data() + targets[i] * block.Components, convert);
            }
        }
        return 0;
    });
    return values;
}

// Many primitives may share one long accessor, so only what is asked for is read. Sparse accessors are short.
template<class Out, class Convert>
std::vector<Out> ReadSome(const Document& document, std::size_t index, std::span<const std::uint32_t> wanted,
                          Convert convert)
{
    const Accessor& accessor = document.Accessors[index];
    const Block block = BlockOf(document, accessor);
    std::vector<Out> values(wanted.size() * block.Components);
    if (accessor.Sparse) {
        const std::vector<Out> all = ReadAll<Out>(document, index, convert);
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            std::copy_n(&all[wanted[i] * block.Components], block.Components, &values[i * block.Components]);
        }
        return values;
    }
    WithStoredType(accessor.Type, [&](auto stored) {
        for (std::size_t i = 0; accessor.View && i < wanted.size(); ++i) {
            CopyValue<decltype(stored)>(block, wanted[i], values.data() + i * block.Components, convert);
        }
        return 0;
    });
    return values;
}

auto FloatConversion(const Document& document, std::size_t accessor)
{
    const bool normalized = document.Accessors[accessor].Normalized;
    return [normalized](auto value) { return ToFloat(value, normalized); };
}

auto IntegerConversion(const Document& document, std::size_t accessor)
{
    if (!IsUnsigned(document.Accessors[accessor].Type)) {
        throw SceneError(PlaceOf(accessor), "Unsigned integers are wanted here.");
    }
    return [](auto value) { return static_cast<std::uint32_t>(value); };
}

} // namespace

std::vector<float> ReadFloats(const Document& document, std::size_t accessor)
{
    return ReadAll<float>(document, accessor, FloatConversion(document, accessor));
}

std::vector<float> ReadFloatsAt(const Document& document, std::size_t accessor,
                                std::span<const std::uint32_t> wanted)
{
    return ReadSome<float>(document, accessor, wanted, FloatConversion(document, accessor));
}

std::vector<std::uint32_t> ReadIntegers(const Document& document, std::size_t accessor)
{
    return ReadAll<std::uint32_t>(document, accessor, IntegerConversion(document, accessor));
}

std::vector<std::uint32_t> ReadIntegersAt(const Document& document, std::size_t accessor,
                                          std::span<const std::uint32_t> wanted)
{
    return ReadSome<std::uint32_t>(document, accessor, wanted, IntegerConversion(document, accessor));
}

} // namespace tq4x::gltf
