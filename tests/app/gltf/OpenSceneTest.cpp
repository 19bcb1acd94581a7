#include <cmath>
#include <limits>
#include <numbers>

#include <xsi_clusterproperty.h>
#include <xsi_envelope.h>
#include <xsi_geometryaccessor.h>
#include <xsi_light.h>
#include <xsi_model.h>
#include <xsi_polygonmesh.h>
#include <xsi_primitive.h>
#include <xsi_shader.h>
#include <xsi_statickinematicstate.h>

#include "SceneFile.h"
#include "scene/CreateGeometry.h"
#include "scene/CreateObjects.h"

namespace tq4x::gltf::test
{
namespace
{

using OpenSceneTest = SceneFile;

constexpr double Degrees = 180.0 / std::numbers::pi;

std::vector<std::string> ChildNames(const XSI::X3DObject& object)
{
    std::vector<std::string> names;
    const XSI::CRefArray children = object.GetChildren();
    for (LONG i = 0; i < children.GetCount(); ++i) {
        names.push_back(XSI::Host::ToUtf8(XSI::SIObject(children[i]).GetName()));
    }
    return names;
}

double PlayControl(const char* name)
{
    const XSI::CRef project = XSI::CRef::FromObjectID(XSI::Host::Session::Current().Project);
    return XSI::Host::FindProperty(project, "PlayControl").GetParameterValue(name);
}

/// Two keys at 0 s and 1 s for the values 0 and `last` of a single-float channel, or with `components` a
/// vector.
std::string Clip(const std::string& target, const std::vector<float>& values, const char* shape,
                 const char* interpolation = "LINEAR", float lastTime = 1.0f)
{
    Bytes data = Pack(0.0f, lastTime);
    for (const float value : values) {
        data = Join({data, Pack(value)});
    }
    const std::size_t perValue = std::string(shape) == "SCALAR" ? 1
                                 : std::string(shape) == "VEC2" ? 2
                                 : std::string(shape) == "VEC3" ? 3
                                                                : 4;
    const std::string length = std::to_string(data.size());
    return R"("buffers":[{"byteLength":)" + length + R"(,"uri":")" + DataUri(data) +
           R"("}],"bufferViews":[{"buffer":0,"byteLength":)" + length +
           R"(}],"accessors":[{"bufferView":0,"componentType":5126,"count":2,"type":"SCALAR"},
           {"bufferView":0,"byteOffset":8,"componentType":5126,"count":)" +
           std::to_string(values.size() / perValue) + R"(,"type":")" + shape +
           R"("}],"animations":[{"name":"move","samplers":[{"input":0,"output":1,"interpolation":")" +
           interpolation + R"("}],"channels":[{"sampler":0,"target":)" + target + "}]}]";
}

std::string Pointer(const std::string& path)
{
    return R"({"path":"pointer","extensions":{"KHR_animation_pointer":{"pointer":")" + path + R"("}}})";
}

TEST_F(OpenSceneTest, NodesBecomeObjectsInOrder)
{
    MustOpen(WithAsset(R"("nodes":[{"name":"top","children":[3,1]},{"name":"a"},{"name":"other"},{}],
        "scenes":[{"nodes":[2,0]}])"));
    EXPECT_EQ(ChildNames(XSI::Application().GetActiveSceneRoot()),
              (std::vector<std::string>{"other", "top"}));
    EXPECT_EQ(ChildNames(Find("top")), (std::vector<std::string>{"node3", "a"}));
    EXPECT_TRUE(Find("a").IsA(XSI::siNullID));
    EXPECT_FALSE(static_cast<bool>(Find("a").GetParameterValue("siscaling")));
    EXPECT_TRUE(Remarks().empty());
    EXPECT_EQ(Opened.Files, (std::vector<std::filesystem::path>{Folder / "scene.gltf"}));
}

TEST_F(OpenSceneTest, OnlyTheSceneThatIsOpenedIsMade)
{
    MustOpen(WithAsset(R"("nodes":[{"name":"in"},{"name":"out"}],"scenes":[{"nodes":[0]},{"nodes":[1]}])"));
    EXPECT_EQ(ChildNames(XSI::Application().GetActiveSceneRoot()), (std::vector<std::string>{"in"}));
}

TEST_F(OpenSceneTest, NamesLoseWhatFilesCantHold)
{
    MustOpen(WithAsset(R"("nodes":[{"name":"a<b>\"c\""}],"materials":[{"name":"x&y"}])"));
    EXPECT_EQ(ChildNames(XSI::Application().GetActiveSceneRoot()), (std::vector<std::string>{"a_b__c_"}));
    EXPECT_TRUE(FindMaterial("x_y").IsValid());
    const std::string changed =
        "The name had characters that the exported files can't hold; they became \"_\".";
    EXPECT_EQ(Remarks(), (std::vector<std::string>{"x_y: " + changed, "a_b__c_: " + changed}));
}

