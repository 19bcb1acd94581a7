#include <gtest/gtest.h>

#include <fstream>

#include "GltfFile.h"
#include "support/TemporaryFolder.h"

namespace tq4x::gltf::test
{
namespace
{

TEST(OpenDocumentTest, ReadsTheSmallestFile)
{
    const Document document = MustOpen(WithAsset(""));
    EXPECT_TRUE(document.Nodes.empty());
    EXPECT_TRUE(document.Roots.empty());
    EXPECT_TRUE(document.Unread.empty());
}

TEST(OpenDocumentTest, ReadsEveryRecordOfANode)
{
    const Document document = MustOpen(R"({"asset":{"version":"2.0","generator":"g"},
        "extensionsUsed":["KHR_lights_punctual","KHR_node_visibility"],
        "extensions":{"KHR_lights_punctual":{"lights":[{"type":"spot","name":"l","color":[1,0.5,0],
            "intensity":7,"spot":{"innerConeAngle":0.1,"outerConeAngle":0.2}}]}},
        "cameras":[{"type":"perspective","name":"c","perspective":{"yfov":0.7,"znear":0.1,"aspectRatio":2}},
                   {"type":"orthographic","orthographic":{"xmag":2,"ymag":3,"znear":0,"zfar":9}}],
        "nodes":[{"name":"a","children":[2,1],"translation":[1,2,3],"rotation":[0,0,2,0],"scale":[4,5,6],
                  "extras":{"k":1}},
                 {"camera":1,"extensions":{"KHR_lights_punctual":{"light":0},
                  "KHR_node_visibility":{"visible":false}}},
                 {"matrix":[1,0,0,0,0,1,0,0,0,0,1,0,7,8,9,1]}],
        "scenes":[{"name":"first"},{"name":"second","nodes":[0],"extras":3}],"scene":1})");
    EXPECT_EQ(document.Generator, "g");
    EXPECT_EQ(document.SceneName, "second");
    EXPECT_EQ(document.SceneExtras, ParseJson("3"));
    EXPECT_EQ(document.Roots, (std::vector<std::size_t>{0}));
    EXPECT_EQ(NodesInOrder(document), (std::vector<std::size_t>{0, 2, 1}));
    const Node& first = document.Nodes.at(0);
    EXPECT_EQ(first.Translation, (std::array{1.0, 2.0, 3.0}));
    EXPECT_EQ(first.Rotation, (std::array{0.0, 0.0, 1.0, 0.0}));
    EXPECT_EQ(first.Scale, (std::array{4.0, 5.0, 6.0}));
    EXPECT_EQ(first.Extras, ParseJson(R"({"k":1})"));
    EXPECT_FALSE(first.Parent || first.Matrix || first.Visible || first.Light || first.Camera);
    const Node& second = document.Nodes.at(1);
    EXPECT_EQ(second.Parent, 0u);
    EXPECT_EQ(second.Camera, 1u);
    EXPECT_EQ(second.Light, 0u);
    EXPECT_EQ(second.Visible, false);
    EXPECT_EQ(document.Nodes.at(2).Matrix->at(12), 7.0);
    EXPECT_EQ(NodePath(document, 1), "a/node1");
    const Light& light = document.Lights.at(0);
    EXPECT_EQ(light.Kind, LightKind::Spot);
    EXPECT_EQ(light.Color, (std::array{1.0, 0.5, 0.0}));
    EXPECT_EQ(light.Intensity, 7.0);
    EXPECT_EQ(light.InnerConeAngle, 0.1);
    EXPECT_EQ(light.OuterConeAngle, 0.2);
    EXPECT_TRUE(document.Cameras.at(0).IsPerspective);
    EXPECT_EQ(document.Cameras.at(0).AspectRatio, 2.0);
    EXPECT_FALSE(document.Cameras.at(0).Far);
    EXPECT_EQ(document.Cameras.at(1).HalfHeight, 3.0);
    EXPECT_EQ(document.Cameras.at(1).Far, 9.0);
}

TEST(OpenDocumentTest, ReadsMaterials)
{
    const Document document =
        MustOpen(WithAsset(R"("images":[{"uri":"data:image/png;base64,QUJD","name":"i"}],
        "samplers":[{"magFilter":9728,"minFilter":9987,"wrapS":33071,"wrapT":33648}],
        "textures":[{"sampler":0,"source":0},{}],
        "materials":[{"name":"m","pbrMetallicRoughness":{"baseColorFactor":[0.1,0.2,0.3,0.4],
            "metallicFactor":0.5,"roughnessFactor":0.6,"baseColorTexture":{"index":0,"texCoord":1,
            "extensions":{"KHR_texture_transform":{"offset":[0.1,0.2],"rotation":0.3,"scale":[2,3],"texCoord":2}}}},
            "normalTexture":{"index":1,"scale":0.7},"occlusionTexture":{"index":0,"strength":0.8},
            "emissiveFactor":[1,2,3],"alphaMode":"MASK","alphaCutoff":0.9,"doubleSided":true,
            "extensions":{"KHR_materials_unlit":{},"KHR_materials_emissive_strength":{"emissiveStrength":4}}},{}])"));
    EXPECT_EQ(document.Images.at(0).Data, ToBytes("ABC"));
    EXPECT_EQ(document.Images.at(0).Uri, "");
    EXPECT_EQ(document.Samplers.at(0).WrapS, Wrap::ClampToEdge);
    EXPECT_EQ(document.Samplers.at(0).WrapT, Wrap::MirroredRepeat);
    EXPECT_FALSE(document.Textures.at(1).Source);
    const Material& material = document.Materials.at(0);
    EXPECT_EQ(material.BaseColor, (std::array{0.1, 0.2, 0.3, 0.4}));
    EXPECT_EQ(material.Metallic, 0.5);
    EXPECT_EQ(material.Roughness, 0.6);
    EXPECT_EQ(material.BaseColorTexture->CoordinateSet, 2u);
    EXPECT_EQ(material.BaseColorTexture->Transform->Offset, (std::array{0.1, 0.2}));
    EXPECT_EQ(material.BaseColorTexture->Transform->Rotation, 0.3);
    EXPECT_EQ(material.BaseColorTexture->Transform->Scale, (std::array{2.0, 3.0}));
    EXPECT_EQ(material.NormalTexture->Scale, 0.7);
    EXPECT_EQ(material.OcclusionTexture->Scale, 0.8);
    EXPECT_EQ(material.EmissiveStrength, 4.0);
    EXPECT_EQ(material.Alpha, AlphaMode::Mask);
    EXPECT_EQ(material.AlphaCutoff, 0.9);
    EXPECT_TRUE(material.DoubleSided && material.Unlit);
    const Material& plain = document.Materials.at(1);
    EXPECT_EQ(plain.BaseColor, (std::array{1.0, 1.0, 1.0, 1.0}));
    EXPECT_EQ(plain.Metallic, 1.0);
    EXPECT_EQ(plain.Alpha, AlphaMode::Opaque);
    EXPECT_FALSE(plain.DoubleSided || plain.Unlit || plain.BaseColorTexture);
}

TEST(OpenDocumentTest, SpecularAndGlossinessStandForBaseColour)
{
    const Document document = MustOpen(WithAsset(R"("extensionsUsed":["KHR_materials_pbrSpecularGlossiness"],
        "extensionsRequired":["KHR_materials_pbrSpecularGlossiness"],"images":[{"uri":"a.png"}],
        "textures":[{"source":0},{"source":0}],"materials":[{"pbrMetallicRoughness":{"baseColorFactor":[1,0,0,1],
        "baseColorTexture":{"index":0},"metallicRoughnessTexture":{"index":0}},
        "extensions":{"KHR_materials_pbrSpecularGlossiness":{"diffuseFactor":[0.1,0.2,0.3,0.4],
        "diffuseTexture":{"index":1},"specularFactor":[0.5,0.6,0.7],"glossinessFactor":0.8}}},
        {"extensions":{"KHR_materials_pbrSpecularGlossiness":{}}}])"));
    const Material& material = document.Materials.at(0);
    EXPECT_EQ(material.BaseColor, (std::array{0.1, 0.2, 0.3, 0.4}));
    EXPECT_EQ(material.BaseColorTexture->Texture, 1u);
    EXPECT_FALSE(material.MetallicRoughnessTexture);
    EXPECT_EQ(material.Gloss->Specular, (std::array{0.5, 0.6, 0.7}));
    EXPECT_EQ(material.Gloss->Glossiness, 0.8);
    EXPECT_EQ(document.Materials.at(1).Gloss->Specular, (std::array{1.0, 1.0, 1.0}));
    EXPECT_TRUE(document.Unread.empty());
}

TEST(OpenDocumentTest, DefaultSceneIsTheFirstElseAllRoots)
{
    EXPECT_EQ(MustOpen(WithAsset(R"("nodes":[{},{"children":[0]},{}],"scenes":[{"nodes":[2]},{}])")).Roots,
              (std::vector<std::size_t>{2}));
    EXPECT_EQ(MustOpen(WithAsset(R"("nodes":[{},{"children":[0]},{}])")).Roots,
              (std::vector<std::size_t>{1, 2}));
}

// A chain of 100,000 nodes, the deepest first in the file.
TEST(OpenDocumentTest, LongChainsNeedNoStack)
{
    constexpr std::size_t count = 100'000;
    std::string nodes = "{}";
    for (std::size_t i = 1; i < count; ++i) {
        nodes += R"(,{"children":[)" + std::to_string(i - 1) + "]}";
    }
    const Document document = MustOpen(WithAsset(R"("nodes":[)" + nodes + "]"));
    ASSERT_EQ(document.Roots, (std::vector<std::size_t>{count - 1}));
    EXPECT_EQ(NodesInOrder(document).size(), count);
    EXPECT_EQ(NodesInOrder(document).back(), 0u);
    EXPECT_EQ(NodePath(document, 0).substr(0, 12), ".../node15/n");
}

TEST(OpenDocumentTest, NotesWhatItDoesNotRead)
{
    const Document document = MustOpen(WithAsset(
        R"("extensionsUsed":["KHR_texture_transform","KHR_materials_clearcoat","X_y"],
        "accessors":[{"componentType":5126,"count":3,"type":"VEC3"}],
        "meshes":[{"name":"m","primitives":[{"attributes":{"POSITION":0},"targets":[{}]},
            {"attributes":{"POSITION":0},"targets":[{}]}]},
            {"primitives":[{"attributes":{"POSITION":0},"mode":0}]}])"));
    ASSERT_EQ(document.Unread.size(), 4u);

    const struct
    {
        const char* Object;
        const char* Text;
    } expected[] = {
        {"KHR_materials_clearcoat",
         "The extension KHR_materials_clearcoat is not read; what it describes is left out."},
        {"X_y", "The extension X_y is not read; what it describes is left out."},
        {"m", "Morph targets are not read; the mesh keeps its base shape."},
        {"/meshes/1", "Points and lines are left out."},
    };

    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(document.Unread[i].Object, expected[i].Object) << i;
        EXPECT_EQ(document.Unread[i].Text, expected[i].Text) << i;
        EXPECT_EQ(document.Unread[i].Severity, NoteSeverity::Warning) << i;
    }
}

// Members that stand in most of the rows below: view 0 has 48 bytes; accessor 0 has 4 float vectors, accessor
// 1 and 2 have 4 and 2 single floats.
std::string WithAccessors(const std::string& members)
{
    return WithData(Bytes(48, 0),
                    R"("accessors":[{"bufferView":0,"componentType":5126,"count":4,"type":"VEC3"},
        {"bufferView":0,"componentType":5126,"count":4,"type":"SCALAR"},
        {"bufferView":0,"componentType":5126,"count":2,"type":"SCALAR"}],)" +
                        members);
}

std::string WithAccessor(const std::string& accessor)
{
    return WithData(Bytes(48, 0), R"("accessors":[)" + accessor + "]");
}

std::string WithChannel(const std::string& sampler, const std::string& target, const std::string& more = "")
{
    return WithAccessors(
        R"("nodes":[{"name":"n"}],"materials":[{}],"animations":[{"name":"walk","samplers":[)" + sampler +
        R"(],"channels":[{"sampler":0,"target":)" + target + "}]}]" + more);
}

constexpr const char* GoodSampler = R"({"input":1,"output":0})";

struct MalformedCase
{
    const char* Name;
    std::string Json;
    const char* Error;
};

void ExpectErrors(std::span<const MalformedCase> cases)
{
    for (const MalformedCase& entry : cases) {
        EXPECT_EQ(OpenText(entry.Json).Error, entry.Error) << entry.Name;
    }
}

TEST(MalformedTest, Frame)
{
    const MalformedCase cases[] = {
        {"no JSON", "hello", "The JSON is malformed at line 1, column 1."},
        {"no object", "[]", "This must be an object."},
        {"no asset", "{}", "The member \"asset\" is missing."},
        {"no version", R"({"asset":{}})", "/asset: The member \"version\" is missing."},
        {"version is a number", R"({"asset":{"version":2.0}})", "/asset/version: This must be a text."},
        {"version 1", R"({"asset":{"version":"1.0"}})",
         "/asset/version: This is glTF 1.0; only glTF 2.0 is read."},
        {"version 20", R"({"asset":{"version":"20.0"}})",
         "/asset/version: This is glTF 20.0; only glTF 2.0 is read."},
        {"least version", R"({"asset":{"version":"2.1","minVersion":"2.1"}})",
         "/asset/minVersion: The file wants a reader of glTF 2.1; this one reads glTF 2.0."},
        {"required extension",
         WithAsset(R"("extensionsRequired":["KHR_texture_transform","KHR_draco_mesh_compression"])"),
         "/extensionsRequired: The scene requires the extension KHR_draco_mesh_compression, which is not "
         "read."},
        {"list is an object", WithAsset(R"("nodes":{})"), "/nodes: This must be an array."},
        {"item is a number", WithAsset(R"("nodes":[1])"), "/nodes/0 (node0): This must be an object."},
        {"extensions is an array", WithAsset(R"("nodes":[{"extensions":[]}])"),
         "/nodes/0/extensions (node0): This must be an object."},
    };
    ExpectErrors(cases);
}

TEST(MalformedTest, Buffers)
{
    const MalformedCase cases[] = {
        {"no length", WithAsset(R"("buffers":[{}])"), "/buffers/0: The member \"byteLength\" is missing."},
        {"negative length", WithAsset(R"("buffers":[{"byteLength":-1}])"),
         "/buffers/0/byteLength: This must be a whole number from 0 on."},
        {"broken length", WithAsset(R"("buffers":[{"byteLength":1.5}])"),
         "/buffers/0/byteLength: This must be a whole number from 0 on."},
        {"length is a text", WithAsset(R"("buffers":[{"byteLength":"1"}])"),
         "/buffers/0/byteLength: This must be a number."},
        {"no data", WithAsset(R"("buffers":[{"name":"b","byteLength":1}])"),
         "/buffers/0 (b): The buffer has no data."},
        {"short data", WithAsset(R"("buffers":[{"byteLength":4,"uri":"data:;base64,QUJD"}])"),
         "/buffers/0: The buffer should have 4 bytes; its data has 3."},
        {"huge length", WithAsset(R"("buffers":[{"byteLength":9007199254740992,"uri":"data:;base64,QUJD"}])"),
         "/buffers/0: The buffer should have 9007199254740992 bytes; its data has 3."},
        {"bad base64", WithAsset(R"("buffers":[{"byteLength":4,"uri":"data:;base64,Q!"}])"),
         "/buffers/0/uri: The data is not base64."},
        {"view without buffer", WithAsset(R"("bufferViews":[{"buffer":0,"byteLength":1}])"),
         "/bufferViews/0/buffer: There is no buffer 0; the file has 0."},
        {"view too long",
         WithData(Bytes(4, 0), "").replace(0, 0, "").substr(0, WithData(Bytes(4, 0), "").size() - 2) +
             R"(,{"buffer":0,"byteOffset":2,"byteLength":3}]})",
         "/bufferViews/1: The view would end behind its buffer of 4 bytes."},
        {"view offset is huge",
         WithData(Bytes(4, 0), "").substr(0, WithData(Bytes(4, 0), "").size() - 2) +
             R"(,{"buffer":0,"byteOffset":9007199254740992,"byteLength":9007199254740992}]})",
         "/bufferViews/1: The view would end behind its buffer of 4 bytes."},
        {"scheme", WithAsset(R"("buffers":[{"byteLength":4,"uri":"ftp:x"}])"),
         "/buffers/0/uri: The address \"ftp:x\" is refused: only relative file names are read; files below "
         "--asset-root DIR are allowed."},
    };
    ExpectErrors(cases);
}

TEST(MalformedTest, Accessors)
{
    const MalformedCase cases[] = {
        {"no view", WithAccessor(R"({"bufferView":1,"componentType":5126,"count":1,"type":"VEC3"})"),
         "/accessors/0/bufferView: There is no buffer view 1; the file has 1."},
        {"component type", WithAccessor(R"({"bufferView":0,"componentType":5124,"count":1,"type":"VEC3"})"),
         "/accessors/0/componentType: There is no component type 5124."},
        {"type", WithAccessor(R"({"bufferView":0,"componentType":5126,"count":1,"type":"VEC5"})"),
         "/accessors/0/type: There is no accessor type \"VEC5\"."},
        {"one value too many",
         WithAccessor(R"({"name":"p","bufferView":0,"componentType":5126,"count":5,"type":"VEC3"})"),
         "/accessors/0 (p): The data would end behind its buffer view of 48 bytes."},
        {"offset too far",
         WithAccessor(R"({"bufferView":0,"byteOffset":1,"componentType":5126,"count":4,"type":"VEC3"})"),
         "/accessors/0: The data would end behind its buffer view of 48 bytes."},
        {"count that overflows",
         WithAccessor(R"({"bufferView":0,"componentType":5126,"count":9007199254740992,"type":"MAT4"})"),
         "/accessors/0: The data would end behind its buffer view of 48 bytes."},
        {"offset that overflows",
         WithAccessor(
             R"({"bufferView":0,"byteOffset":9007199254740992,"componentType":5126,"count":1,"type":"MAT4"})"),
         "/accessors/0: The data would end behind its buffer view of 48 bytes."},
        {"zeros without end", WithAccessor(R"({"componentType":5126,"count":4294967295,"type":"MAT4"})"),
         "/accessors/0: The accessor stands for too many zeros; at most 16777216 are read."},
        {"more sparse values than values",
         WithAccessor(R"({"componentType":5126,"count":1,"type":"SCALAR","sparse":{"count":2}})"),
         "/accessors/0/sparse: More values are replaced than the accessor has."},
        {"sparse indices of floats",
         WithAccessor(R"({"componentType":5126,"count":2,"type":"SCALAR","sparse":{"count":1,
             "indices":{"bufferView":0,"componentType":5126},"values":{"bufferView":0}}})"),
         "/accessors/0/sparse/indices: Indices must be unsigned integers."},
        {"sparse indices too long",
         WithAccessor(R"({"componentType":5126,"count":20,"type":"SCALAR","sparse":{"count":13,
             "indices":{"bufferView":0,"componentType":5125},"values":{"bufferView":0}}})"),
         "/accessors/0/sparse/indices: The data would end behind its buffer view of 48 bytes."},
        {"sparse values too long",
         WithAccessor(R"({"componentType":5126,"count":20,"type":"VEC4","sparse":{"count":4,
             "indices":{"bufferView":0,"componentType":5121},"values":{"bufferView":0}}})"),
         "/accessors/0/sparse/values: The data would end behind its buffer view of 48 bytes."},
        {"stride smaller than a value", WithAsset(R"("buffers":[{"byteLength":3,"uri":"data:;base64,QUJD"}],
             "bufferViews":[{"buffer":0,"byteLength":3,"byteStride":4}],
             "accessors":[{"bufferView":0,"componentType":5126,"count":0,"type":"VEC2"}])"),
         "/accessors/0: The byte stride of the buffer view is smaller than one value of 8 bytes."},
    };
    ExpectErrors(cases);
}

