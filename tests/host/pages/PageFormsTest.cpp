// What the host sees of each page when it opens on nothing: parameters, then layout.

#include "support/Golden.h"
#include "support/PagePrinter.h"

#include <xsi_parameter.h>

namespace tq4x::test
{
namespace
{

using PageForms = PluginTest;

TEST_F(PageForms, AllPagesHaveTheirParametersAndControls)
{
    constexpr struct
    {
        const char* Callback;
        const char* Golden;
    } Cases[] = {
        {"OnTQ4XSetBillboardDialog", "billboard.txt"},
        {"OnTQ4XSetNoCompDialog", "no-compress.txt"},
        {"OnTQ4XSetForceExportKeyDialog", "force-export-key.txt"},
        {"OnTQ4XSetCombineGroupDialog", "combine-group.txt"},
        {"OnTQ4XSetRenderPriorityDialog", "render-priority.txt"},
        {"OnTQ4XSetMaterialAttrDialog", "material-attribute.txt"},
        {"OnTQ4XRenderPriorityListDialog", "render-priority-list.txt"},
        {"OnTQ4XSetUserDataDialog", "user-data.txt"},
        {"OnTQ4XBatchExport", "batch.txt"},
    };

    for (const auto& row : Cases) {
        SCOPED_TRACE(row.Callback);
        ClickMenu(row.Callback);
        PageDriver page(*Scene.Host().Pages.back());
        ExpectGolden(PrintParameters(page.Property()) + "\n" + PrintLayout(page.Page().GetLayout()),
                     std::string("host/pages/") + row.Golden);
    }
}

TEST_F(PageForms, TheUserDataItemHasItsParametersAndControls)
{
    const XSI::CustomProperty property = XSI::Host::AddDefinedProperty(
        Scene.Root(), "TQ4X_ForPennonUserDataItemProp", "TQ4X_ForPennonUserDataItemProp");
    XSI::CRefArray properties;
    properties.Add(property);
    XSI::Host::PropertyPage page(properties);
    page.Open();
    ExpectGolden(PrintParameters(property) + "\n" + PrintLayout(page.GetLayout()),
                 "host/pages/user-data-item.txt");
}

TEST_F(PageForms, ParametersHaveTheTypesAndCapabilitiesThatStoredScenesKnow)
{
    ClickMenu("OnTQ4XSetBillboardDialog");
    const XSI::CustomProperty property = PageDriver(*Scene.Host().Pages.back()).Property();
    constexpr int Persistable = 4;
    constexpr int ReadOnly = 2;

    const struct
    {
        const char* Name;
        int Type;
        int Capabilities;
    } Cases[] = {
        {"TQ4X_ForPennonBillboardType", 3, Persistable},
        {"TQ4X_ForPennonSearchYBillboard", 11, Persistable},
        {"TQ4X_ForPennonBillboardSearchButton", 11, Persistable | ReadOnly},
    };

    for (const auto& row : Cases) {
        const XSI::Parameter parameter = property.GetParameter(row.Name);
        EXPECT_EQ(static_cast<int>(parameter.GetValueType()), row.Type) << row.Name;
        EXPECT_EQ(static_cast<int>(parameter.GetCapabilities()), row.Capabilities) << row.Name;
    }
    const XSI::Parameter type = property.GetParameter("TQ4X_ForPennonBillboardType");
    EXPECT_EQ(static_cast<LONG>(type.GetSuggestedMin()), 0) << "limits are those of the control, too";
    EXPECT_EQ(static_cast<LONG>(type.GetSuggestedMax()), 6);
}

TEST_F(PageForms, DefiningAPropertyAgainChangesNothing)
{
    for (const std::string& type : XSI::Host::RegisteredPropertyTypes()) {
        SCOPED_TRACE(type);
        const XSI::CustomProperty property = XSI::Host::AddDefinedProperty(Scene.Root(), type, type);
        const std::string before = PrintParameters(property);
        XSI::Host::CallbackCall call;
        call.Source = property;
        EXPECT_TRUE(XSI::Host::RunCallback(type + "_Define", call).has_value());
        EXPECT_EQ(PrintParameters(property), before);
        EXPECT_NE(before, "");
    }
}

} // namespace
} // namespace tq4x::test
