#include <gtest/gtest.h>

#include <limits>

#include "GltfFile.h"
#include "gltf/MeshContent.h"
#include "gltf/SceneError.h"

namespace tq4x::gltf::test
{
namespace
{

/// Builds a file of meshes attribute by attribute.
class MeshFile
{
public:
    /// Adds float data as an accessor and answers its number.
    int Floats(const char* shape, std::size_t components, const std::vector<float>& values)
    {
        Bytes bytes;
        for (const float value : values) {
            bytes = Join({bytes, Pack(value)});
        }
        return Add(5126, shape, values.size() / components, bytes, false);
    }

    int Bytes8(const char* shape, std::size_t components, const Bytes& values, bool isNormalised)
    {
        return Add(5121, shape, values.size() / components, values, isNormalised);
    }

    Document Open(const std::string& primitives, const std::string& more = "") const
    {
        return MustOpen(WithData(m_data, R"("accessors":[)" + m_accessors +
                                             R"(],"meshes":[{"name":"Body","primitives":[)" + primitives +
                                             "]}]" + more));
    }

private:
    int Add(int type, const char* shape, std::size_t count, Bytes bytes, bool isNormalised)
    {
        bytes.resize((bytes.size() + 3) / 4 * 4);
        m_accessors += std::string(m_count == 0 ? "" : ",") + R"({"bufferView":0,"byteOffset":)" +
                       std::to_string(m_data.size()) + R"(,"componentType":)" + std::to_string(type) +
                       R"(,"count":)" + std::to_string(count) + R"(,"type":")" + shape + "\"" +
                       (isNormalised ? R"(,"normalized":true)" : "") + "}";
        m_data = Join({m_data, bytes});
        return m_count++;
    }

    Bytes m_data;
    std::string m_accessors;
    int m_count = 0;
};

struct Built
{
    MeshContent Content;
    Notes Remarks;
    std::string Error;
};

Built Build(const Document& document, std::size_t jointCount = 0)
{
    Built built;
    std::uint64_t corners = 0;
    try {
        built.Content = BuildMeshContent(document, 0, jointCount, BuildCoordinateSets(document, nullptr),
                                         corners, built.Remarks);
    } catch (const SceneError& error) {
        built.Error = error.Place + ": " + error.Text;
    }
    return built;
}

const std::vector<float> Square = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0};
const std::vector<float> Upwards = {0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1};

using Triangles32 = std::vector<std::int32_t>;

