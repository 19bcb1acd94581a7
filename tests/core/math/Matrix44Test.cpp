#include "math/Matrix44.h"

#include <cmath>
#include <random>

namespace tq4x
{
namespace
{

TEST(DecomposeMatrix, MirrorsLandOnTheZScale)
{
    const Vector3 mirrors[] = {{-1, 1, 1}, {1, -1, 1}, {1, 1, -1}, {-2, -3, -4}};
    for (const Vector3& mirror : mirrors) {
        const TransformParts parts = DecomposeMatrix(ComposeMatrix({mirror, {10, 20, 30}, {}}));
        EXPECT_GT(parts.Scale.X, 0.0f);
        EXPECT_GT(parts.Scale.Y, 0.0f);
        EXPECT_LT(parts.Scale.Z, 0.0f);
    }
}

TEST(DecomposeMatrix, QuarterTurnAboutYLeavesTheRestToX)
{
    const TransformParts parts = DecomposeMatrix(ComposeMatrix({{1, 1, 1}, {25, 90, 10}, {}}));
    EXPECT_EQ(parts.Rotate.Z, 0.0f);
    EXPECT_FLOAT_EQ(parts.Rotate.Y, 90.0f);
    EXPECT_NEAR(parts.Rotate.X, 15.0f, 1e-3f);
}

/// A quarter turn is told by the sine alone. A scale whose inverse is rounded leaves it off 1 by its last
/// bit, which makes a cosine of 3e-4: the other two angles are then read from what is left of the axes.
TEST(DecomposeMatrix, QuarterTurnAboutYIsToldByItsSineAlone)
{
    const struct
    {
        float ScaleX;
        Vector3 Rotate;
    } rows[] = {
        {1.0f, {45.0f, 90.0f, 0.0f}},
        {41.0f, {90.0f, 89.98f, 90.0f}},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.ScaleX);
        Matrix44 matrix;
        matrix(0, 0) = 0.0f;
        matrix(0, 1) = 1e-9f;
        matrix(0, 2) = -row.ScaleX;
        matrix(1, 0) = 0.5f;
        matrix(1, 1) = 0.5f;
        matrix(1, 2) = 1e-9f;
        matrix(2, 0) = 0.5f;
        matrix(2, 1) = -0.5f;
        matrix(2, 2) = 0.0f;
        const TransformParts parts = DecomposeMatrix(matrix);
        EXPECT_NEAR(parts.Rotate.X, row.Rotate.X, 1e-3f);
        EXPECT_NEAR(parts.Rotate.Y, row.Rotate.Y, 1e-3f);
        EXPECT_NEAR(parts.Rotate.Z, row.Rotate.Z, 1e-3f);
    }
}

TEST(DecomposeMatrix, ZeroScaleLeavesItsRowUndivided)
{
    Matrix44 matrix;
    matrix(1, 0) = 0.0f;
    matrix(1, 1) = 5e-7f;
    matrix(1, 2) = 5e-7f;
    const TransformParts parts = DecomposeMatrix(matrix);
    EXPECT_LT(parts.Scale.Y, 1e-6f);
    // X is read from the undivided element and the third row's 1.
    EXPECT_NEAR(parts.Rotate.X, 5e-7f * 57.29578f, 1e-7f);
}

TEST(DecomposeMatrix, TakesBackWhatComposeMade)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<float> angle(-85.0f, 85.0f);
    std::uniform_real_distribution<float> scale(0.1f, 10.0f);
    for (int i = 0; i < 1000; ++i) {
        const TransformParts made{{scale(random), scale(random), scale(random)},
                                  {angle(random), angle(random), angle(random)},
                                  {angle(random), angle(random), angle(random)}};
        const TransformParts read = DecomposeMatrix(ComposeMatrix(made));
        EXPECT_NEAR(read.Scale.X, made.Scale.X, 1e-5f * made.Scale.X) << i;
        EXPECT_NEAR(read.Scale.Z, made.Scale.Z, 1e-5f * made.Scale.Z) << i;
        EXPECT_NEAR(read.Rotate.X, made.Rotate.X, 2e-3f) << i;
        EXPECT_NEAR(read.Rotate.Y, made.Rotate.Y, 2e-3f) << i;
        EXPECT_NEAR(read.Rotate.Z, made.Rotate.Z, 2e-3f) << i;
        EXPECT_EQ(read.Translate, made.Translate) << i;
    }
}

TEST(ComposeMatrix, TurnsAboutXThenYThenZ)
{
    const Matrix44 x = ComposeMatrix({{1, 1, 1}, {30, 0, 0}, {}});
    const Matrix44 y = ComposeMatrix({{1, 1, 1}, {0, 40, 0}, {}});
    const Matrix44 z = ComposeMatrix({{1, 1, 1}, {0, 0, 50}, {}});
    const Matrix44 product = Multiply(Multiply(x, y), z);
    const Matrix44 composed = ComposeMatrix({{1, 1, 1}, {30, 40, 50}, {}});
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_NEAR(product.M[i], composed.M[i], 1e-6f) << i;
}

TEST(InvertMatrix, GivesTheIdentityInTheProduct)
{
    const Matrix44 matrix = ComposeMatrix({{2, 3, -0.5f}, {15, -70, 200}, {1, -2, 3}});
    const Matrix44 product = Multiply(matrix, InvertMatrix(matrix));
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_NEAR(product.M[i], Matrix44{}.M[i], 1e-5f) << i;
}

TEST(InvertMatrix, SingularOrNotFiniteGivesTheIdentity)
{
    EXPECT_EQ(InvertMatrix(ComposeMatrix({{0, 1, 1}, {}, {}})), Matrix44{});
    Matrix44 broken;
    broken(0, 0) = std::nanf("");
    EXPECT_EQ(InvertMatrix(broken), Matrix44{});
}

TEST(TransformPoint, MovesPointsAndTurnsDirections)
{
    const Matrix44 matrix = ComposeMatrix({{2, 2, 2}, {0, 0, 90}, {10, 20, 30}});
    const Vector3 point = TransformPoint({1, 0, 0}, matrix);
    EXPECT_NEAR(point.X, 10.0f, 1e-5f);
    EXPECT_NEAR(point.Y, 22.0f, 1e-5f);
    EXPECT_NEAR(point.Z, 30.0f, 1e-5f);
    const Vector3 direction = TransformDirection({1, 0, 0}, matrix);
    EXPECT_NEAR(direction.Y, 2.0f, 1e-6f); // not renormalised
}

} // namespace
} // namespace tq4x
