#include "RandomMesh.h"

#include "RandomCurves.h"
#include "scene/CreateGeometry.h"
#include "scene/CreateParameters.h"

#include <algorithm>
#include <set>

namespace tq4x::test
{
namespace
{

using XSI::Host::ClusterPropertyKind;

class MeshMaker
{
public:
    MeshMaker(RandomDraw& draw, const XSI::X3DObject& mesh, const MeshSupplies& supplies)
        : m_draw(draw),
          m_mesh(mesh),
          m_supplies(supplies),
          m_geometry(*XSI::Host::FindMesh(mesh)),
          m_isFlat(draw.Chance(15)),
          m_splitting(draw.Int(0, 2))
    {}

    void Make()
    {
        DrawVertices();
        for (int i = m_draw.Int(1, 12); i > 0; --i)
            DrawPolygon();
        DrawMaterials();
        DrawNormals();
        DrawCoordinates();
        DrawColors();
        DrawUserAttributes();
    }

private:
    void DrawVertices()
    {
        m_vertexCount = m_draw.Int(6, 24);
        const double size = m_draw.Of<double>({0.01, 1.0, 1.0, 30.0, 1000.0});
        const double away = m_draw.Chance(20) ? 100.0 * size : 0.0;
        for (int i = 0; i < m_vertexCount * 3; ++i)
            m_geometry.Positions.push_back(m_isFlat && i % 3 == 2 ? 0.25 : away + m_draw.Real(-size, size));
        if (m_splitting == 0)
            m_nodeCount = m_vertexCount;
    }

    /// A node for a vertex: the vertex's own, one of a few of it, or a new one for each corner.
    LONG NodeOf(LONG vertex)
    {
        if (m_splitting == 0)
            return vertex;
        std::vector<LONG>& nodes = m_nodes[static_cast<std::size_t>(vertex)];
        if (m_splitting == 1 || nodes.empty() || m_draw.Chance(40))
            nodes.push_back(m_nodeCount++);
        return m_splitting == 1 ? nodes.back() : m_draw.Of(nodes);
    }

    /// Cut into a fan.
    void DrawPolygon()
    {
        const LONG polygon = m_polygonCount++;
        std::vector<std::pair<LONG, LONG>> corners;
        std::set<LONG> used;
        for (int i = m_draw.Int(3, 6); i > 0;) {
            const LONG vertex = m_draw.Int(0, m_vertexCount - 1);
            if (!used.insert(vertex).second)
                continue;
            corners.emplace_back(vertex, NodeOf(vertex));
            --i;
        }
        for (std::size_t i = 2; i < corners.size(); ++i) {
            for (const std::size_t corner : {std::size_t{0}, i - 1, i}) {
                m_geometry.TriangleVertices.push_back(corners[corner].first);
                m_geometry.TriangleNodes.push_back(corners[corner].second);
            }
            m_geometry.TrianglePolygons.push_back(polygon);
        }
    }

    void DrawMaterials()
    {
        const int count = m_draw.Int(1, 3);
        for (int i = 0; i < count; ++i) {
            const XSI::CRef material = m_draw.Of(m_supplies.Materials);
            if (std::ranges::find(m_geometry.Materials, material) != m_geometry.Materials.end())
                continue;
            m_geometry.Materials.push_back(material);
            XSI::Host::AddMaterialUser(material, m_mesh);
        }
        for (LONG i = 0; i < m_polygonCount; ++i)
            m_geometry.PolygonMaterials.push_back(
                m_draw.Int(0, static_cast<int>(m_geometry.Materials.size()) - 1));
    }

    void AddUnitVector(std::vector<float>& values)
    {
        double vector[3] = {m_draw.Real(-1.0, 1.0), m_draw.Real(-1.0, 1.0), m_draw.Real(0.1, 1.0)};
        if (m_isFlat)
            vector[0] = vector[1] = 0.0;
        const double length = std::hypot(vector[0], vector[1], vector[2]);
        for (const double component : vector)
            values.push_back(static_cast<float>(component / length));
    }

    void DrawNormals()
    {
        for (LONG i = 0; i < m_nodeCount; ++i)
            AddUnitVector(m_geometry.NodeNormals);
        if (!m_draw.Chance(25))
            return;
        std::vector<float> users;
        for (LONG i = 0; i < m_nodeCount; ++i) {
            if (m_draw.Chance(60))
                AddUnitVector(users);
            else
                users.insert(users.end(), 3, 0.0f); // the node keeps the other one
        }
        XSI::Host::AddClusterProperty(m_mesh, ClusterPropertyKind::UserNormal, "XSI_UserNormals", 3, users);
    }

    std::vector<float> DrawValues(LONG perNode, double low, double high)
    {
        std::vector<float> values;
        const bool isConstant = m_draw.Chance(10);
        for (LONG i = 0; i < m_nodeCount * perNode; ++i) {
            const bool isCopied = isConstant && i >= perNode;
            values.push_back(isCopied           ? values[static_cast<std::size_t>(i - perNode)]
                             : m_draw.Chance(3) ? static_cast<float>(m_draw.Real(-2e-6, 2e-6))
                                                : static_cast<float>(m_draw.Real(low, high)));
        }
        return values;
    }

