#include "scene/KnownShaders.h"

namespace XSI::Host
{

namespace
{

using enum ShaderPort::Kind;

constexpr ShaderPort ConstantPorts[] = {
    {"color", Color, 0.7},
};

constexpr ShaderPort DiffusePorts[] = {
    {"diffuse_inuse", Flag, 1.0},
    {"ambient", Color, 0.3},
    {"diffuse", Color, 0.7},
};

constexpr ShaderPort PhongPorts[] = {
    {"specular_inuse", Flag, 1.0},
    {"specular", Color, 1.0},
    {"shiny", Number, 50.0},
};

constexpr ShaderPort BlinnPorts[] = {
    {"specular_inuse", Flag, 1.0},
    {"specular", Color, 1.0},
};

constexpr ShaderPort WardPorts[] = {
    {"specular_inuse", Flag, 1.0},
    {"glossy", Color, 1.0},
};

constexpr ShaderPort TransparencyPorts[] = {
    {"refract_inuse", Flag, 1.0},
    {"transparency", Color, 0.0, 0.0},
    {"usealphatrans", Flag, 0.0},
    {"inverttrans", Flag, 0.0},
};

constexpr ShaderPort IncandescencePorts[] = {
    {"incand_inuse", Flag, 1.0},
    {"incandescence", Color, 0.0, 0.0},
    {"inc_inten", Number, 1.0},
};

constexpr ShaderPort ImagePorts[] = {
    {"tspace_id", Text},
};

constexpr ShaderPort TwoMixPorts[] = {
    {"base_color", Color, 0.0},
    {"color1", Color, 0.0},
    {"mixersize", Integer, 2.0},
};

constexpr ShaderPort EightMixPorts[] = {
    {"base_color", Color, 0.0}, {"color1", Color, 0.0}, {"color2", Color, 0.0},
    {"color3", Color, 0.0},     {"color4", Color, 0.0}, {"color5", Color, 0.0},
    {"color6", Color, 0.0},     {"color7", Color, 0.0}, {"mixersize", Integer, 8.0},
};

constexpr ShaderPort VertexColorPorts[] = {
    {"vprop", Text},
};

constexpr ShaderPort NormalPorts[] = {
    {"Map", Color, 0.0},
};

constexpr ShaderPort NormalMapPorts[] = {
    {"NormalMap", Color, 0.5},
};

constexpr ShaderPort LightPorts[] = {
    {"color", Color, 1.0},
    {"intensity", Number, 0.75},
    {"spread", Number, 5.0},
};

constexpr KnownShader Shaders[] = {
    {"Softimage.material-constant.1.0", false, {ConstantPorts, TransparencyPorts, IncandescencePorts}},
    {"Softimage.material-lambert.1.0", false, {DiffusePorts, TransparencyPorts, IncandescencePorts}},
    {"Softimage.material-phong.1.0",
     false,
     {DiffusePorts, PhongPorts, TransparencyPorts, IncandescencePorts}},
    {"Softimage.material-blinn.1.0",
     false,
     {DiffusePorts, BlinnPorts, TransparencyPorts, IncandescencePorts}},
    {"Softimage.material-ward.1.0", false, {DiffusePorts, WardPorts, TransparencyPorts, IncandescencePorts}},
    {"Softimage.txt2d-image-explicit.1.0", true, {ImagePorts}},
    {"Softimage.sib_color_2mix.1.0", false, {TwoMixPorts}},
    {"Softimage.sib_color_8mix.1.0", false, {EightMixPorts}},
    {"Softimage.sib_vertex_color_alpha.1.0", false, {VertexColorPorts}},
    {"Softimage.normal.1.0", false, {NormalPorts}},
    {"Softimage.normalmap.1.0", false, {NormalMapPorts}},
    {"Softimage.soft_light.1.0", false, {LightPorts}},
};

} // namespace

const KnownShader* FindKnownShader(std::string_view progId)
{
    for (const KnownShader& shader : Shaders) {
        if (shader.ProgId == progId) {
            return &shader;
        }
    }
    return nullptr;
}

} // namespace XSI::Host
