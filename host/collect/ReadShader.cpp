#include "collect/ReadShader.h"
#include "export/Each.h"

#include "collect/ExportMaterial.h"
#include "collect/ExportTexture.h"
#include "collect/SampleFrames.h"
#include "collect/ShaderPorts.h"
#include "material/Material.h"
#include "pipeline/ExportOptions.h"
#include "pipeline/ExportValues.h"
#include "pipeline/MessageLog.h"

#include <xsi_imageclip2.h>
#include <xsi_shader.h>
#include <xsi_texture.h>
#include <xsi_texturelayer.h>

#include <algorithm>
#include <array>

namespace tq4x
{
namespace
{

constexpr float LeastTranslucency = 0.0001f;

// First of the four curves of each colour.
constexpr std::size_t EmissionCurves = 0;
constexpr std::size_t DiffuseCurves = 8;
constexpr std::size_t SpecularCurves = 12;

bool ReadBool(const XSI::Shader& shader, const char* name, double frame)
{
    return static_cast<bool>(shader.GetParameterValue(name, frame));
}

float ReadFloat(const XSI::Shader& shader, const char* name, double frame)
{
    return static_cast<float>(shader.GetParameterValue(name, frame));
}

bool IsAnimated(const XSI::Shader& shader, std::initializer_list<const char*> names)
{
    return std::any_of(names.begin(), names.end(),
                       [&](const char* name) { return shader.GetParameter(name).IsAnimated(); });
}

Color ReadColor(const XSI::Parameter& parameter, double frame)
{
    const auto component = [&](const char* name) {
        return static_cast<float>(parameter.GetParameter(name).GetValue(frame));
    };
    return {component("red"), component("green"), component("blue"), component("alpha")};
}

/// Opacity by the shader's transparency. A texture on the port leaves 1 and is told by `isConnected`.
float ReadAlpha(const XSI::Shader& shader, double frame, bool& isConnected)
{
    isConnected = false;
    if (!ReadBool(shader, "refract_inuse", frame))
        return 1.0f;
    const XSI::Parameter transparency = shader.GetParameter("transparency");
    isConnected = FindTextureSource("transparency", transparency) != TextureSource::None;
    if (isConnected)
        return 1.0f;
    const char* component = ReadBool(shader, "usealphatrans", frame) ? "alpha" : "red";
    const auto value = static_cast<float>(transparency.GetParameter(component).GetValue(frame));
    return ReadBool(shader, "inverttrans", frame) ? value : 1.0f - value;
}

/// One surface shader on its way into a material.
struct Reader
{
    ExportMaterial& Target;
    const XSI::Shader& Source;
    double Start = GlobalExportValues().ExportStartFrame;

    Material& Record() const { return *Target.Target; }

    bool Flag(const char* name, double frame) const { return ReadBool(Source, name, frame); }

    void AppendSample(std::size_t firstCurve, const Color& color) const
    {
        const std::array<float, 4> values = {color.R, color.G, color.B, color.A};
        for (std::size_t i = 0; i < values.size(); ++i)
            Record().ColorCurves[firstCurve + i].Samples.push_back(values[i]);
    }

    void TakeTexture(const char* port) const
    {
        const XSI::Parameter parameter = Source.GetParameter(port);
        const TextureSource kind = FindTextureSource(port, parameter);
        if (kind == TextureSource::Image)
            Target.AddTextureStage(SourceOf(parameter), false);
        else if (kind == TextureSource::Mix)
            Target.AddMixColor(SourceOf(parameter));
    }

    bool IsConnected(const char* port) const
    {
        return FindTextureSource(port, Source.GetParameter(port)) != TextureSource::None;
    }

    /// Samples colour and opacity of the diffuse component; answers the smallest opacity.
    template<typename ColorAt>
    float SampleDiffuse(ColorAt colorAt) const
    {
        float smallest = 1.0f;
        SampleFrames(GlobalExportValues(), [&](double frame) {
            bool isConnected = false;
            Color color = colorAt(frame);
            color.A = ReadAlpha(Source, frame, isConnected);
            smallest = std::min(smallest, color.A);
            AppendSample(DiffuseCurves, color);
        });
        return smallest;
    }

    void SetDiffuse(Color color, float smallestAlpha) const
    {
        bool isConnected = false;
        color.A = ReadAlpha(Source, Start, isConnected);
        Record().Diffuse = color;
        const bool isTranslucent =
            isConnected || 1.0f - color.A > LeastTranslucency || 1.0f - smallestAlpha > LeastTranslucency;
        if (Target.IsAutoBlend && isTranslucent)
            Record().SetBlendPreset(BlendPreset::Translucent);
    }

    void ReadConstant() const
    {
        const XSI::Parameter port = Source.GetParameter("color");
        if (IsConnected("color")) {
            TakeTexture("color");
            return SetDiffuse({1.0f, 1.0f, 1.0f, 1.0f}, 1.0f);
        }
        float smallest = 1.0f;
        if (IsAnimated(Source, {"color", "refract_inuse", "transparency"}))
            smallest = SampleDiffuse([&](double frame) { return ReadColor(port, frame); });
        SetDiffuse(ReadColor(port, Start), smallest);
    }

    void ReadDiffuse() const
    {
        const XSI::Parameter port = Source.GetParameter("diffuse");
        const bool isConnected = IsConnected("diffuse");
        const auto colorAt = [&](double frame) {
            if (!Flag("diffuse_inuse", frame))
                return Color{};
            return isConnected ? Color{1.0f, 1.0f, 1.0f, 1.0f} : ReadColor(port, frame);
        };
        float smallest = 1.0f;
        if (IsAnimated(Source, {"diffuse_inuse", "diffuse", "refract_inuse", "transparency"}))
            smallest = SampleDiffuse(colorAt);
        if (Flag("diffuse_inuse", Start))
            TakeTexture("diffuse");
        SetDiffuse(colorAt(Start), smallest);
    }