TEST(MalformedTest, Meshes)
{
    const auto primitive = [](const std::string& text) {
        return WithAccessors(R"("meshes":[{"name":"Body","primitives":[{"attributes":{}},)" + text + "]}]");
    };
    const MalformedCase cases[] = {
        {"no attributes", primitive("{}"),
         "/meshes/0/primitives/1 (Body): The member \"attributes\" is missing."},
        {"attribute accessor", primitive(R"({"attributes":{"POSITION":9}})"),
         "/meshes/0/primitives/1/attributes/POSITION (Body): There is no accessor 9; the file has 3."},
        {"attribute shape", primitive(R"({"attributes":{"POSITION":1}})"),
         "/meshes/0/primitives/1/attributes/POSITION (Body): The accessor's type does not suit this "
         "attribute."},
        {"attribute shape of sets", primitive(R"({"attributes":{"TEXCOORD_7":0}})"),
         "/meshes/0/primitives/1/attributes/TEXCOORD_7 (Body): The accessor's type does not suit this "
         "attribute."},
        {"attribute counts", primitive(R"({"attributes":{"POSITION":0,"_A/B":2}})"),
         "/meshes/0/primitives/1/attributes/_A~1B (Body): This attribute has 2 values, another one of the "
         "primitive 4."},
        {"index accessor", primitive(R"({"attributes":{"POSITION":0},"indices":3})"),
         "/meshes/0/primitives/1/indices (Body): There is no accessor 3; the file has 3."},
        {"indices of floats", primitive(R"({"attributes":{"POSITION":0},"indices":1})"),
         "/meshes/0/primitives/1/indices (Body): Indices must be unsigned integers."},
        {"material", primitive(R"({"attributes":{"POSITION":0},"material":0})"),
         "/meshes/0/primitives/1/material (Body): There is no material 0; the file has 0."},
        {"mode", primitive(R"({"attributes":{"POSITION":0},"mode":7})"),
         "/meshes/0/primitives/1/mode (Body): There is no primitive mode 7."},
    };
    ExpectErrors(cases);
}