TEST_F(OpenSceneTest, StillScenesHaveAHundredFrames)
{
    MustOpen(WithAsset(R"("nodes":[{}])"));
    for (const char* const name : {"GlobalIn", "In"}) {
        EXPECT_EQ(PlayControl(name), 0.0);
    }
    for (const char* const name : {"GlobalOut", "Out"}) {
        EXPECT_EQ(PlayControl(name), 100.0);
    }
}

TEST_F(OpenSceneTest, FramesEndWithTheLastKey)
{
    const struct
    {
        float LastTime;
        double Rate;
        double Out;
    } cases[] = {
        {1.0f, 30.0, 30.0}, {1.0f, 24.0, 24.0}, {0.1f, 30.0, 3.0}, {1.01f, 30.0, 31.0}, {0.75f, 60.0, 45.0}};

    for (const auto& entry : cases) {
        SceneOptions options;
        options.FramesPerSecond = entry.Rate;
        MustOpen(WithAsset(R"("nodes":[{}],)" + Clip(R"({"node":0,"path":"translation"})", {0, 0, 0, 1, 2, 3},
                                                     "VEC3", "LINEAR", entry.LastTime)),
                 options);
        EXPECT_EQ(PlayControl("GlobalOut"), entry.Out) << entry.LastTime;
        EXPECT_EQ(PlayControl("Out"), entry.Out) << entry.LastTime;
    }
}

TEST_F(OpenSceneTest, PlacesNodes)
{
    MustOpen(
        WithAsset(R"("nodes":[{"name":"parts","translation":[1,2,3],"rotation":[0,0,0.70710678,0.70710678],
        "scale":[2,3,4],"children":[1]},{"name":"matrix","matrix":[0,1,0,0,-1,0,0,0,0,0,1,0,5,6,7,1]}])"));
    const auto parts = Local("parts");
    EXPECT_EQ(parts.GetTranslation().GetY(), 2.0);
    EXPECT_NEAR(parts.GetRotationXYZAngles().GetZ() * Degrees, 90.0, 1e-6);
    EXPECT_NEAR(parts.GetScaling().GetZ(), 4.0, 1e-12);
    const auto matrix = Local("matrix");
    EXPECT_NEAR(matrix.GetRotationXYZAngles().GetZ() * Degrees, 90.0, 1e-9);
    EXPECT_EQ(matrix.GetTranslation().GetX(), 5.0);
    const auto global = GlobalMatrix("matrix");
    EXPECT_NEAR(global[12], 1.0 - 3.0 * 6.0, 1e-6);
    EXPECT_NEAR(global[13], 2.0 + 2.0 * 5.0, 1e-6);
    EXPECT_NEAR(global[14], 3.0 + 4.0 * 7.0, 1e-6);
}

TEST_F(OpenSceneTest, MovesNodesByTheirTracks)
{
    MustOpen(WithAsset(R"("nodes":[{"name":"n","translation":[9,9,9],"scale":[1,2,1]}],)" +
                       Clip(R"({"node":0,"path":"translation"})", {0, 0, 0, 3, 6, 9}, "VEC3")));
    EXPECT_EQ(Local("n", 0.0).GetTranslation().GetX(), 0.0);
    EXPECT_NEAR(Local("n", 10.0).GetTranslation().GetX(), 1.0, 1e-12);
    EXPECT_NEAR(Local("n", 30.0).GetTranslation().GetZ(), 9.0, 1e-12);
    EXPECT_NEAR(Local("n", 99.0).GetTranslation().GetZ(), 9.0, 1e-12);
    EXPECT_NEAR(Local("n", 10.0).GetScaling().GetY(), 2.0, 1e-12);
}

