#include <algorithm>

#include "reader/ReaderDocuments.h"

namespace tq4x::reader
{
namespace
{

/// Whole documents among the goldens of all tests, but the reader's own.
std::vector<std::filesystem::path> GoldenDocuments()
{
    std::vector<std::filesystem::path> documents;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(TQ4X_TEST_DATA)) {
        const bool isOwn = entry.path().string().starts_with(test::DocumentPath("").string());
        // One golden leaves the group descriptions out, which have a golden of their own.
        const bool isShortened = entry.path().filename() == "model-of-one-node.qmdl";
        if (KindOf(entry.path()) && !isOwn && !isShortened) {
            documents.push_back(entry.path());
        }
    }
    std::ranges::sort(documents);
    return documents;
}

TEST(GoldenDocuments, AreWellInEveryRespect)
{
    const std::vector<std::filesystem::path> documents = GoldenDocuments();
    EXPECT_GT(documents.size(), 15U);
    for (const std::filesystem::path& document : documents) {
        for (const Finding& finding : CheckFiles(std::vector{document}).Findings) {
            // Goldens stand without the textures that they refer to.
            EXPECT_EQ(finding.Code, "TQ-REF-TEXTURE-FOLDER") << document << ": " << test::ToText(finding);
        }
    }
}

} // namespace
} // namespace tq4x::reader
