#pragma once

#include "ReadDocument.h"
#include "gltf/OpenScene.h"
#include "pipeline/Platform.h"
#include "scene/Session.h"
#include "support/ExportRun.h"
#include "support/ToolInstallation.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tq4x::test
{

/// Opens a glTF scene, runs the plug-in on it and reads what was written.
class GltfExport
{
public:
    explicit GltfExport(const std::filesystem::path& scene, const gltf::SceneOptions& sceneOptions = {},
                        const std::vector<std::string>& options = {})
    {
        XSI::Host::Session::Current().Reset();
        ExportRun::EnsurePlugin();
        Opened = gltf::OpenScene(scene, sceneOptions);
        EXPECT_EQ(Opened.Error, "") << scene;
        m_run.emplace(options);
        EXPECT_TRUE(m_run->Succeeded()) << scene;
    }

    const ExportRun& Run() const { return *m_run; }

    reader::Document Read(const std::string& name) const
    {
        reader::FindingList findings(name);
        std::optional<reader::Document> document = reader::ReadDocument(m_run->Folder() / name, findings);
        EXPECT_TRUE(document.has_value() && !findings.HasErrors()) << name;
        return document ? *std::move(document) : reader::Document();
    }

    reader::Model Model() const
    {
        const reader::Document document = Read("out.qmdl");
        EXPECT_TRUE(document.Model.has_value());
        return document.Model.value_or(reader::Model());
    }

    /// The written textures by file name.
    std::vector<std::string> TextureFiles() const
    {
        std::vector<std::string> names;
        if (m_run->HasFile("Textures"))
            for (const auto& entry : std::filesystem::directory_iterator(m_run->Folder() / "Textures"))
                names.push_back("Textures/" + entry.path().filename().string());
        return names;
    }

    gltf::OpenedScene Opened;

private:
    ToolInstallation m_tool;
    std::optional<ExportRun> m_run;
};

} // namespace tq4x::test
