#include "geometry/OrientedBoundingBox.h"
#include "geometry/SymmetricEigen.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace tq4x
{
namespace
{

OrientedBoundingBox BoxOf(const std::vector<Vector3>& positions)
{
    OrientedBoundingBox box;
    box.Size = {9, 9, 9};
    ComputeOrientedBoundingBox(box, positions);
    return box;
}

/// The eight corners of a box about `center`, turned about Z by `angle` radians.
std::vector<Vector3> Cuboid(const Vector3& center, const Vector3& size, float angle = 0.0f)
{
    std::vector<Vector3> corners;
    for (int i = 0; i < 8; ++i) {
        const float x = ((i & 1) != 0 ? 0.5f : -0.5f) * size.X;
        const float y = ((i & 2) != 0 ? 0.5f : -0.5f) * size.Y;
        const float z = ((i & 4) != 0 ? 0.5f : -0.5f) * size.Z;
        const float c = std::cos(angle);
        const float s = std::sin(angle);
        corners.push_back({center.X + x * c - y * s, center.Y + x * s + y * c, center.Z + z});
    }
    return corners;
}

const std::array<float, 9> Identity{1, 0, 0, 0, 1, 0, 0, 0, 1};

TEST(ComputeOrientedBoundingBox, NoPositionsGiveTheInitialBox)
{
    EXPECT_EQ(BoxOf({}), OrientedBoundingBox{});
}

TEST(ComputeOrientedBoundingBox, AxisAlignedSets)
{
    const struct
    {
        const char* Name;
        std::vector<Vector3> Positions;
        OrientedBoundingBox Expected;
    } cases[] = {
        {"widest along x", Cuboid({1, 2, 3}, {8, 4, 2}), {{1, 2, 3}, Identity, {8, 4, 2}}},
        {"widest along z, then x",
         Cuboid({1, 2, 3}, {4, 2, 8}),
         {{1, 2, 3}, {0, 0, 1, 1, 0, 0, 0, 1, 0}, {8, 4, 2}}},
        {"equal spreads keep the order x, y, z", Cuboid({0, 0, 0}, {2, 2, 2}), {{}, Identity, {2, 2, 2}}},
        {"a tie of y and z behind x", Cuboid({0, 0, 0}, {4, 2, 2}), {{}, Identity, {4, 2, 2}}},
        {"flat plane", Cuboid({0, 5, 0}, {4, 0, 2}), {{0, 5, 0}, {1, 0, 0, 0, 0, 1, 0, 1, 0}, {4, 2, 0}}},
        {"one position", {{3, -4, 5}}, {{3, -4, 5}, Identity, {}}},
        {"one position twice", {{3, -4, 5}, {3, -4, 5}}, {{3, -4, 5}, Identity, {}}},
        {"values within 1e-6 of zero",
         {{-5e-7f, 1, 0}, {-5e-7f, -1, 0}},
         {{}, {0, 1, 0, 1, 0, 0, 0, 0, 1}, {2, 0, 0}}},
    };

    for (const auto& test : cases)
        EXPECT_EQ(BoxOf(test.Positions), test.Expected) << test.Name;
}

TEST(ComputeOrientedBoundingBox, TurnsWithThePositions)
{
    const OrientedBoundingBox box = BoxOf(Cuboid({10, 20, 30}, {8, 4, 2}, 0.5f));
    EXPECT_NEAR(box.CenterPosition.X, 10.0f, 1e-5f);
    EXPECT_NEAR(box.CenterPosition.Y, 20.0f, 1e-5f);
    EXPECT_NEAR(box.CenterPosition.Z, 30.0f, 1e-5f);
    EXPECT_NEAR(box.Size.X, 8.0f, 1e-5f);
    EXPECT_NEAR(box.Size.Y, 4.0f, 1e-5f);
    EXPECT_NEAR(box.Size.Z, 2.0f, 1e-5f);
    EXPECT_NEAR(std::fabs(box.OrientationMatrix[0]), std::cos(0.5f), 1e-5f);
    EXPECT_NEAR(std::fabs(box.OrientationMatrix[1]), std::sin(0.5f), 1e-5f);
    EXPECT_EQ(box.OrientationMatrix[2], 0.0f);
    EXPECT_EQ(box.OrientationMatrix[8], 1.0f);
}

TEST(ComputeOrientedBoundingBox, TinySizesAndTiltsAreZero)
{
    EXPECT_EQ(BoxOf({{-2, -1, 0}, {2, -1, 5e-7f}, {2, 1, 0}, {-2, 1, 0}}).Size, (Vector3{4, 2, 0}));
    // A tilt of 5e-7 over a length of 200: rotated for, and not written.
    const OrientedBoundingBox box =
        BoxOf({{-100, -1, -5e-5f}, {100, -1, 5e-5f}, {100, 1, 5e-5f}, {-100, 1, -5e-5f}});
    EXPECT_EQ(box.OrientationMatrix, Identity);
    EXPECT_EQ(box.Size, (Vector3{200, 2, 0}));
}

TEST(ComputeOrientedBoundingBox, TinyShapesStayAlongTheAxes)
{
    // The turned covariance is below 1e-6 off the diagonal, so nothing is rotated.
    const OrientedBoundingBox box = BoxOf(Cuboid({0, 0, 0}, {8e-4f, 4e-4f, 2e-4f}, 0.5f));
    EXPECT_EQ(box.OrientationMatrix, Identity);
    EXPECT_GT(box.Size.X, 8e-4f);
}

TEST(ComputeOrientedBoundingBox, BrokenPositionsLeaveTheAxesAlone)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    const float largest = std::numeric_limits<float>::max();
    EXPECT_EQ(BoxOf({{1, 2, 3}, {nan, 5, 6}, {7, 8, 1}}).OrientationMatrix, Identity);
    EXPECT_EQ(BoxOf({{1, 2, 3}, {infinity, 5, 6}, {7, 8, 1}}).OrientationMatrix, Identity);
    EXPECT_EQ(BoxOf({{1, 2, 3}, {largest, largest, 6}, {-largest, 8, 1}}).OrientationMatrix, Identity);
}

TEST(ComputeOrientedBoundingBox, AnswerDependsOnTheListOrderOnlyByRounding)
{
    std::vector<Vector3> positions = Cuboid({1, 2, 3}, {8, 4, 2}, 0.25f);
    const OrientedBoundingBox forward = BoxOf(positions);
    std::reverse(positions.begin(), positions.end());
    const OrientedBoundingBox backward = BoxOf(positions);
    EXPECT_NEAR(forward.Size.X, backward.Size.X, 1e-5f);
    EXPECT_NEAR(forward.CenterPosition.Y, backward.CenterPosition.Y, 1e-5f);
}

TEST(ComputeOrientedBoundingBox, HoldsRandomPositionsInOrthonormalAxes)
{
    constexpr unsigned seed = 11;
    std::mt19937 random(seed);
    std::normal_distribution<float> spread(0.0f, 3.0f);
    for (int test = 0; test < 200; ++test) {
        std::vector<Vector3> positions;
        for (int i = 0; i < 20; ++i) {
            const float x = spread(random);
            const float y = spread(random);
            positions.push_back({x + 100.0f, 0.5f * x + 0.25f * y, 0.125f * spread(random) - x});
        }
        const OrientedBoundingBox box = BoxOf(positions);
        const auto axis = [&](std::size_t k) { return &box.OrientationMatrix[k * 3]; };
        const auto dot = [](const float* a, const float* b) {
            return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
        };
        const std::array<float, 3> size{box.Size.X, box.Size.Y, box.Size.Z};
        for (std::size_t k = 0; k < 3; ++k) {
            EXPECT_NEAR(dot(axis(k), axis(k)), 1.0f, 1e-5f) << "seed " << seed << ", case " << test;
            EXPECT_NEAR(dot(axis(k), axis((k + 1) % 3)), 0.0f, 1e-5f) << "seed " << seed << ", case " << test;
            for (const Vector3& position : positions) {
                const std::array<float, 3> offset{position.X - box.CenterPosition.X,
                                                  position.Y - box.CenterPosition.Y,
                                                  position.Z - box.CenterPosition.Z};
                EXPECT_LE(std::fabs(dot(offset.data(), axis(k))), 0.5f * size[k] + 1e-3f)
                    << "seed " << seed << ", case " << test;
            }
        }
    }
}

/// Largest component of A v - value v over the three pairs.
float Residual(const SymmetricMatrix3& matrix, const EigenSystem3& eigen)
{
    const auto& d = matrix.Diagonal;
    const auto& u = matrix.UpperOffDiagonal;
    const float full[3][3] = {{d[0], u[0], u[1]}, {u[0], d[1], u[2]}, {u[1], u[2], d[2]}};
    float worst = 0.0f;
    for (std::size_t k = 0; k < 3; ++k) {
        const auto& v = eigen.Vectors[k];
        for (std::size_t i = 0; i < 3; ++i) {
            const float product = full[i][0] * v[0] + full[i][1] * v[1] + full[i][2] * v[2];
            worst = std::max(worst, std::fabs(product - eigen.Values[k] * v[i]));
        }
    }
    return worst;
}

TEST(ComputeEigenSystem, SolvesKnownMatrices)
{
    const struct
    {
        const char* Name;
        SymmetricMatrix3 Matrix;
        std::array<float, 3> SortedValues;
    } cases[] = {
        {"diagonal", {{3, 1, 2}, {}}, {1, 2, 3}},
        {"zero", {}, {0, 0, 0}},
        {"one pair", {{2, 2, 5}, {1, 0, 0}}, {1, 3, 5}},
        {"all ones", {{1, 1, 1}, {1, 1, 1}}, {0, 0, 3}},
        {"negative", {{-2, 2, 0}, {0, 0, 3}}, {-2, 1 - std::sqrt(10.0f), 1 + std::sqrt(10.0f)}},
        {"equal diagonal, an element that is lost in it",
         {{1, 1, 1}, {1e-9f, 1e-3f, 0}},
         {0.999f, 1, 1.001f}},
        {"elements of very different size", {{1e6f, 1, 1e-6f}, {100, 1e-4f, 1e-3f}}, {0, 0.99f, 1e6f}},
    };

    for (const auto& test : cases) {
        const std::optional<EigenSystem3> eigen = ComputeEigenSystem(test.Matrix);
        ASSERT_TRUE(eigen.has_value()) << test.Name;
        std::array<float, 3> values = eigen->Values;
        std::array<float, 3> expected = test.SortedValues;
        std::sort(values.begin(), values.end());
        std::sort(expected.begin(), expected.end());
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_NEAR(values[k], expected[k], 1e-5f * std::max(1.0f, std::fabs(expected[k]))) << test.Name;
        EXPECT_LT(Residual(test.Matrix, *eigen), 0.1f) << test.Name;
    }
}

TEST(ComputeEigenSystem, ElementsBelowTheLimitCountAsDiagonal)
{
    const std::optional<EigenSystem3> below = ComputeEigenSystem({{2, 1, 0}, {3e-7f, 3e-7f, 3e-7f}});
    ASSERT_TRUE(below.has_value());
    EXPECT_EQ(below->Values, (std::array<float, 3>{2, 1, 0}));
    EXPECT_EQ(below->Vectors[0], (std::array<float, 3>{1, 0, 0}));
    const std::optional<EigenSystem3> above = ComputeEigenSystem({{2, 1, 0}, {3e-7f, 3e-7f, 5e-7f}});
    ASSERT_TRUE(above.has_value());
    EXPECT_NE(above->Vectors[2], (std::array<float, 3>{0, 0, 1}));
}

TEST(ComputeEigenSystem, NumbersThatAreNoneFail)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(ComputeEigenSystem({{1, 1, 1}, {nan, 0, 0}}).has_value());
    EXPECT_FALSE(ComputeEigenSystem({{nan, 1, 1}, {1, 0, 0}}).has_value());
}

