#include "math/Matrix44.h"
#include "support/CollectRun.h"

#include <cmath>
#include <limits>

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using testing::FloatNear;
using testing::IsEmpty;
using XSI::MATH::CTransformation;
using XSI::MATH::CVector3;

constexpr double Nan = std::numeric_limits<double>::quiet_NaN();

CTransformation Moved(double x, double y, double z)
{
    CTransformation transform;
    transform.SetTranslationFromValues(x, y, z);
    return transform;
}

/// A transformation that no scale, rotation and translation make: a scaling behind a turn.
CTransformation Sheared()
{
    CTransformation turned;
    turned.SetRotationFromXYZAnglesValues(0.0, 0.0, 0.5);
    CTransformation scaled;
    scaled.SetScalingFromValues(2.0, 1.0, 1.0);
    return CTransformation().Mul(turned, scaled);
}

Vector3 BindTranslation(const Bone& bone)
{
    return {bone.BindMatrix(3, 0), bone.BindMatrix(3, 1), bone.BindMatrix(3, 2)};
}

TEST(NodeName, IsTakenOnce)
{
    SceneBuilder scene;
    const SceneNode first = scene.Null("arm");
    const SceneNode second = scene.Null("arm");
    const SceneNode ambient = scene.Null("AmbientLight");
    const CollectRun run;
    EXPECT_EQ(run.BoneOf(first).Name, "arm");
    EXPECT_EQ(run.BoneOf(second).Name, "arm_1");
    EXPECT_EQ(run.BoneOf(ambient).Name, "AmbientLight_1");
    EXPECT_THAT(run.Messages(), ElementsAre("W Node name is changed(arm -> arm_1)",
                                            "W Node name is changed(AmbientLight -> AmbientLight_1)"));
}

TEST(NodeScalingRule, FollowsTheObject)
{
    SceneBuilder scene;
    const SceneNode plain = scene.Null("plain").ScalesHierarchically(false);
    const SceneNode hierarchical = scene.Null("hierarchical").ScalesHierarchically(true);
    const CollectRun run;
    EXPECT_EQ(run.BoneOf(plain).ScalingRule, ScalingRule::Standard);
    EXPECT_EQ(run.BoneOf(hierarchical).ScalingRule, ScalingRule::Softimage);
    EXPECT_EQ(static_cast<int>(run.BoneOf(hierarchical).ScalingRule), 2);
}

TEST(NodeProperties, AnUnmarkedObjectKeepsTheDefaults)
{
    SceneBuilder scene;
    const SceneNode node = scene.Null("node");
    const CollectRun run;
    const Bone& bone = run.BoneOf(node);
    EXPECT_TRUE(bone.IsVisible);
    EXPECT_THAT(bone.VisibilityCurve.Samples, IsEmpty());
    EXPECT_FALSE(bone.IsNoCompress);
    EXPECT_EQ(bone.BillboardMode, 0);
    EXPECT_EQ(bone.CombineGroup, -1);
    EXPECT_FALSE(bone.IsForceScaleKey || bone.IsForceRotateKey || bone.IsForceTranslateKey);
    EXPECT_THAT(bone.UserData, IsEmpty());
    EXPECT_FALSE(bone.HasSkinningMatrix);
}

TEST(NodeProperties, CompressionMark)
{
    SceneBuilder scene;
    const SceneNode on =
        scene.Null("on").Marked("TQ4X_ForPennonNoCompProp", {{"TQ4X_ForPennonNoCompressNode", true}});
    const SceneNode off =
        scene.Null("off").Marked("TQ4X_ForPennonNoCompProp", {{"TQ4X_ForPennonNoCompressNode", false}});
    const CollectRun run;
    EXPECT_TRUE(run.BoneOf(on).IsNoCompress);
    EXPECT_FALSE(run.BoneOf(off).IsNoCompress);
}