    /// The host's ambient colour is not exported; its textures are.
    void ReadAmbient() const
    {
        if (Flag("diffuse_inuse", Start) && !CurrentOptions().SoftimageIgnoreAmbientTexture)
            TakeTexture("ambient");
        Record().Ambient = {1.0f, 1.0f, 1.0f, 0.0f};
    }

    void ReadReflection(const char* name, bool isAnimated) const
    {
        const XSI::Parameter port = Source.GetParameter(name);
        const bool isConnected = IsConnected(name);
        const auto colorAt = [&](double frame) {
            return Flag("specular_inuse", frame) ? ReadColor(port, frame) : Color{};
        };
        if (!isConnected && isAnimated)
            SampleFrames(GlobalExportValues(),
                         [&](double frame) { AppendSample(SpecularCurves, colorAt(frame)); });
        Record().Specular0 = isConnected ? Color{} : colorAt(Start);
        if (Flag("specular_inuse", Start))
            TakeTexture(name);
    }

    void ReadSpecular() const
    {
        ReadReflection("specular", IsAnimated(Source, {"specular_inuse", "specular"}));
        Record().SpecularScale = 1.0f;
        Record().HasSpecularTable = true;
        const XSI::Parameter shiny = Source.GetParameter("shiny");
        if (shiny.IsValid())
            Record().SpecularExponent = static_cast<float>(shiny.GetValue(Start));
    }

    void ReadGlossy() const
    {
        ReadReflection("glossy", IsAnimated(Source, {"glossy"}));
        Record().HasAnisotropicTables = true;
    }

    void ReadIncandescence() const
    {
        const XSI::Parameter port = Source.GetParameter("incandescence");
        const auto colorAt = [&](double frame) {
            if (!Flag("incand_inuse", frame))
                return Color{};
            const Color color = ReadColor(port, frame);
            const float intensity = ReadFloat(Source, "inc_inten", frame);
            return Color{color.R * intensity, color.G * intensity, color.B * intensity, color.A * intensity};
        };
        if (IsAnimated(Source, {"incand_inuse", "incandescence", "inc_inten"}))
            SampleFrames(GlobalExportValues(),
                         [&](double frame) { AppendSample(EmissionCurves, colorAt(frame)); });
        Record().Emission = SourceOf(port).IsValid() ? Color{} : colorAt(Start);
    }

    /// An image that is a stage already is not taken a second time.
    void ReadTransparency() const
    {
        if (!Flag("refract_inuse", Start))
            return;
        const XSI::Parameter port = Source.GetParameter("transparency");
        const bool isImage = FindTextureSource("transparency", port) == TextureSource::Image;
        if (!isImage || !HasStageOf(XSI::Texture(SourceOf(port)).GetImageClip()))
            TakeTexture("transparency");
    }

    /// A sequence has other file names than its clip, so the clip itself counts too.
    bool HasStageOf(const XSI::ImageClip2& clip) const
    {
        const XSI::CString fileName = clip.GetFileName();
        return std::any_of(Target.Stages.begin(), Target.Stages.end(), [&](const TextureStage& stage) {
            if (stage.Frames.empty())
                return false;
            const ExportTexture& first = *stage.Frames.begin()->second;
            return first.FileName == fileName || first.Object == clip;
        });
    }

    void ReadLayers() const
    {
        for (const XSI::CRef& layer : Each(Source.GetTextureLayers())) {
            if (Target.Stages.size() > MostTextureStages)
                return;
            const XSI::CRef texture = SourceOf(XSI::TextureLayer(layer).GetParameter("color"));
            if (texture.IsA(XSI::siTextureID))
                Target.AddTextureStage(texture, false);
        }
    }
};

/// Readers of each kind of shader, in their order.
struct ShaderRow
{
    const char* ProgID;
    std::array<void (Reader::*)() const, 4> Readers;
};

constexpr std::array<ShaderRow, 5> ShaderTable = {{
    {"Softimage.material-constant.1.0", {&Reader::ReadConstant, &Reader::ReadIncandescence}},
    {"Softimage.material-lambert.1.0",
     {&Reader::ReadDiffuse, &Reader::ReadAmbient, &Reader::ReadIncandescence}},
    {"Softimage.material-phong.1.0",
     {&Reader::ReadDiffuse, &Reader::ReadAmbient, &Reader::ReadSpecular, &Reader::ReadIncandescence}},
    {"Softimage.material-blinn.1.0",
     {&Reader::ReadDiffuse, &Reader::ReadAmbient, &Reader::ReadSpecular, &Reader::ReadIncandescence}},
    {"Softimage.material-ward.1.0",
     {&Reader::ReadDiffuse, &Reader::ReadAmbient, &Reader::ReadGlossy, &Reader::ReadIncandescence}},
}};

} // namespace

void ReadShader(ExportMaterial& material, const XSI::Shader& shader)
{
    const Reader reader{material, shader};
    const auto* row = std::find_if(ShaderTable.begin(), ShaderTable.end(), [&](const ShaderRow& candidate) {
        return shader.GetProgID() == candidate.ProgID;
    });
    if (row == ShaderTable.end())
        ReportMessage(MessageCode::ShaderNotSupported, shader.GetName().GetAsciiString());
    else
        for (const auto read : row->Readers)
            if (read != nullptr)
                (reader.*read)();
    reader.ReadTransparency();
    reader.ReadLayers();
}

} // namespace tq4x
