#include "preview/CollectPreview.h"

#include <algorithm>
#include <array>

#include "CheckFiles.h"
#include "glb/ConvertToGlb.h"
#include "preview/CollectScene.h"
#include "preview/CollectStage.h"
#include "preview/Thumbnail.h"

namespace tq4x::preview
{
namespace
{

namespace fs = std::filesystem;

std::string KindWord(const fs::path& file)
{
    static constexpr std::array<std::string_view, reader::FileKindCount> Words = {
        "model",  "texture", "bone animation", "material animation", "visibility animation",
        "camera", "light",   "environment"};
    const auto kind = reader::KindOf(file);
    return kind ? std::string(Words[static_cast<std::size_t>(*kind)]) : "";
}

bool IsModel(const fs::path& file)
{
    return reader::KindOf(file) == reader::FileKind::Model;
}

class PreviewCollector
{
public:
    explicit PreviewCollector(PreviewData& data) : m_data(data) {}

    void Run(std::span<const cli::WrittenFiles::File> files)
    {
        std::vector<fs::path> paths;
        for (const cli::WrittenFiles::File& file : files) {
            m_data.Files.push_back({NameOf(file.Path), KindWord(file.Path), file.Size});
            paths.push_back(file.Path);
        }
        AddFindings(paths);
        AddScenes(paths);
    }

private:
    [[nodiscard]] std::string NameOf(const fs::path& file) const
    {
        const fs::path relative = file.lexically_relative(m_data.Folder);
        return (relative.empty() ? file : relative).generic_string();
    }

    void AddFindings(const std::vector<fs::path>& paths)
    {
        m_data.Findings = reader::CheckFiles(paths).Findings;
        for (reader::Finding& finding : m_data.Findings) {
            finding.File = NameOf(finding.File);
        }
    }

    void AddScenes(const std::vector<fs::path>& paths)
    {
        std::vector<fs::path> others;
        std::ranges::remove_copy_if(paths, std::back_inserter(others), IsModel);
        if (others.size() == paths.size()) {
            AddScene(others, true);
            return;
        }
        bool isFirst = true;
        for (const fs::path& model : paths) {
            if (IsModel(model)) {
                std::vector<fs::path> together = {model};
                together.insert(together.end(), others.begin(), others.end());
                AddScene(together, isFirst);
                isFirst = false;
            }
        }
    }

    /// Files that belong together. Those that several scenes share are told of with the first one.
    void AddScene(const std::vector<fs::path>& paths, bool isFirst)
    {
        const reader::ExportedFiles files = reader::ReadExport(paths);
        PreviewScene scene = DescribeScene(files);
        if (!paths.empty()) {
            reader::GlbResult result = reader::ConvertToGlb(files, {m_data.FramesPerSecond});
            scene.Glb = std::move(result.Glb);
            scene.Problem = std::move(result.Error);
            scene.Notes = std::move(result.Warnings);
        }
        m_data.Scenes.push_back(std::move(scene));
        if (isFirst) {
            AddShared(files, paths);
        }
    }

    static PreviewScene DescribeScene(const reader::ExportedFiles& files)
    {
        for (const reader::ExportedFile& file : files.Files) {
            if (file.Content.Model) {
                return DescribeModel(*file.Content.Model);
            }
        }
        PreviewScene scene;
        for (const reader::ExportedFile& file : files.Files) {
            if (file.Content.SkeletalAnimation && scene.Bones.empty()) {
                for (const reader::Bone& bone : file.Content.SkeletalAnimation->Bones.Bones) {
                    scene.Bones.push_back(bone.Name);
                }
            }
        }
        return scene;
    }

    void AddShared(const reader::ExportedFiles& files, const std::vector<fs::path>& paths)
    {
        for (const reader::ExportedFile& file : files.Files) {
            if (m_data.Date.empty()) {
                m_data.Author = file.Content.Head.Author;
                m_data.Date = file.Content.Head.Date;
            }
            AddStage(file.Content, NameOf(file.Path), m_data);
        }
        for (const fs::path& path : paths) {
            const auto found = files.Textures.find(path.stem().string());
            if (reader::KindOf(path) == reader::FileKind::Texture && found != files.Textures.end()) {
                AddTexture(found->second, path);
            }
        }
    }

    void AddTexture(const reader::Texture& texture, const fs::path& path)
    {
        PreviewTexture row;
        row.Name = path.stem().string();
        row.File = NameOf(path);
        row.Width = texture.Width;
        row.Height = texture.Height;
        row.IsCube = texture.IsCube;
        row.Format = texture.Format;
        for (const reader::TextureFace& face : texture.Faces) {
            row.Levels = std::max(row.Levels, face.Levels.size());
            for (const reader::TextureLevel& level : face.Levels) {
                row.Bytes += level.Data.size();
            }
        }
        row.Thumbnail = MakeThumbnail(texture);
        m_data.Textures.push_back(std::move(row));
    }

    PreviewData& m_data;
};

} // namespace

void CollectPreview(PreviewData& data, std::span<const cli::WrittenFiles::File> files)
{
    PreviewCollector(data).Run(files);
}

} // namespace tq4x::preview