TEST_F(OpenSceneTest, TracksOfANodeWithAMatrixReplaceItsParts)
{
    MustOpen(WithAsset(R"("nodes":[{"name":"n","matrix":[0,2,0,0,-2,0,0,0,0,0,2,0,5,6,7,1]}],)" +
                       Clip(R"({"node":0,"path":"translation"})", {0, 0, 0, 3, 6, 9}, "VEC3")));
    const auto placed = Local("n", 30.0);
    EXPECT_NEAR(placed.GetTranslation().GetY(), 6.0, 1e-12);
    EXPECT_NEAR(placed.GetRotationXYZAngles().GetZ() * Degrees, 90.0, 1e-9);
    EXPECT_NEAR(placed.GetScaling().GetX(), 2.0, 1e-12);
}

TEST_F(OpenSceneTest, TurnsAlongTheShorterArc)
{
    const float half = std::sqrt(0.5f);
    MustOpen(WithAsset(R"("nodes":[{"name":"n"}],)" +
                       Clip(R"({"node":0,"path":"rotation"})", {0, 0, 0, 1, 0, 0, -half, -half}, "VEC4")));
    EXPECT_NEAR(Local("n", 10.0).GetRotationXYZAngles().GetZ() * Degrees, 30.0, 1e-4);
}

TEST_F(OpenSceneTest, StepsChangeOnTheirFrame)
{
    MustOpen(WithAsset(R"("nodes":[{"name":"n"}],)" +
                       Clip(R"({"node":0,"path":"scale"})", {1, 1, 1, 2, 2, 2}, "VEC3", "STEP", 0.1f)));
    EXPECT_NEAR(Local("n", 2.0).GetScaling().GetX(), 1.0, 1e-12);
    EXPECT_NEAR(Local("n", 3.0).GetScaling().GetX(), 2.0, 1e-12);
}

TEST_F(OpenSceneTest, ChoosesTheFirstClipOrTheOneThatIsNamed)
{
    const std::string json = WithAsset(
        R"("nodes":[{"name":"n"}],"accessors":[{"componentType":5126,"count":1,"type":"SCALAR"},
        {"componentType":5126,"count":1,"type":"VEC3"}],"animations":[
        {"name":"walk","samplers":[{"input":0,"output":1}],"channels":[{"sampler":0,"target":{"node":0,"path":"weights"}}]},
        {"samplers":[{"input":0,"output":1}],"channels":[{"sampler":0,"target":{"path":"scale"}}]}])");
    MustOpen(json);
    EXPECT_EQ(Remarks(), (std::vector<std::string>{"walk: The animation of morph targets is not read."}));
    SceneOptions options;
    options.Clip = "animation1";
    MustOpen(json, options);
    EXPECT_EQ(Remarks(), (std::vector<std::string>{"animation1: A channel has no target."}));
    options.Clip = "Walk";
    const OpenedScene none = Open(json, options);
    EXPECT_EQ(none.Status, SceneStatus::NoClip);
    EXPECT_EQ(none.Error, "The scene has no animation \"Walk\"; it has: walk, animation1.");
    EXPECT_EQ(Open(WithAsset(""), options).Error, "The scene has no animation \"Walk\"; it has none.");
}

TEST_F(OpenSceneTest, RefusesClipsWhoseKeysMakeNoSense)
{
    const OpenedScene opened =
        Open(WithAsset(R"("nodes":[{}],)" + Clip(R"({"node":0,"path":"translation"})", {0, 0, 0, 1, 1, 1},
                                                 "VEC3", "LINEAR", -1.0f)));
    EXPECT_EQ(opened.Status, SceneStatus::BadScene);
    EXPECT_EQ(opened.Error, "/animations/0/samplers/0: The key times fall at key 1.");
}

