#include "support/ExportRun.h"
#include "support/Golden.h"
#include "support/PlatformGuard.h"
#include "support/ToolInstallation.h"

// Whole files, as an export writes them.

namespace tq4x::test
{
namespace
{

using testing::IsEmpty;

class GoldenFiles : public testing::Test
{
protected:
    GoldenFiles() { m_platform.FixUserAndTime(); }

    /// Exports the scene without the model, unless the options ask for it, and compares one of the files.
    static void ExpectFile(const std::string& extension, const std::string& golden,
                           std::vector<std::string> options)
    {
        options.insert(options.begin(), "OutputQtex:false");
        const ExportRun run(options);
        EXPECT_TRUE(run.Succeeded());
        EXPECT_THAT(run.Messages(), IsEmpty());
        ExpectGolden(run.File("out." + extension), "host/collect/" + golden + "." + extension);
    }

private:
    PlatformGuard m_platform;
    ToolInstallation m_tool;
};

TEST_F(GoldenFiles, ACubeOfTwoMaterials)
{
    SceneBuilder scene;
    scene.Named("cube", "scenes/cube.scn").Frames(0, 0);
    const SceneMaterial red = scene.Material("red", "lambert").Color("diffuse", 1, 0, 0);
    const SceneMaterial blue = scene.Material("blue", "lambert").Color("diffuse", 0, 0, 1);
    SceneMesh cube = scene.Mesh("cube");
    cube.At(0, 1, 0);
    const std::vector<Point> corners = {{-1, -1, -1}, {1, -1, -1}, {1, 1, -1}, {-1, 1, -1},
                                        {-1, -1, 1},  {1, -1, 1},  {1, 1, 1},  {-1, 1, 1}};
    cube.Vertices(corners);
    cube.Triangles({{4, 5, 6}, {4, 6, 7}, {1, 0, 3}, {1, 3, 2}}, red);  // front and back
    cube.Triangles({{5, 1, 2}, {5, 2, 6}, {0, 4, 7}, {0, 7, 3}}, blue); // right and left
    cube.Triangles({{7, 6, 2}, {7, 2, 3}, {0, 1, 5}, {0, 5, 4}}, blue); // top and bottom
    cube.SplitNodes();
    std::vector<float> normals;
    const std::vector<Point> sides = {{0, 0, 1}, {0, 0, -1}, {1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}};
    for (const Point& side : sides)
        for (int corner = 0; corner < 6; ++corner)
            for (const double component : side)
                normals.push_back(static_cast<float>(component));
    cube.Normals(normals);
    ExpectFile("qmdl", "cube-two-materials", {});
}

/// A strip of two squares, one above the other, over two bones: "lower" at the origin and "upper" at the
/// middle, which bends.
struct Strip
{
    enum class Weights
    {
        Blended,   ///< the middle hangs on both bones
        OnePerRow, ///< each vertex on one bone
        UpperOnly,
    };

    explicit Strip(Weights weights)
    {
        Scene.Named("strip", "scenes/strip.scn").Frames(0, 4);
        const SceneNode lower = Scene.Bone("lower");
        const SceneNode upper = Scene.Bone("upper", lower).At(0, 1, 0).Turning({}, {}, {{0, 0}, {4, 40}});
        SceneMesh strip = Scene.Mesh("strip", lower);
        strip.Bound();
        strip.Vertices({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {0, 2, 0}, {1, 2, 0}});
        strip.Triangles({{0, 1, 3}, {0, 3, 2}, {2, 3, 5}, {2, 5, 4}}, Scene.Material("skin", "constant"));
        const VertexWeights whole{{0, 100}, {1, 100}, {2, 100}, {3, 100}, {4, 100}, {5, 100}};
        const double middle = weights == Weights::Blended ? 40.0 : 0.0;
        if (weights == Weights::UpperOnly)
            strip.Skin({{upper, whole}});
        else
            strip.Skin({{lower, {{0, 100}, {1, 100}, {2, middle}, {3, middle}}},
                        {upper, {{2, 100 - middle}, {3, 100 - middle}, {4, 100}, {5, 100}}}});
    }

