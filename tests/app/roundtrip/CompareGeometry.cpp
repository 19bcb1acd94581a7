#include "Compare.h"
#include "Deviations.h"
#include "ExpectedGeometry.h"
#include "WrittenShape.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tq4x::test
{
namespace
{

std::string WordOf(ExpectedShape::Skinning mode)
{
    return mode == ExpectedShape::Skinning::None    ? "None"
           : mode == ExpectedShape::Skinning::Rigid ? "RigidSkinning"
                                                    : "SmoothSkinning";
}

/// A stream of the file beside what the host has for it.
struct StreamPair
{
    Deviation* Row = nullptr;
    WrittenStream Written;
    const ExpectedStream* Wanted = nullptr;
    double Snap = 0.0; ///< numbers below this are taken for 0
};

/// One shape, its corners found in the host's mesh.
class ShapeComparison
{
public:
    ShapeComparison(const RoundTrip& trip, const reader::Shape& shape, ExpectedShape& wanted,
                    std::string place, const std::vector<int>& nodeOfBone)
        : m_trip(trip),
          m_shape(shape),
          m_wanted(wanted),
          m_place(std::move(place)),
          m_nodeOfBone(nodeOfBone)
    {}

    void Compare()
    {
        static Deviation& words = DeviationOf("shape form");
        const bool tool = m_trip.Settings.AsksForTool();
        const reader::VertexStream* position = reader::FindStream(m_shape, "Position");
        const reader::VertexStream* normal = reader::FindStream(m_shape, "Normal");
        for (const reader::PrimitiveSet& set : m_shape.Sets)
            CheckEqual(words, set.SkinningMode, WordOf(m_wanted.Mode()), m_place + ", skinning");
        if (!CheckEqual(words, position != nullptr && normal != nullptr, true, m_place + ", streams"))
            return;
        const std::string wantedPosition = tool ? "Float" : m_trip.Settings.QuantizePos;
        const std::string wantedNormal = tool ? "Float" : m_trip.Settings.QuantizeNrm;
        const bool hasModes = HasMode(*position, wantedPosition) && HasMode(*normal, wantedNormal);
        CheckEqual(words, hasModes, true, m_place + ", storage");
        m_position.emplace(*position, wantedPosition, m_shape.PositionOffset);
        m_normal.emplace(*normal, wantedNormal);
        if (!PairStreams())
            return;
        CompareTriangles();
        CompareBox();
    }

private:
    static bool HasMode(const reader::VertexStream& stream, const std::string& mode)
    {
        return stream.IsConstant || stream.QuantizedMode == mode;
    }

    bool PairStreams()
    {
        static Deviation& words = DeviationOf("shape form");
        std::size_t extra = 2; // position and normal
        for (const char* usage : {"Tangent", "BoneIndex", "BoneWeight"})
            extra += reader::FindStream(m_shape, usage) != nullptr ? 1 : 0;
        const bool hasAll = CheckEqual(words, m_shape.Streams.size(), m_wanted.Mesh().Streams.size() + extra,
                                       m_place + ", streams");
        for (const ExpectedStream& wanted : m_wanted.Mesh().Streams) {
            const reader::VertexStream* written = reader::FindStream(m_shape, wanted.Usage);
            if (!CheckEqual(words, written != nullptr && written->Dimension == wanted.Dimension, true,
                            m_place + ", " + wanted.Usage))
                return false;
            const bool isUv = wanted.Usage.starts_with("Texture");
            Deviation& row = DeviationOf(isUv                      ? "texture coordinate"
                                         : wanted.Usage == "Color" ? "vertex colour"
                                                                   : "user attribute");
            m_streams.push_back({&row, WrittenStream(*written, wanted.Mode), &wanted, isUv ? 1e-6 : 0.0});
        }
        return hasAll;
    }

    /// Each triangle must be one of the host's, each of these once. Their order is kept inside each set.
    void CompareTriangles()
    {
        static Deviation& words = DeviationOf("triangle");
        const std::vector<std::size_t>& wanted = m_wanted.Triangles();
        const std::vector<WrittenTriangle> written = ListTriangles(m_shape);
        if (!CheckEqual(words, written.size(), wanted.size(), m_place + ", count of triangles"))
            return;
        std::vector<bool> isTaken(wanted.size(), false);
        std::size_t set = 0, next = 0;
        for (const WrittenTriangle& triangle : written) {
            next = triangle.Set == set ? next : 0;
            set = triangle.Set;
            std::size_t found = FindTriangle(triangle, isTaken, next);
            if (found == wanted.size())
                found = FindTriangle(triangle, isTaken, 0);
            const bool isFound = found < wanted.size();
            CheckEqual(words, isFound, true, m_place);
            if (!isFound) // tell what is off against the one that should have come
                found = FirstFree(isTaken, next);
            CompareTriangle(triangle, wanted[found]);
            isTaken[found] = true;
            next = found + 1;
            if (!isFound)
                return;
        }
    }

    static std::size_t FirstFree(const std::vector<bool>& isTaken, std::size_t from)
    {
        const auto free =
            std::find(isTaken.begin() + static_cast<std::ptrdiff_t>(from), isTaken.end(), false);
        const auto any = free == isTaken.end() ? std::find(isTaken.begin(), isTaken.end(), false) : free;
        return static_cast<std::size_t>(any - isTaken.begin());
    }

    std::size_t FindTriangle(const WrittenTriangle& triangle, const std::vector<bool>& isTaken,
                             std::size_t from)
    {
        while (from < isTaken.size() && (isTaken[from] || !Fits(triangle, m_wanted.Triangles()[from])))
            ++from;
        return from;
    }

    bool Fits(const WrittenTriangle& triangle, std::size_t wanted)
    {
        for (std::size_t corner = 0; corner < 3; ++corner)
            if (!VisitCorner(triangle, wanted, corner, [](Deviation&, const Approx& a, const Approx& b) {
                    return Distance(a, b) <= BoundOf(a, b);
                }))
                return false;
        return true;
    }

    void CompareTriangle(const WrittenTriangle& triangle, std::size_t wanted)
    {
        for (std::size_t corner = 0; corner < 3; ++corner)
            VisitCorner(triangle, wanted, corner, [&](Deviation& row, const Approx& a, const Approx& b) {
                Check(row, a, b, m_place);
                return true;
            });
    }

    /// Calls `visit(row, written, wanted)` for all numbers of a corner, until it answers false.
    template<typename Visit>
    bool VisitCorner(const WrittenTriangle& triangle, std::size_t wanted, std::size_t corner, Visit visit)
    {
        const std::size_t written = triangle.Vertices[corner];
        const LONG vertex = m_wanted.Mesh().Vertices[wanted][corner];
        const LONG node = m_wanted.Mesh().Corners[wanted][corner];
        return VisitPlace(written, vertex, node, visit) && VisitStreams(written, node, visit) &&
               VisitWeights(triangle.Set, written, vertex, visit);
    }

    template<typename Visit>
    bool VisitPlace(std::size_t written, LONG vertex, LONG node, Visit visit)
    {
        static Deviation& positions = DeviationOf("position");
        static Deviation& normals = DeviationOf("normal");
        const Approx magnify{m_trip.Settings.Magnify, 0.0};
        const ApproxVector& position = m_wanted.Position(vertex);
        const ApproxVector& normal = m_wanted.Normal(node, vertex);
        for (std::size_t i = 0; i < 3; ++i) {
            // The middle of the shape is taken off and added again in the file.
            Approx place = position[i] * magnify;
            place.Error +=
                3.0 * SingleRounding * (std::abs(place.Value) + std::abs(m_shape.PositionOffset[i]));
            if (!visit(positions, m_position->At(written, i), place) ||
                !visit(normals, m_normal->At(written, i), normal[i]))
                return false;
        }
        return true;
    }

    template<typename Visit>
    bool VisitStreams(std::size_t written, LONG node, Visit visit)
    {
        for (const StreamPair& stream : m_streams)
            for (std::size_t i = 0; i < stream.Wanted->Dimension; ++i) {
                const float value =
                    stream.Wanted->Values.at(static_cast<std::size_t>(node) * stream.Wanted->Width + i);
                const double error = std::abs(value) < stream.Snap ? stream.Snap : 0.0;
                if (!visit(*stream.Row, stream.Written.At(written, i), Approx{value, error}))
                    return false;
            }
        return true;
    }

    template<typename Visit>
    bool VisitWeights(std::size_t set, std::size_t written, LONG vertex, Visit visit)
    {
        static Deviation& bones = DeviationOf("influences");
        static Deviation& weights = DeviationOf("weight");
        const ExpectedInfluences wanted = m_wanted.InfluencesOf(vertex);
        const std::vector<reader::Influence> influences =
            reader::InfluencesOf(m_shape, m_shape.Sets[set], written);
        const auto same = [](bool isSame) { return Approx{isSame ? 0.0 : 1.0, 0.0}; };
        if (!visit(bones, same(influences.size() == wanted.size()), Approx{}))
            return false;
        for (const reader::Influence& influence : influences) {
            const int node =
                influence.Bone >= 0 ? m_nodeOfBone[static_cast<std::size_t>(influence.Bone)] : -1;
            const auto found = std::ranges::find(wanted, node, &std::pair<int, int>::first);
            if (!visit(bones, same(found != wanted.end()), Approx{}))
                return false;
            if (found == wanted.end())
                continue;
            // Percents are divided and multiplied by 100, and printed.
            const double bound = PrintedError(influence.Weight) + 0.01 * PrintedError(found->second);
            if (!visit(weights, Rounded(influence.Weight, bound), Narrowed(found->second / 100.0)))
                return false;
        }
        return true;
    }

    /// All vertices lie inside the box, and on each of its sides lies one.
    void CompareBox()
    {
        static Deviation& inside = DeviationOf("bounding box");
        const reader::OrientedBoundingBox& box = m_shape.BoundingBox;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            ApproxVector row, center;
            for (std::size_t i = 0; i < 3; ++i) {
                row[i] = Printed(box.OrientationMatrix[axis][i]);
                center[i] = Printed(box.CenterPosition[i]);
            }
            Approx low{std::numeric_limits<double>::infinity(), 0.0};
            Approx high{-std::numeric_limits<double>::infinity(), 0.0};
            for (std::size_t vertex = 0; vertex < m_shape.VertexCount; ++vertex) {
                const Approx along = Along(vertex, row);
                const double error = std::max({low.Error, high.Error, along.Error});
                low = {std::min(low.Value, along.Value), error};
                high = {std::max(high.Value, along.Value), error};
            }
            const Approx middle = row[0] * center[0] + row[1] * center[1] + row[2] * center[2];
            const double slack = SlackOf(box, axis);
            const Approx half = Printed(box.Size[axis]) * Approx{0.5, slack};
            Check(inside, Distance(high, middle + half), BoundOf(high, middle + half) + slack,
                  m_place + ", above");
            Check(inside, Distance(low, middle - half), BoundOf(low, middle - half) + slack,
                  m_place + ", below");
        }
    }

    Approx Along(std::size_t vertex, const ApproxVector& row) const
    {
        const Approx magnify{m_trip.Settings.Magnify, 0.0};
        Approx along;
        for (std::size_t i = 0; i < 3; ++i)
            along = along + row[i] * (m_position->At(vertex, i) / magnify);
        return along;
    }

    /// The center is the sum of its parts along the axes: where these are not quite perpendicular, a part
    /// along one axis shows along the others.
    static double SlackOf(const reader::OrientedBoundingBox& box, std::size_t axis)
    {
        const auto dot = [](const reader::Vector3& a, const reader::Vector3& b) {
            double sum = 0.0;
            for (std::size_t i = 0; i < 3; ++i)
                sum += static_cast<double>(a[i]) * static_cast<double>(b[i]);
            return sum;
        };
        double slack = 0.0;
        for (std::size_t other = 0; other < 3; ++other) {
            const double skew =
                dot(box.OrientationMatrix[axis], box.OrientationMatrix[other]) - (axis == other ? 1.0 : 0.0);
            const double printing = 3.0 * PrintedError(1.0); // of the axes' elements
            slack +=
                std::abs(dot(box.OrientationMatrix[other], box.CenterPosition)) * (std::abs(skew) + printing);
        }
        return slack;
    }

    const RoundTrip& m_trip;
    const reader::Shape& m_shape;
    ExpectedShape& m_wanted;
    std::string m_place;
    const std::vector<int>& m_nodeOfBone;
    std::optional<WrittenStream> m_position;
    std::optional<WrittenStream> m_normal;
    std::vector<StreamPair> m_streams;
};

/// The host's nodes by number of the written bones; -1 for the made root.
std::vector<int> NodesOfBones(const RoundTrip& trip)
{
    std::vector<int> nodes;
    for (const reader::Bone& bone : trip.Written.Model.Bones.Bones) {
        const auto found = std::ranges::find(trip.Host.Nodes, bone.Name, &HostNode::Name);
        nodes.push_back(found == trip.Host.Nodes.end() ? -1
                                                       : static_cast<int>(found - trip.Host.Nodes.begin()));
    }
    return nodes;
}

} // namespace

