#include "support/MaterialRun.h"

#include <limits>

#include "pipeline/SceneContent.h"

namespace tq4x
{

inline void PrintTo(const Color& color, std::ostream* stream)
{
    *stream << "{" << color.R << ", " << color.G << ", " << color.B << ", " << color.A << "}";
}

} // namespace tq4x

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::size_t EmissionCurves = 0;
constexpr std::size_t AmbientCurves = 4;
constexpr std::size_t DiffuseCurves = 8;
constexpr std::size_t SpecularCurves = 12;

const std::vector<float>& Samples(const Material& material, std::size_t curve)
{
    return material.ColorCurves[curve].Samples;
}

/// Number of samples in the curves of a colour, which must agree.
std::size_t CountSamples(const Material& material, std::size_t firstCurve)
{
    for (std::size_t i = 1; i < 4; ++i)
        EXPECT_EQ(Samples(material, firstCurve + i).size(), Samples(material, firstCurve).size());
    return Samples(material, firstCurve).size();
}

TEST(MaterialColor, EachShaderHasItsReaders)
{
    const struct
    {
        const char* Shader;
        Color Diffuse;
        Color Ambient;
        Color Specular;
        Color Emission;
        bool HasSpecularTable;
        bool HasAnisotropicTables;
        float Exponent;
    } rows[] = {
        {"constant", {0.1f, 0.2f, 0.3f, 0.75f}, {}, {}, {2, 1, 0.5f, 0.25f}, false, false, 30},
        {"lambert", {0.1f, 0.2f, 0.3f, 0.75f}, {1, 1, 1, 0}, {}, {2, 1, 0.5f, 0.25f}, false, false, 30},
        {"phong",
         {0.1f, 0.2f, 0.3f, 0.75f},
         {1, 1, 1, 0},
         {0.5f, 0.25f, 0.125f, 0.5f},
         {2, 1, 0.5f, 0.25f},
         true,
         false,
         12},
        {"blinn",
         {0.1f, 0.2f, 0.3f, 0.75f},
         {1, 1, 1, 0},
         {0.5f, 0.25f, 0.125f, 0.5f},
         {2, 1, 0.5f, 0.25f},
         true,
         false,
         30}, // the shader has no port `shiny`
        {"ward",
         {0.1f, 0.2f, 0.3f, 0.75f},
         {1, 1, 1, 0},
         {0.5f, 0.25f, 0.125f, 0.5f},
         {2, 1, 0.5f, 0.25f},
         false,
         true,
         30},
    };

    for (const auto& row : rows) {
        SceneBuilder scene;
        SceneMaterial material = scene.Material("m", row.Shader);
        const bool isConstant = row.Shader == std::string("constant");
        material.Color(isConstant ? "color" : "diffuse", 0.1, 0.2, 0.3)
            .Color("transparency", 0.25, 0.5, 0.75, 0.125)
            .Color("incandescence", 1, 0.5, 0.25, 0.125)
            .Set("inc_inten", 2.0);
        if (row.Shader == std::string("phong"))
            material.Set("shiny", 12.0);
        if (row.Specular.R > 0)
            material.Color(row.HasAnisotropicTables ? "glossy" : "specular", 0.5, 0.25, 0.125, 0.5);
        MaterialRun run;
        EXPECT_TRUE(run.Convert({material})) << row.Shader;
        const Material& record = run.Of(material);
        EXPECT_EQ(record.Diffuse, row.Diffuse) << row.Shader;
        EXPECT_EQ(record.Ambient, row.Ambient) << row.Shader;
        EXPECT_EQ(record.Specular0, row.Specular) << row.Shader;
        EXPECT_EQ(record.Emission, row.Emission) << row.Shader;
        EXPECT_EQ(record.HasSpecularTable, row.HasSpecularTable) << row.Shader;
        EXPECT_EQ(record.HasAnisotropicTables, row.HasAnisotropicTables) << row.Shader;
        EXPECT_EQ(record.SpecularExponent, row.Exponent) << row.Shader;
        EXPECT_EQ(record.SpecularScale, 1.0f) << row.Shader;
        EXPECT_EQ(run.Collector(material).ProgID,
                  ("Softimage.material-" + std::string(row.Shader) + ".1.0").c_str());
        EXPECT_THAT(run.Messages(), IsEmpty()) << row.Shader;
        for (std::size_t curve = 0; curve < ColorCurveCount; ++curve)
            EXPECT_THAT(Samples(record, curve), IsEmpty()) << row.Shader << " " << curve;
    }
}

