#pragma once

#include <cmath>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "CheckFiles.h"
#include "ReadDocument.h"
#include "pipeline/FileGeneration.h"
#include "reader/ReaderDocuments.h"
#include "scene/NodeTree.h"
#include "support/GeometryScene.h"
#include "support/MessageRecorder.h"
#include "support/TemporaryFolder.h"

namespace tq4x::test
{

/// Printing keeps six significant digits, and takes numbers below a millionth for zero.
inline double PrintError(double value)
{
    return std::max(5e-6 * std::abs(value), 1e-6);
}

/// A scene that the core writes and the reader reads back.
class WrittenScene
{
public:
    WrittenScene()
    {
        Options.OutputFileName = "scene";
        Options.OutputFolder = m_folder.Path().string();
        Options.OutputQmdl = Options.OutputQtex = false;
        Content.Root = std::make_unique<Bone>();
        Content.Root->Name = "root";
        SetSample(*Content.Root, 0, Matrix44{});
    }

    /// A node below another one, at rest.
    Bone& AddBone(const std::string& name, Bone& parent)
    {
        auto bone = std::make_unique<Bone>();
        bone->Name = name;
        SetSample(*bone, 0, Matrix44{});
        return AddChild(std::move(bone), parent);
    }

    Mesh& AddMesh(Mesh mesh, Bone& bone)
    {
        Content.Model.Meshes.push_back(std::make_unique<Mesh>(std::move(mesh)));
        Mesh& added = *Content.Model.Meshes.back();
        added.NodeName = bone.Name;
        // Shapes point at the table of their mesh.
        for (auto& [index, shape] : added.Shapes)
            shape->SkinWeights = added.SkinWeights.get();
        SetMesh(bone, &added);
        return added;
    }

    void AddMaterial(const std::string& name)
    {
        m_owners.push_back(std::make_unique<int>());
        Content.Materials.MaterialFor(m_owners.back().get()).Material.Name = name;
    }

    /// Writes all selected files; they must be well in every respect.
    void Write()
    {
        SetContentValues(Content, Lights, Cameras, Options);
        const FrameRecord record = {"ann", "2013-04-09T08:07:06", "scene.scn", "tool", "0.5.3"};
        ASSERT_TRUE(GenerateFiles({Content, Lights, Cameras, Values, record}, Options, {}));
        const reader::CheckResult result = reader::CheckFiles(std::vector{m_folder.Path()});
        ASSERT_GT(result.FileCount, 0U);
        EXPECT_EQ(reader::test::ToTexts(result.Findings), std::vector<std::string>());
    }

    reader::Document Read(const std::string& name) const
    {
        reader::FindingList findings(name);
        std::optional<reader::Document> document = reader::ReadDocument(m_folder / name, findings);
        EXPECT_EQ(reader::test::ToTexts(findings.Take()), std::vector<std::string>()) << name;
        return document.value_or(reader::Document());
    }

    ExportOptions Options;
    SceneContent Content;
    LightSet Lights;
    CameraSet Cameras;
    ExportValues Values;

private:
    TemporaryFolder m_folder;
    MessageRecorder m_recorder;
    std::vector<std::unique_ptr<int>> m_owners;
};

} // namespace tq4x::test
