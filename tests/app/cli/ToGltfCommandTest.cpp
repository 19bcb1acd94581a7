#include <gmock/gmock.h>

#include "Program.h"

namespace tq4x::cli::test
{
namespace
{

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

/// A folder with copies of good written files.
class ToGltfCommandTest : public ProgramTest
{
protected:
    ToGltfCommandTest()
    {
        std::filesystem::copy(std::filesystem::path(TQ4X_TEST_DATA) / "reader", Folder.Path(),
                              std::filesystem::copy_options::recursive);
    }

    bool Exists(const std::string& name) const { return std::filesystem::exists(Folder / name); }
};

TEST_F(ToGltfCommandTest, AModelWithEverythingAroundIt)
{
    const Outcome outcome = RunInside({"to-gltf", Path("house.qmdl"), Path("house.qskla"),
                                       Path("house.qmata"), Path("house.qmdla"), Path("house.qcam"),
                                       Path("house.qlgt"), Path("house.qenv"), "-o", Path("out.glb")});
    EXPECT_EQ(outcome.Code, Done);
    const std::string glb = Read("out.glb");
    EXPECT_THAT(glb, StartsWith("glTF"));
    EXPECT_EQ(outcome.Out, Path("out.glb") + "  " + std::to_string(glb.size()) + " bytes\n");
    EXPECT_THAT(outcome.Err,
                StartsWith("warning: \"Roof\": a turn together with different scales of a texture "
                           "comes near only.\n"));
    // What the program wrote it opens itself.
    const Outcome info = RunInside({"info", Path("out.glb")});
    EXPECT_EQ(info.Code, Done);
    EXPECT_THAT(info.Out, HasSubstr("  cameras     3\n  lights      3\n  clips       1\n    house  "));
}

TEST_F(ToGltfCommandTest, FramesPerSecond)
{
    const auto length = [&](const std::string& rate) {
        EXPECT_EQ(
            RunInside({"to-gltf", Path("house.qmdl"), Path("house.qskla"), "-o", Path("out.glb"), rate}).Code,
            Done);
        const std::string info = RunInside({"info", Path("out.glb")}).Out;
        const std::size_t at = info.find("    house  ");
        return info.substr(at, info.find(',', at) - at);
    };
    EXPECT_EQ(length("--fps=10"), "    house  2 s");
    EXPECT_EQ(length("--fps=20"), "    house  1 s");
}

TEST_F(ToGltfCommandTest, MissingTexturesAreAWarning)
{
    std::filesystem::remove_all(Folder / "Textures");
    const Outcome outcome = RunInside({"to-gltf", Path("house.qmdl"), "-o", Path("out.glb")});
    EXPECT_EQ(outcome.Code, Done);
    EXPECT_THAT(outcome.Err,
                HasSubstr(": TQ-REF-TEXTURE: The texture \"Tiles\" is not there: Textures/Tiles.qtex.\n"));
    EXPECT_TRUE(Exists("out.glb"));
}

TEST_F(ToGltfCommandTest, WrongUsage)
{
    const struct
    {
        std::vector<std::string> Words;
        const char* Error;
    } cases[] = {
        {{}, "error: The command \"to-gltf\" needs FILE.... "},
        {{"a.qmdl"}, "error: The option --output must name the file to write.\n"},
        {{"a.qmdl", "-o", "a.glb", "--fps", "0"},
         "error: The frame rate must be a number above 0, not \"0\".\n"},
    };

    for (const auto& entry : cases) {
        std::vector<std::string> words = {"to-gltf"};
        words.insert(words.end(), entry.Words.begin(), entry.Words.end());
        const Outcome outcome = RunInside(words);
        EXPECT_EQ(outcome.Code, WrongUsage) << entry.Error;
        EXPECT_THAT(outcome.Err, StartsWith(entry.Error));
    }
}

TEST_F(ToGltfCommandTest, DamagedInputIsToldWithItsLineAndNothingIsWritten)
{
    const std::string bomb =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE a [<!ENTITY b \"bbbb\">]>\n<a>&b;</a>\n";
    const std::string good = Read("house.qmdl");

    const struct
    {
        const char* Name;
        std::string Text;
        const char* Error;
    } cases[] = {
        {"cut short", good.substr(0, good.size() / 2), ": TQ-XML-FORM: Not well-formed: "},
        {"entities", bomb, ":2: TQ-XML-DOCTYPE: "},
        {"another document", "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<a/>\n", ":2: TQ-SCHEMA: "},
        {"empty", "", ": TQ-XML-"},
    };

    for (const auto& entry : cases) {
        Write("bad.qmdl", entry.Text);
        const Outcome outcome = RunInside({"to-gltf", Path("bad.qmdl"), "-o", Path("out.glb")});
        EXPECT_EQ(outcome.Code, BadInput) << entry.Name;
        EXPECT_THAT(outcome.Err, StartsWith("error: " + Path("bad.qmdl"))) << entry.Name;
        EXPECT_THAT(outcome.Err, HasSubstr(entry.Error)) << entry.Name;
        EXPECT_EQ(outcome.Out, "") << entry.Name;
        EXPECT_FALSE(Exists("out.glb")) << entry.Name;
    }
    const Outcome missing = RunInside({"to-gltf", Path("none.qmdl"), "-o", Path("out.glb")});
    EXPECT_EQ(missing.Code, BadInput);
    EXPECT_EQ(missing.Err,
              "error: " + Path("none.qmdl") + ": TQ-READ: The file does not exist or is no regular file.\n");
}

TEST_F(ToGltfCommandTest, WhatBreaksTheRulesOfModelsIsRefused)
{
    const std::string good = Read("house.qmdl");
    const std::size_t at = good.find("PrimitiveMode=\"Triangles\"");
    ASSERT_NE(at, std::string::npos);
    const std::size_t text = good.find('>', at) + 1;
    std::string bad = good;
    bad.replace(text, 1, "99");
    Write("bad.qmdl", bad);
    const Outcome outcome = RunInside({"to-gltf", Path("bad.qmdl"), "-o", Path("out.glb")});
    EXPECT_EQ(outcome.Code, BadInput);
    EXPECT_THAT(outcome.Err, HasSubstr("TQ-INDEX-RANGE: "));
    EXPECT_FALSE(Exists("out.glb"));
}

TEST_F(ToGltfCommandTest, OutputThatCanNotBeWritten)
{
    const Outcome outcome = RunInside({"to-gltf", Path("house.qcam"), "-o", Path("none/out.glb")});
    EXPECT_EQ(outcome.Code, BadOutput);
    EXPECT_THAT(outcome.Err, HasSubstr("error: The file " + Path("none/out.glb") + " can't be written.\n"));
    EXPECT_EQ(outcome.Out, "");
}

} // namespace
} // namespace tq4x::cli::test