TEST(MeshContentTest, JoinsPrimitivesWithTheirMaterials)
{
    MeshFile file;
    file.Floats("VEC3", 3, Square);
    file.Floats("VEC3", 3, Upwards);
    file.Bytes8("SCALAR", 1, {0, 1, 2}, false);
    file.Bytes8("SCALAR", 1, {3, 2, 0, 0, 2, 3}, false);
    const std::string attributes = R"("attributes":{"POSITION":0,"NORMAL":1})";
    const Built built =
        Build(file.Open("{" + attributes + R"(,"indices":2,"material":1},{)" + attributes +
                            R"(,"indices":3},{)" + attributes + R"(,"indices":2,"material":1})",
                        R"(,"materials":[{},{}])"));
    ASSERT_EQ(built.Error, "");
    EXPECT_EQ(built.Content.Triangles, (Triangles32{0, 1, 2, 5, 4, 3, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(built.Content.TriangleMaterials, (Triangles32{0, 1, 1, 0}));
    EXPECT_EQ(built.Content.Materials, (std::vector<Index>{1, Index()}));
    EXPECT_EQ(built.Content.Positions.size(), 9u * 3u);
    EXPECT_EQ(std::vector<double>(built.Content.Positions.begin() + 9, built.Content.Positions.begin() + 18),
              (std::vector<double>{0, 0, 0, 1, 1, 0, 0, 1, 0}));
    EXPECT_EQ(built.Content.Normals.size(), 9u * 3u);
    EXPECT_TRUE(built.Remarks.empty());
}

TEST(MeshContentTest, MakesFlatNormalsWhereThereAreNone)
{
    MeshFile file;
    file.Floats("VEC3", 3, Square);
    file.Bytes8("SCALAR", 1, {0, 1, 2, 0, 2, 1, 0, 0, 1}, false);
    const MeshContent content = Build(file.Open(R"({"attributes":{"POSITION":0},"indices":1})")).Content;
    EXPECT_EQ(content.Triangles, (Triangles32{0, 1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(content.Normals, (std::vector<float>{0,  0, 1, 0,  0, 1, 0, 0, 1, 0, 0, -1, 0, 0,
                                                   -1, 0, 0, -1, 0, 0, 1, 0, 0, 1, 0, 0,  1}));
}

TEST(MeshContentTest, ColoursTurnTheirAlphaRound)
{
    MeshFile file;
    file.Floats("VEC3", 3, Square);
    file.Floats("VEC3", 3, Upwards);
    file.Floats("VEC4", 4, {1, 0.5f, 0, 1, 1, 0.5f, 0, 0.25f, 1, 0.5f, 0, 0, 1, 1, 1, 1});
    file.Bytes8("VEC3", 3, {255, 0, 51, 255, 0, 51, 255, 0, 51, 255, 0, 51}, true);
    const MeshContent content =
        Build(
            file.Open(
                R"({"attributes":{"POSITION":0,"NORMAL":1,"COLOR_1":3,"COLOR_0":2}},{"attributes":{"POSITION":0,"NORMAL":1}})"))
            .Content;
    ASSERT_EQ(content.Colors.size(), 2u);
    EXPECT_EQ(content.Colors[0].Name, "COLOR_0");
    EXPECT_EQ(content.Colors[0].Values,
              (std::vector<float>{1, 0.5f, 0, 0, 1, 0.5f, 0, 0.75f, 1, 0.5f, 0, 1,
                                  1, 1,    1, 0, 1, 1,    1, 0,     1, 1,    1, 0}));
    EXPECT_EQ(content.Colors[1].Name, "COLOR_1_rgb");
    EXPECT_EQ(std::vector<float>(content.Colors[1].Values.begin(), content.Colors[1].Values.begin() + 4),
              (std::vector<float>{1, 0, 0.2f, 0}));
}

TEST(MeshContentTest, CoordinatesPointUpwards)
{
    MeshFile file;
    file.Floats("VEC3", 3, Square);
    file.Floats("VEC3", 3, Upwards);
    file.Floats("VEC2", 2, {0, 0, 1, 0.25f, 1, 1, 0, 1});
    const MeshContent content =
        Build(file.Open(R"({"attributes":{"POSITION":0,"NORMAL":1,"TEXCOORD_0":2,"TEXCOORD_2":2}})")).Content;
    ASSERT_EQ(content.Coordinates.size(), 2u);
    EXPECT_EQ(content.Coordinates[0].Name, "TEXCOORD_0");
    EXPECT_EQ(content.Coordinates[1].Name, "TEXCOORD_2");
    EXPECT_EQ(content.Coordinates[0].ValueSize, 2u);
    EXPECT_EQ(content.Coordinates[0].Values, (std::vector<float>{0, 1, 1, 0.75f, 1, 0}));
}

TEST(MeshContentTest, SecondSetsRepeatTheCoordinates)
{
    MeshFile file;
    file.Floats("VEC3", 3, Square);
    file.Floats("VEC3", 3, Upwards);
    file.Floats("VEC2", 2, {0, 0, 1, 0.25f, 1, 1, 0, 1});
    const std::string attributes = R"({"attributes":{"POSITION":0,"NORMAL":1,"TEXCOORD_0":2},"material":)";
    const MeshContent content = Build(file.Open(attributes + "0}," + attributes + "1}",
                                                R"(,"images":[{"uri":"a.png"}],"samplers":[{"wrapS":33071}],
        "textures":[{"source":0},{"source":0,"sampler":0}],"materials":[
        {"pbrMetallicRoughness":{"baseColorTexture":{"index":0}}},
        {"pbrMetallicRoughness":{"baseColorTexture":{"index":1}}}])"))
                                    .Content;
    ASSERT_EQ(content.Coordinates.size(), 2u);
    EXPECT_EQ(content.Coordinates[1].Name, "TEXCOORD_0_2");
    EXPECT_EQ(content.Coordinates[1].Values, content.Coordinates[0].Values);
}

TEST(MeshContentTest, UserAttributesNameTheirShape)
{
    MeshFile file;
    file.Floats("VEC3", 3, Square);
    file.Floats("VEC3", 3, Upwards);
    file.Bytes8("SCALAR", 1, {0, 255, 51, 0}, true);
    const MeshContent content =
        Build(
            file.Open(R"({"attributes":{"POSITION":0,"NORMAL":1,"_TQ4XUSER0":1,"_TQ4XUSER2":2,"_TQ4XUSER3":1,
        "_TQ4XUSER":1,"_OTHER":1}})"))
            .Content;
    ASSERT_EQ(content.UserValues.size(), 2u);
    EXPECT_EQ(content.UserValues[0].Name, "tq4xUser0_3f");
    EXPECT_EQ(content.UserValues[0].Values, (std::vector<float>{0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0}));
    EXPECT_EQ(content.UserValues[1].Name, "tq4xUser2_1b");
    EXPECT_EQ(content.UserValues[1].Values, (std::vector<float>{0, 0, 0, 0, 1, 0, 0, 0, 0.2f, 0, 0, 0}));
}

TEST(MeshContentTest, WeightsBecomePercentages)
{
    MeshFile file;
    file.Floats("VEC3", 3, Square);
    file.Floats("VEC3", 3, Upwards);
    file.Bytes8("VEC4", 4, {0, 1, 0, 0, 1, 0, 0, 9, 1, 1, 0, 0, 0, 0, 0, 0}, false);
    file.Floats("VEC4", 4, {0.7f, 0.3f, 0, 0, 1, 0, 0, 0, 0.25f, 0.25f, 0.5f, 0, 1, 0, 0, 0});
    const Built built =
        Build(file.Open(R"({"attributes":{"POSITION":0,"NORMAL":1,"JOINTS_0":2,"WEIGHTS_0":3}})"), 3);
    ASSERT_EQ(built.Error, "");
    EXPECT_TRUE(built.Content.IsSkinned);
    ASSERT_EQ(built.Content.Weights.size(), 2u);
    using Weights = std::vector<std::pair<std::int32_t, double>>;
    EXPECT_EQ(built.Content.Weights[0].Joint, 0u);
    EXPECT_EQ(built.Content.Weights[0].Weights, (Weights{{0, 70.0}, {2, 50.0}}));
    EXPECT_EQ(built.Content.Weights[1].Weights, (Weights{{0, 30.0}, {1, 100.0}, {2, 50.0}}));
    ASSERT_EQ(built.Remarks.size(), 1u);
    EXPECT_EQ(built.Remarks[0].Text, "The last triangle of a list is incomplete and left out.");
}

TEST(MeshContentTest, SeveralSetsOfWeightsAddUp)
{
    MeshFile file;
    file.Floats("VEC3", 3, Square);
    file.Floats("VEC3", 3, Upwards);
    file.Bytes8("VEC4", 4, Bytes(16, 1), false);
    file.Floats("VEC4", 4, std::vector<float>(16, 0.125f));
    const MeshContent content =
        Build(file.Open(R"({"attributes":{"POSITION":0,"NORMAL":1,"JOINTS_0":2,"WEIGHTS_0":3,
        "JOINTS_1":2,"WEIGHTS_1":3}})"),
              2)
            .Content;
    ASSERT_EQ(content.Weights.size(), 1u);
    EXPECT_EQ(content.Weights[0].Joint, 1u);
    EXPECT_EQ(content.Weights[0].Weights[2], (std::pair<std::int32_t, double>(2, 100.0)));
}

TEST(MeshContentTest, TellsWhatItChanged)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    MeshFile file;
    file.Floats("VEC3", 3, Square);
    file.Floats("VEC3", 3, {0, 0, 1, nan, 0, 1, 0, 0, 1, 0, 0, 1});
    file.Floats("VEC2", 2, {nan, 0, 1, 0, 1, 1, 0, 1});
    file.Bytes8("VEC4", 4, Bytes(16, 0), false);
    file.Floats("VEC4", 4, {0.5f, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, nan, 0, 0, 0});
    file.Bytes8("SCALAR", 1, {0, 1, 2, 3, 2, 2, 0}, false);
    const Built built = Build(file.Open(R"({"attributes":{"POSITION":0,"NORMAL":1,"TEXCOORD_0":2,"JOINTS_0":3,
        "WEIGHTS_0":4},"indices":5},{"attributes":{"POSITION":0,"NORMAL":1},"indices":5,"mode":5},{"attributes":{}})"),
                              1);
    ASSERT_EQ(built.Error, "");
    std::vector<std::string> texts;
    for (const Note& note : built.Remarks) {
        EXPECT_EQ(note.Object, "Body");
        texts.push_back(note.Text);
    }
    EXPECT_EQ(texts, (std::vector<std::string>{
                         "The last triangle of a list is incomplete and left out.",
                         "3 triangles of a strip or fan use a vertex twice and are left out.",
                         "A primitive without positions is left out.",
                         "1 normals are no numbers and were replaced.",
                         "1 normals are no numbers and were replaced.",
                         "The skin weights of 1 vertices did not sum to 1 and were scaled.",
                         "6 vertices have no skin weights.",
                     }));
    EXPECT_EQ(built.Content.Normals[3], 0.0f);
    EXPECT_EQ(built.Content.Normals[5], 1.0f);
    EXPECT_EQ(built.Content.Coordinates[0].Values[0], 0.0f);
}

TEST(MeshContentTest, RefusesWhatMakesNoSense)
{
    const float inf = std::numeric_limits<float>::infinity();
    MeshFile file;
    file.Floats("VEC3", 3, Square);
    file.Floats("VEC3", 3, {0, 0, 0, 1, 0, 0, 1, inf, 0});
    file.Bytes8("VEC4", 4, {0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 0, 0, 0, 0, 0, 0}, false);
    file.Floats("VEC4", 4, {1, 0, 0, 0, 1, 0, 0, 0, 0.5f, 0.5f, 0, 0, 1, 0, 0, 0});
    file.Bytes8("SCALAR", 1, {0, 1, 4}, false);

    const struct
    {
        const char* Primitive;
        const char* Error;
    } cases[] = {
        {R"({"attributes":{"POSITION":1}})",
         "/meshes/0/primitives/0/attributes/POSITION: Vertex 2 is not at a finite place."},
        {R"({"attributes":{"POSITION":0,"JOINTS_0":2,"WEIGHTS_0":3}})",
         "/meshes/0/primitives/0/attributes/JOINTS_0: Vertex 2 names joint 2; the skin has 2."},
        {R"({"attributes":{"POSITION":0},"indices":4})",
         "/meshes/0/primitives/0/indices: Index 4 at position 2 is out of range; the primitive has 4 "
         "vertices."},
    };

    for (const auto& entry : cases) {
        EXPECT_EQ(Build(file.Open(entry.Primitive), 2).Error, entry.Error);
    }
}

TEST(MeshContentTest, CornersOfAllMeshesAreLimited)
{
    MeshFile file;
    file.Floats("VEC3", 3, std::vector<float>(27, 1.0f));
    const Document document = file.Open(R"({"attributes":{"POSITION":0,"NORMAL":0}})");
    Notes notes;
    std::uint64_t corners = MaxCorners - 9;
    EXPECT_EQ(BuildMeshContent(document, 0, 0, {}, corners, notes).Triangles.size(), 9u);
    try {
        (void)BuildMeshContent(document, 0, 0, {}, corners, notes);
        FAIL();
    } catch (const SceneError& error) {
        EXPECT_EQ(error.Place, "/meshes/0/primitives/0");
        EXPECT_EQ(error.Text, "The meshes of the scene have more than 100000000 triangles.");
    }
}

} // namespace
} // namespace tq4x::gltf::test
