// How an export ends: in full, with everything put in order, or early, with nothing restored.

#include "pipeline/ExportOptions.h"
#include "pipeline/Platform.h"
#include "support/ExportRun.h"
#include "support/Golden.h"
#include "support/ToolInstallation.h"

#include <functional>

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* AutoInspect = "preferences.Interaction.autoinspect";
constexpr const char* DialogProperty = "TQ4X_ForPennonExportProp_1";
constexpr const char* FormerSettings = "what the former export left";

/// Commands that the driver ran on the host itself, as "SetValue preferences.Interaction.autoinspect 0".
std::vector<std::string> HostCalls()
{
    std::vector<std::string> calls;
    for (const XSI::Host::CommandCall& call : SceneBuilder::Host().CommandCalls) {
        std::string line = call.Name;
        for (LONG i = 0; i < call.Arguments.GetCount(); ++i)
            line += std::string(" ") + call.Arguments[i].GetAsText().GetAsciiString();
        if (!line.starts_with("TQ4X_"))
            calls.push_back(line);
    }
    return calls;
}

bool HasDialogProperty()
{
    return SceneBuilder::Root().GetProperties().Find(DialogProperty).IsValid();
}

/// A scene of one object whose export was asked for by a page of its own.
class DriverEnds : public testing::Test
{
protected:
    DriverEnds() { StartAnew(); }

    /// A host with nothing but the property that asks for the export.
    void StartAnew()
    {
        Scene.Host().Reset();
        ExportRun::EnsurePlugin();
        Scene.Host().Preferences[AutoInspect] = 1;
        XSI::Host::AddPlainProperty(SceneBuilder::Root(), "TQ4X_ForPennonExportProp", DialogProperty);
    }

    /// The file of the last export, as an export before left it.
    void LeaveSettings() const
    {
        std::filesystem::create_directories(LastExport().parent_path());
        std::ofstream(LastExport(), std::ios::binary) << FormerSettings;
    }

    std::filesystem::path LastExport() const
    {
        return Tool.Root() / "tools/DccPlugin/softimage/ini/last_export_options_for_pennon.q3es";
    }

    ToolInstallation Tool;
    SceneBuilder Scene;
};

TEST_F(DriverEnds, AWholeExportPutsThingsInOrderStepByStep)
{
    Scene.Null("body");
    std::vector<std::string> callsBeforeSaving;
    bool hadProperty = true;
    bool hadOptions = false;
    const auto makeFolder = CurrentPlatform().MakeFolder;
    CurrentPlatform().MakeFolder = [&](const std::string& path) {
        if (path.find("DccPlugin") != std::string::npos) {
            callsBeforeSaving = HostCalls();
            hadProperty = HasDialogProperty();
            hadOptions = LiveOptions() != nullptr;
        }
        return makeFolder(path);
    };
    const ExportRun run({"Magnify:2"});
    EXPECT_TRUE(run.Succeeded());
    EXPECT_THAT(callsBeforeSaving,
                ElementsAre("GetValue preferences.Interaction.autoinspect",
                            "SetValue preferences.Interaction.autoinspect 0", EndsWith(DialogProperty)))
        << "the property goes before the options are saved";
    EXPECT_FALSE(hadProperty);
    EXPECT_TRUE(hadOptions) << "what is saved must still be there";
    EXPECT_THAT(ReadWholeFile(LastExport()), HasSubstr("Magnify=\"2.000000\""));
    EXPECT_EQ(LiveOptions(), nullptr);
    ASSERT_EQ(HostCalls().size(), 4u);
    EXPECT_EQ(HostCalls().back(), "SetValue preferences.Interaction.autoinspect 1");
}

TEST_F(DriverEnds, TheFormerInspectionIsRestoredWhateverItWas)
{
    Scene.Null("body");
    Scene.Host().Preferences[AutoInspect] = 0;
    const ExportRun run;
    EXPECT_EQ(static_cast<LONG>(Scene.Host().Preferences[AutoInspect]), 0);
    EXPECT_EQ(HostCalls().back(), "SetValue preferences.Interaction.autoinspect 0");
}

TEST_F(DriverEnds, WithoutARootOnlyTheSavingIsLeftOut)
{
    // Without a root from the start the optimisation would have ended the export: it vanishes in between.
    Scene.Null("body");
    CurrentPlatform().RunCommand = [&](const std::string&) {
        CurrentPlatform().Environment = [](const std::string&) { return std::nullopt; };
        return 0;
    };
    const ExportRun run({"OptimizePrimitive:true"});
    EXPECT_TRUE(run.Succeeded());
    EXPECT_THAT(run.Messages(), ElementsAre("W Environment variable TQ4X_FORPENNON_ROOT is not found.\n"
                                            "Latest export option have not been saved.\n"));
    EXPECT_FALSE(HasDialogProperty());
    EXPECT_EQ(LiveOptions(), nullptr);
    EXPECT_EQ(static_cast<LONG>(Scene.Host().Preferences[AutoInspect]), 1);
}

