#include "scene/AnimationFlags.h"
#include "support/NodeScene.h"

namespace tq4x
{
namespace
{

using namespace test;

constexpr NodeTolerances Tolerances{.Scale = 0.5f, .Rotate = 0.25f, .Translate = 0.125f};

/// "sxyz rxyz txyz", a dot for each axis that is not needed.
std::string NeededAxes(const Bone& bone, const Matrix44& bindLocal = {})
{
    const AnimatedAxes axes = FindAnimatedAxes(bone, bindLocal, Tolerances);
    std::string text;
    for (const auto& [group, name] :
         {std::pair(axes.Scale, "s"), std::pair(axes.Rotate, " r"), std::pair(axes.Translate, " t")}) {
        text += name;
        for (std::size_t axis = 0; axis < 3; ++axis)
            text += group[axis] ? "xyz"[axis] : '.';
    }
    return text;
}

TEST(FindAnimatedAxes, AsksForKeysForceAndBindPose)
{
    const struct
    {
        const char* Name;
        void (*Prepare)(Bone&);
        std::string Axes;
    } cases[] = {
        {"nothing", [](Bone&) {}, "s... r... t..."},
        {"one key is none", [](Bone& bone) { bone.ScaleCurves[0].Keys.resize(1); }, "s... r... t..."},
        {"two keys", [](Bone& bone) { bone.ScaleCurves[0].Keys.resize(2); }, "sx.. r... t..."},
        {"keys of several axes",
         [](Bone& bone) {
             bone.RotateCurves[1].Keys.resize(2);
             bone.TranslateCurves[2].Keys.resize(9);
         },
         "s... r.y. t..z"},
        {"a forced group has all axes", [](Bone& bone) { bone.IsForceScaleKey = true; }, "sxyz r... t..."},
        {"forced rotation", [](Bone& bone) { bone.IsForceRotateKey = true; }, "s... rxyz t..."},
        {"forced translation", [](Bone& bone) { bone.IsForceTranslateKey = true; }, "s... r... txyz"},
        {"away from the origin without a bind pose", [](Bone& bone) { bone.Translate.X = 9; },
         "s... r... t..."},
        {"away from the bind pose",
         [](Bone& bone) {
             bone.HasSkinningMatrix = true;
             bone.Scale.Y = 2;
             bone.Rotate.Z = -1;
             bone.Translate.X = 9;
         },
         "s.y. r..z tx.."},
        {"exactly the tolerance from the bind pose",
         [](Bone& bone) {
             bone.HasSkinningMatrix = true;
             bone.Scale.X = 1.5f;
             bone.Rotate.Y = -0.25f;
             bone.Translate.Z = 0.125f;
         },
         "s... r... t..."},
        {"a whole turn from the bind pose",
         [](Bone& bone) {
             bone.HasSkinningMatrix = true;
             bone.Rotate.X = 360;
         },
         "s... rx.. t..."},
    };

    for (const auto& c : cases) {
        Bone bone;
        c.Prepare(bone);
        EXPECT_EQ(NeededAxes(bone), c.Axes) << c.Name;
    }
}

TEST(FindAnimatedAxes, ComparesWithTheLocalBindPose)
{
    Bone bone;
    bone.HasSkinningMatrix = true;
    bone.Scale = {1, 2, 3};
    bone.Rotate = {10, 20, 30};
    bone.Translate = {4, 5, 6};
    EXPECT_EQ(NeededAxes(bone, ComposeMatrix({{1, 2, 3}, {10, 20, 30}, {4, 5, 6}})), "s... r... t...");
    EXPECT_EQ(NeededAxes(bone, ComposeMatrix({{2, 2, 3}, {10, 21, 30}, {4, 5, 7}})), "sx.. r.y. t..z");
}

TEST(UpdateAnimationFlags, AGroupIsAnimatedIfAnAxisIs)
{
    Bone bone;
    bone.IsScaleAnimated = true; // taken anew
    bone.RotateCurves[1].Keys.resize(2);
    UpdateAnimationFlags(bone, {}, Tolerances, 1);
    EXPECT_FALSE(bone.IsScaleAnimated);
    EXPECT_TRUE(bone.IsRotateAnimated);
    EXPECT_FALSE(bone.IsTranslateAnimated);
}

TEST(UpdateAnimationFlags, RebuildsTheVisibilityUnderTheNodesName)
{
    const struct
    {
        const char* Name;
        std::vector<float> Samples;
        bool IsVisible;
        bool IsConstant;
        bool NeedsOutput;
        std::vector<CurveKey> Keys;
    } cases[] = {
        {"never sampled", {}, true, true, false, {}},
        {"always visible", {1, 1, 1}, true, true, false, {{.Frame = 0, .Value = 1}}},
        {"always hidden, unlike the node: constant all the same", {0, 0}, true, true, false, {{.Value = 0}}},
        {"blinks",
         {1, 1, 0, 1},
         true,
         false,
         true,
         {{.Value = 1}, {.Frame = 1, .Value = 0}, {.Frame = 1.5f, .Value = 1}}},
        {"blinks from hidden", {0, 1}, false, false, true, {{.Value = 0}, {.Frame = 0.5f, .Value = 1}}},
    };

    for (const auto& c : cases) {
        Bone bone;
        bone.Name = "arm";
        bone.IsVisible = c.IsVisible;
        bone.VisibilityCurve.Name = "leg.v"; // taken over with a mesh
        bone.VisibilityCurve.Samples = c.Samples;
        bone.VisibilityCurve.Keys.resize(7);
        UpdateAnimationFlags(bone, {}, Tolerances, 2);
        EXPECT_EQ(bone.VisibilityCurve.Name, "arm.v") << c.Name;
        EXPECT_EQ(bone.VisibilityCurve.IsConstant, c.IsConstant) << c.Name;
        EXPECT_EQ(bone.VisibilityCurve.NeedsOutput, c.NeedsOutput) << c.Name;
        EXPECT_EQ(bone.VisibilityCurve.Keys, c.Keys) << c.Name;
    }
}

TEST(IsAnyAnimated, AsksAllBones)
{
    NodeScene scene;
    Bone& a = scene.Add("a");
    const std::vector<Bone*> bones = scene.Bones();
    EXPECT_FALSE(IsAnyBoneAnimated(bones));
    EXPECT_FALSE(IsAnyVisibilityAnimated(bones));
    for (bool Bone::*flag : {&Bone::IsScaleAnimated, &Bone::IsRotateAnimated, &Bone::IsTranslateAnimated}) {
        a.*flag = true;
        EXPECT_TRUE(IsAnyBoneAnimated(bones));
        a.*flag = false;
    }
    a.VisibilityCurve.IsConstant = false;
    EXPECT_TRUE(IsAnyVisibilityAnimated(bones));
    EXPECT_FALSE(IsAnyBoneAnimated(bones));
    EXPECT_FALSE(IsAnyBoneAnimated({}));
    EXPECT_FALSE(IsAnyVisibilityAnimated({}));
}

} // namespace
} // namespace tq4x