TEST(MaterialColor, BlinnTakesItsExponentWhereItHasOne)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "blinn").Set("shiny", 7.5);
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_EQ(run.Of(material).SpecularExponent, 7.5f);
}

TEST(MaterialColor, NumbersThatAreNotFiniteAreToldOnce)
{
    const double infinity = std::numeric_limits<double>::infinity();
    SceneBuilder scene;
    SceneMaterial broken = scene.Material("broken", "blinn").Set("shiny", infinity);
    SceneMaterial whole = scene.Material("whole", "blinn").Set("shiny", 7.5);
    MaterialRun run;
    EXPECT_TRUE(run.Convert({broken, whole}));
    EXPECT_THAT(run.Messages(), ElementsAre("W Values that are not finite exist(broken)."));
}

TEST(MaterialColor, ExponentAndColoursAreThoseOfTheFirstFrame)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "phong")
                                 .Animate("shiny", {{0, 10}, {10, 20}})
                                 .Animate("diffuse", "green", {{0, 0}, {10, 1}});
    MaterialRun run(5, 6);
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_EQ(run.Of(material).SpecularExponent, 15.0f);
    EXPECT_EQ(run.Of(material).Diffuse.G, 0.5f);
}

TEST(MaterialColor, SwitchesTurnColoursOff)
{
    const struct
    {
        const char* Shader;
        const char* Switch;
        Color Diffuse;
        Color Specular;
        Color Emission;
    } rows[] = {
        {"phong", "diffuse_inuse", {0, 0, 0, 1}, {1, 1, 1, 1}, {0.5f, 0.5f, 0.5f, 0.5f}},
        {"phong", "specular_inuse", {0.5f, 0.5f, 0.5f, 1}, {}, {0.5f, 0.5f, 0.5f, 0.5f}},
        {"ward", "specular_inuse", {0.5f, 0.5f, 0.5f, 1}, {}, {0.5f, 0.5f, 0.5f, 0.5f}},
        {"phong", "incand_inuse", {0.5f, 0.5f, 0.5f, 1}, {1, 1, 1, 1}, {}},
    };

    for (const auto& row : rows) {
        SceneBuilder scene;
        SceneMaterial material = scene.Material("m", row.Shader)
                                     .Color("diffuse", 0.5, 0.5, 0.5)
                                     .Color("incandescence", 0.5, 0.5, 0.5, 0.5)
                                     .Set(row.Switch, false);
        MaterialRun run;
        EXPECT_TRUE(run.Convert({material}));
        EXPECT_EQ(run.Of(material).Diffuse, row.Diffuse) << row.Shader << " " << row.Switch;
        EXPECT_EQ(run.Of(material).Ambient, (Color{1, 1, 1, 0})) << row.Shader << " " << row.Switch;
        EXPECT_EQ(run.Of(material).Specular0, row.Specular) << row.Shader << " " << row.Switch;
        EXPECT_EQ(run.Of(material).Emission, row.Emission) << row.Shader << " " << row.Switch;
    }
}

TEST(MaterialColor, TransparencyBecomesAlpha)
{
    const struct
    {
        const char* Name;
        bool IsInUse;
        bool UsesAlpha;
        bool IsInverted;
        float Alpha;
    } rows[] = {
        {"red, one less", true, false, false, 0.75f}, {"red as it is", true, false, true, 0.25f},
        {"alpha, one less", true, true, false, 0.5f}, {"alpha as it is", true, true, true, 0.5f},
        {"not in use", false, true, true, 1.0f},
    };

    for (const auto& row : rows)
        for (const char* shader : {"constant", "lambert", "ward"}) {
            SceneBuilder scene;
            SceneMaterial material = scene.Material("m", shader)
                                         .Color("transparency", 0.25, 0.125, 0.0625, 0.5)
                                         .Set("refract_inuse", row.IsInUse)
                                         .Set("usealphatrans", row.UsesAlpha)
                                         .Set("inverttrans", row.IsInverted);
            MaterialRun run;
            EXPECT_TRUE(run.Convert({material}));
            EXPECT_EQ(run.Of(material).Diffuse.A, row.Alpha) << row.Name << " " << shader;
        }
}

