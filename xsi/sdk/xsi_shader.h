#pragma once

#include <xsi_projectitem.h>

namespace XSI
{

/// A node of a shading graph. Its parameters are its ports.
class Shader : public ProjectItem
{
public:
    Shader() = default;

    Shader(const CRef& ref) : ProjectItem(ref.As(siShaderID)) {}

    /// Names the kind of shader, "Softimage.material-phong.1.0" for example.
    CString GetProgID() const;

    /// The texture layers, first to last.
    CRefArray GetTextureLayers() const;
};

} // namespace XSI
