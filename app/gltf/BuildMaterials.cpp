#include <array>
#include <cmath>

#include <xsi_parameter.h>
#include <xsi_shader.h>
#include <xsi_texture.h>

#include "gltf/FitPicture.h"
#include "gltf/LegalHostName.h"
#include "gltf/PictureSource.h"
#include "gltf/SceneBuild.h"
#include "gltf/Shading.h"
#include "scene/CreateMaterials.h"
#include "scene/CreateParameters.h"
#include "scene/Session.h"

namespace tq4x::gltf
{
namespace
{

namespace Host = XSI::Host;

constexpr const char* PhongShader = "Softimage.material-phong.1.0";
constexpr const char* ConstantShader = "Softimage.material-constant.1.0";
constexpr const char* AttributePage = "TQ4X_ForPennonMaterialAttrProp";
constexpr std::int64_t CullingNever = 3;   // of TQ4X_ForPennonMatAttrCullFace
constexpr std::int64_t BlendAlphaTest = 1; // of TQ4X_ForPennonMatAttrBlendMode
constexpr double OpaqueEnough = 0.0001;    // the exporter's own limit for what counts as opaque
constexpr std::array<const char*, 3> ColorNames = {"red", "green", "blue"};

/// The host's order of rows is from the bottom up.
std::shared_ptr<const XSI::ImageData> ToHostImage(const Picture& picture)
{
    auto image = std::make_shared<XSI::ImageData>();
    image->Width = static_cast<LONG>(picture.Width);
    image->Height = static_cast<LONG>(picture.Height);
    image->ChannelSize = static_cast<LONG>(picture.ChannelSize);
    image->Pixels.resize(picture.Pixels.size());
    const std::size_t rowSize = picture.Pixels.size() / picture.Height;
    const auto* const bytes = reinterpret_cast<const std::byte*>(picture.Pixels.data());
    for (std::size_t y = 0; y < picture.Height; ++y) {
        std::copy_n(bytes + y * rowSize, rowSize, image->Pixels.data() + (picture.Height - 1 - y) * rowSize);
    }
    return image;
}

/// Decodes a picture when it is asked for, so that an export without textures reads none. It is kept only as
/// long as somebody uses it.
Host::ImageSource MakeImageSource(const SceneBuild& build, std::size_t image, const std::string& name)
{
    struct State
    {
        std::weak_ptr<const XSI::ImageData> Last;
        bool HasFailed = false;
    };

    return [document = build.Source, fit = build.Options.FitTextures, image, name,
            state = std::make_shared<State>()](double) -> std::shared_ptr<const XSI::ImageData> {
        if (auto last = state->Last.lock(); last || state->HasFailed) {
            return last;
        }
        const DecodedImage decoded = ReadPicture(*document, image);
        if (!decoded.Error.empty()) {
            state->HasFailed = true;
            Host::Session::Current().Log(XSI::siErrorMsg,
                                         "The picture " + name + " can't be used. " + decoded.Error);
            return nullptr;
        }
        auto made = ToHostImage(fit ? FitPicture(decoded.Content) : decoded.Content);
        state->Last = made;
        return made;
    };
}

/// One clip for each picture, made when first used.
class Clips
{
public:
    explicit Clips(const SceneBuild& build)
        : m_build(build),
          m_names(NamePictures(*build.Source)),
          m_clips(build.Source->Images.size())
    {}

    [[nodiscard]] XSI::ImageClip2 Get(std::size_t image)
    {
        if (!m_clips[image].IsValid()) {
            const std::string& file = m_names[image];
            m_clips[image] = Host::CreateImageClip(LegalHostName(StemOf(file)), file);
            if (!IsTgaFile(m_build.Source->Images[image])) {
                Host::SetPixelSource(m_clips[image], MakeImageSource(m_build, image, file));
            }
        }
        return m_clips[image];
    }

    [[nodiscard]] std::string NameOf(std::size_t image) const
    {
        return LegalHostName(StemOf(m_names[image]));
    }

private:
    static std::string StemOf(const std::string& file) { return std::filesystem::path(file).stem().string(); }

    const SceneBuild& m_build;
    std::vector<std::string> m_names;
    std::vector<XSI::ImageClip2> m_clips;
};

/// Makes one material of the host.
class MaterialBuilder
{
public:
    MaterialBuilder(SceneBuild& build, Clips& clips, std::size_t index)
        : m_build(build),
          m_clips(clips),
          m_index(index),
          m_source(build.Source->Materials[index])
    {}

