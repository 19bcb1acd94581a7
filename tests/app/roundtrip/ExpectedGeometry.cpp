#include "ExpectedGeometry.h"

#include <xsi_clusterproperty.h>
#include <xsi_envelope.h>

#include <algorithm>
#include <functional>
#include <set>

namespace tq4x::test
{
namespace
{

std::vector<float> ValuesOf(const XSI::CRef& property)
{
    XSI::CFloatArray values;
    static_cast<void>(XSI::ClusterProperty(property).GetValues(values));
    return {values.GetArray(), values.GetArray() + values.GetCount()};
}

std::string NameOf(const XSI::CRef& object)
{
    return XSI::SIObject(object).GetName().GetAsciiString();
}

std::string LastPiece(const std::string& name)
{
    const std::size_t place = name.rfind('_');
    return place == std::string::npos ? "" : name.substr(place + 1);
}

/// The three numbers of a triangle's corners.
std::vector<std::array<LONG, 3>> Triples(const XSI::CLongArray& numbers)
{
    std::vector<std::array<LONG, 3>> triples;
    for (LONG i = 0; i + 2 < numbers.GetCount(); i += 3)
        triples.push_back({numbers[i], numbers[i + 1], numbers[i + 2]});
    return triples;
}

/// Sorted by falling share; equal ones stay in their order.
void SortByShare(ExpectedInfluences& list)
{
    std::ranges::stable_sort(list, std::ranges::greater(), &std::pair<int, int>::second);
}

int SumOf(const ExpectedInfluences& list)
{
    int sum = 0;
    for (const auto& [node, share] : list)
        sum += share;
    return sum;
}

/// At most four shares, 100 percent together: what is too much is cut from the smallest, what is missing goes
/// to the largest.
void FillUp(ExpectedInfluences& list)
{
    constexpr std::size_t most = 4;
    if (list.size() == 1)
        list[0].second = 100;
    if (list.size() > most) {
        SortByShare(list);
        list.resize(most);
    }
    const int sum = SumOf(list);
    if (list.empty() || sum == 100)
        return;
    SortByShare(list);
    if (sum < 100) {
        list[0].second += 100 - sum;
        return;
    }
    int total = 0;
    for (std::size_t i = 0; i < list.size(); ++i) {
        list[i].second = std::min(list[i].second, 100 - total);
        if (list[i].second < 1) {
            list.resize(i);
            return;
        }
        total += list[i].second;
    }
}

class MeshReader
{
public:
    MeshReader(const HostScene& host, int number, const RoundTripSettings& settings, ExpectedMesh& mesh)
        : m_host(host),
          m_node(host.Nodes[static_cast<std::size_t>(number)]),
          m_settings(settings),
          m_mesh(mesh),
          m_accessor(GeometryOf(m_node.Object))
    {
        m_mesh.Node = number;
    }

    void Read()
    {
        ReadTriangles();
        ReadNormals();
        ReadColors();
        ReadCoordinates();
        ReadUserAttributes();
        ReadWeights();
    }

private:
    std::string Wanted(const std::string& mode) const { return m_settings.AsksForTool() ? "Float" : mode; }

    void ReadTriangles()
    {
        XSI::CDoubleArray positions;
        static_cast<void>(m_accessor.GetVertexPositions(positions));
        m_mesh.Positions.assign(positions.GetArray(), positions.GetArray() + positions.GetCount());
        XSI::CLongArray vertices, corners, polygons, materials;
        static_cast<void>(m_accessor.GetTriangleVertexIndices(vertices));
        static_cast<void>(m_accessor.GetTriangleNodeIndices(corners));
        static_cast<void>(m_accessor.GetPolygonTriangleIndices(polygons));
        static_cast<void>(m_accessor.GetPolygonMaterialIndices(materials));
        m_mesh.Vertices = Triples(vertices);
        m_mesh.Corners = Triples(corners);
        for (LONG i = 0; i < polygons.GetCount(); ++i)
            m_mesh.Materials.push_back(m_node.Materials[static_cast<std::size_t>(materials[polygons[i]])]);
    }

    /// Normals of the user count, except where they are zero.
    void ReadNormals()
    {
        XSI::CFloatArray normals;
        static_cast<void>(m_accessor.GetNodeNormals(normals));
        m_mesh.Normals.assign(normals.GetArray(), normals.GetArray() + normals.GetCount());
        const XSI::CRefArray users = m_accessor.GetUserNormals();
        const std::vector<float> values = users.GetCount() > 0 ? ValuesOf(users[0]) : std::vector<float>();
        for (std::size_t i = 0; values.size() == m_mesh.Normals.size() && i + 2 < values.size(); i += 3)
            if (values[i] != 0.0f || values[i + 1] != 0.0f || values[i + 2] != 0.0f)
                std::copy_n(values.begin() + static_cast<std::ptrdiff_t>(i), 3,
                            m_mesh.Normals.begin() + static_cast<std::ptrdiff_t>(i));
    }

