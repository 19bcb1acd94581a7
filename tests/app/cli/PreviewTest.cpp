#include <gmock/gmock.h>

#include "Program.h"
#include "preview/MakePage.h"

namespace tq4x::cli::test
{
namespace
{

namespace fs = std::filesystem;

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

/// A program that was built without the page refuses the option, and writes nothing else either.
class PreviewTest : public ProgramTest
{
protected:
    // As the tests of the samples have them: the plug-in asks for date and author once in a process.
    PreviewTest() { setenv("SOURCE_DATE_EPOCH", "0", 1); }

    ~PreviewTest() override { unsetenv("SOURCE_DATE_EPOCH"); }

    void SetUp() override
    {
        if (!preview::HasPage()) {
            const Outcome outcome = Export({"--author", "tester", "--preview", Path("page.html")});
            EXPECT_EQ(outcome.Code, WrongUsage);
            EXPECT_EQ(outcome.Err, "error: This program was built without the page that --preview writes.\n");
            EXPECT_FALSE(fs::exists(Folder / "out"));
            GTEST_SKIP() << "NOT RUN: this program was built without the page of an export";
        }
    }

    /// Exports a scene of one triangle with the whole plug-in.
    Outcome ExportTriangle(const std::string& page, const std::vector<std::string>& more = {}) const
    {
        Write("triangle.gltf", R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],
            "nodes":[{"name":"</script><b>","mesh":0}],
            "meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}],
            "accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],"max":[1,1,0]}],
            "bufferViews":[{"buffer":0,"byteLength":36}],
            "buffers":[{"byteLength":36,"uri":"data:application/octet-stream;base64,)"
                               "AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"
                               R"("}]})");
        std::vector<std::string> words = {"export", Path("triangle.gltf"), "--plugin",  TQ4X_WHOLE_PLUGIN,
                                          "-o",     Path("out"),           "--preview", page};
        words.insert(words.end(), more.begin(), more.end());
        return RunInside(words);
    }
};

TEST_F(PreviewTest, IsAResultOfTheExport)
{
    for (const char* const name : {"page.html", "out/page.html", "Über 世界.html"}) {
        const Outcome outcome = ExportTriangle(Path(name), {"--overwrite"});
        EXPECT_EQ(outcome.Code, Done) << outcome.Err;
        const std::string page = Read(name);
        EXPECT_THAT(outcome.Out, EndsWith(Path(name) + "  " + std::to_string(page.size()) + " bytes\n"));
        EXPECT_THAT(page, StartsWith("<!DOCTYPE html>"));
        EXPECT_THAT(page, HasSubstr("<title>triangle – tq4x "));
        EXPECT_THAT(page, HasSubstr("\"exitCode\": 0"));
        EXPECT_THAT(page, HasSubstr("id=\"scene-0\">Z2xURg")); // "glTF" in base64
    }
}

TEST_F(PreviewTest, EqualExportsHaveEqualPages)
{
    const auto pageOf = [&] {
        EXPECT_EQ(ExportTriangle(Path("page.html"), {"--overwrite"}).Code, Done);
        return Read("page.html");
    };
    const std::string first = pageOf();
    EXPECT_EQ(pageOf(), first);
}

TEST_F(PreviewTest, FailedExportsHaveAPageAndKeepTheirCode)
{
    Write("scene.gltf", "{ broken");
    const Outcome outcome = Export({"--preview", Path("page.html")});
    EXPECT_EQ(outcome.Code, BadInput);
    const std::string page = Read("page.html");
    EXPECT_THAT(page, HasSubstr("\"exitCode\": 3"));
    EXPECT_THAT(page, HasSubstr("\"severity\": \"error\""));
    EXPECT_THAT(page, HasSubstr("\"files\": []"));
}

TEST_F(PreviewTest, FilesThatNobodyCanReadAreFindings)
{
    const Outcome outcome = Export({"--preview", Path("page.html")});
    EXPECT_EQ(outcome.Code, Done);
    EXPECT_THAT(Read("page.html"), HasSubstr("\"code\": \"TQ-XML-FORM\""));
    EXPECT_THAT(Read("page.html"), HasSubstr("\"problem\": \"The files have errors.\""));
}

TEST_F(PreviewTest, APageThatCantBeWrittenIsABadOutput)
{
    const std::string file = Path("missing/page.html");
    const Outcome outcome = ExportTriangle(file);
    EXPECT_EQ(outcome.Code, BadOutput);
    EXPECT_THAT(outcome.Err, HasSubstr("error: The file " + file + " can't be written.\n"));
    EXPECT_THAT(outcome.Out, testing::Not(HasSubstr("page.html")));
    EXPECT_TRUE(fs::exists(Folder / "out/triangle.qmdl"));
}

TEST_F(PreviewTest, TheReportKnowsOfAPageThatCantBeWritten)
{
    EXPECT_EQ(ExportTriangle(Path("missing/page.html"), {"--report", Path("report.json")}).Code, BadOutput);
    EXPECT_THAT(Read("report.json"), HasSubstr("\"exitCode\": 4"));
}

} // namespace
} // namespace tq4x::cli::test
