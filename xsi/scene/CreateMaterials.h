#pragma once

#include <memory>
#include <string_view>

#include <xsi_imageclip2.h>
#include <xsi_material.h>
#include <xsi_materiallibrary.h>
#include <xsi_parameter.h>
#include <xsi_shader.h>
#include <xsi_texture.h>
#include <xsi_texturelayer.h>

#include "scene/Records.h"

namespace XSI::Host
{

MaterialLibrary CreateMaterialLibrary(std::string_view name);

/// A material with the ports `surface` and `normal`, at the end of the first library or of the one that is
/// named.
Material CreateMaterial(std::string_view name, const MaterialLibrary& library = MaterialLibrary());

/// A shader that belongs to a material or light, with the ports of its kind at the values of KnownShaders.h;
/// of an unknown kind it has none. Kinds that read an image give a Texture. An output parameter "out" comes
/// with each.
Shader CreateShader(const CRef& owner, std::string_view progId, std::string_view name);

/// A shader of that kind, connected to the material's `surface` port.
Shader CreateSurfaceShader(const CRef& material, std::string_view progId);

/// An image shader that shows a clip by a coordinate set, not connected to anything yet.
Texture CreateTexture(const CRef& owner, std::string_view name, const ImageClip2& clip,
                      std::string_view coordinateSet);

/// A layer on top of the shader's layers, with the texture on its `color`.
TextureLayer AddTextureLayer(const Shader& shader, std::string_view name, const CRef& texture);

/// A clip with a still image: its clip in and out are 0. The parameter `SourceFileName` is the file name.
ImageClip2 CreateImageClip(std::string_view name, std::string_view fileName);
void SetPixels(const ImageClip2& clip, std::shared_ptr<const ImageData> pixels);

/// Lets a function give the pixels when they are asked for, so that files are read only if they are needed.
void SetPixelSource(const ImageClip2& clip, ImageSource source);

/// Makes the clip a sequence: the pattern, "name[1..30;3].tga", and its place in time.
void SetSequence(const ImageClip2& clip, std::string_view pattern, double clipIn, double clipOut,
                 double startOffset = 1.0, double scale = 1.0);

} // namespace XSI::Host