TEST(NodeProperties, Billboards)
{
    const std::string reminder = "W Billboard Type is ignored if 'Convert To Model' option is ON(board)";
    const std::string unknown = "W Billboard Type is not supported(board).";

    const struct
    {
        LONG Type;
        std::vector<std::string> Messages;
    } rows[] = {
        {0, {}},
        {1, {reminder}},
        {4, {reminder}},
        {5, {reminder, unknown}},
        {6, {reminder, unknown}},
        {7, {reminder, unknown}},
        {-1, {reminder, unknown}},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Type);
        SceneBuilder scene;
        const SceneNode board = scene.Null("board").Marked("TQ4X_ForPennonBillboardProp",
                                                           {{"TQ4X_ForPennonBillboardType", row.Type}});
        const CollectRun run({"ConvertToModel:false"});
        EXPECT_EQ(run.BoneOf(board).BillboardMode, row.Type);
        EXPECT_EQ(run.Messages(), row.Messages);
    }
}

TEST(NodeProperties, CombineGroupsAreClamped)
{
    const struct
    {
        bool IsUsed;
        LONG Value;
        std::int32_t Group;
    } rows[] = {
        {true, 0, 0},     {true, 7, 7},   {true, 255, 255}, {true, 256, 255},
        {true, 300, 255}, {true, -1, -1}, {true, -5, -1},   {false, 7, -1},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Value);
        SceneBuilder scene;
        const SceneNode node = scene.Null("node").Marked(
            "TQ4X_ForPennonCombineGroupProp",
            {{"TQ4X_ForPennonCombineGroupUse", row.IsUsed}, {"TQ4X_ForPennonCombineGroupValue", row.Value}});
        EXPECT_EQ(CollectRun().BoneOf(node).CombineGroup, row.Group);
    }
}

TEST(NodeProperties, ForceKeysEachHaveTheirChannel)
{
    for (int i = 0; i < 8; ++i) {
        SCOPED_TRACE(i);
        const bool translate = (i & 1) != 0;
        const bool rotate = (i & 2) != 0;
        const bool scale = (i & 4) != 0;
        SceneBuilder scene;
        const SceneNode node = scene.Null("node").Marked("TQ4X_ForPennonForceExportKeyProp",
                                                         {{"TQ4X_ForPennonForceExportKeyTrans", translate},
                                                          {"TQ4X_ForPennonForceExportKeyRotate", rotate},
                                                          {"TQ4X_ForPennonForceExportKeyScale", scale}});
        const CollectRun run;
        EXPECT_EQ(run.BoneOf(node).IsForceTranslateKey, translate);
        EXPECT_EQ(run.BoneOf(node).IsForceRotateKey, rotate);
        EXPECT_EQ(run.BoneOf(node).IsForceScaleKey, scale);
    }
}

TEST(NodeProperties, UserData)
{
    SceneBuilder scene;
    const SceneNode node = scene.Null("node").Marked(
        "TQ4X_ForPennonUserDataProp", {{"TQ4X_ForPennonUserDataParamNameList", L"label\r\ncount\r\nodd"},
                                       {"TQ4X_ForPennonUserDataParamTypeList", L"String\r\nInteger\r\nfloat"},
                                       {"TQ4X_ForPennonUserDataParamValueList", L"tall\r\n3\r\n1.5"}});
    const CollectRun run;
    const std::vector<UserDataItem>& items = run.BoneOf(node).UserData;
    ASSERT_EQ(items.size(), 3u);
    EXPECT_EQ(items[0].Key, "label");
    EXPECT_THAT(items[0].Strings, ElementsAre("tall"));
    EXPECT_EQ(items[1].Kind, UserDataKind::Integer);
    EXPECT_THAT(items[1].Integers, ElementsAre(3));
    EXPECT_EQ(items[2].Kind, UserDataKind::String) << "kinds are compared letter by letter";
    EXPECT_THAT(items[2].Strings, ElementsAre("1.5"));
}

TEST(NodeVisibility, IsReadNowAndPerFrame)
{
    SceneBuilder scene;
    scene.Frames(1, 4);
    const SceneNode shown = scene.Null("shown").Visible(true);
    const SceneNode hidden = scene.Null("hidden").Visible(false);
    const SceneNode blinking = scene.Null("blinking").Blinking({{0, 0}, {2, 1}, {4, 0}});
    scene.Host().CurrentFrame = 3.0;
    const CollectRun run;
    EXPECT_TRUE(run.BoneOf(shown).IsVisible);
    EXPECT_THAT(run.BoneOf(shown).VisibilityCurve.Samples, ElementsAre(1, 1, 1, 1));
    EXPECT_FALSE(run.BoneOf(hidden).IsVisible);
    EXPECT_THAT(run.BoneOf(hidden).VisibilityCurve.Samples, ElementsAre(0, 0, 0, 0));
    EXPECT_TRUE(run.BoneOf(blinking).IsVisible) << "the host stands at frame 3, the window begins at 1";
    EXPECT_THAT(run.BoneOf(blinking).VisibilityCurve.Samples, ElementsAre(0, 1, 1, 0));
}

