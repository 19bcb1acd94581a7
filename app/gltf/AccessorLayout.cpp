#include "gltf/AccessorLayout.h"

namespace tq4x::gltf
{

std::size_t ColumnLength(AccessorShape shape)
{
    switch (shape) {
    case AccessorShape::Mat2:
        return 2;
    case AccessorShape::Mat3:
        return 3;
    case AccessorShape::Mat4:
        return 4;
    case AccessorShape::Scalar:
    case AccessorShape::Vec2:
    case AccessorShape::Vec3:
    case AccessorShape::Vec4:
        return ComponentCount(shape);
    }
    return ComponentCount(shape);
}

std::uint64_t ColumnSize(const Accessor& accessor)
{
    const std::uint64_t size = ColumnLength(accessor.Shape) * ByteSize(accessor.Type);
    const bool isMatrix = accessor.Shape >= AccessorShape::Mat2;
    return isMatrix ? (size + 3) / 4 * 4 : size;
}

std::uint64_t ElementSize(const Accessor& accessor)
{
    const std::size_t columns = ComponentCount(accessor.Shape) / ColumnLength(accessor.Shape);
    return columns * ColumnSize(accessor);
}

std::uint64_t ElementStride(const Accessor& accessor, const Document& document)
{
    const std::uint64_t stride = accessor.View ? document.Views[*accessor.View].ByteStride : 0;
    return stride != 0 ? stride : ElementSize(accessor);
}

} // namespace tq4x::gltf
