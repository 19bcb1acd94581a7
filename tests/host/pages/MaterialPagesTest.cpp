// The pages whose property hangs on materials.

#include "support/PageDriver.h"

#include "scene/CreateGeometry.h"

#include <gmock/gmock.h>

namespace tq4x::test
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MaterialPages : public PluginTest
{
protected:
    static XSI::CustomProperty Define(const XSI::CRef& owner, std::string_view type)
    {
        return XSI::Host::AddDefinedProperty(owner, WholeName(type), WholeName(type));
    }

    static void Put(const XSI::CRef& owner, std::string_view type, std::string_view parameter,
                    const XSI::CValue& value)
    {
        XSI::CustomProperty property =
            XSI::SceneItem(owner).GetProperties().Find(XSI::Host::FromUtf8(WholeName(type)));
        if (!property.IsValid())
            property = Define(owner, type);
        property.PutParameterValue(XSI::Host::FromUtf8(WholeName(parameter)), value);
    }
};

TEST_F(MaterialPages, OpenOnTheMaterialOfWhatIsSelected)
{
    const SceneMaterial red = Scene.Material("red");
    const SceneMaterial blue = Scene.Material("blue");
    const SceneMaterial green = Scene.Material("green");
    SceneMesh plate = Scene.Mesh("plate");
    plate.Square(red);
    const XSI::Cluster cluster = XSI::Host::CreateCluster(plate, "faces");
    XSI::Host::SetMaterial(cluster, blue);
    Scene.Select({plate, cluster, green});
    PageDriver page("OnTQ4XSetMaterialAttrDialog");
    EXPECT_THAT(page.Owners(), ElementsAre("red", "blue", "green"));
    EXPECT_EQ(page.Text("MatAttrSelectList"), "DefaultLib.red\rDefaultLib.blue\rDefaultLib.green\r");
    EXPECT_FALSE(HasProperty(plate, "MaterialAttrProp"));
}

TEST_F(MaterialPages, OpenASharedMaterialOnce)
{
    const SceneMaterial red = Scene.Material("red");
    const SceneNode a = Scene.Mesh("a").Square(red);
    const SceneNode b = Scene.Mesh("b").Square(red);
    Scene.Select({a, b, red});
    PageDriver page("OnTQ4XSetMaterialAttrDialog");
    EXPECT_THAT(page.Owners(), ElementsAre("red"));
    EXPECT_EQ(page.Text("MatAttrSelectList"), "DefaultLib.red\r");
}

TEST_F(MaterialPages, OpenOnTheRootForObjectsWithoutMaterial)
{
    Scene.Select({Scene.Null("body")});
    for (const char* callback : {"OnTQ4XSetMaterialAttrDialog", "OnTQ4XSetRenderPriorityDialog"})
        EXPECT_THAT(PageDriver(callback).Owners(), ElementsAre("Scene_Root")) << callback;
}

TEST_F(MaterialPages, ANewMaterialPropertyHasTheExportersDefaults)
{
    Scene.Select({Scene.Material("red")});
    PageDriver page("OnTQ4XSetMaterialAttrDialog");
    EXPECT_EQ(page.Number("MatAttrCullFace"), 1);
    EXPECT_TRUE(page.Flag("MatAttrFragmentLighting"));
    EXPECT_FALSE(page.Flag("MatAttrVertexLighting"));
    EXPECT_EQ(page.Number("MatAttrBlendMode"), -1);
    EXPECT_FALSE(page.IsEnabled("MatAttrSearchButton")) << "no box is on";
    page.Set("MatAttrBlendMode", 9);
    EXPECT_EQ(page.Number("MatAttrBlendMode"), 6) << "6 has no word and may be stored";
    EXPECT_EQ(page.Rows("MatAttrCullFace").size(), 4u);
}

