#include "PrintValues.h"
#include "SamplePlugin.h"

#include "support/SceneBuilder.h"

#include <xsi_command.h>
#include <xsi_context.h>

namespace tq4x::test
{
namespace
{

using namespace XSI;
using testing::ElementsAre;
using testing::IsEmpty;

class PluginTest : public testing::Test
{
protected:
    PluginTest() { SamplePlugin::Calls().clear(); }

    CStatus Run(const wchar_t* command, const CValueArray& arguments = {})
    {
        return Application().ExecuteCommand(command, arguments, m_result);
    }

    std::vector<std::string> Log() const
    {
        std::vector<std::string> texts;
        for (const Host::LogEntry& entry : m_scene.Host().LogEntries) {
            texts.push_back(std::to_string(entry.Severity) + ": " + entry.Text);
        }
        return texts;
    }

    SceneBuilder m_scene;
    CValue m_result;
};

TEST_F(PluginTest, KeepsWhatWasRegistered)
{
    const Plugin plugin = Host::LoadPlugin(SamplePlugin::Callbacks());
    ASSERT_TRUE(plugin.IsValid());
    EXPECT_EQ(plugin.GetName(), L"Sample");
    EXPECT_EQ(plugin.GetAuthor(), L"Somebody");
    EXPECT_EQ(plugin.GetLabel(), L"A sample");
    EXPECT_EQ(plugin.GetMajor(), 1);
    EXPECT_EQ(plugin.GetMinor(), 2);
    EXPECT_THAT(Names(plugin.GetItems()), ElementsAre("SampleMenu", "Sample", "SampleFailing",
                                                      "SampleMissing", "SampleProp", "OtherProp"));
    EXPECT_THAT(Names(Application().GetPlugins()), ElementsAre("Sample"));
    EXPECT_THAT(Names(Application().GetCommands()), ElementsAre("Sample", "SampleFailing", "SampleMissing"));
    EXPECT_THAT(Host::RegisteredPropertyTypes(), ElementsAre("SampleProp", "OtherProp"));
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(PluginTest, ALibraryIsFoundByItsSymbols)
{
    const Plugin plugin = Host::LoadPlugin(&SamplePlugin::FindSymbol);
    ASSERT_TRUE(plugin.IsValid());
    EXPECT_TRUE(Run(L"Sample").Succeeded());
    EXPECT_TRUE(m_scene.Null("node").Object().AddProperty(L"SampleProp").GetParameter(L"Value").IsValid());
    Host::UnloadPlugin(plugin);
    EXPECT_THAT(Log(), ElementsAre("8: Sample has been unloaded."));
}

TEST_F(PluginTest, UnloadingForgetsAll)
{
    const Plugin plugin = Host::LoadPlugin(SamplePlugin::Callbacks());
    Host::UnloadPlugin(plugin);
    Host::UnloadPlugin(plugin);
    EXPECT_THAT(Log(), ElementsAre("8: Sample has been unloaded."));
    EXPECT_FALSE(plugin.IsValid());
    EXPECT_THAT(Host::RegisteredMenus(), IsEmpty());
    EXPECT_THAT(Host::RegisteredPropertyTypes(), IsEmpty());
    EXPECT_EQ(Run(L"Sample"), CStatus::Fail);
    EXPECT_EQ(Application().GetCommands().GetCount(), 0);
}

TEST_F(PluginTest, WhatCantBeLoadedLeavesNothing)
{
    const Host::CallbackTable failing = {{"XSILoadPlugin", [](CRef& plugin) -> CStatus {
                                              PluginRegistrar(plugin).RegisterCommand(L"Lost");
                                              return CStatus::Fail;
                                          }}};
    EXPECT_FALSE(Host::LoadPlugin(Host::CallbackTable()).IsValid());
    EXPECT_FALSE(Host::LoadPlugin(failing).IsValid());
    EXPECT_FALSE(Host::LoadPlugin([](const char*) -> void* { return nullptr; }).IsValid());
    EXPECT_EQ(Application().GetPlugins().GetCount(), 0);
    EXPECT_EQ(Application().GetCommands().GetCount(), 0);
    EXPECT_THAT(Log(), ElementsAre("2: The plug-in can't be loaded: it has no function XSILoadPlugin.",
                                   "2: The plug-in can't be loaded: XSILoadPlugin failed.",
                                   "2: The plug-in can't be loaded: it has no function XSILoadPlugin."));
}

TEST_F(PluginTest, CommandsDeclareTheirArguments)
{
    Host::LoadPlugin(SamplePlugin::Callbacks());
    const Command command = Application().GetCommands().Find(L"Sample");
    ArgumentArray arguments = command.GetArguments();
    ASSERT_EQ(arguments.GetCount(), 2);
    EXPECT_EQ(arguments.GetItem(1).GetName(), L"second");
    EXPECT_EQ(arguments.GetItem(1).GetDefault(), CValue(L"two"));
    EXPECT_FALSE(arguments.GetItem(2).IsValid());
    EXPECT_EQ(command.GetDescription(), L"Joins its arguments.");
}

TEST_F(PluginTest, MissingArgumentsTakeTheirDefaults)
{
    Host::LoadPlugin(SamplePlugin::Callbacks());
    CValueArray one;
    one.Add(L"x");
    CValueArray three = one;
    three.Add(2);
    three.Add(true);
    EXPECT_TRUE(Run(L"Sample").Succeeded());
    EXPECT_EQ(m_result, CValue(L"one,two"));
    EXPECT_TRUE(Run(L"Sample", one).Succeeded());
    EXPECT_TRUE(Run(L"Sample", three).Succeeded());
    EXPECT_THAT(SamplePlugin::Calls(),
                ElementsAre("Sample_Execute one,two", "Sample_Execute x,two", "Sample_Execute x,2,true"));
    const Command command = Application().GetCommands().Find(L"Sample");
    EXPECT_EQ(command.GetArguments().GetItem(1).GetValue(), CValue(2));
}

TEST_F(PluginTest, StatusOfACommandComesThrough)
{
    Host::LoadPlugin(SamplePlugin::Callbacks());
    m_result = 5;
    EXPECT_EQ(Run(L"SampleFailing"), CStatus::Abort);
    EXPECT_TRUE(m_result.IsEmpty());
    EXPECT_EQ(Run(L"SampleMissing"), CStatus::Fail);
    EXPECT_EQ(Run(L"Nonsense"), CStatus::Fail);
    EXPECT_THAT(Log(), ElementsAre("2: No plug-in has the callback SampleMissing_Execute.",
                                   "2: There is no command Nonsense."));
}

TEST_F(PluginTest, CallsAreRecordedInOrder)
{
    Host::LoadPlugin(SamplePlugin::Callbacks());
    CValueArray view;
    view.Add(L"Script Editor");
    Run(L"OpenView", view);
    Run(L"SampleFailing");
    const auto& calls = m_scene.Host().CommandCalls;
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].Name, "OpenView");
    EXPECT_EQ(calls[0].Arguments[0], CValue(L"Script Editor"));
    EXPECT_EQ(calls[0].Status, CStatus::OK);
    EXPECT_EQ(calls[1].Status, CStatus::Abort);
}

TEST_F(PluginTest, Menus)
{
    Host::LoadPlugin(SamplePlugin::Callbacks());
    ASSERT_EQ(Host::RegisteredMenus().size(), 1u);
    const Menu menu = Host::RegisteredMenus()[0];
    EXPECT_EQ(Host::Objects().Find<Host::MenuObject>(menu)->Anchor, 1014);
    EXPECT_THAT(Names(menu.GetItems()), ElementsAre("Do it ...", "", "Nowhere"));

    EXPECT_TRUE(Host::RunMenuItem(Host::FindMenuItem("OnSampleDoIt")).Succeeded());
    EXPECT_THAT(SamplePlugin::Calls(), ElementsAre("OnSampleDoIt Do it ..."));
    EXPECT_EQ(Host::RunMenuItem(Host::FindMenuItem("OnSampleNowhere")), CStatus::Fail);
    EXPECT_THAT(Log(), ElementsAre("2: No plug-in has the callback OnSampleNowhere."));
    EXPECT_FALSE(Host::FindMenuItem("OnOther").IsValid());
    EXPECT_EQ(Host::RunMenuItem(MenuItem()), CStatus::InvalidArgument);
}

TEST_F(PluginTest, ContextsEndWithTheirCall)
{
    CRef kept;
    Host::CallbackTable table = SamplePlugin::Callbacks();
    table["Sample_Execute"] = [&](CRef& context) -> CStatus {
        kept = context;
        return CStatus::OK;
    };
    Host::LoadPlugin(table);
    Run(L"Sample");
    EXPECT_FALSE(kept.IsValid());
}

TEST_F(PluginTest, APluginOutlivesTheScene)
{
    Host::CallbackTable table = SamplePlugin::Callbacks();
    table["Sample_Execute"] = [&](CRef& context) -> CStatus {
        m_scene.Host().NewScene("next");
        Context(context).PutAttribute(L"ReturnValue", L"still here");
        return CStatus::OK;
    };
    Host::LoadPlugin(table);
    const CRef node = m_scene.Null("node");
    EXPECT_TRUE(Run(L"Sample").Succeeded());
    EXPECT_EQ(m_result, CValue(L"still here"));
    EXPECT_FALSE(node.IsValid());
    EXPECT_TRUE(Run(L"Sample").Succeeded());
    EXPECT_THAT(Host::RegisteredPropertyTypes(), ElementsAre("SampleProp", "OtherProp"));
}

} // namespace
} // namespace tq4x::test
