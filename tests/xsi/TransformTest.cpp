#include "PrintValues.h"

#include "support/SceneBuilder.h"

#include <random>

#include <xsi_constraint.h>

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using XSI::CRef;
using XSI::MATH::CMatrix4;
using XSI::MATH::CTransformation;
using XSI::MATH::CVector3;

CTransformation Local(const SceneNode& node, double frame = XSI::CurrentTime)
{
    return node.Object().GetKinematics().GetLocal().GetTransform(frame);
}

CTransformation Global(const SceneNode& node, double frame = XSI::CurrentTime)
{
    return node.Object().GetKinematics().GetGlobal().GetTransform(frame);
}

TEST(Transform, GlobalIsTheProductUpToTheRoot)
{
    SceneBuilder scene;
    const SceneNode top = scene.Null("top").At(1, 2, 3).Turned(0, 0, 90);
    const SceneNode middle = scene.Null("middle", top).At(10, 0, 0).Scaled(2, 2, 2);
    const SceneNode leaf = scene.Null("leaf", middle).At(0, 1, 0);
    const CMatrix4 expected = CMatrix4()
                                  .Mul(Local(leaf).GetMatrix4(), Local(middle).GetMatrix4())
                                  .MulInPlace(Local(top).GetMatrix4());
    EXPECT_TRUE(Global(leaf).GetMatrix4().EpsilonEquals(expected, 1e-13));
    EXPECT_TRUE(Global(leaf).GetTranslation().EpsilonEquals({-1, 12, 3}, 1e-12));
    EXPECT_EQ(Global(SceneNode(scene.Root())).GetMatrix4(), CMatrix4());
}

TEST(Transform, TheRootMovesAll)
{
    SceneBuilder scene;
    const SceneNode node = scene.Null("node").At(1, 0, 0);
    XSI::Host::SetLocalTransform(scene.Root(), CTransformation().SetTranslationFromValues(0, 5, 0));
    EXPECT_EQ(Global(node).GetTranslation(), CVector3(1, 5, 0));
}

TEST(Transform, CurvesAtAnyFrame)
{
    SceneBuilder scene;
    const SceneNode node = scene.Null("node")
                               .At(0, 7, 0)
                               .Moving({{0, 0}, {10, 20}})
                               .Turning({}, {}, {{0, 0}, {10, 90}})
                               .Growing({{0, 1}, {10, 3}});
    EXPECT_EQ(Local(node, 5.0).GetTranslation(), CVector3(10, 7, 0));
    EXPECT_NEAR(Local(node, 5.0).GetRotationXYZAngles()[2], XSI::MATH::PI / 4, 1e-12);
    EXPECT_TRUE(Local(node, 5.0).GetScaling().EpsilonEquals({2, 1, 1}, 1e-12));
    EXPECT_EQ(Local(node, 0.0).GetTranslation(), CVector3(0, 7, 0));

    scene.Host().CurrentFrame = 2.5;
    EXPECT_EQ(Local(node).GetTranslation(), CVector3(5, 7, 0));
    EXPECT_EQ(Global(node).GetTranslation(), CVector3(5, 7, 0));
}

TEST(Transform, KeptMatricesFollowEveryChange)
{
    SceneBuilder scene;
    const SceneNode a = scene.Null("a").At(1, 0, 0);
    SceneNode b = scene.Null("b", a).At(0, 1, 0);
    const SceneNode other = scene.Null("other").At(0, 0, 9);
    EXPECT_EQ(Global(b, 0.0).GetTranslation(), CVector3(1, 1, 0));

    XSI::Host::SetLocalTransform(a, CTransformation().SetTranslationFromValues(2, 0, 0));
    EXPECT_EQ(Global(b, 0.0).GetTranslation(), CVector3(2, 1, 0));

    XSI::Host::MoveBelow(b, other);
    EXPECT_EQ(Global(b, 0.0).GetTranslation(), CVector3(0, 1, 9));

    double height = 3.0;
    XSI::Host::SetLocalTransformSource(
        other, [&](double frame) { return CTransformation().SetTranslationFromValues(0, height, frame); });
    EXPECT_EQ(Global(b, 4.0).GetTranslation(), CVector3(0, 4, 4));
    height = 5.0;
    XSI::Host::Objects().TouchTransforms();
    EXPECT_EQ(Global(b, 4.0).GetTranslation(), CVector3(0, 6, 4));
}

