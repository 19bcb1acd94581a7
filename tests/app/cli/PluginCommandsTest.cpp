// The commands of the whole plug-in, as the program lists and runs them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "MarkedScene.h"
#include "support/Golden.h"

namespace tq4x::cli::test
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;

class PluginCommandsTest : public MarkedSceneTest
{
protected:
    /// A scene of one node; its export settings may be given, as members of an object.
    void WriteStage(const std::string& name, const std::string& settings = "") const
    {
        const std::string extras =
            settings.empty() ? "" : R"(,"extras":{"TQ4X_ForPennonExportProp":{)" + settings + "}}";
        Write(name, R"({"asset":{"version":"2.0"},"nodes":[{"name":"body"}],"scenes":[{"nodes":[0])" +
                        extras + "}]}");
    }

    Outcome Batch() const { return Run({"run", "TQ4X_ForPennonBatchExport", Path("in"), Path("out")}); }

    std::vector<std::string> Written() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(Folder / "out")) {
            names.push_back(entry.path().filename().string());
        }
        std::ranges::sort(names);
        return names;
    }

    void MakeInput() const { std::filesystem::create_directory(Folder / "in"); }
};

TEST_F(PluginCommandsTest, AreListedWithPropertiesAndMenu)
{
    const Outcome outcome = Run({"commands"});
    EXPECT_EQ(outcome.Code, Done) << outcome.Err;
    tq4x::test::ExpectGolden(outcome.Out, "app/cli/commands.txt");
}

TEST_F(PluginCommandsTest, TheExportIsReached)
{
    const Outcome outcome = Run({"run", "--scene", Path("marked.gltf"), "TQ4X_ForPennonExport", "hero",
                                 Path("out"), "OptimizePrimitive:false", "OutputQskla:true"});
    EXPECT_EQ(outcome.Code, Done) << outcome.Err;
    EXPECT_THAT(Written(), ElementsAre("hero.qmdl", "hero.qskla"));
    EXPECT_EQ(Run({"run", "TQ4X_ForPennonExport", "hero", Path("out")}).Code, Failed) << "an empty scene";
}

TEST_F(PluginCommandsTest, TheExportWithASettingsFileIsReached)
{
    Write("a.q3es", "# TQ4X_ForPennonExport settings\nOutputFileName=\"own\"\nOptimizePrimitive=\"false\"\n");
    const std::vector<std::string> words = {
        "run",          "--scene", Path("marked.gltf"), "TQ4X_ForPennonExportSettingFile",
        Path("a.q3es"), "",        Path("out")};
    EXPECT_EQ(Run(words).Code, Done);
    EXPECT_THAT(Written(), ElementsAre("own.qmdl"));
}

TEST_F(PluginCommandsTest, ABatchExportsEachSceneWithItsOwnSettings)
{
    MakeInput();
    WriteStage("in/a.scn");
    WriteStage("in/b.scn", R"("OutputFileName":"hero","OutputAnimation":true,"OptimizePrimitive":false)");
    WriteStage("in/c.scn");
    WriteStage("in/d.gltf");
    const Outcome outcome = Batch();
    EXPECT_EQ(outcome.Code, Done) << outcome.Err;
    EXPECT_THAT(Written(), ElementsAre("a.qmdl", "c.qmdl", "hero.qmdl", "hero.qskla"));
    EXPECT_THAT(outcome.Err, HasSubstr("Optimization failed (2 times)"));
}

TEST_F(PluginCommandsTest, TheDialogBeginsWithTheScenesOwnSettings)
{
    WriteStage("own.gltf", R"("OutputFileName":"hero","Magnify":0.1,"Magnifi":2)");
    const Outcome outcome = Run({"dialog", Path("own.gltf")});
    EXPECT_EQ(outcome.Code, Done);
    EXPECT_THAT(outcome.Out, HasSubstr("\n  Output File Name: hero\n"));
    EXPECT_THAT(outcome.Out, HasSubstr("\n  Magnify: 0.1\n"));
    EXPECT_THAT(outcome.Err, HasSubstr("warning: There is no parameter Magnifi; did you mean Magnify?\n"));
}

TEST_F(PluginCommandsTest, ABatchEndsWithTheFirstSceneThatFails)
{
    MakeInput();
    WriteStage("in/a.scn");
    Write("in/b.scn", "{ broken");
    WriteStage("in/c.scn");
    const Outcome outcome = Batch();
    EXPECT_EQ(outcome.Code, Failed);
    EXPECT_THAT(outcome.Err, HasSubstr("error: " + Path("in/b.scn") + ": The JSON is malformed"));
    EXPECT_THAT(Written(), ElementsAre("a.qmdl"));
}

TEST_F(PluginCommandsTest, ABatchEndsWithTheFirstSceneThatVanishes)
{
    MakeInput();
    for (const char* name : {"in/a.scn", "in/b.scn", "in/c.scn"}) {
        WriteStage(name);
    }
    InstallStarter("rm -f '" + Path("in/b.scn") + "'"); // while the first scene is exported
    const Outcome outcome = Batch();
    EXPECT_EQ(outcome.Code, Failed);
    EXPECT_THAT(outcome.Err, HasSubstr("b.scn does not exist."));
    EXPECT_THAT(Written(), ElementsAre("a.qmdl"));
}

} // namespace
} // namespace tq4x::cli::test
