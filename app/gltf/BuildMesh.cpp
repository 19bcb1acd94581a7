#include <algorithm>

#include <xsi_clusterproperty.h>

#include "gltf/MeshContent.h"
#include "gltf/SceneBuild.h"
#include "gltf/SceneError.h"
#include "scene/CreateGeometry.h"
#include "scene/CreateObjects.h"
#include "scene/CreateParameters.h"

namespace tq4x::gltf
{
namespace
{

namespace Host = XSI::Host;

Host::MeshGeometry ToGeometry(SceneBuild& build, MeshContent& content)
{
    Host::MeshGeometry geometry;
    geometry.Positions = std::move(content.Positions);
    geometry.NodeNormals = std::move(content.Normals);
    geometry.TriangleVertices.assign(content.Triangles.begin(), content.Triangles.end());
    geometry.PolygonMaterials.assign(content.TriangleMaterials.begin(), content.TriangleMaterials.end());
    for (const Index& material : content.Materials) {
        geometry.Materials.push_back(MaterialOf(build, material).GetRef());
    }
    return geometry;
}

void AddValues(const XSI::X3DObject& object, Host::ClusterPropertyKind kind, std::vector<VertexValues>& lists)
{
    for (VertexValues& list : lists) {
        Host::AddClusterProperty(object, kind, list.Name, static_cast<LONG>(list.ValueSize),
                                 std::move(list.Values));
    }
}

/// A function of the frame for one number of the projection of an animated transform.
std::function<double(double frame)> ProjectionSource(const SceneBuild& build, const CoordinateSet& set,
                                                     double Projection::*member)
{
    const auto track = [&](AnimatedProperty property) {
        return build.Tracks.Find(property, *set.AnimatedMaterial, set.AnimatedSlot);
    };
    return [rest = set.Transform, offset = track(AnimatedProperty::TextureOffset),
            rotation = track(AnimatedProperty::TextureRotation),
            scale = track(AnimatedProperty::TextureScale), member](double frame) {
        TextureTransform transform = rest;
        if (offset) {
            EvaluateTrack(*offset, frame, transform.Offset);
        }
        if (rotation) {
            EvaluateTrack(*rotation, frame, {&transform.Rotation, 1});
        }
        if (scale) {
            EvaluateTrack(*scale, frame, transform.Scale);
        }
        return ComputeProjection(transform).*member;
    };
}

void SetProjection(SceneBuild& build, const CoordinateSet& set, const XSI::Primitive& primitive)
{
    struct Row
    {
        const char* Parameter;
        double Projection::*Member;
    };

    static constexpr Row Rows[] = {{"projsclu", &Projection::ScaleU},
                                   {"projsclv", &Projection::ScaleV},
                                   {"projrotw", &Projection::Rotation},
                                   {"projtrsu", &Projection::TranslateU},
                                   {"projtrsv", &Projection::TranslateV}};
    const Projection projection = ComputeProjection(set.Transform);
    for (const Row& row : Rows) {
        XSI::Primitive(primitive).PutParameterValue(row.Parameter, projection.*row.Member);
        if (set.AnimatedMaterial) {
            Host::SetCurveFunction(primitive.GetParameter(row.Parameter),
                                   ProjectionSource(build, set, row.Member));
        }
    }
}

/// The set of this name that a material of the mesh asks for; nullptr for one that none asks for.
const CoordinateSet* FindSet(const SceneBuild& build, const std::vector<Index>& materials,
                             const std::string& name)
{
    for (const Index& material : materials) {
        for (const Index& set : material ? build.Sets.OfMaterial[*material] : std::array<Index, 2>()) {
            if (set && build.Sets.Sets[*set].Name == name) {
                return &build.Sets.Sets[*set];
            }
        }
    }
    return nullptr;
}

void AddCoordinates(SceneBuild& build, const XSI::X3DObject& object, MeshContent& content)
{
    for (VertexValues& list : content.Coordinates) {
        const CoordinateSet* const set = FindSet(build, content.Materials, list.Name);
        const XSI::ClusterProperty property = Host::AddClusterProperty(object, Host::ClusterPropertyKind::Uv,
                                                                       list.Name, 2, std::move(list.Values));
        const XSI::Primitive projection =
            Host::AddProjection(property, set == nullptr || set->WrapU, set == nullptr || set->WrapV);
        if (set != nullptr) {
            SetProjection(build, *set, projection);
        }
    }
}

std::size_t JointCount(const SceneBuild& build, std::size_t node)
{
    const Index skin = build.Source->Nodes[node].Skin;
    return skin ? build.Source->Skins[*skin].Joints.size() : 0;
}

/// Weights wait for their joints, which may stand anywhere in the scene.
void KeepWeights(SceneBuild& build, std::size_t node, const std::string& name, MeshContent& content)
{
    if (!build.Source->Nodes[node].Skin) {
        return;
    }
    if (!content.IsSkinned) {
        build.Remarks.push_back(
            {NoteSeverity::Warning, name,
             "The node has a skin, but its mesh has no joints and weights; it stays rigid."});
        return;
    }
    build.Weights[node] = std::move(content.Weights);
}

} // namespace

XSI::X3DObject BuildMesh(SceneBuild& build, std::size_t node, const XSI::CRef& parent,
                         const std::string& name, std::uint64_t& corners)
{
    const std::size_t mesh = *build.Source->Nodes[node].Mesh;
    // What is noted about a mesh is noted once, not again for each of its uses.
    Notes unused;
    Notes& notes = build.NotedMeshes.insert(mesh).second ? build.Remarks : unused;
    MeshContent content =
        BuildMeshContent(*build.Source, mesh, JointCount(build, node), build.Sets, corners, notes);
    if (content.Triangles.empty()) {
        notes.push_back({NoteSeverity::Warning, name, "The mesh has no triangles; the node becomes a null."});
        return Host::CreateNull(parent, name);
    }
    const XSI::X3DObject object = Host::CreateMesh(parent, name, ToGeometry(build, content));
    AddValues(object, Host::ClusterPropertyKind::Color, content.Colors);
    AddValues(object, Host::ClusterPropertyKind::Color, content.UserValues);
    AddCoordinates(build, object, content);
    KeepWeights(build, node, name, content);
    return object;
}

} // namespace tq4x::gltf