TEST_F(MaterialPages, ASearchFindsMaterialsByTheObjectsThatUseThem)
{
    const SceneMaterial red = Scene.Material("red");
    const SceneMaterial blue = Scene.Material("blue");
    const SceneMaterial unused = Scene.Material("unused");
    SceneMesh plate = Scene.Mesh("plate");
    plate.Square(blue).Square(red);
    const SceneNode other = Scene.Mesh("other", plate).Square(blue);
    for (const SceneMaterial& material : {red, blue, unused})
        Put(material, "MaterialAttrProp", "MatAttrCullFace", 3);
    PageDriver page("OnTQ4XSetMaterialAttrDialog");
    page.Set("MatAttrSearchCullFaceNever", true).Press("MatAttrSearchButton");
    EXPECT_THAT(SelectedNames(), ElementsAre("blue", "red")) << "each once, as it is met";
    EXPECT_EQ(page.Text("MatAttrSelectList"), "DefaultLib.blue\rDefaultLib.red\r");
}

TEST_F(MaterialPages, EachBoxFindsItsOwnValue)
{
    const struct
    {
        const char* Parameter;
        int Least; ///< value of the first box
        std::vector<const char*> Boxes;
    } Cases[] = {
        {"MatAttrCullFace", 0, {"CullFaceFront", "CullFaceBack", "CullFaceAlways", "CullFaceNever"}},
        {"MatAttrFragmentLighting", 0, {"FragmentLightingOff", "FragmentLightingOn"}},
        {"MatAttrVertexLighting", 0, {"VertexLightingOff", "VertexLightingOn"}},
        {"MatAttrBlendMode",
         -1,
         {"BlendAuto", "BlendOpaque", "BlendAlphaTest", "BlendTranslucent", "BlendAdd", "BlendSub",
          "BlendMultiply"}},
        {"MatAttrNoCompress", 0, {"CompressOn", "CompressOff"}},
    };

    std::vector<SceneMaterial> materials;
    SceneMesh plate = Scene.Mesh("plate");
    for (int i = 0; i < 8; ++i) {
        materials.push_back(Scene.Material("m" + std::to_string(i)));
        plate.Square(materials.back());
    }
    for (const auto& row : Cases) {
        const int count = static_cast<int>(row.Boxes.size());
        for (int i = 0; i < count; ++i)
            Put(materials[static_cast<std::size_t>(i)], "MaterialAttrProp", row.Parameter, row.Least + i);
        for (int i = 0; i < count; ++i) {
            Scene.Select({});
            PageDriver page("OnTQ4XSetMaterialAttrDialog");
            const std::string box = std::string("MatAttrSearch") + row.Boxes[static_cast<std::size_t>(i)];
            page.Set(box, true).Press("MatAttrSearchButton").Set(box, false);
            EXPECT_THAT(SelectedNames(), ElementsAre("m" + std::to_string(i))) << box;
        }
        for (const SceneMaterial& material : materials)
            XSI::Host::Objects().Delete(XSI::SceneItem(material)
                                            .GetProperties()
                                            .Find(L"TQ4X_ForPennonMaterialAttrProp")
                                            .GetObjectID());
    }
}

TEST_F(MaterialPages, TheGroupsOfBoxesAreCombinedByTheWord)
{
    const SceneMaterial red = Scene.Material("red");
    const SceneMaterial blue = Scene.Material("blue");
    const SceneMaterial plain = Scene.Material("plain");
    const SceneMaterial unmarked = Scene.Material("unmarked");
    SceneMesh plate = Scene.Mesh("plate");
    plate.Square(red).Square(blue).Square(plain).Square(unmarked);
    Put(red, "MaterialAttrProp", "MatAttrBlendMode", 3);
    Put(red, "MaterialAttrProp", "MatAttrNoCompress", 1);
    Put(blue, "MaterialAttrProp", "MatAttrBlendMode", 3);
    Put(blue, "MaterialAttrProp", "MatAttrFragmentLighting", false);
    Define(plain, "MaterialAttrProp");

    const struct
    {
        const char* Name;
        std::vector<const char*> Boxes;
        int AndOr;
        std::vector<std::string> Found;
    } Cases[] = {
        {"automatic blending", {"BlendAuto"}, 0, {"plain"}},
        {"two values of a group", {"BlendAuto", "BlendAdd"}, 0, {"red", "blue", "plain"}},
        {"and", {"BlendAdd", "CompressOff"}, 0, {"red"}},
        {"or", {"FragmentLightingOff", "CompressOff"}, 1, {"red", "blue"}},
        {"compress boxes by their labels", {"CompressOn"}, 0, {"blue", "plain"}},
        {"vertex lighting and culling", {"VertexLightingOff", "CullFaceBack"}, 0, {"red", "blue", "plain"}},
    };

    for (const auto& row : Cases) {
        Scene.Select({red});
        PageDriver page("OnTQ4XSetMaterialAttrDialog");
        for (const char* box : row.Boxes)
            page.Set(std::string("MatAttrSearch") + box, true);
        page.Set("MatAttrSearchAndOr", row.AndOr).Press("MatAttrSearchButton");
        EXPECT_EQ(SelectedNames(), row.Found) << row.Name;
        for (const char* box : row.Boxes)
            Put(red, "MaterialAttrProp", std::string("MatAttrSearch") + box, false);
    }
}

