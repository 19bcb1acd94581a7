#pragma once

#include "geometry/Mesh.h"
#include "pipeline/WordTable.h"

namespace tq4x
{

/// How the vertices of a shape follow its bones.
enum class SkinningMode : std::int32_t
{
    None = 0,
    RigidSkinning = 1,
    SmoothSkinning = 2,
};

inline constexpr auto SkinningModeWords = WordTable<SkinningMode::SmoothSkinning>({
    {SkinningMode::None, "None"},
    {SkinningMode::RigidSkinning, "RigidSkinning"},
    {SkinningMode::SmoothSkinning, "SmoothSkinning"},
});

inline constexpr auto PrimitiveModeWords = WordTable<PrimitiveMode::Other>({
    {PrimitiveMode::Points, "Points"},
    {PrimitiveMode::Lines, "Lines"},
    {PrimitiveMode::LineStrip, "LineStrip"},
    {PrimitiveMode::Triangles, "Triangles"},
    {PrimitiveMode::TriangleStrip, "TriangleStrip"},
    {PrimitiveMode::TriangleFan, "TriangleFan"},
    {PrimitiveMode::Other, "Other"},
});

inline constexpr auto QuantizedModeWords = WordTable<QuantizedMode::Auto>({
    {QuantizedMode::Float, "Float"},
    {QuantizedMode::Short, "Short"},
    {QuantizedMode::Ushort, "Ushort"},
    {QuantizedMode::Byte, "Byte"},
    {QuantizedMode::Ubyte, "Ubyte"},
    {QuantizedMode::Auto, "Auto"},
});

inline constexpr auto UsageWords = WordTable<VertexSlot::UserAttribute2>({
    {VertexSlot::Position, "Position"},
    {VertexSlot::Normal, "Normal"},
    {VertexSlot::Tangent, "Tangent"},
    {VertexSlot::Color, "Color"},
    {VertexSlot::TextureCoordinate0, "TextureCoordinate0"},
    {VertexSlot::TextureCoordinate1, "TextureCoordinate1"},
    {VertexSlot::TextureCoordinate2, "TextureCoordinate2"},
    {VertexSlot::BoneIndex, "BoneIndex"},
    {VertexSlot::BoneWeight, "BoneWeight"},
    {VertexSlot::UserAttribute0, "UserAttribute0"},
    {VertexSlot::UserAttribute1, "UserAttribute1"},
    {VertexSlot::UserAttribute2, "UserAttribute2"},
});

} // namespace tq4x
