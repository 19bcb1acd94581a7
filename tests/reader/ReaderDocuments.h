#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "CheckFiles.h"
#include "ReadDocument.h"
#include "support/Golden.h"
#include "support/TemporaryFolder.h"

namespace tq4x::reader::test
{

inline std::filesystem::path DocumentPath(const std::string& name)
{
    return std::filesystem::path(TQ4X_TEST_DATA) / "reader" / name;
}

inline std::string DocumentText(const std::string& name)
{
    return tq4x::test::ReadWholeFile(DocumentPath(name));
}

/// The text with one place changed; the place must be there.
inline std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    if (at == std::string::npos) {
        throw std::invalid_argument("not in the document: " + from);
    }
    return text.replace(at, from.size(), to);
}

inline void WriteFile(const std::filesystem::path& file, const std::string& text)
{
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
}

/// "12 error TQ-COUNT text"
inline std::string ToText(const Finding& finding)
{
    return std::to_string(finding.Line) + (finding.Level == Severity::Error ? " error " : " warning ") +
           finding.Code + " " + finding.Text;
}

inline std::vector<std::string> ToTexts(const std::vector<Finding>& findings)
{
    std::vector<std::string> texts;
    for (const Finding& finding : findings) {
        texts.push_back(ToText(finding));
    }
    return texts;
}

struct ReadResult
{
    std::optional<Document> Content;
    std::vector<std::string> Findings;
};

inline ReadResult ReadText(FileKind kind, const std::string& text)
{
    FindingList findings("file");
    ReadResult result;
    result.Content = ReadDocumentText(kind, text, findings);
    result.Findings = ToTexts(findings.Take());
    return result;
}

/// A document of tests/data/reader, read without findings.
inline Document ReadGood(const std::string& name)
{
    FindingList findings(name);
    std::optional<Document> document = ReadDocument(DocumentPath(name), findings);
    EXPECT_EQ(ToTexts(findings.Take()), std::vector<std::string>()) << name;
    return document.value_or(Document());
}

} // namespace tq4x::reader::test