TEST_F(MaterialPages, ASearchWithoutAMatchFixesAllValuesOnTheRoot)
{
    const SceneMaterial red = Scene.Material("red");
    const SceneNode plate = Scene.Mesh("plate").Square(red);
    Scene.Select({red});
    PageDriver page("OnTQ4XSetMaterialAttrDialog");
    page.Set("MatAttrCullFace", 2).Set("MatAttrSearchCullFaceFront", true).Press("MatAttrSearchButton");
    EXPECT_THAT(SelectedNames(), IsEmpty());
    EXPECT_THAT(page.Owners(), ElementsAre("Scene_Root"));
    EXPECT_EQ(page.Number("MatAttrCullFace"), 2);
    EXPECT_EQ(page.Text("MatAttrSelectList"), "None");
    for (const char* value : {"MatAttrCullFace", "MatAttrFragmentLighting", "MatAttrVertexLighting",
                              "MatAttrBlendMode", "MatAttrNoCompress"})
        EXPECT_FALSE(page.IsEnabled(value)) << value;
}

TEST_F(MaterialPages, TheRenderPriorityIsTheMaterials)
{
    const SceneMaterial red = Scene.Material("red");
    const SceneNode plate = Scene.Mesh("plate").Square(red);
    Scene.Select({plate});
    PageDriver page("OnTQ4XSetRenderPriorityDialog");
    EXPECT_EQ(page.Text("RenderPrioSelectList"), "DefaultLib.red\r");
    page.Set("RenderPrioUsePriority", true).Set("RenderPrioPriority", 0);
    EXPECT_EQ(page.Number("RenderPrioPriority"), 1) << "the range begins at 1";
    page.Set("RenderPrioPriority", 300);
    EXPECT_EQ(static_cast<LONG>(ValueOf(red, "RenderPriorityProp", "RenderPrioPriority")), 255);
    EXPECT_FALSE(HasProperty(plate, "RenderPriorityProp"));
}

TEST_F(MaterialPages, APrioritySearchFindsTheObjectsOfTheMaterials)
{
    const SceneMaterial red = Scene.Material("red");
    const SceneMaterial blue = Scene.Material("blue");
    const SceneMaterial green = Scene.Material("green");
    const SceneNode a = Scene.Mesh("a").Square(red);
    const SceneNode b = Scene.Mesh("b").Square(blue);
    const SceneNode c = Scene.Mesh("c").Square(red);
    const SceneNode d = Scene.Mesh("d").Square(green);
    for (const auto& [material, priority] : {std::pair(red, 5), std::pair(blue, 9), std::pair(green, 5)}) {
        Put(material, "RenderPriorityProp", "RenderPrioUsePriority", true);
        Put(material, "RenderPriorityProp", "RenderPrioPriority", priority);
    }
    Put(green, "RenderPriorityProp", "RenderPrioUsePriority", false);
    PageDriver page("OnTQ4XSetRenderPriorityDialog");
    page.Press("RenderPrioSearchButton");
    EXPECT_THAT(SelectedNames(), ElementsAre("a", "b", "c"));
    page.Set("RenderPrioSearchUsePrecondition", true)
        .Set("RenderPrioSearchPrecondition", 2)
        .Set("RenderPrioSearchPreconditionValue", 5)
        .Press("RenderPrioSearchButton");
    EXPECT_THAT(SelectedNames(), ElementsAre("a", "c"));
    EXPECT_EQ(page.Text("RenderPrioSelectList"), "DefaultLib.red\r");
}

} // namespace
} // namespace tq4x::test
