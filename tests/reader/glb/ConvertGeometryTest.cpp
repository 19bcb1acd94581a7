#include <gmock/gmock.h>

#include <algorithm>

#include "glb/NodeMath.h"
#include "reader/glb/ReadGlb.h"
#include "support/Golden.h"

namespace tq4x::reader::test
{
namespace
{

using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pointwise;

TEST(ConvertGeometry, OneTriangle)
{
    const Converted converted = Convert(TriangleFiles());
    EXPECT_THAT(converted.Warnings, IsEmpty());
    tq4x::test::ExpectGolden(converted.File.Root.dump(1) + "\n", "reader/glb/triangle.json");
    EXPECT_THAT(converted.File.Numbers(0), ElementsAre(0, 1, 2));
    EXPECT_THAT(converted.File.Numbers(1), ElementsAre(0, 0, 0, 1, 0, 0, 0, 1, 0));
}

TEST(ConvertGeometry, EqualInputGivesEqualBytes)
{
    const std::vector<std::string> names = {"house.qmdl", "house.qskla", "house.qmata", "house.qmdla",
                                            "house.qcam", "house.qlgt",  "house.qenv"};
    const GlbResult first = ConvertToGlb(HouseFiles(names));
    const GlbResult second = ConvertToGlb(HouseFiles(names));
    EXPECT_GT(first.Glb.size(), 1000U);
    EXPECT_EQ(first.Glb, second.Glb);
    EXPECT_EQ(first.Warnings, second.Warnings);
}

TEST(ConvertGeometry, NothingAtAllIsAnEmptyScene)
{
    EXPECT_EQ(Convert({}).File.Root.dump(),
              R"({"asset":{"version":"2.0","generator":"tq4x to-gltf"},"scenes":[{}],"scene":0})");
}

TEST(ConvertGeometry, FilesWithErrorsAreRefused)
{
    ExportedFiles files = TriangleFiles();
    files.HasErrors = true;
    const GlbResult result = ConvertToGlb(files);
    EXPECT_EQ(result.Glb, "");
    EXPECT_EQ(result.Error, "The files have errors.");
}

/// The numbers of an attribute of the only primitive.
std::vector<double> Attribute(const Glb& glb, const std::string& name)
{
    return glb.Numbers(glb.Root.at("meshes").at(0).at("primitives").at(0).at("attributes").at(name));
}

TEST(ConvertGeometry, AttributesOfVertices)
{
    const struct
    {
        const char* Name;
        VertexStream Stream;
        const char* Attribute;
        const char* Type;
        std::vector<double> Expected;
    } cases[] = {
        {"lengths of normals",
         MakeStream("Normal", 3, {0, 0, 2, 0, 0.5F, 0, -3, 0, 4}),
         "NORMAL",
         "VEC3",
         {0, 0, 1, 0, 1, 0, -0.6, 0, 0.8}},
        {"normal of no length",
         MakeStream("Normal", 3, {0, 0, 0, 1, 0, 0, 1, 0, 0}),
         "NORMAL",
         "VEC3",
         {0, 0, 1, 1, 0, 0, 1, 0, 0}},
        {"colour and alpha",
         MakeStream("Color", 4, {0, 0.5F, 1, 0.25F, 2, -1, 0, 1, 0, 0, 0, 0}),
         "COLOR_0",
         "VEC4",
         {0, 0.5, 1, 0.25, 1, 0, 0, 1, 0, 0, 0, 0}},
        {"colour alone",
         MakeStream("Color", 3, {0, 0.5F, 1, 1, 0, 0, 0, 0, 0}),
         "COLOR_0",
         "VEC3",
         {0, 0.5, 1, 1, 0, 0, 0, 0, 0}},
        {"grey", MakeStream("Color", 1, {0, 0.5F, 1}), "COLOR_0", "VEC3", {0, 0, 0, 0.5, 0.5, 0.5, 1, 1, 1}},
        {"two channels",
         MakeStream("Color", 2, {0, 0.5F, 1, 0, 1, 1}),
         "COLOR_0",
         "VEC3",
         {0, 0.5, 0, 1, 0, 0, 1, 1, 0}},
        {"v points downwards",
         MakeStream("TextureCoordinate0", 2, {0, 0, 1, 0.25F, 3, -1}),
         "TEXCOORD_0",
         "VEC2",
         {0, 1, 1, 0.75, 3, 2}},
        {"sets before it",
         MakeStream("TextureCoordinate2", 2, {0, 0, 1, 0.25F, 0, 1}),
         "TEXCOORD_2",
         "VEC2",
         {0, 1, 1, 0.75, 0, 0}},
        {"sets before it are zeros",
         MakeStream("TextureCoordinate2", 2, {0, 0, 1, 0.25F, 0, 1}),
         "TEXCOORD_1",
         "VEC2",
         {0, 0, 0, 0, 0, 0}},
        {"user attribute",
         MakeStream("UserAttribute1", 1, {5, -6, 7.5F}),
         "_TQ4XUSER1",
         "SCALAR",
         {5, -6, 7.5}},
    };

    for (const auto& entry : cases) {
        ExportedFiles files = TriangleFiles();
        ModelOf(files).Shapes[0].Streams.push_back(entry.Stream);
        const Converted converted = Convert(files);
        EXPECT_THAT(Attribute(converted.File, entry.Attribute), Pointwise(DoubleNear(1e-6), entry.Expected))
            << entry.Name;
        const Json& attributes =
            converted.File.Root.at("meshes").at(0).at("primitives").at(0).at("attributes");
        const std::size_t accessor = attributes.at(entry.Attribute);
        EXPECT_EQ(converted.File.Root.at("accessors").at(accessor).at("type"), entry.Type) << entry.Name;
    }
}

TEST(ConvertGeometry, TangentsGetARightHandedThirdAxis)
{
    ExportedFiles files = TriangleFiles();
    Shape& shape = ModelOf(files).Shapes[0];
    shape.Streams.push_back(MakeStream("Tangent", 3, {2, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_FALSE(Convert(files)
                     .File.Root.at("meshes")
                     .at(0)
                     .at("primitives")
                     .at(0)
                     .at("attributes")
                     .contains("TANGENT")); // means nothing without normals
    shape.Streams.push_back(MakeStream("Normal", 3, {0, 0, 1, 0, 0, 1, 1, 0, 0}));
    // One of no length becomes some vector that is perpendicular to the normal.
    EXPECT_THAT(Attribute(Convert(files).File, "TANGENT"), ElementsAre(1, 0, 0, 1, 0, 1, 0, 1, 0, 0, 1, 1));
}

TEST(ConvertGeometry, PrimitivesBecomeTriangles)
{
    using Indices = std::vector<std::uint32_t>;

    const struct
    {
        const char* Mode;
        Indices Written;
        std::vector<double> Expected;
    } cases[] = {
        {"Triangles", {0, 1, 2, 3, 2, 1}, {0, 1, 2, 3, 2, 1}},
        {"TriangleStrip", {0, 1, 2, 3}, {0, 1, 2, 2, 1, 3}},
        {"TriangleFan", {0, 1, 2, 3}, {0, 1, 2, 0, 2, 3}},
        {"TriangleStrip", {0, 1, 2, 2, 3, 0}, {0, 1, 2, 3, 2, 0}}, // those with a vertex twice show nothing
    };

    for (const auto& entry : cases) {
        ExportedFiles files = TriangleFiles();
        Shape& shape = ModelOf(files).Shapes[0];
        shape.VertexCount = 4;
        shape.Streams = {MakeStream("Position", 3, std::vector<float>(12))};
        shape.Sets[0].Streams = {{entry.Mode, true, entry.Written, 0}};
        const Converted converted = Convert(files);
        const Json& primitive = converted.File.Root.at("meshes").at(0).at("primitives").at(0);
        std::vector<double> triangles = converted.File.Numbers(primitive.at("indices"));
        EXPECT_EQ(triangles, entry.Expected) << entry.Mode;
        EXPECT_THAT(converted.Warnings, IsEmpty()) << entry.Mode;
    }
}

TEST(ConvertGeometry, PointsAndLinesAreLeftOut)
{
    ExportedFiles files = TriangleFiles();
    ModelOf(files).Shapes[0].Sets[0].Streams = {{"Lines", true, {0, 1}, 0}};
    const Converted converted = Convert(files);
    EXPECT_FALSE(converted.File.Root.contains("meshes"));
    EXPECT_THAT(converted.Warnings, ElementsAre("\"node\": points and lines are left out."));
}

TEST(ConvertGeometry, AShapeWithoutVerticesIsLeftOut)
{
    ExportedFiles files = TriangleFiles();
    ModelOf(files).Shapes[0] = {};
    const Converted converted = Convert(files);
    EXPECT_FALSE(converted.File.Root.contains("meshes"));
    EXPECT_THAT(converted.Warnings, ElementsAre("\"node\": a shape without vertices is left out."));
}

TEST(ConvertGeometry, VerticesThatNothingDrawsAreLeftOut)
{
    ExportedFiles files = TriangleFiles();
    Shape& shape = ModelOf(files).Shapes[0];
    shape.VertexCount = 5;
    shape.Streams = {MakeStream("Position", 3, {9, 9, 9, 1, 0, 0, 2, 0, 0, 9, 9, 9, 3, 0, 0})};
    shape.Sets[0].Streams = {{"Triangles", true, {4, 1, 2}, 0}};
    const Glb glb = Convert(files).File;
    EXPECT_THAT(Attribute(glb, "POSITION"), ElementsAre(1, 0, 0, 2, 0, 0, 3, 0, 0));
    EXPECT_THAT(glb.Numbers(glb.Root.at("meshes").at(0).at("primitives").at(0).at("indices")),
                ElementsAre(2, 0, 1));
}

TEST(ConvertGeometry, ShapesOfANodeAreOneMesh)
{
    ExportedFiles files = TriangleFiles();
    Model& model = ModelOf(files);
    model.Meshes.push_back(model.Meshes[0]);
    const Glb glb = Convert(files).File;
    EXPECT_EQ(glb.Root.at("meshes").size(), 1U);
    EXPECT_EQ(glb.Root.at("meshes").at(0).at("primitives").size(), 2U);
    EXPECT_EQ(glb.Root.at("nodes").at(0).at("mesh"), 0);
}

TEST(ConvertGeometry, ASecondMeshOfABoneGetsAChild)
{
    ExportedFiles files = TriangleFiles();
    Model& model = ModelOf(files);
    model.Meshes.push_back(model.Meshes[0]);
    model.Meshes[1].NodeName = "other"; // went over to the bone that moves it
    const Glb glb = Convert(files).File;
    EXPECT_EQ(glb.Root.at("nodes").dump(),
              R"([{"name":"node","mesh":0,"children":[1]},{"name":"other","mesh":1}])");
}

TEST(ConvertGeometry, InvisibleMeshesAreLeftOut)
{
    ExportedFiles files = TriangleFiles();
    Model& model = ModelOf(files);
    model.Meshes[0].IsVisible = false;
    Converted converted = Convert(files);
    EXPECT_FALSE(converted.File.Root.contains("meshes"));
    EXPECT_THAT(converted.Warnings, ElementsAre("\"node\": the mesh is invisible and left out."));
    model.Meshes[0].IsVisible = true;
    model.NodeVisibilities = {{"other", false, 0}, {"node", false, 0}};
    EXPECT_FALSE(Convert(files).File.Root.contains("meshes"));
    model.NodeVisibilities = {{"other", false, 0}, {"node", true, 0}};
    EXPECT_TRUE(Convert(files).File.Root.contains("meshes"));
}

Bone MakeBone(const std::string& name, int parent, const Transform& local)
{
    Bone bone;
    bone.Name = name;
    bone.Parent = parent;
    bone.Local = local;
    return bone;
}

TEST(ConvertGeometry, BonesAreNodes)
{
    ExportedFiles files = TriangleFiles();
    Model& model = ModelOf(files);
    model.Bones.Bones.push_back(MakeBone("left", 0, {{1, 2, 1}, {0, 0, 0}, {0, 0, 5}}));
    model.Bones.Bones.push_back(MakeBone("hand", 1, {{1, 1, 1}, {1.5707964F, 0, 0}, {0, 0, 0}}));
    EXPECT_EQ(Convert(files).File.Root.at("nodes").dump(),
              R"([{"name":"node","children":[1],"mesh":0},)"
              R"({"name":"left","translation":[0.0,0.0,5.0],"scale":[1.0,2.0,1.0],"children":[2]},)"
              R"({"name":"hand","rotation":[0.70710677,0.0,0.0,0.70710677]}])");
}

TEST(ConvertGeometry, SeveralRootsAndAMovedModelGetANodeAbove)
{
    ExportedFiles files = TriangleFiles();
    Model& model = ModelOf(files);
    model.Root.Translate = {1, 2, 3};
    EXPECT_EQ(Convert(files).File.Root.at("nodes").at(1).dump(),
              R"({"name":"model","translation":[1.0,2.0,3.0],"children":[0]})");
    model.Root = {};
    model.Bones.Bones.push_back(MakeBone("second", -1, {}));
    const Glb glb = Convert(files).File;
    EXPECT_EQ(glb.Root.at("nodes").at(2).dump(), R"({"name":"model","children":[0,1]})");
    EXPECT_EQ(glb.Root.at("scenes").dump(), R"([{"nodes":[2]}])");
}

TEST(ConvertGeometry, ScalingRulesThatGltfLacksAreTold)
{
    const std::string warning =
        "\"child\": the scale of its parent reaches it as in glTF, not by the scaling rule of the model.";

    const struct
    {
        const char* Rule;
        bool IsCompensating;
        Vector3 Scale;
        bool IsTold;
    } cases[] = {
        {"Standard", false, {1, 2, 1}, false},  {"Softimage", false, {1, 2, 1}, true},
        {"Softimage", false, {2, 2, 2}, false}, {"Maya", true, {2, 2, 2}, true},
        {"Maya", true, {1, 1, 1}, false},       {"Maya", false, {2, 2, 2}, false},
    };

    for (const auto& entry : cases) {
        ExportedFiles files = TriangleFiles();
        Skeleton& skeleton = ModelOf(files).Bones;
        skeleton.ScalingRule = entry.Rule;
        skeleton.Bones[0].Local.Scale = entry.Scale;
        skeleton.Bones.push_back(MakeBone("child", 0, {}));
        skeleton.Bones[1].IsSegmentScaleCompensate = entry.IsCompensating;
        const std::vector<std::string> expected(entry.IsTold ? 1 : 0, warning);
        EXPECT_EQ(Convert(files).Warnings, expected) << entry.Rule;
    }
}

/// Two bones, the second turned and moved, and a shape with two sets that read the slots differently.
ExportedFiles SkinnedFiles(const std::string& mode)
{
    ExportedFiles files = TriangleFiles();
    Model& model = ModelOf(files);
    model.Bones.Bones[0].Local = {{1, 1, 1}, {0, 0, 1.5707964F}, {1, 0, 0}};
    model.Bones.Bones.push_back(MakeBone("tip", 0, {{2, 2, 2}, {0, 0, 0}, {0, 3, 0}}));
    Shape& shape = model.Shapes[0];
    shape.Streams.push_back(MakeStream("BoneIndex", 2, {0, 1, 0, 1, 1, 0}));
    shape.Streams.push_back(MakeStream("BoneWeight", 2, {0.25F, 0.75F, 1, 0, 0.5F, 0.5F}));
    shape.Sets = {{mode, {0, 1}, {{"Triangles", true, {0, 1, 2}, 0}}, 0},
                  {mode, {1, 0}, {{"Triangles", true, {1, 0, 2}, 0}}, 0}};
    return files;
}

TEST(ConvertSkin, EachSetReadsItsOwnPalette)
{
    const Glb glb = Convert(SkinnedFiles("SmoothSkinning")).File;
    const Json& primitives = glb.Root.at("meshes").at(0).at("primitives");
    ASSERT_EQ(primitives.size(), 2U);
    const auto numbers = [&](std::size_t set, const char* name) {
        return glb.Numbers(primitives.at(set).at("attributes").at(name));
    };
    EXPECT_THAT(numbers(0, "JOINTS_0"), ElementsAre(0, 1, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0));
    EXPECT_THAT(numbers(1, "JOINTS_0"), ElementsAre(1, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0));
    EXPECT_THAT(numbers(0, "WEIGHTS_0"), ElementsAre(0.25, 0.75, 0, 0, 1, 0, 0, 0, 0.5, 0.5, 0, 0));
    EXPECT_EQ(numbers(1, "WEIGHTS_0"), numbers(0, "WEIGHTS_0"));
}

TEST(ConvertSkin, WeightsSumToOneAndAJointStandsOnce)
{
    ExportedFiles files = SkinnedFiles("SmoothSkinning");
    Shape& shape = ModelOf(files).Shapes[0];
    shape.Sets.pop_back();
    shape.Streams[1].Values = {0, 0, 0, 1, 1, 1};
    shape.Streams[2].Values = {0.25F, 0.5F, 0.5F, 0.3F, 0, 0};
    const Glb glb = Convert(files).File;
    EXPECT_THAT(Attribute(glb, "JOINTS_0"), ElementsAre(0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0));
    EXPECT_THAT(Attribute(glb, "WEIGHTS_0"),
                Pointwise(DoubleNear(1e-6), std::vector<double>{1, 0, 0, 0, 0.625, 0.375, 0, 0, 1, 0, 0,
                                                                0})); // nothing moves it
}

TEST(ConvertSkin, JointsBeyondAByteTakeTwo)
{
    ExportedFiles files = SkinnedFiles("SmoothSkinning");
    Model& model = ModelOf(files);
    while (model.Bones.Bones.size() < 300) {
        model.Bones.Bones.push_back(MakeBone("b" + std::to_string(model.Bones.Bones.size()), 0, {}));
    }
    model.Shapes[0].Sets[1].BoneIndexTable = {299, 0};
    const Glb glb = Convert(files).File;
    const Json& primitives = glb.Root.at("meshes").at(0).at("primitives");
    const auto typeOf = [&](std::size_t set) {
        const std::size_t accessor = primitives.at(set).at("attributes").at("JOINTS_0");
        return glb.Root.at("accessors").at(accessor).at("componentType").get<int>();
    };
    EXPECT_EQ(typeOf(0), 5121);
    EXPECT_EQ(typeOf(1), 5123);
    EXPECT_EQ(glb.Root.at("skins").at(0).at("joints").size(), 300U);
}

/// Where vertices stand in the pose of the nodes, by the rule of glTF.
std::vector<std::vector<double>> SkinnedPositions(const Glb& glb, const std::vector<Matrix>& world)
{
    std::vector<std::vector<double>> places;
    const Json& skin = glb.Root.at("skins").at(0);
    const std::vector<double> inverses = skin.contains("inverseBindMatrices")
                                             ? glb.Numbers(skin.at("inverseBindMatrices"))
                                             : std::vector<double>();
    const std::vector<double> positions = Attribute(glb, "POSITION");
    const std::vector<double> joints = Attribute(glb, "JOINTS_0");
    const std::vector<double> weights = Attribute(glb, "WEIGHTS_0");
    for (std::size_t i = 0; i < positions.size() / 3; ++i) {
        std::vector<double> place(3);
        for (std::size_t k = 0; k < 4; ++k) {
            const std::size_t joint = static_cast<std::size_t>(joints[4 * i + k]);
            Matrix inverse = IdentityMatrix;
            std::copy_n(inverses.begin() + static_cast<std::ptrdiff_t>(inverses.empty() ? 0 : 16 * joint),
                        inverses.empty() ? 0 : 16, inverse.begin());
            const Matrix m = Multiply(world[joint], inverse);
            for (std::size_t axis = 0; axis < 3; ++axis) {
                place[axis] +=
                    weights[4 * i + k] * (m[axis] * positions[3 * i] + m[4 + axis] * positions[3 * i + 1] +
                                          m[8 + axis] * positions[3 * i + 2] + m[12 + axis]);
            }
        }
        places.push_back(place);
    }
    return places;
}

TEST(ConvertSkin, SmoothVerticesStayWhereTheyAreInTheBindPose)
{
    ExportedFiles files = SkinnedFiles("SmoothSkinning");
    ModelOf(files).Shapes[0].Sets.pop_back();
    const Glb glb = Convert(files).File;
    const Matrix root = MatrixOf(ModelOf(files).Bones.Bones[0].Local);
    const Matrix tip = Multiply(root, MatrixOf(ModelOf(files).Bones.Bones[1].Local));
    const auto places = SkinnedPositions(glb, {root, tip});
    EXPECT_THAT(places[0], Pointwise(DoubleNear(1e-6), std::vector<double>{0, 0, 0}));
    EXPECT_THAT(places[1], Pointwise(DoubleNear(1e-6), std::vector<double>{1, 0, 0}));
    EXPECT_THAT(places[2], Pointwise(DoubleNear(1e-6), std::vector<double>{0, 1, 0}));
}

TEST(ConvertSkin, RigidVerticesStandInTheSpacesOfTheirBones)
{
    ExportedFiles files = SkinnedFiles("RigidSkinning");
    Shape& shape = ModelOf(files).Shapes[0];
    shape.Sets.pop_back();
    shape.Streams[1] = MakeStream("BoneIndex", 1, {0, 1, 0});
    shape.Streams[2] = MakeStream("BoneWeight", 1, {1, 1, 1});
    const Glb glb = Convert(files).File;
    EXPECT_EQ(glb.Root.at("skins").dump(), R"([{"name":"rigid","joints":[0,1]}])");
    const Matrix root = MatrixOf(ModelOf(files).Bones.Bones[0].Local);
    const Matrix tip = Multiply(root, MatrixOf(ModelOf(files).Bones.Bones[1].Local));
    const auto places = SkinnedPositions(glb, {root, tip});
    EXPECT_THAT(places[0], Pointwise(DoubleNear(1e-6), std::vector<double>{1, 0, 0}));
    EXPECT_THAT(places[1], Pointwise(DoubleNear(1e-6), std::vector<double>{-2, 2, 0}));
    EXPECT_THAT(places[2], Pointwise(DoubleNear(1e-6), std::vector<double>{0, 0, 0}));
}

TEST(ConvertSkin, SkinnedMeshesStandOnTheFirstLevel)
{
    ExportedFiles files = SkinnedFiles("SmoothSkinning");
    Model& model = ModelOf(files);
    model.Shapes.push_back(SkinnedFiles("RigidSkinning").Files[0].Content.Model->Shapes[0]);
    model.Meshes.push_back(model.Meshes[0]);
    model.Meshes[1].Shape = 1;
    const Glb glb = Convert(files).File;
    EXPECT_EQ(glb.Root.at("scenes").dump(), R"([{"nodes":[0,2,3]}])");
    EXPECT_EQ(glb.Root.at("nodes").at(2).dump(), R"({"name":"node_skin","mesh":0,"skin":0})");
    EXPECT_EQ(glb.Root.at("nodes").at(3).dump(), R"({"name":"node_skin","mesh":1,"skin":1})");
    EXPECT_EQ(glb.Root.at("skins").at(0).at("name"), "smooth");
    EXPECT_EQ(glb.Root.at("skins").at(1).at("name"), "rigid");
}

TEST(ConvertSkin, ABindPoseWithoutAnInverseIsTold)
{
    ExportedFiles files = SkinnedFiles("SmoothSkinning");
    ModelOf(files).Bones.Bones[1].Local.Scale = {1, 0, 1};
    EXPECT_THAT(Convert(files).Warnings,
                ElementsAre("\"tip\": its bind pose has no inverse; skins don't follow it rightly."));
}

} // namespace
} // namespace tq4x::reader::test
