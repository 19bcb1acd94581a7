#include "pipeline/Preferences.h"
#include "support/Golden.h"
#include "support/PagePrinter.h"
#include "support/PlatformGuard.h"
#include "support/TemporaryFolder.h"

#include <xsi_menu.h>
#include <xsi_pluginregistrar.h>

#include <gmock/gmock.h>

#include <fstream>

namespace tq4x::test
{
namespace
{

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class PluginMenu : public PluginTest
{
protected:
    PluginMenu()
    {
        m_platform.SetEnvironment({{"TQ4X_FORPENNON_ROOT", m_folder.Path().string()}});
        std::filesystem::create_directories(PreferenceFile().parent_path());
        CurrentPreferences() = {};
    }

    ~PluginMenu() override { CurrentPreferences() = {}; }

    std::filesystem::path PreferenceFile() const
    {
        return m_folder / "tools" / "DccPlugin" / "softimage" / "ini" / "plugin_preference_for_pennon.txt";
    }

    TemporaryFolder m_folder;

private:
    PlatformGuard m_platform;
};

TEST_F(PluginMenu, HasAllItemsInOrder)
{
    const std::vector<XSI::Menu> menus = XSI::Host::RegisteredMenus();
    ASSERT_EQ(menus.size(), 1u);
    std::string text;
    const XSI::CRefArray items = menus.front().GetItems();
    for (LONG i = 0; i < items.GetCount(); ++i)
        text += Utf8(XSI::MenuItem(items[i]).GetLabel()) + " -> " +
                Utf8(XSI::MenuItem(items[i]).GetCallback()) + "\n";
    ExpectGolden(text, "host/export/menu.txt");
}

TEST_F(PluginMenu, EachItemOpensItsPage)
{
    constexpr struct
    {
        const char* Callback;
        const char* Type;
    } Cases[] = {
        {"OnTQ4XExportWithSetting", "ExportProp"},
        {"OnTQ4XAutoSaveExportSettingDialog", "PluginPreferencesProp"},
        {"OnTQ4XSetMaterialAttrDialog", "MaterialAttrProp"},
        {"OnTQ4XSetRenderPriorityDialog", "RenderPriorityProp"},
        {"OnTQ4XRenderPriorityListDialog", "RenderPriorityListProp"},
        {"OnTQ4XSetNoCompDialog", "NoCompProp"},
        {"OnTQ4XSetBillboardDialog", "BillboardProp"},
        {"OnTQ4XSetCombineGroupDialog", "CombineGroupProp"},
        {"OnTQ4XSetForceExportKeyDialog", "ForceExportKeyProp"},
        {"OnTQ4XSetUserDataDialog", "UserDataProp"},
        {"OnTQ4XBatchExport", "BatchExportProp"},
    };

    for (const auto& row : Cases) {
        const std::size_t before = Scene.Host().Pages.size();
        ClickMenu(row.Callback);
        ASSERT_EQ(Scene.Host().Pages.size(), before + 1) << row.Callback;
        EXPECT_EQ(Scene.Host().Pages.back()->GetType(), WholeName(row.Type));
        EXPECT_TRUE(HasProperty(Scene.Root(), row.Type)) << row.Type;
        ClickMenu(row.Callback);
        int count = 0;
        const XSI::CRefArray properties = Scene.Root().GetProperties();
        for (LONG i = 0; i < properties.GetCount(); ++i)
            count += Utf8(XSI::SIObject(properties[i]).GetType()) == WholeName(row.Type) ? 1 : 0;
        EXPECT_EQ(count, 1) << row.Type << " is found again";
    }
}

TEST_F(PluginMenu, ExportRepeatsTheSettingsOfTheScene)
{
    Scene.Null("body");
    std::filesystem::create_directories(m_folder / "tools" / "BrellStudioStarter");
    std::ofstream(m_folder / "tools" / "BrellStudioStarter" / "BrellStudioStarter.exe") << "starter";
    PageDriver("OnTQ4XExportWithSetting")
        .Set("OutputFileName", "again")
        .Set("OutputFolder", m_folder.Path().string().c_str())
        .Set("OptimizePrimitive", false);
    const std::size_t pages = Scene.Host().Pages.size();
    EXPECT_TRUE(ClickMenu("OnTQ4XExport").Succeeded());
    EXPECT_EQ(Scene.Host().Pages.size(), pages) << "without a page";
    EXPECT_TRUE(std::filesystem::exists(m_folder / "again.qmdl"));
}

TEST_F(PluginMenu, ExportFailsWhereTheCommandFails)
{
    EXPECT_FALSE(ClickMenu("OnTQ4XExport").Succeeded());
    EXPECT_EQ(Calls("TQ4X_ForPennonExport"), 1);
    EXPECT_EQ(Calls("InspectObj"), 0);
}

TEST_F(PluginMenu, VersionShowsABox)
{
    EXPECT_TRUE(ClickMenu("OnTQ4XVersionInfo").Succeeded());
    ASSERT_EQ(Scene.Host().MessageBoxes.size(), 1u);
    EXPECT_EQ(Scene.Host().MessageBoxes[0].Title, "TQ4X XSI Plugin Version");
    EXPECT_EQ(Scene.Host().MessageBoxes[0].Text, "TQ4X_ForPennon\nSoftimage 2013 Plugin 0.5.3");
    EXPECT_EQ(Calls("TQ4X_ForPennonVersionInfo"), 1);
}

TEST_F(PluginMenu, PreferencesAreShownTakenAndStored)
{
    std::ofstream(PreferenceFile()) << "first line\nOptionDefaultLoadDir=\"/load\"\n";
    Scene.Host().Fill.PageOpened = [](XSI::Host::PropertyPage& opened) {
        PageDriver page(opened);
        EXPECT_TRUE(page.Flag("PluginPrefAutoSaveOptionsFlag"));
        EXPECT_EQ(page.Text("PluginPrefDefaultLoadDir"), "/load");
        page.Set("PluginPrefAutoSaveOptionsFlag", false).Set("PluginPrefDefaultSaveDir", "/save");
    };
    ClickMenu("OnTQ4XAutoSaveExportSettingDialog");
    EXPECT_EQ(CurrentPreferences(), (PluginPreferences{false, "/load", "/save"}));
    EXPECT_EQ(ReadWholeFile(PreferenceFile()), "AutoSaveExportOptions=\"false\"\n"
                                               "OptionDefaultLoadDir=\"/load\"\n"
                                               "OptionDefaultSaveDir=\"/save\"\n");
}

TEST_F(PluginMenu, MissingPreferencesAreTold)
{
    ClickMenu("OnTQ4XAutoSaveExportSettingDialog");
    EXPECT_THAT(Messages(), ElementsAre("W Export Preference File is not found.\n"));
    PlatformGuard guard;
    guard.SetEnvironment({});
    ClickMenu("OnTQ4XAutoSaveExportSettingDialog");
    EXPECT_THAT(Messages(),
                Contains("W Environment variable TQ4X_FORPENNON_ROOT is not found.\nLatest export "
                         "option have not been saved.\n"));
}

TEST_F(PluginMenu, ThePreferencesPropertyBearsAnotherNameThanItsCallbacks)
{
    const std::vector<std::string> types = XSI::Host::RegisteredPropertyTypes();
    EXPECT_EQ(types.size(), 11u);
    EXPECT_THAT(types, ::testing::Not(Contains("TQ4X_ForPennonPluginPreferencesProp")));
    const XSI::CustomProperty property =
        XSI::Host::AddDefinedProperty(Scene.Root(), "TQ4XPluginPreferencesProp", "TQ4XPluginPreferencesProp");
    XSI::CRefArray properties;
    properties.Add(property);
    XSI::Host::PropertyPage page(properties);
    page.Open();
    EXPECT_EQ(page.GetRefreshCount(), 1);
    EXPECT_EQ(PrintParameters(property) + PrintLayout(page.GetLayout()),
              "bool TQ4X_ForPennonPluginPrefAutoSaveOptionsFlag = true\n"
              "string TQ4X_ForPennonPluginPrefDefaultLoadDir = \"\"\n"
              "string TQ4X_ForPennonPluginPrefDefaultSaveDir = \"\"\n"
              "group \"Auto_SaveLoad_Setting\"\n"
              "    item TQ4X_ForPennonPluginPrefAutoSaveOptionsFlag\n");
}

} // namespace
} // namespace tq4x::test
