#include "CheckFiles.h"

#include <algorithm>
#include <string>

#include "CheckSections.h"
#include "ReadDocument.h"

namespace tq4x::reader
{
namespace
{

/// Refers to a model that was read last: a folder's files of one name follow each other.
class ModelCache
{
public:
    /// The model of the same base name beside a file, nullptr if there is none that can be read.
    const Model* Beside(const std::filesystem::path& file)
    {
        std::filesystem::path path = file;
        path.replace_extension(".qmdl");
        if (path != m_path) {
            m_path = path;
            FindingList findings(path.string()); // told where the model itself is checked
            std::error_code error;
            m_document =
                std::filesystem::is_regular_file(path, error) ? ReadDocument(path, findings) : std::nullopt;
        }
        return m_document && m_document->Model ? &*m_document->Model : nullptr;
    }

private:
    std::filesystem::path m_path;
    std::optional<Document> m_document;
};

void CheckTextureFiles(const Document& document, const std::filesystem::path& folder, FindingList& findings)
{
    if (document.Model) {
        for (const Material& material : document.Model->Materials) {
            for (const TextureMapper& mapper : material.Mappers) {
                CheckTextureFile(mapper.Texture, folder, findings);
            }
        }
    }
    if (document.MaterialAnimation) {
        for (const TextureReference& pattern : document.MaterialAnimation->Patterns) {
            CheckTextureFile(pattern, folder, findings);
        }
    }
}

void CheckNeighbours(const Document& document, const std::filesystem::path& file, ModelCache& models,
                     FindingList& findings)
{
    CheckTextureFiles(document, file.parent_path(), findings);
    const bool needsModel =
        document.SkeletalAnimation || document.MaterialAnimation || document.VisibilityAnimation;
    const Model* const model = needsModel ? models.Beside(file) : nullptr;
    if (model == nullptr) {
        return;
    }
    if (document.SkeletalAnimation) {
        CheckAgainstModel(*document.SkeletalAnimation, *model, findings);
    }
    if (document.MaterialAnimation) {
        CheckAgainstModel(*document.MaterialAnimation, *model, findings);
    }
    if (document.VisibilityAnimation) {
        CheckAgainstModel(*document.VisibilityAnimation, *model, findings);
    }
}

void CheckFile(const std::filesystem::path& file, ModelCache& models, CheckResult& result)
{
    FindingList findings(file.string());
    const std::optional<Document> document = ReadDocument(file, findings);
    ++result.FileCount;
    // What breaks the grammar leaves defaults in the records; checking these would tell the same again.
    if (document && !findings.HasErrors()) {
        CheckDocument(*document, findings);
        CheckNeighbours(*document, file, models, findings);
    }
    result.UnreadableCount += document ? 0 : 1;
    std::ranges::move(findings.Take(), std::back_inserter(result.Findings));
}

/// All files of the eight kinds below a folder. Links to folders are not followed: they may lead in circles.
std::vector<std::filesystem::path> ListFiles(const std::filesystem::path& folder, FindingList& findings)
{
    std::vector<std::filesystem::path> files;
    std::error_code error;
    std::filesystem::recursive_directory_iterator walk(folder, error);
    for (; !error && walk != std::filesystem::recursive_directory_iterator(); walk.increment(error)) {
        std::error_code ignored;
        if (KindOf(walk->path()) && walk->is_regular_file(ignored)) {
            files.push_back(walk->path());
        }
    }
    if (error) {
        findings.Error("TQ-READ", 0, "The folder can't be read: " + error.message() + ".");
    }
    std::ranges::sort(files);
    return files;
}

void CheckFolder(const std::filesystem::path& folder, ModelCache& models, CheckResult& result)
{
    FindingList findings(folder.string());
    const std::vector<std::filesystem::path> files = ListFiles(folder, findings);
    if (files.empty() && !findings.HasErrors()) {
        findings.Error("TQ-READ", 0, "The folder holds no file of the eight kinds.");
    }
    if (findings.HasErrors()) {
        ++result.UnreadableCount;
    }
    std::ranges::move(findings.Take(), std::back_inserter(result.Findings));
    for (const std::filesystem::path& file : files) {
        CheckFile(file, models, result);
    }
}

} // namespace

void CheckDocument(const Document& document, FindingList& findings)
{
    if (document.Model) {
        CheckModel(*document.Model, findings);
    }
    if (document.Texture) {
        CheckTexture(*document.Texture, findings);
    }
    if (document.SkeletalAnimation) {
        CheckSkeletalAnimation(*document.SkeletalAnimation, findings);
    }
    if (document.MaterialAnimation) {
        CheckMaterialAnimation(*document.MaterialAnimation, findings);
    }
    if (document.VisibilityAnimation) {
        CheckVisibilityAnimation(*document.VisibilityAnimation, findings);
    }
    CheckStage(document.Stage, findings);
}

CheckResult CheckFiles(std::span<const std::filesystem::path> paths)
{
    CheckResult result;
    ModelCache models;
    for (const std::filesystem::path& path : paths) {
        std::error_code error;
        if (std::filesystem::is_directory(path, error)) {
            CheckFolder(path, models, result);
        } else {
            CheckFile(path, models, result);
        }
    }
    return result;
}

} // namespace tq4x::reader
