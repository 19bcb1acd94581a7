#pragma once

#include <xsi_shader.h>

namespace XSI
{

class ImageClip2;

/// A shader that reads an image. Its parameter `tspace_id` names the coordinate set.
class Texture : public Shader
{
public:
    Texture() = default;

    Texture(const CRef& ref) : Shader(ref.As(siTextureID)) {}

    /// Invalid if the shader reads no image.
    ImageClip2 GetImageClip() const;
};

} // namespace XSI
