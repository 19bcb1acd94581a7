#include "glb/AddMeshes.h"

#include <algorithm>
#include <compare>

#include "glb/AddVisibilityClip.h"
#include "glb/BuildPrimitive.h"

namespace tq4x::reader
{
namespace
{

constexpr int Smooth = -1; ///< vertices in the space of the model, in the pose of the skeleton
constexpr int Rigid = -2;  ///< each vertex in the space of its bone

/// What can share a mesh of glTF.
struct Place
{
    std::string NodeName;
    int Bone = Smooth; ///< that carries an unskinned shape; `Smooth` or `Rigid` for a skinned one
    int Moving = -1;   ///< index of a mesh whose visibility moves: it stands alone

    auto operator<=>(const Place&) const = default;
};

struct Group
{
    Place At;
    Json Primitives = Json::array();
    std::vector<std::size_t> Meshes;
};

class MeshConversion
{
public:
    MeshConversion(const Model& model, const SkeletonNodes& skeleton, const MaterialTable& materials,
                   GlbScene& scene)
        : m_model(model),
          m_skeleton(skeleton),
          m_materials(materials),
          m_scene(scene)
    {}

    std::vector<int> Run(const std::set<std::size_t>& moving)
    {
        const std::vector<bool> isVisible = VisibleMeshes(m_model);
        for (std::size_t i = 0; i < m_model.Meshes.size(); ++i) {
            const Mesh& mesh = m_model.Meshes[i];
            if (!isVisible[i] && !moving.contains(i)) {
                m_scene.Warnings.push_back("\"" + mesh.NodeName + "\": the mesh is invisible and left out.");
                continue;
            }
            AddPrimitives(i, moving.contains(i));
        }
        std::vector<int> nodes(m_model.Meshes.size(), -1);
        for (Group& group : m_groups) {
            const int node = AddNode(group);
            for (const std::size_t mesh : group.Meshes) {
                nodes[mesh] = node;
            }
        }
        return nodes;
    }

private:
    void AddPrimitives(std::size_t index, bool isMoving)
    {
        const Mesh& mesh = m_model.Meshes[index];
        if (mesh.Shape < 0 || static_cast<std::size_t>(mesh.Shape) >= m_model.Shapes.size()) {
            return;
        }
        const Shape& shape = m_model.Shapes[static_cast<std::size_t>(mesh.Shape)];
        const VertexStream* const positions = FindStream(shape, "Position");
        if (positions == nullptr || shape.VertexCount == 0) {
            m_scene.Warnings.push_back("\"" + mesh.NodeName + "\": a shape without vertices is left out.");
            return;
        }
        const auto found = m_materials.find(mesh.MaterialName);
        const GlbMaterial material = found == m_materials.end() ? GlbMaterial() : found->second;
        for (const PrimitiveSet& set : shape.Sets) {
            Json primitive;
            if (AddSet(PickSet(shape, set), material, primitive)) {
                Group& group = GroupAt({mesh.NodeName, BoneOf(set), isMoving ? static_cast<int>(index) : -1});
                group.Primitives.push_back(std::move(primitive));
                group.Meshes.push_back(index);
            }
        }
        WarnOfLines(mesh, shape);
    }

    /// False if the one set of a shape draws no triangle.
    bool AddSet(const Shape& shape, const GlbMaterial& material, Json& primitive)
    {
        const PrimitiveSet& set = shape.Sets.front();
        const std::optional<int> indices = AddTriangles(set, m_scene.Writer);
        if (!indices) {
            return false;
        }
        primitive["attributes"] = BuildAttributes(shape, material.CoordinateSets, m_scene.Writer);
        if (set.SkinningMode != "None") {
            AddInfluences(shape, set, m_skeleton.Bones.size(), primitive["attributes"], m_scene.Writer);
        }
        primitive["indices"] = *indices;
        if (material.Index >= 0) {
            primitive["material"] = material.Index;
        }
        return true;
    }

