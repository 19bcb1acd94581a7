#include "scene/SkeletonDocument.h"

#include "geometry/Mesh.h"
#include "pipeline/XmlWriter.h"
#include "scene/Bone.h"
#include "scene/SkeletalModelWriter.h"
#include "support/Golden.h"

#include <map>

namespace tq4x
{
namespace
{

using namespace test;
using testing::HasSubstr;
using testing::Not;

/// Materials 0 and 2; there is none for other indices.
std::optional<MeshMaterial> FindMaterial(std::uint32_t index)
{
    if (index == 0)
        return MeshMaterial{"Wood", 12};
    if (index == 2)
        return MeshMaterial{"Glass", -1};
    return std::nullopt;
}

/// A bone with a mesh that has an empty shape for each of the material indices.
struct MeshNode
{
    tq4x::Bone Bone;
    tq4x::Mesh Mesh;

    MeshNode(const std::string& boneName, const std::string& meshName,
             const std::vector<std::uint32_t>& materialIndices)
    {
        Bone.Name = boneName;
        Mesh.NodeName = meshName;
        for (const std::uint32_t index : materialIndices)
            Mesh.Shapes[index] = std::make_unique<SeparateDataShape>();
    }
};

std::string WriteMeshesToText(const SkeletalModelWriter& content)
{
    XmlWriter stream;
    WriteMeshes(content, stream, 4, FindMaterial);
    return stream.Text();
}

TEST(WriteMeshes, TwoMaterials)
{
    MeshNode table("table", "table", {2, 0});
    table.Mesh.Shapes[2]->IsVisible = false;
    SkeletalModelWriter content;
    content.MeshEntries = {{&table.Bone, &table.Mesh, 0}};
    ExpectGolden(WriteMeshesToText(content), "core/scene/meshes-two-materials.xml");
}

TEST(WriteMeshes, CombineGroup)
{
    MeshNode lamp("lamp", "lamp", {0});
    lamp.Mesh.CombineGroup = 0;
    SkeletalModelWriter content;
    content.MeshEntries = {{&lamp.Bone, &lamp.Mesh, 5}};
    ExpectGolden(WriteMeshesToText(content), "core/scene/meshes-combine-group.xml");
    lamp.Mesh.CombineGroup = 255;
    EXPECT_THAT(WriteMeshesToText(content),
                HasSubstr("<CombineGroupName>CombineGroup255</CombineGroupName>"));
    lamp.Mesh.CombineGroup = -1;
    EXPECT_THAT(WriteMeshesToText(content), Not(HasSubstr("Combine")));
}

TEST(WriteMeshes, BindByName)
{
    // The visibilities carry the bone's name, the meshes the mesh's own, and the bone's visibility may differ
    // from the shape's. A mesh without shapes has a visibility and no mesh element.
    MeshNode door("door", "door_original", {7});
    MeshNode empty("empty", "empty", {});
    empty.Bone.IsVisible = false;
    SkeletalModelWriter content;
    content.MeshVisibilityMode = MeshVisibilityMode::BindByName;
    content.MeshEntries = {{&door.Bone, &door.Mesh, 0}, {&empty.Bone, &empty.Mesh, 1}};
    ExpectGolden(WriteMeshesToText(content), "core/scene/meshes-bind-by-name.xml");
}

TEST(WriteMeshes, NoEntries)
{
    const std::string meshes = "\t\t\t\t<Meshes>\n\t\t\t\t</Meshes>\n";
    SkeletalModelWriter content;
    EXPECT_EQ(WriteMeshesToText(content), meshes);
    content.MeshVisibilityMode = MeshVisibilityMode::BindByName;
    EXPECT_EQ(WriteMeshesToText(content),
              meshes + "\t\t\t\t<MeshNodeVisibilities>\n\t\t\t\t</MeshNodeVisibilities>\n");
}

TEST(WriteMeshes, ShapesAreCountedThroughAllEntries)
{
    MeshNode a("a", "a", {0, 1, 2});
    MeshNode b("b", "b", {2, 9});
    SkeletalModelWriter content;
    content.MeshEntries = {{&a.Bone, &a.Mesh, 0}, {&b.Bone, &b.Mesh, 3}};
    const std::string text = WriteMeshesToText(content);
    const std::string expected[] = {"Shapes[0]", "Shapes[1]", "Shapes[2]", "Shapes[3]", "Shapes[4]"};
    std::size_t place = 0;
    for (const std::string& reference : expected) {
        place = text.find("<SeparateShapeReference>" + reference + "</SeparateShapeReference>", place);
        ASSERT_NE(place, std::string::npos) << reference;
    }
    EXPECT_THAT(text, Not(HasSubstr("Shapes[5]")));
}

TEST(WriteMeshes, MaterialThatDoesNotExist)
{
    MeshNode node("node", "node", {1});
    SkeletalModelWriter content;
    content.MeshEntries = {{&node.Bone, &node.Mesh, 0}};
    const std::string text = WriteMeshesToText(content);
    EXPECT_THAT(text, HasSubstr("RenderPriority=\"0\""));
    EXPECT_THAT(text, HasSubstr("<MaterialReference>Materials[\"\"]</MaterialReference>"));
}

TEST(WriteMeshes, NamesStandUnescaped)
{
    MeshNode node("a&b", "a&b", {0});
    SkeletalModelWriter content;
    content.MeshEntries = {{&node.Bone, &node.Mesh, 0}};
    EXPECT_THAT(WriteMeshesToText(content), HasSubstr("<NodeName>a&b</NodeName>"));
}

/// Bones in the order of their names in the list.
struct Skeleton
{
    std::vector<std::unique_ptr<Bone>> Owned;
    SkeletalModelWriter Content;

