#pragma once

#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "scene/CreateGeometry.h"
#include "support/SceneNode.h"

namespace tq4x::test
{

using Point = std::array<double, 3>;
using Corners = std::array<LONG, 3>;

/// Vertex and percentage.
using VertexWeights = std::vector<std::pair<LONG, double>>;

/// A polygon mesh in the making. Corners that share a vertex share a node too, so that all lists of values
/// have one entry per vertex, unless SplitNodes gives each corner a node of its own.
class SceneMesh : public SceneNode
{
public:
    explicit SceneMesh(const XSI::CRef& object) : SceneNode(object) {}

    /// The geometry itself, for what the calls below don't say.
    XSI::Host::MeshGeometry& Geometry() { return *XSI::Host::FindMesh(Object()); }

    /// Adds vertices, with normals along Z.
    SceneMesh& Vertices(const std::vector<Point>& points)
    {
        for (const Point& point : points) {
            Geometry().Positions.insert(Geometry().Positions.end(), point.begin(), point.end());
            Geometry().NodeNormals.insert(Geometry().NodeNormals.end(), {0.0f, 0.0f, 1.0f});
        }
        return *this;
    }

    /// Adds triangles, each of them a polygon, with a material of their own if one is given.
    SceneMesh& Triangles(const std::vector<Corners>& triangles, const XSI::CRef& material = {})
    {
        const LONG index = MaterialIndex(material);
        for (const Corners& corners : triangles) {
            auto& vertices = Geometry().TriangleVertices;
            vertices.insert(vertices.end(), corners.begin(), corners.end());
            Geometry().PolygonMaterials.push_back(index);
        }
        return *this;
    }

    /// A square of side 2 around the origin in the XY plane: four vertices, two triangles.
    SceneMesh& Square(const XSI::CRef& material = {})
    {
        const LONG first = Geometry().VertexCount();
        Vertices({{-1.0, -1.0, 0.0}, {1.0, -1.0, 0.0}, {1.0, 1.0, 0.0}, {-1.0, 1.0, 0.0}});
        return Triangles({{first, first + 1, first + 2}, {first, first + 2, first + 3}}, material);
    }

    /// Replaces the normals, three floats per node.
    SceneMesh& Normals(std::vector<float> normals)
    {
        Geometry().NodeNormals = std::move(normals);
        return *this;
    }

    /// Gives each corner a node of its own, with the normal that it had.
    SceneMesh& SplitNodes()
    {
        XSI::Host::MeshGeometry& mesh = Geometry();
        std::vector<float> normals;
        mesh.TriangleNodes.clear();
        for (const LONG vertex : mesh.TriangleVertices) {
            mesh.TriangleNodes.push_back(static_cast<LONG>(mesh.TriangleNodes.size()));
            const auto first = mesh.NodeNormals.begin() + 3 * vertex;
            normals.insert(normals.end(), first, first + 3);
        }
        return Normals(std::move(normals));
    }

    /// Values per node: four floats of a colour or an attribute of the user, two of a coordinate, three of a
    /// normal.
    SceneMesh& Colors(std::string_view name, std::vector<float> values)
    {
        XSI::Host::AddClusterProperty(Object(), XSI::Host::ClusterPropertyKind::Color, name, 4,
                                      std::move(values));
        return *this;
    }

    SceneMesh& Uvs(std::string_view name, std::vector<float> values, Values projection = {})
    {
        const XSI::ClusterProperty set = XSI::Host::AddClusterProperty(
            Object(), XSI::Host::ClusterPropertyKind::Uv, name, 2, std::move(values));
        const XSI::Primitive made = XSI::Host::AddProjection(set);
        for (const auto& [parameter, value] : projection) {
            XSI::Host::AddParameter(made, parameter, value);
        }
        return *this;
    }

    SceneMesh& UserNormals(std::vector<float> values)
    {
        XSI::Host::AddClusterProperty(Object(), XSI::Host::ClusterPropertyKind::UserNormal, "XSI_UserNormals",
                                      3, std::move(values));
        return *this;
    }

    /// Binds the mesh to objects, each with the vertices that it moves.
    SceneMesh& Skin(const std::vector<std::pair<XSI::CRef, VertexWeights>>& weights)
    {
        std::vector<XSI::Host::DeformerWeights> deformers;
        for (const auto& [deformer, vertices] : weights) {
            deformers.push_back({deformer, vertices});
        }
        XSI::Host::AddEnvelope(Object(), std::move(deformers));
        return *this;
    }

private:
    /// The place of a material in the mesh's list, to which it is added when it is new. The first polygons
    /// may do without one.
    LONG MaterialIndex(const XSI::CRef& material)
    {
        auto& materials = Geometry().Materials;
        for (std::size_t i = 0; i < materials.size(); ++i) {
            if (materials[i] == material) {
                return static_cast<LONG>(i);
            }
        }
        if (material.IsValid()) {
            materials.push_back(material);
            XSI::Host::AddMaterialUser(material, Object());
        }
        return materials.empty() ? 0 : static_cast<LONG>(materials.size()) - 1;
    }
};

} // namespace tq4x::test