TEST(ComputeEigenSystem, SmallElementBetweenEqualLargeDiagonalsFails)
{
    EXPECT_FALSE(ComputeEigenSystem({{40000, 40000, 40000}, {0, 0.001f, -0.003f}}).has_value());
}

/// One rotation of the classic method, on full arrays.
void RotateByTheBook(float a[3][3], float v[3][3], float d[3], float z[3], int p, int q)
{
    const auto rotate = [](float& first, float& second, float s, float tau) {
        const float g = first;
        const float h = second;
        first = g - s * (h + g * tau);
        second = h + s * (g - h * tau);
    };
    const float g = 100.0f * std::fabs(a[p][q]);
    float h = d[q] - d[p];
    float t = 0.0f;
    if (std::fabs((std::fabs(h) + g) - std::fabs(h)) < 1e-6f) {
        t = a[p][q] / h;
    } else {
        const float theta = h / (2.0f * a[p][q]);
        t = 1.0f / (std::fabs(theta) + std::sqrt(theta * theta + 1.0f));
        if (theta < 0.0f)
            t = -t;
    }
    const float c = 1.0f / std::sqrt(1.0f + t * t);
    const float s = t * c;
    const float tau = s / (1.0f + c);
    h = t * a[p][q];
    z[p] -= h;
    z[q] += h;
    d[p] -= h;
    d[q] += h;
    a[p][q] = 0.0f;
    for (int j = 0; j < p; ++j)
        rotate(a[j][p], a[j][q], s, tau);
    for (int j = p + 1; j < q; ++j)
        rotate(a[p][j], a[j][q], s, tau);
    for (int j = q + 1; j < 3; ++j)
        rotate(a[p][j], a[q][j], s, tau);
    for (int j = 0; j < 3; ++j)
        rotate(v[j][p], v[j][q], s, tau);
}