    [[nodiscard]] XSI::Material Build()
    {
        m_name = HostName(MaterialName(*m_build.Source, m_index), m_build.Remarks);
        m_material = Host::CreateMaterial(m_name);
        m_shader = Host::CreateSurfaceShader(m_material, m_source.Unlit ? ConstantShader : PhongShader);
        const Shading shading = ComputeShading(m_source, Finish());
        SetBaseColor(shading);
        SetTransparency(shading);
        SetEmission(shading);
        if (!m_source.Unlit) {
            SetHighlight(shading);
        }
        ConnectNormals();
        NoteLeftOut();
        return m_material;
    }

private:
    void Note(const std::string& text) { m_build.Remarks.push_back({NoteSeverity::Warning, m_name, text}); }

    [[nodiscard]] XSI::Parameter Port(const char* name) const { return m_shader.GetParameter(name); }

    void SetNumber(const char* name, double value) { m_shader.PutParameterValue(name, value); }

    /// Lets a track move the components of a colour port.
    void AnimateColor(const char* port, const AnimationTracks::Track& track)
    {
        for (std::size_t i = 0; track && i < ColorNames.size(); ++i) {
            Host::SetCurveFunction(Port(port).GetParameter(ColorNames[i]), ComponentOf(track, i));
        }
    }

    /// An image shader for a texture; invalid if its picture is in a form that is not read.
    XSI::Texture MakeTexture(const TextureUse& use, TextureSlot slot)
    {
        const Index image = m_build.Source->Textures[use.Texture].Source;
        if (!image) {
            Note("A texture has its picture in a form that is not read; it is left out.");
            return {};
        }
        const Index set = m_build.Sets.Find(m_index, slot);
        const std::string setName = set ? m_build.Sets.Sets[*set].Name : std::string();
        if (set && !ComputeProjection(m_build.Sets.Sets[*set].Transform).IsExact) {
            Note("The transform of a texture both turns it and scales its sides differently; it is only "
                 "approximated.");
        }
        NoteMirroring(use);
        return Host::CreateTexture(m_material, m_clips.NameOf(*image), m_clips.Get(*image), setName);
    }

    void NoteMirroring(const TextureUse& use)
    {
        const Index sampler = m_build.Source->Textures[use.Texture].Sampler;
        if (sampler && (m_build.Source->Samplers[*sampler].WrapS == Wrap::MirroredRepeat ||
                        m_build.Source->Samplers[*sampler].WrapT == Wrap::MirroredRepeat)) {
            Note("A texture that repeats mirrored will repeat plainly.");
        }
    }

    /// Mean metalness and roughness; of a picture that can't be read nothing is known, so its factors stand
    /// alone.
    [[nodiscard]] SurfaceFinish Finish() const
    {
        const auto& use = m_source.MetallicRoughnessTexture;
        const Index image = use ? m_build.Source->Textures[use->Texture].Source : Index();
        if (!image || m_source.Unlit) {
            return ComputeFinish(m_source, nullptr);
        }
        const DecodedImage decoded = ReadPicture(*m_build.Source, *image);
        return ComputeFinish(m_source, decoded.Error.empty() ? &decoded.Content : nullptr);
    }

    void SetBaseColor(const Shading& shading)
    {
        const char* const port = m_source.Unlit ? "color" : "diffuse";
        const auto& color = shading.Diffuse;
        Host::SetColor(Port(port), color[0], color[1], color[2]);
        AnimateColor(port, m_build.Tracks.Find(AnimatedProperty::BaseColor, m_index));
        if (!m_source.BaseColorTexture) {
            return;
        }
        m_baseTexture = MakeTexture(*m_source.BaseColorTexture, TextureSlot::BaseColor);
        if (m_baseTexture.IsValid()) {
            Host::ConnectShader(Port(port), m_baseTexture);
            if (color != std::array<double, 3>{1.0, 1.0, 1.0}) {
                Note("The colour that multiplies the base texture is not exported.");
            }
        }
    }

    /// Alpha of the colour goes to the transparency's value. Where it is 1 the picture's alpha is what makes
    /// the material translucent, so the picture is connected: the exporter looks at nothing else of it.
    void SetTransparency(const Shading& shading)
    {
        const auto track = m_build.Tracks.Find(AnimatedProperty::BaseColor, m_index);
        const double value = shading.Transparency;
        m_shader.PutParameterValue("refract_inuse", m_source.Alpha != AlphaMode::Opaque);
        Host::SetColor(Port("transparency"), value, value, value);
        if (m_source.Alpha == AlphaMode::Opaque) {
            return;
        }
        for (std::size_t i = 0; track && i < ColorNames.size(); ++i) {
            Host::SetCurveFunction(
                Port("transparency").GetParameter(ColorNames[i]),
                [alpha = ComponentOf(track, 3)](double frame) { return 1.0 - alpha(frame); });
        }
        const bool isByPicture = m_source.Alpha == AlphaMode::Blend && value <= OpaqueEnough && !track;
        if (isByPicture && m_baseTexture.IsValid()) {
            Host::ConnectShader(Port("transparency"), m_baseTexture);
        }
    }