    void WarnOfLines(const Mesh& mesh, const Shape& shape)
    {
        const auto isTriangles = [](const IndexStream& stream) {
            return stream.PrimitiveMode.starts_with("Triangle");
        };
        const bool isWhole = std::ranges::all_of(shape.Sets, [&](const PrimitiveSet& set) {
            return std::ranges::all_of(set.Streams, isTriangles);
        });
        if (!isWhole) {
            m_scene.Warnings.push_back("\"" + mesh.NodeName + "\": points and lines are left out.");
        }
    }

    static int BoneOf(const PrimitiveSet& set)
    {
        if (set.SkinningMode == "None") {
            return set.BoneIndexTable.empty() ? 0 : set.BoneIndexTable[0];
        }
        return set.SkinningMode == "RigidSkinning" ? Rigid : Smooth;
    }

    Group& GroupAt(const Place& place)
    {
        const auto [known, isNew] = m_places.emplace(place, m_groups.size());
        if (isNew) {
            m_groups.emplace_back().At = place;
        }
        return m_groups[known->second];
    }

    int AddNode(Group& group)
    {
        Json mesh = {{"name", group.At.NodeName}, {"primitives", std::move(group.Primitives)}};
        const int index = m_scene.Writer.Add("meshes", std::move(mesh));
        const bool isSkinned = group.At.Bone < 0;
        const bool isMoving = group.At.Moving >= 0;
        const std::string name = group.At.NodeName + (isMoving ? "_" + std::to_string(group.At.Moving) : "") +
                                 (isSkinned ? "_skin" : "");
        if (isSkinned) {
            const int skin = SkinOf(group.At.Bone);
            const int node = m_scene.Writer.Add("nodes", {{"name", name}, {"mesh", index}, {"skin", skin}});
            m_scene.Roots.push_back(node);
            return node;
        }
        const int carrier = m_skeleton.Bones.at(static_cast<std::size_t>(group.At.Bone));
        if (!isMoving && !m_scene.Writer.At("nodes", carrier).contains("mesh")) {
            m_scene.Writer.At("nodes", carrier)["mesh"] = index;
            return carrier;
        }
        const int node = m_scene.Writer.Add("nodes", {{"name", name}, {"mesh", index}});
        m_scene.Writer.At("nodes", carrier)["children"].push_back(node);
        return node;
    }

    /// Rigid vertices stand in the spaces of their bones already, so nothing has to lead there.
    int SkinOf(int kind)
    {
        int& skin = kind == Rigid ? m_rigidSkin : m_smoothSkin;
        if (skin < 0) {
            Json json = {{"name", kind == Rigid ? "rigid" : "smooth"}};
            if (kind == Smooth) {
                json["inverseBindMatrices"] = AddInverseBindMatrices();
            }
            if (m_skeleton.RootNode >= 0) {
                json["skeleton"] = m_skeleton.RootNode;
            }
            json["joints"] = m_skeleton.Bones;
            skin = m_scene.Writer.Add("skins", std::move(json));
        }
        return skin;
    }

    int AddInverseBindMatrices()
    {
        std::vector<float> values;
        const std::vector<Matrix> pose = PoseOf(m_model.Bones);
        for (std::size_t i = 0; i < pose.size(); ++i) {
            const std::optional<Matrix> inverse = Invert(pose[i]);
            if (!inverse) {
                m_scene.Warnings.push_back(
                    "\"" + m_model.Bones.Bones[i].Name +
                    "\": its bind pose has no inverse; skins don't follow it rightly.");
            }
            for (const double value : inverse.value_or(IdentityMatrix)) {
                values.push_back(static_cast<float>(value));
            }
        }
        return m_scene.Writer.AddFloats(values, 16, BufferUse::Data);
    }

    const Model& m_model;
    const SkeletonNodes& m_skeleton;
    const MaterialTable& m_materials;
    GlbScene& m_scene;
    std::map<Place, std::size_t> m_places;
    std::vector<Group> m_groups; ///< in order of their first mesh
    int m_smoothSkin = -1;
    int m_rigidSkin = -1;
};

} // namespace

std::vector<int> AddMeshes(const Model& model, const SkeletonNodes& skeleton, const MaterialTable& materials,
                           const std::set<std::size_t>& moving, GlbScene& scene)
{
    return MeshConversion(model, skeleton, materials, scene).Run(moving);
}

} // namespace tq4x::reader
