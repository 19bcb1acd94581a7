#include <gtest/gtest.h>

#include <filesystem>

#include "gltf/AnimationTrack.h"
#include "gltf/DecodeImage.h"
#include "gltf/OpenDocument.h"
#include "gltf/OpenScene.h"
#include "gltf/ReadFile.h"
#include "gltf/ReadTriangles.h"
#include "scene/Session.h"

namespace tq4x::gltf
{
namespace
{

namespace fs = std::filesystem;

const fs::path Samples = fs::path(TQ4X_SAMPLES) / "gltf";

struct Sample
{
    const char* File;
    std::size_t Nodes;
    std::size_t Depth;
    std::size_t Meshes;
    std::size_t Triangles;
    std::size_t Skins;
    std::size_t Animations;
    std::size_t Channels;
    std::size_t Materials;
    std::size_t Cameras;
    std::size_t Lights;
};

// Counted by other means from the JSON of the files.
constexpr Sample Table[] = {
    {"PlasticChair/plastic_monobloc_chair_01_1k.gltf", 1, 1, 1, 3356, 0, 0, 0, 1, 0, 0},
    {"CesiumMilkTruck/CesiumMilkTruck.glb", 6, 4, 2, 2856, 0, 1, 2, 4, 0, 0},
    {"VertexColorTest/VertexColorTest.glb", 2, 1, 2, 36, 0, 0, 0, 2, 0, 0},
    {"MultiUVTest/MultiUVTest.glb", 3, 2, 1, 12, 0, 0, 0, 1, 1, 0},
    {"TextureTransformTest/TextureTransformTest.gltf", 12, 2, 9, 18, 0, 0, 0, 9, 0, 0},
    {"NormalTangentTest/NormalTangentTest.glb", 2, 2, 1, 7774, 0, 0, 0, 1, 0, 0},
    {"AlphaBlendModeTest/AlphaBlendModeTest.glb", 9, 1, 9, 61, 0, 0, 0, 6, 0, 0},
    {"Fox/Fox.glb", 26, 9, 1, 576, 1, 3, 63, 1, 0, 0},
    {"CesiumMan/CesiumMan.glb", 22, 8, 1, 4672, 1, 1, 57, 1, 0, 0},
    {"Knight/Knight.glb", 57, 11, 15, 6952, 1, 76, 8712, 1, 0, 0},
    {"RecursiveSkeletons/RecursiveSkeletons.glb", 924, 30, 1, 76, 84, 1, 840, 1, 0, 0},
    {"InterpolationTest/InterpolationTest.glb", 12, 1, 10, 110, 0, 9, 9, 10, 0, 0},
    {"Cameras/Cameras.gltf", 3, 1, 1, 2, 0, 0, 0, 0, 2, 0},
    {"LightsPunctualLamp/LightsPunctualLamp.gltf", 8, 1, 3, 6000, 0, 0, 0, 3, 0, 5},
    {"ToyCar/ToyCar.gltf", 11, 1, 3, 108936, 0, 0, 0, 3, 8, 0},
    {"BlenderExtras/gltf_extras.glb", 1, 1, 1, 12, 0, 0, 0, 1, 0, 0},
    {"GeometryCameraLight/geometry-camera-light.glb", 6, 1, 2, 14, 0, 0, 0, 1, 2, 2},
    {"NegativeScaleTest/NegativeScaleTest.glb", 14, 2, 8, 3884, 0, 0, 0, 6, 0, 0},
    {"OrientationTest/OrientationTest.glb", 13, 1, 13, 524, 0, 0, 0, 7, 0, 0},
};

std::size_t DepthOf(const Document& document)
{
    std::vector<std::size_t> depth(document.Nodes.size());
    std::size_t deepest = 0;
    for (const std::size_t node : NodesInOrder(document)) {
        const Index parent = document.Nodes[node].Parent;
        depth[node] = parent ? depth[*parent] + 1 : 1;
        deepest = std::max(deepest, depth[node]);
    }
    return deepest;
}

std::size_t CountTriangles(const Document& document)
{
    std::size_t corners = 0;
    for (const Mesh& mesh : document.Meshes) {
        for (const Primitive& primitive : mesh.Primitives) {
            corners += ReadTriangles(document, primitive, "").Corners.size();
        }
    }
    return corners / 3;
}

std::size_t CountChannels(const Document& document)
{
    std::size_t count = 0;
    for (const Animation& animation : document.Animations) {
        count += animation.Channels.size();
    }
    return count;
}

Bytes PictureBytes(const Document& document, const Image& image)
{
    if (image.View) {
        const BufferView& view = document.Views[*image.View];
        const auto start =
            document.Buffers[view.Buffer].Data.begin() + static_cast<std::ptrdiff_t>(view.ByteOffset);
        return {start, start + static_cast<std::ptrdiff_t>(view.ByteLength)};
    }
    return image.File.empty() ? image.Data : ReadFile(image.File).Data;
}

class SamplesTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!fs::exists(Samples)) {
            GTEST_SKIP() << "NOT RUN: the sample scenes are absent; they are looked for in " << Samples;
        }
    }

    static Document Open(const char* file)
    {
        OpenedDocument opened = OpenDocument(Samples / file, {});
        EXPECT_EQ(opened.Error, "") << file;
        return opened.Content ? *std::move(opened.Content) : Document();
    }
};

