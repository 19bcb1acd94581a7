#include "ExpectedMaterial.h"

#include <xsi_shader.h>

#include <algorithm>
#include <numbers>

namespace tq4x::test
{
namespace
{

ApproxColor ColorOf(const XSI::Parameter& color, double frame)
{
    ApproxColor components;
    const char* const names[] = {"red", "green", "blue", "alpha"};
    for (std::size_t i = 0; i < components.size(); ++i)
        components[i] = Narrowed(static_cast<double>(color.GetParameter(names[i]).GetValue(frame)));
    return components;
}

bool IsConnected(const XSI::Shader& shader, const char* port)
{
    return SourceOf(shader.GetParameter(port)).IsA(XSI::siShaderID);
}

Approx AlphaAt(const XSI::Shader& shader, double frame)
{
    if (!FlagAt(shader, "refract_inuse", frame) || IsConnected(shader, "transparency"))
        return {1.0, 0.0};
    const char* component = FlagAt(shader, "usealphatrans", frame) ? "alpha" : "red";
    const double value =
        static_cast<double>(shader.GetParameter("transparency").GetParameter(component).GetValue(frame));
    return FlagAt(shader, "inverttrans", frame) ? Narrowed(value) : Approx{1.0, 0.0} - Narrowed(value);
}

bool IsConstantShader(const XSI::Shader& shader)
{
    return shader.GetProgID() == "Softimage.material-constant.1.0";
}

constexpr ApproxColor White = {Approx{1, 0}, Approx{1, 0}, Approx{1, 0}, Approx{1, 0}};

ApproxColor DiffuseAt(const XSI::Shader& shader, double frame)
{
    const char* port = IsConstantShader(shader) ? "color" : "diffuse";
    ApproxColor color = IsConnected(shader, port) ? White : ColorOf(shader.GetParameter(port), frame);
    if (!IsConstantShader(shader) && !FlagAt(shader, "diffuse_inuse", frame))
        color = {};
    color[3] = AlphaAt(shader, frame);
    return color;
}

ApproxColor SpecularAt(const XSI::Shader& shader, double frame)
{
    const bool isWard = shader.GetProgID() == "Softimage.material-ward.1.0";
    const char* port = isWard ? "glossy" : "specular";
    const bool isDark = !shader.GetParameter(port).IsValid() || IsConnected(shader, port) ||
                        !FlagAt(shader, "specular_inuse", frame);
    return isDark ? ApproxColor{} : ColorOf(shader.GetParameter(port), frame);
}

ApproxColor EmissionAt(const XSI::Shader& shader, double frame)
{
    if (!FlagAt(shader, "incand_inuse", frame) || IsConnected(shader, "incandescence"))
        return {};
    ApproxColor color = ColorOf(shader.GetParameter("incandescence"), frame);
    for (Approx& component : color)
        component = component * Narrowed(NumberAt(shader, "inc_inten", frame));
    return color;
}

} // namespace

ExpectedColors ColorsAt(const HostMaterial& material, double frame, double start)
{
    const XSI::Shader& shader = material.Surface;
    // Below a texture a constant shader's colour is not sampled, its opacity with it.
    const bool isStill = IsConstantShader(shader) && IsConnected(shader, "color");
    ExpectedColors colors;
    colors.Emission = EmissionAt(shader, frame);
    colors.Diffuse = DiffuseAt(shader, isStill ? start : frame);
    colors.Specular0 = SpecularAt(shader, frame);
    if (!IsConstantShader(shader))
        colors.Ambient = {Approx{1, 0}, Approx{1, 0}, Approx{1, 0}, {}};
    return colors;
}

bool IsTranslucent(const HostMaterial& material, const std::vector<SampledFrame>& frames)
{
    constexpr double least = 0.0001;
    const XSI::Shader& shader = material.Surface;
    const double start = frames.front().Host;
    if (FlagAt(shader, "refract_inuse", start) && IsConnected(shader, "transparency"))
        return true;
    return std::ranges::any_of(frames, [&](const SampledFrame& frame) {
        return 1.0 - ColorsAt(material, frame.Host, start).Diffuse[3].Value > least;
    });
}

std::optional<int> CommonSetNumber(const HostScene& host, const HostMaterial& material,
                                   const HostStage& stage)
{
    std::optional<int> number;
    for (const int user : material.Users) {
        const std::vector<std::string>& sets = host.Nodes[static_cast<std::size_t>(user)].UvSets;
        const auto place = static_cast<int>(std::ranges::find(sets, stage.CoordinateSet) - sets.begin());
        if (place == static_cast<int>(sets.size()) || (number && *number != place))
            return std::nullopt;
        number = place;
    }
    return number;
}

ExpectedProjection ProjectionAt(const HostScene& host, const HostMaterial& material, const HostStage& stage,
                                double frame)
{
    ExpectedProjection projection;
    if (!CommonSetNumber(host, material, stage))
        return projection;
    const XSI::X3DObject& mesh = host.Nodes[static_cast<std::size_t>(material.Users.front())].Object;
    const auto read = [&](const char* name, double otherwise) {
        const XSI::Parameter parameter = ProjectionOf(mesh, stage.CoordinateSet, name);
        return Narrowed(parameter.IsValid() ? static_cast<double>(parameter.GetValue(frame)) : otherwise);
    };
    const auto inverse = [](const Approx& scale) {
        return std::abs(scale.Value) < 1e-6 ? scale : Approx{1.0, 0.0} / scale;
    };
    projection.ScaleS = inverse(read("projsclu", 1.0));
    projection.ScaleT = inverse(read("projsclv", 1.0));
    projection.Rotate = read("projrotw", 0.0) * Narrowed(std::numbers::pi / 180.0);
    projection.TranslateS = read("projtrsu", 0.0);
    projection.TranslateT = read("projtrsv", 0.0);
    return projection;
}

} // namespace tq4x::test