TEST_F(OpenSceneTest, NotesRepeatedAndEmptyTracks)
{
    MustOpen(WithAsset(R"("nodes":[{}],"accessors":[{"componentType":5126,"count":2,"type":"SCALAR"},
        {"componentType":5126,"count":2,"type":"VEC3"},{"componentType":5126,"count":0,"type":"SCALAR"},
        {"componentType":5126,"count":0,"type":"VEC3"}],"animations":[{"samplers":[{"input":0,"output":1},
        {"input":2,"output":3}],"channels":[{"sampler":0,"target":{"node":0,"path":"scale"}},
        {"sampler":0,"target":{"node":0,"path":"scale"}},{"sampler":1,"target":{"node":0,"path":"translation"}}]}])"));
    EXPECT_EQ(Remarks(), (std::vector<std::string>{
                             "animation0: Two channels move the same value; the first one counts.",
                             "animation0: A channel has no keys.",
                             "animation0: 2 keys repeat the time of the key before them; of each such group "
                             "the last one counts.",
                         }));
}

TEST_F(OpenSceneTest, CamerasTakeDegreesAndWholeOpenings)
{
    MustOpen(WithAsset(R"("cameras":[
        {"type":"perspective","perspective":{"yfov":0.5,"znear":0.25,"zfar":50,"aspectRatio":1.5}},
        {"type":"perspective","perspective":{"yfov":0.5,"znear":0.25}},
        {"type":"orthographic","orthographic":{"xmag":4,"ymag":2,"znear":0,"zfar":9}}],
        "nodes":[{"name":"p","camera":0},{"name":"infinite","camera":1},{"name":"o","camera":2}])"));
    const XSI::X3DObject p = Find("p");
    EXPECT_TRUE(p.IsA(XSI::siCameraID));
    EXPECT_EQ(Number(p, "proj"), 1.0);
    EXPECT_NEAR(Number(p, "fov"), 0.5 * Degrees, 1e-12);
    EXPECT_EQ(Number(p, "fovtype"), 0.0);
    EXPECT_EQ(Number(p, "aspect"), 1.5);
    EXPECT_EQ(Number(p, "projplanewidth") / Number(p, "projplaneheight"), 1.5);
    EXPECT_EQ(Number(p, "near"), 0.25);
    EXPECT_EQ(Number(p, "far"), 50.0);
    EXPECT_EQ(Number(Find("infinite"), "far"), 32768.0);
    EXPECT_NEAR(Number(Find("infinite"), "aspect"), 4.0 / 3.0, 1e-12);
    const XSI::X3DObject o = Find("o");
    EXPECT_EQ(Number(o, "proj"), 0.0);
    EXPECT_EQ(Number(o, "orthoheight"), 4.0);
    EXPECT_EQ(Number(o, "aspect"), 2.0);
    EXPECT_EQ(Number(o, "projplanewidth") / Number(o, "projplaneheight"), 2.0);
}

TEST_F(OpenSceneTest, CamerasThatMakeNoSenseAreTold)
{
    for (const char* const view :
         {R"({"type":"perspective","perspective":{"yfov":0,"znear":1}})",
          R"({"type":"perspective","perspective":{"yfov":1,"znear":1,"aspectRatio":0}})",
          R"({"type":"perspective","perspective":{"yfov":1,"znear":1,"zfar":1}})",
          R"({"type":"orthographic","orthographic":{"xmag":0,"ymag":0,"znear":0,"zfar":1}})"}) {
        MustOpen(WithAsset(std::string(R"("nodes":[{"name":"c","camera":0}],"cameras":[)") + view + "]"));
        EXPECT_EQ(Remarks(),
                  (std::vector<std::string>{
                      "/cameras/0: The camera's opening or planes make no sense; they stay as a new "
                      "camera has them."}));
        EXPECT_EQ(Number(Find("c"), "far"), 32768.0);
    }
}

TEST_F(OpenSceneTest, LightsTakeTheirCones)
{
    MustOpen(WithAsset(R"("extensions":{"KHR_lights_punctual":{"lights":[
        {"type":"spot","color":[1,0.5,0.25],"intensity":20,"spot":{"innerConeAngle":0.1,"outerConeAngle":0.3}},
        {"type":"directional"},{"type":"point"}]}},"nodes":[
        {"name":"s","extensions":{"KHR_lights_punctual":{"light":0}}},
        {"name":"d","extensions":{"KHR_lights_punctual":{"light":1}}},
        {"name":"p","extensions":{"KHR_lights_punctual":{"light":2}}}])"));
    const XSI::X3DObject spot = Find("s");
    const XSI::Shader shader = XSI::Host::LightShaderOf(spot.GetRef());
    EXPECT_EQ(Number(spot, "Type"), 2.0);
    EXPECT_NEAR(Number(spot, "LightCone"), 0.6 * Degrees, 1e-12);
    EXPECT_NEAR(Number(shader, "spread"), 0.2 * Degrees, 1e-12);
    EXPECT_EQ(Number(shader, "intensity"), 20.0);
    EXPECT_EQ(Color(shader, "color"), (std::array{1.0, 0.5, 0.25}));
    EXPECT_EQ(Number(Find("d"), "Type"), 1.0);
    EXPECT_EQ(Number(Find("p"), "Type"), 0.0);
    EXPECT_EQ(Number(XSI::Host::LightShaderOf(Find("p").GetRef()), "intensity"), 1.0);
}