// What each reader samples, by the parameter that moves.
TEST(MaterialColor, MovingPortsAreSampledAtEveryFrame)
{
    const struct
    {
        const char* Shader;
        const char* Port;
        const char* Component; ///< nullptr for a plain number
        std::size_t Emission;
        std::size_t Diffuse;
        std::size_t Specular;
    } rows[] = {
        {"constant", "color", "blue", 0, 4, 0},
        {"constant", "refract_inuse", nullptr, 0, 4, 0},
        {"constant", "transparency", "alpha", 0, 4, 0},
        {"constant", "inverttrans", nullptr, 0, 0, 0},
        {"constant", "incandescence", "red", 4, 0, 0},
        {"lambert", "diffuse_inuse", nullptr, 0, 4, 0},
        {"lambert", "diffuse", "red", 0, 4, 0},
        {"lambert", "refract_inuse", nullptr, 0, 4, 0},
        {"lambert", "transparency", "red", 0, 4, 0},
        {"lambert", "usealphatrans", nullptr, 0, 0, 0},
        {"lambert", "ambient", "red", 0, 0, 0},
        {"phong", "specular_inuse", nullptr, 0, 0, 4},
        {"phong", "specular", "alpha", 0, 0, 4},
        {"phong", "shiny", nullptr, 0, 0, 0},
        {"blinn", "specular", "green", 0, 0, 4},
        {"ward", "specular_inuse", nullptr, 0, 0, 0}, // of a ward the colour alone counts
        {"ward", "glossy", "green", 0, 0, 4},
        {"phong", "incand_inuse", nullptr, 4, 0, 0},
        {"phong", "inc_inten", nullptr, 4, 0, 0},
    };

    for (const auto& row : rows) {
        SceneBuilder scene;
        SceneMaterial material = scene.Material("m", row.Shader);
        if (row.Component != nullptr)
            material.Animate(row.Port, row.Component, {{0, 0}, {3, 1}});
        else
            material.Animate(row.Port, {{0, 0}, {3, 1}});
        MaterialRun run(0, 3);
        EXPECT_TRUE(run.Convert({material}));
        const Material& record = run.Of(material);
        EXPECT_EQ(CountSamples(record, EmissionCurves), row.Emission) << row.Shader << " " << row.Port;
        EXPECT_EQ(CountSamples(record, AmbientCurves), 0u) << row.Shader << " " << row.Port;
        EXPECT_EQ(CountSamples(record, DiffuseCurves), row.Diffuse) << row.Shader << " " << row.Port;
        EXPECT_EQ(CountSamples(record, SpecularCurves), row.Specular) << row.Shader << " " << row.Port;
    }
}

TEST(MaterialColor, SamplesOfTheDiffuseColour)
{
    for (const char* shader : {"constant", "lambert"}) {
        SceneBuilder scene;
        SceneMaterial material = scene.Material("m", shader).Color("transparency", 0.25, 0, 0);
        const char* port = shader == std::string("constant") ? "color" : "diffuse";
        material.Color(port, 0, 0.5, 1).Animate(port, "red", {{1, 0}, {3, 1}});
        MaterialRun run(1, 3);
        EXPECT_TRUE(run.Convert({material}));
        EXPECT_THAT(Samples(run.Of(material), 8), ElementsAre(0.0f, 0.5f, 1.0f)) << shader;
        EXPECT_THAT(Samples(run.Of(material), 9), ElementsAre(0.5f, 0.5f, 0.5f)) << shader;
        EXPECT_THAT(Samples(run.Of(material), 10), ElementsAre(1.0f, 1.0f, 1.0f)) << shader;
        EXPECT_THAT(Samples(run.Of(material), 11), ElementsAre(0.75f, 0.75f, 0.75f)) << shader;
    }
}

TEST(MaterialColor, PrecisionSamplesBetweenFrames)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m").Animate("diffuse", "red", {{0, 0}, {2, 1}});
    MaterialRun run(0, 2, 0.5f);
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_THAT(Samples(run.Of(material), 8), ElementsAre(0.0f, 0.25f, 0.5f, 0.75f, 1.0f));
}