TEST(MalformedTest, Materials)
{
    const MalformedCase cases[] = {
        {"image without data", WithAsset(R"("images":[{}])"),
         "/images/0: An image has either a uri or a buffer view."},
        {"image with both", WithData({1}, R"("images":[{"uri":"a.png","bufferView":0}])"),
         "/images/0: An image has either a uri or a buffer view."},
        {"image outside", WithAsset(R"("images":[{"uri":"/x.png"}])"),
         "/images/0/uri: The file \"/x.png\" lies outside the folder CWD; --asset-root DIR allows another "
         "one."},
        {"image scheme", WithAsset(R"("images":[{"uri":"ftp://x/x.png"}])"),
         "/images/0/uri: The address \"ftp://x/x.png\" is refused: only relative file names are read; files "
         "below --asset-root DIR are allowed."},
        {"wrap", WithAsset(R"("samplers":[{"wrapT":1}])"), "/samplers/0/wrapT: There is no wrapping mode 1."},
        {"filter", WithAsset(R"("samplers":[{"magFilter":1}])"),
         "/samplers/0/magFilter: There is no filter 1."},
        {"source", WithAsset(R"("textures":[{"source":0}])"),
         "/textures/0/source: There is no image 0; the file has 0."},
        {"sampler", WithAsset(R"("textures":[{"sampler":0}])"),
         "/textures/0/sampler: There is no sampler 0; the file has 0."},
        {"texture", WithAsset(R"("materials":[{"name":"m","normalTexture":{"index":4}}])"),
         "/materials/0/normalTexture/index (m): There is no texture 4; the file has 0."},
        {"texture without index", WithAsset(R"("materials":[{"normalTexture":{}}])"),
         "/materials/0/normalTexture: The member \"index\" is missing."},
        {"alpha mode", WithAsset(R"("materials":[{"alphaMode":"blend"}])"),
         "/materials/0/alphaMode: There is no alpha mode \"blend\"."},
        {"colour of three",
         WithAsset(R"("materials":[{"pbrMetallicRoughness":{"baseColorFactor":[1,1,1]}}])"),
         "/materials/0/pbrMetallicRoughness/baseColorFactor: This must hold 4 numbers."},
        {"colour of texts", WithAsset(R"("materials":[{"emissiveFactor":[1,"1",1]}])"),
         "/materials/0/emissiveFactor/1: This must be a number."},
        {"switch", WithAsset(R"("materials":[{"doubleSided":1}])"),
         "/materials/0/doubleSided: This must be true or false."},
    };
    for (const MalformedCase& entry : cases) {
        std::string expected = entry.Error;
        if (const std::size_t mark = expected.find("CWD"); mark != std::string::npos) {
            expected.replace(mark, 3, std::filesystem::current_path().string());
        }
        EXPECT_EQ(OpenText(entry.Json).Error, expected) << entry.Name;
    }
}

TEST(MalformedTest, Nodes)
{
    const MalformedCase cases[] = {
        {"child", WithAsset(R"("nodes":[{"name":"a","children":[1]},{"name":"b","children":[2]}])"),
         "/nodes/1/children/0 (a/b): There is no node 2; the file has 2."},
        {"two parents", WithAsset(R"("nodes":[{"children":[2]},{"name":"b","children":[2]},{}])"),
         "/nodes/1/children/0 (b): Node 2 already is a child of node 0."},
        {"child twice", WithAsset(R"("nodes":[{"children":[1,1]},{}])"),
         "/nodes/0/children/1 (node0): Node 1 already is a child of node 0."},
        {"its own child", WithAsset(R"("nodes":[{},{"children":[1]}])"),
         "/nodes/1 (node1): The node is its own ancestor."},
        {"circle", WithAsset(R"("nodes":[{"children":[2]},{"children":[0]},{"children":[1]},{}])"),
         "/nodes/0 (node2/node1/node0): The node is its own ancestor."},
        {"matrix", WithAsset(R"("nodes":[{"matrix":[1]}])"),
         "/nodes/0/matrix (node0): This must hold 16 numbers."},
        {"rotation", WithAsset(R"("nodes":[{"rotation":[0,0,0,0]}])"),
         "/nodes/0/rotation (node0): The rotation has no direction."},
        {"mesh", WithAsset(R"("nodes":[{"mesh":0}])"),
         "/nodes/0/mesh (node0): There is no mesh 0; the file has 0."},
        {"skin", WithAsset(R"("nodes":[{"skin":0}])"),
         "/nodes/0/skin (node0): There is no skin 0; the file has 0."},
        {"camera", WithAsset(R"("nodes":[{"camera":0}])"),
         "/nodes/0/camera (node0): There is no camera 0; the file has 0."},
        {"light", WithAsset(R"("nodes":[{"extensions":{"KHR_lights_punctual":{"light":0}}}])"),
         "/nodes/0/extensions/KHR_lights_punctual/light (node0): There is no light 0; the file has 0."},
        {"camera type", WithAsset(R"("cameras":[{"type":"fish"}])"),
         "/cameras/0/type: There is no camera type \"fish\"."},
        {"camera without view", WithAsset(R"("cameras":[{"type":"perspective"}])"),
         "/cameras/0: The member \"perspective\" is missing."},
        {"light type", WithAsset(R"("extensions":{"KHR_lights_punctual":{"lights":[{"type":"area"}]}})"),
         "/extensions/KHR_lights_punctual/lights/0/type: There is no light type \"area\"."},
        {"joint", WithAsset(R"("skins":[{"name":"s","joints":[0]}])"),
         "/skins/0/joints/0 (s): There is no node 0; the file has 0."},
        {"no joints", WithAsset(R"("skins":[{}])"), "/skins/0: The member \"joints\" is missing."},
        {"bind matrices of vectors",
         WithAccessors(R"("nodes":[{}],"skins":[{"joints":[0],"inverseBindMatrices":0}])"),
         "/skins/0/inverseBindMatrices: Inverse bind matrices must be 4x4 matrices of floats."},
        {"too few bind matrices",
         WithAsset(R"("nodes":[{},{}],"accessors":[{"componentType":5126,"count":1,"type":"MAT4"}],
             "skins":[{"joints":[0,1],"inverseBindMatrices":0}])"),
         "/skins/0/inverseBindMatrices: There are 1 matrices for 2 joints."},
        {"scene", WithAsset(R"("scenes":[{}],"scene":1)"), "/scene: There is no scene 1; the file has 1."},
        {"scene node", WithAsset(R"("scenes":[{"nodes":[0]}])"),
         "/scenes/0/nodes/0: There is no node 0; the file has 0."},
        {"root with a parent", WithAsset(R"("nodes":[{"children":[1]},{}],"scenes":[{"nodes":[0,1]}])"),
         "/scenes/0/nodes/1: Node 1 has a parent, so it can't be a root."},
        {"root twice", WithAsset(R"("nodes":[{},{}],"scenes":[{"nodes":[1,0,1]}])"),
         "/scenes/0/nodes: Node 1 stands twice in the list."},
    };
    ExpectErrors(cases);
}

TEST(MalformedTest, Animations)
{
    const std::string move = R"({"node":0,"path":"translation"})";
    const MalformedCase cases[] = {
        {"input accessor", WithChannel(R"({"input":7,"output":0})", move),
         "/animations/0/samplers/0/input (walk): There is no accessor 7; the file has 3."},
        {"times of vectors", WithChannel(R"({"input":0,"output":0})", move),
         "/animations/0/samplers/0/input (walk): Key times must be single floats."},
        {"interpolation", WithChannel(R"({"input":1,"output":0,"interpolation":"BEZIER"})", move),
         "/animations/0/samplers/0/interpolation (walk): There is no interpolation \"BEZIER\"."},
        {"value shape", WithChannel(R"({"input":1,"output":1})", move),
         "/animations/0/channels/0 (walk): The type of the sampler's values does not suit the target."},
        {"value count", WithChannel(R"({"input":2,"output":0})", move),
         "/animations/0/channels/0 (walk): The sampler has 4 values for 2 key times."},
        {"value count of splines",
         WithChannel(R"({"input":1,"output":0,"interpolation":"CUBICSPLINE"})", move),
         "/animations/0/channels/0 (walk): The sampler has 4 values for 4 key times."},
        {"no sampler", WithChannel("", move),
         "/animations/0/channels/0/sampler (walk): There is no sampler 0; the file has 0."},
        {"node", WithChannel(GoodSampler, R"({"node":5,"path":"translation"})"),
         "/animations/0/channels/0/target/node (walk): There is no node 5; the file has 1."},
        {"no path", WithChannel(GoodSampler, R"({"node":0})"),
         "/animations/0/channels/0/target (walk): The member \"path\" is missing."},
        {"pointer without extension", WithChannel(GoodSampler, R"({"path":"pointer"})"),
         "/animations/0/channels/0/target (walk): The path \"pointer\" needs the extension "
         "KHR_animation_pointer."},
        {"pointer to a node that is gone",
         WithChannel(
             GoodSampler,
             R"({"path":"pointer","extensions":{"KHR_animation_pointer":{"pointer":"/nodes/1/scale"}}})"),
         "/animations/0/channels/0/target/extensions/KHR_animation_pointer/pointer (walk): The animation's "
         "target "
         "/nodes/1/scale does not exist."},
        {"pointer without a number",
         WithChannel(
             GoodSampler,
             R"({"path":"pointer","extensions":{"KHR_animation_pointer":{"pointer":"/nodes/0x/scale"}}})"),
         "/animations/0/channels/0/target/extensions/KHR_animation_pointer/pointer (walk): The animation's "
         "target "
         "/nodes/0x/scale does not exist."},
    };
    ExpectErrors(cases);
}

TEST(OpenDocumentTest, ResolvesAnimationPointers)
{
    const struct
    {
        const char* Pointer;
        int Output; // accessor of the fitting shape: 0 three floats, 1 one float, 2 two floats, 3 four floats
        AnimatedProperty Property;
        TextureSlot Slot = TextureSlot::BaseColor;
    } cases[] = {
        {"/nodes/0/translation", 0, AnimatedProperty::Translation},
        {"/nodes/0/rotation", 3, AnimatedProperty::Rotation},
        {"/nodes/0/scale", 0, AnimatedProperty::Scale},
        {"/nodes/0/extensions/KHR_node_visibility/visible", 1, AnimatedProperty::Visible},
        {"/materials/0/pbrMetallicRoughness/baseColorFactor", 3, AnimatedProperty::BaseColor},
        {"/materials/0/emissiveFactor", 0, AnimatedProperty::Emissive},
        {"/materials/0/extensions/KHR_materials_emissive_strength/emissiveStrength", 1,
         AnimatedProperty::EmissiveStrength},
        {"/materials/0/pbrMetallicRoughness/baseColorTexture/extensions/KHR_texture_transform/offset", 2,
         AnimatedProperty::TextureOffset},
        {"/materials/0/normalTexture/extensions/KHR_texture_transform/rotation", 1,
         AnimatedProperty::TextureRotation, TextureSlot::Normal},
        {"/materials/0/emissiveTexture/extensions/KHR_texture_transform/scale", 2,
         AnimatedProperty::TextureScale, TextureSlot::Emissive},
        {"/cameras/0/perspective/yfov", 1, AnimatedProperty::VerticalAngle},
        {"/cameras/0/orthographic/ymag", 1, AnimatedProperty::HalfHeight},
        {"/extensions/KHR_lights_punctual/lights/0/color", 0, AnimatedProperty::LightColor},
        {"/extensions/KHR_lights_punctual/lights/0/spot/outerConeAngle", 1, AnimatedProperty::OuterConeAngle},
    };

    for (const auto& entry : cases) {
        const Document document = MustOpen(WithAsset(
            R"("accessors":[{"componentType":5126,"count":2,"type":"VEC3"},
            {"componentType":5126,"count":2,"type":"SCALAR"},{"componentType":5126,"count":2,"type":"VEC2"},
            {"componentType":5126,"count":2,"type":"VEC4"}],"nodes":[{}],"materials":[{}],
            "cameras":[{"type":"perspective","perspective":{"yfov":1,"znear":1}}],
            "extensions":{"KHR_lights_punctual":{"lights":[{"type":"spot"}]}},
            "animations":[{"samplers":[{"input":1,"output":)" +
            std::to_string(entry.Output) +
            R"(,"interpolation":"STEP"}],"channels":[{"sampler":0,"target":{"path":"pointer","extensions":
            {"KHR_animation_pointer":{"pointer":")" +
            entry.Pointer + R"("}}}}]}])"));
        ASSERT_EQ(document.Animations.at(0).Channels.size(), 1u) << entry.Pointer;
        const AnimationChannel& channel = document.Animations[0].Channels[0];
        EXPECT_EQ(channel.Property, entry.Property) << entry.Pointer;
        EXPECT_EQ(channel.Slot, entry.Slot) << entry.Pointer;
        EXPECT_EQ(channel.Object, 0u) << entry.Pointer;
        EXPECT_EQ(document.Animations[0].Samplers[0].Shape, Interpolation::Step);
    }
}

