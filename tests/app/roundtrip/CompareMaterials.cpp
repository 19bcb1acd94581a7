#include "Compare.h"
#include "Deviations.h"
#include "ExpectedGeometry.h"
#include "ExpectedMaterial.h"

#include <xsi_property.h>
#include <xsi_shader.h>

#include <algorithm>
#include <numbers>

namespace tq4x::test
{
namespace
{

/// What a blend mode writes; `Auto` is one of the others.
struct BlendRow
{
    const char* Kind;
    bool IsTested;
    bool WritesDepth;
    const char* Mode;
    const char* Source;
    const char* Destination;
    const char* Equation;
};

constexpr BlendRow BlendRows[] = {
    {"Opaque", false, true, "NotUsed", "SourceAlpha", "OneMinusSourceAlpha", "FuncAdd"},
    {"Opaque", true, true, "NotUsed", "SourceAlpha", "OneMinusSourceAlpha", "FuncAdd"},
    {"Translucent", false, false, "Blend", "SourceAlpha", "OneMinusSourceAlpha", "FuncAdd"},
    {"Additive", false, false, "Blend", "SourceAlpha", "One", "FuncAdd"},
    {"Subtractive", false, false, "Blend", "SourceAlpha", "One", "FuncReverseSubtract"},
    {"Subtractive", false, false, "Blend", "DestinationColor", "Zero", "FuncAdd"},
};

constexpr std::size_t OpaqueRow = 0;
constexpr std::size_t TranslucentRow = 2;

constexpr const char* CullingWords[] = {"FrontFace", "BackFace", "Always", "Never"};

class MaterialComparison
{
public:
    MaterialComparison(const RoundTrip& trip, const HostMaterial& host, const reader::Material& written)
        : m_trip(trip),
          m_host(host),
          m_written(written),
          m_marks(host.Object.GetProperties().Find("TQ4X_ForPennonMaterialAttrProp"))
    {}

    void Compare()
    {
        CompareColors();
        CompareMarks();
        CompareBlending();
        CompareTextures();
        CompareLighting();
    }

private:
    int Mark(const char* name, int otherwise) const
    {
        const XSI::CValue value = m_marks.GetParameterValue(name);
        return value.IsEmpty() ? otherwise : static_cast<int>(static_cast<LONG>(value));
    }

    template<typename T, typename U>
    void Same(const T& written, const U& wanted, const char* what) const
    {
        static Deviation& words = DeviationOf("material words");
        CheckEqual(words, written, wanted, m_host.Name + ", " + what);
    }

    void CompareColors() const
    {
        static Deviation& row = DeviationOf("material colour");
        const double start = m_trip.Host.Frames.front().Host;
        const ExpectedColors wanted = ColorsAt(m_host, start, start);
        const std::pair<const reader::Color*, const ApproxColor*> pairs[] = {
            {&m_written.Emission, &wanted.Emission},
            {&m_written.Ambient, &wanted.Ambient},
            {&m_written.Diffuse, &wanted.Diffuse},
            {&m_written.Specular0, &wanted.Specular0}};
        for (const auto& [written, color] : pairs)
            for (std::size_t i = 0; i < 4; ++i)
                Check(row, Printed((*written)[i]), (*color)[i], m_host.Name);
    }

    void CompareMarks() const
    {
        const auto culling = static_cast<std::size_t>(Mark("TQ4X_ForPennonMatAttrCullFace", 1));
        Same(m_written.CullingMode, CullingWords[culling], "culling");
        Same(m_written.IsFragmentLightEnabled, Mark("TQ4X_ForPennonMatAttrFragmentLighting", 1) != 0,
             "fragment lighting");
        Same(m_written.IsVertexLightEnabled, Mark("TQ4X_ForPennonMatAttrVertexLighting", 0) != 0,
             "vertex lighting");
        Same(m_written.IsCompressible, Mark("TQ4X_ForPennonMatAttrNoCompress", 0) == 0, "compression");
    }

    std::size_t WantedBlending() const
    {
        const int mark = Mark("TQ4X_ForPennonMatAttrBlendMode", -1);
        if (mark >= 0)
            return static_cast<std::size_t>(mark);
        return IsTranslucent(m_host, m_trip.Host.Frames) || HasTranslucentMeshes() ? TranslucentRow
                                                                                   : OpaqueRow;
    }

    /// Colours count where all meshes have some.
    bool HasTranslucentMeshes() const
    {
        bool isAny = false;
        for (const int user : m_host.Users) {
            const ExpectedMesh mesh = ReadExpectedMesh(m_trip.Host, user, m_trip.Settings);
            if (std::ranges::none_of(mesh.Streams,
                                     [](const auto& stream) { return stream.Usage == "Color"; }))
                return false;
            isAny |= mesh.HasTranslucentColors;
        }
        return isAny;
    }

    void CompareBlending() const
    {
        const BlendRow& wanted = BlendRows[WantedBlending()];
        Same(m_written.TranslucencyKind, wanted.Kind, "translucency");
        Same(m_written.Shader.IsAlphaTestEnabled, wanted.IsTested, "alpha test");
        Same(m_written.Operation.IsDepthMaskEnabled, wanted.WritesDepth, "depth mask");
        Same(m_written.Operation.BlendMode, wanted.Mode, "blend mode");
        Same(m_written.Operation.Rgb.Source, wanted.Source, "blend source");
        Same(m_written.Operation.Rgb.Destination, wanted.Destination, "blend destination");
        Same(m_written.Operation.Rgb.Equation, wanted.Equation, "blend equation");
    }