TEST(NodeTree, ChildrenHangOnTheirParentsAndRootsOnTheFirst)
{
    SceneBuilder scene;
    const SceneNode root = scene.Null("root");
    const SceneNode child = scene.Null("child", root);
    const SceneNode grandchild = scene.Camera("grandchild", child);
    const SceneNode other = scene.Null("other");
    const CollectRun run;
    EXPECT_EQ(run.Context.Content.Root.get(), &run.BoneOf(root));
    EXPECT_EQ(run.BoneOf(child).Parent, &run.BoneOf(root));
    EXPECT_EQ(run.BoneOf(grandchild).Parent, &run.BoneOf(child));
    EXPECT_EQ(run.BoneOf(other).Parent, &run.BoneOf(root)) << "a second root goes below the first";
    EXPECT_THAT(run.Collector(root)->Children, ElementsAre(run.Collector(child)));
    EXPECT_EQ(run.Collector(other)->Parent, nullptr);
}

TEST(NodeSamples, AreLocalMatricesOverTheWindowFromItsFirstFrame)
{
    SceneBuilder scene;
    scene.Frames(2, 5);
    const SceneNode parent = scene.Null("parent").At(100, 0, 0);
    const SceneNode node = scene.Null("node", parent).Scaled(1, 2, 1).Moving({{0, 0}, {10, 10}});
    const CollectRun run;
    const Bone& bone = run.BoneOf(node);
    EXPECT_THAT(bone.TranslateCurves[0].Samples, ElementsAre(2, 3, 4, 5));
    EXPECT_THAT(bone.ScaleCurves[1].Samples, ElementsAre(2, 2, 2, 2));
    EXPECT_EQ(bone.Translate, (Vector3{2, 0, 0}));
    EXPECT_EQ(bone.SamplesFirstFrame, 0);
    EXPECT_FALSE(bone.TranslateCurves[0].IsConstant);
    EXPECT_TRUE(bone.ScaleCurves[1].IsConstant);
}

TEST(NodeSamples, TheStepDecidesOnTheLastFrame)
{
    const struct
    {
        double First, Last;
        const char* Precision;
        std::size_t Count;
    } rows[] = {
        {0, 0, "FramePrecision:1", 1},     // one frame
        {1, 10, "FramePrecision:1", 10},   // the last frame is met
        {0, 2, "FramePrecision:0.5", 5},   // exact halves
        {0, 1, "FramePrecision:0.3", 4},   // 0, 0.3, 0.6, 0.9
        {0, 1, "FramePrecision:0.1", 10},  // the float step is above 0.1: the last sample is lost
        {0, 1, "FramePrecision:0.05", 10}, // held at 0.1
        {0, 3, "FramePrecision:2", 4},     // held at 1
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.Precision);
        SceneBuilder scene;
        scene.Frames(row.First, row.Last);
        const SceneNode node = scene.Null("node").Moving({{0, 0}, {10, 10}});
        const CollectRun run({row.Precision});
        EXPECT_EQ(run.BoneOf(node).TranslateCurves[0].Samples.size(), row.Count);
    }
}

TEST(BindPose, OfAPlainNullIsTheStoredOneAlone)
{
    SceneBuilder scene;
    const SceneNode plain = scene.Null("plain").At(1, 2, 3);
    const SceneNode bound = scene.Null("bound").At(1, 2, 3).Bound(Moved(4, 5, 6));
    const CollectRun run;
    EXPECT_FALSE(run.BoneOf(plain).HasSkinningMatrix);
    EXPECT_TRUE(run.BoneOf(bound).HasSkinningMatrix);
    EXPECT_EQ(BindTranslation(run.BoneOf(bound)), (Vector3{4, 5, 6}));
}

