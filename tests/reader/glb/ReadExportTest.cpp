#include <gmock/gmock.h>

#include "reader/Damages.h"
#include "reader/glb/ReadGlb.h"

namespace tq4x::reader::test
{
namespace
{

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

/// A folder with copies of the good files.
class ReadExportTest : public testing::Test
{
protected:
    ReadExportTest() { fs::copy(DocumentPath(""), m_folder.Path(), fs::copy_options::recursive); }

    ExportedFiles Read(const std::vector<std::string>& names) const
    {
        std::vector<fs::path> paths;
        for (const std::string& name : names) {
            paths.push_back(m_folder / name);
        }
        return ReadExport(paths);
    }

    tq4x::test::TemporaryFolder m_folder;
};

TEST_F(ReadExportTest, TexturesAreFoundWhereTheReferenceSays)
{
    const ExportedFiles files = Read({"house.qmdl"});
    EXPECT_THAT(files.Findings, IsEmpty());
    EXPECT_FALSE(files.HasErrors);
    EXPECT_EQ(files.Files.size(), 1U);
    EXPECT_TRUE(files.Textures.contains("Tiles"));
}

TEST_F(ReadExportTest, GivenTexturesComeFirst)
{
    fs::rename(m_folder / "Textures/Tiles.qtex", m_folder / "Tiles.qtex");
    const ExportedFiles files = Read({"house.qmdl", "Tiles.qtex"});
    EXPECT_THAT(files.Findings, IsEmpty());
    EXPECT_TRUE(files.Textures.contains("Tiles"));
}

TEST_F(ReadExportTest, MissingTexturesAreAWarning)
{
    fs::remove_all(m_folder / "Textures");
    const ExportedFiles files = Read({"house.qmdl"});
    EXPECT_FALSE(files.HasErrors);
    ASSERT_FALSE(files.Findings.empty());
    EXPECT_THAT(ToText(files.Findings[0]),
                testing::EndsWith(
                    " warning TQ-REF-TEXTURE The texture \"Tiles\" is not there: Textures/Tiles.qtex."));
}

TEST_F(ReadExportTest, NothingOutsideTheFolderIsRead)
{
    const std::string model = DocumentText("house.qmdl");
    fs::create_directory(m_folder / "inner");
    fs::rename(m_folder / "Textures/Tiles.qtex", m_folder / "Tiles.qtex");
    for (const std::string path : {"../Tiles.qtex", "Textures/../../Tiles.qtex", "/etc/Tiles.qtex"}) {
        std::string text = model;
        for (std::size_t at = 0; (at = text.find("Textures/Tiles.qtex", at)) != std::string::npos;
             at += path.size()) {
            text.replace(at, std::string("Textures/Tiles.qtex").size(), path);
        }
        WriteFile(m_folder / "inner/house.qmdl", text);
        const ExportedFiles files = Read({"inner/house.qmdl"});
        EXPECT_FALSE(files.Textures.contains("Tiles")) << path;
    }
}

TEST_F(ReadExportTest, ADamagedTextureIsAnError)
{
    WriteFile(m_folder / "Textures/Tiles.qtex", "<no");
    const ExportedFiles files = Read({"house.qmdl"});
    EXPECT_TRUE(files.HasErrors);
    ASSERT_EQ(files.Findings.size(), 1U);
    EXPECT_EQ(files.Findings[0].File, (m_folder / "Textures/Tiles.qtex").string());
    EXPECT_EQ(files.Findings[0].Code, "TQ-XML-FORM");
}

TEST_F(ReadExportTest, ASecondModelIsRefused)
{
    fs::copy(m_folder / "house.qmdl", m_folder / "other.qmdl");
    const ExportedFiles files = Read({"house.qmdl", "other.qmdl"});
    EXPECT_TRUE(files.HasErrors);
    EXPECT_THAT(
        ToTexts(files.Findings),
        ElementsAre("0 error TQ-READ There is a model already; each model needs a conversion of its own."));
}

TEST_F(ReadExportTest, FilesThatCanNotBeReadAreErrors)
{
    WriteFile(m_folder / "house.txt", "");
    const ExportedFiles files = Read({"none.qmdl", "house.txt"});
    EXPECT_TRUE(files.HasErrors);
    EXPECT_THAT(ToTexts(files.Findings),
                ElementsAre(StartsWith("0 error TQ-READ "), StartsWith("0 error TQ-READ-KIND ")));
}

/// Every way in which the checks know a file to be damaged: it is refused, or it is converted.
TEST_F(ReadExportTest, DamagedFilesAreRefusedOrConverted)
{
    std::size_t refused = 0;
    for (const Damage& damage : AllDamages()) {
        const std::string good = DocumentText(damage.File);
        WriteFile(m_folder / damage.File, Replaced(good, damage.From, damage.To));
        const ExportedFiles files = Read({damage.File});
        const GlbResult result = ConvertToGlb(files);
        EXPECT_EQ(result.Glb.empty(), files.HasErrors) << damage.Name;
        refused += files.HasErrors ? 1 : 0;
        if (!result.Glb.empty()) {
            EXPECT_NO_THROW((void)ParseGlb(result.Glb)) << damage.Name;
        }
        WriteFile(m_folder / damage.File, good);
    }
    EXPECT_GT(refused, 50U);
    EXPECT_LT(refused, AllDamages().size());
}

/// Numbers one after the other become extreme. Whatever gets through the checks must be converted.
TEST_F(ReadExportTest, ExtremeNumbersDoNoHarm)
{
    const std::vector<std::string> all = {"house.qmdl",  "house.qskla", "house.qmata",
                                          "house.qmdla", "house.qcam",  "house.qlgt"};
    std::size_t converted = 0;
    for (const std::string& name : all) {
        const std::string good = DocumentText(name);
        int count = 0;
        for (std::size_t at = good.find("=\""); at != std::string::npos; at = good.find("=\"", at + 1)) {
            const std::size_t end = good.find('"', at + 2);
            const bool isNumber = good.find_first_not_of("-.0123456789", at + 2) == end && end > at + 2;
            if (!isNumber || ++count % 7 != 0) { // each seventh keeps the test short
                continue;
            }
            for (const char* const number : {"3.40282e+38", "0", "-1", "2147483647"}) {
                WriteFile(m_folder / name, good.substr(0, at + 2) + number + good.substr(end));
                const ExportedFiles files =
                    Read(name == "house.qmdl" ? std::vector<std::string>{name}
                                              : std::vector<std::string>{"house.qmdl", name});
                const GlbResult result = ConvertToGlb(files);
                EXPECT_EQ(result.Glb.empty(), files.HasErrors) << name << " " << number << " at " << at;
                converted += result.Glb.empty() ? 0 : 1;
            }
        }
        WriteFile(m_folder / name, good);
    }
    EXPECT_GT(converted, 50U);
}

} // namespace
} // namespace tq4x::reader::test