void CompareGeometry(const RoundTrip& trip)
{
    static Deviation& words = DeviationOf("shape form");
    const reader::Model& model = trip.Written.Model;
    const std::vector<int> nodeOfBone = NodesOfBones(trip);
    std::vector<int> boneOrder;
    for (const HostNode& node : trip.Host.Nodes)
        boneOrder.push_back(reader::FindBone(model.Bones, node.Name));
    std::vector<ExpectedShape> shapes = ExpectShapes(trip.Host, trip.Skeleton, trip.Settings, boneOrder);
    CheckEqual(words, model.Meshes.size(), shapes.size(), "count of meshes");
    for (ExpectedShape& shape : shapes) {
        const HostNode& node = trip.Host.Nodes[static_cast<std::size_t>(shape.Mesh().Node)];
        const std::string& target = trip.Host.Nodes[static_cast<std::size_t>(shape.Target())].Name;
        const std::string& material = trip.Host.Materials[static_cast<std::size_t>(shape.Material())].Name;
        const std::string place = node.Name + " with " + material;
        const auto mesh = std::ranges::find_if(model.Meshes, [&](const reader::Mesh& each) {
            return each.NodeName == target && each.MaterialName == material;
        });
        if (!CheckEqual(words, mesh != model.Meshes.end(), true, place))
            continue;
        const XSI::Parameter visibility = VisibilityOf(node.Object);
        const bool isVisible = !visibility.IsValid() || static_cast<bool>(visibility.GetValue());
        CheckEqual(words, mesh->IsVisible, isVisible, place + ", visibility");
        ShapeComparison(trip, model.Shapes.at(static_cast<std::size_t>(mesh->Shape)), shape, place,
                        nodeOfBone)
            .Compare();
    }
}

} // namespace tq4x::test
