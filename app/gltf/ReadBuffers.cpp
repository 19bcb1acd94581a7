#include <algorithm>
#include <array>
#include <string>

#include "gltf/AccessorLayout.h"
#include "gltf/CheckedSize.h"
#include "gltf/ReadRecords.h"

namespace tq4x::gltf
{
namespace
{

constexpr std::array<std::string_view, 7> ShapeWords = {"SCALAR", "VEC2", "VEC3", "VEC4",
                                                        "MAT2",   "MAT3", "MAT4"};

ComponentType ReadComponentType(const JsonPlace& place)
{
    constexpr std::array<std::uint64_t, 6> Types = {5120, 5121, 5122, 5123, 5125, 5126};
    const std::uint64_t type = place.Unsigned();
    if (std::ranges::find(Types, type) == Types.end()) {
        place.Fail("There is no component type " + std::to_string(type) + ".");
    }
    return static_cast<ComponentType>(type);
}

AccessorShape ReadShape(const JsonPlace& place)
{
    const auto found = std::ranges::find(ShapeWords, place.Text());
    if (found == ShapeWords.end()) {
        place.Fail("There is no accessor type \"" + place.Text() + "\".");
    }
    return static_cast<AccessorShape>(found - ShapeWords.begin());
}

// Refuses data that would end behind its view.
void CheckRange(const JsonPlace& place, const BufferView& view, std::uint64_t offset, std::uint64_t count,
                std::uint64_t stride, std::uint64_t elementSize)
{
    if (count == 0) {
        return;
    }
    const auto steps = MultiplySizes(count - 1, stride);
    const auto start = steps ? AddSizes(*steps, offset) : std::nullopt;
    const auto end = start ? AddSizes(*start, elementSize) : std::nullopt;
    if (!end || *end > view.ByteLength) {
        place.Fail("The data would end behind its buffer view of " + std::to_string(view.ByteLength) +
                   " bytes.");
    }
}

SparseValues ReadSparse(const JsonPlace& place, const Accessor& accessor, const Document& document)
{
    SparseValues sparse;
    sparse.Count = place.Require("count").Unsigned();
    if (sparse.Count > accessor.Count) {
        place.Fail("More values are replaced than the accessor has.");
    }
    const auto indices = place.Require("indices");
    sparse.IndicesView = indices.Require("bufferView").IndexInto(document.Views.size(), "buffer view");
    sparse.IndicesOffset = ReadUnsigned(indices, "byteOffset", 0);
    sparse.IndicesType = ReadComponentType(indices.Require("componentType"));
    if (!IsUnsigned(sparse.IndicesType)) {
        indices.Fail("Indices must be unsigned integers.");
    }
    const std::uint64_t indexSize = ByteSize(sparse.IndicesType);
    CheckRange(indices, document.Views[sparse.IndicesView], sparse.IndicesOffset, sparse.Count, indexSize,
               indexSize);
    const auto values = place.Require("values");
    sparse.ValuesView = values.Require("bufferView").IndexInto(document.Views.size(), "buffer view");
    sparse.ValuesOffset = ReadUnsigned(values, "byteOffset", 0);
    const std::uint64_t size = ElementSize(accessor);
    CheckRange(values, document.Views[sparse.ValuesView], sparse.ValuesOffset, sparse.Count, size, size);
    return sparse;
}

void CheckAccessorData(const JsonPlace& place, const Accessor& accessor, const Document& document)
{
    if (!accessor.View) {
        const auto numbers = MultiplySizes(accessor.Count, ComponentCount(accessor.Shape));
        if (!numbers || *numbers > MaxImplicitNumbers) {
            place.Fail("The accessor stands for too many zeros; at most " +
                       std::to_string(MaxImplicitNumbers) + " are read.");
        }
        return;
    }
    const BufferView& view = document.Views[*accessor.View];
    const std::uint64_t size = ElementSize(accessor);
    if (view.ByteStride != 0 && view.ByteStride < size) {
        place.Fail("The byte stride of the buffer view is smaller than one value of " + std::to_string(size) +
                   " bytes.");
    }
    CheckRange(place, view, accessor.ByteOffset, accessor.Count, ElementStride(accessor, document), size);
}

} // namespace

void ReadBuffers(const JsonPlace& root, Document& document)
{
    ForEachItem(root, "buffers", [&](const JsonPlace& place) {
        Buffer& buffer = document.Buffers.emplace_back();
        buffer.Name = ReadText(place, "name");
        buffer.ByteLength = place.Require("byteLength").Unsigned();
        buffer.Uri = ReadText(place, "uri");
    });
    ForEachItem(root, "bufferViews", [&](const JsonPlace& place) {
        BufferView& view = document.Views.emplace_back();
        view.Name = ReadText(place, "name");
        view.Buffer = place.Require("buffer").IndexInto(document.Buffers.size(), "buffer");
        view.ByteOffset = ReadUnsigned(place, "byteOffset", 0);
        view.ByteLength = place.Require("byteLength").Unsigned();
        view.ByteStride = ReadUnsigned(place, "byteStride", 0);
        const std::uint64_t available = document.Buffers[view.Buffer].ByteLength;
        const auto end = AddSizes(view.ByteOffset, view.ByteLength);
        if (!end || *end > available) {
            place.Fail("The view would end behind its buffer of " + std::to_string(available) + " bytes.");
        }
    });
}

void ReadAccessors(const JsonPlace& root, Document& document)
{
    ForEachItem(root, "accessors", [&](const JsonPlace& place) {
        Accessor accessor;
        accessor.Name = ReadText(place, "name");
        accessor.View = ReadIndex(place, "bufferView", document.Views.size(), "buffer view");
        accessor.ByteOffset = ReadUnsigned(place, "byteOffset", 0);
        accessor.Type = ReadComponentType(place.Require("componentType"));
        accessor.Normalized = ReadBool(place, "normalized", false);
        accessor.Count = place.Require("count").Unsigned();
        accessor.Shape = ReadShape(place.Require("type"));
        CheckAccessorData(place, accessor, document);
        if (const auto sparse = place.Find("sparse")) {
            accessor.Sparse = ReadSparse(*sparse, accessor, document);
        }
        document.Accessors.push_back(std::move(accessor));
    });
}

} // namespace tq4x::gltf