TEST(Transform, ASourceMayAskForOtherObjects)
{
    SceneBuilder scene;
    const SceneNode leader = scene.Null("leader").Moving({{0, 0}, {10, 10}});
    const SceneNode parent = scene.Null("parent");
    const SceneNode follower = scene.Null("follower", parent);
    XSI::Host::SetLocalTransformSource(follower, [=](double frame) { return Global(leader, frame); });
    XSI::Host::SetLocalTransformSource(parent, [=](double frame) { return Global(leader, frame); });
    EXPECT_EQ(Global(follower, 4.0).GetTranslation(), CVector3(8, 0, 0));
}

TEST(Transform, PutTransform)
{
    SceneBuilder scene;
    const SceneNode parent = scene.Null("parent").At(5, 0, 0).Turned(0, 90, 0).Scaled(2, 2, 2);
    const SceneNode child = scene.Null("child", parent);
    const CTransformation wanted = XSI::Host::MakeTransform({1, 2, 3});
    EXPECT_TRUE(child.Object().GetKinematics().GetGlobal().PutTransform(wanted).Succeeded());
    EXPECT_TRUE(Global(child).GetMatrix4().EpsilonEquals(wanted.GetMatrix4(), 1e-12));
    EXPECT_TRUE(child.Object().GetKinematics().GetLocal().PutTransform(wanted).Succeeded());
    EXPECT_EQ(Local(child).GetMatrix4(), wanted.GetMatrix4());
    const SceneNode flat = scene.Null("flat").Scaled(0, 1, 1);
    const SceneNode below = scene.Null("below", flat);
    EXPECT_EQ(below.Object().GetKinematics().GetGlobal().PutTransform(wanted), XSI::CStatus::Fail);
}

TEST(Transform, StaticState)
{
    SceneBuilder scene;
    SceneNode node = scene.Null("node").At(1, 0, 0);
    EXPECT_FALSE(node.Object().HasStaticKinematicState());
    EXPECT_FALSE(node.Object().GetStaticKinematicState().IsValid());
    node.Bound(XSI::Host::MakeTransform({7, 8, 9}));
    EXPECT_TRUE(node.Object().HasStaticKinematicState());
    const XSI::StaticKinematicState state = node.Object().GetStaticKinematicState();
    EXPECT_EQ(state.GetTransform(0.0).GetTranslation(), CVector3(7, 8, 9));
    EXPECT_EQ(state.GetTransform().GetTranslation(), CVector3(7, 8, 9));
    EXPECT_EQ(state, node.Object().GetStaticKinematicState());
}

TEST(Transform, HandlesOfStatesAreStable)
{
    SceneBuilder scene;
    const SceneNode node = scene.Null("node");
    const XSI::Kinematics kinematics = node.Object().GetKinematics();
    EXPECT_EQ(kinematics, node.Object().GetKinematics());
    EXPECT_EQ(kinematics.GetParent(), CRef(node));
    EXPECT_EQ(kinematics.GetGlobal().GetName(), L"global");
    XSI::Host::Objects().Delete(CRef(node).GetObjectID());
    EXPECT_FALSE(kinematics.IsValid());
    EXPECT_EQ(kinematics.GetGlobal().GetTransform().GetMatrix4(), CMatrix4());
}

TEST(HierarchicalScaling, ScalesMultiplyByComponentAndRotationsWithoutThem)
{
    SceneBuilder scene;
    const SceneNode parent = scene.Null("parent").At(1, 0, 0).Turned(0, 0, 90).Scaled(3, 1, 1);
    SceneNode child = scene.Null("child", parent).At(1, 0, 0).Turned(0, 0, 45).Scaled(1, 2, 1);
    EXPECT_TRUE(Global(child).HasScalingOrientation()) << "the plain product is sheared";

    child.ScalesHierarchically();
    const CTransformation global = Global(child);
    EXPECT_FALSE(global.HasScalingOrientation());
    EXPECT_TRUE(global.GetScaling().EpsilonEquals({3, 2, 1}, 1e-12));
    EXPECT_NEAR(global.GetRotationXYZAngles()[2], XSI::MATH::DegreesToRadians(135), 1e-12);
    EXPECT_TRUE(global.GetTranslation().EpsilonEquals({1, 3, 0}, 1e-12))
        << "through the whole matrix of the parent";

    child.ScalesHierarchically(false);
    EXPECT_TRUE(Global(child).HasScalingOrientation());
}

