#include "pipeline/MessageLog.h"
#include "pipeline/Preferences.h"
#include "support/PageDriver.h"
#include "support/PlatformGuard.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace tq4x::test
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class BatchExport : public PluginTest
{
protected:
    BatchExport()
    {
        m_platform.SetEnvironment({{"TQ4X_FORPENNON_ROOT", m_root.Path().string()}});
        CurrentPlatform().RunCommand = [](const std::string&) { return 0; };
        std::filesystem::create_directories(m_root / "tools" / "BrellStudioStarter");
        std::ofstream(m_root / "tools" / "BrellStudioStarter" / "BrellStudioStarter.exe") << "starter";
        CurrentPreferences() = {};
        Scene.Host().Fill.OpenScene = [this](const std::string& path) { return OpenScene(path); };
    }

    /// Scene files hold nothing here: each opens as a scene with one object, whose export property names no
    /// file unless the test says so.
    XSI::CStatus OpenScene(const std::string& path)
    {
        Opened.push_back(std::filesystem::path(path).filename().string());
        if (Opened.back() == Broken)
            return XSI::CStatus::Unexpected;
        const std::string name = SceneName.empty() ? std::filesystem::path(path).stem().string() : SceneName;
        Scene.Host().NewScene(name, path);
        Scene.Null("body");
        XSI::CustomProperty property = XSI::Host::AddDefinedProperty(Scene.Root(), "TQ4X_ForPennonExportProp",
                                                                     "TQ4X_ForPennonExportProp");
        property.PutParameterValue(L"OptimizePrimitive", false);
        property.PutParameterValue(L"OutputFileName", XSI::Host::FromUtf8(OutputName));
        if (Opened.back() == WithoutFiles)
            for (const wchar_t* file : {L"OutputModel", L"OutputTexture"})
                property.PutParameterValue(file, false);
        return XSI::CStatus::OK;
    }

    void MakeScenes(const std::vector<std::string>& names)
    {
        for (const std::string& name : names)
            std::ofstream(m_in / name) << "scene";
    }

    XSI::CStatus Run(const std::filesystem::path& in, const std::filesystem::path& out)
    {
        XSI::CValueArray arguments;
        arguments.Add(in.string().c_str());
        arguments.Add(out.string().c_str());
        XSI::CValue result;
        return XSI::Application().ExecuteCommand("TQ4X_ForPennonBatchExport", arguments, result);
    }

    std::vector<std::string> Written() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_out.Path()))
            names.push_back(entry.path().filename().string());
        std::ranges::sort(names);
        return names;
    }

    TemporaryFolder m_root;
    TemporaryFolder m_in;
    TemporaryFolder m_out;
    std::vector<std::string> Opened;
    std::string Broken;       ///< this file can't be opened
    std::string WithoutFiles; ///< this scene asks for no output, which fails its export
    std::string SceneName;    ///< empty: the file's
    std::string OutputName;

private:
    PlatformGuard m_platform;
};

TEST_F(BatchExport, ExportsEverySceneOfTheFolderInTheOrderOfNames)
{
    MakeScenes({"b.scn", "a.scn", "C.scn"});
    EXPECT_TRUE(Run(m_in.Path(), m_out.Path()).Succeeded());
    EXPECT_THAT(Opened, ElementsAre("C.scn", "a.scn", "b.scn"));
    EXPECT_THAT(Written(), ElementsAre("C.qmdl", "a.qmdl", "b.qmdl"));
    EXPECT_THAT(Messages(), ElementsAre("I ExportScene: " + (m_in / "C.scn").string(),
                                        "I ExportScene: " + (m_in / "a.scn").string(),
                                        "I ExportScene: " + (m_in / "b.scn").string()));
}

TEST_F(BatchExport, TakesScenesAlone)
{
    MakeScenes({"a.scn", "b.SCN", "c.scn.bak", "d.scnx", "scn", ".scn"});
    std::filesystem::create_directory(m_in / "folder.scn");
    EXPECT_TRUE(Run(m_in.Path(), m_out.Path()).Succeeded());
    EXPECT_THAT(Opened, ElementsAre("a.scn"));
}

TEST_F(BatchExport, OpensEachSceneWithTwoZeros)
{
    MakeScenes({"a.scn"});
    Run(m_in.Path(), m_out.Path());
    for (const XSI::Host::CommandCall& call : Scene.Host().CommandCalls)
        if (call.Name == "OpenScene") {
            EXPECT_EQ(Utf8(call.Arguments[0].GetAsText()), (m_in / "a.scn").string());
            EXPECT_EQ(static_cast<LONG>(call.Arguments[1]), 0);
            EXPECT_EQ(static_cast<LONG>(call.Arguments[2]), 0);
        }
    EXPECT_EQ(Calls("OpenScene"), 1);
}

TEST_F(BatchExport, TakesTheNameFromTheScenesSettings)
{
    MakeScenes({"a.scn"});
    OutputName = "chosen";
    EXPECT_TRUE(Run(m_in.Path(), m_out.Path()).Succeeded());
    EXPECT_THAT(Written(), ElementsAre("chosen.qmdl"));
}