TEST(MaterialColor, SwitchedDiffuseIsBlackAndKeepsItsAlpha)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert")
                                 .Color("diffuse", 0.5, 0.25, 1)
                                 .Color("transparency", 0.5, 0, 0)
                                 .Animate("diffuse_inuse", {{0, 0}, {1, 1}});
    MaterialRun run(0, 1);
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_EQ(run.Of(material).Diffuse, (Color{0, 0, 0, 0.5f}));
    EXPECT_THAT(Samples(run.Of(material), 8), ElementsAre(0.0f, 0.5f));
    EXPECT_THAT(Samples(run.Of(material), 9), ElementsAre(0.0f, 0.25f));
    EXPECT_THAT(Samples(run.Of(material), 11), ElementsAre(0.5f, 0.5f));
}

TEST(MaterialColor, SpecularSamplesAreNothingWhileItIsOff)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "phong")
                                 .Color("specular", 0.5, 0.25, 1, 0.75)
                                 .Animate("specular_inuse", {{0, 1}, {1, 0}});
    MaterialRun run(0, 1);
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_EQ(run.Of(material).Specular0, (Color{0.5f, 0.25f, 1, 0.75f}));
    EXPECT_THAT(Samples(run.Of(material), 12), ElementsAre(0.5f, 0.0f));
    EXPECT_THAT(Samples(run.Of(material), 15), ElementsAre(0.75f, 0.0f));
}

TEST(MaterialColor, IntensityScalesTheGlowAndItsAlpha)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "phong")
                                 .Color("incandescence", 1, 0.5, 0.25, 0.125)
                                 .Animate("inc_inten", {{0, 0}, {2, 4}});
    MaterialRun run(1, 2);
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_EQ(run.Of(material).Emission, (Color{2, 1, 0.5f, 0.25f}));
    EXPECT_THAT(Samples(run.Of(material), 0), ElementsAre(2.0f, 4.0f));
    EXPECT_THAT(Samples(run.Of(material), 3), ElementsAre(0.25f, 0.5f));
}

TEST(MaterialColor, ConnectedGlowIsNoneButItsSamplesStay)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "phong")
                                 .Color("incandescence", 1, 1, 1)
                                 .Animate("inc_inten", {{0, 1}, {1, 3}})
                                 .Image("incandescence", "glow.png", "Set");
    MaterialRun run(0, 1);
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_EQ(run.Of(material).Emission, Color{});
    EXPECT_THAT(Samples(run.Of(material), 0), ElementsAre(1.0f, 3.0f));
    EXPECT_THAT(run.StageNames(material), IsEmpty());
}

TEST(MaterialColor, AnyShaderOnTheGlowCounts)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "phong").Color("incandescence", 1, 1, 1);
    material.Connect("incandescence", XSI::Host::CreateShader(material, "Softimage.unknown.1.0", "unknown"));
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_EQ(run.Of(material).Emission, Color{});
}

TEST(MaterialColor, ConnectedColoursAreWhiteAndHighlightsNone)
{
    const struct
    {
        const char* Shader;
        const char* Port;
        Color Diffuse;
        Color Specular;
    } rows[] = {
        {"constant", "color", {1, 1, 1, 0.75f}, {}},
        {"lambert", "diffuse", {1, 1, 1, 0.75f}, {}},
        {"phong", "specular", {0.7f, 0.7f, 0.7f, 0.75f}, {}},
        {"ward", "glossy", {0.7f, 0.7f, 0.7f, 0.75f}, {}},
        {"phong", "ambient", {0.7f, 0.7f, 0.7f, 0.75f}, {1, 1, 1, 1}},
    };

    for (const auto& row : rows) {
        SceneBuilder scene;
        SceneMaterial material =
            scene.Material("m", row.Shader).Color("transparency", 0.25, 0, 0).Image(row.Port, "a.png", "Set");
        MaterialRun run;
        EXPECT_TRUE(run.Convert({material}));
        EXPECT_EQ(run.Of(material).Diffuse, row.Diffuse) << row.Shader << " " << row.Port;
        EXPECT_EQ(run.Of(material).Specular0, row.Specular) << row.Shader << " " << row.Port;
        EXPECT_THAT(run.StageNames(material), ElementsAre("a.png")) << row.Shader << " " << row.Port;
    }
}