    Bone& Add(const std::string& name, Bone* parent, const TransformParts& local)
    {
        Owned.push_back(std::make_unique<Bone>());
        Bone& bone = *Owned.back();
        bone.Name = name;
        bone.Parent = parent;
        bone.BoneIndex = static_cast<std::int32_t>(Content.Bones.size());
        bone.TransformSamples = {ComposeMatrix(local)};
        Content.Bones.push_back(&bone);
        return bone;
    }

    std::string Text() const
    {
        XmlWriter stream;
        WriteSkeleton(Content, stream, 4);
        return stream.Text();
    }
};

TEST(WriteSkeleton, BonesWithAndWithoutABindPose)
{
    Skeleton skeleton;
    Bone& root = skeleton.Add("root", nullptr, {{1, 1, 1}, {90, 0, 0}, {0, 5, 0}});
    root.UserData = {{"height", UserDataKind::Integer, {}, {3}, {}}};
    Bone& arm = skeleton.Add("arm", &root, {{1, 1, 1}, {0, 0, 45}, {9, 9, 9}});
    arm.HasSkinningMatrix = true;
    arm.IsNeededRendering = true;
    // 2 units along the root's own X, in the root's turned space.
    arm.BindMatrix = ComposeMatrix({{1, 1, 1}, {90, 0, 0}, {2, 5, 0}});
    Bone& mark = skeleton.Add("mark", &arm, {{2, 3, 4}, {0, 0, 180}, {1, -2, 3}});
    mark.IsNoCompress = true;
    mark.IsSegmentScaleCompensate = true;
    mark.BillboardMode = 3;
    ExpectGolden(skeleton.Text(), "core/scene/skeleton.xml");
}

TEST(WriteSkeleton, MagnifyScalesTranslationsAlone)
{
    Skeleton skeleton;
    skeleton.Content.Magnify = 2.0f;
    Bone& root = skeleton.Add("root", nullptr, {{2, 2, 2}, {0, 0, 90}, {1, -2, 3}});
    root.HasSkinningMatrix = true;
    root.BindMatrix = ComposeMatrix({{1, 1, 1}, {}, {4, 0, 0}});
    skeleton.Add("leaf", &root, {{2, 2, 2}, {0, 0, 90}, {1, -2, 3}});
    const std::string text = skeleton.Text();
    EXPECT_THAT(text, HasSubstr("<Translate X=\"8\" Y=\"0\" Z=\"0\"/>"));
    EXPECT_THAT(text, HasSubstr("\t\t\t\t\t\t\t\t<Scale X=\"2\" Y=\"2\" Z=\"2\"/>\n"
                                "\t\t\t\t\t\t\t\t<Rotate X=\"0\" Y=\"0\" Z=\"1.5708\"/>\n"
                                "\t\t\t\t\t\t\t\t<Translate X=\"2\" Y=\"-4\" Z=\"6\"/>\n"));
}

TEST(WriteSkeleton, TransformIsDecomposedAfresh)
{
    // The record's own channels were filtered; they are not what is written.
    Skeleton skeleton;
    Bone& root = skeleton.Add("root", nullptr, {{1, 1, 1}, {0, 0, 30}, {1, 2, 3}});
    root.Scale = {7, 7, 7};
    root.Rotate = {0, 0, 390};
    root.Translate = {7, 7, 7};
    const std::string text = skeleton.Text();
    EXPECT_THAT(text, HasSubstr("<Rotate X=\"0\" Y=\"0\" Z=\"0.523599\"/>"));
    EXPECT_THAT(text, Not(HasSubstr("\"7\"")));
}

TEST(WriteSkeleton, OnlyTheFirstSampleCounts)
{
    Skeleton skeleton;
    Bone& root = skeleton.Add("root", nullptr, {{1, 1, 1}, {}, {1, 2, 3}});
    root.TransformSamples.push_back(ComposeMatrix({{1, 1, 1}, {}, {4, 5, 6}}));
    EXPECT_THAT(skeleton.Text(), HasSubstr("<Translate X=\"1\" Y=\"2\" Z=\"3\"/>"));
}

TEST(WriteSkeleton, BoneWithoutSamplesRestsAtItsParent)
{
    Skeleton skeleton;
    skeleton.Add("root", nullptr, {}).TransformSamples.clear();
    EXPECT_THAT(skeleton.Text(), HasSubstr("<Scale X=\"1\" Y=\"1\" Z=\"1\"/>\n"
                                           "\t\t\t\t\t\t\t\t<Rotate X=\"0\" Y=\"0\" Z=\"0\"/>\n"
                                           "\t\t\t\t\t\t\t\t<Translate X=\"0\" Y=\"0\" Z=\"0\"/>\n"));
}

TEST(WriteSkeleton, BindPoseUnderAParentWithoutOne)
{
    // The parent's first sample takes the place of its bind pose.
    Skeleton skeleton;
    Bone& root = skeleton.Add("root", nullptr, {{1, 1, 1}, {}, {10, 0, 0}});
    Bone& bone = skeleton.Add("bone", &root, {{1, 1, 1}, {}, {99, 99, 99}});
    bone.HasSkinningMatrix = true;
    bone.BindMatrix = ComposeMatrix({{1, 1, 1}, {}, {12, 3, 4}});
    EXPECT_THAT(skeleton.Text(), HasSubstr("<Translate X=\"2\" Y=\"3\" Z=\"4\"/>"));
}

TEST(WriteSkeleton, MirroredBonesHaveANegativeZScale)
{
    Skeleton skeleton;
    skeleton.Add("root", nullptr, {{-1, 1, 1}, {}, {}});
    EXPECT_THAT(skeleton.Text(), HasSubstr("<Scale X=\"1\" Y=\"1\" Z=\"-1\"/>"));
}

TEST(WriteSkeleton, ScalingRules)
{
    const struct
    {
        std::int32_t Rule;
        const char* Word;
    } cases[] = {{0, "Standard"}, {1, "Maya"}, {2, "Softimage"}, {3, ""}, {-1, ""}};

    for (const auto& test : cases) {
        Skeleton skeleton;
        Bone& root = skeleton.Add("root", nullptr, {});
        root.ScalingRule = static_cast<ScalingRule>(test.Rule);
        skeleton.Add("leaf", &root, {}).ScalingRule = ScalingRule::Maya;
        const std::string expected = "\t\t\t\t<Skeleton RootBoneName=\"root\" ScalingRule=\"" +
                                     std::string(test.Word) + "\" IsTranslateAnimationEnabled=\"true\">\n";
        EXPECT_THAT(skeleton.Text(), testing::StartsWith(expected)) << test.Rule;
    }
}

TEST(WriteSkeleton, BillboardModes)
{
    const struct
    {
        std::int32_t Mode;
        const char* Word;
    } cases[] = {
        {0, "Off"}, {1, "World"}, {2, "WorldViewpoint"}, {3, "Screen"}, {4, "ScreenViewpoint"}, {5, "Off"},
        {6, "Off"}, {7, "Off"},   {-1, "Off"},
    };

    for (const auto& test : cases) {
        Skeleton skeleton;
        skeleton.Add("root", nullptr, {}).BillboardMode = test.Mode;
        EXPECT_THAT(skeleton.Text(), HasSubstr("BillboardMode=\"" + std::string(test.Word) + "\">"))
            << test.Mode;
    }
}

TEST(WriteContentSummary, CountsMeshEntriesNotShapes)
{
    MeshNode a("a", "a", {0, 1, 2});
    MeshNode b("b", "b", {});
    SkeletalModelWriter content;
    content.MeshEntries = {{&a.Bone, &a.Mesh, 0}, {&b.Bone, &b.Mesh, 3}};
    content.Bones = {&a.Bone, &b.Bone, nullptr};
    XmlWriter stream;
    WriteContentSummary(content, stream, 5);
    ExpectGolden(stream.Text(), "core/scene/content-summary.xml");
}

TEST(WriteContentSummary, StandsAtItsOwnLevelWhereverItIsCalled)
{
    XmlWriter stream;
    stream.Element("Outer", [&] { WriteContentSummary({}, stream, 0); });
    EXPECT_THAT(stream.Text(), testing::StartsWith("<Outer>\n\t\t<ContentSummaryMetaData>\n"));
    EXPECT_THAT(stream.Text(), testing::EndsWith("\t\t</ContentSummaryMetaData>\n</Outer>\n"));
}

} // namespace
} // namespace tq4x