    static bool IsUserAttribute(const std::string& name)
    {
        return name.starts_with("tq4xUser") && name.size() > 8 && name[8] >= '0' && name[8] <= '2';
    }

    /// The first colour by name.
    void ReadColors()
    {
        const XSI::CRefArray properties = m_accessor.GetVertexColors();
        std::map<std::string, XSI::CRef> colors;
        for (LONG i = 0; i < properties.GetCount(); ++i)
            if (!IsUserAttribute(NameOf(properties[i])))
                colors.try_emplace(NameOf(properties[i]), properties[i]);
        if (colors.empty())
            return;
        ExpectedStream stream{"Color", LastPiece(colors.begin()->first) == "rgb" ? 3u : 4u, 4, "Float",
                              ValuesOf(colors.begin()->second)};
        for (std::size_t i = 3; i < stream.Values.size(); i += 4) {
            if (m_settings.InvertsColorAlpha)
                stream.Values[i] = 1.0f - stream.Values[i];
            m_mesh.HasTranslucentColors |= stream.Dimension == 4 && 1.0f - stream.Values[i] > 0.0001f;
        }
        m_mesh.Streams.push_back(std::move(stream));
    }

    void ReadCoordinates()
    {
        const XSI::CRefArray sets = m_accessor.GetUVs();
        for (std::size_t number = 0; number < m_node.UvSets.size(); ++number)
            for (LONG i = 0; i < sets.GetCount(); ++i)
                if (NameOf(sets[i]) == m_node.UvSets[number]) {
                    m_mesh.Streams.push_back(
                        {"TextureCoordinate" + std::to_string(number), 2,
                         static_cast<std::size_t>(XSI::ClusterProperty(sets[i]).GetValueSize()),
                         Wanted(m_settings.QuantizeTex), ValuesOf(sets[i])});
                    break;
                }
    }

    void ReadUserAttributes()
    {
        const XSI::CRefArray properties = m_accessor.GetVertexColors();
        for (LONG i = 0; i < properties.GetCount(); ++i) {
            const std::string name = NameOf(properties[i]);
            if (!IsUserAttribute(name))
                continue;
            std::string form = LastPiece(name);
            ExpectedStream stream{"UserAttribute" + name.substr(8, 1), 4, 4, "Byte", ValuesOf(properties[i])};
            if (!form.empty() && form[0] >= '1' && form[0] <= '4') {
                stream.Dimension = static_cast<std::size_t>(form[0] - '0');
                form.erase(0, 1);
            }
            if (form.starts_with("f"))
                stream.Mode = "Float";
            if (form.starts_with("s"))
                stream.Mode = "Short";
            m_mesh.Streams.push_back(std::move(stream));
        }
    }

    void ReadWeights()
    {
        const XSI::CRefArray envelopes = m_node.Object.GetEnvelopes();
        m_mesh.IsSkinned = envelopes.GetCount() > 0;
        if (!m_mesh.IsSkinned)
            return;
        const XSI::Envelope envelope(envelopes[0]);
        const XSI::CRefArray deformers = envelope.GetDeformers();
        m_mesh.Weights.resize(m_mesh.Positions.size() / 3);
        for (LONG i = 0; i < deformers.GetCount(); ++i) {
            const XSI::CDoubleArray weights = envelope.GetDeformerWeights(deformers[i]);
            const int node = m_host.FindNode(deformers[i]);
            for (LONG vertex = 0; vertex < weights.GetCount(); ++vertex)
                if (weights[vertex] != 0.0)
                    m_mesh.Weights[static_cast<std::size_t>(vertex)].emplace_back(
                        node, static_cast<int>(weights[vertex]));
        }
        for (ExpectedInfluences& influences : m_mesh.Weights) {
            FillUp(influences);
            std::erase_if(influences, [](const auto& influence) { return influence.second <= 0; });
        }
    }

