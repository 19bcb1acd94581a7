#include "collect/ShaderPorts.h"

#include <xsi_shader.h>

#include <algorithm>
#include <array>

namespace tq4x
{
namespace
{

struct SourceRow
{
    const char* ProgID;
    TextureSource Kind;
};

constexpr std::array<SourceRow, 4> SourceTable = {{
    {"Softimage.txt2d-image-explicit.1.0", TextureSource::Image},
    {"Softimage.sib_color_2mix.1.0", TextureSource::Mix},
    {"Softimage.sib_color_8mix.1.0", TextureSource::Mix},
    {"Softimage.sib_vertex_color_alpha.1.0", TextureSource::VertexColor},
}};

/// What a port takes: all four sources, the images and mixes, or images alone.
struct PortRow
{
    std::string_view Name;
    TextureSource Last; ///< kinds up to this one count
};

constexpr std::array<PortRow, 7> PortTable = {{
    {"diffuse", TextureSource::VertexColor},
    {"color", TextureSource::VertexColor},
    {"transparency", TextureSource::VertexColor},
    {"ambient", TextureSource::Mix},
    {"specular", TextureSource::Mix},
    {"glossy", TextureSource::Mix},
    {"NormalMap", TextureSource::Image},
}};

TextureSource KindOf(const XSI::CString& progID)
{
    for (const SourceRow& row : SourceTable)
        if (progID == row.ProgID)
            return row.Kind;
    return TextureSource::None;
}

} // namespace

XSI::CRef SourceOf(const XSI::Parameter& parameter)
{
    const XSI::CRef source = parameter.GetSource();
    return source.GetClassID() == XSI::siShaderParameterID ? XSI::SIObject(source).GetParent() : source;
}

TextureSource FindTextureSource(std::string_view port, const XSI::Parameter& parameter)
{
    const auto* row = std::find_if(PortTable.begin(), PortTable.end(),
                                   [&](const PortRow& candidate) { return candidate.Name == port; });
    const XSI::Shader source(SourceOf(parameter));
    if (row == PortTable.end() || !source.IsValid())
        return TextureSource::None;
    const TextureSource kind = KindOf(source.GetProgID());
    return kind <= row->Last ? kind : TextureSource::None;
}

bool EndsWithNoCase(const XSI::CString& text, const XSI::CString& ending)
{
    if (text.Length() < ending.Length())
        return false;
    return text.GetSubString(text.Length() - ending.Length()).IsEqualNoCase(ending);
}

} // namespace tq4x
