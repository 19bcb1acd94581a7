#include "geometry/ShapeDocument.h"
#include "core/geometry/ShapeDocumentShapes.h"
#include "geometry/CollectOutputVertices.h"
#include "pipeline/XmlWriter.h"
#include "scene/SkeletalModelWriter.h"
#include "support/Golden.h"
#include "support/MessageRecorder.h"

#include <limits>
#include <random>

namespace tq4x
{
namespace
{

using namespace test;
using testing::HasSubstr;
using testing::Not;

std::string WriteToText(const SeparateDataShape& shape, float magnify = 1.0f)
{
    Bone bone;
    bone.BoneIndex = 7;
    XmlWriter stream;
    stream.AtLevel(5, [&] { WriteShape(shape, stream, bone, magnify); });
    return stream.Text();
}

void ExpectShape(const SeparateDataShape& shape, const std::string& golden, float magnify = 1.0f)
{
    ExpectGolden(WriteToText(shape, magnify), "core/geometry/" + golden + ".xml");
}

TEST(WriteShape, Unskinned)
{
    SeparateDataShape shape = MakeQuad();
    ComputeOrientedBoundingBox(shape.Pool.OrientedBoundingBox,
                               shape.Pool[VertexSlot::Position].Read<Vector3>());
    ExpectShape(shape, "shape-unskinned");
}

TEST(WriteShape, MagnifyLeavesTheBoundingBoxAlone)
{
    SeparateDataShape shape = MakeQuad();
    ComputeOrientedBoundingBox(shape.Pool.OrientedBoundingBox,
                               shape.Pool[VertexSlot::Position].Read<Vector3>());
    ExpectShape(shape, "shape-magnified", 2.0f);
}

TEST(WriteShape, EachQuantizedMode)
{
    SeparateDataShape shape = MakeQuad({QuantizedMode::Short, QuantizedMode::Byte, QuantizedMode::Byte});
    VertexAttributePool& pool = shape.Pool;
    pool[VertexSlot::Normal].Edit<Vector3>() = {{0, 0, 1}, {0, 1, 0}};
    pool[VertexSlot::Tangent].Edit<Vector3>() = {{1, 0, 0}, {0, 0, -1}};
    pool[VertexSlot::Color].Edit<Vector4>() = {{1, 0.5f, 0.25f, 1}, {0, 0, 0, 1}};
    pool[VertexSlot::Color].QuantizedMode = QuantizedMode::Ushort;
    pool[VertexSlot::TextureCoordinate1].Edit<Vector2>() = {{-0.5f, 0}, {1, 0.25f}};
    pool[VertexSlot::TextureCoordinate2].Edit<Vector2>() = {{0, 3.25f}, {-2, 0}};
    pool[VertexSlot::TextureCoordinate2].QuantizedMode = QuantizedMode::Auto;
    pool[VertexSlot::UserAttribute0].Edit<Vector4>() = {{8, -1, -1, -1}, {2, -1, -1, -1}};
    pool[VertexSlot::UserAttribute0].Dimension = 1;
    pool[VertexSlot::UserAttribute1].Edit<Vector4>() = {{1, 2, -1, 9}, {3, 4, 2, 9}};
    pool[VertexSlot::UserAttribute1].Dimension = 3;
    pool[VertexSlot::UserAttribute1].QuantizedMode = QuantizedMode::Ubyte;
    for (const VertexSlot slot :
         {VertexSlot::Tangent, VertexSlot::Color, VertexSlot::TextureCoordinate1,
          VertexSlot::TextureCoordinate2, VertexSlot::UserAttribute0, VertexSlot::UserAttribute1}) {
        shape.AttributeFlags[IndexOf(slot)] = true;
        for (PolygonCorner& corner : shape.Corners)
            corner[slot] = corner[VertexSlot::Position] % 2;
    }
    for (PolygonCorner& corner : shape.Corners)
        corner[VertexSlot::Normal] = corner[VertexSlot::Position] % 2;
    ExpectShape(shape, "shape-quantized");
}

TEST(WriteShape, ConstantsOfEachDimension)
{
    SeparateDataShape shape = MakeQuad();
    VertexAttributePool& pool = shape.Pool;
    pool[VertexSlot::TextureCoordinate0].Edit<Vector2>().assign(4, {0.3f, 0.7f});
    pool[VertexSlot::TextureCoordinate0].QuantizedMode = QuantizedMode::Byte;
    // The alpha is not written, so it does not count.
    pool[VertexSlot::Color].Edit<Vector4>() = {{0.1f, 0.2f, 0.3f, 0}, {0.1f, 0.2f, 0.3f, 1}};
    pool[VertexSlot::Color].Dimension = 3;
    // Both round to the same integer: the value before rounding is written.
    pool[VertexSlot::UserAttribute0].Edit<Vector4>() = {{0.9999f, 0, 0, 0}, {1, 0, 0, 0}};
    pool[VertexSlot::UserAttribute0].Dimension = 1;
    pool[VertexSlot::UserAttribute1].Edit<Vector4>() = {{}, {}};
    pool[VertexSlot::UserAttribute1].QuantizedMode = QuantizedMode::Short;
    for (const VertexSlot slot :
         {VertexSlot::Color, VertexSlot::UserAttribute0, VertexSlot::UserAttribute1}) {
        shape.AttributeFlags[IndexOf(slot)] = true;
        for (PolygonCorner& corner : shape.Corners)
            corner[slot] = corner[VertexSlot::Position] % 2;
    }
    ExpectShape(shape, "shape-constants");
}

/// A skinned triangle with these tuples; corner i uses entry i of both lists.
SeparateDataShape MakeSkinnedTriangle(const SkinWeightTable& table,
                                      const std::vector<std::int32_t>& boneTable,
                                      const std::vector<BoneIndexTuple>& indexTuples,
                                      const std::vector<Vector4>& weightTuples)
{
    SeparateDataShape shape = MakeEmptyShape();
    shape.SkinWeights = &table;
    shape.Pool[VertexSlot::Position].Edit<Vector3>() = {{0, 0, 0}, {2, 0, 0}, {0, 4, 0}};
    shape.BoneIndexTuples = indexTuples;
    shape.BoneWeightTuples = weightTuples;
    const auto entry = [](std::int32_t corner, std::size_t size) {
        return std::min(corner, static_cast<std::int32_t>(size) - 1);
    };
    std::vector<PolygonCorner> corners;
    for (std::int32_t i = 0; i < 3; ++i)
        corners.push_back(MakeSkinnedCorner(i, entry(i, indexTuples.size()), entry(i, weightTuples.size())));
    AddPrimitive(shape, PrimitiveMode::Triangles, corners);
    shape.PrimitiveSets[0].BoneIndexTable = boneTable;
    return shape;
}

TEST(WriteShape, RigidSkin)
{
    const SkinWeightTable table;
    SeparateDataShape shape =
        MakeSkinnedTriangle(table, {4, 2, 9}, {{2, 0, 0, 0}, {0, 0, 0, 0}, {1, 0, 0, 0}}, {{1, 0, 0, 0}});
    shape.IsRigidSkinning = true;
    ExpectShape(shape, "shape-rigid");
}

TEST(WriteShape, SmoothSkinWithASmallPalette)
{
    const SkinWeightTable table;
    ExpectShape(MakeSkinnedTriangle(table, {1, 2, 3}, {{0, 1, 2, 0}},
                                    {{0.29f, 0.71f, 0, 0}, {0, 0.5f, 0.5f, 0}, {0, 0, 1, 0}}),
                "shape-smooth-small-palette");
}

TEST(WriteShape, SmoothSkinWithALargePalette)
{
    const SkinWeightTable table;
    ExpectShape(MakeSkinnedTriangle(table, {1, 2, 3, 4, 5}, {{0, 1, 2, 3}, {4, 0, 0, 0}, {3, 4, 0, 0}},
                                    {{0.4f, 0.3f, 0.2f, 0.1f}, {1, 0, 0, 0}, {0.5f, 0.5f, 0, 0}}),
                "shape-smooth-large-palette");
}

TEST(WriteShape, WeightsKeptAsFloatsAreUnscaled)
{
    const SkinWeightTable table;
    SeparateDataShape shape =
        MakeSkinnedTriangle(table, {1, 2}, {{0, 1, 0, 0}}, {{0.25f, 0.75f, 0, 0}, {1, 0, 0, 0}});
    for (const QuantizedMode mode : {QuantizedMode::Float, QuantizedMode::Auto}) {
        shape.Pool[VertexSlot::BoneWeight].QuantizedMode = mode;
        const std::string word = mode == QuantizedMode::Float ? "Float" : "Auto";
        EXPECT_THAT(WriteToText(shape), HasSubstr("Usage=\"BoneWeight\" VertexSize=\"3\" Scale=\"1\" "
                                                  "QuantizedMode=\"" +
                                                  word + "\">\n0.25 0.75\n1 0\n1 0\n</"));
    }
}

TEST(WriteShape, WeightsAreScaledWithoutRoundingOrLimit)
{
    const SkinWeightTable table;
    SeparateDataShape shape =
        MakeSkinnedTriangle(table, {1, 2}, {{0, 1, 0, 0}}, {{0.125f, 4, 0, 0}, {1, -0.5f, 0, 0}});
    EXPECT_THAT(WriteToText(shape),
                HasSubstr("Scale=\"0.01\" QuantizedMode=\"Ubyte\">\n12.5 400\n100 -50\n"));
}

TEST(WriteShape, TuplesThatDifferBehindTheWrittenComponentsMakeAStream)
{
    // Two components are written, yet the tuples are compared whole.
    const SkinWeightTable table;
    const SeparateDataShape shape = MakeSkinnedTriangle(table, {1, 2}, {{0, 1, 0, 0}, {0, 1, 5, 0}},
                                                        {{0.5f, 0.5f, 0, 0}, {0.5f, 0.5f, 0.1f, 0}});
    const std::string text = WriteToText(shape);
    EXPECT_THAT(text, HasSubstr("<Vector2VertexStreamQtr Usage=\"BoneIndex\""));
    EXPECT_THAT(text, HasSubstr("<Vector2VertexStreamQtr Usage=\"BoneWeight\""));
}

TEST(WriteShape, TuplesThatAgreeAreConstants)
{
    const SkinWeightTable table;
    const std::string text =
        WriteToText(MakeSkinnedTriangle(table, {1, 2}, {{1, 0, 0, 0}}, {{0.25f, 0.75f, 0, 0}}));
    EXPECT_THAT(text, HasSubstr("<Vector2VertexAttributeQtr Usage=\"BoneIndex\" Scale=\"1\">1 0</"));
    EXPECT_THAT(text, HasSubstr("<Vector2VertexAttributeQtr Usage=\"BoneWeight\" Scale=\"1\">0.25 0.75</"));
}

TEST(WriteShape, LargestTableOfAllSetsGivesTheDimension)
{
    const SkinWeightTable table;
    SeparateDataShape shape = MakeSkinnedTriangle(table, {1}, {{0, 1, 0, 0}}, {{0.25f, 0.75f, 0, 0}});
    shape.PrimitiveSets.emplace_back().BoneIndexTable = {1, 2};
    EXPECT_THAT(WriteToText(shape), HasSubstr("<Vector2VertexAttributeQtr Usage=\"BoneWeight\""));
    shape.PrimitiveSets.pop_back();
    EXPECT_THAT(WriteToText(shape),
                HasSubstr("<Vector1VertexAttributeQtr Usage=\"BoneWeight\" Scale=\"1\">0.25</"));
}

TEST(WriteShape, TuplesThatAreMissingAreZeros)
{
    const SkinWeightTable table;
    SeparateDataShape shape = MakeTriangle();
    shape.SkinWeights = &table;
    const std::string text = WriteToText(shape);
    EXPECT_THAT(text, HasSubstr("\t<BoneIndexTable></BoneIndexTable>\n"));
    EXPECT_THAT(text, HasSubstr("<Vector1VertexAttributeQtr Usage=\"BoneIndex\" Scale=\"1\">0</"));
    EXPECT_THAT(text, HasSubstr("<Vector1VertexAttributeQtr Usage=\"BoneWeight\" Scale=\"1\">0</"));
}

TEST(WriteShape, SeveralSetsShareTheVertices)
{
    const SkinWeightTable table;
    SeparateDataShape shape = MakeSkinnedTriangle(table, {4, 2}, {{0, 1, 0, 0}}, {{1, 0, 0, 0}});
    shape.PrimitiveSets.emplace_back().BoneIndexTable = {4, 3};
    AddPrimitive(shape, PrimitiveMode::Triangles,
                 {MakeSkinnedCorner(2, 0, 0), MakeSkinnedCorner(1, 0, 0), MakeSkinnedCorner(0, 0, 0)});
    ExpectShape(shape, "shape-two-sets");
}

TEST(WriteShape, PrimitivesOfEachMode)
{
    SeparateDataShape shape = MakeTriangle();
    AddPrimitive(shape, PrimitiveMode::Other, {});
    AddPrimitive(shape, PrimitiveMode::TriangleFan,
                 {MakeCorner(0), MakeCorner(1), MakeCorner(2), MakeCorner(1)});
    AddPrimitive(shape, PrimitiveMode::TriangleStrip, {MakeCorner(2), MakeCorner(1), MakeCorner(0)});
    AddPrimitive(shape, PrimitiveMode::LineStrip, {MakeCorner(0), MakeCorner(2)});
    AddPrimitive(shape, PrimitiveMode::Lines, {MakeCorner(1), MakeCorner(2)});
    AddPrimitive(shape, PrimitiveMode::Points, {MakeCorner(1)});
    AddPrimitive(shape, PrimitiveMode::Other, {MakeCorner(0)});
    ExpectShape(shape, "shape-primitive-modes");
}

TEST(WriteShape, ShapeWithoutVertices)
{
    SeparateDataShape shape = MakeEmptyShape();
    shape.AttributeFlags.fill(true);
    const SkinWeightTable table;
    shape.SkinWeights = &table;
    ExpectShape(shape, "shape-empty");
}

TEST(WriteShape, OneVertexIsConstant)
{
    SeparateDataShape shape =
        MakeEmptyShape({QuantizedMode::Short, QuantizedMode::Float, QuantizedMode::Float});
    shape.Pool[VertexSlot::Position].Edit<Vector3>() = {{1, 2, 3}};
    AddPrimitive(shape, PrimitiveMode::Points, {MakeCorner(0)});
    const std::string text = WriteToText(shape);
    EXPECT_THAT(text, HasSubstr("<PositionOffset X=\"1\" Y=\"2\" Z=\"3\"/>"));
    EXPECT_THAT(text, HasSubstr("<Vector3VertexAttributeQtr Usage=\"Position\" Scale=\"1\">0 0 0</"));
}

TEST(WriteShape, FlaggedSlotsWithoutEntriesHoldZeros)
{
    SeparateDataShape shape = MakeTriangle();
    shape.AttributeFlags.fill(true);
    shape.Pool[VertexSlot::Color].Edit<Vector4>() = {{1, 1, 1, 1}};
    shape.Corners[1][VertexSlot::Color] = 0;
    shape.Corners[2][VertexSlot::Color] = 1;
    const std::string text = WriteToText(shape);
    EXPECT_THAT(text, HasSubstr("Usage=\"Color\" VertexSize=\"3\" Scale=\"1\" QuantizedMode=\"Float\">\n"
                                "0 0 0 0\n1 1 1 1\n0 0 0 0\n</"));
    EXPECT_THAT(text, HasSubstr("Usage=\"Normal\" Scale=\"1\">0 0 0</"));
    EXPECT_THAT(text, HasSubstr("Usage=\"TextureCoordinate2\" Scale=\"1\">0 0</"));
    EXPECT_THAT(text, HasSubstr("Usage=\"UserAttribute2\" Scale=\"1\">0 0 0 0</"));
    EXPECT_THAT(text, Not(HasSubstr("Bone\"")));
}

TEST(WriteShape, PoolWithoutListsHoldsZeros)
{
    SeparateDataShape shape = MakeTriangle();
    shape.Pool = {};
    shape.AttributeFlags.fill(true);
    const std::string text = WriteToText(shape);
    EXPECT_THAT(text, HasSubstr("<Vector3VertexAttributeQtr Usage=\"Position\" Scale=\"1\">0 0 0</"));
    EXPECT_THAT(text, HasSubstr("<Vector4VertexAttributeQtr Usage=\"Normal\" Scale=\"1\">0 0 0 0</"));
}

TEST(WriteShape, DimensionsOutsideOneToFourAreClamped)
{
    SeparateDataShape shape = MakeTriangle();
    shape.AttributeFlags[IndexOf(VertexSlot::Color)] = true;
    shape.Pool[VertexSlot::Color].Edit<Vector4>() = {{1, 2, 3, 4}};
    for (PolygonCorner& corner : shape.Corners)
        corner[VertexSlot::Color] = 0;
    shape.Pool[VertexSlot::Color].Dimension = 9;
    EXPECT_THAT(WriteToText(shape),
                HasSubstr("<Vector4VertexAttributeQtr Usage=\"Color\" Scale=\"1\">1 2 3 4</"));
    shape.Pool[VertexSlot::Color].Dimension = 0;
    EXPECT_THAT(WriteToText(shape), HasSubstr("<Vector1VertexAttributeQtr Usage=\"Color\" Scale=\"1\">1</"));
}

TEST(WriteShape, NumbersThatAreNoneAreNeverConstant)
{
    SeparateDataShape shape = MakeTriangle();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    shape.Pool[VertexSlot::Normal].Edit<Vector3>() = {{nan, 0, 0}};
    shape.AttributeFlags[IndexOf(VertexSlot::Normal)] = true;
    for (PolygonCorner& corner : shape.Corners)
        corner[VertexSlot::Normal] = 0;
    EXPECT_THAT(WriteToText(shape), HasSubstr("<Vector3VertexStreamQtr Usage=\"Normal\" VertexSize=\"3\""));
}

TEST(WriteShape, MinusZeroEqualsZero)
{
    SeparateDataShape shape = MakeTriangle();
    shape.Pool[VertexSlot::Normal].Edit<Vector3>() = {{-0.0f, 0, 1}, {0, -0.0f, 1}};
    shape.AttributeFlags[IndexOf(VertexSlot::Normal)] = true;
    for (PolygonCorner& corner : shape.Corners)
        corner[VertexSlot::Normal] = corner[VertexSlot::Position] % 2;
    EXPECT_THAT(WriteToText(shape),
                HasSubstr("<Vector3VertexAttributeQtr Usage=\"Normal\" Scale=\"1\">0 0 1</"));
}

TEST(WriteShape, ConstancyIsExactWhereTheTextIsNot)
{
    SeparateDataShape shape = MakeTriangle();
    shape.Pool[VertexSlot::Normal].Edit<Vector3>() = {{1, 0, 1e-7f}, {1, 0, 0}};
    shape.AttributeFlags[IndexOf(VertexSlot::Normal)] = true;
    for (PolygonCorner& corner : shape.Corners)
        corner[VertexSlot::Normal] = corner[VertexSlot::Position] % 2;
    EXPECT_THAT(WriteToText(shape), HasSubstr("Usage=\"Normal\" VertexSize=\"3\" Scale=\"1\" "
                                              "QuantizedMode=\"Float\">\n1 0 0\n1 0 0\n1 0 0\n</"));
}

TEST(WriteShape, ScaleOfTinyShapesIsNotSnapped)
{
    SeparateDataShape shape = MakeTriangle({{0, 0, 0}, {2e-4f, 0, 0}, {0, 2e-4f, 0}});
    shape.Pool[VertexSlot::Position].QuantizedMode = QuantizedMode::Short;
    EXPECT_THAT(WriteToText(shape), HasSubstr("Usage=\"Position\" VertexSize=\"3\" Scale=\"3.05185e-09\" "
                                              "QuantizedMode=\"Short\">\n-32767 -32767 0\n"));
}

TEST(WriteShape, MiddleWithinALimitOfZeroCountsAsZero)
{
    const SeparateDataShape near = MakeTriangle({{-1, 0, 0}, {1.0000017f, 0, 0}, {0, 4, 0}});
    EXPECT_THAT(WriteToText(near), HasSubstr("<PositionOffset X=\"0\" Y=\"2\" Z=\"0\"/>"));
    EXPECT_THAT(WriteToText(near, 1e6f), HasSubstr("<PositionOffset X=\"0\" Y=\"2e+06\" Z=\"0\"/>"));
    const SeparateDataShape far = MakeTriangle({{-1, 0, 0}, {1.0000024f, 0, 0}, {0, 4, 0}});
    EXPECT_THAT(WriteToText(far, 1e6f), HasSubstr("<PositionOffset X=\"1.19209\" Y=\"2e+06\" Z=\"0\"/>"));
}

TEST(WriteShape, PositionsAreOffsetBeforeTheyAreMagnified)
{
    const SeparateDataShape shape = MakeTriangle({{10, 0, 0}, {14, 0, 0}, {10, 2, 0}});
    EXPECT_THAT(WriteToText(shape, 0.5f), HasSubstr(">\n-1 -0.5 0\n1 -0.5 0\n-1 0.5 0\n</"));
}

/// A shape of unconnected points, or of triangles over them.
SeparateDataShape MakePoints(std::int32_t count)
{
    SeparateDataShape shape = MakeEmptyShape();
    std::vector<PolygonCorner> corners;
    for (std::int32_t i = 0; i < count; ++i) {
        shape.Pool[VertexSlot::Position].Edit<Vector3>().push_back({static_cast<float>(i), 0, 0});
        corners.push_back(MakeCorner(i));
    }
    AddPrimitive(shape, PrimitiveMode::Points, corners);
    return shape;
}

TEST(WriteShape, VertexCountPicksTheIndexStream)
{
    MessageRecorder messages;

    const struct
    {
        std::int32_t Count;
        std::string Expected;
    } cases[] = {
        {256, "<UbyteIndexStreamQtr PrimitiveMode=\"Points\" Size=\"256\">0 1 2 "},
        {257, "<UshortIndexStreamQtr PrimitiveMode=\"Points\" Size=\"257\">0 1 2 "},
        {65536, "<UshortIndexStreamQtr PrimitiveMode=\"Points\" Size=\"65536\">0 1 2 "},
    };

    for (const auto& test : cases)
        EXPECT_THAT(WriteToText(MakePoints(test.Count)), HasSubstr(test.Expected)) << test.Count;
    EXPECT_THAT(MessageRecorder::Messages(), testing::IsEmpty());
}

TEST(WriteShape, MoreVerticesThanAnUnsignedShortNumbersAreWarnedAbout)
{
    MessageRecorder messages;
    EXPECT_THAT(WriteToText(MakePoints(65537)), HasSubstr(" 65535 65536</UshortIndexStreamQtr>\n"));
    EXPECT_THAT(MessageRecorder::Messages(),
                testing::ElementsAre("W Number of vertices is over 65536(Body)."));
}

TEST(WriteShape, VerticesOfAllSetsCount)
{
    SeparateDataShape shape = MakePoints(200);
    shape.PrimitiveSets.emplace_back();
    shape.Pool[VertexSlot::Normal].Edit<Vector3>() = {{0, 0, 1}};
    std::vector<PolygonCorner> corners;
    for (std::int32_t i = 0; i < 57; ++i)
        corners.push_back(MakeCorner(i, 0));
    AddPrimitive(shape, PrimitiveMode::Points, corners);
    const std::string text = WriteToText(shape);
    EXPECT_THAT(text, HasSubstr("<UshortIndexStreamQtr PrimitiveMode=\"Points\" Size=\"200\">"));
    EXPECT_THAT(text, HasSubstr("<UshortIndexStreamQtr PrimitiveMode=\"Points\" Size=\"57\">200 201 "));
}

TEST(WriteShapes, EntriesAndMaterialsInOrder)
{
    Bone first;
    first.BoneIndex = 1;
    Bone second;
    second.BoneIndex = 2;
    Mesh firstMesh;
    firstMesh.Shapes[2] =
        std::make_unique<SeparateDataShape>(MakeTriangle({{0, 0, 0}, {8, 0, 0}, {0, 8, 0}}));
    firstMesh.Shapes[0] =
        std::make_unique<SeparateDataShape>(MakeTriangle({{0, 0, 0}, {4, 0, 0}, {0, 4, 0}}));
    Mesh emptyMesh;
    Mesh secondMesh;
    secondMesh.Shapes[1] =
        std::make_unique<SeparateDataShape>(MakeTriangle({{0, 0, 0}, {6, 0, 0}, {0, 6, 0}}));
    SkeletalModelWriter content;
    content.MeshEntries = {{&first, &firstMesh, 0}, {&first, &emptyMesh, 2}, {&second, &secondMesh, 2}};
    content.Magnify = 0.5f;
    XmlWriter stream;
    WriteShapes(content, stream, 4);
    ExpectGolden(stream.Text(), "core/geometry/shapes-two-materials.xml");
}

TEST(WriteShapes, NoEntries)
{
    XmlWriter stream;
    WriteShapes({}, stream, 4);
    EXPECT_EQ(stream.Text(), "\t\t\t\t<Shapes>\n\t\t\t\t</Shapes>\n");
}

} // namespace
} // namespace tq4x
