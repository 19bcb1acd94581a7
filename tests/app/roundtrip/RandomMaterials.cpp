#include "RandomMaterials.h"

#include "RandomCurves.h"
#include "scene/CreateMaterials.h"
#include "scene/CreateParameters.h"
#include "support/SceneMaterial.h"

#include <array>

namespace tq4x::test
{
namespace
{

constexpr int MostTextures = 3;

class MaterialMaker
{
public:
    MaterialMaker(RandomDraw& draw, const std::vector<XSI::ImageClip2>& clips,
                  const std::vector<std::string>& sets, const TimeLine& time, int number)
        : m_draw(draw),
          m_clips(clips),
          m_sets(sets),
          m_time(time),
          m_kind(draw.Of<std::string>({"constant", "lambert", "phong", "blinn", "ward"})),
          m_material(
              draw.Of<std::string>({"paint", "paint", "rust", "old wood", "m" + std::to_string(number)}),
              m_kind)
    {}

    XSI::Material Make()
    {
        for (const char* port :
             {"color", "ambient", "diffuse", "specular", "glossy", "incandescence", "transparency"})
            DrawColor(port);
        for (const char* flag : {"diffuse_inuse", "specular_inuse", "refract_inuse", "incand_inuse"})
            DrawFlag(flag, 85);
        DrawFlag("usealphatrans", 30);
        DrawFlag("inverttrans", 20);
        DrawNumber("inc_inten", 0.0, 3.0);
        DrawNumber("shiny", 1.0, 120.0);
        DrawTextures();
        DrawMarks();
        return m_material.Object();
    }

private:
    XSI::Parameter Port(const char* name) const { return m_material.Shader().GetParameter(name); }

    void DrawColor(const char* port)
    {
        const XSI::Parameter color = Port(port);
        if (!color.IsValid())
            return;
        const bool isPlain = std::string(port) == "transparency" && m_draw.Chance(60);
        const double high = isPlain ? 0.0 : 1.0;
        XSI::Host::SetColor(color, m_draw.Real(0.0, high), m_draw.Real(0.0, high), m_draw.Real(0.0, high),
                            m_draw.Real(0.0, high));
        for (const char* component : {"red", "green", "blue", "alpha"})
            MayMove(m_draw, color.GetParameter(component), 8, m_time, 0.0, 1.0);
    }

    void DrawFlag(const char* name, int percent)
    {
        if (Port(name).IsValid())
            m_material.Set(name, m_draw.Chance(percent));
    }

    void DrawNumber(const char* name, double low, double high)
    {
        if (!Port(name).IsValid())
            return;
        m_material.Set(name, m_draw.Real(low, high));
        if (std::string(name) == "inc_inten")
            MayMove(m_draw, Port(name), 15, m_time, low, high);
    }

    XSI::Texture Image()
    {
        const XSI::ImageClip2& clip = m_draw.Of(m_clips);
        return XSI::Host::CreateTexture(m_material, "image", clip, m_draw.Of(m_sets));
    }

    /// So many textures at most, over ports, layers and the normal map.
    void DrawTextures()
    {
        int left = m_draw.Chance(30) ? 0 : m_draw.Int(1, MostTextures);
        if (left > 0 && m_draw.Chance(25)) {
            AddNormalMap();
            --left;
        }
        const char* color = m_kind == "constant" ? "color" : "diffuse";
        if (left > 1 && m_draw.Chance(25)) {
            const XSI::Shader mix =
                XSI::Host::CreateShader(m_material, "Softimage.sib_color_2mix.1.0", "mix");
            XSI::Host::ConnectShader(mix.GetParameter("base_color"), Image());
            XSI::Host::ConnectShader(mix.GetParameter("color1"), Image());
            m_material.Connect(color, mix);
            left -= 2;
        } else if (left > 0 && m_draw.Chance(70)) {
            m_material.Connect(color, Image());
            --left;
        }
        for (const char* port : {"ambient", "specular", "glossy", "transparency"})
            if (left > 0 && m_draw.Chance(20) && Port(port).IsValid()) {
                m_material.Connect(port, Image());
                --left;
            }
        for (; left > 0; --left)
            XSI::Host::AddTextureLayer(m_material.Shader(), "layer", Image());
    }

    void AddNormalMap()
    {
        using namespace XSI::Host;
        const XSI::Shader bump = CreateShader(m_material, "Softimage.normal.1.0", "normal");
        const XSI::Shader map = CreateShader(m_material, "Softimage.normalmap.1.0", "normalmap");
        ConnectShader(m_material.Object().GetParameter(L"normal"), bump);
        ConnectShader(bump.GetParameter(L"Map"), map);
        ConnectShader(map.GetParameter(L"NormalMap"), Image());
    }

    void DrawMarks()
    {
        if (m_draw.Chance(50))
            return;
        m_material.Marked("TQ4X_ForPennonMaterialAttrProp",
                          {{"TQ4X_ForPennonMatAttrCullFace", m_draw.Int(0, 3)},
                           {"TQ4X_ForPennonMatAttrFragmentLighting", m_draw.Chance(80)},
                           {"TQ4X_ForPennonMatAttrVertexLighting", m_draw.Chance(30)},
                           {"TQ4X_ForPennonMatAttrBlendMode", m_draw.Int(-1, 5)},
                           {"TQ4X_ForPennonMatAttrNoCompress", m_draw.Chance(30)}});
    }

    RandomDraw& m_draw;
    const std::vector<XSI::ImageClip2>& m_clips;
    const std::vector<std::string>& m_sets;
    const TimeLine& m_time;
    std::string m_kind;
    SceneMaterial m_material;
};

} // namespace

std::vector<XSI::Material> DrawMaterials(RandomDraw& draw, const std::vector<XSI::ImageClip2>& clips,
                                         const std::vector<std::string>& sets, const TimeLine& time)
{
    std::vector<XSI::Material> materials;
    const int count = draw.Int(1, 4);
    for (int i = 0; i < count; ++i)
        materials.push_back(MaterialMaker(draw, clips, sets, time, i).Make());
    return materials;
}

} // namespace tq4x::test
