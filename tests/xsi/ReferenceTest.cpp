#include "PrintValues.h"

#include "support/SceneBuilder.h"

#include <xsi_camera.h>
#include <xsi_chainelement.h>
#include <xsi_light.h>
#include <xsi_model.h>
#include <xsi_null.h>
#include <xsi_polygonmesh.h>
#include <xsi_primitive.h>

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using XSI::CRef;

TEST(Reference, InvalidByDefault)
{
    const CRef ref;
    EXPECT_FALSE(ref.IsValid());
    EXPECT_EQ(ref.GetObjectID(), 0u);
    EXPECT_EQ(ref.GetClassID(), XSI::siUnknownClassID);
    EXPECT_FALSE(ref.IsA(XSI::siSIObjectID));
    EXPECT_FALSE(ref.IsA(XSI::siUnknownClassID));
    EXPECT_EQ(ref.GetAsText(), L"");
    EXPECT_FALSE(CRef::FromObjectID(4000000000u).IsValid());
}

TEST(Reference, OrderIsThatOfCreation)
{
    SceneBuilder scene;
    const CRef b = scene.Null("b");
    const CRef a = scene.Null("a");
    EXPECT_LT(b, a);
    EXPECT_NE(a, b);
    EXPECT_EQ(a, CRef::FromObjectID(XSI::X3DObject(a).GetObjectID()));
}

TEST(Reference, ADeletedObjectLeavesAnInvalidReferenceAndItsNumberIsNotGivenAgain)
{
    SceneBuilder scene;
    const SceneNode deleted = scene.Null("deleted");
    const CRef ref = deleted;
    XSI::Host::Objects().Delete(ref.GetObjectID());
    const CRef next = scene.Null("next");
    EXPECT_FALSE(ref.IsValid());
    EXPECT_EQ(XSI::X3DObject(ref).GetName(), L"");
    EXPECT_LT(ref, next);
    XSI::Host::Objects().Delete(ref.GetObjectID());
    EXPECT_TRUE(next.IsValid());
}

TEST(Reference, ClassesAndTheirBases)
{
    SceneBuilder scene;
    const CRef model = scene.Model("model");
    const CRef bone = scene.Bone("bone");
    const CRef effector = scene.Effector("effector");
    const CRef mesh = scene.Mesh("mesh").Square();
    const CRef light = scene.Light("light", XSI::Host::LightType::Spot);

    const struct
    {
        const char* Name;
        CRef Object;
        int ClassId;
        bool IsA;
    } cases[] = {
        {"model by its number", model, 74, true},
        {"model is a 3D object", model, XSI::siX3DObjectID, true},
        {"model is no null", model, XSI::siNullID, false},
        {"null is no skeleton element", scene.Null("null"), 0x4b, false},
        {"bone", bone, 0x4b, true},
        {"bone is no effector", bone, 0x52, false},
        {"effector", effector, 0x52, true},
        {"both are chain elements", effector, XSI::siChainElementID, true},
        {"root of a chain is neither", XSI::Host::CreateChainRoot({}, "root"), 0x4b, false},
        {"mesh", mesh, XSI::siX3DObjectID, true},
        {"camera", scene.Camera("camera"), XSI::siCameraID, true},
        {"light is a scene item", light, XSI::siSceneItemID, true},
        {"everything is an object", light, XSI::siSIObjectID, true},
        {"nothing is unknown", light, XSI::siUnknownClassID, false},
    };

    for (const auto& test : cases) {
        EXPECT_EQ(test.Object.IsA(static_cast<XSI::siClassID>(test.ClassId)), test.IsA) << test.Name;
    }
    EXPECT_EQ(model.GetClassID(), 74);
}

TEST(Reference, AHandleTakesOnlyObjectsOfItsClass)
{
    SceneBuilder scene;
    const SceneNode null = scene.Null("null");
    EXPECT_TRUE(XSI::Null(null).IsValid());
    EXPECT_TRUE(XSI::X3DObject(null).IsValid());
    EXPECT_FALSE(XSI::Camera(null).IsValid());
    EXPECT_FALSE(XSI::Light(null).IsValid());
    EXPECT_FALSE(XSI::Model(null).IsValid());
    EXPECT_FALSE(XSI::PolygonMesh(null).IsValid());
    XSI::X3DObject object = CRef(null);
    object.ResetObject();
    EXPECT_FALSE(object.IsValid());
}

TEST(ReferenceList, FindsByName)
{
    SceneBuilder scene;
    const SceneNode root = scene.Null("root");
    scene.Null("a", root);
    const CRef first = scene.Null("b", root);
    scene.Null("b", root);
    const XSI::CRefArray children = root.Object().GetChildren();
    EXPECT_EQ(children.Find(L"b"), first);
    EXPECT_EQ(children.GetItem(L"b"), first);
    EXPECT_EQ(children.GetItem(1), first);
    EXPECT_FALSE(children.Find(L"B").IsValid());
    EXPECT_FALSE(children.GetItem(3).IsValid());
    EXPECT_EQ(Text(children.GetAsText()), "a,b,b");
}

