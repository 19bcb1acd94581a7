#include <map>
#include <random>

#include "geometry/UpdatePolygonBones.h"
#include "reader/RoundTrip.h"

namespace tq4x
{
namespace
{

using test::PrintError;
using test::WrittenScene;

/// The components of a value, as many as its slot writes.
std::vector<double> ComponentsOf(const VertexAttributeSlot& slot, std::int32_t index)
{
    std::vector<double> components;
    std::visit(
        [&](const auto& list) {
            if constexpr (!std::is_same_v<std::decay_t<decltype(list)>, std::monostate>) {
                const auto value = list.Read().at(static_cast<std::size_t>(index));
                float floats[sizeof(value) / sizeof(float)];
                std::memcpy(floats, &value, sizeof(value));
                components.assign(std::begin(floats), std::end(floats));
            }
        },
        slot.Data);
    components.resize(static_cast<std::size_t>(slot.Dimension));
    return components;
}

/// How far a number that was read may be from the one that was written: half a step of the quantisation, what
/// printing cuts off the number, the scale and the offset, and single precision in between.
double BoundOf(const reader::VertexStream& stream, double value, double offset)
{
    const double stored = value - offset;
    const bool isQuantized = stream.QuantizedMode != "Float" && stream.QuantizedMode != "Auto";
    const double step = isQuantized ? 0.5 * static_cast<double>(stream.Scale) : 0.0;
    const double single = 4e-7 * (std::abs(value) + std::abs(offset));
    return step + PrintError(stored) + PrintError(offset) + single;
}

const char* const UsageNames[] = {
    "Position",
    "Normal",
    "Tangent",
    "Color",
    "TextureCoordinate0",
    "TextureCoordinate1",
    "TextureCoordinate2",
    "BoneIndex",
    "BoneWeight",
    "UserAttribute0",
    "UserAttribute1",
    "UserAttribute2",
};

struct Worst
{
    double OfBound = 0; ///< deviation divided by its bound
    std::string Place;
};

class ShapeComparison
{
public:
    ShapeComparison(const SeparateDataShape& written, const reader::Shape& read, float magnify)
        : m_written(written),
          m_read(read),
          m_magnify(magnify)
    {}

    /// Corner by corner, in the order of sets, primitives and corners.
    Worst Run()
    {
        EXPECT_EQ(m_read.Sets.size(), m_written.PrimitiveSets.size());
        for (std::size_t i = 0; i < m_read.Sets.size(); ++i)
            CompareSet(m_written.PrimitiveSets[i], m_read.Sets[i]);
        return m_worst;
    }

private:
    void CompareSet(const PrimitiveSet& written, const reader::PrimitiveSet& read)
    {
        EXPECT_EQ(read.BoneIndexTable.size(), std::max<std::size_t>(written.BoneIndexTable.size(), 1));
        std::size_t stream = 0;
        for (const Polygon& polygon : written.Polygons) {
            const auto corners = CornersOf(m_written, polygon);
            if (corners.empty())
                continue;
            const reader::IndexStream& indices = read.Streams.at(stream++);
            ASSERT_EQ(indices.Indices.size(), corners.size());
            for (std::size_t i = 0; i < corners.size(); ++i)
                CompareCorner(corners[i], read, indices.Indices[i]);
        }
        EXPECT_EQ(stream, read.Streams.size());
    }

    void CompareCorner(const PolygonCorner& corner, const reader::PrimitiveSet& set, std::uint32_t vertex)
    {
        for (std::size_t slot = 0; slot < VertexSlotCount; ++slot) {
            const VertexSlot usage = static_cast<VertexSlot>(slot);
            const bool isWritten = usage == VertexSlot::Position || m_written.AttributeFlags[slot];
            if (!IsBoneSlot(usage) && isWritten)
                CompareValue(usage, corner[usage], vertex);
        }
        if (m_written.SkinWeights != nullptr)
            CompareWeights(corner, set, vertex);
    }

    void CompareValue(VertexSlot usage, std::int32_t index, std::uint32_t vertex)
    {
        const reader::VertexStream* const stream = reader::FindStream(m_read, UsageNames[IndexOf(usage)]);
        ASSERT_NE(stream, nullptr) << UsageNames[IndexOf(usage)];
        const std::vector<double> written = ComponentsOf(m_written.Pool[usage], index);
        ASSERT_EQ(stream->Dimension, written.size());
        for (std::size_t k = 0; k < written.size(); ++k) {
            const bool isPosition = usage == VertexSlot::Position;
            const double expected = written[k] * (isPosition ? static_cast<double>(m_magnify) : 1.0);
            const double offset = isPosition ? static_cast<double>(m_read.PositionOffset[k]) : 0.0;
            const double actual = static_cast<double>(stream->Values.at(vertex * written.size() + k));
            const double deviation = std::abs(actual - expected) / BoundOf(*stream, expected, offset);
            if (deviation > m_worst.OfBound)
                m_worst = {deviation, stream->Usage + " " + stream->QuantizedMode};
        }
    }

    void CompareWeights(const PolygonCorner& corner, const reader::PrimitiveSet& set, std::uint32_t vertex)
    {
        std::map<int, double> expected;
        for (const SkinInfluence& influence : InfluencesOf(*m_written.SkinWeights, corner))
            if (influence.Percentage > 0)
                expected[influence.Bone->BoneIndex] += influence.Percentage / 100.0;
        std::map<int, double> actual;
        for (const reader::Influence& influence : reader::InfluencesOf(m_read, set, vertex))
            actual[influence.Bone] += static_cast<double>(influence.Weight);
        ASSERT_EQ(actual.size(), expected.size());
        for (const auto& [bone, weight] : expected)
            EXPECT_NEAR(actual[bone], weight, 2e-6) << bone;
    }

