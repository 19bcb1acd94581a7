#include "ParseSections.h"

namespace tq4x::reader
{
namespace
{

void ParseView(Camera& camera, const ElementReader& element)
{
    const ElementReader rotate = element.Child("RotateViewUpdater");
    const ElementReader aim = element.Child("AimTargetViewUpdater");
    const ElementReader look = element.Child("LookAtTargetViewUpdater");
    const ElementReader target = aim.Exists() ? aim : look;
    camera.ViewMode = aim.Exists() ? "AimTarget" : look.Exists() ? "LookAtTarget" : "Rotate";
    camera.ViewRotate = rotate.Child("ViewRotate").Vector();
    camera.Twist = aim.Float("Twist");
    camera.TargetPosition = target.Child("TargetPosition").Vector();
    camera.UpwardVector = look.Child("UpwardVector").Vector();
}

void ParseProjection(Camera& camera, const ElementReader& element)
{
    const ElementReader ortho = element.Child("OrthoProjectionUpdater");
    const ElementReader projection = ortho.Exists() ? ortho : element.Child("PerspectiveProjectionUpdater");
    camera.IsOrtho = ortho.Exists();
    camera.Near = projection.Float("Near");
    camera.Far = projection.Float("Far");
    camera.AspectRatio = projection.Float("AspectRatio", 1);
    camera.Fovy = projection.Float("Fovy");
    camera.Height = projection.Float("Height");
    camera.Center = ortho.Child("Center").Vector();
}

Camera ParseCamera(const ElementReader& element)
{
    Camera camera;
    camera.Name = element.Text("Name");
    camera.IsBranchVisible = element.Boolean("IsBranchVisible");
    camera.Local = ReadTransform(element.Child("Transform"));
    camera.Line = element.Line();
    ParseView(camera, element);
    ParseProjection(camera, element);
    return camera;
}

Light ParseLight(const ElementReader& element)
{
    Light light;
    light.Name = element.Text("Name");
    light.IsBranchVisible = element.Boolean("IsBranchVisible");
    light.Kind = element.Name() == "AmbientLightQtr" ? "Ambient" : element.Text("LightKind");
    light.Local = ReadTransform(element.Child("Transform"));
    light.Ambient = element.Child("Ambient").Rgba();
    light.Diffuse = element.Child("Diffuse").Rgba();
    light.Specular0 = element.Child("Specular0").Rgba();
    light.Specular1 = element.Child("Specular1").Rgba();
    light.Direction = element.Child("Direction").Vector();
    light.IsDistanceAttenuationEnabled = element.Boolean("IsDistanceAttenuationEnabled");
    light.DistanceAttenuationStart = element.Float("DistanceAttenuationStart");
    light.DistanceAttenuationEnd = element.Float("DistanceAttenuationEnd");
    light.Angle = ParseSampler(element.Child("AngleSampler"));
    light.Line = element.Line();
    return light;
}

} // namespace

Stage ParseStage(const ElementReader& content)
{
    Stage stage;
    const ElementReader animations = content.Child("Animations");
    for (const ElementReader& element : animations.Children("CameraAnimationData")) {
        stage.CameraAnimations.push_back({ParseAnimationHead(element), element.Text("ViewMode"),
                                          element.Text("ProjectionMode"), ParseMembers(element)});
    }
    for (const ElementReader& element : content.Child("Cameras").Children("Camera")) {
        stage.Cameras.push_back(ParseCamera(element));
    }
    for (const ElementReader& element : animations.Children("LightAnimationData")) {
        stage.LightAnimations.push_back({ParseAnimationHead(element), element.Text("LightKind"),
                                         element.Text("LightType"), ParseMembers(element)});
    }
    stage.LookupTables = ParseLookupTables(content);
    for (const ElementReader& element : content.Child("Lights").Children()) {
        stage.Lights.push_back(ParseLight(element));
    }
    return stage;
}

} // namespace tq4x::reader