    const HostScene& m_host;
    const HostNode& m_node;
    const RoundTripSettings& m_settings;
    ExpectedMesh& m_mesh;
    XSI::CGeometryAccessor m_accessor;
};

/// The one node that moves all vertices; -1 if there are several.
int SingleBone(const ExpectedMesh& mesh)
{
    int single = -1;
    for (const ExpectedInfluences& influences : mesh.Weights)
        for (const auto& [node, share] : influences) {
            if (single >= 0 && node != single)
                return -1;
            single = node;
        }
    return single;
}

} // namespace

ExpectedMesh ReadExpectedMesh(const HostScene& host, int node, const RoundTripSettings& settings)
{
    ExpectedMesh mesh;
    MeshReader(host, node, settings, mesh).Read();
    return mesh;
}

ExpectedShape::ExpectedShape(std::shared_ptr<const ExpectedMesh> mesh, int material, int target,
                             const ExpectedSkeleton& skeleton)
    : m_mesh(std::move(mesh)),
      m_material(material),
      m_target(target),
      m_skeleton(skeleton),
      m_positions(m_mesh->Positions.size() / 3),
      m_normals(m_mesh->Normals.size() / 3)
{
    bool isRigid = true;
    for (std::size_t i = 0; i < m_mesh->Materials.size(); ++i) {
        if (m_mesh->Materials[i] != material)
            continue;
        m_triangles.push_back(i);
        for (const LONG vertex : m_mesh->Vertices[i])
            isRigid &= !m_mesh->IsSkinned || m_mesh->Weights[static_cast<std::size_t>(vertex)].size() == 1;
    }
    if (m_mesh->IsSkinned && target == m_mesh->Node)
        m_mode = isRigid ? Skinning::Rigid : Skinning::Smooth;
}

/// From the mesh's space to that in which a vertex is written; nullptr where they are the same.
const ApproxMatrix* ExpectedShape::MatrixOf(LONG vertex)
{
    const ApproxMatrix& own = m_skeleton.Bones[static_cast<std::size_t>(m_mesh->Node)].Bind;
    if (m_mode == Skinning::None && !m_mesh->IsSkinned)
        return nullptr;
    if (m_mode == Skinning::Smooth)
        return &own;
    const int bone =
        m_mode == Skinning::Rigid ? m_mesh->Weights[static_cast<std::size_t>(vertex)][0].first : m_target;
    const auto [place, isNew] = m_matrices.try_emplace(bone);
    if (isNew)
        place->second = Multiply(own, Invert(m_skeleton.Bones[static_cast<std::size_t>(bone)].Bind));
    return &place->second;
}

const ApproxVector& ExpectedShape::Position(LONG vertex)
{
    std::optional<ApproxVector>& cached = m_positions[static_cast<std::size_t>(vertex)];
    if (!cached) {
        const double* position = &m_mesh->Positions[static_cast<std::size_t>(vertex) * 3];
        cached = {Narrowed(position[0]), Narrowed(position[1]), Narrowed(position[2])};
        if (const ApproxMatrix* matrix = MatrixOf(vertex))
            cached = TransformPoint(*cached, *matrix);
    }
    return *cached;
}

const ApproxVector& ExpectedShape::Normal(LONG node, LONG vertex)
{
    std::optional<ApproxVector>& cached = m_normals[static_cast<std::size_t>(node)];
    if (!cached) {
        const float* normal = &m_mesh->Normals[static_cast<std::size_t>(node) * 3];
        cached = {Approx{normal[0], 0.0}, Approx{normal[1], 0.0}, Approx{normal[2], 0.0}};
        if (const ApproxMatrix* matrix = MatrixOf(vertex))
            cached = TransformDirection(*cached, *matrix);
    }
    return *cached;
}

ExpectedInfluences ExpectedShape::InfluencesOf(LONG vertex) const
{
    if (m_mode == Skinning::None)
        return {{m_target, 100}};
    return m_mesh->Weights[static_cast<std::size_t>(vertex)];
}

/// Where shapes of one material meet on a node, the first one stays: the node's own, then those that come to
/// it, in the order of the skeleton.
std::vector<ExpectedShape> ExpectShapes(const HostScene& host, const ExpectedSkeleton& skeleton,
                                        const RoundTripSettings& settings, const std::vector<int>& boneOrder)
{
    std::vector<int> order;
    for (int node = 0; node < static_cast<int>(host.Nodes.size()); ++node)
        if (host.Nodes[static_cast<std::size_t>(node)].IsMesh)
            order.push_back(node);
    std::ranges::stable_sort(order, {}, [&](int node) { return boneOrder[static_cast<std::size_t>(node)]; });
    std::vector<ExpectedShape> own, moved;
    for (const int node : order) {
        const auto mesh = std::make_shared<ExpectedMesh>(ReadExpectedMesh(host, node, settings));
        const int single = mesh->IsSkinned && !settings.IsRigidSkinning ? SingleBone(*mesh) : -1;
        for (const int material : std::set<int>(mesh->Materials.begin(), mesh->Materials.end()))
            (single < 0 ? own : moved).emplace_back(mesh, material, single < 0 ? node : single, skeleton);
    }
    for (ExpectedShape& shape : moved)
        if (std::ranges::none_of(own, [&](const ExpectedShape& other) {
                return other.Target() == shape.Target() && other.Material() == shape.Material();
            }))
            own.push_back(std::move(shape));
    return own;
}

} // namespace tq4x::test
