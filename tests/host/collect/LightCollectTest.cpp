#include "collect/Visibility.h"
#include "support/CollectRun.h"

#include <cmath>
#include <limits>

namespace tq4x::test
{
namespace
{

using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;
using testing::FloatNear;
using testing::IsEmpty;
using testing::SizeIs;
using XSI::Host::LightType;

constexpr double Infinite = std::numeric_limits<double>::infinity();
constexpr double Nan = std::numeric_limits<double>::quiet_NaN();

/// What became of the light "light", which must be there.
const Light& LightOf(const CollectRun& run)
{
    static const Light none;
    const Light* light = run.FindLight("light");
    EXPECT_NE(light, nullptr);
    return light != nullptr ? *light : none;
}

const std::vector<float>& Samples(const Light& light, std::size_t curve)
{
    return light.Curves[curve].Samples;
}

XSI::Parameter ShaderPort(const SceneNode& light, const char* name, const char* component = nullptr)
{
    const XSI::Parameter port = XSI::Host::LightShaderOf(light).GetParameter(name);
    return component != nullptr ? port.GetParameter(component) : port;
}

/// Lets an expression give a value that no constant may have.
void Drive(const XSI::Parameter& parameter, double value)
{
    XSI::Host::SetExpression(parameter, [value](double) { return value; });
}

TEST(LightKinds, FollowTheHostsTypeUnlessItIsAnArea)
{
    const std::string skipped = "W Skip (light).";

    const struct
    {
        const char* Name;
        LONG Type;
        bool IsArea;
        bool IsExported;
        LightKind Kind;
    } rows[] = {
        {"point", 0, false, true, LightKind::PointLight},
        {"infinite", 1, false, true, LightKind::DirectionalLight},
        {"spot", 2, false, true, LightKind::SpotLight},
        {"another type", 3, false, false, LightKind::PointLight},
        {"no type at all", -1, false, false, LightKind::PointLight},
        {"area point", 0, true, false, LightKind::PointLight},
        {"area infinite", 1, true, false, LightKind::PointLight},
        {"area spot", 2, true, false, LightKind::PointLight},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        SceneBuilder scene;
        const SceneNode light =
            scene.Light("light", LightType::Point).Set("Type", row.Type).Set("LightArea", row.IsArea);
        const CollectRun run;
        EXPECT_TRUE(run.Succeeded());
        EXPECT_EQ(run.BoneOf(light).Name, "light") << "the node stays";
        EXPECT_EQ(run.FindLight("light") != nullptr, row.IsExported);
        if (row.IsExported) {
            EXPECT_EQ(LightOf(run).LightKind, row.Kind);
            EXPECT_THAT(run.Messages(), IsEmpty());
        } else {
            EXPECT_THAT(run.Messages(), ElementsAre(skipped));
        }
    }
}

TEST(LightKinds, AreReadNow)
{
    SceneBuilder scene;
    scene.Frames(0, 9);
    scene.Light("light", LightType::Point).Animate("Type", {{0, 0}, {9, 0}, {10, 2}, {20, 2}});
    scene.Host().CurrentFrame = 15.0;
    const CollectRun run;
    EXPECT_EQ(LightOf(run).LightKind, LightKind::SpotLight);
}

TEST(LightColors, CarryTheIntensityAsAlpha)
{
    SceneBuilder scene;
    const SceneNode light = scene.Light("light", LightType::Point);
    XSI::Host::SetColor(ShaderPort(light, "color"), 1.0, 0.5, 0.25);
    ShaderPort(light, "intensity").PutValue(3.0);
    const CollectRun run;
    const Color color{1, 0.5f, 0.25f, 3};
    EXPECT_EQ(LightOf(run).Diffuse, color);
    EXPECT_EQ(LightOf(run).Specular0, color);
    EXPECT_EQ(LightOf(run).Specular1, color);
    EXPECT_EQ(LightOf(run).Ambient, (Color{0, 0, 0, 1}));
    for (std::size_t curve = LightCurve::Ambient; curve < LightCurve::Direction; ++curve)
        EXPECT_THAT(Samples(LightOf(run), curve), IsEmpty()) << "nothing moves: no samples";
}

TEST(LightColors, AllFourAreSampledIfOneMoves)
{
    const char* components[] = {"red", "green", "blue", nullptr};
    for (std::size_t moving = 0; moving < 4; ++moving) {
        SCOPED_TRACE(moving);
        SceneBuilder scene;
        scene.Frames(1, 3);
        const SceneNode light = scene.Light("light", LightType::Point);
        XSI::Host::SetColor(ShaderPort(light, "color"), 0.5, 0.5, 0.5);
        ShaderPort(light, "intensity").PutValue(0.5);
        const XSI::Parameter port = components[moving] != nullptr
                                        ? ShaderPort(light, "color", components[moving])
                                        : ShaderPort(light, "intensity");
        XSI::Host::SetCurve(port, {{{1, 0.1}, {3, 0.3}}});
        const CollectRun run;
        for (const std::size_t first : {LightCurve::Diffuse, LightCurve::Specular0, LightCurve::Specular1})
            for (std::size_t i = 0; i < 4; ++i) {
                const std::vector<float> moves = {0.1f, 0.2f, 0.3f};
                const std::vector<float> rests = {0.5f, 0.5f, 0.5f};
                EXPECT_EQ(Samples(LightOf(run), first + i), i == moving ? moves : rests);
            }
        const Color& start = LightOf(run).Diffuse;
        EXPECT_EQ((std::array{start.R, start.G, start.B, start.A})[moving], 0.1f) << "the first frame's";
    }
}

TEST(LightColors, ContributionsThatAreOffAreBlackAndStill)
{
    const Color black{0, 0, 0, 1};
    for (const bool isDiffuse : {false, true})
        for (const bool isSpecular : {false, true}) {
            SceneBuilder scene;
            scene.Frames(0, 1);
            const SceneNode light = scene.Light("light", LightType::Point)
                                        .Set("DiffuseContribution", isDiffuse)
                                        .Set("SpecularContribution", isSpecular);
            XSI::Host::SetColor(ShaderPort(light, "color"), 1.0, 1.0, 1.0);
            XSI::Host::SetCurve(ShaderPort(light, "intensity"), {{{0, 2}, {1, 3}}});
            const CollectRun run;
            EXPECT_EQ(LightOf(run).Diffuse, (isDiffuse ? Color{1, 1, 1, 2} : black));
            EXPECT_EQ(LightOf(run).Specular0, (isSpecular ? Color{1, 1, 1, 2} : black));
            EXPECT_EQ(LightOf(run).Specular1, (isSpecular ? Color{1, 1, 1, 2} : black));
            EXPECT_THAT(Samples(LightOf(run), LightCurve::Diffuse + 3), SizeIs(isDiffuse ? 2 : 0));
            EXPECT_THAT(Samples(LightOf(run), LightCurve::Specular0 + 3), SizeIs(isSpecular ? 2 : 0));
            EXPECT_THAT(Samples(LightOf(run), LightCurve::Specular1), SizeIs(isSpecular ? 2 : 0));
        }
}

TEST(LightColors, AllChannelsAreOfOneLengthWhateverTheStep)
{
    const struct
    {
        const char* Precision;
        std::size_t Samples;
    } rows[] = {
        {"FramePrecision:1", 3},
        {"FramePrecision:0.5", 5},
        {"FramePrecision:0.3", 7},  // 0 to 1.8
        {"FramePrecision:0.1", 20}, // the float step is above 0.1: the last frame is missed
    };

    for (const auto& row : rows)
        for (const LightType type : {LightType::Point, LightType::Infinite, LightType::Spot}) {
            SceneBuilder scene;
            scene.Frames(0, 2);
            const SceneNode light = scene.Light("light", type).Moving({{0, 0}, {2, 2}});
            XSI::Host::SetCurve(ShaderPort(light, "intensity"), {{{0, 2}, {2, 3}}});
            const CollectRun run({row.Precision});
            for (const std::size_t curve :
                 {LightCurve::Translate, LightCurve::Diffuse, LightCurve::Specular0, LightCurve::Visibility})
                EXPECT_THAT(Samples(LightOf(run), curve), SizeIs(row.Samples)) << row.Precision;
            for (const AnimationCurve& curve : LightOf(run).Curves)
                EXPECT_THAT(curve.Samples, AnyOf(IsEmpty(), SizeIs(row.Samples))) << row.Precision;
        }
}

TEST(LightColors, WithoutAShaderStayAtTheDefaults)
{
    SceneBuilder scene;
    const SceneNode light = scene.Light("light", LightType::Spot).Set("DiffuseContribution", false);
    XSI::Host::RemoveLightShaders(light);
    CollectRun run;
    EXPECT_THAT(run.Messages(), ElementsAre("W No shader(light)"));
    EXPECT_EQ(LightOf(run).Diffuse, (Color{1, 1, 1, 1}));
    EXPECT_EQ(LightOf(run).Specular0, (Color{1, 1, 1, 1}));
    LookupTable expected; // 20 degrees, less a rim of 5
    expected.BuildSpotRange(15.0f, 20.0f);
    ASSERT_EQ(LightOf(run).AngleSampler.TableIndex, 0);
    EXPECT_EQ(run.Context.Lights.LookupTables.Tables().front().Samples, expected.Samples);
}

TEST(LightCone, IsOfSpotLightsAlone)
{
    for (const LightType type : {LightType::Point, LightType::Infinite, LightType::Spot}) {
        SceneBuilder scene;
        scene.Light("light", type);
        const CollectRun run;
        const bool isSpot = type == LightType::Spot;
        EXPECT_EQ(LightOf(run).AngleSampler.TableIndex, isSpot ? 0 : -1);
        EXPECT_THAT(run.Context.Lights.LookupTables.Tables(), SizeIs(isSpot ? 1 : 0));
        EXPECT_EQ(LightOf(run).DistanceSampler.TableIndex, -1);
        EXPECT_TRUE(LightOf(run).AngleSampler.IsAbs);
        EXPECT_EQ(LightOf(run).AngleSampler.Input, 2);
    }
}

TEST(LightCone, ReadsConeAndSpread)
{
    const struct
    {
        const char* Name;
        double Cone, Spread;
        float Inner, Outer;
    } rows[] = {
        {"ordinary", 60, 10, 20, 30},    {"a rim as wide as the half", 20, 10, 0, 10},
        {"a wider rim", 20, 15, 0, 10},  {"no rim", 60, 0, 30, 30},
        {"no cone", 0, 0, 0, 0},         {"no cone but a rim", 0, 5, 0, 0},
        {"half of all", 180, 5, 85, 90}, {"all", 360, 5, 175, 180},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        SceneBuilder scene;
        const SceneNode light = scene.Light("light", LightType::Spot).Set("LightCone", row.Cone);
        ShaderPort(light, "spread").PutValue(row.Spread);
        const CollectRun run;
        LookupTable expected;
        expected.BuildSpotRange(row.Inner, row.Outer);
        ASSERT_THAT(run.Context.Lights.LookupTables.Tables(), SizeIs(1));
        const LookupTable& table = run.Context.Lights.LookupTables.Tables().front();
        EXPECT_EQ(table.Samples, expected.Samples);
        EXPECT_THAT(table.Samples, SizeIs(512));
        EXPECT_THAT(table.Samples, Each(testing::AllOf(testing::Ge(-1.0f), testing::Le(1.0f))));
        EXPECT_EQ(table.Name, "light");
        EXPECT_TRUE(table.IsGeneratedAsAbs);
        EXPECT_TRUE(table.IsSizeDoubled);
        EXPECT_FALSE(table.IsMipMap);
        EXPECT_THAT(run.Messages(), IsEmpty());
    }
}

TEST(LightCone, EqualConesShareTheirTable)
{
    SceneBuilder scene;
    scene.Light("one", LightType::Spot).Set("LightCone", 60.0);
    scene.Light("two", LightType::Spot).Set("LightCone", 40.0);
    scene.Light("three", LightType::Spot).Set("LightCone", 60.0);
    const CollectRun run;
    EXPECT_EQ(run.FindLight("one")->AngleSampler.TableIndex, 0);
    EXPECT_EQ(run.FindLight("two")->AngleSampler.TableIndex, 1);
    EXPECT_EQ(run.FindLight("three")->AngleSampler.TableIndex, 0);
    ASSERT_THAT(run.Context.Lights.LookupTables.Tables(), SizeIs(2));
    EXPECT_EQ(run.Context.Lights.LookupTables.Tables().front().Name, "one") << "the first light's";
    EXPECT_THAT(run.Context.Content.Materials.LookupTables.Tables(), IsEmpty()) << "materials have their own";
}

TEST(LightTransform, IsGlobalAndMagnifiedInTheSamplesAlone)
{
    SceneBuilder scene;
    scene.Frames(0, 1);
    const SceneNode parent = scene.Null("parent").At(10, 0, 0).Scaled(1, 1, 2);
    scene.Light("light", LightType::Infinite, parent).Turned(90, 0, 0).Moving({{0, 1}, {1, 2}});
    const CollectRun run({"Magnify:2"});
    const Light& light = LightOf(run);
    EXPECT_EQ(light.Translate, (Vector3{11, 0, 0})) << "magnified when it is written";
    EXPECT_THAT(Samples(light, LightCurve::Translate), ElementsAre(22, 24));
    EXPECT_EQ(light.Scale, (Vector3{1, 1, 1}));
    EXPECT_EQ(light.Rotate, Vector3{});
    EXPECT_NEAR(light.Direction.Y, 1, 1e-6f);
    EXPECT_NEAR(light.Direction.Z, 0, 1e-6f);
    EXPECT_THAT(Samples(light, LightCurve::Direction + 1), Each(FloatNear(1, 1e-6f)));
    for (std::size_t curve = LightCurve::Scale; curve < LightCurve::Translate; ++curve)
        EXPECT_THAT(Samples(light, curve), IsEmpty());
}

TEST(LightTransform, DirectionsAreNotNormalised)
{
    SceneBuilder scene;
    scene.Light("light", LightType::Point).Scaled(1, 1, 3);
    const CollectRun run;
    EXPECT_EQ(LightOf(run).Direction, (Vector3{0, 0, -3}));
}

TEST(LightVisibility, IsThatOfTheBranchAtEachFrame)
{
    SceneBuilder scene;
    scene.Frames(1, 4);
    const SceneNode top = scene.Null("top").Blinking({{0, 1}, {3, 0}, {4, 1}});
    const SceneNode parent = scene.Null("parent", top);
    scene.Light("light", LightType::Point, parent).Blinking({{0, 0}, {2, 1}});
    scene.Host().CurrentFrame = 2.0;
    const CollectRun run;
    EXPECT_FALSE(LightOf(run).IsLightEnabled) << "of the first frame, not of now";
    EXPECT_THAT(Samples(LightOf(run), LightCurve::Visibility), ElementsAre(0, 1, 0, 1));
}

TEST(LightVisibility, HiddenForGoodIsNoLightButANode)
{
    const struct
    {
        const char* Name;
        bool IsLightVisible, IsParentVisible, IsAnimated;
        bool IsExported, IsEnabled;
    } rows[] = {
        {"shown", true, true, false, true, true},
        {"hidden", false, true, false, false, false},
        {"below a hidden parent", true, false, false, true, false},
        {"animated, hidden now", false, true, true, true, false},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        SceneBuilder scene;
        scene.Frames(0, 1);
        const SceneNode parent = scene.Null("parent").Visible(row.IsParentVisible);
        SceneNode light = scene.Light("light", LightType::Point, parent).Visible(row.IsLightVisible);
        if (row.IsAnimated)
            light.Blinking({{0, 0}, {1, 1}});
        const CollectRun run;
        EXPECT_TRUE(run.Succeeded());
        EXPECT_EQ(run.BoneOf(light).Name, "light");
        EXPECT_EQ(run.FindLight("light") != nullptr, row.IsExported);
        EXPECT_EQ(row.IsExported && LightOf(run).IsLightEnabled, row.IsEnabled);
        EXPECT_THAT(run.Messages(), IsEmpty());
    }
}

TEST(VisibleAt, LooksAtTheObjectAndAllAboveIt)
{
    SceneBuilder scene;
    const SceneNode top = scene.Null("top").Blinking({{0, 0}, {5, 1}});
    const SceneNode middle = scene.Null("middle", top);
    const SceneNode leaf = scene.Null("leaf", middle).Blinking({{0, 1}, {8, 0}});
    EXPECT_FALSE(IsVisibleAt(leaf, 4.0));
    EXPECT_TRUE(IsVisibleAt(leaf, 5.0));
    EXPECT_FALSE(IsVisibleAt(leaf, 8.0));
    EXPECT_TRUE(IsVisibleAt(middle, 8.0)) << "no property: visible";
    EXPECT_TRUE(IsVisibleAt(XSI::CRef(), 0.0)) << "no object at all";
    EXPECT_THAT(FindVisibilityChain(leaf), SizeIs(2));
}

TEST(AmbientLight, IsTheScenesAmbience)
{
    SceneBuilder scene;
    scene.Frames(1, 3);
    const XSI::Parameter ambience = XSI::Host::SetAmbience(0.5, 0.25, 0.125);
    XSI::Host::SetCurve(ambience.GetParameter("green"), {{{1, 0.1}, {3, 0.3}}});
    const CollectRun run;
    const Light* light = run.FindLight("AmbientLight");
    ASSERT_NE(light, nullptr);
    EXPECT_EQ(light->LightKind, LightKind::Ambient);
    EXPECT_EQ(static_cast<int>(light->LightKind), 0);
    EXPECT_EQ(light->Ambient, (Color{0.5f, 0.1f, 0.125f, 1}));
    EXPECT_THAT(Samples(*light, LightCurve::Ambient), ElementsAre(0.5f, 0.5f, 0.5f));
    EXPECT_THAT(Samples(*light, LightCurve::Ambient + 1), ElementsAre(0.1f, 0.2f, 0.3f));
    EXPECT_THAT(Samples(*light, LightCurve::Ambient + 3), ElementsAre(1, 1, 1));
    EXPECT_THAT(Samples(*light, LightCurve::Visibility), IsEmpty());
    EXPECT_TRUE(light->IsLightEnabled);
    EXPECT_EQ(run.Context.Lights.Lights.size(), 1u);
    EXPECT_EQ(run.Context.Content.Root, nullptr) << "it is no node";
}

TEST(AmbientLight, WithoutAmbienceKeepsTheDefaults)
{
    SceneBuilder scene;
    for (const XSI::CRef& property : tq4x::Each(scene.Root().GetProperties()))
        XSI::Host::Objects().Delete(property.GetObjectID());
    const CollectRun run;
    const Light* light = run.FindLight("AmbientLight");
    ASSERT_NE(light, nullptr);
    EXPECT_EQ(light->Ambient, (Color{0, 0, 0, 1}));
    EXPECT_THAT(Samples(*light, LightCurve::Ambient), IsEmpty());
}

TEST(LightCollector, NumbersThatAreNotFiniteAreTold)
{
    using Spoil = void (*)(SceneNode & light);

    const struct
    {
        const char* Name;
        Spoil Change;
    } rows[] = {
        {"intensity", [](SceneNode& light) { Drive(ShaderPort(light, "intensity"), Infinite); }},
        {"colour", [](SceneNode& light) { Drive(ShaderPort(light, "color", "blue"), Nan); }},
        {"cone", [](SceneNode& light) { Drive(light.Object().GetParameter("LightCone"), Nan); }},
        {"spread", [](SceneNode& light) { Drive(ShaderPort(light, "spread"), Infinite); }},
        {"spread down", [](SceneNode& light) { Drive(ShaderPort(light, "spread"), -Infinite); }},
        {"place", [](SceneNode& light) { light.At(Infinite, 0, 0); }},
        {"all at once",
         [](SceneNode& light) {
             light.At(Infinite, 0, 0);
             Drive(light.Object().GetParameter("LightCone"), Nan);
             Drive(ShaderPort(light, "intensity"), Infinite);
         }},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        SceneBuilder scene;
        SceneNode light = scene.Light("light", LightType::Spot);
        row.Change(light);
        const CollectRun run;
        EXPECT_NE(run.FindLight("light"), nullptr);
        EXPECT_THAT(run.Messages(), ElementsAre("W Values that are not finite exist(light)."));
    }

    SceneBuilder scene;
    Drive(XSI::Host::SetAmbience(0, 0, 0).GetParameter("red"), Nan);
    EXPECT_THAT(CollectRun().Messages(), ElementsAre("W Values that are not finite exist(AmbientLight)."));
}

} // namespace
} // namespace tq4x::test
