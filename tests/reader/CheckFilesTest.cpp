#include "CheckFiles.h"

#include <gmock/gmock.h>

#include <set>
#include <utility>

#include "reader/Damages.h"
#include "reader/ReaderDocuments.h"

namespace tq4x::reader
{
namespace
{

using test::DocumentText;
using test::Replaced;
using Texts = std::vector<std::string>;

TEST(CheckFiles, GoodFilesHaveNoFindings)
{
    const CheckResult result = CheckFiles(std::vector{test::DocumentPath("")});
    EXPECT_EQ(test::ToTexts(result.Findings), Texts());
    EXPECT_EQ(result.FileCount, 9U);
    EXPECT_EQ(result.UnreadableCount, 0U);
}

/// Checks a document within a copy of the good ones.
Texts FindingsOf(const test::Damage& damage)
{
    tq4x::test::TemporaryFolder folder;
    std::filesystem::copy(test::DocumentPath(""), folder.Path(), std::filesystem::copy_options::recursive);
    const std::filesystem::path file = folder / damage.File;
    test::WriteFile(file, Replaced(DocumentText(damage.File), damage.From, damage.To));
    return test::ToTexts(CheckFiles(std::vector{file}).Findings);
}

TEST(CheckFiles, EveryDamageIsFound)
{
    for (const test::Damage& damage : test::AllDamages()) {
        EXPECT_EQ(FindingsOf(damage), damage.Findings) << damage.Name;
    }
}

/// Checks one file of a folder with these files in it.
Texts FindingsOf(const std::string& name, const std::vector<std::pair<std::string, std::string>>& files)
{
    tq4x::test::TemporaryFolder folder;
    for (const auto& [file, text] : files) {
        test::WriteFile(folder / file, text);
    }
    return test::ToTexts(CheckFiles(std::vector{folder / name}).Findings);
}

TEST(CheckFiles, FilesThatCanNotBeRead)
{
    EXPECT_EQ(FindingsOf("a.qmdl", {}),
              Texts{"0 error TQ-READ The file does not exist or is no regular file."});
    EXPECT_EQ(FindingsOf("a.txt", {{"a.txt", "text"}}),
              Texts{"0 error TQ-READ-KIND The extension is none of the eight kinds of files."});
    EXPECT_EQ(FindingsOf("a.qmdl", {{"a.qmdl", ""}}),
              Texts{"1 error TQ-XML-FORM Not well-formed: the file is empty."});
}

TEST(CheckFiles, FilesAboveTheLimitAreNotOpened)
{
    tq4x::test::TemporaryFolder folder;
    const std::filesystem::path file = folder / "a.qmdl";
    test::WriteFile(file, "x");
    std::filesystem::resize_file(file, MostFileBytes + 1); // a hole, no bytes on the disk
    const CheckResult result = CheckFiles(std::vector{file});
    EXPECT_EQ(test::ToTexts(result.Findings),
              Texts{"0 error TQ-READ-SIZE The file is larger than 1024 MiB."});
    EXPECT_EQ(result.UnreadableCount, 1U);
}

TEST(CheckFiles, FoldersStandForTheirFiles)
{
    tq4x::test::TemporaryFolder folder;
    const CheckResult empty = CheckFiles(std::vector{folder.Path()});
    EXPECT_EQ(test::ToTexts(empty.Findings),
              Texts{"0 error TQ-READ The folder holds no file of the eight kinds."});
    EXPECT_EQ(empty.UnreadableCount, 1U);
    test::WriteFile(folder / "b/c.qcam", "<");
    test::WriteFile(folder / "b/a.qenv", DocumentText("house.qenv"));
    test::WriteFile(folder / "b/notes.txt", "no file of ours");
    std::filesystem::create_directory_symlink(folder.Path(), folder / "b/circle");
    const CheckResult result = CheckFiles(std::vector{folder.Path()});
    EXPECT_EQ(result.FileCount, 2U);
    EXPECT_EQ(result.UnreadableCount, 1U);
    ASSERT_EQ(result.Findings.size(), 1U);
    EXPECT_EQ(result.Findings[0].File, (folder / "b/c.qcam").string());
}

TEST(CheckFiles, WithoutAFolderOfTexturesOneMayBeMissing)
{
    EXPECT_EQ(
        FindingsOf("house.qmdl", {{"house.qmdl", DocumentText("house.qmdl")}}),
        Texts{"231 warning TQ-REF-TEXTURE-FOLDER The file Textures/Tiles.qtex can't be found: there is no "
              "folder Textures."});
}

TEST(CheckFiles, AnimationsAreCheckedAloneWhereNoModelStands)
{
    const std::string other =
        Replaced(DocumentText("house.qskla"), "Bone Name=\"hand\"", "Bone Name=\"fist\"");
    EXPECT_EQ(FindingsOf("a.qskla", {{"a.qskla", other}}), Texts());
    EXPECT_EQ(FindingsOf("a.qskla", {{"a.qskla", other}, {"a.qmdl", "damaged"}}), Texts());
    EXPECT_EQ(FindingsOf("a.qskla", {{"a.qskla", other}, {"a.qmdl", DocumentText("house.qmdl")}}),
              Texts{"55 error TQ-SKELETON The skeleton is not that of the model beside this file."});
}

TEST(CheckFiles, NamesWithMarkupAreFound)
{
    for (const char* const name : {"a & b", "a < b", "a \" b"}) {
        const std::string text = Replaced(DocumentText("house.qcam"), "Camera Name=\"aim\"",
                                          "Camera Name=\"" + std::string(name) + "\"");
        const Texts findings = FindingsOf("a.qcam", {{"a.qcam", text}});
        ASSERT_EQ(findings.size(), 1U) << name;
        EXPECT_TRUE(findings[0].find("TQ-XML-FORM") != std::string::npos) << findings[0];
    }
}

/// A shape of more vertices than indices can number, each of them in use.
TEST(CheckFiles, MoreVerticesThanIndicesCanNumber)
{
    constexpr int Count = 65538;
    std::string rows;
    std::string indices;
    for (int i = 0; i < Count; ++i) {
        rows += std::to_string(i % 9) + " 0 1\n";
        indices += (i == 0 ? "" : " ") + std::to_string(i);
    }
    std::string text = DocumentText("house.qmdl");
    const std::size_t set = text.find("<UbyteIndexStreamQtr PrimitiveMode=\"Triangles\" Size=\"6\"");
    const std::size_t setEnd = text.find("\n", set);
    text.replace(set, setEnd - set,
                 "<UshortIndexStreamQtr PrimitiveMode=\"Triangles\" Size=\"65538\">" + indices +
                     "</UshortIndexStreamQtr>");
    const std::size_t start = text.find("<Vector3VertexStreamQtr");
    const std::size_t end = text.find("</VertexAttributes>", start);
    text.replace(start, end - start,
                 "<Vector3VertexStreamQtr Usage=\"Position\" VertexSize=\"65538\" Scale=\"1\" "
                 "QuantizedMode=\"Float\">\n" +
                     rows + "</Vector3VertexStreamQtr>\n");
    tq4x::test::TemporaryFolder folder;
    std::filesystem::copy(test::DocumentPath(""), folder.Path(), std::filesystem::copy_options::recursive);
    test::WriteFile(folder / "house.qmdl", text);
    EXPECT_EQ(test::ToTexts(CheckFiles(std::vector{folder / "house.qmdl"}).Findings),
              Texts{"126 error TQ-INDEX-SIZE Shape 0: indices of two bytes can't number 65538 vertices."});
}

/// Only the first findings of a code are told, however many there are.
TEST(CheckFiles, FloodsOfFindingsAreCounted)
{
    FindingList findings("file");
    for (int i = 0; i < 1000; ++i) {
        findings.Warning("TQ-A", i, "one");
        findings.Error("TQ-B", i, "two");
    }
    const std::vector<Finding> all = findings.Take();
    ASSERT_EQ(all.size(), 42U);
    EXPECT_EQ(test::ToText(all[40]), "0 warning TQ-A 980 more of this kind.");
    EXPECT_EQ(test::ToText(all[41]), "0 error TQ-B 980 more of this kind.");
}

/// Keys behind those that the grammar sees are held to the same form.
TEST(CheckFiles, LongKeyListsAreCheckedToTheEnd)
{
    std::string keys;
    for (int i = 0; i < 500; ++i) {
        keys += "<StepFloatKey Frame=\"" + std::to_string(i) + "\" Value=\"0\"/>\n";
    }
    std::string text = DocumentText("house.qmata");
    const std::size_t start = text.find("<StepFloatKey");
    const std::size_t end = text.find("</Keys>", start);
    text.replace(start, end - start, keys);
    text = Replaced(text, "EndFrame=\"8\"", "EndFrame=\"499\"");
    const std::vector<std::pair<std::string, std::string>> textures = {
        {"Textures/Tiles.qtex", DocumentText("Textures/Tiles.qtex")},
        {"Textures/Sky.qtex", DocumentText("Textures/Sky.qtex")}};
    const auto findingsOf = [&](const std::string& changed) {
        auto files = textures;
        files.emplace_back("a.qmata", changed);
        return FindingsOf("a.qmata", files);
    };
    EXPECT_EQ(findingsOf(text), Texts());
    EXPECT_EQ(findingsOf(Replaced(text, "Frame=\"400\" Value=\"0\"", "Frame=\"400\" Value=\"0\" More=\"1\"")),
              Texts{"421 error TQ-KEY-FORM A key of this list must be a StepFloatKey with Frame, Value."});
    EXPECT_EQ(findingsOf(Replaced(text, "Frame=\"400\" Value=\"0\"", "Frame=\"400\" Value=\"00\"")),
              Texts{"421 error TQ-NUMBER \"00\" is no finite number in the form of the files (Value of "
                    "StepFloatKey)."});
    EXPECT_EQ(findingsOf(Replaced(text, "Frame=\"400\" Value=\"0\"", "Frame=\"400\" Values=\"0\"")),
              Texts{"421 error TQ-KEY-FORM A key of this list must be a StepFloatKey with Frame, Value."});
}

std::set<std::string> CodesIn(const std::string& text)
{
    std::set<std::string> codes;
    for (std::size_t at = text.find("TQ-"); at != std::string::npos; at = text.find("TQ-", at + 3)) {
        codes.insert(text.substr(at, text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ-64", at) - at));
    }
    return codes;
}

/// The page lists every code of the sources, and these tests produce every one.
TEST(CheckFiles, EveryCodeIsExplainedAndTested)
{
    const std::filesystem::path root = std::filesystem::path(TQ4X_TEST_DATA).parent_path().parent_path();
    const auto codesBelow = [&](const char* folder, const char* extension) {
        std::set<std::string> codes;
        for (const auto& entry : std::filesystem::directory_iterator(root / folder)) {
            if (entry.path().extension() == extension) {
                codes.merge(CodesIn(tq4x::test::ReadWholeFile(entry.path())));
            }
        }
        return codes;
    };
    const std::set<std::string> sources = codesBelow("reader", ".cpp");
    std::set<std::string> tested = codesBelow("tests/reader", ".cpp");
    tested.erase("TQ-A");
    tested.erase("TQ-B");
    tested.erase("TQ-");
    EXPECT_GT(sources.size(), 50U);
    EXPECT_EQ(CodesIn(tq4x::test::ReadWholeFile(root / "docs/check.md")), sources);
    EXPECT_EQ(tested, sources);
}

} // namespace
} // namespace tq4x::reader
