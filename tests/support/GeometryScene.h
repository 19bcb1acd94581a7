#pragma once

#include "geometry/AddPolygon.h"
#include "geometry/EditMesh.h"
#include "geometry/Mesh.h"
#include "scene/Bone.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace tq4x::test
{

/// Bones without a tree, numbered in the order of their names' coming, as if they were the bone list.
class Skeleton
{
public:
    Skeleton(std::initializer_list<const char*> names)
    {
        for (const char* name : names)
            Add(name);
    }

    /// Bones named "b0", "b1", ... with leading zeros, so that names and numbers ascend alike.
    explicit Skeleton(std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i)
            Add("b" + std::to_string(10000 + i));
    }

    Bone& Add(const std::string& name)
    {
        m_bones.push_back(std::make_unique<Bone>());
        m_bones.back()->Name = name;
        m_bones.back()->BoneIndex = static_cast<std::int32_t>(m_bones.size()) - 1;
        return *m_bones.back();
    }

    Bone& operator[](std::size_t i) { return *m_bones[i]; }

    std::size_t Size() const { return m_bones.size(); }

    std::vector<Bone*> All() const
    {
        std::vector<Bone*> bones;
        for (const auto& bone : m_bones)
            bones.push_back(bone.get());
        return bones;
    }

private:
    std::vector<std::unique_ptr<Bone>> m_bones;
};

/// The letters of the bones' names, in the order of the list.
inline std::string NamesOf(const BoneList& bones)
{
    std::string names;
    for (const Bone* bone : bones)
        names += bone->Name;
    return names;
}

/// A corner with a position and, in a skinned mesh, a vertex.
inline PolygonCorner Corner(std::int32_t position, std::int32_t vertex = -1)
{
    PolygonCorner corner;
    corner[VertexSlot::Position] = position;
    corner.VertexIndex = vertex;
    return corner;
}

/// A mesh with an empty pool of the usual lists.
inline Mesh MakeMesh(std::uint32_t boneCapacity = 20)
{
    Mesh mesh;
    mesh.BoneCapacity = boneCapacity;
    mesh.NodeName = "mesh";
    mesh.Pool = MakeVertexAttributePool({});
    return mesh;
}

/// A skinned mesh with one position per entry of the table, all at the origin.
inline Mesh MakeSkinnedMesh(SkinWeightTable table, std::uint32_t boneCapacity = 20)
{
    Mesh mesh = MakeMesh(boneCapacity);
    mesh.Pool[VertexSlot::Position].Edit<Vector3>().resize(table.size());
    SetSkinWeights(mesh, std::make_unique<SkinWeightTable>(std::move(table)));
    return mesh;
}

/// Adds a polygon whose corners take positions and vertices of these numbers; the status.
inline std::int32_t AddVertices(Mesh& mesh, std::uint32_t material, const std::vector<std::int32_t>& vertices)
{
    std::vector<PolygonCorner> corners;
    for (const std::int32_t vertex : vertices)
        corners.push_back(Corner(vertex, vertex));
    return AddPolygon(mesh, material, PolygonOf(corners)).Status;
}

/// How a random mesh is made.
struct RandomMeshSettings
{
    std::uint32_t Seed = 0;
    std::int32_t PolygonCount = 60;
    std::int32_t ValueCount = 40; ///< per list of the pool
    std::int32_t DistinctValues =
        12; ///< components are drawn from so many numbers; few make many equal values
    std::uint32_t MaterialCount = 3;
    std::size_t BoneCount = 0; ///< 0 for an unskinned mesh
    std::int32_t InfluenceCount = 2;
    std::uint32_t BoneCapacity = 20;
    bool HasOddValues = true; ///< minus zeros and NaNs among the values
};

/// Random pools, polygons of one to six corners and, if wanted, weights. Corners refer to all slots in use;
/// some entries are absent.
class RandomMeshBuilder
{
public:
    RandomMeshBuilder(const RandomMeshSettings& settings, Skeleton& skeleton)
        : m_settings(settings),
          m_skeleton(skeleton),
          m_random(settings.Seed)
    {}

