#include "gltf/ReadTriangles.h"

#include <algorithm>
#include <numeric>

#include "gltf/AccessorReader.h"
#include "gltf/SceneError.h"

namespace tq4x::gltf
{
namespace
{

std::vector<std::uint32_t> ReadIndices(const Document& document, const Primitive& primitive,
                                       const std::string& place)
{
    const std::size_t vertexCount = VertexCount(document, primitive);
    if (!primitive.Indices) {
        std::vector<std::uint32_t> all(vertexCount);
        std::iota(all.begin(), all.end(), 0u);
        return all;
    }
    auto indices = ReadIntegers(document, *primitive.Indices);
    const auto beyond =
        std::ranges::find_if(indices, [&](std::uint32_t index) { return index >= vertexCount; });
    if (beyond != indices.end()) {
        throw SceneError(place + "/indices", "Index " + std::to_string(*beyond) + " at position " +
                                                 std::to_string(beyond - indices.begin()) +
                                                 " is out of range; the primitive has " +
                                                 std::to_string(vertexCount) + " vertices.");
    }
    return indices;
}

void AddUnlessDegenerate(Triangles& triangles, std::uint32_t a, std::uint32_t b, std::uint32_t c)
{
    if (a == b || b == c || c == a) {
        ++triangles.DroppedCount;
        return;
    }
    triangles.Corners.insert(triangles.Corners.end(), {a, b, c});
}

Triangles UnrollStrip(const std::vector<std::uint32_t>& strip)
{
    Triangles triangles;
    for (std::size_t i = 0; i + 2 < strip.size(); ++i) {
        const std::size_t odd = i % 2; // every other triangle is wound the other way round
        AddUnlessDegenerate(triangles, strip[i], strip[i + 1 + odd], strip[i + 2 - odd]);
    }
    return triangles;
}

Triangles UnrollFan(const std::vector<std::uint32_t>& fan)
{
    Triangles triangles;
    for (std::size_t i = 1; i + 1 < fan.size(); ++i) {
        AddUnlessDegenerate(triangles, fan[i], fan[i + 1], fan[0]);
    }
    return triangles;
}

Triangles CutList(std::vector<std::uint32_t> list)
{
    Triangles triangles;
    triangles.LooseCount = list.size() % 3;
    list.resize(list.size() - triangles.LooseCount);
    triangles.Corners = std::move(list);
    return triangles;
}

} // namespace

std::size_t VertexCount(const Document& document, const Primitive& primitive)
{
    const Index positions = primitive.Find("POSITION");
    return positions ? static_cast<std::size_t>(document.Accessors[*positions].Count) : 0;
}

Triangles ReadTriangles(const Document& document, const Primitive& primitive, const std::string& place)
{
    switch (primitive.Mode) {
    case PrimitiveMode::Triangles:
        return CutList(ReadIndices(document, primitive, place));
    case PrimitiveMode::TriangleStrip:
        return UnrollStrip(ReadIndices(document, primitive, place));
    case PrimitiveMode::TriangleFan:
        return UnrollFan(ReadIndices(document, primitive, place));
    case PrimitiveMode::Points:
    case PrimitiveMode::Lines:
    case PrimitiveMode::LineLoop:
    case PrimitiveMode::LineStrip:
        break;
    }
    return {};
}

} // namespace tq4x::gltf