TEST(ReferenceList, AppendsAnother)
{
    SceneBuilder scene;
    XSI::CRefArray list;
    list.Add(scene.Null("a"));
    list += list;
    EXPECT_THAT(Names(list), ElementsAre("a", "a"));
}

TEST(Name, FullNamesHoldModelsAndOwners)
{
    SceneBuilder scene;
    const SceneNode plain = scene.Null("plain");
    const SceneNode below = scene.Null("below", plain).Visible(true);
    const SceneNode model = scene.Model("model", below);
    const SceneNode inside =
        scene.Null("inside", scene.Null("between", model)).Marked("Prop", {{"Value", 1}});
    const SceneNode inner = scene.Model("inner", inside);
    const SceneMaterial red = scene.Material("red").Color("diffuse", 1, 0, 0);

    const XSI::CustomProperty property = inside.Object().GetProperties().Find(L"Prop");
    const XSI::Parameter red0 = red.Shader().GetParameter(L"diffuse").GetParameter(L"red");

    const struct
    {
        CRef Object;
        const char* FullName;
    } cases[] = {
        {scene.Root(), "Scene_Root"},
        {plain, "plain"},
        {below, "below"},
        {below.Object().GetProperties()[0], "below.visibility"},
        {model, "model"},
        {inside, "model.inside"},
        {property, "model.inside.Prop"},
        {property.GetParameter(L"Value"), "model.inside.Prop.Value"},
        {inside.Object().GetKinematics().GetLocal(), "model.inside.kine.local"},
        {inner, "model.inner"},
        {scene.Null("deep", inner), "model.inner.deep"},
        {red, "DefaultLib.red"},
        {red0, "DefaultLib.red.Softimage.material-phong.1.0.diffuse.red"},
        {XSI::Application().GetActiveProject().GetProperties()[0], "Play Control"},
        {XSI::Application().GetSelection(), "Selection"},
    };

    for (const auto& test : cases) {
        EXPECT_EQ(Text(test.Object.GetAsText()), test.FullName);
        EXPECT_EQ(Text(XSI::SIObject(test.Object).GetFullName()), test.FullName);
        CRef found;
        if (test.Object != XSI::Application().GetSelection()) {
            EXPECT_TRUE(found.Set(test.FullName).Succeeded()) << test.FullName;
            EXPECT_EQ(found, test.Object) << test.FullName;
        }
    }
}

TEST(Name, LookUpFollowsChanges)
{
    SceneBuilder scene;
    const SceneNode a = scene.Null("a");
    const SceneNode model = scene.Model("model");
    CRef found;
    EXPECT_EQ(found.Set(L"model.a"), XSI::CStatus::Fail);
    EXPECT_FALSE(found.IsValid());

    XSI::Host::MoveBelow(a, model);
    EXPECT_TRUE(found.Set(L"model.a").Succeeded());
    EXPECT_FALSE(found.Set(L"a").Succeeded());

    XSI::SIObject(a).PutName(L"b");
    EXPECT_TRUE(found.Set(L"model.b").Succeeded());
    EXPECT_EQ(found, CRef(a));

    XSI::Host::Objects().Delete(CRef(a).GetObjectID());
    EXPECT_FALSE(found.Set(L"model.b").Succeeded());
    EXPECT_FALSE(found.Set(L"").Succeeded());
    EXPECT_FALSE(found.Set(L"model.").Succeeded());
    EXPECT_FALSE(found.Set(L".model").Succeeded());
}

TEST(Name, NamesMayHoldPoints)
{
    SceneBuilder scene;
    const SceneNode node = scene.Null("arm.left").Marked("Prop.1", {{"Value", 7}});
    CRef found;
    EXPECT_TRUE(found.Set(L"arm.left.Prop.1.Value").Succeeded());
    EXPECT_EQ(static_cast<LONG>(XSI::Parameter(found).GetValue()), 7);
}

TEST(Name, EqualNamesAreToldApart)
{
    SceneBuilder scene;
    const SceneNode a = scene.Null("same");
    EXPECT_EQ(a.Object().GetUniqueName(), L"same");
    const SceneNode b = scene.Null("same");
    EXPECT_EQ(Text(a.Object().GetUniqueName()), "same#" + std::to_string(CRef(a).GetObjectID()));
    EXPECT_NE(a.Object().GetUniqueName(), b.Object().GetUniqueName());
    EXPECT_EQ(a.Object().GetFullName(), b.Object().GetFullName());
    CRef found;
    found.Set(L"same");
    EXPECT_EQ(found, CRef(a));
}

TEST(Name, PutNameOfAnInvalidHandleFails)
{
    EXPECT_EQ(XSI::SIObject().PutName(L"x"), XSI::CStatus::Fail);
}

} // namespace
} // namespace tq4x::test