TEST_F(SamplesTest, HoldWhatTheirTableSays)
{
    for (const Sample& sample : Table) {
        const Document document = Open(sample.File);
        EXPECT_EQ(document.Nodes.size(), sample.Nodes) << sample.File;
        EXPECT_EQ(DepthOf(document), sample.Depth) << sample.File;
        EXPECT_EQ(document.Meshes.size(), sample.Meshes) << sample.File;
        EXPECT_EQ(CountTriangles(document), sample.Triangles) << sample.File;
        EXPECT_EQ(document.Skins.size(), sample.Skins) << sample.File;
        EXPECT_EQ(document.Animations.size(), sample.Animations) << sample.File;
        EXPECT_EQ(CountChannels(document), sample.Channels) << sample.File;
        EXPECT_EQ(document.Materials.size(), sample.Materials) << sample.File;
        EXPECT_EQ(document.Cameras.size(), sample.Cameras) << sample.File;
        EXPECT_EQ(document.Lights.size(), sample.Lights) << sample.File;
    }
}

TEST_F(SamplesTest, AllPicturesDecode)
{
    for (const Sample& sample : Table) {
        const Document document = Open(sample.File);
        for (const Image& image : document.Images) {
            const DecodedImage decoded = DecodeImage(PictureBytes(document, image));
            EXPECT_EQ(decoded.Error, "") << sample.File << " " << image.Name << image.Uri;
            const Picture& picture = decoded.Content;
            EXPECT_EQ(picture.Pixels.size(),
                      std::size_t{picture.Width} * picture.Height * picture.ChannelSize * 4);
        }
    }
}

TEST_F(SamplesTest, AllAnimationsReadWithoutRepeatedKeys)
{
    for (const Sample& sample : Table) {
        const Document document = Open(sample.File);
        for (const Animation& animation : document.Animations) {
            for (const AnimationChannel& channel : animation.Channels) {
                std::size_t repeated = 0;
                const AnimationTrack track = ReadTrack(document, animation.Samplers[channel.Sampler],
                                                       channel.Property, 30.0, animation.Name, repeated);
                EXPECT_EQ(repeated, 0u) << sample.File << " " << animation.Name;
                EXPECT_FALSE(track.Frames.empty()) << sample.File << " " << animation.Name;
            }
        }
    }
}

std::size_t CountObjects()
{
    std::size_t count = 0;
    XSI::Host::Objects().ForEach([&](const XSI::Host::Object& object) {
        count += XSI::Host::RefOf(object).IsA(XSI::siX3DObjectID) ? 1 : 0;
    });
    return count;
}

TEST_F(SamplesTest, AllBecomeScenesOfTheHost)
{
    for (const Sample& sample : Table) {
        XSI::Host::Session::Current().Reset();
        const OpenedScene opened = OpenScene(Samples / sample.File, {});
        EXPECT_EQ(opened.Error, "") << sample.File;
        EXPECT_EQ(CountObjects(), sample.Nodes + 1) << sample.File; // and the scene root
    }
    XSI::Host::Session::Current().Reset();
}

} // namespace
} // namespace tq4x::gltf