TEST(MaterialColor, ConnectedPortsAreSampledByTheDiffuseReaderAlone)
{
    const struct
    {
        const char* Shader;
        const char* Port;
        const char* Moving;
        std::size_t Diffuse;
        std::size_t Specular;
    } rows[] = {
        {"constant", "color", "refract_inuse", 0, 0},
        {"lambert", "diffuse", "refract_inuse", 3, 0},
        {"phong", "specular", "specular_inuse", 0, 0},
        {"ward", "glossy", "specular_inuse", 0, 0},
    };

    for (const auto& row : rows) {
        SceneBuilder scene;
        SceneMaterial material = scene.Material("m", row.Shader)
                                     .Animate(row.Moving, {{0, 1}, {1, 1}, {2, 0}})
                                     .Image(row.Port, "a.png", "Set");
        MaterialRun run(0, 2);
        EXPECT_TRUE(run.Convert({material}));
        EXPECT_EQ(CountSamples(run.Of(material), DiffuseCurves), row.Diffuse) << row.Shader << row.Port;
        EXPECT_EQ(CountSamples(run.Of(material), SpecularCurves), row.Specular) << row.Shader << row.Port;
    }
}

TEST(MaterialColor, SamplesOfATexturedDiffuseAreWhiteWhileItIsOn)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert")
                                 .Color("transparency", 0.25, 0, 0)
                                 .Animate("diffuse_inuse", {{0, 1}, {1, 0}})
                                 .Image("diffuse", "a.png", "Set");
    MaterialRun run(0, 1);
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_THAT(Samples(run.Of(material), 8), ElementsAre(1.0f, 0.0f));
    EXPECT_THAT(Samples(run.Of(material), 10), ElementsAre(1.0f, 0.0f));
    EXPECT_THAT(Samples(run.Of(material), 11), ElementsAre(0.75f, 0.75f));
}

TEST(MaterialColor, OtherShadersKeepTheDefaultsWithAWarning)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "Somebody.toon.1.0").Layer("layer.png", "Set");
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_THAT(run.Messages(), ElementsAre("W Shader is not supported(Somebody.toon.1.0)"));
    EXPECT_EQ(run.Collector(material).ProgID, "Somebody.toon.1.0");
    EXPECT_EQ(run.Of(material).Diffuse, (Color{1, 1, 1, 1}));
    EXPECT_EQ(run.Of(material).Ambient, Color{});
    EXPECT_THAT(run.StageNames(material), ElementsAre("layer.png"));
}

TEST(MaterialColor, OtherShadersHaveTheirTransparencyReadToo)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "Somebody.toon.1.0").Set("refract_inuse", true);
    XSI::Host::AddColorParameter(material.Shader(), "transparency", 0, 0, 0);
    material.Image("transparency", "holes.png", "Set");
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_THAT(run.StageNames(material), ElementsAre("holes.png"));
}

TEST(MaterialColor, WithoutASurfaceShaderNothingIsSaid)
{
    SceneBuilder scene;
    const XSI::Material material = XSI::Host::CreateMaterial("bare");
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_THAT(run.Messages(), IsEmpty());
    EXPECT_EQ(run.Collector(material).ProgID, "Invalid");
    EXPECT_EQ(run.Of(material).Diffuse, (Color{1, 1, 1, 1}));
    EXPECT_EQ(run.Of(material).FragmentShader.TextureCombiners.size(), 1u);
}

TEST(MaterialColor, ShadersAreFoundByTheirOutputsToo)
{
    SceneBuilder scene;
    const XSI::Material material = XSI::Host::CreateMaterial("m");
    const XSI::Shader shader = XSI::Host::CreateShader(material, "Softimage.material-lambert.1.0", "lambert");
    XSI::Host::ConnectShader(material.GetParameter(L"surface"), shader.GetParameter(L"out"));
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_EQ(run.Of(material).Ambient, (Color{1, 1, 1, 0}));
}

} // namespace
} // namespace tq4x::test
