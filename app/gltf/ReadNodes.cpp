#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "gltf/ReadRecords.h"

namespace tq4x::gltf
{
namespace
{

Camera ReadCamera(const JsonPlace& place)
{
    Camera camera;
    camera.Name = ReadText(place, "name");
    const auto type = place.Require("type");
    if (type.Text() != "perspective" && type.Text() != "orthographic") {
        type.Fail("There is no camera type \"" + type.Text() + "\".");
    }
    camera.IsPerspective = type.Text() == "perspective";
    const auto view = place.Require(type.Text());
    if (camera.IsPerspective) {
        camera.VerticalAngle = view.Require("yfov").Number();
        if (const auto aspect = view.Find("aspectRatio")) {
            camera.AspectRatio = aspect->Number();
        }
    } else {
        camera.HalfWidth = view.Require("xmag").Number();
        camera.HalfHeight = view.Require("ymag").Number();
    }
    camera.Near = view.Require("znear").Number();
    if (const auto far = camera.IsPerspective ? view.Find("zfar") : view.Require("zfar")) {
        camera.Far = far->Number();
    }
    return camera;
}

Light ReadLight(const JsonPlace& place)
{
    constexpr std::array<std::string_view, 3> Words = {"directional", "point", "spot"};
    Light light;
    light.Name = ReadText(place, "name");
    const auto type = place.Require("type");
    const auto found = std::ranges::find(Words, type.Text());
    if (found == Words.end()) {
        type.Fail("There is no light type \"" + type.Text() + "\".");
    }
    light.Kind = static_cast<LightKind>(found - Words.begin());
    ReadNumbers(place, "color", light.Color);
    light.Intensity = ReadNumber(place, "intensity", 1.0);
    if (const auto spot = place.Find("spot")) {
        light.InnerConeAngle = ReadNumber(*spot, "innerConeAngle", light.InnerConeAngle);
        light.OuterConeAngle = ReadNumber(*spot, "outerConeAngle", light.OuterConeAngle);
    }
    return light;
}

// Brings a quaternion to unit length; programs write them with few digits.
void NormalizeRotation(const JsonPlace& place, std::array<double, 4>& rotation)
{
    const double length =
        std::hypot(std::hypot(rotation[0], rotation[1]), std::hypot(rotation[2], rotation[3]));
    if (!(length > 0.0) || !std::isfinite(length)) {
        place.Fail("The rotation has no direction.");
    }
    for (double& component : rotation) {
        component /= length;
    }
}

void ReadTransform(const JsonPlace& place, Node& node)
{
    if (const auto matrix = place.Find("matrix")) {
        matrix->Numbers(node.Matrix.emplace());
    }
    ReadNumbers(place, "translation", node.Translation);
    if (const auto rotation = place.Find("rotation")) {
        rotation->Numbers(node.Rotation);
        NormalizeRotation(*rotation, node.Rotation);
    }
    ReadNumbers(place, "scale", node.Scale);
}

Node ReadNode(const JsonPlace& place, const JsonPlace& root, const Document& document)
{
    const std::size_t nodeCount = ListSize(root, "nodes");
    Node node;
    node.Name = ReadText(place, "name");
    const auto children = place.Find("children");
    for (std::size_t i = 0; children && i < children->Size(); ++i) {
        node.Children.push_back(children->At(i).IndexInto(nodeCount, "node"));
    }
    ReadTransform(place, node);
    node.Mesh = ReadIndex(place, "mesh", document.Meshes.size(), "mesh");
    node.Skin = ReadIndex(place, "skin", ListSize(root, "skins"), "skin");
    node.Camera = ReadIndex(place, "camera", document.Cameras.size(), "camera");
    if (const auto light = FindExtension(place, "KHR_lights_punctual")) {
        node.Light = light->Require("light").IndexInto(document.Lights.size(), "light");
    }
    if (const auto visibility = FindExtension(place, "KHR_node_visibility")) {
        node.Visible = ReadBool(*visibility, "visible", true);
    }
    node.Extras = ReadExtras(place);
    return node;
}

void SetParents(const JsonPlace& nodes, Document& document)
{
    for (std::size_t parent = 0; parent < document.Nodes.size(); ++parent) {
        const auto& children = document.Nodes[parent].Children;
        for (std::size_t i = 0; i < children.size(); ++i) {
            Node& child = document.Nodes[children[i]];
            if (child.Parent) {
                nodes.At(parent)
                    .Require("children")
                    .At(i)
                    .Fail("Node " + std::to_string(children[i]) + " already is a child of node " +
                          std::to_string(*child.Parent) + ".");
            }
            child.Parent = parent;
        }
    }
}

// Nodes have at most one parent each, so whatever no root reaches is a circle.
void RefuseCircles(const JsonPlace& nodes, const Document& document)
{
    std::vector<bool> isReached(document.Nodes.size());
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < document.Nodes.size(); ++i) {
        if (!document.Nodes[i].Parent) {
            open.push_back(i);
        }
    }
    while (!open.empty()) {
        const std::size_t node = open.back();
        open.pop_back();
        isReached[node] = true;
        open.insert(open.end(), document.Nodes[node].Children.begin(), document.Nodes[node].Children.end());
    }
    const auto found = std::ranges::find(isReached, false);
    if (found != isReached.end()) {
        nodes.At(static_cast<std::size_t>(found - isReached.begin())).Fail("The node is its own ancestor.");
    }
}

void CheckMatrices(const JsonPlace& place, const Skin& skin, const Document& document)
{
    if (!skin.InverseBindMatrices) {
        return;
    }
    const Accessor& accessor = document.Accessors[*skin.InverseBindMatrices];
    if (accessor.Shape != AccessorShape::Mat4 || accessor.Type != ComponentType::Float) {
        place.Require("inverseBindMatrices").Fail("Inverse bind matrices must be 4x4 matrices of floats.");
    }
    if (accessor.Count < skin.Joints.size()) {
        place.Require("inverseBindMatrices")
            .Fail("There are " + std::to_string(accessor.Count) + " matrices for " +
                  std::to_string(skin.Joints.size()) + " joints.");
    }
}

std::vector<std::size_t> AllRoots(const Document& document)
{
    std::vector<std::size_t> roots;
    for (std::size_t i = 0; i < document.Nodes.size(); ++i) {
        if (!document.Nodes[i].Parent) {
            roots.push_back(i);
        }
    }
    return roots;
}

Scene ReadScene(const JsonPlace& place, const Document& document)
{
    Scene scene;
    scene.Name = ReadText(place, "name");
    scene.Extras = ReadExtras(place);
    const auto roots = place.Find("nodes");
    for (std::size_t i = 0; roots && i < roots->Size(); ++i) {
        const std::size_t node = roots->At(i).IndexInto(document.Nodes.size(), "node");
        if (document.Nodes[node].Parent) {
            roots->At(i).Fail("Node " + std::to_string(node) + " has a parent, so it can't be a root.");
        }
        scene.Roots.push_back(node);
    }
    auto sorted = scene.Roots;
    std::ranges::sort(sorted);
    if (std::ranges::adjacent_find(sorted) != sorted.end()) {
        roots->Fail("Node " + std::to_string(*std::ranges::adjacent_find(sorted)) +
                    " stands twice in the list.");
    }
    return scene;
}

} // namespace