/// The classic method, sweep by sweep. False for failure.
bool SolveByTheBook(float a[3][3], float v[3][3], float d[3])
{
    float b[3] = {a[0][0], a[1][1], a[2][2]};
    float z[3] = {};
    std::copy(b, b + 3, d);
    for (int sweep = 0; sweep < 50; ++sweep) {
        const float sum = std::fabs(a[0][1]) + std::fabs(a[0][2]) + std::fabs(a[1][2]);
        if (sum == 0.0f || sum < 1e-6f)
            return true;
        const float threshold = sweep < 3 ? 0.2f * sum / 9.0f : 0.0f;
        for (int p = 0; p < 2; ++p) {
            for (int q = p + 1; q < 3; ++q) {
                const float g = 100.0f * std::fabs(a[p][q]);
                if (sweep >= 4 && std::fabs((d[p] + g) - d[p]) < 1e-6f &&
                    std::fabs((d[q] + g) - d[q]) < 1e-6f)
                    a[p][q] = 0.0f;
                else if (std::fabs(a[p][q]) > threshold)
                    RotateByTheBook(a, v, d, z, p, q);
            }
        }
        for (int i = 0; i < 3; ++i) {
            b[i] += z[i];
            d[i] = b[i];
            z[i] = 0.0f;
        }
    }
    return false;
}