TEST(OpenDocumentTest, ChannelsThatAreNotReadAreNoted)
{
    const struct
    {
        std::string Target;
        const char* Text;
    } cases[] = {
        {R"({"path":"translation"})", "A channel has no target."},
        {R"({"node":0,"path":"weights"})", "The animation of morph targets is not read."},
        {R"({"node":0,"path":"colour"})", "The animation of \"colour\" is not read."},
        {R"({"path":"pointer","extensions":{"KHR_animation_pointer":{"pointer":"/nodes/0/weights/1"}}})",
         "The animation of /nodes/0/weights/1 is not read."},
        {R"({"path":"pointer","extensions":{"KHR_animation_pointer":{"pointer":""}}})",
         "The animation of  is not read."},
    };

    for (const auto& entry : cases) {
        const Document document = MustOpen(WithChannel(GoodSampler, entry.Target));
        ASSERT_EQ(document.Animations.at(0).Unread.size(), 1u) << entry.Target;
        EXPECT_EQ(document.Animations[0].Unread[0].Text, entry.Text);
        EXPECT_EQ(document.Animations[0].Unread[0].Object, "/animations/0/channels/0");
        EXPECT_TRUE(document.Animations[0].Channels.empty());
    }
}

class FilesTest : public testing::Test
{
protected:
    void Write(const std::string& name, const Bytes& bytes) const
    {
        std::ofstream(m_folder / name, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }

    std::string Open(const std::string& name, const std::filesystem::path& root = {})
    {
        m_opened = OpenDocument(m_folder / name, {root});
        return m_opened.Error;
    }

    tq4x::test::TemporaryFolder m_folder;
    OpenedDocument m_opened;
};

TEST_F(FilesTest, ReadsBuffersBesideTheScene)
{
    Write("b uf.bin", {1, 2, 3, 4, 5});
    Write("scene.gltf", ToBytes(WithAsset(R"("buffers":[{"byteLength":4,"uri":"b%20uf.bin"}],
        "images":[{"uri":"pic.tga"}])")));
    EXPECT_EQ(Open("scene.gltf"), "");
    EXPECT_EQ(m_opened.Content->Buffers[0].Data, (Bytes{1, 2, 3, 4}));
    EXPECT_EQ(m_opened.Content->Images[0].File, std::filesystem::canonical(m_folder.Path()) / "pic.tga");
}

TEST_F(FilesTest, ReadsBinaryFiles)
{
    Write("scene.glb", MakeGlb(WithAsset(R"("buffers":[{"byteLength":3}])"), {1, 2, 3}));
    EXPECT_EQ(Open("scene.glb"), "");
    EXPECT_EQ(m_opened.Content->Buffers[0].Data, (Bytes{1, 2, 3}));
}

TEST_F(FilesTest, NamesWhatCantBeRead)
{
    const std::string folder = std::filesystem::canonical(m_folder.Path()).string();
    EXPECT_EQ(Open("none.gltf"), "The file " + (m_folder / "none.gltf").string() + " does not exist.");
    EXPECT_EQ(Open("."), (m_folder / ".").string() + " is not a regular file.");
    Write("empty.gltf", {});
    EXPECT_EQ(Open("empty.gltf"), "The JSON is malformed at line 1, column 1.");
    Write("scene.gltf", ToBytes(WithAsset(R"("buffers":[{"byteLength":4,"uri":"none.bin"}])")));
    EXPECT_EQ(Open("scene.gltf"), "/buffers/0/uri: The file " +
                                      (std::filesystem::path(folder) / "none.bin").string() +
                                      " does not exist.");
    std::filesystem::create_directory(m_folder / "none.bin");
    EXPECT_EQ(Open("scene.gltf"), "/buffers/0/uri: " + (std::filesystem::path(folder) / "none.bin").string() +
                                      " is not a regular file.");
}

TEST_F(FilesTest, AssetRootLetsFilesLieElsewhere)
{
    std::filesystem::create_directory(m_folder / "in");
    Write("data.bin", {1});
    Write("in/scene.gltf", ToBytes(WithAsset(R"("buffers":[{"byteLength":1,"uri":"../data.bin"}])")));
    EXPECT_NE(Open("in/scene.gltf").find("--asset-root DIR"), std::string::npos);
    EXPECT_EQ(Open("in/scene.gltf", m_folder.Path()), "");
}

} // namespace
} // namespace tq4x::gltf::test
