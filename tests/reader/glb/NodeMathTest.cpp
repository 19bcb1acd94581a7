#include <gmock/gmock.h>

#include <cmath>
#include <numbers>
#include <random>

#include "glb/NodeMath.h"
#include "glb/TextureTransform.h"
#include "math/Matrix44.h"

namespace tq4x::reader::test
{
namespace
{

using testing::DoubleNear;
using testing::ElementsAre;
using testing::Pointwise;

Transform RandomTransform(std::mt19937& random)
{
    std::uniform_real_distribution<float> angle(-4, 4);
    std::uniform_real_distribution<float> place(-10, 10);
    std::uniform_real_distribution<float> scale(0.25F, 3);
    Transform transform;
    for (std::size_t i = 0; i < 3; ++i) {
        transform.Scale[i] = scale(random);
        transform.Rotate[i] = angle(random);
        transform.Translate[i] = place(random);
    }
    return transform;
}

TEST(NodeMath, TransformsAreWhatTheExporterMeansByThem)
{
    std::mt19937 random(11);
    for (int i = 0; i < 200; ++i) {
        const Transform transform = RandomTransform(random);
        const auto& [rx, ry, rz] = transform.Rotate;
        constexpr float Degrees = 180 / std::numbers::pi_v<float>;
        const Matrix44 written =
            ComposeMatrix({{transform.Scale[0], transform.Scale[1], transform.Scale[2]},
                           {rx * Degrees, ry * Degrees, rz * Degrees},
                           {transform.Translate[0], transform.Translate[1], transform.Translate[2]}});
        const Matrix matrix = MatrixOf(transform);
        for (int row = 0; row < 4; ++row) {
            for (int column = 0; column < 4; ++column) { // rows of one are columns of the other
                EXPECT_NEAR(matrix[static_cast<std::size_t>(4 * row + column)],
                            static_cast<double>(written(row, column)), 1e-5)
                    << i;
            }
        }
    }
}

TEST(NodeMath, QuaternionsOfAnglesAndOfAxesAreTheSame)
{
    std::mt19937 random(12);
    for (int i = 0; i < 500; ++i) {
        Transform transform = RandomTransform(random);
        transform.Scale = {1, 1, 1};
        const Matrix m = MatrixOf(transform);
        const Quaternion expected = QuaternionOf(transform.Rotate);
        const Quaternion actual =
            QuaternionOfAxes({{{m[0], m[1], m[2]}, {m[4], m[5], m[6]}, {m[8], m[9], m[10]}}});
        double product = 0;
        for (std::size_t k = 0; k < 4; ++k) {
            product += expected[k] * actual[k];
        }
        EXPECT_NEAR(std::abs(product), 1, 1e-12) << i; // either sign is the same rotation
    }
}

TEST(NodeMath, ATurnTowardsADirectionLeadsThere)
{
    const Vector3 directions[] = {{0, 0, -1}, {0, 0, 1}, {0, -2, 0}, {1, 0, 0}, {3, -4, 12}, {0, 1e-8F, 1}};
    for (const Vector3& direction : directions) {
        const auto [x, y, z, w] = QuaternionTowards(direction);
        const std::vector<double> forward = {-2 * (x * z + y * w), -2 * (y * z - x * w),
                                             -(1 - 2 * (x * x + y * y))};
        const double length = std::hypot(direction[0], direction[1], direction[2]);
        const std::vector<double> expected = {direction[0] / length, direction[1] / length,
                                              direction[2] / length};
        EXPECT_THAT(forward, Pointwise(DoubleNear(1e-7), expected)) << direction[0];
    }
    EXPECT_THAT(QuaternionTowards({0, 0, 0}), ElementsAre(0, 0, 0, 1));
}

TEST(NodeMath, TheInverseUndoes)
{
    std::mt19937 random(13);
    for (int i = 0; i < 200; ++i) {
        const Matrix matrix = Multiply(MatrixOf(RandomTransform(random)), MatrixOf(RandomTransform(random)));
        const std::optional<Matrix> inverse = Invert(matrix);
        ASSERT_TRUE(inverse) << i;
        EXPECT_THAT(Multiply(*inverse, matrix), Pointwise(DoubleNear(1e-9), IdentityMatrix)) << i;
    }
    Transform flat;
    flat.Scale = {1, 0, 1};
    EXPECT_FALSE(Invert(MatrixOf(flat)));
}

/// Where a coordinate is looked up, v upwards: the rule of the files.
std::array<double, 2> LookUp(const TextureCoordinator& c, double u, double v)
{
    const double x = u - c.TranslateS;
    const double y = v - c.TranslateT;
    const double cosine = std::cos(c.Rotate);
    const double sine = std::sin(c.Rotate);
    return {c.ScaleS * (cosine * x + sine * y), c.ScaleT * (-sine * x + cosine * y)};
}

/// The same by the rule of glTF, v downwards.
std::array<double, 2> LookUp(const TextureTransform& t, double u, double v)
{
    const double x = u * t.Scale[0];
    const double y = v * t.Scale[1];
    const double cosine = std::cos(t.Rotation);
    const double sine = std::sin(t.Rotation);
    return {cosine * x + sine * y + t.Offset[0], -sine * x + cosine * y + t.Offset[1]};
}

TEST(TextureTransform, LooksUpTheSamePlace)
{
    constexpr float Quarter = std::numbers::pi_v<float> / 2;

    const struct
    {
        const char* Name;
        float ScaleS, ScaleT, Rotate, TranslateS, TranslateT;
        bool IsExact;
    } cases[] = {
        {"identity", 1, 1, 0, 0, 0, true},
        {"offset", 1, 1, 0, 0.25F, -0.5F, true},
        {"scales", 2, 0.5F, 0, 0.25F, 0.5F, true},
        {"turn", 1, 1, 0.3F, 0, 0, true},
        {"all with equal scales", 1.5F, 1.5F, -0.3F, -0.1F, 0.26F, true},
        {"quarter turn", 2, 3, Quarter, 0.1F, 0.2F, true},
        {"half turn", 2, 3, -2 * Quarter, 0.1F, 0.2F, true},
        {"mirror", -1, 1, 0, 0.1F, 0.2F, true},
        {"turned mirror", -2, 2, 0.7F, 0.1F, 0.2F, true},
        {"mirrored quarter turn", 2, -3, Quarter, 0.1F, 0.2F, true},
        {"shear", 2, 1, 0.7F, 0, 0, false},
    };

    for (const auto& entry : cases) {
        TextureCoordinator c;
        c.ScaleS = entry.ScaleS;
        c.ScaleT = entry.ScaleT;
        c.Rotate = entry.Rotate;
        c.TranslateS = entry.TranslateS;
        c.TranslateT = entry.TranslateT;
        const TextureTransform transform = ComputeTextureTransform(c);
        EXPECT_EQ(transform.IsExact, entry.IsExact) << entry.Name;
        for (const auto& [u, v] : {std::pair{0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0}, {0.3, 0.8}}) {
            const auto [s, t] = LookUp(c, u, v);
            const auto [x, y] = LookUp(transform, u, 1 - v);
            if (entry.IsExact) {
                EXPECT_NEAR(x, s, 1e-6) << entry.Name;
                EXPECT_NEAR(1 - y, t, 1e-6) << entry.Name;
            }
        }
    }
}

} // namespace
} // namespace tq4x::reader::test