TEST(BindPose, OfSkeletonElementsAndMeshesIsTheirPlaceAtFrameZero)
{
    SceneBuilder scene;
    scene.Frames(5, 9);
    const SceneMaterial red = scene.Material("red");
    const SceneNode parent = scene.Null("parent").At(10, 0, 0);
    const Keys moving{{0, 1}, {10, 11}};
    const SceneNode rows[] = {
        scene.Bone("bone", parent).Moving(moving),
        scene.Effector("effector", parent).Moving(moving),
        scene.Mesh("mesh", parent).Square(red).Moving(moving),
    };
    const CollectRun run;
    for (const SceneNode& row : rows) {
        SCOPED_TRACE(row.Object().GetName().GetAsciiString());
        EXPECT_TRUE(run.BoneOf(row).HasSkinningMatrix);
        EXPECT_EQ(BindTranslation(run.BoneOf(row)), (Vector3{11, 0, 0})) << "host frame 0, not the first";
        EXPECT_EQ(run.BoneOf(row).Translate.X, 6);
    }
}

TEST(BindPose, CamerasLightsAndChainRootsTakeNone)
{
    SceneBuilder scene;
    const SceneNode rows[] = {scene.Camera("camera"), scene.Light("light", XSI::Host::LightType::Spot),
                              SceneNode(XSI::Host::CreateChainRoot({}, "chain")), scene.Model("model")};
    const CollectRun run;
    for (const SceneNode& row : rows)
        EXPECT_FALSE(run.BoneOf(row).HasSkinningMatrix) << row.Object().GetName().GetAsciiString();
}

TEST(BindPose, KeepsTheRowsOfTheHostsMatrix)
{
    SceneBuilder scene;
    CTransformation pose;
    pose.SetRotationFromXYZAnglesValues(0.1, 0.2, 0.3);
    pose.SetTranslationFromValues(1.0, 2.0, 3.0);
    const SceneNode node = scene.Null("node").Bound(pose);
    const CollectRun run;
    const XSI::MATH::CMatrix4 matrix = pose.GetMatrix4();
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            EXPECT_EQ(
                run.BoneOf(node).BindMatrix(static_cast<std::size_t>(row), static_cast<std::size_t>(column)),
                static_cast<float>(matrix.GetValue(row, column)));
}

TEST(BindPose, ShearIsToldAndUsedAsItIs)
{
    const std::string told = "W Shear is not zero(node)";
    {
        SceneBuilder scene; // the stored pose
        const SceneNode node = scene.Null("node").Bound(Sheared());
        const CollectRun run;
        EXPECT_THAT(run.Messages(), ElementsAre(told));
        EXPECT_FLOAT_EQ(run.BoneOf(node).BindMatrix(0, 0),
                        static_cast<float>(Sheared().GetMatrix4().GetValue(0, 0)));
    }
    {
        SceneBuilder scene; // the local transform at frame 0
        scene.Bone("node").Placed(Sheared());
        EXPECT_THAT(CollectRun().Messages(), ElementsAre(told));
    }
    {
        SceneBuilder scene; // a sheared local transform does not matter beside a stored pose
        scene.Bone("node").Placed(Sheared()).Bound();
        EXPECT_THAT(CollectRun().Messages(), IsEmpty());
    }
    {
        SceneBuilder scene; // a null has no bind pose to be sheared
        scene.Null("node").Placed(Sheared());
        EXPECT_THAT(CollectRun().Messages(), IsEmpty());
    }
    {
        SceneBuilder scene; // sheared by its parents alone: the local transform decides
        const SceneNode parent = scene.Null("parent").Scaled(2, 1, 1);
        scene.Bone("node", parent).Turned(0, 0, 30);
        EXPECT_THAT(CollectRun().Messages(), IsEmpty());
    }
}

/// The bind pose of a node below "parent", exported relative to a model.
Vector3 BindRelativeToModel(bool parentIsBound, bool isBound)
{
    SceneBuilder scene;
    const SceneNode top = scene.Null("top").At(1000, 0, 0);
    SceneNode parent = scene.Null("parent", top).At(100, 0, 0);
    if (parentIsBound)
        parent.Bound(Moved(0, 50, 0));
    SceneNode node = scene.Bone("node", parent).At(1, 2, 3);
    if (isBound)
        node.Bound(Moved(4, 5, 6));
    CollectRun run({}, CollectRun::Until::Walk);
    run.Collector(node)->ConvertToModel = true;
    run.Convert();
    return BindTranslation(run.BoneOf(node));
}