    Mesh Build()
    {
        Mesh mesh = MakeMesh(m_settings.BoneCapacity);
        for (const VertexSlot slot : {VertexSlot::Position, VertexSlot::Normal})
            Fill(mesh.Pool[slot].Edit<Vector3>(), {&Vector3::X, &Vector3::Y, &Vector3::Z});
        for (const VertexSlot slot : {VertexSlot::Color, VertexSlot::UserAttribute1})
            Fill(mesh.Pool[slot].Edit<Vector4>(), {&Vector4::X, &Vector4::W});
        Fill(mesh.Pool[VertexSlot::TextureCoordinate0].Edit<Vector2>(), {&Vector2::X, &Vector2::Y});
        if (m_settings.BoneCount > 0)
            SetSkinWeights(mesh, std::make_unique<SkinWeightTable>(MakeWeights()));
        for (std::int32_t i = 0; i < m_settings.PolygonCount; ++i)
            AddRandomPolygon(mesh);
        return mesh;
    }

private:
    std::int32_t Draw(std::int32_t low, std::int32_t high)
    {
        return std::uniform_int_distribution<std::int32_t>(low, high)(m_random);
    }

    float DrawComponent()
    {
        const std::int32_t number = Draw(0, m_settings.DistinctValues - 1);
        if (m_settings.HasOddValues && Draw(0, 49) == 0)
            return std::numeric_limits<float>::quiet_NaN();
        if (number == 0)
            return m_settings.HasOddValues && Draw(0, 1) == 0 ? -0.0f : 0.0f;
        return static_cast<float>(number - 3) * 0.37f;
    }

    template<typename T>
    void Fill(std::vector<T>& values, std::initializer_list<float T::*> components)
    {
        values.resize(static_cast<std::size_t>(m_settings.ValueCount));
        for (T& value : values)
            for (float T::*component : components)
                value.*component = DrawComponent();
    }

    SkinWeightTable MakeWeights()
    {
        SkinWeightTable table(static_cast<std::size_t>(m_settings.ValueCount));
        for (SkinWeightEntry& entry : table) {
            const std::int32_t count = Draw(1, m_settings.InfluenceCount);
            const std::int32_t first = Draw(0, static_cast<std::int32_t>(m_settings.BoneCount) - 1);
            std::int32_t rest = 100;
            for (std::int32_t i = 0; i < count; ++i) {
                const std::size_t number = static_cast<std::size_t>(first + i * 3) % m_settings.BoneCount;
                const std::int32_t share = i + 1 == count ? rest : Draw(0, rest);
                entry.push_back({&m_skeleton[number], share});
                rest -= share;
            }
        }
        return table;
    }

    void AddRandomPolygon(Mesh& mesh)
    {
        std::vector<PolygonCorner> corners(static_cast<std::size_t>(Draw(1, 6)));
        for (PolygonCorner& corner : corners) {
            for (std::size_t slot = 0; slot < VertexSlotCount; ++slot)
                if (mesh.Pool.Slots[slot].Size() > 0)
                    corner.Slots[slot] = Draw(slot == 0 ? 0 : -1, m_settings.ValueCount - 1);
            corner.VertexIndex = corner[VertexSlot::Position];
        }
        const auto material =
            static_cast<std::uint32_t>(Draw(0, static_cast<std::int32_t>(m_settings.MaterialCount) - 1));
        static_cast<void>(AddPolygon(mesh, material * 7, PolygonOf(corners)));
    }

    RandomMeshSettings m_settings;
    Skeleton& m_skeleton;
    std::mt19937 m_random;
};

inline Mesh MakeRandomMesh(const RandomMeshSettings& settings, Skeleton& skeleton)
{
    return RandomMeshBuilder(settings, skeleton).Build();
}

/// The bytes of a list of values, so that NaN meets NaN and -0 differs from 0.
template<typename T>
std::string BytesOf(const std::vector<T>& values)
{
    return std::string(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(T));
}

/// The values that a corner stands for, as bytes: what a reader of the vertex would see.
inline std::string ExpandCorner(const SeparateDataShape& shape, const PolygonCorner& corner)
{
    std::string text;
    for (std::size_t slot = 0; slot < VertexSlotCount; ++slot)
        std::visit(
            [&](const auto& list) {
                if constexpr (!std::is_same_v<decltype(list), const std::monostate&>) {
                    text += "|";
                    if (corner.Slots[slot] >= 0 && !list.IsEmpty()) {
                        // Welding may give an equal value with the other zero.
                        auto value = list.Read().at(static_cast<std::size_t>(corner.Slots[slot]));
                        float components[sizeof(value) / sizeof(float)];
                        std::memcpy(components, &value, sizeof(value));
                        for (float& component : components)
                            component += 0.0f;
                        text.append(reinterpret_cast<const char*>(components), sizeof(components));
                    }
                }
            },
            shape.Pool.Slots[slot].Data);
    return text + "v" + std::to_string(corner.VertexIndex);
}

} // namespace tq4x::test