TEST_F(DriverEnds, AFolderForTheSettingsThatCannotBeMadeIsToldAndChangesNothingElse)
{
    Scene.Null("body");
    std::ofstream(Tool.Root() / "tools/DccPlugin") << "no folder";
    const ExportRun run;
    EXPECT_TRUE(run.Succeeded());
    EXPECT_THAT(run.Messages(), ElementsAre(StartsWith("E Can't create folder(")));
    EXPECT_FALSE(HasDialogProperty());
    EXPECT_EQ(LiveOptions(), nullptr);
    EXPECT_EQ(static_cast<LONG>(Scene.Host().Preferences[AutoInspect]), 1);
}

/// Binds a mesh to an object that the export leaves out.
void BuildMissingInfluence()
{
    const SceneNode outside = SceneBuilder::Null("outside");
    const SceneNode inside = SceneBuilder::Null("inside");
    SceneBuilder::Mesh("plate", inside)
        .Square(SceneBuilder::Material("red"))
        .Skin({{outside, {{0, 100}, {1, 100}, {2, 100}, {3, 100}}}});
    XSI::Application().GetSelection().Add(inside);
}

TEST_F(DriverEnds, EarlyEndsBehindTheWalkRestoreNothing)
{
    const auto buildNothing = [] {};
    const auto buildBody = [] { SceneBuilder::Null("body"); };

    const struct
    {
        const char* Name;
        std::function<void()> Build;
        std::vector<std::string> Options;
        const char* Blocked; ///< a folder stands in the place of this file
        bool HasStarter;
        const char* Message; ///< how the only one begins
        bool HasModel;
    } rows[] = {
        {"missing influence",
         BuildMissingInfluence,
         {"ExportTarget:Selection"},
         "none",
         true,
         "E Influence object is not outputted(outside)",
         false},
        {"no node", buildNothing, {}, "none", true, "E No effective node", false},
        {"unopenable file", buildBody, {"OutputQskla:true"}, "out.qskla", true, "E Can't open file(", true},
        {"missing starter", buildBody, {}, "none", false, "E BrellStudio cannot be found(", true},
    };

    LeaveSettings();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        StartAnew();
        row.Build();
        std::filesystem::remove_all(Tool.Root() / (row.HasStarter ? "none" : "tools/BrellStudioStarter"));
        ExportRun run(ExportRun::NotYet{});
        std::filesystem::create_directory(run.Folder() / row.Blocked);
        std::vector<std::string> options = {"AlwaysOverwrite", "Magnify:3"};
        options.insert(options.end(), row.Options.begin(), row.Options.end());
        run.Run(options);
        EXPECT_FALSE(run.Succeeded());
        EXPECT_THAT(run.Messages(), ElementsAre(StartsWith(row.Message)));
        EXPECT_EQ(run.HasFile("out.qmdl"), row.HasModel);
        EXPECT_TRUE(HasDialogProperty());
        EXPECT_EQ(ReadWholeFile(LastExport()), FormerSettings);
        ASSERT_NE(LiveOptions(), nullptr);
        EXPECT_EQ(LiveOptions()->Magnify, 3.0f);
        EXPECT_EQ(static_cast<LONG>(Scene.Host().Preferences[AutoInspect]), 0);
        EXPECT_THAT(Tool.Commands, IsEmpty());
        EXPECT_THAT(HostCalls(),
                    ElementsAre("GetValue preferences.Interaction.autoinspect",
                                "SetValue preferences.Interaction.autoinspect 0", "OpenView Script Editor"));
    }
}

TEST_F(DriverEnds, TheNextExportReplacesTheRecordOfAnEarlyEnd)
{
    ExportRun run({"Magnify:3"});
    EXPECT_FALSE(run.Succeeded());
    Scene.Null("body");
    Scene.Host().LogEntries.clear();
    run.Run({});
    EXPECT_TRUE(run.Succeeded());
    EXPECT_THAT(ReadWholeFile(LastExport()), HasSubstr("Magnify=\"1.000000\""));
    EXPECT_EQ(LiveOptions(), nullptr);
    EXPECT_EQ(static_cast<LONG>(Scene.Host().Preferences[AutoInspect]), 0)
        << "the second export found it switched off by the first";
}

} // namespace
} // namespace tq4x::test