TEST_F(BatchExport, TakesOneUnderscoreFromTheScenesName)
{
    MakeScenes({"a.scn"});
    SceneName = "__level";
    EXPECT_TRUE(Run(m_in.Path(), m_out.Path()).Succeeded());
    EXPECT_THAT(Written(), ElementsAre("_level.qmdl"));
}

TEST_F(BatchExport, AsksNoQuestions)
{
    MakeScenes({"a.scn"});
    std::ofstream(m_out / "a.qmdl") << "former";
    EXPECT_TRUE(Run(m_in.Path(), m_out.Path()).Succeeded());
    EXPECT_THAT(Scene.Host().MessageBoxes, IsEmpty());
    EXPECT_GT(std::filesystem::file_size(m_out / "a.qmdl"), 100u);
    XSI::CValueArray texts;
    for (const XSI::Host::CommandCall& call : Scene.Host().CommandCalls)
        if (call.Name == "TQ4X_ForPennonExport")
            texts = call.Arguments[2];
    EXPECT_EQ(Utf8(texts[texts.GetCount() - 1].GetAsText()), "AlwaysOverwrite");
}

TEST_F(BatchExport, MakesThePropertyForASceneThatHasNone)
{
    MakeScenes({"a.scn"});
    Scene.Host().Fill.OpenScene = [this](const std::string& path) {
        Scene.Host().NewScene("bare", path);
        Scene.Null("body");
        return XSI::CStatus(XSI::CStatus::OK);
    };
    Run(m_in.Path(), m_out.Path());
    EXPECT_EQ(Calls("TQ4X_ForPennonExport"), 1);
    EXPECT_TRUE(HasProperty(Scene.Root(), "ExportProp"));
    EXPECT_TRUE(std::filesystem::exists(m_out / "bare.qmdl"));
}

TEST_F(BatchExport, AnEmptyFolderIsASuccess)
{
    EXPECT_TRUE(Run(m_in.Path(), m_out.Path()).Succeeded());
    EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(BatchExport, ASceneThatCantBeOpenedEndsTheBatch)
{
    MakeScenes({"a.scn", "b.scn", "c.scn"});
    Broken = "b.scn";
    EXPECT_TRUE(Run(m_in.Path(), m_out.Path()) == XSI::CStatus::Unexpected) << "its own status";
    EXPECT_THAT(Opened, ElementsAre("a.scn", "b.scn"));
    EXPECT_THAT(Written(), ElementsAre("a.qmdl"));
}

TEST_F(BatchExport, ASceneWhoseExportFailsEndsTheBatch)
{
    MakeScenes({"a.scn", "b.scn", "c.scn"});
    WithoutFiles = "b.scn";
    EXPECT_FALSE(Run(m_in.Path(), m_out.Path()).Succeeded());
    EXPECT_THAT(Opened, ElementsAre("a.scn", "b.scn"));
}

TEST_F(BatchExport, TheInputFolderMustExist)
{
    const std::filesystem::path missing = m_in / "missing";
    EXPECT_FALSE(Run(missing, m_out.Path()).Succeeded());
    EXPECT_THAT(Messages(), ElementsAre("E Output Folder is wrong(" + missing.string() + ")"));
    EXPECT_FALSE(Run("", m_out.Path()).Succeeded());
}

TEST_F(BatchExport, FillsTheSlotOfTheLogFirst)
{
    MessageLog::Instance().SetCallback(nullptr);
    EXPECT_FALSE(Run("", "").Succeeded());
    EXPECT_THAT(Messages(), ElementsAre("E Output Folder is wrong"));
}

TEST_F(BatchExport, TheOutputFolderIsMade)
{
    MakeScenes({"a.scn"});
    EXPECT_TRUE(Run(m_in.Path(), m_out / "new/deep").Succeeded());
    EXPECT_TRUE(std::filesystem::exists(m_out / "new/deep/a.qmdl"));
}

TEST_F(BatchExport, AnOutputFolderThatCantBeMadeIsTold)
{
    MakeScenes({"a.scn"});
    std::ofstream(m_out / "file") << "no folder";
    EXPECT_FALSE(Run(m_in.Path(), m_out / "file").Succeeded());
    EXPECT_THAT(Messages(), ElementsAre("E Output Folder is wrong(" + (m_out / "file").string() + ")"));
    EXPECT_THAT(Opened, IsEmpty());
}

TEST_F(BatchExport, TheMenuTakesTheFoldersFromItsPage)
{
    MakeScenes({"a.scn"});
    Scene.Host().Fill.PageOpened = [this](XSI::Host::PropertyPage& opened) {
        PageDriver(opened)
            .Set("BatchInputFolder", m_in.Path().string().c_str())
            .Set("BatchOutputFolder", m_out.Path().string().c_str());
    };
    EXPECT_TRUE(ClickMenu("OnTQ4XBatchExport").Succeeded());
    EXPECT_THAT(Written(), ElementsAre("a.qmdl"));
}

} // namespace
} // namespace tq4x::test
