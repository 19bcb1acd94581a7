#include "support/PluginCallbacks.h"
#include "support/SceneBuilder.h"

#include <xsi_application.h>
#include <xsi_argumentarray.h>
#include <xsi_command.h>
#include <xsi_menu.h>
#include <xsi_plugin.h>

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;

std::string TextOf(const XSI::CString& text)
{
    return text.GetAsciiString();
}

/// "name(argument, argument)"
std::string FormOf(const XSI::Command& command)
{
    std::string form = TextOf(command.GetName()) + "(";
    const XSI::ArgumentArray arguments = command.GetArguments();
    for (LONG i = 0; i < arguments.GetCount(); ++i)
        form += (i > 0 ? ", " : "") + TextOf(arguments.GetItem(i).GetName());
    return form + ")";
}

TEST(Registration, ThePluginPresentsItself)
{
    SceneBuilder scene;
    const XSI::Plugin plugin = LoadLinkedPlugin();
    ASSERT_TRUE(plugin.IsValid());
    EXPECT_EQ(TextOf(plugin.GetAuthor()), "Vendaral");
    EXPECT_EQ(TextOf(plugin.GetName()), "TQ4X_ForPennonExport");
    EXPECT_EQ(TextOf(plugin.GetLabel()), "TQ4X For Pennon");
    EXPECT_EQ(plugin.GetMajor(), 0);
    EXPECT_EQ(plugin.GetMinor(), 5);
}

TEST(Registration, TheMenuHangsInThatOfFileExports)
{
    SceneBuilder scene;
    LoadLinkedPlugin();
    const std::vector<XSI::Menu> menus = XSI::Host::RegisteredMenus();
    ASSERT_EQ(menus.size(), 1u);
    EXPECT_EQ(TextOf(menus[0].GetName()), "TQ4XForPennon");
    EXPECT_EQ(XSI::Host::Objects().Find<XSI::Host::MenuObject>(menus[0])->Anchor, 1014);
}

TEST(Registration, CommandsStandInOrderWithTheirArguments)
{
    SceneBuilder scene;
    LoadLinkedPlugin();
    std::vector<std::string> forms;
    const XSI::CRefArray commands = XSI::Application().GetCommands();
    for (LONG i = 0; i < commands.GetCount(); ++i)
        forms.push_back(FormOf(XSI::Command(commands[i])));
    EXPECT_THAT(forms,
                ElementsAre("TQ4X_ForPennonExport(sceneName, outputFolder, arguments)",
                            "TQ4X_ForPennonExportSettingFile(q3esFileName, sceneName, outputFolder)",
                            "TQ4X_ForPennonBatchExport(inFldr, outFldr)", "TQ4X_ForPennonVersionInfo()"));
}

TEST(Registration, PropertiesStandInOrderWithoutThePreferences)
{
    SceneBuilder scene;
    LoadLinkedPlugin();
    EXPECT_THAT(XSI::Host::RegisteredPropertyTypes(),
                ElementsAre("TQ4X_ForPennonExportProp", "TQ4X_ForPennonBatchExportProp",
                            "TQ4X_ForPennonNoCompProp", "TQ4X_ForPennonBillboardProp",
                            "TQ4X_ForPennonMaterialAttrProp", "TQ4X_ForPennonRenderPriorityProp",
                            "TQ4X_ForPennonRenderPriorityListProp", "TQ4X_ForPennonCombineGroupProp",
                            "TQ4X_ForPennonForceExportKeyProp", "TQ4X_ForPennonUserDataProp",
                            "TQ4X_ForPennonUserDataItemProp"));
}

TEST(Registration, UnloadingSaysSo)
{
    SceneBuilder scene;
    XSI::Host::UnloadPlugin(LoadLinkedPlugin());
    ASSERT_FALSE(scene.Host().LogEntries.empty());
    EXPECT_EQ(scene.Host().LogEntries.back().Text, "TQ4X_ForPennonExport has been unloaded.");
    EXPECT_EQ(scene.Host().LogEntries.back().Severity, XSI::siInfoMsg);
}

TEST(Registration, TheVersionBoxNamesHostAndVersion)
{
    SceneBuilder scene;
    LoadLinkedPlugin();
    XSI::CValue result;
    EXPECT_TRUE(XSI::Application().ExecuteCommand("TQ4X_ForPennonVersionInfo", {}, result).Succeeded());
    ASSERT_EQ(scene.Host().MessageBoxes.size(), 1u);
    EXPECT_EQ(scene.Host().MessageBoxes[0].Title, "TQ4X XSI Plugin Version");
    EXPECT_EQ(scene.Host().MessageBoxes[0].Text, "TQ4X_ForPennon\nSoftimage 2013 Plugin 0.5.3");
}

} // namespace
} // namespace tq4x::test
