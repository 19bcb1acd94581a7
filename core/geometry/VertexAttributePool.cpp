#include "geometry/VertexAttributePool.h"

#include <type_traits>

namespace tq4x
{

std::size_t VertexAttributeSlot::Size() const
{
    return std::visit(
        [](const auto& list) -> std::size_t {
            if constexpr (std::is_same_v<decltype(list), const std::monostate&>)
                return 0;
            else
                return list.Size();
        },
        Data);
}

VertexAttributePool MakeVertexAttributePool(const StreamQuantization& quantization)
{
    const VertexAttributeSlot coordinate{2, quantization.TextureCoordinate, SharedList<Vector2>{}};
    const VertexAttributeSlot bone{4, QuantizedMode::Ubyte, std::monostate{}};
    const VertexAttributeSlot user{4, QuantizedMode::Byte, SharedList<Vector4>{}};
    VertexAttributePool pool;
    pool[VertexSlot::Position] = {3, quantization.Position, SharedList<Vector3>{}};
    pool[VertexSlot::Normal] = {3, quantization.Normal, SharedList<Vector3>{}};
    pool[VertexSlot::Tangent] = {3, QuantizedMode::Float, SharedList<Vector3>{}};
    pool[VertexSlot::Color] = {4, QuantizedMode::Float, SharedList<Vector4>{}};
    pool[VertexSlot::TextureCoordinate0] = coordinate;
    pool[VertexSlot::TextureCoordinate1] = coordinate;
    pool[VertexSlot::TextureCoordinate2] = coordinate;
    pool[VertexSlot::BoneIndex] = bone;
    pool[VertexSlot::BoneWeight] = bone;
    pool[VertexSlot::UserAttribute0] = user;
    pool[VertexSlot::UserAttribute1] = user;
    pool[VertexSlot::UserAttribute2] = user;
    return pool;
}

} // namespace tq4x
