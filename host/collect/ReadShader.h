#pragma once

namespace XSI
{
class Shader;
}

namespace tq4x
{

class ExportMaterial;

/// Reads a surface shader into a material: colours and their animation, opacity, texture stages. The shader's
/// kind decides which colours there are; of an unknown kind (with a message) only transparency and layers are
/// read.
void ReadShader(ExportMaterial& material, const XSI::Shader& shader);

} // namespace tq4x
