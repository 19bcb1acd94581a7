#pragma once

#include <xsi_parameter.h>
#include <xsi_ref.h>
#include <xsi_string.h>

#include <string_view>

namespace tq4x
{

/// What a port of a shader is connected to, as far as the exporter understands it.
enum class TextureSource
{
    None,
    Image,
    Mix,
    VertexColor,
};

/// The shader that drives a parameter: the owner of the output that it is connected to, or the source itself.
/// Invalid for a parameter without a source.
XSI::CRef SourceOf(const XSI::Parameter& parameter);

/// The kind of a port's source; `None` for sources that do not count on this port, and for ports of other
/// names.
TextureSource FindTextureSource(std::string_view port, const XSI::Parameter& parameter);

/// True if a file name has this ending, in any case.
bool EndsWithNoCase(const XSI::CString& text, const XSI::CString& ending);

} // namespace tq4x
