#include "PrintValues.h"

#include "support/SceneBuilder.h"

namespace tq4x::test
{
namespace
{

using XSI::CRef;
using XSI::MATH::CTransformation;
using XSI::MATH::CVector3;

/// A chain of nulls, each one step along X from its parent and moving along Y by its curve.
std::vector<XSI::X3DObject> MakeChain(int length)
{
    std::vector<XSI::X3DObject> chain;
    CRef parent;
    for (int i = 0; i < length; ++i) {
        chain.push_back(XSI::Host::CreateNull(parent, "n"));
        parent = chain.back();
        XSI::Host::SetLocalTransformSource(
            parent, [](double frame) { return CTransformation().SetTranslationFromValues(1.0, frame, 0.0); });
    }
    return chain;
}

CVector3 Place(const XSI::X3DObject& object, double frame)
{
    return object.GetKinematics().GetGlobal().GetTransform(frame).GetTranslation();
}

TEST(DeepTree, AChainOf100000Nodes)
{
    SceneBuilder scene;
    const std::vector<XSI::X3DObject> chain = MakeChain(100000);
    EXPECT_EQ(Place(chain.back(), 2.0), CVector3(100000, 200000, 0));
    EXPECT_EQ(chain.back().GetFullName(), L"n");
    EXPECT_EQ(scene.Root().FindChildren(L"", L"", XSI::CStringArray()).GetCount(), 100000);
    for (const XSI::X3DObject& node : chain) {
        ASSERT_FALSE(node.GetMaterial().IsValid());
    }
    const SceneNode model = scene.Model("model");
    EXPECT_TRUE(XSI::Host::MoveBelow(chain.front(), model));
    EXPECT_FALSE(XSI::Host::MoveBelow(model, chain.back())) << "a parent can't go below its own branch";
    EXPECT_EQ(chain.back().GetFullName(), L"model.n");
    XSI::Host::Objects().Delete(CRef(model).GetObjectID());
    EXPECT_FALSE(chain.back().IsValid());
    EXPECT_EQ(scene.Root().GetChildren().GetCount(), 0);
}

TEST(DeepTree, ARowOf100000Siblings)
{
    SceneBuilder scene;
    const SceneNode parent = scene.Null("parent");
    const SceneMaterial material = scene.Material("m");
    for (int i = 0; i < 100000; ++i) {
        XSI::Host::SetMaterial(scene.Null("n", parent), material);
    }
    const XSI::CRefArray children = parent.Object().GetChildren();
    ASSERT_EQ(children.GetCount(), 100000);
    EXPECT_LT(children[0], children[99999]);
    EXPECT_EQ(material.Object().GetUsedBy().GetCount(), 100000);

    XSI::CValueArray arguments;
    arguments.Add(children);
    XSI::CValue result;
    EXPECT_TRUE(XSI::Application().ExecuteCommand(L"SelectObj", arguments, result).Succeeded());
    const XSI::Selection selection = XSI::Application().GetSelection();
    for (LONG i = 0; i < selection.GetCount(); ++i) {
        ASSERT_EQ(selection[i], children[i]);
    }
    XSI::Host::Objects().Delete(CRef(parent).GetObjectID());
    EXPECT_EQ(selection.GetCount(), 0);
}

TEST(DeepTree, AllGlobalTransformsOfAChainInAnyOrder)
{
    SceneBuilder scene;
    constexpr int length = 1500;
    constexpr int frames = 20;
    const std::vector<XSI::X3DObject> chain = MakeChain(length);
    const auto check = [&](int node, int frame) {
        ASSERT_EQ(Place(chain[node], frame), CVector3(node + 1, (node + 1) * frame, 0))
            << node << ", " << frame;
    };
    for (int node = 0; node < length; ++node) {
        for (int frame = 0; frame < frames; ++frame) {
            check(node, frame);
        }
    }
    scene.Host().Objects.TouchTransforms();
    for (int frame = frames - 1; frame >= 0; --frame) {
        for (int node = length - 1; node >= 0; --node) {
            check(node, frame);
        }
    }
    EXPECT_EQ(scene.Host().Transforms.GetStoredCount(), std::size_t{(length + 1) * frames});
}

TEST(DeepTree, ASpentBudgetDropsWhatWasNotUsedForLongest)
{
    SceneBuilder scene;
    constexpr int length = 300;
    constexpr int frames = 30;
    const std::vector<XSI::X3DObject> chain = MakeChain(length);
    scene.Host().Transforms.SetBudget(100);
    for (int node = 0; node < length; ++node) {
        for (int frame = 0; frame < frames; ++frame) {
            ASSERT_EQ(Place(chain[node], frame), CVector3(node + 1, (node + 1) * frame, 0));
            ASSERT_LE(scene.Host().Transforms.GetStoredCount(), 100u);
        }
    }
    scene.Host().Transforms.SetBudget(std::size_t{1} << 20);
}

TEST(DeepTree, LocalTransformsAreEvaluatedOnceForEachFrame)
{
    SceneBuilder scene;
    int evaluations = 0;
    CRef parent;
    for (int i = 0; i < 100; ++i) {
        parent = XSI::Host::CreateNull(parent, "n");
        XSI::Host::SetLocalTransformSource(parent, [&](double) {
            ++evaluations;
            return CTransformation();
        });
    }
    for (XSI::X3DObject node = parent; node.IsValid(); node = node.GetParent()) {
        for (int frame = 0; frame < 10; ++frame) {
            Place(node, frame);
        }
    }
    EXPECT_EQ(evaluations, 1000);
}

} // namespace
} // namespace tq4x::test
