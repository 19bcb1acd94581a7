#pragma once

#include <xsi_projectitem.h>

namespace XSI
{

/// A layer of a shader. Its parameter `color` is the port that the layer's texture is connected to.
class TextureLayer : public ProjectItem
{
public:
    TextureLayer() = default;

    TextureLayer(const CRef& ref) : ProjectItem(ref.As(siTextureLayerID)) {}
};

} // namespace XSI