    void SetEmission(const Shading& shading)
    {
        const auto& glow = shading.Emission;
        Host::SetColor(Port("incandescence"), glow[0], glow[1], glow[2], 0.0);
        SetNumber("inc_inten", shading.EmissionScale);
        AnimateColor("incandescence", m_build.Tracks.Find(AnimatedProperty::Emissive, m_index));
        if (const auto track = m_build.Tracks.Find(AnimatedProperty::EmissiveStrength, m_index)) {
            Host::SetCurveFunction(Port("inc_inten"), ComponentOf(track, 0));
        }
        if (m_source.EmissiveTexture) {
            const XSI::Texture texture = MakeTexture(*m_source.EmissiveTexture, TextureSlot::Emissive);
            if (texture.IsValid()) {
                // The exporter takes no glow from a connected port, which is right: the picture is mostly
                // black.
                Host::ConnectShader(Port("incandescence"), texture);
                Note("The emissive texture is not exported.");
            }
        }
    }

    void SetHighlight(const Shading& shading)
    {
        Host::SetColor(Port("specular"), shading.Specular[0], shading.Specular[1], shading.Specular[2]);
        SetNumber("shiny", shading.Shininess);
    }

    void ConnectNormals()
    {
        if (!m_source.NormalTexture) {
            return;
        }
        const XSI::Texture texture = MakeTexture(*m_source.NormalTexture, TextureSlot::Normal);
        if (!texture.IsValid()) {
            return;
        }
        const XSI::Shader map = Host::CreateShader(m_material, "Softimage.normalmap.1.0", "Normal_Map");
        const XSI::Shader normal = Host::CreateShader(m_material, "Softimage.normal.1.0", "Normal");
        Host::ConnectShader(map.GetParameter("NormalMap"), texture);
        Host::ConnectShader(normal.GetParameter("Map"), map);
        Host::ConnectShader(m_material.GetParameter("normal"), normal);
    }

    void NoteLeftOut()
    {
        if (m_source.OcclusionTexture) {
            Note("The occlusion texture is not exported.");
        }
        if (m_source.Alpha == AlphaMode::Mask && m_source.AlphaCutoff != 0.5) {
            Note("The alpha cutoff is not exported; pixels above one half are shown.");
        }
    }

    SceneBuild& m_build;
    Clips& m_clips;
    std::size_t m_index;
    const Material& m_source;
    std::string m_name;
    XSI::Material m_material;
    XSI::Shader m_shader;
    XSI::Texture m_baseTexture;
};

/// What the host's shaders have no place for goes to the plug-in's page, if the plug-in is there.
void SetAttributes(const SceneBuild& build, const PageParameters& pages)
{
    const auto set = [&pages](const XSI::Material& material, const char* parameter, std::int64_t value) {
        if (pages.FindType(parameter) == AttributePage) {
            (void)pages.Set(material, AttributePage, parameter, JsonValue{value}); // fits the page's limits
        }
    };
    for (std::size_t i = 0; i < build.Materials.size(); ++i) {
        const Material& source = build.Source->Materials[i];
        if (source.DoubleSided) {
            set(build.Materials[i], "TQ4X_ForPennonMatAttrCullFace", CullingNever);
        }
        if (source.Alpha == AlphaMode::Mask) {
            set(build.Materials[i], "TQ4X_ForPennonMatAttrBlendMode", BlendAlphaTest);
        }
    }
}

} // namespace

void BuildMaterials(SceneBuild& build, const PageParameters& pages)
{
    Clips clips(build);
    for (std::size_t i = 0; i < build.Source->Materials.size(); ++i) {
        build.Materials.push_back(MaterialBuilder(build, clips, i).Build());
    }
    SetAttributes(build, pages);
}

XSI::Material MaterialOf(SceneBuild& build, const Index& material)
{
    if (material) {
        return build.Materials[*material];
    }
    if (!build.DefaultMaterial.IsValid()) {
        build.DefaultMaterial = Host::CreateMaterial("DefaultMaterial");
        XSI::Shader shader = Host::CreateSurfaceShader(build.DefaultMaterial, PhongShader);
        const Shading shading = ComputeShading({}, {0.0, 1.0}); // a metal it would be by the letter
        Host::SetColor(shader.GetParameter("diffuse"), 1.0, 1.0, 1.0);
        Host::SetColor(shader.GetParameter("specular"), shading.Specular[0], shading.Specular[1],
                       shading.Specular[2]);
        shader.PutParameterValue("shiny", shading.Shininess);
        shader.PutParameterValue("refract_inuse", false);
    }
    return build.DefaultMaterial;
}

} // namespace tq4x::gltf
