#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

#include "reader/glb/ReadGlb.h"

namespace tq4x::reader::test
{
namespace
{

using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pointwise;

constexpr float Pi = std::numbers::pi_v<float>;

Curve MakeCurve(KeyKind kind, std::vector<std::pair<float, float>> keys)
{
    Curve curve;
    for (const auto& [frame, value] : keys) {
        Key key;
        key.Kind = kind;
        key.Frame = frame;
        key.Value = value;
        curve.Keys.push_back(key);
    }
    return curve;
}

MemberAnimation MakeMember(const std::string& path, const std::string& kind)
{
    MemberAnimation member;
    member.Path = path;
    member.Kind = kind;
    return member;
}

/// The triangle and an animation "walk" of its bone, `length` frames long.
ExportedFiles MovingFiles(int length, const MemberAnimation& member)
{
    ExportedFiles files = TriangleFiles();
    Document document;
    document.Kind = FileKind::SkeletalAnimation;
    SkeletalAnimation& animation = document.SkeletalAnimation.emplace();
    animation.Head.FrameSize = length;
    animation.Bones = ModelOf(files).Bones;
    animation.Members = {member};
    files.Files.push_back({"walk.qskla", document});
    return files;
}

MemberAnimation BoneMember(const std::string& bone = "node")
{
    return MakeMember("Skeleton.Bones[\"" + bone + "\"].AnimatedTransform", "TransformAnimation");
}

/// A channel of the only clip, with its numbers.
struct Channel
{
    std::string Target; ///< "node 0 translation" or a JSON pointer
    std::string Interpolation;
    std::vector<double> Times;
    std::vector<double> Values;
};

std::vector<Channel> ChannelsOf(const Glb& glb)
{
    std::vector<Channel> channels;
    if (!glb.Root.contains("animations")) {
        return channels;
    }
    const Json& clip = glb.Root.at("animations").at(0);
    for (const Json& channel : clip.at("channels")) {
        const Json& target = channel.at("target");
        const Json& sampler = clip.at("samplers").at(channel.at("sampler").get<std::size_t>());
        const std::string name =
            target.at("path") == "pointer"
                ? target.at("extensions").at("KHR_animation_pointer").at("pointer").get<std::string>()
                : "node " + target.at("node").dump() + " " + target.at("path").get<std::string>();
        channels.push_back({name, sampler.at("interpolation"), glb.Numbers(sampler.at("input")),
                            glb.Numbers(sampler.at("output"))});
    }
    return channels;
}

TEST(ConvertClip, StraightCurvesKeepTheirKeys)
{
    MemberAnimation member = BoneMember();
    member.Translate[0] = MakeCurve(KeyKind::Linear, {{0, 0}, {30, 6}});
    member.Translate[2] = MakeCurve(KeyKind::Linear, {{15, 1}, {30, 2}});
    ExportedFiles files = MovingFiles(30, member);
    files.Files[1].Content.SkeletalAnimation->Bones.Bones[0].Local.Translate = {7, 8, 9};
    const Converted converted = Convert(files);
    EXPECT_EQ(converted.File.Root.at("animations").at(0).at("name"), "walk");
    const std::vector<Channel> channels = ChannelsOf(converted.File);
    ASSERT_EQ(channels.size(), 1U);
    EXPECT_EQ(channels[0].Target, "node 0 translation");
    EXPECT_EQ(channels[0].Interpolation, "LINEAR");
    EXPECT_THAT(channels[0].Times, ElementsAre(0, 0.5, 1));
    EXPECT_THAT(channels[0].Values, ElementsAre(0, 8, 1, 3, 8, 1, 6, 8, 2));
    EXPECT_THAT(converted.Warnings, IsEmpty());
}

TEST(ConvertClip, CubicCurvesAreSampledAtEveryFrame)
{
    MemberAnimation member = BoneMember();
    member.Scale[1] = MakeCurve(KeyKind::Hermite, {{0, 0}, {2.5F, 1}, {4, 3}});
    const std::vector<Channel> channels = ChannelsOf(Convert(MovingFiles(4, member), {1}).File);
    ASSERT_EQ(channels.size(), 1U);
    EXPECT_THAT(channels[0].Times, ElementsAre(0, 1, 2, 2.5, 3, 4));
    ASSERT_EQ(channels[0].Values.size(), 18U);
    for (std::size_t i = 0; i < 6; ++i) {
        const auto expected =
            EvaluateCurve(*member.Scale[1], static_cast<float>(channels[0].Times[i])).value_or(-1);
        EXPECT_EQ(channels[0].Values[3 * i + 1], static_cast<double>(expected)) << i;
        EXPECT_EQ(channels[0].Values[3 * i], 1) << i;
    }
}

TEST(ConvertClip, SteppedCurvesStep)
{
    MemberAnimation member = BoneMember();
    member.Rotate[2] = MakeCurve(KeyKind::Step, {{0, 0}, {10, 2 * std::atan(0.75F)}});
    const std::vector<Channel> channels = ChannelsOf(Convert(MovingFiles(30, member)).File);
    ASSERT_EQ(channels.size(), 1U);
    EXPECT_EQ(channels[0].Interpolation, "STEP");
    EXPECT_THAT(channels[0].Times, Pointwise(DoubleNear(1e-6), std::vector{0.0, 1 / 3.0}));
    EXPECT_THAT(channels[0].Values,
                Pointwise(DoubleNear(1e-6), std::vector<double>{0, 0, 0, 1, 0, 0, 0.6, 0.8}));
}

TEST(ConvertClip, RotationsNeverTurnTheLongWay)
{
    MemberAnimation member = BoneMember();
    member.Rotate[0] = MakeCurve(KeyKind::Linear, {{0, 0}, {40, 8 * Pi}}); // four turns
    const std::vector<Channel> channels = ChannelsOf(Convert(MovingFiles(40, member)).File);
    ASSERT_EQ(channels.size(), 1U);
    const std::vector<double>& values = channels[0].Values;
    ASSERT_EQ(values.size(), 41U * 4);
    for (std::size_t i = 4; i < values.size(); i += 4) {
        double product = 0;
        double length = 0;
        for (std::size_t k = 0; k < 4; ++k) {
            product += values[i - 4 + k] * values[i + k];
            length += values[i + k] * values[i + k];
        }
        EXPECT_NEAR(product, std::cos(0.1 * static_cast<double>(Pi)), 1e-5) << i;
        EXPECT_NEAR(length, 1, 1e-6) << i;
    }
}

TEST(ConvertClip, WhatStandsStillIsOneKeyOrNone)
{
    MemberAnimation member = BoneMember();
    member.Translate[0] = MakeCurve(KeyKind::Linear, {{0, 0}, {10, 0}});
    ExportedFiles files = MovingFiles(10, member);
    EXPECT_FALSE(Convert(files).File.Root.contains("animations"));
    files.Files[1].Content.SkeletalAnimation->Members[0].Translate[0] =
        MakeCurve(KeyKind::Linear, {{0, 5}, {10, 5}});
    const std::vector<Channel> channels = ChannelsOf(Convert(files).File);
    ASSERT_EQ(channels.size(), 1U);
    EXPECT_THAT(channels[0].Times, ElementsAre(0));
    EXPECT_THAT(channels[0].Values, ElementsAre(5, 0, 0));
}

TEST(ConvertClip, FramesCountByTheRate)
{
    MemberAnimation member = BoneMember();
    member.Translate[0] = MakeCurve(KeyKind::Linear, {{0, 0}, {60, 1}});
    EXPECT_THAT(ChannelsOf(Convert(MovingFiles(60, member), {24}).File).at(0).Times, ElementsAre(0, 2.5));
    // So small a rate leaves no second time that single precision can hold.
    EXPECT_THAT(ChannelsOf(Convert(MovingFiles(60, member), {1e-300}).File).at(0).Times, ElementsAre(0));
    EXPECT_THAT(ChannelsOf(Convert(MovingFiles(60, member), {1e300}).File).at(0).Times, ElementsAre(0));
}

TEST(ConvertClip, TooLongClipsAreJoinedAtTheirKeys)
{
    MemberAnimation member = BoneMember();
    member.Translate[0] = MakeCurve(KeyKind::Hermite, {{0, 0}, {2000000000, 1}});
    const Converted converted = Convert(MovingFiles(2000000000, member));
    EXPECT_THAT(ChannelsOf(converted.File).at(0).Values, ElementsAre(0, 0, 0, 1, 0, 0));
    EXPECT_THAT(
        converted.Warnings,
        ElementsAre("\"walk\": the animation is too long; curves are joined by lines at their keys."));
}

TEST(ConvertClip, BonesThatTheModelLacksAreTold)
{
    MemberAnimation member = BoneMember("ghost");
    member.Translate[0] = MakeCurve(KeyKind::Linear, {{0, 0}, {10, 1}});
    EXPECT_THAT(Convert(MovingFiles(10, member)).Warnings,
                ElementsAre("\"ghost\": the model has no bone of this name to be moved."));
}

TEST(ConvertClip, AnAnimationAloneMovesItsOwnSkeleton)
{
    MemberAnimation member = BoneMember();
    member.Translate[0] = MakeCurve(KeyKind::Linear, {{0, 0}, {10, 1}});
    ExportedFiles files = MovingFiles(10, member);
    files.Files.erase(files.Files.begin());
    const Converted converted = Convert(files);
    EXPECT_EQ(converted.File.Root.at("nodes").dump(), R"([{"name":"node"}])");
    EXPECT_EQ(ChannelsOf(converted.File).size(), 1U);
}

TEST(ConvertClip, EachBaseNameIsAClip)
{
    MemberAnimation member = BoneMember();
    member.Translate[0] = MakeCurve(KeyKind::Linear, {{0, 0}, {10, 1}});
    ExportedFiles files = MovingFiles(10, member);
    files.Files.push_back(files.Files[1]);
    files.Files.push_back(files.Files[1]);
    files.Files[2].Path = "run.qskla";
    files.Files[3].Path = "stand.qskla";
    files.Files[3].Content.SkeletalAnimation->Members.clear();
    const Glb glb = Convert(files).File;
    ASSERT_EQ(glb.Root.at("animations").size(), 2U);
    EXPECT_EQ(glb.Root.at("animations").at(0).at("name"), "walk");
    EXPECT_EQ(glb.Root.at("animations").at(1).at("name"), "run");
}

ExportedFiles HidingFiles(const std::string& path)
{
    ExportedFiles files = TriangleFiles();
    Document document;
    document.Kind = FileKind::VisibilityAnimation;
    MemberAnimation member = MakeMember(path, "BoolAnimation");
    member.Bool = BoolCurve{0, 20, true, {{0, false, 0}, {15, true, 0}, {20, false, 0}}, 0};
    document.VisibilityAnimation = VisibilityAnimation{{"", 30, false, 0}, {member}};
    files.Files.push_back({"scene.qmdla", document});
    return files;
}

TEST(ConvertClip, MeshesAreShownAndHidden)
{
    for (const char* const path : {"Meshes[0].IsVisible", "MeshNodeVisibilities[\"node\"].IsVisible"}) {
        ExportedFiles files = HidingFiles(path);
        ModelOf(files).Meshes[0].IsVisible = false; // it will be seen later, so it is not left out
        const Converted converted = Convert(files);
        EXPECT_EQ(converted.File.Root.at("nodes").dump(),
                  R"([{"name":"node","children":[1]},)"
                  R"({"name":"node_0","mesh":0,"extensions":{"KHR_node_visibility":{"visible":false}}}])")
            << path;
        const std::vector<Channel> channels = ChannelsOf(converted.File);
        ASSERT_EQ(channels.size(), 1U) << path;
        EXPECT_EQ(channels[0].Target, "/nodes/1/extensions/KHR_node_visibility/visible");
        EXPECT_EQ(channels[0].Interpolation, "STEP");
        EXPECT_THAT(channels[0].Times, Pointwise(DoubleNear(1e-6), std::vector{0.0, 0.5, 2 / 3.0}));
        EXPECT_THAT(channels[0].Values, ElementsAre(0, 1, 0));
        EXPECT_EQ(converted.File.Root.at("extensionsUsed").dump(),
                  R"(["KHR_node_visibility","KHR_animation_pointer"])");
        EXPECT_THAT(converted.Warnings, IsEmpty()) << path;
    }
}

TEST(ConvertClip, MeshesThatTheModelLacksAreTold)
{
    for (const std::string path : {"Meshes[7].IsVisible", "MeshNodeVisibilities[\"ghost\"].IsVisible"}) {
        EXPECT_THAT(Convert(HidingFiles(path)).Warnings,
                    ElementsAre(path + ": the model has no such mesh to be shown or hidden."));
    }
}

/// The house with one member of its material animation.
ExportedFiles RoofFiles(const MemberAnimation& member)
{
    ExportedFiles files = HouseFiles({"house.qmdl", "house.qmata"});
    MaterialAnimation& animation = *files.Files[1].Content.MaterialAnimation;
    animation.Head.FrameSize = 2;
    animation.Members = {member};
    return files;
}

std::vector<std::string> WithoutModelWarnings(const Converted& converted)
{
    std::vector<std::string> warnings = converted.Warnings;
    const ExportedFiles model = HouseFiles({"house.qmdl"});
    for (const std::string& known : Convert(model).Warnings) {
        std::erase(warnings, known);
    }
    return warnings;
}

TEST(ConvertClip, ColoursOfMaterials)
{
    const struct
    {
        const char* Member;
        const char* Pointer;
        std::vector<double> Values;
    } cases[] = {
        {"Diffuse",
         "/materials/0/pbrMetallicRoughness/baseColorFactor",
         {0.8, 0, 0.2, 0.5, 0.8, 1, 0.2, 0.5}},
        {"Emission", "/materials/0/emissiveFactor", {0, 0, 0, 0, 1, 0}},
    };

    for (const auto& entry : cases) {
        MemberAnimation member = MakeMember("Materials[\"Roof\"].MaterialColor." + std::string(entry.Member),
                                            "RgbaColorAnimation");
        member.Channels[1] = MakeCurve(KeyKind::Linear, {{0, 0}, {2, 1}});
        const Converted converted = Convert(RoofFiles(member));
        const std::vector<Channel> channels = ChannelsOf(converted.File);
        ASSERT_EQ(channels.size(), 1U) << entry.Member;
        EXPECT_EQ(channels[0].Target, entry.Pointer);
        EXPECT_THAT(channels[0].Values, Pointwise(DoubleNear(1e-6), entry.Values)) << entry.Member;
        EXPECT_THAT(WithoutModelWarnings(converted), IsEmpty());
    }
}

TEST(ConvertClip, EmissionAboveOneIsItsStrength)
{
    MemberAnimation member = MakeMember("Materials[\"Roof\"].MaterialColor.Emission", "RgbaColorAnimation");
    member.Channels[0] = MakeCurve(KeyKind::Linear, {{0, 2}, {2, 8}});
    ExportedFiles files = RoofFiles(member);
    ModelOf(files).Materials[0].Emission = {2, 1, 0, 1};
    const Glb glb = Convert(files).File;
    const Json& material = glb.Root.at("materials").at(0);
    EXPECT_EQ(material.at("emissiveFactor").dump(), "[0.25,0.125,0.0]");
    EXPECT_EQ(material.at("extensions").dump(),
              R"({"KHR_materials_emissive_strength":{"emissiveStrength":8.0}})");
    const std::vector<Channel> channels = ChannelsOf(glb);
    ASSERT_EQ(channels.size(), 1U);
    EXPECT_THAT(channels[0].Values, ElementsAre(0.25, 0.125, 0, 1, 0.125, 0));
}

TEST(ConvertClip, TexturesSlide)
{
    MemberAnimation member =
        MakeMember("Materials[\"Roof\"].TextureCoordinators[0].Translate", "Vector2Animation");
    member.Channels[0] = MakeCurve(KeyKind::Linear, {{0, 0}, {2, 1}});
    ExportedFiles files = RoofFiles(member);
    TextureCoordinator& coordinator = ModelOf(files).Materials[0].Coordinators[0];
    coordinator = {0, "UvCoordinateMap", 0, "DccSoftimage", 1, 1, 0, 0, 0};
    const Glb glb = Convert(files).File;
    const std::vector<Channel> channels = ChannelsOf(glb);
    ASSERT_EQ(channels.size(), 1U);
    EXPECT_EQ(channels[0].Target,
              "/materials/0/pbrMetallicRoughness/baseColorTexture/extensions/KHR_texture_transform/offset");
    EXPECT_THAT(channels[0].Values, ElementsAre(0, 0, -0.5, 0, -1, 0));
    EXPECT_EQ(glb.Root.at("materials")
                  .at(0)
                  .at("pbrMetallicRoughness")
                  .at("baseColorTexture")
                  .at("extensions")
                  .dump(),
              R"({"KHR_texture_transform":{"offset":[0.0,0.0],"rotation":0.0,"scale":[1.0,1.0]}})");
}

TEST(ConvertClip, TexturesTurnAndGrow)
{
    MemberAnimation turn = MakeMember("Materials[\"Roof\"].TextureCoordinators[0].Rotate", "FloatAnimation");
    turn.Channels[0] = MakeCurve(KeyKind::Linear, {{0, 0}, {2, Pi}});
    ExportedFiles files = RoofFiles(turn);
    MemberAnimation grow = MakeMember("Materials[\"Roof\"].TextureCoordinators[0].Scale", "Vector2Animation");
    grow.Channels[0] = grow.Channels[1] = MakeCurve(KeyKind::Linear, {{0, 1}, {2, 3}});
    files.Files[1].Content.MaterialAnimation->Members.push_back(grow);
    ModelOf(files).Materials[0].Coordinators[0] = {0, "UvCoordinateMap", 0, "DccSoftimage", 1, 1, 0, 0, 0};
    const std::vector<Channel> channels = ChannelsOf(Convert(files).File);
    ASSERT_EQ(channels.size(), 3U);
    EXPECT_THAT(channels[1].Values,
                Pointwise(DoubleNear(1e-6), std::vector<double>{0, -0.5 * Pi, -1.0 * Pi}));
    EXPECT_THAT(channels[2].Values, Pointwise(DoubleNear(1e-6), std::vector<double>{1, 1, 2, 2, 3, 3}));
}

TEST(ConvertClip, WhatHasNoPlaceInMaterialsIsTold)
{
    const struct
    {
        std::string Path;
        const char* Warning;
    } cases[] = {
        {"Materials[\"Roof\"].MaterialColor.Ambient", "has no place in glTF and is left out."},
        {"Materials[\"Roof\"].TextureMappers[0].Texture", "has no place in glTF and is left out."},
        {"Materials[\"ghost\"].MaterialColor.Diffuse", "the model has no material of this name to be moved."},
        {"Materials[\"Roof\"].TextureCoordinators[9].Scale",
         "the material has no texture of this number to be moved."},
    };

    for (const auto& entry : cases) {
        MemberAnimation member = MakeMember(entry.Path, "FloatAnimation");
        member.Channels[0] = MakeCurve(KeyKind::Linear, {{0, 0}, {2, 1}});
        EXPECT_THAT(WithoutModelWarnings(Convert(RoofFiles(member))),
                    ElementsAre(entry.Path + ": " + entry.Warning));
    }
    MemberAnimation member =
        MakeMember("Materials[\"Roof\"].TextureCoordinators[0].Scale", "Vector2Animation");
    member.Channels[0] = MakeCurve(KeyKind::Linear, {{0, 0}, {2, 1}});
    ExportedFiles files = RoofFiles(member);
    ModelOf(files).Materials[0].Shader.Combiners.clear();
    EXPECT_THAT(Convert(files).Warnings,
                testing::Contains("Materials[\"Roof\"].TextureCoordinators[0]: moves a texture that is not "
                                  "shown; it is left out."));
}

} // namespace
} // namespace tq4x::reader::test
