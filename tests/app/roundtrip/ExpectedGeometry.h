#pragma once

#include "ExpectedSkeleton.h"

#include <array>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tq4x::test
{

/// A list of values per node of a mesh that becomes a vertex stream.
struct ExpectedStream
{
    std::string Usage;          ///< "Color", "TextureCoordinate0", ...
    std::size_t Dimension = 0;  ///< numbers of each value that are written
    std::size_t Width = 0;      ///< numbers of each value that the host has
    std::string Mode = "Float"; ///< wanted storage: "Float", "Short", "Byte"
    std::vector<float> Values;
};

/// Node and percentage.
using ExpectedInfluences = std::vector<std::pair<int, int>>;

/// What the host tells of a mesh.
struct ExpectedMesh
{
    int Node = -1;
    std::vector<double> Positions;             ///< three per vertex
    std::vector<float> Normals;                ///< three per node
    std::vector<std::array<LONG, 3>> Vertices; ///< of each triangle
    std::vector<std::array<LONG, 3>> Corners;  ///< nodes of each triangle
    std::vector<int> Materials;                ///< of each triangle
    std::vector<ExpectedStream> Streams;
    bool IsSkinned = false;
    std::vector<ExpectedInfluences> Weights; ///< per vertex, as the exporter rounds them to whole percents
    bool HasTranslucentColors = false;
};

/// The triangles of a mesh under one material, in the space in which they are written.
class ExpectedShape
{
public:
    enum class Skinning
    {
        None,
        Rigid,
        Smooth,
    };

    ExpectedShape(std::shared_ptr<const ExpectedMesh> mesh, int material, int target,
                  const ExpectedSkeleton& skeleton);

    const ExpectedMesh& Mesh() const { return *m_mesh; }

    int Material() const { return m_material; }

    /// The node that carries the shape: its own or, where one bone alone moves the mesh, that bone.
    int Target() const { return m_target; }

    Skinning Mode() const { return m_mode; }

    /// Numbers of the mesh's triangles.
    const std::vector<std::size_t>& Triangles() const { return m_triangles; }

    const ApproxVector& Position(LONG vertex);
    const ApproxVector& Normal(LONG node, LONG vertex);

    /// What moves a vertex: nodes and percents above 0; the target alone for an unskinned shape.
    ExpectedInfluences InfluencesOf(LONG vertex) const;

private:
    const ApproxMatrix* MatrixOf(LONG vertex);

    std::shared_ptr<const ExpectedMesh> m_mesh;
    int m_material;
    int m_target;
    const ExpectedSkeleton& m_skeleton;
    Skinning m_mode = Skinning::None;
    std::vector<std::size_t> m_triangles;
    std::map<int, ApproxMatrix> m_matrices; ///< by node, from the mesh's space
    std::vector<std::optional<ApproxVector>> m_positions;
    std::vector<std::optional<ApproxVector>> m_normals;
};

/// All shapes that an export has to write. `boneOrder` gives a node's place in the written skeleton.
std::vector<ExpectedShape> ExpectShapes(const HostScene& host, const ExpectedSkeleton& skeleton,
                                        const RoundTripSettings& settings, const std::vector<int>& boneOrder);

ExpectedMesh ReadExpectedMesh(const HostScene& host, int node, const RoundTripSettings& settings);

} // namespace tq4x::test