TEST_F(OpenSceneTest, PointersMoveCamerasAndLights)
{
    const std::string objects =
        R"("cameras":[{"type":"perspective","perspective":{"yfov":0.5,"znear":1,"aspectRatio":2}},
        {"type":"orthographic","orthographic":{"xmag":4,"ymag":2,"znear":0,"zfar":9}}],
        "extensions":{"KHR_lights_punctual":{"lights":[{"type":"spot","spot":{"innerConeAngle":0.1,"outerConeAngle":0.3}}]}},
        "nodes":[{"name":"c","camera":0},{"name":"o","camera":1},
        {"name":"l","extensions":{"KHR_lights_punctual":{"light":0}}}],)";
    const std::string light = "/extensions/KHR_lights_punctual/lights/0/";
    const auto open = [&](const std::string& path, const std::vector<float>& values,
                          const char* shape = "SCALAR") {
        MustOpen(WithAsset(objects + Clip(Pointer(path), values, shape)));
    };
    open("/cameras/0/perspective/yfov", {0.5f, 1.0f});
    EXPECT_NEAR(Number(Find("c"), "fov", 15.0), 0.75 * Degrees, 1e-12);
    EXPECT_TRUE(Find("c").GetParameter("fov").IsAnimated(XSI::siFCurveSource));
    open("/cameras/0/perspective/aspectRatio", {1.0f, 2.0f});
    EXPECT_NEAR(Number(Find("c"), "aspect", 15.0), 1.5, 1e-12);
    EXPECT_NEAR(Number(Find("c"), "projplanewidth", 15.0), 1.5, 1e-12);
    open("/cameras/0/perspective/znear", {1.0f, 3.0f});
    EXPECT_NEAR(Number(Find("c"), "near", 15.0), 2.0, 1e-12);
    open("/cameras/1/orthographic/ymag", {1.0f, 3.0f});
    EXPECT_NEAR(Number(Find("o"), "orthoheight", 15.0), 4.0, 1e-12);
    EXPECT_NEAR(Number(Find("o"), "projplanewidth", 15.0), 2.0, 1e-12);
    open("/cameras/1/orthographic/zfar", {1.0f, 3.0f});
    EXPECT_NEAR(Number(Find("o"), "far", 30.0), 3.0, 1e-12);
    open(light + "color", {0, 0, 0, 1, 0.5f, 0}, "VEC3");
    EXPECT_NEAR(Color(XSI::Host::LightShaderOf(Find("l").GetRef()), "color", 15.0)[1], 0.25, 1e-12);
    open(light + "intensity", {0.0f, 8.0f});
    EXPECT_NEAR(Number(XSI::Host::LightShaderOf(Find("l").GetRef()), "intensity", 15.0), 4.0, 1e-12);
    open(light + "spot/outerConeAngle", {0.3f, 0.5f});
    EXPECT_NEAR(Number(Find("l"), "LightCone", 30.0), Degrees, 1e-5);
    EXPECT_NEAR(Number(XSI::Host::LightShaderOf(Find("l").GetRef()), "spread", 30.0), 0.4 * Degrees, 1e-5);
}

TEST_F(OpenSceneTest, HiddenNodesHideWhatLiesBelow)
{
    MustOpen(WithAsset(R"("nodes":[{"name":"a","children":[1]},{"name":"b","children":[2],
        "extensions":{"KHR_node_visibility":{"visible":false}}},{"name":"c",
        "extensions":{"KHR_node_visibility":{"visible":true}}}])"));
    EXPECT_FALSE(XSI::Host::FindProperty(Find("a"), "visibility").IsValid());
    EXPECT_EQ(Number(XSI::Host::FindProperty(Find("b"), "visibility"), "viewvis"), 0.0);
    EXPECT_EQ(Number(XSI::Host::FindProperty(Find("c"), "visibility"), "viewvis"), 0.0);
}

