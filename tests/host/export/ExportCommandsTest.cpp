// The two commands that run an export: how they take their arguments, and what they do first.

#include "pipeline/ExportOptions.h"
#include "pipeline/MessageLog.h"
#include "support/ExportRun.h"
#include "support/ToolInstallation.h"

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;

class ExportCommands : public testing::Test
{
protected:
    ExportCommands()
    {
        ExportRun::EnsurePlugin();
        Scene.Null("body");
    }

    static XSI::CStatus Execute(const char* command, const std::vector<XSI::CValue>& values)
    {
        XSI::CValueArray arguments;
        for (const XSI::CValue& value : values)
            arguments.Add(value);
        XSI::CValue result;
        return XSI::Application().ExecuteCommand(command, arguments, result);
    }

    std::vector<std::string> Messages() const
    {
        std::vector<std::string> messages;
        for (const XSI::Host::LogEntry& entry : Scene.Host().LogEntries)
            messages.push_back(entry.Text);
        return messages;
    }

    XSI::CValue OutputFolder() const { return XSI::CString(Folder.Path().string().c_str()); }

    ToolInstallation Tool;
    TemporaryFolder Folder;
    SceneBuilder Scene;
};

TEST_F(ExportCommands, BothFillTheSlotOfTheLogFirst)
{
    MessageLog::Instance().SetCallback(nullptr);
    EXPECT_FALSE(Execute("TQ4X_ForPennonExport", {"a?b", OutputFolder(), XSI::CValueArray()}).Succeeded());
    EXPECT_THAT(Messages(), ElementsAre("Output File Name is wrong"));

    Scene.Host().LogEntries.clear();
    MessageLog::Instance().SetCallback(nullptr);
    EXPECT_FALSE(Execute("TQ4X_ForPennonExportSettingFile", {"no file", "", ""}).Succeeded());
    EXPECT_THAT(Messages(), ElementsAre("Internal Error(no file)"));
}

TEST_F(ExportCommands, ASingleTextIsAListOfOne)
{
    EXPECT_TRUE(Execute("TQ4X_ForPennonExport", {"out", OutputFolder(), "OutputQtex:false"}).Succeeded());
    EXPECT_TRUE(std::filesystem::exists(Folder / "out.qmdl"));
    EXPECT_EQ(Tool.Commands.size(), 1u) << "the optimisation is asked for by default";
}

TEST_F(ExportCommands, OptionsMayBeLeftOut)
{
    EXPECT_TRUE(Execute("TQ4X_ForPennonExport", {"out", OutputFolder()}).Succeeded());
    EXPECT_TRUE(std::filesystem::exists(Folder / "out.qmdl"));
}

TEST_F(ExportCommands, ArgumentsThatAreLeftOutAreEmpty)
{
    EXPECT_FALSE(Execute("TQ4X_ForPennonExport", {"out"}).Succeeded());
    EXPECT_THAT(Messages(), ElementsAre("Output Folder is wrong"));

    Scene.Host().LogEntries.clear();
    EXPECT_FALSE(Execute("TQ4X_ForPennonExport", {}).Succeeded());
    EXPECT_THAT(Messages(), ElementsAre("Output File Name is wrong", "Output Folder is wrong"));
    ASSERT_NE(LiveOptions(), nullptr);
    EXPECT_EQ(*LiveOptions(), ExportOptions{});

    Scene.Host().LogEntries.clear();
    EXPECT_FALSE(Execute("TQ4X_ForPennonExportSettingFile", {}).Succeeded());
    EXPECT_THAT(Messages(), ElementsAre("Internal Error"));
}

} // namespace
} // namespace tq4x::test
