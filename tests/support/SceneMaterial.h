#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "scene/CreateMaterials.h"
#include "scene/CreateParameters.h"
#include "scene/ImageData.h"
#include "support/SceneNode.h"

namespace tq4x::test
{

/// A picture of one byte value, or of other sizes and channels.
inline std::shared_ptr<XSI::ImageData> MakePicture(LONG width, LONG height, LONG channels = 4,
                                                   LONG channelSize = 1, int value = 255)
{
    auto picture = std::make_shared<XSI::ImageData>();
    picture->Width = width;
    picture->Height = height;
    picture->Channels = channels;
    picture->ChannelSize = channelSize;
    picture->Pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                               static_cast<std::size_t>(channels * channelSize),
                           static_cast<std::byte>(value));
    return picture;
}

/// A material with its surface shader in the making. Calls can be chained.
class SceneMaterial
{
public:
    /// `shader` is the middle of the ProgID: "phong", "lambert", "constant", ...; any other full ProgID as it
    /// is.
    SceneMaterial(std::string_view name, std::string_view shader)
        : m_material(XSI::Host::CreateMaterial(name)),
          m_shader(XSI::Host::CreateSurfaceShader(m_material, ProgIdOf(shader)))
    {}

    operator const XSI::CRef&() const { return m_material.GetRef(); }

    const XSI::Material& Object() const { return m_material; }

    const XSI::Shader& Shader() const { return m_shader; }

    SceneMaterial& Set(std::string_view port, const XSI::CValue& value)
    {
        XSI::Host::AddParameter(m_shader, port, value);
        return *this;
    }

    SceneMaterial& Color(std::string_view port, double red, double green, double blue, double alpha = 1.0)
    {
        XSI::Host::SetColor(PortOf(port), red, green, blue, alpha);
        return *this;
    }

    /// Animates a number, or one component of a colour.
    SceneMaterial& Animate(std::string_view port, const Keys& keys)
    {
        XSI::Host::SetCurve(PortOf(port), {keys});
        return *this;
    }

    SceneMaterial& Animate(std::string_view port, std::string_view component, const Keys& keys)
    {
        XSI::Host::SetCurve(PortOf(port).GetParameter(XSI::Host::FromUtf8(component)), {keys});
        return *this;
    }

    /// Connects an image to a port. The texture is named after the file; the picture is 8 x 8 and white.
    SceneMaterial& Image(std::string_view port, std::string_view file, std::string_view coordinateSet)
    {
        return Connect(port, MakeTexture(file, coordinateSet));
    }

    SceneMaterial& Connect(std::string_view port, const XSI::CRef& shader)
    {
        XSI::Host::ConnectShader(PortOf(port), shader);
        return *this;
    }

    SceneMaterial& Layer(std::string_view file, std::string_view coordinateSet)
    {
        XSI::Host::AddTextureLayer(m_shader, file, MakeTexture(file, coordinateSet));
        return *this;
    }

    /// Connects an image to the `normal` port by the two shaders that stand between them.
    SceneMaterial& NormalMap(std::string_view file, std::string_view coordinateSet)
    {
        using namespace XSI::Host;
        const XSI::Shader bump = CreateShader(m_material, "Softimage.normal.1.0", "normal");
        const XSI::Shader map = CreateShader(m_material, "Softimage.normalmap.1.0", "normalmap");
        ConnectShader(m_material.GetParameter(L"normal"), bump);
        ConnectShader(bump.GetParameter(L"Map"), map);
        ConnectShader(map.GetParameter(L"NormalMap"), MakeTexture(file, coordinateSet));
        return *this;
    }

    /// An image shader of this material that is not connected to anything yet.
    XSI::Texture MakeTexture(std::string_view file, std::string_view coordinateSet)
    {
        const XSI::ImageClip2 clip = XSI::Host::CreateImageClip(file, file);
        XSI::Host::SetPixels(clip, MakePicture(8, 8));
        return XSI::Host::CreateTexture(m_material, file, clip, coordinateSet);
    }

    SceneMaterial& Marked(std::string_view propertyType, Values values)
    {
        AddMarks(m_material, propertyType, values);
        return *this;
    }

private:
    static std::string ProgIdOf(std::string_view shader)
    {
        const bool isWhole = shader.find('.') != std::string_view::npos;
        return isWhole ? std::string(shader) : "Softimage.material-" + std::string(shader) + ".1.0";
    }

    XSI::Parameter PortOf(std::string_view port) const
    {
        return m_shader.GetParameter(XSI::Host::FromUtf8(port));
    }

    XSI::Material m_material;
    XSI::Shader m_shader;
};

} // namespace tq4x::test
