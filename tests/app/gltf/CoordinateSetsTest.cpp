#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "GltfFile.h"
#include "gltf/CoordinateSets.h"

namespace tq4x::gltf::test
{
namespace
{

using Point = std::array<double, 2>;

/// What the file says: T + R * S * p, turning counter-clockwise as seen with v pointing down.
Point Transform(const TextureTransform& t, Point p)
{
    const double c = std::cos(t.Rotation);
    const double s = std::sin(t.Rotation);
    const double x = t.Scale[0] * p[0];
    const double y = t.Scale[1] * p[1];
    return {t.Offset[0] + c * x + s * y, t.Offset[1] - s * x + c * y};
}

/// What the host's projection says: S * R(-rotation) * (p - T), dividing by the scales.
Point Project(const Projection& projection, Point p)
{
    const double a = -projection.Rotation * std::numbers::pi / 180.0;
    const double x = p[0] - projection.TranslateU;
    const double y = p[1] - projection.TranslateV;
    return {(std::cos(a) * x - std::sin(a) * y) / projection.ScaleU,
            (std::sin(a) * x + std::cos(a) * y) / projection.ScaleV};
}

Point Flip(Point p)
{
    return {p[0], 1.0 - p[1]};
}

void ExpectSamePlaces(const TextureTransform& transform, const std::string& name)
{
    const Projection projection = ComputeProjection(transform);
    EXPECT_TRUE(projection.IsExact) << name;
    for (const Point p : {Point{0, 0}, Point{1, 0}, Point{0, 1}, Point{0.3, 0.8}}) {
        const Point expected = Flip(Transform(transform, p));
        const Point actual = Project(projection, Flip(p));
        EXPECT_NEAR(actual[0], expected[0], 1e-9) << name;
        EXPECT_NEAR(actual[1], expected[1], 1e-9) << name;
    }
}

TEST(ProjectionTest, IdentityIsIdentity)
{
    const Projection projection = ComputeProjection({});
    EXPECT_EQ(projection.ScaleU, 1.0);
    EXPECT_EQ(projection.ScaleV, 1.0);
    EXPECT_EQ(std::abs(projection.Rotation), 0.0);
    EXPECT_EQ(projection.TranslateU, 0.0);
    EXPECT_EQ(projection.TranslateV, 0.0);
    EXPECT_TRUE(projection.IsExact);
}

TEST(ProjectionTest, MovesCoordinatesAsTheTransformDoes)
{
    constexpr double Quarter = std::numbers::pi / 2.0;

    const struct
    {
        const char* Name;
        TextureTransform Transform;
    } cases[] = {
        {"offset", {{0.25, 0.5}, 0.0, {1, 1}}},
        {"scale", {{0, 0}, 0.0, {2, 3}}},
        {"mirrored scale", {{0, 1}, 0.0, {1, -1}}},
        {"offset and scale", {{-0.2, -0.1}, 0.0, {1.5, 0.5}}},
        {"turn", {{0, 0}, 0.3, {1, 1}}},
        {"turn, offset and even scale", {{0.1, -0.4}, -1.2, {1.7, 1.7}}},
        {"turn and mirror", {{0.1, 0.2}, 0.7, {1.3, -1.3}}},
        {"turn and both mirrored", {{0.1, 0.2}, 0.7, {-1.3, -1.3}}},
        {"quarter turn and uneven scale", {{0.5, 0.6}, Quarter, {2, 3}}},
        {"quarter turn back and uneven mirror", {{0.5, 0.6}, -Quarter, {-2, 3}}},
        {"half turn and uneven scale", {{0.5, 0.6}, 2 * Quarter, {2, -3}}},
    };

    for (const auto& entry : cases) {
        ExpectSamePlaces(entry.Transform, entry.Name);
    }
}

TEST(ProjectionTest, RandomEvenScalesAreExact)
{
    for (unsigned seed = 0; seed < 500; ++seed) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> range(-3.0, 3.0);
        const double scale = range(random);
        if (std::abs(scale) > 0.01) {
            const double sign = seed % 2 == 0 ? 1.0 : -1.0;
            ExpectSamePlaces({{range(random), range(random)}, range(random), {scale, sign * scale}},
                             "seed " + std::to_string(seed));
        }
    }
}

TEST(ProjectionTest, ShearIsToldAndStaysFinite)
{
    EXPECT_FALSE(ComputeProjection({{0, 0}, 0.5, {1, 2}}).IsExact);
    for (const TextureTransform& transform :
         {TextureTransform{{0, 0}, 0.5, {1, 2}}, TextureTransform{{1, 2}, 0.5, {0, 2}},
          TextureTransform{{1, 2}, 0.0, {0, 0}}}) {
        const Projection projection = ComputeProjection(transform);
        for (const double value : {projection.ScaleU, projection.ScaleV, projection.Rotation,
                                   projection.TranslateU, projection.TranslateV}) {
            EXPECT_TRUE(std::isfinite(value));
        }
        EXPECT_NE(projection.ScaleU, 0.0);
        EXPECT_NE(projection.ScaleV, 0.0);
    }
}

/// Two plain textures, one clamped; primitives as told, each with the material of its number.
Document MakeDocument(const std::string& materials, const std::string& meshes, const std::string& more = "")
{
    return MustOpen(WithAsset(R"("images":[{"uri":"a.png"}],"samplers":[{"wrapS":33071}],
        "textures":[{"source":0},{"source":0,"sampler":0}],"materials":[)" +
                              materials + R"(],"meshes":[)" + meshes + "]" + more));
}

std::string Base(int texture, const std::string& more = "")
{
    return R"({"pbrMetallicRoughness":{"baseColorTexture":{"index":)" + std::to_string(texture) + more +
           "}}}";
}

std::string Moved(double offset)
{
    return R"(,"extensions":{"KHR_texture_transform":{"offset":[)" + std::to_string(offset) + ",0]}}";
}

std::string MeshOf(std::initializer_list<int> materials)
{
    std::string primitives;
    for (const int material : materials) {
        primitives += std::string(primitives.empty() ? "" : ",") + R"({"attributes":{},"material":)" +
                      std::to_string(material) + "}";
    }
    return R"({"primitives":[)" + primitives + "]}";
}

std::vector<std::string> NamesByMaterial(const Document& document)
{
    const CoordinateSets sets = BuildCoordinateSets(document, nullptr);
    std::vector<std::string> names;
    for (std::size_t i = 0; i < document.Materials.size(); ++i) {
        const Index set = sets.Find(i, TextureSlot::BaseColor);
        names.push_back(set ? sets.Sets[*set].Name : "-");
    }
    return names;
}

using Names = std::vector<std::string>;

TEST(CoordinateSetsTest, SetsOfDifferentMeshesKeepThePlainName)
{
    EXPECT_EQ(NamesByMaterial(MakeDocument(Base(0) + "," + Base(1) + "," + Base(0, Moved(0.5)) + ",{}",
                                           MeshOf({0}) + "," + MeshOf({1}) + "," + MeshOf({2, 3}))),
              (Names{"TEXCOORD_0", "TEXCOORD_0", "TEXCOORD_0", "-"}));
}

TEST(CoordinateSetsTest, SetsThatMeetOnAMeshAreToldApart)
{
    EXPECT_EQ(
        NamesByMaterial(MakeDocument(Base(0) + "," + Base(1) + "," + Base(0, Moved(0.5)) + "," + Base(0),
                                     MeshOf({0, 1}) + "," + MeshOf({2, 1, 3}))),
        (Names{"TEXCOORD_0", "TEXCOORD_0_2", "TEXCOORD_0_3", "TEXCOORD_0"}));
}

TEST(CoordinateSetsTest, AttributesHaveNamesOfTheirOwn)
{
    EXPECT_EQ(NamesByMaterial(MakeDocument(Base(0) + "," + Base(0, R"(,"texCoord":3)"), MeshOf({0, 1}))),
              (Names{"TEXCOORD_0", "TEXCOORD_3"}));
}

TEST(CoordinateSetsTest, EqualUsesShareASet)
{
    const Document document = MakeDocument(
        R"({"pbrMetallicRoughness":{"baseColorTexture":{"index":0}},"normalTexture":{"index":0}})",
        MeshOf({0}));
    const CoordinateSets sets = BuildCoordinateSets(document, nullptr);
    ASSERT_EQ(sets.Sets.size(), 1u);
    EXPECT_EQ(sets.Find(0, TextureSlot::Normal), sets.Find(0, TextureSlot::BaseColor));
    EXPECT_FALSE(sets.Find(0, TextureSlot::Emissive));
    EXPECT_TRUE(sets.Sets[0].WrapU && sets.Sets[0].WrapV);
}

TEST(CoordinateSetsTest, AnimatedTransformsStandAlone)
{
    const Document document = MakeDocument(
        Base(0) + "," + Base(0), MeshOf({0, 1}),
        R"(,"accessors":[{"componentType":5126,"count":1,"type":"SCALAR"}],"animations":[{"samplers":[
        {"input":0,"output":0}],"channels":[{"sampler":0,"target":{"path":"pointer","extensions":
        {"KHR_animation_pointer":{"pointer":"/materials/1/pbrMetallicRoughness/baseColorTexture/extensions/KHR_texture_transform/rotation"}}}}]}])");
    const CoordinateSets sets = BuildCoordinateSets(document, &document.Animations[0]);
    ASSERT_EQ(sets.Sets.size(), 2u);
    EXPECT_EQ(sets.Sets[1].AnimatedMaterial, 1u);
    EXPECT_EQ(sets.Sets[1].Name, "TEXCOORD_0_2");
    EXPECT_EQ(BuildCoordinateSets(document, nullptr).Sets.size(), 1u);
}

} // namespace
} // namespace tq4x::gltf::test
