#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ReadMaterial.h"
#include "ReadSkeleton.h"
#include "ReadValues.h"

namespace tq4x::reader
{

struct IndexStream
{
    std::string PrimitiveMode; ///< "Points" to "TriangleFan", "Other"
    bool IsUbyte = false;      ///< indices of one byte, else two
    std::vector<std::uint32_t> Indices;
    long Line = 0;
};

/// Primitives that are drawn with one bone palette.
struct PrimitiveSet
{
    std::string SkinningMode;        ///< "None", "RigidSkinning", "SmoothSkinning"
    std::vector<int> BoneIndexTable; ///< indices into the skeleton; one entry for an unskinned shape
    std::vector<IndexStream> Streams;
    long Line = 0;
};

/// One vertex attribute, expanded to one row for each vertex and de-quantised: stored number times `Scale`,
/// for positions plus the shape's offset.
struct VertexStream
{
    std::string Usage;         ///< "Position", "TextureCoordinate0", ...
    std::size_t Dimension = 0; ///< numbers for each vertex, 1 to 4
    bool IsConstant = false;   ///< stood once in the file
    float Scale = 1;
    std::string QuantizedMode = "Float"; ///< "Float", "Short", "Ushort", "Byte", "Ubyte", "Auto"
    std::vector<float> Values;           ///< vertex count times `Dimension`
    long Line = 0;
};

/// Scaled by nothing: in the units of the scene.
struct OrientedBoundingBox
{
    Vector3 CenterPosition = {};
    std::array<Vector3, 3> OrientationMatrix = {}; ///< each row an axis
    Vector3 Size = {};
};

/// Vertices and primitives under one material.
struct Shape
{
    OrientedBoundingBox BoundingBox;
    Vector3 PositionOffset = {};
    std::vector<PrimitiveSet> Sets;
    std::vector<VertexStream> Streams;
    std::size_t VertexCount = 0;
    long Line = 0;
};

/// A shape drawn with a material on a node.
struct Mesh
{
    bool IsVisible = true;
    int RenderPriority = 0;
    std::string NodeName;
    int CombineGroup = -1; ///< -1: none
    int Shape = -1;        ///< index into `Model::Shapes`, may be out of range in a damaged file
    std::string MaterialName;
    long Line = 0;
    long ShapeLine = 0;    ///< of the shape's reference
    long MaterialLine = 0; ///< of the material's reference
};

struct MeshNodeVisibility
{
    std::string Name;
    bool IsVisible = true;
    long Line = 0;
};

/// The counts that the file's head states.
struct ContentSummary
{
    int MaterialCount = 0;
    int ShapeCount = 0; ///< mesh nodes, not shapes
    int MeshCount = 0;  ///< mesh nodes, not meshes
    int BoneCount = 0;
    long Line = 0;
};

struct Model
{
    ContentSummary Summary;
    bool IsNonuniformScalable = false;
    int NeededBoneCapacity = 0;
    Transform Root;
    std::vector<Shape> Shapes;
    std::vector<Material> Materials;
    std::vector<Mesh> Meshes;
    bool HasNodeVisibilities = false;
    std::vector<MeshNodeVisibility> NodeVisibilities;
    Skeleton Bones;
    float ExportStartFrame = 0;
    float Magnify = 1;
    std::string AdjustSkinning;
    std::string MeshVisibilityMode;
    LookupTableSet LookupTables;
    long Line = 0;
};

/// The stream of a usage, nullptr if the shape has none.
[[nodiscard]] const VertexStream* FindStream(const Shape& shape, std::string_view usage);

/// The material of a name, nullptr if there is none.
[[nodiscard]] const Material* FindMaterial(const Model& model, std::string_view name);

/// The triangles of a stream in their winding; strips and fans are cut. Points and lines give none, and
/// indices behind the last whole triangle are left out.
[[nodiscard]] std::vector<std::array<std::uint32_t, 3>> ListTriangles(const IndexStream& stream);

/// One bone's part in a vertex.
struct Influence
{
    int Bone = -1;    ///< index into the skeleton; -1: the stream names a slot that the palette lacks
    float Weight = 0; ///< 0 to 1
};

/// What moves a vertex when it is drawn with this set: up to four influences above 0. An unskinned shape
/// gives the set's one bone with weight 1. The same vertex may follow other bones in another set.
[[nodiscard]] std::vector<Influence> InfluencesOf(const Shape& shape, const PrimitiveSet& set,
                                                  std::size_t vertex);

} // namespace tq4x::reader
