#include "pipeline/ExportOptions.h"
#include "support/ExportRun.h"
#include "support/ToolInstallation.h"

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;

/// Runs the command on a settings file with this text; none is written for a null text.
class SettingFileRun
{
public:
    SettingFileRun(const char* text, const std::string& name, bool namesFolder)
    {
        ExportRun::EnsurePlugin();
        Path = (Folder / "some.q3es").string();
        if (text != nullptr)
            std::ofstream(Path) << text << "OutputFolder=\"" << (Folder / "own").string() << "\"\n";
        XSI::CValueArray arguments;
        arguments.Add(Path.c_str());
        arguments.Add(name.c_str());
        arguments.Add(namesFolder ? (Folder / "given").string().c_str() : "");
        XSI::CValue result;
        Status = XSI::Application().ExecuteCommand("TQ4X_ForPennonExportSettingFile", arguments, result);
    }

    bool HasFile(const std::string& name) const { return std::filesystem::exists(Folder / name); }

    TemporaryFolder Folder;
    std::string Path;
    XSI::CStatus Status;
};

constexpr const char* Settings = "# TQ4X_ForPennonExport settings\n"
                                 "OutputFileName=\"from_file\"\n"
                                 "OptimizePrimitive=\"false\"\n"
                                 "OutputQtex=\"false\"\n";

TEST(SettingFileCommand, ExportsWhatTheFileSays)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Null("body");
    const SettingFileRun run(Settings, "", false);
    EXPECT_TRUE(run.Status.Succeeded());
    EXPECT_TRUE(run.HasFile("own/from_file.qmdl"));
}

TEST(SettingFileCommand, NameAndFolderGivenWin)
{
    const ToolInstallation tool;
    SceneBuilder scene;
    scene.Null("body");
    const SettingFileRun run(Settings, "named", true);
    EXPECT_TRUE(run.Status.Succeeded());
    EXPECT_TRUE(run.HasFile("given/named.qmdl"));
    EXPECT_FALSE(run.HasFile("own"));
}

TEST(SettingFileCommand, FilesThatCannotBeReadEndItBeforeTheExport)
{
    for (const char* text : {static_cast<const char*>(nullptr), "# something else\n", ""}) {
        const ToolInstallation tool;
        SceneBuilder scene;
        scene.Null("body");
        const SettingFileRun run(text, "named", true);
        EXPECT_FALSE(run.Status.Succeeded());
        ASSERT_EQ(scene.Host().LogEntries.size(), 1u);
        EXPECT_EQ(scene.Host().LogEntries[0].Text, "Internal Error(" + run.Path + ")");
        EXPECT_THAT(scene.Host().OpenedViews, ElementsAre("Script Editor"));
        ASSERT_NE(LiveOptions(), nullptr);
        EXPECT_EQ(*LiveOptions(), ExportOptions{}) << "the record stays at the defaults";
        EXPECT_FALSE(run.HasFile("given"));
    }
}

} // namespace
} // namespace tq4x::test