TEST_F(OpenSceneTest, AnimatedVisibilityReachesChildren)
{
    MustOpen(WithAsset(R"("nodes":[{"name":"a","children":[1]},{"name":"b"}],)" +
                       Clip(Pointer("/nodes/0/extensions/KHR_node_visibility/visible"), {1.0f, 0.0f},
                            "SCALAR", "STEP", 0.5f)));
    for (const char* const name : {"a", "b"}) {
        const XSI::Property visibility = XSI::Host::FindProperty(Find(name), "visibility");
        EXPECT_EQ(Number(visibility, "viewvis", 0.0), 1.0) << name;
        EXPECT_EQ(Number(visibility, "viewvis", 14.0), 1.0) << name;
        EXPECT_EQ(Number(visibility, "viewvis", 15.0), 0.0) << name;
        EXPECT_TRUE(visibility.GetParameter("viewvis").GetSource().IsValid());
    }
}

/// A triangle with a skin of two joints; the mesh stands in node 0, the joints in nodes 1 and 2.
std::string SkinnedTriangle(const std::string& nodes, const std::string& skins, const Bytes& matrices)
{
    const Bytes positions = Pack(0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f);
    const Bytes joints = {0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0};
    const Bytes weights = Pack(0.5f, 0.5f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 0.0f, 0.25f, 0.75f, 0.0f, 0.0f);
    Bytes data = Join({positions, joints, weights, matrices});
    data.resize(96 + 256, 0); // room for two pairs of matrices
    return WithData(data, R"("accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3"},
        {"bufferView":0,"byteOffset":36,"componentType":5121,"count":3,"type":"VEC4"},
        {"bufferView":0,"byteOffset":48,"componentType":5126,"count":3,"type":"VEC4"},
        {"bufferView":0,"byteOffset":96,"componentType":5126,"count":2,"type":"MAT4"},
        {"bufferView":0,"byteOffset":224,"componentType":5126,"count":2,"type":"MAT4"}],
        "meshes":[{"name":"tri","primitives":[{"attributes":{"POSITION":0,"JOINTS_0":1,"WEIGHTS_0":2}}]}],"nodes":[)" +
                              nodes + R"(],"skins":[)" + skins + "]");
}

/// A matrix that only moves.
Bytes Move(float x, float y, float z)
{
    return Pack(1.0f, 0.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f, x, y, z, 1.0f);
}

std::array<double, 3> StaticPlace(const XSI::X3DObject& object)
{
    EXPECT_TRUE(object.HasStaticKinematicState());
    const auto place = object.GetStaticKinematicState().GetTransform(0.0).GetTranslation();
    return {place.GetX(), place.GetY(), place.GetZ()};
}

XSI::Envelope EnvelopeOf(const XSI::X3DObject& object)
{
    return object.GetActivePrimitive().GetGeometry().IsValid()
               ? XSI::Envelope(XSI::PolygonMesh(object.GetActivePrimitive().GetGeometry())
                                   .GetGeometryAccessor()
                                   .GetEnvelopeWeights()
                                   .GetItem(0))
               : XSI::Envelope();
}

const std::string ThreeNodes =
    R"({"name":"mesh","mesh":0,"skin":0,"translation":[9,9,9]},{"name":"j0","children":[2]},{"name":"j1"})";

