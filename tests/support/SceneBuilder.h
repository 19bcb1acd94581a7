#pragma once

#include <string_view>
#include <vector>

#include <xsi_application.h>

#include "scene/Session.h"
#include "support/SceneMaterial.h"
#include "support/SceneMesh.h"
#include "support/SceneNode.h"

namespace tq4x::test
{

/// Makes a scene in a few lines:
///
///     SceneBuilder scene;
///     SceneMaterial red = scene.Material("red", "phong").Color("diffuse", 1, 0, 0);
///     SceneNode body = scene.Null("body").At(0, 1, 0).Marked("SomeProp", {{"Value", 3}});
///     scene.Mesh("plate", body).Square(red).Colors("Colors_rgb", {...});
///
/// It starts with a host that was just started: no plug-in is loaded, no slot is filled. The host is one per
/// process, so that one builder is in use at a time.
class SceneBuilder
{
public:
    SceneBuilder() { Host().Reset(); }

    static XSI::Host::Session& Host() { return XSI::Host::Session::Current(); }

    static XSI::Model Root() { return XSI::Application().GetActiveSceneRoot(); }

    static SceneNode Null(std::string_view name, const XSI::CRef& parent = {})
    {
        return SceneNode(XSI::Host::CreateNull(parent, name));
    }

    static SceneNode Model(std::string_view name, const XSI::CRef& parent = {})
    {
        return SceneNode(XSI::Host::CreateModel(parent, name));
    }

    static SceneNode Instance(std::string_view name, const XSI::CRef& master, const XSI::CRef& parent = {})
    {
        return SceneNode(XSI::Host::CreateInstance(parent, name, master));
    }

    /// A bone or an effector of a skeleton chain.
    static SceneNode Bone(std::string_view name, const XSI::CRef& parent = {})
    {
        return SceneNode(XSI::Host::CreateChainBone(parent, name));
    }

    static SceneNode Effector(std::string_view name, const XSI::CRef& parent = {})
    {
        return SceneNode(XSI::Host::CreateChainEffector(parent, name));
    }

    /// A mesh without geometry; the calls on it add some.
    static SceneMesh Mesh(std::string_view name, const XSI::CRef& parent = {})
    {
        return SceneMesh(XSI::Host::CreateMesh(parent, name, {}));
    }

    static SceneNode Camera(std::string_view name, const XSI::CRef& parent = {})
    {
        return SceneNode(XSI::Host::CreateCamera(parent, name));
    }

    static SceneNode Light(std::string_view name, XSI::Host::LightType type, const XSI::CRef& parent = {})
    {
        return SceneNode(XSI::Host::CreateLight(parent, name, type));
    }

    static SceneMaterial Material(std::string_view name, std::string_view shader = "phong")
    {
        return SceneMaterial(name, shader);
    }

    /// The frame window: of the whole scene, and of playback, which is the same unless it is set after it.
    SceneBuilder& Frames(double first, double last)
    {
        XSI::Host::AddParameter(PlayControl(), "GlobalIn", first);
        XSI::Host::AddParameter(PlayControl(), "GlobalOut", last);
        return Playback(first, last);
    }

    SceneBuilder& Playback(double first, double last)
    {
        XSI::Host::AddParameter(PlayControl(), "In", first);
        XSI::Host::AddParameter(PlayControl(), "Out", last);
        return *this;
    }

    SceneBuilder& Named(std::string_view name, std::string_view fileName)
    {
        XSI::Scene scene = XSI::Application().GetActiveProject().GetActiveScene();
        scene.PutName(XSI::Host::FromUtf8(name));
        scene.PutParameterValue(L"FileName", XSI::Host::FromUtf8(fileName));
        return *this;
    }

    SceneBuilder& Select(const std::vector<XSI::CRef>& objects)
    {
        XSI::Selection selection = XSI::Application().GetSelection();
        selection.Clear();
        for (const XSI::CRef& object : objects) {
            selection.Add(object);
        }
        return *this;
    }

private:
    static XSI::CRef PlayControl()
    {
        return XSI::Application().GetActiveProject().GetProperties().Find(L"Play Control");
    }
};

} // namespace tq4x::test
