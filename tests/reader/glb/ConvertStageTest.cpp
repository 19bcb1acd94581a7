#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

#include "glb/NodeMath.h"
#include "reader/glb/ReadGlb.h"

namespace tq4x::reader::test
{
namespace
{

using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pointwise;

constexpr float Pi = std::numbers::pi_v<float>;

ExportedFiles StageFiles(const Stage& stage, const std::string& name = "scene.qcam",
                         FileKind kind = FileKind::Camera)
{
    Document document;
    document.Kind = kind;
    document.Stage = stage;
    ExportedFiles files;
    files.Files = {{name, document}};
    return files;
}

Camera MakeCamera(const std::string& mode)
{
    Camera camera;
    camera.Name = "eye";
    camera.ViewMode = mode;
    camera.Near = 0.5F;
    camera.Far = 100;
    camera.Fovy = 1;
    camera.AspectRatio = 2;
    camera.Height = 8;
    return camera;
}

Stage StageOf(const Camera& camera)
{
    Stage stage;
    stage.Cameras = {camera};
    return stage;
}

/// A direction of a node's own axes, seen from the world.
std::vector<double> Turned(const Json& node, const std::array<double, 3>& v)
{
    const Json& q = node.at("rotation");
    const std::array<double, 3> u = {q.at(0), q.at(1), q.at(2)};
    const double w = q.at(3);
    const auto cross = [](const auto& a, const auto& b) {
        return std::array<double, 3>{a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2],
                                     a[0] * b[1] - a[1] * b[0]};
    };
    const auto inner = cross(u, v);
    const auto outer = cross(u, inner);
    std::vector<double> turned(3);
    for (std::size_t i = 0; i < 3; ++i) {
        turned[i] = v[i] + 2 * w * inner[i] + 2 * outer[i];
    }
    return turned;
}

constexpr std::array<double, 3> Forward = {0, 0, -1};
constexpr std::array<double, 3> Up = {0, 1, 0};

TEST(ConvertCamera, ThreeWaysOfLooking)
{
    const double root = std::sqrt(0.5);

    const struct
    {
        const char* Name;
        const char* Mode;
        Vector3 From;
        Vector3 To;
        Vector3 UpOrAngles;
        float Twist;
        std::vector<double> Forward;
        std::vector<double> Up;
    } cases[] = {
        {"ahead", "Rotate", {1, 2, 3}, {}, {0, 0, 0}, 0, {0, 0, -1}, {0, 1, 0}},
        {"angles", "Rotate", {}, {}, {Pi / 2, 0, 0}, 0, {0, 1, 0}, {0, 0, 1}},
        {"aim", "AimTarget", {0, 0, 5}, {5, 0, 5}, {}, 0, {1, 0, 0}, {0, 1, 0}},
        {"aim and twist", "AimTarget", {0, 0, 5}, {0, 0, 0}, {}, Pi / 2, {0, 0, -1}, {-1, 0, 0}},
        {"aim straight down", "AimTarget", {0, 5, 0}, {0, 0, 0}, {}, 0, {0, -1, 0}, {0, 0, -1}},
        {"aim at itself", "AimTarget", {1, 1, 1}, {1, 1, 1}, {}, 0, {0, 0, -1}, {0, 1, 0}},
        {"look", "LookAtTarget", {0, 0, 5}, {0, 0, 0}, {1, 1, 0}, 0, {0, 0, -1}, {root, root, 0}},
        {"look, up not perpendicular",
         "LookAtTarget",
         {0, 0, 5},
         {0, 0, 0},
         {1, 0, 7},
         0,
         {0, 0, -1},
         {1, 0, 0}},
    };

    for (const auto& entry : cases) {
        Camera camera = MakeCamera(entry.Mode);
        camera.Local.Translate = entry.From;
        camera.TargetPosition = entry.To;
        camera.UpwardVector = camera.ViewRotate = entry.UpOrAngles;
        camera.Twist = entry.Twist;
        const Glb glb = Convert(StageFiles(StageOf(camera))).File;
        const Json& node = glb.Root.at("nodes").at(0);
        EXPECT_THAT(Turned(node, Forward), Pointwise(DoubleNear(1e-6), entry.Forward)) << entry.Name;
        EXPECT_THAT(Turned(node, Up), Pointwise(DoubleNear(1e-6), entry.Up)) << entry.Name;
        EXPECT_EQ(node.at("camera"), 0);
    }
}

TEST(ConvertCamera, Lenses)
{
    const struct
    {
        const char* Name;
        void (*Change)(Camera& camera);
        const char* Json;
    } cases[] = {
        {"perspective", [](Camera&) {},
         R"({"name":"eye","type":"perspective","perspective":{"yfov":1.0,"aspectRatio":2.0,"znear":0.5,"zfar":100.0}})"},
        {"orthographic", [](Camera& camera) { camera.IsOrtho = true; },
         R"({"name":"eye","type":"orthographic","orthographic":{"xmag":8.0,"ymag":4.0,"znear":0.5,"zfar":100.0}})"},
        {"brought into glTF's limits",
         [](Camera& camera) {
             camera.Fovy = camera.Near = camera.AspectRatio = 0;
             camera.Far = -1;
         },
         R"({"name":"eye","type":"perspective","perspective":{"yfov":0.001,"aspectRatio":0.001,"znear":0.001,"zfar":0.002}})"},
    };

    for (const auto& entry : cases) {
        Camera camera = MakeCamera("Rotate");
        entry.Change(camera);
        EXPECT_EQ(Convert(StageFiles(StageOf(camera))).File.Root.at("cameras").at(0).dump(), entry.Json)
            << entry.Name;
    }
}

Curve Straight(float first, float second)
{
    Curve curve;
    curve.Keys.resize(2);
    curve.Keys[0].Value = first;
    curve.Keys[1].Value = second;
    curve.Keys[1].Frame = 30;
    return curve;
}

MemberAnimation Moving(const std::string& path, std::size_t channel, float first, float second)
{
    MemberAnimation member;
    member.Path = path;
    member.Channels[channel] = Straight(first, second);
    return member;
}

/// First and last row of each channel, by its target.
std::map<std::string, std::pair<std::vector<double>, std::vector<double>>> EndsOf(const Glb& glb)
{
    std::map<std::string, std::pair<std::vector<double>, std::vector<double>>> ends;
    const Json& clip = glb.Root.at("animations").at(0);
    for (const Json& channel : clip.at("channels")) {
        const Json& target = channel.at("target");
        const Json& sampler = clip.at("samplers").at(channel.at("sampler").get<std::size_t>());
        const std::vector<double> times = glb.Numbers(sampler.at("input"));
        const std::vector<double> values = glb.Numbers(sampler.at("output"));
        const auto rows = static_cast<std::ptrdiff_t>(times.size());
        const auto width = static_cast<std::ptrdiff_t>(values.size()) / rows;
        const std::string name =
            target.at("path") == "pointer"
                ? target.at("extensions").at("KHR_animation_pointer").at("pointer").get<std::string>()
                : target.at("path").get<std::string>();
        ends[name] = {{values.begin(), values.begin() + width}, {values.end() - width, values.end()}};
    }
    return ends;
}

TEST(ConvertCamera, Moves)
{
    Stage stage = StageOf(MakeCamera("Rotate"));
    MemberAnimation transform;
    transform.Path = "Transform";
    transform.Translate[1] = Straight(0, 3);
    stage.CameraAnimations = {
        {{"eye", 30, false, 0},
         "Rotate",
         "Perspective",
         {transform, Moving("ViewUpdater.ViewRotate", 2, 0, Pi / 2),
          Moving("ProjectionUpdater.Fovy", 0, 1, 0.5F), Moving("ProjectionUpdater.Near", 0, 0.5F, 1)}}};
    const Glb glb = Convert(StageFiles(stage)).File;
    const auto ends = EndsOf(glb);
    ASSERT_EQ(ends.size(), 4U);
    EXPECT_THAT(ends.at("translation").second, ElementsAre(0, 3, 0));
    EXPECT_THAT(ends.at("rotation").first, ElementsAre(0, 0, 0, 1));
    EXPECT_THAT(ends.at("rotation").second,
                Pointwise(DoubleNear(1e-6), std::vector<double>{0, 0, std::sqrt(0.5), std::sqrt(0.5)}));
    EXPECT_THAT(ends.at("/cameras/0/perspective/yfov").second, ElementsAre(0.5));
    EXPECT_THAT(ends.at("/cameras/0/perspective/znear").second, ElementsAre(1));
}

TEST(ConvertCamera, AnEnvironmentRepeatsNothing)
{
    Stage moving = StageOf(MakeCamera("Rotate"));
    MemberAnimation transform;
    transform.Path = "Transform";
    transform.Translate[1] = Straight(0, 3);
    moving.CameraAnimations = {{{"eye", 30, false, 0}, "Rotate", "Perspective", {transform}}};
    Stage still = StageOf(MakeCamera("Rotate"));
    still.Cameras.push_back(MakeCamera("Rotate"));
    still.Cameras[1].Name = "other";
    ExportedFiles files = StageFiles(still, "scene.qenv", FileKind::Environment);
    files.Files.push_back(StageFiles(moving).Files[0]);
    const Glb glb = Convert(files).File;
    EXPECT_EQ(glb.Root.at("cameras").size(), 2U);
    EXPECT_EQ(glb.Root.at("animations").size(), 1U);
    EXPECT_EQ(glb.Root.at("nodes").at(0).at("name"), "eye");
}

Light MakeLight(const std::string& kind)
{
    Light light;
    light.Name = "lamp";
    light.Kind = kind;
    light.Diffuse = {1, 0.5F, 2, 3};
    light.Direction = {0, -1, 0};
    light.Local.Translate = {1, 2, 3};
    return light;
}

/// The table that the exporter makes for a cone.
LookupTable ConeTable(double inner, double outer)
{
    const int full = static_cast<int>(std::cos(inner) * 256);
    const int dark = static_cast<int>(std::cos(outer) * 256);
    LookupTable table;
    table.Name = "cone";
    for (int i = 0; i < 256; ++i) {
        Key key;
        key.Frame = static_cast<float>(i);
        key.Value = i < dark    ? 0.0F
                    : i >= full ? 1.0F
                                : static_cast<float>(i - dark) / static_cast<float>(full - dark);
        table.Values.Keys.push_back(key);
    }
    return table;
}

Stage StageOf(const Light& light)
{
    Stage stage;
    stage.Lights = {light};
    return stage;
}

const Json& FirstLight(const Glb& glb)
{
    return glb.Root.at("extensions").at("KHR_lights_punctual").at("lights").at(0);
}

TEST(ConvertLight, Kinds)
{
    const struct
    {
        const char* Kind;
        const char* Type;
        std::vector<double> Forward;
    } cases[] = {{"DirectionalLight", "directional", {0, -1, 0}},
                 {"SpotLight", "spot", {0, -1, 0}},
                 {"PointLight", "point", {0, 0, -1}}};

    for (const auto& entry : cases) {
        const Converted converted = Convert(StageFiles(StageOf(MakeLight(entry.Kind))));
        const Json& light = FirstLight(converted.File);
        EXPECT_EQ(light.at("type"), entry.Type);
        EXPECT_EQ(light.at("color").dump(), "[1.0,0.5,1.0]");
        EXPECT_EQ(light.at("intensity"), 3);
        const Json& node = converted.File.Root.at("nodes").at(0);
        EXPECT_THAT(Turned(node, Forward), Pointwise(DoubleNear(1e-6), entry.Forward)) << entry.Kind;
        EXPECT_EQ(node.at("translation").dump(), "[1.0,2.0,3.0]");
        EXPECT_EQ(node.at("extensions").dump(), R"({"KHR_lights_punctual":{"light":0}})");
        EXPECT_THAT(converted.Warnings, IsEmpty());
    }
}

TEST(ConvertLight, ConesOfSpotLights)
{
    const struct
    {
        double Inner;
        double Outer;
    } cases[] = {{0.2, 0.5}, {0, 0.7}, {0.6, 0.9}, {0.5, 1.5}};

    for (const auto& entry : cases) {
        Stage stage = StageOf(MakeLight("SpotLight"));
        stage.Lights[0].Angle.HasTable = true;
        stage.Lights[0].Angle.TableName = "cone";
        stage.LookupTables.Tables = {ConeTable(entry.Inner, entry.Outer)};
        const Glb glb = Convert(StageFiles(stage)).File;
        const Json& spot = FirstLight(glb).at("spot");
        // The table knows the cosines in steps of 1 / 256 only.
        EXPECT_NEAR(std::cos(spot.at("innerConeAngle").get<double>()), std::cos(entry.Inner), 1.1 / 256);
        EXPECT_NEAR(std::cos(spot.at("outerConeAngle").get<double>()), std::cos(entry.Outer), 1.1 / 256);
    }
}

TEST(ConvertLight, TablesWithoutAConeStayWithinGltfsLimits)
{
    for (const float value : {0.0F, 0.5F, 1.0F}) {
        Stage stage = StageOf(MakeLight("SpotLight"));
        stage.Lights[0].Angle.TableName = "cone";
        LookupTable table;
        table.Name = "cone";
        table.Values.Keys.resize(1);
        table.Values.Keys[0].Value = value;
        stage.LookupTables.Tables = {table};
        const Glb glb = Convert(StageFiles(stage)).File;
        const double inner = FirstLight(glb).at("spot").at("innerConeAngle");
        const double outer = FirstLight(glb).at("spot").at("outerConeAngle");
        EXPECT_GE(inner, 0) << value;
        EXPECT_LT(inner, outer) << value;
        EXPECT_LE(outer, std::numbers::pi / 2) << value;
    }
}

TEST(ConvertLight, RangeOfAttenuatedLights)
{
    Light light = MakeLight("PointLight");
    light.DistanceAttenuationEnd = 12;
    EXPECT_FALSE(FirstLight(Convert(StageFiles(StageOf(light))).File).contains("range"));
    light.IsDistanceAttenuationEnabled = true;
    EXPECT_EQ(FirstLight(Convert(StageFiles(StageOf(light))).File).at("range"), 12);
}

TEST(ConvertLight, WhatHasNoPlaceIsTold)
{
    Light light = MakeLight("Ambient");
    Converted converted = Convert(StageFiles(StageOf(light)));
    EXPECT_FALSE(converted.File.Root.contains("nodes"));
    EXPECT_THAT(converted.Warnings, IsEmpty()); // a black one does nothing
    light.Ambient = {0.1F, 0, 0, 1};
    EXPECT_THAT(Convert(StageFiles(StageOf(light))).Warnings,
                ElementsAre("\"lamp\": an ambient light has no place in glTF."));
    light = MakeLight("PointLight");
    light.IsBranchVisible = false;
    converted = Convert(StageFiles(StageOf(light)));
    EXPECT_FALSE(converted.File.Root.contains("nodes"));
    EXPECT_THAT(converted.Warnings, ElementsAre("\"lamp\": the light is off and left out."));
}

TEST(ConvertLight, Moves)
{
    Stage stage = StageOf(MakeLight("SpotLight"));
    stage.Lights[0].IsBranchVisible = false; // for now
    MemberAnimation transform;
    transform.Path = "Transform";
    transform.Translate[0] = Straight(1, 5);
    MemberAnimation enabled;
    enabled.Path = "IsLightEnabled";
    enabled.Bool = BoolCurve{0, 10, false, {{0, false, 0}, {10, true, 0}}, 0};
    stage.LightAnimations = {
        {{"lamp.LightAnimation", 30, false, 0},
         "SpotLight",
         "Fragment",
         {transform, Moving("Direction", 0, 0, 1), Moving("Diffuse", 3, 3, 9), enabled}}};
    const Glb glb = Convert(StageFiles(stage)).File;
    const auto ends = EndsOf(glb);
    ASSERT_EQ(ends.size(), 4U);
    EXPECT_THAT(ends.at("translation").second, ElementsAre(5, 2, 3));
    const std::vector<double>& q = ends.at("rotation").second;
    EXPECT_THAT(Turned(Json{{"rotation", q}}, Forward),
                Pointwise(DoubleNear(1e-6), std::vector<double>{std::sqrt(0.5), -std::sqrt(0.5), 0}));
    EXPECT_THAT(ends.at("/extensions/KHR_lights_punctual/lights/0/intensity").second, ElementsAre(9));
    EXPECT_THAT(ends.at("/nodes/0/extensions/KHR_node_visibility/visible").second, ElementsAre(1));
    EXPECT_EQ(glb.Root.at("nodes").at(0).at("extensions").at("KHR_node_visibility").dump(),
              R"({"visible":false})");
}

} // namespace
} // namespace tq4x::reader::test