TEST_F(OpenSceneTest, SkinsBecomeEnvelopes)
{
    MustOpen(SkinnedTriangle(ThreeNodes, R"({"joints":[1,2],"inverseBindMatrices":3})",
                             Join({Move(-1, -2, -3), Move(-4, 0, 0)})));
    EXPECT_TRUE(Remarks().empty());
    EXPECT_EQ(StaticPlace(Find("j0")), (std::array{1.0, 2.0, 3.0}));
    EXPECT_EQ(StaticPlace(Find("j1")), (std::array{4.0, 0.0, 0.0}));
    EXPECT_EQ(StaticPlace(Find("mesh")), (std::array{0.0, 0.0, 0.0}));
    const XSI::Envelope envelope = EnvelopeOf(Find("mesh"));
    ASSERT_TRUE(envelope.IsValid());
    const XSI::CRefArray deformers = envelope.GetDeformers();
    ASSERT_EQ(deformers.GetCount(), 2);
    EXPECT_EQ(deformers[0], Find("j0").GetRef());
    const XSI::CDoubleArray first = envelope.GetDeformerWeights(XSI::X3DObject(deformers[0]));
    const XSI::CDoubleArray second = envelope.GetDeformerWeights(XSI::X3DObject(deformers[1]));
    ASSERT_EQ(first.GetCount(), 3);
    EXPECT_EQ(first[0], 50.0);
    EXPECT_EQ(first[1], 100.0);
    EXPECT_EQ(first[2], 25.0);
    EXPECT_EQ(second[0], 50.0);
    EXPECT_EQ(second[1], 0.0);
    EXPECT_EQ(second[2], 75.0);
}

TEST_F(OpenSceneTest, SkinsWithoutMatricesBindAtTheOrigin)
{
    MustOpen(SkinnedTriangle(ThreeNodes, R"({"joints":[1,2]})", Bytes(256, 0)));
    EXPECT_EQ(StaticPlace(Find("j0")), (std::array{0.0, 0.0, 0.0}));
    EXPECT_EQ(StaticPlace(Find("mesh")), (std::array{0.0, 0.0, 0.0}));
}

TEST_F(OpenSceneTest, SkinsThatShareJointsShareTheirPoses)
{
    const std::string nodes = ThreeNodes + R"(,{"name":"second","mesh":0,"skin":1})";
    // The second skin's mesh stood at (10, 0, 0) when it was bound.
    MustOpen(SkinnedTriangle(
        nodes, R"({"joints":[1,2],"inverseBindMatrices":3},{"joints":[1,2],"inverseBindMatrices":4})",
        Join({Move(-1, -2, -3), Move(-4, 0, 0), Move(9, -2, -3), Move(6, 0, 0)})));
    EXPECT_TRUE(Remarks().empty());
    EXPECT_EQ(StaticPlace(Find("j0")), (std::array{1.0, 2.0, 3.0}));
    EXPECT_EQ(StaticPlace(Find("mesh")), (std::array{0.0, 0.0, 0.0}));
    EXPECT_EQ(StaticPlace(Find("second")), (std::array{10.0, 0.0, 0.0}));
}

TEST_F(OpenSceneTest, SkinsThatDisagreeAboutPosesAreTold)
{
    const std::string nodes = ThreeNodes + R"(,{"name":"second","mesh":0,"skin":1})";
    MustOpen(SkinnedTriangle(
        nodes, R"({"joints":[1,2],"inverseBindMatrices":3},{"joints":[1,2],"inverseBindMatrices":4})",
        Join({Move(0, 0, 0), Move(0, 0, 0), Move(1, 0, 0), Move(2, 0, 0)})));
    EXPECT_EQ(Remarks(),
              (std::vector<std::string>{
                  "/skins/1: The skin has other bind poses than a skin that shares its joints; its "
                  "meshes may be displaced."}));
}

TEST_F(OpenSceneTest, SingularPosesAreTold)
{
    Bytes matrices = Join({Move(0, 0, 0), Move(0, 0, 0)});
    matrices[2] = matrices[3] = 0; // the first element of the first matrix becomes 0
    MustOpen(SkinnedTriangle(ThreeNodes, R"({"joints":[1,2],"inverseBindMatrices":3})", matrices));
    ASSERT_FALSE(Remarks().empty());
    EXPECT_EQ(Remarks()[0], "j0: The joint's inverse bind matrix has no inverse; it counts as identity.");
}

TEST_F(OpenSceneTest, RefusesPosesThatAreNoNumbers)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(Open(SkinnedTriangle(ThreeNodes, R"({"joints":[1,2],"inverseBindMatrices":3})",
                                   Join({Move(0, 0, 0), Move(0, nan, 0)})))
                  .Error,
              "/skins/0/inverseBindMatrices: The matrix of joint 1 holds a number that is none.");
}

