#include "PrintValues.h"
#include "SamplePlugin.h"

#include "support/SceneBuilder.h"

#include <xsi_customproperty.h>
#include <xsi_ppglayout.h>

namespace tq4x::test
{
namespace
{

using namespace XSI;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(CustomProperty, ARegisteredTypeIsDefinedByItsPlugin)
{
    SceneBuilder scene;
    Host::LoadPlugin(SamplePlugin::Callbacks());
    const SceneNode node = scene.Null("node");
    X3DObject object = node.Object();
    const CustomProperty property(object.AddProperty(L"SampleProp"));
    ASSERT_TRUE(property.IsValid());
    EXPECT_EQ(property.GetName(), L"SampleProp");
    EXPECT_EQ(property.GetType(), L"SampleProp");
    EXPECT_EQ(property.GetParent(), CRef(node));
    EXPECT_EQ(property.GetFullName(), L"node.SampleProp");
    EXPECT_THAT(Names(property.GetParameters()), ElementsAre("Value", "Search", "List"));
    EXPECT_EQ(object.GetProperties().Find(L"SampleProp"), CRef(property));

    Property named;
    EXPECT_TRUE(object.AddProperty(L"SampleProp", false, L"SampleProp_1", named).Succeeded());
    EXPECT_EQ(named.GetName(), L"SampleProp_1");
    EXPECT_EQ(named.GetType(), L"SampleProp");
    EXPECT_THAT(Names(object.GetProperties()), ElementsAre("SampleProp", "SampleProp_1"));
}

TEST(CustomProperty, AnUnknownTypeIsPlain)
{
    SceneBuilder scene;
    X3DObject object = scene.Null("node").Object();
    const CustomProperty unknown(object.AddProperty(L"UnknownProp"));
    EXPECT_TRUE(unknown.IsValid());
    EXPECT_EQ(unknown.GetParameters().GetCount(), 0);
    const CustomProperty plain = object.AddCustomProperty(L"Notes");
    EXPECT_EQ(plain.GetType(), L"Notes");
    EXPECT_THAT(Names(object.GetProperties()), ElementsAre("UnknownProp", "Notes"));
}

TEST(CustomProperty, MaterialsAndClustersAndTheProjectCarryThemToo)
{
    SceneBuilder scene;
    Host::LoadPlugin(SamplePlugin::Callbacks());
    SceneMesh mesh = scene.Mesh("mesh").Square();
    Cluster cluster = Host::CreateCluster(mesh, "part");
    Material material = scene.Material("m").Object();
    Project project = Application().GetActiveProject();
    EXPECT_TRUE(cluster.AddProperty(L"SampleProp").GetParameter(L"Value").IsValid());
    EXPECT_TRUE(material.AddProperty(L"SampleProp").GetParameter(L"Value").IsValid());
    EXPECT_TRUE(project.AddProperty(L"SampleProp").GetParameter(L"Value").IsValid());
    EXPECT_EQ(material.GetProperties().GetCount(), 1);
    EXPECT_FALSE(Host::AddPlainProperty(Host::CreateImageClip("clip", "a.tga"), "x", "x").IsValid());
}

TEST(CustomProperty, BuiltInTypesComeWithTheirParameters)
{
    SceneBuilder scene;
    X3DObject object = scene.Null("node").Object();
    const Property visibility = object.AddProperty(L"visibility");
    EXPECT_EQ(visibility.GetType(), L"visibility");
    EXPECT_FALSE(visibility.IsA(siCustomPropertyID));
    EXPECT_EQ(visibility.GetParameterValue(L"viewvis"), CValue(true));
    const Property approximation = object.AddProperty(L"geomapprox");
    EXPECT_EQ(approximation.GetParameterValue(L"gapproxmoad"), CValue(true));
    EXPECT_EQ(approximation.GetParameterValue(L"gapproxmoan"), CValue(60.0));
    EXPECT_EQ(Host::FindProperty(object, "geomapprox"), approximation);
    EXPECT_FALSE(Host::FindProperty(object, "other").IsValid());
    EXPECT_FALSE(Host::FindProperty(CRef(), "other").IsValid());
}

TEST(CustomProperty, ParametersAreAddedOnce)
{
    SceneBuilder scene;
    CustomProperty property = scene.Null("node").Object().AddCustomProperty(L"Prop");
    Parameter added;
    EXPECT_TRUE(property.AddParameter(L"a", CValue::siInt4, 4, L"A", L"", L"12", added).Succeeded());
    EXPECT_EQ(added.GetValue(), CValue(12)) << "the initial value takes the type";
    EXPECT_EQ(added.GetParent(), CRef(property));
    added.PutValue(13);
    Parameter again;
    EXPECT_EQ(property.AddParameter(L"a", CValue::siBool, 4, L"", L"", true, again), CStatus::Fail);
    EXPECT_EQ(again, added);
    EXPECT_EQ(added.GetValue(), CValue(13));
}

TEST(CustomProperty, ParametersAreReplaced)
{
    SceneBuilder scene;
    CustomProperty property = scene.Null("node").Object().AddCustomProperty(L"Prop");
    Parameter added;
    property.AddParameter(L"a", CValue::siBool, 4, L"", L"", true, added);
    property.AddParameter(L"b", CValue::siInt4, 4, L"", L"", 1, added);
    Parameter old = property.GetParameter(L"a");
    EXPECT_TRUE(property.RemoveParameter(old).Succeeded());
    EXPECT_FALSE(old.IsValid());
    EXPECT_FALSE(property.GetParameter(L"a").IsValid());
    EXPECT_TRUE(property.AddParameter(L"a", CValue::siInt4, 4, L"", L"", 9, 0, 4, 0, 4, added).Succeeded());
    EXPECT_EQ(added.GetValueType(), CValue::siInt4);
    EXPECT_EQ(added.GetMax(), CValue(4));
    EXPECT_THAT(Names(property.GetParameters()), ElementsAre("b", "a"));

    Parameter foreign = scene.Null("other").Object().GetParameter(L"siscaling");
    EXPECT_EQ(property.RemoveParameter(foreign), CStatus::Fail);
    EXPECT_TRUE(foreign.IsValid());
}

TEST(CustomProperty, GoesWithItsObject)
{
    SceneBuilder scene;
    Host::LoadPlugin(SamplePlugin::Callbacks());
    const SceneNode node = scene.Null("node");
    CustomProperty property(X3DObject(node).AddProperty(L"SampleProp"));
    const Parameter value = property.GetParameter(L"Value");
    const PPGLayout layout = property.GetPPGLayout();
    EXPECT_TRUE(layout.IsValid());
    EXPECT_EQ(layout, property.GetPPGLayout());
    Host::Objects().Delete(CRef(node).GetObjectID());
    EXPECT_FALSE(property.IsValid() || value.IsValid() || layout.IsValid());
}

/// One line per item: control, name, label, and what else it has.
std::vector<std::string> Describe(const PPGLayout& layout)
{
    std::vector<std::string> lines;
    for (LONG i = 0; i < layout.GetCount(); ++i) {
        const PPGItem item = layout.GetItem(i);
        std::string line = Text(item.GetType()) + "|" + Text(item.GetName()) + "|" + Text(item.GetLabel());
        if (item.GetUIItems().GetCount() > 0) {
            line += "|" + Text(CValue(item.GetUIItems()).GetAsText());
        }
        lines.push_back(line);
    }
    return lines;
}

TEST(PageLayout, ItemsInOrder)
{
    SceneBuilder scene;
    PPGLayout layout = scene.Null("node").Object().AddCustomProperty(L"Prop").GetPPGLayout();
    layout.AddTab(L"Tab");
    layout.AddGroup(L"Group", false, 50);
    layout.AddRow();
    layout.AddItem(L"a");
    layout.AddItem(L"b", L"B", siControlFilePath);
    layout.EndRow();
    layout.AddSpacer(10, 20);
    layout.AddStaticText(L"Text", 0, 12);
    layout.EndGroup();
    CValueArray items;
    items.Add(L"x");
    items.Add(1);
    layout.AddEnumControl(L"c", items, L"C");
    layout.AddString(L"d", L"D", true, 30);
    layout.AddButton(L"Press", L"Press me");
    EXPECT_THAT(Describe(layout), ElementsAre("tab||Tab", "group||Group", "row||", "|a|", "file|b|B",
                                              "endrow||", "spacer||", "static||Text", "endgroup||",
                                              "combo|c|C|x,1", "string|d|D", "button|Press|Press me"));
    EXPECT_EQ(layout.GetItem(1).GetAttribute(L"ShowFrame"), CValue(false));
    EXPECT_EQ(layout.GetItem(1).GetAttribute(siUIWidthPercentage), CValue(50));
    EXPECT_EQ(layout.GetItem(6).GetAttribute(siUICX), CValue(10));
    EXPECT_EQ(layout.GetItem(L"d").GetAttribute(L"MultiLine"), CValue(true));
    EXPECT_EQ(layout.GetItem(L"d").GetAttribute(siUICY), CValue(30));
    EXPECT_FALSE(layout.GetItem(L"e").IsValid());
    EXPECT_FALSE(layout.GetItem(L"").IsValid());
    EXPECT_FALSE(layout.GetItem(12).IsValid());
    EXPECT_FALSE(layout.GetItem(-1).IsValid());

    const PPGItem first = layout.GetItem(0);
    layout.Clear();
    EXPECT_EQ(layout.GetCount(), 0);
    EXPECT_FALSE(first.IsValid());
}

TEST(PageLayout, ItemsAndLayoutsHaveAttributes)
{
    SceneBuilder scene;
    PPGLayout layout = scene.Null("node").Object().AddCustomProperty(L"Prop").GetPPGLayout();
    PPGItem item = layout.AddItem(L"a");
    EXPECT_TRUE(item.PutLabel(L"A").Succeeded());
    EXPECT_TRUE(item.PutType(siControlListBox).Succeeded());
    item.PutLabelMinPixels(10);
    item.PutLabelPercentage(20);
    item.PutAttribute(siUICaption, L"Search");
    EXPECT_EQ(item.GetLabel(), L"A");
    EXPECT_EQ(item.GetType(), L"listbox");
    EXPECT_EQ(item.GetAttribute(siUILabelMinPixels), CValue(10));
    EXPECT_EQ(item.GetAttribute(siUILabelPercentage), CValue(20));
    EXPECT_EQ(item.GetAttribute(L"Caption"), CValue(L"Search"));
    EXPECT_TRUE(item.GetAttribute(L"caption").IsEmpty());
    layout.PutAttribute(L"Width", 300);
    EXPECT_EQ(layout.GetAttribute(L"Width"), CValue(300));
    layout.Clear();
    EXPECT_TRUE(layout.GetAttribute(L"Width").IsEmpty());
}

} // namespace
} // namespace tq4x::test
