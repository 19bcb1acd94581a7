#include "ReadCurve.h"

#include <gtest/gtest.h>

#include "ReadAnimation.h"

namespace tq4x::reader
{
namespace
{

Curve CurveOf(std::vector<Key> keys)
{
    Curve curve;
    curve.Keys = std::move(keys);
    return curve;
}

TEST(Curve, WithoutKeysHasNoValue)
{
    EXPECT_EQ(EvaluateCurve({}, 3), std::nullopt);
    BoolCurve curve;
    curve.DefaultValue = true;
    EXPECT_TRUE(EvaluateBoolCurve(curve, 3));
}

TEST(Curve, EndsHold)
{
    const Curve curve = CurveOf({{KeyKind::Linear, 2, 10, 0, 0, 0}, {KeyKind::Linear, 4, 20, 0, 0, 0}});
    EXPECT_EQ(EvaluateCurve(curve, -5), 10.0F);
    EXPECT_EQ(EvaluateCurve(curve, 2), 10.0F);
    EXPECT_EQ(EvaluateCurve(curve, 3), 15.0F);
    EXPECT_EQ(EvaluateCurve(curve, 4), 20.0F);
    EXPECT_EQ(EvaluateCurve(curve, 100), 20.0F);
}

TEST(Curve, TheEarlierKeyDecides)
{
    const Curve step = CurveOf({{KeyKind::Step, 0, 1, 0, 0, 0}, {KeyKind::Step, 10, 2, 0, 0, 0}});
    EXPECT_EQ(EvaluateCurve(step, 9.5F), 1.0F);
    EXPECT_EQ(EvaluateCurve(step, 10), 2.0F);
    // x cubed from 0 to 2: slopes 0 and 12.
    const Curve cubic = CurveOf({{KeyKind::Hermite, 0, 0, 0, 0, 0}, {KeyKind::Hermite, 2, 8, 12, 12, 0}});
    EXPECT_FLOAT_EQ(*EvaluateCurve(cubic, 1), 1.0F);
    EXPECT_FLOAT_EQ(*EvaluateCurve(cubic, 1.5F), 3.375F);
}

TEST(Curve, FallingFramesGiveAFiniteValue)
{
    const Curve curve = CurveOf({{KeyKind::Linear, 5, 1, 0, 0, 0},
                                 {KeyKind::Linear, 5, 2, 0, 0, 0},
                                 {KeyKind::Hermite, 1, 3, 0, 0, 0}});
    for (const float frame : {0.0F, 1.0F, 5.0F, 6.0F}) {
        EXPECT_TRUE(EvaluateCurve(curve, frame).has_value());
        EXPECT_GE(*EvaluateCurve(curve, frame), 1.0F);
        EXPECT_LE(*EvaluateCurve(curve, frame), 3.0F);
    }
}

TEST(Curve, TwoStates)
{
    BoolCurve curve;
    curve.Keys = {{0, true, 0}, {10, false, 0}};
    EXPECT_TRUE(EvaluateBoolCurve(curve, -1));
    EXPECT_TRUE(EvaluateBoolCurve(curve, 9.9F));
    EXPECT_FALSE(EvaluateBoolCurve(curve, 10));
}

TEST(MemberPath, TakesPathsApart)
{
    struct Case
    {
        const char* Path;
        const char* Collection;
        const char* Owner;
        int OwnerIndex;
        const char* Member;
        int MemberIndex;
        const char* Last;
    };

    const Case cases[] = {
        {"Skeleton.Bones[\"arm\"].AnimatedTransform", "Skeleton.Bones", "arm", -1, "AnimatedTransform", -1,
         ""},
        {"Meshes[12].IsVisible", "Meshes", "", 12, "IsVisible", -1, ""},
        {"Materials[\"a\"].TextureMappers[2].Texture", "Materials", "a", -1, "TextureMappers", 2, "Texture"},
        {"Materials[\"a\"].MaterialColor.Diffuse", "Materials", "a", -1, "MaterialColor.Diffuse", -1, ""},
        {"Materials[\"od\"]d\"].MaterialColor.Diffuse", "Materials", "od\"]d", -1, "MaterialColor.Diffuse",
         -1, ""},
    };
    for (const Case& test : cases) {
        const auto path = ParseMemberPath(test.Path, test.Collection);
        ASSERT_TRUE(path) << test.Path;
        EXPECT_EQ(path->Owner, test.Owner) << test.Path;
        EXPECT_EQ(path->OwnerIndex, test.OwnerIndex) << test.Path;
        EXPECT_EQ(path->Member, test.Member) << test.Path;
        EXPECT_EQ(path->MemberIndex, test.MemberIndex) << test.Path;
        EXPECT_EQ(path->Last, test.Last) << test.Path;
    }
}

TEST(MemberPath, RefusesWhatIsNone)
{
    for (const char* const path :
         {"", "Materials", "Materials[", "Materials[\"", "Materials[\"\"]", "Materials[\"a\"]",
          "Materials[\"a\"].", "Materials[x].y", "Materials[-1].y", "Materials[\"a\"].TextureMappers[",
          "Materials[\"a\"].T[x].y", "Materials[\"a].y", "Meshes[1].IsVisible"}) {
        EXPECT_FALSE(ParseMemberPath(path, "Materials")) << path;
    }
}

} // namespace
} // namespace tq4x::reader
