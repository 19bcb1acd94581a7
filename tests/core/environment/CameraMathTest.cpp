#include "environment/CameraMath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace tq4x
{
namespace
{

struct UpCase
{
    const char* Name;
    DoubleVector Camera;
    DoubleVector Target;
    DoubleVector Up;
    double Roll;
    Vector3 Expected;
};

constexpr float Half = 0.70710678f;

const UpCase UpCases[] = {
    {"straight up", {0, 0, 10}, {0, 0, 0}, {0, 5, 10}, 0, {0, 1, 0}},
    {"the part along the view takes no part", {0, 0, 10}, {0, 0, 0}, {0, 5, -70}, 0, {0, 1, 0}},
    {"up object behind the camera", {0, 0, 10}, {0, 0, 0}, {0, 5, 20}, 0, {0, 1, 0}},
    {"up object below", {0, 0, 10}, {0, 0, 0}, {0, -3, 4}, 0, {0, -1, 0}},
    {"roll of a quarter turns against the view axis", {0, 0, 10}, {0, 0, 0}, {0, 5, 10}, 90, {-1, 0, 0}},
    {"roll the other way", {0, 0, 10}, {0, 0, 0}, {0, 5, 10}, -90, {1, 0, 0}},
    {"roll of 45", {0, 0, 10}, {0, 0, 0}, {0, 5, 10}, 45, {-Half, Half, 0}},
    {"whole turn", {0, 0, 10}, {0, 0, 0}, {0, 5, 10}, 360, {0, 1, 0}},
    {"view along x", {-5, 1, 1}, {5, 1, 1}, {0, 1, 9}, 0, {0, 0, 1}},
    {"view along x, rolled", {-5, 1, 1}, {5, 1, 1}, {0, 1, 9}, 90, {0, 1, 0}},
    {"far from the origin", {1e6, 1e6, 1e6 + 10}, {1e6, 1e6, 1e6}, {1e6, 1e6 + 5, 1e6}, 0, {0, 1, 0}},
    {"up object on the view axis", {0, 0, 10}, {0, 0, 0}, {0, 0, 4}, 30, {0, 0, 0}},
};

TEST(ComputeUpVector, IsWhatStandsAcrossTheView)
{
    for (const UpCase& row : UpCases) {
        const Vector3 up = ComputeUpVector(row.Camera, row.Target, row.Up, row.Roll);
        EXPECT_NEAR(up.X, row.Expected.X, 1e-6) << row.Name;
        EXPECT_NEAR(up.Y, row.Expected.Y, 1e-6) << row.Name;
        EXPECT_NEAR(up.Z, row.Expected.Z, 1e-6) << row.Name;
    }
}

TEST(ComputeUpVector, IsNoNumberForACameraOnItsTarget)
{
    const Vector3 up = ComputeUpVector({1, 2, 3}, {1, 2, 3}, {1, 5, 3}, 10);
    EXPECT_TRUE(std::isnan(up.X) && std::isnan(up.Y) && std::isnan(up.Z));
}

/// The matrix of a turn about an axis, for row vectors, written out element by element.
DoubleVector TimesTurnMatrix(const DoubleVector& v, const DoubleVector& axis, double angle)
{
    const double length = std::sqrt(axis[0] * axis[0] + axis[1] * axis[1] + axis[2] * axis[2]);
    const double x = axis[0] / length, y = axis[1] / length, z = axis[2] / length;
    const double c = std::cos(angle), s = std::sin(angle), t = 1 - c;
    const double m[3][3] = {{t * x * x + c, t * x * y + s * z, t * x * z - s * y},
                            {t * x * y - s * z, t * y * y + c, t * y * z + s * x},
                            {t * x * z + s * y, t * y * z - s * x, t * z * z + c}};
    DoubleVector result{};
    for (std::size_t column = 0; column < 3; ++column)
        for (std::size_t row = 0; row < 3; ++row)
            result[column] += v[row] * m[row][column];
    return result;
}

TEST(ComputeUpVector, EqualsTheRowVectorTimesTheMatrix)
{
    constexpr unsigned seed = 61;
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> place(-100, 100), degrees(-720, 720);
    for (int round = 0; round < 1000; ++round) {
        const auto point = [&] { return DoubleVector{place(random), place(random), place(random)}; };
        const DoubleVector camera = point(), target = point(), upObject = point();
        const double roll = degrees(random);
        DoubleVector axis{}, across{};
        double along = 0, square = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            axis[i] = target[i] - camera[i];
            along += (upObject[i] - camera[i]) * axis[i];
            square += axis[i] * axis[i];
        }
        double length = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            across[i] = upObject[i] - (camera[i] + axis[i] * along / square);
            length += across[i] * across[i];
        }
        for (double& component : across)
            component /= std::sqrt(length);
        const DoubleVector expected = TimesTurnMatrix(across, axis, -3.14159265358979323846 / 180 * roll);
        const Vector3 up = ComputeUpVector(camera, target, upObject, roll);
        ASSERT_NEAR(up.X, expected[0], 1e-6) << "seed " << seed << " round " << round;
        ASSERT_NEAR(up.Y, expected[1], 1e-6) << "seed " << seed << " round " << round;
        ASSERT_NEAR(up.Z, expected[2], 1e-6) << "seed " << seed << " round " << round;
        ASSERT_NEAR(up.X * axis[0] + up.Y * axis[1] + up.Z * axis[2], 0, 1e-4) << "seed " << seed;
    }
}

struct FieldCase
{
    float Horizontal;
    float Ratio;
    float Expected;
};

constexpr FieldCase FieldCases[] = {
    {90.0f, 2.0f, 53.130102f}, {90.0f, 1.0f, 90.0f},
    {60.0f, 1.5f, 42.103443f}, {90.0f, 0.5f, 126.869896f},
    {0.0f, 1.5f, 0.0f},        {-90.0f, 2.0f, -53.130102f},
    {90.0f, 0.0f, 0.0f},       {90.0f, -1.0f, 0.0f},
    {90.0f, -0.0f, 0.0f},      {90.0f, std::numeric_limits<float>::infinity(), 0.0f},
};

TEST(ToVerticalFieldOfView, DividesTheTangentOfHalf)
{
    for (const FieldCase& row : FieldCases)
        EXPECT_NEAR(ToVerticalFieldOfView(row.Horizontal, row.Ratio), row.Expected, 2e-5)
            << row.Horizontal << " " << row.Ratio;
    EXPECT_TRUE(std::isnan(ToVerticalFieldOfView(90.0f, std::numeric_limits<float>::quiet_NaN())));
}

TEST(ToVerticalFieldOfView, IsTheSameOnAllSystems)
{
    // Tangents that not every system's own function in single precision gets right to the last bit, where the
    // six digits of a file show it.
    const FieldCase rows[] = {
        {60.4f, 1.33333f, 47.1636505f}, {88.0f, 1.33333f, 71.8292542f}, {163.8f, 1.33333f, 158.510513f},
        {102.6f, 1.6f, 75.9175568f},    {68.0f, 1.77778f, 41.55455f},   {105.5f, 1.77778f, 72.9824524f},
    };

    for (const FieldCase& row : rows)
        EXPECT_EQ(ToVerticalFieldOfView(row.Horizontal, row.Ratio), row.Expected)
            << row.Horizontal << " " << row.Ratio;
}

} // namespace
} // namespace tq4x