TEST(HierarchicalScaling, EqualsTheProductWhereParentsScaleEvenly)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> number(-2.0, 2.0);
    for (int i = 0; i < 100; ++i) {
        SceneBuilder scene;
        const double size = 0.5 + std::abs(number(random));
        const SceneNode parent = scene.Null("parent")
                                     .At(number(random), number(random), number(random))
                                     .Turned(90 * number(random), 90 * number(random), 90 * number(random))
                                     .Scaled(size, size, size);
        SceneNode child = scene.Null("child", parent)
                              .At(number(random), number(random), number(random))
                              .Turned(90 * number(random), 90 * number(random), 90 * number(random))
                              .Scaled(1, 2, 3);
        const CMatrix4 product = Global(child).GetMatrix4();
        child.ScalesHierarchically();
        ASSERT_TRUE(Global(child).GetMatrix4().EpsilonEquals(product, 1e-11)) << "seed 3, case " << i;
    }
}

TEST(HierarchicalScaling, TheRuleMayBeAnimated)
{
    SceneBuilder scene;
    const SceneNode parent = scene.Null("parent").Turned(0, 0, 90).Scaled(3, 1, 1);
    const SceneNode child =
        scene.Null("child", parent).Turned(0, 0, 45).Animate("siscaling", {{0, 0}, {1, 1}});
    EXPECT_TRUE(Global(child, 0.0).HasScalingOrientation());
    EXPECT_FALSE(Global(child, 1.0).HasScalingOrientation());
}

TEST(Constraint, TargetsUpVectorAndRoll)
{
    SceneBuilder scene;
    const SceneNode target = scene.Null("target");
    const SceneNode up = scene.Null("up");
    const SceneNode camera = scene.Camera("camera").AimedAt(target, up, 30.0).AimedAt({}, up);
    const XSI::CRefArray constraints = camera.Object().GetKinematics().GetConstraints();
    ASSERT_EQ(constraints.GetCount(), 2);

    const XSI::Constraint first = constraints[0];
    EXPECT_TRUE(first.IsValid());
    EXPECT_THAT(Names(first.GetConstraining()), ElementsAre("target"));
    EXPECT_EQ(first.GetUpVectorReference(), CRef(up));
    EXPECT_EQ(first.GetConstrained(), CRef(camera));
    EXPECT_EQ(static_cast<double>(first.GetParameterValue(L"roll", 3.0)), 30.0);

    const XSI::Constraint second = constraints[1];
    ASSERT_EQ(second.GetConstraining().GetCount(), 1);
    EXPECT_FALSE(second.GetConstraining()[0].IsValid());

    XSI::Host::Objects().Delete(CRef(target).GetObjectID());
    EXPECT_FALSE(first.GetConstraining()[0].IsValid()) << "a deleted target is no target";
    XSI::Host::Objects().Delete(first.GetObjectID());
    EXPECT_EQ(camera.Object().GetKinematics().GetConstraints().GetCount(), 1);
    EXPECT_FALSE(XSI::Host::AddConstraint(CRef(), {}).IsValid());
}

TEST(Constraint, RollMayBeAnimated)
{
    SceneBuilder scene;
    const XSI::Constraint constraint =
        XSI::Host::AddConstraint(scene.Camera("camera"), {scene.Null("target")});
    XSI::Host::SetCurve(constraint.GetParameter(L"roll"), {{{0, 0}, {10, 90}}});
    EXPECT_EQ(static_cast<double>(constraint.GetParameterValue(L"roll", 5.0)), 45.0);
}

} // namespace
} // namespace tq4x::test