    void DrawCoordinates()
    {
        const bool isLarge = m_draw.Chance(30);
        for (const std::string& set : m_supplies.Sets) {
            const XSI::ClusterProperty property =
                XSI::Host::AddClusterProperty(m_mesh, ClusterPropertyKind::Uv, set, 2,
                                              DrawValues(2, isLarge ? -3.0 : 0.0, isLarge ? 5.0 : 1.0));
            if (m_draw.Chance(90))
                DrawProjection(XSI::Host::AddProjection(property, m_draw.Chance(60), m_draw.Chance(60)));
        }
    }

    void DrawProjection(const XSI::Primitive& projection)
    {
        const auto draw = [&](const char* name, double low, double high) {
            const XSI::Parameter parameter =
                XSI::Host::AddParameter(projection, name, m_draw.Real(low, high));
            MayMove(m_draw, parameter, 15, m_supplies.Time, low, high);
        };
        if (m_draw.Chance(40))
            return;
        draw("projsclu", 0.25, 4.0);
        draw("projsclv", -4.0, -0.25);
        draw("projrotw", -900.0, 900.0);
        draw("projtrsu", -2.0, 2.0);
        draw("projtrsv", -2.0, 2.0);
    }

    void DrawColors()
    {
        for (const char* name : {"Colors", "Alpha_rgb", "Zebra_of_rgb"})
            if (m_draw.Chance(25))
                XSI::Host::AddClusterProperty(m_mesh, ClusterPropertyKind::Color, name, 4,
                                              DrawValues(4, 0.0, 1.0));
    }

    void DrawUserAttributes()
    {
        const std::vector<std::string> forms = {"", "_3f", "_s", "_2b", "_4", "_1f", "_b", "_2s"};
        for (const char* name : {"tq4xUser0", "tq4xUser1", "tq4xUser2"})
            if (m_draw.Chance(20))
                XSI::Host::AddClusterProperty(m_mesh, ClusterPropertyKind::Color, name + m_draw.Of(forms), 4,
                                              DrawValues(4, m_draw.Chance(50) ? 0.0 : -2.0, 2.0));
    }

    RandomDraw& m_draw;
    const XSI::X3DObject& m_mesh;
    const MeshSupplies& m_supplies;
    XSI::Host::MeshGeometry& m_geometry;
    bool m_isFlat;
    int m_splitting; ///< 0 a node for each vertex, 1 for each corner, 2 some for each vertex
    int m_vertexCount = 0;
    LONG m_nodeCount = 0;
    LONG m_polygonCount = 0;
    std::map<std::size_t, std::vector<LONG>> m_nodes; ///< by vertex
};

/// Shares of a vertex in percent: whole ones or, by chance, broken ones.
std::vector<double> DrawShares(RandomDraw& draw, std::size_t count)
{
    std::vector<double> shares(count, 0.0);
    double left = 100.0;
    for (std::size_t i = 0; i + 1 < count; ++i) {
        shares[i] = draw.Chance(30) ? draw.Real(0.0, left) : draw.Int(0, static_cast<int>(left));
        left -= shares[i];
    }
    shares.back() = left;
    return shares;
}

} // namespace

void DrawMesh(RandomDraw& draw, const XSI::X3DObject& mesh, const MeshSupplies& supplies)
{
    MeshMaker(draw, mesh, supplies).Make();
}

void DrawSkin(RandomDraw& draw, const XSI::X3DObject& mesh, const std::vector<XSI::X3DObject>& bones,
              const MeshSupplies& supplies)
{
    const int manner = draw.Int(0, 3); // one bone, one for each vertex, several, several by chance
    std::vector<XSI::Host::DeformerWeights> deformers;
    for (const XSI::X3DObject& bone : bones)
        deformers.push_back({bone, {}});
    const auto single = static_cast<std::size_t>(draw.Int(0, static_cast<int>(bones.size()) - 1));
    const LONG vertices = XSI::Host::FindMesh(mesh)->VertexCount();
    for (LONG vertex = 0; vertex < vertices; ++vertex) {
        const bool isSplit = manner == 2 || (manner == 3 && draw.Chance(50));
        const std::size_t most = std::min(bones.size(), supplies.MostInfluences);
        const std::size_t count = isSplit ? static_cast<std::size_t>(draw.Int(1, static_cast<int>(most))) : 1;
        const std::size_t first =
            manner == 0 ? single : static_cast<std::size_t>(draw.Int(0, static_cast<int>(bones.size()) - 1));
        const std::vector<double> shares = DrawShares(draw, count);
        for (std::size_t i = 0; i < count; ++i)
            deformers[(first + i) % bones.size()].Weights.emplace_back(vertex, shares[i]);
    }
    XSI::Host::AddEnvelope(mesh, std::move(deformers));
}

} // namespace tq4x::test