    void CompareTextures() const
    {
        const std::size_t count = m_host.Stages.size();
        Same(m_written.Mappers.size(), count, "count of textures");
        Same(m_written.Coordinators.size(), count, "count of coordinators");
        if (m_written.Mappers.size() != count || m_written.Coordinators.size() != count)
            return;
        for (std::size_t i = 0; i < count; ++i) {
            CompareCoordinator(m_host.Stages[i], m_written.Coordinators[i]);
            CompareMapper(m_host.Stages[i], m_written.Mappers[i]);
        }
        const auto bump = std::ranges::find(m_host.Stages, true, &HostStage::IsNormalMap);
        const bool hasBump = bump != m_host.Stages.end();
        Same(m_written.Shader.BumpMode, hasBump ? "AsBump" : "NotUsed", "bump mode");
        if (hasBump)
            Same(m_written.Shader.BumpTextureIndex, bump - m_host.Stages.begin(), "bump texture");
    }

    void CompareCoordinator(const HostStage& stage, const reader::TextureCoordinator& written) const
    {
        static Deviation& row = DeviationOf("texture transform");
        Same(written.SourceCoordinate, CommonSetNumber(m_trip.Host, m_host, stage).value_or(0),
             "coordinate set");
        const ExpectedProjection wanted =
            ProjectionAt(m_trip.Host, m_host, stage, m_trip.Host.Frames.front().Host);
        const std::string place = m_host.Name + ", " + stage.CoordinateSet;
        Check(row, Printed(written.ScaleS), wanted.ScaleS, place);
        Check(row, Printed(written.ScaleT), wanted.ScaleT, place);
        Check(row, Printed(written.TranslateS), wanted.TranslateS, place);
        Check(row, Printed(written.TranslateT), wanted.TranslateT, place);
        const Approx rotate = Printed(written.Rotate);
        const double turn = std::remainder(rotate.Value - wanted.Rotate.Value, 2.0 * std::numbers::pi);
        Check(row, std::abs(turn), BoundOf(rotate, wanted.Rotate), place);
    }

    void CompareMapper(const HostStage& stage, const reader::TextureMapper& written) const
    {
        Same(written.Texture.Name, LegalName(BaseName(stage.Pictures.at(0))), "texture");
        Same(written.Texture.Path, "Textures/" + written.Texture.Name + ".qtex", "texture path");
        Same(written.MinFilter + " " + written.MagFilter, "LinearMipmapLinear Linear", "filters");
        Same(written.WrapS, WantedWrap(stage, "wrap_u"), "wrapping along u");
        Same(written.WrapT, WantedWrap(stage, "wrap_v"), "wrapping along v");
    }

    std::string WantedWrap(const HostStage& stage, const char* parameter) const
    {
        const XSI::X3DObject& mesh = m_trip.Host.Nodes[static_cast<std::size_t>(m_host.Users.front())].Object;
        const XSI::Parameter wrap = ProjectionOf(mesh, stage.CoordinateSet, parameter);
        return wrap.IsValid() && static_cast<bool>(wrap.GetValue()) ? "Repeat" : "ClampToEdge";
    }

    /// The table of the highlight holds the powers of the cosine.
    void CompareLighting() const
    {
        static Deviation& row = DeviationOf("highlight table");
        const std::string kind = m_host.Surface.GetProgID().GetAsciiString();
        const bool hasPower =
            kind == "Softimage.material-phong.1.0" || kind == "Softimage.material-blinn.1.0";
        const bool hasHighlight = hasPower || kind == "Softimage.material-ward.1.0";
        const reader::LookupTableSampler& sampler = m_written.Shader.Distribution0;
        Same(sampler.HasTable, hasHighlight && m_written.IsFragmentLightEnabled, "highlight");
        if (!sampler.HasTable || !hasPower)
            return;
        const XSI::Parameter shiny = m_host.Surface.GetParameter("shiny");
        const double start = m_trip.Host.Frames.front().Host;
        const double power = shiny.IsValid() ? static_cast<double>(shiny.GetValue(start)) : 30.0;
        const auto& tables = m_trip.Written.Model.LookupTables.Tables;
        const auto table = std::ranges::find(tables, sampler.TableName, &reader::LookupTable::Name);
        Same(table != tables.end(), true, "highlight table");
        if (table == tables.end())
            return;
        constexpr double tolerance = 0.001; // of the keys
        for (int i = 0; i < 256; ++i) {
            const double value = reader::EvaluateCurve(table->Values, static_cast<float>(i)).value_or(-1.0F);
            // A constant table has the first value alone, which others miss by the tolerance.
            Check(row, Rounded(value, tolerance + 3.0 * PrintedError(1.0)),
                  Narrowed(std::pow(i / 256.0, power)), m_host.Name);
        }
    }

    const RoundTrip& m_trip;
    const HostMaterial& m_host;
    const reader::Material& m_written;
    XSI::Property m_marks;
};

} // namespace

void CompareMaterials(const RoundTrip& trip)
{
    static Deviation& words = DeviationOf("material words");
    CheckEqual(words, trip.Written.Model.Materials.size(), trip.Host.Materials.size(), "count of materials");
    for (const HostMaterial& material : trip.Host.Materials) {
        const reader::Material* written = reader::FindMaterial(trip.Written.Model, material.Name);
        if (CheckEqual(words, written != nullptr, true, material.Name))
            MaterialComparison(trip, material, *written).Compare();
    }
}

} // namespace tq4x::test
