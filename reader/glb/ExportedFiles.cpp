#include "glb/ExportedFiles.h"

#include <algorithm>
#include <set>

#include "CheckFiles.h"

namespace tq4x::reader
{
namespace
{

/// Collects what is found in all files.
class ExportReader
{
public:
    ExportedFiles Read(std::span<const std::filesystem::path> files)
    {
        for (const std::filesystem::path& file : files) {
            ReadFile(file);
        }
        for (const ExportedFile& file : m_result.Files) {
            const std::filesystem::path folder = file.Path.parent_path();
            for (const TextureReference* const reference : ReferencesOf(file.Content)) {
                ReadReferenced(*reference, folder, file.Path);
            }
        }
        return std::move(m_result);
    }

private:
    void ReadFile(const std::filesystem::path& file)
    {
        FindingList findings(file.string());
        std::optional<Document> document = ReadChecked(file, findings);
        if (document && document->Model && HasModel()) {
            findings.Error("TQ-READ", 0,
                           "There is a model already; each model needs a conversion of its own.");
        }
        Keep(findings);
        if (document && document->Texture) {
            m_result.Textures.insert_or_assign(file.stem().string(), std::move(*document->Texture));
        } else if (document) {
            m_result.Files.push_back({file, std::move(*document)});
        }
    }

    /// What follows the grammar only is checked further: one broken element would be told many times.
    static std::optional<Document> ReadChecked(const std::filesystem::path& file, FindingList& findings)
    {
        std::optional<Document> document = ReadDocument(file, findings);
        if (document && !findings.HasErrors()) {
            CheckDocument(*document, findings);
        }
        return document;
    }

    [[nodiscard]] bool HasModel() const
    {
        return std::ranges::any_of(m_result.Files,
                                   [](const ExportedFile& file) { return file.Content.Model.has_value(); });
    }

    static std::vector<const TextureReference*> ReferencesOf(const Document& document)
    {
        std::vector<const TextureReference*> references;
        if (document.Model) {
            for (const Material& material : document.Model->Materials) {
                for (const TextureMapper& mapper : material.Mappers) {
                    references.push_back(&mapper.Texture);
                }
            }
        }
        if (document.MaterialAnimation) {
            for (const TextureReference& pattern : document.MaterialAnimation->Patterns) {
                references.push_back(&pattern);
            }
        }
        return references;
    }

    void ReadReferenced(const TextureReference& reference, const std::filesystem::path& folder,
                        const std::filesystem::path& from)
    {
        if (m_result.Textures.contains(reference.Name) || !m_tried.insert(reference.Name).second) {
            return;
        }
        // A path that leaves the folder is not from the exporter; nothing outside is looked at.
        const std::filesystem::path relative = std::filesystem::path(reference.Path).lexically_normal();
        const bool isInside = relative.is_relative() && !relative.empty() && *relative.begin() != "..";
        const std::filesystem::path file = folder / relative;
        std::error_code error;
        if (!isInside || !std::filesystem::is_regular_file(file, error)) {
            FindingList findings(from.string());
            findings.Warning("TQ-REF-TEXTURE", reference.Line,
                             "The texture \"" + reference.Name + "\" is not there: " + reference.Path + ".");
            Keep(findings);
            return;
        }
        FindingList findings(file.string());
        std::optional<Document> document = ReadChecked(file, findings);
        Keep(findings);
        if (document && document->Texture) {
            m_result.Textures.emplace(reference.Name, std::move(*document->Texture));
        }
    }

    void Keep(FindingList& findings)
    {
        m_result.HasErrors = m_result.HasErrors || findings.HasErrors();
        std::ranges::move(findings.Take(), std::back_inserter(m_result.Findings));
    }

    ExportedFiles m_result;
    std::set<std::string> m_tried;
};

} // namespace

ExportedFiles ReadExport(std::span<const std::filesystem::path> files)
{
    return ExportReader().Read(files);
}

} // namespace tq4x::reader
