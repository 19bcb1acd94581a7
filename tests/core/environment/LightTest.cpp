#include "environment/Light.h"
#include "core/environment/Stage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tq4x
{
namespace
{

TEST(Light, BeginsAsTold)
{
    const Light light;
    EXPECT_EQ(light.LightKind, LightKind::DirectionalLight);
    EXPECT_EQ(static_cast<int>(light.LightKind), 1);
    EXPECT_TRUE(light.IsLightEnabled);
    EXPECT_FALSE(light.IsTwoSideDiffuse);
    EXPECT_FALSE(light.IsDistanceAttenuationEnabled);
    EXPECT_EQ(light.DistanceAttenuationStart, 0.0f);
    EXPECT_EQ(light.DistanceAttenuationEnd, 1.0f);
    EXPECT_FALSE(light.IsInheritingDirectionRotate);
    EXPECT_EQ(light.Scale, (Vector3{1, 1, 1}));
    EXPECT_EQ(light.Rotate, Vector3());
    EXPECT_EQ(light.Translate, Vector3());
    EXPECT_EQ(light.Ambient, (Color{0, 0, 0, 1}));
    EXPECT_EQ(light.Diffuse, (Color{1, 1, 1, 1}));
    EXPECT_EQ(light.Specular0, (Color{1, 1, 1, 1}));
    EXPECT_EQ(light.Specular1, (Color{1, 1, 1, 1}));
    EXPECT_EQ(light.Direction, (Vector3{0, 0, 1}));
    EXPECT_TRUE(light.AngleSampler.IsAbs);
    EXPECT_EQ(light.AngleSampler.Scale, 0.0f);
    EXPECT_EQ(light.AngleSampler.Input, 2);
    EXPECT_EQ(light.AngleSampler.TableIndex, -1);
}

Light SpotLight(const std::string& name, float cone, float spread, LookupTableSet& tables)
{
    Light light = test::MakeLight(name, LightKind::SpotLight);
    SetSpotCone(light, cone, spread, tables);
    return light;
}

struct ConeCase
{
    const char* Name;
    float Cone;
    float Spread;
    double Inner; ///< degrees
    double Outer;
};

constexpr ConeCase ConeCases[] = {
    {"usual", 90.0f, 5.0f, 40.0, 45.0},
    {"spread of half the cone", 90.0f, 45.0f, 0.0, 45.0},
    {"spread beyond half the cone", 90.0f, 60.0f, 0.0, 45.0},
    {"no spread", 90.0f, 0.0f, 45.0, 45.0},
    {"narrow", 2.0f, 0.5f, 0.5, 1.0},
    {"no cone", 0.0f, 5.0f, 0.0, 0.0},
    {"half space", 180.0f, 5.0f, 85.0, 90.0},
    {"beyond the half space", 300.0f, 10.0f, 140.0, 150.0},
    {"negative spread", 60.0f, -10.0f, 40.0, 30.0},
};

/// The table as it is told, one value after the other.
std::vector<float> TableOf(double inner, double outer)
{
    const auto entryOf = [](double degrees) {
        const float radians = static_cast<float>(degrees) * 0.017453292519943295f;
        return static_cast<int>(std::cos(static_cast<double>(radians)) * 256);
    };
    const int high = entryOf(inner);
    const int low = entryOf(outer);
    const auto f = [&](int i) {
        if (i < low)
            return 0.0f;
        return i >= high ? 1.0f : static_cast<float>(i - low) / static_cast<float>(high - low);
    };
    std::vector<float> samples;
    for (int i = 0; i < 256; ++i)
        samples.push_back(f(i));
    for (int i = 0; i < 255; ++i)
        samples.push_back(samples[i + 1] - samples[i]);
    samples.push_back(f(256) - samples[255]);
    for (float& sample : samples)
        if (sample > -1e-06f && sample < 1e-06f)
            sample = 0.0f;
    return samples;
}

TEST(SetSpotCone, BuildsTheTableOfTheCone)
{
    for (const ConeCase& row : ConeCases) {
        LookupTableSet tables;
        const Light light = SpotLight("spot", row.Cone, row.Spread, tables);
        EXPECT_TRUE(light.AngleSampler.IsAbs);
        EXPECT_EQ(light.AngleSampler.Input, 2);
        EXPECT_EQ(light.AngleSampler.Scale, 0.0f) << "stays as it was";
        ASSERT_EQ(light.AngleSampler.TableIndex, 0);
        const LookupTable& table = *tables.At(0);
        EXPECT_EQ(table.Name, "spot");
        EXPECT_TRUE(table.IsGeneratedAsAbs);
        EXPECT_TRUE(table.IsSizeDoubled);
        EXPECT_FALSE(table.IsMipMap);
        EXPECT_EQ(table.Samples, TableOf(row.Inner, row.Outer)) << row.Name;
    }
}

TEST(SetSpotCone, SharesTheTablesOfEqualCones)
{
    LookupTableSet tables;
    EXPECT_EQ(SpotLight("first", 90.0f, 5.0f, tables).AngleSampler.TableIndex, 0);
    EXPECT_EQ(SpotLight("other", 60.0f, 5.0f, tables).AngleSampler.TableIndex, 1);
    EXPECT_EQ(SpotLight("equal", 90.0f, 5.0f, tables).AngleSampler.TableIndex, 0);
    EXPECT_EQ(SpotLight("equal in the table", 90.0f, 5.00001f, tables).AngleSampler.TableIndex, 0);
    ASSERT_EQ(tables.Tables().size(), 2u);
    EXPECT_EQ(tables.At(0)->Name, "first");
}

TEST(SetSpotCone, MakesAFiniteTableOfAnyCone)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    for (const float cone : {nan, infinity, -infinity, 1e30f, -90.0f}) {
        for (const float spread : {nan, infinity, 0.0f, 5.0f}) {
            LookupTableSet tables;
            const Light light = SpotLight("spot", cone, spread, tables);
            ASSERT_EQ(light.AngleSampler.TableIndex, 0);
            ASSERT_EQ(tables.At(0)->Samples.size(), 512u);
            for (const float sample : tables.At(0)->Samples)
                EXPECT_TRUE(std::isfinite(sample)) << cone << " " << spread;
        }
    }
}

} // namespace
} // namespace tq4x
