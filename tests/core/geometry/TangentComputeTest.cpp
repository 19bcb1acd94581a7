#include "geometry/ComputeTangent.h"
#include "geometry/VectorMath.h"

#include <cmath>
#include <random>

namespace tq4x
{
namespace
{

const float Half = 1.0f / std::sqrt(2.0f);

TEST(ComputeTangent, Cases)
{
    const Vector3 z{0, 0, 1};
    const TangentCorner origin{{0, 0, 0}, {0, 0}};
    const TangentCorner right{{2, 0, 0}, {1, 0}};
    const TangentCorner up{{0, 2, 0}, {0, 1}};

    const struct
    {
        const char* Name;
        TangentCorner A, B, C;
        Vector3 Normal;
        Vector3 Expected;
    } cases[] = {
        {"u along x", origin, right, up, z, {1, 0, 0}},
        {"the same with the neighbours exchanged", origin, up, right, z, {1, 0, 0}},
        {"u along y", origin, {{2, 0, 0}, {0, 1}}, {{0, 2, 0}, {1, 0}}, z, {0, 1, 0}},
        {"mirrored u", origin, {{2, 0, 0}, {-1, 0}}, up, z, {-1, 0, 0}},
        {"turned coordinates", origin, {{2, 0, 0}, {1, 1}}, {{0, 2, 0}, {-1, 1}}, z, {Half, -Half, 0}},
        {"a slanting normal bends the tangent into its plane",
         origin,
         right,
         up,
         {Half, 0, Half},
         {Half, 0, -Half}},
        {"a zero normal leaves the raw tangent, normalised", origin, right, up, {}, {1, 0, 0}},
        {"a long normal", origin, right, up, {0, 0, 10}, {1, 0, 0}},
        {"a normal along the raw tangent leaves nothing", origin, right, up, {1, 0, 0}, {0, 0, 0}},
        {"equal coordinates, zero normal: the X axis",
         origin,
         {{2, 0, 0}, {}},
         {{0, 2, 0}, {}},
         {},
         {1, 0, 0}},
        {"equal coordinates: Y axis times normal", origin, {{2, 0, 0}, {}}, {{0, 2, 0}, {}}, z, {1, 0, 0}},
        {"equal coordinates, normal x", origin, {{2, 0, 0}, {}}, {{0, 2, 0}, {}}, {1, 0, 0}, {0, 0, -1}},
        {"equal coordinates, normal +Y: the other axis", origin, origin, origin, {0, 1, 0}, {1, 0, 0}},
        {"equal coordinates, normal -Y: the other axis", origin, origin, origin, {0, -1, 0}, {-1, 0, 0}},
        {"normal Y within 1e-6", origin, origin, origin, {9e-7f, 1, -9e-7f}, {1, -9e-7f, 0}},
        {"normal Y just outside 1e-6", origin, origin, origin, {2e-6f, 1, 0}, {0, 0, -1}},
        {"a long normal along Y: helper axis and normal are parallel", origin, origin, origin, {0, 2, 0}, {}},
        {"coordinates in a line", origin, {{2, 0, 0}, {1, 1}}, {{0, 2, 0}, {2, 2}}, z, {1, 0, 0}},
        {"equal positions with good coordinates", origin, {{}, {1, 0}}, {{}, {0, 1}}, z, {0, 0, 0}},
    };

    for (const auto& test : cases) {
        const Vector3 tangent = ComputeTangent(test.A, test.B, test.C, test.Normal);
        EXPECT_NEAR(tangent.X, test.Expected.X, 1e-6f) << test.Name;
        EXPECT_NEAR(tangent.Y, test.Expected.Y, 1e-6f) << test.Name;
        EXPECT_NEAR(tangent.Z, test.Expected.Z, 1e-6f) << test.Name;
    }
}

TEST(ComputeTangent, IsAUnitVectorPerpendicularToTheNormal)
{
    constexpr unsigned seed = 362;
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> component(-1.0f, 1.0f);
    const auto vector = [&] { return Vector3{component(random), component(random), component(random)}; };
    for (int test = 0; test < 2000; ++test) {
        const bool hasCoordinates = test % 4 != 0;
        const auto corner = [&]() -> TangentCorner {
            const Vector3 position = vector();
            return hasCoordinates ? TangentCorner{position, {component(random), component(random)}}
                                  : TangentCorner{position, {0.25f, 0.5f}};
        };
        const TangentCorner a = corner();
        const TangentCorner b = corner();
        const TangentCorner c = corner();
        const Vector3 normal = Normalize(vector());
        const Vector3 tangent = ComputeTangent(a, b, c, normal);
        EXPECT_NEAR(Dot(tangent, tangent), 1.0f, 1e-5f) << "seed " << seed << ", case " << test;
        EXPECT_NEAR(Dot(tangent, normal), 0.0f, 1e-4f) << "seed " << seed << ", case " << test;
    }
}

} // namespace
} // namespace tq4x
