#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include <xsi_application.h>
#include <xsi_kinematics.h>
#include <xsi_kinematicstate.h>
#include <xsi_material.h>
#include <xsi_parameter.h>

#include "GltfFile.h"
#include "gltf/OpenScene.h"
#include "scene/CreateParameters.h"
#include "scene/Session.h"
#include "scene/Text.h"
#include "support/TemporaryFolder.h"

namespace tq4x::gltf::test
{

/// Tests that open a scene in the host. The host starts afresh for each.
class SceneFile : public testing::Test
{
protected:
    SceneFile() { XSI::Host::Session::Current().Reset(); }

    ~SceneFile() override { XSI::Host::Session::Current().Reset(); }

    /// Opens a .gltf text as "scene.gltf".
    OpenedScene Open(const std::string& json, const SceneOptions& options = {})
    {
        std::ofstream(Folder / "scene.gltf") << json;
        return OpenScene(Folder / "scene.gltf", options);
    }

    /// Opens what must open.
    void MustOpen(const std::string& json, const SceneOptions& options = {})
    {
        Opened = Open(json, options);
        ASSERT_EQ(Opened.Error, "");
        ASSERT_EQ(Opened.Status, SceneStatus::Open);
    }

    /// The first object of a name.
    static XSI::X3DObject Find(const std::string& name)
    {
        const auto& session = XSI::Host::Session::Current();
        XSI::CRef found;
        session.Objects.ForEach([&](const XSI::Host::Object& object) {
            if (!found.IsValid() && object.Name == name && XSI::Host::RefOf(object).IsA(XSI::siX3DObjectID)) {
                found = XSI::Host::RefOf(object);
            }
        });
        EXPECT_TRUE(found.IsValid()) << name;
        return found;
    }

    static XSI::Material FindMaterial(const std::string& name)
    {
        XSI::CRef found;
        XSI::Host::Objects().ForEach([&](const XSI::Host::Object& object) {
            if (object.ClassId == XSI::siMaterialID && object.Name == name) {
                found = XSI::Host::RefOf(object);
            }
        });
        EXPECT_TRUE(found.IsValid()) << name;
        return found;
    }

    static double Number(const XSI::ProjectItem& item, const char* parameter, double frame = 0.0)
    {
        return item.GetParameterValue(parameter, frame);
    }

    /// A component of a colour port.
    static double Component(const XSI::ProjectItem& item, const char* port, const char* component,
                            double frame = 0.0)
    {
        return item.GetParameter(port).GetParameter(component).GetValue(frame);
    }

    static std::array<double, 3> Color(const XSI::ProjectItem& item, const char* port, double frame = 0.0)
    {
        return {Component(item, port, "red", frame), Component(item, port, "green", frame),
                Component(item, port, "blue", frame)};
    }

    static XSI::MATH::CTransformation Local(const std::string& name, double frame = 0.0)
    {
        return Find(name).GetKinematics().GetLocal().GetTransform(frame);
    }

    static std::array<double, 16> GlobalMatrix(const std::string& name, double frame = 0.0)
    {
        std::array<double, 16> values;
        Find(name).GetKinematics().GetGlobal().GetTransform(frame).GetMatrix4().Get(values.data());
        return values;
    }

    /// "object: text" of all remarks.
    std::vector<std::string> Remarks() const
    {
        std::vector<std::string> texts;
        for (const Note& note : Opened.Remarks) {
            texts.push_back(note.Object + ": " + note.Text);
        }
        return texts;
    }

    tq4x::test::TemporaryFolder Folder;
    OpenedScene Opened;
};

} // namespace tq4x::gltf::test