    const SeparateDataShape& m_written;
    const reader::Shape& m_read;
    float m_magnify;
    Worst m_worst;
};

QuantizedMode DrawMode(std::mt19937& random, std::initializer_list<QuantizedMode> modes)
{
    return *(modes.begin() + std::uniform_int_distribution<std::size_t>(0, modes.size() - 1)(random));
}

/// Normals and coordinates that can be negative are never stored unsigned, which would cut them.
void DrawModes(Mesh& mesh, std::mt19937& random)
{
    using enum QuantizedMode;
    for (auto& [index, shape] : mesh.Shapes) {
        shape->Pool[VertexSlot::Position].QuantizedMode = DrawMode(random, {Float, Short, Byte, Auto});
        shape->Pool[VertexSlot::Normal].QuantizedMode = DrawMode(random, {Float, Short, Byte});
        shape->Pool[VertexSlot::TextureCoordinate0].QuantizedMode =
            DrawMode(random, {Float, Short, Byte, Ubyte});
        shape->Pool[VertexSlot::Color].QuantizedMode = DrawMode(random, {Float, Short, Byte, Ubyte});
        shape->Pool[VertexSlot::Color].Dimension = std::uniform_int_distribution<std::int32_t>(1, 4)(random);
        shape->Pool[VertexSlot::UserAttribute1].QuantizedMode = DrawMode(random, {Float, Short, Ubyte});
    }
}

struct GeometryCase
{
    std::uint32_t Seed = 0;
    std::size_t BoneCount = 0;
    float Magnify = 1;
};

/// Absent corner entries are for the passes' tests: here every corner has a value of every attribute.
void FillAbsentEntries(Mesh& mesh)
{
    for (auto& [index, shape] : mesh.Shapes)
        for (PolygonCorner& corner : shape->Corners)
            for (std::size_t slot = 0; slot < VertexSlotCount; ++slot)
                if (shape->Pool.Slots[slot].Size() > 0 && corner.Slots[slot] < 0)
                    corner.Slots[slot] = 0;
}

void RunGeometryCase(const GeometryCase& test, Worst& worst)
{
    std::mt19937 random(test.Seed);
    WrittenScene scene;
    scene.Options.OutputQmdl = true;
    scene.Options.Magnify = test.Magnify;
    scene.AddMaterial("material");
    test::Skeleton skeleton(test.BoneCount);
    test::RandomMeshSettings settings;
    settings.Seed = test.Seed;
    settings.BoneCount = test.BoneCount;
    settings.InfluenceCount = 1 + static_cast<std::int32_t>(test.Seed % 4);
    settings.MaterialCount = 1;
    settings.HasOddValues = false;
    Mesh mesh = test::MakeRandomMesh(settings, skeleton);
    FillAbsentEntries(mesh);
    for (const VertexSlot slot :
         {VertexSlot::Normal, VertexSlot::Color, VertexSlot::TextureCoordinate0, VertexSlot::UserAttribute1})
        for (auto& [index, shape] : mesh.Shapes)
            shape->AttributeFlags[IndexOf(slot)] = true;
    DrawModes(mesh, random);
    Bone& carrier = scene.AddBone("carrier", *scene.Content.Root);
    std::map<const Bone*, Bone*> places;
    for (std::size_t i = 0; i < skeleton.Size(); ++i)
        places[&skeleton[i]] = &scene.AddBone(skeleton[i].Name, *scene.Content.Root);
    ASSERT_EQ(places.size(), test.BoneCount);
    if (mesh.SkinWeights)
        for (SkinWeightEntry& entry : *mesh.SkinWeights)
            for (SkinInfluence& influence : entry)
                influence.Bone = places.at(influence.Bone);
    // Polygons hold their bones too; with a fresh table they are made again.
    Mesh& added = scene.AddMesh(std::move(mesh), carrier);
    for (auto& [index, shape] : added.Shapes)
        UpdateAllPolygonBones(*shape);
    ASSERT_NO_FATAL_FAILURE(scene.Write());
    const reader::Document document = scene.Read("scene.qmdl");
    ASSERT_TRUE(document.Model);
    ASSERT_EQ(document.Model->Shapes.size(), 1U);
    ASSERT_FALSE(scene.Content.Model.MeshEntries.empty());
    const SeparateDataShape& shape = *scene.Content.Model.MeshEntries[0].Mesh->Shapes.at(0);
    const Worst here = ShapeComparison(shape, document.Model->Shapes[0], test.Magnify).Run();
    EXPECT_LE(here.OfBound, 1.0) << here.Place;
    if (here.OfBound > worst.OfBound)
        worst = here;
}

TEST(RoundTripGeometry, RandomShapesReadBackWithinWhatPrintingAndQuantisationTake)
{
    Worst worst;
    for (std::uint32_t seed = 1; seed <= 24; ++seed) {
        const GeometryCase test = {seed, seed % 3 == 0 ? 0U : 4U + seed % 7 * 4U,
                                   seed % 2 == 0 ? 1.0F : 37.5F};
        SCOPED_TRACE("seed " + std::to_string(test.Seed));
        ASSERT_NO_FATAL_FAILURE(RunGeometryCase(test, worst));
    }
    EXPECT_GT(worst.OfBound, 0.1); // else the bound says nothing
    RecordProperty("worst", worst.Place + " " + std::to_string(worst.OfBound));
}

} // namespace
} // namespace tq4x