TEST(BindPose, RelativeToAModelStartsAtTheParent)
{
    EXPECT_EQ(BindRelativeToModel(false, false), (Vector3{1101, 2, 3})) << "local, then the parent's place";
    EXPECT_EQ(BindRelativeToModel(true, false), (Vector3{1, 52, 3})) << "local, then the parent's pose";
    EXPECT_EQ(BindRelativeToModel(false, true), (Vector3{1104, 5, 6})) << "pose, then the parent's place";
    EXPECT_EQ(BindRelativeToModel(true, true), (Vector3{4, 55, 6})) << "pose, then the parent's pose";
}

TEST(BindPose, InsideAnInstanceMovesFromTheMasterToTheInstance)
{
    SceneBuilder scene;
    const SceneNode master = scene.Model("master").At(10, 0, 0);
    const SceneNode bone = scene.Bone("bone", master).At(1, 0, 0);
    const SceneNode copy = scene.Instance("copy", master).At(0, 20, 0).Turned(0, 0, 90);
    const CollectRun run;
    EXPECT_EQ(BindTranslation(run.BoneOf(bone)), (Vector3{11, 0, 0}));
    const Vector3 shown = BindTranslation(run.BoneOf(bone, copy));
    EXPECT_THAT(shown.X, FloatNear(0.0f, 1e-5f));
    EXPECT_THAT(shown.Y, FloatNear(21.0f, 1e-5f));
    EXPECT_EQ(run.BoneOf(bone, copy).Translate, (Vector3{1, 0, 0})) << "samples are local and stay";
    EXPECT_EQ(run.BoneOf(bone, copy).Parent, &run.BoneOf(copy));
}

TEST(BindPose, OfAMasterWithoutInverseStaysWhereTheMasterIs)
{
    SceneBuilder scene;
    const SceneNode master = scene.Model("master").Scaled(0, 1, 1);
    const SceneNode bone = scene.Bone("bone", master).At(0, 2, 0);
    const SceneNode copy = scene.Instance("copy", master).At(0, 20, 0);
    const CollectRun run;
    EXPECT_EQ(BindTranslation(run.BoneOf(bone, copy)), (Vector3{0, 2, 0}));
}

TEST(NodeCollector, AnObjectThatIsGoneFailsTheExport)
{
    for (const bool isLight : {false, true}) {
        SceneBuilder scene;
        const SceneNode node =
            isLight ? scene.Light("gone", XSI::Host::LightType::Point) : scene.Null("gone");
        CollectRun run({}, CollectRun::Until::Walk);
        XSI::Host::Objects().Delete(static_cast<const XSI::CRef&>(node).GetObjectID());
        run.Convert();
        EXPECT_FALSE(run.Succeeded());
        EXPECT_THAT(run.Messages(), ElementsAre("E Internal Error(Invalid XSI Object.)"));
    }
}

TEST(NodeCollector, NumbersThatAreNotFiniteAreToldOncePerObject)
{
    const std::string told = "W Values that are not finite exist(node).";
    const double infinite = std::numeric_limits<double>::infinity();
    {
        SceneBuilder scene;
        scene.Frames(0, 5);
        scene.Null("node").Moving({{0, 0}, {5, infinite}});
        EXPECT_THAT(CollectRun().Messages(), ElementsAre(told));
    }
    {
        SceneBuilder scene;
        scene.Null("node").Bound(Moved(Nan, 0, 0));
        EXPECT_THAT(CollectRun().Messages(), ElementsAre(told));
    }
    {
        SceneBuilder scene; // too large for single precision
        scene.Null("node").At(1e300, 0, 0);
        EXPECT_THAT(CollectRun().Messages(), ElementsAre(told));
    }
    {
        SceneBuilder scene; // bind pose, samples and the camera's own, told in one line
        scene.Camera("node").At(infinite, 0, 0).Bound(Moved(infinite, 0, 0));
        EXPECT_THAT(CollectRun().Messages(), ElementsAre(told));
    }
    {
        SceneBuilder scene; // no scale at all is finite
        scene.Null("node").Scaled(0, 0, 0);
        EXPECT_THAT(CollectRun().Messages(), IsEmpty());
    }
}

} // namespace
} // namespace tq4x::test