TEST(ComputeEigenSystem, AgreesWithTheBookToTheLastBit)
{
    constexpr unsigned seed = 13;
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> element(-4.0f, 4.0f);
    const auto below = [&](int end) { return std::uniform_int_distribution(0, end - 1)(random); };
    for (int test = 0; test < 20000; ++test) {
        SymmetricMatrix3 matrix;
        const float size = std::pow(10.0f, static_cast<float>(below(9) - 3));
        const float tie = std::round(element(random)) * size;
        for (float& value : matrix.Diagonal)
            value = below(2) == 0 ? tie : element(random) * size;
        for (float& value : matrix.UpperOffDiagonal)
            value =
                below(3) == 0 ? 0.0f : element(random) * std::pow(10.0f, static_cast<float>(below(12) - 6));
        const auto& [d, u] = matrix;
        float a[3][3] = {{d[0], u[0], u[1]}, {u[0], d[1], u[2]}, {u[1], u[2], d[2]}};
        float vectors[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
        float values[3] = {};
        const bool isSolved = SolveByTheBook(a, vectors, values);
        const std::optional<EigenSystem3> eigen = ComputeEigenSystem(matrix);
        ASSERT_EQ(eigen.has_value(), isSolved) << "seed " << seed << ", case " << test;
        for (std::size_t k = 0; isSolved && k < 3; ++k) {
            ASSERT_EQ(eigen->Values[k], values[k]) << "seed " << seed << ", case " << test;
            for (std::size_t i = 0; i < 3; ++i)
                ASSERT_EQ(eigen->Vectors[k][i], vectors[i][k]) << "seed " << seed << ", case " << test;
        }
    }
}

TEST(ComputeEigenSystem, SolvesRandomMatrices)
{
    constexpr unsigned seed = 12;
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> element(-10.0f, 10.0f);
    for (int test = 0; test < 2000; ++test) {
        SymmetricMatrix3 matrix;
        for (float& value : matrix.Diagonal)
            value = test % 3 == 0 ? 4.0f : element(random);
        for (float& value : matrix.UpperOffDiagonal)
            value = element(random) * (test % 5 == 0 ? 1e-5f : 1.0f);
        const std::optional<EigenSystem3> eigen = ComputeEigenSystem(matrix);
        ASSERT_TRUE(eigen.has_value()) << "seed " << seed << ", case " << test;
        EXPECT_LT(Residual(matrix, *eigen), 5e-5f) << "seed " << seed << ", case " << test;
    }
}

} // namespace
} // namespace tq4x