    SceneBuilder Scene;
};

TEST_F(GoldenFiles, ASmoothSkin)
{
    const Strip strip(Strip::Weights::Blended);
    ExpectFile("qmdl", "strip-smooth", {});
}

TEST_F(GoldenFiles, ARigidSkin)
{
    const Strip strip(Strip::Weights::OnePerRow);
    ExpectFile("qmdl", "strip-rigid", {"AdjustSkinning:1"});
}

TEST_F(GoldenFiles, ASkinOfOneBoneMovesThere)
{
    const Strip strip(Strip::Weights::UpperOnly);
    ExpectFile("qmdl", "strip-re-homed", {});
}

TEST_F(GoldenFiles, ASkinUnderNonUniformScale)
{
    const Strip strip(Strip::Weights::Blended);
    ExpectFile("qmdl", "strip-non-uniform", {"NonUniformScale:true"});
}

TEST_F(GoldenFiles, AMovingSkin)
{
    const Strip strip(Strip::Weights::Blended);
    ExpectFile("qskla", "strip", {"OutputQskla:true", "OutputQmdl:false"});
}

TEST_F(GoldenFiles, VisibilityInBothModes)
{
    for (const char* mode : {"index", "name"}) {
        SceneBuilder scene;
        scene.Named("blink", "scenes/blink.scn").Frames(1, 5);
        const SceneNode root = scene.Null("root").Blinking({{0, 1}, {3, 0}}); // a node without a mesh
        const SceneMaterial red = scene.Material("red", "constant");
        scene.Mesh("still", root).Square(red).Visible(true);
        scene.Mesh("blinking", root)
            .Square(red)
            .Square(scene.Material("blue", "constant"))
            .Blinking({{0, 1}, {3, 0}, {4, 1}});
        const bool isByName = std::string(mode) == "name";
        ExpectFile("qmdla", std::string("blink-by-") + mode,
                   {"OutputQmdla:true", "OutputQmdl:false",
                    isByName ? "MeshVisibilityMode:1" : "MeshVisibilityMode:0"});
    }
}

/// One camera of each kind, moving or not.
void MakeCameras(SceneBuilder& scene, bool isMoving)
{
    scene.Named("cameras", "scenes/cameras.scn").Frames(0, 4);
    const SceneNode target = scene.Null("target").At(0, 1, 0);
    const SceneNode up = scene.Null("up").At(0, 5, 0);
    SceneNode turning = scene.Camera("turning", target).At(0, 0, 8).Turned(0, 45, 0).Set("near", 0.5);
    SceneNode aiming = scene.Camera("aiming").At(0, 1, 6).AimedAt(target, {}, 15.0);
    SceneNode looking = scene.Camera("looking").At(2, 1, 0).AimedAt(target, up);
    SceneNode flat = scene.Camera("flat").Set("proj", 0).Set("far", 100.0);
    for (SceneNode* camera : {&turning, &aiming, &looking, &flat})
        camera->Set("aspect", 1.5).Set("projplanewidth", 3.0).Set("projplaneheight", 2.0);
    if (!isMoving)
        return;
    turning.Turning({}, {{0, 45}, {4, 25}}).Animate("fov", {{0, 50}, {4, 58}});
    aiming.Moving({{0, 0}, {4, 8}});
    looking.Moving({{0, 2}, {4, 2}}, {{0, 1}, {4, 5}}).Animate("near", {{0, 1}, {4, 3}});
    flat.Animate("orthoheight", {{0, 10}, {4, 2}});
}

TEST_F(GoldenFiles, CamerasOfAllKinds)
{
    for (const bool isMoving : {false, true}) {
        SceneBuilder scene;
        MakeCameras(scene, isMoving);
        ExpectFile("qcam", isMoving ? "cameras-moving" : "cameras-still",
                   {"OutputQmdl:false", "OutputQcam:true", "Magnify:2"});
    }
}

/// One light of each kind, moving or not.
void MakeLights(SceneBuilder& scene, bool isMoving)
{
    using XSI::Host::LightType;
    scene.Named("lights", "scenes/lights.scn").Frames(0, 4);
    const XSI::Parameter ambience = XSI::Host::SetAmbience(0.25, 0.5, 0.75);
    SceneNode point = scene.Light("point", LightType::Point).At(1, 2, 3);
    SceneNode sun = scene.Light("sun", LightType::Infinite).Turned(-90, 0, 0);
    SceneNode spot = scene.Light("spot", LightType::Spot).At(0, 4, 0).Set("SpecularContribution", false);
    scene.Light("area", LightType::Point).Visible(false); // hidden for good: no light
    if (!isMoving)
        return;
    XSI::Host::SetCurve(ambience.GetParameter("red"), {{{0, 0.25}, {4, 1}}});
    point.Moving({{0, 1}, {4, 5}}, {{0, 2}, {4, 2}}, {{0, 3}, {4, 3}}).Blinking({{0, 1}, {2, 0}});
    sun.Turning({{0, -90}, {4, -50}});
    XSI::Host::SetCurve(XSI::Host::LightShaderOf(spot).GetParameter("intensity"), {{{0, 0.75}, {4, 0}}});
}

TEST_F(GoldenFiles, LightsOfAllKinds)
{
    for (const bool isMoving : {false, true}) {
        SceneBuilder scene;
        MakeLights(scene, isMoving);
        ExpectFile("qlgt", isMoving ? "lights-moving" : "lights-still",
                   {"OutputQmdl:false", "OutputQlgt:true", "Magnify:2"});
    }
}

TEST_F(GoldenFiles, AnEnvironment)
{
    SceneBuilder scene;
    scene.Named("room", "scenes/room.scn").Frames(0, 4);
    scene.Camera("view").At(0, 0, 5).Moving({{0, 0}, {4, 4}});
    scene.Light("lamp", XSI::Host::LightType::Spot).Blinking({{0, 1}, {2, 0}});
    ExpectFile("qenv", "room", {"OutputQmdl:false", "OutputQenv:true"});
}

} // namespace
} // namespace tq4x::test