void ReadCameras(const JsonPlace& root, Document& document)
{
    ForEachItem(root, "cameras",
                [&](const JsonPlace& place) { document.Cameras.push_back(ReadCamera(place)); });
}

void ReadLights(const JsonPlace& root, Document& document)
{
    if (const auto extension = FindExtension(root, "KHR_lights_punctual")) {
        ForEachItem(*extension, "lights",
                    [&](const JsonPlace& place) { document.Lights.push_back(ReadLight(place)); });
    }
}

void ReadNodes(const JsonPlace& root, Document& document)
{
    ForEachItem(root, "nodes",
                [&](const JsonPlace& place) { document.Nodes.push_back(ReadNode(place, root, document)); });
    if (const auto nodes = root.Find("nodes")) {
        SetParents(*nodes, document);
        RefuseCircles(*nodes, document);
    }
}

void ReadSkins(const JsonPlace& root, Document& document)
{
    ForEachItem(root, "skins", [&](const JsonPlace& place) {
        Skin& skin = document.Skins.emplace_back();
        skin.Name = ReadText(place, "name");
        const auto joints = place.Require("joints");
        for (std::size_t i = 0; i < joints.Size(); ++i) {
            skin.Joints.push_back(joints.At(i).IndexInto(document.Nodes.size(), "node"));
        }
        skin.InverseBindMatrices =
            ReadIndex(place, "inverseBindMatrices", document.Accessors.size(), "accessor");
        CheckMatrices(place, skin, document);
    });
}

void ReadScenes(const JsonPlace& root, Document& document)
{
    ForEachItem(root, "scenes",
                [&](const JsonPlace& place) { document.Scenes.push_back(ReadScene(place, document)); });
    const auto chosen = ReadIndex(root, "scene", document.Scenes.size(), "scene");
    if (document.Scenes.empty()) {
        document.Roots = AllRoots(document);
        return;
    }
    const Scene& scene = document.Scenes[chosen.value_or(0)];
    document.Roots = scene.Roots;
    document.SceneName = scene.Name;
    document.SceneExtras = scene.Extras;
}

} // namespace tq4x::gltf