TEST_F(OpenSceneTest, RefusesJointsOutsideTheScene)
{
    std::string json = SkinnedTriangle(ThreeNodes, R"({"joints":[1,2],"inverseBindMatrices":3})",
                                       Join({Move(0, 0, 0), Move(0, 0, 0)}));
    json.insert(json.size() - 1, R"(,"scenes":[{"nodes":[0]}])");
    EXPECT_EQ(Open(json).Error, "/skins/0/joints/0: The joint j0 is not in the scene that is opened.");
}

TEST_F(OpenSceneTest, MeshesOfOneNodeHoldAllTriangles)
{
    const Bytes positions = Pack(0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f);
    MustOpen(
        WithData(positions, R"("accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3"}],
        "materials":[{"name":"red"}],"meshes":[{"primitives":[{"attributes":{"POSITION":0}},
        {"attributes":{"POSITION":0},"material":0}]},{"primitives":[]}],
        "nodes":[{"name":"a","mesh":0},{"name":"b","mesh":0},{"name":"empty","mesh":1}])"));
    const auto* const geometry = XSI::Host::FindMesh(Find("a"));
    ASSERT_NE(geometry, nullptr);
    EXPECT_EQ(geometry->TriangleCount(), 2);
    EXPECT_EQ(geometry->PolygonMaterials, (std::vector<LONG>{0, 1}));
    ASSERT_EQ(geometry->Materials.size(), 2u);
    EXPECT_EQ(geometry->Materials[0], FindMaterial("DefaultMaterial").GetRef());
    EXPECT_EQ(geometry->Materials[1], FindMaterial("red").GetRef());
    EXPECT_NE(XSI::Host::FindMesh(Find("b")), nullptr);
    EXPECT_TRUE(Find("empty").IsA(XSI::siNullID));
    EXPECT_EQ(Remarks(),
              (std::vector<std::string>{"empty: The mesh has no triangles; the node becomes a null."}));
}

TEST_F(OpenSceneTest, WhatAMeshNodeCarriesBesideHangsBelowIt)
{
    const Bytes positions = Pack(0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f);
    MustOpen(
        WithData(positions, R"("accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3"}],
        "meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}],
        "cameras":[{"type":"perspective","perspective":{"yfov":0.5,"znear":1}}],
        "extensions":{"KHR_lights_punctual":{"lights":[{"type":"point"}]}},
        "nodes":[{"name":"a","mesh":0,"camera":0,"extensions":{"KHR_lights_punctual":{"light":0}},"children":[1]},
        {"name":"child"}])"));
    EXPECT_EQ(ChildNames(Find("a")), (std::vector<std::string>{"child", "a_camera", "a_light"}));
    EXPECT_TRUE(Find("a_camera").IsA(XSI::siCameraID));
    EXPECT_TRUE(Find("a_light").IsA(XSI::siLightID));
}

TEST_F(OpenSceneTest, ASkinWithoutWeightsLeavesTheMeshRigid)
{
    const Bytes positions = Pack(0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f);
    MustOpen(
        WithData(positions, R"("accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3"}],
        "meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}],"skins":[{"joints":[1]}],
        "nodes":[{"name":"a","mesh":0,"skin":0},{"name":"j"}])"));
    EXPECT_EQ(Remarks(),
              (std::vector<std::string>{
                  "a: The node has a skin, but its mesh has no joints and weights; it stays rigid."}));
    EXPECT_FALSE(Find("a").HasStaticKinematicState());
}

TEST_F(OpenSceneTest, AFailureLeavesAnEmptyScene)
{
    MustOpen(WithAsset(R"("nodes":[{"name":"before"}])"));
    EXPECT_EQ(Open("{").Error, "The JSON is malformed at line 1, column 2.");
    EXPECT_TRUE(ChildNames(XSI::Application().GetActiveSceneRoot()).empty());
}

TEST_F(OpenSceneTest, TheSceneHasTheNameOfItsFile)
{
    MustOpen(WithAsset(""));
    const XSI::CRef scene = XSI::CRef::FromObjectID(XSI::Host::Session::Current().Scene);
    EXPECT_EQ(XSI::Host::ToUtf8(XSI::SIObject(scene).GetName()), "scene");
    EXPECT_EQ(XSI::Host::ToUtf8(XSI::ProjectItem(scene).GetParameterValue("FileName").GetAsText()),
              (Folder / "scene.gltf").string());
}

} // namespace
} // namespace tq4x::gltf::test
