// What the host sees of each page when it opens on nothing: parameters, then layout.

#include "support/Golden.h"
#include "support/PagePrinter.h"

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
