#include <xsi_material.h>

#include <xsi_imageclip2.h>
#include <xsi_materiallibrary.h>
#include <xsi_shader.h>
#include <xsi_texture.h>

#include "scene/Session.h"
#include "scene/Text.h"

namespace XSI
{

MaterialLibrary Material::GetLibrary() const
{
    return GetParent();
}

CRefArray Material::GetUsedBy() const
{
    const auto* material = Host::Objects().Find<Host::MaterialObject>(GetRef());
    return material != nullptr ? Host::RefsOf(Host::Objects(), material->UsedBy.InOrder()) : CRefArray();
}

CRefArray MaterialLibrary::GetItems() const
{
    const auto* library = Host::Objects().Find<Host::LibraryObject>(GetRef());
    return library != nullptr ? Host::RefsOf(Host::Objects(), library->Materials) : CRefArray();
}

CString Shader::GetProgID() const
{
    const auto* shader = Host::Objects().Find<Host::ShaderObject>(GetRef());
    return shader != nullptr ? Host::FromUtf8(shader->ProgId) : CString();
}

CRefArray Shader::GetTextureLayers() const
{
    const auto* shader = Host::Objects().Find<Host::ShaderObject>(GetRef());
    return shader != nullptr ? Host::RefsOf(Host::Objects(), shader->Layers) : CRefArray();
}

ImageClip2 Texture::GetImageClip() const
{
    const auto* shader = Host::Objects().Find<Host::ShaderObject>(GetRef());
    return shader != nullptr ? CRef::FromObjectID(shader->Clip) : CRef();
}

} // namespace XSI
